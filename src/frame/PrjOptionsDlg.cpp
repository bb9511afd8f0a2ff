#include "frame/PrjOptionsDlg.h"

#include <string_view>

#include "CommandLine.h"
#include "SystemDialogs.h"
#include "base/Paths.h"
#include "build/CommandLines.h"
#include "config/IdeConfig.h"
#include "frame/StrangerQuestion.h"
#include "project/ProjectFileFormat.h"
#include "rescue/Rescue.h"

namespace zendry {

namespace {

// What "@" stands for, with a trailing slash.
std::string Root() {
  return InstallRoot(theIdeConfig.appDir);
}

// The path as an option's value: "@" for the root of the installation.
std::string WithMark(const std::string& path) {
  const std::string root = Root();
  const bool isInside = root.size() > 1 && (path + "/").starts_with(root);
  if (!isInside) return path;
  return "@/" + (path.size() < root.size() ? "" : path.substr(root.size()));
}

// "foo" for "libfoo.a" and for "foo.a".
std::string LibraryName(const std::string& path) {
  std::string name = BaseName(path);
  if (name.starts_with("lib")) name.erase(0, 3);
  return name.substr(0, name.rfind('.'));
}

}  // namespace

BuildOptionsPan::BuildOptionsPan() {
  group.text = "Gcc:";
  group.SetBounds(4, 4, 484, 138);
  packageLabel.text = "Package:";
  packageLabel.SetBounds(12, 26, 66, 20);
  package.SetBounds(80, 24, 394, 24);
  package.chooseOnly = true;
  for (const ToolSet& set : theIdeConfig.toolSets)
    package.items.Add(set.name.empty() ? "(not set up)" : set.name);
  compileLabel.text = "Compile:";
  compileLabel.SetBounds(12, 68, 66, 20);
  compile.SetBounds(80, 66, 394, 24);
  linkLabel.text = "Link:";
  linkLabel.SetBounds(12, 104, 66, 20);
  link.SetBounds(80, 102, 394, 24);
  for (mavro::Control* control : std::initializer_list<mavro::Control*>{
           &packageLabel, &package, &compileLabel, &compile, &linkLabel, &link})
    group.Add(control);
  Add(&group);
}

void BuildOptionsPan::Load(const BuildOptions& options) {
  shownSet = CompilerSet(options.gcc);
  package.selectedIndex = shownSet;
  compile.text = options.comp;
  link.text = options.link;
}

// A number that no set has means the first one; it stays as it is unless another set is chosen.
void BuildOptionsPan::Store(BuildOptions& options) const {
  if (package.selectedIndex != shownSet) options.gcc = package.selectedIndex;
  options.comp = compile.text;
  options.link = link.text;
}

PrjOptionsDlg::PrjOptionsDlg(Project& itsProject) : project(itsProject) {
  Initialize();
  for (const auto& [name, set] : theIdeConfig.libSets) libSet.items.Add(name);
  note.accessibleName = "What the project file can't hold";
  for (mavro::Button* add : {&addInclude, &addLinker, &addLibrary})
    add->accessibleName = add->toolTip;
  Connect();
  Load();
  focusControl = &type;
}

void PrjOptionsDlg::Initialize() {
  using mavro::Button, mavro::Dock;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 514, 295);
	this->text = "Project options";
	this->resizable = false;
	//!<Panel>
	top.dock = Dock::cTop;
	top.height = 48;
	this->Add(&top);
	//!<Label>
	typeLabel.SetBounds(8, 2, 160, 18);
	typeLabel.text = "Project type";
	top.Add(&typeLabel);
	//!<ComboBox>
	type.SetBounds(8, 20, 160, 24);
	type.items.Add("Console");
	type.items.Add("Form application");
	type.items.Add("API application");
	type.items.Add("Static lib");
	type.items.Add("Dynamic lib");
	type.items.Add("Other");
	type.chooseOnly = true;
	top.Add(&type);
	//!<Label>
	libSetLabel.SetBounds(189, 2, 165, 18);
	libSetLabel.text = "Main library set:";
	top.Add(&libSetLabel);
	//!<ComboBox>
	libSet.SetBounds(187, 20, 167, 24);
	top.Add(&libSet);
	//!<Label>
	outNameLabel.SetBounds(372, 2, 130, 18);
	outNameLabel.text = "Output name:";
	top.Add(&outNameLabel);
	//!<Edit>
	outName.SetBounds(371, 20, 131, 24);
	outName.onChange.Add_H(this, &This::OnFieldChanged);
	top.Add(&outName);
	//!<TabCtrl>
	tabs.dock = Dock::cFill;
	this->Add(&tabs);
	//!<TabPage>
	general.text = "General";
	tabs.Add(&general);
	//!<Label>
	includeLabel.SetBounds(8, 4, 300, 18);
	includeLabel.text = "Additional include search path:";
	general.Add(&includeLabel);
	//!<Edit>
	include.SetBounds(8, 22, 444, 24);
	include.onChange.Add_H(this, &This::OnFieldChanged);
	general.Add(&include);
	//!<Button>
	addInclude.SetBounds(456, 20, 28, 28);
	addInclude.text = "...";
	addInclude.toolTip = "Add a folder with headers";
	addInclude.onClick.Add_H(this, &This::OnAddInclude);
	general.Add(&addInclude);
	//!<Label>
	linkerLabel.SetBounds(8, 49, 300, 18);
	linkerLabel.text = "Additional linker search path:";
	general.Add(&linkerLabel);
	//!<Edit>
	linker.SetBounds(8, 67, 444, 24);
	linker.onChange.Add_H(this, &This::OnFieldChanged);
	general.Add(&linker);
	//!<Button>
	addLinker.SetBounds(456, 65, 28, 28);
	addLinker.text = "...";
	addLinker.toolTip = "Add a folder with libraries";
	addLinker.onClick.Add_H(this, &This::OnAddLinker);
	general.Add(&addLinker);
	//!<Label>
	libsLabel.SetBounds(8, 94, 300, 18);
	libsLabel.text = "Additional link library:";
	general.Add(&libsLabel);
	//!<Edit>
	libs.SetBounds(8, 112, 444, 24);
	libs.onChange.Add_H(this, &This::OnFieldChanged);
	general.Add(&libs);
	//!<Button>
	addLibrary.SetBounds(456, 110, 28, 28);
	addLibrary.text = "...";
	addLibrary.toolTip = "Add a library";
	addLibrary.onClick.Add_H(this, &This::OnAddLibrary);
	general.Add(&addLibrary);
	//!<TabPage>
	debug.text = "Debug";
	tabs.Add(&debug);
	//!<TabPage>
	release.text = "Relase";
	tabs.Add(&release);
	//!<Panel>
	bottom.dock = Dock::cBootom;
	bottom.height = 68;
	this->Add(&bottom);
	//!<Label>
	note.SetBounds(8, 2, 498, 20);
	bottom.Add(&note);
	//!<Button>
	okButton.SetBounds(402, 26, 84, 36);
	okButton.kind = Button::cOk;
	okButton.onClick.Add_H(this, &This::OnOk);
	bottom.Add(&okButton);
	//!<Button>
	cancel.SetBounds(302, 26, 84, 36);
	cancel.kind = Button::cCancel;
	bottom.Add(&cancel);
	//!end
  // clang-format on
}

