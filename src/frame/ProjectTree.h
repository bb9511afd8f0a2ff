#pragma once

#include <string>

#include "Action.h"
#include "Menu.h"
#include "TreeView.h"

namespace zendry {

// The commands of the tree's popup menus besides those of thePrjActs.
enum TreeCommand {
  cOpenNodeCommand = 1021,
  cAddHereCommand = 1022,
  cRemoveBelowCommand = 1023,
  cExpandAllCommand = 1024,
  cCollapseAllCommand = 1025
};

// The files of the project below "Source Files", "Header Files" and "Resource File"; the files of a
// subfolder have a node of their own there. A file's node has its id. A file that doesn't exist is
// shown gray and struck out.
class ProjectTree : public mavro::TreeView {
 public:
  ProjectTree();
  ~ProjectTree() override;

  // Adds a file by its path and FileKind; kinds without a place in the tree are ignored.
  void AddNode(const std::string& path, int id, int type);
  // Removes only the node of a file.
  void RemoveFileNode(int id);
  void Clear();
  void SelectRoot();
  // The id of the selected file; 0 when none is selected.
  int SelectedId() const;
  // Looks on the disk which files exist now: all of them, or the one with this path.
  void ShowMissing();
  void ShowMissing(const std::string& path);

 private:
  void OnOpenFile(mavro::TreeArgs& args);
  void OnTreeKey(mavro::KeyArgs& args);
  void OnPopup(mavro::MouseArgs& args);
  void OnPopupCommand(int id);
  void OpenSelected();
  void ShowIfMissing(int id);
  void RemoveBelow(const mavro::TreeNode& node);
  void FillMenus();
  mavro::TreeNode* EnsureRoot(int type);

  mavro::TreeNode* sourceRoot = nullptr;
  mavro::TreeNode* headerRoot = nullptr;
  mavro::TreeNode* resourceRoot = nullptr;
  mavro::ActionList acts;
  mavro::ContextMenu fileMenu, folderMenu, emptyMenu;
};

}  // namespace zendry
