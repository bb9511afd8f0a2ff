#include "frame/IdeOptForm.h"

#include <algorithm>

#include "base/ParseInt.h"
#include "config/BuildSettings.h"
#include "config/EditorSettings.h"
#include "config/IdeSession.h"
#include "config/WindowSettings.h"
#include "frame/MainForm.h"
#include "rescue/Rescue.h"

namespace zendry {

namespace {

constexpr int cWidth = 306;
constexpr int cHeight = 377;
constexpr int cBottomHeight = 48;
constexpr int cMostColumns = 256;  // of a tab
constexpr int cLeastPoints = 4, cMostPoints = 72;
constexpr int cMostSpinJobs = 256;

// A switch of the page "Editor" below those for tabs.
struct SwitchRow {
  mavro::CheckBox IdeOptForm::*box;
  int EditorSettings::*setting;
  const char* caption;
};
constexpr SwitchRow cSwitches[] = {
    {&IdeOptForm::lineNumbers, &EditorSettings::lineNumbers, "Show line numbers"},
    {&IdeOptForm::wrapLines, &EditorSettings::wrapLines, "Word wrap"},
    {&IdeOptForm::showWhiteSpace, &EditorSettings::showWhiteSpace, "Show white space"},
    {&IdeOptForm::closePairs, &EditorSettings::closePairs, "Close brackets and quotes"},
    {&IdeOptForm::stripBlanks, &EditorSettings::stripBlanks, "Strip trailing blanks when saving"},
    {&IdeOptForm::endLastLine, &EditorSettings::endLastLine, "End the last line when saving"},
};

void PlaceLabel(mavro::Control& page, mavro::Label& label, const char* caption, mavro::Rect at) {
  label.text = caption;
  label.SetBounds(at.left, at.top, at.width, at.height);
  static_cast<mavro::Container&>(page).Add(&label);
}

void PlaceSpin(mavro::Container& page, mavro::SpinEdit& spin, int least, int most, mavro::Rect at) {
  spin.min = least;
  spin.max = most;
  spin.SetBounds(at.left, at.top, at.width, at.height);
  page.Add(&spin);
}

void PlaceCheck(mavro::Container& page, mavro::CheckBox& box, const char* caption, mavro::Rect at) {
  box.text = caption;
  box.SetBounds(at.left, at.top, at.width, at.height);
  page.Add(&box);
}

void PlaceChoice(mavro::Container& page, mavro::ComboBox& combo,
                 std::initializer_list<const char*> items, mavro::Rect at) {
  for (const char* item : items) combo.items.Add(item);
  combo.chooseOnly = true;
  combo.SetBounds(at.left, at.top, at.width, at.height);
  page.Add(&combo);
}

}  // namespace

FontBox::FontBox(const std::string& caption, const std::vector<std::string>& faces) {
  text = caption;
  style.text = "Bold";
  style.SetBounds(6, 27, 50, 22);
  for (const std::string& face : faces) name.items.Add(face);
  name.accessibleName = "Name of the font";
  name.SetBounds(57, 26, 148, 24);
  size.min = cLeastPoints;
  size.max = cMostPoints;
  size.accessibleName = "Size of the font in points";
  size.SetBounds(207, 26, 50, 24);
  for (mavro::Control* control : std::initializer_list<mavro::Control*>{&style, &name, &size})
    Add(control);
}

void FontBox::Load(const FontRec& font) {
  style.checked = font.style != 0;
  name.selectedIndex = name.items.IndexOf(font.name);
  name.text = font.name;
  size.value = font.size;
}

// A style that isn't only bold stays as it is as long as the box stays checked.
void FontBox::Store(FontRec& font) const {
  if (!style.checked)
    font.style = 0;
  else if (font.style == 0)
    font.style = mavro::Font::cBold;
  font.name = name.text;
  font.size = size.value;
}

IdeOptForm::IdeOptForm() {
  text = "Ide Options";
  resizable = false;
  SetSize(cWidth, cHeight);
  PlaceEditorPage();
  PlaceFontsPage();
  PlaceMorePage();
  PlaceButtons();
  tabs.dock = mavro::Dock::cFill;
  Add(&tabs);
  Add(&bottom);
  for (mavro::TabPage* page : {&editorPage, &fontsPage, &morePage}) tabs.Add(page);
  tabs.selectedIndex = 1;
}

void IdeOptForm::PlaceEditorPage() {
  editorPage.text = "Editor";
  PlaceCheck(editorPage, useTabs, "Use tab chars", {29, 33, 139, 22});
  PlaceLabel(editorPage, tabLabel, "Tab size:", {27, 63, 65, 18});
  PlaceSpin(editorPage, tabSize, 1, cMostColumns, {136, 59, 80, 22});
  PlaceLabel(editorPage, indentLabel, "IndentSize:", {30, 89, 80, 18});
  PlaceSpin(editorPage, indentSize, 0, cMostColumns, {136, 86, 80, 22});
  PlaceCheck(editorPage, useMonoFont, "Use mono space font", {28, 127, 190, 22});
  int y = 151;
  for (const SwitchRow& row : cSwitches) {
    PlaceCheck(editorPage, this->*row.box, row.caption, {28, y, 260, 22});
    y += 23;
  }
}

void IdeOptForm::PlaceFontsPage() {
  fontsPage.text = "Fonts";
  int y = 14;
  for (FontBox* box : {&variableFont, &fixedFont, &outputFont}) {
    box->SetBounds(11, y, 262, 61);
    box->name.onChange.Add_H(this, &IdeOptForm::OnFaceTyped);
    box->name.onSelChanged.Add_H(this, &IdeOptForm::OnFaceChosen);
    fontsPage.Add(box);
    y += 70;
  }
  PlaceLabel(fontsPage, fontNote, "", {11, y + 4, 280, 18});
}

void IdeOptForm::PlaceMorePage() {
  morePage.text = "More";
  PlaceLabel(morePage, themeLabel, "Colours:", {11, 12, 120, 18});
  PlaceChoice(morePage, theme, {"As the desktop", "Light", "Dark"}, {136, 9, 150, 24});
  PlaceLabel(morePage, lettersLabel, "Letters, 0 as usual:", {11, 41, 125, 18});
  PlaceSpin(morePage, letters, 0, mavro::cMostLetters, {136, 38, 80, 24});
  letters.hint = "Size of the letters of menus, tabs and lists, in points";
  PlaceLabel(morePage, jobsLabel, "Compilers, 0 all:", {11, 70, 125, 18});
  PlaceSpin(morePage, jobs, 0, cMostSpinJobs, {136, 67, 80, 24});
  jobs.hint = "How many compilers run at once; 0: one for each processor";
  PlaceLabel(morePage, launcherLabel, "Program before the compiler of:", {11, 98, 270, 18});
  PlaceChoice(morePage, launcherSet, {}, {11, 117, 275, 24});
  for (const ToolSet& set : theIdeConfig.toolSets)
    launcherSet.items.Add(set.name.empty() ? "(not set up)" : set.name);
  launcherSet.onSelChanged.Add_H(this, &IdeOptForm::OnLauncherSet);
  launcher.SetBounds(11, 145, 275, 24);
  launcher.accessibleName = "Program before the compiler";
  launcher.hint = "Such as ccache; \"none\" for none; empty: as the installation says";
  morePage.Add(&launcher);
  PlaceCheck(morePage, allHeaders, "Watch headers of other folders", {11, 177, 275, 22});
  PlaceCheck(morePage, rescue, "Keep copies of unsaved work", {11, 201, 275, 22});
  PlaceLabel(morePage, reloadLabel, "File changed by another program:", {11, 230, 275, 18});
  PlaceChoice(morePage, reload, {"Ask", "Load it if nothing is lost", "Leave it"},
              {11, 249, 275, 24});
}

void IdeOptForm::PlaceButtons() {
  bottom.dock = mavro::Dock::cBootom;
  bottom.height = cBottomHeight;
  ok.kind = mavro::Button::cOk;
  ok.SetBounds(100, 7, 84, 34);
  cancel.kind = mavro::Button::cCancel;
  cancel.SetBounds(192, 8, 84, 34);
  bottom.Add(&ok);
  bottom.Add(&cancel);
}

void IdeOptForm::Load() {
  const EditorSettings& editor = theEditorSettings;
  variableFont.Load(theIdeFonts.fonts[cVariableFont]);
  fixedFont.Load(theIdeFonts.fonts[cFixedFont]);
  outputFont.Load(theIdeFonts.fonts[cOutputFont]);
  useTabs.checked = editor.useTabs != 0;
  tabSize.value = editor.tabSize;
  indentSize.value = editor.indentSize;
  useMonoFont.checked = editor.useMonoFont != 0;
  for (const SwitchRow& row : cSwitches) (this->*row.box).checked = editor.*row.setting != 0;
  theme.selectedIndex = theWindowSettings.theme;
  letters.value = theWindowSettings.letters;
  rescue.checked = theWindowSettings.rescue;
  reload.selectedIndex = theWindowSettings.reload;
  jobs.value = theBuildSettings.jobs;
  allHeaders.checked = theBuildSettings.watchAllHeaders;
  launchers = theBuildSettings.launchers;
  launcherSet.selectedIndex = 0;
  ShowLauncher(0);
  ShowUnknownFaces();
}

void IdeOptForm::Store() {
  EditorSettings& editor = theEditorSettings;
  variableFont.Store(theIdeFonts.fonts[cVariableFont]);
  fixedFont.Store(theIdeFonts.fonts[cFixedFont]);
  outputFont.Store(theIdeFonts.fonts[cOutputFont]);
  editor.useTabs = useTabs.checked;
  editor.tabSize = tabSize.value;
  editor.indentSize = indentSize.value;
  editor.useMonoFont = useMonoFont.checked;
  for (const SwitchRow& row : cSwitches) editor.*row.setting = (this->*row.box).checked;
  theWindowSettings.theme = theme.selectedIndex;
  const int points = letters.value;
  theWindowSettings.letters = points == 0 ? 0 : std::max(points, mavro::cLeastLetters);
  theWindowSettings.rescue = rescue.checked;
  theWindowSettings.reload = reload.selectedIndex;
  theBuildSettings.jobs = jobs.value;
  theBuildSettings.watchAllHeaders = allHeaders.checked;
  KeepLauncher();
  theBuildSettings.launchers = launchers;
}

void IdeOptForm::KeepLauncher() {
  launchers[static_cast<size_t>(shownSet)] = launcher.text;
}

void IdeOptForm::ShowLauncher(int set) {
  shownSet = set;
  launcher.text = launchers[static_cast<size_t>(set)];
}

void IdeOptForm::OnLauncherSet(mavro::ItemArgs& args) {
  if (args.row < 0) return;
  KeepLauncher();
  ShowLauncher(args.row);
}

void IdeOptForm::ShowUnknownFaces() {
  fontNote.text = "";
  for (const FontBox* box : {&variableFont, &fixedFont, &outputFont}) {
    const std::string face = box->name.text;
    if (face.empty() || std::binary_search(faces.begin(), faces.end(), face)) continue;
    fontNote.text = "Not on this machine: " + face;
    return;
  }
}

void IdeOptForm::OnFaceTyped(mavro::NotifyArgs&) {
  ShowUnknownFaces();
}

void IdeOptForm::OnFaceChosen(mavro::ItemArgs&) {
  ShowUnknownFaces();
}

void ApplyLook() {
  mavro::SetTheme(static_cast<mavro::Theme>(theWindowSettings.theme));
  mavro::SetInterfaceLetters(theWindowSettings.letters);
  KeepRescueCopies(theWindowSettings.rescue);
}

void ChangeIdeOptions() {
  IdeOptForm form;
  form.Load();
  if (form.Run(true) != mavro::Form::cOk) return;
  form.Store();
  for (size_t i = 0; i < theIdeFonts.fonts.size(); ++i)
    theEditorSettings.fonts[i] = ShowableFont(theIdeFonts.fonts[i]);
  ApplyLook();
  theMainForm->TakeOptions();
}

}  // namespace zendry
