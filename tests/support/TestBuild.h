#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "FileText.h"
#include "TempFolder.h"
#include "base/QuietShell.h"
#include "build/BuildActs.h"
#include "build/BuildRecords.h"
#include "config/BuildSettings.h"
#include "config/IdeConfig.h"
#include "project/Project.h"

namespace test {

// Sets a file's time of last write to `tick` nanoseconds after a fixed moment long past, so that
// what a tool writes now is newer than everything a test has set.
inline void SetTime(const std::string& path, long tick) {
  constexpr time_t cLongPast = 1'000'000'000;
  constexpr long cSecond = 1'000'000'000;
  const timespec time = {cLongPast + tick / cSecond, tick % cSecond};
  const timespec times[] = {time, time};
  if (utimensat(AT_FDCWD, path.c_str(), times, 0) != 0)
    throw std::runtime_error("can't set the time of " + path);
}

// Gives all files below `folder` the times of a finished build: sources and headers 1, objects 2,
// programs and archives 3.
inline void AgeFiles(const std::string& folder) {
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    const std::string extension = entry.path().extension();
    const bool isObject = extension == ".o" || extension == ".res";
    const bool isProgram = extension == ".exe" || extension == ".a";
    SetTime(entry.path().string(), isObject ? 2 : isProgram ? 3 : 1);
  }
}

// Gives the records of an output folder the times that the files have now.
inline void AgeRecords(const std::string& folder) {
  const std::string path = folder + "/" + zendry::BuildRecords::cRecordsName;
  const mavro::FileText records = mavro::ReadFileText(path);
  if (!records.Ok()) return;
  const std::filesystem::path saved = std::filesystem::current_path();
  std::filesystem::current_path(folder + "/..");
  zendry::FileTimes times;
  zendry::BuildJournal journal = zendry::ReadJournal(records.text);
  for (zendry::InputFile& input : journal.inputs)
    input.time = times.Of(input.path).value_or(input.time);
  std::ofstream(path) << zendry::WriteJournal(journal);
  std::filesystem::current_path(saved);
}

inline std::string RowText(const zendry::ErrorRow& row) {
  return row.file + ":" + std::to_string(row.line) + ": " + row.text;
}

// A window that records its calls. `events` holds the calls whose order matters.
struct RecordingShell : zendry::QuietShell {
  std::string status;  // what the status line says
  std::string output;
  std::vector<std::string> rows;
  std::vector<std::string> events;
  std::function<void()> onPump;
  std::function<void()> onRunning;  // called again and again while tools run
  std::vector<std::string> progress;
  std::string activeFile;
  int mode = 0;
  std::vector<int> columns;  // of the rows
  bool debuggerRuns = false;

  void AppendOutput(std::string_view text) override { output += text; }
  void ClearOutput() override {
    output.clear();
    events.push_back("clear output");
  }
  void AddErrorRow(const zendry::ErrorRow& row) override {
    rows.push_back(RowText(row));
    columns.push_back(row.column);
  }
  void AppendToLastErrorRow(std::string_view text) override {
    if (!rows.empty()) rows.back() += text;
  }
  void ClearErrorRows() override {
    rows.clear();
    events.push_back("clear rows");
  }
  int ErrorRowCount() override { return static_cast<int>(rows.size()); }
  void ShowErrorRow(int row) override { events.push_back("error " + std::to_string(row)); }
  void GoToNextError() override { events.push_back("next error"); }
  void GoToPreviousError() override { events.push_back("previous error"); }
  void ShowBottomPage(zendry::BottomPage page) override {
    events.push_back(page == zendry::BottomPage::cError ? "page error" : "page output");
  }
  void SetStatus(const std::string& text, const std::string&) override { status = text; }
  int SelectedMode() override { return mode; }
  void SetStopCommand(int id) override { events.push_back("stop " + std::to_string(id)); }
  void PumpMessages() override {
    events.push_back("pump");
    if (onPump) onPump();
  }
  void AnswerWhileRunning() override {
    if (onRunning) onRunning();
  }
  void SetProgress(const std::string& text, int done, int total) override {
    progress.push_back(text + " (" + std::to_string(done) + "/" + std::to_string(total) + ")");
  }
  std::string ActiveFile() override { return activeFile; }
  void SaveChangedFiles() override { events.push_back("save"); }
  void RemoveErrorMark() override { events.push_back("remove mark"); }
  bool IsDebuggerRunning() override { return debuggerRuns; }
};

