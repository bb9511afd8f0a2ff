#include "RegularExpr.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <optional>

#include "AsciiCase.h"
#include "ExprReader.h"
#include "WordBytes.h"

namespace mavro {

namespace {

constexpr long cLeastSteps = 1'000'000;
constexpr long cStepsPerByte = 20;
constexpr long cMostSteps = 50'000'000;
constexpr size_t cMostWays = 2'000'000;

}  // namespace

// One character; a byte that is no part of UTF-8 is one by itself.
CharacterAt DecodeCharacter(std::string_view text, size_t at) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(at);
  if (lead < 0x80) return {lead, 1};
  const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 1;
  if (length == 1 || lead > 0xF4 || at + length > text.size()) return {0xDC00u | lead, 1};
  uint32_t character = lead & (0x7Fu >> length);
  for (size_t i = 1; i < length; ++i) {
    if ((byte(at + i) & 0xC0) != 0x80) return {0xDC00u | lead, 1};
    character = character << 6 | (byte(at + i) & 0x3Fu);
  }
  return {character, length};
}

bool RegularExpr::Set::Has(uint32_t character) const {
  bool isIn = false;
  if (character < ascii.size())
    isIn = ascii[character];
  else
    isIn = std::any_of(ranges.begin(), ranges.end(), [character](const auto& range) {
      return range.first <= character && character <= range.second;
    });
  return isIn != isNegated;
}

RegularExpr::RegularExpr(std::string_view pattern, bool matchCase) : foldsCase(!matchCase) {
  ExprReader reader(pattern, *this);
  error = reader.Read();
  if (error.empty()) FindFirstBytes();
}

// Follows all ways from the start up to the first step that takes a byte.
void RegularExpr::FindFirstBytes() {
  std::vector<bool> seen(steps.size());
  std::vector<int> open = {0};
  canBeEmpty = false;
  while (!open.empty()) {
    const int at = open.back();
    open.pop_back();
    if (seen[static_cast<size_t>(at)]) continue;
    seen[static_cast<size_t>(at)] = true;
    const Step& step = steps[static_cast<size_t>(at)];
    switch (step.op) {
      case Op::cByte:
        firstBytes.set(static_cast<unsigned char>(step.a));
        if (foldsCase)
          firstBytes.set(static_cast<unsigned char>(AsciiUpper(static_cast<char>(step.a))));
        break;
      case Op::cSet:
        for (size_t byte = 0; byte < 256; ++byte)
          if (byte >= 128 || sets[static_cast<size_t>(step.a)].Has(static_cast<uint32_t>(byte)))
            firstBytes.set(byte);
        break;
      case Op::cSplit:
        open.push_back(step.a);
        open.push_back(step.b);
        break;
      case Op::cGoTo:
        open.push_back(step.a);
        break;
      case Op::cAny:
      case Op::cGroupAgain:
      case Op::cDone:
        canBeEmpty = true;
        return;
      default:
        open.push_back(at + 1);
    }
  }
}

// The search in one line. What it would try next is on a stack of its own.
class RegularExpr::Run {
 public:
  Run(const RegularExpr& itsExpr, std::string_view itsLine)
      : expr(itsExpr),
        line(itsLine),
        places(2 * cGroups + static_cast<size_t>(itsExpr.marks), cNowhere),
        left(std::min(cLeastSteps + cStepsPerByte * static_cast<long>(line.size()), cMostSteps)) {}

  Outcome From(size_t start);
  Match Found() const;

 private:
  // Another way to go on, or a place to restore before that.
  struct Way {
    int step;    // -1: restore
    int number;  // of the place
    size_t place;
  };
  void Note(int number, size_t place);
  bool Retry(int& step, size_t& at);
  bool Takes(const Step& step, size_t& at) const;
  bool IsWordAt(size_t at) const { return at < line.size() && IsWordByte(line[at]); }

  const RegularExpr& expr;
  const std::string_view line;
  std::vector<size_t> places;  // starts and ends of groups, then the marks of loops
  std::vector<Way> ways;
  long left;  // steps
};

void RegularExpr::Run::Note(int number, size_t place) {
  size_t& noted = places[static_cast<size_t>(number)];
  if (!ways.empty()) ways.push_back({-1, number, noted});
  noted = place;
}

