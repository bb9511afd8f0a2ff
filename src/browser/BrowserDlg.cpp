#include "browser/BrowserDlg.h"

#include <algorithm>

#include "code/CodeSources.h"
#include "code/OuterDefinition.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr const char* cGlobals = "-- globals --";
constexpr int cPrototype = 'p';
constexpr int cFunction = 'f';

bool IsClass(const TagClass& record) {
  return record.line >= 0 && !record.name.starts_with('<');
}

bool IsNameBefore(const TagItem* a, const TagItem* b) {
  return a->name < b->name;
}

}  // namespace

BrowserDlg::BrowserDlg(const Project& itsProject, CodeWizard& itsWizard, CodeSources& itsSources,
                       const TagItem* start, const std::string& path)
    : wizard(itsWizard), sources(itsSources) {
  Initialize();
  modules.accessibleName = "Files";
  classList.accessibleName = "Classes";
  memberList.accessibleName = "Members";
  modules.Fill(itsProject, path);
  scope.itemIndex = modules.SelectedModule() ? cModuleScope : cProjectScope;
  FillClasses();
  if (start) SelectItem(*start);
  focusControl = &classList;
}

void BrowserDlg::Initialize() {
  using mavro::Button;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 620, 440);
	this->text = "Browser";
	this->resizable = false;
	//!<RadioGroup>
	scope.SetBounds(12, 12, 180, 104);
	scope.text = "Show:";
	scope.items.Add("One file");
	scope.items.Add("All files");
	scope.items.Add("The libraries");
	scope.onChange.Add_H(this, &This::OnScope);
	this->Add(&scope);
	//!<Label>
	modulesLabel.SetBounds(12, 124, 180, 20);
	modulesLabel.text = "&Files:";
	this->Add(&modulesLabel);
	//!<ListView>
	modules.SetBounds(12, 144, 180, 230);
	modules.onChangeSel.Add_H(this, &This::OnModule);
	this->Add(&modules);
	//!<Label>
	classesLabel.SetBounds(200, 12, 200, 20);
	classesLabel.text = "C&lasses:";
	this->Add(&classesLabel);
	//!<ListBox>
	classList.SetBounds(200, 32, 200, 342);
	classList.onSelChanged.Add_H(this, &This::OnClass);
	this->Add(&classList);
	//!<Label>
	membersLabel.SetBounds(408, 12, 200, 20);
	membersLabel.text = "&Members:";
	this->Add(&membersLabel);
	//!<ListBox>
	memberList.SetBounds(408, 32, 200, 342);
	memberList.onDblClick.Add_H(this, &This::OnMemberDoubleClick);
	memberList.onGotFocus.Add_H(this, &This::OnMembersFocused);
	memberList.onSelChanged.Add_H(this, &This::OnMember);
	this->Add(&memberList);
	//!<Button>
	declaration.SetBounds(262, 398, 110, 30);
	declaration.text = "De&claration";
	declaration.kind = Button::cOk;
	declaration.onClick.Add_H(this, &This::OnDeclaration);
	this->Add(&declaration);
	//!<Button>
	definition.SetBounds(380, 398, 110, 30);
	definition.text = "&Definition";
	definition.onClick.Add_H(this, &This::OnDefinition);
	this->Add(&definition);
	//!<Button>
	cancel.SetBounds(498, 398, 110, 30);
	cancel.kind = Button::cCancel;
	this->Add(&cancel);
	//!end
  // clang-format on
}

void BrowserDlg::FillClasses() {
  classes.clear();
  const auto take = [this](TagData* module, bool isLibrary) {
    if (!module) return;
    for (auto& [name, record] : module->classes) {
      if (!isLibrary && !IsClass(record)) continue;
      record.module = isLibrary ? nullptr : module;
      record.owner = &record;
      classes.push_back(&record);
    }
  };
  if (scope.itemIndex == cModuleScope)
    take(modules.SelectedModule(), false);
  else if (scope.itemIndex == cLibraryScope)
    take(sources.Library(), true);
  else
    for (TagData* module : sources.Modules()) take(module, false);
  std::stable_sort(classes.begin(), classes.end(), IsNameBefore);
  classList.items.Clear();
  classList.items.Add(cGlobals);
  for (const TagItem* item : classes) classList.items.Add(item->name);
  classList.selectedIndex = 0;
  FillMembers();
}

