#include "frame/FileActs.h"

#include <algorithm>
#include <filesystem>

#include "PageSetupDlg.h"
#include "SystemDialogs.h"
#include "base/Paths.h"
#include "base/ReasonFirst.h"
#include "config/IdeSession.h"
#include "frame/MainForm.h"
#include "frame/NewProjects.h"
#include "frame/RecentDialog.h"
#include "frame/SearchWindow.h"
#include "print/PrintFile.h"
#include "project/Project.h"
#include "project/SessionFile.h"
#include "rescue/Rescue.h"

namespace zendry {

namespace {

using mavro::cControlKey;
using enum WhileBuilding;

constexpr CommandRow cRows[] = {
    {cNewCommand, "&New", cControlKey | 'N', cRefused},
    {cOpenCommand, "&Open...", cControlKey | 'O', cRefused},
    {cCloseCommand, "&Close", cControlKey | cKeyF4, cRefused},
    {cCloseAllCommand, "Close All", 0, cRefused},
    {cSaveCommand, "&Save", cControlKey | 'S', cRefused},
    {cSaveAsCommand, "Save &As...", 0, cRefused},
    {mavro::cSeparatorRow},
    {cPrintCommand, "Print file", 0, cRefused},
    {cPrintPreviewCommand, "Print preview", 0, cRefused},
    {cPageSetupCommand, "Page set-up"},
    {mavro::cSeparatorRow},
    {cNewProjectCommand, "New project", 0, cRefused},
    {cCloneProjectCommand, "Clone project", 0, cRefused},
    {cOpenProjectCommand, "Open project", 0, cRefused},
    {cSaveProjectCommand, "Save project", 0, cRefused},
    {cSaveAllCommand, "Save all", 0, cRefused},
    {mavro::cSeparatorRow},
    {cCloseProjectCommand, "Close project", 0, cRefused},
    {mavro::cSeparatorRow},
    {cRecentFilesCommand, "Recent files", 0, cRefused},
    {cRecentProjectsCommand, "Recent projects", 0, cRefused},
    {cExitCommand, "E&xit"},
};

std::string FolderOfLastProject() {
  const auto& items = theIdeSession.recentProjects.items;
  return items.empty() ? "" : std::filesystem::path(items.front()).parent_path().string();
}

}  // namespace

FileActs theFileActs;

FileActs::FileActs() : CommandList(cRows) {
  actNew = Find(cNewCommand);
  actOpen = Find(cOpenCommand);
  actCloseAll = Find(cCloseAllCommand);
  actSave = Find(cSaveCommand);
  actOpenProject = Find(cOpenProjectCommand);
  actSaveAll = Find(cSaveAllCommand);
}

void FileActs::CarryOut(int id) {
  if (!theMainForm) return;
  switch (id) {
    case cOpenProjectCommand:
      return AskAndLoad();
    case cNewProjectCommand:
      return MakeNewProject();
    case cCloneProjectCommand:
      return CloneProject();
    case cSaveProjectCommand:
      return SaveProject();
    case cCloseProjectCommand:
      CloseProject();
      return;
    case cRecentFilesCommand: {
      const std::string path = ChooseRecent(theIdeSession.recentFiles, id);
      if (!path.empty()) theMainForm->editTabs.OpenFile(path);
      return;
    }
    case cRecentProjectsCommand: {
      const std::string path = ChooseRecent(theIdeSession.recentProjects, id);
      if (!path.empty()) ReplaceProject(path);
      return;
    }
    case cPrintCommand:
    case cPrintPreviewCommand:
      return Print(id);
    case cPageSetupCommand:
      mavro::AskPageSetup();
      return;
    case cExitCommand:
      return theMainForm->Close();
    default:
      return theMainForm->editTabs.OnCommand(id);
  }
}

// Prints the text in front, with what has not been saved.
void FileActs::Print(int id) {
  const EditTab* tab = theMainForm->editTabs.Active();
  if (!tab) return;
  const mavro::PrintJob job = PrintJobOf(*tab->editor, tab->caption, theMainForm->sources);
  if (id == cPrintPreviewCommand)
    mavro::PreviewEditor(job);
  else if (mavro::PrintEditor(job) == mavro::Printer::Outcome::cPrinted)
    theMainForm->SetStatus(job.title + ": printed", "");
}

void FileActs::AskAndLoad() {
  mavro::FileQuestion question;
  question.title = "Open project";
  question.filter = "Project Files (*.zpj)|*.zpj";
  question.folder = FolderOfLastProject();
  const std::vector<std::string> chosen = mavro::Dialogs().chooseFiles(question);
  if (!chosen.empty()) ReplaceProject(chosen.front());
}

// Waiting messages may have closed the window or opened another project.
void FileActs::ReplaceProject(const std::string& path) {
  if (!CloseProject()) return;
  theMainForm->PumpMessages();
  if (theMainForm->state == mavro::cShown && !theProject.isOpen) LoadProject(path);
}

// Only the status line reports a project that can't be read.
void FileActs::LoadProject(const std::string& path) {
  const mavro::FileResult result = theProject.Load(path);
  theMainForm->ShowActiveFile();
  if (result.Words().empty())
    theMainForm->SayWhatIsNotKept();
  else
    theMainForm->SetStatus(ReasonFirst(result.Words()), "");
  theMainForm->startFiles.AllLoaded();
  theMainForm->search->ProjectOpened();
  theMainForm->completion.wizard.tags.EnsureIndex();  // or the first list would wait for it
}

void FileActs::OpenFiles(std::vector<std::string> paths) {
  if (IsRefusedByBuild()) return;
  const auto isProject = [](const std::string& path) { return FileKind(path) == cProjectFile; };
  std::stable_partition(paths.begin(), paths.end(), isProject);
  for (const std::string& path : paths) {
    if (theMainForm->state != mavro::cShown) return;
    if (isProject(path))
      ReplaceProject(path);
    else
      theMainForm->editTabs.OpenFile(path);
  }
}

void FileActs::SaveProject() {
  theProject.Save(false);
  KeepRescueCopy(theProject);
  theMainForm->ShowActiveFile();
}

void FileActs::SaveSession() {
  if (!theProject.isOpen || theProject.implicit) return;
  const mavro::FileResult result =
      zendry::SaveSession(theProject.SessionPath(), theProject, *theMainForm);
  if (!result.Ok()) theMainForm->SetStatus(ReasonFirst(result.error), "");
}

bool FileActs::CloseProjectForEnd() {
  if (!theProject.Close()) return false;
  DropRescueCopy();
  theMainForm->search->ProjectClosed();
  theMainForm->ShowActiveFile();
  return true;
}

bool FileActs::CloseProject() {
  if (!CloseProjectForEnd()) return false;
  theMainForm->SayWhatIsNotKept();
  return true;
}

}  // namespace zendry
