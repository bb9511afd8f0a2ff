#include "project/ImportCommands.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "CommandLine.h"
#include "base/Paths.h"

namespace zendry {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

bool IsSourceKind(int kind) {
  return kind == cCppSource || kind == cCSource;
}

// One compilation as the file tells it.
struct Entry {
  std::string directory, file, command, output;
  std::vector<std::string> arguments;
  bool isDamaged = false;  // a value of another type than its name asks for
};

// Reads the file entry by entry, so that a large one takes no more room than its largest entry.
class EntryReader : public nlohmann::json_sax<Json> {
 public:
  explicit EntryReader(std::function<void(Entry&)> takeEntry) : take(std::move(takeEntry)) {}

  bool null() override { return Other(); }
  bool boolean(bool) override { return Other(); }
  bool number_integer(number_integer_t) override { return Other(); }
  bool number_unsigned(number_unsigned_t) override { return Other(); }
  bool number_float(number_float_t, const string_t&) override { return Other(); }
  bool binary(binary_t&) override { return Other(); }

  bool string(string_t& value) override {
    if (depth == 3 && inArguments) {
      entry.arguments.push_back(std::move(value));
    } else if (depth == 2) {
      if (std::string* text = Field()) *text = std::move(value);
    } else if (depth < 2) {
      return Stop("has something else than a list of compilations");
    }
    return true;
  }
  bool start_object(size_t) override {
    if (depth == 0) return Stop("has no list of compilations");
    if (depth == 1) entry = {};
    if (depth == 2) Spoil();
    ++depth;
    return true;
  }
  bool key(string_t& name) override {
    if (depth == 2) field = std::move(name);
    return true;
  }
  bool end_object() override {
    if (--depth == 1) take(entry);
    return true;
  }
  bool start_array(size_t) override {
    if (depth == 1) return Stop("has something else than a list of compilations");
    inArguments = depth == 2 && field == "arguments";
    if (depth == 2 && !inArguments) Spoil();
    ++depth;
    return true;
  }
  bool end_array() override {
    --depth;
    if (depth == 2) inArguments = false;
    return true;
  }
  bool parse_error(size_t position, const std::string&, const Json::exception&) override {
    return Stop("is damaged or cut after " + std::to_string(position) + " bytes");
  }

  std::string error;

 private:
  std::string* Field() {
    if (field == "directory") return &entry.directory;
    if (field == "file") return &entry.file;
    if (field == "command") return &entry.command;
    if (field == "output") return &entry.output;
    if (field == "arguments") entry.isDamaged = true;
    return nullptr;
  }
  void Spoil() {
    if (Field()) entry.isDamaged = true;
  }
  bool Other() {
    if (depth < 2) return Stop("has something else than a list of compilations");
    if (depth == 2) Spoil();
    if (depth == 3 && inArguments) entry.isDamaged = true;
    return true;
  }
  bool Stop(const std::string& why) {
    if (error.empty()) error = why;
    return false;
  }

  std::function<void(Entry&)> take;
  Entry entry;
  std::string field;
  int depth = 0;
  bool inArguments = false;
};

// Values in the order in which they were first seen, with the number of files that have each.
class Tally {
 public:
  void Add(const std::string& value) {
    const auto [found, isNew] = places.try_emplace(value, counts.size());
    if (isNew) counts.emplace_back(value, 0);
    ++counts[found->second].second;
  }
  const std::vector<std::pair<std::string, size_t>>& Counts() const { return counts; }

 private:
  std::unordered_map<std::string, size_t> places;
  std::vector<std::pair<std::string, size_t>> counts;
};

// The switches of the files taken become those of the project.
class CommonSwitches {
 public:
  explicit CommonSwitches(Import& fill) : import(fill) {}

  void Settle() {
    for (const ImportFile& file : import.files)
      if (file.taken && file.command) Take(*file.command, file.kind);
    for (const auto& [path, count] : includes.Counts()) {
      import.includeFolders.push_back(SeenFrom(import.folder, path));
      NoteShare("-I" + import.includeFolders.back(), count);
    }
    AddStandard();
    AddMacros();
    for (const auto& [item, count] : others.Counts()) {
      import.switches.push_back(item);
      const bool links = item.starts_with("-fsanitize") || item.starts_with("-fopenmp") ||
                         item.starts_with("-flto") || item == "-m32" || item == "-pthread";
      if (links) import.linkSwitches.push_back(item);
      NoteShare(item, count);
    }
    for (const auto& [item, count] : risky.Counts()) import.risky.push_back(item);
    for (const auto& [item, count] : dropped.Counts())
      import.findings.push_back("left out: " + item + " is unknown here");
  }

 private:
  void Take(const CommandSwitches& switches, int kind) {
    const auto addAll = [](Tally& tally, const std::vector<std::string>& values) {
      std::set<std::string> counted;  // once for each file
      for (const std::string& value : values)
        if (counted.insert(value).second) tally.Add(value);
    };
    ++files;
    addAll(includes, switches.includeFolders);
    addAll(macros, switches.macros);
    addAll(others, switches.others);
    addAll(risky, switches.risky);
    addAll(dropped, switches.dropped);
    ++(kind == cCppSource ? cppStandards : cStandards)[switches.standard];
  }