bool RegularExpr::Run::Retry(int& step, size_t& at) {
  while (!ways.empty()) {
    const Way way = ways.back();
    ways.pop_back();
    if (way.step >= 0) {
      step = way.step;
      at = way.place;
      return true;
    }
    places[static_cast<size_t>(way.number)] = way.place;
  }
  return false;
}

// A step that looks at the text; moves on over what it takes.
bool RegularExpr::Run::Takes(const Step& step, size_t& at) const {
  switch (step.op) {
    case Op::cByte: {
      if (at >= line.size()) return false;
      const char byte = expr.foldsCase ? AsciiLower(line[at]) : line[at];
      if (byte != static_cast<char>(step.a)) return false;
      ++at;
      return true;
    }
    case Op::cAny:
      if (at >= line.size()) return false;
      at += DecodeCharacter(line, at).length;
      return true;
    case Op::cSet: {
      if (at >= line.size()) return false;
      const CharacterAt found = DecodeCharacter(line, at);
      if (!expr.sets[static_cast<size_t>(step.a)].Has(found.character)) return false;
      at += found.length;
      return true;
    }
    case Op::cStart:
      return at == 0;
    case Op::cEnd:
      return at == line.size();
    case Op::cWordEdge:
      return ((at > 0 && IsWordAt(at - 1)) != IsWordAt(at)) != (step.a == 1);
    case Op::cGroupAgain: {
      const size_t start = places[static_cast<size_t>(2 * step.a)];
      const size_t end = places[static_cast<size_t>(2 * step.a + 1)];
      if (start == cNowhere || end == cNowhere) return false;
      const std::string_view again = line.substr(start, end - start);
      const std::string_view here = line.substr(at, again.size());
      if (expr.foldsCase ? !EqualNoCase(again, here) : again != here) return false;
      at += again.size();
      return true;
    }
    case Op::cLeaveIfStill:
      return places[static_cast<size_t>(step.a) + 2 * cGroups] != at;
    default:
      return true;
  }
}

RegularExpr::Outcome RegularExpr::Run::From(size_t start) {
  std::fill(places.begin(), places.end(), cNowhere);
  ways.clear();
  int next = 0;
  size_t at = start;
  for (;;) {
    if (--left < 0 || ways.size() > cMostWays) return Outcome::cTooLong;
    const Step& step = expr.steps[static_cast<size_t>(next)];
    switch (step.op) {
      case Op::cDone:
        places[0] = start;
        places[1] = at;
        return Outcome::cFound;
      case Op::cSplit:
        ways.push_back({step.b, 0, at});
        next = step.a;
        break;
      case Op::cGoTo:
        next = step.a;
        break;
      case Op::cSave:
        Note(step.a, at);
        ++next;
        break;
      case Op::cMark:
        Note(step.a + static_cast<int>(2 * cGroups), at);
        ++next;
        break;
      default:
        if (Takes(step, at))
          ++next;
        else if (!Retry(next, at))
          return Outcome::cNone;
    }
  }
}

RegularExpr::Match RegularExpr::Run::Found() const {
  Match match;
  for (size_t i = 0; i < cGroups; ++i) {
    const Range group = {places[2 * i], places[2 * i + 1]};
    const bool isWhole = group.first != cNowhere && group.second != cNowhere;
    match.groups[i] = isWhole ? group : Range(cNowhere, cNowhere);
  }
  return match;
}

RegularExpr::Outcome RegularExpr::Find(std::string_view line, size_t from, Match& match) const {
  if (!error.empty() || steps.empty() || from > line.size()) return Outcome::cNone;
  std::optional<Run> run;  // most lines have no byte that a match could begin with
  for (size_t at = from; at <= line.size(); ++at) {
    if (!canBeEmpty && (at == line.size() || !firstBytes[static_cast<unsigned char>(line[at])]))
      continue;
    if (at > from && at < line.size() && (static_cast<unsigned char>(line[at]) & 0xC0) == 0x80 &&
        canBeEmpty)
      continue;
    if (!run) run.emplace(*this, line);
    const Outcome outcome = run->From(at);
    if (outcome == Outcome::cFound) match = run->Found();
    if (outcome != Outcome::cNone) return outcome;
  }
  return Outcome::cNone;
}

}  // namespace mavro
