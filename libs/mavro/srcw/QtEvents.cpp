#include "QtEvents.h"

#include <QAbstractScrollArea>
#include <QContextMenuEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

#include "Events.h"
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

int HeldButtons(Qt::MouseButtons buttons) {
  int held = 0;
  if (buttons & Qt::LeftButton) held |= MouseArgs::cLeft;
  if (buttons & Qt::RightButton) held |= MouseArgs::cRight;
  if (buttons & Qt::MiddleButton) held |= MouseArgs::cMiddle;
  return held;
}

// Press, release and double click of a button follow each other in this order; 0 for other buttons.
unsigned ButtonMessage(Qt::MouseButton button, QEvent::Type type) {
  unsigned press = 0;
  if (button == Qt::LeftButton) press = WM_LBUTTONDOWN;
  if (button == Qt::RightButton) press = WM_RBUTTONDOWN;
  if (button == Qt::MiddleButton) press = WM_MBUTTONDOWN;
  if (press == 0 || type == QEvent::MouseButtonPress) return press;
  return type == QEvent::MouseButtonRelease ? press + 1 : press + 2;
}

}  // namespace

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

QtEvents::QtEvents(NativeWindow& its, QWidget* widget) : QObject(widget), window(&its) {
  setObjectName("mavroEvents");
  widget->installEventFilter(this);
  if (auto* scrolling = qobject_cast<QAbstractScrollArea*>(widget))
    scrolling->viewport()->installEventFilter(this);
}

// Answers whether the event is used up. A window that went meanwhile wants no more of it.
bool QtEvents::Send(unsigned message, Param wParam, Param lParam) {
  NativeWindow* target = window;
  target->takeDefault = false;
  SendMessage(target, message, wParam, lParam);
  return !window || !target->takeDefault;
}

bool QtEvents::OnKey(QEvent* event) {
  auto* key = static_cast<QKeyEvent*>(event);
  const int virtualKey = VirtualKeyOf(key->key());
  const bool system = key->modifiers() & Qt::AltModifier;
  if (event->type() == QEvent::KeyRelease) {
    if (key->isAutoRepeat()) return false;
    return Send(system ? WM_SYSKEYUP : WM_KEYUP, virtualKey, 0);
  }
  if (Send(system ? WM_SYSKEYDOWN : WM_KEYDOWN, virtualKey, key->count())) return true;
  for (const char character : key->text().toUtf8())
    if (Send(system ? WM_SYSCHAR : WM_CHAR, static_cast<unsigned char>(character), key->count()))
      return true;
  return false;
}

bool QtEvents::OnMouse(QObject* watched, QEvent* event) {
  auto* from = static_cast<QWidget*>(watched);
  if (event->type() == QEvent::Wheel) {
    auto* wheel = static_cast<QWheelEvent*>(event);
    const QPoint at = from->mapTo(window->widget, wheel->position().toPoint());
    return Send(WM_MOUSEWHEEL, wheel->angleDelta().y() / cAngleUnitsPerDegree,
                PackPoint(at.x(), at.y()));
  }
  auto* mouse = static_cast<QMouseEvent*>(event);
  QPoint at = mouse->position().toPoint();
  if (from != window->widget && from != window->ClientWidget())
    at = from->mapTo(window->widget, at);
  else
    at -= QPoint(window->ClientArea().left, window->ClientArea().top);
  const Param place = PackPoint(at.x(), at.y());
  if (event->type() == QEvent::MouseMove)
    return Send(WM_MOUSEMOVE, HeldButtons(mouse->buttons()), place);
  const unsigned message = ButtonMessage(mouse->button(), event->type());
  return message != 0 && Send(message, HeldButtons(mouse->buttons()), place);
}

// Where the mouse is now, and which buttons are held.
void QtEvents::SendCrossing(unsigned message) {
  const QPoint at = window->ClientWidget()->mapFromGlobal(QCursor::pos()) -
                    QPoint(window->ClientArea().left, window->ClientArea().top);
  Send(message, HeldButtons(QGuiApplication::mouseButtons()), PackPoint(at.x(), at.y()));
}

// Events that tell what has happened to the window: Qt has them in any case.
bool QtEvents::OnWindow(QObject* watched, QEvent* event) {
  const bool isForm = window->widget->isWindow();
  switch (event->type()) {
    case QEvent::Move:
      if (watched == window->widget) Send(WM_MOVE, 0, 0);
      break;
    case QEvent::Resize:
      if (watched == window->ClientWidget())
        Send(WM_SIZE, isForm && window->widget->isMaximized() ? cSizeMaximized : cSizeRestored,
             PackPoint(window->ClientWidth(), window->ClientHeight()));
      break;
    case QEvent::FocusIn:
      Send(WM_SETFOCUS, 0, 0);
      break;
    case QEvent::FocusOut:
      Send(WM_KILLFOCUS, 0, 0);
      break;
    case QEvent::Enter:
      if (watched == window->widget) SendCrossing(WM_MOUSEENTER);
      break;
    case QEvent::Leave:
      if (watched == window->widget) SendCrossing(WM_MOUSELEAVE);
      break;
    case QEvent::WindowActivate:
      if (isForm && watched == window->widget) Send(WM_ACTIVATE, 1, 0);
      break;
    case QEvent::WindowDeactivate:
      if (isForm && watched == window->widget) Send(WM_ACTIVATE, 0, 0);
      break;
    case QEvent::WindowStateChange:
      if (isForm && watched == window->widget)
        Send(WM_SIZE,
             window->widget->isMinimized()   ? cSizeMinimized
             : window->widget->isMaximized() ? cSizeMaximized
                                             : cSizeRestored,
             PackPoint(window->ClientWidth(), window->ClientHeight()));
      break;
    default:
      break;
  }
  return false;
}

bool QtEvents::eventFilter(QObject* watched, QEvent* event) {
  if (!window) return false;
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return OnKey(event);
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
      return OnMouse(watched, event);
    case QEvent::ContextMenu: {
      auto* request = static_cast<QContextMenuEvent*>(event);
      if (request->reason() == QContextMenuEvent::Keyboard)
        return Send(WM_CONTEXTMENU, 0, PackPoint(-1, -1));
      return Send(WM_CONTEXTMENU, 0, PackPoint(request->globalX(), request->globalY()));
    }
    case QEvent::Close:
      if (!window->widget->isWindow() || watched != window->widget) return false;
      event->ignore();
      Send(WM_CLOSE, 0, 0);
      return true;
    default:
      return OnWindow(watched, event);
  }
}

}  // namespace mavro
