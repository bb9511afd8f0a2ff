#include <QAbstractItemModel>
#include <QApplication>
#include <QHash>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QToolTip>
#include <QTreeView>
#include <functional>
#include <utility>

#include "NativeTree.h"
#include "QtFactories.h"
#include "QtPacer.h"
#include "QtStrips.h"
#include "QtText.h"
#include "QtToolTip.h"
#include "Virtual.h"

namespace mavro {

namespace {

// The toolkit's view of a tree of nodes, which stay with their owner.
class TreeModel final : public QAbstractItemModel {
 public:
  void SetTree(const TreeNode* newRoot) {
    beginResetModel();
    root = newRoot;
    endResetModel();
  }

  QModelIndex IndexOf(const TreeNode* node) const {
    return node ? createIndex(node->row, 0, const_cast<TreeNode*>(node)) : QModelIndex();
  }
  static TreeNode* NodeOf(const QModelIndex& index) {
    return static_cast<TreeNode*>(index.internalPointer());
  }

  QModelIndex index(int row, int column, const QModelIndex& parent) const override {
    if (!hasIndex(row, column, parent)) return QModelIndex();
    return createIndex(row, column, Holder(parent)->children[static_cast<size_t>(row)].get());
  }
  QModelIndex parent(const QModelIndex& index) const override {
    return index.isValid() ? IndexOf(NodeOf(index)->parent) : QModelIndex();
  }
  int rowCount(const QModelIndex& parent) const override {
    const TreeNode* node = Holder(parent);
    return node ? static_cast<int>(node->children.size()) : 0;
  }
  int columnCount(const QModelIndex&) const override { return 1; }
  bool hasChildren(const QModelIndex& parent) const override {
    const TreeNode* node = Holder(parent);
    return node && (!node->children.empty() || node->fillsOnExpand);
  }

  void SetStrip(int imageStrip) {
    strip = imageStrip;
    pictures.clear();
  }

  QVariant data(const QModelIndex& index, int role) const override {
    const TreeNode* node = NodeOf(index);
    if (role == Qt::DisplayRole) return ToScreen(node->text);
    if (role == Qt::DecorationRole && node->image >= 0) return Picture(node->image, node->faded);
    if (role == Qt::ToolTipRole) return ToScreen(node->tip);
    if (!node->faded) return QVariant();
    if (role == Qt::ForegroundRole)
      return QApplication::palette("QTreeView").brush(QPalette::Disabled, QPalette::Text);
    if (role == Qt::FontRole) {
      QFont font = QApplication::font("QTreeView");
      font.setStrikeOut(true);
      return font;
    }
    return QVariant();
  }

  // Calls of the base class that announce changes to the views.
  void BeginAdd(const TreeNode* parentNode, int row, int count) {
    beginInsertRows(IndexOf(parentNode), row, row + count - 1);
  }
  void EndAdd() { endInsertRows(); }
  void BeginRemove(const TreeNode* parentNode, int row) {
    beginRemoveRows(IndexOf(parentNode), row, row);
  }
  void EndRemove() { endRemoveRows(); }
  void BeginClear() { beginResetModel(); }
  void EndClear() { endResetModel(); }

 private:
  const TreeNode* Holder(const QModelIndex& parent) const {
    return parent.isValid() ? NodeOf(parent) : root;
  }
  QIcon Picture(int image, bool faded) const {
    const int key = faded ? -1 - image : image;
    const auto found = pictures.constFind(key);
    if (found != pictures.constEnd()) return *found;
    QIcon icon = StripIcon(strip, image);
    if (faded) icon = QIcon(icon.pixmap(StripPictureSize(strip), QIcon::Disabled));
    return *pictures.insert(key, icon);
  }

  const TreeNode* root = nullptr;
  int strip = 0;
  mutable QHash<int, QIcon> pictures;  // by image; those of faded nodes by -1 - image
};

class TreeWidget final : public QTreeView {
 public:
  explicit TreeWidget(QWidget* parent) : QTreeView(parent) {
    setModel(&model);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::Fixed);
    const auto changed = [this] { width.Request(); };
    const auto moved = [this] { isWidthOld = true; };
    connect(&model, &QAbstractItemModel::rowsInserted, &width, moved);
    connect(&model, &QAbstractItemModel::rowsRemoved, &width, moved);
    connect(&model, &QAbstractItemModel::dataChanged, &width, changed);
    connect(&model, &QAbstractItemModel::modelReset, &width, changed);
    connect(this, &QTreeView::expanded, &width, changed);
    connect(this, &QTreeView::collapsed, &width, changed);
  }

  // The selected node; another one may have the focus frame.
  QModelIndex Selected() const { return selectionModel()->selectedIndexes().value(0); }

  // Called before nodes come or go: the node at the top of the shown part will stay there.
  void KeepPlace() {
    if (top.isValid() || verticalScrollBar()->value() == 0) return;
    top = indexAt(QPoint(0, 0));
    placeOfTop = visualRect(top).top();
  }

  void doItemsLayout() override {
    QTreeView::doItemsLayout();
    if (std::exchange(isWidthOld, false)) width.Request();
    const QPersistentModelIndex before = std::exchange(top, QPersistentModelIndex());
    if (!before.isValid()) return;
    QScrollBar& bar = *verticalScrollBar();
    bar.setValue(bar.value() + visualRect(before).top() - placeOfTop);
  }

  TreeModel model;
  std::function<void(TreeNode*)> chosen;

