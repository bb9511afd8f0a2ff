#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <string_view>

// gdb alone, with the commands that the session writes.
class GdbPeer {
 public:
  explicit GdbPeer(const std::string& program) {
    int input[2], output[2];
    if (pipe(input) != 0 || pipe(output) != 0) std::exit(EXIT_FAILURE);
    process = fork();
    if (process == 0) {
      setsid();
      dup2(input[0], STDIN_FILENO);
      dup2(output[1], STDOUT_FILENO);
      dup2(output[1], STDERR_FILENO);
      for (const int number : {input[0], input[1], output[0], output[1]}) close(number);
      execlp("gdb", "gdb", "--annotate=3", "--quiet", program.c_str(), nullptr);
      _exit(EXIT_FAILURE);
    }
    close(input[0]);
    close(output[1]);
    in = input[1];
    out = output[0];
  }
  GdbPeer(const GdbPeer&) = delete;
  GdbPeer& operator=(const GdbPeer&) = delete;
  ~GdbPeer() {
    close(in);
    close(out);
    kill(-process, SIGKILL);
    waitpid(process, nullptr, 0);
  }

  void Send(const std::string& commands) const {
    if (write(in, commands.data(), commands.size()) < 0) std::exit(EXIT_FAILURE);
  }
  void AwaitPrompts(int count) {
    constexpr std::string_view cPrompt = "\x1A\x1Aprompt\n";
    while (count > 0) {
      if (const size_t at = text.find(cPrompt); at != std::string::npos) {
        text.erase(0, at + cPrompt.size());
        --count;
        continue;
      }
      char bytes[4096];
      const ssize_t size = read(out, bytes, sizeof bytes);
      if (size <= 0) std::exit(EXIT_FAILURE);
      text.append(bytes, static_cast<size_t>(size));
    }
  }

 private:
  pid_t process = 0;
  int in = -1;
  int out = -1;
  std::string text;
};
