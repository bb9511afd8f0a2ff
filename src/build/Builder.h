#pragma once

#include <ctime>
#include <functional>
#include <optional>
#include <string>

#include "SpawnConsole.h"
#include "base/BuildInProgress.h"
#include "build/CommandLines.h"
#include "build/OutputParser.h"
#include "build/Staleness.h"

namespace zendry {

class Project;
class Shell;
struct ProjectFile;

// Takes away the variables by which gcc would search folders that no project names.
void ClearCompilerEnvironment();

// Decides what of the project is stale, runs the tools over it one after the other and turns what
// they print into the Output panel's text and the rows of the error list. The window, zendry-make
// and the debugger drive it.
//
// A build runs from start to end on its caller's stack. Between two files waiting messages are
// handled once; a request to stop that may arrive there ends the build. A running tool is not
// killed.
//
// What can't be built at all (a file that is missing, a folder that can't be written) is refused
// before any tool runs, by a row of the error list that counts as an error.
class Builder {
 public:
  // Whether tools run for what is stale only, or for everything.
  enum class Scope { cStale, cAll };

  // Whether the mark of the error list's place is taken out of the text before a build.
  enum class ErrorMark { cKept, cRemoved };

  // Told of each file that is found stale, and why.
  using StaleObserver = std::function<void(const std::string& file, const std::string& reason)>;

  // What is built and who is told; neither is owned. Nothing may be called before.
  void Bind(Project& newProject, Shell& newShell);
  void SetStaleObserver(StaleObserver observer) { staleObserver = std::move(observer); }

  // Whole builds, which say how they went.
  void CompileCurrent();
  void Make(Scope scope);
  // Ends the build before its next file.
  void RequestStop() { abortRequested = true; }
  // What the window's stop button sends during a build.
  static constexpr int cStopCommand = 1405;

  // Steps of a build, each saying whether the build may go on. PrepareBuild goes before all others;
  // Build and the command functions call it.
  bool PrepareBuild(ErrorMark mark);
  bool Build(Scope scope);
  bool BuildSingle(const ProjectFile& file, Scope scope);
  bool CompileFile(const ProjectFile& file, Scope scope);
  bool CompileResource(const std::string& script, Scope scope);
  bool Link();
  bool Archive();
  // Says how it went: in a message box with the first error shown, else in the Output panel; and in
  // the status line, since the Output panel may lie behind another page.
  void Summary();
  void ClearOutput();

  // A build is on somebody's stack: the project must not be closed now.
  static bool IsBuilding() { return BuildInProgress::Any(); }
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
  using LineReader = LineMeaning (Builder::*)(const std::string& line);

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

  bool EnterProjectFolder();
  bool EnsureOutputFolder();
  Outcome CompileFiles(Scope scope);
  bool CompileResources(Scope scope);
  bool MakeOutput();
  ObjectList CollectObjects();
  bool WouldOverwriteSource(const std::string& output);
  void DeleteOutputs(std::string_view extension);

  // Whether a source must be built; says why to the observer and refuses what can't be.
  enum class Verdict { cBuild, cUpToDate, cRefused, cUnsupported };
  Verdict Judge(const ProjectFile& file, const std::string& object, Scope scope);
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
};

extern Builder theBuilder;

}  // namespace zendry
