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

constexpr int cLeastPoints = 4, cMostPoints = 72;

// A switch of the page "Editor" below those for tabs.
struct SwitchRow {
  mavro::CheckBox IdeOptForm::*box;
  int EditorSettings::*setting;
};
constexpr SwitchRow cSwitches[] = {
    {&IdeOptForm::lineNumbers, &EditorSettings::lineNumbers},
    {&IdeOptForm::wrapLines, &EditorSettings::wrapLines},
    {&IdeOptForm::showWhiteSpace, &EditorSettings::showWhiteSpace},
    {&IdeOptForm::closePairs, &EditorSettings::closePairs},
    {&IdeOptForm::stripBlanks, &EditorSettings::stripBlanks},
    {&IdeOptForm::endLastLine, &EditorSettings::endLastLine},
};

}  // namespace

FontBox::FontBox() {
  style.text = "Bold";
  style.SetBounds(6, 27, 50, 22);
  name.accessibleName = "Name of the font";
  name.SetBounds(57, 26, 148, 24);
  size.min = cLeastPoints;
  size.max = cMostPoints;
  size.accessibleName = "Size of the font in points";
  size.SetBounds(207, 26, 50, 24);
  for (mavro::Control* control : std::initializer_list<mavro::Control*>{&style, &name, &size})
    Add(control);
}

void FontBox::Offer(const std::vector<std::string>& faces) {
  for (const std::string& face : faces) name.items.Add(face);
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
  Initialize();
  letters.max = mavro::cMostLetters;
  launcher.accessibleName = "Program before the compiler";
  for (const ToolSet& set : theIdeConfig.toolSets)
    launcherSet.items.Add(set.name.empty() ? "(not set up)" : set.name);
  for (FontBox* box : {&variableFont, &fixedFont, &outputFont}) {
    box->Offer(faces);
    box->name.onChange.Add_H(this, &This::OnFaceTyped);
    box->name.onSelChanged.Add_H(this, &This::OnFaceChosen);
  }
  tabs.selectedIndex = 1;
}

