#include "frame/FileActs.h"

#include <algorithm>

#include "SystemDialogs.h"
#include "base/CommandTable.h"
#include "base/Paths.h"
#include "build/BuildActs.h"
#include "config/IdeSession.h"
#include "frame/MainForm.h"
#include "frame/PrjActs.h"
#include "frame/RecentDialog.h"
#include "project/Project.h"
#include "project/SessionFile.h"
#include "rescue/Rescue.h"

namespace zendry {

namespace {

using mavro::cControlKey;
using enum Offered;

constexpr CommandRow cRows[] = {
    {cNewCommand, "&New", cControlKey | 'N'},
    {cOpenCommand, "&Open...", cControlKey | 'O'},
    {cCloseCommand, "&Close", cControlKey | cKeyF4},
    {cCloseAllCommand, "Close All"},
    {cSaveCommand, "&Save", cControlKey | 'S'},
    {cSaveAsCommand, "Save &As..."},
    {mavro::cSeparatorRow},
    {cPrintCommand, "Print file", 0, cLater},
    {mavro::cSeparatorRow},
    {cNewProjectCommand, "New project", 0, cLater},
    {cCloneProjectCommand, "Clone project", 0, cLater},
    {cOpenProjectCommand, "Open project"},
    {cSaveProjectCommand, "Save project"},
    {cSaveAllCommand, "Save all"},
    {mavro::cSeparatorRow},
    {cCloseProjectCommand, "Close project"},
    {mavro::cSeparatorRow},
    {cRecentFilesCommand, "Recent files"},
    {cRecentProjectsCommand, "Recent projects"},
    {cExitCommand, "E&xit"},
};

std::string FolderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? "" : path.substr(0, slash);
}

std::string FolderOfLastProject() {
  const auto& items = theIdeSession.recentProjects.items;
  return items.empty() ? "" : FolderOf(items.front());
}

}  // namespace

FileActs theFileActs;

FileActs::FileActs() {
  SetTarget(this, &FileActs::OnCommand);
  AddCommands(*this, cRows);
  actNew = Find(cNewCommand);
  actOpen = Find(cOpenCommand);
  actCloseAll = Find(cCloseAllCommand);
  actSave = Find(cSaveCommand);
  actOpenProject = Find(cOpenProjectCommand);
  actSaveAll = Find(cSaveAllCommand);
}

void FileActs::OnCommand(int id) {
  if (!theMainForm) return;
  if (theBuildActs.IsBuilding() && id != cExitCommand) return mavro::Beep();
  switch (id) {
    case cOpenProjectCommand:
      return AskAndLoad();
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
    case cExitCommand:
      return theMainForm->Close();
    case cAddFileCommand:
      return thePrjActs.AddFiles();
    case cRemoveFileCommand:
      return thePrjActs.RemoveSelected();
    case cCreateMakefileCommand:
      return thePrjActs.CreateMakefile();
    default:
      return theMainForm->editTabs.OnCommand(id);
  }
}

void FileActs::AskAndLoad() {
  mavro::FileQuestion question;
  question.title = "Open project";
  question.filter = "Project Files (*.zpj)|*.zpj";
  question.folder = FolderOfLastProject();
  const std::vector<std::string> chosen = mavro::Dialogs().chooseFiles(question);
  if (!chosen.empty()) ReplaceProject(chosen.front());
}

// What waited in the queue may have closed the window or opened another project.
void FileActs::ReplaceProject(const std::string& path) {
  if (!CloseProject()) return;
  theMainForm->PumpMessages();
  if (theMainForm->state == mavro::cShown && !theProject.isOpen) LoadProject(path);
}

// The window says no word about a project that can't be read, but for its status line.
void FileActs::LoadProject(const std::string& path) {
  const LoadResult result = theProject.Load(path);
  theMainForm->ShowActiveFile();
  if (!result.Ok() || !result.doubt.empty())
    theMainForm->SetStatus(result.Ok() ? result.doubt : result.error, "");
  theMainForm->startFiles.AllLoaded();
}

void FileActs::OpenFiles(std::vector<std::string> paths) {
  if (theBuildActs.IsBuilding()) return mavro::Beep();
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
  const mavro::SaveResult result =
      zendry::SaveSession(theProject.SessionPath(), theProject, *theMainForm);
  if (!result.Ok()) theMainForm->SetStatus(result.error, "");
}

bool FileActs::CloseProject() {
  if (!theProject.Close()) return false;
  DropRescueCopy();
  theMainForm->ShowActiveFile();
  theMainForm->SayWhatIsNotKept();
  return true;
}

}  // namespace zendry
