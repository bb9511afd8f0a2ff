#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Core.h"

namespace mavro {

// A node of a tree; owned by its parent node, the top ones by the tree.
struct TreeNode {
  std::string text;
  int data = 0;
  int image = -1;  // index in the tree's strip
  bool expanded = false;
  TreeNode* parent = nullptr;
  std::vector<std::unique_ptr<TreeNode>> children;
};

// A tree of texts. Nodes are kept here before the window exists and mirrored to it after.
class TreeView : public Control {
 public:
  class Impl;
  TreeView();

  // Appends a node below `parent`, or at the top for null. The answer belongs to the tree.
  TreeNode* AddNode(TreeNode* parentNode, const std::string& label, int data, int image = -1);
  // The first child with this text, or null.
  TreeNode* FindChild(TreeNode* parentNode, const std::string& label) const;
  TreeNode* FindData(int data) const;
  void RemoveNode(TreeNode* node);
  void Clear();
  void Expand(TreeNode* node);
  TreeNode* Selected() const;  // null for none
  void Select(TreeNode* node);
  const TreeNode& Root() const { return root; }
  // Strip that node pictures are taken from; set before the window exists.
  int imageStrip = 0;

  NotifyEvent onChoose;  // double click or Enter on a node
  NotifyEvent onExpand;
  NotifyEvent onChangeSel;

 private:
  TreeNode root;  // not shown; holds the top nodes
};

}  // namespace mavro
