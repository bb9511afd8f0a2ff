#include "base/ToolOutput.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string_view>

namespace zendry {

namespace {

constexpr auto cPatience = std::chrono::seconds(5);
constexpr size_t cMostOutput = 1 << 20;

// Pointers to the texts, with a null after the last, as the system wants them.
std::vector<char*> PointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<std::string> EnglishEnvironment() {
  std::vector<std::string> entries = {"LC_ALL=C"};
  for (char** entry = environ; *entry; ++entry)
    if (!std::string_view(*entry).starts_with("LC_ALL=")) entries.emplace_back(*entry);
  return entries;
}

// The process id of the program with its output on `writeEnd`; 0 if it can't be started.
pid_t Start(std::vector<std::string> arguments, int writeEnd) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, writeEnd, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, writeEnd, STDERR_FILENO);
  posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
  std::vector<std::string> entries = EnglishEnvironment();
  pid_t process = 0;
  const int error = posix_spawnp(&process, arguments.front().c_str(), &actions, nullptr,
                                 PointersTo(arguments).data(), PointersTo(entries).data());
  posix_spawn_file_actions_destroy(&actions);
  return error == 0 ? process : 0;
}

// All that comes until the pipe is closed.
std::optional<std::string> ReadAll(int readEnd) {
  const auto end = std::chrono::steady_clock::now() + cPatience;
  std::string text;
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        end - std::chrono::steady_clock::now());
    pollfd wait = {readEnd, POLLIN, 0};
    if (left.count() <= 0 || poll(&wait, 1, static_cast<int>(left.count())) <= 0) return {};
    char piece[4096];
    const ssize_t count = read(readEnd, piece, sizeof piece);
    if (count <= 0) return count == 0 ? std::optional(text) : std::nullopt;
    text.append(piece, static_cast<size_t>(count));
    if (text.size() > cMostOutput) return {};
  }
}

}  // namespace

std::optional<std::string> ToolOutput(const std::vector<std::string>& arguments) {
  int ends[2] = {};
  if (arguments.empty() || pipe2(ends, O_CLOEXEC) != 0) return {};
  const pid_t process = Start(arguments, ends[1]);
  close(ends[1]);
  std::optional<std::string> text = process > 0 ? ReadAll(ends[0]) : std::nullopt;
  close(ends[0]);
  if (process <= 0) return {};
  if (!text) kill(process, SIGKILL);
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return text;
}

}  // namespace zendry
