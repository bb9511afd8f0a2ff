#include "project/Import.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <tuple>

#include "CommandLine.h"
#include "base/Paths.h"
#include "base/XmlTag.h"
#include "project/Project.h"
#include "project/ProjectFileFormat.h"

namespace zendry {

namespace {

namespace fs = std::filesystem;

bool IsSourceKind(int kind) {
  return kind == cCppSource || kind == cCSource;
}

std::string Count(size_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

// The order in which sources are tried for the program's `main`.
auto MainOrder(const ImportFile& file) {
  const auto depth = std::ranges::count(file.name, '/');
  const bool isCalledMain = ChangeExtension(BaseName(file.name), "") == "main.";
  return std::tuple(depth, !isCalledMain, std::string_view(file.name));
}

// A list of switches as the project file can hold it: the format has no room for some five hundred
// characters, nor for quotes in the middle.
class SwitchField {
 public:
  explicit SwitchField(std::string start) : text(std::move(start)) {}

  // False if the field can't hold this switch too.
  bool Add(const std::string& item) {
    const std::string longer = text.empty() ? item : text + " " + item;
    XmlTag tag;
    tag.begin("inc", 0, XmlTag::Ends::cAtOnce);
    tag.set("", "", "", longer, -1);
    // Macros of the field would change the rest of it.
    const bool isPlain = item.find_first_of("`@") == std::string::npos;
    if (!isPlain || !tag.ReadsBack()) return false;
    text = longer;
    return true;
  }
  const std::string& Text() const { return text; }

 private:
  std::string text;
};

// Programs that are not meant bring sources of their own, which may not fit to the one that is. All
// sources of that one are taken, wherever they lie.
void LeaveOutOtherTargets(Import& import) {
  std::set<std::string> others;
  std::string own;
  for (const ImportFile& file : import.files) {
    if (file.reason == cOtherMain) others.insert(file.target);
    if (file.name == import.mainFile) own = file.target;
  }
  for (ImportFile& file : import.files) {
    const bool isOwn = !own.empty() && file.target == own;
    if (isOwn && (file.reason == cTests || file.reason == cOtherSystem)) {
      file.taken = true;
      file.reason.clear();
    }
    const bool isOther = !file.target.empty() && file.target != own && others.contains(file.target);
    if (!isOther || !file.taken) continue;
    file.taken = false;
    file.reason = cOtherProgram;
  }
}

// True if the project file can hold a name.
bool FitsName(const std::string& name) {
  XmlTag tag;
  tag.begin("file", 1, XmlTag::Ends::cAtOnce);
  tag.set(name, "", "", "", -1);
  return tag.ReadsBack();
}

// Distributes the switches over the two fields of the project that compilers get.
void FillSwitches(Import& import, Project& project) {
  SwitchField include(project.includePath), options(""), link(""), libraries("");
  const auto note = [&](const std::string& item) {
    import.notes.push_back("the project file can't hold " + item + ", it is left out");
  };
  for (const std::string& folder : import.includeFolders) {
    const std::string item = mavro::QuoteArgument("-I" + folder);
    if (!include.Add(item) && !options.Add(item)) note(item);
  }
  std::vector<std::string> all = import.switches;
  if (import.takesRisky) all.insert(all.end(), import.risky.begin(), import.risky.end());
  for (const std::string& item : all)
    if (!options.Add(item) && !include.Add(item)) note(item);
  for (const std::string& item : import.linkSwitches)
    if (!link.Add(item)) note(item);
  for (const std::string& item : import.libraries)
    if (!libraries.Add(item)) note(item);
  project.includePath = include.Text();
  project.linkLibs = libraries.Text();
  const auto append = [](std::string& text, const std::string& more) {
    if (!more.empty()) text += (text.empty() ? "" : " ") + more;
  };
  for (BuildOptions* mode : {&project.debugOptions, &project.releaseOptions}) {
    append(mode->comp, options.Text());
    append(mode->link, link.Text());
  }
}

}  // namespace

size_t Import::TakenCount(int kind) const {
  return static_cast<size_t>(std::ranges::count_if(
      files, [kind](const ImportFile& file) { return file.taken && file.kind == kind; }));
}

std::vector<const ImportFile*> Import::Mains() const {
  std::vector<const ImportFile*> mains;
  for (const ImportFile& file : files)
    if (file.facts.hasMain && IsSourceKind(file.kind) && (file.taken || file.reason == cOtherMain))
      mains.push_back(&file);
  std::ranges::stable_sort(
      mains, [](const auto* a, const auto* b) { return MainOrder(*a) < MainOrder(*b); });
  return mains;
}

ImportFile* FindImportFile(Import& import, const std::string& name) {
  const std::string full = fs::path(AbsolutePath(name)).lexically_normal();
  const auto found = std::ranges::find_if(import.files, [&](const ImportFile& file) {
    return file.name == name || file.name == full || import.folder + "/" + file.name == full;
  });
  return found == import.files.end() ? nullptr : &*found;
}

std::string ChooseMain(Import& import, const std::string& wanted) {
  std::string chosen;
  for (ImportFile& file : import.files) {
    if (file.reason != cOtherMain && file.reason != cOtherProgram) continue;
    file.taken = true;
    file.reason.clear();
  }
  if (!wanted.empty()) {
    ImportFile* found = FindImportFile(import, wanted);
    if (!found) return wanted + " is not among the files found";
    if (!found->facts.hasMain) return wanted + " has no main";
    found->taken = true;
    found->reason.clear();
    chosen = found->name;
  } else if (const auto mains = import.Mains(); !mains.empty()) {
    chosen = mains.front()->name;
  }
  for (ImportFile& file : import.files) {
    const bool isOther = file.facts.hasMain && IsSourceKind(file.kind) && file.name != chosen;
    if (isOther && file.taken) {
      file.taken = false;
      file.reason = cOtherMain;
    } else if (file.name == chosen && !chosen.empty()) {
      file.taken = true;
      file.reason.clear();
    }
  }
  import.mainFile = chosen;
  LeaveOutOtherTargets(import);
  return "";
}

mavro::FileResult WriteImport(Import& import, const std::string& path, Replacing replacing) {
  if (replacing == Replacing::cRefused && !mavro::ReadFileText(path).isMissing)
    return {path + " is there already"};
  Project project;
  project.parse = false;
  project.Init(path, import.mainFile.empty() ? cStaticLib : cConsole);
  for (const ImportFile& file : import.files) {
    if (!file.taken) continue;
    if (file.kind == cResourceScript && !project.resourceFile.empty()) continue;
    if (!FitsName(file.name)) {
      import.notes.push_back("the project file can't hold the name " + file.name);
      continue;
    }
    project.AddFile(IsAbsolutePath(file.name) ? file.name : import.folder + "/" + file.name);
  }
  if (!project.resourceFile.empty())
    project.resourceFile = project.RelativeIfSame(project.resourceFile);
  project.parse = true;
  FillSwitches(import, project);
  const ProjectText content = WriteProjectText(project);
  if (!content.unwritable.empty())
    return {path + ": the project file can't hold the name " + content.unwritable};
  return mavro::SaveFileText(path, content.text);
}

std::vector<std::string> ImportReport(const Import& import) {
  std::vector<std::string> lines;
  const size_t sources = import.TakenCount(cCppSource) + import.TakenCount(cCSource);
  lines.push_back(Count(sources, "source", "sources") + " and " +
                  Count(import.TakenCount(cHeader), "header", "headers") + "; " +
                  (import.mainFile.empty() ? "a static library, because no source has a main"
                                           : "a console program, main in " + import.mainFile));
  std::map<std::string, std::vector<std::string>> leftOut;
  for (const ImportFile& file : import.files)
    if (!file.taken && !file.reason.empty()) leftOut[file.reason].push_back(file.name);
  // Each file with another main is named: one of them may be the program that was meant.
  constexpr size_t cMostNames = 8;
  for (const auto& [reason, names] : leftOut) {
    const size_t shown = reason == cOtherMain ? names.size() : std::min(names.size(), cMostNames);
    std::string line = "left out (" + reason + "): ";
    for (size_t i = 0; i < shown; ++i) line += (i ? ", " : "") + names[i];
    if (shown < names.size()) line += " and " + std::to_string(names.size() - shown) + " more";
    lines.push_back(line);
  }
  for (const std::string& item : import.risky)
    lines.push_back(
        (import.takesRisky ? "can run a program, taken: " : "can run a program, left out: ") +
        item);
  lines.insert(lines.end(), import.notes.begin(), import.notes.end());
  lines.insert(lines.end(), import.findings.begin(), import.findings.end());
  return lines;
}

const char* WhyLeftOut(const std::string& folderName) {
  struct Row {
    std::string_view name;
    const char* reason;
  };
  constexpr Row cRows[] = {
      {"test", cTests},          {"tests", cTests},         {"testing", cTests},
      {"testdata", cTests},      {"unittest", cTests},      {"unittests", cTests},
      {"example", cTests},       {"examples", cTests},      {"sample", cTests},
      {"samples", cTests},       {"demo", cTests},          {"demos", cTests},
      {"bench", cTests},         {"benches", cTests},       {"benchmark", cTests},
      {"benchmarks", cTests},    {"contrib", cTests},       {"doc", cTests},
      {"docs", cTests},          {"debian", cTests},        {"win", cOtherSystem},
      {"win32", cOtherSystem},   {"windows", cOtherSystem}, {"msvc", cOtherSystem},
      {"vs", cOtherSystem},      {"vms", cOtherSystem},     {"amiga", cOtherSystem},
      {"msdos", cOtherSystem},   {"macos", cOtherSystem},   {"osx", cOtherSystem},
      {"android", cOtherSystem}, {"ios", cOtherSystem},
  };
  std::string lower = folderName;
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  for (const Row& row : cRows)
    if (lower == row.name) return row.reason;
  const bool isOfTests = lower.find("fuzz") != std::string::npos || IsNamedAsTest(lower);
  return isOfTests ? cTests : nullptr;
}

bool IsNamedAsTest(const std::string& name) {
  const std::string stem = name.substr(0, name.rfind('.'));
  constexpr std::string_view cEndings[] = {"_test",     "-test",      "_tests",     "-tests",
                                           "_unittest", "_unittests", "_benchmark", "-benchmark"};
  return stem.starts_with("test_") || stem.starts_with("test-") ||
         std::ranges::any_of(cEndings, [&](std::string_view end) { return stem.ends_with(end); });
}

void TakeUnusualIfAlone(Import& import) {
  const auto isUsual = [](const ImportFile& file) { return file.taken && IsSourceKind(file.kind); };
  if (std::ranges::any_of(import.files, isUsual)) return;
  for (ImportFile& file : import.files) {
    if (file.reason != cTests && file.reason != cOtherSystem) continue;
    file.taken = true;
    file.reason.clear();
  }
}

std::string SeenFrom(const std::string& folder, const std::string& path) {
  const fs::path full = fs::path(path).lexically_normal();
  const fs::path seen = full.lexically_relative(folder);
  // A folder that shares nothing but the root is easier to read by its full name.
  const bool isNear = !seen.empty() && !seen.string().starts_with("../../..");
  std::string name = isNear ? seen.string() : full.string();
  if (name.size() > 1 && name.ends_with('/')) name.pop_back();
  return name;
}

}  // namespace zendry
