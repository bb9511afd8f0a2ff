#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "debug/GdbListener.h"
#include "debug/GdbValue.h"

namespace zendry {

// What is longer is cut: a line, and what follows the two leading bytes of an annotation.
constexpr size_t cLongestLine = 1 << 20;
constexpr size_t cLongestAnnotation = 8192;
// A frame that is cut into lines or pieces and longer than this is dropped.
constexpr size_t cLongestFrame = 16384;

// Reads the output of "gdb --annotate=3" and reports what it understands. It knows no process and
// no window, keeps a bounded state and accepts any bytes. docs/debugging.md tells the rules.
class GdbStream {
 public:
  explicit GdbStream(GdbListener& itsListener) : listener(itsListener) {}

  // Takes bytes as they come; a line counts when its end has come. A listener that waits for a
  // prompt may call this from its own callbacks: lines are handled in the order of their bytes.
  void Feed(std::string_view bytes);
  // The stream has ended: handles a last line without an end and reports what was incomplete.
  void Finish();
  // Forgets everything, for a new gdb.
  void Reset();
  // Says that a command was written to gdb.
  void CommandSent() { promptSeen = false; }

  // Handles one line, with or without its end.
  void HandleLine(std::string_view line);

  enum LineMode : int32_t { cNormal = 0, cInDisplay = 1, cInError = 2 };

  bool promptSeen = false;      // since the last command
  bool paused = false;          // the program has stopped or ended, and gdb listens
  bool needsDisplay = false;    // the watches are to be asked for again at the next prompt
  LineMode lineMode = cNormal;  // inside a display's value, inside an error
  std::string lastAnnotation;   // without its leading bytes and its line end
  bool continuedFrame = false;  // a line of the call stack waits for its second half
  std::string frameHead;        // its first half

 private:
  // The part of a multi-part text that the pieces between annotations belong to.
  enum class Pieces { cNone, cDisplay, cResult, cSignal, cQuestion };

  std::optional<std::string> TakeLine();
  void HandleAnnotation(std::string_view text);
  void HandleStateAnnotation();
  void HandlePieceAnnotation();
  bool IsPiece() const;
  void HandlePlain(std::string_view line);
  void HandleByFirstLetter(std::string_view line);
  bool TakeAsPiece(std::string_view line);
  bool TakeAsFrame(std::string_view line);

  void Flush();
  void FlushDisplay();
  void FlushResult();
  void FlushError();
  void FlushPieces();

  bool ParseDisplay(std::string_view line);
  void ParseResult(std::string_view line);
  void ParseBreakReply(std::string_view line);
  void ParseBreakHit(std::string_view line);
  void AddFrame(std::string_view line);
  void CloseFrame();
  void ForgetFrameBefore();
  void ReportFrame(const GdbFrame& frame);
  void ReadSignalText(std::string_view line);
  void ShowSource();
  void Prompt();
  void Running();
  void Exited();
  void Stopped();
  void End(const GdbEnd& end);
  void ReportHit(const GdbPlace& place);
  void Output(std::string_view line);
  void Report(std::function<void(GdbListener&)> event);
  void Deliver();

  GdbListener& listener;
  std::deque<std::function<void(GdbListener&)>> events;  // of one line, not delivered yet

  std::string input;       // bytes that are no line yet
  size_t inputStart = 0;   // where the first line not handled begins
  size_t inputSought = 0;  // up to here there is no line end

  GdbDisplay display;  // the one whose value is being read
  ValueText displayValue;
  std::optional<GdbDisplay> called;  // its value comes after a call of a function of the program
  ValueText result;
  bool hasResult = false;
  std::string error;

  Pieces pieces = Pieces::cNone;
  std::string piecesText;

  bool frameAnnounced = false;  // "frame-begin" has come, its text not yet
  bool frameInPieces = false;   // annotations split the frame's text
  int frameLevel = 0;           // of the last frame announced
  std::string frameBefore;      // "Run till exit from ": the frame is no row of a call stack
  std::optional<int> hit;       // "Breakpoint N, " has come, its frame not yet

  bool running = false;       // since "starting"
  bool pausedBefore = false;  // what `paused` was at "starting"
  bool ended = false;         // the program, since "starting"
  bool killed = false;        // "signalled" has come, the signal's name not yet
  GdbStop stop;               // what is known of the next stop
};

}  // namespace zendry
