#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Timer.h"
#include "TreeView.h"

namespace zendry {

class EditTabs;
class Project;
class TagData;
struct TagClass;
struct TagItem;

// The classes, macros, variables and functions of the project's files, each below a root that is
// there as long as it has children. Roots and classes are filled when they are opened. A node's
// data holds the module's index in the low 16 bits, and above it the group with the letter of the
// tag's kind.
class ClassTree : public mavro::TreeView {
 public:
  enum Group {
    cClassRoot = 0x100,
    cClassNode = 0x200,
    cMemberNode = 0x300,
    cFunctionRoot = 0x400,
    cMacroRoot = 0x500,
    cVariableRoot = 0x600,
    cGlobalNode = 0x700
  };
  // The child of a node that isn't filled yet.
  static constexpr const char* cPlaceholder = "!!";

  // Both must outlive it; without tabs no place can be gone to.
  ClassTree(Project& itsProject, EditTabs* itsTabs);
  ~ClassTree() override;

  // Some tags may have changed: the tree will follow soon. Costs nothing.
  void TagsChanged();
  // Follows the tags now: only nodes whose tags have come or gone change. Does nothing if the tags
  // are the same.
  void Refresh();
  // Goes to the place of the selected node. False if it has none, or if that is gone.
  bool GoToSelected();
  // The tag of the selected node, with its module and owner; null without one. Valid until the tags
  // are parsed again.
  TagItem* SelectedItem();

  // Null while they have no children.
  mavro::TreeNode* classRoot = nullptr;
  mavro::TreeNode* macroRoot = nullptr;
  mavro::TreeNode* variableRoot = nullptr;
  mavro::TreeNode* functionRoot = nullptr;

 private:
  static constexpr size_t cRoots = 4;

  // The tags of a file as the tree shows them.
  struct Module {
    TagData* tags = nullptr;
    uint64_t generation = 0;
    uint64_t digest = 0;
    size_t counts[cRoots] = {};
    std::vector<mavro::TreeRow> rows[cRoots];  // of filled roots, in the tree's order
  };

  void OnTimer(mavro::NotifyArgs& args);
  void OnOpening(mavro::TreeArgs& args);
  void OnChosen(mavro::TreeArgs& args);
  void OnTreeKey(mavro::KeyArgs& args);

  size_t ModuleCount() const;
  bool HasSameModules() const;
  void TakeModules();
  void FollowModule(size_t index);
  void FillModule(Module& module, size_t index);
  void FillRows(Module& module, size_t index, size_t root) const;
  void UpdateRoots();
  mavro::TreeNode*& RootOf(size_t root);
  bool IsRootFilled(size_t root);
  std::vector<mavro::TreeRow> RowsOfRoot(size_t root) const;
  std::vector<mavro::TreeRow> RowsOfClass(const mavro::TreeNode& node) const;
  void FollowClasses(size_t index);
  void Fill(mavro::TreeNode* node, std::vector<mavro::TreeRow> rows);
  void Merge(mavro::TreeNode* node, std::vector<mavro::TreeRow> rows);
  void InsertRows(mavro::TreeNode* node, int at, std::vector<mavro::TreeRow> rows);
  void Replace(mavro::TreeNode* node, const std::vector<mavro::TreeRow>& before,
               const std::vector<mavro::TreeRow>& after);
  const TagClass* RecordOf(const mavro::TreeNode& node) const;

  Project& project;
  EditTabs* tabs;
  mavro::Timer timer{this};
  std::vector<Module> modules;
  uint64_t seen = 0;  // the latest generation of all tags at the last refresh
  size_t counts[cRoots] = {};
};

}  // namespace zendry
