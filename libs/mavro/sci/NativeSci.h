#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "ListNote.h"
#include "NativeWindow.h"

namespace mavro {

// Notifications of the editing component, by its own names and numbers.
enum SciCode {
  SCN_CHARADDED = 2001,
  SCN_SAVEPOINTREACHED = 2002,
  SCN_SAVEPOINTLEFT = 2003,
  SCN_MODIFYATTEMPTRO = 2004,
  SCN_DOUBLECLICK = 2006,
  SCN_UPDATEUI = 2007,
  SCN_MODIFIED = 2008,  // before text is inserted or deleted: nothing has changed yet
  SCN_MACRORECORD = 2009,
  SCN_MARGINCLICK = 2010,
  SCN_DWELLSTART = 2016,
  SCN_DWELLEND = 2017,
  SCN_ZOOM = 2018,
  SCN_CALLTIPCLICK = 2021,
  SCN_AUTOCCOMPLETED = 2030,  // a row of a list was taken
  cSciForeignText = 1,        // a text with letters beyond ASCII is about to be typed or pasted
  cSciPaletteChanged = 2,     // the desktop's colours have changed
  cSciWillType = 3,           // a letter is about to be typed
  cSciTyped = 4,              // the letter was typed
  cSciWillEnter = 5,          // the Enter key is about to be handled
  cSciWillMove = 6,           // a key that moves in a list is about to be handled
  cSciWillCancel = 7,         // the Escape key is about to be handled
  cSciWillStep = 8,  // the Up or Down key is about to be handled, unless the answer isn't 0
  cSciKeyDone = 9    // any key has been handled
};

// A notification with the data of its code; the other fields are 0.
struct SciNotification : NotifyHeader {
  int position = 0;      // SCN_CALLTIPCLICK: 1 on the upper arrow, 2 on the lower one
  int character = 0;     // SCN_CHARADDED
  int step = 0;          // cSciWillStep: -1 up, 1 down
  int updated = 0;       // SCN_UPDATEUI: SC_UPDATE flags
  int modification = 0;  // SCN_MODIFIED: SC_MOD flags
  int length = 0;        // SCN_MODIFIED: bytes that are inserted or deleted
  int token = 0;         // SCN_MODIFIED: of an SCI_ADDUNDOACTION
  int margin = 0;        // SCN_MARGINCLICK
  int x = 0, y = 0;      // SCN_DWELLSTART
  unsigned message = 0;  // SCN_MACRORECORD
  unsigned long wParam = 0;
  const char* text = nullptr;  // SCN_MACRORECORD, SCN_AUTOCCOMPLETED
};

// A key press on its way to the component.
struct SciKey {
  int key = 0;             // of Key
  bool isShifted = false;  // the Shift key is held
  bool isCommand = false;  // another key is held with it: Ctrl, Alt, Meta
  bool isColumn = false;   // Alt and Shift are held
  std::string_view text;   // typed by it; empty for none
};

enum class FaceKind { cProportional, cFixed };

// The window of the editing component.
class NativeSci : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;

  // Group: how the editor changes text on its way in and out; set once the window exists.
  // Returns the text to insert in place of a given one from elsewhere.
  std::function<std::string(std::string_view)> fold;
  // Asked before a text from the clipboard is pasted over the selection; answers the text to paste.
  std::function<std::string(std::string)> pasted;
  // Asked before a key press is handled; true if the editor has carried it out itself.
  std::function<bool(const SciKey&)> keyed;
  // A caret is added at a byte by the mouse; with `drags`, that caret's selection ends there.
  std::function<void(int position, bool drags)> caretAdded;
  // Answers the text to copy in place of the selections' texts one after the other.
  std::function<std::string(std::string)> copied;
  // Returns a function if a text of the window is a different one elsewhere. The function returns
  // that text, even after the editor is gone.
  std::function<std::function<std::string()>(const std::string&)> wholeOf;

  virtual Param Send(unsigned message, Param wParam, Param lParam) const = 0;
  // A message whose lParam is a picture, given as XPM text.
  virtual void SendImage(unsigned message, int number, const char* xpm) const = 0;
  // True if a list can open at a byte. The component fails with a list whose place is on no screen,
  // as in a long line that is scrolled.
  virtual bool IsOnScreen(int position) const = 0;
  // Called before a list is opened: its rows show what `noteOf` says about their names. Without it
  // the rows show only the names.
  virtual void SetListNotes(std::function<ListNote(const std::string& name)> noteOf) = 0;
  // What the window shows stays as it is until painting goes on; then all of it is painted, or only
  // what changes later.
  enum class Painting { cHeld, cGoesOn, cGoesOnWithAll };
  virtual void SetPainting(Painting painting) = 0;
  // True if the desktop's colours are dark now.
  virtual bool IsDark() const = 0;
  // The face of the desktop's fixed or proportional font.
  virtual std::string DefaultFace(FaceKind kind) const = 0;
};

// Registers the native class of editors; called before the first editor's window is made.
void RegisterSciClass();
constexpr const char* cSciClass = "Scintilla";

}  // namespace mavro
