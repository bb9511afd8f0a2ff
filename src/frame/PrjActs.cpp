#include "frame/PrjActs.h"

#include "FileText.h"
#include "SystemDialogs.h"
#include "base/Paths.h"
#include "base/ReasonFirst.h"
#include "editor/EditTabs.h"
#include "frame/FileActs.h"
#include "frame/MainForm.h"
#include "frame/PrjOptionsDlg.h"
#include "project/Project.h"
#include "rescue/Rescue.h"

namespace zendry {

namespace {

using enum WhileBuilding;

constexpr CommandRow cRows[] = {
    {cAddFileCommand, "&Add file", 0, cRefused},
    {cRemoveFileCommand, "&Remove file", 0, cRefused},
    {cProjectOptionsCommand, "&Project options", 0, cRefused},
    {cCreateMakefileCommand, "&Create MakFile", 0, cRefused},
};

}  // namespace

PrjActs thePrjActs;

PrjActs::PrjActs() : CommandList(cRows) {}

void PrjActs::CarryOut(int id) {
  if (id == cAddFileCommand) AddFiles();
  if (id == cRemoveFileCommand) RemoveSelected();
  if (id == cProjectOptionsCommand) ChangeOptions();
  if (id == cCreateMakefileCommand) CreateMakefile();
}

void PrjActs::AddFiles() {
  AddFilesFrom(theProject.folder);
}

void PrjActs::AddFilesFrom(const std::string& folder) {
  if (!theProject.isOpen) return;
  mavro::FileQuestion question;
  question.title = "Open...";
  question.filter = SourceFilter() + "|Resource Files|*.rc";
  question.folder = folder;
  question.multiple = true;
  for (const std::string& chosen : mavro::Dialogs().chooseFiles(question))
    if (!Add(chosen))
      mavro::Information("The project conatains file:" + BaseName(TidyPath(chosen)));
  FilesChanged();
}

bool PrjActs::Add(const std::string& path) {
  const std::string full = TidyPath(path);
  if (theProject.FindFile(full)) return false;
  theProject.AddFile(theProject.RelativeIfSame(full));
  theProject.modified = true;
  return true;
}

// One line says what came of it: many boxes would be in the way.
void PrjActs::AddDropped(const std::vector<std::string>& paths) {
  if (!theProject.isOpen || IsRefusedByBuild()) return;
  int added = 0;
  int known = 0;
  std::string notShown;
  for (const std::string& path : paths) {
    if (mavro::FolderExists(path)) continue;
    const bool isNew = Add(path);
    ++(isNew ? added : known);
    if (isNew && FileKind(path) == cUnknownKind) notShown = BaseName(path);
  }
  FilesChanged();
  std::string said = std::to_string(added) + (added == 1 ? " file" : " files") + " added";
  if (known > 0) said += ", " + std::to_string(known) + " there already";
  if (!notShown.empty()) said += "; the tree doesn't show " + notShown;
  theMainForm->SetStatus(said, "");
}

void PrjActs::FilesChanged() {
  KeepRescueCopy(theProject);
  theMainForm->UpdateCommands();
}

void PrjActs::RemoveSelected() {
  Remove({theMainForm->projectTree.SelectedId()});
}

void PrjActs::Remove(const std::vector<int>& ids) {
  if (!theProject.isOpen) return;
  theProject.modified = true;
  for (const int id : ids) theProject.RemoveFile(id);
  FilesChanged();
}

void PrjActs::ChangeOptions() {
  ShowOptions(theProject);
  theMainForm->ShowActiveFile();
  theMainForm->SayWhatIsNotKept();
}

void PrjActs::AddMade(const std::string& path) {
  if (Add(path)) FilesChanged();
}

void PrjActs::CreateMakefile() {
  if (!theProject.isOpen) return;
  const mavro::FileResult result = theProject.ExportMakefile("");
  theMainForm->SetStatus(
      result.Ok() ? "Makefile written to " + theProject.folder : ReasonFirst(result.error), "");
}

}  // namespace zendry
