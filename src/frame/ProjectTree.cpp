#include "frame/ProjectTree.h"

#include "FileText.h"
#include "Keys.h"
#include "SystemDialogs.h"
#include "base/Paths.h"
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

}  // namespace

ProjectTree::ProjectTree() {
  imageList = cTreeStrip;
  onChoose.Add_H(this, &ProjectTree::OnOpenFile);
  onKeyDown.Add_H(this, &ProjectTree::OnTreeKey);
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

void ProjectTree::OnOpenFile(mavro::TreeArgs&) {
  const int id = SelectedId();
  if (id == cNoId) return;
  const std::string path = TidyPath(PathOf(id));
  if (CppEditor* open = theMainForm->editTabs.Activate(path, true))
    open->Focus();
  else if (mavro::FileExists(path))
    theMainForm->editTabs.OpenFile(path);
  else
    mavro::Beep();
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
