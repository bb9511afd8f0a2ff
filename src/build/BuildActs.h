#pragma once

#include <ctime>
#include <functional>
#include <optional>
#include <string>

#include "Action.h"
#include "SpawnConsole.h"
#include "build/CommandLines.h"
#include "build/OutputParser.h"
#include "build/Staleness.h"

namespace zendry {

class Project;
class Shell;
struct ProjectFile;

enum BuildCommand {
  cCompileFileCommand = 1400,
  cMakeCommand = 1401,
  cRebuildCommand = 1402,
  cSwitchModeCommand = 1403,
  cClearOutputCommand = 1404,
  cStopBuildCommand = 1405,  // of the tool bar's stop button; stands in no menu
  cNextErrorCommand = 1406,
  cPreviousErrorCommand = 1407
};

// Takes away the variables by which gcc would search folders that no project names.
void ClearCompilerEnvironment();

// The build commands: decides what of the project is stale, runs the tools over it one after the
// other and turns what they print into the Output panel's text and the rows of the error list.
//
// A build runs from start to end on its caller's stack. Between two files waiting messages are
// handled once; the stop command that may arrive there ends the build, other build commands are
// passed over. A running tool is not killed.
//
// What can't be built at all (a file that is missing, a folder that can't be written) is refused
// before any tool runs, by a row of the error list that counts as an error.
class BuildActs : public mavro::ActionList {
 public:
  // Told of each file that is found stale, and why.
  using StaleObserver = std::function<void(const std::string& file, const std::string& reason)>;

  BuildActs();

  // What is built and who is told; neither is owned. Nothing may be called before.
  void Bind(Project& newProject, Shell& newShell);
  void SetStaleObserver(StaleObserver observer) { staleObserver = std::move(observer); }

  // Runs a command of the table; shows "Stop debugger first!" instead while the debugger runs.
  void OnCommand(int id);

  // Steps of a build, each saying whether the build may go on. `force` runs the tool even when
  // nothing is stale. PrepareBuild goes before all others; Build and the command functions call it.
  bool PrepareBuild(bool showStop);
  bool Build(bool force);
  bool BuildSingle(const ProjectFile& file, bool force);
  bool CompileFile(const ProjectFile& file, bool force);
  bool CompileResource(const std::string& script, bool force);
  bool Link();
  bool Archive();
  // Says how it went: in a message box with the first error shown, else in the Output panel; and in
  // the status line, since the Output panel may lie behind another page.
  void Summary();
  void ClearOutput();

  // A build is on somebody's stack: the project must not be closed now.
  bool IsBuilding() const { return building; }
  // Tools of the last build that could not be started or ended with another status than 0.
  int FailedTools() const { return failedTools; }

  int warningCount = 0;
  int errorCount = 0;
  bool abortRequested = false;
  bool useFrameworkRes = false;  // the framework's resource was compiled in this build
  std::string outDirName;        // last component of the output folder
  std::string outFile;           // name of the program
  std::string includeFlags;
  std::string libFlags;
  mavro::SpawnConsole runner;

 private:
  enum class Outcome { cDone, cFailed, cStopped };
  using LineReader = LineMeaning (BuildActs::*)(const std::string& line);

  // One run of a tool.
  struct ToolRun {
    std::string line;
    std::string folder;  // where it runs; empty: the current one
    LineReader reader = nullptr;
    std::string product;                // the file it writes, as seen from the current folder
    bool keepsProductOfFailure = true;  // unless a signal ended the tool
  };
  struct ObjectList {
    std::string arguments;
    Staleness staleness;
  };

  void CompileCurrent();
  void Make(bool force);
  bool EnterProjectFolder();
  bool EnsureOutputFolder();
  Outcome CompileFiles(bool force);
  bool CompileResources(bool force);
  bool MakeOutput();
  ObjectList CollectObjects();
  bool WouldOverwriteSource(const std::string& output);
  void DeleteOutputs(std::string_view extension);

  // Whether a source must be built; says why to the observer and refuses what can't be.
  enum class Verdict { cBuild, cUpToDate, cRefused, cUnsupported };
  Verdict Judge(const ProjectFile& file, const std::string& object, bool force);
  StaleCheck& Check();
  void Observe(const std::string& file, const Staleness& staleness);

  void RunTool(const ToolRun& run);
  void NoteFailure(const ToolRun& run, bool started);
  void TakeLine(LineReader reader, const std::string& line);
  LineMeaning EchoOnly(const std::string&) { return {}; }
  LineMeaning CompilerLine(const std::string& line) { return ReadCompileLine(compileLines, line); }
  LineMeaning LinkerLine(const std::string& line) { return ReadLinkLine(line); }
  LineMeaning ArchiverLine(const std::string& line) { return ReadArchiveLine(line); }

  void AddRow(const ErrorRow& row);
  void Refuse(const std::string& file, const std::string& why);
  std::string ToolOf(const std::string& name) const;
  const std::string& SetFlags() const;
  std::string SourceName(const ProjectFile& file) const;

  Project* project = nullptr;
  Shell* shell = nullptr;
  StaleObserver staleObserver;
  CompileLines compileLines;
  FileTimes times;
  std::optional<StaleCheck> check;
  int checkedLastId = 0;  // state of the project's list that `check` was made for
  size_t checkedFiles = 0;
  int failedTools = 0;
  bool building = false;
};

extern BuildActs theBuildActs;

}  // namespace zendry
