#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Handlers.h"

namespace mavro {

// Runs a console program as a child without a terminal, with its standard streams on pipes, and
// passes its output to a handler line by line.
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
  // The reasons why an attached or failed run ends; a blocking run ends with the exit code.
  enum Reason { cStartFailed = -1, cPipeEnded = 0, cTerminated = 1, cWriteFailed = 109 };

  SpawnConsole();
  ~SpawnConsole() override;

  // Terminates an attached child, then sets the handler of the lines and the folder of blocking
  // runs (empty: this process's own). A current run keeps its handler.
  void SetOutput(LineHandler handler, const std::string& folder);
  // Starts a child. The command line is split by the quoting rules of SplitCommandLine; no shell is
  // involved. A program's name without a slash is searched along PATH; a relative one with a slash
  // is relative to the child's folder. False if a child is already attached (it goes on running) or
  // the child can't be started.
  //
  // A blocking run ends with the child, even if another process still holds its output. A tool that
  // closes its output is given time to end and then stopped. Output that another process keeps open
  // is read until it has been quiet for a while. In both cases a last line says so. The child's
  // standard input is empty.
  bool Execute(const std::string& commandLine, Mode mode);
  // Writes `text` and a newline to the attached child; true if they were written. For a child that
  // has just died, nothing is written. A child that doesn't read for a second ends the run with
  // cWriteFailed.
  bool Send(const std::string& text);
  // Kills the attached child's whole process group and ends the run. Within a blocking run (from
  // its handler) it does the same as StopBlockingRun. The destructor also terminates the child and
  // so fires onExit: a derived class that handles onExit itself must call Terminate in its own
  // destructor.
  void Terminate();
  // Sends the interrupt of Ctrl+C to the attached child's group; false if there is none.
  bool Interrupt();
  // The process id of the attached child, which is also its group's; 0 for none.
  int ProcessId() const;
  // Reads the output of the attached child so far, about a megabyte at most so that windows stay
  // responsive; never blocks. A handler called from here may use this object in any way and even
  // destroy it.
  void Poll();

  // Asks the whole process group of the innermost blocking run to end, and kills it if it doesn't
  // end in time; Execute then returns as after any end by a signal. No effect if no blocking run is
  // active. May be called from a signal handler.
  static void StopBlockingRun();

  bool running = false;  // a child is attached
  // How the last blocking run ended: the exit code, or 128 and the signal that killed it; -1
  // before.
  int exitCode = -1;
  int exitSignal = 0;  // the signal that killed the last blocking child, 0 for none

  // How the environment of the next children differs from this process's: "NAME=value" adds or
  // replaces an entry, "NAME" removes it.
  std::vector<std::string> environment;

  NotifyEvent onExit;  // value: the reason

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace mavro
