#pragma once

#include <string>
#include <string_view>

namespace zendry {

// A place in a source, as gdb names it.
struct GdbPlace {
  std::string file;  // absolute, or as the compiler was given it; empty: none
  int line = 0;      // from 1
  int level = 0;     // of the frame that it belongs to; 0 is the innermost
};

// A frame of a call stack.
struct GdbFrame {
  std::string text;  // what stands before the place: "#1  0x0000555555555151 in outer (item=0x0)"
  GdbPlace place;    // no file for a frame without debug data
};

// The reply to "break" and "tbreak".
struct GdbBreakpoint {
  int number = 0;
  bool isTemporary = false;
  bool isPending = false;  // waits for a library that has its source
  int locations = 1;       // more than one for a template or an inlined function: no place then
  GdbPlace place;          // where gdb has put it: a line that has code
};

// A breakpoint that the program has reached.
struct GdbHit {
  int number = 0;
  GdbPlace place;
};

// The program has stopped and can go on.
struct GdbStop {
  enum Reason { cStep, cBreakpoint, cWatchpoint, cCatchpoint, cSignal };

  Reason reason = cStep;   // also of "finish", "until" and "stepi"
  int number = 0;          // of the breakpoint, watchpoint or catchpoint
  std::string signalName;  // "SIGSEGV"; empty for a stop at the program's first instruction
  std::string signalText;  // "Segmentation fault"
  std::string thread;      // gdb's "2 "name"" where it names the thread that has stopped
  std::string frame;       // function and arguments; empty when the function is the same as before
  GdbPlace place;          // no file where there is no source
};

// The program has ended.
struct GdbEnd {
  int exitCode = 0;
  std::string signalName;  // the signal that killed it; empty: it has ended by itself
  std::string signalText;
};

// A value, its lines joined.
struct GdbValue {
  std::string text;    // at most cLongestValue bytes, then "..."
  std::string column;  // the same for a list's column: no line is added to 255 characters or more
};

// The value of a watched expression.
struct GdbDisplay {
  int number = 0;  // gdb's, for "undisplay"
  std::string expression;
  GdbValue value;
};

// What GdbStream understands of gdb's output. Each call comes from within Feed; a callee may send
// commands, feed and reset the stream, but not destroy it. Texts are gdb's bytes: whoever shows
// them marks control bytes.
class GdbListener {
 public:
  virtual ~GdbListener() = default;

  // gdb waits for a command.
  virtual void OnPrompt() = 0;
  // The first prompt after a stop in a source: the watches are to be asked for again.
  virtual void OnDisplaysDue() = 0;

  // The program runs.
  virtual void OnRunning() = 0;
  // A source line is to be shown: of a stop, or of a frame that was chosen. Comes before OnStopped.
  virtual void OnSource(const GdbPlace& place) = 0;
  virtual void OnStopped(const GdbStop& stop) = 0;
  virtual void OnEnded(const GdbEnd& end) = 0;

  virtual void OnBreakpointSet(const GdbBreakpoint& breakpoint) = 0;
  virtual void OnBreakpointHit(const GdbHit& hit) = 0;

  // True if the expression is watched: only then is "N: EXPRESSION = VALUE" taken for a display.
  virtual bool IsWatched(std::string_view expression) const = 0;
  virtual void OnDisplay(const GdbDisplay& display) = 0;
  // The value that "print" has printed.
  virtual void OnResult(const GdbValue& value) = 0;
  // A row of "backtrace", "frame", "up" and "down".
  virtual void OnFrame(const GdbFrame& frame) = 0;

  // The whole text of a failed command, lines separated by newlines.
  virtual void OnError(const std::string& text) = 0;
  // gdb waits for an answer and not for a command.
  virtual void OnQuestion(const std::string& text) = 0;
  // A line that means nothing else, for the Output panel.
  virtual void OnOutput(const std::string& line) = 0;
  // Every line that is no annotation, before it is understood, for gdb's console.
  virtual void OnPlainLine(const std::string& line) = 0;
};

}  // namespace zendry
