#include "wizards/NewProjectDialog.h"

#include "SystemDialogs.h"
#include "base/Paths.h"

namespace zendry {

namespace {

constexpr int cWidth = 392;
constexpr int cHeight = 354;
constexpr int cMargin = 12;
constexpr int cPlaceHeight = 88;
constexpr int cTabsLeft = 6;  // all five tabs are seen
constexpr int cTabsTop = 92;
constexpr int cTabsHeight = 216;
constexpr int cButtonWidth = 84;
constexpr int cButtonHeight = 30;
constexpr int cGap = 10;
constexpr int cPageWidth = 350;  // of what stands in a page
constexpr int cLabelHeight = 18;

}  // namespace

NewProjectDialog::NewProjectDialog(RepositoryItems newItems, const std::string& folder)
    : items(std::move(newItems)) {
  text = "New project";
  resizable = false;
  SetSize(cWidth, cHeight);
  place.SetBounds(0, 0, cWidth, cPlaceHeight);
  place.path.text = folder;
  tabs.SetBounds(cTabsLeft, cTabsTop, cWidth - 2 * cTabsLeft, cTabsHeight);
  console.text = "Console";
  forms.text = "Forms";
  templates.text = "Template";
  demos.text = "Demos";
  InitConsole();
  InitForms();
  InitLists();
  for (mavro::TabPage* page :
       std::initializer_list<mavro::TabPage*>{&console, &forms, &templates, &demos, &existing})
    tabs.Add(page);
  existing.onListed.Add_H(this, &NewProjectDialog::OnListed);
  ok.kind = mavro::Button::cOk;
  cancel.kind = mavro::Button::cCancel;
  const int top = cHeight - cMargin + 4 - cButtonHeight;
  const int right = cWidth - cMargin - cButtonWidth;
  ok.SetBounds(right - cGap - cButtonWidth, top, cButtonWidth, cButtonHeight);
  cancel.SetBounds(right, top, cButtonWidth, cButtonHeight);
  ok.onClick.Add_H(this, &NewProjectDialog::OnOk);
  for (mavro::Control* control :
       std::initializer_list<mavro::Control*>{&place, &tabs, &ok, &cancel})
    Add(control);
  focusControl = &place.name;
}

void NewProjectDialog::InitConsole() {
  projectType.text = "Project type";
  projectType.items.Add("Single file application");
  projectType.items.Add("Multi-file project");
  projectType.SetBounds(cMargin, 8, cPageWidth, 78);
  projectType.itemIndex = 0;
  language.text = "Language";
  language.items.Add("C++");
  language.items.Add("C");
  language.SetBounds(cMargin, 94, cPageWidth, 78);
  language.itemIndex = 0;
  console.Add(&projectType);
  console.Add(&language);
}

void NewProjectDialog::InitForms() {
  include.text = "Include:";
  include.SetBounds(cMargin, 8, cPageWidth, 60);
  resourceFile.text = "Resource file";
  resourceFile.SetBounds(14, 26, 200, 22);
  include.Add(&resourceFile);
  formLabel.text = "Main form name:";
  formLabel.SetBounds(cMargin, 82, 160, cLabelHeight);
  formName.text = "MainForm";
  formName.SetBounds(cMargin, 102, cPageWidth, 22);
  formName.accessibleName = "Main form name";
  forms.Add(&include);
  forms.Add(&formLabel);
  forms.Add(&formName);
}

void NewProjectDialog::InitLists() {
  templateLabel.text = "Choose a template";
  templateLabel.SetBounds(cMargin, 6, cPageWidth, cLabelHeight);
  templateList.SetBounds(cMargin, 26, cPageWidth, 148);
  templateList.accessibleName = "Choose a template";
  for (const auto& item : items.templates) templateList.items.Add(item.text);
  templates.Add(&templateLabel);
  templates.Add(&templateList);
  demoList.SetBounds(cMargin, 8, cPageWidth, 130);
  demoList.accessibleName = "Demos";
  for (const std::string& title : items.demoTitles) demoList.items.Add(title);
  demoText.SetBounds(cMargin, 144, cPageWidth, 36);
  demoList.onSelChanged.Add_H(this, &NewProjectDialog::OnDemo);
  demos.Add(&demoList);
  demos.Add(&demoText);
}

void NewProjectDialog::Begin(int page, int demo) {
  tabs.selectedIndex = page;
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

void NewProjectDialog::OnOk(mavro::NotifyArgs&) {
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
