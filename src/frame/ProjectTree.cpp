#include "frame/ProjectTree.h"

#include "FileText.h"
#include "Keys.h"
#include "SystemDialogs.h"
#include "base/FileCommands.h"
#include "base/Paths.h"
#include "frame/FileActs.h"
#include "frame/MainForm.h"
#include "frame/PictureStrips.h"
#include "frame/PrjActs.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr int cNoId = 0;
constexpr int cDeleteKey = 0x2E;

// A path cut at its last slash.
struct NodeName {
  std::string folder;  // empty for none, or if the only slash begins the path
  std::string shown;
};

NodeName SplitPath(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return {"", path};
  return {path.substr(0, slash), path.substr(slash + 1)};
}

int PictureOf(int type) {
  switch (type) {
    case cCSource:
      return cCPicture;
    case cHeader:
      return cHeaderPicture;
    case cResourceScript:
      return cResourcePicture;
    default:
      return cCppPicture;
  }
}

// The full path of a file of the project; empty if no file has this id.
std::string PathOf(int id) {
  if (id == cResourceFileId) return theProject.GetFullPath(theProject.resourceFile);
  const int index = theProject.IndexOfFile(id);
  return index < 0 ? "" : theProject.Files()[static_cast<size_t>(index)]->name;
}

// The ids of the files below a node.
void CollectIds(const mavro::TreeNode& node, std::vector<int>& ids) {
  if (node.data != cNoId) ids.push_back(node.data);
  for (const auto& child : node.children) CollectIds(*child, ids);
}

// The folder that a node stands for, as a full path: of a file, that which it is in.
std::string FolderOf(const mavro::TreeNode* node) {
  if (node && node->data != cNoId) node = node->parent;
  const bool isFolder = node && node->parent;
  return isFolder ? TidyPath(theProject.GetFullPath(node->text)) : theProject.folder;
}

}  // namespace

ProjectTree::ProjectTree() {
  imageList = cTreeStrip;
  onChoose.Add_H(this, &ProjectTree::OnOpenFile);
  onKeyDown.Add_H(this, &ProjectTree::OnTreeKey);
  onContextMenu.Add_H(this, &ProjectTree::OnPopup);
  FillMenus();
}

ProjectTree::~ProjectTree() = default;

void ProjectTree::FillMenus() {
  acts.SetTarget(this, &ProjectTree::OnPopupCommand);
  mavro::Action* open = acts.Add(cOpenNodeCommand, "&Open");
  mavro::Action* addHere = acts.Add(cAddHereCommand, "&Add file here...");
  mavro::Action* removeBelow = acts.Add(cRemoveBelowCommand, "&Remove its files...");
  mavro::Action* expandAll = acts.Add(cExpandAllCommand, "&Expand");
  mavro::Action* collapseAll = acts.Add(cCollapseAllCommand, "&Collapse");
  mavro::Action* add = thePrjActs.Find(cAddFileCommand);
  mavro::Action* remove = thePrjActs.Find(cRemoveFileCommand);
  mavro::Action* options = thePrjActs.Find(cProjectOptionsCommand);
  // Null stands for a separator.
  const auto fill = [](mavro::ContextMenu& popup, std::initializer_list<mavro::Action*> rows) {
    for (mavro::Action* row : rows) {
      if (row)
        popup.root.AddItem(row);
      else
        popup.root.AddSeparator();
    }
  };
  fill(fileMenu, {open, nullptr, addHere, remove, nullptr, options});
  fill(folderMenu, {expandAll, collapseAll, nullptr, addHere, removeBelow, nullptr, options});
  fill(emptyMenu, {add, nullptr, options, thePrjActs.Find(cCreateMakefileCommand), nullptr,
                   theFileActs.Find(cSaveProjectCommand), theFileActs.Find(cCloseProjectCommand)});
}

// The order of the roots is the order of their first files.
mavro::TreeNode* ProjectTree::EnsureRoot(int type) {
  const auto ensure = [this](mavro::TreeNode*& root, const char* label) {
    if (!root) root = TreeView::AddNode(nullptr, label, cNoId, cFolderPicture);
    return root;
  };
  switch (type) {
    case cCppSource:
    case cCSource:
      return ensure(sourceRoot, "Source Files");
    case cHeader:
      return ensure(headerRoot, "Header Files");
    case cResourceScript:
      return ensure(resourceRoot, "Resource File");
    default:
      return nullptr;
  }
}

