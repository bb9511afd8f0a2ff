#pragma once

namespace zendry {

// The patience of a debug session, in milliseconds. Tests shorten it.
struct DebugLimits {
  // Then the user hears that gdb doesn't answer.
  int answer = 5000;
  // After an interrupt; then the program is stopped by a signal that it can't refuse.
  int pause = 1000;
  // After that; then nothing helps.
  int hardPause = 4000;
  // A value that takes longer is given up.
  int evaluation = 2000;
  // For the terminal's window to come up; then the Output panel is used.
  int window = 5000;
};

DebugLimits& TheDebugLimits();

}  // namespace zendry
