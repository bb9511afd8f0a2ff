#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "SystemDialogs.h"
#include "project/Project.h"
#include "project/ProjectFileFormat.h"

// Reads a project file, and what was read from it is written, read and written again: both times
// the same text must come.

namespace {

// "-Os" in a form project is changed by every reading, one at a time.
bool ChangesSwitches(const zendry::Project& project) {
  return project.type == zendry::cFormApplication &&
         (project.debugOptions.comp + project.releaseOptions.comp).find("-Os") != std::string::npos;
}

void Read(std::string_view text, zendry::Project& project) {
  project.Init("/work/demo/p.zpj", zendry::cConsole);
  project.parse = false;  // no file is opened
  zendry::ReadProjectText(text, project);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  mavro::Dialogs().message = [](const std::string&, const std::string&, int) {
    return mavro::Answer::cOk;
  };
  zendry::Project project;
  Read(text, project);
  for (const auto& file : project.Files())
    if (!project.FindFile(file->name)) std::abort();
  const zendry::ProjectText written = zendry::WriteProjectText(project);
  if (!written.unwritable.empty() || ChangesSwitches(project)) return 0;
  zendry::Project again;
  Read(written.text, again);
  if (zendry::WriteProjectText(again).text != written.text) std::abort();
  return 0;
}
