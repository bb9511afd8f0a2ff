#include "debug/ProgramTerminal.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>

#include "Descriptor.h"
#include "IdleWatch.h"
#include "base/ParseInt.h"
#include "base/Paths.h"
#include "debug/DebugLimits.h"

extern char** environ;

namespace zendry {

namespace {

constexpr size_t cMostOfAPass = 16384;  // bytes that one idle pass shows
constexpr size_t cLongestLine = 8192;   // then the panel begins a new line
constexpr size_t cMostOfARun = 8 << 20;
constexpr size_t cLineCost = 32;  // what a line counts for beside its letters

// Follows a program's last text. No program prints it by chance, and no terminal changes it.
constexpr std::string_view cEndMark = "\x05\x06zendry-end\x06\x05";
constexpr int cDrainMs = 1000;  // for text that is on its way
constexpr int cMarkMs = 20;     // for room for the mark

using mavro::Descriptor;

// Calls a copy: a function of the owner may destroy the terminal, and itself with it.
template <class Function, class... Arguments>
void Tell(Function function, const Arguments&... arguments) {
  function(arguments...);
}

bool WriteAll(int descriptor, std::string_view text) {
  constexpr int cPatienceMs = 1000;
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written > 0) {
      text.remove_prefix(static_cast<size_t>(written));
      continue;
    }
    pollfd entry{descriptor, POLLOUT, 0};
    if (errno != EINTR && (errno != EAGAIN || poll(&entry, 1, cPatienceMs) <= 0)) return false;
  }
  return true;
}

// Group: starting what isn't our child afterwards.

