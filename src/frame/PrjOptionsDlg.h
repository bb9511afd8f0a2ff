#pragma once

#include <mavro>
#include <string>

#include "project/Project.h"

namespace zendry {

// The page of a dialog for the switches of one build mode.
class BuildOptionsPan : public mavro::TabPage {
 public:
  BuildOptionsPan();

  void Load(const BuildOptions& options);
  void Store(BuildOptions& options) const;

  mavro::GroupBox group;
  mavro::Label packageLabel, compileLabel, linkLabel;
  mavro::ComboBox package;  // the compiler set
  mavro::Edit compile, link;

 private:
  int shownSet = 0;
};

// All values of a project except its files. What the project file can't hold is said below the
// pages, and the dialog then stays open.
class PrjOptionsDlg : public mavro::Form {
  typedef PrjOptionsDlg This;

 public:
  explicit PrjOptionsDlg(Project& itsProject);

  // `note` says why the dialog can't be accepted; empty if it can.
  // clang-format off
	//!decl
	mavro::Panel top;
	mavro::Label typeLabel;
	mavro::ComboBox type;
	mavro::Label libSetLabel;
	mavro::ComboBox libSet;
	mavro::Label outNameLabel;
	mavro::Edit outName;
	mavro::TabCtrl tabs;
	mavro::TabPage general;
	mavro::Label includeLabel;
	mavro::Edit include;
	mavro::Button addInclude;
	mavro::Label linkerLabel;
	mavro::Edit linker;
	mavro::Button addLinker;
	mavro::Label libsLabel;
	mavro::Edit libs;
	mavro::Button addLibrary;
	BuildOptionsPan debug, release;
	mavro::Panel bottom;
	mavro::Label note;
	mavro::Button okButton, cancel;
	//!end
  // clang-format on

 private:
  // A field whose text goes into the project file.
  struct Field {
    mavro::Control* control;
    mavro::TabPage* page;  // null: above the pages
    const char* name;
  };

  void Initialize();
  void Connect();
  void Load();
  void Store();
  std::vector<Field> Fields();
  const Field* ShowWhatDoesNotFit(const std::vector<Field>& fields);
  void AppendFolder(mavro::Edit& field, const char* option);
  void OnAddInclude(mavro::NotifyArgs& args);
  void OnAddLinker(mavro::NotifyArgs& args);
  void OnAddLibrary(mavro::NotifyArgs& args);
  void OnFieldChanged(mavro::NotifyArgs& args);
  void OnOk(mavro::NotifyArgs& args);

  Project& project;
  int shownType = 0;
};

// Lets the user change the options of a project, and saves an open project then. The next build
// uses the new values.
void ShowOptions(Project& project);

}  // namespace zendry
