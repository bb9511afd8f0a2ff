#include "lsp/LspFolder.h"

#include "FilePath.h"
#include "FileText.h"
#include "base/Paths.h"
#include "config/IdeSession.h"
#include "lsp/LspSources.h"
#include "project/StandAlone.h"

namespace zendry {

namespace {

constexpr char cCommandsName[] = "/compile_commands.json";

}  // namespace

LspFolder::LspFolder(std::string itsRoot, std::string installFolder,
                     std::function<void(const std::string&)> itsLog)
    : root(std::move(itsRoot)),
      sources(project, *this),
      completion(sources),
      log(std::move(itsLog)) {
  project.SetShell(this);
  project.SetInstallFolder(installFolder);
}

bool LspFolder::Has(std::string_view path) const {
  return !root.empty() && path.size() > root.size() && path.starts_with(root) &&
         path[root.size()] == '/';
}

std::vector<EditorText*> LspFolder::OpenTexts() {
  std::vector<EditorText*> open;
  for (const auto& [path, text] : texts) open.push_back(text.get());
  if (passing) open.push_back(passing);
  return open;
}

// The only message of the parser that a user can do something about.
void LspFolder::AppendOutput(std::string_view text) {
  constexpr std::string_view cCutShort = "tags end before the end of";
  if (text.find(cCutShort) != text.npos) log(std::string(text));
}

void LspFolder::EnsureOpen() {
  if (isOpened) return;
  isOpened = true;
  if (root.empty()) return;
  if (const std::string name = ProjectFileIn(root); !name.empty()) {
    if (const mavro::FileResult loaded = project.Load(name); !loaded.Words().empty())
      log(loaded.Words());
    theIdeSession.TakeError();
  } else {
    OpenSources();
  }
  completion.wizard.tags.EnsureIndex();
}

// Some clients name the home folder when they know no better.
void LspFolder::OpenSources() {
  const bool hasCommands = mavro::FileExists(root + cCommandsName);
  if (!hasCommands && root == mavro::ProfileFolder())
    return log(root + ": the home folder isn't read; open the folder of a project");
  const LspSources found =
      hasCommands ? SourcesOfCommands(root + cCommandsName, root) : SourcesBelow(root);
  if (!found.note.empty()) log(found.note);
  project.Init(root + "/" + BaseName(root) + ".zpj", cConsole);
  project.LoadReferences();
  takesNewFiles = true;
  for (const std::string& file : found.files) AddFile(file);
  if (hasCommands) FollowIncludes(found.folders);
  for (const auto& [path, text] : texts) AddFile(path);
}

void LspFolder::AddFile(const std::string& path) {
  const bool isNew = takesNewFiles && !project.FindFile(path);
  if (isNew && project.Files().size() < LspSources::cMostFiles && IsSourceToRead(path))
    project.AddFile(path);
}

// Each name is looked for beside the file that includes it, then in the folders.
void LspFolder::FollowIncludes(const std::vector<std::string>& folders) {
  std::map<std::string, std::string> known;  // an include's name to its file in one of the folders
  for (size_t next = 0; next < project.Files().size(); ++next) {
    const std::string beside = mavro::FolderOf(project.Files()[next]->name);
    const std::vector<IncludeRec> includes = project.Files()[next]->tags.includes;
    for (const IncludeRec& include : includes) {
      if (include.quoted && mavro::FileExists(beside + include.name)) {
        AddFile(TidyPath(beside + include.name));
        continue;
      }
      const auto [place, isNew] = known.try_emplace(include.name);
      for (auto folder = folders.begin(); isNew && folder != folders.end(); ++folder) {
        std::string path = TidyPath(*folder + "/" + include.name);
        if (!mavro::FileExists(path)) continue;
        place->second = std::move(path);
        break;
      }
      // The commands may not say where it is.
      if (isNew && place->second.empty()) place->second = FindIncluded(include, beside);
      if (!Has(place->second)) continue;
      if (!place->second.empty()) AddFile(place->second);
    }
  }
}

void LspFolder::OpenText(std::unique_ptr<LspText> text) {
  const std::string path = text->Path();
  texts[path] = std::move(text);
  if (isOpened && Has(path)) AddFile(path);
}

void LspFolder::CloseText(const std::string& path) {
  if (texts.erase(path) > 0) FileChanged(path);
}

void LspFolder::FileChanged(const std::string& path) {
  if (!isOpened || FindText(path)) return;
  if (ProjectFile* file = project.FindFile(path)) {
    project.parseModule(file->tags, nullptr);
  } else if (project.scratchModule.fileName == path) {
    project.scratchModule.clear();
    project.scratchModule.fileName.clear();
  } else if (Has(path)) {
    AddFile(path);
  }
}

LspText* LspFolder::FindText(const std::string& path) const {
  const auto found = texts.find(path);
  return found == texts.end() ? nullptr : found->second.get();
}

void LspFolder::TakeTexts(LspFolder& other, bool all) {
  for (auto at = other.texts.begin(); at != other.texts.end();) {
    const auto next = std::next(at);
    if (all || Has(at->first)) {
      at->second->parsed = false;
      texts.insert(other.texts.extract(at));
    }
    at = next;
  }
}

void LspFolder::SetActive(LspText& text) {
  active = text.Path();
  passing = FindText(active) ? nullptr : &text;
}

}  // namespace zendry
