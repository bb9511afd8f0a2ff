#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <string>

#include "config/IdeConfig.h"
#include "lsp/LspFrames.h"
#include "lsp/LspServer.h"
#include "tags/TagParser.h"

// zendry-lsp: a language server over standard input and output.

using namespace zendry;

namespace {

enum ExitStatus { cDone = 0, cBroken = 1, cWrongUse = 2 };

// What is read before the first message that waits is handled.
constexpr size_t cMostWaiting = 256;             // messages
constexpr size_t cMostBytesWaiting = 16u << 20;  // bytes, about

void Say(const std::string& text) {
  std::fprintf(stderr, "zendry-lsp: %s\n", text.c_str());
}

// The folder of this program, links resolved, with a trailing slash.
std::string ProgramFolder() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  return program.parent_path().string() + "/";
}

// Standard output belongs to the protocol: whatever else is printed goes to standard error.
int TakeOutput() {
  const int output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  dup2(STDERR_FILENO, STDOUT_FILENO);
  return output;
}

// False when nobody reads it.
bool WriteAll(int output, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(output, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

bool IsInputReady() {
  pollfd input = {STDIN_FILENO, POLLIN, 0};
  return poll(&input, 1, 0) > 0;
}

// Reads what is there; false at the end of the input.
bool ReadInput(LspFrames& frames) {
  static std::array<char, 1 << 16> bytes;
  const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
  if (count < 0 && errno == EINTR) return true;
  if (count <= 0) return false;
  frames.Feed(std::string_view(bytes.data(), static_cast<size_t>(count)));
  return true;
}

// Answers the bytes of what the server has received.
size_t ReceiveAll(LspFrames& frames, LspServer& server) {
  size_t bytes = 0;
  while (const std::optional<std::string> body = frames.Next()) {
    server.Receive(*body);
    bytes += body->size();
  }
  return bytes;
}

int Run() {
  const int output = TakeOutput();
  std::signal(SIGPIPE, SIG_IGN);
  theIdeConfig.appDir = ProgramFolder();
  if (const mavro::FileResult config = ReadConfig(theIdeConfig, theIdeFonts);
      !config.Words().empty())
    Say(config.Words());
  theTagParser.SetLimits(theIdeConfig.mostTags, static_cast<size_t>(theIdeConfig.longestLine));
  bool canWrite = true;
  LspServer server(theIdeConfig.appDir, ZENDRY_VERSION, [&](const std::string& body) {
    canWrite = canWrite && WriteAll(output, LspFrame(body));
  });
  LspFrames frames;
  bool hasInput = true;
  size_t bytesWaiting = 0;
  while (!server.HasEnded() && canWrite) {
    const bool mustRead = server.Waiting() == 0;
    if (mustRead && !hasInput) break;
    if (mustRead) bytesWaiting = 0;
    const bool mayRead = server.Waiting() < cMostWaiting && bytesWaiting < cMostBytesWaiting;
    if (hasInput && (mustRead || (mayRead && IsInputReady()))) {
      hasInput = ReadInput(frames);
      bytesWaiting += ReceiveAll(frames, server);
      hasInput = hasInput && frames.Error().empty();
      continue;
    }
    server.Step();
  }
  if (server.HasEnded()) return server.ExitStatus();
  if (!frames.Error().empty())
    Say(frames.Error());
  else if (frames.IsInside())
    Say("the input ended within a message");
  return cBroken;
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("Answers editors that speak the language server protocol: completion and its kin.",
               "zendry-lsp");
  app.set_version_flag("--version", "zendry-lsp " ZENDRY_VERSION);
  bool isStdio = true;
  app.add_flag("--stdio", isStdio, "speak over standard input and output, which is all there is");
  app.footer(
      "Exit status: 0 ended as asked, 1 the input ended or broke off, 2 wrong command line.");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? cDone : cWrongUse;
  }
  return Run();
}
