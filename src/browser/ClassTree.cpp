#include "browser/ClassTree.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "AsciiCase.h"
#include "Keys.h"
#include "browser/BrowserActs.h"
#include "code/OuterDefinition.h"
#include "code/TagLookup.h"
#include "editor/EditTabs.h"
#include "editor/EditorHost.h"
#include "project/Project.h"

namespace zendry {

namespace {

using mavro::TreeNode;
using mavro::TreeRow;

constexpr int cRefreshDelay = 200;  // milliseconds
constexpr int cModuleMask = 0xFFFF;
constexpr int cGroupShift = 16;

struct RootRow {
  const char* caption;
  int group;
  int child;
  int kind;  // of the children; 0 for those of classes
};
constexpr RootRow cRootRows[] = {
    {"Classess", ClassTree::cClassRoot, ClassTree::cClassNode, 0},
    {"Macros", ClassTree::cMacroRoot, ClassTree::cGlobalNode, 'd'},
    {"Variables", ClassTree::cVariableRoot, ClassTree::cGlobalNode, 'v'},
    {"Functions", ClassTree::cFunctionRoot, ClassTree::cGlobalNode, 'f'},
};

int DataOf(size_t module, int group, int kind) {
  return static_cast<int>(module & cModuleMask) | (group | (kind & 0xFF)) << cGroupShift;
}
int GroupOf(int data) {
  return data >> cGroupShift & 0xF00;
}
int KindOf(int data) {
  return data >> cGroupShift & 0xFF;
}
size_t ModuleOf(int data) {
  return static_cast<size_t>(data & cModuleMask);
}

bool IsClass(const TagClass& record) {
  return record.line >= 0 && (record.kind == 'c' || record.kind == 's' || record.kind == 'u') &&
         !record.name.starts_with('<');
}

// By name without the case of letters, then by the whole text, then by what the node stands for.
std::string_view NameIn(std::string_view text) {
  const size_t open = text.find('(');
  return open == 0 ? text : text.substr(0, open);
}
int Compare(std::string_view a, std::string_view b) {
  const std::string_view nameA = NameIn(a), nameB = NameIn(b);
  const size_t length = std::min(nameA.size(), nameB.size());
  for (size_t i = 0; i < length; ++i) {
    const auto lowA = static_cast<unsigned char>(mavro::AsciiLower(nameA[i]));
    const auto lowB = static_cast<unsigned char>(mavro::AsciiLower(nameB[i]));
    if (lowA != lowB) return lowA < lowB ? -1 : 1;
  }
  if (nameA.size() != nameB.size()) return nameA.size() < nameB.size() ? -1 : 1;
  return a.compare(b);
}
bool IsBefore(std::string_view textA, int dataA, std::string_view textB, int dataB) {
  const int order = Compare(textA, textB);
  return order != 0 ? order < 0 : dataA < dataB;
}
// The first bytes of a row's name, as numbers that compare as the names do: nearly all comparisons
// of a long list end with them.
struct SortKey {
  explicit SortKey(const TreeRow& itsRow) : row(&itsRow) {
    const std::string_view name = NameIn(itsRow.text);
    for (size_t i = 0; i < 2 * sizeof(uint64_t); ++i) {
      const char c = i < name.size() ? mavro::AsciiLower(name[i]) : '\0';
      bytes[i / 8] = bytes[i / 8] << 8 | static_cast<unsigned char>(c);
    }
  }
  const TreeRow* row;
  std::array<uint64_t, 2> bytes{};
};

bool IsRowBefore(const TreeRow& a, const TreeRow& b) {
  return IsBefore(a.text, a.data, b.text, b.data);
}

bool IsFilled(const TreeNode& node) {
  return node.children.size() != 1 || node.children.front()->text != ClassTree::cPlaceholder;
}

uint64_t Mix(uint64_t digest, std::string_view text) {
  constexpr uint64_t cSpread = 0x9E3779B97F4A7C15u;
  return (digest ^ std::hash<std::string_view>()(text)) * cSpread;
}
uint64_t Mix(uint64_t digest, const TagItem& item) {
  return Mix(Mix(digest + static_cast<uint64_t>(item.kind), item.name), item.signature);
}

// Of all that the tree shows of a file. Lines don't count: they change with every key.
uint64_t DigestOf(const TagData& tags) {
  uint64_t digest = 1;
  for (const TagItem& item : tags.globals) digest = Mix(digest, item);
  for (const auto& [name, record] : tags.classes) {
    digest = Mix(digest + (record.line >= 0), record);
    for (const TagItem& member : record.members)
      if (IsOwnMember(member)) digest = Mix(digest, member);
  }
  return digest;
}

std::string TextOf(const TagItem& item) {
  return std::string(item.name) + item.signature;
}

}  // namespace

ClassTree::ClassTree(Project& itsProject, EditTabs* itsTabs) : project(itsProject), tabs(itsTabs) {
  onExpand.Add_H(this, &ClassTree::OnOpening);
  onChoose.Add_H(this, &ClassTree::OnChosen);
  onKeyDown.Add_H(this, &ClassTree::OnTreeKey);
  timer.onTimer.Add_H(this, &ClassTree::OnTimer);
}

ClassTree::~ClassTree() = default;

// A text that is being typed is half a declaration at most keys: the tree waits for a pause.
void ClassTree::TagsChanged() {
  timer.Start(cRefreshDelay);
}

void ClassTree::OnTimer(mavro::NotifyArgs&) {
  timer.Stop();
  Refresh();
}

size_t ClassTree::ModuleCount() const {
  return std::min<size_t>(project.Files().size(), cModuleMask + 1);
}

bool ClassTree::HasSameModules() const {
  const auto& files = project.Files();
  const auto end = files.begin() + static_cast<std::ptrdiff_t>(ModuleCount());
  return std::equal(
      files.begin(), end, modules.begin(), modules.end(),
      [](const auto& file, const Module& module) { return &file->tags == module.tags; });
}

void ClassTree::Refresh() {
  const bool isSame = HasSameModules();
  if (isSame && seen == TagData::LatestGeneration()) return;
  seen = TagData::LatestGeneration();
  if (!isSame) return TakeModules();
  for (size_t i = 0; i < modules.size(); ++i)
    if (modules[i].generation != modules[i].tags->Generation()) FollowModule(i);
}

// The facts of a file that the roots need. Its rows are made for roots that have been opened: those
// of a large project take several megabytes, and most are never seen.
void ClassTree::FillModule(Module& module, size_t index) {
  module.generation = module.tags->Generation();
  module.digest = DigestOf(*module.tags);
  std::fill(std::begin(module.counts), std::end(module.counts), 0);
  for (const auto& [name, record] : module.tags->classes) module.counts[0] += IsClass(record);
  for (const TagItem& item : module.tags->globals)
    for (size_t root = 1; root < cRoots; ++root)
      module.counts[root] += item.kind == cRootRows[root].kind;
  for (size_t root = 0; root < cRoots; ++root)
    if (IsRootFilled(root)) FillRows(module, index, root);
}

// The rows of the classes or globals of a file, as children of a root.
void ClassTree::FillRows(Module& module, size_t index, size_t root) const {
  std::vector<TreeRow>& rows = module.rows[root];
  rows.clear();
  rows.reserve(module.counts[root]);
  if (root == 0) {
    for (const auto& [name, record] : module.tags->classes)
      if (IsClass(record)) rows.push_back({record.name, DataOf(index, cClassNode, record.kind)});
  } else {
    for (const TagItem& item : module.tags->globals)
      if (item.kind == cRootRows[root].kind)
        rows.push_back({TextOf(item), DataOf(index, cGlobalNode, item.kind)});
  }
  std::stable_sort(rows.begin(), rows.end(), IsRowBefore);
}

// Files have come or gone: the modules have other indexes, so all nodes are looked at.
void ClassTree::TakeModules() {
  modules.clear();
  modules.resize(ModuleCount());
  std::fill(std::begin(counts), std::end(counts), 0);
  for (size_t i = 0; i < modules.size(); ++i) {
    modules[i].tags = &project.Files()[i]->tags;
    FillModule(modules[i], i);
    for (size_t root = 0; root < cRoots; ++root) counts[root] += modules[i].counts[root];
  }
  UpdateRoots();
  for (size_t root = 0; root < cRoots; ++root) {
    if (IsRootFilled(root)) Merge(RootOf(root), RowsOfRoot(root));
  }
  for (size_t i = 0; i < modules.size(); ++i) FollowClasses(i);
}

void ClassTree::FollowModule(size_t index) {
  Module& module = modules[index];
  module.generation = module.tags->Generation();
  if (DigestOf(*module.tags) == module.digest) return;
  Module now;
  now.tags = module.tags;
  FillModule(now, index);
  for (size_t root = 0; root < cRoots; ++root)
    counts[root] += now.counts[root] - module.counts[root];
  UpdateRoots();
  for (size_t root = 0; root < cRoots; ++root) {
    if (IsRootFilled(root)) Replace(RootOf(root), module.rows[root], now.rows[root]);
  }
  module = std::move(now);
  FollowClasses(index);
}

TreeNode*& ClassTree::RootOf(size_t root) {
  TreeNode** const roots[cRoots] = {&classRoot, &macroRoot, &variableRoot, &functionRoot};
  return *roots[root];
}

bool ClassTree::IsRootFilled(size_t root) {
  const TreeNode* node = RootOf(root);
  return node && IsFilled(*node);
}

// The roots that are there keep this order.
void ClassTree::UpdateRoots() {
  int place = 0;
  for (size_t root = 0; root < cRoots; ++root) {
    TreeNode*& node = RootOf(root);
    if (counts[root] == 0 && node) {
      RemoveNode(node);
      node = nullptr;
    } else if (counts[root] > 0 && !node) {
      const RootRow& row = cRootRows[root];
      node = InsertNode(nullptr, place, row.caption, DataOf(0, row.group, 0));
      AddNode(node, cPlaceholder, 0);
    }
    if (node) ++place;
  }
}

std::vector<TreeRow> ClassTree::RowsOfRoot(size_t root) const {
  std::vector<SortKey> keys;
  keys.reserve(counts[root]);
  for (const Module& module : modules)
    for (const TreeRow& row : module.rows[root]) keys.emplace_back(row);
  std::sort(keys.begin(), keys.end(), [](const SortKey& a, const SortKey& b) {
    return a.bytes != b.bytes ? a.bytes < b.bytes : IsRowBefore(*a.row, *b.row);
  });
  std::vector<TreeRow> all;
  all.reserve(keys.size());
  for (const SortKey& key : keys) all.push_back(*key.row);
  return all;
}

const TagClass* ClassTree::RecordOf(const TreeNode& node) const {
  const size_t index = ModuleOf(node.data);
  if (index >= modules.size()) return nullptr;
  const auto found = modules[index].tags->classes.find(node.text);
  return found == modules[index].tags->classes.end() ? nullptr : &found->second;
}

std::vector<TreeRow> ClassTree::RowsOfClass(const TreeNode& node) const {
  std::vector<TreeRow> rows;
  const TagClass* record = HasSameModules() ? RecordOf(node) : nullptr;
  if (record)
    for (const TagItem& member : record->members)
      if (IsOwnMember(member))
        rows.push_back({TextOf(member), DataOf(ModuleOf(node.data), cMemberNode, member.kind)});
  std::stable_sort(rows.begin(), rows.end(), IsRowBefore);
  return rows;
}

// The classes of a module that have been opened.
void ClassTree::FollowClasses(size_t index) {
  if (!classRoot || !IsFilled(*classRoot)) return;
  for (const auto& node : classRoot->children)
    if (ModuleOf(node->data) == index && IsFilled(*node)) Merge(node.get(), RowsOfClass(*node));
}

// The placeholder goes last: a node without children would be closed.
void ClassTree::Fill(TreeNode* node, std::vector<TreeRow> rows) {
  const int count = static_cast<int>(rows.size());
  InsertRows(node, 0, std::move(rows));
  RemoveNode(node->children[static_cast<size_t>(count)].get());
}

void ClassTree::InsertRows(TreeNode* node, int at, std::vector<TreeRow> rows) {
  const size_t count = rows.size();
  InsertNodes(node, at, std::move(rows));
  if (node != classRoot) return;
  for (size_t i = 0; i < count; ++i)
    AddNode(node->children[static_cast<size_t>(at) + i].get(), cPlaceholder, 0);
}

// Children and rows are in the same order. A child whose text is still there is kept.
void ClassTree::Merge(TreeNode* node, std::vector<TreeRow> rows) {
  auto row = rows.begin();
  for (size_t at = 0; at < node->children.size() || row != rows.end();) {
    TreeNode* child = at < node->children.size() ? node->children[at].get() : nullptr;
    const int order = !child ? -1 : row == rows.end() ? 1 : Compare(row->text, child->text);
    if (order > 0) {
      RemoveNode(child);
      continue;
    }
    if (order == 0) {
      SetNodeData(child, row->data);
      ++row;
      ++at;
      continue;
    }
    auto end = row;
    while (end != rows.end() && (!child || Compare(end->text, child->text) < 0)) ++end;
    const size_t count = static_cast<size_t>(end - row);
    InsertRows(node, static_cast<int>(at),
               {std::make_move_iterator(row), std::make_move_iterator(end)});
    row = end;
    at += count;
  }
}

// The same for one module of many, without looking at the nodes of the others.
void ClassTree::Replace(TreeNode* node, const std::vector<TreeRow>& before,
                        const std::vector<TreeRow>& after) {
  std::vector<TreeRow> gone, come;
  std::set_difference(before.begin(), before.end(), after.begin(), after.end(),
                      std::back_inserter(gone), IsRowBefore);
  std::set_difference(after.begin(), after.end(), before.begin(), before.end(),
                      std::back_inserter(come), IsRowBefore);
  const auto placeOf = [&](const TreeRow& row) {
    return std::lower_bound(node->children.begin(), node->children.end(), row,
                            [](const auto& child, const TreeRow& wanted) {
                              return IsBefore(child->text, child->data, wanted.text, wanted.data);
                            });
  };
  for (const TreeRow& row : gone) {
    const auto found = placeOf(row);
    if (found != node->children.end() && (*found)->text == row.text) RemoveNode(found->get());
  }
  for (TreeRow& row : come) {
    const int at = static_cast<int>(placeOf(row) - node->children.begin());
    InsertRows(node, at, {std::move(row)});
  }
}

void ClassTree::OnOpening(mavro::TreeArgs& args) {
  TreeNode* node = args.node;
  if (IsFilled(*node)) return;
  for (size_t root = 0; root < cRoots; ++root) {
    if (node != RootOf(root)) continue;
    if (HasSameModules())
      for (size_t i = 0; i < modules.size(); ++i) FillRows(modules[i], i, root);
    return Fill(node, RowsOfRoot(root));
  }
  if (GroupOf(node->data) == cClassNode) Fill(node, RowsOfClass(*node));
}

void ClassTree::OnChosen(mavro::TreeArgs&) {
  GoToSelected();
}

// Enter goes to a place by OnChosen; a root is opened and closed.
void ClassTree::OnTreeKey(mavro::KeyArgs& args) {
  TreeNode* node = Selected();
  if (args.key == mavro::Key::cEnter && node && !node->parent) {
    args.handled = true;
    if (node->expanded) return Collapse(node);
    mavro::TreeArgs opening{this, node};
    OnOpening(opening);
    return Expand(node);
  }
  if (args.key != mavro::Key::cDelete) return;
  args.handled = true;
  theBrowserActs.OnCommand(cDeleteMemberCommand);
}

bool ClassTree::GoToSelected() {
  const TreeNode* node = Selected();
  if (!tabs || !node || !node->parent) return false;
  const std::string shown = node->text;
  project.parseOpenEditors(nullptr);
  const TagItem* item = SelectedItem();
  if (!item) {
    tabs->Host()->Say("\"" + shown + "\" is no longer in the files of the project");
    return false;
  }
  CppEditor* editor = tabs->GoTo(item->module->fileName, std::max(item->line, 1));
  if (editor) editor->Focus();
  return editor;
}

// Overloads have texts of their own.
TagItem* ClassTree::SelectedItem() {
  Refresh();
  TreeNode* node = Selected();
  if (!node || !node->parent || ModuleOf(node->data) >= modules.size()) return nullptr;
  TagData* module = modules[ModuleOf(node->data)].tags;
  TreeNode* classNode = GroupOf(node->data) == cMemberNode ? node->parent : node;
  if (GroupOf(node->data) == cGlobalNode) {
    for (TagItem& item : module->globals) {
      if (item.kind != KindOf(node->data) || TextOf(item) != node->text) continue;
      item.module = module;
      item.owner = nullptr;
      return &item;
    }
    return nullptr;
  }
  const auto found = module->classes.find(classNode->text);
  if (found == module->classes.end()) return nullptr;
  TagClass& record = found->second;
  record.module = module;
  record.owner = &record;
  if (classNode == node) return &record;
  for (TagItem& member : record.members) {
    if (!IsOwnMember(member) || TextOf(member) != node->text) continue;
    member.module = module;
    member.owner = &record;
    return &member;
  }
  return nullptr;
}

}  // namespace zendry