void ProjectTree::AddNode(const std::string& path, int id, int type) {
  mavro::TreeNode* root = EnsureRoot(type);
  if (!root) return;
  const NodeName name = SplitPath(path);
  mavro::TreeNode* parentNode = root;
  if (!name.folder.empty()) {
    parentNode = FindChild(root, name.folder);
    if (!parentNode) parentNode = TreeView::AddNode(root, name.folder, cNoId, cFolderPicture);
  }
  TreeView::AddNode(parentNode, name.shown, id, PictureOf(type));
  ShowIfMissing(id);
  Expand(root);
}

void ProjectTree::RemoveFileNode(int id) {
  if (mavro::TreeNode* node = FindData(id)) RemoveNode(node);
}

void ProjectTree::Clear() {
  sourceRoot = headerRoot = resourceRoot = nullptr;
  TreeView::Clear();
}

void ProjectTree::SelectRoot() {
  if (!Root().children.empty()) Select(Root().children.front().get());
}

int ProjectTree::SelectedId() const {
  const mavro::TreeNode* node = Selected();
  return node ? node->data : cNoId;
}

// The node of a file that is not in the project's list has no path.
void ProjectTree::ShowIfMissing(int id) {
  const std::string path = PathOf(id);
  mavro::TreeNode* node = FindData(id);
  if (!node || path.empty()) return;
  const bool isMissing = !mavro::FileExists(path);
  SetNodeFaded(node, isMissing, isMissing ? "There is no such file: " + path : "");
}

void ProjectTree::ShowMissing() {
  std::vector<int> ids;
  CollectIds(Root(), ids);
  for (const int id : ids) ShowIfMissing(id);
}

void ProjectTree::ShowMissing(const std::string& path) {
  if (const ProjectFile* file = theProject.FindFile(path)) ShowIfMissing(file->id);
  ShowIfMissing(cResourceFileId);
}

// A click beside all nodes is about the project.
void ProjectTree::OnPopup(mavro::MouseArgs& args) {
  args.handled = !theProject.isOpen;
  if (args.handled) return;
  mavro::TreeNode* node = args.x >= 0 ? NodeAt(args.x, args.y) : Selected();
  if (node) Select(node);
  mavro::ContextMenu& popup = !node ? emptyMenu : node->data != cNoId ? fileMenu : folderMenu;
  theMainForm->UpdateMenu(popup.root);
  menu = &popup;
}

void ProjectTree::OnPopupCommand(int id) {
  mavro::TreeNode* node = Selected();
  if (!node || (id != cExpandAllCommand && id != cCollapseAllCommand && IsRefusedByBuild())) return;
  switch (id) {
    case cOpenNodeCommand:
      return OpenSelected();
    case cAddHereCommand:
      return thePrjActs.AddFilesFrom(FolderOf(node));
    case cRemoveBelowCommand:
      return RemoveBelow(*node);
    case cExpandAllCommand:
      return Expand(node);
    case cCollapseAllCommand:
      return Collapse(node);
    default:
      return;
  }
}

void ProjectTree::RemoveBelow(const mavro::TreeNode& node) {
  std::vector<int> ids;
  CollectIds(node, ids);
  const std::string count = std::to_string(ids.size()) + (ids.size() == 1 ? " file" : " files");
  if (ids.empty() ||
      !mavro::ConfirmLoss("Remove " + count + " below \"" + node.text + "\" from the project?"))
    return;
  thePrjActs.Remove(ids);
}

void ProjectTree::OnOpenFile(mavro::TreeArgs&) {
  OpenSelected();
}

void ProjectTree::OpenSelected() {
  const int id = SelectedId();
  if (id == cNoId) return;
  const std::string path = TidyPath(PathOf(id));
  if (CppEditor* open = theMainForm->editTabs.Activate(path, true))
    open->Focus();
  else if (mavro::FileExists(path))
    theMainForm->editTabs.OpenFile(path);
  else
    mavro::Beep();
  ShowIfMissing(id);
}

// Enter opens a file by OnOpenFile; a node of others is opened and closed.
void ProjectTree::OnTreeKey(mavro::KeyArgs& args) {
  mavro::TreeNode* node = Selected();
  if (args.key == mavro::Key::cEnter && node && node->data == cNoId) {
    args.handled = true;
    return node->expanded ? Collapse(node) : Expand(node);
  }
  if (args.key != cDeleteKey) return;
  args.handled = true;
  thePrjActs.OnCommand(cRemoveFileCommand);
}

}  // namespace zendry
