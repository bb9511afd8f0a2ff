#include "project/ImportFolder.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "base/Paths.h"

namespace zendry {

namespace {

namespace fs = std::filesystem;

// Deeper folders, and more files, are no project but an accident.
constexpr int cDeepest = 64;
constexpr size_t cMostFiles = 200'000;

// Most scripts come from programs for another system.
constexpr char cResources[] = "resources";

bool IsSource(const ImportFile& file) {
  return file.kind == cCppSource || file.kind == cCSource;
}

std::string Lower(std::string text) {
  for (char& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return text;
}

bool IsBuildFolder(const fs::path& path, const std::string& name) {
  constexpr std::string_view cNames[] = {
      "build", "_build",         "out",    "out-rel",    "out-dbg",     "debug", "release", "obj",
      "bin",   "autom4te.cache", "target", "cmakefiles", "node_modules"};
  const std::string lower = Lower(name);
  if (std::ranges::find(cNames, lower) != std::end(cNames)) return true;
  if (lower.starts_with("build-") || lower.starts_with("cmake-build")) return true;
  std::error_code error;
  return fs::exists(path / "CMakeCache.txt", error);
}

class FolderReader {
 public:
  explicit FolderReader(Import& fill) : import(fill) {}

  void Read(const fs::path& folder, const std::string& prefix, const std::string& reason,
            int depth) {
    std::error_code error;
    if (depth > cDeepest) return import.notes.push_back(prefix + " is too deep");
    fs::directory_iterator entries(folder, error);
    if (error) return import.notes.push_back(prefix + " can't be read: " + error.message());
    for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
      const std::string name = entries->path().filename().string();
      std::error_code ignored;
      if (entries->is_directory(ignored)) {
        if (entries->is_symlink(ignored) || name.starts_with('.')) continue;
        if (IsBuildFolder(entries->path(), name)) {
          import.notes.push_back("left out (folder of a build): " + prefix + name);
          continue;
        }
        const std::string own = reason.empty() && WhyLeftOut(name) ? WhyLeftOut(name) : reason;
        Read(entries->path(), prefix + name + "/", own, depth + 1);
      } else if (const int kind = FileKind(name); kind != cUnknownKind && kind != cProjectFile) {
        if (import.files.size() == cMostFiles) return;
        if (!entries->is_regular_file(ignored)) continue;
        const char* why = kind == cResourceScript ? cResources : IsNamedAsTest(name) ? cTests : "";
        const std::string own = reason.empty() ? why : reason;
        import.files.push_back({prefix + name, kind, own.empty(), own});
      }
    }
  }

 private:
  Import& import;
};

// Group: what the files say.

void ReadFacts(Import& import) {
  for (ImportFile& file : import.files) {
    if (file.isRead || file.kind == cResourceScript) continue;
    if (!file.taken && !file.reason.empty() && file.kind != cHeader) continue;
    file.isRead = true;
    const mavro::FileText text = mavro::ReadFileText(import.folder + "/" + file.name);
    if (!text.Ok()) {
      file.taken = false;
      file.reason = "can't be read";
      continue;
    }
    file.facts = ReadSourceFacts(text.text);
  }
}

std::string FolderOf(const std::string& name) {
  const size_t slash = name.rfind('/');
  return slash == std::string::npos ? "" : name.substr(0, slash);
}

std::string Joined(const std::string& folder, const std::string& name) {
  const std::string whole = folder.empty() ? name : folder + "/" + name;
  // Most names have nothing to be tidied.
  const bool isPlain =
      whole.find("./") == std::string::npos && whole.find("//") == std::string::npos;
  return isPlain ? whole : fs::path(whole).lexically_normal().string();
}

// Finds which file of the folder each include means.
class IncludeResolver {
 public:
  explicit IncludeResolver(Import& fill) : import(fill) {
    for (ImportFile& file : import.files) {
      byName[file.name] = &file;
      byBase[BaseName(file.name)].push_back(&file);
    }
  }

  // Follows the includes of the sources taken, and of the headers that these reach.
  void Follow() {
    for (const ImportFile& file : import.files)
      if (file.taken && IsSource(file)) Reach(file);
    while (!waiting.empty()) {
      const ImportFile& file = *waiting.back();
      waiting.pop_back();
      for (const FoundInclude& include : file.facts.includes) FollowInclude(file, include);
    }
    if (asksForConfig) import.switches.push_back("-DHAVE_CONFIG_H");
    for (const std::string& library : libraries) import.libraries.push_back(library);
    NoteMissing();
  }

 private:
  void Reach(const ImportFile& file) {
    if (reached.insert(&file).second) waiting.push_back(&file);
  }

  void FollowInclude(const ImportFile& from, const FoundInclude& include) {
    if (IsAbsolutePath(include.name)) return;
    ImportFile* found = include.quoted ? Find(FolderOf(from.name), include.name) : nullptr;
    for (size_t i = 0; !found && i < import.includeFolders.size(); ++i)
      found = Find(import.includeFolders[i], include.name);
    if (!found && (include.quoted || !IsOfTheSystem(include.name))) found = Search(from, include);
    if (found) {
      const bool isConfig = include.name.ends_with("config.h");
      asksForConfig |= isConfig && from.facts.asksForConfig;
      if (IsSource(*found) && found != &from && !include.isOff) includers[&from].insert(found);
      return Reach(*found);
    }
    if (IsOfTheSystem(include.name)) {
      const std::string library = include.isOff ? "" : LibraryOf(include.name);
      if (!library.empty()) libraries.insert(library);
    } else if (!include.isOff) {
      missing.try_emplace(include.name, from.name);
    }
  }

