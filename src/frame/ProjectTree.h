#pragma once

#include <string>

#include "TreeView.h"

namespace zendry {

// The files of the project below "Source Files", "Header Files" and "Resource File"; the files of a
// subfolder have a node of their own there. A file's node has its id.
class ProjectTree : public mavro::TreeView {
 public:
  ProjectTree();

  // Adds a file by its path and FileKind; kinds without a place in the tree are ignored.
  void AddNode(const std::string& path, int id, int type);
  // Removes only the node of a file.
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
