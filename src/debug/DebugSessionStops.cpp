#include <signal.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "SystemDialogs.h"
#include "base/Paths.h"
#include "base/Shell.h"
#include "config/IdeSession.h"
#include "debug/DebugLimits.h"
#include "debug/DebugSession.h"
#include "debug/DebugView.h"
#include "debug/DebugWords.h"
#include "debug/GdbLines.h"
#include "debug/ProgramProcesses.h"
#include "project/Project.h"

// The session: prompts, stops and pauses.

namespace zendry {

namespace {

using enum DebugState;

constexpr char cBacktrace[] = "backtrace 10000";
constexpr char cShortBacktrace[] = "backtrace 100";  // what a stop may cost

bool IsPauseSignal(const std::string& name) {
  return name == "SIGINT" || name == "SIGSTOP" || name.empty();
}

}  // namespace

// Group: prompts.

bool DebugSession::IsEvaluating() const {
  return gdb.IsCurrent(SentFor::cDisplay) || gdb.IsCurrent(SentFor::cDisplays) ||
         gdb.IsCurrent(SentFor::cTip);
}

bool DebugSession::AwaitsResume() const {
  return std::any_of(gdb.sent.begin(), gdb.sent.end(), [](const SentCommand& command) {
    return command.purpose == SentFor::cResume || command.purpose == SentFor::cRun;
  });
}

void DebugSession::OnPrompt() {
  if (state == cNotRunning || state == cEnding) return;
  if (!gdbIsReady) {
    answerTimer.Stop();
    return SendPreparations();
  }
  evaluationTimer.Stop();
  calledFor = 0;
  Answered(gdb.TakeAnswered());
  if (state == cNotRunning || state == cEnding) return;
  // A step that can't be made, or a stop whose values were interrupted.
  if (state == cRunning && gdb.stream.paused && !AwaitsResume()) EnterPause();
  if (state == cPaused && std::exchange(mustRedisplay, false)) ShowList(shownList);
  if (gdb.sent.empty())
    interruptedEvaluation = false;
  else if (IsEvaluating())
    WatchTime();
}

void DebugSession::Answered(SentCommand command) {
  switch (command.purpose) {
    case SentFor::cRun:
      if (hasRun) return;
      Stop();
      return view.Say("The program can't be run: " + lastOutput);
    case SentFor::cBreak:
      return AnsweredBreak(command.key);
    case SentFor::cSearch:
      return EndSearch();
    case SentFor::cStack:
      return ListStack();
    case SentFor::cThrown:
      return AnsweredThrown(command.key);
    case SentFor::cDisplay:
      if (std::exchange(interruptedEvaluation, false)) NoteDisplayError(command.key, "Quit");
      return;
    case SentFor::cDisplays:
      return RenewStale();
    default:
      return;
  }
}

void DebugSession::OnError(const std::string& text) {
  const SentCommand* current = gdb.Current();
  // The interrupt came when the program had stopped by itself.
  if (text == "Quit" && !interruptedEvaluation) return gdb.ExpectStrayPrompt();
  const SentFor purpose = current ? current->purpose : SentFor::cPlain;
  if (purpose == SentFor::cSetting || purpose == SentFor::cTip || purpose == SentFor::cThrown)
    return;
  if (purpose == SentFor::cBreak) {
    heldError = text;
    return;
  }
  if (purpose == SentFor::cDisplay) return NoteDisplayError(current->key, text);
  lastOutput = text;
  Log(text);
  if (purpose == SentFor::cResume || purpose == SentFor::cRun) view.Say(text);
}

void DebugSession::OnQuestion(const std::string& text) {
  Log(text);
}

void DebugSession::OnOutput(const std::string& line) {
  if (gdb.IsCurrent(SentFor::cSetting) || gdb.IsCurrent(SentFor::cTip)) return;
  if (gdb.IsCurrent(SentFor::cThrown)) return;
  const std::optional<GdbSignal> signal = ReadSignal(line);
  if (signal && pauseBy == PauseBy::cChange && IsPauseSignal(signal->name)) return;
  lastOutput = line;
  if (theIdeSession.quietDebugger && IsRoutine(line)) return;
  // What gdb reads before it is ready may never end.
  constexpr int cMostLines = 200;
  if (gdbIsReady || ++linesBeforeReady <= cMostLines) Log(line);
}

void DebugSession::OnPlainLine(const std::string& line) {
  view.AppendToConsole(line);
}

void DebugSession::Log(const std::string& line) {
  if (!line.empty()) LogMessage(shell, line, "");
}

// Group: pauses.

bool DebugSession::Listens() const {
  return state == cPaused || (state == cStarting && gdbIsReady && !runWasSent);
}

bool DebugSession::Interrupt() {
  if (!gdb.Interrupt()) {
    mavro::Beep();
    return false;
  }
  pauseTimer.Start(TheDebugLimits().pause, [this] { InterruptHarder(); });
  return true;
}

// A program may block the interrupt.
void DebugSession::InterruptHarder() {
  if (state != cRunning) return;
  NoteProcess();
  if (programProcess != 0 && kill(programProcess, SIGSTOP) == 0) wasStoppedHard = true;
  pauseTimer.Start(TheDebugLimits().hardPause, [this] {
    changes.clear();
    pauseBy = PauseBy::cNobody;
    view.Say("The program can't be paused");
  });
}

void DebugSession::Pause() {
  if (state != cRunning || pauseBy == PauseBy::cUser) return;
  if (pauseBy == PauseBy::cChange || Interrupt()) pauseBy = PauseBy::cUser;
}

// Before something changes that gdb must know: pauses a running program, which goes on when all
// changes are made. False, with a beep, if it can't be paused.
bool DebugSession::MayChange() {
  if (state == cEnding) return false;
  if (state != cRunning || pauseBy != PauseBy::cNobody) return true;
  if (!Interrupt()) return false;
  pauseBy = PauseBy::cChange;
  return true;
}

// Tells gdb a change, at the next pause if it doesn't listen. A gdb that isn't ready is told
// everything at its start.
void DebugSession::Make(Change change) {
  if (Listens())
    change();
  else if (state == cRunning || runWasSent)
    changes.push_back(std::move(change));
}

// True if the stop was only made for changes: the program goes on.
bool DebugSession::GoOnAfterChange(const GdbStop& stop) {
  const bool isLate = wasStoppedHard && stop.signalName == "SIGSTOP";
  const bool isOurs = stop.reason == GdbStop::cSignal && IsPauseSignal(stop.signalName) &&
                      (pauseBy == PauseBy::cChange || (isLate && pauseBy == PauseBy::cNobody));
  // The program must not get this signal when it goes on.
  if (isLate) {
    wasStoppedHard = false;
    Send("queue-signal 0", SentFor::cSetting);
  }
  state = cPaused;
  pauseBy = PauseBy::cNobody;
  for (const Change& change : std::exchange(changes, {})) change();
  if (!isOurs || state != cPaused) return false;
  heldSource = {};
  Resume("cont");
  Announce();
  return true;
}

// Group: stops.

void DebugSession::OnSource(const GdbPlace& place) {
  if (state == cNotRunning || state == cEnding) return;
  if (IsEvaluating() && interruptedEvaluation) return;
  if (state == cPaused && !IsEvaluating()) {
    ++stopCount;
    isFrameChosen = true;
  }
  // gdb prints the values next.
  if (state == cRunning) WatchTime();
  if (pauseBy == PauseBy::cChange)
    heldSource = place;
  else
    ShowSource(place);
}

void DebugSession::ShowSource(const GdbPlace& place) {
  if (place.line <= 0) return;
  const std::string file = TidyPath(project.GetFullPath(place.file));
  NoteAge(file);
  if (file != lastSourceFile && !lastSourceFile.empty()) view.RemoveExecution(lastSourceFile);
  lastSourceFile = file;
  if (!view.ShowExecution(file, place.line - 1)) lastSourceFile.clear();
}

// Lines of a text that is newer than the program are not those of the program.
void DebugSession::NoteAge(const std::string& file) {
  if (ageWasSaid) return;
  std::error_code error;
  const auto ofText = std::filesystem::last_write_time(file, error);
  if (error) return;
  const auto ofProgram = std::filesystem::last_write_time(program, error);
  if (error || ofText <= ofProgram) return;
  ageWasSaid = true;
  ageWords = ". The program is older than this text";
}

void DebugSession::OnStopped(const GdbStop& stop) {
  if (state == cNotRunning || state == cEnding) return;
  if (IsEvaluating() && interruptedEvaluation) return;
  // A function that was called to read a value has reached a breakpoint.
  if (gdb.IsCurrent(SentFor::cDisplay))
    NoteDisplayError(gdb.Current()->key, "stopped while in a function");
  stackIsAsked = false;
  const bool isPause = stop.reason == GdbStop::cSignal && IsPauseSignal(stop.signalName);
  if (state == cRunning && GoOnAfterChange(stop)) return;
  if (state == cNotRunning || state == cEnding) return;
  // The user has set no breakpoint there.
  GdbStop said = stop;
  if (said.reason == GdbStop::cBreakpoint && said.number == temporary) said.reason = GdbStop::cStep;
  stopWords = StopWords(said);
  if (heldSource.line > 0) ShowSource(std::exchange(heldSource, {}));
  EnterPause();
  const bool hasSource = !stop.place.file.empty();
  if (!hasSource && !lastSourceFile.empty())
    view.RemoveExecution(std::exchange(lastSourceFile, {}));
  if (stop.reason == GdbStop::cSignal && (!isPause || !hasSource))
    SearchSource();
  else
    FollowStack();
}

void DebugSession::EnterPause() {
  pauseTimer.Stop();
  pauseBy = PauseBy::cNobody;
  stopShowsDisplays = true;
  state = cPaused;
  Announce();
  SayStop();
}

void DebugSession::SayStop() {
  if (stopWords.empty()) return;
  view.Say(stopWords + std::exchange(ageWords, {}));
  stopWords.clear();
}

// Group: the call stack.

void DebugSession::ViewCallStack() {
  view.ClearStack();
  if (state == cPaused) AskStack(cBacktrace);
  view.ShowStackPage();
}

void DebugSession::AskStack(std::string_view command) {
  stackIsAsked = true;
  Send(std::string(command), SentFor::cStack);
}

// The stack that is seen is that of the last stop.
void DebugSession::FollowStack() {
  if (state == cPaused && !stackIsAsked && view.ShowsStack()) AskStack(cShortBacktrace);
}

void DebugSession::ListStack() {
  view.ClearStack();
  for (const GdbFrame& frame : std::exchange(frames, {})) view.AddStackRow(frame);
}

void DebugSession::SelectFrame(int level) {
  if (state == cPaused) Send(GdbSelectFrame(level), SentFor::cSetting);
}

// The program has stopped where no source is, or by a fault: its stack tells where it came from.
void DebugSession::SearchSource() {
  stackIsAsked = true;
  Send(cShortBacktrace, SentFor::cSearch);
}

void DebugSession::OnFrame(const GdbFrame& frame) {
  if (gdb.IsCurrent(SentFor::cStack) || gdb.IsCurrent(SentFor::cSearch)) frames.push_back(frame);
}

void DebugSession::EndSearch() {
  const std::vector<GdbFrame> stack = frames;
  ListStack();
  termination = FindTermination(stack);
  if (termination) SayTermination();
  const auto first = std::find_if(stack.begin(), stack.end(), [this](const auto& frame) {
    std::error_code error;
    return !frame.place.file.empty() &&
           std::filesystem::exists(project.GetFullPath(frame.place.file), error);
  });
  if (!stack.empty()) view.ShowStackPage();
  if (first != stack.end() && first->place.level > 0) SelectFrame(first->place.level);
}

void DebugSession::SayTermination() {
  view.Say(TerminationWords(*termination, "", ""));
  if (!termination->throwLevel) return;
  thrownType.clear();
  thrownText.clear();
  const ThrownCommands commands = AskForThrown(*termination->throwLevel);
  for (const std::string& command : commands.preparations)
    Send(command, SentFor::cThrown, cThrownAddress);
  Send(commands.type, SentFor::cThrown, cThrownType);
  Send(commands.text, SentFor::cThrown, cThrownText);
}

void DebugSession::AnsweredThrown(int part) {
  if (part == cThrownText && state == cPaused && !thrownType.empty())
    view.Say(TerminationWords(*termination, thrownType, thrownText));
}

}  // namespace zendry
