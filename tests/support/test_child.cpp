// A console program for the tests of the process runner: does one thing, named by its first
// argument. However a test ends, it doesn't stay for more than a minute.

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

using Arguments = std::vector<std::string>;

constexpr unsigned cLongestLife = 60;

int Number(const Arguments& arguments, size_t index, int otherwise) {
  return index < arguments.size() ? std::atoi(arguments[index].c_str()) : otherwise;
}

void WaitForEver() {
  for (;;) pause();
}

// TEXT...: each on a line of its own.
int Print(const Arguments& texts) {
  for (const std::string& text : texts) std::cout << text << '\n';
  return 0;
}

// TEXT...: as they are, "\n", "\r" and "\0" spelled with a backslash.
int Raw(const Arguments& texts) {
  for (const std::string& text : texts)
    for (size_t i = 0; i < text.size(); ++i) {
      const bool escaped = text[i] == '\\' && i + 1 < text.size();
      const char c = escaped ? text[++i] : text[i];
      std::cout.put(!escaped ? c : c == 'n' ? '\n' : c == 'r' ? '\r' : c == '0' ? '\0' : c);
    }
  return 0;
}

// TEXT: to both outputs, by turns.
int Both(const Arguments&) {
  std::cout << "out\n" << std::flush;
  std::cerr << "err\n" << std::flush;
  std::cout << "out again\n";
  return 0;
}

// COUNT WIDTH: lines of that many characters, the newline not counted.
int Lines(const Arguments& arguments) {
  const std::string line(static_cast<size_t>(Number(arguments, 1, 80)), 'x');
  for (int i = Number(arguments, 0, 1); i > 0; --i) std::cout << line << '\n';
  return 0;
}

// BYTES: so many without a newline.
int Big(const Arguments& arguments) {
  std::cout << std::string(static_cast<size_t>(Number(arguments, 0, 1)), 'x');
  return 0;
}

int Binary(const Arguments&) {
  for (int c = 0; c < 256; ++c) std::cout.put(static_cast<char>(c));
  return 0;
}

int Exit(const Arguments& arguments) {
  return Number(arguments, 0, 0);
}

int Signal(const Arguments& arguments) {
  std::cout << "half a line" << std::flush;
  raise(Number(arguments, 0, SIGTERM));
  return 0;
}

// [stubborn]: closes its output and lives on; the stubborn one doesn't mind being asked to end.
int CloseOutput(const Arguments& arguments) {
  if (!arguments.empty()) signal(SIGTERM, SIG_IGN);
  std::cout << "before\n" << std::flush;
  close(STDOUT_FILENO);
  close(STDERR_FILENO);
  WaitForEver();
  return 0;
}

// Leaves a process that holds the output, and prints its number.
int Grandchild(const Arguments& arguments) {
  const pid_t child = fork();
  if (child == 0) {
    alarm(cLongestLife);
    if (!arguments.empty()) setsid();
    WaitForEver();
  }
  std::cout << child << '\n';
  return 7;
}

int Echo(const Arguments&) {
  std::string line;
  while (std::getline(std::cin, line)) std::cout << line << '\n' << std::flush;
  std::cout << "end of input\n";
  return 0;
}

// Answers with so many bytes before it reads anything again.
int Chatter(const Arguments& arguments) {
  std::string line;
  while (std::getline(std::cin, line)) {
    std::cout << std::string(static_cast<size_t>(Number(arguments, 0, 1)), 'y') << '\n'
              << std::flush;
  }
  return 0;
}

// Prints "ready" and neither reads nor ends.
int Deaf(const Arguments&) {
  std::cout << "ready\n" << std::flush;
  WaitForEver();
  return 0;
}

// Prints "ready" and closes its input; lives on.
int CloseInput(const Arguments&) {
  close(STDIN_FILENO);
  std::cout << "ready\n" << std::flush;
  WaitForEver();
  return 0;
}

// Prints for ever, whether or not it is asked to end.
int Flood(const Arguments& arguments) {
  if (!arguments.empty()) signal(SIGTERM, SIG_IGN);
  const std::string line(79, 'f');
  for (;;) std::cout << line << '\n';
}

void SayInterrupted(int) {
  constexpr char text[] = "interrupted\n";
  if (write(STDOUT_FILENO, text, sizeof text - 1) < 0) _exit(1);
}

int Interruptible(const Arguments&) {
  signal(SIGINT, SayInterrupted);
  std::cout << "ready\n" << std::flush;
  WaitForEver();
  return 0;
}

int Environment(const Arguments& names) {
  for (const std::string& name : names) {
    const char* value = std::getenv(name.c_str());
    std::cout << name << (value ? std::string("=") + value : std::string(" is not set")) << '\n';
  }
  return 0;
}

int Folder(const Arguments&) {
  char path[4096];
  std::cout << (getcwd(path, sizeof path) ? path : "?") << '\n';
  return 0;
}

// Which descriptors are open, each on a line.
int Descriptors(const Arguments&) {
  DIR* entries = opendir("/proc/self/fd");
  std::vector<int> numbers;
  while (const dirent* entry = readdir(entries))
    if (entry->d_name[0] != '.' && std::atoi(entry->d_name) != dirfd(entries))
      numbers.push_back(std::atoi(entry->d_name));
  closedir(entries);
  std::sort(numbers.begin(), numbers.end());
  for (int number : numbers) std::cout << number << '\n';
  return 0;
}

// Prints if the process is alone in its group, and the signals that are not as in a new process.
int Surroundings(const Arguments&) {
  std::cout << (getpgrp() == getpid() ? "own group\n" : "foreign group\n");
  std::cout << (open("/dev/tty", O_RDWR) < 0 ? "no terminal\n" : "a terminal\n");
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with("SigBlk") || line.starts_with("SigIgn")) std::cout << line << '\n';
  return 0;
}

struct Deed {
  const char* name;
  int (*run)(const Arguments&);
};
constexpr Deed cDeeds[] = {
    {"print", Print},
    {"raw", Raw},
    {"both", Both},
    {"lines", Lines},
    {"big", Big},
    {"binary", Binary},
    {"exit", Exit},
    {"signal", Signal},
    {"close-output", CloseOutput},
    {"grandchild", Grandchild},
    {"echo", Echo},
    {"chatter", Chatter},
    {"deaf", Deaf},
    {"close-input", CloseInput},
    {"flood", Flood},
    {"interruptible", Interruptible},
    {"environment", Environment},
    {"folder", Folder},
    {"descriptors", Descriptors},
    {"surroundings", Surroundings},
};

}  // namespace

int main(int count, char** values) {
  alarm(cLongestLife);
  std::ios::sync_with_stdio(false);
  for (const Deed& deed : cDeeds)
    if (count > 1 && std::strcmp(values[1], deed.name) == 0)
      return deed.run(Arguments(values + 2, values + count));
  std::cerr << "test_child: no such deed\n";
  return 2;
}
