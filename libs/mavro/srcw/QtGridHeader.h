#pragma once

#include <QHeaderView>
#include <functional>

class QMouseEvent;

namespace mavro {

// Column titles of which those on the left stay in place when the others scroll. The sections
// themselves scroll; the locked ones are painted over the others, and the mouse is led to them.
class GridHeader final : public QHeaderView {
 public:
  explicit GridHeader(QWidget* parent);

  std::function<int()> lockedColumns;
  // Width of the locked sections.
  int LockedWidth() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  QMouseEvent Led(const QMouseEvent& event);

  bool pressedLocked = false;  // the mouse was pressed on a locked section
};

}  // namespace mavro
