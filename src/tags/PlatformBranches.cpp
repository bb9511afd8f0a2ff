#include "tags/PlatformBranches.h"

#include <algorithm>
#include <array>

#include "tags/TagChars.h"

namespace zendry {

namespace {

constexpr int cMostGroups = 32;  // within each other

// Names that compilers of other platforms define, and those that every compiler here defines.
constexpr std::array<std::string_view, 24> cElsewhere = {
    "_WIN32",      "WIN32",      "__WIN32__",   "__WIN32",        "_WIN64",    "WIN64",
    "__WIN64__",   "_MSC_VER",   "__MINGW32__", "__CYGWIN__",     "__APPLE__", "__MACH__",
    "__FreeBSD__", "__NetBSD__", "__OpenBSD__", "__DragonFly__",  "__sun",     "_AIX",
    "__MVS__",     "__PASE__",   "__QNX__",     "__EMSCRIPTEN__", "__HAIKU__", "__hpux"};
constexpr std::array<std::string_view, 6> cHere = {"__linux__", "__linux", "__gnu_linux__",
                                                   "__unix__",  "__unix",  "__GNUC__"};

// What a condition is on this platform.
enum class Truth { cUnknown, cTrue, cFalse };

Truth Not(Truth value) {
  if (value == Truth::cUnknown) return value;
  return value == Truth::cTrue ? Truth::cFalse : Truth::cTrue;
}

// `strong` decides alone, as true does in "a || b".
Truth Joined(Truth a, Truth b, Truth strong) {
  if (a == strong || b == strong) return strong;
  return a == Truth::cUnknown ? a : b;
}

template <size_t Size>
bool Has(const std::array<std::string_view, Size>& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

Truth IsDefined(std::string_view name) {
  if (Has(cElsewhere, name)) return Truth::cFalse;
  return Has(cHere, name) ? Truth::cTrue : Truth::cUnknown;
}

void SkipBlanks(std::string_view& text) {
  size_t count = 0;
  while (count < text.size() && IsClass(static_cast<unsigned char>(text[count]), cSpaceChar))
    ++count;
  text.remove_prefix(count);
}

std::string_view TakeWord(std::string_view& text) {
  SkipBlanks(text);
  size_t end = 0;
  while (end < text.size() && IsClass(static_cast<unsigned char>(text[end]), cIdentifierChar))
    ++end;
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(end);
  return word;
}

bool TakeSign(std::string_view& text, std::string_view sign) {
  SkipBlanks(text);
  if (!text.starts_with(sign)) return false;
  text.remove_prefix(sign.size());
  return true;
}

// Reads "defined(A) && !(B || defined C)". What it doesn't understand is unknown.
class Condition {
 public:
  explicit Condition(std::string_view theText) : text(theText) {}

  Truth Read() {
    const Truth value = ReadOr();
    SkipBlanks(text);
    const bool isAll = text.empty() || text.starts_with("/*") || text.starts_with("//");
    return isAll ? value : Truth::cUnknown;
  }

 private:
  Truth ReadOr() {
    Truth value = ReadAnd();
    while (TakeSign(text, "||")) value = Joined(value, ReadAnd(), Truth::cTrue);
    return value;
  }

  Truth ReadAnd() {
    Truth value = ReadTerm();
    while (TakeSign(text, "&&")) value = Joined(value, ReadTerm(), Truth::cFalse);
    return value;
  }

  Truth ReadTerm() {
    bool isNegated = false;
    while (TakeSign(text, "!")) isNegated = !isNegated;
    const Truth value = TakeSign(text, "(") ? ReadGroup() : ReadName();
    return isNegated ? Not(value) : value;
  }

  Truth ReadGroup() {
    if (++groups > cMostGroups) return GiveUp();
    const Truth value = ReadOr();
    return TakeSign(text, ")") ? value : GiveUp();
  }

  Truth ReadName() {
    std::string_view name = TakeWord(text);
    if (name == "defined") {
      const bool isGroup = TakeSign(text, "(");
      name = TakeWord(text);
      if (isGroup && !TakeSign(text, ")")) return GiveUp();
      return IsDefined(name);
    }
    const Truth value = IsDefined(name);
    return SkipComparison() ? Compared(value) : value;
  }

  // A name that isn't defined is 0, and no version is as old as that; of others nobody knows.
  static Truth Compared(Truth value) {
    return value == Truth::cFalse ? Truth::cFalse : Truth::cUnknown;
  }

  // ">= 1800" behind a name.
  bool SkipComparison() {
    if (!TakeSign(text, ">=") && !TakeSign(text, ">")) return false;
    return !TakeWord(text).empty();
  }

  // What is left isn't read.
  Truth GiveUp() {
    text = "?";
    return Truth::cUnknown;
  }

  std::string_view text;
  int groups = 0;
};

Truth Read(std::string_view word, std::string_view condition) {
  if (word == "ifdef") return IsDefined(TakeWord(condition));
  if (word == "ifndef") return Not(IsDefined(TakeWord(condition)));
  return Condition(condition).Read();
}

}  // namespace

void PlatformBranches::Take(std::string_view line) {
  line.remove_prefix(1);
  SkipBlanks(line);
  // Most lines are none of these.
  if (!line.starts_with("if") && !line.starts_with("el") && !line.starts_with("en")) return;
  const std::string_view word = TakeWord(line);
  if (word == "if" || word == "ifdef" || word == "ifndef") return Open(word, line);
  if (word == "endif" && deeper > 0)
    --deeper;
  else if (word == "endif" && !levels.empty())
    levels.pop_back();
  else if ((word == "elif" || word == "else") && deeper == 0 && !levels.empty())
    GoOn(word, line);
}

void PlatformBranches::Open(std::string_view word, std::string_view condition) {
  if (levels.size() == cMostLevels) {
    ++deeper;
    return;
  }
  const bool isAround = IsElsewhere();
  const Truth value = Read(word, condition);
  levels.push_back({isAround, isAround || value == Truth::cFalse, value == Truth::cTrue});
}

void PlatformBranches::GoOn(std::string_view word, std::string_view condition) {
  Level& level = levels.back();
  const Truth value = word == "else" ? Truth::cUnknown : Read(word, condition);
  level.isElsewhere = level.isAroundElsewhere || level.isDecided || value == Truth::cFalse;
  level.isDecided = level.isDecided || value == Truth::cTrue;
}

}  // namespace zendry
