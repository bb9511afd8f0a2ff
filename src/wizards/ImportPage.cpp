#include "wizards/ImportPage.h"

#include "FileText.h"
#include "Keys.h"
#include "SystemDialogs.h"
#include "base/ControlBytes.h"
#include "base/Paths.h"
#include "project/ImportCommands.h"
#include "project/ImportFolder.h"

namespace zendry {

namespace {

constexpr char cTicked[] = "\u2611";
constexpr char cNotTicked[] = "\u2610";
constexpr char cNoMain[] = "none: a library";

std::string Shown(const std::string& text) {
  return MarkControlBytes(text);
}

}  // namespace

ImportPage::ImportPage() {
  text = "From files";
  sourceLabel.text = "Folder, or compile_commands.json:";
  sourceLabel.SetBounds(8, 4, 240, 18);
  source.SetBounds(8, 22, 224, 22);
  source.accessibleName = "Folder, or compile_commands.json";
  folder.text = "Folder...";
  folder.SetBounds(236, 21, 62, 24);
  file.text = "File...";
  file.SetBounds(302, 21, 52, 24);
  files.SetBounds(8, 50, 346, 80);
  files.AddColumn("", 30);
  files.AddColumn("file", 170);
  files.AddColumn("left out because", 130);
  files.showSelection = true;
  files.accessibleName = "Files";
  mainLabel.text = "main in:";
  mainLabel.SetBounds(8, 137, 56, 18);
  mains.SetBounds(66, 134, 220, 24);
  mains.chooseOnly = true;
  mains.accessibleName = "File with main";
  details.text = "Details";
  details.SetBounds(292, 134, 62, 24);
  sum.SetBounds(8, 162, 346, 18);
  sum.text = "Nothing but the project file is written.";
  for (mavro::Control* control : std::initializer_list<mavro::Control*>{
           &sourceLabel, &source, &folder, &file, &files, &mainLabel, &mains, &details, &sum})
    Add(control);
  folder.onClick.Add_H(this, &ImportPage::OnFolder);
  file.onClick.Add_H(this, &ImportPage::OnFile);
  source.onLostFocus.Add_H(this, &ImportPage::OnTyped);
  files.onClickRow.Add_H(this, &ImportPage::OnRow);
  files.onKeyDown.Add_H(this, &ImportPage::OnKey);
  mains.onSelChanged.Add_H(this, &ImportPage::OnMain);
  details.onClick.Add_H(this, &ImportPage::OnDetails);
  details.enabled = false;
}

void ImportPage::OnFolder(mavro::NotifyArgs&) {
  const std::string chosen = mavro::Dialogs().chooseFolder("Folder with sources", source.text);
  if (!chosen.empty()) List(chosen);
}

void ImportPage::OnFile(mavro::NotifyArgs&) {
  mavro::FileQuestion question;
  question.title = "Compile commands";
  question.filter = "Compile commands (*.json)|*.json";
  const std::vector<std::string> chosen = mavro::Dialogs().chooseFiles(question);
  if (!chosen.empty()) List(chosen.front());
}

// A path that was typed is listed as soon as the field is left.
void ImportPage::OnTyped(mavro::NotifyArgs&) {
  ListTyped();
}

bool ImportPage::ListTyped() {
  const std::string path = source.text;
  if (path.empty() || path == listed) return false;
  List(path);
  return true;
}

void ImportPage::List(const std::string& path) {
  source.text = path;
  listed = path;
  isFolder = mavro::FolderExists(path);
  const bool isCommands = !isFolder && mavro::FileExists(path);
  import = isCommands ? ReadCommands(path, "") : ListFolder(path);
  if (import.error.empty()) Settle("");
  ShowFiles();
  mavro::NotifyArgs args;
  args.sender = this;
  onListed.Fire(args);
}

void ImportPage::Settle(const std::string& wantedMain) {
  if (isFolder)
    SettleImport(import, wantedMain);
  else
    SettleCommands(import, wantedMain);
}

void ImportPage::ShowFiles() {
  files.Clear();
  for (const ImportFile& each : import.files)
    files.AddCells({each.taken ? cTicked : cNotTicked, Shown(each.name), each.reason});
  ShowTicks();
}

void ImportPage::ShowTicks() {
  size_t taken = 0;
  for (size_t i = 0; i < import.files.size(); ++i) {
    const ImportFile& each = import.files[i];
    files.SetCell(static_cast<int>(i), 0, each.taken ? cTicked : cNotTicked);
    files.SetCell(static_cast<int>(i), 2, each.reason);
    taken += each.taken;
  }
  mains.items.Clear();
  int selected = 0;
  for (const ImportFile* each : import.Mains()) {
    if (each->name == import.mainFile) selected = mains.items.GetCount();
    mains.items.Add(each->name);
  }
  if (mains.items.GetCount() == 0) mains.items.Add(cNoMain);
  mains.selectedIndex = selected;
  const size_t said = import.notes.size() + import.findings.size() + import.risky.size();
  sum.text = !import.error.empty()
                 ? Shown(import.error)
                 : std::to_string(taken) + " of " + std::to_string(import.files.size()) +
                       " files; notes: " + std::to_string(said);
  details.enabled = import.error.empty();
}

void ImportPage::Toggle(int row) {
  if (row < 0 || static_cast<size_t>(row) >= import.files.size()) return;
  ImportFile& each = import.files[static_cast<size_t>(row)];
  each.taken = !each.taken;
  each.reason.clear();
  // The choice of `main` stays if it is still there.
  const ImportFile* main = FindImportFile(import, import.mainFile);
  Settle(main && main->taken && !import.mainFile.empty() ? import.mainFile : "");
  ShowTicks();
}

void ImportPage::OnRow(mavro::NotifyArgs& args) {
  Toggle(args.value);
}

void ImportPage::OnKey(mavro::KeyArgs& args) {
  if (args.key != mavro::Key::cSpace || files.selectedIndex < 0) return;
  args.handled = true;
  Toggle(files.selectedIndex);
}

void ImportPage::OnMain(mavro::ItemArgs&) {
  const int row = mains.selectedIndex;
  const auto found = import.Mains();
  if (row < 0 || static_cast<size_t>(row) >= found.size()) return;
  Settle(std::string(found[static_cast<size_t>(row)]->name));
  ShowTicks();
}

void ImportPage::OnDetails(mavro::NotifyArgs&) {
  constexpr size_t cMostLines = 25;
  const std::vector<std::string> lines = ImportReport(import);
  std::string report;
  for (size_t i = 0; i < lines.size() && i < cMostLines; ++i) report += Shown(lines[i]) + "\n";
  if (lines.size() > cMostLines)
    report += "and " + std::to_string(lines.size() - cMostLines) + " more lines";
  mavro::Information(report);
}

}  // namespace zendry
