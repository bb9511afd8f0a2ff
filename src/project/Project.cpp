#include "project/Project.h"

#include <string_view>

#include "base/Paths.h"
#include "base/QuietShell.h"

namespace zendry {

Project theProject;

namespace {

// The shell of a project that has no other: it does nothing.
Shell& MuteShell() {
  static QuietShell shell;
  return shell;
}

std::string WithoutExtension(const std::string& name) {
  const size_t dot = name.rfind('.');
  return dot == 0 ? name : name.substr(0, dot);
}

// The path from the folder to a file that is plainly below it, as nearly all are; empty for a path
// that needs a closer look.
std::string_view PlainRestOf(std::string_view path, std::string_view folder) {
  const bool isBelow = !folder.empty() && path.size() > folder.size() + 1 &&
                       path.starts_with(folder) && path[folder.size()] == '/';
  if (!isBelow) return {};
  const std::string_view rest = path.substr(folder.size() + 1);
  const bool isPlain = !rest.starts_with('/') && !IsAbsolutePath(rest) &&
                       path.find('\\') == path.npos && path.find("/../") == path.npos;
  return isPlain ? rest : std::string_view();
}

}  // namespace

Project::Project() : shell(&MuteShell()) {}

Project::~Project() = default;

void Project::SetShell(Shell* newShell) {
  shell = newShell ? newShell : &MuteShell();
}

void Project::SetInstallFolder(const std::string& newFolder) {
  installFolder = newFolder;
  if (installFolder.ends_with('/')) installFolder.pop_back();
  cRefFile = installFolder + "/Defs/cref.tgd";
  stlRefFile = installFolder + "/Defs/stlref.tgd";
  mavroRefFile = installFolder + "/Defs/mavroref.tgd";
}

void Project::Init(const std::string& path, int newType) {
  shell->ProjectReplaced();
  Begin(path, newType);
}

void Project::Begin(const std::string& path, int newType) {
  type = newType;
  SetDefaultOptions(newType);
  isOpen = true;
  couldBeRead = true;
  SetFileName(path);
}

void Project::Clear() {
  shell->ClearTree();
  DropIndex();
  files.clear();
  shell->TagsChanged();
  knownText.clear();
  name.clear();
  resourceFile.clear();
  lastFileId = 0;
  type = cConsole;
  isOpen = false;
  includePath = "-I@/mylib";
  linkerPath = "-L@/mylib";
  linkLibs.clear();
  parse = true;
}

void Project::OpenSingleFile(const std::string& path) {
  const int kind = FileKind(path);
  if (kind != cCppSource && kind != cCSource) return;
  const std::string fullPath = TidyPath(AbsolutePath(path));
  implicit = true;
  Clear();
  Begin(ChangeExtension(fullPath, "zpj"), cConsole);
  AddFile(BaseName(fullPath));
  shell->SelectTreeRoot();
  shell->TagsChanged();
  LoadReferences();
}

void Project::SetDefaultOptions(int forType) {
  debugOptions = {0, "-g", "-g"};
  releaseOptions = {0, forType == cFormApplication ? "-O2 -s" : "-O2", "-s"};
}

void Project::SetFileName(const std::string& path) {
  const size_t slash = path.rfind('/');
  const bool hasFolder = slash != std::string::npos;
  name = hasFolder ? path.substr(slash + 1) : path;
  folder = hasFolder ? path.substr(0, slash) : "";
  target = ChangeExtension(name, type == cStaticLib ? "a" : "exe");
  SetMode(mode);
}

void Project::SetMode(int newMode) {
  mode = newMode;
  current = mode == cDebug ? &debugOptions : &releaseOptions;
  shell->SetModeSelector(mode);
  outputFolder = folder + "/" + (mode == cDebug ? "out-dbg" : "out-rel");
}

void Project::SetCaption(const std::string& text) {
  shell->SetCaption(MakeRelative(WithoutExtension(name)) + " - " + text);
}

std::string Project::GetFullPath(const std::string& path) const {
  return IsAbsolutePath(path) ? path : folder + "/" + path;
}

std::string Project::GetFullPath(const std::string& path, std::string_view extension) const {
  return ChangeExtension(GetFullPath(path), extension);
}

std::string Project::MakeRelative(const std::string& path) const {
  return MakeRelativePath(path, folder);
}

std::string Project::RelativeIfSame(const std::string& path) const {
  if (const std::string_view plain = PlainRestOf(path, folder); !plain.empty())
    return std::string(plain);
  std::string relative = MakeRelative(path);
  const bool leadsBack = !relative.empty() && TidyPath(GetFullPath(relative)) == path;
  return leadsBack ? relative : path;
}

std::string Project::SessionPath() const {
  const std::string sessionName = ChangeExtension(name, "zend");
  return sessionName == name ? "" : GetFullPath(sessionName);
}

}  // namespace zendry
