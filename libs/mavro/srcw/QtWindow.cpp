#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QPalette>
#include <QWidget>
#include <QWindow>
#include <unordered_set>
#include <vector>

#include "NativeWindow.h"
#include "QtEvents.h"
#include "QtFactories.h"
#include "QtInput.h"
#include "QtLoop.h"
#include "QtPalette.h"
#include "QtText.h"
#include "Saturate.h"
#include "SysImpl.h"

namespace mavro {

namespace {

std::unordered_set<const NativeWindow*>& LiveWindows() {
  static std::unordered_set<const NativeWindow*> windows;
  return windows;
}

constexpr Qt::CursorShape cCursorShapes[] = {
    Qt::ArrowCursor,   Qt::ArrowCursor,     Qt::IBeamCursor,        Qt::WaitCursor,
    Qt::CrossCursor,   Qt::UpArrowCursor,   Qt::PointingHandCursor, Qt::SizeVerCursor,
    Qt::SizeHorCursor, Qt::SizeFDiagCursor, Qt::SizeBDiagCursor,    Qt::SizeAllCursor};

// The frame that a widget was made with.
constexpr char cOwnFrameProperty[] = "mavroOwnFrame";

QtEvents* EventsOf(QWidget* widget) {
  return static_cast<QtEvents*>(
      widget->findChild<QObject*>("mavroEvents", Qt::FindDirectChildrenOnly));
}

// True if screen readers call a widget by the text it shows.
bool IsNamedByText(const QWidget& named) {
  return qobject_cast<const QAbstractButton*>(&named) || qobject_cast<const QLabel*>(&named) ||
         qobject_cast<const QGroupBox*>(&named);
}

}  // namespace

QColor ToScreenColor(Color color, const QPalette& palette) {
  switch (color.Value()) {
    case Color::cWindow:
      return palette.color(QPalette::Base);
    case Color::cWindowText:
      return palette.color(QPalette::Text);
    case Color::cControl:
      return palette.color(QPalette::Window);
    case Color::cControlText:
      return palette.color(QPalette::WindowText);
    case Color::cControlShadow:
      return palette.color(QPalette::Mid);
    default:
      return QColor::fromRgb(static_cast<QRgb>(color.Value()));
  }
}

QFont ToScreenFont(const Font& font, const QFont& base) {
  QFont result = base;
  if (!font.face.empty()) result.setFamily(ToScreen(font.face));
  if (font.size > 0) result.setPointSize(font.size);
  result.setBold(font.style & Font::cBold);
  result.setItalic(font.style & Font::cItalic);
  return result;
}

QWidget* ParentWidget(const CreateInfo& info) {
  return info.parent ? info.parent->ClientWidget() : nullptr;
}

NativeWindow::NativeWindow(const CreateInfo& info, QWidget* newWidget)
    : widget(newWidget),
      className(info.className),
      parent(info.parent),
      creationData(info.control),
      id(info.id) {
  LiveWindows().insert(this);
  RegisterWidget(widget, this);
  if (!widget->isWindow()) {
    widget->hide();
    Move(info.bounds);
  }
  new QtEvents(*this, widget);
}

NativeWindow::~NativeWindow() {
  LiveWindows().erase(this);
  UnregisterWidget(widget);
  if (QtEvents* events = EventsOf(widget)) events->Detach();
  widget->hide();
  widget->deleteLater();
}

bool IsWindow(const NativeWindow* window) {
  return window && LiveWindows().count(window) > 0;
}

void DestroyNativeWindow(NativeWindow* window) {
  WindowProc(window, WM_NCDESTROY, 0, 0);
  delete window;
}

void NativeWindow::SetText(const std::string& newText) {
  text = newText;
}

void NativeWindow::SetFont(const Font& font) {
  StyledWidget()->setFont(ToScreenFont(font, QApplication::font(StyledWidget())));
}

// The colours of a container are ground and plain text for its children too, which inherit them;
// edits, lists and buttons in it keep their own.
void NativeWindow::SetColors(Color foreground, Color background) {
  using Roles = std::vector<QPalette::ColorRole>;
  const bool holdsChildren = creationData->impl->type != SysImpl::cControl;
  QWidget* painted = StyledWidget();
  const QPalette current = QApplication::palette(painted);
  QPalette palette;
  palette.setResolveMask(0);
  const auto paint = [&](Color color, const Roles& roles) {
    for (const auto role : roles) palette.setColor(role, ToScreenColor(color, current));
  };
  if (!foreground.IsDefault())
    paint(foreground, holdsChildren
                          ? Roles{QPalette::WindowText}
                          : Roles{QPalette::WindowText, QPalette::Text, QPalette::ButtonText});
  // A form of the system's colour follows when the system changes it.
  const bool isPlainForm = painted->isWindow() && background == Color(Color::cControl);
  if (!background.IsDefault() && !isPlainForm) {
    paint(background, holdsChildren ? Roles{QPalette::Window}
                                    : Roles{QPalette::Window, QPalette::Base, QPalette::Button});
    painted->setAutoFillBackground(true);
  } else if (!painted->isWindow()) {
    painted->setAutoFillBackground(false);
  }
  painted->setPalette(palette);
}

void NativeWindow::SetBorder(BorderStyle borderStyle) {
  auto* frame = qobject_cast<QFrame*>(widget);
  if (!frame) return;
  static constexpr int cFrames[] = {QFrame::NoFrame, QFrame::StyledPanel | QFrame::Sunken,
                                    QFrame::Box | QFrame::Sunken, QFrame::Box | QFrame::Plain,
                                    QFrame::Panel | QFrame::Raised};
  const QVariant own = frame->property(cOwnFrameProperty);
  if (!own.isValid()) frame->setProperty(cOwnFrameProperty, frame->frameStyle());
  if (borderStyle == BorderStyle::cNone)
    frame->setFrameStyle(frame->property(cOwnFrameProperty).toInt());
  else
    frame->setFrameStyle(cFrames[static_cast<int>(borderStyle)]);
}

void NativeWindow::SetCursor(Cursor cursor) {
  if (cursor == Cursor::cDefault)
    widget->unsetCursor();
  else
    widget->setCursor(cCursorShapes[static_cast<int>(cursor)]);
}

bool NativeWindow::WantsKey(int) const {
  return false;
}

void NativeWindow::Move(const Rect& to) {
  const QSize size(std::max(to.width, 0), std::max(to.height, 0));
  if (widget->isWindow()) {
    widget->move(to.left, to.top);
    widget->resize(size);
  } else {
    const Rect area = parent ? parent->ClientArea() : Rect();
    const QPoint at(Saturate(int64_t{to.left} + area.left), Saturate(int64_t{to.top} + area.top));
    widget->setGeometry(QRect(at, size));
  }
}

Rect NativeWindow::Bounds() const {
  const Rect area = parent && !widget->isWindow() ? parent->ClientArea() : Rect();
  return {Saturate(int64_t{widget->pos().x()} - area.left),
          Saturate(int64_t{widget->pos().y()} - area.top), widget->width(), widget->height()};
}

Rect NativeWindow::ClientArea() const {
  return {0, 0, ClientWidget()->width(), ClientWidget()->height()};
}

Rect NativeWindow::ScreenClientRect() const {
  const Rect area = ClientArea();
  const QPoint origin = ClientWidget()->mapToGlobal(QPoint(area.left, area.top));
  return {origin.x(), origin.y(), ClientWidth(), ClientHeight()};
}

int NativeWindow::ClientWidth() const {
  return ClientArea().width;
}
int NativeWindow::ClientHeight() const {
  return ClientArea().height;
}

// A hidden window gives up the keyboard: the toolkit would otherwise still send it the key presses.
void NativeWindow::Show(bool on) {
  QWidget* focused = widget->window()->focusWidget();
  if (!on && !widget->isWindow() && focused && (focused == widget || widget->isAncestorOf(focused)))
    focused->clearFocus();
  widget->setVisible(on);
}
bool NativeWindow::IsShown() const {
  return widget->isVisible();
}

void NativeWindow::Enable(bool on) {
  if (widget->isWindow()) {
    inputBlocked = !on;
    widget->winId();
    widget->windowHandle()->setProperty(cBlockedProperty, inputBlocked);
  } else {
    widget->setEnabled(on);
  }
}

bool NativeWindow::IsEnabled() const {
  return widget->isWindow() ? !inputBlocked : widget->isEnabled();
}

void NativeWindow::Focus(FocusBy by) {
  static constexpr Qt::FocusReason cReasons[] = {Qt::OtherFocusReason, Qt::TabFocusReason,
                                                 Qt::BacktabFocusReason,
                                                 Qt::ActiveWindowFocusReason};
  QWidget* target = FocusWidget();
  if (by == FocusBy::cTab || by == FocusBy::cBacktab)
    target->window()->setAttribute(Qt::WA_KeyboardFocusChange);
  target->setFocus(cReasons[static_cast<int>(by)]);
}

bool NativeWindow::HasFocus() const {
  const QWidget* focused = QApplication::focusWidget();
  if (!focused) return false;
  if (focused == FocusWidget() || focused == widget) return true;
  return creationData->impl->type == SysImpl::cControl && widget->isAncestorOf(focused);
}

bool NativeWindow::TakesFocus() const {
  return FocusWidget()->focusPolicy() & Qt::TabFocus && FocusWidget()->isVisible() &&
         FocusWidget()->isEnabled();
}

void NativeWindow::SetHint(const std::string& hint) {
  widget->setToolTip(ToScreen(hint));
  if (!IsNamedByText(*StyledWidget()) || Text().empty()) SetAccessibleName(hint);
}

void NativeWindow::SetAccessibleName(const std::string& name) {
  const std::string& own = creationData->impl->accessibleName;
  StyledWidget()->setAccessibleName(ToScreen(own.empty() ? name : own));
}

void NativeWindow::CaptureMouse(bool on) {
  if (on)
    widget->grabMouse();
  else
    widget->releaseMouse();
}

void NativeWindow::Raise() {
  widget->raise();
  widget->activateWindow();
}

void NativeWindow::Invalidate() {
  widget->update();
}
void NativeWindow::Update() {
  widget->repaint();
}
}  // namespace mavro
