#include "QtInput.h"

#include <QAbstractItemView>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenuBar>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <QWidget>
#include <typeinfo>
#include <unordered_map>
#include <utility>

#include "Events.h"
#include "NativeWindow.h"
#include "SysImpl.h"
#include "Virtual.h"

namespace mavro {

namespace {

constexpr int cAngleUnitsPerDegree = 8;

struct KeyRow {
  int toolkitKey;
  int virtualKey;
};

constexpr KeyRow cKeys[] = {
    {Qt::Key_Backspace, VK_BACK}, {Qt::Key_Tab, VK_TAB},       {Qt::Key_Backtab, VK_TAB},
    {Qt::Key_Return, VK_RETURN},  {Qt::Key_Enter, VK_RETURN},  {Qt::Key_Escape, VK_ESCAPE},
    {Qt::Key_Space, VK_SPACE},    {Qt::Key_PageUp, VK_PRIOR},  {Qt::Key_PageDown, VK_NEXT},
    {Qt::Key_End, VK_END},        {Qt::Key_Home, VK_HOME},     {Qt::Key_Left, VK_LEFT},
    {Qt::Key_Up, VK_UP},          {Qt::Key_Right, VK_RIGHT},   {Qt::Key_Down, VK_DOWN},
    {Qt::Key_Insert, VK_INSERT},  {Qt::Key_Delete, VK_DELETE}, {Qt::Key_Shift, 0x10},
    {Qt::Key_Control, 0x11},      {Qt::Key_Alt, 0x12},         {Qt::Key_Menu, 0x5D},
    {Qt::Key_Semicolon, 0xBA},    {Qt::Key_Colon, 0xBA},       {Qt::Key_Plus, 0xBB},
    {Qt::Key_Equal, 0xBB},        {Qt::Key_Comma, 0xBC},       {Qt::Key_Less, 0xBC},
    {Qt::Key_Minus, 0xBD},        {Qt::Key_Underscore, 0xBD},  {Qt::Key_Period, 0xBE},
    {Qt::Key_Greater, 0xBE},      {Qt::Key_Slash, 0xBF},       {Qt::Key_Question, 0xBF},
    {Qt::Key_QuoteLeft, 0xC0},    {Qt::Key_AsciiTilde, 0xC0},
};

enum class InputKind { cNone, cKey, cMouse, cWheel, cContext };

InputKind KindOf(QEvent::Type type) {
  switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return InputKind::cKey;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
      return InputKind::cMouse;
    case QEvent::Wheel:
      return InputKind::cWheel;
    case QEvent::ContextMenu:
      return InputKind::cContext;
    default:
      return InputKind::cNone;
  }
}

// One event on its way from the widget it was meant for to those around it.
struct Delivery {
  Delivery* outer;
  const NativeWindow* reached = nullptr;  // the window it has come to; only ever compared
};

Delivery* theDelivery = nullptr;
Qt::FocusReason theFocusReason = Qt::NoFocusReason;
NativeWindow* theFocused = nullptr;  // the window that was notified that it has the focus

class DeliveryScope {
 public:
  DeliveryScope() : delivery{theDelivery} { theDelivery = &delivery; }
  ~DeliveryScope() { theDelivery = delivery.outer; }
  DeliveryScope(const DeliveryScope&) = delete;
  DeliveryScope& operator=(const DeliveryScope&) = delete;

