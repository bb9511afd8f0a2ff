#include "wizards/ClassWizard.h"

#include <algorithm>

#include "code/CodeSources.h"
#include "code/OuterDefinition.h"
#include "editor/ApplyEdits.h"
#include "editor/EditTabs.h"
#include "editor/EditorHost.h"

namespace zendry {

namespace {

constexpr int cFunction = 'f';
constexpr int cPrototype = 'p';
constexpr int cPublic = 'b';

}  // namespace

ClassWizard::ClassWizard(CodeWizard& wizard, CodeSources& sources,
                         const ClassWizardContext& context) {
  Initialize();
  target.accessibleName = "Class";
  after.accessibleName = "Insert after";
  prototype.accessibleName = "Prototype";
  FillClasses(wizard, sources, context);
  focusControl = &prototype;
}

void ClassWizard::Initialize() {
  using mavro::Button;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 460, 400);
	this->text = "Class wizard";
	this->resizable = false;
	//!<Label>
	targetLabel.SetBounds(12, 12, 436, 20);
	targetLabel.text = "Add to class:";
	this->Add(&targetLabel);
	//!<ComboBox>
	target.SetBounds(12, 32, 436, 26);
	target.chooseOnly = true;
	target.onSelChanged.Add_H(this, &This::OnTarget);
	this->Add(&target);
	//!<Label>
	afterLabel.SetBounds(12, 64, 436, 20);
	afterLabel.text = "Insert new method after:";
	this->Add(&afterLabel);
	//!<ListBox>
	after.SetBounds(12, 84, 436, 190);
	this->Add(&after);
	//!<Label>
	prototypeLabel.SetBounds(12, 280, 436, 20);
	prototypeLabel.text = "New method prototype:";
	this->Add(&prototypeLabel);
	//!<Edit>
	prototype.SetBounds(12, 300, 436, 26);
	this->Add(&prototype);
	//!<Button>
	okButton.SetBounds(274, 358, 84, 30);
	okButton.kind = Button::cOk;
	this->Add(&okButton);
	//!<Button>
	cancel.SetBounds(364, 358, 84, 30);
	cancel.kind = Button::cCancel;
	this->Add(&cancel);
	//!end
  // clang-format on
}

// The class at the caret is selected, else the one that begins nearest above it in the file, else
// the first one.
void ClassWizard::FillClasses(CodeWizard& wizard, CodeSources& sources,
                              const ClassWizardContext& context) {
  for (TagData* module : sources.Modules())
    for (auto& [name, record] : module->classes) {
      if (record.line < 0 || name.starts_with('<')) continue;
      if (record.kind != 'c' && record.kind != 's' && record.kind != 'u') continue;
      record.module = module;
      record.owner = &record;
      classes.push_back(&record);
    }
  std::stable_sort(classes.begin(), classes.end(),
                   [](const TagItem* a, const TagItem* b) { return a->name < b->name; });
  const std::string wanted = context.item ? OwnerName(*context.item) : "";
  SymbolPlaces symbols(wizard, sources);
  const TagClass* meant =
      wanted.empty() ? nullptr : symbols.ClassSeen(wanted, context.item->module);
  int selected = classes.empty() ? -1 : 0;
  int nearest = 0;
  for (int i = static_cast<int>(classes.size()) - 1; i >= 0; --i) {
    const TagItem* record = classes[static_cast<size_t>(i)];
    target.items.Insert(record->name, 0);
    if (record == meant) selected = i;
    if (meant || record->module != context.module || record->line > context.line) continue;
    if (record->line < nearest) continue;
    nearest = record->line;
    selected = i;
  }
  target.selectedIndex = selected;
  FillMembers();
  if (context.item && context.item->owner) SelectMember(*context.item);
}

void ClassWizard::FillMembers() {
  members.clear();
  after.items.Clear();
  const int row = target.selectedIndex;
  if (row >= 0 && row < static_cast<int>(classes.size())) {
    auto* record = static_cast<TagClass*>(classes[static_cast<size_t>(row)]);
    for (TagItem& member : record->members) {
      if (IsOuterDefinition(member)) continue;
      member.owner = record;
      member.module = record->module;
      members.push_back(&member);
      after.items.Add(std::string(member.name) + member.signature);
    }
  }
  // A new method is most often meant for others.
  int selected = static_cast<int>(members.size()) - 1;
  for (int i = selected; i >= 0; --i) {
    const TagItem& member = *members[static_cast<size_t>(i)];
    if (member.access != cPublic || (member.kind != cFunction && member.kind != cPrototype))
      continue;
    selected = i;
    break;
  }
  after.selectedIndex = selected;
}

// Of a definition outside of the class, the declaration with the same types.
void ClassWizard::SelectMember(const TagItem& item) {
  int found = -1;
  for (int i = static_cast<int>(members.size()) - 1; i >= 0; --i) {
    const TagItem& member = *members[static_cast<size_t>(i)];
    if (member.name != item.name) continue;
    const bool isFirst = found < 0;
    if (&member == &item || HaveSameTypes(member, item)) found = i;
    if (isFirst && found < 0) found = i;
    if (&member == &item) break;
  }
  if (found >= 0) after.selectedIndex = found;
}

void ClassWizard::OnTarget(mavro::ItemArgs&) {
  FillMembers();
}

const TagItem* ClassWizard::Choose() {
  if (Run(true) != cOk) return nullptr;
  const int member = after.selectedIndex;
  const int row = target.selectedIndex;
  if (member >= 0 && member < static_cast<int>(members.size()))
    return members[static_cast<size_t>(member)];
  return row >= 0 && row < static_cast<int>(classes.size()) ? classes[static_cast<size_t>(row)]
                                                            : nullptr;
}

void AddClassMember(EditTabs& tabs, CodeWizard& wizard, CodeSources& sources) {
  EditTab* tab = tabs.Active();
  if (!tab) return;
  ClassWizardContext context;
  context.item = wizard.currentItem(tab->editor->LiveText());
  context.module = sources.ModuleOf(tab->editor->LiveText());
  context.line = tab->editor->ShownLine();
  ClassWizard dialog(wizard, sources, context);
  if (!dialog.HasClasses())
    return tabs.Host()->Say("No class in " + tab->caption + " and the files of the project");
  const uint64_t generation = TagData::LatestGeneration();
  const TagItem* after = dialog.Choose();
  if (!after) return;
  if (TagData::LatestGeneration() != generation)
    return tabs.Host()->Say("The files have changed meanwhile: try again");
  ApplyChange(tabs, EditsOfTabs(tabs, wizard, sources).InsertMember(*after, dialog.Prototype()));
}

}  // namespace zendry
