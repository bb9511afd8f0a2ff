#include "debug/DebuggerInterface.h"

namespace zendry {

bool DebuggerInterface::Start(const std::string& commandLine) {
  Forget();
  SetOutput([this](const std::string& line) { HandleLine(line); }, "");
  return Execute(commandLine, Mode::cAttached);
}

bool DebuggerInterface::SendCommand(const std::string& text, SentCommand command) {
  if (!running) return false;
  // What the user has begun must not swallow it.
  if (takesLines && command.purpose != SentFor::cConsole) {
    takesLines = false;
    SendCommand("end", {SentFor::cSetting});
  }
  sent.push_back(command);
  stream.CommandSent();
  return Send(text);
}

bool DebuggerInterface::IsCurrent(SentFor purpose) const {
  return !sent.empty() && sent.front().purpose == purpose;
}

SentCommand DebuggerInterface::TakeAnswered() {
  takesLines = false;
  if (strayPrompts > 0) {
    --strayPrompts;
    return {SentFor::cSetting};
  }
  if (sent.empty()) return {};
  const SentCommand answered = sent.front();
  sent.pop_front();
  return answered;
}

void DebuggerInterface::Forget() {
  stream.Reset();
  sent.clear();
  strayPrompts = 0;
  takesLines = false;
}

// A command that is entered in several lines asks for each of them without a prompt of its own: the
// line was taken, and the last one is answered by the prompt.
void DebuggerInterface::HandleLine(const std::string& line) {
  constexpr std::string_view cMark = "\x1A\x1A";
  constexpr std::string_view cNextLine = "commands";
  const std::string_view text = line;
  if (text.starts_with(cMark) && text.substr(cMark.size()).starts_with(cNextLine)) {
    if (!sent.empty()) sent.pop_front();
    takesLines = true;
  }
  stream.Feed(line);
}

}  // namespace zendry
