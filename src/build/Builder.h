#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/BuildInProgress.h"
#include "build/BuildInputs.h"
#include "build/BuildRecords.h"
#include "build/CommandLines.h"
#include "build/CompileCommands.h"
#include "build/Launchers.h"
#include "build/ObjectNames.h"
#include "build/OutputParser.h"
#include "build/RunningTools.h"
#include "build/Staleness.h"
#include "build/StepQueue.h"

namespace zendry {

class Project;
class Shell;
struct ProjectFile;

// Finds the stale files of the project and runs the tools on them. The output of the tools becomes
// the Output panel's text and the rows of the error list. The window, zendry-make and the debugger
// drive it.
//
// As many sources are compiled at once as theBuildSettings say. What is shown is what one after the
// other would have shown. After an error, compilers that are running end and are shown; no other is
// started.
//
// A build runs from start to end on its caller's stack. Between two files and while tools run,
// waiting messages are handled. A request to stop that arrives there ends the build when the
// running tools have ended; a second one ends these tools too.
//
// If something can't be built at all (a file is missing, a folder can't be written), the build is
// refused before any tool runs. A row of the error list says why and counts as an error.
//
// A tool has failed when it can't be started or ends with a status other than 0. If none of its
// lines counted as an error, the run itself counts as one, and it has at least one row. After such
// a failure the other sources are still compiled, but nothing is linked.
class Builder : private StepWatcher {
 public:
  // The tools run for stale files only, or for all files.
  enum class Scope { cStale, cAll };

  // The error list's mark in the text stays during a build, or is removed before it.
  enum class ErrorMark { cKept, cRemoved };

  // Called for each stale file, with the reason.
  using StaleObserver = std::function<void(const std::string& file, const std::string& reason)>;

  // The project to build and the shell that gets the messages; neither is owned. Must be the first
  // call.
  void Bind(Project& newProject, Shell& newShell);
  void SetStaleObserver(StaleObserver observer) { staleObserver = std::move(observer); }

  // Asked before the first step of each build; false: nothing is run.
  using Gate = std::function<bool(const Project& project)>;
  void SetGate(Gate newGate) { gate = std::move(newGate); }

  // Whole builds; they report their result.
  void CompileCurrent();
  void Make(Scope scope);
  // Ends the build before its next step; the second request also ends the running tools.
  void RequestStop();
  // Ends the build and the running tools.
  void EndNow();
  // The command that the window's stop button sends during a build.
  static constexpr int cStopCommand = 1405;

  // Steps of a build; each answers true if the build may go on. PrepareBuild comes before all
  // others; Build and the command functions call it.
  bool PrepareBuild(ErrorMark mark);
  bool Build(Scope scope);
  bool BuildSingle(const ProjectFile& file, Scope scope);
  bool CompileFile(const ProjectFile& file, Scope scope);
  bool CompileResource(const std::string& script, Scope scope);
  bool Link();
  bool Archive();
  // Reports the result: in a message box with the first error shown, else in the Output panel; and
  // in the status line, since another page may cover the Output panel.
  void Summary();
  void ClearOutput();
  // How each source would be compiled now, without a launcher. Runs nothing.
  std::vector<CompileCommand> CompileCommands();

  // True while a build runs: the project must not be closed now.
  static bool IsBuilding() { return BuildInProgress::Any(); }
  // The errors of the last build: those that lines counted and the failed runs without such lines.
  int Errors() const { return errorCount + failedRuns; }
  // The last build came to its end, and without errors.
  bool HasSucceeded() const { return Errors() == 0 && !wasStopped && !wasDenied; }
  // Asks the gate, and says so if it denies. To be called before a run without a build.
  bool PassesGate();
  // The gate has denied the last build: what is there must not be run either.
  bool WasDenied() const { return wasDenied; }

  int warningCount = 0;
  int errorCount = 0;  // of what the tools' lines say, and of what was refused
  bool abortRequested = false;
  bool useFrameworkRes = false;  // the framework's resource was compiled in this build
  std::string outDirName;        // last component of the output folder
  std::string outFile;           // name of the program
  std::string includeFlags;
  std::string libFlags;

 private:
  enum class Outcome { cDone, cFailed, cStopped };
  // What the current run has left so far.
  struct RunNotes {
    int errorsBefore = 0;
    int rowsBefore = 0;
    int firstPlainRow = -1;     // the first row of the run that is no warning
    std::string lastLine = {};  // the last line that isn't blank
  };
  // A source that is not up to date.
  struct PlannedFile {
    int id = 0;
    bool isRefused = false;
    std::string reason = {};
  };
  struct ObjectList {
    std::string arguments;
    std::vector<std::string> paths;
    Staleness staleness;
  };

