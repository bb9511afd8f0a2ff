#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

// One row of the error list.
struct ErrorRow {
  std::string file;  // relative to the project's folder
  int line = 0;
  std::string text;
};

// A file that is open in a tab, and the line its caret stands on.
struct OpenFile {
  std::string path;
  int line = 0;
};

// The pages of the bottom pane that the core selects.
enum class BottomPage { cOutput = 0, cError = 1 };

class EditorText;

// What the core tells a person, or asks of the window, goes through this class: the main window
// implements it with its panels, the command line tools with standard output. What an
// implementation has no place for does nothing. Message boxes and questions go through
// mavro::Dialogs().
class Shell {
 public:
  virtual ~Shell() = default;

  // Output panel. Text is bytes as tools print them, lines ended by CR LF.
  virtual void AppendOutput(std::string_view text);
  virtual void ClearOutput();

  // Error list. Rows are appended at the end.
  virtual void AddErrorRow(const ErrorRow& row);
  virtual void AppendToLastErrorRow(std::string_view text);
  virtual void ClearErrorRows();
  virtual int ErrorRowCount();
  virtual void ShowFirstError();
  virtual void GoToNextError();
  virtual void GoToPreviousError();
  virtual void ShowBottomPage(BottomPage page);

  // Project tree. `type` is a FileKind; the resource file has the fixed id 0x1000.
  virtual void AddTreeNode(const std::string& path, int id, int type);
  virtual void RemoveTreeNode(int id);
  virtual void ClearTree();
  virtual void SelectTreeRoot();

  // Frame of the window.
  virtual void SetStatus(const std::string& text, const std::string& detail);
  virtual void SetCaption(const std::string& text);
  virtual void SetModeSelector(int mode);
  virtual int SelectedMode();           // what the mode selector shows: 0 release, 1 debug
  virtual void SetStopCommand(int id);  // command of the stop button; negative disables it
  virtual void PumpMessages();          // handles what waits in the message queue, then returns

  // Open files.
  virtual std::vector<OpenFile> OpenFiles();
  virtual std::string ActiveFile();  // full path; empty when no tab is active
  virtual void OpenFileAt(const std::string& path, int line);  // line 0: leave the caret
  virtual void ActivateFile(const std::string& path);
  // Asked before the session touches a file that was open the last time; false leaves it closed.
  virtual bool MayReopen(const std::string& path, int line);
  virtual bool CloseAllFiles();  // false when the user refuses
  virtual void SaveChangedFiles();
  virtual void RemoveErrorMark();

  // Tags.
  // The open editors of C and C++ text. Valid until the message queue runs.
  virtual std::vector<EditorText*> OpenTexts();
  // The tags of some file have been replaced: what shows them is to be filled again.
  virtual void TagsChanged();

  virtual bool IsDebuggerRunning();
};

// "\r\n------ TEXT --> DETAIL\r\n"; the form of every logged step.
std::string LogEntry(std::string_view text, std::string_view detail);

// Writes a log entry to the shell's output. An empty text writes "[", the milliseconds since the
// last message, and "]\r\n" instead.
void LogMessage(Shell& shell, std::string_view text, std::string_view detail);

}  // namespace zendry