 protected:
  // In a column that is too narrow the toolkit loses the node that a key leads to.
  void keyPressEvent(QKeyEvent* event) override {
    executeDelayedItemsLayout();
    width.Finish();
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && Selected().isValid())
      Choose(Selected());
    else
      QTreeView::keyPressEvent(event);
  }

  void mouseDoubleClickEvent(QMouseEvent* event) override {
    const QPersistentModelIndex clicked = indexAt(event->position().toPoint());
    const bool onText = visualRect(clicked).contains(event->position().toPoint());
    QTreeView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && clicked.isValid() && onText) Choose(clicked);
  }

  // A node's tip, or its text if that is cut off, is shown in a tool tip. The column gets its due
  // width before a click is handled.
  bool viewportEvent(QEvent* event) override {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
      width.RunNow();
    if (event->type() != QEvent::ToolTip) return QTreeView::viewportEvent(event);
    auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex at = indexAt(help->pos());
    const bool cut = at.isValid() && visualRect(at).right() > viewport()->width();
    QString tip = at.data(Qt::ToolTipRole).toString();
    if (tip.isEmpty() && cut) tip = at.data().toString();
    QToolTip::showText(help->globalPos(), PlainToolTip(tip), viewport());
    return true;
  }

 private:
  // Makes the column as wide as the shown nodes. The header's own mode would measure after each
  // added node.
  Pacer width{[this] { resizeColumnToContents(0); }};
  bool isWidthOld = false;    // nodes have come or gone since the last layout
  QPersistentModelIndex top;  // valid between a change and the layout after it
  int placeOfTop = 0;

  void Choose(const QModelIndex& index) {
    if (chosen) chosen(TreeModel::NodeOf(index));
  }
};

class TreeWindow final : public NativeTreeView {
 public:
  TreeWindow(const CreateInfo& info, TreeWidget* its) : NativeTreeView(info, its), tree(its) {
    tree->chosen = [this](TreeNode* node) { Report(TVN_CHOSEN, node); };
    QObject::connect(tree, &QTreeView::expanded, &guard, [this](const QModelIndex& index) {
      if (!quiet) Report(TVN_EXPANDED, TreeModel::NodeOf(index));
    });
    QObject::connect(tree, &QTreeView::collapsed, &guard, [this](const QModelIndex& index) {
      if (!quiet) Report(TVN_COLLAPSED, TreeModel::NodeOf(index));
    });
    QObject::connect(tree->selectionModel(), &QItemSelectionModel::selectionChanged, &guard,
                     [this] {
                       if (!quiet) Report(TVN_SELCHANGED, SelectedNode());
                     });
  }
  ~TreeWindow() override { tree->chosen = nullptr; }

  void SetTree(const TreeNode* root, int imageStrip) override {
    const Quiet now(*this);
    ShowStrip(imageStrip);
    tree->model.SetTree(root);
  }
  void SetStrip(int imageStrip) override {
    ShowStrip(imageStrip);
    tree->doItemsLayout();
  }
  void AddingNodes(const TreeNode* parentNode, int row, int count) override {
    tree->KeepPlace();
    tree->model.BeginAdd(parentNode, row, count);
  }
  void NodesAdded() override { tree->model.EndAdd(); }
  void RemovingNode(const TreeNode* parentNode, int row) override {
    const Quiet now(*this);
    tree->KeepPlace();
    tree->model.BeginRemove(parentNode, row);
  }
  void NodeRemoved() override {
    const Quiet now(*this);
    tree->model.EndRemove();
  }
  void NodeChanged(const TreeNode* node) override {
    const QModelIndex index = tree->model.IndexOf(node);
    emit tree->model.dataChanged(index, index);
  }
  void Clearing() override {
    const Quiet now(*this);
    tree->model.BeginClear();
  }
  void Cleared() override {
    const Quiet now(*this);
    tree->model.EndClear();
  }
  void ExpandNode(const TreeNode* node, bool on) override {
    const Quiet now(*this);
    tree->setExpanded(tree->model.IndexOf(node), on);
  }
  void SelectNode(const TreeNode* node) override {
    const Quiet now(*this);
    tree->setCurrentIndex(tree->model.IndexOf(node));
  }
  TreeNode* SelectedNode() const override { return TreeModel::NodeOf(tree->Selected()); }
  TreeNode* NodeAt(int x, int y) const override {
    const QModelIndex at = tree->indexAt(tree->viewport()->mapFromGlobal(QPoint(x, y)));
    return at.isValid() ? TreeModel::NodeOf(at) : nullptr;
  }

  bool WantsKey(int virtualKey) const override { return virtualKey == VK_RETURN && SelectedNode(); }

 private:
  // While an object exists, the program makes the changes, and no notifications are sent.
  class Quiet {
   public:
    explicit Quiet(TreeWindow& its) : window(its), before(its.quiet) { window.quiet = true; }
    ~Quiet() { window.quiet = before; }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

   private:
    TreeWindow& window;
    bool before;
  };

  void ShowStrip(int imageStrip) {
    const QSize picture = StripPictureSize(imageStrip);
    if (!picture.isEmpty()) tree->setIconSize(picture);
    tree->model.SetStrip(imageStrip);
  }

  void Report(int code, TreeNode* node) {
    TreeHeader header;
    header.from = this;
    header.code = code;
    header.node = node;
    Notify(header);
  }

  TreeWidget* tree;
  QObject guard;  // ends the connections with this window
  bool quiet = false;
};

}  // namespace

NativeWindow* MakeTreeView(const CreateInfo& info) {
  return new TreeWindow(info, new TreeWidget(ParentWidget(info)));
}

}  // namespace mavro