 private:
  Delivery delivery;
};

std::unordered_map<const QWidget*, NativeWindow*>& WindowsByWidget() {
  static std::unordered_map<const QWidget*, NativeWindow*> windows;
  return windows;
}

// The window that takes a widget's input. A disabled window takes none: the one around it does.
NativeWindow* InputWindowOf(const QWidget* widget) {
  NativeWindow* window = WindowOf(widget);
  while (window && !window->widget->isEnabled()) window = WindowOf(window->widget->parentWidget());
  return window;
}

// True for scroll bars, headers, menu bars and the editors of cells: for the mouse and the keyboard
// they are windows of their own, but they belong to no control.
bool IsInternalPart(const QWidget* part, const NativeWindow& window) {
  for (; part && part != window.widget; part = part->parentWidget()) {
    if (qobject_cast<const QScrollBar*>(part) || qobject_cast<const QHeaderView*>(part) ||
        qobject_cast<const QMenuBar*>(part))
      return true;
    const auto* view = qobject_cast<const QAbstractItemView*>(window.widget);
    if (view && part->parentWidget() == view->viewport()) return true;
  }
  return false;
}

// The messages for press, release and double click of a button have consecutive numbers in this
// order; 0 for other buttons.
unsigned ButtonMessage(Qt::MouseButton button, QEvent::Type type) {
  unsigned press = 0;
  if (button == Qt::LeftButton) press = WM_LBUTTONDOWN;
  if (button == Qt::RightButton) press = WM_RBUTTONDOWN;
  if (button == Qt::MiddleButton) press = WM_MBUTTONDOWN;
  if (press == 0 || type == QEvent::MouseButtonPress) return press;
  return type == QEvent::MouseButtonRelease ? press + 1 : press + 2;
}

// True if the message is used up. It is also used up if the window is destroyed meanwhile.
bool Send(NativeWindow* window, unsigned message, Param wParam, Param lParam) {
  SendMessage(window, message, wParam, lParam);
  return !IsWindow(window) || !window->takeDefault;
}

bool SendKey(NativeWindow* window, const QKeyEvent& key) {
  const int virtualKey = VirtualKeyOf(key.key());
  const bool system = key.modifiers() & Qt::AltModifier;
  if (key.type() == QEvent::KeyRelease)
    return !key.isAutoRepeat() && Send(window, system ? WM_SYSKEYUP : WM_KEYUP, virtualKey, 0);
  const int count = key.count();
  const QByteArray characters = key.text().toUtf8();
  if (Send(window, system ? WM_SYSKEYDOWN : WM_KEYDOWN, virtualKey, count)) return true;
  for (const char character : characters)
    if (Send(window, system ? WM_SYSCHAR : WM_CHAR, static_cast<unsigned char>(character), count))
      return true;
  return false;
}

// A place of one of the window's widgets in the coordinates that its children are placed in.
Param ClientPlace(const NativeWindow& window, const QWidget* part, QPoint at) {
  const Rect area = window.ClientArea();
  const QWidget* client = window.ClientWidget();
  if (part != client)
    at = part->mapTo(window.widget, at) - client->mapTo(window.widget, QPoint(0, 0));
  return PackPoint(at.x() - area.left, at.y() - area.top);
}

bool SendMouse(NativeWindow* window, const QWidget* part, const QMouseEvent& mouse) {
  const Param place = ClientPlace(*window, part, mouse.position().toPoint());
  const Param held = HeldButtons(mouse.buttons());
  if (mouse.type() == QEvent::MouseMove) return Send(window, WM_MOUSEMOVE, held, place);
  const unsigned message = ButtonMessage(mouse.button(), mouse.type());
  return message != 0 && Send(window, message, held, place);
}

// On its way up a wheel event keeps the place that it had in the first widget.
bool SendWheel(NativeWindow* window, const QWidget* part, const QWheelEvent& wheel) {
  const QPoint at = part->mapFromGlobal(wheel.globalPosition().toPoint());
  return Send(window, WM_MOUSEWHEEL, wheel.angleDelta().y() / cAngleUnitsPerDegree,
              ClientPlace(*window, part, at));
}

bool SendContext(NativeWindow* window, const QContextMenuEvent& request) {
  const bool byKey = request.reason() == QContextMenuEvent::Keyboard;
  return Send(window, WM_CONTEXTMENU, 0,
              byKey ? PackPoint(-1, -1) : PackPoint(request.globalX(), request.globalY()));
}

bool SendInput(InputKind kind, NativeWindow* window, const QWidget* part, QEvent* event) {
  switch (kind) {
    case InputKind::cKey:
      return SendKey(window, *static_cast<QKeyEvent*>(event));
    case InputKind::cMouse:
      return SendMouse(window, part, *static_cast<QMouseEvent*>(event));
    case InputKind::cWheel:
      return SendWheel(window, part, *static_cast<QWheelEvent*>(event));
    case InputKind::cContext:
      return SendContext(window, *static_cast<QContextMenuEvent*>(event));
    case InputKind::cNone:
      break;
  }
  return false;
}

// In the destructor of its base a control is of its own class no more: its window may hide, but
// nothing of the class may be called.
bool IsBeingDestroyed(NativeWindow* window) {
  const Control* control = ControlOf(window);
  return control && typeid(*control) == typeid(Control);
}

}  // namespace

