#include "QtEnding.h"

#include <signal.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QSocketNotifier>
#include <cerrno>
#include <cstdint>
#include <cstdio>

#include "Application.h"

// Handles the ends of a program that it can't refuse. A signal handler may do very little, so it
// wakes the message loop, which calls the keeper. If the loop doesn't respond in time, the signal
// has its former effect.

namespace mavro {

namespace {

constexpr int cSignals[] = {SIGTERM, SIGHUP};
constexpr unsigned cSecondsToKeep = 3;

void (*keeper)() = nullptr;
int wakeUp = -1;  // becomes readable when a signal has come
volatile sig_atomic_t endingSignal = 0;
struct sigaction before[std::size(cSignals)];

// Gives the signal its former effect.
void EndAsBefore(int number) {
  for (size_t i = 0; i < std::size(cSignals); ++i)
    if (cSignals[i] == number) sigaction(number, &before[i], nullptr);
  raise(number);
}

void OnNoTimeLeft(int) {
  EndAsBefore(endingSignal);
}

// A second signal doesn't wait for the loop either.
void OnEndingSignal(int number) {
  const int saved = errno;
  if (endingSignal || !keeper) return EndAsBefore(number);
  endingSignal = number;
  signal(SIGALRM, OnNoTimeLeft);
  alarm(cSecondsToKeep);
  const uint64_t one = 1;
  if (write(wakeUp, &one, sizeof one) < 0) EndAsBefore(number);
  errno = saved;
}

void EndBySignal() {
  const int number = endingSignal;
  KeepForEnd();
  signal(number, SIG_DFL);
  raise(number);
}

void CatchSignals() {
  struct sigaction action = {};
  action.sa_handler = OnEndingSignal;
  action.sa_flags = SA_NODEFER | SA_RESTART;
  for (size_t i = 0; i < std::size(cSignals); ++i) {
    struct sigaction old = {};
    sigaction(cSignals[i], nullptr, &old);
    if (old.sa_handler == SIG_IGN || old.sa_handler == OnEndingSignal) continue;
    before[i] = old;
    sigaction(cSignals[i], &action, nullptr);
  }
}

void WatchWakeUp() {
  if (wakeUp < 0) wakeUp = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  if (wakeUp < 0) return;
  auto* notifier = new QSocketNotifier(wakeUp, QSocketNotifier::Read, qApp);
  QObject::connect(notifier, &QSocketNotifier::activated, EndBySignal);
}

}  // namespace

void InstallEnding() {
  WatchWakeUp();
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, qApp,
                   [](QSessionManager&) { KeepForEnd(); });
}

void KeepForEnd() {
  if (!keeper) return;
  try {
    keeper();
  } catch (...) {
    std::fputs("What was to be kept could not be stored.\n", stderr);  // no user could close a box
  }
}

bool EndWithSession() {
  if (!keeper) return false;
  KeepForEnd();
  _exit(0);
}

void Application::KeepOnEnd(void (*keep)()) {
  keeper = keep;
  if (keep && wakeUp >= 0) CatchSignals();
}

}  // namespace mavro
