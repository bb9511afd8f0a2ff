#include "ExprReader.h"

#include <algorithm>

#include "AsciiCase.h"
#include "WordBytes.h"

namespace mavro {

namespace {

constexpr size_t cMostSteps = 20'000;
constexpr int cMostTimes = 1000;
constexpr int cDeepest = 100;
constexpr int cNoEnd = -1;  // of a repetition

void AddNamed(std::bitset<128>& ascii, char name) {
  for (size_t i = 0; i < ascii.size(); ++i) {
    const char c = static_cast<char>(i);
    const bool isDigit = c >= '0' && c <= '9';
    const bool isBlank = c == ' ' || (c >= '\t' && c <= '\r');
    const char kind = AsciiLower(name);
    const bool isIn = kind == 'd' ? isDigit : kind == 's' ? isBlank : IsWordByte(c);
    if (isIn != (kind != name)) ascii.set(i);
  }
}

bool IsNamedSet(char c) {
  return std::string_view("dDsSwW").find(c) != std::string_view::npos;
}

}  // namespace

std::string ExprReader::Read() {
  expr.steps.clear();
  Steps read = Choice();
  if (error.empty() && !AtEnd()) Fail("')' without '('");
  if (!error.empty()) return error;
  read.push_back({Op::cDone});
  expr.steps = std::move(read);
  return {};
}

ExprReader::Steps ExprReader::Fail(const std::string& why) {
  if (error.empty()) error = why + " (at " + std::to_string(at + 1) + ")";
  at = pattern.size();
  return {};
}

bool ExprReader::Match(char wanted) {
  if (AtEnd() || pattern[at] != wanted) return false;
  ++at;
  return true;
}

// Places in steps count from their own start, so added ones are moved.
void ExprReader::Append(Steps& to, const Steps& added) {
  const auto offset = static_cast<int>(to.size());
  for (Step step : added) {
    if (step.op == Op::cSplit || step.op == Op::cGoTo) step.a += offset;
    if (step.op == Op::cSplit) step.b += offset;
    to.push_back(step);
  }
}

ExprReader::Steps ExprReader::Choice() {
  if (++depth > cDeepest) return Fail("too many brackets in brackets");
  Steps read = Sequence();
  while (Match('|')) {
    const Steps other = Sequence();
    Steps both = {{Op::cSplit, 1, static_cast<int>(read.size()) + 2}};
    Append(both, read);
    both.push_back({Op::cGoTo, static_cast<int>(read.size() + other.size()) + 2});
    Append(both, other);
    read = std::move(both);
  }
  --depth;
  return read;
}

ExprReader::Steps ExprReader::Sequence() {
  Steps read;
  while (!AtEnd() && pattern[at] != '|' && pattern[at] != ')') {
    Append(read, Item());
    if (read.size() > cMostSteps) return Fail("the expression is too long");
  }
  return read;
}

ExprReader::Steps ExprReader::Item() {
  if (std::string_view("*+?").find(pattern[at]) != std::string_view::npos)
    return Fail("nothing to repeat before '" + std::string(1, pattern[at]) + "'");
  Steps once = Atom();
  while (!AtEnd()) {
    int least = 0, most = cNoEnd;
    if (Match('?'))
      most = 1;
    else if (Match('+'))
      least = 1;
    else if (!Match('*') && !Bounds(least, most))
      break;
    isShort = Match('?');
    once = Repeated(once, least, most);
    if (once.size() > cMostSteps) return Fail("the expression is too long");
  }
  return once;
}

// "{2}", "{2,}" and "{2,3}"; a brace that begins none of these is a character.
bool ExprReader::Bounds(int& least, int& most) {
  const size_t start = at;
  if (!Match('{')) return false;
  least = Number();
  most = least;
  if (least >= 0 && Match(',')) most = !AtEnd() && pattern[at] == '}' ? cNoEnd : Number();
  const bool isOpenEnd = most == cNoEnd && at > 0 && pattern[at - 1] == ',';
  if (least < 0 || (most < 0 && !isOpenEnd) || !Match('}')) {
    at = start;
    return false;
  }
  if (most != cNoEnd && most < least) Fail("the bounds of a repetition are exchanged");
  if (least > cMostTimes || most > cMostTimes) Fail("more than 1000 repetitions");
  return error.empty();
}

int ExprReader::Number() {
  int number = -1;
  while (!AtEnd() && pattern[at] >= '0' && pattern[at] <= '9')
    number = std::min(std::max(number, 0) * 10 + (pattern[at++] - '0'), cMostTimes + 1);
  return number;
}

ExprReader::Steps ExprReader::Repeated(const Steps& once, int least, int most) {
  Steps all;
  const bool wasShort = isShort;
  for (int i = 0; i < least && all.size() <= cMostSteps; ++i) Append(all, once);
  if (most == cNoEnd) Append(all, Loop(once, wasShort));
  for (int i = least; i < most && all.size() <= cMostSteps; ++i)
    Append(all, Optional(once, wasShort));
  return all;
}

// A round that matches nothing would be followed by as many more as one likes.
ExprReader::Steps ExprReader::Loop(const Steps& once, bool wasShort) {
  const int mark = expr.marks++;
  const int after = static_cast<int>(once.size()) + 4;
  Steps loop = {wasShort ? Step{Op::cSplit, after, 1} : Step{Op::cSplit, 1, after},
                {Op::cMark, mark}};
  Append(loop, once);
  loop.push_back({Op::cLeaveIfStill, mark});
  loop.push_back({Op::cGoTo, 0});
  return loop;
}

ExprReader::Steps ExprReader::Optional(const Steps& once, bool wasShort) {
  const int after = static_cast<int>(once.size()) + 1;
  Steps steps = {wasShort ? Step{Op::cSplit, after, 1} : Step{Op::cSplit, 1, after}};
  Append(steps, once);
  return steps;
}

ExprReader::Steps ExprReader::Atom() {
  switch (pattern[at]) {
    case '(':
      return Group();
    case '[':
      return Class();
    case '\\':
      return Escape();
    case '.':
      ++at;
      return {{Op::cAny}};
    case '^':
      ++at;
      return {{Op::cStart}};
    case '$':
      ++at;
      return {{Op::cEnd}};
    default: {
      const CharacterAt found = DecodeCharacter(pattern, at);
      return Character(found.character, found.length);
    }
  }
}

// The bytes of the pattern from here on.
ExprReader::Steps ExprReader::Character(uint32_t, size_t length) {
  Steps steps;
  for (size_t i = 0; i < length; ++i, ++at) {
    const char byte = expr.foldsCase ? AsciiLower(pattern[at]) : pattern[at];
    steps.push_back({Op::cByte, static_cast<unsigned char>(byte)});
  }
  return steps;
}

ExprReader::Steps ExprReader::Group() {
  const size_t start = at++;
  const bool isCounted = pattern.substr(at, 2) != "?:";
  if (!isCounted) at += 2;
  if (isCounted && Match('?')) return Fail("'(?' is known as '(?:' only");
  const int number = isCounted ? ++groups : 0;
  Steps inner = Choice();
  if (!error.empty()) return {};
  if (!Match(')')) {
    at = start;
    return Fail("'(' without ')'");
  }
  if (number == 0 || number >= static_cast<int>(RegularExpr::cGroups)) return inner;
  Steps group = {{Op::cSave, 2 * number}};
  Append(group, inner);
  group.push_back({Op::cSave, 2 * number + 1});
  return group;
}

ExprReader::Steps ExprReader::SetStep(Set set) {
  if (expr.foldsCase)
    for (size_t i = 'a'; i <= 'z'; ++i) {
      const size_t upper = i - 'a' + 'A';
      if (set.ascii[i] || set.ascii[upper]) set.ascii.set(i).set(upper);
    }
  expr.sets.push_back(std::move(set));
  return {{Op::cSet, static_cast<int>(expr.sets.size()) - 1}};
}

ExprReader::Steps ExprReader::Escape() {
  if (++at >= pattern.size()) return Fail("nothing after '\\'");
  const char c = pattern[at];
  if (IsNamedSet(c)) {
    ++at;
    Set set;
    AddNamed(set.ascii, c);
    const bool hasOthers = c == 'w' || c == 'D' || c == 'S';
    if (hasOthers) set.ranges.push_back({0x80, UINT32_MAX});
    return SetStep(std::move(set));
  }
  if (c == 'b' || c == 'B') {
    ++at;
    return {{Op::cWordEdge, c == 'B'}};
  }
  if (c >= '1' && c <= '9') {
    if (c - '0' > groups) return Fail("there is no group " + std::string(1, c) + " before");
    ++at;
    return {{Op::cGroupAgain, c - '0'}};
  }
  if (c == 't') {
    ++at;
    return {{Op::cByte, '\t'}};
  }
  const bool isLetter = AsciiLower(c) >= 'a' && AsciiLower(c) <= 'z';
  if (isLetter || c == '0') return Fail("'\\" + std::string(1, c) + "' is not known");
  const CharacterAt found = DecodeCharacter(pattern, at);
  return Character(found.character, found.length);
}

ExprReader::Steps ExprReader::Class() {
  const size_t start = at++;
  Set set;
  set.isNegated = Match('^');
  bool isFirst = true;  // a bracket here is a character
  while (!AtEnd() && (pattern[at] != ']' || isFirst) && error.empty()) {
    ClassPiece(set);
    isFirst = false;
  }
  if (!error.empty()) return {};
  if (!Match(']')) {
    at = start;
    return Fail("'[' without ']'");
  }
  return SetStep(std::move(set));
}

// A character, a range of characters, or a named set.
void ExprReader::ClassPiece(Set& set) {
  bool isSet = false;
  const uint32_t first = ClassEscape(set, isSet);
  if (isSet || !error.empty()) return;
  uint32_t last = first;
  if (at + 1 < pattern.size() && pattern[at] == '-' && pattern[at + 1] != ']') {
    ++at;
    last = ClassEscape(set, isSet);
    if (isSet) Fail("a range can't end with a set");
    if (last < first) Fail("a range with exchanged ends");
  }
  if (!error.empty()) return;
  for (uint32_t c = first; c <= std::min<uint32_t>(last, 127); ++c) set.ascii.set(c);
  if (last >= 128) set.ranges.push_back({std::max<uint32_t>(first, 128), last});
}

// The next character of a set; `isSet` if it was a named set, which is added.
uint32_t ExprReader::ClassEscape(Set& set, bool& isSet) {
  if (!Match('\\')) {
    const CharacterAt found = DecodeCharacter(pattern, at);
    at += found.length;
    return found.character;
  }
  if (AtEnd()) {
    Fail("nothing after '\\'");
    return 0;
  }
  const char c = pattern[at];
  if (IsNamedSet(c)) {
    ++at;
    AddNamed(set.ascii, c);
    if (c == 'w' || c == 'D' || c == 'S') set.ranges.push_back({0x80, UINT32_MAX});
    isSet = true;
    return 0;
  }
  const CharacterAt found = DecodeCharacter(pattern, at);
  at += found.length;
  return c == 't' ? '\t' : found.character;
}

}  // namespace mavro
