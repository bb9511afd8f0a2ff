#include "WindresPreprocess.h"

#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <regex>
#include <sstream>

namespace zendry {

namespace {

// A file in memory that a child writes.
class MemoryFile {
 public:
  explicit MemoryFile(const char* name) : descriptor(memfd_create(name, MFD_CLOEXEC)) {}
  ~MemoryFile() {
    if (descriptor >= 0) close(descriptor);
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  int Descriptor() const { return descriptor; }
  std::string Content() const {
    std::string content;
    char part[1 << 16];
    for (ssize_t count;
         (count = pread(descriptor, part, sizeof part, static_cast<off_t>(content.size()))) > 0;)
      content.append(part, static_cast<size_t>(count));
    return content;
  }

 private:
  int descriptor;
};

}  // namespace

std::string PlainMessages(const std::string& printed) {
  static const std::regex cMessage(R"(^(.*?):(\d+):(?:\d+:)? (?:fatal )?(error|warning): (.*)$)");
  std::istringstream lines(printed);
  std::string plain;
  std::smatch match;
  for (std::string line; std::getline(lines, line);)
    if (std::regex_match(line, match, cMessage))
      plain += match.str(1) + ":" + match.str(2) + ": " +
               (match.str(3) == "warning" ? "warning: " : "") + match.str(4) + "\n";
  return plain.empty() ? printed : plain;
}

PreprocessedText Preprocess(const std::vector<std::string>& command) {
  PreprocessedText result;
  const MemoryFile output("script"), errors("messages");
  std::vector<char*> arguments;
  for (const std::string& argument : command)
    arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output.Descriptor(), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, errors.Descriptor(), STDERR_FILENO);
  pid_t child = -1;
  const int error =
      posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) {
    result.messages =
        "windres: " + command[0] + " can't be started: " + std::strerror(error) + "\n";
    return result;
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  result.ok = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  result.text = output.Content();
  result.messages = PlainMessages(errors.Content());
  if (!result.ok && result.messages.empty())
    result.messages = "windres: " + command[0] + " failed without a word\n";
  return result;
}

}  // namespace zendry
