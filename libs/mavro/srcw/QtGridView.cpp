#include "QtGridView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <limits>
#include <utility>

#include "QtListModel.h"
#include "QtText.h"

namespace mavro {

namespace {

constexpr int cRoomBesideLocked = 40;  // the least that is left for columns that scroll
constexpr int cMostFitWidth = 600;     // of a column that is fitted to its cells
constexpr int cFitPadding = 8;
constexpr int cLockedEdgePercent = 60;
constexpr int cFrameWidth = 2;  // of the current cell

// What the keys of an open editor do to it.
struct EditorKey {
  int key;
  GridMove move;
  bool isArrow;  // only in an editor that was opened by typing
};

constexpr EditorKey cEditorKeys[] = {
    {Qt::Key_Return, GridMove::cDown, false},  {Qt::Key_Enter, GridMove::cDown, false},
    {Qt::Key_Tab, GridMove::cNext, false},     {Qt::Key_Backtab, GridMove::cPrevious, false},
    {Qt::Key_Up, GridMove::cUp, true},         {Qt::Key_Down, GridMove::cDown, true},
    {Qt::Key_Left, GridMove::cLeft, true},     {Qt::Key_Right, GridMove::cRight, true},
    {Qt::Key_PageUp, GridMove::cPageUp, true}, {Qt::Key_PageDown, GridMove::cPageDown, true},
};

}  // namespace

GridDelegate::GridDelegate(GridView& its) : view(its) {
  showSelection = true;  // the view decides
}

// The width that fits a column to its cells.
QSize GridDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int natural = QStyledItemDelegate::sizeHint(option, index).width() + cFitPadding;
  return QSize(std::min(natural, cMostFitWidth), RowDelegate::sizeHint(option, index).height());
}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
  auto* line = new QLineEdit(parent);
  line->setMaxLength(std::numeric_limits<int>::max());
  line->setFrame(false);
  line->setAutoFillBackground(true);
  line->setAccessibleName(index.model()->headerData(index.column(), Qt::Horizontal).toString());
  editor = line;
  return line;
}

// The current cell's frame can be seen around its editor. One that scrolls doesn't cover the locked
// columns.
void GridDelegate::updateEditorGeometry(QWidget* line, const QStyleOptionViewItem&,
                                        const QModelIndex& index) const {
  QRect place = view.visualRect(index).adjusted(1, 1, -2, -2);
  if (index.column() >= view.LockedColumns())
    place.setLeft(std::max(place.left(), view.LockedWidth()));
  line->setGeometry(place.isValid() ? place : QRect(place.topLeft(), QSize(0, place.height())));
}

QLineEdit* GridDelegate::Editor() const {
  return view.IsEditing() ? qobject_cast<QLineEdit*>(editor.data()) : nullptr;
}

bool GridDelegate::eventFilter(QObject* object, QEvent* event) {
  // An editor that has the focus again must not take its loss after that.
  if (event->type() == QEvent::FocusOut && object == editor) return view.LeaveEdit();
  if (event->type() == QEvent::KeyPress && object == editor)
    return OnEditorKey(*static_cast<QKeyEvent*>(event));
  return RowDelegate::eventFilter(object, event);
}

bool GridDelegate::OnEditorKey(const QKeyEvent& key) {
  if (key.key() == Qt::Key_Escape) {
    emit closeEditor(editor, RevertModelCache);
    return true;
  }
  if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return false;
  for (const EditorKey& row : cEditorKeys) {
    if (row.key != key.key()) continue;
    if (row.isArrow && !view.MovesByArrows()) return false;
    const bool isBack =
        row.move == GridMove::cDown && !row.isArrow && key.modifiers() & Qt::ShiftModifier;
    if (view.FinishEdit()) view.Move(isBack ? GridMove::cUp : row.move);
    return true;
  }
  return false;
}

