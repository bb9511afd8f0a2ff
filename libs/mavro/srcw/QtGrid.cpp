#include <algorithm>
#include <string>

#include "DataGrid.h"
#include "NativeGrid.h"
#include "QtFactories.h"
#include "QtGridView.h"
#include "QtListModel.h"
#include "QtPacer.h"
#include "QtStrips.h"
#include "Virtual.h"

namespace mavro {

namespace {

class GridWindow final : public NativeGrid, public GridHost {
 public:
  GridWindow(const CreateInfo& info, GridView* itsView, ListModel& its)
      : NativeGrid(info, itsView),
        view(itsView),
        model(its),
        pacer([this] { model.PublishRows(); }) {
    view->host = this;
    model.SetFullRowSelect(true);  // every cell can be selected
    model.edited = [this](int row, int column, const std::string& typed) {
      GridView& told = *view;  // a handler may destroy this window, but not yet the view
      ListViewHeader header;
      told.lastRefused = !Tell(header, LVN_ENDLABELEDIT, {row, column}, typed) || !header.taken;
    };
  }

  ~GridWindow() override {
    view->host = nullptr;
    model.edited = nullptr;
    model.SetSource(nullptr);
  }

  // Tab goes from cell to cell where cells are edited, and out of the grid at its ends. The editor
  // of a cell wants every key.
  bool WantsKey(int virtualKey) const override {
    if (view->IsEditing()) return true;
    if (virtualKey == VK_RETURN) return ChoosesRows() ? HasCursor() : edits && HasCells();
    if (virtualKey != VK_TAB || !edits) return false;
    return view->CanMove(LiveModifiers() & cShift ? GridMove::cPrevious : GridMove::cNext);
  }
  bool LetsTabOut() const override { return !view->IsEditing() && LiveModifiers() & cControl; }

  void SetSource(const ListSource* source) override { model.SetSource(source); }

  void SetLook(const ListLook& look) override {
    edits = look.editLabels;
    const QSize pictures = look.imageList == 0 ? QSize(0, 0) : StripPictureSize(look.imageList);
    if (!pictures.isEmpty()) view->setIconSize(pictures);
    view->delegate.pictureHeight = pictures.height();
    model.SetStrip(look.imageList);
    view->UpdateRowHeight();
    view->SetLook(look);
  }

  void SetFrozen(int lockCol, int rowHeight) override { view->SetFrozen(lockCol, rowHeight); }

  void ColumnAdded(int width) override {
    model.PublishColumn();
    view->setColumnWidth(model.columnCount() - 1, std::max(width, DataGrid::cLeastWidth));
  }
  void ColumnChanged(int column) override { model.ColumnChanged(column); }
  void RemovingColumn() override { model.BeginRemoveColumn(); }
  void ColumnRemoved() override {
    model.EndRemoveColumn();
    GridCell cursor = view->Cursor();
    cursor.col = std::clamp(cursor.col, 0, std::max(model.columnCount() - 1, 0));
    view->Place(cursor, cursor);
  }

  void RowsAdded() override { pacer.Request(); }

  void Update() override {
    pacer.RunNow();
    view->viewport()->repaint();
  }

  void RemovingRows(int first, int count) override { model.BeginRemoveRows(first, count); }
  void RowsRemoved(int selected) override {
    model.EndRemoveRows();
    PlaceRow(selected);
  }

  void RowsSorted(int column, bool ascending, int selected) override {
    QHeaderView* header = view->horizontalHeader();
    header->setSortIndicatorShown(true);
    header->setSortIndicator(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    model.AllChanged();
    PlaceRow(selected);
  }

  void RowsCleared() override {
    model.PublishCleared();
    PlaceRow(-1);
  }

  void RowChanged(int row) override { model.RowChanged(row); }

  void SelectRow(int row) override {
    pacer.RunNow();
    PlaceRow(row);
  }
  int SelectedRow() const override { return view->Cursor().row; }

  void EditCell(int row, int column) override {
    pacer.RunNow();
    if (!view->FinishEdit() || !view->host) return;
    view->setFocus();
    view->MoveTo({row, column}, false);
    if (view->host) view->StartEdit({row, column});
  }
  void EndEdit() override { view->FinishEdit(); }
  bool LeaveForGood() override { return view->LeaveForGood(); }
  void SetHeaderClickable(bool on) override { view->titlesAreButtons = on; }

  int CurrentColumn() const override { return HasCursor() ? view->Cursor().col : -1; }
  CellRange Selection() const override { return view->Selection(); }

  void SelectRange(const CellRange& cells) override {
    pacer.RunNow();
    if (cells.IsEmpty()) return PlaceRow(-1);
    view->Place({cells.row + cells.rowCount - 1, cells.col + cells.colCount - 1},
                {cells.row, cells.col});
  }

  int ColumnWidth(int column) const override { return view->columnWidth(column); }
  void SetColumnWidth(int column, int width) override { view->setColumnWidth(column, width); }

  void CursorMoved() override { Report(LVN_SELCHANGED, view->Cursor()); }
  void CellClicked(int row) override { Report(LVN_CLICKED, {row, view->Cursor().col}); }
  void RowChosen(int row) override { Report(LVN_CHOSEN, {row, view->Cursor().col}); }
  void TitleClicked(int column) override { Report(LVN_COLUMNCLICK, {-1, column}); }
  void Wishes(int gridCode) override { Report(gridCode, view->Cursor()); }
  bool ChoosesRows() const override {
    const auto* grid = dynamic_cast<const DataGrid*>(creationData);
    return grid && grid->onChoose.HasHandlers();
  }
  bool StartsEdit(GridCell cell, std::string& text) override {
    ListViewHeader header;
    if (!Tell(header, LVN_BEGINLABELEDIT, cell, text) || !header.taken) return false;
    text = header.text;
    return true;
  }

 private:
  bool HasCells() const { return view->Size().rows > 0 && view->Size().cols > 0; }
  bool HasCursor() const { return view->Size().Holds(view->Cursor()); }

  // The current cell goes to a row, -1 for none, and keeps its column.
  void PlaceRow(int row) {
    const GridCell to{row, std::clamp(view->Cursor().col, 0, std::max(view->Size().cols - 1, 0))};
    view->Place(to, to);
  }

  // False if the window is gone.
  bool Tell(ListViewHeader& header, int code, GridCell cell, const std::string& typed) {
    header.from = this;
    header.code = code;
    header.row = cell.row;
    header.column = cell.col;
    header.text = typed;
    const NativeWindow* self = this;
    Notify(header);
    return IsWindow(self);
  }
  void Report(int code, GridCell cell) {
    ListViewHeader header;
    Tell(header, code, cell, std::string());
  }

  GridView* const view;
  ListModel& model;
  Pacer pacer;
  bool edits = false;
};

}  // namespace

NativeWindow* MakeGrid(const CreateInfo& info) {
  auto* model = new ListModel;
  auto* view = new GridView(ParentWidget(info), *model);
  model->setParent(view);
  return new GridWindow(info, view, *model);
}

}  // namespace mavro
