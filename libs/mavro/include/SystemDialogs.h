#pragma once

#include <string>
#include <vector>

#include "Color.h"

namespace mavro {

// The buttons of a message box, its picture, and a flag that makes No, not Yes, the answer of
// Enter. The numbers are those of the box's flags.
enum MessageFlags {
  cOkOnly = 0,
  cYesNoCancel = 3,
  cYesNo = 4,
  cErrorIcon = 0x10,
  cDefaultNo = 0x100
};
// The button that the user pressed.
enum class Answer { cOk, cYes, cNo, cCancel };

// The parameters of a file dialog. Filters are pairs separated by "|": description, then patterns
// with ";".
struct FileQuestion {
  enum Mode { cOpen, cSave };
  Mode mode = cOpen;
  std::string title;
  std::string folder;  // the first folder; empty for the current one
  std::string name;    // suggested name
  std::string filter = "All Files|*.*";
  std::string defaultExtension;  // appended to a name without one when saving; no dot
  bool multiple = false;
};

// The table of functions that show all message boxes and standard dialogs. Tests replace its
// entries with scripted answers. Without windows, messages go to standard error, questions are
// answered with the harmless choice (Cancel, else No) and file dialogs are cancelled.
struct DialogTable {
  // Shows a message box with the buttons and the picture in `flags`. Escape and the close button
  // mean Cancel, or Ok if that is the only button; in a box with Yes and No they have no effect.
  Answer (*message)(const std::string& text, const std::string& title, int flags);
  // The chosen absolute paths, with forward slashes; empty if the user cancelled.
  std::vector<std::string> (*chooseFiles)(const FileQuestion& question);
  // The chosen folder, without a trailing slash; empty if the user cancelled.
  std::string (*chooseFolder)(const std::string& title, const std::string& start);
  void (*beep)();
  // True if a colour was chosen. `color` is first the initial colour, then the chosen one.
  bool (*chooseColor)(const std::string& title, Color& color);
};

// The current table; its entries may be replaced.
DialogTable& Dialogs();

// Shows `text` under the title "Information".
void Information(const std::string& text);
// Asks under the title "Confirmation": Yes and No, and also Cancel if `cancelled` is not null;
// `*cancelled` is then true if the answer was Cancel. Returns true for Yes.
bool Confirm(const std::string& text, bool* cancelled = nullptr);
// Asks before an action that loses data: Yes and No; Enter means No.
bool ConfirmLoss(const std::string& text);
void Beep();

}  // namespace mavro
