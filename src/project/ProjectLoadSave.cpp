#include "SystemDialogs.h"
#include "base/DiskStamp.h"
#include "base/Paths.h"
#include "base/ReasonFirst.h"
#include "base/Shell.h"
#include "config/IdeSession.h"
#include "project/Project.h"
#include "project/ProjectFileFormat.h"
#include "project/SessionFile.h"

// Opening, saving and closing a project.

namespace zendry {

namespace {

constexpr size_t cMaxShown = 200;

// A full path without "/../", unless the path without it leads to another file because of a link.
std::string FullProjectPath(const std::string& path) {
  std::string full = AbsolutePath(path);
  std::string tidy = TidyPath(full);
  const DiskStamp stamp = ReadDiskStamp(full);
  const bool isOther = stamp.exists && !AreOneFile(stamp, ReadDiskStamp(tidy));
  return isOther ? full : tidy;
}

mavro::FileResult Judge(const std::string& path, const ProjectReading& reading) {
  if (!reading.tooLong.empty()) return {path + ": " + reading.tooLong};
  if (!reading.hasElements) return {path + ": is not a project file"};
  if (!reading.isComplete) return {"", path + ": the end is missing, it may have been cut"};
  return {};
}

std::string Shortened(const std::string& value) {
  return value.size() <= cMaxShown ? value : value.substr(0, cMaxShown) + "...";
}

}  // namespace

mavro::FileResult Project::Load(const std::string& path) {
  const std::string fullPath = FullProjectPath(path);
  Init(fullPath, cConsole);
  const mavro::FileText file = mavro::ReadFileText(fullPath);
  couldBeRead = file.Ok();
  if (!file.Ok()) return file;
  IdeSession::AddRecent(theIdeSession.recentProjects, fullPath);
  const ProjectReading reading = ReadProjectText(file.text, *this);
  couldBeRead = reading.tooLong.empty();
  if (reading.isComplete) knownText = file.text;
  implicit = false;
  SetFileName(fullPath);  // again: the name of the target follows the type just read
  shell->TagsChanged();
  LoadReferences();
  isLoading = true;
  if (couldBeRead) theIdeSession.NoteError(LoadSession(SessionPath(), *this, *shell).Words());
  isLoading = false;
  return Judge(fullPath, reading);
}

std::string Project::ChooseSavePath() const {
  mavro::FileQuestion question;
  question.mode = mavro::FileQuestion::cSave;
  question.title = "Save project";
  question.folder = folder;
  question.name = name;
  question.filter = "Project Files (*.zpj)|*.zpj";
  question.defaultExtension = "zpj";
  const std::vector<std::string> chosen = mavro::Dialogs().chooseFiles(question);
  return chosen.empty() ? "" : chosen.front();
}

// Asks before content is lost: the file may not have been read whole, or another program may have
// written it since.
bool Project::MayReplace(const std::string& path) const {
  const mavro::FileText old = mavro::ReadFileText(path);
  const bool nothingLost =
      old.Ok() ? old.text.empty() || old.text == knownText : !mavro::FileExists(path);
  return nothingLost ||
         mavro::ConfirmLoss(path + "\nholds what was not read into this project!\nOverwrite?");
}

bool Project::Write(const std::string& path) {
  ProjectText content = WriteProjectText(*this);
  if (!content.unwritable.empty()) {
    mavro::Information("Project file can't hold this value, it was not saved!\n" +
                       Shortened(content.unwritable));
    return false;
  }
  const mavro::FileResult result = mavro::SaveFileText(path, content.text);
  if (!result.Ok()) {
    shell->SetStatus(ReasonFirst(result.error), "");
    return false;
  }
  knownText = std::move(content.text);
  couldBeRead = true;
  modified = false;
  implicit = false;
  return true;
}

// A save that fails leaves the project under its old name.
bool Project::SaveUnder(const std::string& path) {
  const std::string oldPath = name.empty() ? "" : GetFullPath(name);
  const bool wasOpen = isOpen;
  SetFileName(path);
  isOpen = true;
  if (Write(path)) {
    IdeSession::AddRecent(theIdeSession.recentProjects, path);
    return true;
  }
  SetFileName(oldPath);
  isOpen = wasOpen;
  return false;
}

bool Project::Save(bool saveAs) {
  if (name.empty() || saveAs || !isOpen) {
    const std::string path = ChooseSavePath();
    return !path.empty() && SaveUnder(path);
  }
  const std::string path = GetFullPath(name);
  return MayReplace(path) && Write(path);
}

void Project::KeepSession() {
  const bool hasSession = isOpen && !name.empty() && !implicit && couldBeRead && !isLoading;
  if (hasSession) theIdeSession.NoteError(SaveSession(SessionPath(), *this, *shell).error);
}

bool Project::Close() {
  KeepSession();
  if (!shell->MayCloseAllFiles()) return false;
  if (modified && isOpen) {
    bool cancelled = false;
    const bool save = mavro::Confirm("Project file was not saved!\nSave?", &cancelled);
    if (cancelled || (save && !Save(false))) return false;
  }
  shell->CloseAllFiles();
  shell->ProjectReplaced();
  Clear();
  return true;
}

}  // namespace zendry
