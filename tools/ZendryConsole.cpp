#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

// zendry-console: runs in the user's terminal and gives it to a program.
//
//   zendry-console SOCKET
// makes a pseudo terminal for a program that gdb runs, and shows it in the terminal. The socket is
// told its name, "tty PATH". It answers "end TEXT": the text is shown until a key is pressed. When
// it is closed, the terminal closes too.
//
//   zendry-console --run SOCKET FOLDER PROGRAM [ARGUMENT...]
// runs a program in the folder, on the terminal itself, and shows how it ended until a key is
// pressed. The socket is told "exit CODE" or "signal NUMBER".

namespace {

constexpr int cWrongUse = 2;
constexpr int cNotStarted = 127;

int Connect(const char* path) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  if (std::strlen(path) >= sizeof address.sun_path) return -1;
  std::strcpy(address.sun_path, path);
  const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (connection < 0) return -1;
  if (connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0)
    return connection;
  close(connection);
  return -1;
}

// False if the other side is gone.
bool WriteAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written < 0 && (errno == EINTR || errno == EAGAIN)) {
      pollfd entry{descriptor, POLLOUT, 0};
      poll(&entry, 1, -1);
      continue;
    }
    if (written <= 0) return false;
    text.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

// Every key is passed on at once, as long as it lives.
class RawTerminal {
 public:
  RawTerminal() : isTerminal(tcgetattr(STDIN_FILENO, &saved) == 0) {
    if (!isTerminal) return;
    termios raw = saved;
    cfmakeraw(&raw);
    tcsetattr(STDIN_FILENO, TCSANOW, &raw);
  }
  RawTerminal(const RawTerminal&) = delete;
  RawTerminal& operator=(const RawTerminal&) = delete;
  ~RawTerminal() {
    if (isTerminal) tcsetattr(STDIN_FILENO, TCSADRAIN, &saved);
  }

 private:
  termios saved = {};
  const bool isTerminal;
};

// What was typed for the program is no answer.
void ShowUntilKey(const std::string& text) {
  const RawTerminal raw;
  WriteAll(STDOUT_FILENO, "\r\n[" + text + "] Press a key to close.\r\n");
  tcflush(STDIN_FILENO, TCIFLUSH);
  char key = 0;
  while (read(STDIN_FILENO, &key, 1) < 0 && errno == EINTR) {
  }
}

// Group: a terminal for a program that gdb runs.

class Relay {
 public:
  explicit Relay(int itsConnection) : connection(itsConnection) {}

  bool Open();
  // Up to the end; the text to show then, empty for none.
  std::string Run();

 private:
  bool Pass(int from, int to);
  void TakeSize();
  void Drain();

  const int connection;
  int master = -1;
  int slave = -1;  // kept open: the terminal lives longer than the program
  int sizes = -1;
  bool hasInput = true;
  std::string said;
};

bool Relay::Open() {
  master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
  if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) return false;
  const char* path = ptsname(master);
  if (!path) return false;
  slave = open(path, O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (slave < 0) return false;
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGWINCH);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  sizes = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
  TakeSize();
  return WriteAll(connection, std::string("tty ") + path + "\n");
}

void Relay::TakeSize() {
  signalfd_siginfo information;
  while (read(sizes, &information, sizeof information) > 0) {
  }
  winsize size = {};
  if (ioctl(STDIN_FILENO, TIOCGWINSZ, &size) == 0) ioctl(master, TIOCSWINSZ, &size);
}

// False at the end of input.
bool Relay::Pass(int from, int to) {
  char bytes[4096];
  const ssize_t count = read(from, bytes, sizeof bytes);
  if (count < 0) return errno == EINTR || errno == EAGAIN;
  return count > 0 && WriteAll(to, {bytes, static_cast<size_t>(count)});
}

// What the program has printed before it ended.
void Relay::Drain() {
  pollfd entry{master, POLLIN, 0};
  while (poll(&entry, 1, 0) > 0 && (entry.revents & POLLIN) && Pass(master, STDOUT_FILENO)) {
  }
}

