#include "wizards/NewProjectDialog.h"

#include "SystemDialogs.h"
#include "base/Paths.h"

namespace zendry {

NewProjectDialog::NewProjectDialog(RepositoryItems newItems, const std::string& folder)
    : items(std::move(newItems)) {
  Initialize();
  place.path.text = folder;
  projectType.itemIndex = 0;
  language.itemIndex = 0;
  formName.accessibleName = "Main form name";
  FillLists();
  focusControl = &place.name;
}

void NewProjectDialog::Initialize() {
  using mavro::Button;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 392, 354);
	this->text = "New project";
	this->resizable = false;
	//!<Panel>
	place.SetBounds(0, 0, 392, 88);
	this->Add(&place);
	//!<TabCtrl>
	tabs.SetBounds(6, 92, 380, 216);
	this->Add(&tabs);
	//!<TabPage>
	console.text = "Console";
	tabs.Add(&console);
	//!<RadioGroup>
	projectType.SetBounds(12, 8, 350, 78);
	projectType.text = "Project type";
	projectType.items.Add("Single file application");
	projectType.items.Add("Multi-file project");
	console.Add(&projectType);
	//!<RadioGroup>
	language.SetBounds(12, 94, 350, 78);
	language.text = "Language";
	language.items.Add("C++");
	language.items.Add("C");
	console.Add(&language);
	//!<TabPage>
	forms.text = "Forms";
	tabs.Add(&forms);
	//!<GroupBox>
	include.SetBounds(12, 8, 350, 60);
	include.text = "Include:";
	forms.Add(&include);
	//!<CheckBox>
	resourceFile.SetBounds(14, 26, 200, 22);
	resourceFile.text = "Resource file";
	include.Add(&resourceFile);
	//!<Label>
	formLabel.SetBounds(12, 82, 160, 18);
	formLabel.text = "Main form name:";
	forms.Add(&formLabel);
	//!<Edit>
	formName.SetBounds(12, 102, 350, 22);
	formName.text = "MainForm";
	forms.Add(&formName);
	//!<TabPage>
	templates.text = "Template";
	tabs.Add(&templates);
	//!<Label>
	templateLabel.SetBounds(12, 6, 350, 18);
	templateLabel.text = "Choose a template";
	templates.Add(&templateLabel);
	//!<ListBox>
	templateList.SetBounds(12, 26, 350, 148);
	templates.Add(&templateList);
	//!<TabPage>
	demos.text = "Demos";
	tabs.Add(&demos);
	//!<ListBox>
	demoList.SetBounds(12, 8, 350, 130);
	demoList.onSelChanged.Add_H(this, &This::OnDemo);
	demos.Add(&demoList);
	//!<Label>
	demoText.SetBounds(12, 144, 350, 36);
	demos.Add(&demoText);
	//!<TabPage>
	existing.onListed.Add_H(this, &This::OnListed);
	tabs.Add(&existing);
	//!<Button>
	okButton.SetBounds(202, 316, 84, 30);
	okButton.kind = Button::cOk;
	okButton.onClick.Add_H(this, &This::OnOk);
	this->Add(&okButton);
	//!<Button>
	cancel.SetBounds(296, 316, 84, 30);
	cancel.kind = Button::cCancel;
	this->Add(&cancel);
	//!end
  // clang-format on
}

void NewProjectDialog::FillLists() {
  templateList.accessibleName = "Choose a template";
  for (const auto& item : items.templates) templateList.items.Add(item.text);
  demoList.accessibleName = "Demos";
  for (const std::string& title : items.demoTitles) demoList.items.Add(title);
}

void NewProjectDialog::Begin(int page, int demo) {
  tabs.selectedIndex = page;
  if (page == cImportPage) focusControl = &existing.source;
  if (page == cDemosPage && demo >= 0) {
    demoList.selectedIndex = demo;
    const std::string name = BaseName(items.DemoFolder(demo));
    if (IsProjectName(name)) place.name.text = name;
  }
  ShowDemo();
}

std::string NewProjectDialog::RepositoryFolder() const {
  if (ShownPage() == cDemosPage) return items.DemoFolder(demoList.selectedIndex);
  const int row = templateList.selectedIndex;
  const bool exists = row >= 0 && static_cast<size_t>(row) < items.templates.size();
  return exists ? items.templates[static_cast<size_t>(row)].folder : "";
}

void NewProjectDialog::OnDemo(mavro::NotifyArgs&) {
  ShowDemo();
}

void NewProjectDialog::ShowDemo() {
  const int row = demoList.selectedIndex;
  const bool exists = row >= 0 && static_cast<size_t>(row) < items.demos.size();
  demoText.text = exists ? items.demos[static_cast<size_t>(row)].text : "";
}

// The project file goes beside the files, and is called like their folder unless the user has given
// a name.
void NewProjectDialog::OnListed(mavro::NotifyArgs&) {
  const Import& import = existing.Result();
  if (!existing.HasFiles()) return;
  place.path.text = import.folder + "/";
  if (!place.name.text.Get().empty()) return;
  std::string name;
  for (char c : BaseName(import.folder)) name += IsProjectName(std::string(1, c)) ? c : '_';
  place.name.text = name;
}

// Return in the field for the folder shows its files; the next one takes them.
void NewProjectDialog::OnOk(mavro::NotifyArgs&) {
  if (ShownPage() == cImportPage && existing.ListTyped()) return StayOpen();
  if (!HasProjectName(place)) return StayOpen();
  const int page = ShownPage();
  const bool isList = page == cTemplatePage || page == cDemosPage;
  const bool isChosen = page == cImportPage ? existing.HasFiles() : !RepositoryFolder().empty();
  if ((!isList && page != cImportPage) || isChosen) return;
  mavro::Information(page == cImportPage
                         ? "Choose a folder with sources, or a compile_commands.json!"
                         : "Select project type!");
  StayOpen();
}

}  // namespace zendry
