#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Handlers.h"

namespace mavro {

// Runs a console program as a child without a terminal, its standard streams on pipes, and hands
// what it prints to a handler line by line.
//
// Blocking mode, for tools: Execute returns when the child has ended, lines arrive without their
// ending. Attached mode, for a debugger: Execute returns at once, the pipe is polled from the idle
// hook, lines arrive with their ending, and Send writes to the child. Only one attached child
// exists at a time.
//
// Failures are shown by message boxes with the caption "Compiler error"; nothing is thrown.
class SpawnConsole : public object {
 public:
  using LineHandler = std::function<void(const std::string& line)>;
  enum class Mode { cAttached, cBlocking };
  // Reasons an attached or failed run ends with; a blocking run ends with the exit code.
  enum Reason { cStartFailed = -1, cPipeEnded = 0, cTerminated = 1, cWriteFailed = 109 };

  SpawnConsole();
  ~SpawnConsole() override;

  // Terminates an attached child, then sets who gets the lines and the folder of blocking runs
  // (empty: this process's own).
  void SetOutput(LineHandler handler, const std::string& folder);
  // Starts a child. The command line is split by the quoting rules of SplitCommandLine; no shell
  // sees it. False when a child is attached (which is not touched) or the child can't be started.
  bool Execute(const std::string& commandLine, Mode mode);
  // Writes `text` and a newline to the attached child. A child that has just died is passed over.
  bool Send(const std::string& text);
  // Ends the attached child's whole process group.
  void Terminate();
  // Sends the interrupt of Ctrl+C to the attached child's group; false if there is none.
  bool Interrupt();
  // Reads what the attached child has printed so far; never blocks.
  void Poll();

  bool running = false;  // a child is attached
  // How the last blocking run ended: the exit code, or 128 and the signal that killed it; -1
  // before.
  int exitCode = -1;
  int exitSignal = 0;  // the signal that killed the last blocking child, 0 for none

  NotifyEvent onExit;  // value: the reason

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace mavro
