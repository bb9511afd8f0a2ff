#pragma once

#include <string>

#include "TreeView.h"

namespace zendry {

// The files of the project below "Source Files", "Header Files" and "Resource File", those of a
// folder below a node of its own. A file's node carries its id.
class ProjectTree : public mavro::TreeView {
 public:
  ProjectTree();

  // Adds a file by its path and FileKind; kinds that have no place in the tree are passed over.
  void AddNode(const std::string& path, int id, int type);
  // Takes a file's node away; no more than that.
  void RemoveFileNode(int id);
  void Clear();
  void SelectRoot();
  // The id of the selected file; 0 when none is selected.
  int SelectedId() const;

 private:
  void OnOpenFile(mavro::TreeArgs& args);
  void OnTreeKey(mavro::KeyArgs& args);
  mavro::TreeNode* EnsureRoot(int type);

  mavro::TreeNode* sourceRoot = nullptr;
  mavro::TreeNode* headerRoot = nullptr;
  mavro::TreeNode* resourceRoot = nullptr;
};

}  // namespace zendry
