// The cost of the process runner, beside the cost of the system itself for the same, in one run.
// Ends with 1 when a limit isn't kept.

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "FileText.h"
#include "SpawnConsole.h"

extern char** environ;

namespace {

using Arguments = std::vector<std::string>;
using Clock = std::chrono::steady_clock;

constexpr int cLines = 100'000;
constexpr int cWidth = 80;
constexpr int cLongLine = 10'000'000;
constexpr double cMostCatRatio = 3;
constexpr double cMostStepMs = 2;

double MillisecondsOf(const std::function<void()>& act) {
  const auto start = Clock::now();
  act();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

struct Pair {
  double ours, peers;
};

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
  return values[values.size() / 2];
}

// Medians of two measurements made by turns, so that both meet the same machine.
Pair Compare(int rounds, const std::function<void()>& ours, const std::function<void()>& peers) {
  std::vector<double> ourTimes, peerTimes;
  for (int i = 0; i < rounds; ++i) {
    ourTimes.push_back(MillisecondsOf(ours));
    peerTimes.push_back(MillisecondsOf(peers));
  }
  return {Median(ourTimes), Median(peerTimes)};
}

// Starts a program with the given standard streams, as barely as can be.
pid_t Start(const Arguments& arguments, int input, int output) {
  std::vector<char*> pointers;
  for (const std::string& argument : arguments)
    pointers.push_back(const_cast<char*>(argument.c_str()));
  pointers.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input, 0);
  posix_spawn_file_actions_adddup2(&actions, output, 1);
  pid_t process = 0;
  if (posix_spawnp(&process, pointers[0], &actions, nullptr, pointers.data(), environ) != 0)
    std::fprintf(stderr, "can't start %s\n", pointers[0]);
  posix_spawn_file_actions_destroy(&actions);
  return process;
}

struct Null {
  const int number = open("/dev/null", O_RDWR | O_CLOEXEC);
};

void RunBarely(const Arguments& arguments) {
  static const Null null;
  waitpid(Start(arguments, null.number, null.number), nullptr, 0);
}

// child | cat > /dev/null
void RunThroughCat(const Arguments& arguments) {
  static const Null null;
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return;
  const pid_t child = Start(arguments, null.number, ends[1]);
  close(ends[1]);
  const pid_t cat = Start({"cat"}, ends[0], null.number);
  close(ends[0]);
  waitpid(child, nullptr, 0);
  waitpid(cat, nullptr, 0);
}

std::string CommandLineOf(const Arguments& arguments) {
  std::string line;
  for (const std::string& argument : arguments) line += mavro::QuoteArgument(argument) + " ";
  return line;
}

void RunByRunner(const Arguments& arguments, size_t expectedLines) {
  mavro::SpawnConsole console;
  size_t lines = 0;
  console.SetOutput([&lines](const std::string&) { ++lines; }, "");
  console.Execute(CommandLineOf(arguments), mavro::SpawnConsole::Mode::cBlocking);
  if (lines != expectedLines || console.exitCode != 0)
    std::fprintf(stderr, "%zu lines, exit code %d\n", lines, console.exitCode);
}

// The child of the measurements: prints so many lines; a width below 0 is one line without newline.
int Print(int count, int width) {
  std::string line(static_cast<size_t>(width < 0 ? count : width), 'x');
  if (width >= 0) line += '\n';
  for (int i = width < 0 ? 1 : count; i > 0; --i) std::fwrite(line.data(), 1, line.size(), stdout);
  return 0;
}

bool CompareWithCat(const char* what, const Arguments& child, size_t lines) {
  const Pair times = Compare(
      15, [&] { RunByRunner(child, lines); }, [&] { RunThroughCat(child); });
  const double ratio = times.ours / times.peers;
  std::printf("%s: runner %.1f ms, cat of the same child %.1f ms, ratio %.2f (limit %.0f)\n", what,
              times.ours, times.peers, ratio, cMostCatRatio);
  return ratio <= cMostCatRatio;
}

bool CompareWithBareStart(const char* what, int rounds, const Arguments& child) {
  const Pair times = Compare(
      rounds, [&] { RunByRunner(child, 0); }, [&] { RunBarely(child); });
  const double more = times.ours - times.peers;
  std::printf(
      "%s: runner %.2f ms, bare loop %.2f ms, %.2f ms more, ratio %.2f (limit %.0f ms more)\n",
      what, times.ours, times.peers, more, times.ours / times.peers, cMostStepMs);
  return more <= cMostStepMs;
}

}  // namespace

int main(int count, char** values) {
  if (count == 4 && std::strcmp(values[1], "--print") == 0)
    return Print(std::atoi(values[2]), std::atoi(values[3]));

  char folder[] = "/tmp/runner_bench-XXXXXX";
  if (!mkdtemp(folder)) return 1;
  const std::string source = std::string(folder) + "/a.c", object = std::string(folder) + "/a.o";
  if (!mavro::SaveFileText(source, "int Answer(void) {\n  return 42;\n}\n").Ok()) return 1;

  const std::string self = "/proc/self/exe";
  bool kept =
      CompareWithCat("100,000 lines of 80 characters",
                     {self, "--print", std::to_string(cLines), std::to_string(cWidth)}, cLines);
  kept &= CompareWithCat("10 MB without a newline",
                         {self, "--print", std::to_string(cLongLine), "-1"}, 1);
  kept &=
      CompareWithBareStart("one compile step (gcc -c)", 31, {"gcc", "-c", source, "-o", object});
  kept &= CompareWithBareStart("one step of a program that does nothing", 301, {"true"});

  unlink(source.c_str());
  unlink(object.c_str());
  rmdir(folder);
  return kept ? 0 : 1;
}
