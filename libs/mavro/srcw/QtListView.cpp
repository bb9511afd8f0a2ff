#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QTreeView>

#include "ListView.h"
#include "NativeLists.h"
#include "QtFactories.h"
#include "QtListModel.h"
#include "QtPacer.h"
#include "QtRowDelegate.h"
#include "QtStrips.h"
#include "Virtual.h"

namespace mavro {

namespace {

class RowView final : public QTreeView {
 public:
  explicit RowView(QWidget* parent) : QTreeView(parent) {
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setIndentation(0);
    setUniformRowHeights(true);
    setVerticalScrollMode(ScrollPerPixel);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setAllColumnsShowFocus(true);
    header()->setStretchLastSection(true);
    header()->setSectionsMovable(false);
    header()->setMinimumSectionSize(20);
    setItemDelegate(&delegate);
  }

  void SetPictures(QSize size) {
    if (!size.isEmpty()) setIconSize(size);
    if (delegate.pictureHeight == size.height()) return;
    delegate.pictureHeight = size.height();
    doItemsLayout();
  }

  void SetGridLines(bool on) {
    gridLines = on;
    viewport()->update();
  }

  bool IsEditing() const { return state() == EditingState; }

  RowDelegate delegate;
  std::function<void()> onEnter;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isEnter) return QTreeView::keyPressEvent(event);
    if (!IsEditing()) onEnter();  // otherwise Enter ends the edit
  }

  bool viewportEvent(QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return QTreeView::viewportEvent(event);
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    ShowCellTip(*this, delegate, option, *static_cast<QHelpEvent*>(event));
    return true;
  }

  void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
    QTreeView::drawRow(painter, option, index);
    if (!gridLines) return;
    const QColor line = GridColor(palette());
    const QRect row = option.rect;
    painter->fillRect(row.left(), row.bottom(), row.width(), 1, line);
    for (int column = 0; column + 1 < header()->count(); ++column) {
      const int right = columnViewportPosition(column) + columnWidth(column) - 1;
      painter->fillRect(right, row.top(), 1, row.height(), line);
    }
  }

 private:
  bool gridLines = true;
};

