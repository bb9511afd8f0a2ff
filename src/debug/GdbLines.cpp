#include "debug/GdbLines.h"

#include <algorithm>
#include <utility>

#include "base/ParseInt.h"
#include "base/Paths.h"

namespace zendry {

namespace {

constexpr auto cNone = std::string_view::npos;
constexpr std::string_view cAt = " at ";

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Takes a number without a sign off a text.
std::optional<int> TakeDigits(std::string_view& text) {
  if (text.empty() || !IsDigit(text.front())) return {};
  return TakeNumber<int>(text);
}

bool TakePrefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

// Takes the last field, with the ":" before it, off "a:b:c".
std::string_view TakeLastField(std::string_view& text) {
  const size_t colon = text.rfind(':');
  if (colon == cNone) return {};
  const std::string_view field = text.substr(colon + 1);
  text = text.substr(0, colon);
  return field;
}

bool IsNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == cNone;
}

// FILE:LINE with all that follows well formed: FILE is the rest, whatever it contains.
std::optional<GdbPlace> ReadWholeSource(std::string_view text) {
  if (!TakeLastField(text).starts_with("0x")) return {};
  const std::string_view middle = TakeLastField(text);
  if (middle != "beg" && middle != "middle") return {};
  if (!IsNumber(TakeLastField(text))) return {};
  const std::string_view line = TakeLastField(text);
  if (!IsNumber(line) || text.empty()) return {};
  return GdbPlace{std::string(text), ParseInt(line)};
}

// The first colon ends FILE, except the one of a drive; another one must end LINE.
std::optional<GdbPlace> ReadPlainSource(std::string_view text) {
  constexpr size_t cDrive = 2;
  const size_t colon = text.find(':', cDrive);
  if (colon == cNone || text.find(':', colon + 1) == cNone) return {};
  return GdbPlace{std::string(text.substr(0, colon)), ParseInt(text.substr(colon + 1))};
}

// Where " at " stands that separates a function from its place: the last one after a parenthesis,
// because a folder's name may contain " at "; else the last one.
size_t PlaceIn(std::string_view line) {
  for (size_t at = line.rfind(cAt); at != cNone && at > 0; at = line.rfind(cAt, at - 1)) {
    const size_t before = line.find_last_not_of(' ', at);
    if (before != cNone && line[before] == ')') return at;
  }
  return line.rfind(cAt);
}

// K of "(K locations)"; 1 without it.
int LocationsIn(std::string_view line) {
  const size_t end = line.rfind(" locations)");
  const size_t begin = end == cNone ? cNone : line.rfind('(', end);
  return begin == cNone ? 1 : ParseInt(line.substr(begin + 1));
}

}  // namespace

int AnnotationNumber(std::string_view annotation) {
  const size_t blank = annotation.find(' ');
  return blank == cNone ? 0 : ParseInt(annotation.substr(blank));
}

std::optional<GdbPlace> ReadSource(std::string_view annotation) {
  constexpr size_t cFile = 7;
  if (annotation.size() <= cFile) return {};
  annotation.remove_prefix(cFile);
  std::optional<GdbPlace> place = ReadWholeSource(annotation);
  if (!place) place = ReadPlainSource(annotation);
  if (!place || place->line <= 0) return {};
  place->file = TidyPath(std::move(place->file));
  return place;
}

std::optional<GdbBreakpoint> ReadBreakpoint(std::string_view line) {
  GdbBreakpoint breakpoint;
  breakpoint.isTemporary = TakePrefix(line, "Temporary breakpoint ");
  if (!breakpoint.isTemporary && !TakePrefix(line, "Breakpoint ")) return {};
  const auto number = TakeDigits(line);
  if (!number) return {};
  breakpoint.number = *number;
  breakpoint.isPending = line.starts_with(" (") && line.find(") pending.") != cNone;
  if (breakpoint.isPending) return breakpoint;
  if (!line.starts_with(cAt)) return {};
  breakpoint.locations = LocationsIn(line);
  const size_t file = line.find("file ");
  const size_t comma = line.rfind(", line ");
  if (file == cNone || comma == cNone || comma < file + 5) return breakpoint;
  breakpoint.place.file = line.substr(file + 5, comma - file - 5);
  breakpoint.place.line = ParseInt(line.substr(comma + 7));
  return breakpoint;
}

std::optional<GdbFrame> ReadFrame(std::string_view line) {
  const size_t at = PlaceIn(line);
  const size_t colon = line.rfind(':');
  if (at == cNone || at == 0 || colon == cNone || colon <= at) return {};
  GdbFrame frame;
  const size_t end = line.find_last_not_of(' ', at);
  frame.text = line.substr(0, end == cNone ? 0 : end + 1);
  const size_t file = at + cAt.size();
  frame.place.file = colon > file ? line.substr(file, colon - file) : "";
  frame.place.line = ParseInt(line.substr(colon + 1));
  if (line.starts_with('#')) frame.place.level = ParseInt(line.substr(1));
  return frame;
}

bool IsFrameWithoutPlace(std::string_view line) {
  return line.ends_with(')') || line.ends_with('>') || line.find(") from ") != cNone;
}

std::string TakeThread(std::string_view& line) {
  constexpr std::string_view cThread = "Thread ", cHit = " hit ", cReceived = " received signal ";
  if (!line.starts_with(cThread)) return {};
  size_t quote = line.find("\" hit ");
  if (quote == cNone) quote = line.find("\" received signal ");
  const size_t from = quote == cNone ? cThread.size() : quote;
  const size_t hit = line.find(cHit, from);
  const size_t received = line.find(cReceived, from);
  const size_t end = std::min(hit, received);
  if (end == cNone) return {};
  std::string thread(line.substr(cThread.size(), end - cThread.size()));
  line.remove_prefix(end == hit ? end + cHit.size() : end);
  return thread;
}

std::optional<int> ReadHit(std::string_view line) {
  if (!TakePrefix(line, "Temporary breakpoint ") && !TakePrefix(line, "Breakpoint ")) return {};
  const auto number = TakeDigits(line);
  // Of a breakpoint with several places gdb names the place too: "2.1".
  if (number && TakePrefix(line, ".")) TakeDigits(line);
  if (!number || !line.starts_with(',')) return {};
  return *number;
}

std::optional<GdbSignal> ReadSignal(std::string_view line) {
  size_t name = line.find(" received signal ");
  if (name == cNone) name = line.find(" terminated with signal ");
  if (name == cNone) return {};
  name = line.find(" signal ", name) + std::string_view(" signal ").size();
  const size_t comma = line.find(", ", name);
  if (comma == cNone) return {};
  std::string_view text = line.substr(comma + 2);
  if (text.ends_with('.')) text.remove_suffix(1);
  return GdbSignal{std::string(line.substr(name, comma - name)), std::string(text)};
}

std::optional<int> TakeDisplayNumber(std::string_view& line) {
  std::string_view rest = line;
  const auto number = TakeDigits(rest);
  if (!number || !TakePrefix(rest, ": ")) return {};
  line = rest;
  return *number;
}

std::optional<std::string_view> ReadResult(std::string_view line) {
  if (!TakePrefix(line, "$")) return {};
  const size_t equals = line.find('=');
  if (equals == cNone) return {};
  return line.substr(std::min(equals + 2, line.size()));
}

}  // namespace zendry