// Events that the designer has no row for.
void PrjOptionsDlg::Connect() {
  libSet.onChange.Add_H(this, &This::OnFieldChanged);
  for (mavro::Edit* edit : {&debug.compile, &debug.link, &release.compile, &release.link})
    edit->onChange.Add_H(this, &This::OnFieldChanged);
}

// The name of a set that the installation doesn't have is shown too, so that it isn't lost.
void PrjOptionsDlg::Load() {
  const bool isKnown = project.type >= cConsole && project.type <= cOther;
  shownType = isKnown ? project.type : static_cast<int>(cOther);
  type.selectedIndex = shownType;
  libSet.selectedIndex = libSet.items.IndexOf(project.libSet);
  libSet.text = project.libSet;
  outName.text = project.outName;
  include.text = project.includePath;
  linker.text = project.linkerPath;
  libs.text = project.linkLibs;
  debug.Load(project.debugOptions);
  release.Load(project.releaseOptions);
}

void PrjOptionsDlg::Store() {
  if (type.selectedIndex != shownType) project.type = type.selectedIndex;
  project.libSet = libSet.text;
  project.includePath = include.text;
  project.linkerPath = linker.text;
  project.linkLibs = libs.text;
  project.outName = outName.text;
  debug.Store(project.debugOptions);
  release.Store(project.releaseOptions);
}

