#include "ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <string_view>
#include <utility>

#include "SessionBus.h"

extern char** environ;

namespace mavro {

namespace {

constexpr int cFirstOwnDescriptor = 3;  // the first one after the standard streams
constexpr int cKilledMs = 1000;         // time for a killed child to end
constexpr int cSliceMs = 10;            // between polls if the system can't report the end

// A tool that takes the pipe for a terminal would colour its lines, and gdb would ask whether it
// may download. Changes are written as in SpawnConsole::environment.
constexpr const char* cOwnChanges[] = {"TERM=dumb", "GCC_COLORS=", "CLICOLOR_FORCE",
                                       "DEBUGINFOD_URLS"};

std::string_view NameOf(std::string_view entry) {
  return entry.substr(0, entry.find('='));
}

// A list of entries that starts as our own environment. It points to the entries it is given, so it
// is valid for the current start only.
class ChildEnvironment {
 public:
  ChildEnvironment() {
    for (char** entry = environ; entry && *entry; ++entry) entries.push_back(*entry);
  }

  void Change(const char* entry) {
    Remove(NameOf(entry));
    if (std::string_view(entry).find('=') != std::string_view::npos)
      entries.push_back(const_cast<char*>(entry));
  }
  void Remove(std::string_view name) {
    std::erase_if(entries, [name](const char* entry) { return NameOf(entry) == name; });
  }
  char** Finish() {
    entries.push_back(nullptr);
    return entries.data();
  }

 private:
  std::vector<char*> entries;
};

struct Pipe {
  Descriptor read, write;
};

bool MakePipe(Pipe& made) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return false;
  made = {Descriptor(ends[0]), Descriptor(ends[1])};
  return true;
}

void SetNonBlocking(int descriptor) {
  fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
}

// The steps in the child before it executes the program. The input's pipe is made after the
// output's and is duplicated first. So neither is overwritten before it is used, even if this
// process has no standard streams and the pipes have those numbers.
class SpawnPlan {
 public:
  SpawnPlan(int standardInput, int standardOutput, const std::string& folder) {
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, standardInput, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, standardOutput, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, standardOutput, STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions, cFirstOwnDescriptor);
    if (!folder.empty()) posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    posix_spawnattr_init(&attributes);
    // A new session is also a new process group, and has no terminal to ask on.
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes, &signals);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;
  ~SpawnPlan() {
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
  }

  // The child's process id, or 0 and the reason in errno.
  pid_t Spawn(const std::vector<std::string>& arguments,
              const std::vector<std::string>& environmentChanges) const {
    std::vector<char*> pointers;
    for (const std::string& argument : arguments)
      pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    ChildEnvironment environment;
    for (const char* change : cOwnChanges) environment.Change(change);
    if (const auto& bus = BusEntryOfChildren())
      bus->empty() ? environment.Remove(cBusVariable) : environment.Change(bus->c_str());
    for (const std::string& change : environmentChanges) environment.Change(change.c_str());
    pid_t process = 0;
    const int error = posix_spawnp(&process, pointers[0], &actions, &attributes, pointers.data(),
                                   environment.Finish());
    errno = error;
    return error == 0 ? process : 0;
  }

 private:
  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;
};

bool CanBeArguments(const std::vector<std::string>& arguments) {
  return !arguments.empty() && !arguments[0].empty() &&
         std::all_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
           return argument.find('\0') == std::string::npos;
         });
}

bool IsShortOfRoom(int error) {
  return error == EAGAIN || error == ENOMEM || error == EMFILE || error == ENFILE;
}

// A process that was started with SIGCHLD ignored would never learn how its children end.
void EnsureChildrenCanBeWaitedFor() {
  struct sigaction action = {};
  if (sigaction(SIGCHLD, nullptr, &action) != 0 || action.sa_handler != SIG_IGN) return;
  action.sa_handler = SIG_DFL;
  sigaction(SIGCHLD, &action, nullptr);
}

// Children that were killed and didn't end in time.
std::vector<pid_t> leftBehind;

void CollectLeftBehind() {
  std::erase_if(leftBehind, [](pid_t each) { return waitpid(each, nullptr, WNOHANG) != 0; });
}

}  // namespace

bool WaitPlainly(int descriptor, int milliseconds) {
  pollfd entry{descriptor, POLLIN, 0};
  return poll(&entry, 1, milliseconds) > 0;
}

ChildProcess::~ChildProcess() {
  if (!process) return;
  Kill();
  Collect();
}

ChildProcess::Start ChildProcess::Run(const std::vector<std::string>& arguments,
                                      const std::string& folder,
                                      const std::vector<std::string>& environmentChanges) {
  CollectLeftBehind();
  EnsureChildrenCanBeWaitedFor();
  Pipe outputPipe, inputPipe;
  if (!MakePipe(outputPipe) || !MakePipe(inputPipe)) {
    wasShortOfRoom = IsShortOfRoom(errno);
    return Start::cNoPipe;
  }
  if (!CanBeArguments(arguments)) return Start::cNotStarted;
  const SpawnPlan plan(inputPipe.read.Number(), outputPipe.write.Number(), folder);
  process = plan.Spawn(arguments, environmentChanges);
  if (!process) {
    wasShortOfRoom = IsShortOfRoom(errno);
    return Start::cNotStarted;
  }
  output = std::move(outputPipe.read);
  input = std::move(inputPipe.write);
  SetNonBlocking(output.Number());
  SetNonBlocking(input.Number());
  endDescriptor = Descriptor(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
  return Start::cStarted;
}

bool ChildProcess::HasEnded() {
  if (end || !process) return true;
  siginfo_t info = {};
  if (waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) != 0) {
    end = ChildEnd{};  // somebody else has collected it
    return true;
  }
  if (info.si_pid == 0) return false;
  end = info.si_code == CLD_EXITED ? ChildEnd{info.si_status, 0} : ChildEnd{-1, info.si_status};
  return true;
}

bool ChildProcess::WaitForEnd(int milliseconds, BlockingWait wait) {
  using Clock = std::chrono::steady_clock;
  const auto until = Clock::now() + std::chrono::milliseconds(milliseconds);
  while (!HasEnded()) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now()).count();
    if (left <= 0) return false;
    if (endDescriptor.IsOpen())
      wait(endDescriptor.Number(), static_cast<int>(left));
    else
      WaitPlainly(-1, cSliceMs);
  }
  return true;
}

bool ChildProcess::Signal(int number) {
  return process && kill(-process, number) == 0;
}

void ChildProcess::Kill() {
  Signal(SIGKILL);
  WaitForEnd(cKilledMs, WaitPlainly);
}

ChildEnd ChildProcess::Collect() {
  if (!process) return end.value_or(ChildEnd{});
  if (HasEnded())
    waitpid(process, nullptr, WNOHANG);
  else
    leftBehind.push_back(process);
  process = 0;
  return end.value_or(ChildEnd{-1, SIGKILL});
}

}  // namespace mavro
