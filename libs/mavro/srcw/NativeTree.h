#pragma once

#include "NativeWindow.h"
#include "TreeView.h"

namespace mavro {

// Codes of a tree's WM_NOTIFY, sent only for actions of the user.
enum TreeCode {
  TVN_SELCHANGED = -402,
  TVN_EXPANDED = -406,
  TVN_COLLAPSED = -407,
  TVN_CHOSEN = -410
};

struct TreeHeader : NotifyHeader {
  TreeNode* node = nullptr;
};

// Shows a tree of nodes. The nodes are not copied: the code that changes them calls this interface
// before and after.
class NativeTreeView : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  // Sets the node whose children are the top ones, and the strip of the nodes' pictures. `root` is
  // not owned and must outlive the window.
  virtual void SetTree(const TreeNode* root, int imageStrip) = 0;
  virtual void SetStrip(int imageStrip) = 0;
  // A null `parentNode` is the root.
  virtual void AddingNodes(const TreeNode* parentNode, int row, int count) = 0;
  virtual void NodesAdded() = 0;
  virtual void RemovingNode(const TreeNode* parentNode, int row) = 0;
  virtual void NodeRemoved() = 0;
  virtual void NodeChanged(const TreeNode* node) = 0;
  virtual void Clearing() = 0;
  virtual void Cleared() = 0;
  virtual void ExpandNode(const TreeNode* node, bool on) = 0;
  virtual void SelectNode(const TreeNode* node) = 0;  // null for none
  virtual TreeNode* SelectedNode() const = 0;
  virtual TreeNode* NodeAt(int x, int y) const = 0;  // a point of the screen; null for none
};

}  // namespace mavro
