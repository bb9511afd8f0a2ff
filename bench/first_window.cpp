// first_window COMMAND [ARGUMENT...]
//
// Starts a program on the screen of DISPLAY and prints, as one line: the milliseconds from just
// before its start until a managed window of it is viewable, and, two seconds later, its
// proportional and its anonymous memory in MB. Then ends it. Knows the program by nothing but that
// its window is new.

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto cLongestStart = std::chrono::seconds(30);
constexpr int cLeastWidth = 300;
constexpr unsigned cMemoryAfterSeconds = 2;

std::vector<Window> ManagedWindows(Display* display) {
  static const Atom list = XInternAtom(display, "_NET_CLIENT_LIST", False);
  Atom type;
  int format;
  unsigned long count = 0, rest;
  unsigned char* data = nullptr;
  std::vector<Window> windows;
  if (XGetWindowProperty(display, DefaultRootWindow(display), list, 0, 1024, False, XA_WINDOW,
                         &type, &format, &count, &rest, &data) == Success &&
      data) {
    const auto* first = reinterpret_cast<const Window*>(data);
    windows.assign(first, first + count);
    XFree(data);
  }
  return windows;
}

bool ShowsWindow(Display* display) {
  for (const Window window : ManagedWindows(display)) {
    XWindowAttributes attributes;
    if (XGetWindowAttributes(display, window, &attributes) && attributes.map_state == IsViewable &&
        attributes.width >= cLeastWidth)
      return true;
  }
  return false;
}

pid_t Start(char** command) {
  const pid_t child = fork();
  if (child != 0) return child;
  setpgid(0, 0);
  execvp(command[0], command);
  _exit(127);
}

bool HasEnded(pid_t child) {
  return waitpid(child, nullptr, WNOHANG) != 0;
}

// Looks whenever the window manager changes its list, and every millisecond in between.
bool WaitForWindow(Display* display, pid_t child) {
  const auto end = Clock::now() + cLongestStart;
  while (Clock::now() < end && !HasEnded(child)) {
    if (ShowsWindow(display)) return true;
    pollfd connection = {ConnectionNumber(display), POLLIN, 0};
    poll(&connection, 1, 1);
    XEvent event;
    while (XPending(display)) XNextEvent(display, &event);
  }
  return false;
}

double Megabytes(pid_t process, const std::string& kind) {
  std::ifstream rollup("/proc/" + std::to_string(process) + "/smaps_rollup");
  for (std::string line; std::getline(rollup, line);)
    if (line.rfind(kind + ":", 0) == 0) return std::stod(line.substr(kind.size() + 1)) / 1024;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  Display* display = XOpenDisplay(nullptr);
  if (argc < 2 || !display) {
    std::fprintf(stderr, "first_window: needs a command and a display\n");
    return 2;
  }
  XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
  XSelectInput(display, DefaultRootWindow(display), PropertyChangeMask | SubstructureNotifyMask);
  while (ShowsWindow(display)) usleep(1000);
  const auto start = Clock::now();
  const pid_t child = Start(argv + 1);
  const bool shown = WaitForWindow(display, child);
  const std::chrono::duration<double, std::milli> took = Clock::now() - start;
  if (shown) {
    sleep(cMemoryAfterSeconds);
    std::printf("%.1f %.1f %.1f\n", took.count(), Megabytes(child, "Pss"),
                Megabytes(child, "Anonymous"));
  }
  kill(-child, SIGKILL);
  waitpid(child, nullptr, 0);
  return shown ? 0 : 1;
}
