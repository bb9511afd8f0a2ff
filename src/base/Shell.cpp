#include "base/Shell.h"

#include <chrono>

namespace zendry {

std::string LogEntry(std::string_view text, std::string_view detail) {
  std::string entry = "\r\n------ ";
  entry += text;
  entry += " --> ";
  entry += detail;
  entry += "\r\n";
  return entry;
}

void LogTime(OutputShell& shell, long milliseconds) {
  shell.AppendOutput("[" + std::to_string(milliseconds) + "]\r\n");
}

void LogMessage(OutputShell& shell, std::string_view text, std::string_view detail) {
  using Clock = std::chrono::steady_clock;
  static Clock::time_point last = Clock::now();
  const Clock::time_point now = Clock::now();
  if (text.empty()) {
    const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(now - last).count();
    shell.AppendOutput("[" + std::to_string(passed) + "]\r\n");
  } else {
    shell.AppendOutput(LogEntry(text, detail));
  }
  last = now;
}

}  // namespace zendry
