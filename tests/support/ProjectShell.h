#pragma once

#include <string>
#include <vector>

#include "base/QuietShell.h"

namespace test {

// Records in words the calls of the core to a window, and answers what a test sets.
//
//   test::ProjectShell shell;
//   project.SetShell(&shell);
//   project.AddFile("src/a.cpp");
//   EXPECT_EQ(shell.Take(), "status parse /p/src/a.cpp\nstatus  \nadd src/a.cpp 1 1\n");
class ProjectShell : public zendry::QuietShell {
 public:
  // The events since the last call, a line each.
  std::string Take() {
    std::string text;
    text.swap(events);
    return text;
  }

  std::vector<zendry::OpenFile> openFiles;
  std::string activeFile;
  bool closes = true;  // answer of MayCloseAllFiles

  void AddTreeNode(const std::string& path, int id, int type) override {
    Note("add " + path + " " + std::to_string(id) + " " + std::to_string(type));
  }
  void RemoveTreeNode(int id) override { Note("remove " + std::to_string(id)); }
  void ClearTree() override { Note("clear tree"); }
  void SelectTreeRoot() override { Note("select root"); }
  void SetStatus(const std::string& text, const std::string& detail) override {
    Note("status " + text + " " + detail);
  }
  void SetCaption(const std::string& text) override { Note("caption " + text); }
  void SetModeSelector(int mode) override { Note("mode " + std::to_string(mode)); }
  std::vector<zendry::OpenFile> OpenFiles() override { return openFiles; }
  std::string ActiveFile() override { return activeFile; }
  void OpenFileAt(const std::string& path, int line) override {
    Note("open " + path + " " + std::to_string(line));
  }
  void ActivateFile(const std::string& path) override { Note("activate " + path); }
  bool MayCloseAllFiles() override {
    Note("may close files");
    return closes;
  }
  void CloseAllFiles() override { Note("close files"); }

 private:
  void Note(const std::string& line) { events += line + "\n"; }

  std::string events;
};

}  // namespace test
