#pragma once

#include <QWidget>

class QMenuBar;

namespace mavro {

// A top-level widget: a menu bar, if there is one, above the client area, which holds a form's
// children.
class FormWidget final : public QWidget {
 public:
  FormWidget();
  // Sets the bar, or null for none; the bar stays owned by its creator.
  void SetMenuBar(QMenuBar* bar);

  QWidget* const client;
  QPoint border;  // of the window manager, left and top, while the form isn't maximized

 protected:
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  // The framework handles Tab as a dialog key; a Tab that a program excludes from this belongs to
  // the control.
  bool focusNextPrevChild(bool) override { return false; }

 private:
  void Arrange();
  QMenuBar* menuBar = nullptr;
};

}  // namespace mavro
