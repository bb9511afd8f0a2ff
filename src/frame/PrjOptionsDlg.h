#pragma once

#include <mavro>
#include <string>

#include "project/Project.h"

namespace zendry {

// The page of a dialog for the switches of one build mode.
class BuildOptionsPan : public mavro::TabPage {
 public:
  explicit BuildOptionsPan(const std::string& caption);

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
 public:
  explicit PrjOptionsDlg(Project& itsProject);

  mavro::ComboBox type, libSet;
  mavro::Edit outName, include, linker, libs;
  mavro::Button addInclude, addLinker, addLibrary;
  mavro::TabCtrl tabs;
  mavro::TabPage general;
  BuildOptionsPan debug, release;
  mavro::Label note;  // why the dialog can't be accepted; empty if it can
  mavro::Button ok, cancel;

 private:
  // A field whose text goes into the project file.
  struct Field {
    mavro::Control* control;
    mavro::TabPage* page;  // null: above the pages
    const char* name;
  };

  void Place();
  void PlaceGeneral();
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
  mavro::Panel top, bottom;
  mavro::Label typeLabel, libSetLabel, outNameLabel, includeLabel, linkerLabel, libsLabel;
};

// Lets the user change the options of a project, and saves an open project then. The next build
// uses the new values.
void ShowOptions(Project& project);

}  // namespace zendry
