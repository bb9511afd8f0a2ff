#include "Rescue.h"

#include <dirent.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

#include "Assert.h"
#include "ControlBytes.h"
#include "FileText.h"
#include "Project.h"
#include "ProjectFileFormat.h"
#include "SystemDialogs.h"

// A rescue copy is named after the process that made it and holds the path of the project file, a
// NUL, which no path has, and the text of the file.

namespace zendry {

namespace {

constexpr std::string_view cPrefix = "project-";

std::string OwnCopy() {
  const std::string folder = mavro::RescueFolder();
  return folder.empty() ? "" : folder + "/" + std::string(cPrefix) + std::to_string(getpid());
}

// The process that a copy is named after; 0 for a file that is no copy of a project.
pid_t MakerOf(std::string_view fileName) {
  if (!fileName.starts_with(cPrefix)) return 0;
  const std::string digits(fileName.substr(cPrefix.size()));
  return digits.find_first_not_of("0123456789") == std::string::npos ? std::atoi(digits.c_str())
                                                                     : 0;
}

bool IsAlive(pid_t process) {
  return kill(process, 0) == 0 || errno == EPERM;
}

std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(folder.c_str()), closedir);
  while (const dirent* entry = stream ? readdir(stream.get()) : nullptr)
    names.emplace_back(entry->d_name);
  return names;
}

std::optional<RescuedProject> ReadCopy(const std::string& copy) {
  const std::optional<std::string> content = mavro::ReadFileText(copy);
  const size_t end = content ? content->find('\0') : std::string::npos;
  if (end == std::string::npos || end == 0) return std::nullopt;
  return RescuedProject{copy, content->substr(0, end), content->substr(end + 1)};
}

void RescueNow() {
  KeepRescueCopy(theProject);
}

}  // namespace

void KeepRescueCopy(const Project& project) {
  const bool unsaved = project.isOpen && project.modified && !project.implicit;
  if (!unsaved || project.name.empty()) return DropRescueCopy();
  const std::string copy = OwnCopy();
  if (copy.empty()) return;
  std::string content = project.GetFullPath(project.name) + '\0';
  content += WriteProjectText(project).text;
  mavro::SaveFileText(copy, content);
}

void DropRescueCopy() {
  const std::string copy = OwnCopy();
  if (!copy.empty()) unlink(copy.c_str());
}

std::vector<RescuedProject> FindRescuedProjects() {
  std::vector<RescuedProject> found;
  const std::string folder = mavro::RescueFolder();
  if (folder.empty()) return found;
  for (const std::string& name : NamesIn(folder)) {
    const pid_t maker = MakerOf(name);
    if (maker <= 0 || IsAlive(maker)) continue;
    if (std::optional<RescuedProject> rescued = ReadCopy(folder + "/" + name))
      found.push_back(*std::move(rescued));
  }
  return found;
}

std::string OfferRescuedProjects() {
  std::string saved;
  for (const RescuedProject& rescued : FindRescuedProjects()) {
    bool cancelled = false;
    const std::string question = "Zendry ended before this project was saved:\n" +
                                 MarkControlBytes(rescued.path) + "\n\nSave its changes?";
    const bool wanted = mavro::Confirm(question, &cancelled);
    if (cancelled) continue;
    if (wanted) {
      const mavro::SaveResult result = mavro::SaveFileText(rescued.path, rescued.text);
      if (!result.Ok()) {
        mavro::Information(result.error);
        continue;
      }
      saved = rescued.path;
    }
    unlink(rescued.copy.c_str());
  }
  return saved;
}

void RescueOnLastWords() {
  mavro::AddLastWords(RescueNow);
}

}  // namespace zendry
