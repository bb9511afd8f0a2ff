#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "GdbPeer.h"
#include "IdleHook.h"
#include "base/QuietShell.h"
#include "build/Builder.h"
#include "config/IdeConfig.h"
#include "debug/DebugView.h"
#include "debug/Debugger.h"
#include "project/Project.h"

// debug_bench: what a step over and a start cost the debug session, beside gdb with the same
// commands.

using namespace zendry;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int cSteps = 500;
constexpr int cWatches = 20;

double Milliseconds(Clock::time_point from) {
  return std::chrono::duration<double, std::milli>(Clock::now() - from).count();
}

// A window that shows nothing.
struct NoView : DebugView {
  int watches = 0;
  bool ShowExecution(const std::string&, int) override { return true; }
  void RemoveExecution(const std::string&) override {}
  int AddBreakMark(const std::string&, int) override { return -1; }
  void RemoveBreakMark(const std::string&, int) override {}
  int BreakMarkLine(const std::string&, int) override { return cFileClosed; }
  std::optional<CaretPlace> Caret() override { return {}; }
  std::string ExpressionAtCaret() override { return ""; }
  int CurrentWatchList() override { return 0; }
  void ShowWatches(int) override {}
  void ShowWatchValue(int, int) override { ++watches; }
  void SelectWatchPage(int) override {}
  void BreakpointsChanged() override {}
  void ClearStack() override {}
  void AddStackRow(const GdbFrame&) override {}
  bool ShowsStack() override { return false; }
  void ShowStackPage() override {}
  void ShowValueTip(const std::string&) override {}
  void AppendToConsole(const std::string&) override {}
  void RunStateChanged() override {}
  void Say(const std::string&) override {}
  void OpenDialog(DebugDialog) override {}
};

// The session on a project in a folder of its own.
class Session {
 public:
  explicit Session(const std::string& folder) {
    theIdeConfig.appDir = folder + "/";
    project.SetShell(&shell);
    project.Init(folder + "/p.zpj", cApiApplication);
    project.SetMode(cDebug);
    builder.Bind(project, shell);
    debugger.Bind(project, builder, shell, view);
  }

  void Watch(const std::vector<std::string>& expressions) {
    for (const std::string& expression : expressions) debugger.AddExpression(0, expression);
    AwaitPause();
  }
  void Step(GdbStep kind) {
    debugger.Step(kind);
    AwaitPause();
  }
  void Stop() { debugger.Stop(); }

 private:
  void AwaitPause() {
    while (debugger.State() != DebugState::cPaused || !debugger.IsQuiet()) {
      const mavro::IdleSlot slot = mavro::TheIdleSlot();
      if (!slot.hook) std::exit(EXIT_FAILURE);
      mavro::WaitReadable(slot.wakeDescriptor, -1);
      slot.hook();
    }
  }

  QuietShell shell;
  NoView view;
  Project project;
  Builder builder;
  Debugger debugger;
};

std::vector<std::string> Expressions() {
  std::vector<std::string> expressions;
  for (int i = 0; i < cWatches; ++i) expressions.push_back("k + " + std::to_string(i));
  return expressions;
}

double PeerSteps(GdbPeer& peer) {
  const auto start = Clock::now();
  for (int i = 0; i < cSteps; ++i) {
    peer.Send("next\n");
    peer.AwaitPrompts(1);
  }
  return Milliseconds(start) / cSteps;
}

double SessionSteps(Session& session) {
  const auto start = Clock::now();
  for (int i = 0; i < cSteps; ++i) session.Step(GdbStep::cOver);
  return Milliseconds(start) / cSteps;
}

void Report(const char* what, double ours, double peers) {
  std::printf("%-28s %8.2f ms, gdb alone %8.2f ms, %.2f times\n", what, ours, peers, ours / peers);
}

}  // namespace

int main() {
  std::string folder = "/tmp/zendry-bench-XXXXXX";
  if (!mkdtemp(folder.data())) return EXIT_FAILURE;
  std::filesystem::create_directory(folder + "/out-dbg");
  const std::string program = folder + "/out-dbg/p.exe";
  std::ofstream(folder + "/a.c") << "int main(void) {\n  volatile int k = 0;\n  for (;;) {\n"
                                    "    k = k + 1;\n    k = k + 2;\n  }\n}\n";
  const std::string compile = "cd " + folder + " && gcc -g -o " + program + " a.c";
  if (std::system(compile.c_str()) != 0) return EXIT_FAILURE;

  auto start = Clock::now();
  GdbPeer peer(program);
  peer.Send("set confirm off\nset inferior-tty /dev/null\ntbreak main\nrun\n");
  peer.AwaitPrompts(5);
  const double peerStart = Milliseconds(start);
  const double peerSteps = PeerSteps(peer);
  for (const std::string& expression : Expressions()) peer.Send("display " + expression + "\n");
  peer.AwaitPrompts(cWatches);
  const double peerWatched = PeerSteps(peer);

  start = Clock::now();
  Session session(folder);
  session.Step(GdbStep::cInto);
  const double sessionStart = Milliseconds(start);
  const double sessionSteps = SessionSteps(session);
  session.Watch(Expressions());
  const double sessionWatched = SessionSteps(session);
  session.Stop();

  Report("start to the first stop", sessionStart, peerStart);
  Report("step over", sessionSteps, peerSteps);
  Report("step over with 20 watches", sessionWatched, peerWatched);
  std::filesystem::remove_all(folder);
}
