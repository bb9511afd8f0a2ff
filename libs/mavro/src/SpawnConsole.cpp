#include "SpawnConsole.h"

#include <signal.h>
#include <sys/epoll.h>

#include <optional>
#include <string_view>
#include <utility>

#include "BlockingRun.h"
#include "ChildRun.h"
#include "CommandLine.h"
#include "IdleWatch.h"
#include "SpawnLimits.h"

namespace mavro {

namespace {

constexpr int cFetchesPerPoll = 16;  // then the windows are handled

// The object whose child is attached; the idle pass polls it.
SpawnConsole* theAttached = nullptr;

// An attached child, and a descriptor that becomes readable when it prints or ends. The end needs
// its own check: another process may hold the output, which then never ends.
struct AttachedRun : ChildRun {
  explicit AttachedRun(Handler handler)
      : ChildRun(LineBuffer::Rule::cAttached, std::move(handler)) {}

  int WakeDescriptor() {
    wake = Descriptor(epoll_create1(EPOLL_CLOEXEC));
    const bool watches = Watch(child.Output());
    if (child.EndDescriptor() >= 0) Watch(child.EndDescriptor());
    return watches ? wake.Number() : child.Output();
  }

 private:
  bool Watch(int descriptor) const {
    epoll_event event = {};
    event.events = EPOLLIN;
    return epoll_ctl(wake.Number(), EPOLL_CTL_ADD, descriptor, &event) == 0;
  }

  Descriptor wake;
};

}  // namespace

struct SpawnConsole::Impl {
  explicit Impl(SpawnConsole& owner) : owner(owner) {}

  bool RunBlocking(const std::string& commandLine);
  bool Attach(const std::string& commandLine);
  bool FetchAttached(ChildRun& run);
  void EndOfOutput(ChildRun& run);
  bool EndAttached(int reason);

  SpawnConsole& owner;
  ChildRun::Handler handler;
  std::string folder;
  std::shared_ptr<AttachedRun> attached;
  std::optional<IdleWatch> watch;   // of the attached run
  BlockingRun* blocking = nullptr;  // the innermost; on the stack of its caller
};

// The console may be gone when the child has ended: only the run knows this.
bool SpawnConsole::Impl::RunBlocking(const std::string& commandLine) {
  owner.exitCode = -1;
  owner.exitSignal = 0;
  BlockingRun run(handler, blocking);
  const auto start = run.child.Run(SplitCommandLine(commandLine), folder, owner.environment);
  if (start != ChildProcess::Start::cStarted) {
    ShowRunFailure(StartFailure(start, commandLine));
    return false;
  }
  blocking = &run;
  const ChildEnd end = run.ToEnd();
  if (run.ended) return true;
  blocking = run.outer;
  owner.exitCode = end.Status();
  owner.exitSignal = end.signal;
  NotifyArgs args{&owner, end.Status()};
  owner.onExit.Fire(args);
  return true;
}

bool SpawnConsole::Impl::Attach(const std::string& commandLine) {
  if (theAttached) return false;
  auto run = std::make_shared<AttachedRun>(handler);
  const auto start = run->child.Run(SplitCommandLine(commandLine), "", owner.environment);
  if (start != ChildProcess::Start::cStarted) {
    const bool isPipe = start == ChildProcess::Start::cNoPipe;
    ShowRunFailure(isPipe ? StartFailure(start, commandLine) : "Utility execution error");
    EndAttached(cStartFailed);
    return false;
  }
  attached = run;
  theAttached = &owner;
  owner.running = true;
  watch.emplace(run->WakeDescriptor(), [] {
    if (theAttached) theAttached->Poll();
  });
  return true;
}

// True if there are bytes to deliver; ends the run if its output has ended.
bool SpawnConsole::Impl::FetchAttached(ChildRun& run) {
  PipeReader::Fetch result = run.reader.FetchAhead(run.child.Output());
  // Everything that an ended child has printed is in the pipe by now.
  if (result == PipeReader::Fetch::cNone && run.child.HasEnded())
    result = run.reader.FetchAhead(run.child.Output());
  else if (result == PipeReader::Fetch::cNone)
    return false;
  if (result == PipeReader::Fetch::cBytes) return true;
  EndOfOutput(run);
  if (result == PipeReader::Fetch::cError) ShowRunFailure("Pipe read error");
  return false;
}

void SpawnConsole::Impl::EndOfOutput(ChildRun& run) {
  run.DeliverRest();
  if (!run.ended) EndAttached(cPipeEnded);
}

// Ends the attached run, if there is one, and fires onExit. False if the console is gone after
// that.
bool SpawnConsole::Impl::EndAttached(int reason) {
  owner.running = false;
  if (const std::shared_ptr<AttachedRun> run = std::exchange(attached, nullptr)) {
    run->ended = true;
    theAttached = nullptr;
    watch.reset();
    // If a child ends by itself, the other processes of its group are not killed: they may be meant
    // to go on.
    const int patience = reason == cPipeEnded ? TheSpawnLimits().attachedEnd : 0;
    if (reason != cPipeEnded || !run->child.WaitForEnd(patience, WaitPlainly)) run->child.Kill();
    run->child.Collect();
  }
  NotifyArgs args{&owner, reason};
  return owner.onExit.Fire(args);
}

SpawnConsole::SpawnConsole() : impl(std::make_unique<Impl>(*this)) {
  SetOutput(nullptr, "");
}

SpawnConsole::~SpawnConsole() {
  for (BlockingRun* run = impl->blocking; run; run = run->outer) run->ended = true;
  if (running) impl->EndAttached(cTerminated);
}

void SpawnConsole::SetOutput(LineHandler handler, const std::string& folder) {
  if (running && !impl->EndAttached(cTerminated)) return;
  impl->handler = std::make_shared<const LineHandler>(std::move(handler));
  impl->folder = folder;
}

bool SpawnConsole::Execute(const std::string& commandLine, Mode mode) {
  if (running) return false;
  return mode == Mode::cAttached ? impl->Attach(commandLine) : impl->RunBlocking(commandLine);
}

bool SpawnConsole::Send(const std::string& text) {
  if (!running) return false;
  const std::shared_ptr<AttachedRun> run = impl->attached;
  const ChildRun::Written written = run->Write(text + "\n");
  if (written == ChildRun::Written::cFailed) impl->EndAttached(cWriteFailed);
  return written == ChildRun::Written::cAll;
}

void SpawnConsole::Terminate() {
  if (running)
    impl->EndAttached(cTerminated);
  else if (impl->blocking)
    StopInnermostRun();
}

int SpawnConsole::ProcessId() const {
  return running ? static_cast<int>(impl->attached->child.Group()) : 0;
}

bool SpawnConsole::Interrupt() {
  return running && impl->attached->child.Signal(SIGINT);
}

void SpawnConsole::Poll() {
  const std::shared_ptr<AttachedRun> run = impl->attached;
  if (run) run->DeliverLines();
  for (int fetches = 0; run && !run->ended;) {
    if (run->reader.BytesAhead()) run->DeliverRound();
    // The limit applies only when no fetched bytes are left undelivered, since only the descriptor
    // wakes the loop.
    else if (fetches++ == cFetchesPerPoll || !impl->FetchAttached(*run))
      return;
  }
}

void SpawnConsole::StopBlockingRun() {
  StopInnermostRun();
}

}  // namespace mavro