// Links of the tools' names to the fake tool in one folder, with what they were called with.
class FakeTools {
 public:
  explicit FakeTools(const std::string& toolFolder) : folder(toolFolder) {
    std::filesystem::create_directories(folder);
    for (const char* name : {"gcc", "g++", "ar", "windres"})
      std::filesystem::create_symlink(FAKE_TOOL, folder + "/" + name);
  }

  // The behaviour of the tool of that name from now on; see fake_tool.cpp. Empty: it just succeeds.
  void Order(const std::string& name, const std::string& deeds) const {
    std::ofstream(folder + "/" + name + ".do") << deeds;
  }

  using Call = std::vector<std::string>;  // the tool's name and its arguments
  // The calls since the last time they were taken.
  std::vector<Call> Take() const {
    std::vector<Call> calls;
    std::ifstream file(folder + "/calls");
    for (std::string line; std::getline(file, line);) calls.push_back(Split(line));
    std::filesystem::remove(folder + "/calls");
    return calls;
  }
  // For each call the tool and its last source or, for links and archives, its product.
  std::vector<std::string> TakeNames() const {
    std::vector<std::string> names;
    for (const Call& call : Take()) names.push_back(call[0] + " " + Subject(call));
    return names;
  }

 private:
  static Call Split(const std::string& line) {
    Call call(1);
    for (size_t i = 0; i < line.size(); ++i) {
      if (line[i] == '\t')
        call.emplace_back();
      else if (line[i] != '\\')
        call.back() += line[i];
      else if (++i < line.size())
        call.back() += line[i] == 'n' ? '\n' : line[i] == 't' ? '\t' : line[i];
    }
    return call;
  }
  static std::string Subject(const Call& call) {
    for (size_t i = 1; i < call.size(); ++i)
      if (call[i] == "-o" || call[i] == "-r")
        return call[i - 1].ends_with(".cpp") || call[i - 1].ends_with(".c") ||
                       call[i - 1].ends_with(".rc")
                   ? call[i - 1]
                   : call.at(i + 1);
    return "?";
  }

  std::string folder;
};

// An installation with fake tools and an empty console project in folders of their own. The
// configuration in force and the current folder are given back at the end.
//
//   test::TestBuild build;
//   build.Add("a.cpp", "int main() {}\n");
//   EXPECT_TRUE(build.builder.Build(zendry::Builder::Scope::cStale));
class TestBuild {
 public:
  explicit TestBuild(const std::string& projectName = "p.zpj", int type = zendry::cConsole)
      : savedConfig(zendry::theIdeConfig),
        savedSettings(zendry::theBuildSettings),
        savedFolder(std::filesystem::current_path()) {
    zendry::theIdeConfig = {};
    zendry::theBuildSettings = {.jobs = 1, .launchers = {}};
    zendry::theIdeConfig.appDir = install.Path("bin/");
    for (auto& set : zendry::theIdeConfig.toolSets) set.folder = "@/tools";
    project.SetShell(&shell);
    project.Init(files.Path(projectName), type);
    project.SetFileName(files.Path(projectName));
    builder.Bind(project, shell);
    acts.Bind(builder, project, shell);
  }
  ~TestBuild() {
    std::filesystem::current_path(savedFolder);
    zendry::theIdeConfig = savedConfig;
    zendry::theBuildSettings = savedSettings;
  }
  TestBuild(const TestBuild&) = delete;
  TestBuild& operator=(const TestBuild&) = delete;

  // Writes a file and adds it to the project.
  const zendry::ProjectFile& Add(const std::string& name, const std::string& text) {
    files.Write(name, text);
    project.AddFile(name);
    return *project.Files().back();
  }
  // Builds, forgets the calls and gives all files the times of a finished build.
  void BuildAndAge() {
    builder.Build(zendry::Builder::Scope::cStale);
    tools.Take();
    AgeFiles(files.Path());
    for (const char* folder : {"out-rel", "out-dbg"}) AgeRecords(files.Path(folder));
  }
  std::string Path(const std::string& name) const { return files.Path(name); }

  TempFolder install;
  TempFolder files;  // the project's folder
  FakeTools tools{install.Path("tools")};
  RecordingShell shell;
  zendry::Project project;
  zendry::Builder builder;
  zendry::BuildActs acts;

 private:
  zendry::IdeConfig savedConfig;
  zendry::BuildSettings savedSettings;
  std::filesystem::path savedFolder;
};

}  // namespace test