// Starts a program in a session of its own, which goes on without us: a shell that ends at once is
// its parent, so that nobody has to wait for it. `terminal` becomes its standard streams; -1 for
// none.
bool StartApart(const std::vector<std::string>& command, int terminal) {
  std::vector<std::string> words = {"/bin/sh", "-c", "\"$@\" <&3 3<&- &", "sh"};
  words.insert(words.end(), command.begin(), command.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  constexpr int cInput = 3;
  if (terminal >= 0) {
    for (const int number : {STDOUT_FILENO, STDERR_FILENO, cInput})
      posix_spawn_file_actions_adddup2(&actions, terminal, number);
  } else {
    posix_spawn_file_actions_addopen(&actions, cInput, "/dev/null", O_RDWR, 0);
    for (const int number : {STDOUT_FILENO, STDERR_FILENO})
      posix_spawn_file_actions_adddup2(&actions, cInput, number);
  }
  posix_spawn_file_actions_addclosefrom_np(&actions, cInput + 1);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes,
                           POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  sigset_t signals;
  sigemptyset(&signals);
  posix_spawnattr_setsigmask(&attributes, &signals);
  sigfillset(&signals);
  posix_spawnattr_setsigdefault(&attributes, &signals);
  pid_t process = 0;
  const int error =
      posix_spawn(&process, "/bin/sh", &actions, &attributes, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  if (error != 0) return false;
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return true;
}

bool HasDisplay() {
  const auto isSet = [](const char* name) {
    const char* value = std::getenv(name);
    return value && *value;
  };
  return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY");
}

// A socket in a folder that only this user can enter.
class Doorway {
 public:
  Doorway();
  Doorway(const Doorway&) = delete;
  Doorway& operator=(const Doorway&) = delete;
  ~Doorway();

  const std::string& Path() const { return path; }
  int Number() const { return listening.Number(); }
  Descriptor Accept() const {
    return Descriptor(accept4(listening.Number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
  }

 private:
  std::string folder;
  std::string path;
  Descriptor listening;
};

Doorway::Doorway() {
  const char* base = std::getenv("XDG_RUNTIME_DIR");
  std::string name = std::string(base && *base ? base : "/tmp") + "/zendry-XXXXXX";
  if (!mkdtemp(name.data())) {
    name = "/tmp/zendry-XXXXXX";
    if (!mkdtemp(name.data())) return;
  }
  folder = name;
  path = folder + "/console";
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return;
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  Descriptor made(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!made.IsOpen()) return;
  if (bind(made.Number(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
      listen(made.Number(), 1) == 0)
    listening = std::move(made);
}

Doorway::~Doorway() {
  if (!path.empty()) unlink(path.c_str());
  if (!folder.empty()) rmdir(folder.c_str());
}

// The length of the text without a character that is cut at its end.
size_t WholeCharacters(std::string_view text) {
  constexpr size_t cLongestCharacter = 4;
  for (size_t back = 1; back <= std::min(text.size(), cLongestCharacter); ++back) {
    const auto byte = static_cast<unsigned char>(text[text.size() - back]);
    if ((byte & 0xC0) == 0x80) continue;
    const size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
    return length > back ? text.size() - back : text.size();
  }
  return text.size();
}

}  // namespace

std::vector<std::string> TerminalCommand() {
  struct Emulator {
    const char* program;
    const char* option;  // before the command; null for none
  };
  constexpr Emulator cEmulators[] = {
      {"x-terminal-emulator", "-e"},
      {"konsole", "-e"},
      {"gnome-terminal", "--"},
      {"kgx", "--"},
      {"xfce4-terminal", "-x"},
      {"mate-terminal", "-x"},
      {"qterminal", "-e"},
      {"terminator", "-x"},
      {"tilix", "-e"},
      {"kitty", nullptr},
      {"alacritty", "-e"},
      {"foot", nullptr},
      {"st", "-e"},
      {"urxvt", "-e"},
      {"xterm", "-e"},
  };
  if (!HasDisplay()) return {};
  for (const Emulator& emulator : cEmulators) {
    const std::string path = FindProgram(emulator.program);
    if (path.empty()) continue;
    if (!emulator.option) return {path};
    return {path, emulator.option};
  }
  return {};
}

struct ProgramTerminal::Impl {
  explicit Impl(Events itsEvents) : events(std::move(itsEvents)) {}

  bool Await(const std::vector<std::string>& command, bool inWindow);
  void Connected();
  void Hear();
  void HearLine(const std::string& line);
  bool OpenPty();
  void ReadPty();
  Descriptor OpenForMark() const;
  void Drain();
  void Show(std::string text);
  void Print(std::string_view text);
  void Fail();

  const Events events;
  bool isPlain = false;  // a program without gdb
  std::optional<Doorway> doorway;
  Descriptor connection;
  std::string heard;
  Descriptor master;
  Descriptor slave;       // kept open: a terminal that nobody has open can't be read
  std::string unread;     // a character that isn't complete
  size_t lineLength = 0;  // of the line that the panel is in
  size_t printed = 0;
  std::unique_ptr<mavro::IdleWatch> watch;  // of the doorway, then of the connection
  std::unique_ptr<mavro::IdleWatch> ptyWatch;
  mavro::IdleTimer timer;
};

ProgramTerminal::ProgramTerminal(Events itsEvents)
    : impl(std::make_unique<Impl>(std::move(itsEvents))) {}

ProgramTerminal::~ProgramTerminal() = default;

// Everything is said from the idle pass, failures too.
void ProgramTerminal::Impl::Fail() {
  timer.Start(0, [this] { Tell(events.failed); });
}

bool ProgramTerminal::Impl::Await(const std::vector<std::string>& command, bool inWindow) {
  std::vector<std::string> line = inWindow ? TerminalCommand() : std::vector<std::string>();
  if (!doorway || doorway->Number() < 0 || (inWindow && line.empty())) return false;
  line.insert(line.end(), command.begin(), command.end());
  watch = std::make_unique<mavro::IdleWatch>(doorway->Number(), [this] { Connected(); });
  if (!StartApart(line, inWindow ? -1 : slave.Number())) return false;
  timer.Start(TheDebugLimits().window, [this] { Tell(events.failed); });
  return true;
}

void ProgramTerminal::Impl::Connected() {
  Descriptor accepted = doorway->Accept();
  if (!accepted.IsOpen()) return;
  timer.Stop();
  connection = std::move(accepted);
  watch = std::make_unique<mavro::IdleWatch>(connection.Number(), [this] { Hear(); });
  doorway.reset();
  if (isPlain) Tell(events.opened, std::string());
}

// The last call of each branch may destroy this object.
void ProgramTerminal::Impl::Hear() {
  char bytes[512];
  const ssize_t count = read(connection.Number(), bytes, sizeof bytes);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count <= 0) {
    watch.reset();
    connection = {};
    return Tell(events.closed);
  }
  heard.append(bytes, static_cast<size_t>(count));
  const size_t end = heard.find('\n');
  if (end == std::string::npos) return;
  const std::string line = heard.substr(0, end);
  heard.erase(0, end + 1);
  HearLine(line);
}

void ProgramTerminal::Impl::HearLine(const std::string& line) {
  const auto after = [&line](std::string_view word) { return line.substr(word.size()); };
  if (line.starts_with("tty ")) return Tell(events.opened, after("tty "));
  if (line.starts_with("exit ")) return Tell(events.ended, ParseInt(after("exit ")), 0);
  if (line.starts_with("signal ")) return Tell(events.ended, 0, ParseInt(after("signal ")));
}

bool ProgramTerminal::Impl::OpenPty() {
  master = Descriptor(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
  if (!master.IsOpen() || grantpt(master.Number()) != 0 || unlockpt(master.Number()) != 0)
    return false;
  const char* path = ptsname(master.Number());
  if (!path) return false;
  slave = Descriptor(open(path, O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!slave.IsOpen()) return false;
  const winsize size = {.ws_row = 25, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};
  ioctl(master.Number(), TIOCSWINSZ, &size);
  ptyWatch = std::make_unique<mavro::IdleWatch>(master.Number(), [this] { ReadPty(); });
  return true;
}

// One piece in each pass, so that windows answer while a program prints without end.
void ProgramTerminal::Impl::ReadPty() {
  std::string text;
  while (text.size() < cMostOfAPass) {
    char bytes[4096];
    const ssize_t count = read(master.Number(), bytes, sizeof bytes);
    if (count <= 0) break;
    text.append(bytes, static_cast<size_t>(count));
  }
  Show(std::move(text));
}

// Never waits for room. The program's own descriptors stay as they are.
Descriptor ProgramTerminal::Impl::OpenForMark() const {
  const char* path = ptsname(master.Number());
  return path ? Descriptor(open(path, O_WRONLY | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)) : Descriptor();
}

// The system passes a text on some time after the program has written it, but in its order: when
// our mark has come, nothing is missing.
void ProgramTerminal::Impl::Drain() {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::milliseconds(cDrainMs);
  const Descriptor terminal = OpenForMark();
  std::string_view toWrite = cEndMark;
  std::string text;
  size_t mark = std::string::npos;
  while (mark == std::string::npos && Clock::now() < end) {
    const ssize_t written = write(terminal.Number(), toWrite.data(), toWrite.size());
    if (written > 0) toWrite.remove_prefix(static_cast<size_t>(written));
    pollfd entry{master.Number(), POLLIN, 0};
    if (poll(&entry, 1, toWrite.empty() ? cDrainMs : cMarkMs) <= 0) break;
    char bytes[4096];
    const ssize_t count = read(master.Number(), bytes, sizeof bytes);
    if (count <= 0) break;
    text.append(bytes, static_cast<size_t>(count));
    mark = text.find(cEndMark);
    if (mark != std::string::npos) text.erase(mark, cEndMark.size());
    if (text.size() < cMostOfAPass) continue;
    // The mark may have come in part.
    const std::string rest = text.substr(text.size() - cEndMark.size());
    text.resize(text.size() - rest.size());
    Show(std::exchange(text, rest));
  }
  Show(std::move(text));
}

void ProgramTerminal::Impl::Show(std::string text) {
  text.insert(0, std::exchange(unread, {}));
  const size_t whole = WholeCharacters(text);
  unread = text.substr(whole);
  text.resize(whole);
  if (!text.empty()) Print(text);
}

// What is too long for the panel isn't kept: a line is divided, and a run that prints without end
// is shown up to a limit.
void ProgramTerminal::Impl::Print(std::string_view text) {
  if (printed > cMostOfARun) return;
  printed += text.size();
  std::string shown;
  for (const char c : text) {
    if (c == '\n') {
      lineLength = 0;
      printed += cLineCost;
    }
    // A character is never cut.
    if (++lineLength > cLongestLine && (static_cast<unsigned char>(c) & 0xC0) != 0x80) {
      shown += "\r\n";
      lineLength = 0;
    }
    shown += c;
  }
  if (printed > cMostOfARun) shown += "\r\n[The program prints more than is shown.]\r\n";
  Tell(events.printed, shown);
}

void ProgramTerminal::Open(Place place, const std::string& helper) {
  if (place == Place::cWindow) {
    impl->doorway.emplace();
    if (!impl->Await({helper, impl->doorway->Path()}, true)) impl->Fail();
  } else if (impl->OpenPty()) {
    impl->timer.Start(
        0, [this] { Tell(impl->events.opened, std::string(ptsname(impl->master.Number()))); });
  } else {
    impl->Fail();
  }
}

void ProgramTerminal::Run(Place place, const std::string& helper, const std::string& folder,
                          const std::vector<std::string>& command) {
  impl->isPlain = true;
  impl->doorway.emplace();
  std::vector<std::string> line = {helper, "--run", impl->doorway->Path(), folder};
  line.insert(line.end(), command.begin(), command.end());
  const bool inWindow = place == Place::cWindow;
  if ((!inWindow && !impl->OpenPty()) || !impl->Await(line, inWindow)) impl->Fail();
}

// The socket closes on our side only when the window has read the text.
void ProgramTerminal::SayEnd(const std::string& text) {
  if (!impl->connection.IsOpen()) return;
  std::string line = "end " + text;
  std::replace(line.begin(), line.end(), '\n', ' ');
  impl->watch.reset();
  WriteAll(impl->connection.Number(), line + "\n");
  impl->connection = {};
}

void ProgramTerminal::Drain() {
  if (impl->master.IsOpen()) impl->Drain();
}

bool ProgramTerminal::TakesInput() const {
  return impl->master.IsOpen();
}

bool ProgramTerminal::Send(const std::string& line) {
  return TakesInput() && WriteAll(impl->master.Number(), line + "\n");
}

}  // namespace zendry
