#include "debug/DebugWords.h"

#include <algorithm>
#include <iterator>

namespace zendry {

namespace {

std::string ReasonWords(const GdbStop& stop) {
  switch (stop.reason) {
    case GdbStop::cBreakpoint:
      return "Stopped at breakpoint " + std::to_string(stop.number);
    case GdbStop::cWatchpoint:
      return "Stopped at watchpoint " + std::to_string(stop.number);
    case GdbStop::cCatchpoint:
      return "Stopped at catchpoint " + std::to_string(stop.number);
    case GdbStop::cSignal:
      if (stop.signalName == "SIGINT" || stop.signalName.empty()) return "Paused";
      return "The program has received " + stop.signalName +
             (stop.signalText.empty() ? "" : ": " + stop.signalText);
    default:
      return "Stopped";
  }
}

}  // namespace

std::string StopWords(const GdbStop& stop) {
  std::string words = ReasonWords(stop);
  const std::string function = FunctionOf(stop.frame);
  if (!function.empty()) words += " in " + function;
  if (!stop.thread.empty()) words += ", thread " + stop.thread;
  return words;
}

std::string EndWords(const GdbEnd& end) {
  if (end.signalName.empty())
    return "The program has ended with exit code " + std::to_string(end.exitCode);
  return "The program was ended by " + end.signalName +
         (end.signalText.empty() ? "" : ": " + end.signalText);
}

std::string FunctionOf(const std::string& frame) {
  std::string_view text = frame;
  if (text.starts_with('#')) {
    text.remove_prefix(std::min(text.size(), text.find(' ')));
    text.remove_prefix(std::min(text.size(), text.find_first_not_of(' ')));
  }
  constexpr std::string_view cIn = " in ";
  if (text.starts_with("0x"))
    text.remove_prefix(std::min(text.size(), text.find(cIn) + cIn.size()));
  // The arguments follow behind a blank; "operator()" and "(anonymous namespace)::f" have none
  // there.
  const size_t end =
      text.rfind(" (", text.find('=') == std::string_view::npos ? text.size() : text.find('='));
  return end == std::string_view::npos ? "" : std::string(text.substr(0, end));
}

bool IsRoutine(std::string_view line) {
  constexpr std::string_view cBeginnings[] = {
      "Reading symbols from ", "Starting program: ",       "[Thread ",
      "[New Thread ",          "[Switching to Thread ",    "[Inferior ",
      "[Detaching after ",     "Using host libthread_db ", "Run till exit from "};
  return line == "Continuing." ||
         std::any_of(std::begin(cBeginnings), std::end(cBeginnings),
                     [line](std::string_view beginning) { return line.starts_with(beginning); });
}

}  // namespace zendry
