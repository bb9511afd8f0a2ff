#pragma once

#include <QApplication>
#include <QPixmap>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <filesystem>
#include <functional>
#include <string>

#include "FormImpl.h"
#include "SysImpl.h"

namespace test {

// The widget of a control that has a window.
inline QWidget* WidgetOf(const mavro::Control& control) {
  return control.impl->hwnd->widget;
}

// Runs `form` as a program would, calls `script` once the form is up, active and has seen its first
// idle pass, and closes the form afterwards if it is still there. Answers Run's result.
inline int RunForm(mavro::Form& form, bool modal, const std::function<void()>& script) {
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    if (mavro::activeForm != &form) return;
    if (!static_cast<mavro::Form::Impl*>(form.impl)->firstShowDone) return;
    poll.stop();
    script();
    if (form.impl->hwnd) form.impl->OnMenuCommand(2, 0);
  });
  poll.start(2);
  return form.Run(modal);
}

// Presses and releases a key as the window system would: at the form's window, through the queue.
inline void Key(mavro::Form& form, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::keyClick(WidgetOf(form)->windowHandle(), key, modifiers);
}

// Clicks a place of a control; the middle of it by default.
inline void Click(const mavro::Control& control, QPoint at = QPoint(),
                  Qt::MouseButton button = Qt::LeftButton) {
  QWidget* widget = WidgetOf(control);
  if (at.isNull()) at = widget->rect().center();
  QTest::mouseClick(widget->window()->windowHandle(), button, Qt::NoModifier,
                    widget->mapTo(widget->window(), at));
}

// Waits until `condition` holds, handling events; false after twenty seconds.
inline bool WaitFor(const std::function<bool()>& condition) {
  return QTest::qWaitFor(condition, 20000);
}

// Saves what a form shows as build/shots/NAME.png, for people to look at.
inline void Shot(const mavro::Control& control, const std::string& name) {
  std::filesystem::create_directories(SHOTS_FOLDER);
  WidgetOf(control)->grab().save(
      QString::fromStdString(std::string(SHOTS_FOLDER) + "/" + name + ".png"));
}

}  // namespace test
