#include "tags/TagChars.h"

#include <algorithm>
#include <cstring>

#include "Assert.h"
#include "ByteBlock.h"

namespace zendry {

Cpp theCpp;

namespace {

// A trigraph's third character and its meaning; `/` and `=` are read on as the character they mean.
constexpr std::string_view cTrigraphs = "(<)>!'-/=";
constexpr std::string_view cTrigraphChars = "[{]}|^~\\#";

constexpr std::string_view cVeraBases = "DHOBdhob";
constexpr size_t cLongestRawDelimiter = 16;

bool IsAlnum(int c) {
  return IsClass(c, cIdentifierChar) && c != '_' && c != '$';
}

bool AreBlank(const char* from, const char* end) {
  return std::all_of(from, end, [](char c) {
    return (cCharClasses[static_cast<unsigned char>(c)] & cBlankChar) != 0;
  });
}

// Where special characters and line ends are. Two pairs of them differ in one bit.
mavro::ByteBlock EffectsIn(mavro::ByteBlock bytes) {
  static_assert(('"' | 1) == '#' && ('/' | 16) == '?');
  return reinterpret_cast<mavro::ByteBlock>(((bytes | 1) == '#') | ((bytes | 16) == '?') |
                                            (bytes == '\'') | (bytes == '\\') | (bytes == '\n'));
}

// Where bytes are that aren't within identifiers.
mavro::ByteBlock OthersIn(mavro::ByteBlock bytes) {
  const auto isBetween = [](mavro::ByteBlock block, unsigned char first, unsigned char last) {
    return block - first <= static_cast<unsigned char>(last - first);
  };
  return reinterpret_cast<mavro::ByteBlock>(~(isBetween(bytes | 0x20, 'a', 'z') |
                                              isBetween(bytes, '0', '9') | (bytes == '_') |
                                              (bytes == '$')));
}

bool IsDigit(int c) {
  return c >= '0' && c <= '9';
}

}  // namespace

void Cpp::sourceInit(bool isLaterPass, Language theLanguage, bool isHeaderFile) {
  ungetch = ungetch2 = decided = 0;
  midStatement = keepsLiterals = false;
  blockLevel = 0;
  literal.clear();
  directive.state = DIRECTIVE_NONE;
  directive.allowed = true;
  directive.name.clear();
  directive.condDepth = 0;
  directive.ifdef[0] = {};
  laterPass = isLaterPass;
  language = theLanguage;
  isJava = language == Language::cJava;
  isCOrCpp = language == Language::cC || language == Language::cCpp;
  isHeader = isHeaderFile;
  separatorLine = 0;
}

void Cpp::sourceUngetc(int c) {
  MAVRO_ASSERT_AS(ungetch2 == 0, "Cpp.ungetch2 == '\\0'");
  ungetch2 = ungetch;
  ungetch = c;
}

bool Cpp::HasMoreOnLine() const {
  for (const int c : {ungetch, ungetch2, decided, lines.linePushback}) {
    if (IsClass(c, cLineEndChar) || c == '}') return false;
    if (c != 0 && !IsClass(c, cSpaceChar)) return true;
  }
  std::string_view rest(lines.cursor, static_cast<size_t>(lines.lineEnd - lines.cursor));
  rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
  return !rest.empty() && rest.front() != '}' && !rest.starts_with("//") && !rest.starts_with("/*");
}

void Cpp::Stop() {
  ungetch = ungetch2 = decided = 0;
  lines.Stop();
}

int Cpp::ReadSource() {
  if (ungetch != 0) {
    const int c = ungetch;
    ungetch = ungetch2;
    ungetch2 = 0;
    return c;
  }
  if (decided != 0) {
    const int c = decided;
    decided = 0;
    return c;
  }
  return ReadVisible();
}

int Cpp::ReadVisible() {
  Seen seen;
  for (;;) {
    if (seen.directive || seen.ignore) SkipUnseen(seen);
    int c = lines.lineGetc();
    if (c == -1) return -1;
    c = Fold(c, seen);
    if (!seen.directive && !seen.ignore && c != 0) return c;
    decided = 0;
  }
}

// Passes over characters without an effect: plain ones of a directive after its word, or of a
// branch that isn't seen.
void Cpp::SkipUnseen(Seen& seen) {
  if (lines.linePushback != 0 || (seen.directive && directive.state != DIRECTIVE_NONE)) return;
  const std::string_view ahead = lines.Ahead();
  const char* const from = lines.cursor;
  lines.cursor = std::min(mavro::FindMarked(from, from + ahead.size(), EffectsIn), lines.lineEnd);
  if (AreBlank(from, lines.cursor)) return;
  directive.allowed = false;
  if (seen.directive) seen.ignore = Level().skipping;
}

// The result that the stream gives for a character and the ones that belong to it; 0 for none.
int Cpp::Fold(int c, Seen& seen) {
  if (c == '?') {
    const int decision = FoldQuestion(c);
    if (decision != 0) return decision;
  }
  switch (c) {
    case '\t':
    case ' ':
      return c;
    case '\n':
      if (seen.directive) seen.directive = seen.ignore = Level().skipping;
      directive.allowed = true;
      return c;
    case '"':
      return FoldQuote();
    case '#':
      if (directive.allowed) {
        directive.state = DIRECTIVE_HASH;
        directive.allowed = false;
        seen.directive = true;
        ++directivesRead;
      }
      return c;
    case '\'':
      return FoldApostrophe();
    case '/':
      return FoldSlash();
    case '\\':
      return FoldBackslash(c);
    default:
      return FoldOther(c, seen);
  }
}

int Cpp::FoldOther(int c, Seen& seen) {
  directive.allowed = false;
  if (seen.directive) seen.ignore = HandleDirective(c);
  return c;
}

// Puts the character that a trigraph means into `c`, to be handled like any other. A result other
// than 0 is the character that the stream gives.
int Cpp::FoldQuestion(int& c) {
  const int second = lines.lineGetc();
  if (second != '?') {
    directive.allowed = false;
    lines.linePushback = std::max(second, 0);
    return '?';
  }
  const int third = lines.lineGetc();
  const size_t index =
      third <= 0 ? std::string_view::npos : cTrigraphs.find(static_cast<char>(third));
  if (index == std::string_view::npos) {
    lines.linePushback = std::max(third, 0);
    directive.allowed = false;
    decided = '?';
    return '?';
  }
  c = static_cast<unsigned char>(cTrigraphChars[index]);
  return 0;
}

int Cpp::FoldBackslash(int c) {
  const int next = lines.lineGetc();
  if (next == '?')
    decided = '?';
  else if (next != '\n')
    lines.linePushback = std::max(next, 0);
  return c;
}

int Cpp::FoldSlash() {
  const int next = lines.lineGetc();
  if (next == '*') {
    SkipBlockComment();
    return ' ';
  }
  if (next == '/') return SkipLineComment();
  lines.linePushback = std::max(next, 0);
  directive.allowed = false;
  return '/';
}

void Cpp::SkipBlockComment() {
  bool afterStar = false;
  for (;;) {
    if (lines.cursor == lines.lineEnd && !lines.NextLine()) return;
    if (afterStar && *lines.cursor == '/') {
      ++lines.cursor;
      return;
    }
    afterStar = false;
    const void* star = std::memchr(lines.cursor, '*', lines.lineEnd - lines.cursor);
    lines.cursor = star == nullptr ? lines.lineEnd : static_cast<const char*>(star) + 1;
    afterStar = star != nullptr;
  }
}

// Leaves the newline to be read once more: it ends the comment and then the line.
int Cpp::SkipLineComment() {
  for (;;) {
    const char* const lineEnd = lines.lineEnd;
    const void* hidden = std::memchr(lines.cursor, '\\', lineEnd - lines.cursor);
    if (hidden == nullptr && lines.cursor != lineEnd && lineEnd[-1] == '\n') {
      lines.cursor = lineEnd - 1;
      return '\n';
    }
    lines.cursor = hidden == nullptr ? lineEnd : static_cast<const char*>(hidden) + 1;
    if (hidden != nullptr && lines.lineGetc() == -1) return 0;
    if (lines.cursor == lines.lineEnd && !lines.NextLine()) return 0;
  }
}

int Cpp::FoldQuote() {
  directive.allowed = false;
  const int line = lines.lineNumber;
  const char* const start = lines.cursor;
  if (language != Language::cCpp || !SkipRawString()) SkipString();
  KeepLiteral(line, start);
  return STRING_MARK;
}

// `start` is after the opening quote, which the reader has just passed in that line.
void Cpp::KeepLiteral(int line, const char* start) {
  if (!keepsLiterals) return;
  if (line == lines.lineNumber && start > lines.lineStart)
    literal.assign(start - 1, lines.cursor);
  else
    literal.assign(2, start > lines.lineStart ? start[-1] : '"');
}

void Cpp::SkipString() {
  for (;;) {
    if (lines.cursor == lines.lineEnd && !lines.NextLine()) return;
    const char c = *lines.cursor++;
    if (c == '"') return;
    if (c == '\\') lines.lineGetc();
  }
}

// A string with R, LR, uR, UR or u8R before its quote ends with its own delimiter.
bool Cpp::SkipRawString() {
  const char* quote = lines.cursor - 1;
  if (quote < lines.lineStart || *quote != '"') return false;
  const char* word = quote;
  while (word != lines.lineStart && IsClass(static_cast<unsigned char>(word[-1]), cIdentifierChar))
    --word;
  const std::string_view prefix(word, quote - word);
  constexpr std::string_view cPrefixes[] = {"R", "LR", "uR", "UR", "u8R"};
  if (std::find(std::begin(cPrefixes), std::end(cPrefixes), prefix) == std::end(cPrefixes))
    return false;
  const std::string_view rest(lines.cursor, lines.lineEnd - lines.cursor);
  const size_t length = rest.find_first_of("( )\\\t\v\f\n\"");
  if (length > cLongestRawDelimiter || rest[length] != '(') return false;
  const std::string closer = ")" + std::string(rest.substr(0, length)) + '"';
  lines.cursor += length + 1;
  while (lines.cursor != lines.lineEnd || lines.NextLine()) {
    const std::string_view line(lines.cursor, lines.lineEnd - lines.cursor);
    const size_t end = line.find(closer);
    lines.cursor = end == line.npos ? lines.lineEnd : lines.cursor + end + closer.size();
    if (end != line.npos) break;
  }
  return true;
}

int Cpp::FoldApostrophe() {
  directive.allowed = false;
  if (isCOrCpp && IsDigitSeparator()) return 0;
  const int line = lines.lineNumber;
  const char* const start = lines.cursor;
  SkipCharacter();
  KeepLiteral(line, start);
  return CHAR_MARK;
}

// True if the apostrophe just read is within a number. Characters before an earlier separator of
// the line have already been checked at that separator.
bool Cpp::IsDigitSeparator() {
  const char* quote = lines.cursor - 1;
  if (quote <= lines.lineStart || *quote != '\'' || lines.cursor == lines.lineEnd) return false;
  if (!IsAlnum(static_cast<unsigned char>(*lines.cursor))) return false;
  const char* earlier = separatorLine == lines.lineNumber ? separatorPlace : nullptr;
  const char* at = quote;
  while (at != lines.lineStart &&
         (IsClass(static_cast<unsigned char>(at[-1]), cIdentifierChar) || at[-1] == '.'))
    --at;
  // In C a digit follows or the number has a base, which tells it from a number of Vera.
  const bool isOfC = IsDigit(static_cast<unsigned char>(*lines.cursor)) || *at == '0';
  if (language == Language::cC && !isOfC) return false;
  const bool goesOn = at != lines.lineStart && at - 1 == earlier && at != quote;
  if (!goesOn && !IsDigit(*at)) return false;
  separatorLine = lines.lineNumber;
  separatorPlace = quote;
  return true;
}

void Cpp::SkipCharacter() {
  bool isVeraNumber = false;
  for (int count = 1;; ++count) {
    const int c = lines.lineGetc();
    if (c == -1 || c == '\'') return;
    if (c == '\\') {
      lines.lineGetc();
    } else if (c == '\n') {
      lines.linePushback = c;
      return;
    } else if (count == 1 && cVeraBases.find(static_cast<char>(c)) != std::string_view::npos) {
      isVeraNumber = true;
    } else if (isVeraNumber && !IsAlnum(c)) {
      lines.linePushback = c;
      return;
    }
  }
}

void Cpp::ReadIdentifierRest(std::string& name) {
  while (HasPushback()) {
    const int c = sourceGetc();
    if (!IsIdentifierPart(c)) {
      sourceUngetc(c);
      return;
    }
    name += static_cast<char>(c);
  }
  const char* end = IdentifierEnd();
  while (isJava && end != lines.lineEnd && IsIdentifierPart(static_cast<unsigned char>(*end)))
    ++end;
  if (end == lines.cursor) return;
  directive.allowed = false;
  name.append(lines.cursor, end);
  lines.cursor = end;
}

const char* Cpp::IdentifierEnd() const {
  const std::string_view ahead = lines.Ahead();
  const char* const end = mavro::FindMarked(lines.cursor, lines.cursor + ahead.size(), OthersIn);
  return std::min(end, lines.lineEnd);
}

std::string_view Cpp::TakePlain() {
  constexpr uint8_t cStops = cSpaceChar | cSpecialChar | cBracketChar;
  if (HasPushback()) return {};
  const char* const from = lines.cursor;
  while (lines.cursor != lines.lineEnd &&
         (cCharClasses[static_cast<unsigned char>(*lines.cursor)] & cStops) == 0)
    ++lines.cursor;
  directive.allowed = directive.allowed && lines.cursor == from;
  return {from, lines.cursor};
}

// A directive may begin where only blanks are before it in its line.
void Cpp::SkipToBrace() {
  if (HasPushback()) return;
  const LineInput::PassedText passed = lines.PassBodyText();
  directive.allowed =
      (directive.allowed || passed.isNewLine) && AreBlank(passed.from, lines.cursor);
}

}  // namespace zendry
