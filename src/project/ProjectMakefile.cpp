#include "FileText.h"
#include "SystemDialogs.h"
#include "base/Paths.h"
#include "base/TextMark.h"
#include "config/IdeConfig.h"
#include "project/Project.h"

// The Makefile that a project is exported to.

namespace zendry {

namespace {

constexpr char cMarkStart[] = "# Made by Zendry, which replaces it as long as nobody changes it: ";

// A path in the form that it needs among the switches of a rule, which the shell reads.
std::string ShellPath(std::string_view path) {
  std::string quoted;
  bool isPlain = true;
  for (const char c : path) {
    isPlain &= c != ' ' && c != '\'' && c != '"' && c != '$' && c != '`' && c != '\\' && c != '#';
    if (c == '$') quoted += "\\$";  // the shell's escape, and make's
    if (c == '#' || c == '"' || c == '`' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return isPlain ? quoted : '"' + quoted + '"';
}

// The switches with each "@" replaced by the installation's folder.
std::string Switches(std::string_view text) {
  std::string root = InstallRoot(theIdeConfig.appDir);
  if (root.ends_with('/')) root.pop_back();
  std::string switches;
  for (const char c : text) {
    if (c == '@')
      switches += ShellPath(root);
    else
      switches += c;
  }
  return switches;
}

std::string Line(std::string_view variable, std::initializer_list<std::string_view> switches) {
  std::string line = std::string(variable) + "=";
  for (const std::string_view each : switches)
    if (!each.empty()) line.append(line.ends_with('=') ? "" : " ").append(each);
  return line + "\n";
}

std::string Head(const Project& project) {
  const std::string compile = Switches(project.includePath);
  const std::string link = Switches(project.linkerPath);
  return "CC=gcc\n" + Line("CCFLAGS", {compile, Switches(cBasicIncludes), "-c"}) +
         Line("LINKFLAGS", {link, Switches(cBasicLibs), project.linkLibs});
}

// The last line of a Makefile that this program writes. It shows if the text before it was changed.
std::string MarkOf(std::string_view text) {
  return cMarkStart + HexadecimalMark(TextMark(text)) + "\n";
}

bool IsOurs(std::string_view text) {
  const size_t start = text.rfind(cMarkStart);
  return start != std::string_view::npos && text.substr(start) == MarkOf(text.substr(0, start));
}

std::string ObjectName(const Project& project, const ProjectFile& file) {
  return ChangeExtension(project.RelativeIfSame(file.name), "o");
}

std::string Rule(const Project& project, const ProjectFile& file) {
  const std::string source = project.RelativeIfSame(file.name);
  std::string rule = ObjectName(project, file) + ": " + source;
  for (const IncludeRec& include : file.Includes())
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
  std::string text = Head(project);
  text += target + ":" + objects + "\n";
  text += "\t$(CC) -o " + target + " " + objects + " $(LINKFLAGS)\n";
  text += rules;
  return text + MarkOf(text);
}

// Asks before it replaces a Makefile that was written or changed by hand, or that can't be read.
bool MayReplaceMakefile(const std::string& path) {
  const mavro::FileText old = mavro::ReadFileText(path);
  const bool nothingLost = old.Ok() ? old.text.empty() || IsOurs(old.text) : old.isMissing;
  return nothingLost || mavro::Confirm(path + " exists!\nOverwrite?");
}

}  // namespace

mavro::FileResult Project::ExportMakefile(const std::string& path) const {
  if (path.empty() && folder.empty()) return {"Makefile: the project has no folder yet"};
  const std::string file = path.empty() ? GetFullPath("Makefile") : path;
  if (!MayReplaceMakefile(file)) return {file + ": was not replaced"};
  return mavro::SaveFileText(file, MakefileText(*this));
}

}  // namespace zendry
