#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "Descriptor.h"
#include "IdleHook.h"

namespace mavro {

// How a child ended: by exit, with its code, or by a signal.
struct ChildEnd {
  int code = -1;
  int signal = 0;  // 0 for none

  // One number for both, as shells have it.
  int Status() const { return signal ? 128 + signal : code; }
};

// A console program without a terminal: a session and process group of its own, standard streams on
// pipes, no other descriptor of ours, all signals as a new program expects them, colours and
// questions switched off in its environment.
//
// The first argument names the program. Without a slash it is looked for along PATH; a relative
// name with one is taken from the child's folder, where the child stands already when it becomes
// the program.
class ChildProcess {
 public:
  enum class Start { cStarted, cNoPipe, cNotStarted };

  ChildProcess() = default;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  // Kills the group of a child that wasn't collected.
  ~ChildProcess();

  // Starts the program; to be called once. An empty folder is this process's own.
  Start Run(const std::vector<std::string>& arguments, const std::string& folder);

  // Our ends of the pipes: what the child prints, and what it reads. Neither blocks.
  int Output() const { return output.Number(); }
  int Input() const { return input.Number(); }
  void CloseInput() { input.Close(); }
  // Becomes readable when the child ends; -1 where the system can't tell.
  int EndDescriptor() const { return endDescriptor.Number(); }
  pid_t Group() const { return process; }

  // Whether the child has ended. Its number stays taken, and its group can be signalled, until
  // Collect.
  bool HasEnded();
  // Waits for the end with the given way to wait; answers whether it has come.
  bool WaitForEnd(int milliseconds, BlockingWait wait);
  // Sends a signal to the whole group; false when nobody is there any more.
  bool Signal(int number);
  // Kills the group and waits a little for the child.
  void Kill();
  // Takes the ended child off the process table and tells how it ended. One that hasn't ended is
  // put aside, to be taken off whenever another one starts.
  ChildEnd Collect();

 private:
  Descriptor output, input, endDescriptor;
  pid_t process = 0;
  std::optional<ChildEnd> end;
};

// Waits without showing anything; for short waits, and where windows may be gone.
bool WaitPlainly(int descriptor, int milliseconds);

}  // namespace mavro
