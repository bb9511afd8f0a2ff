#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Core.h"

class QWidget;

namespace mavro {

class NativeWindow;

// Parameters and results of window messages: wide enough for a pointer.
using Param = std::intptr_t;

// Window messages, by the numbers of the window system that the framework's rules use.
enum Message : unsigned {
  WM_MOVE = 0x03,
  WM_SIZE = 0x05,
  WM_ACTIVATE = 0x06,
  WM_SETFOCUS = 0x07,  // wParam: 1 if a key or the program has moved it here
  WM_KILLFOCUS = 0x08,
  WM_ENABLE = 0x0A,   // the enabled state has changed; sent by painted windows only
  WM_SETTEXT = 0x0C,  // the text has changed; sent by containers only
  WM_PAINT = 0x0F,
  WM_CLOSE = 0x10,
  WM_SYSCOLORCHANGE = 0x15,  // the palette has changed; sent by painted windows only
  WM_DRAWITEM = 0x2B,
  WM_SETFONT = 0x30,  // the font has changed; sent by painted windows only
  WM_NOTIFY = 0x4E,
  WM_CONTEXTMENU = 0x7B,
  WM_NCCREATE = 0x81,
  WM_NCDESTROY = 0x82,
  WM_GETDLGCODE = 0x87,  // which keys the control wants; wParam: the key
  WM_KEYDOWN = 0x100,
  WM_KEYUP = 0x101,
  WM_CHAR = 0x102,
  WM_SYSKEYDOWN = 0x104,
  WM_SYSKEYUP = 0x105,
  WM_SYSCHAR = 0x106,
  WM_COMMAND = 0x111,
  WM_TIMER = 0x113,  // wParam: the timer's id
  WM_HSCROLL = 0x114,
  WM_VSCROLL = 0x115,
  // A control asks its container for its colours: wParam points to PaintColors, lParam is the
  // control's window; the answer is a Brush, or 0 for the control's own look.
  WM_CTLCOLOREDIT = 0x133,
  WM_CTLCOLORLISTBOX = 0x134,
  WM_CTLCOLORBTN = 0x135,
  WM_CTLCOLORDLG = 0x136,
  WM_CTLCOLORSCROLLBAR = 0x137,
  WM_CTLCOLORSTATIC = 0x138,
  WM_MOUSEMOVE = 0x200,
  WM_LBUTTONDOWN = 0x201,
  WM_LBUTTONUP = 0x202,
  WM_LBUTTONDBLCLK = 0x203,
  WM_RBUTTONDOWN = 0x204,
  WM_RBUTTONUP = 0x205,
  WM_RBUTTONDBLCLK = 0x206,
  WM_MBUTTONDOWN = 0x207,
  WM_MBUTTONUP = 0x208,
  WM_MBUTTONDBLCLK = 0x209,
  WM_MOUSEWHEEL = 0x20A,
  // Files were dropped on a form; wParam points to a vector of their paths, which may be taken.
  WM_DROPFILES = 0x233,  // wParam: the paths; lParam: the window under the drop
  WM_MOUSEENTER = 0x2A0,
  WM_MOUSELEAVE = 0x2A3,
  WM_CREATED = 0x428,  // private: the window has been made
  WM_REFLECT = 0x429,  // private: a message sent back to the control it came from
  WM_REVEAL = 0x42A    // private: the focus has come to a window inside this one, the lParam
};

// Values of wParam for WM_SIZE of a form.
enum SizeKind { cSizeRestored = 0, cSizeMinimized = 1, cSizeMaximized = 2 };

// Style words that the factories look at.
enum Style : uint32_t {
  WS_TABSTOP = 0x00010000,
  WS_VISIBLE = 0x10000000,
  WS_CLIPCHILDREN = 0x02000000,
  SS_CENTER = 0x1,
  SS_RIGHT = 0x2,
  ES_MULTILINE = 0x4,
  ES_UPPERCASE = 0x8,
  ES_PASSWORD = 0x20,
  ES_READONLY = 0x800,
  BS_AUTOCHECKBOX = 0x3,
  BS_GROUPBOX = 0x7,
  BS_AUTORADIOBUTTON = 0x9,
  BS_TYPEMASK = 0xF,
  LVS_REPORT = 0x1,
  CBS_DROPDOWN = 0x2,
  CBS_DROPDOWNLIST = 0x3
};

// Classes of a native child id: bits 12 to 15 are the route of a command, the rest is the index.
enum Route { cOwnRoute = 0x0000, cRowRoute = 0x1000, cChildRoute = 0x2000, cReflectRoute = 0x3000 };
constexpr int cRouteMask = 0xF000;
constexpr int cIndexMask = 0x0FFF;

// The way the focus comes to a window. A focus set by a key is shown, and a line of text is
// selected. The first focus of a form doesn't scroll its window into view.
enum class FocusBy { cProgram, cTab, cBacktab, cFirst };

// The colours that a container sets for a control that asks for them.
struct PaintColors {
  Color text;                // default: as the control has it
  Color back;                // behind the letters
  bool transparent = false;  // the ground shows behind the letters
};

// Head of the structure that WM_NOTIFY's lParam points to. Structures with more fields derive from
// it.
struct NotifyHeader {
  NativeWindow* from = nullptr;
  int id = 0;    // the native id of `from`
  int code = 0;  // what happened; the codes of a kind are with its interface
};

// The data that a window is made from.
struct CreateInfo {
  std::string_view className;
  uint32_t style = 0;
  uint32_t exStyle = 0;
  int id = 0;                      // native child id
  Rect bounds;                     // in the parent's client coordinates; on the screen for forms
  NativeWindow* parent = nullptr;  // null for forms without an owner
  Control* control = nullptr;      // creation data: the control of the window
};

// A native window: a widget, the index of its control, and the messages between them. The kinds of
// NativeControls.h add the functions that their controls need. Children are placed inside
// ClientWidget().
class NativeWindow {
 public:
  // Takes over `newWidget`, which has been made with ParentWidget(info) as its parent.
  NativeWindow(const CreateInfo& info, QWidget* newWidget);
  // Hides the widget and deletes it once no event of it is running.
  virtual ~NativeWindow();
  NativeWindow(const NativeWindow&) = delete;
  NativeWindow& operator=(const NativeWindow&) = delete;

