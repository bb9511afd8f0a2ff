#pragma once

#include <QWidget>

class QMenuBar;

namespace mavro {

// A top-level widget: a menu bar, if there is one, above the client area that a form's children
// stand in.
class FormWidget final : public QWidget {
 public:
  FormWidget();
  // Takes the bar, or none; the bar is owned by whoever made it.
  void SetMenuBar(QMenuBar* bar);

  QWidget* const client;
  QPoint border;  // what the window manager adds left and above, while the form isn't maximized

 protected:
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  // Tab is a dialog key of ours; one that a program keeps from being that belongs to the control.
  bool focusNextPrevChild(bool) override { return false; }

 private:
  void Arrange();
  QMenuBar* menuBar = nullptr;
};

}  // namespace mavro
