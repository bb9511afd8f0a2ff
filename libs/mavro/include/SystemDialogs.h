#pragma once

#include <string>
#include <vector>

#include "Color.h"

namespace mavro {

// Which buttons a message box has, its picture, and that Enter means No instead of Yes; the numbers
// are those of the box's flags.
enum MessageFlags {
  cOkOnly = 0,
  cYesNoCancel = 3,
  cYesNo = 4,
  cErrorIcon = 0x10,
  cDefaultNo = 0x100
};
// What the user pressed.
enum class Answer { cOk, cYes, cNo, cCancel };

// What a file dialog is asked. Filters are pairs separated by "|": description, then patterns with
// ";".
struct FileQuestion {
  enum Mode { cOpen, cSave };
  Mode mode = cOpen;
  std::string title;
  std::string folder;  // where it starts; empty for the current folder
  std::string name;    // suggested name
  std::string filter = "All Files|*.*";
  std::string defaultExtension;  // appended to a name without one when saving; no dot
  bool multiple = false;
};

// The one table through which message boxes and standard dialogs go. Tests replace its entries by
// scripted answers; without windows, messages go to standard error, questions are answered with the
// harmless choice (Cancel, else No) and file dialogs are cancelled.
struct DialogTable {
  // Shows a message box with the buttons and the picture that `flags` tell. Escape and the close
  // button mean Cancel, or Ok where that is all; a box with Yes and No has no answer by them.
  Answer (*message)(const std::string& text, const std::string& title, int flags);
  // The chosen absolute paths, forward slashes; empty when cancelled.
  std::vector<std::string> (*chooseFiles)(const FileQuestion& question);
  // The chosen folder, no trailing slash; empty when cancelled.
  std::string (*chooseFolder)(const std::string& title, const std::string& start);
  void (*beep)();
  // True when a colour was chosen, which `color` then is; it tells the one to start from.
  bool (*chooseColor)(const std::string& title, Color& color);
};

// The table in force; its entries may be replaced.
DialogTable& Dialogs();

// Shows `text` under the title "Information".
void Information(const std::string& text);
// Asks under the title "Confirmation": Yes and No, with Cancel too when `cancelled` is given, which
// then tells whether that was the answer. Returns whether it was Yes.
bool Confirm(const std::string& text, bool* cancelled = nullptr);
// Asks whether to do what loses something: Yes and No, of which Enter means No.
bool ConfirmLoss(const std::string& text);
void Beep();

}  // namespace mavro
