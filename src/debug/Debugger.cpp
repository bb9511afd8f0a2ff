#include "debug/Debugger.h"

#include "debug/DebugSession.h"
#include "debug/DebugView.h"
#include "project/Project.h"

namespace zendry {

namespace {

using mavro::cAltKey;
using mavro::cControlKey;
using mavro::cShiftKey;

constexpr CommandRow cRows[] = {
    {cBreakpointCommand, "Set/Remove Breakpoint", cKeyF9},
    {cClearBreakpointsCommand, "Clear All Breakpoints", cControlKey | cShiftKey | cKeyF9},
    {cAddWatchCommand, "Add To Watch", cShiftKey | cKeyF9},
    {cClearWatchesCommand, "Clear Current Watches", 0},
    {mavro::cSeparatorRow},
    {cStepIntoCommand, "Step &Into", cKeyF8},
    {cStepOutCommand, "Step Out", cShiftKey | cKeyF8},
    {cStepOverCommand, "Step &Over", cKeyF10},
    {cRunToCursorCommand, "Run To Cursor", cControlKey | cKeyF10},
    {mavro::cSeparatorRow},
    {cRunCommand, "&Run", cKeyF5},
    {cRunPlainCommand, "&Run Without Debugging", cControlKey | cKeyF5},
    {cPauseCommand, "Pause", cControlKey | cShiftKey | cKeyF5},
    {cStopDebugCommand, "Stop Debugging", cShiftKey | cKeyF5},
    {mavro::cSeparatorRow},
    {cViewBreakpointsCommand, "View Breakpoints", cControlKey | cAltKey | 'B'},
    {cViewStackCommand, "View Call Stack", cControlKey | cAltKey | 'C'},
    {cCommanderCommand, "Open Debug Commander", 0},
    {cParametersCommand, "Set program parameters", 0},
};

}  // namespace

Debugger theDebugger;

Debugger::Debugger() : CommandList(cRows) {}

Debugger::~Debugger() = default;

void Debugger::CarryOut(int id) {
  if (!session) return;
  switch (id) {
    case cBreakpointCommand:
      if (const auto caret = session->View().Caret()) Toggle(caret->file, caret->line);
      return;
    case cClearBreakpointsCommand:
      return ClearAll();
    case cAddWatchCommand:
      return session->View().OpenDialog(DebugDialog::cWatch);
    case cClearWatchesCommand:
      return ClearCurrent();
    case cStepIntoCommand:
      return Step(GdbStep::cInto);
    case cStepOutCommand:
      return Step(GdbStep::cOut);
    case cStepOverCommand:
      return Step(GdbStep::cOver);
    case cRunToCursorCommand:
      return RunToCursor();
    case cRunCommand:
      return Run(With::cGdb);
    case cRunPlainCommand:
      return Run(With::cNothing);
    case cPauseCommand:
      return Pause();
    case cStopDebugCommand:
      return Stop();
    case cViewBreakpointsCommand:
      ReconcileAll();
      return session->View().OpenDialog(DebugDialog::cBreakpoints);
    case cViewStackCommand:
      return ViewCallStack();
    case cCommanderCommand:
      return session->View().OpenDialog(DebugDialog::cCommander);
    case cParametersCommand:
      return session->View().OpenDialog(DebugDialog::cParameters);
    default:
      return;
  }
}

void Debugger::Bind(Project& project, Builder& builder, Shell& shell, DebugView& view) {
  session = std::make_unique<DebugSession>(*this, project, builder, shell, view);
}

void Debugger::Unbind() {
  session.reset();
  running = false;
}

DebugState Debugger::State() const {
  return session ? session->State() : DebugState::cNotRunning;
}

bool Debugger::IsQuiet() const {
  return !session || session->IsQuiet();
}

bool Debugger::TakesInput() const {
  return session && session->TakesInput();
}

void Debugger::Run(With with) {
  if (session) session->Run(with);
}

void Debugger::Step(GdbStep kind) {
  if (session) session->Step(kind);
}

void Debugger::RunToCursor() {
  if (session) session->RunToCursor();
}

void Debugger::Pause() {
  if (session) session->Pause();
}

void Debugger::Stop() {
  if (session) session->Stop();
}

void Debugger::SendInput(const std::string& text) {
  if (session) session->SendInput(text);
}

void Debugger::Toggle(const std::string& file, int line) {
  if (session) session->Toggle(file, line);
}

void Debugger::Reconcile(const std::string& file) {
  if (session) session->Reconcile(file);
}

void Debugger::ReconcileAll() {
  if (session) session->ReconcileAll();
}

void Debugger::RemoveBreakpoint(int index) {
  if (session) session->RemoveBreakpoint(index);
}

void Debugger::ClearAll() {
  if (session) session->ClearAll();
}

void Debugger::SetCondition(int index, const std::string& condition) {
  if (session) session->SetCondition(index, condition);
}

void Debugger::FileOpened(const std::string& file) {
  if (session) session->FileOpened(file);
}

void Debugger::FileClosing(const std::string& file) {
  if (session) session->FileClosing(file);
}

bool Debugger::AddExpression(int list, const std::string& text) {
  return session && session->AddExpression(list, text);
}

bool Debugger::ChangeExpression(int list, int row, const std::string& text) {
  return session && session->ChangeExpression(list, row, text);
}

void Debugger::ClearCurrent() {
  if (session) session->ClearWatches(session->View().CurrentWatchList());
}

void Debugger::ClearWatches(int list) {
  if (session) session->ClearWatches(list);
}

void Debugger::RefreshDisplays() {
  if (session) session->RefreshDisplays();
}

void Debugger::PrintTip(const std::string& expression) {
  if (!expression.empty()) tipText = expression;
  if (session) session->PrintTip(expression);
}

void Debugger::ViewCallStack() {
  if (session) session->ViewCallStack();
}

void Debugger::FollowStack() {
  if (session) session->FollowStack();
}

void Debugger::SelectFrame(int level) {
  if (session) session->SelectFrame(level);
}

void Debugger::Execute(const std::string& command) {
  if (session) session->Execute(command);
}

const std::string& Debugger::Params() const {
  static const std::string none;
  return session ? session->TheProject().programParams : none;
}

void Debugger::SetParams(const std::string& params) {
  if (session) session->TheProject().programParams = params;
}

void Debugger::Reset() {
  if (session) return session->Reset();
  breakpoints.Clear();
  watches.Clear();
}

}  // namespace zendry