GridView::GridView(QWidget* parent, ListModel& its)
    : QTableView(parent), delegate(*this), model(its), header(new GridHeader(this)) {
  header->lockedColumns = [this] { return LockedColumns(); };
  setModel(&model);
  setHorizontalHeader(header);
  // The toolkit would select a column at a press, without the current cell.
  disconnect(header, &QHeaderView::sectionPressed, this, nullptr);
  disconnect(header, &QHeaderView::sectionEntered, this, nullptr);
  connect(header, &QHeaderView::sectionClicked, this, [this](int column) { TitleClicked(column); });
  connect(header, &QHeaderView::sectionResized, viewport(), [this] {
    viewport()->update();
    updateEditorGeometries();
  });
  verticalHeader()->hide();
  verticalHeader()->setMinimumSectionSize(1);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  setShowGrid(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setVerticalScrollMode(ScrollPerPixel);
  setSelectionMode(ContiguousSelection);
  setSelectionBehavior(SelectItems);
  setEditTriggers(NoEditTriggers);
  setAutoScroll(false);
  setItemDelegate(&delegate);
  UpdateRowHeight();
}

GridView::~GridView() {
  header->lockedColumns = [] { return 0; };
}

void GridView::SetLook(const ListLook& wanted) {
  look = wanted;
  header->setVisible(look.headerVisible);
  Show();
}

void GridView::SetFrozen(int wantedLock, int wantedHeight) {
  lockCol = wantedLock;
  rowHeight = wantedHeight;
  UpdateRowHeight();
  header->viewport()->update();
  viewport()->update();
}

void GridView::UpdateRowHeight() {
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  const int natural = delegate.RowDelegate::sizeHint(option, {}).height();
  const int wanted = rowHeight <= 0 ? natural : std::min(rowHeight, DataGrid::cMostRowHeight);
  if (verticalHeader()->defaultSectionSize() != wanted)
    verticalHeader()->setDefaultSectionSize(wanted);
}

int GridView::LockedColumns() const {
  const int room = viewport()->width() - cRoomBesideLocked;
  const int most = std::min(lockCol, header->count());
  int width = 0;
  for (int column = 0; column < most; ++column) {
    width += header->sectionSize(column);
    if (width > room) return column;
  }
  return std::max(most, 0);
}

GridSize GridView::Size() const {
  return {model.rowCount(), model.columnCount()};
}

CellRange GridView::Selection() const {
  CellRange range = Inside(Between(anchor, cursor), Size());
  if (look.fullRowSelect && !range.IsEmpty()) {
    range.col = 0;
    range.colCount = Size().cols;
  }
  return range;
}

void GridView::Show() {
  const CellRange range = Selection();
  const QModelIndex at = Size().Holds(cursor) ? model.index(cursor.row, cursor.col) : QModelIndex();
  QItemSelection selected;
  if (!range.IsEmpty())
    selected.select(model.index(range.row, range.col),
                    model.index(range.row + range.rowCount - 1, range.col + range.colCount - 1));
  selectionModel()->setCurrentIndex(at, QItemSelectionModel::NoUpdate);
  selectionModel()->select(selected, QItemSelectionModel::ClearAndSelect);
  viewport()->update();
}

void GridView::Place(GridCell itsAnchor, GridCell itsCursor) {
  anchor = itsAnchor;
  cursor = itsCursor;
  Show();
  revealPending = !isVisible();
  if (Size().Holds(cursor)) scrollTo(model.index(cursor.row, cursor.col));
}

// Until it is shown for the first time the view doesn't have its size.
void GridView::showEvent(QShowEvent* event) {
  QTableView::showEvent(event);
  if (!std::exchange(revealPending, false) || !Size().Holds(cursor)) return;
  scrollTo(model.index(cursor.row, cursor.col));
}

void GridView::MoveTo(GridCell to, bool extends) {
  const GridCell from = extends && anchor.Exists() ? anchor : to;
  const bool changes = to != cursor || from != anchor;
  Place(from, to);
  if (changes && host) host->CursorMoved();
}

void GridView::Move(GridMove move, bool extends) {
  const GridCell to = Moved(cursor, move, Size(), PageRows());
  if (to.Exists()) MoveTo(to, extends);
}

bool GridView::CanMove(GridMove move) const {
  return Moved(cursor, move, Size(), PageRows()) != cursor;
}

bool GridView::IsEditable(GridCell cell) const {
  return Size().Holds(cell) && model.flags(model.index(cell.row, cell.col)) & Qt::ItemIsEditable;
}

QLineEdit* GridView::StartEdit(GridCell cell, Typing how, const QString& typed) {
  if (!IsEditable(cell) || !host) return nullptr;
  const QPersistentModelIndex index = model.index(cell.row, cell.col);
  const QString before = index.data(Qt::EditRole).toString();
  std::string text = FromScreen(before);
  if (!host->StartsEdit(cell, text) || !host || !index.isValid()) return nullptr;
  edit(index);
  QLineEdit* line = delegate.Editor();
  if (!line) return nullptr;
  typing = how;
  if (ToScreen(text) != before) {
    line->setText(ToScreen(text));
    line->setModified(true);
  }
  line->deselect();
  line->end(false);
  if (how == Typing::cReplaces) {
    line->selectAll();
    line->insert(typed);
  }
  return line;
}

bool GridView::FinishEdit() {
  lastRefused = false;
  if (!delegate.Editor()) return true;
  const bool wasFinishing = std::exchange(isFinishing, true);
  commitData(delegate.Editor());
  isFinishing = wasFinishing;
  if (!host) return false;
  if (lastRefused) {
    if (delegate.Editor()) refusedText = delegate.Editor()->text();
    BackToEditor();
    return false;
  }
  if (delegate.Editor()) closeEditor(delegate.Editor(), QAbstractItemDelegate::NoHint);
  return true;
}

// The user comes back to a text that was refused, to change it or to give it up.
void GridView::BackToEditor() {
  QLineEdit* line = delegate.Editor();
  if (!line) return;
  line->setFocus();
  line->selectAll();
}

bool GridView::LeaveForGood() {
  if (!StaysInEditor() || delegate.Editor()->text() != refusedText) return FinishEdit();
  BackToEditor();
  return false;
}

bool GridView::LeaveEdit() {
  const QWidget* line = delegate.Editor();
  const bool isInMenu = line && line->isActiveWindow() && QApplication::focusWidget() == line;
  if (!line || !host || isInMenu || isFinishing || FinishEdit()) return false;
  return delegate.Editor() && delegate.Editor()->hasFocus();
}

void GridView::TitleClicked(int column) {
  if (!FinishEdit() || !host) return;
  if (titlesAreButtons) return host->TitleClicked(column);
  const GridCell top{0, column};
  if (look.fullRowSelect || !Size().Holds(top)) return;
  SelectUnscrolled({Size().rows - 1, column}, top);
}

void GridView::SelectUnscrolled(GridCell itsAnchor, GridCell itsCursor) {
  if (itsAnchor == anchor && itsCursor == cursor) return;
  anchor = itsAnchor;
  cursor = itsCursor;
  Show();
  if (host) host->CursorMoved();
}

GridCell GridView::CellAt(const QPoint& at) const {
  const QModelIndex index = indexAt(at);
  return index.isValid() ? GridCell{index.row(), index.column()} : GridCell();
}

// The cell under a place, or the one at the edge that is nearest to it; one further outside the
// view, so that a drag scrolls.
GridCell GridView::CellNear(const QPoint& at) const {
  const GridSize size = Size();
  const QRect area = viewport()->rect();
  int row = rowAt(std::clamp(at.y(), 0, std::max(area.bottom(), 0)));
  if (row == -1) row = size.rows - 1;
  if (at.y() < 0) --row;
  if (at.y() > area.bottom()) ++row;
  const int x = std::clamp(at.x(), 0, std::max(area.right(), 0));
  int column = x < LockedWidth() ? header->logicalIndexAt(x - header->offset()) : columnAt(x);
  if (column == -1) column = size.cols - 1;
  if (at.x() < 0) column = std::max(LockedColumns(), columnAt(LockedWidth())) - 1;
  if (at.x() > area.right()) ++column;
  return {std::clamp(row, 0, std::max(size.rows - 1, 0)),
          std::clamp(column, 0, std::max(size.cols - 1, 0))};
}

int GridView::PageRows() const {
  return viewport()->height() / std::max(verticalHeader()->defaultSectionSize(), 1);
}

QRect GridView::visualRect(const QModelIndex& index) const {
  QRect rect = QTableView::visualRect(index);
  if (index.isValid() && index.column() < LockedColumns()) rect.translate(header->offset(), 0);
  return rect;
}

QModelIndex GridView::indexAt(const QPoint& at) const {
  const bool isLocked = at.x() >= 0 && at.x() < LockedWidth();
  return QTableView::indexAt(isLocked ? at - QPoint(header->offset(), 0) : at);
}

void GridView::scrollTo(const QModelIndex& index, ScrollHint) {
  if (!index.isValid()) return;
  const auto reveal = [](QScrollBar& bar, int from, int size, int first, int end) {
    if (from < first || size > end - first)
      bar.setValue(bar.value() + from - first);
    else if (from + size > end)
      bar.setValue(bar.value() + from + size - end);
  };
  reveal(*verticalScrollBar(), rowViewportPosition(index.row()), QTableView::rowHeight(index.row()),
         0, viewport()->height());
  if (index.column() < LockedColumns()) return;
  reveal(*horizontalScrollBar(), columnViewportPosition(index.column()),
         columnWidth(index.column()), LockedWidth(), viewport()->width());
}

// The toolkit moves the painted cells; locked columns and the editor have other places.
void GridView::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  if (dx == 0 || lockCol <= 0) return;
  viewport()->update();
  header->viewport()->update();
  updateEditorGeometries();
}

