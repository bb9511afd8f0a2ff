#include "base/Shell.h"

#include <chrono>

namespace zendry {

void Shell::AppendOutput(std::string_view) {}
void Shell::ClearOutput() {}
void Shell::AddErrorRow(const ErrorRow&) {}
void Shell::AppendToLastErrorRow(std::string_view) {}
void Shell::ClearErrorRows() {}
int Shell::ErrorRowCount() {
  return 0;
}
void Shell::ShowFirstError() {}
void Shell::GoToNextError() {}
void Shell::GoToPreviousError() {}
void Shell::ShowBottomPage(BottomPage) {}
void Shell::AddTreeNode(const std::string&, int, int) {}
void Shell::RemoveTreeNode(int) {}
void Shell::ClearTree() {}
void Shell::SelectTreeRoot() {}
void Shell::SetStatus(const std::string&, const std::string&) {}
void Shell::SetCaption(const std::string&) {}
void Shell::SetModeSelector(int) {}
int Shell::SelectedMode() {
  return 0;
}
void Shell::SetStopCommand(int) {}
void Shell::PumpMessages() {}
std::vector<OpenFile> Shell::OpenFiles() {
  return {};
}
std::string Shell::ActiveFile() {
  return "";
}
void Shell::OpenFileAt(const std::string&, int) {}
void Shell::ActivateFile(const std::string&) {}
bool Shell::MayReopen(const std::string&, int) {
  return true;
}
bool Shell::CloseAllFiles() {
  return true;
}
void Shell::SaveChangedFiles() {}
void Shell::RemoveErrorMark() {}
std::vector<EditorText*> Shell::OpenTexts() {
  return {};
}
void Shell::TagsChanged() {}
bool Shell::IsDebuggerRunning() {
  return false;
}

std::string LogEntry(std::string_view text, std::string_view detail) {
  std::string entry = "\r\n------ ";
  entry += text;
  entry += " --> ";
  entry += detail;
  entry += "\r\n";
  return entry;
}

void LogMessage(Shell& shell, std::string_view text, std::string_view detail) {
  using Clock = std::chrono::steady_clock;
  static Clock::time_point last = Clock::now();
  const Clock::time_point now = Clock::now();
  if (text.empty()) {
    const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(now - last).count();
    shell.AppendOutput("[" + std::to_string(passed) + "]\r\n");
  } else {
    shell.AppendOutput(LogEntry(text, detail));
  }
  last = now;
}

}  // namespace zendry
