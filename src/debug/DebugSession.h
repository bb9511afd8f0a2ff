#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "IdleWatch.h"
#include "debug/Debugger.h"
#include "debug/DebuggerInterface.h"
#include "debug/ProgramTerminal.h"
#include "debug/ThrownException.h"

namespace zendry {

// The session behind the Debugger: it starts gdb and the program's terminal, writes the commands
// and acts on what gdb says. Nothing waits here: each answer is a call of GdbListener, and what is
// late is a timer's call.
class DebugSession : public mavro::object, private GdbListener {
 public:
  // The debugger whose models it fills, and whom it works for; none is owned.
  DebugSession(Debugger& itsOwner, Project& itsProject, Builder& itsBuilder, Shell& itsShell,
               DebugView& itsView);
  ~DebugSession() override;

  DebugState State() const { return state; }
  bool IsQuiet() const { return gdb.sent.empty(); }
  bool TakesInput() const;
  Project& TheProject() { return project; }
  DebugView& View() { return view; }

  void Run(Debugger::With with);
  void Step(GdbStep kind);
  void RunToCursor();
  void Pause();
  void Stop();
  void SendInput(const std::string& text);

  void Toggle(const std::string& file, int line);
  void Reconcile(const std::string& file);
  void ReconcileAll();
  void RemoveBreakpoint(int index);
  void ClearAll();
  void SetCondition(int index, const std::string& condition);
  void FileOpened(const std::string& file);
  void FileClosing(const std::string& file);

  bool AddExpression(int list, const std::string& text);
  bool ChangeExpression(int list, int row, const std::string& text);
  void ClearWatches(int list);
  void RefreshDisplays();
  void PrintTip(const std::string& expression);
  void ViewCallStack();
  void FollowStack();
  void SelectFrame(int level);
  void Execute(const std::string& command);
  void Reset();

 private:
  // Who has asked for the next pause.
  enum class PauseBy { cNobody, cUser, cChange };
  using Change = std::function<void()>;
  // What is asked of the exception that has ended the program.
  enum ThrownPart { cThrownAddress, cThrownType, cThrownText };

  void OnPrompt() override;
  void OnDisplaysDue() override;
  void OnRunning() override;
  void OnSource(const GdbPlace& place) override;
  void OnStopped(const GdbStop& stop) override;
  void OnEnded(const GdbEnd& end) override;
  void OnBreakpointSet(const GdbBreakpoint& set) override;
  void OnBreakpointHit(const GdbHit& hit) override;
  bool IsWatched(std::string_view expression) const override;
  void OnDisplay(const GdbDisplay& display) override;
  void OnResult(const GdbValue& value) override;
  void OnFrame(const GdbFrame& frame) override;
  void OnError(const std::string& text) override;
  void OnQuestion(const std::string& text) override;
  void OnOutput(const std::string& line) override;
  void OnPlainLine(const std::string& line) override;

  // Start and end.
  void RunPlain();
  bool HasProgram();
  std::string Helper() const;
  ProgramTerminal::Place PlaceOfProgram() const;
  bool EnsureStarted(const std::string& firstCommand);
  void Start(const std::string& firstCommand);
  void OpenTerminal(ProgramTerminal::Place place);
  void SendPreparations();
  void RestoreEnvironment();
  void RunWhenReady();
  void OnGdbExit(mavro::NotifyArgs& args);
  void End(const std::string& words);
  void SetState(DebugState newState);
  void Leave();
  void Announce();

  // Commands.
  bool Send(const std::string& text, SentFor purpose, int key = 0);
  void Resume(std::string_view command);
  void Continue();
  bool Interrupt();
  void InterruptHarder();
  bool MayChange();
  void Make(Change change);
  bool Listens() const;
  bool IsEvaluating() const;

  // Stops.
  void ShowSource(const GdbPlace& place);
  void NoteAge(const std::string& file);
  void SayStop();
  void SearchSource();
  void EndSearch();
  void SayTermination();
  void AnsweredThrown(int part);
  void AskStack(std::string_view command);
  void ListStack();
  bool GoOnAfterChange(const GdbStop& stop);
  void EnterPause();
  void NoteProcess();
  void Answered(SentCommand command);
  void AnsweredBreak(int key);
  bool AwaitsResume() const;
  void Log(const std::string& line);

  // Breakpoints.
  std::string NameForGdb(const std::string& file) const;
  void SendBreak(const Breakpoint& entry);
  void SendRemoval(const Breakpoint& entry);
  void MoveMark(Breakpoint& entry, int line);
  void RefreshFromEditor(Breakpoint& entry);
  bool Drop(int index);
  bool IsSameFile(const std::string& file, const std::string& named) const;

  // Watches.
  std::vector<Watch>& ShownRows();
  void AskDisplay(const Watch& watch);
  void NoteDisplayError(int key, const std::string& text);
  void AskDisplays(bool areFresh);
  void RenewStale();
  void ShowList(int list);
  void WatchTime();
  void EvaluationTakesLong();
  void EndCall();

  Debugger& owner;
  Project& project;
  Builder& builder;
  Shell& shell;
  DebugView& view;
  Breakpoints& breakpoints;
  Watches& watches;
  DebuggerInterface gdb{*this};
  std::unique_ptr<ProgramTerminal> terminal;
  std::map<int, std::unique_ptr<ProgramTerminal>> plainTerminals;  // of programs without gdb
  int lastPlainTerminal = 0;

  DebugState state = DebugState::cNotRunning;
  DebugState announced = DebugState::cNotRunning;  // what the window knows
  bool isPreparing = false;                        // builds before a run
  bool gdbIsReady = false;                         // everything before "run" was sent
  bool runWasSent = false;
  bool hasRun = false;         // the program, in this session
  std::string terminalPath;    // empty: not open yet
  std::string firstCommand;    // sent before the breakpoints
  std::string lastSourceFile;  // has the execution mark
  std::string program;         // full path
  int programProcess = 0;      // its id, once known
  bool ageWasSaid = false;
  std::string heldError;     // of a "break" that may still be answered
  int linesBeforeReady = 0;  // that gdb has printed
  std::string lastOutput;    // of gdb, for the words at an end by itself

  PauseBy pauseBy = PauseBy::cNobody;
  bool wasStoppedHard = false;  // by a signal that the program must not get
  std::vector<Change> changes;  // to be made at the pause
  GdbPlace heldSource;          // of a pause that may be ours
  int temporary = 0;            // number of the breakpoint that a start or "Run To Cursor" has set

  int shownList = 0;               // the list that gdb displays
  int stopCount = 1;               // tells the age of values
  bool isFrameChosen = false;      // values are those of another frame than the stop's
  bool stopShowsDisplays = false;  // gdb has printed them with the stop
  bool interruptedEvaluation = false;
  int calledFor = 0;             // key of the watch whose value a function of the program is making
  bool mustRedisplay = false;    // gdb may display what isn't to be asked for
  std::vector<GdbFrame> frames;  // of the call stack that is being read
  bool stackIsAsked = false;     // at this stop
  std::optional<Termination> termination;
  std::string thrownType;
  std::string thrownText;
  std::string tipExpression;  // the newest one
  int lastTip = 0;            // its number
  std::string stopWords;
  std::string ageWords;

  mavro::IdleTimer answerTimer;      // gdb's first prompt, the start
  mavro::IdleTimer pauseTimer;       // the stop after an interrupt
  mavro::IdleTimer announceTimer;    // a step that takes so long that the window shows it
  mavro::IdleTimer evaluationTimer;  // values
};

}  // namespace zendry