void IdeOptForm::Initialize() {
  using mavro::Button, mavro::Dock;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 306, 377);
	this->text = "Ide Options";
	this->resizable = false;
	//!<TabCtrl>
	tabs.dock = Dock::cFill;
	this->Add(&tabs);
	//!<TabPage>
	editorPage.text = "Editor";
	tabs.Add(&editorPage);
	//!<CheckBox>
	useTabs.SetBounds(29, 33, 139, 22);
	useTabs.text = "Use tab chars";
	editorPage.Add(&useTabs);
	//!<Label>
	tabLabel.SetBounds(27, 63, 65, 18);
	tabLabel.text = "Tab size:";
	editorPage.Add(&tabLabel);
	//!<SpinEdit>
	tabSize.SetBounds(136, 59, 80, 22);
	tabSize.min = 1;
	tabSize.max = 256;
	editorPage.Add(&tabSize);
	//!<Label>
	indentLabel.SetBounds(30, 89, 80, 18);
	indentLabel.text = "IndentSize:";
	editorPage.Add(&indentLabel);
	//!<SpinEdit>
	indentSize.SetBounds(136, 86, 80, 22);
	indentSize.max = 256;
	editorPage.Add(&indentSize);
	//!<CheckBox>
	useMonoFont.SetBounds(28, 127, 190, 22);
	useMonoFont.text = "Use mono space font";
	editorPage.Add(&useMonoFont);
	//!<CheckBox>
	lineNumbers.SetBounds(28, 151, 260, 22);
	lineNumbers.text = "Show line numbers";
	editorPage.Add(&lineNumbers);
	//!<CheckBox>
	wrapLines.SetBounds(28, 174, 260, 22);
	wrapLines.text = "Word wrap";
	editorPage.Add(&wrapLines);
	//!<CheckBox>
	showWhiteSpace.SetBounds(28, 197, 260, 22);
	showWhiteSpace.text = "Show white space";
	editorPage.Add(&showWhiteSpace);
	//!<CheckBox>
	closePairs.SetBounds(28, 220, 260, 22);
	closePairs.text = "Close brackets and quotes";
	editorPage.Add(&closePairs);
	//!<CheckBox>
	stripBlanks.SetBounds(28, 243, 260, 22);
	stripBlanks.text = "Strip trailing blanks when saving";
	editorPage.Add(&stripBlanks);
	//!<CheckBox>
	endLastLine.SetBounds(28, 266, 260, 22);
	endLastLine.text = "End the last line when saving";
	editorPage.Add(&endLastLine);
	//!<TabPage>
	fontsPage.text = "Fonts";
	tabs.Add(&fontsPage);
	//!<GroupBox>
	variableFont.SetBounds(11, 14, 262, 61);
	variableFont.text = "Editor variable font";
	fontsPage.Add(&variableFont);
	//!<GroupBox>
	fixedFont.SetBounds(11, 84, 262, 61);
	fixedFont.text = "Editor fixed font";
	fontsPage.Add(&fixedFont);
	//!<GroupBox>
	outputFont.SetBounds(11, 154, 262, 61);
	outputFont.text = "Output panel font";
	fontsPage.Add(&outputFont);
	//!<Label>
	fontNote.SetBounds(11, 228, 280, 18);
	fontsPage.Add(&fontNote);
	//!<TabPage>
	morePage.text = "More";
	tabs.Add(&morePage);
	//!<Label>
	themeLabel.SetBounds(11, 12, 120, 18);
	themeLabel.text = "Colours:";
	morePage.Add(&themeLabel);
	//!<ComboBox>
	theme.SetBounds(136, 9, 150, 24);
	theme.items.Add("As the desktop");
	theme.items.Add("Light");
	theme.items.Add("Dark");
	theme.chooseOnly = true;
	morePage.Add(&theme);
	//!<Label>
	lettersLabel.SetBounds(11, 41, 125, 18);
	lettersLabel.text = "Letters, 0 as usual:";
	morePage.Add(&lettersLabel);
	//!<SpinEdit>
	letters.SetBounds(136, 38, 80, 24);
	letters.toolTip = "Size of the letters of menus, tabs and lists, in points";
	morePage.Add(&letters);
	//!<Label>
	jobsLabel.SetBounds(11, 70, 125, 18);
	jobsLabel.text = "Compilers, 0 all:";
	morePage.Add(&jobsLabel);
	//!<SpinEdit>
	jobs.SetBounds(136, 67, 80, 24);
	jobs.toolTip = "How many compilers run at once; 0: one for each processor";
	jobs.max = 256;
	morePage.Add(&jobs);
	//!<Label>
	launcherLabel.SetBounds(11, 98, 270, 18);
	launcherLabel.text = "Program before the compiler of:";
	morePage.Add(&launcherLabel);
	//!<ComboBox>
	launcherSet.SetBounds(11, 117, 275, 24);
	launcherSet.chooseOnly = true;
	launcherSet.onSelChanged.Add_H(this, &This::OnLauncherSet);
	morePage.Add(&launcherSet);
	//!<Edit>
	launcher.SetBounds(11, 145, 275, 24);
	launcher.toolTip = "Such as ccache; \"none\" for none; empty: as the installation says";
	morePage.Add(&launcher);
	//!<CheckBox>
	allHeaders.SetBounds(11, 177, 275, 22);
	allHeaders.text = "Watch headers of other folders";
	morePage.Add(&allHeaders);
	//!<CheckBox>
	rescue.SetBounds(11, 201, 275, 22);
	rescue.text = "Keep copies of unsaved work";
	morePage.Add(&rescue);
	//!<Label>
	reloadLabel.SetBounds(11, 230, 275, 18);
	reloadLabel.text = "File changed by another program:";
	morePage.Add(&reloadLabel);
	//!<ComboBox>
	reload.SetBounds(11, 249, 275, 24);
	reload.items.Add("Ask");
	reload.items.Add("Load it if nothing is lost");
	reload.items.Add("Leave it");
	reload.chooseOnly = true;
	morePage.Add(&reload);
	//!<Panel>
	bottom.dock = Dock::cBootom;
	bottom.height = 48;
	this->Add(&bottom);
	//!<Button>
	okButton.SetBounds(100, 7, 84, 34);
	okButton.kind = Button::cOk;
	bottom.Add(&okButton);
	//!<Button>
	cancel.SetBounds(192, 8, 84, 34);
	cancel.kind = Button::cCancel;
	bottom.Add(&cancel);
	//!end
  // clang-format on
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
