#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "search/FindInFilesDlg.h"

namespace zendry {

class SearchHost;
struct LineTerm;

// The commands that search in files. One search at a time; while it runs the window handles
// messages, and the stop button ends it.
class ProjectSearch {
 public:
  explicit ProjectSearch(SearchHost& itsHost) : host(itsHost) {}

  // Ask what to look for; list the hits; replace them after the user has seen the files.
  void Find();
  void Replace();
  // Gives the files of the last replacement their old texts.
  void UndoReplace();

  bool IsRunning() const { return isRunning; }
  void RequestStop() { isStopWanted = true; }

  // How often the progress is shown. A search that ends sooner shows none.
  std::chrono::milliseconds shownEvery{100};

 private:
  class Progress;
  class Results;

  bool Ask(FindInFilesDlg::Mode mode);
  void ReplaceIn(const std::vector<std::string>& paths, const LineTerm& term);
  std::vector<std::string> Files() const;
  void Say(const std::string& text);

  SearchHost& host;
  SearchTarget target = cCurrentProject;
  bool isRunning = false;
  bool isStopWanted = false;
};

// The id that the stop button has while a search runs.
constexpr int cStopSearchCommand = 1009;

}  // namespace zendry
