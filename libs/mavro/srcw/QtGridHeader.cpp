#include "QtGridHeader.h"

#include <QMouseEvent>
#include <QPainter>

#include "DataGrid.h"

namespace mavro {

GridHeader::GridHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
  setMinimumSectionSize(DataGrid::cLeastWidth);
  setSectionsMovable(false);
  setSectionsClickable(true);
  setHighlightSections(false);
}

int GridHeader::LockedWidth() const {
  int width = 0;
  for (int column = 0; column < lockedColumns(); ++column) width += sectionSize(column);
  return width;
}

void GridHeader::paintEvent(QPaintEvent* event) {
  QHeaderView::paintEvent(event);
  QPainter painter(viewport());
  for (int column = 0, left = 0; column < lockedColumns(); ++column) {
    painter.save();
    paintSection(&painter, QRect(left, 0, sectionSize(column), viewport()->height()), column);
    painter.restore();
    left += sectionSize(column);
  }
}

// Over the locked sections the place is changed to where these sections would be if they had
// scrolled. A drag stays with the kind of section that it began on.
QMouseEvent GridHeader::Led(const QMouseEvent& event) {
  const QPointF at = event.position();
  const bool isDrag = event.type() == QEvent::MouseMove && event.buttons() != Qt::NoButton;
  if (!isDrag && event.type() != QEvent::MouseButtonRelease) pressedLocked = at.x() < LockedWidth();
  return QMouseEvent(event.type(), pressedLocked ? at - QPointF(offset(), 0) : at,
                     event.scenePosition(), event.globalPosition(), event.button(), event.buttons(),
                     event.modifiers(), event.pointingDevice());
}

void GridHeader::mousePressEvent(QMouseEvent* event) {
  QMouseEvent led = Led(*event);
  QHeaderView::mousePressEvent(&led);
}

void GridHeader::mouseMoveEvent(QMouseEvent* event) {
  QMouseEvent led = Led(*event);
  QHeaderView::mouseMoveEvent(&led);
}

void GridHeader::mouseReleaseEvent(QMouseEvent* event) {
  QMouseEvent led = Led(*event);
  QHeaderView::mouseReleaseEvent(&led);
}

void GridHeader::mouseDoubleClickEvent(QMouseEvent* event) {
  QMouseEvent led = Led(*event);
  QHeaderView::mouseDoubleClickEvent(&led);
}

}  // namespace mavro
