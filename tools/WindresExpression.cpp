#include "WindresExpression.h"

#include <optional>

namespace zendry {

namespace {

constexpr int cDeepest = 100;

// Names that scripts get from the headers of their original system.
struct ConstantRow {
  std::string_view name;
  int64_t value;
};
constexpr ConstantRow cConstants[] = {
    {"VS_VERSION_INFO", 1},
    {"VS_FFI_FILEFLAGSMASK", 0x3F},
    {"VS_FF_DEBUG", 1},
    {"VS_FF_PRERELEASE", 2},
    {"VS_FF_PATCHED", 4},
    {"VS_FF_PRIVATEBUILD", 8},
    {"VS_FF_INFOINFERRED", 16},
    {"VS_FF_SPECIALBUILD", 32},
    {"VOS_UNKNOWN", 0},
    {"VOS__WINDOWS32", 4},
    {"VOS_NT", 0x40000},
    {"VOS_NT_WINDOWS32", 0x40004},
    {"VFT_UNKNOWN", 0},
    {"VFT_APP", 1},
    {"VFT_DLL", 2},
    {"VFT_STATIC_LIB", 7},
    {"VFT2_UNKNOWN", 0},
    {"LANG_NEUTRAL", 0},
    {"LANG_ENGLISH", 9},
    {"SUBLANG_NEUTRAL", 0},
    {"SUBLANG_DEFAULT", 1},
    {"SUBLANG_ENGLISH_US", 1},
};

std::optional<int64_t> ConstantOf(const RcToken& token) {
  if (token.kind == RcToken::cWord)
    for (const ConstantRow& row : cConstants)
      if (row.name == token.text) return row.value;
  return std::nullopt;
}

// The operators with two operands; those with the highest precedence are last.
constexpr std::string_view cLevels[] = {"|", "&", "+-", "*/"};
constexpr size_t cLevelCount = std::size(cLevels);

class Expression {
 public:
  explicit Expression(RcCursor& cursor) : cursor(cursor) {}

  RcNumber Read(size_t level) {
    if (level == cLevelCount) return ReadOperand();
    RcNumber left = Read(level + 1);
    for (char sign; (sign = SignOf(level)) != '\0';) {
      const Place place = cursor.Next().place;
      const RcNumber right = Read(level + 1);
      left = {Apply(sign, left.value, right.value, place), left.isLong || right.isLong};
    }
    return left;
  }

 private:
  // The next sign if it is an operator of this level.
  char SignOf(size_t level) {
    const RcToken& token = cursor.Peek();
    const bool isOperator =
        token.kind == RcToken::cSign && cLevels[level].find(token.text) != std::string_view::npos;
    return isOperator ? token.text[0] : '\0';
  }

  // Numbers keep 32 bits, so that the calculation can't overflow.
  int64_t Apply(char sign, int64_t left, int64_t right, const Place& place) const {
    constexpr int64_t cLimit = int64_t{1} << 32;
    int64_t result = 0;
    if (sign == '|') result = left | right;
    if (sign == '&') result = left & right;
    if (sign == '+') result = left + right;
    if (sign == '-') result = left - right;
    const bool isTooLarge = sign == '*' && left != 0 && std::abs(right) > cLimit / std::abs(left);
    if (sign == '*' && !isTooLarge) result = left * right;
    if (sign == '/' && right == 0) cursor.Fail(place, "division by zero");
    if (sign == '/') result = left / right;
    if (isTooLarge || result >= cLimit || result < -cLimit)
      cursor.Fail(place, "the result is too large");
    return result;
  }

  RcNumber ReadOperand() {
    const RcToken token = cursor.Peek();
    const auto constant = ConstantOf(token);
    if (token.kind != RcToken::cNumber && token.kind != RcToken::cSign && !constant)
      cursor.FailExpected("a number");
    if (++depth > cDeepest) cursor.Fail(token.place, "the expression is nested too deeply");
    RcNumber number{static_cast<int64_t>(token.number), token.isLong};
    if (constant) number.value = *constant;
    if (token.kind != RcToken::cSign) {
      cursor.Next();
    } else if (cursor.Match('(')) {
      number = Read(0);
      if (!cursor.Match(')')) cursor.FailExpected("')'");
    } else if (cursor.Match('-')) {
      number = ReadOperand();
      number.value = -number.value;
    } else if (cursor.Match('~')) {
      number = ReadOperand();
      number.value = ~number.value;
    } else {
      cursor.FailExpected("a number");
    }
    --depth;
    return number;
  }

  RcCursor& cursor;
  int depth = 0;
};

}  // namespace

RcNumber ReadExpression(RcCursor& cursor) {
  return Expression(cursor).Read(0);
}

bool BeginsExpression(const RcToken& token) {
  return token.kind == RcToken::cNumber || token.IsSign('(') || token.IsSign('-') ||
         token.IsSign('~') || ConstantOf(token);
}

}  // namespace zendry
