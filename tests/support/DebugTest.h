#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "IdleHook.h"
#include "ScopedVariable.h"
#include "ScriptedDialogs.h"
#include "TestBuild.h"
#include "debug/DebugLimits.h"
#include "debug/DebugView.h"
#include "debug/Debugger.h"

namespace test {

// A window that the debug session sees: it keeps marks and says in words what it was told.
struct FakeDebugView : zendry::DebugView {
  std::string execution;  // "a.cpp:4", from 1; empty without a mark
  std::vector<std::string> says;
  std::vector<std::string> stack;
  std::vector<std::string> console;
  std::string tip;
  std::vector<zendry::DebugDialog> dialogs;
  std::map<std::string, std::map<int, int>> marks;  // of the open files: handle and line
  std::optional<zendry::CaretPlace> caret;
  int list = 0;
  int watchesShown = 0;
  bool canShow = true;
  bool showsStack = false;

  // The last sentence.
  std::string Said() const { return says.empty() ? "" : says.back(); }
  bool HasSaid(const std::string& text) const {
    for (const std::string& said : says)
      if (said.find(text) != std::string::npos) return true;
    return false;
  }

  bool ShowExecution(const std::string& file, int line) override {
    if (!canShow || !std::filesystem::exists(file)) return false;
    execution = std::filesystem::path(file).filename().string() + ":" + std::to_string(line + 1);
    return true;
  }
  void RemoveExecution(const std::string&) override { execution.clear(); }
  int AddBreakMark(const std::string& file, int line) override {
    const auto open = marks.find(file);
    if (open == marks.end()) return -1;
    open->second[++lastHandle] = line;
    return lastHandle;
  }
  void RemoveBreakMark(const std::string& file, int handle) override {
    if (const auto open = marks.find(file); open != marks.end()) open->second.erase(handle);
  }
  int BreakMarkLine(const std::string& file, int handle) override {
    const auto open = marks.find(file);
    if (open == marks.end()) return cFileClosed;
    const auto mark = open->second.find(handle);
    return mark == open->second.end() ? cMarkGone : mark->second;
  }
  std::optional<zendry::CaretPlace> Caret() override { return caret; }
  std::string ExpressionAtCaret() override { return ""; }
  int CurrentWatchList() override { return list; }
  void ShowWatches(int) override { ++watchesShown; }
  void ShowWatchValue(int, int) override {}
  void SelectWatchPage(int newList) override { list = newList; }
  void BreakpointsChanged() override {}
  void ClearStack() override { stack.clear(); }
  void AddStackRow(const zendry::GdbFrame& frame) override {
    stack.push_back(frame.text + " at " +
                    std::filesystem::path(frame.place.file).filename().string() + ":" +
                    std::to_string(frame.place.line));
  }
  bool ShowsStack() override { return showsStack; }
  void ShowStackPage() override {}
  void ShowValueTip(const std::string& text) override { tip = text; }
  void AppendToConsole(const std::string& line) override { console.push_back(line); }
  void RunStateChanged() override {}
  void Say(const std::string& text) override { says.push_back(text); }
  void OpenDialog(zendry::DebugDialog which) override { dialogs.push_back(which); }

 private:
  int lastHandle = 0;
};

// A console project in debug mode with the machine's compilers and gdb, a debugger and its window.
// Programs print into the Output panel.
//
//   Add("a.cpp", "int main() {\n  return 3;\n}\n");
//   debugger.Toggle(Path("a.cpp"), 1);
//   ASSERT_TRUE(RunToStop());
//   EXPECT_EQ(view.execution, "a.cpp:2");
struct DebugTest : testing::Test {
  DebugTest() {
    for (const char* name : {"gcc", "g++", "gdb"}) UseTool(name, std::string("/usr/bin/") + name);
    build.project.SetMode(zendry::cDebug);
    debugger.Bind(build.project, build.builder, build.shell, view);
  }
  ~DebugTest() override {
    debugger.Unbind();
    zendry::TheDebugLimits() = {};
  }

  // Puts a program in the place of a tool.
  void UseTool(const std::string& name, const std::string& program) {
    const std::string path = build.install.Path("tools/" + name);
    std::filesystem::remove(path);
    std::filesystem::create_symlink(program, path);
  }
  void Add(const std::string& name, const std::string& text) {
    build.Add(name, text);
    view.marks[Path(name)];
  }
  std::string Path(const std::string& name) const { return build.Path(name); }
  std::string Output() const { return build.shell.output; }

  // Does what the message loop does when it has nothing else to do, until `condition` holds. False
  // if it doesn't within 20 seconds.
  template <class Condition>
  static bool IdleUntil(Condition condition) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(20);
    while (!condition()) {
      const mavro::IdleSlot slot = mavro::TheIdleSlot();
      const auto left =
          std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
      if (!slot.hook || left <= 0) return condition();
      mavro::WaitReadable(slot.wakeDescriptor, static_cast<int>(left));
      slot.hook();
    }
    return true;
  }
  bool IdleUntilState(zendry::DebugState state) {
    return IdleUntil([this, state] { return debugger.State() == state; });
  }
  // Also when gdb has answered all that was asked at the stop.
  bool IdleUntilPaused() {
    return IdleUntil([this] {
             const zendry::DebugState state = debugger.State();
             return state == zendry::DebugState::cNotRunning ||
                    (state == zendry::DebugState::cPaused && debugger.IsQuiet());
           }) &&
           debugger.State() == zendry::DebugState::cPaused;
  }
  bool RunToStop() {
    debugger.Run(zendry::Debugger::With::cGdb);
    return IdleUntilPaused();
  }
  bool StepToStop(zendry::GdbStep kind) {
    debugger.Step(kind);
    return IdleUntilPaused();
  }
  bool IdleUntilEnd() { return IdleUntilState(zendry::DebugState::cNotRunning); }

  // The values of a list: "k = 2", with "!" before what has changed.
  std::vector<std::string> Values(int list = 0) const {
    std::vector<std::string> values;
    for (const zendry::Watch& watch : debugger.watches.lists[static_cast<size_t>(list)])
      values.push_back((watch.hasChanged ? "!" : "") + watch.expression + " = " +
                       (watch.error.empty() ? watch.value : watch.error));
    return values;
  }

  ScriptedDialogs dialogs;
  ScopedVariable noDisplay{"DISPLAY", ""};
  ScopedVariable noWayland{"WAYLAND_DISPLAY", ""};
  TestBuild build;
  ScopedVariable home{"HOME", build.install.Folder("home")};
  FakeDebugView view;
  zendry::Debugger debugger;
};

}  // namespace test
