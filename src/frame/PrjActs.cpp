#include "frame/PrjActs.h"

#include "SystemDialogs.h"
#include "base/Paths.h"
#include "base/ReasonFirst.h"
#include "editor/EditTabs.h"
#include "frame/FileActs.h"
#include "frame/MainForm.h"
#include "project/Project.h"
#include "rescue/Rescue.h"

namespace zendry {

namespace {

using enum Offered;
using enum WhileBuilding;

constexpr CommandRow cRows[] = {
    {cAddFileCommand, "&Add file", 0, cNow, cRefused},
    {cRemoveFileCommand, "&Remove file", 0, cNow, cRefused},
    {cProjectOptionsCommand, "&Project options", 0, cLater, cRefused},
    {cCreateMakefileCommand, "&Create MakFile", 0, cNow, cRefused},
};

}  // namespace

PrjActs thePrjActs;

PrjActs::PrjActs() : CommandList(cRows) {}

void PrjActs::CarryOut(int id) {
  if (id == cAddFileCommand) AddFiles();
  if (id == cRemoveFileCommand) RemoveSelected();
  if (id == cCreateMakefileCommand) CreateMakefile();
}

void PrjActs::AddFiles() {
  if (!theProject.isOpen) return;
  mavro::FileQuestion question;
  question.title = "Open...";
  question.filter = SourceFilter() + "|Resource Files|*.rc";
  question.folder = theProject.folder;
  question.multiple = true;
  for (const std::string& chosen : mavro::Dialogs().chooseFiles(question)) {
    const std::string full = TidyPath(chosen);
    if (theProject.FindFile(full)) {
      mavro::Information("The project conatains file:" + BaseName(full));
      continue;
    }
    theProject.AddFile(theProject.RelativeIfSame(full));
    theProject.modified = true;
  }
  KeepRescueCopy(theProject);
  theMainForm->UpdateCommands();
}

void PrjActs::RemoveSelected() {
  if (!theProject.isOpen) return;
  theProject.modified = true;
  theProject.RemoveFile(theMainForm->projectTree.SelectedId());
  KeepRescueCopy(theProject);
  theMainForm->UpdateCommands();
}

void PrjActs::AddMade(const std::string& path) {
  if (theProject.FindFile(path)) return;
  theProject.AddFile(theProject.RelativeIfSame(path));
  theProject.modified = true;
  KeepRescueCopy(theProject);
  theMainForm->UpdateCommands();
}

void PrjActs::CreateMakefile() {
  if (!theProject.isOpen) return;
  const mavro::FileResult result = theProject.ExportMakefile("");
  theMainForm->SetStatus(
      result.Ok() ? "Makefile written to " + theProject.folder : ReasonFirst(result.error), "");
}

}  // namespace zendry
