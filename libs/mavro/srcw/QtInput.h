#pragma once

#include <QApplication>

class QFocusEvent;
class QWidget;

namespace mavro {

class NativeWindow;

// The toolkit's application object. It marks where the delivery of an input event begins, which is
// how the loop's filter knows a window's own event from one that a window inside it didn't want.
class ToolkitApplication final : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override;
};

// The window that a widget belongs to: its own or that of the nearest widget around it; null for
// popups and other top-level widgets of the toolkit's own.
NativeWindow* WindowOf(const QWidget* widget);
void RegisterWidget(const QWidget* widget, NativeWindow* window);
void UnregisterWidget(const QWidget* widget);

// Mouse buttons as MouseArgs has them.
int HeldButtons(Qt::MouseButtons buttons);

// Tells an input event on its way to `receiver` to the window that it belongs to: once, whatever
// parts the window is made of. Keys and mouse events end there; a wheel turn or a context menu
// request that nobody used goes on to the windows around. Answers whether the event is used up.
bool OfferInput(QWidget* receiver, QEvent* event);

// A widget is about to be told that it has the keyboard, and how it came there.
void FocusComes(const QFocusEvent& event);
// The keyboard has come to another widget, or to none: tells the windows that lose and get it.
void FocusMoved(const QWidget* now);

}  // namespace mavro
