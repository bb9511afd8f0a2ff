#include <algorithm>
#include <cctype>
#include <set>
#include <string_view>
#include <vector>

#include "CommandLine.h"
#include "FilePath.h"
#include "FileText.h"
#include "SystemDialogs.h"
#include "base/Paths.h"
#include "base/TextMark.h"
#include "config/IdeConfig.h"
#include "project/ChosenSets.h"
#include "project/Project.h"

// The Makefile that a project is exported to.

namespace zendry {

namespace {

constexpr char cMarkStart[] = "# Made by Zendry, which replaces it as long as nobody changes it: ";

// True for what means itself to the shell and to make wherever it stands in a word.
bool IsPlain(char c) {
  const bool isAscii = static_cast<unsigned char>(c) < 0x80;
  return !isAscii || std::isalnum(static_cast<unsigned char>(c)) != 0 ||
         std::string_view("_-+=./,:@%^").find(c) != std::string_view::npos;
}

// A word in the form that it needs among the switches of a rule, which the shell reads.
std::string ShellWord(std::string_view word) {
  std::string quoted;
  bool isPlain = !word.empty();
  for (const char c : word) {
    isPlain &= IsPlain(c);
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
      switches += ShellWord(root);
    else
      switches += c;
  }
  return switches;
}

// The same for switches that the build hands to the tool as they are, without a shell.
std::string Words(std::string_view commandLine) {
  std::string words;
  for (const std::string& word : mavro::SplitCommandLine(commandLine))
    words.append(words.empty() ? "" : " ").append(ShellWord(word));
  return words;
}

// The switches of a library set, whose macros the first build has expanded.
std::string SetSwitches(const LibSet& set, const std::string& switches) {
  return set.expanded ? Words(switches) : Switches(switches);
}

std::string Line(std::string_view variable, std::initializer_list<std::string_view> switches) {
  std::string line = std::string(variable) + "=";
  for (const std::string_view each : switches)
    if (!each.empty()) line.append(line.ends_with('=') ? "" : " ").append(each);
  return line + "\n";
}

// Both lines have the switches of the build in its order: those of the mode that the project is in,
// of the project, of its library set, of the compiler set.
std::string Head(const Project& project) {
  const BuildOptions mode = project.current ? *project.current : BuildOptions();
  const ToolSet& tools = theIdeConfig.toolSets[static_cast<size_t>(CompilerSet(mode.gcc))];
  const LibSet* const set = LibrarySetOf(project, theIdeConfig);
  // CC links a program of C++ only with the library that g++ would add.
  const bool isCpp = std::ranges::any_of(project.Files(),
                                         [](const auto& file) { return file->type == cCppSource; });
  return "CC=gcc\n" +
         Line("CCFLAGS", {Words(mode.comp), Switches(project.includePath), Switches(cBasicIncludes),
                          set ? SetSwitches(*set, set->include) : "", Words(tools.flags), "-c"}) +
         Line("LINKFLAGS", {Switches(project.linkerPath), Switches(cBasicLibs), project.linkLibs,
                            set ? SetSwitches(*set, set->link) : "", Words(mode.link),
                            isCpp ? std::string_view("-lstdc++ -lm") : ""});
}

// The last line of a Makefile that this program writes. It shows if the text before it was changed.
std::string MarkOf(std::string_view text) {
  return cMarkStart + HexadecimalMark(TextMark(text)) + "\n";
}

bool IsOurs(std::string_view text) {
  const size_t start = text.rfind(cMarkStart);
  return start != std::string_view::npos && text.substr(start) == MarkOf(text.substr(0, start));
}

struct Source {
  const ProjectFile* file;
  std::string name;
  std::string object;
};

// What the build compiles. Each source has its object beside it; the second one of a name there
// gets a number, as "x.cpp" beside "x.c".
std::vector<Source> SourcesOf(const Project& project) {
  std::vector<Source> sources;
  std::set<std::string> taken;
  for (const auto& file : project.Files()) {
    if (file->type != cCppSource && file->type != cCSource) continue;
    const std::string name = project.RelativeIfSame(file->name);
    const std::string plain = ChangeExtension(name, "o");
    std::string object = plain;
    for (int number = 2; !taken.insert(object).second; ++number)
      object = mavro::FolderOf(plain) + std::to_string(number) + "-" + BaseName(plain);
    sources.push_back({file.get(), name, object});
  }
  return sources;
}

// The file that a quoted include of a source means, as make needs it; empty if it isn't there,
// because make would end at a file that it can't make.
std::string Included(const Project& project, const Source& source, const std::string& name) {
  const std::string beside = mavro::FolderOf(source.file->name) + name;
  if (mavro::FileExists(beside)) return project.RelativeIfSame(TidyPath(beside));
  if (const std::string known = project.ResolveInclude(name); !known.empty())
    return project.RelativeIfSame(known);
  return mavro::FileExists(project.GetFullPath(name)) ? name : "";
}

// The compiler puts an object of its own naming into the current folder.
std::string Rule(const Project& project, const Source& source) {
  std::string rule = source.object + ": " + source.name;
  for (const IncludeRec& include : source.file->Includes()) {
    if (!include.quoted) continue;
    const std::string header = Included(project, source, include.name);
    if (!header.empty()) rule += " " + header;
  }
  const bool isUsual = source.object == ChangeExtension(BaseName(source.name), "o");
  return rule + "\n\t$(CC) $(CCFLAGS) -c " + source.name + (isUsual ? "" : " -o " + source.object) +
         "\n";
}

std::string MakefileText(const Project& project) {
  std::string objects;
  std::string rules;
  for (const Source& source : SourcesOf(project)) {
    objects += " " + source.object;
    rules += Rule(project, source);
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
