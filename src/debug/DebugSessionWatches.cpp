#include <signal.h>

#include <algorithm>
#include <utility>

#include "SystemDialogs.h"
#include "base/Shell.h"
#include "base/TrimText.h"
#include "debug/DebugLimits.h"
#include "debug/DebugSession.h"
#include "debug/DebugView.h"
#include "project/Project.h"

// The session: watches and tips.

namespace zendry {

namespace {

using enum DebugState;

constexpr char cTooSlow[] = "<takes longer than 2 seconds>";
constexpr char cHitsBreakpoint[] = "<reaches a breakpoint>";
constexpr char cFails[] = "<ends by a signal>";

bool IsList(int list) {
  return list >= 0 && list < Watches::cLists;
}

// Why a value was given up; empty for an error of the expression itself.
std::string WhyGivenUp(const std::string& error, bool wasInterrupted) {
  if (error == "Quit") return cTooSlow;
  if (error.find("was signaled while in a function") != std::string::npos)
    return wasInterrupted ? cTooSlow : cFails;
  if (error.find("stopped while in a function") != std::string::npos) return cHitsBreakpoint;
  return {};
}

}  // namespace

// Group: changes by the user.

bool DebugSession::AddExpression(int list, const std::string& text) {
  const std::string expression(Trimmed(text));
  if (!IsList(list) || !IsGdbText(expression)) return false;
  if (watches.Find(list, expression) != Watches::cNone) {
    mavro::Information("Watch contains: " + expression);
    return false;
  }
  const bool isTold = list == shownList && state != cNotRunning && MayChange();
  const int row = watches.Add(list, expression);
  view.ShowWatches(list);
  view.SelectWatchPage(list);
  if (isTold && hasRun) {
    Make(
        [this, list, key = watches.lists[static_cast<size_t>(list)][static_cast<size_t>(row)].key] {
          const int at = watches.FindKey(list, key);
          if (at != Watches::cNone && list == shownList)
            AskDisplay(ShownRows()[static_cast<size_t>(at)]);
        });
  }
  return true;
}

bool DebugSession::ChangeExpression(int list, int row, const std::string& text) {
  if (!IsList(list) || row < 0) return false;
  std::vector<Watch>& rows = watches.lists[static_cast<size_t>(list)];
  const auto index = static_cast<size_t>(row);
  if (index >= rows.size()) return AddExpression(list, text);
  const std::string expression(Trimmed(text));
  if (expression == rows[index].expression) return true;
  if (!expression.empty() && !IsGdbText(expression)) return false;
  if (!expression.empty() && watches.Find(list, expression) != Watches::cNone) {
    mavro::Information("Watch contains: " + expression);
    return false;
  }
  const bool isTold = list == shownList && hasRun && MayChange();
  const int number = rows[index].number;
  rows.erase(rows.begin() + row);
  int key = 0;
  if (!expression.empty()) {
    watches.Add(list, expression);
    std::rotate(rows.begin() + row, rows.end() - 1, rows.end());
    key = rows[index].key;
  }
  view.ShowWatches(list);
  if (!isTold) return true;
  Make([this, list, key, number] {
    if (list != shownList) return;
    if (number > 0) Send(GdbUndisplay(number), SentFor::cSetting);
    const int at = watches.FindKey(list, key);
    if (at != Watches::cNone) AskDisplay(ShownRows()[static_cast<size_t>(at)]);
  });
  return true;
}

void DebugSession::ClearWatches(int list) {
  if (!IsList(list) || (hasRun && !MayChange())) return;
  watches.lists[static_cast<size_t>(list)].clear();
  view.ShowWatches(list);
  if (hasRun && list == shownList) Make([this] { Send("undisplay", SentFor::cSetting); });
}

void DebugSession::RefreshDisplays() {
  if (state == cPaused) AskDisplays(false);
}

// Group: values.

std::vector<Watch>& DebugSession::ShownRows() {
  return watches.lists[static_cast<size_t>(shownList)];
}

bool DebugSession::IsWatched(std::string_view expression) const {
  return watches.Find(shownList, expression) != Watches::cNone;
}

void DebugSession::OnDisplaysDue() {
  if (state != cPaused) return;
  AskDisplays(std::exchange(stopShowsDisplays, false));
}

// The values of a stop have come with it. Those of a frame are asked for.
void DebugSession::AskDisplays(bool areFresh) {
  const int list = view.CurrentWatchList();
  if (IsList(list) && list != shownList) return ShowList(list);
  const std::vector<Watch>& rows = ShownRows();
  const bool hasDisplays =
      std::any_of(rows.begin(), rows.end(), [](const Watch& watch) { return watch.number > 0; });
  if (areFresh || !hasDisplays)
    RenewStale();
  else
    Send("display", SentFor::cDisplays);
}

// gdb shows a value only in the block that it was first read in: what has none now is asked for
// anew.
void DebugSession::RenewStale() {
  if (state != cPaused) return;
  for (size_t i = 0; i < ShownRows().size(); ++i) {
    Watch& watch = ShownRows()[i];
    if (watch.seenAt == stopCount || watch.isHeld) continue;
    if (watch.number > 0) Send(GdbUndisplay(std::exchange(watch.number, 0)), SentFor::cSetting);
    AskDisplay(watch);
  }
}

void DebugSession::ShowList(int list) {
  Send("undisplay", SentFor::cSetting);
  for (std::vector<Watch>& rows : watches.lists)
    for (Watch& watch : rows) watch.number = 0;
  shownList = list;
  for (size_t i = 0; i < ShownRows().size(); ++i)
    if (!ShownRows()[i].isHeld) AskDisplay(ShownRows()[i]);
}

void DebugSession::AskDisplay(const Watch& watch) {
  if (const auto command = GdbDisplayCommand(watch.expression))
    Send(*command, SentFor::cDisplay, watch.key);
}

void DebugSession::OnDisplay(const GdbDisplay& display) {
  const int row = watches.Find(shownList, display.expression);
  if (row == Watches::cNone) return;
  Watch& watch = ShownRows()[static_cast<size_t>(row)];
  watch.number = display.number;
  // A function of the program is called: the value comes later, or never.
  const std::string& text = display.value.text;
  calledFor = text.empty() ? watch.key : 0;
  if (text.empty()) return;
  if (text.starts_with("<error: ") && !WhyGivenUp(text, interruptedEvaluation).empty())
    return NoteDisplayError(watch.key, text);
  const bool isFirst = watch.seenAt == 0;
  const bool hasChanged = watch.seenAt == stopCount
                              ? watch.hasChanged
                              : !isFirst && !isFrameChosen && watch.whole != display.value.text;
  watch.seenAt = stopCount;
  const bool isSame = hasChanged == watch.hasChanged && watch.error.empty() &&
                      watch.whole == display.value.text && watch.value == display.value.column;
  if (isSame) return;
  watch.hasChanged = hasChanged;
  watch.error.clear();
  watch.whole = display.value.text;
  watch.value = display.value.column;
  view.ShowWatchValue(shownList, row);
}

void DebugSession::NoteDisplayError(int key, const std::string& text) {
  const int row = watches.FindKey(shownList, key);
  if (row == Watches::cNone) return;
  Watch& watch = ShownRows()[static_cast<size_t>(row)];
  const std::string why = WhyGivenUp(text, interruptedEvaluation);
  // What ends the evaluation says something else after that.
  if (watch.isHeld && !why.empty()) return;
  const std::string error = why.empty() ? text : why;
  if (!why.empty()) watch.isHeld = mustRedisplay = true;
  watch.number = 0;
  if (watch.error == error) return;
  watch.error = error;
  watch.value.clear();
  watch.whole.clear();
  watch.hasChanged = false;
  view.ShowWatchValue(shownList, row);
}

// Group: values that take long.

void DebugSession::WatchTime() {
  if (!evaluationTimer.IsRunning())
    evaluationTimer.Start(TheDebugLimits().evaluation, [this] { EvaluationTakesLong(); });
}

// A stop is never held up by a value: it is given up, and not asked for again.
void DebugSession::EvaluationTakesLong() {
  if (state == cRunning && gdb.stream.paused) {
    const auto slow = std::find_if(
        ShownRows().begin(), ShownRows().end(),
        [this](const Watch& watch) { return watch.number > 0 && watch.seenAt != stopCount; });
    if (slow == ShownRows().end()) return;
    NoteDisplayError(slow->key, "Quit");
  } else if (!IsEvaluating()) {
    return;
  }
  interruptedEvaluation = gdb.Interrupt();
  WatchTime();
}

// gdb shows all values at a stop within a call that it makes for a value, so the function is called
// again, and never ends. An interrupt may get lost between two calls; a signal of the program ends
// the innermost one, and with it all.
void DebugSession::EndCall() {
  NoteDisplayError(calledFor, "stopped while in a function");
  NoteProcess();
  if (programProcess != 0 && kill(programProcess, SIGINT) == 0) interruptedEvaluation = true;
}

// Group: tips.

// An answer that is still on its way belongs to another place of the mouse.
void DebugSession::PrintTip(const std::string& expression) {
  ++lastTip;
  if (state != cPaused) return;
  const auto command = GdbPrint(expression);
  if (!command) return;
  tipExpression = expression;
  Send(*command, SentFor::cTip, lastTip);
}

void DebugSession::OnResult(const GdbValue& value) {
  const SentCommand* current = gdb.Current();
  if (!current) return;
  if (current->purpose == SentFor::cTip && current->key == lastTip)
    view.ShowValueTip(tipExpression + "=" + value.column);
  if (current->purpose == SentFor::cThrown && current->key == cThrownType)
    thrownType = ThrownType(value.text);
  if (current->purpose == SentFor::cThrown && current->key == cThrownText)
    thrownText = GdbQuotedText(value.text);
}

}  // namespace zendry
