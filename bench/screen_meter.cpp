// screen_meter watch LEAST_AREA      what the screen shows, until it is killed, one line an event:
//                                      M TIME WINDOW TITLE     a managed window, or its new title
//                                      D TIME X Y WIDTH HEIGHT a change of that many pixels or more
// screen_meter type COUNT KEY...     types the keys in turn, COUNT in all; a line for each key with
//                                    the milliseconds to its first and to its last changed pixels
// screen_meter list COUNT KEY        types the key, which opens a list, then Escape and BackSpace;
//                                    a line for each with the milliseconds until the list's window
//                                    was mapped and until something was painted in it
//
// A stopwatch on the screen of DISPLAY that knows programs by nothing but their windows and pixels.
// Keys have the names of the X keysyms and go where the keyboard is. Times are seconds of the
// monotonic clock; what didn't happen is -1. It ends with 2 when it can't work here.

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xdamage.h>
#include <X11/keysym.h>
#include <poll.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""s;

constexpr auto cQuiet = 30ms;        // without a change: what came before is over
constexpr auto cLongestQuiet = 2s;   // a program that never rests is measured all the same
constexpr auto cLongestAnswer = 3s;  // to a key
constexpr auto cSettle = 40ms;       // what is painted later than this doesn't belong to the key
constexpr int cLeastPixels = 16;     // smaller changes are no letter
constexpr int cLeastListWidth = 30;  // a smaller window is no list

Display* theDisplay;
int theDamageEvent;

Window Root() {
  return DefaultRootWindow(theDisplay);
}

// The next event of the screen, none when nothing comes before `end`.
std::optional<XEvent> NextEvent(Clock::time_point end) {
  while (!XPending(theDisplay)) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    if (left <= 0ms) return std::nullopt;
    pollfd connection = {ConnectionNumber(theDisplay), POLLIN, 0};
    poll(&connection, 1, static_cast<int>(left.count()));
  }
  XEvent event;
  XNextEvent(theDisplay, &event);
  return event;
}

// The changed part of the screen, when the event reports one of at least so many pixels.
std::optional<XRectangle> ChangeOf(const XEvent& event, int leastPixels) {
  if (event.type != theDamageEvent + XDamageNotify) return std::nullopt;
  const XRectangle area = reinterpret_cast<const XDamageNotifyEvent&>(event).area;
  if (area.width * area.height < leastPixels) return std::nullopt;
  return area;
}

void WaitForQuiet() {
  const auto end = Clock::now() + cLongestQuiet;
  while (Clock::now() < end && NextEvent(Clock::now() + cQuiet)) continue;
}

void Press(KeySym key) {
  const KeyCode code = XKeysymToKeycode(theDisplay, key);
  const KeyCode shift = XKeysymToKeycode(theDisplay, XK_Shift_L);
  const bool shifted = XkbKeycodeToKeysym(theDisplay, code, 0, 0) != key;
  if (shifted) XTestFakeKeyEvent(theDisplay, shift, True, CurrentTime);
  XTestFakeKeyEvent(theDisplay, code, True, CurrentTime);
  XTestFakeKeyEvent(theDisplay, code, False, CurrentTime);
  if (shifted) XTestFakeKeyEvent(theDisplay, shift, False, CurrentTime);
  XFlush(theDisplay);
}

double Since(Clock::time_point start) {
  return Milliseconds(Clock::now() - start).count();
}