void GridView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  const QRect area = event->rect();
  const int locked = LockedColumns();
  const int edge = LockedWidth();
  const QRect free = area.intersected(viewport()->rect().adjusted(edge, 0, 0, 0));
  if (!free.isEmpty()) {
    painter.setClipRect(free);
    const int last = columnAt(free.right());
    PaintCells(painter, free, columnAt(free.left()), last == -1 ? Size().cols - 1 : last);
    painter.setClipping(false);
  }
  if (locked == 0) return;
  PaintCells(painter, area, 0, locked - 1);
  painter.fillRect(edge - 1, area.top(), 1, area.height(),
                   GridColor(palette(), cLockedEdgePercent));
}

void GridView::PaintCells(QPainter& painter, const QRect& area, int firstColumn,
                          int lastColumn) const {
  const int firstRow = rowAt(area.top());
  if (firstRow == -1 || firstColumn == -1) return;
  int lastRow = rowAt(area.bottom());
  if (lastRow == -1) lastRow = Size().rows - 1;
  const bool shows = look.showSelection || hasFocus() || IsEditing();
  const CellRange selected = shows ? Selection() : CellRange();
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.showDecorationSelected = true;
  for (int column = firstColumn; column <= lastColumn; ++column) {
    const QRect top = visualRect(model.index(firstRow, column));
    for (int row = firstRow; row <= lastRow; ++row) {
      option.rect = top.translated(0, (row - firstRow) * top.height());
      option.state.setFlag(QStyle::State_Selected, Contains(selected, {row, column}));
      PaintCell(painter, option, {row, column});
    }
  }
  if (!look.gridLines || lastColumn < firstColumn) return;
  const QRect corner = visualRect(model.index(firstRow, firstColumn))
                           .united(visualRect(model.index(lastRow, lastColumn)));
  PaintLines(painter, corner, {firstRow, firstColumn}, {lastRow, lastColumn});
}

