#pragma once

#include <QBasicTimer>
#include <QTableView>
#include <string>

#include "GridMoves.h"
#include "NativeLists.h"
#include "QtGridHeader.h"
#include "QtRowDelegate.h"

class QLineEdit;

namespace mavro {

class GridView;
class ListModel;

// The cells of a grid, and the line that one of them is edited in.
class GridDelegate final : public RowDelegate {
 public:
  explicit GridDelegate(GridView& its);

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* line, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;
  QLineEdit* Editor() const;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  bool OnEditorKey(const QKeyEvent& key);

  GridView& view;
};

// What a grid's view tells its window. All may destroy the window.
class GridHost {
 public:
  virtual ~GridHost() = default;
  virtual void CursorMoved() = 0;
  virtual void CellClicked(int row) = 0;
  virtual void RowChosen(int row) = 0;
  virtual bool ChoosesRows() const = 0;
  virtual void TitleClicked(int column) = 0;
  // True if the cell may be edited; `text` is what is edited, and may be changed.
  virtual bool StartsEdit(GridCell cell, std::string& text) = 0;
  virtual void Wishes(int gridCode) = 0;
};

// A table with a current cell. The toolkit's view scrolls it, places editors in it and shows it to
// screen readers; the current cell, the selection, the keys and the mouse are handled here.
class GridView final : public QTableView {
 public:
  enum class Typing { cKeeps, cReplaces };  // what the first typed letter does to the cell's text

  GridView(QWidget* parent, ListModel& its);
  ~GridView() override;

  void SetLook(const ListLook& look);
  void SetFrozen(int lockCol, int rowHeight);
  void UpdateRowHeight();
  // Columns that stay in place.
  int LockedColumns() const;
  int LockedWidth() const { return header->LockedWidth(); }
  GridSize Size() const;
  // The current cell; the selection is between it and the anchor.
  GridCell Cursor() const { return cursor; }
  CellRange Selection() const;
  // Sets both and scrolls to the cursor; the host isn't told.
  void Place(GridCell itsAnchor, GridCell itsCursor);
  // As Place, by the user: the host is told of a change.
  void MoveTo(GridCell to, bool extends);
  void Move(GridMove move, bool extends = false);
  bool CanMove(GridMove move) const;
  bool IsEditing() const { return state() == EditingState; }
  bool IsEditable(GridCell cell) const;
  // Opens the editor of a cell with its text, or with `typed`. Null if that may not be.
  QLineEdit* StartEdit(GridCell cell, Typing typing = Typing::cKeeps, const QString& typed = {});
  // Takes the typed text; false if it was refused: then the editor stays open.
  bool FinishEdit();
  // The same for a dialog's OK button, which may have taken the focus before.
  bool LeaveForGood();
  // The focus has left the editor, which ends it unless its text is refused: then it has the focus
  // again, and the answer is true. Does nothing while the text is being taken: a handler may show a
  // window.
  bool LeaveEdit();
  // True if the editor was opened by typing: arrows then move on.
  bool MovesByArrows() const { return typing == Typing::cReplaces; }

  QRect visualRect(const QModelIndex& index) const override;
  QModelIndex indexAt(const QPoint& at) const override;
  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

  GridDelegate delegate;
  GridHost* host = nullptr;       // null once its window is gone
  bool lastRefused = false;       // the last typed text
  QString refusedText;            // the last one that was
  bool titlesAreButtons = false;  // a click on a title selects no cells

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;

 private:
  void Show();  // the selection to the toolkit and on the screen
  bool MoveByKey(const QKeyEvent& key);
  bool SelectByKey(const QKeyEvent& key);
  bool WishByKey(const QKeyEvent& key);
  bool EnterKey(const QKeyEvent& key);
  bool EditByKey(const QKeyEvent& key);
  void TitleClicked(int column);
  void BackToEditor();
  // True if the text in the editor has been refused: the press that took the focus was for it.
  bool StaysInEditor() const { return lastRefused && delegate.Editor(); }
  GridCell CellAt(const QPoint& at) const;
  GridCell CellNear(const QPoint& at) const;
  int PageRows() const;
  // As MoveTo, without scrolling: what is looked at stays.
  void SelectUnscrolled(GridCell itsAnchor, GridCell itsCursor);
  void PaintCells(QPainter& painter, const QRect& area, int firstColumn, int lastColumn) const;
  void PaintLines(QPainter& painter, const QRect& area, GridCell first, GridCell last) const;
  // `option` has the cell's place and says if it is selected.
  void PaintCell(QPainter& painter, QStyleOptionViewItem option, GridCell cell) const;

  ListModel& model;
  GridHeader* const header;
  ListLook look;
  int lockCol = 0;
  int rowHeight = 0;
  GridCell cursor, anchor;
  Typing typing = Typing::cKeeps;
  bool revealPending = false;  // the current cell is scrolled to when the view is shown
  bool isDragging = false;
  bool isFinishing = false;  // the typed text is being taken
  GridCell pressed;
  QPoint lastPlace;  // of the mouse in a drag
  QBasicTimer scrolling;
};

}  // namespace mavro
