// The keys and the mouse of a grid.
#include <QCoreApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <utility>

#include "NativeGrid.h"
#include "QtGridView.h"

namespace mavro {

namespace {

constexpr int cScrollMilliseconds = 50;  // between two steps of a drag outside the view

struct MoveKey {
  int key;
  bool withControl;
  GridMove move;
};

constexpr MoveKey cMoveKeys[] = {
    {Qt::Key_Left, false, GridMove::cLeft},     {Qt::Key_Right, false, GridMove::cRight},
    {Qt::Key_Up, false, GridMove::cUp},         {Qt::Key_Down, false, GridMove::cDown},
    {Qt::Key_Home, false, GridMove::cRowStart}, {Qt::Key_End, false, GridMove::cRowEnd},
    {Qt::Key_PageUp, false, GridMove::cPageUp}, {Qt::Key_PageDown, false, GridMove::cPageDown},
    {Qt::Key_Left, true, GridMove::cRowStart},  {Qt::Key_Right, true, GridMove::cRowEnd},
    {Qt::Key_Up, true, GridMove::cTop},         {Qt::Key_Down, true, GridMove::cBottom},
    {Qt::Key_Home, true, GridMove::cFirst},     {Qt::Key_End, true, GridMove::cLast},
};

struct WishKey {
  QKeySequence::StandardKey key;
  int code;
};

constexpr WishKey cWishKeys[] = {{QKeySequence::Copy, GVN_COPY},
                                 {QKeySequence::Cut, GVN_CUT},
                                 {QKeySequence::Paste, GVN_PASTE},
                                 {QKeySequence::Delete, GVN_CLEAR}};

bool Has(const QKeyEvent& key, Qt::KeyboardModifier modifier) {
  return key.modifiers() & modifier;
}

}  // namespace

void GridView::keyPressEvent(QKeyEvent* event) {
  const QKeyEvent& key = *event;
  const bool isUsed = !Has(key, Qt::AltModifier) &&
                      (WishByKey(key) || SelectByKey(key) || MoveByKey(key) || EditByKey(key));
  event->setAccepted(isUsed);
}

bool GridView::WishByKey(const QKeyEvent& key) {
  for (const WishKey& row : cWishKeys) {
    if (!const_cast<QKeyEvent&>(key).matches(row.key)) continue;
    if (host) host->Wishes(row.code);
    return true;
  }
  return false;
}

bool GridView::SelectByKey(const QKeyEvent& key) {
  const GridSize size = Size();
  if (size.rows == 0 || size.cols == 0) return false;
  const GridCell last{size.rows - 1, size.cols - 1};
  const bool isAll = const_cast<QKeyEvent&>(key).matches(QKeySequence::SelectAll);
  const bool isSpace = key.key() == Qt::Key_Space && cursor.Exists();
  if (isAll)
    SelectUnscrolled(last, {0, 0});
  else if (isSpace && key.modifiers() == Qt::ControlModifier)
    SelectUnscrolled({last.row, cursor.col}, {0, cursor.col});
  else if (isSpace && key.modifiers() == Qt::ShiftModifier)
    SelectUnscrolled({cursor.row, last.col}, {cursor.row, 0});
  else
    return false;
  return true;
}

bool GridView::MoveByKey(const QKeyEvent& key) {
  const bool extends = Has(key, Qt::ShiftModifier);
  if (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) {
    const GridMove move =
        key.key() == Qt::Key_Backtab || extends ? GridMove::cPrevious : GridMove::cNext;
    if (Has(key, Qt::ControlModifier) || !CanMove(move)) return false;
    Move(move);
    return true;
  }
  for (const MoveKey& row : cMoveKeys) {
    if (row.key != key.key() || row.withControl != Has(key, Qt::ControlModifier)) continue;
    Move(row.move, extends);
    return true;
  }
  return false;
}

bool GridView::EnterKey(const QKeyEvent& key) {
  if (host && host->ChoosesRows()) {
    if (cursor.Exists()) host->RowChosen(cursor.row);
    return cursor.Exists();
  }
  if (!look.editLabels) return false;
  Move(Has(key, Qt::ShiftModifier) ? GridMove::cUp : GridMove::cDown);
  return true;
}

bool GridView::EditByKey(const QKeyEvent& key) {
  if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) return EnterKey(key);
  if (Has(key, Qt::ControlModifier)) return false;
  if (key.key() == Qt::Key_F2) return StartEdit(cursor) != nullptr;
  if (key.key() == Qt::Key_Backspace) return StartEdit(cursor, Typing::cReplaces) != nullptr;
  const QString typed = key.text();
  if (typed.isEmpty() || !typed.front().isPrint()) return false;
  return StartEdit(cursor, Typing::cReplaces, typed) != nullptr;
}

// What an input method composes goes on in the cell's editor.
void GridView::inputMethodEvent(QInputMethodEvent* event) {
  if (event->commitString().isEmpty() && event->preeditString().isEmpty()) return event->ignore();
  QLineEdit* line = StartEdit(cursor, Typing::cReplaces);
  if (!line) return event->ignore();
  QCoreApplication::sendEvent(line, event);
}

// Any other button selects too, unless it is pressed on the selected cells: a menu is for them.
void GridView::mousePressEvent(QMouseEvent* event) {
  lastPlace = event->position().toPoint();
  pressed = CellAt(lastPlace);
  if (StaysInEditor() || !pressed.Exists() || !FinishEdit()) return;
  const bool isLeft = event->button() == Qt::LeftButton;
  if (!isLeft && Contains(Selection(), pressed)) return;
  isDragging = isLeft;
  MoveTo(pressed, isLeft && event->modifiers() & Qt::ShiftModifier);
}

void GridView::mouseMoveEvent(QMouseEvent* event) {
  if (!isDragging || !(event->buttons() & Qt::LeftButton)) return;
  lastPlace = event->position().toPoint();
  if (viewport()->rect().contains(lastPlace))
    scrolling.stop();
  else if (!scrolling.isActive())
    scrolling.start(cScrollMilliseconds, this);
  MoveTo(CellNear(lastPlace), true);
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
  scrolling.stop();
  const bool wasDragging = std::exchange(isDragging, false);
  const GridCell released = CellAt(event->position().toPoint());
  if (wasDragging && host && released.Exists() && released == pressed)
    host->CellClicked(released.row);
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
  const GridCell cell = CellAt(event->position().toPoint());
  if (event->button() != Qt::LeftButton || !cell.Exists() || StaysInEditor()) return;
  MoveTo(cell, false);
  if (StartEdit(cell) || !host || IsEditable(cell)) return;
  host->RowChosen(cell.row);
}

void GridView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != scrolling.timerId()) return QTableView::timerEvent(event);
  MoveTo(CellNear(lastPlace), true);
}

bool GridView::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTableView::viewportEvent(event);
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  ShowCellTip(*this, delegate, option, *static_cast<QHelpEvent*>(event));
  return true;
}

void GridView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
    UpdateRowHeight();
}

void GridView::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  viewport()->update();
}

void GridView::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  viewport()->update();
}

}  // namespace mavro
