#pragma once

#include "base/Shell.h"

namespace zendry {

// A shell without a window: it shows nothing, has no open files and never refuses. Programs without
// a window derive from it and override the functions that they can support.
class QuietShell : public Shell {
 public:
  void AppendOutput(std::string_view) override {}
  void ClearOutput() override {}

  void AddErrorRow(const ErrorRow&) override {}
  void AppendToLastErrorRow(std::string_view) override {}
  void ClearErrorRows() override {}
  int ErrorRowCount() override { return 0; }
  void ShowErrorRow(int) override {}
  void GoToNextError() override {}
  void GoToPreviousError() override {}
  void RemoveErrorMark() override {}

  void AddTreeNode(const std::string&, int, int) override {}
  void RemoveTreeNode(int) override {}
  void ClearTree() override {}
  void SelectTreeRoot() override {}

  void SetStatus(const std::string&, const std::string&) override {}
  void SetCaption(const std::string&) override {}
  void SetModeSelector(int) override {}
  int SelectedMode() override { return 0; }
  void SetStopCommand(int) override {}
  void ShowBottomPage(BottomPage) override {}
  void PumpMessages() override {}
  void AnswerWhileRunning() override {}
  void SetProgress(const std::string&, int, int) override {}
  bool IsDebuggerRunning() override { return false; }
  void ProjectReplaced() override {}

  std::vector<OpenFile> OpenFiles() override { return {}; }
  std::string ActiveFile() override { return ""; }
  void OpenFileAt(const std::string&, int) override {}
  void ActivateFile(const std::string&) override {}
  bool MayReopen(const std::string&, int) override { return true; }
  bool MayCloseAllFiles() override { return true; }
  void CloseAllFiles() override {}
  void SaveChangedFiles() override {}
  std::vector<EditorText*> OpenTexts() override { return {}; }
  void TagsChanged() override {}
};

}  // namespace zendry