int HeldButtons(Qt::MouseButtons buttons) {
  int held = 0;
  if (buttons & Qt::LeftButton) held |= MouseArgs::cLeft;
  if (buttons & Qt::RightButton) held |= MouseArgs::cRight;
  if (buttons & Qt::MiddleButton) held |= MouseArgs::cMiddle;
  return held;
}

int VirtualKeyOf(int key) {
  if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z)) return key;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return VK_F1 + key - Qt::Key_F1;
  for (const KeyRow& row : cKeys)
    if (row.toolkitKey == key) return row.virtualKey;
  return 0;
}

int LiveModifiers() {
  const Qt::KeyboardModifiers keys = QGuiApplication::keyboardModifiers();
  const Qt::MouseButtons buttons = QGuiApplication::mouseButtons();
  int modifiers = 0;
  if (keys & Qt::ShiftModifier) modifiers |= cShift;
  if (keys & Qt::ControlModifier) modifiers |= cControl;
  if ((keys & Qt::AltModifier) || (buttons & Qt::MiddleButton)) modifiers |= cAltOrMiddle;
  if (buttons & Qt::LeftButton) modifiers |= cPrimary;
  return modifiers;
}

bool ToolkitApplication::notify(QObject* receiver, QEvent* event) {
  if (KindOf(event->type()) == InputKind::cNone) return QApplication::notify(receiver, event);
  const DeliveryScope delivery;
  return QApplication::notify(receiver, event);
}

NativeWindow* WindowOf(const QWidget* widget) {
  const auto& windows = WindowsByWidget();
  for (; widget; widget = widget->parentWidget()) {
    const auto found = windows.find(widget);
    if (found != windows.end()) return found->second;
    if (widget->isWindow()) return nullptr;
  }
  return nullptr;
}

void RegisterWidget(const QWidget* widget, NativeWindow* window) {
  WindowsByWidget()[widget] = window;
}

void UnregisterWidget(const QWidget* widget) {
  const auto found = WindowsByWidget().find(widget);
  if (found == WindowsByWidget().end()) return;
  if (theFocused == found->second) theFocused = nullptr;
  WindowsByWidget().erase(found);
}

bool OfferInput(QWidget* receiver, QEvent* event) {
  const InputKind kind = KindOf(event->type());
  if (kind == InputKind::cNone || !theDelivery) return false;
  NativeWindow* window = InputWindowOf(receiver);
  if (!window || window == theDelivery->reached) return false;
  const bool goesUp = kind == InputKind::cWheel || kind == InputKind::cContext;
  const bool isFirst = !theDelivery->reached;
  if (isFirst && IsInternalPart(receiver, *window)) {
    if (!goesUp) theDelivery->reached = window;
    return false;
  }
  theDelivery->reached = window;
  if ((isFirst || goesUp) && !SendInput(kind, window, receiver, event)) return false;
  event->accept();
  return true;
}

void FocusComes(const QFocusEvent& event) {
  theFocusReason = event.reason();
}

void FocusMoved(const QWidget* now) {
  // Menus take the keys for a while, not the focus.
  if (now ? now->window()->windowType() == Qt::Popup || qobject_cast<const QMenuBar*>(now)
          : QApplication::activePopupWidget() != nullptr)
    return;
  NativeWindow* window = WindowOf(now);
  if (window == theFocused) return;
  NativeWindow* before = std::exchange(theFocused, nullptr);
  if (IsWindow(before) && !IsBeingDestroyed(before)) SendMessage(before, WM_KILLFOCUS, 0, 0);
  // A handler may have sent the focus elsewhere, or destroyed its window.
  if (theFocused || !IsWindow(window) || WindowOf(QApplication::focusWidget()) != window) return;
  theFocused = window;
  const bool isMoved =
      theFocusReason == Qt::TabFocusReason || theFocusReason == Qt::BacktabFocusReason ||
      theFocusReason == Qt::ShortcutFocusReason || theFocusReason == Qt::OtherFocusReason;
  SendMessage(window, WM_SETFOCUS, isMoved, 0);
}

}  // namespace mavro
