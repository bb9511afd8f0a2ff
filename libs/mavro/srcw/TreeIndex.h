#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "TreeView.h"

namespace mavro {

// Finds the nodes of a tree by their contents. Owned by the tree, which reports each change. A new
// node is entered at the next search: a tree that is only filled and shown has no cost for the
// index.
class TreeIndex {
 public:
  void Add(TreeNode* node);
  // Called before the node's text, data or place changes.
  void Remove(TreeNode* node);
  // Removes the node with everything below it.
  void RemoveTree(TreeNode* node);
  void Clear();

  TreeNode* FirstChild(const TreeNode* parentNode, const std::string& label);
  TreeNode* FirstWithData(int data);

 private:
  // Nodes in the order added.
  using Nodes = std::vector<TreeNode*>;
  static size_t KeyOf(const TreeNode* parentNode, const std::string& label);
  void EnterPending();

  Nodes pending;                             // not yet in the maps; null for one that went again
  std::unordered_map<size_t, Nodes> byText;  // by parent and text; different ones may share a key
  std::unordered_map<int, Nodes> byData;
};

}  // namespace mavro
