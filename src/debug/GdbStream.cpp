#include "debug/GdbStream.h"

#include <algorithm>
#include <utility>

#include "base/ParseInt.h"
#include "debug/GdbLines.h"

namespace zendry {

namespace {

constexpr std::string_view cMark = "\x1A\x1A";
constexpr auto cNone = std::string_view::npos;

// Annotations of gdb's level 2 that come in the middle of a frame's line.
constexpr std::string_view cFramePieces[] = {"frame-address", "frame-args",  "frame-function",
                                             "frame-source",  "frame-where", "arg-"};

// Those of a function of the program that gdb calls to read a value.
constexpr std::string_view cCallWords[] = {"starting", "frames-invalid", "breakpoints-invalid"};

// Those that come in the middle of a value.
constexpr std::string_view cValuePieces[] = {"array-section",  "display-expression",
                                             "display-format", "display-number",
                                             "display-value",  "elt",
                                             "field-",         "value-history-value"};

template <size_t cCount>
bool BeginsWithOneOf(std::string_view word, const std::string_view (&pieces)[cCount]) {
  return std::any_of(std::begin(pieces), std::end(pieces),
                     [word](std::string_view piece) { return word.starts_with(piece); });
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::string_view WithoutEnd(std::string_view line) {
  if (line.ends_with('\n')) line.remove_suffix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

bool IsRowStart(std::string_view line) {
  return line.size() > 1 && line[0] == '#' && IsDigit(line[1]);
}

}  // namespace

// Group: bytes to lines.

void GdbStream::Feed(std::string_view bytes) {
  input.append(bytes);
  while (const std::optional<std::string> line = TakeLine()) HandleLine(*line);
}

std::optional<std::string> GdbStream::TakeLine() {
  const size_t end = input.find('\n', std::max(inputStart, inputSought));
  if (end != std::string::npos) {
    std::string line = input.substr(inputStart, std::min(end - inputStart, cLongestLine + 1));
    inputStart = end + 1;
    return line;
  }
  input.erase(0, inputStart);
  inputStart = 0;
  // What exceeds a line's limit is dropped as it comes; one byte more shows that it does.
  if (input.size() > cLongestLine + 1) input.resize(cLongestLine + 1);
  inputSought = input.size();
  return {};
}

void GdbStream::Finish() {
  if (!input.empty()) Feed("\n");
  Flush();
  Deliver();
}

void GdbStream::Reset() {
  promptSeen = paused = needsDisplay = continuedFrame = false;
  lineMode = cNormal;
  for (std::string* text : {&lastAnnotation, &frameHead, &input, &error, &piecesText, &frameBefore})
    text->clear();
  inputStart = inputSought = 0;
  hasResult = frameAnnounced = frameInPieces = running = pausedBefore = ended = killed = false;
  pieces = Pieces::cNone;
  frameLevel = 0;
  hit.reset();
  called.reset();
  stop = {};
  events.clear();
}

void GdbStream::HandleLine(std::string_view line) {
  line = WithoutEnd(line).substr(0, cLongestLine);
  if (line.starts_with(cMark))
    HandleAnnotation(line.substr(cMark.size()));
  else if (!line.empty())
    HandlePlain(line);
  Deliver();
}

void GdbStream::Report(std::function<void(GdbListener&)> event) {
  events.push_back(std::move(event));
}

// The state is that of the line's end before anybody hears of it, so that a callee may feed, send
// and reset.
void GdbStream::Deliver() {
  while (!events.empty()) {
    const auto event = std::move(events.front());
    events.pop_front();
    event(listener);
  }
}

// Group: annotations.

void GdbStream::HandleAnnotation(std::string_view text) {
  lastAnnotation = text.substr(0, cLongestAnnotation);
  if (IsPiece()) {
    HandlePieceAnnotation();
    return;
  }
  Flush();
  lineMode = cNormal;
  if (!BeginsWithOneOf(lastAnnotation, cCallWords)) called.reset();
  if (!lastAnnotation.starts_with("frame-begin")) ForgetFrameBefore();
  HandleStateAnnotation();
}

// Only the beginning of the word counts, so that it holds for words that gdb may add.
void GdbStream::HandleStateAnnotation() {
  const std::string_view word = lastAnnotation;
  using enum GdbStop::Reason;
  if (word.starts_with("source")) return ShowSource();
  if (word.starts_with("prompt")) return Prompt();
  if (word.starts_with("exited")) return Exited();
  if (word.starts_with("error-begin")) {
    lineMode = cInError;
  } else if (word.starts_with("starting")) {
    Running();
  } else if (word.starts_with("stopped")) {
    Stopped();
  } else if (word.starts_with("frame-begin")) {
    frameAnnounced = true;
    frameInPieces = false;
    frameHead.clear();
    frameLevel = AnnotationNumber(word);
  } else if (word.starts_with("signalled") || word == "signal") {
    killed = word != "signal";
    stop.reason = cSignal;
    pieces = Pieces::cSignal;
  } else if (word.starts_with("breakpoint ")) {
    stop.reason = cBreakpoint;
    stop.number = AnnotationNumber(word);
  } else if (word.starts_with("watchpoint ") || word.starts_with("catchpoint ")) {
    stop.reason = word.front() == 'w' ? cWatchpoint : cCatchpoint;
    stop.number = AnnotationNumber(word);
  } else if (word.starts_with("pre-query")) {
    pieces = Pieces::cQuestion;
  } else if (word.starts_with("display-begin")) {
    pieces = Pieces::cDisplay;
  } else if (word.starts_with("value-history-begin")) {
    pieces = Pieces::cResult;
  }
}

// True if the last annotation stands in the middle of a line. Pieces are kept only where their
// beginning was announced, so that none is lost when an end never comes.
bool GdbStream::IsPiece() const {
  const std::string_view word = lastAnnotation;
  if (frameAnnounced || continuedFrame) return BeginsWithOneOf(word, cFramePieces);
  switch (pieces) {
    case Pieces::cDisplay:
    case Pieces::cResult:
      return BeginsWithOneOf(word, cValuePieces);
    case Pieces::cSignal:
      return word.starts_with("signal-");
    default:
      return false;
  }
}

void GdbStream::HandlePieceAnnotation() {
  if (pieces != Pieces::cNone) return;
  frameInPieces = continuedFrame = true;
}

// Whatever was being read is complete: reports it.
void GdbStream::Flush() {
  CloseFrame();
  FlushPieces();
  if (lineMode == cInDisplay) FlushDisplay();
  FlushResult();
  FlushError();
}

void GdbStream::FlushDisplay() {
  lineMode = cNormal;
  display.value = displayValue.Take();
  if (display.value.text.empty()) called = display;
  Report([report = std::exchange(display, {})](GdbListener& to) { to.OnDisplay(report); });
}

void GdbStream::FlushResult() {
  if (!std::exchange(hasResult, false)) return;
  Report([value = result.Take()](GdbListener& to) { to.OnResult(value); });
}

void GdbStream::FlushError() {
  if (error.empty()) return;
  Report([text = std::exchange(error, {})](GdbListener& to) { to.OnError(text); });
}

void GdbStream::FlushPieces() {
  const std::string text = std::exchange(piecesText, {});
  const Pieces kind = std::exchange(pieces, Pieces::cNone);
  if (text.empty()) return;
  if (kind == Pieces::cDisplay) {
    if (ParseDisplay(text))
      lineMode = cInDisplay;
    else
      Output(text);
  } else if (kind == Pieces::cResult) {
    ParseResult(text);
  } else if (kind == Pieces::cSignal) {
    ReadSignalText(text);
  } else if (kind == Pieces::cQuestion) {
    Report([text](GdbListener& to) { to.OnQuestion(text); });
  }
}

void GdbStream::ShowSource() {
  paused = true;
  std::optional<GdbPlace> place = ReadSource(lastAnnotation);
  if (!place) return;
  place->level = frameLevel;
  stop.place = *place;
  needsDisplay = true;
  Report([place = *place](GdbListener& to) { to.OnSource(place); });
}

void GdbStream::Prompt() {
  promptSeen = true;
  // A function of the program that an expression has called came back, or the start has failed.
  if (std::exchange(running, false)) paused = pausedBefore;
  frameLevel = 0;
  stop = {};
  Report([](GdbListener& to) { to.OnPrompt(); });
  if (std::exchange(needsDisplay, false)) Report([](GdbListener& to) { to.OnDisplaysDue(); });
}

void GdbStream::Running() {
  if (!std::exchange(running, true)) pausedBefore = paused;
  paused = ended = false;
  frameLevel = 0;
  // A value of a display may call a function before the stop is told: what is known of it stays.
  // The prompt has forgotten the one before.
  Report([](GdbListener& to) { to.OnRunning(); });
}

void GdbStream::Exited() {
  End({AnnotationNumber(lastAnnotation), {}, {}});
}

void GdbStream::End(const GdbEnd& end) {
  paused = ended = true;
  running = false;
  Report([end](GdbListener& to) { to.OnEnded(end); });
}

void GdbStream::Stopped() {
  paused = true;
  running = false;
  // The signal's text has not come, or was none.
  if (std::exchange(killed, false)) End({0, "a signal", {}});
  const GdbStop report = std::exchange(stop, {});
  if (!ended) Report([report](GdbListener& to) { to.OnStopped(report); });
}

// Group: plain lines.

void GdbStream::HandlePlain(std::string_view line) {
  Report([text = std::string(line)](GdbListener& to) { to.OnPlainLine(text); });
  if (lineMode == cInError) {
    if (!error.empty()) AppendBounded(error, "\n", cLongestValue);
    AppendBounded(error, line, cLongestValue);
  }
  // The prompt has no line end in some versions: what is said next follows it.
  constexpr std::string_view cPrompt = "(gdb) ";
  if (line.starts_with(cPrompt)) line.remove_prefix(cPrompt.size());
  if (line.empty() || TakeAsPiece(line)) return;
  if (IsDigit(line.front()) && ParseDisplay(line)) {
    lineMode = cInDisplay;
    return;
  }
  if (lineMode == cInDisplay) {
    // What "finish" says follows the displays at once.
    if (!line.starts_with("Value returned is $")) return displayValue.Append(line);
    FlushDisplay();
  }
  if (TakeAsFrame(line)) return;
  // A thread that begins meanwhile is no value.
  if (called && lineMode == cNormal && line.front() != '[') {
    display = *std::exchange(called, {});
    displayValue.Begin(line);
    lineMode = cInDisplay;
    return;
  }
  HandleByFirstLetter(line);
}

bool GdbStream::TakeAsPiece(std::string_view line) {
  if (pieces == Pieces::cNone) return false;
  if (pieces == Pieces::cQuestion && !piecesText.empty())
    AppendBounded(piecesText, "\n", cLongestValue);
  AppendBounded(piecesText, line, cLongestValue);
  // Nothing ends a signal's text but its stop.
  if (pieces == Pieces::cSignal && line.ends_with('.')) FlushPieces();
  return true;
}

void GdbStream::HandleByFirstLetter(std::string_view line) {
  switch (line.front()) {
    case '$':
      ParseResult(line);
      return;
    case '(':
      // Another prompt than the usual one.
      if (const size_t reply = line.find("Breakpoint"); reply != cNone)
        return ParseBreakReply(line.substr(reply));
      break;
    case '#':
      AddFrame(line);
      return;
    default:
      break;
  }
  if (hasResult) return result.Append(line);
  std::string_view text = line;
  std::string thread = TakeThread(text);
  if (!thread.empty()) stop.thread = std::move(thread);
  if (text.starts_with("Breakpoint") || text.starts_with("Temporary breakpoint"))
    ParseBreakHit(text);
  else if (line == "Run till exit from ")
    frameBefore = line;
  else
    Output(line);
  if (line.starts_with("[Inferior ") && line.ends_with(" killed]")) End({0, "SIGKILL", "Killed"});
}

bool GdbStream::ParseDisplay(std::string_view line) {
  const std::optional<int> number = TakeDisplayNumber(line);
  if (!number) return false;
  constexpr std::string_view cEquals = " = ";
  constexpr size_t cLongestExpression = 4096;
  // An expression may contain " = ", and so may a value: the longest one that is watched counts.
  size_t end = cNone;
  for (size_t at = line.find(cEquals); at != cNone && at <= cLongestExpression;
       at = line.find(cEquals, at + 1))
    if (listener.IsWatched(line.substr(0, at))) end = at;
  if (end == cNone) return false;
  if (lineMode == cInDisplay) FlushDisplay();
  display.number = *number;
  display.expression = line.substr(0, end);
  displayValue.Begin(line.substr(end + cEquals.size()));
  return true;
}

void GdbStream::ParseResult(std::string_view line) {
  FlushResult();
  const std::optional<std::string_view> value = ReadResult(line);
  hasResult = value.has_value();
  if (value) result.Begin(*value);
}

void GdbStream::ParseBreakReply(std::string_view line) {
  const std::optional<GdbBreakpoint> breakpoint = ReadBreakpoint(line);
  if (!breakpoint) return Output(line);
  Report([report = *breakpoint](GdbListener& to) { to.OnBreakpointSet(report); });
}

// Some versions put the reply to "break" on a line of its own; it begins like a hit.
void GdbStream::ParseBreakHit(std::string_view line) {
  const std::optional<int> number = ReadHit(line);
  if (!number) return ParseBreakReply(line);
  const std::optional<GdbFrame> frame = ReadFrame(line);
  hit = number;
  if (frame) ReportHit(frame->place);
}

// Group: frames.

// A frame's line may be cut, or split by annotations. True if the line belongs to one.
bool GdbStream::TakeAsFrame(std::string_view line) {
  if (continuedFrame) {
    const bool isOther =
        IsRowStart(line) || (IsFrameWithoutPlace(frameHead) && line.front() != ' ');
    if (frameInPieces || !isOther) {
      AddFrame(line);
      return true;
    }
    CloseFrame();
    return false;
  }
  if (!frameAnnounced) return false;
  AddFrame(line);
  return true;
}

void GdbStream::AddFrame(std::string_view line) {
  if (!continuedFrame) frameHead.clear();
  AppendBounded(frameHead, line, cLongestFrame);
  frameAnnounced = false;
  const bool isFirst = !std::exchange(continuedFrame, true);
  if (!frameInPieces) {
    if (const std::optional<GdbFrame> frame = ReadFrame(isFirst ? line : frameHead)) {
      continuedFrame = false;
      return ReportFrame(*frame);
    }
  }
  // Something that never becomes a frame isn't searched again and again.
  if (frameHead.size() > cLongestFrame) continuedFrame = frameInPieces = false;
}

// Nothing more comes for the frame.
void GdbStream::CloseFrame() {
  frameAnnounced = false;
  frameInPieces = false;
  if (!std::exchange(continuedFrame, false)) return;
  std::optional<GdbFrame> frame = ReadFrame(frameHead);
  if (!frame && !IsFrameWithoutPlace(frameHead)) return;
  if (!frame) frame = GdbFrame{frameHead, {}};
  if (IsRowStart(frameHead)) frame->place.level = ParseInt(frameHead.substr(1));
  ReportFrame(*frame);
}

// What has announced a frame waits for it no longer.
void GdbStream::ForgetFrameBefore() {
  hit.reset();
  if (!frameBefore.empty()) Output(std::exchange(frameBefore, {}));
}

void GdbStream::ReportFrame(const GdbFrame& frame) {
  if (!frameBefore.empty()) {
    Output(std::exchange(frameBefore, {}) + frameHead);
  } else if (IsRowStart(frame.text)) {
    Report([frame](GdbListener& to) { to.OnFrame(frame); });
  } else {
    stop.frame = frame.text;
    ReportHit(frame.place);
  }
}

void GdbStream::ReportHit(const GdbPlace& place) {
  if (!hit) return;
  Report([report = GdbHit{*std::exchange(hit, {}), place}](GdbListener& to) {
    to.OnBreakpointHit(report);
  });
}

// Group: the rest.

void GdbStream::ReadSignalText(std::string_view line) {
  std::string_view text = line;
  if (std::string thread = TakeThread(text); !thread.empty()) stop.thread = std::move(thread);
  if (const std::optional<GdbSignal> signal = ReadSignal(line)) {
    stop.signalName = signal->name;
    stop.signalText = signal->text;
  }
  Output(line);
  if (std::exchange(killed, false)) End({0, stop.signalName, stop.signalText});
}

void GdbStream::Output(std::string_view line) {
  if (lineMode == cInError) return;
  Report([text = std::string(line)](GdbListener& to) { to.OnOutput(text); });
}

}  // namespace zendry