  ImportFile* Find(const std::string& folder, const std::string& name) const {
    const auto found = byName.find(Joined(folder == "." ? "" : folder, name));
    return found == byName.end() ? nullptr : found->second;
  }

  // Another file whose path ends with the name: the folder before it becomes a search folder.
  ImportFile* Search(const ImportFile& from, const FoundInclude& include) {
    const auto same = byBase.find(BaseName(include.name));
    if (same == byBase.end()) return nullptr;
    ImportFile* best = nullptr;
    std::string bestFolder;
    for (ImportFile* file : same->second) {
      const bool isWhole = file->name == include.name;
      if (!isWhole && !file->name.ends_with("/" + include.name)) continue;
      const std::string folder =
          isWhole ? "." : file->name.substr(0, file->name.size() - include.name.size() - 1);
      if (best && !IsNearer(from, *file, folder, *best, bestFolder)) continue;
      best = file;
      bestFolder = folder;
    }
    if (best) import.includeFolders.push_back(bestFolder);
    return best;
  }

  // A file that is taken, below the same first folder, and in a folder that is higher.
  static bool IsNearer(const ImportFile& from, const ImportFile& file, const std::string& folder,
                       const ImportFile& best, const std::string& bestFolder) {
    const auto rank = [&from](const ImportFile& candidate, const std::string& its) {
      const std::string top = from.name.substr(0, from.name.find('/') + 1);
      return std::tuple(!candidate.taken, !candidate.name.starts_with(top),
                        std::ranges::count(its, '/'), its);
    };
    return rank(file, folder) < rank(best, bestFolder);
  }

  void NoteMissing() {
    constexpr size_t cMostNames = 12;
    size_t count = 0;
    for (const auto& [name, from] : missing)
      if (++count <= cMostNames)
        import.findings.push_back(name + ", which " + from + " includes, is not there");
    if (count > cMostNames)
      import.findings.push_back(std::to_string(count - cMostNames) +
                                " more headers that are included are not there");
  }

 public:
  // The sources that are compiled with others only. One that has a header of its own, and is the
  // only one that another includes, is compiled by itself too.
  std::set<ImportFile*> Included() const {
    std::set<ImportFile*> included;
    for (const auto& [from, sources] : includers)
      for (ImportFile* source : sources)
        if (sources.size() > 1 || !byName.contains(ChangeExtension(source->name, "h")))
          included.insert(source);
    return included;
  }

 private:
  Import& import;
  std::map<const ImportFile*, std::set<ImportFile*>> includers;
  std::unordered_map<std::string, ImportFile*> byName;
  std::unordered_map<std::string, std::vector<ImportFile*>> byBase;
  std::unordered_set<const ImportFile*> reached;
  std::vector<const ImportFile*> waiting;
  std::set<std::string> libraries;
  std::map<std::string, std::string> missing;  // with the first file that includes it
  bool asksForConfig = false;
};

// Sources that others include are compiled with these. Leaving them out may leave others without
// anybody who includes them only if they were the only ones: so one pass is enough.
void LeaveOutIncluded(Import& import) {
  Import trial;
  trial.folder = import.folder;
  trial.files = import.files;
  IncludeResolver resolver(trial);
  resolver.Follow();
  for (ImportFile* file : resolver.Included()) {
    ImportFile& own = import.files[static_cast<size_t>(file - trial.files.data())];
    if (!own.taken) continue;
    own.taken = false;
    own.reason = cIncludedSource;
  }
}

}  // namespace

Import ListFolder(const std::string& folder) {
  Import import;
  std::error_code error;
  const fs::path full = fs::path(AbsolutePath(folder)).lexically_normal();
  import.folder = full.string();
  if (import.folder.size() > 1 && import.folder.ends_with('/')) import.folder.pop_back();
  if (!fs::is_directory(full, error)) {
    import.error = folder + (fs::exists(full, error) ? " is no folder" : " is not there");
    return import;
  }
  FolderReader(import).Read(full, "", "", 0);
  std::ranges::sort(import.files, {}, &ImportFile::name);
  std::ranges::sort(import.notes);
  TakeUnusualIfAlone(import);
  if (import.files.empty()) import.error = folder + " has no C or C++ files";
  return import;
}

std::string SettleImport(Import& import, const std::string& wantedMain) {
  import.includeFolders.clear();
  import.switches.clear();
  import.libraries.clear();
  import.findings.clear();
  if (ImportFile* wanted = wantedMain.empty() ? nullptr : FindImportFile(import, wantedMain)) {
    wanted->taken = true;
    wanted->reason.clear();
  }
  ReadFacts(import);
  for (ImportFile& file : import.files) {
    if (file.reason != cOtherMain && file.reason != cIncludedSource) continue;
    file.taken = true;
    file.reason.clear();
  }
  LeaveOutIncluded(import);
  std::string error = ChooseMain(import, wantedMain);
  IncludeResolver(import).Follow();
  return error;
}

}  // namespace zendry
