#pragma once

#include <string>
#include <vector>

#include "Form.h"
#include "Timer.h"
#include "base/Shell.h"
#include "rescue/StartMarks.h"

namespace zendry {

// Stands guard over the files that open by themselves: what the command line names, and what a
// session holds. One that the program did not get past the last time is left closed this time, and
// said; it stays in the session.
class StartFiles : public mavro::object {
 public:
  // `itsForm` and `itsShell` are the window that the files are shown in; they outlive this.
  StartFiles(mavro::Form& itsForm, Shell& itsShell);

  // Asked before a file, or a project, is touched. When the answer is no it is left closed.
  bool MayOpen(const std::string& path, int line);
  // All are loaded: says which were left closed.
  void AllLoaded();
  // The file in front is what has to be painted now.
  void WatchShown();

  // Puts files left closed where they stood among the open ones.
  void AddLeftClosed(std::vector<OpenFile>& files) const;
  // A file has been opened after all, or nothing of the session is wanted any longer.
  void Opened(const std::string& path);
  void ForgetAll() { leftClosed.clear(); }
  // The program ends for another reason than a file that it doesn't get past.
  void EndsByItself() { marks.Clear(); }

 private:
  struct LeftClosed {
    OpenFile file;
    size_t place = 0;  // among the session's files
  };

  void OnTimer(mavro::NotifyArgs& args);
  void Say(const std::vector<std::string>& paths);

  mavro::Form& form;
  Shell& shell;
  StartMarks marks;
  std::vector<LeftClosed> leftClosed;
  std::vector<std::string> unsaid;
  mavro::Timer timer;
  int quietTicks = 0;
};

}  // namespace zendry
