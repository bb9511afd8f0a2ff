#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "CommandLine.h"
#include "FilePath.h"
#include "base/Paths.h"
#include "base/Shell.h"
#include "build/Builder.h"
#include "build/ToolEnvironment.h"
#include "config/BuildSettings.h"
#include "project/Project.h"

// The builder's steps while they run: what of them is shown, counted and recorded.

namespace zendry {

namespace {

// The longest time for which the window waits for its messages while tools run.
constexpr std::chrono::milliseconds cMessagesEvery(30);

// The name of the tool that a command line starts, for messages.
std::string ToolName(const std::string& line) {
  const std::vector<std::string> arguments = mavro::SplitCommandLine(line);
  return arguments.empty() ? "" : BaseName(arguments.front());
}

std::string ToolName(const ToolStep& step) {
  const std::string tool = ToolName(step.line);
  return step.launcher.empty() ? tool : tool + " " + ToolName(step.lineWithoutLauncher);
}

}  // namespace

void DeleteRegularFile(const std::string& path) {
  struct stat info;
  if (lstat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode)) unlink(path.c_str());
}

void Builder::RequestStop() {
  if (abortRequested) return EndNow();
  abortRequested = true;
  if (!steps.IsEmpty())
    shell->SetStatus("Stopping after what is running now. Stop again to end that too.", "");
}

void Builder::EndNow() {
  abortRequested = true;
  if (steps.IsEmpty()) return;
  shell->SetStatus("Ending what is running", "");
  steps.Stop();
}

std::optional<ToolStep::Refusal> Builder::WhyNotRun(const ToolStep& step) const {
  if (step.line.find('\0') != std::string::npos)
    return ToolStep::Refusal{ToolName(step.line), "its command line holds a NUL byte"};
  if (!step.launcher.empty() && !launcherState.IsFound())
    return ToolStep::Refusal{step.launcher, "the launcher before the compiler is not found"};
  const std::string& folder = project->outputFolder;
  if (faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0) return {};
  return ToolStep::Refusal{folder, std::string("it can't be written: ") + std::strerror(errno)};
}

bool Builder::BeginStep(ToolStep step) {
  if (!step.refusal) step.refusal = WhyNotRun(step);
  const int slot = steps.NextSlot();
  std::vector<std::string> environment = ToolEnvironment(std::getenv("LC_ALL"));
  if (!step.refusal) {
    if (step.asksForReadFiles)
      environment.push_back(
          step.readFilesPath.empty()
              ? AskForReadFiles(ReadFilesPath(outDirName, slot), theBuildSettings.watchAllHeaders)
              : "DEPENDENCIES_OUTPUT");
    environment.push_back(running.Mark());
    records.Drop(step.product);
  }
  const auto index = static_cast<size_t>(slot);
  if (startTimes.size() <= index) startTimes.resize(index + 1);
  startTimes[index] = TimeOfNow();
  return steps.Begin(step, environment);
}

void Builder::RunAlone(ToolStep step) {
  const std::string name = BaseName(step.subject);
  const bool isLink = step.kind == ToolKind::cLinker || step.kind == ToolKind::cArchiver;
  BeginStep(std::move(step));
  ShowProgress(isLink ? "Linking " + name : name);
  while (!steps.IsEmpty()) AwaitSteps();
}

int Builder::JobsFor(size_t stepCount) const {
  if (stepCount < 2) return 1;
  const int wanted = theBuildSettings.jobs;
  return wanted > 0 ? std::min(wanted, BuildSettings::cMostJobs) : UsualJobs(launcherState.name);
}

// True if a step has ended and is reported.
bool Builder::AwaitSteps() {
  const bool hasEnded = steps.Advance(static_cast<int>(cMessagesEvery.count()));
  const auto now = std::chrono::steady_clock::now();
  if (now - lastMessages >= cMessagesEvery) {
    shell->AnswerWhileRunning();
    lastMessages = now;
  }
  return hasEnded;
}

void Builder::ShowProgress(const std::string& name) {
  const bool isCounted = endedSteps < plannedSteps;
  const std::string count = std::to_string(begunSteps) + " of " + std::to_string(plannedSteps);
  shell->SetProgress(isCounted ? count + ", " + name : name, endedSteps,
                     std::max(plannedSteps, endedSteps + 1));
}

void Builder::ShowStep(const ToolStep& step) {
  if (staleObserver && !step.staleFile.empty()) staleObserver(step.staleFile, step.reason);
  for (const auto& [text, detail] : step.captions) LogMessage(*shell, text, detail);
  if (step.kind == ToolKind::cLinker || step.kind == ToolKind::cArchiver)
    shell->ShowBottomPage(BottomPage::cError);
  current = {.errorsBefore = errorCount, .rowsBefore = rowCount};
}

void Builder::TakeStepLine(const ToolStep& step, const std::string& line) {
  shell->AppendOutput(line + "\r\n");
  if (line.find_first_not_of(" \t\r") != std::string::npos) current.lastLine = line;
  const LineMeaning meaning = MeaningOf(step.kind, line, compileLines);
  if (meaning.severity == LineMeaning::cError) ++errorCount;
  if (meaning.severity == LineMeaning::cWarning) ++warningCount;
  if (meaning.kind == LineMeaning::cNewRow) AddRow(meaning.row, meaning.severity);
  if (meaning.kind == LineMeaning::cAppendToLastRow) shell->AppendToLastErrorRow(meaning.row.text);
}

