#include <optional>

#include "FileText.h"
#include "SystemDialogs.h"
#include "base/Paths.h"
#include "project/Project.h"

// The Makefile that a project is exported to.

namespace zendry {

namespace {

constexpr std::string_view cHead =
    "CC=gcc\n"
    "CCFLAGS=-Ic:/Apps/Zendry/mpich/Include -c\n"
    "LINKFLAGS=-Lc:/Apps/Zendry/mpich/lib -lmpich\n";

std::string ObjectName(const Project& project, const ProjectFile& file) {
  return ChangeExtension(project.RelativeIfSame(file.name), "o");
}

std::string Rule(const Project& project, const ProjectFile& file) {
  const std::string source = project.RelativeIfSame(file.name);
  std::string rule = ObjectName(project, file) + ": " + source;
  for (const IncludeRec& include : file.tags.includes)
    if (include.quoted) rule += " " + include.name;
  return rule + "\n\t$(CC) $(CCFLAGS) -c " + source + "\n";
}

std::string MakefileText(const Project& project) {
  std::string objects;
  std::string rules;
  for (const auto& file : project.Files()) {
    if (file->type > cCSource) continue;
    objects += " " + ObjectName(project, *file);
    rules += Rule(project, *file);
  }
  const std::string target = project.MakeRelative(project.target);
  std::string text(cHead);
  text += target + ":" + objects + "\n";
  text += "\t$(CC) -o " + target + " " + objects + " $(LINKFLAGS)\n";
  return text + rules;
}

// A Makefile that somebody wrote by hand isn't replaced without a question.
bool MayReplaceMakefile(const std::string& path) {
  const std::optional<std::string> text = mavro::ReadFileText(path);
  const bool isOurs = text ? text->empty() || text->starts_with(cHead) : !mavro::FileExists(path);
  return isOurs || mavro::Confirm(path + " exists!\nOverwrite?");
}

}  // namespace

mavro::SaveResult Project::ExportMakefile(const std::string& path) const {
  const std::string file = path.empty() ? "Makefile" : path;
  if (!MayReplaceMakefile(file)) return {file + ": was not replaced"};
  return mavro::SaveFileText(file, MakefileText(*this));
}

}  // namespace zendry