double Seconds() {
  return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

void TypeOne(KeySym key) {
  WaitForQuiet();
  double first = -1, last = -1;
  const auto start = Clock::now();
  auto end = start + cLongestAnswer;
  Press(key);
  while (const auto event = NextEvent(end)) {
    if (!ChangeOf(*event, cLeastPixels)) continue;
    last = Since(start);
    if (first >= 0) continue;
    first = last;
    end = Clock::now() + cSettle;
  }
  std::printf("%.3f %.3f\n", first, last);
}

bool Contains(const XRectangle& outer, const XRectangle& inner) {
  return inner.x >= outer.x && inner.y >= outer.y &&
         inner.x + inner.width <= outer.x + outer.width &&
         inner.y + inner.height <= outer.y + outer.height;
}

XRectangle PlaceOf(Window window) {
  XWindowAttributes now;
  if (!XGetWindowAttributes(theDisplay, window, &now)) return {};
  return {static_cast<short>(now.x), static_cast<short>(now.y),
          static_cast<unsigned short>(now.width), static_cast<unsigned short>(now.height)};
}

// The window that was mapped, when it is no small one.
Window ListOf(const XEvent& event) {
  if (event.type != MapNotify) return None;
  return PlaceOf(event.xmap.window).width < cLeastListWidth ? None : event.xmap.window;
}

void ListOne(KeySym key) {
  WaitForQuiet();
  double mapped = -1, painted = -1;
  Window list = None;
  const auto start = Clock::now();
  Press(key);
  while (painted < 0) {
    const auto event = NextEvent(start + cLongestAnswer);
    if (!event) break;
    const double now = Since(start);
    if (list == None && (list = ListOf(*event)) != None) mapped = now;
    const auto change = list == None ? std::nullopt : ChangeOf(*event, cLeastPixels);
    // A program may give the window another size after it was mapped.
    if (change && Contains(PlaceOf(list), *change)) painted = now;
  }
  std::printf("%.3f %.3f\n", mapped, painted);
  WaitForQuiet();
  Press(XK_Escape);
  WaitForQuiet();
  Press(XK_BackSpace);
}

template <typename T>
std::vector<T> Property(Window window, const char* name, Atom type) {
  Atom found;
  int format;
  unsigned long count = 0, rest;
  unsigned char* data = nullptr;
  std::vector<T> values;
  if (XGetWindowProperty(theDisplay, window, XInternAtom(theDisplay, name, False), 0, 1024, False,
                         type, &found, &format, &count, &rest, &data) == Success &&
      data) {
    const auto* first = reinterpret_cast<const T*>(data);
    values.assign(first, first + count);
    XFree(data);
  }
  return values;
}

// Tells of managed windows that are new or have a new title.
void TellWindows(std::map<Window, std::string>& known) {
  for (const Window window : Property<Window>(Root(), "_NET_CLIENT_LIST", XA_WINDOW)) {
    XWindowAttributes attributes;
    if (!XGetWindowAttributes(theDisplay, window, &attributes) ||
        attributes.map_state != IsViewable)
      continue;
    const auto title =
        Property<char>(window, "_NET_WM_NAME", XInternAtom(theDisplay, "UTF8_STRING", False));
    const std::string text(title.begin(), title.end());
    const auto [place, isNew] = known.try_emplace(window);
    if (!isNew && place->second == text) continue;
    if (isNew) XSelectInput(theDisplay, window, PropertyChangeMask);
    place->second = text;
    std::printf("M %.6f %lu %s\n", Seconds(), window, text.c_str());
  }
}

void Watch(int leastArea) {
  constexpr auto cLook = 5ms;  // for windows that became viewable without a word
  std::map<Window, std::string> known;
  auto nextLook = Clock::now();
  while (true) {
    const auto event = NextEvent(nextLook);
    const auto change = event ? ChangeOf(*event, leastArea) : std::nullopt;
    if (change)
      std::printf("D %.6f %d %d %d %d\n", Seconds(), change->x, change->y, change->width,
                  change->height);
    if ((event && event->type == PropertyNotify) || Clock::now() >= nextLook) {
      TellWindows(known);
      nextLook = Clock::now() + cLook;
    }
    std::fflush(stdout);
  }
}

bool Run(const std::string& what, int number, const std::vector<KeySym>& keys) {
  if (what == "watch" && keys.empty()) Watch(number);
  for (const KeySym key : keys)
    if (XKeysymToKeycode(theDisplay, key) == 0) return false;
  if (keys.empty() || (what != "type" && what != "list")) return false;
  for (int i = 0; i < number; ++i) {
    const KeySym key = keys[static_cast<size_t>(i) % keys.size()];
    what == "type" ? TypeOne(key) : ListOne(key);
    std::fflush(stdout);
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  theDisplay = XOpenDisplay(nullptr);
  int error;
  if (argc < 3 || !theDisplay || !XDamageQueryExtension(theDisplay, &theDamageEvent, &error)) {
    std::fprintf(stderr, "screen_meter: needs its arguments and a screen that tells of changes\n");
    return 2;
  }
  // Windows may go while they are asked.
  XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
  XSelectInput(theDisplay, Root(), SubstructureNotifyMask | PropertyChangeMask);
  XDamageCreate(theDisplay, Root(), XDamageReportRawRectangles);
  XSync(theDisplay, False);
  std::vector<KeySym> keys;
  for (int i = 3; i < argc; ++i) keys.push_back(XStringToKeysym(argv[i]));
  if (Run(argv[1], std::atoi(argv[2]), keys)) return 0;
  std::fprintf(stderr, "screen_meter: what is \"%s\"?\n", argv[1]);
  return 2;
}
