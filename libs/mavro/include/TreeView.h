#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Core.h"

namespace mavro {

// A node of a tree; owned by its parent node, the top ones by the tree. Programs read it and change
// it through the tree.
struct TreeNode {
  std::string text;
  int data = 0;
  int image = -1;  // index in the tree's strip
  bool expanded = false;
  bool fillsOnExpand = false;  // shown as having children before it has any
  TreeNode* parent = nullptr;  // null for a top node
  int row = 0;                 // index among its siblings
  std::vector<std::unique_ptr<TreeNode>> children;
};

// A tree of texts. Nodes are kept here before the window exists and shown from here after. Adding a
// node or finding one costs the same however many there are.
class TreeView : public Control {
 public:
  class Impl;
  TreeView();
  ~TreeView() override;

  // Appends a node below `parentNode`, or at the top for null. The answer belongs to the tree.
  TreeNode* AddNode(TreeNode* parentNode, const std::string& label, int data, int image = -1);
  // The same at a place among the children; -1 is the end.
  TreeNode* InsertNode(TreeNode* parentNode, int index, const std::string& label, int data,
                       int image = -1);
  void SetNodeText(TreeNode* node, const std::string& label);
  void SetNodeData(TreeNode* node, int data);
  // The first child with this text, or null.
  TreeNode* FindChild(TreeNode* parentNode, const std::string& label) const;
  // The node with this data, the one added first if there are several, or null.
  TreeNode* FindData(int data) const;
  // Removes a node with all below it.
  void RemoveNode(TreeNode* node);
  void Clear();
  // Shows the children of a node, also of one that has none yet.
  void Expand(TreeNode* node);
  void Collapse(TreeNode* node);
  TreeNode* Selected() const;  // null for none
  // Selects a node and brings it into view; null selects none.
  void Select(TreeNode* node);
  const TreeNode& Root() const;  // not shown; holds the top nodes
  // Lets a node without children be expanded: onExpand may then add them. A node that got none
  // shows no longer that it has any.
  void SetFillsOnExpand(TreeNode* node, bool on = true);

  WriteProperty<int> imageList;  // strip of the nodes' pictures, by resource id; 0 for none

  // All of them tell what the user does, not what the program does.
  TreeEvent onChoose;       // double click or Enter on a node
  TreeEvent onExpand;       // its children are to be seen
  NotifyEvent onChangeSel;  // another node is selected

 private:
  Impl& TheImpl() const;
};

}  // namespace mavro
