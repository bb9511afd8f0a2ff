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

  // One number for both, as in shells.
  int Status() const { return signal ? 128 + signal : code; }
};

// A console program without a terminal. It has its own session and process group, its standard
// streams on pipes, no other descriptor of ours, the default signal handling, and an environment
// that switches off colours and questions.
//
// The first argument names the program. A name without a slash is searched along PATH; a relative
// name with a slash is relative to the child's folder, since the child is in that folder before it
// executes the program.
class ChildProcess {
 public:
  enum class Start { cStarted, cNoPipe, cNotStarted };

  ChildProcess() = default;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  // Kills the process group if the child was not collected.
  ~ChildProcess();

  // Starts the program; to be called once. An empty folder means this process's own. A change
  // "NAME=value" adds or replaces an entry of the environment, "NAME" removes one.
  Start Run(const std::vector<std::string>& arguments, const std::string& folder,
            const std::vector<std::string>& environmentChanges);
  // True after a failed start if the system had no room for another process or descriptor.
  bool WasShortOfRoom() const { return wasShortOfRoom; }

  // Our ends of the pipes: the child's output and its input. Neither blocks.
  int Output() const { return output.Number(); }
  int Input() const { return input.Number(); }
  void CloseInput() { input.Close(); }
  // Becomes readable when the child ends; -1 if the system doesn't support this.
  int EndDescriptor() const { return endDescriptor.Number(); }
  pid_t Group() const { return process; }

  // True if the child has ended. Until Collect, its process id stays reserved and its group can be
  // signalled.
  bool HasEnded();
  // Waits for the end by the function `wait`; true if the child has ended.
  bool WaitForEnd(int milliseconds, BlockingWait wait);
  // Sends a signal to the whole group; false if the group is empty.
  bool Signal(int number);
  // Kills the group and waits a little for the child.
  void Kill();
  // Removes the ended child from the process table and returns how it ended. A child that is still
  // running is kept in a list and removed when a later child starts.
  ChildEnd Collect();

 private:
  Descriptor output, input, endDescriptor;
  pid_t process = 0;
  bool wasShortOfRoom = false;
  std::optional<ChildEnd> end;
};

// Waits without handling windows; for short waits, and for times when the windows may be gone.
bool WaitPlainly(int descriptor, int milliseconds);

}  // namespace mavro
