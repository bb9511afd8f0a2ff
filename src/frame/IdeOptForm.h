#pragma once

#include <array>
#include <mavro>
#include <string>
#include <vector>

#include "config/IdeConfig.h"

namespace zendry {

// The fields for one font.
class FontBox : public mavro::GroupBox {
 public:
  // Offers the font families of this machine.
  FontBox(const std::string& caption, const std::vector<std::string>& faces);

  void Load(const FontRec& font);
  void Store(FontRec& font) const;

  mavro::CheckBox style;
  mavro::ComboBox name;
  mavro::SpinEdit size;
};

// The options of the program. The dialog shows and stores the settings in force; ApplyOptions puts
// them to work.
class IdeOptForm : public mavro::Form {
 public:
  IdeOptForm();

  // From the settings into the fields, and back.
  void Load();
  void Store();

  mavro::TabCtrl tabs;
  mavro::TabPage editorPage, fontsPage, morePage;
  // Group: page "Editor".
  mavro::CheckBox useTabs, useMonoFont, lineNumbers, wrapLines, showWhiteSpace, closePairs,
      stripBlanks, endLastLine;
  mavro::SpinEdit tabSize, indentSize;
  // Group: page "Fonts".
  const std::vector<std::string> faces = mavro::FontFaces();
  FontBox variableFont{"Editor variable font", faces};
  FontBox fixedFont{"Editor fixed font", faces};
  FontBox outputFont{"Output panel font", faces};
  mavro::Label fontNote;
  // Group: page "More".
  mavro::ComboBox theme, launcherSet, reload;
  mavro::SpinEdit letters, jobs;
  mavro::Edit launcher;
  mavro::CheckBox allHeaders, rescue;
  mavro::Button ok, cancel;

 private:
  void PlaceEditorPage();
  void PlaceFontsPage();
  void PlaceMorePage();
  void PlaceButtons();
  void KeepLauncher();
  void ShowLauncher(int set);
  void ShowUnknownFaces();
  void OnLauncherSet(mavro::ItemArgs& args);
  void OnFaceTyped(mavro::NotifyArgs& args);
  void OnFaceChosen(mavro::ItemArgs& args);

  mavro::Panel bottom;
  mavro::Label tabLabel, indentLabel, themeLabel, lettersLabel, jobsLabel, launcherLabel,
      reloadLabel;
  std::array<std::string, 3> launchers;  // of the compiler sets
  int shownSet = 0;
};

// Puts the settings of the look to work, at the start of the program.
void ApplyLook();
// Lets the user change the options. What was accepted works at once, and is written to the user's
// settings.
void ChangeIdeOptions();

}  // namespace zendry
