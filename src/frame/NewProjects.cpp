#include "frame/NewProjects.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "SystemDialogs.h"
#include "base/ErrorBox.h"
#include "base/Paths.h"
#include "base/ReasonFirst.h"
#include "config/IdeConfig.h"
#include "config/IdeSession.h"
#include "frame/FileActs.h"
#include "frame/MainForm.h"
#include "frmedt/FormSkeleton.h"
#include "project/Project.h"
#include "wizards/NewProjectDialog.h"
#include "wizards/PrjPanel.h"
#include "wizards/ProjectPlace.h"
#include "wizards/Repository.h"

namespace zendry {

namespace {

constexpr char cLastFolderKey[] = "path0";

std::string RepositoryPath() {
  return theIdeConfig.appDir + "Repos/";
}

std::string FolderToOffer() {
  const auto last = theIdeSession.values.find(cLastFolderKey);
  return DefaultProjectFolder(last == theIdeSession.values.end() ? "" : last->second,
                              InstallRoot(theIdeConfig.appDir));
}

// What the dialogs have in common: the name is checked, the folder is kept for the next time.
bool TakePlace(const PrjPanel& panel, ProjectPlace& place) {
  place.name = panel.name.text;
  if (!IsProjectName(place.name)) {
    mavro::Information("Incorrect project name: " + place.name);
    return false;
  }
  place.folder = panel.Folder();
  if (place.folder.empty()) place.folder = FolderToOffer();
  theIdeSession.values[cLastFolderKey] = place.folder;
  place.folder = TidyPath(AbsolutePath(place.folder));
  return true;
}

bool EnsureFolder(const std::string& folder) {
  const mavro::FileResult made = MakeFolders(folder);
  if (made.Ok()) return true;
  ShowError("Error on create directory: " + folder);
  theMainForm->SetStatus(ReasonFirst(made.error), "");
  return false;
}

bool MayOverwrite(const ProjectPlace& place) {
  return mavro::Confirm("Project: " + place.name + " exists!\nOverwrite?");
}

// Closes the open project, makes the folder and goes there; asks if a project is there. False ends
// the command.
bool PrepareFolder(ProjectPlace& place, bool makeFolder) {
  if (!theFileActs.CloseProject()) return false;
  if (!EnsureFolder(place.folder)) return false;
  if (makeFolder) {
    place.folder += place.name + "/";
    if (!EnsureFolder(place.folder)) return false;
  }
  if (chdir(place.folder.c_str()) != 0) {
    ShowError("Error on create directory: " + place.folder);
    return false;
  }
  return !place.IsTaken() || MayOverwrite(place);
}

// The question about the project doesn't name its other files.
bool MayReplaceEach(const std::vector<std::string>& paths) {
  return std::ranges::all_of(paths, [](const std::string& path) {
    return mavro::ReadFileText(path).isMissing ||
           mavro::ConfirmLoss(path + "\nis there already!\nOverwrite?");
  });
}

// Opens what was made, or says why it was not.
void OpenMade(const mavro::FileResult& made, const ProjectPlace& place, const std::string& source) {
  if (!made.Ok()) {
    theMainForm->SetStatus(ReasonFirst(made.error), "");
    return ShowError("Error on save file: " + made.error);
  }
  theFileActs.LoadProject(place.FileOf("zpj"));
  if (mavro::FileExists(source)) theMainForm->editTabs.OpenFile(source);
}

// One question stands for all files: a user who has agreed to overwrite a project means all of it.
FolderCopy CopyAsking(const std::string& target, const std::string& source,
                      const std::string& projectName, const std::vector<std::string>& renamed) {
  bool agreed = false;
  return CopyFolder(target, source, projectName, renamed, [&](const std::string& path) {
    if (!agreed)
      agreed = mavro::ConfirmLoss(
          path + "\nis there already!\nOverwrite it, and all others of this kind?");
    return agreed;
  });
}

void OpenCopy(const FolderCopy& copy, const ProjectPlace& place, const std::string& projectFile) {
  if (!copy.error.empty()) {
    theMainForm->SetStatus(ReasonFirst(copy.error), "");
    if (!copy.wasRefused) ShowError("Error on copy file: " + copy.error);
    return;
  }
  theFileActs.LoadProject(projectFile);
  const std::string source = place.folder + "main.cpp";
  if (mavro::FileExists(source)) theMainForm->editTabs.OpenFile(source);
}

bool IsIdentifier(const std::string& name) {
  const auto isLetter = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
  };
  return !name.empty() && isLetter(name[0]) &&
         std::ranges::all_of(name, [&](char c) { return isLetter(c) || (c >= '0' && c <= '9'); });
}

// The form in a header and a source of its name, with the program's main function.
void CreateForm(const ProjectPlace& place, const std::string& formName, bool withResource) {
  const std::string base = place.folder + formName;
  std::vector<std::string> others = {base + ".h"};
  if (formName != place.name) others.push_back(base + ".cpp");
  if (withResource) others.push_back(place.FileOf("rc"));
  if (!MayReplaceEach(others)) return;
  FormSkeleton skeleton;
  skeleton.className = formName;
  skeleton.split = true;
  skeleton.withMain = true;
  mavro::FileResult made = skeleton.WriteFiles(base);
  if (made.Ok())
    made = WriteFormProject(place, {skeleton.sourcePath, skeleton.headerPath}, withResource);
  OpenMade(made, place, skeleton.sourcePath);
}

// A demo can be opened where it is installed, so its project file bears the demo's name there.
void CreateFromRepository(const ProjectPlace& place, const std::string& folder) {
  const std::string ownName = std::filesystem::path(folder).filename().string() + ".zpj";
  OpenCopy(CopyAsking(place.folder, RepositoryPath() + folder, place.name, {ownName}), place,
           place.FileOf("zpj"));
}

void CreateFromImport(ProjectPlace place, Import import) {
  if (!theFileActs.CloseProject()) return;
  const std::string path = place.FileOf("zpj");
  if (!mavro::ReadFileText(path).isMissing && !MayOverwrite(place)) return;
  if (!import.risky.empty()) {
    std::string list;
    for (const std::string& item : import.risky) list += item + "\n";
    import.takesRisky = mavro::ConfirmLoss(
        "These switches can run programs while the project is built:\n\n" + list + "\nTake them?");
  }
  const mavro::FileResult made = WriteImport(import, path, Replacing::cAllowed);
  OpenMade(made, place,
           import.mainFile.empty() ? "" : AbsolutePath(import.folder + "/" + import.mainFile));
}

}  // namespace

