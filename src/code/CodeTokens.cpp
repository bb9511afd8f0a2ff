#include "code/CodeTokens.h"

#include <algorithm>
#include <array>

#include "base/CaretText.h"
#include "code/TextScanner.h"

namespace zendry {

namespace {

using Kind = CodeToken::Kind;

// Operators of more than one character. ">>" isn't among them: it may close two template argument
// lists.
constexpr std::array<std::string_view, 20> cLongSigns = {
    "...", "::", "->", "&&", "||", "==", "!=", "<=", "++", "--",
    "+=",  "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<<", "*/"};
constexpr int cMostAngleTokens = 256;
constexpr size_t cLongestRawMark = 16;

// Takes the tokens off a text from its start to its end.
class Lexer {
 public:
  Lexer(std::string_view theText, std::vector<CodeToken>& theTokens)
      : text(theText), tokens(theTokens) {}

  void Run() {
    while (at < text.size()) Step();
  }

 private:
  char Peek(size_t ahead = 0) const { return at + ahead < text.size() ? text[at + ahead] : '\0'; }
  bool StartsWith(std::string_view sign) const { return text.substr(at).starts_with(sign); }
  static bool IsWordByte(char c) { return IsWordChar(static_cast<unsigned char>(c)) || c < 0; }

  void Step() {
    const char c = Peek();
    if (c == '\n') isLineStart = true;
    if (IsWhiteSpace(static_cast<unsigned char>(c)) || c == '\0') {
      ++at;
      return;
    }
    const bool isDirective = isLineStart && c == '#';
    isLineStart = false;
    if (isDirective) return SkipDirective();
    if (StartsWith("//")) return SkipLine();
    if (StartsWith("/*")) return SkipTo("*/");
    if (c >= '0' && c <= '9') return Number();
    if (IsWordByte(c)) return Word();
    if (c == '"' || c == '\'') return Literal(at, c);
    Sign();
  }

  void Put(Kind kind, size_t start) {
    tokens.push_back({kind, static_cast<int>(start), static_cast<int>(at), -1});
  }
  void SkipLine() { at = std::min(text.find('\n', at), text.size()); }
  void SkipTo(std::string_view end) {
    const size_t found = text.find(end, at + end.size());
    at = found == text.npos ? text.size() : found + end.size();
    if (found == text.npos) Put(Kind::cLiteral, at);  // nothing ends directly before this place
  }
  void SkipDirective() {
    do {
      SkipLine();
      const size_t last = text.find_last_not_of('\r', at - 1);
      if (last == text.npos || text[last] != '\\' || at == text.size()) return;
      ++at;
    } while (at < text.size());
  }
  void Number() {
    const size_t start = at;
    while (IsWordByte(Peek()) || Peek() == '.' || (Peek() == '\'' && IsWordByte(Peek(1)))) ++at;
    Put(Kind::cNumber, start);
  }
  void Word() {
    const size_t start = at;
    while (IsWordByte(Peek())) ++at;
    const std::string_view word = text.substr(start, at - start);
    const bool isPrefix = IsInList("R L u U u8 LR uR UR u8R", word);
    if (isPrefix && Peek() == '"')
      return word.ends_with('R') ? RawLiteral(start) : Literal(start, '"');
    if (isPrefix && Peek() == '\'') return Literal(start, '\'');
    Put(Kind::cWord, start);
  }
  // Stands at the opening sign.
  void Literal(size_t start, char sign) {
    for (++at; at < text.size() && Peek() != sign && Peek() != '\n'; ++at)
      if (Peek() == '\\' && Peek(1) != '\n') ++at;
    at = std::min(at + (Peek() == sign ? 1 : 0), text.size());
    while (IsWordByte(Peek())) ++at;  // "text"s
    Put(Kind::cLiteral, start);
  }
  void RawLiteral(size_t start) {
    const size_t open = text.find('(', at);
    if (open == text.npos || open - at > cLongestRawMark + 1) return Literal(start, '"');
    const std::string end = ")" + std::string(text.substr(at + 1, open - at - 1)) + "\"";
    const size_t close = text.find(end, open);
    if (close == text.npos) return Literal(start, '"');
    at = close + end.size();
    Put(Kind::cLiteral, start);
  }
  void Sign() {
    const size_t start = at;
    constexpr std::string_view cSecond = "=:>&|+-<./";
    if (cSecond.find(Peek(1)) == cSecond.npos) {
      ++at;
      return Put(Kind::cSign, start);
    }
    const auto isHere = [this](std::string_view sign) { return StartsWith(sign); };
    const auto found = std::find_if(cLongSigns.begin(), cLongSigns.end(), isHere);
    at += found == cLongSigns.end() ? 1 : found->size();
    // The text begins inside of a comment.
    if (found != cLongSigns.end() && *found == "*/" && !hasSeenCommentEnd) {
      hasSeenCommentEnd = true;
      return tokens.clear();
    }
    Put(Kind::cSign, start);
  }

