#include "WindresCursor.h"

#include <algorithm>
#include <charconv>

#include "WindresText.h"

namespace zendry {

namespace {

constexpr uint64_t cLargestNumber = 0xFFFFFFFF;

bool IsBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool IsWordPart(char c) {
  return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '.' ||
         c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

// The value of a digit; -1 if `c` is not a digit of the base.
int DigitValue(char c, int base) {
  const int lower = c | 0x20;
  const int value = IsDigit(c) ? c - '0' : lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : base;
  return value < base ? value : -1;
}

// Escapes of one letter and their values.
struct EscapeRow {
  char letter, meaning;
};
constexpr EscapeRow cEscapes[] = {{'a', '\a'}, {'b', '\b'}, {'f', '\f'}, {'n', '\n'},
                                  {'r', '\r'}, {'t', '\t'}, {'v', '\v'}, {'\\', '\\'},
                                  {'"', '"'},  {'\'', '\''}};

// A word of the script in the form for messages.
std::string Shown(const RcToken& token) {
  constexpr size_t cMost = 40;
  if (token.kind == RcToken::cEnd) return "the end of the script";
  if (token.kind == RcToken::cNumber) return std::to_string(token.number);
  std::string shown = token.text.substr(0, cMost);
  if (shown.size() < token.text.size()) shown += "...";
  return '"' + shown + '"';
}

}  // namespace

std::string AtPlace(const Place& place, const std::string& message) {
  return place.file + ":" + std::to_string(place.line) + ": " + message;
}

bool RcToken::IsWord(std::string_view capitals) const {
  return kind == cWord && Capitals(text) == capitals;
}

void RcCursor::Fail(const Place& where, const std::string& message) const {
  throw ScriptError{AtPlace(where, message)};
}

void RcCursor::FailExpected(const std::string& what) {
  const RcToken& token = Peek();
  Fail(token.place, "expected " + what + " instead of " + Shown(token));
}

const RcToken& RcCursor::Peek() {
  if (!hasAhead) ahead = Scan();
  hasAhead = true;
  return ahead;
}

RcToken RcCursor::Next() {
  Peek();
  hasAhead = false;
  return std::move(ahead);
}

bool RcCursor::Match(char sign) {
  if (!Peek().IsSign(sign)) return false;
  Next();
  return true;
}

// Skips blanks, ends of lines, and lines that begin with '#'.
void RcCursor::SkipBlanks() {
  while (!AtEnd()) {
    const bool isAtLineStart = position == 0 || text[position - 1] == '\n';
    if (isAtLineStart && Look() == '#')
      ReadDirective();
    else if (!IsBlank(Look()))
      return;
    else if (text[position++] == '\n')
      ++place.line;
  }
}

// A line `# NUMBER "FILE" ...` gives the origin of the next line. Other directives that the
// preprocessor leaves (#pragma) are ignored.
void RcCursor::ReadDirective() {
  const size_t lineEnd = std::min(text.find('\n', position), text.size());
  const std::string_view line = text.substr(position, lineEnd - position);
  position = std::min(lineEnd + 1, text.size());
  ++place.line;
  size_t i = line.find_first_not_of(" \t", 1);
  int number = 0;
  if (i == std::string_view::npos) return;
  const auto [end, error] = std::from_chars(line.data() + i, line.data() + line.size(), number);
  i = static_cast<size_t>(end - line.data());
  if (error != std::errc() || line.substr(i, 2) != " \"") return;
  std::string file;
  for (i += 2; i < line.size() && line[i] != '"'; ++i) {
    if (line[i] == '\\' && i + 1 < line.size()) ++i;
    file += line[i];
  }
  place = {std::move(file), number};
}

RcToken RcCursor::Scan() {
  SkipBlanks();
  aheadStart = position;
  RcToken token;
  token.place = place;
  if (AtEnd()) return token;
  if (Look() == '"') return ScanString(false);
  if ((Look() == 'L' || Look() == 'l') && Look(1) == '"') {
    ++position;
    return ScanString(true);
  }
  const size_t start = position;
  while (!AtEnd() && IsWordPart(Look())) ++position;
  const std::string_view word = text.substr(start, position - start);
  if (!word.empty() && IsDigit(word[0])) return ScanNumber(word);
  token.kind = word.empty() ? RcToken::cSign : RcToken::cWord;
  token.text = word.empty() ? text.substr(position++, 1) : word;
  return token;
}

// Decimal, hexadecimal with 0x, octal with 0. A text that begins with a digit and is not a number
// is a word.
RcToken RcCursor::ScanNumber(std::string_view word) {
  RcToken token;
  token.place = place;
  token.text = word;
  std::string_view digits = word;
  int base = 10;
  if (digits.size() > 1 && digits[0] == '0') {
    const bool isHex = (digits[1] | 0x20) == 'x';
    base = isHex ? 16 : 8;
    digits.remove_prefix(isHex ? 2 : 1);
  }
  if (!digits.empty() && (digits.back() | 0x20) == 'l') {
    token.isLong = true;
    digits.remove_suffix(1);
  }
  token.kind = RcToken::cNumber;
  if (digits.empty() && token.text != "0L" && token.text != "0l") token.kind = RcToken::cWord;
  for (char c : digits) {
    const int value = DigitValue(c, base);
    if (value < 0) {
      token.kind = RcToken::cWord;
      return token;
    }
    token.number = token.number * static_cast<uint64_t>(base) + static_cast<uint64_t>(value);
    token.number = std::min(token.number, cLargestNumber + 1);
  }
  if (token.number > cLargestNumber) Fail(place, "the number " + token.text + " is too large");
  return token;
}

RcToken RcCursor::ScanString(bool isWide) {
  RcToken token;
  token.place = place;
  token.kind = isWide ? RcToken::cWideString : RcToken::cString;
  for (++position; !AtEnd() && Look() != '\n';) {
    const char c = Look();
    if (c == '\\') {
      ScanEscape(token);
    } else if (c != '"') {
      token.text += c;
      ++position;
    } else if (Look(1) == '"') {  // a quote written twice means one quote
      token.text += c;
      position += 2;
    } else {
      ++position;
      return token;
    }
  }
  Fail(token.place, "the text has no closing quote");
}

// An unknown escape is kept unchanged.
void RcCursor::ScanEscape(RcToken& token) {
  const bool isWide = token.kind == RcToken::cWideString;
  const char letter = Look(1);
  position += letter ? 2 : 1;
  for (const EscapeRow& row : cEscapes)
    if (row.letter == letter) {
      token.text += row.meaning;
      return;
    }
  uint32_t code = 0;
  if ((letter == 'x' || letter == 'X') && DigitValue(Look(), 16) >= 0) {
    code = TakeDigits(16, isWide ? 4 : 2);
  } else if (DigitValue(letter, 8) >= 0) {
    --position;
    code = TakeDigits(8, 3);
  } else {
    token.text += '\\';
    if (letter && letter != '\n') token.text += letter;
    if (letter == '\n') --position;
    return;
  }
  if (isWide)
    AppendUtf8(token.text, code);
  else
    token.text += static_cast<char>(code & 0xFF);
}

uint32_t RcCursor::TakeDigits(int base, int most) {
  uint32_t number = 0;
  for (int value; most > 0 && (value = DigitValue(Look(), base)) >= 0; --most, ++position)
    number = number * static_cast<uint32_t>(base) + static_cast<uint32_t>(value);
  return number;
}

std::string_view RcCursor::TakeQuoted() {
  const size_t start = ++position;
  while (!AtEnd() && Look() != '"' && Look() != '\n') ++position;
  if (Look() != '"') Fail(place, "the file's name has no closing quote");
  return text.substr(start, position++ - start);
}

std::string RcCursor::TakeFileName() {
  Peek();
  hasAhead = false;
  position = aheadStart;  // the peeked text is read again, by other rules
  const size_t start = position;
  std::string_view raw;
  if (Look() == '"') {
    raw = TakeQuoted();
  } else {
    while (!AtEnd() && !IsBlank(Look())) ++position;
    raw = text.substr(start, position - start);
  }
  std::string name;
  for (size_t i = 0; i < raw.size(); ++i) {
    const bool isBackslash = raw[i] == '\\';
    name += isBackslash ? '/' : raw[i];
    if (isBackslash && i + 1 < raw.size() && raw[i + 1] == '\\') ++i;
  }
  return name;
}

}  // namespace zendry