void MakeNewProject(int firstPage, int demo) {
  const mavro::FileText list = mavro::ReadFileText(RepositoryPath() + "items.def");
  NewProjectDialog dialog(ReadRepositoryItems(list.text), FolderToOffer());
  dialog.Begin(firstPage, demo);
  if (dialog.Run(true) != mavro::Form::cOk) return;
  ProjectPlace place;
  if (!TakePlace(dialog.place, place)) return;
  const int page = dialog.ShownPage();
  const std::string formName = dialog.formName.text;
  if (page == NewProjectDialog::cFormsPage && !IsIdentifier(formName))
    return mavro::Information("Incorrect form name: " + formName);
  if (page == NewProjectDialog::cImportPage)
    return CreateFromImport(place, dialog.existing.Result());
  const bool isSingle = page == NewProjectDialog::cConsolePage && !dialog.IsMultiFile();
  if (!PrepareFolder(place, !isSingle)) return;
  theProject.implicit = false;
  switch (page) {
    case NewProjectDialog::cConsolePage: {
      const bool isCpp = dialog.IsCpp();
      if (!isCpp && !MayReplaceEach({place.FileOf("c")})) return;
      return OpenMade(WriteConsoleProject(place, isCpp), place, place.FileOf(isCpp ? "cpp" : "c"));
    }
    case NewProjectDialog::cFormsPage:
      return CreateForm(place, formName, dialog.resourceFile.checked);
    default:
      return CreateFromRepository(place, dialog.RepositoryFolder());
  }
}

void CloneProject() {
  if (!theProject.isOpen || theProject.implicit) return mavro::Information("No project loaded");
  theMainForm->SaveChangedFiles();
  CopyProjectDlg dialog(FolderToOffer());
  if (dialog.Run(true) != mavro::Form::cOk) return;
  ProjectPlace place;
  if (!TakePlace(dialog.place, place)) return;
  const std::string source = theProject.folder;
  const std::string fileName = theProject.name;
  if (!PrepareFolder(place, true)) return;
  OpenCopy(CopyAsking(place.folder, source, place.name, {}), place, place.folder + fileName);
}

}  // namespace zendry