class ListViewWindow final : public NativeListView {
 public:
  ListViewWindow(const CreateInfo& info, RowView* itsView)
      : NativeListView(info, itsView),
        view(itsView),
        model(new ListModel(itsView)),
        pacer([this] { model->PublishRows(); }) {
    view->setModel(model);
    QObject::connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, &pacer,
                     [this] { Report(LVN_SELCHANGED, SelectedRow()); });
    QObject::connect(view, &QTreeView::clicked, &pacer,
                     [this](const QModelIndex& index) { Report(LVN_CLICKED, index.row()); });
    QObject::connect(view, &QTreeView::doubleClicked, &pacer,
                     [this](const QModelIndex& index) { Report(LVN_CHOSEN, index.row()); });
    QObject::connect(view->header(), &QHeaderView::sectionClicked, &pacer,
                     [this](int column) { Report(LVN_COLUMNCLICK, -1, column); });
    model->edited = [this](int row, int column, const std::string& typed) {
      Report(LVN_ENDLABELEDIT, row, column, typed);
    };
    view->onEnter = [this] {
      if (SelectedRow() != -1) Report(LVN_CHOSEN, SelectedRow());
    };
  }

  ~ListViewWindow() override {
    view->onEnter = [] {};
    model->edited = nullptr;
    model->SetSource(nullptr);
  }

  // Enter chooses a row if there is a handler for it; the editor of a cell wants every key.
  bool WantsKey(int virtualKey) const override {
    if (view->IsEditing()) return true;
    const auto* list = dynamic_cast<const ListView*>(creationData);
    return virtualKey == VK_RETURN && list && list->onChoose.HasHandlers() && SelectedRow() != -1;
  }

  void SetSource(const ListSource* source) override { model->SetSource(source); }

  void SetLook(const ListLook& look) override {
    model->SetFullRowSelect(look.fullRowSelect);
    view->setSelectionBehavior(look.fullRowSelect ? QTreeView::SelectRows : QTreeView::SelectItems);
    view->delegate.showSelection = look.showSelection;
    view->setEditTriggers(look.editLabels ? QTreeView::EditKeyPressed | QTreeView::SelectedClicked
                                          : QTreeView::NoEditTriggers);
    view->SetPictures(look.imageList == 0 ? QSize(0, 0) : StripPictureSize(look.imageList));
    model->SetStrip(look.imageList);
    view->header()->setVisible(look.headerVisible);
    view->SetGridLines(look.gridLines);
  }

  void ColumnAdded(int width) override {
    model->PublishColumn();
    view->setColumnWidth(model->columnCount() - 1, width);
  }

  void RowsAdded() override { pacer.Request(); }

  void Update() override {
    pacer.RunNow();
    view->viewport()->repaint();
  }

  void ColumnChanged(int column) override { model->ColumnChanged(column); }
  void RemovingColumn() override { model->BeginRemoveColumn(); }
  void ColumnRemoved() override { model->EndRemoveColumn(); }

  void RemovingRows(int first, int count) override {
    const Quiet quiet(*this);
    model->BeginRemoveRows(first, count);
  }
  // Undoes the selection that the toolkit makes by itself in place of a removed row.
  void RowsRemoved(int selected) override {
    const Quiet quiet(*this);
    model->EndRemoveRows();
    if (selected == -1) view->clearSelection();
  }

  void RowsSorted(int column, bool ascending, int selected) override {
    view->header()->setSortIndicatorShown(true);
    view->header()->setSortIndicator(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    model->AllChanged();
    SelectRow(selected);
  }

  void EditCell(int row, int column) override {
    pacer.RunNow();
    view->setFocus();
    view->setCurrentIndex(model->index(row, column));
    view->edit(model->index(row, column));
  }

  void EndEdit() override {
    if (view->IsEditing()) view->delegate.Finish();
  }
  bool LeaveForGood() override {
    EndEdit();
    return true;
  }

  void SetHeaderClickable(bool on) override { view->header()->setSectionsClickable(on); }

  void RowsCleared() override {
    const Quiet quiet(*this);
    model->PublishCleared();
  }

  void RowChanged(int row) override { model->RowChanged(row); }

  void SelectRow(int row) override {
    const Quiet quiet(*this);
    pacer.RunNow();
    const QModelIndex index = row == -1 ? QModelIndex() : model->index(row, 0);
    auto flags = QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Current;
    if (view->selectionBehavior() == QTreeView::SelectRows) flags |= QItemSelectionModel::Rows;
    view->selectionModel()->setCurrentIndex(index, flags);
    if (row == -1)
      view->clearSelection();
    else
      view->scrollTo(index);
  }

  int SelectedRow() const override {
    const QModelIndexList selected = view->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
  }

 private:
  // While an object exists, the program makes the changes, and no notifications are sent.
  class Quiet {
   public:
    explicit Quiet(ListViewWindow& its) : window(its) { ++window.quiet; }
    ~Quiet() { --window.quiet; }

   private:
    ListViewWindow& window;
  };

  void Report(int code, int row, int column = -1, const std::string& typed = std::string()) {
    if (quiet > 0) return;
    ListViewHeader header;
    header.from = this;
    header.code = code;
    header.row = row;
    header.column = column;
    header.text = typed;
    Notify(header);
  }

  RowView* const view;
  ListModel* const model;
  Pacer pacer;
  int quiet = 0;
};

}  // namespace

NativeWindow* MakeListView(const CreateInfo& info) {
  if (!(info.style & LVS_REPORT)) return MakeIconView(info);
  return new ListViewWindow(info, new RowView(ParentWidget(info)));
}

}  // namespace mavro
