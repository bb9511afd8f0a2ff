#pragma once

#include <mavro>
#include <string>

#include "wizards/ImportPage.h"
#include "wizards/PrjPanel.h"
#include "wizards/Repository.h"

namespace zendry {

// Asks what a new project is to be: where, under which name, and out of what.
class NewProjectDialog : public mavro::Form {
  typedef NewProjectDialog This;

 public:
  enum Page { cConsolePage, cFormsPage, cTemplatePage, cDemosPage, cImportPage };

  NewProjectDialog(RepositoryItems newItems, const std::string& folder);

  // Shows a page first, and on that of the demos the row of one, whose name is offered for the
  // project. Before the dialog runs.
  void Begin(int page, int demo);
  int ShownPage() const { return tabs.selectedIndex; }
  // True for a project in a folder of its own; false for files directly in the folder chosen.
  bool IsMultiFile() const { return projectType.itemIndex == 1; }
  bool IsCpp() const { return language.itemIndex == 0; }
  // The folder of the chosen template or demo, below "Repos/"; empty if there is none.
  std::string RepositoryFolder() const;

  // clang-format off
	//!decl
	PrjPanel place;
	mavro::TabCtrl tabs;
	mavro::TabPage console;
	mavro::RadioGroup projectType, language;
	mavro::TabPage forms;
	mavro::GroupBox include;
	mavro::CheckBox resourceFile;
	mavro::Label formLabel;
	mavro::Edit formName;
	mavro::TabPage templates;
	mavro::Label templateLabel;
	mavro::ListBox templateList;
	mavro::TabPage demos;
	mavro::ListBox demoList;
	mavro::Label demoText;
	ImportPage existing;
	mavro::Button okButton, cancel;
	//!end
  // clang-format on

 private:
  void Initialize();
  void FillLists();
  void OnOk(mavro::NotifyArgs& args);
  void OnDemo(mavro::NotifyArgs& args);
  void ShowDemo();
  void OnListed(mavro::NotifyArgs& args);

  const RepositoryItems items;
};

}  // namespace zendry
