#include "rescue/Rescue.h"

#include <signal.h>
#include <unistd.h>

#include "Assert.h"
#include "FileText.h"
#include "SystemDialogs.h"
#include "base/ControlBytes.h"
#include "project/Project.h"
#include "project/ProjectFileFormat.h"
#include "rescue/TextRescue.h"

namespace zendry {

namespace {

const RescueCopies cCopies("project");
constexpr int cTheProject = 1;  // a program has one

constexpr int cEndingSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTERM, SIGHUP};
constexpr unsigned cSecondsToWrite = 3;
constexpr size_t cSignalStack = 0x40000;

volatile sig_atomic_t rescuing = 0;
bool keepsCopies = true;

// Each of the two rescues may itself fail and lead here again; then neither is started a second
// time.
void RescueNow() {
  if (rescuing) return;
  rescuing = 1;
  TextRescue::KeepAll();
  KeepRescueCopy(theProject);
}

// Memory may be damaged and locks may be held: if the rescue hangs, the alarm ends the program; if
// it fails again, the signal's default does.
void OnEndingSignal(int number) {
  for (const int ending : cEndingSignals) signal(ending, SIG_DFL);
  signal(SIGALRM, SIG_DFL);
  alarm(cSecondsToWrite);
  RescueNow();
  raise(number);
}

void CatchEndingSignals() {
  static char stack[cSignalStack];  // of its own: the main stack may have overflowed
  stack_t alternate = {};
  alternate.ss_sp = stack;
  alternate.ss_size = sizeof stack;
  sigaltstack(&alternate, nullptr);
  struct sigaction action = {};
  action.sa_handler = OnEndingSignal;
  action.sa_flags = SA_ONSTACK | SA_NODEFER;
  for (const int number : cEndingSignals) {
    struct sigaction old = {};
    sigaction(number, nullptr, &old);
    if (old.sa_handler != SIG_IGN) sigaction(number, &action, nullptr);
  }
}

}  // namespace

void KeepRescueCopies(bool on) {
  keepsCopies = on;
  TextRescue::SetOn(on);
  KeepRescueCopy(theProject);
}

void KeepRescueCopy(const Project& project) {
  const bool unsaved = keepsCopies && project.isOpen && project.modified && !project.implicit;
  if (!unsaved || project.name.empty()) return DropRescueCopy();
  // Without a copy, the window still has the project; its settings are not worth a message.
  std::ignore =
      cCopies.Keep(cTheProject, project.GetFullPath(project.name), WriteProjectText(project).text);
}

void DropRescueCopy() {
  cCopies.Drop(cTheProject);
}

std::vector<RescueCopy> FindRescuedProjects() {
  std::vector<RescueCopy> found = cCopies.OfEndedProcesses();
  std::erase_if(found, [](const RescueCopy& copy) { return copy.path.empty(); });
  return found;
}

std::string OfferRescuedProjects() {
  std::string saved;
  for (const RescueCopy& rescued : FindRescuedProjects()) {
    bool cancelled = false;
    const std::string question = "Zendry ended before this project was saved:\n" +
                                 MarkControlBytes(rescued.path) + "\n\nSave its changes?";
    const bool wanted = mavro::Confirm(question, &cancelled);
    if (cancelled) continue;
    if (wanted) {
      const mavro::FileResult result = mavro::SaveFileText(rescued.path, rescued.content);
      if (!result.Ok()) {
        mavro::Information(result.error);
        continue;
      }
      saved = rescued.path;
    }
    RescueCopies::Forget(rescued);
  }
  return saved;
}

void RescueOnLastWords() {
  mavro::AddLastWords(RescueNow);
  CatchEndingSignals();
}

}  // namespace zendry
