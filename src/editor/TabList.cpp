#include "editor/TabList.h"

#include <algorithm>
#include <mavro>
#include <string>
#include <vector>

#include "Keys.h"
#include "base/ControlBytes.h"
#include "base/NameMatch.h"
#include "base/Paths.h"
#include "editor/EditTabs.h"
#include "project/Project.h"

namespace zendry {

namespace {

using mavro::Key;

constexpr int cNameWidth = 220;
constexpr int cPageRows = 10;

struct OpenTab {
  int index = 0;       // among the tabs
  std::string path;    // a name for a file that has none yet
  std::string shown;   // its name, with the mark of unsaved changes
  std::string folder;  // as seen from the project's folder
  int score = 0;
};

std::string FolderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos || slash == 0) return path.substr(0, slash + 1);
  return path.substr(0, slash);
}

OpenTab Entry(const EditTabs& tabs, int index) {
  const EditTab& tab = *tabs.GetTab(index);
  const std::string& path = tab.editor->fileName;
  OpenTab entry{index, path.empty() ? BaseName(path) : path, {}, {}};
  entry.shown = MarkControlBytes(BaseName(path) + (tab.editor->dirty ? "*" : ""));
  if (path.empty()) return entry;
  const bool isInProject = theProject.isOpen && path.starts_with(theProject.folder + "/");
  const std::string seen = isInProject ? path.substr(theProject.folder.size() + 1) : path;
  entry.folder = MarkControlBytes(FolderOf(seen));
  return entry;
}

// All open files, the one that was in front last first.
std::vector<OpenTab> Entries(const EditTabs& tabs) {
  std::vector<OpenTab> entries;
  for (int i = 0; i < tabs.TabCount(); ++i) entries.push_back(Entry(tabs, i));
  const auto& order = tabs.LastUsed();
  const auto rank = [&](const OpenTab& entry) {
    return std::find(order.begin(), order.end(), tabs.GetTab(entry.index)) - order.begin();
  };
  std::stable_sort(entries.begin(), entries.end(),
                   [&](const OpenTab& a, const OpenTab& b) { return rank(a) < rank(b); });
  return entries;
}

class TabList : public mavro::Form {
  typedef TabList This;

 public:
  explicit TabList(std::vector<OpenTab> newEntries);

  // The index of the chosen tab, -1 for none.
  int Choose();

 private:
  // clang-format off
	//!decl
	mavro::Edit field;
	mavro::ListView list;
	//!end
  // clang-format on

  void Initialize();
  void Fill();
  void MoveTo(int row);
  void OnTyped(mavro::NotifyArgs& args);
  void OnFieldKey(mavro::KeyArgs& args);
  void OnListKey(mavro::KeyArgs& args);
  void OnRow(mavro::NotifyArgs& args);
  void Accept();

  std::vector<OpenTab> entries;
};

TabList::TabList(std::vector<OpenTab> newEntries) : entries(std::move(newEntries)) {
  Initialize();
  field.accessibleName = "Letters of a name or path";
  list.accessibleName = text;
  list.AddColumn("file", cNameWidth);
  list.AddColumn("folder", mavro::ListColumns::cWidth);
  list.fullRowSelect = true;
  focusControl = &field;
  autoDialogKeys = false;  // there are no buttons that they could press
  Fill();
}

void TabList::Initialize() {
  using mavro::Dock;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 600, 380);
	this->text = "Open tabs";
	//!<Edit>
	field.dock = Dock::cTop;
	field.height = 24;
	field.onChange.Add_H(this, &This::OnTyped);
	field.onKeyDown.Add_H(this, &This::OnFieldKey);
	this->Add(&field);
	//!<ListView>
	list.dock = Dock::cFill;
	list.gridLines = false;
	list.headerVisible = false;
	list.showSelection = true;
	list.onKeyDown.Add_H(this, &This::OnListKey);
	list.onChoose.Add_H(this, &This::OnRow);
	list.onClickRow.Add_H(this, &This::OnRow);
	this->Add(&list);
	//!end
  // clang-format on
}

// With nothing typed, the tab that was in front before is offered: Enter changes between two.
void TabList::Fill() {
  const std::string typed = field.text;
  std::vector<const OpenTab*> found;
  for (OpenTab& entry : entries) {
    const auto score = MatchPath(typed, entry.path);
    if (!score) continue;
    entry.score = *score;
    found.push_back(&entry);
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const OpenTab* a, const OpenTab* b) { return a->score > b->score; });
  list.Clear();
  for (const OpenTab* entry : found) {
    const int row = list.AddRow(entry->shown);
    list.SetCell(row, 1, entry->folder);
    list.SetItemData(row, entry->index);
  }
  MoveTo(typed.empty() ? 1 : 0);
}

void TabList::MoveTo(int row) {
  list.Select(std::clamp(row, list.rowCount > 0 ? 0 : -1, list.rowCount - 1));
}

int TabList::Choose() {
  const bool accepted = Run(true) == cOk;
  const int row = list.selectedIndex;
  return accepted && row >= 0 ? list.GetItemData(row) : -1;
}

void TabList::OnTyped(mavro::NotifyArgs&) {
  Fill();
}

// The keys that move in the list work while letters are typed.
void TabList::OnFieldKey(mavro::KeyArgs& args) {
  const int row = list.selectedIndex;
  switch (args.key) {
    case Key::cUp:
      MoveTo(row - 1);
      break;
    case Key::cDown:
      MoveTo(row + 1);
      break;
    case Key::cPageUp:
      MoveTo(row - cPageRows);
      break;
    case Key::cPageDown:
      MoveTo(row + cPageRows);
      break;
    case Key::cEnter:
      args.handled = true;
      return Accept();
    case Key::cEscape:
      args.handled = true;
      return Close();
    default:
      return;
  }
  args.handled = true;
}

void TabList::OnListKey(mavro::KeyArgs& args) {
  if (args.key != Key::cEscape) return;
  args.handled = true;
  Close();
}

void TabList::OnRow(mavro::NotifyArgs&) {
  Accept();
}

// As long as nothing fits, the user can go on typing.
void TabList::Accept() {
  if (list.selectedIndex < 0) return;
  result = cOk;
  Close();
}

}  // namespace

void ChooseTab(EditTabs& tabs) {
  TabList list(Entries(tabs));
  const int chosen = list.Choose();
  if (chosen >= 0) tabs.Show(chosen);
}

}  // namespace zendry
