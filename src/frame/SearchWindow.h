#pragma once

#include <map>
#include <string>
#include <vector>

#include "search/ProjectSearch.h"
#include "search/ReplaceJournal.h"
#include "search/SearchHost.h"

namespace zendry {

class MainForm;

// Connects searches in files with the panels of the main window, and keeps the journals of
// replacements in the rescue folder.
class SearchWindow : private SearchHost, private JournalStore {
 public:
  explicit SearchWindow(MainForm& itsForm) : form(itsForm) {}

  // The project was opened, or is closed.
  void ProjectOpened();
  void ProjectClosed();
  bool CanUndo() const { return !undo.IsEmpty(); }

  ProjectSearch commands{*this};

 private:
  EditTabs& Tabs() override;
  FrameShell& Frame() override;
  ReferenceList& Results() override;
  void ShowResults() override;
  ReplaceUndo& Undo() override { return undo; }
  void ResultsChanged() override;

  mavro::FileResult Keep(int id, const std::string& journal) override;
  std::string Read(int id) override;
  void Drop(int id) override;
  std::vector<int> Left() override;
  std::string FileOf(int id) const;

  MainForm& form;
  ReplaceUndo undo{*this};
  std::map<int, std::string> left;  // files of ended programs, by id
};

}  // namespace zendry