std::string Relay::Run() {
  const RawTerminal raw;
  for (;;) {
    pollfd entries[] = {{connection, POLLIN, 0},
                        {master, POLLIN, 0},
                        {sizes, POLLIN, 0},
                        {hasInput ? STDIN_FILENO : -1, POLLIN, 0}};
    if (poll(entries, 4, -1) < 0 && errno != EINTR) return {};
    if (entries[2].revents) TakeSize();
    if (entries[3].revents) hasInput = Pass(STDIN_FILENO, master);
    if (entries[1].revents && !Pass(master, STDOUT_FILENO)) return {};
    if (!entries[0].revents) continue;
    char bytes[1024];
    const ssize_t count = read(connection, bytes, sizeof bytes);
    if (count <= 0) return {};
    said.append(bytes, static_cast<size_t>(count));
    constexpr std::string_view cEnd = "end ";
    const size_t end = said.find('\n');
    if (end == std::string::npos) continue;
    Drain();
    return said.starts_with(cEnd) ? said.substr(cEnd.size(), end - cEnd.size()) : "";
  }
}

int ShowProgramOfGdb(int connection) {
  Relay relay(connection);
  if (!relay.Open()) return EXIT_FAILURE;
  const std::string text = relay.Run();
  if (!text.empty()) ShowUntilKey(text);
  return EXIT_SUCCESS;
}

// Group: a program without gdb.

// False for one that is only lent, such as that of the Output panel.
bool OwnsTerminal() {
  return tcgetsid(STDIN_FILENO) == getsid(0);
}

// The program is the terminal's foreground job, so that it can read and gets Ctrl+C.
[[noreturn]] void BecomeProgram(char** words) {
  setpgid(0, 0);
  if (OwnsTerminal()) tcsetpgrp(STDIN_FILENO, getpgrp());
  for (const int number : {SIGTTOU, SIGPIPE}) signal(number, SIG_DFL);
  if (chdir(words[0]) != 0) std::perror(words[0]);
  execv(words[1], words + 1);
  std::perror(words[1]);
  _exit(cNotStarted);
}

int RunProgram(int connection, char** words) {
  // Taking the terminal back comes from the background.
  signal(SIGTTOU, SIG_IGN);
  const pid_t child = fork();
  if (child == 0) BecomeProgram(words);
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child) return EXIT_FAILURE;
  const bool isTerminal = OwnsTerminal();
  if (isTerminal) tcsetpgrp(STDIN_FILENO, getpgrp());
  const bool isSignal = WIFSIGNALED(status);
  const int number = isSignal ? WTERMSIG(status) : WEXITSTATUS(status);
  if (connection >= 0)
    WriteAll(connection, (isSignal ? "signal " : "exit ") + std::to_string(number) + "\n");
  if (!isTerminal) return EXIT_SUCCESS;
  ShowUntilKey(isSignal ? std::string("The program was ended by a signal: ") + strsignal(number)
                        : "The program has ended with exit code " + std::to_string(number));
  return EXIT_SUCCESS;
}

// Whoever has started the terminal may have switched signals off.
void ResetSignals() {
  for (const int number : {SIGINT, SIGQUIT, SIGHUP, SIGTERM, SIGCHLD}) signal(number, SIG_DFL);
  signal(SIGPIPE, SIG_IGN);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

}  // namespace

int main(int count, char** words) {
  ResetSignals();
  constexpr int cFewestToRun = 5;
  if (count >= cFewestToRun && std::string_view(words[1]) == "--run")
    return RunProgram(Connect(words[2]), words + 3);
  if (count != 2 || words[1][0] == '-') {
    std::fputs("zendry-console is started by Zendry, in a terminal.\n", stderr);
    return cWrongUse;
  }
  const int connection = Connect(words[1]);
  return connection < 0 ? EXIT_FAILURE : ShowProgramOfGdb(connection);
}
