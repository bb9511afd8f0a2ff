#include "build/ProjectDangers.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string_view>

#include "CommandLine.h"
#include "FileText.h"
#include "base/Paths.h"
#include "base/TextDigest.h"
#include "build/CommandLines.h"
#include "build/Launchers.h"
#include "config/BuildSettings.h"
#include "config/IdeConfig.h"
#include "project/Project.h"
#include "project/RiskySwitches.h"

namespace zendry {

namespace {

using Arguments = std::vector<std::string>;

constexpr std::string_view cShellMarks = "<>|&;";

std::string_view WithoutDashes(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of('-'), text.size()));
}

// An argument of the linker, which also takes the first letters of a name for the whole name, the
// assembler or the preprocessor.
bool IsInnerDanger(std::string_view argument) {
  const std::string_view name = WithoutDashes(argument);
  return argument.starts_with('@') || name.starts_with("plug") || name.starts_with("fplugin") ||
         name.starts_with("iplugindir") || name.starts_with("dynamic-lin") ||
         (argument.starts_with("-I") && argument.find('/') != std::string_view::npos &&
          argument.find("ld") != std::string_view::npos);
}

std::string Joined(const Arguments& arguments, size_t first, size_t count) {
  std::string text = arguments[first];
  for (size_t i = 1; i < count && first + i < arguments.size(); ++i)
    text += " " + arguments[first + i];
  return text;
}

// Finds the dangers of one project.
class DangerSearch {
 public:
  explicit DangerSearch(const Project& its) : project(its) {}

  std::vector<ProjectDanger> Find();

 private:
  void SearchOptions(const char* place, const std::string& line);
  size_t SearchOption(const char* place, const Arguments& arguments, size_t at);
  bool HasInnerDanger(std::string_view argument) const;
  void SearchOutput();
  void SearchTools(int set);
  bool IsInside(const std::string& path) const;
  std::string ToolInProject(const std::string& tool) const;
  void Add(const char* place, const std::string& text, const std::string& optionFile = "");

  const Project& project;
  std::vector<ProjectDanger> found;
};

std::vector<ProjectDanger> DangerSearch::Find() {
  SearchOptions("Include search path", project.includePath);
  SearchOptions("Linker search path", project.linkerPath);
  SearchOptions("Link library", project.linkLibs);
  SearchOptions("Debug, Compile", project.debugOptions.comp);
  SearchOptions("Debug, Link", project.debugOptions.link);
  SearchOptions("Relase, Compile", project.releaseOptions.comp);
  SearchOptions("Relase, Link", project.releaseOptions.link);
  SearchOutput();
  if (project.programParams.find_first_of(cShellMarks) != std::string::npos)
    Add("Program parameters, read by a shell", project.programParams);
  std::set<int> sets = {CompilerSet(project.debugOptions.gcc),
                        CompilerSet(project.releaseOptions.gcc)};
  for (const int set : sets) SearchTools(set);
  return std::move(found);
}

void DangerSearch::Add(const char* place, const std::string& text, const std::string& optionFile) {
  ProjectDanger danger{place, text, project.folder + "\n" + text};
  if (!optionFile.empty()) {
    const mavro::FileText file = mavro::ReadFileText(project.GetFullPath(optionFile));
    if (file.Ok()) danger.key += "\n" + std::to_string(DigestOf(file.text)) + "\n" + file.text;
  }
  found.push_back(std::move(danger));
}

void DangerSearch::SearchOptions(const char* place, const std::string& line) {
  const Arguments arguments = mavro::SplitCommandLine(line);
  for (size_t i = 0; i < arguments.size();) i += SearchOption(place, arguments, i);
}

// Answers the number of arguments that it has looked at.
size_t DangerSearch::SearchOption(const char* place, const Arguments& arguments, size_t at) {
  const std::string& argument = arguments[at];
  const RiskySwitch* found = FindRiskySwitch(argument);
  if (!found || found->risk == Risk::cUnasked) return 1;
  const bool isAlone = found->takesNext && argument.size() == found->begin.size();
  const std::string next = at + 1 < arguments.size() ? arguments[at + 1] : "";
  if (found->risk == Risk::cHandsOnNext) {
    if (isAlone && IsInnerDanger(next))
      Add(place, Joined(arguments, at, 2), next.starts_with('@') ? next.substr(1) : "");
    return isAlone ? 2 : 1;
  }
  if (found->risk == Risk::cHandsOn) {
    if (HasInnerDanger(std::string_view(argument).substr(found->begin.size())))
      Add(place, argument);
    return 1;
  }
  // The value of "@file" comes at once, that of the others after "=".
  const size_t start = argument.find('=') + 1;
  const std::string value = isAlone ? next : argument.substr(argument[0] == '@' ? 1 : start);
  Add(place, Joined(arguments, at, isAlone ? 2 : 1), found->holdsOptions ? value : "");
  return isAlone ? 2 : 1;
}

bool DangerSearch::HasInnerDanger(std::string_view list) const {
  while (!list.empty()) {
    const std::string_view part = list.substr(0, list.find(','));
    if (IsInnerDanger(part)) return true;
    list.remove_prefix(std::min(part.size() + 1, list.size()));
  }
  return false;
}

void DangerSearch::SearchOutput() {
  const std::string& name = project.outName;
  const bool leadsOut =
      IsAbsolutePath(name) || ("/" + name + "/").find("/../") != std::string::npos;
  if (leadsOut) Add("Output name", name);
}

bool DangerSearch::IsInside(const std::string& path) const {
  std::error_code error;
  const std::string real = std::filesystem::weakly_canonical(path, error).string();
  const std::string folder = std::filesystem::weakly_canonical(project.folder, error).string();
  return !folder.empty() && (real + "/").starts_with(folder + "/");
}

// The tool's path if it is one in the project's folder; a relative entry of the PATH leads there,
// since builds run in that folder.
std::string DangerSearch::ToolInProject(const std::string& tool) const {
  if (tool.find('/') != std::string::npos) {
    const std::string path = project.GetFullPath(tool);
    return IsInside(path) ? path : "";
  }
  const char* const entries = std::getenv("PATH");
  std::string_view rest = entries ? entries : "";
  while (!rest.empty()) {
    const std::string entry(rest.substr(0, rest.find(':')));
    rest.remove_prefix(std::min(entry.size() + 1, rest.size()));
    const std::string path = project.GetFullPath(entry.empty() ? "." : entry) + "/" + tool;
    if (mavro::FileExists(path)) return IsInside(path) ? path : "";
  }
  return "";
}

void DangerSearch::SearchTools(int set) {
  const std::string launcher = LauncherOf(theIdeConfig, theBuildSettings, set);
  std::vector<std::string> tools;
  for (const std::string* tool : {&theIdeConfig.gcc, &theIdeConfig.gpp, &theIdeConfig.linker,
                                  &theIdeConfig.ar, &theIdeConfig.gdb, &theIdeConfig.windres})
    tools.push_back(ToolPath(theIdeConfig, set, *tool));
  if (!launcher.empty()) tools.push_back(launcher);
  std::set<std::string> listed;
  for (const std::string& tool : tools)
    if (const std::string path = ToolInProject(tool); !path.empty() && listed.insert(path).second)
      Add("Tool in the project's folder", path);
}

}  // namespace

std::vector<ProjectDanger> FindDangers(const Project& project) {
  return DangerSearch(project).Find();
}

}  // namespace zendry
