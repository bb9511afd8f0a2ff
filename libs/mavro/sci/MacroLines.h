#pragma once

#include <string>
#include <string_view>

namespace mavro {

// One step of a keyboard macro: a message to the editing component.
struct MacroStep {
  int message = 0;
  long wParam = 0;
  bool hasText = false;
  std::string text;
  friend bool operator==(const MacroStep&, const MacroStep&) = default;
};

// A step as a line: "MESSAGE;WPARAM;1;TEXT", or "MESSAGE;WPARAM;0;" without a text.
std::string FormatMacroLine(const MacroStep& step);

// Reads a line. Only the first three ";" count. An empty or odd number is 0, a missing text is
// empty.
MacroStep ParseMacroLine(std::string_view line);

// Makes a step safe to replay, whatever its source. False if the component doesn't record its
// message. Limits lengths to that of the text, and positions to the range from 0 to `textLength`.
bool MakeReplayable(MacroStep& step, long textLength);

}  // namespace mavro
