#include "TreeView.h"

#include <iterator>

#include "Assert.h"
#include "NativeTree.h"
#include "SysImpl.h"
#include "TreeIndex.h"

namespace mavro {

// Holds the nodes; the window shows them from here.
class TreeView::Impl : public SysImpl {
 public:
  void Create() override;
  void Destroy() override;
  Param OnNotify(NotifyHeader* header) override;

  NativeTreeView* Window() const { return static_cast<NativeTreeView*>(hwnd); }
  std::vector<std::unique_ptr<TreeNode>>& ChildrenOf(TreeNode* node) {
    return node ? node->children : root.children;
  }
  using Nodes = std::vector<std::unique_ptr<TreeNode>>;
  void Insert(TreeNode* parentNode, int at, Nodes nodes);
  void Remove(TreeNode* node);
  void Clear();
  void Expand(TreeNode* node, bool on);

  void ImageListChanged();
  void FillsOnExpandChanged(TreeNode* node, bool on);

  int imageList = 0;
  TreeNode root;
  TreeIndex index;
  TreeNode* selected = nullptr;   // the node that the window has selected, or will select
  TreeNode* expanding = nullptr;  // the node whose onExpand is running

 private:
  TreeView& TheTree() const { return *static_cast<TreeView*>(owner); }
  void RestoreExpanded(const TreeNode& node);
  void Fire(TreeEvent& event, TreeNode* node);
  void OnExpanded(TreeNode* node);
};

namespace {

void Renumber(std::vector<std::unique_ptr<TreeNode>>& nodes, size_t from) {
  for (size_t i = from; i < nodes.size(); ++i) nodes[i]->row = static_cast<int>(i);
}

std::unique_ptr<TreeNode> NewNode(TreeRow row) {
  auto node = std::make_unique<TreeNode>();
  node->text = std::move(row.text);
  node->data = row.data;
  node->image = row.image;
  return node;
}

bool IsBelow(const TreeNode* node, const TreeNode* above) {
  while (node && node != above) node = node->parent;
  return node != nullptr;
}

}  // namespace

void TreeView::Impl::Create() {
  CreateNative("SysTreeView32", cWantsKeys);
  Window()->SetTree(&root, imageList);
  RestoreExpanded(root);
  if (selected) Window()->SelectNode(selected);
}

void TreeView::Impl::Destroy() {
  if (hwnd) Window()->SetTree(nullptr, 0);
  SysImpl::Destroy();
}

void TreeView::Impl::RestoreExpanded(const TreeNode& node) {
  for (const auto& child : node.children) {
    if (child->expanded) Window()->ExpandNode(child.get(), true);
    RestoreExpanded(*child);
  }
}

void TreeView::Impl::Fire(TreeEvent& event, TreeNode* node) {
  TreeArgs args{owner, node};
  event.Fire(args);
}

// Other notifications than the tree's own are passed on.
Param TreeView::Impl::OnNotify(NotifyHeader* header) {
  const auto* told = static_cast<const TreeHeader*>(header);
  switch (header->code) {
    case TVN_SELCHANGED:
      selected = told->node;
      FireNotify(TheTree().onChangeSel);
      return 0;
    case TVN_EXPANDED:
      OnExpanded(told->node);
      return 0;
    case TVN_COLLAPSED:
      told->node->expanded = false;
      return 0;
    case TVN_CHOSEN:
      Fire(TheTree().onChoose, told->node);
      return 0;
    default:
      return 1;
  }
}

// The handler may remove the node, or destroy the tree.
void TreeView::Impl::OnExpanded(TreeNode* node) {
  node->expanded = true;
  const NativeWindow* window = hwnd;
  expanding = node;
  TreeArgs args{owner, node};
  if (!TheTree().onExpand.Fire(args) || !IsWindow(window) || expanding != node) return;
  expanding = nullptr;
  if (!node->fillsOnExpand) return;
  FillsOnExpandChanged(node, false);
  if (!node->children.empty()) Window()->ExpandNode(node, true);
}

void TreeView::Impl::ImageListChanged() {
  if (hwnd) Window()->SetStrip(imageList);
}

void TreeView::Impl::FillsOnExpandChanged(TreeNode* node, bool on) {
  node->fillsOnExpand = on;
  if (hwnd) Window()->NodeChanged(node);
}

void TreeView::Impl::Insert(TreeNode* parentNode, int at, Nodes nodes) {
  auto& siblings = ChildrenOf(parentNode);
  MAVRO_ASSERT(at >= -1 && at <= static_cast<int>(siblings.size()));
  if (nodes.empty()) return;
  const size_t row = at == -1 ? siblings.size() : static_cast<size_t>(at);
  const size_t count = nodes.size();
  const bool isFirst = siblings.empty();
  if (hwnd) Window()->AddingNodes(parentNode, static_cast<int>(row), static_cast<int>(count));
  for (const auto& node : nodes) {
    node->parent = parentNode;
    index.Add(node.get());
  }
  siblings.insert(siblings.begin() + static_cast<std::ptrdiff_t>(row),
                  std::make_move_iterator(nodes.begin()), std::make_move_iterator(nodes.end()));
  Renumber(siblings, row);
  if (!hwnd) return;
  Window()->NodesAdded();
  // A node without children can't be shown expanded; it is expanded when its first child is added.
  if (parentNode && parentNode->expanded && isFirst) Window()->ExpandNode(parentNode, true);
}

void TreeView::Impl::Remove(TreeNode* node) {
  TreeNode* parentNode = node->parent;
  auto& siblings = ChildrenOf(parentNode);
  const auto row = static_cast<size_t>(node->row);
  const bool holdsSelected = IsBelow(selected, node);
  if (IsBelow(expanding, node)) expanding = nullptr;
  index.RemoveTree(node);
  if (hwnd) Window()->RemovingNode(parentNode, node->row);
  const std::unique_ptr<TreeNode> removed = std::move(siblings[row]);
  siblings.erase(siblings.begin() + static_cast<std::ptrdiff_t>(row));
  Renumber(siblings, row);
  if (hwnd) Window()->NodeRemoved();
  if (holdsSelected) selected = hwnd ? Window()->SelectedNode() : nullptr;
}

void TreeView::Impl::Clear() {
  if (hwnd) Window()->Clearing();
  selected = nullptr;
  expanding = nullptr;
  index.Clear();
  root.children.clear();
  if (hwnd) Window()->Cleared();
}

void TreeView::Impl::Expand(TreeNode* node, bool on) {
  if (node->expanded == on) return;
  node->expanded = on;
  if (hwnd) Window()->ExpandNode(node, on);
}

TreeView::TreeView()
    : Control(new Impl),
      imageList(impl, static_cast<PropertySetter>(&Impl::ImageListChanged), &TheImpl().imageList) {
  impl->textIsLive = false;
}

TreeView::~TreeView() {
  if (impl->hwnd) impl->Destroy();
}

TreeView::Impl& TreeView::TheImpl() const {
  return *static_cast<Impl*>(impl);
}

TreeNode* TreeView::AddNode(TreeNode* parentNode, const std::string& label, int data, int image) {
  return InsertNode(parentNode, -1, label, data, image);
}

TreeNode* TreeView::InsertNode(TreeNode* parentNode, int at, const std::string& label, int data,
                               int image) {
  Impl::Nodes nodes;
  nodes.push_back(NewNode({label, data, image}));
  TreeNode* added = nodes.front().get();
  TheImpl().Insert(parentNode, at, std::move(nodes));
  return added;
}

void TreeView::InsertNodes(TreeNode* parentNode, int at, std::vector<TreeRow> rows) {
  Impl::Nodes nodes;
  nodes.reserve(rows.size());
  for (TreeRow& row : rows) nodes.push_back(NewNode(std::move(row)));
  TheImpl().Insert(parentNode, at, std::move(nodes));
}

void TreeView::SetNodeText(TreeNode* node, const std::string& label) {
  if (node->text == label) return;
  TheImpl().index.Remove(node);
  node->text = label;
  TheImpl().index.Add(node);
  if (impl->hwnd) TheImpl().Window()->NodeChanged(node);
}

void TreeView::SetNodeData(TreeNode* node, int data) {
  if (node->data == data) return;
  TheImpl().index.Remove(node);
  node->data = data;
  TheImpl().index.Add(node);
}

void TreeView::SetNodeFaded(TreeNode* node, bool on, const std::string& tip) {
  if (node->faded == on && node->tip == tip) return;
  node->faded = on;
  node->tip = tip;
  if (impl->hwnd) TheImpl().Window()->NodeChanged(node);
}

TreeNode* TreeView::NodeAt(int x, int y) const {
  return impl->hwnd ? TheImpl().Window()->NodeAt(x, y) : nullptr;
}

TreeNode* TreeView::FindChild(TreeNode* parentNode, const std::string& label) const {
  return TheImpl().index.FirstChild(parentNode, label);
}

TreeNode* TreeView::FindData(int data) const {
  return TheImpl().index.FirstWithData(data);
}

void TreeView::RemoveNode(TreeNode* node) {
  TheImpl().Remove(node);
}

void TreeView::Clear() {
  TheImpl().Clear();
}

void TreeView::Expand(TreeNode* node) {
  TheImpl().Expand(node, true);
}

void TreeView::SetFillsOnExpand(TreeNode* node, bool on) {
  TheImpl().FillsOnExpandChanged(node, on);
}

void TreeView::Collapse(TreeNode* node) {
  TheImpl().Expand(node, false);
}

TreeNode* TreeView::Selected() const {
  return TheImpl().selected;
}

void TreeView::Select(TreeNode* node) {
  if (TheImpl().selected == node) return;
  TheImpl().selected = node;
  if (impl->hwnd) TheImpl().Window()->SelectNode(node);
}

const TreeNode& TreeView::Root() const {
  return TheImpl().root;
}

}  // namespace mavro
