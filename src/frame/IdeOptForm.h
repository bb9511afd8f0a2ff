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
  FontBox();

  // Offers the families of fonts.
  void Offer(const std::vector<std::string>& faces);
  void Load(const FontRec& font);
  void Store(FontRec& font) const;

  mavro::CheckBox style;
  mavro::ComboBox name;
  mavro::SpinEdit size;
};

// The options of the program. The dialog shows and stores the settings in force; ApplyOptions puts
// them to work.
class IdeOptForm : public mavro::Form {
  typedef IdeOptForm This;

 public:
  IdeOptForm();

  // From the settings into the fields, and back.
  void Load();
  void Store();

  // clang-format off
	//!decl
	mavro::TabCtrl tabs;
	mavro::TabPage editorPage;
	mavro::CheckBox useTabs;
	mavro::Label tabLabel;
	mavro::SpinEdit tabSize;
	mavro::Label indentLabel;
	mavro::SpinEdit indentSize;
	mavro::CheckBox useMonoFont, lineNumbers, wrapLines, showWhiteSpace, closePairs;
	mavro::CheckBox stripBlanks, endLastLine;
	mavro::TabPage fontsPage;
	FontBox variableFont, fixedFont, outputFont;
	mavro::Label fontNote;
	mavro::TabPage morePage;
	mavro::Label themeLabel;
	mavro::ComboBox theme;
	mavro::Label lettersLabel;
	mavro::SpinEdit letters;
	mavro::Label jobsLabel;
	mavro::SpinEdit jobs;
	mavro::Label launcherLabel;
	mavro::ComboBox launcherSet;
	mavro::Edit launcher;
	mavro::CheckBox allHeaders, rescue;
	mavro::Label reloadLabel;
	mavro::ComboBox reload;
	mavro::Panel bottom;
	mavro::Button okButton, cancel;
	//!end
  // clang-format on

 private:
  void Initialize();
  void KeepLauncher();
  void ShowLauncher(int set);
  void ShowUnknownFaces();
  void OnLauncherSet(mavro::ItemArgs& args);
  void OnFaceTyped(mavro::NotifyArgs& args);
  void OnFaceChosen(mavro::ItemArgs& args);

  const std::vector<std::string> faces = mavro::FontFaces();
  std::array<std::string, 3> launchers;  // of the compiler sets
  int shownSet = 0;
};

// Puts the settings of the look to work, at the start of the program.
void ApplyLook();
// Lets the user change the options. What was accepted works at once, and is written to the user's
// settings.
void ChangeIdeOptions();

}  // namespace zendry