void BrowserDlg::FillMembers() {
  members.clear();
  const int row = classList.selectedIndex;
  const auto takeGlobals = [this](TagData* module, bool isLibrary) {
    if (!module) return;
    for (TagItem& item : module->globals) {
      item.module = isLibrary ? nullptr : module;
      item.owner = nullptr;
      members.push_back(&item);
    }
  };
  if (row > 0) {
    const TagItem* record = classes[static_cast<size_t>(row) - 1];
    wizard.tags.listMembers(members, record->name, "", 0, record->module);
  } else if (scope.itemIndex == cModuleScope) {
    takeGlobals(modules.SelectedModule(), false);
  } else if (scope.itemIndex == cLibraryScope) {
    takeGlobals(sources.Library(), true);
  } else {
    for (TagData* module : sources.Modules()) takeGlobals(module, false);
  }
  std::erase_if(members,
                [](const TagItem* item) { return item->owner && IsOuterDefinition(*item); });
  std::stable_sort(members.begin(), members.end(), IsNameBefore);
  memberList.items.Clear();
  for (const TagItem* item : members)
    memberList.items.Add(std::string(item->name) + item->signature);
  memberList.selectedIndex = -1;
  UpdateButtons();
}

// A definition outside of its class stands for the declaration.
void BrowserDlg::SelectItem(const TagItem& item) {
  const auto select = [](mavro::ListBox& list, const std::vector<TagItem*>& items, int first,
                         const std::string& name, const std::string& signature) {
    for (size_t i = 0; i < items.size(); ++i) {
      if (items[i]->name != name) continue;
      list.selectedIndex = first + static_cast<int>(i);
      if (items[i]->signature == signature) return;
    }
  };
  if (item.owner) select(classList, classes, 1, item.owner->name, item.owner->signature);
  FillMembers();
  if (item.owner != &item) select(memberList, members, 0, item.name, item.signature);
  UpdateButtons();
}

// The selected member, else the selected class.
const TagItem* BrowserDlg::Current() const {
  const int member = memberList.selectedIndex;
  if (member >= 0 && member < static_cast<int>(members.size()))
    return members[static_cast<size_t>(member)];
  const int row = classList.selectedIndex;
  return row > 0 && row <= static_cast<int>(classes.size()) ? classes[static_cast<size_t>(row) - 1]
                                                            : nullptr;
}

// The places of the libraries' tags aren't known.
void BrowserDlg::UpdateButtons() {
  const TagItem* item = Current();
  const bool hasPlace = item && item->module;
  declaration.enabled = hasPlace;
  definition.enabled = hasPlace;
  modules.enabled = scope.itemIndex == cModuleScope;
}

// A function without the wanted one has the other.
bool BrowserDlg::Find(SymbolPlaces::Want want) {
  const TagItem* item = Current();
  if (!item || !item->module) return false;
  const TagItem* found = item;
  SymbolPlaces symbols(wizard, sources);
  const int wanted = want == SymbolPlaces::Want::cDefinition ? cFunction : cPrototype;
  if ((item->kind == cFunction || item->kind == cPrototype) && item->kind != wanted)
    if (const std::vector<TagItem*> others = symbols.Counterparts(*item, want); !others.empty())
      found = others.front();
  chosen = CodePlace{found->module->fileName, std::max(found->line - 1, 0), found->name};
  return true;
}

std::optional<CodePlace> BrowserDlg::Choose() {
  chosen.reset();
  Run(true);
  return chosen;
}

void BrowserDlg::OnScope(mavro::NotifyArgs&) {
  FillClasses();
}

void BrowserDlg::OnModule(mavro::NotifyArgs&) {
  FillClasses();
}

void BrowserDlg::OnClass(mavro::NotifyArgs&) {
  FillMembers();
}

void BrowserDlg::OnMember(mavro::NotifyArgs&) {
  UpdateButtons();
}

// As long as the user doesn't go to the members, the class is meant.
void BrowserDlg::OnMembersFocused(mavro::NotifyArgs&) {
  if (memberList.selectedIndex < 0 && !members.empty()) memberList.selectedIndex = 0;
  UpdateButtons();
}

void BrowserDlg::OnMemberDoubleClick(mavro::NotifyArgs&) {
  if (Find(SymbolPlaces::Want::cDeclaration)) Close();
}

void BrowserDlg::OnDeclaration(mavro::NotifyArgs&) {
  if (!Find(SymbolPlaces::Want::cDeclaration)) StayOpen();
}

void BrowserDlg::OnDefinition(mavro::NotifyArgs&) {
  if (Find(SymbolPlaces::Want::cDefinition)) Close();
}

}  // namespace zendry