  void NoteShare(const std::string& item, size_t count) {
    if (count == files) return;
    import.findings.push_back("differs: " + item + " is given to " + std::to_string(count) +
                              " of " + std::to_string(files) +
                              " files, the project gives it to all");
  }

  void AddMacros();
  void AddStandard();

  Import& import;
  size_t files = 0;
  std::map<std::string, size_t> cppStandards, cStandards;
  Tally includes, macros, others, risky, dropped;
};

// Two values of one macro can't both be given: the more frequent one is taken.
void CommonSwitches::AddMacros() {
  std::map<std::string, std::vector<std::pair<std::string, size_t>>> byName;
  std::vector<std::string> order;
  for (const auto& [macro, count] : macros.Counts()) {
    const std::string name = macro.substr(2, macro.find_first_of("=(") - 2);
    if (!byName.contains(name)) order.push_back(name);
    byName[name].emplace_back(macro, count);
  }
  for (const std::string& name : order) {
    auto& values = byName[name];
    std::ranges::stable_sort(values,
                             [](const auto& a, const auto& b) { return a.second > b.second; });
    import.switches.push_back(mavro::QuoteArgument(values[0].first));
    NoteShare(values[0].first, values[0].second);
    for (size_t i = 1; i < values.size(); ++i)
      import.findings.push_back("differs: " + values[i].first + " of " +
                                std::to_string(values[i].second) + " files is left out for " +
                                values[0].first);
  }
}

// The standard of the C++ files, if there are any; gcc ignores it in C files with a warning.
void CommonSwitches::AddStandard() {
  const auto& standards = cppStandards.empty() ? cStandards : cppStandards;
  const auto most = std::ranges::max_element(
      standards, [](const auto& a, const auto& b) { return a.second < b.second; });
  if (most == standards.end()) return;
  if (!most->first.empty()) import.switches.push_back(most->first);
  for (const auto* others : {&cppStandards, &cStandards})
    for (const auto& [standard, count] : *others)
      if (!standard.empty() && standard != most->first)
        import.findings.push_back("differs: " + standard + " of " + std::to_string(count) +
                                  " files, the project has " +
                                  (most->first.empty() ? "the compiler's own" : most->first));
}

// The commands of a compiler don't name libraries: the headers of the system do.
void AddLibraries(Import& import) {
  std::set<std::string> own, libraries;
  for (const ImportFile& file : import.files) own.insert(BaseName(file.name));
  for (const ImportFile& file : import.files) {
    if (!file.taken) continue;
    for (const FoundInclude& include : file.facts.includes)
      if (!include.isOff && !own.contains(BaseName(include.name)))
        libraries.insert(LibraryOf(include.name));
  }
  libraries.erase("");
  import.libraries.assign(libraries.begin(), libraries.end());
}

// "lib" for "CMakeFiles/lib.dir/src/a.cpp.o".
std::string TargetOf(const std::string& output) {
  const size_t end = output.find(".dir/");
  return end == std::string::npos ? "" : output.substr(0, end);
}

// The sources of the entries, as long as the file is read.
class CommandsImport {
 public:
  CommandsImport(std::string path, std::string wantedFolder)
      : jsonFolder(fs::path(path).parent_path().string()), folder(std::move(wantedFolder)) {}

  void Take(Entry& entry);
  Import Finish();

 private:
  struct Source {
    std::string path;
    std::string target;  // of cmake; sources of one target are linked together
    std::shared_ptr<const CommandSwitches> command;
  };

  std::string NearestFolder() const;
  ImportFile FileOf(const Source& source) const;
  void AddHeaders(Import& import) const;

