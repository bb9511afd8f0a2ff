#include "frame/StartPage.h"

#include <algorithm>

#include "base/HelpCommands.h"
#include "base/KeyName.h"
#include "base/Paths.h"
#include "build/BuildActs.h"
#include "config/IdeConfig.h"
#include "config/IdeSession.h"
#include "debug/Debugger.h"
#include "editor/EditorActs.h"
#include "frame/DemoList.h"
#include "frame/FileActs.h"
#include "frame/MainForm.h"
#include "frame/NewProjects.h"
#include "help/HelpActs.h"
#include "wizards/NewProjectDialog.h"

namespace zendry {

namespace {

constexpr char cShowKey[] = "start-page";
constexpr int cMargin = 24;
constexpr int cColumn = 270;
constexpr int cColumnGap = 30;
constexpr int cRowHeight = 30;
constexpr int cRowGap = 4;
constexpr int cLineHeight = 20;
constexpr int cSectionGap = 18;
constexpr int cHeadingHeight = 28;
constexpr int cHeadingSize = 13;
constexpr int cPictureWidth = 120, cPictureHeight = 75;
constexpr int cSentenceHeight = 54;  // three lines
constexpr size_t cMostRecent = 4;    // of each kind
constexpr int cKeyColumn = 110;

struct CommandRowText {
  int id;
  const char* caption;
  int wizardPage = -1;  // of the dialog for new projects, where that is the command
};
constexpr CommandRowText cCommands[] = {
    {cNewProjectCommand, "New project...", NewProjectDialog::cConsolePage},
    {cOpenProjectCommand, "Open a project..."},
    {cOpenCommand, "Open a file..."},
    {cNewProjectCommand, "Import existing files...", NewProjectDialog::cImportPage},
};

struct KeyRow {
  mavro::ActionList& list;
  int id;
  const char* what;
};
const KeyRow cKeys[] = {
    {theBuildActs, cMakeCommand, "build what has changed"},
    {theDebugger, cRunCommand, "build, run or debug"},
    {theBuildActs, cNextErrorCommand, "go to the next error"},
    {theEditorActs, cTabListCommand, "go to an open file"},
    {theHelpActs, cWordHelpCommand, "help on a word"},
};

}  // namespace

StartPage::StartPage() {
  backColor = mavro::Color::cWindow;
  foreColor = mavro::Color::cWindowText;
  accessibleName = "Start";
  showAgain.text = "&Show this page at the start";
  showAgain.checked = true;
  showAgain.onClick.Add_H(this, &StartPage::OnShowAgain);
  onResize.Add_H(this, &StartPage::OnSized);
}

bool StartPage::IsWanted() {
  const auto found = theIdeSession.values.find(cShowKey);
  return found == theIdeSession.values.end() || found->second != "0";
}

void StartPage::Fill() {
  Place left{cMargin, cMargin}, right{cMargin + cColumn + cColumnGap, cMargin};
  AddCommands(left);
  AddKeys(left);
  AddRecent(theIdeSession.recentProjects, right);
  AddRecent(theIdeSession.recentFiles, right);
  AddDemos(right);
  const int bottom = std::max(left.y, right.y);
  showAgain.SetBounds(cMargin, bottom, cColumn, 24);
  Add(&showAgain);
  contentWidth = right.x + cColumn + cMargin;
  contentHeight = bottom + 24 + cMargin;
  UpdateRows();
}

mavro::Label& StartPage::AddLabel(const std::string& text, int x, int y, int width) {
  mavro::Label& label = labels.emplace_back();
  label.text = text;
  label.SetBounds(x, y, width, cLineHeight);
  Add(&label);
  return label;
}

void StartPage::AddHeading(const char* heading, Place& at) {
  mavro::Label& label = AddLabel(heading, at.x, at.y, cColumn);
  label.height = cHeadingHeight;
  label.font = mavro::Font(cHeadingSize, mavro::Font::cBold);
  at.y += cHeadingHeight + cRowGap;
}

StartPage::Row& StartPage::AddRow(const std::string& caption, Place& at) {
  Row& row = rows.emplace_back();
  row.button.text = caption;
  row.button.SetBounds(at.x, at.y, cColumn, cRowHeight);
  row.button.onClick.Add_H(this, &StartPage::OnRow);
  Add(&row.button);
  at.y += cRowHeight + cRowGap;
  return row;
}

void StartPage::AddCommands(Place& at) {
  AddHeading("Begin", at);
  for (const CommandRowText& command : cCommands) {
    Row& row = AddRow(command.caption, at);
    row.action = theFileActs.Find(command.id);
    row.wizardPage = command.wizardPage;
  }
  at.y += cSectionGap;
}

void StartPage::AddKeys(Place& at) {
  AddHeading("Keys", at);
  for (const KeyRow& key : cKeys) {
    AddLabel(KeyName(key.list.Find(key.id)), at.x, at.y, cKeyColumn);
    AddLabel(key.what, at.x + cKeyColumn, at.y, cColumn - cKeyColumn);
    at.y += cLineHeight + cRowGap;
  }
  at.y += cSectionGap;
}

// "&" is doubled: captions of buttons take a single one as the mark of a key.
void StartPage::AddRecent(const RecentList& recent, Place& at) {
  if (recent.items.empty()) return;
  AddHeading(&recent == &theIdeSession.recentProjects ? "Recent projects" : "Recent files", at);
  for (size_t i = 0; i < std::min(cMostRecent, recent.items.size()); ++i) {
    std::string name = BaseName(recent.items[i]);
    for (size_t mark = name.find('&'); mark != std::string::npos; mark = name.find('&', mark + 2))
      name.insert(mark, "&");
    Row& row = AddRow(name, at);
    row.path = recent.items[i];
    row.button.hint = recent.items[i];
  }
  at.y += cSectionGap;
}

// A demo is copied into a folder of the user's by the dialog for new projects.
void StartPage::AddDemos(Place& at) {
  const std::vector<Demo> demos = ReadDemos(theIdeConfig.appDir);
  if (demos.empty()) return;
  AddHeading("Demos", at);
  for (const Demo& demo : demos) {
    const int top = at.y;
    mavro::Image& image = pictures.emplace_back();
    image.stretch = true;
    image.proportional = true;
    image.SetBounds(at.x, top, cPictureWidth, cPictureHeight);
    if (image.picture.Load(demo.picture) == mavro::PictureResult::cLoaded) Add(&image);
    Place beside{at.x + cPictureWidth + 10, top};
    Row& row = AddRow(demo.title, beside);
    row.button.width = cColumn - cPictureWidth - 10;
    row.button.hint = demo.sentence;
    row.action = theFileActs.Find(cNewProjectCommand);
    row.wizardPage = NewProjectDialog::cDemosPage;
    row.demo = demo.place;
    AddLabel(demo.sentence, beside.x, beside.y, row.button.width).height = cSentenceHeight;
    at.y = top + cPictureHeight + 14;
  }
  at.y += cSectionGap;
}

void StartPage::UpdateRows() {
  for (Row& row : rows) {
    const bool on = !row.action || (theMainForm ? theMainForm->CanAct(row.action) : true);
    if (row.button.enabled != on) row.button.enabled = on;
  }
}

mavro::Control* StartPage::FirstRow() {
  for (Row& row : rows)
    if (row.button.enabled) return &row.button;
  return &showAgain;
}

// Opening a file hides this page, so nothing of it is touched afterwards.
void StartPage::OnRow(mavro::NotifyArgs& args) {
  for (const Row& row : rows) {
    if (args.sender != &row.button) continue;
    if (row.wizardPage >= 0)
      MakeNewProject(row.wizardPage, row.demo);
    else if (row.action)
      row.action->Execute();
    else
      theFileActs.OpenFiles({row.path});
    return;
  }
}

void StartPage::OnShowAgain(mavro::NotifyArgs&) {
  if (showAgain.checked)
    theIdeSession.values.erase(cShowKey);
  else
    theIdeSession.values[cShowKey] = "0";
}

void StartPage::OnSized(mavro::NotifyArgs&) {
  SetScrollRange(mavro::cHorizontal, contentWidth, width);
  SetScrollRange(mavro::cVertical, contentHeight, height);
}

}  // namespace zendry