std::vector<PrjOptionsDlg::Field> PrjOptionsDlg::Fields() {
  return {
      {&libSet, nullptr, "Main library set"},      {&outName, nullptr, "Output name"},
      {&include, &general, "Include search path"}, {&linker, &general, "Linker search path"},
      {&libs, &general, "Link library"},           {&debug.compile, &debug, "Debug, Compile"},
      {&debug.link, &debug, "Debug, Link"},        {&release.compile, &release, "Relase, Compile"},
      {&release.link, &release, "Relase, Link"}};
}

// The first field with a value that the project file can't hold, or null.
const PrjOptionsDlg::Field* PrjOptionsDlg::ShowWhatDoesNotFit(const std::vector<Field>& fields) {
  for (const Field& field : fields) {
    const std::string why = WhyUnwritable(field.control->text.Get());
    if (why.empty()) continue;
    note.text = std::string(field.name) + ": " + why;
    return &field;
  }
  note.text = "";
  return nullptr;
}

void PrjOptionsDlg::AppendFolder(mavro::Edit& field, const char* option) {
  const std::string chosen = mavro::Dialogs().chooseFolder("Ref path", Root() + "libs");
  if (chosen.empty()) return;
  field.text = field.text.Get() + option + mavro::QuoteArgument(WithMark(chosen));
  ShowWhatDoesNotFit(Fields());
}

void PrjOptionsDlg::OnAddInclude(mavro::NotifyArgs&) {
  AppendFolder(include, " -I");
}

void PrjOptionsDlg::OnAddLinker(mavro::NotifyArgs&) {
  AppendFolder(linker, " -L");
}

void PrjOptionsDlg::OnAddLibrary(mavro::NotifyArgs&) {
  mavro::FileQuestion question;
  question.title = "Open...";
  question.folder = Root() + "libs";
  question.filter = "Lib files|*.a";
  question.defaultExtension = "a";
  const std::vector<std::string> chosen = mavro::Dialogs().chooseFiles(question);
  if (chosen.empty()) return;
  libs.text = libs.text.Get() + " -l" + mavro::QuoteArgument(LibraryName(chosen.front()));
  ShowWhatDoesNotFit(Fields());
}

void PrjOptionsDlg::OnFieldChanged(mavro::NotifyArgs&) {
  ShowWhatDoesNotFit(Fields());
}

void PrjOptionsDlg::OnOk(mavro::NotifyArgs&) {
  const std::vector<Field> fields = Fields();
  if (const Field* field = ShowWhatDoesNotFit(fields)) {
    StayOpen();
    if (field->page) tabs.selectedIndex = tabs.IndexOf(field->page);
    field->control->Focus();
    return mavro::Beep();
  }
  Store();
}

// The name of the output follows the new type, as it would after the project was opened again. A
// save that fails leaves the project changed, so that closing it asks.
void ShowOptions(Project& project) {
  const OwnDangers own(project);
  if (PrjOptionsDlg(project).Run(true) != mavro::Form::cOk || !project.isOpen) return;
  project.SetFileName(project.GetFullPath(project.name));
  project.LoadReferences();
  project.modified = true;
  project.Save(false);
  KeepRescueCopy(project);
}

}  // namespace zendry