// Whole lines: one for each cell would take as long as the cells' texts.
void GridView::PaintLines(QPainter& painter, const QRect& area, GridCell first,
                          GridCell last) const {
  const QColor color = GridColor(palette());
  const int height = QTableView::rowHeight(first.row);
  for (int row = first.row, bottom = area.top() - 1; row <= last.row; ++row)
    painter.fillRect(area.left(), bottom += height, area.width(), 1, color);
  for (int column = first.col; column <= last.col; ++column)
    painter.fillRect(visualRect(model.index(first.row, column)).right(), area.top(), 1,
                     area.height(), color);
}

// The current cell has a frame instead of the ground of the selected ones.
void GridView::PaintCell(QPainter& painter, QStyleOptionViewItem option, GridCell cell) const {
  const QRect whole = option.rect;
  const bool isFramed = cell == cursor && option.state & QStyle::State_Selected;
  if (isFramed) option.state.setFlag(QStyle::State_Selected, false);
  if (look.gridLines) option.rect.adjust(0, 0, -1, -1);
  if (cell.col < lockCol) painter.fillRect(whole, palette().color(QPalette::Base));
  delegate.paint(&painter, option, model.index(cell.row, cell.col));
  if (!isFramed) return;
  const QRect inside = option.rect.adjusted(cFrameWidth, cFrameWidth, -cFrameWidth, -cFrameWidth);
  for (const QRect& side : QRegion(option.rect) - QRegion(inside))
    painter.fillRect(side, palette().color(QPalette::Highlight));
}

}  // namespace mavro