  const std::string_view text;
  std::vector<CodeToken>& tokens;
  size_t at = 0;
  bool isLineStart = true;
  bool hasSeenCommentEnd = false;
};

}  // namespace

bool IsInList(std::string_view list, std::string_view word) {
  if (word.empty()) return false;
  for (size_t at = list.find(word); at != list.npos; at = list.find(word, at + 1)) {
    const size_t end = at + word.size();
    if ((at == 0 || list[at - 1] == ' ') && (end == list.size() || list[end] == ' ')) return true;
  }
  return false;
}

CodeTokens::CodeTokens(std::string theText) : text(std::move(theText)) {
  tokens.reserve(text.size() / 4);
  Lexer(text, tokens).Run();
  PairBrackets();
}

CodeTokens CodeTokens::Before(const CaretText& editor, int place) {
  const int end = std::clamp(place, 0, editor.Length());
  const int start = std::max(end - cMostText, 0);
  std::string piece(static_cast<size_t>(end - start), '\0');
  editor.CopyRange(start, end, piece.data());
  if (start > 0) {
    const size_t newline = piece.find('\n');
    if (newline != piece.npos) piece.erase(0, newline);
  }
  return CodeTokens(std::move(piece));
}

std::string_view CodeTokens::Text(int index) const {
  if (!IsInside(index)) return {};
  const CodeToken& token = tokens[index];
  return std::string_view(text).substr(token.start, token.end - token.start);
}

std::string_view CodeTokens::Source(int begin, int end) const {
  if (!IsInside(begin) || end <= begin) return {};
  return std::string_view(text).substr(Start(begin),
                                       End(std::min(end, Count()) - 1) - Start(begin));
}

bool CodeTokens::IsOneOf(int index, std::string_view list) const {
  return IsInList(list, Text(index));
}

bool CodeTokens::IsKind(int index, CodeToken::Kind kind) const {
  return IsInside(index) && tokens[index].kind == kind;
}

int CodeTokens::Partner(int index) const {
  return IsInside(index) ? tokens[index].partner : -1;
}

// A brace that closes ends the parentheses left open behind its own; a parenthesis that closes
// never ends a brace.
void CodeTokens::PairBrackets() {
  std::vector<int> open;
  for (int i = 0; i < Count(); ++i) {
    if (tokens[i].kind != Kind::cSign || tokens[i].end - tokens[i].start != 1) continue;
    const char c = text[tokens[i].start];
    if (c == '(' || c == '[' || c == '{') open.push_back(i);
    if (c != ')' && c != ']' && c != '}') continue;
    const char wanted = c == ')' ? '(' : c == ']' ? '[' : '{';
    const auto opens = [&](int index) { return text[tokens[index].start]; };
    while (c == '}' && !open.empty() && opens(open.back()) != wanted) open.pop_back();
    if (open.empty() || opens(open.back()) != wanted) continue;
    tokens[i].partner = open.back();
    tokens[open.back()].partner = i;
    open.pop_back();
  }
}

int CodeTokens::AngleStart(int index) const {
  int depth = 0;
  for (int i = index, steps = 0; i >= 0 && steps < cMostAngleTokens; --i, ++steps) {
    if (IsClosing(i)) {
      i = Partner(i);
      continue;
    }
    if (Is(i, ">")) ++depth;
    if (Is(i, "<") && --depth == 0) return i;
    if (IsOneOf(i, "; { } ( [ && ||")) return -1;
  }
  return -1;
}

int CodeTokens::AngleEnd(int index) const {
  int depth = 0;
  for (int i = index, steps = 0; i < Count() && steps < cMostAngleTokens; ++i, ++steps) {
    if (IsOpening(i)) {
      i = Partner(i);
      continue;
    }
    if (Is(i, "<")) ++depth;
    if (Is(i, ">") && --depth == 0) return i;
    if (IsOneOf(i, "; { } ( [ ) ] && ||")) return -1;
  }
  return -1;
}

}  // namespace zendry