  std::string jsonFolder;
  std::string folder;
  std::vector<Source> sources;
  std::unordered_set<std::string> seen;
  std::vector<std::string> notSources;
  size_t twice = 0, damaged = 0, gone = 0;
  std::string firstGone;
};

void CommandsImport::Take(Entry& entry) {
  const bool hasCommand = !entry.command.empty() || !entry.arguments.empty();
  if (entry.isDamaged || entry.file.empty() || !hasCommand) {
    ++damaged;
    return;
  }
  const std::string directory = (fs::path(jsonFolder) / entry.directory).lexically_normal();
  const std::string path = (fs::path(directory) / entry.file).lexically_normal();
  const int kind = FileKind(path);
  if (!IsSourceKind(kind)) return notSources.push_back(path);
  if (!seen.insert(path).second) {
    ++twice;
    return;
  }
  if (!mavro::FileExists(path)) {
    if (gone++ == 0) firstGone = path;
    return;
  }
  const auto arguments =
      entry.arguments.empty() ? SplitShellWords(entry.command) : std::move(entry.arguments);
  auto switches = std::make_shared<CommandSwitches>(ReadSwitches(arguments, directory));
  const std::string& output = switches->output.empty() ? entry.output : switches->output;
  sources.push_back({path, TargetOf(output), std::move(switches)});
}

std::string CommandsImport::NearestFolder() const {
  if (sources.empty()) return jsonFolder;
  fs::path common = fs::path(sources.front().path).parent_path();
  for (const Source& source : sources)
    while (common.has_relative_path() && !source.path.starts_with(common.string() + "/"))
      common = common.parent_path();
  return common.string();
}

// True if a source uses a library for tests. Others with such a name help programs that aren't
// tests.
bool Tests(const ImportFile& file) {
  constexpr std::string_view cLibraries[] = {"gtest", "gmock", "catch", "doctest", "boost/test"};
  return std::ranges::any_of(file.facts.includes, [&](const FoundInclude& include) {
    return std::ranges::any_of(cLibraries, [&](std::string_view library) {
      return include.name.find(library) != std::string::npos;
    });
  });
}

ImportFile CommandsImport::FileOf(const Source& source) const {
  ImportFile file = {SeenFrom(folder, source.path), FileKind(source.path)};
  file.target = source.target;
  file.command = source.command;
  file.isRead = true;
  for (const fs::path& part : fs::path(file.name).parent_path())
    if (const char* why = WhyLeftOut(part.string())) file.reason = why;
  const mavro::FileText text = mavro::ReadFileText(source.path);
  if (!text.Ok()) file.reason = "can't be read";
  file.facts = ReadSourceFacts(text.text);
  const bool isTest = IsNamedAsTest(BaseName(source.path)) && (file.facts.hasMain || Tests(file));
  if (isTest) file.reason = cTests;
  file.taken = file.reason.empty();
  return file;
}

void CommandsImport::AddHeaders(Import& import) const {
  std::set<std::string> folders;
  for (size_t i = 0; i < sources.size(); ++i) {
    if (!import.files[i].taken) continue;
    folders.insert(fs::path(sources[i].path).parent_path().string());
    for (const std::string& path : sources[i].command->includeFolders)
      if (path.starts_with(folder + "/")) folders.insert(path);
  }
  std::set<std::string> names;
  for (const std::string& each : folders) {
    std::error_code error;
    for (fs::directory_iterator entry(each, error), end; !error && entry != end;
         entry.increment(error)) {
      const std::string name = entry->path().string();
      std::error_code ignored;
      if (FileKind(name) == cHeader && entry->is_regular_file(ignored)) names.insert(name);
    }
  }
  for (const std::string& name : names) {
    ImportFile file = {SeenFrom(folder, name), cHeader};
    file.isRead = true;
    file.facts = ReadSourceFacts(mavro::ReadFileText(name).text);
    import.files.push_back(std::move(file));
  }
}

Import CommandsImport::Finish() {
  Import import;
  if (folder.empty()) folder = NearestFolder();
  import.folder = folder;
  for (const Source& source : sources) import.files.push_back(FileOf(source));
  TakeUnusualIfAlone(import);
  AddHeaders(import);
  SettleCommands(import, "");
  const auto note = [&](size_t count, const std::string& what) {
    if (count > 0) import.notes.push_back(std::to_string(count) + " " + what);
  };
  note(gone, "files are not there, the first is " + firstGone);
  note(twice, "files are compiled more than once, the first way is taken");
  note(damaged, "entries have no file, no command or a value of a wrong kind");
  for (const std::string& path : notSources)
    import.notes.push_back("left out (neither C nor C++): " + path);
  if (sources.empty()) import.error = "names no C or C++ source that is there";
  return import;
}

}  // namespace

std::string SettleCommands(Import& import, const std::string& wantedMain) {
  std::string error = ChooseMain(import, wantedMain);
  for (auto* list : {&import.includeFolders, &import.switches, &import.linkSwitches, &import.risky,
                     &import.libraries, &import.findings})
    list->clear();
  CommonSwitches(import).Settle();
  AddLibraries(import);
  return error;
}

Import ReadCommandsText(const std::string& text, const std::string& path,
                        const std::string& folder) {
  std::string home = folder.empty() ? "" : fs::path(AbsolutePath(folder)).lexically_normal();
  if (home.size() > 1 && home.ends_with('/')) home.pop_back();
  CommandsImport commands(path, home);
  EntryReader reader([&](Entry& entry) { commands.Take(entry); });
  Import import;
  if (!Json::sax_parse(text, &reader))
    import.error = reader.error.empty() ? "is damaged" : reader.error;
  else
    import = commands.Finish();
  if (!import.error.empty()) import.error = path + " " + import.error;
  return import;
}

Import ReadCommands(const std::string& path, const std::string& folder) {
  const std::string full = fs::path(AbsolutePath(path)).lexically_normal();
  const mavro::FileText file = mavro::ReadFileText(full);
  if (file.Ok()) return ReadCommandsText(file.text, full, folder);
  Import failed;
  failed.error = file.error;
  return failed;
}

}  // namespace zendry
