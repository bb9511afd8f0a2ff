#pragma once

#include <gtest/gtest.h>
#include <signal.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "IdleHook.h"
#include "ScriptedDialogs.h"
#include "SpawnConsole.h"
#include "SpawnLimits.h"

namespace test {

// A process runner whose lines, reasons and messages are kept, and whose patience is short enough
// for a test. The program it runs is test_child.
//
//   console.Execute(Child("print a b"), cBlocking);
//   EXPECT_THAT(lines, ElementsAre("a", "b"));
struct ConsoleFixture : testing::Test {
  using Console = mavro::SpawnConsole;
  static constexpr auto cBlocking = Console::Mode::cBlocking;
  static constexpr auto cAttached = Console::Mode::cAttached;

  ConsoleFixture() : savedLimits(mavro::TheSpawnLimits()) {
    mavro::TheSpawnLimits() = {.closedOutput = 60, .kill = 60, .quiet = 20, .write = 60};
    console.SetOutput(Keep(), "");
    console.onExit.Add_H(&recorder, &Recorder::OnExit);
  }
  ~ConsoleFixture() override { mavro::TheSpawnLimits() = savedLimits; }

  // The command line of test_child with its arguments.
  static std::string Child(const std::string& arguments) {
    return std::string(TEST_CHILD) + " " + arguments;
  }
  // A handler that keeps the lines.
  Console::LineHandler Keep() {
    return [this](const std::string& line) { lines.push_back(line); };
  }
  // Does what the message loop does when it has nothing else to do, until `condition` holds. False
  // when it still doesn't after 20 seconds without news.
  template <class Condition>
  static bool IdleUntil(Condition condition) {
    while (!condition()) {
      const mavro::IdleSlot slot = mavro::TheIdleSlot();
      if (!slot.hook || !mavro::WaitReadable(slot.wakeDescriptor, 20'000)) return condition();
      slot.hook();
    }
    return true;
  }
  // Lets the attached child print until its run has ended.
  bool IdleToTheEnd() {
    return IdleUntil([this] { return !console.running; });
  }
  bool IdleUntilLines(size_t count) {
    return IdleUntil([this, count] { return lines.size() >= count; });
  }

  struct Recorder : mavro::object {
    std::vector<int> reasons;
    const mavro::object* sender = nullptr;
    void OnExit(mavro::NotifyArgs& args) {
      reasons.push_back(args.value);
      sender = args.sender;
    }
  };

  std::vector<std::string> lines;
  Recorder recorder;
  ScriptedDialogs dialogs;
  mavro::SpawnLimits savedLimits;
  Console console;
};

// Whether a process has ended and only waits for being collected.
inline bool IsZombie(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/stat");
  const std::string text((std::istreambuf_iterator<char>(status)), {});
  const size_t name = text.rfind(") ");
  return name != std::string::npos && text[name + 2] == 'Z';
}

}  // namespace test
