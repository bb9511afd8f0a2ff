#include "Rescue.h"

#include <unistd.h>

#include "Assert.h"
#include "ControlBytes.h"
#include "FileText.h"
#include "Project.h"
#include "ProjectFileFormat.h"
#include "SystemDialogs.h"

namespace zendry {

namespace {

const RescueCopies cCopies("project");
constexpr int cTheProject = 1;  // a program has one

void RescueNow() {
  KeepRescueCopy(theProject);
}

}  // namespace

void KeepRescueCopy(const Project& project) {
  const bool unsaved = project.isOpen && project.modified && !project.implicit;
  if (!unsaved || project.name.empty()) return DropRescueCopy();
  cCopies.Keep(cTheProject, project.GetFullPath(project.name), WriteProjectText(project).text);
}

void DropRescueCopy() {
  cCopies.Drop(cTheProject);
}

std::vector<RescueCopy> FindRescuedProjects() {
  std::vector<RescueCopy> found = cCopies.OfTheDead();
  std::erase_if(found, [](const RescueCopy& copy) { return copy.path.empty(); });
  return found;
}

std::string OfferRescuedProjects() {
  std::string saved;
  for (const RescueCopy& rescued : FindRescuedProjects()) {
    bool cancelled = false;
    const std::string question = "Zendry ended before this project was saved:\n" +
                                 MarkControlBytes(rescued.path) + "\n\nSave its changes?";
    const bool wanted = mavro::Confirm(question, &cancelled);
    if (cancelled) continue;
    if (wanted) {
      const mavro::SaveResult result = mavro::SaveFileText(rescued.path, rescued.content);
      if (!result.Ok()) {
        mavro::Information(result.error);
        continue;
      }
      saved = rescued.path;
    }
    unlink(rescued.file.c_str());
  }
  return saved;
}

void RescueOnLastWords() {
  mavro::AddLastWords(RescueNow);
}

}  // namespace zendry