bool Builder::IsErrorLine(const ToolStep& step, const std::string& line) {
  return MeaningOf(step.kind, line, earlyLines).severity == LineMeaning::cError;
}

void Builder::EndStep(const ToolStep& step, const StepEnd& end, int slot) {
  if (step.refusal) return Refuse(step.refusal->file, step.refusal->why);
  if (!end.startFailure.empty()) mavro::ShowStartFailure({end.startFailure});
  if (const std::string held = TakeHeldNotes(compileLines); !held.empty() && rowCount > 0)
    shell->AppendToLastErrorRow(held);
  LogTime(*shell, end.milliseconds);
  ++endedSteps;
  times.Forget(step.product);
  if (end.lostWith != 0 && !std::exchange(saidLost, true))
    shell->AppendOutput(step.launcher + " ended with status " + std::to_string(end.lostWith) +
                        ": what it can't compile elsewhere is compiled here\r\n");
  std::vector<InputFile> inputs = step.inputs;
  if (step.asksForReadFiles)
    for (InputFile& input : ReadFilesOf(step, slot)) inputs.push_back(std::move(input));
  if (!end.startFailure.empty() || end.exitCode != 0) return NoteFailure(step, end);
  if (errorCount == current.errorsBefore) records.Add(step.product, step.RecordedLine(), inputs);
}

std::vector<InputFile> Builder::ReadFilesOf(const ToolStep& step, int slot) {
  const std::string path =
      step.readFilesPath.empty() ? ReadFilesPath(outDirName, slot) : step.readFilesPath;
  return TakeReadFiles(times, *project, path, startTimes[static_cast<size_t>(slot)],
                       theBuildSettings.watchAllHeaders);
}

// A tool that failed may leave a file that is cut off and newer than its sources: the next build
// would take it for a good one.
void Builder::NoteFailure(const ToolStep& step, const StepEnd& end) {
  const std::string tool = ToolName(step);
  if (!end.startFailure.empty()) return CountFailedRun(step, tool + " can't be started");
  if (end.wasStopped) {
    DeleteRegularFile(step.product);
    wasStopped = true;
    return shell->AppendOutput(tool + " was stopped, what it wrote is deleted\r\n");
  }
  if (end.exitSignal != 0) {
    DeleteRegularFile(step.product);
    return Refuse(step.subject, tool + " was ended by signal " + std::to_string(end.exitSignal) +
                                    ", what it wrote is deleted");
  }
  if (!step.keepsProductOfFailure) DeleteRegularFile(step.product);
  const std::string what = tool + " ended with status " + std::to_string(end.exitCode);
  shell->AppendOutput(what + "\r\n");
  CountFailedRun(step, current.lastLine.empty() ? what : what + ": " + current.lastLine);
}

void Builder::CountFailedRun(const ToolStep& step, const std::string& what) {
  if (errorCount != current.errorsBefore) return;
  ++failedRuns;
  int row = current.firstPlainRow >= 0 ? current.firstPlainRow : current.rowsBefore;
  if (rowCount == current.rowsBefore) AddRow({step.subject, 0, " -> " + what});
  if (firstErrorRow < 0) firstErrorRow = row;
}

LineMeaning Builder::MeaningOf(ToolKind kind, const std::string& line, CompileLines& state) {
  switch (kind) {
    case ToolKind::cCompiler:
      return ReadCompileLine(state, line);
    case ToolKind::cSingleFile:
      return SingleFileToolLine(line, state);
    case ToolKind::cLinker:
      return LinkerLine(line);
    case ToolKind::cArchiver:
      return ReadArchiveLine(line);
    default:
      return {};
  }
}

// Such a row leads to the source that the linker knows, with debug information to its line.
LineMeaning Builder::LinkerLine(const std::string& line) {
  LineMeaning meaning = ReadLinkLine(line);
  const LinePlace place = PlaceInLinkLine(line);
  const std::string file(place.file.empty() ? SourceInLinkLine(line) : place.file);
  if (meaning.kind != LineMeaning::cNewRow || file.empty()) return meaning;
  if (!mavro::FileExists(project->GetFullPath(file))) return meaning;
  meaning.row.file = file;
  meaning.row.line = place.line;
  return meaning;
}

// Compiler and linker in one run. The object that the linker speaks of is gone by then: its rows
// lead to the source.
LineMeaning Builder::SingleFileToolLine(const std::string& line, CompileLines& state) {
  if (!IsLinkerLine(line)) return ReadCompileLine(state, line);
  LineMeaning meaning = LinkerLine(line);
  if (meaning.row.line == 0) meaning.row.file = SourceName(*project->Files()[0]);
  return meaning;
}

void Builder::AddRow(const ErrorRow& row, LineMeaning::Severity severity) {
  if (severity == LineMeaning::cError && firstErrorRow < 0) firstErrorRow = rowCount;
  if (severity == LineMeaning::cPlain && current.firstPlainRow < 0)
    current.firstPlainRow = rowCount;
  ++rowCount;
  shell->AddErrorRow({project->MakeRelative(row.file), row.line, row.text, row.column});
}

void Builder::Refuse(const std::string& file, const std::string& why) {
  ++errorCount;
  AddRow({file, 0, " -> " + why}, LineMeaning::cError);
}

}  // namespace zendry
