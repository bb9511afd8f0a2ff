#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

class EditorText;

// The interfaces by which the core reports to the user or asks something of the window. They are
// small and split by subject: a module takes the one it needs. The main window implements them all
// with its panels. No function has a default here, so that a class that forgets one doesn't
// compile. Programs without a window begin with QuietShell. Message boxes and questions go through
// mavro::Dialogs().

// One row of the error list.
struct ErrorRow {
  std::string file;  // relative to the project's folder
  int line = 0;
  std::string text;
  int column = 0;  // as the compiler counts: from 1, TAB stops at each 8; 0 if it names none
};

// A file that is open in a tab, and the line its caret is on.
struct OpenFile {
  std::string path;
  int line = 0;
};

// The pages of the bottom pane that the core selects.
enum class BottomPage { cOutput = 0, cError = 1 };

// The Output panel. Text is bytes as tools print them, lines ended by CR LF.
class OutputShell {
 public:
  virtual ~OutputShell() = default;
  virtual void AppendOutput(std::string_view text) = 0;
  virtual void ClearOutput() = 0;
};

// The error list. Rows are appended at the end.
class ErrorShell {
 public:
  virtual ~ErrorShell() = default;
  virtual void AddErrorRow(const ErrorRow& row) = 0;
  virtual void AppendToLastErrorRow(std::string_view text) = 0;
  virtual void ClearErrorRows() = 0;
  virtual int ErrorRowCount() = 0;
  virtual void ShowErrorRow(int row) = 0;  // does nothing if there is no such row
  virtual void GoToNextError() = 0;
  virtual void GoToPreviousError() = 0;
  // Removes the mark of the current row from the text.
  virtual void RemoveErrorMark() = 0;
};

// The project tree. `type` is a FileKind; the resource file has the fixed id 0x1000.
class TreeShell {
 public:
  virtual ~TreeShell() = default;
  virtual void AddTreeNode(const std::string& path, int id, int type) = 0;
  virtual void RemoveTreeNode(int id) = 0;
  virtual void ClearTree() = 0;
  virtual void SelectTreeRoot() = 0;
};

// The frame of the window.
class FrameShell {
 public:
  virtual ~FrameShell() = default;
  virtual void SetStatus(const std::string& text, const std::string& detail) = 0;
  virtual void SetCaption(const std::string& text) = 0;
  virtual void SetModeSelector(int mode) = 0;
  virtual int SelectedMode() = 0;           // value of the mode selector: 0 release, 1 debug
  virtual void SetStopCommand(int id) = 0;  // command of the stop button; negative disables it
  virtual void ShowBottomPage(BottomPage page) = 0;
  virtual void PumpMessages() = 0;  // handles the waiting messages, then returns
  // The same, called about 30 times a second while tools run.
  virtual void AnswerWhileRunning() = 0;
  // Shows how far a long work is: in words, and as a bar. A total of 0 means that nothing is done.
  virtual void SetProgress(const std::string& text, int done, int total) = 0;
  virtual bool IsDebuggerRunning() = 0;
  // The project has been closed, or another one begins: what belonged to it is over.
  virtual void ProjectReplaced() = 0;
};

// The open files and their texts.
class FilesShell {
 public:
  virtual ~FilesShell() = default;
  virtual std::vector<OpenFile> OpenFiles() = 0;
  virtual std::string ActiveFile() = 0;  // full path; empty when no tab is active
  virtual void OpenFileAt(const std::string& path, int line) = 0;  // line 0: leave the caret
  virtual void ActivateFile(const std::string& path) = 0;
  // Called before the session opens a file that was open the last time; false leaves it closed.
  virtual bool MayReopen(const std::string& path, int line) = 0;
  // Closing all files is two steps, so that nothing is closed before all questions are answered:
  // asking about unsaved changes, false when the user cancels; and closing without asking.
  virtual bool MayCloseAllFiles() = 0;
  virtual void CloseAllFiles() = 0;
  virtual void SaveChangedFiles() = 0;
  // The open editors of C and C++ text. Valid until the message queue runs.
  virtual std::vector<EditorText*> OpenTexts() = 0;
  // The tags of some file have been replaced: the views that show them must be filled again.
  virtual void TagsChanged() = 0;
};

// All the interfaces together, for builds and the project.
class Shell : public OutputShell,
              public ErrorShell,
              public TreeShell,
              public FrameShell,
              public FilesShell {};

// "\r\n------ TEXT --> DETAIL\r\n"; the form of every logged step.
std::string LogEntry(std::string_view text, std::string_view detail);

// Writes "[", the milliseconds that a step has taken, and "]\r\n".
void LogTime(OutputShell& shell, long milliseconds);

// Writes a log entry to the output. An empty text writes "[", the milliseconds since the last
// message, and "]\r\n" instead.
void LogMessage(OutputShell& shell, std::string_view text, std::string_view detail);

}  // namespace zendry
