#include <algorithm>
#include <utility>

#include "base/Paths.h"
#include "base/Shell.h"
#include "debug/DebugSession.h"
#include "debug/DebugView.h"
#include "project/Project.h"

// The session: breakpoints.

namespace zendry {

namespace {

using enum DebugState;

}  // namespace

// Group: names.

// As the compiler was given it, unless that could mean another file too.
std::string DebugSession::NameForGdb(const std::string& file) const {
  std::string name = project.RelativeIfSame(file);
  if (name.starts_with("..")) return file;
  const std::string end = "/" + name;
  const auto& files = project.Files();
  const bool isAmbiguous = std::any_of(files.begin(), files.end(), [&](const auto& other) {
    return other->name != file && other->name.ends_with(end);
  });
  return isAmbiguous ? file : name;
}

// gdb may name a file as the compiler was given it.
bool DebugSession::IsSameFile(const std::string& file, const std::string& named) const {
  if (file == named || file == TidyPath(project.GetFullPath(named))) return true;
  return !IsAbsolutePath(named) && file.ends_with("/" + named);
}

// Group: changes by the user.

void DebugSession::Toggle(const std::string& file, int line) {
  if (file.empty() || line < 0 || !MayChange()) return;
  if (project.mode != cDebug && state == cNotRunning) project.SetMode(cDebug);
  for (Breakpoint& entry : breakpoints.entries)
    if (entry.file == file) RefreshFromEditor(entry);
  if (const int index = breakpoints.Find(file, line); index != Breakpoints::cNone) {
    RemoveBreakpoint(index);
    return;
  }
  const int index = breakpoints.Add(file, line, view.AddBreakMark(file, line));
  breakpoints.awaited = index;
  Make([this, key = breakpoints.entries.back().key] {
    const int at = breakpoints.FindKey(key);
    if (breakpoints.Has(at)) SendBreak(breakpoints.entries[static_cast<size_t>(at)]);
  });
  view.BreakpointsChanged();
}

void DebugSession::RemoveBreakpoint(int index) {
  if (!breakpoints.Has(index) || !MayChange()) return;
  const Breakpoint& entry = breakpoints.entries[static_cast<size_t>(index)];
  view.RemoveBreakMark(entry.file, entry.handle);
  Drop(index);
  Make([this] { Send("info break", SentFor::cSetting); });
  view.BreakpointsChanged();
}

// Removes the entry, and tells gdb.
bool DebugSession::Drop(int index) {
  if (!breakpoints.Has(index)) return false;
  const Breakpoint gone = breakpoints.entries[static_cast<size_t>(index)];
  breakpoints.Remove(index);
  breakpoints.awaited = Breakpoints::cNone;
  Make([this, gone] { SendRemoval(gone); });
  return true;
}

void DebugSession::Reconcile(const std::string& file) {
  bool removed = false;
  for (int i = static_cast<int>(breakpoints.entries.size()) - 1; i >= 0; --i) {
    Breakpoint& entry = breakpoints.entries[static_cast<size_t>(i)];
    if (entry.file != file || entry.handle < 0) continue;
    const int line = view.BreakMarkLine(file, entry.handle);
    if (line == DebugView::cFileClosed)
      entry.handle = -1;
    else if (line >= 0)
      entry.line = line;
    else if (MayChange())
      removed = Drop(i) || removed;
  }
  breakpoints.awaited = Breakpoints::cNone;
  if (!removed) return;
  Make([this] { Send("info break", SentFor::cSetting); });
  view.BreakpointsChanged();
}

void DebugSession::ReconcileAll() {
  std::vector<std::string> files;
  for (const Breakpoint& entry : breakpoints.entries)
    if (std::find(files.begin(), files.end(), entry.file) == files.end())
      files.push_back(entry.file);
  for (const std::string& file : files) Reconcile(file);
}

void DebugSession::ClearAll() {
  if (breakpoints.entries.empty() || !MayChange()) return;
  for (const Breakpoint& entry : breakpoints.entries)
    view.RemoveBreakMark(entry.file, entry.handle);
  breakpoints.Clear();
  Make([this] { Send("delete", SentFor::cPlain); });
  view.BreakpointsChanged();
}

void DebugSession::SetCondition(int index, const std::string& condition) {
  if (!breakpoints.Has(index)) return;
  Breakpoint& entry = breakpoints.entries[static_cast<size_t>(index)];
  if (entry.condition == condition || !GdbCondition(0, condition) || !MayChange()) return;
  entry.condition = condition;
  Make([this, key = entry.key] {
    const int at = breakpoints.FindKey(key);
    if (!breakpoints.Has(at)) return;
    const Breakpoint& changed = breakpoints.entries[static_cast<size_t>(at)];
    if (changed.id > 0)
      Send(*GdbCondition(changed.id, changed.condition), SentFor::cPlain);
    else
      SendBreak(changed);
  });
  view.BreakpointsChanged();
}

// Group: tabs.

void DebugSession::FileOpened(const std::string& file) {
  for (Breakpoint& entry : breakpoints.entries)
    if (entry.file == file) entry.handle = view.AddBreakMark(file, entry.line);
}

void DebugSession::FileClosing(const std::string& file) {
  Reconcile(file);
  for (Breakpoint& entry : breakpoints.entries)
    if (entry.file == file) entry.handle = -1;
}

void DebugSession::RefreshFromEditor(Breakpoint& entry) {
  if (entry.handle < 0) return;
  const int line = view.BreakMarkLine(entry.file, entry.handle);
  if (line >= 0) entry.line = line;
  if (line == DebugView::cFileClosed) entry.handle = -1;
}

void DebugSession::MoveMark(Breakpoint& entry, int line) {
  if (entry.handle >= 0) {
    view.RemoveBreakMark(entry.file, entry.handle);
    entry.handle = view.AddBreakMark(entry.file, line);
  }
  entry.line = line;
}

// Group: gdb.

void DebugSession::SendBreak(const Breakpoint& entry) {
  const auto command = GdbBreak(NameForGdb(entry.file), entry.line + 1, entry.condition);
  if (command) Send(*command, SentFor::cBreak, entry.key);
}

// By its number where gdb has given one: the line may have moved since.
void DebugSession::SendRemoval(const Breakpoint& entry) {
  if (entry.id > 0) {
    Send(GdbDelete(entry.id), SentFor::cPlain);
  } else if (entry.refusal.empty()) {
    if (const auto command = GdbClear(NameForGdb(entry.file), entry.line + 1))
      Send(*command, SentFor::cPlain);
  }
}

void DebugSession::OnBreakpointSet(const GdbBreakpoint& set) {
  if (set.isTemporary && gdb.IsCurrent(SentFor::cPlain)) temporary = set.number;
  if (set.isTemporary || !gdb.IsCurrent(SentFor::cBreak)) return;
  heldError.clear();
  const int index = breakpoints.FindKey(gdb.Current()->key);
  if (index == Breakpoints::cNone) {
    Send(GdbDelete(set.number), SentFor::cSetting);
    return;
  }
  Breakpoint& entry = breakpoints.entries[static_cast<size_t>(index)];
  entry.id = set.number;
  entry.isPending = set.isPending;
  entry.locations = set.locations;
  entry.refusal.clear();
  breakpoints.awaited = index + 1;
  // A name that only Python can hand over is set without its condition.
  if (!entry.condition.empty() && !GdbPlaceText(NameForGdb(entry.file), 1))
    Send(*GdbCondition(entry.id, entry.condition), SentFor::cPlain);
  const int line = set.place.line - 1;
  const bool isMoved = set.locations == 1 && !set.place.file.empty() && line >= 0 &&
                       line != entry.line && IsSameFile(entry.file, set.place.file);
  if (isMoved && breakpoints.Find(entry.file, line) != Breakpoints::cNone) {
    // Another one is there already.
    view.RemoveBreakMark(entry.file, entry.handle);
    Drop(index);
  } else if (isMoved) {
    MoveMark(entry, line);
  }
  view.BreakpointsChanged();
}

// gdb has answered a "break": if it hasn't set it, it has said why.
void DebugSession::AnsweredBreak(int key) {
  const std::string error = std::exchange(heldError, {});
  const int index = breakpoints.FindKey(key);
  if (error.empty() || !breakpoints.Has(index)) return;
  Breakpoint& entry = breakpoints.entries[static_cast<size_t>(index)];
  if (entry.id > 0) return;
  entry.refusal = error;
  Log(error);
  view.Say("Breakpoint " + BaseName(entry.file) + ":" + std::to_string(entry.line + 1) + ": " +
           error);
  view.BreakpointsChanged();
}

void DebugSession::OnBreakpointHit(const GdbHit& hit) {
  if (calledFor != 0) return EndCall();
  bool moved = false;
  for (Breakpoint& entry : breakpoints.entries) {
    const bool isIt = entry.id == hit.number && entry.locations == 1 && hit.place.line > 0 &&
                      IsSameFile(entry.file, hit.place.file);
    if (!isIt || entry.line == hit.place.line - 1) continue;
    MoveMark(entry, hit.place.line - 1);
    moved = true;
  }
  if (moved) view.BreakpointsChanged();
}

}  // namespace zendry