  bool HasProject();
  bool EnterProjectFolder();
  bool EnsureOutputFolder();
  void NoteUnusualName(const std::string& name);
  Outcome CompileFiles(Scope scope);
  std::vector<PlannedFile> PlanFiles(Scope scope);
  Outcome RunPlan(const std::vector<PlannedFile>& plan);
  bool BeginPlanned(const PlannedFile& planned);
  bool MustStop();
  bool CompileResources(Scope scope);
  bool MakeOutput();
  ObjectList CollectObjects();
  bool WouldOverwriteInput(const std::string& output);
  void NameWhatIsNotBuilt();
  void DeleteOutputs(std::string_view extension);

  // Decides if a source must be built, and why.
  enum class Verdict { cBuild, cUpToDate, cRefused, cUnsupported };
  struct Judgement {
    Verdict verdict = Verdict::cUpToDate;
    std::string reason = {};
  };
  Judgement Judge(const ProjectFile& file, const std::string& object, const std::string& line,
                  Scope scope);
  Staleness CheckRecord(const std::string& object, const std::string& line);
  Judgement JudgeCompile(const ProjectFile& file, Scope scope);
  // For a file that is built alone: reports a verdict that says no. The answer is then the build's.
  std::optional<bool> Refusal(const ProjectFile& file, const Judgement& judgement);
  StaleCheck& Check();

  std::string CompileLineOf(const ProjectFile& file) const;
  ToolStep CompileStep(const ProjectFile& file, const std::string& reason);
  void PutLauncherBefore(ToolStep& step) const;
  std::optional<ToolStep::Refusal> WhyNotRun(const ToolStep& step) const;
  int JobsFor(size_t stepCount) const;
  bool BeginStep(ToolStep step);
  void RunAlone(ToolStep step);
  bool AwaitSteps();
  void ShowProgress(const std::string& name);

  void ShowStep(const ToolStep& step) override;
  void TakeStepLine(const ToolStep& step, const std::string& line) override;
  bool IsErrorLine(const ToolStep& step, const std::string& line) override;
  void EndStep(const ToolStep& step, const StepEnd& end, int slot) override;
  std::vector<InputFile> ReadFilesOf(const ToolStep& step, int slot);
  void NoteFailure(const ToolStep& step, const StepEnd& end);
  void CountFailedRun(const ToolStep& step, const std::string& what);
  LineMeaning MeaningOf(ToolKind kind, const std::string& line, CompileLines& state);
  LineMeaning LinkerLine(const std::string& line);
  LineMeaning SingleFileToolLine(const std::string& line, CompileLines& state);

  void AddRow(const ErrorRow& row, LineMeaning::Severity severity = LineMeaning::cPlain);
  void Refuse(const std::string& file, const std::string& why);
  std::string ToolOf(const std::string& name) const;
  const std::string& SetFlags() const;
  std::string SourceName(const ProjectFile& file) const;

  Project* project = nullptr;
  Shell* shell = nullptr;
  StaleObserver staleObserver;
  Gate gate;
  bool wasDenied = false;
  CompileLines compileLines;
  CompileLines earlyLines;  // of lines that can't be shown yet
  FileTimes times;
  std::optional<StaleCheck> check;
  int checkedLastId = 0;  // state of the project's list that `check` was made for
  size_t checkedFiles = 0;
  ObjectNames objectNames;
  BuildRecords records;
  std::string buildFolder;  // the project's folder when the build began
  RunningTools running;
  StepQueue steps{*this};
  std::vector<FileTimes::Time> startTimes;  // of the steps, by slot
  std::chrono::steady_clock::time_point lastMessages;
  LauncherState launcherState;  // of the project's compiler set
  bool saidLost = false;
  int plannedSteps = 0;  // sources that this build compiles
  int begunSteps = 0;
  int endedSteps = 0;
  RunNotes current;
  int failedRuns = 0;
  int rowCount = 0;
  int firstErrorRow = -1;  // the row that is shown after a build with errors
  bool wasStopped = false;
  std::string whyNothing;  // the reason why the one file of the build was not compiled
};

extern Builder theBuilder;

// Deletes only regular files, so that a device named as output is not deleted.
void DeleteRegularFile(const std::string& path);

}  // namespace zendry
