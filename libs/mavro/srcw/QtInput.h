#pragma once

#include <QApplication>

class QFocusEvent;
class QWidget;

namespace mavro {

class NativeWindow;

// The toolkit's application object. It marks the start of the delivery of an input event. This lets
// the loop's filter distinguish a window's own event from one that a window inside it didn't use.
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

// Reports an input event on its way to `receiver` to the window that it belongs to: once, whatever
// parts the window is made of. Keys and mouse events end there; an unused wheel turn or context
// menu request is passed to the windows around it. True if the event is used up.
bool OfferInput(QWidget* receiver, QEvent* event);

// Called before a widget gets the event that says it has the keyboard, and how it got it.
void FocusComes(const QFocusEvent& event);
// Called when the keyboard has come to another widget, or to none: notifies the windows that lose
// and get it.
void FocusMoved(const QWidget* now);

}  // namespace mavro
