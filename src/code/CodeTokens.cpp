#include "code/CodeTokens.h"

#include <algorithm>
#include <utility>

#include "base/CaretText.h"

namespace zendry {

namespace {

using Kind = CodeToken::Kind;

constexpr int cMostAngleTokens = 256;

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
  CppLexer lexer(text);
  bool hasSeenCommentEnd = false;
  for (CppPiece piece = lexer.Next(); piece.kind != Kind::cEnd; piece = lexer.Next()) {
    if (piece.kind == Kind::cDirective) continue;
    // The text begins inside a comment.
    if (piece.text == "*/" && !std::exchange(hasSeenCommentEnd, true)) {
      tokens.clear();
      continue;
    }
    const auto start = static_cast<int>(piece.text.data() - text.data());
    tokens.push_back({piece.kind, start, start + static_cast<int>(piece.text.size()), -1});
  }
  PairBrackets();
}

CodeTokens CodeTokens::Before(const CaretText& editor, int place, int earliest) {
  const int end = std::clamp(place, 0, editor.Length());
  const int start = std::max(end - cMostText, std::min(earliest, end));
  std::string piece(static_cast<size_t>(end - start), '\0');
  editor.CopyRange(start, end, piece.data());
  if (start > earliest) {
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

// A closing brace ends the parentheses that are left open after its opening brace; a closing
// parenthesis never ends a brace.
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
