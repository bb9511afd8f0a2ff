#pragma once

#include <deque>
#include <string>

#include "SpawnConsole.h"
#include "debug/GdbStream.h"

namespace zendry {

// What a command was written to gdb for.
enum class SentFor {
  cSetting,   // what gdb says to it isn't shown
  cPlain,     // what gdb says is shown
  cBreak,     // `key` is the breakpoint's
  cRun,       // the program's start
  cResume,    // a step, "cont"
  cDisplay,   // `key` is the watch's
  cDisplays,  // all displays
  cTip,       // a value under the mouse; `key` tells the newest one
  cThrown,    // the exception that has ended the program; `key` is the part
  cStack,     // the rows of the call stack
  cSearch,    // the same, to find the first frame that has a source
  cConsole    // of the user
};

struct SentCommand {
  SentFor purpose = SentFor::cPlain;
  int key = 0;
};

// One gdb and its stream. Commands are written at once; each is answered by one prompt, in their
// order, so the first of `sent` is the one that gdb carries out.
class DebuggerInterface : public mavro::SpawnConsole {
 public:
  explicit DebuggerInterface(GdbListener& listener) : stream(listener) {}
  ~DebuggerInterface() override { Terminate(); }

  // Starts gdb by its command line; false, after a message, if it can't be started.
  bool Start(const std::string& commandLine);
  // Writes a command. False if gdb is gone.
  bool SendCommand(const std::string& text, SentCommand command);
  // What gdb carries out; null if it has answered everything.
  const SentCommand* Current() const { return sent.empty() ? nullptr : &sent.front(); }
  bool IsCurrent(SentFor purpose) const;
  // gdb has printed a prompt: takes off the command that it answers.
  SentCommand TakeAnswered();
  // The next prompt answers nothing: gdb was interrupted while it waited.
  void ExpectStrayPrompt() { strayPrompts = 1; }
  // For a new gdb.
  void Forget();

  GdbStream stream;
  std::deque<SentCommand> sent;

 private:
  void HandleLine(const std::string& line);

  int strayPrompts = 0;
  bool takesLines = false;  // a command that is entered in several lines has begun
};

}  // namespace zendry
