#include "debug/DebugSession.h"

#include <unistd.h>

#include <cstdlib>
#include <utility>

#include "CommandLine.h"
#include "SystemDialogs.h"
#include "base/Paths.h"
#include "base/Shell.h"
#include "build/Builder.h"
#include "build/ToolEnvironment.h"
#include "config/IdeConfig.h"
#include "debug/DebugLimits.h"
#include "debug/DebugView.h"
#include "debug/DebugWords.h"
#include "debug/ProgramProcesses.h"
#include "project/Project.h"

// The session's start and end.

namespace zendry {

DebugLimits& TheDebugLimits() {
  static DebugLimits limits;
  return limits;
}

namespace {

using enum DebugState;

constexpr int cAnnounceMs = 100;  // a step that is shorter doesn't gray anything
constexpr int cProcessMs = 300;   // after the start, the program's process is looked up
constexpr int cNoCommand = -1;
constexpr std::string_view cShellMarks = "<>|&;";

// What a child of ours has in its environment for gdb's sake; the program gets what the user has.
constexpr const char* cChangedForGdb[] = {
    "TERM",     "GCC_COLORS", "CLICOLOR_FORCE", "DEBUGINFOD_URLS", "LC_MESSAGES",
    "LANGUAGE", "LC_ALL",     "LC_CTYPE",       "LINES",           "COLUMNS"};

}  // namespace

DebugSession::DebugSession(Debugger& itsOwner, Project& itsProject, Builder& itsBuilder,
                           Shell& itsShell, DebugView& itsView)
    : owner(itsOwner),
      project(itsProject),
      builder(itsBuilder),
      shell(itsShell),
      view(itsView),
      breakpoints(itsOwner.breakpoints),
      watches(itsOwner.watches) {
  gdb.onExit.Add_H(this, &DebugSession::OnGdbExit);
}

// The window may be gone: nothing is said.
DebugSession::~DebugSession() {
  if (state == cNotRunning) return;
  NoteProcess();
  const std::vector<SystemProcess> processes = ProcessesOf(programProcess);
  state = cNotRunning;
  gdb.Terminate();
  KillProcesses(processes);
}

bool DebugSession::TakesInput() const {
  if (terminal && terminal->TakesInput()) return true;
  const auto last = plainTerminals.find(lastPlainTerminal);
  return last != plainTerminals.end() && last->second->TakesInput();
}

void DebugSession::SendInput(const std::string& text) {
  if (terminal && terminal->TakesInput()) {
    terminal->Send(text);
  } else if (TakesInput()) {
    plainTerminals[lastPlainTerminal]->Send(text);
  }
}

// Group: start.

// The run goes on after a build with errors, with the program that there is.
void DebugSession::Run(Debugger::With with) {
  if (state == cPaused && with == Debugger::With::cGdb) return Continue();
  if (isPreparing || Builder::IsBuilding()) return;
  if (state == cNotRunning) {
    isPreparing = true;
    if (builder.Build(Builder::Scope::cStale))
      shell.SetProgress("", 0, 0);
    else
      builder.Summary();
    isPreparing = false;
    if (builder.WasDenied()) return;
  }
  if (project.mode != cDebug || with == Debugger::With::cNothing) return RunPlain();
  if (state == cNotRunning) Start("");
}

bool DebugSession::HasProgram() {
  program = project.outputFolder + "/" + project.target;
  if (!project.target.empty() && access(program.c_str(), F_OK) == 0) return true;
  view.Say("There is no program to run: " + program);
  return false;
}

std::string DebugSession::Helper() const {
  return theIdeConfig.appDir + "zendry-console";
}

ProgramTerminal::Place DebugSession::PlaceOfProgram() const {
  const bool hasWindow =
      project.type == cConsole && !TerminalCommand().empty() && access(Helper().c_str(), X_OK) == 0;
  return hasWindow ? ProgramTerminal::Place::cWindow : ProgramTerminal::Place::cPanel;
}

void DebugSession::RunPlain() {
  if (state == cNotRunning) shell.SetStopCommand(cNoCommand);
  if (!HasProgram()) return;
  const std::string& parameters = project.programParams;
  std::vector<std::string> command = {program};
  if (parameters.find_first_of(cShellMarks) != std::string::npos) {
    command = {"/bin/sh", "-c", "exec \"$0\" " + parameters, program};
  } else {
    for (std::string& word : mavro::SplitCommandLine(parameters))
      command.push_back(std::move(word));
  }
  const int key = ++lastPlainTerminal;
  const auto forget = [this, key] {
    plainTerminals.erase(key);
    view.RunStateChanged();
  };
  ProgramTerminal::Events events;
  events.opened = [](const std::string&) {};
  events.closed = forget;
  events.failed = [this, forget] {
    view.Say("The program's terminal can't be opened");
    forget();
  };
  events.printed = [this](std::string_view text) { shell.AppendOutput(text); };
  events.ended = [this, key](int exitCode, int signal) {
    plainTerminals[key]->Drain();
    view.Say(EndWords({exitCode, signal ? "signal " + std::to_string(signal) : "", {}}));
  };
  plainTerminals[key] = std::make_unique<ProgramTerminal>(std::move(events));
  plainTerminals[key]->Run(PlaceOfProgram(), Helper(), project.folder, command);
  view.RunStateChanged();
}

bool DebugSession::EnsureStarted(const std::string& command) {
  if (project.mode != cDebug) {
    mavro::Information("Project not in debug mode!");
    return true;
  }
  if (state != cNotRunning) return false;
  if (!isPreparing && !Builder::IsBuilding() && builder.PassesGate()) Start(command);
  return true;
}

void DebugSession::Start(const std::string& command) {
  if (!HasProgram()) return;
  if (chdir(project.folder.empty() ? "/" : project.folder.c_str()) != 0) {
    view.Say("The folder can't be entered: " + project.folder);
    return;
  }
  firstCommand = command;
  breakpoints.ForgetNumbers();
  watches.ForgetNumbers();
  lastSourceFile.clear();
  shell.SetStopCommand(cStopDebugCommand);
  SetState(cStarting);
  view.Say("gdb reads the program");
  gdb.environment = ToolEnvironment(std::getenv("LC_ALL"));
  answerTimer.Start(TheDebugLimits().answer,
                    [this] { view.Say("gdb doesn't answer. \"Stop Debugging\" ends it."); });
  const std::string tool = ToolPath(theIdeConfig, project.current->gcc, theIdeConfig.gdb);
  if (gdb.Start(GdbStartLine(tool, program)))
    OpenTerminal(PlaceOfProgram());
  else
    End("gdb can't be started: " + tool);
}

void DebugSession::OpenTerminal(ProgramTerminal::Place place) {
  const bool isWindow = place == ProgramTerminal::Place::cWindow;
  ProgramTerminal::Events events;
  events.opened = [this](const std::string& path) {
    terminalPath = path;
    RunWhenReady();
  };
  events.failed = [this, isWindow] {
    if (!isWindow) return Stop();
    Log("The terminal doesn't open: the program's output comes here.");
    OpenTerminal(ProgramTerminal::Place::cPanel);
  };
  // As in any terminal, the program ends with its window.
  events.closed = [this] { Stop(); };
  events.printed = [this](std::string_view text) { shell.AppendOutput(text); };
  terminal = std::make_unique<ProgramTerminal>(std::move(events));
  terminal->Open(place, Helper());
  if (!isWindow && project.type == cConsole) shell.ShowBottomPage(BottomPage::cOutput);
  view.RunStateChanged();
}

// gdb has read the user's gdbinit and the program. The replies to all this come in its order.
void DebugSession::SendPreparations() {
  for (const std::string_view setting : GdbSettings())
    Send(std::string(setting), SentFor::cSetting);
  RestoreEnvironment();
  if (!firstCommand.empty()) Send(firstCommand, SentFor::cPlain);
  breakpoints.awaited = 0;
  for (Breakpoint& entry : breakpoints.entries) {
    RefreshFromEditor(entry);
    SendBreak(entry);
  }
  if (project.type == cConsole) Send("set new-console on", SentFor::cSetting);
  if (const auto arguments = GdbArguments(project.programParams))
    for (const std::string& command : *arguments) Send(command, SentFor::cPlain);
  if (state != cStarting) return;
  gdbIsReady = true;
  RunWhenReady();
}

void DebugSession::RestoreEnvironment() {
  const bool inWindow = terminal && !terminal->TakesInput();
  for (const char* name : cChangedForGdb) {
    const char* value = std::getenv(name);
    std::string text = value ? value : "";
    if (std::string_view(name) == "TERM")
      text = !inWindow ? "dumb" : text.empty() || text == "dumb" ? "xterm-256color" : text;
    const bool canBeSent = text.find_first_of("\r\n") == std::string::npos;
    if (text.empty())
      Send(std::string("unset environment ") + name, SentFor::cSetting);
    else if (canBeSent)
      Send(std::string("set environment ") + name + "=" + text, SentFor::cSetting);
  }
}

void DebugSession::RunWhenReady() {
  if (state != cStarting || !gdbIsReady || terminalPath.empty() || runWasSent) return;
  runWasSent = true;
  if (const auto command = GdbTerminal(terminalPath)) Send(*command, SentFor::cSetting);
  Send("run", SentFor::cRun);
  answerTimer.Start(TheDebugLimits().answer,
                    [this] { view.Say("gdb doesn't start the program yet"); });
}

// Group: end.

// Works in every state, and from within any call.
void DebugSession::Stop() {
  if (state == cNotRunning || state == cEnding) return;
  const bool wasPaused = state == cPaused;
  SetState(cEnding);
  NoteProcess();
  const std::vector<SystemProcess> processes = ProcessesOf(programProcess);
  if (wasPaused) Send("quit", SentFor::cSetting);
  gdb.Terminate();
  KillProcesses(processes);
  End("Debugging was stopped");
}

void DebugSession::NoteProcess() {
  if (programProcess == 0) programProcess = TracedProcess(gdb.ProcessId());
}

// Called for an end that gdb has made itself, too. Its program has died with it, which the system
// sees to; the program's own children are left.
void DebugSession::OnGdbExit(mavro::NotifyArgs& args) {
  if (state == cNotRunning || state == cEnding) return;
  const bool neverRan = !hasRun;
  SetState(cEnding);
  gdb.stream.Finish();
  KillProcesses(ProcessesOf(programProcess));
  if (args.value == mavro::SpawnConsole::cStartFailed) return;
  std::string words = neverRan ? "gdb has ended before the program ran" : "gdb has ended";
  if (neverRan && !lastOutput.empty()) words += ": " + lastOutput;
  End(words);
}

// The session is over; what it has shown of values stays.
void DebugSession::End(const std::string& words) {
  if (state == cNotRunning) return;
  if (terminal) terminal->Drain();
  Leave();
  shell.SetStopCommand(cNoCommand);
  view.RemoveExecution(std::exchange(lastSourceFile, {}));
  view.RemoveExecution("");
  SetState(cNotRunning);
  view.BreakpointsChanged();
  view.Say(words);
}

void DebugSession::Leave() {
  terminal.reset();
  breakpoints.ForgetNumbers();
  watches.ForgetNumbers();
  for (mavro::IdleTimer* timer : {&answerTimer, &pauseTimer, &announceTimer, &evaluationTimer})
    timer->Stop();
  gdbIsReady = runWasSent = hasRun = ageWasSaid = wasStoppedHard = false;
  isFrameChosen = stackIsAsked = stopShowsDisplays = interruptedEvaluation = mustRedisplay = false;
  for (std::string* text :
       {&terminalPath, &firstCommand, &heldError, &lastOutput, &stopWords, &ageWords})
    text->clear();
  programProcess = linesBeforeReady = calledFor = temporary = 0;
  pauseBy = PauseBy::cNobody;
  changes.clear();
  heldSource = {};
  frames.clear();
  termination.reset();
  gdb.Forget();
}

void DebugSession::Reset() {
  Stop();
  breakpoints.Clear();
  watches.Clear();
  for (int list = 0; list < Watches::cLists; ++list) view.ShowWatches(list);
  view.BreakpointsChanged();
}

// Group: state.

void DebugSession::SetState(DebugState newState) {
  state = newState;
  owner.running = state != cNotRunning;
  Announce();
}

void DebugSession::Announce() {
  announceTimer.Stop();
  if (std::exchange(announced, state) != state) view.RunStateChanged();
}

// Group: commands.

bool DebugSession::Send(const std::string& text, SentFor purpose, int key) {
  const bool wasSent = gdb.SendCommand(text, {purpose, key});
  if (IsEvaluating()) WatchTime();
  return wasSent;
}

void DebugSession::Resume(std::string_view command) {
  if (state != cPaused) return;
  state = cRunning;
  ++stopCount;
  ++lastTip;
  isFrameChosen = false;
  if (Send(std::string(command), SentFor::cResume))
    announceTimer.Start(cAnnounceMs, [this] { Announce(); });
}

void DebugSession::Continue() {
  if (state != cPaused) return;
  if (!lastSourceFile.empty()) view.RemoveExecution(std::exchange(lastSourceFile, {}));
  view.Say("The program runs");
  Resume("cont");
}

void DebugSession::Step(GdbStep kind) {
  if (!EnsureStarted("tbreak main")) Resume(GdbStepCommand(kind));
}

void DebugSession::RunToCursor() {
  const std::optional<CaretPlace> caret = view.Caret();
  if (!caret || (state != cNotRunning && state != cPaused)) return;
  const auto command = GdbTemporaryBreak(NameForGdb(caret->file), caret->line + 1);
  if (!command) return;
  if (state == cPaused) {
    Send(*command, SentFor::cPlain);
    return Continue();
  }
  if (project.mode != cDebug) project.SetMode(cDebug);
  EnsureStarted(*command);
}

void DebugSession::OnRunning() {
  if (IsEvaluating()) return;
  if (!std::exchange(hasRun, true)) {
    view.Say("The program runs");
    answerTimer.Start(cProcessMs, [this] { NoteProcess(); });
  }
  if (state == cPaused) ++stopCount;
  if (state == cStarting || state == cPaused) SetState(cRunning);
  // Breakpoints that were set while "run" was on its way.
  if (!changes.empty() && pauseBy == PauseBy::cNobody)
    pauseTimer.Start(cAnnounceMs, [this] { MayChange(); });
}

void DebugSession::OnEnded(const GdbEnd& end) {
  if (state == cNotRunning || state == cEnding) return;
  SetState(cEnding);
  const std::string words = EndWords(end);
  if (terminal) terminal->Drain();
  Log(words);
  if (terminal) terminal->SayEnd(words);
  if (!end.signalName.empty()) {
    NoteProcess();
    KillProcesses(ProcessesOf(programProcess));
  }
  gdb.Terminate();
  End(words);
}

void DebugSession::Execute(const std::string& command) {
  constexpr std::string_view cAnnotations = "set an";
  if (state == cNotRunning || state == cEnding) return view.AppendToConsole("gdb doesn't run.");
  if (!Listens()) return view.AppendToConsole("The program runs: gdb listens when it is paused.");
  if (!IsGdbText(command)) return;
  if (command.starts_with(cAnnotations))
    return view.AppendToConsole("The annotations can't be changed here.");
  Send(command, SentFor::cConsole);
}

}  // namespace zendry