  virtual std::string Text() const { return text; }
  virtual void SetText(const std::string& newText);
  // The widget that holds the children and whose size is the client size.
  virtual QWidget* ClientWidget() const { return widget; }
  // The widget that gets the keyboard when this window gets the focus.
  virtual QWidget* FocusWidget() const { return widget; }
  // The widget that has the font, the colours and the accessible name.
  virtual QWidget* StyledWidget() const { return FocusWidget(); }
  virtual void SetFont(const Font& font);
  virtual void SetColors(Color foreground, Color background);
  // cNone is the look that the kind has by itself.
  virtual void SetBorder(BorderStyle borderStyle);
  // The part of ClientWidget() that children are placed in, inside a border.
  virtual Rect ClientArea() const;
  // The area for docked children, in client coordinates.
  virtual Rect DockArea() const { return {0, 0, ClientWidth(), ClientHeight()}; }
  virtual void SetCursor(Cursor cursor);
  // True for windows that want Enter, Tab or the arrow keys for themselves.
  virtual bool WantsKey(int virtualKey) const;
  // True for windows that want a bare Tab only: with Shift or Ctrl it moves the focus.
  virtual bool LetsTabOut() const { return false; }

  void Move(const Rect& bounds);
  Rect Bounds() const;
  // The client area in screen coordinates.
  Rect ScreenClientRect() const;
  int ClientWidth() const;
  int ClientHeight() const;
  void Show(bool on);
  bool IsShown() const;
  // A form is blocked for input without being grayed; a child is grayed.
  void Enable(bool on);
  bool IsEnabled() const;
  void Focus(FocusBy by = FocusBy::cProgram);
  bool HasFocus() const;
  bool TakesFocus() const;
  // Shown as a tool tip; names the control for screen readers unless a text or a label does.
  void SetHint(const std::string& hint);
  // Names the control for screen readers, unless the program has named it.
  void SetAccessibleName(const std::string& name);
  void CaptureMouse(bool on);
  void Raise();
  void Invalidate();
  // Paints the invalid area now; kinds that show a burst in steps show all of it.
  virtual void Update();

  QWidget* const widget;
  const std::string className;
  NativeWindow* const parent;
  Control* const creationData;
  int id;
  // Index of the control in the application's list of displayable components, from 1; 0 for a
  // window that has none.
  long userData = 0;
  // True if the message handled last asked for default handling: Qt then gets its event. The second
  // flag says the same of the message that is being handled; others may be handled meanwhile.
  bool takeDefault = false;
  bool asksDefault = false;
  bool inputBlocked = false;
  // Messages without an action of the user whose handling has thrown; reported once.
  std::vector<unsigned> failedMessages;

 protected:
  std::string text;
};

// Makes a window of a registered class; null for an unknown class. WM_NCCREATE has been sent when
// it returns.
NativeWindow* MakeNativeWindow(const CreateInfo& info);
// Sends WM_NCDESTROY and destroys the window and its children.
void DestroyNativeWindow(NativeWindow* window);
// True while `window` exists.
bool IsWindow(const NativeWindow* window);

// The window procedure of all windows: finds the control and passes it the message. Exceptions of
// handlers end here, in one message box with their text.
Param WindowProc(NativeWindow* window, unsigned message, Param wParam, Param lParam);
// Default handling of a message: the widget gets the event that it came from.
Param DefaultProc(NativeWindow* window, unsigned message, Param wParam, Param lParam);

inline Param SendMessage(NativeWindow* window, unsigned message, Param wParam, Param lParam) {
  return WindowProc(window, message, wParam, lParam);
}

// Notify the owner of a native control of an action of the user: WM_COMMAND to the parent, with the
// control's id in the low word, `code` in the high word and the window as lParam; or WM_NOTIFY with
// a header. Both return the receiver's result. The window may be gone when they return: test with
// IsWindow.
Param NotifyCommand(NativeWindow* from, int code);
Param Notify(NotifyHeader& header);

// Packs two signed 16-bit numbers, a position or size, into one parameter.
constexpr Param PackPoint(int x, int y) {
  return static_cast<Param>((static_cast<uint32_t>(y & 0xFFFF) << 16) | (x & 0xFFFF));
}
constexpr int PointX(Param p) {
  return static_cast<int16_t>(p & 0xFFFF);
}
constexpr int PointY(Param p) {
  return static_cast<int16_t>((p >> 16) & 0xFFFF);
}

}  // namespace mavro
