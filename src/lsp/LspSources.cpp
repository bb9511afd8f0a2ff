#include "lsp/LspSources.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <string_view>

#include "CommandLine.h"
#include "FileText.h"
#include "base/DiskStamp.h"
#include "base/Paths.h"
#include "base/SearchFolders.h"
#include "lsp/LspJson.h"

namespace zendry {

namespace {

namespace fs = std::filesystem;

// Folders that builds and package managers fill; a "*" at the end stands for any further letters.
constexpr std::string_view cPassedOver[] = {"build*", "cmake-build*", "out",   "out-*",
                                            "_build", "node_modules", "obj-*", "CMakeFiles"};
constexpr const char* cLeftByBuilds[] = {"CMakeCache.txt", "build.ninja"};

bool IsSource(const std::string& path) {
  const int kind = FileKind(path);
  return kind == cCppSource || kind == cCSource || kind == cHeader;
}

bool Matches(std::string_view name, std::string_view pattern) {
  if (!pattern.ends_with('*')) return name == pattern;
  pattern.remove_suffix(1);
  return name.starts_with(pattern);
}

bool IsPassedOver(const fs::path& folder) {
  const std::string name = folder.filename();
  if (name.starts_with('.')) return true;
  for (const std::string_view pattern : cPassedOver)
    if (Matches(name, pattern)) return true;
  std::error_code error;
  return std::any_of(std::begin(cLeftByBuilds), std::end(cLeftByBuilds),
                     [&](const char* left) { return fs::exists(folder / left, error); });
}

std::string Absolute(const std::string& path, const std::string& folder) {
  const std::string full = IsAbsolutePath(path) ? path : folder + "/" + path;
  return TidyPath(fs::path(full).lexically_normal());
}

// The arguments of a command, given as a list or as one line.
std::vector<std::string> ArgumentsOf(const Json& command) {
  std::vector<std::string> arguments;
  for (const Json& argument : ListAt(command, {"arguments"}))
    if (argument.is_string()) arguments.push_back(argument.get<std::string>());
  if (arguments.empty()) arguments = mavro::SplitCommandLine(TextAt(command, {"command"}));
  return arguments;
}

// Appends what isn't there yet.
class Collector {
 public:
  explicit Collector(std::vector<std::string>& theList) : list(theList) {}
  void Add(std::string path) {
    if (known.insert(path).second) list.push_back(std::move(path));
  }

 private:
  std::vector<std::string>& list;
  std::set<std::string> known;
};

}  // namespace

bool IsSourceToRead(const std::string& path) {
  if (!IsSource(path)) return false;
  const DiskStamp stamp = ReadDiskStamp(path);
  return stamp.exists && stamp.size <= LspSources::cLargestFile;
}

std::string ProjectFileIn(const std::string& folder) {
  std::string found;
  std::error_code error;
  for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    const std::string path = at->path();
    if (FileKind(path) != cProjectFile || !mavro::FileExists(path)) continue;
    if (!found.empty()) return "";
    found = path;
  }
  return found;
}

LspSources SourcesOfCommands(const std::string& path, const std::string& root) {
  LspSources sources;
  const mavro::FileText file = mavro::ReadFileText(path);
  const std::optional<Json> commands = ParseJson(file.text);
  if (!commands || !commands->is_array()) {
    sources.note = file.Ok() ? path + ": is no list of commands" : file.error;
    return sources;
  }
  Collector files(sources.files), folders(sources.folders);
  for (const Json& command : *commands) {
    const std::string folder = Absolute(TextAt(command, {"directory"}), root);
    const std::string source = Absolute(TextAt(command, {"file"}), folder);
    if (!IsSourceToRead(source)) continue;
    if (sources.files.size() >= LspSources::cMostFiles) {
      sources.note = path + ": has too many files, the rest was left out";
      break;
    }
    files.Add(source);
    for (const std::string& its : SearchFolders(ArgumentsOf(command))) {
      std::string full = Absolute(its, folder);
      while (full.ends_with('/')) full.pop_back();
      if (full == root || full.starts_with(root + "/")) folders.Add(std::move(full));
    }
  }
  return sources;
}

LspSources SourcesBelow(const std::string& folder) {
  LspSources sources;
  size_t entries = 0;
  std::error_code error;
  constexpr auto cOptions = fs::directory_options::skip_permission_denied;
  for (fs::recursive_directory_iterator at(folder, cOptions, error), end; !error && at != end;
       at.increment(error)) {
    std::error_code ignored;
    const bool isFolder = at->is_directory(ignored);
    if (isFolder && (at.depth() >= LspSources::cDeepestFolder || IsPassedOver(at->path())))
      at.disable_recursion_pending();
    if (++entries > LspSources::cMostEntries || sources.files.size() >= LspSources::cMostFiles) {
      sources.note = folder + ": holds too many files, the rest was left out";
      break;
    }
    if (!isFolder && IsSourceToRead(at->path())) sources.files.push_back(at->path());
  }
  if (error) sources.note = folder + ": " + error.message();
  std::sort(sources.files.begin(), sources.files.end());
  return sources;
}

}  // namespace zendry
