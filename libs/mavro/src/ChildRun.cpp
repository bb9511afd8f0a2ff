#include "ChildRun.h"

#include <poll.h>
#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>

#include "SpawnLimits.h"
#include "SystemDialogs.h"

namespace mavro {

namespace {

constexpr size_t cShownCommand = 116;    // characters of a command line that can't be started
constexpr size_t cMostAhead = 16 << 20;  // bytes fetched from a child that prints and doesn't read

// Prevents SIGPIPE from ending this process when it writes to a pipe without a reader, whatever the
// setting of the signal is; the write reports the failure in its result.
class PipeSignalGuard {
 public:
  PipeSignalGuard() {
    sigemptyset(&pipeSignal);
    sigaddset(&pipeSignal, SIGPIPE);
    sigset_t pending;
    sigpending(&pending);
    wasPending = sigismember(&pending, SIGPIPE) == 1;
    pthread_sigmask(SIG_BLOCK, &pipeSignal, &before);
  }
  ~PipeSignalGuard() {
    const timespec atOnce = {};
    if (!wasPending)
      while (sigtimedwait(&pipeSignal, nullptr, &atOnce) > 0) continue;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
  }
  PipeSignalGuard(const PipeSignalGuard&) = delete;
  PipeSignalGuard& operator=(const PipeSignalGuard&) = delete;

 private:
  sigset_t pipeSignal, before;
  bool wasPending;
};

}  // namespace

SpawnLimits& TheSpawnLimits() {
  static SpawnLimits limits;
  return limits;
}

std::string StartFailure(ChildProcess::Start failure, const std::string& commandLine) {
  if (failure == ChildProcess::Start::cNoPipe) return "CreatePipe";
  return "Error run: " + commandLine.substr(0, cShownCommand);
}

void ShowRunFailure(const std::string& text) {
  Dialogs().message(text, "Compiler error", cOkOnly | cErrorIcon);
}

void ChildRun::Hand(const std::string& line) const {
  if (!ended && *handler) (*handler)(line);
}

void ChildRun::DeliverRound() {
  lines.Append(reader.Read());
  DeliverLines();
}

void ChildRun::DeliverLines() {
  std::string line;
  while (!ended && lines.Next(line)) Hand(line);
}

void ChildRun::DeliverRest() {
  if (const std::string rest = lines.TakeRest(); !rest.empty()) Hand(rest);
}

bool ChildRun::WaitUntilWritable() {
  using Clock = std::chrono::steady_clock;
  const auto until = Clock::now() + std::chrono::milliseconds(TheSpawnLimits().write);
  bool reading = true;
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now()).count();
    if (left <= 0) return false;
    reading = reading && reader.BytesAhead() < cMostAhead;
    pollfd entries[] = {{child.Input(), POLLOUT, 0}, {reading ? child.Output() : -1, POLLIN, 0}};
    if (poll(entries, 2, static_cast<int>(left)) <= 0) continue;
    if (entries[0].revents) return true;  // or an error, which the next write reports
    if (entries[1].revents)
      reading = reader.FetchAhead(child.Output()) == PipeReader::Fetch::cBytes;
  }
}

ChildRun::Written ChildRun::Write(std::string_view bytes) {
  const PipeSignalGuard guard;
  while (!bytes.empty()) {
    const ssize_t count = write(child.Input(), bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<size_t>(count));
      continue;
    }
    if (errno == EINTR) continue;
    if (errno == EPIPE) return Written::cDropped;
    if (errno != EAGAIN || !WaitUntilWritable()) return Written::cFailed;
  }
  return Written::cAll;
}

}  // namespace mavro
