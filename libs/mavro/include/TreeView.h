#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Core.h"

namespace mavro {

// A node of a tree. It is owned by its parent node, a top node by the tree. Programs read it
// directly and change it through the tree.
struct TreeNode {
  std::string text;
  int data = 0;
  int image = -1;  // index in the tree's strip
  bool expanded = false;
  bool fillsOnExpand = false;  // shown as having children before it has any
  bool faded = false;          // shown gray, with a line through its text
  std::string tip;             // shown when the mouse rests on it; empty: its text, if that is cut
  TreeNode* parent = nullptr;  // null for a top node
  int row = 0;                 // index among its siblings
  int pending = -1;            // for the tree's own use
  std::vector<std::unique_ptr<TreeNode>> children;
};

// A node to be added.
struct TreeRow {
  std::string text;
  int data = 0;
  int image = -1;
};

// A tree of texts. Nodes are kept here before the window exists and shown from here afterwards. The
// cost of adding or finding a node does not depend on their number. When nodes above the shown part
// come or go, the shown part stays.
class TreeView : public Control {
 public:
  class Impl;
  TreeView();
  ~TreeView() override;

  // Appends a node below `parentNode`, or at the top for null. The returned node is owned by the
  // tree.
  TreeNode* AddNode(TreeNode* parentNode, const std::string& label, int data, int image = -1);
  // Inserts a node at an index among the children; -1 for the end.
  TreeNode* InsertNode(TreeNode* parentNode, int index, const std::string& label, int data,
                       int image = -1);
  // Inserts many nodes at once, which is much cheaper for the window than one after the other.
  void InsertNodes(TreeNode* parentNode, int index, std::vector<TreeRow> rows);
  void SetNodeText(TreeNode* node, const std::string& label);
  void SetNodeData(TreeNode* node, int data);
  // Shows a node gray and struck out, as one that stands for nothing, and with a tip that says why.
  void SetNodeFaded(TreeNode* node, bool on, const std::string& tip = "");
  // The first child with this text, or null.
  TreeNode* FindChild(TreeNode* parentNode, const std::string& label) const;
  // The node with this data, or null; if there are several, the one that was added first.
  TreeNode* FindData(int data) const;
  // Removes a node and all nodes below it.
  void RemoveNode(TreeNode* node);
  void Clear();
  // Shows the children of a node; also possible for a node that has none yet.
  void Expand(TreeNode* node);
  void Collapse(TreeNode* node);
  TreeNode* Selected() const;  // null for none
  // The node at a point of the screen, as a context menu's event has it; null beside all nodes.
  TreeNode* NodeAt(int x, int y) const;
  // Selects a node and scrolls it into view; null selects none.
  void Select(TreeNode* node);
  const TreeNode& Root() const;  // not shown; holds the top nodes
  // Makes a node without children expandable, so that onExpand can add them. If it adds none, the
  // node is no longer shown as expandable.
  void SetFillsOnExpand(TreeNode* node, bool on = true);

  WriteProperty<int> imageList;  // strip of the nodes' pictures, by resource id; 0 for none

  // These three are fired for actions of the user only, not of the program.
  TreeEvent onChoose;       // double click or Enter on a node
  TreeEvent onExpand;       // its children are about to be shown
  NotifyEvent onChangeSel;  // another node is selected

 private:
  Impl& TheImpl() const;
};

}  // namespace mavro
