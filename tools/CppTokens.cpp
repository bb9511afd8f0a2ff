#include "CppTokens.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace zendry {

namespace {

// Longest first. ">>" is left out on purpose.
constexpr std::string_view cSigns[] = {"<=>", "<<=", ">>=", "->*", "...", "::", "->", "&&",
                                       "||",  "==",  "!=",  "<=",  ">=",  "<<", "+=", "-=",
                                       "*=",  "/=",  "%=",  "&=",  "|=",  "^=", "++", "--"};

constexpr std::string_view cCompilerWords[] = {"__extension__", "__restrict", "__inline",
                                               "__inline__"};
constexpr std::string_view cWordsWithBrackets[] = {"__attribute__", "__attribute", "alignas",
                                                   "__asm", "__asm__"};

bool IsNameStart(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) || c == '_' || c == '$' || (c & 0x80);
}

bool IsNamePart(char c) {
  return IsNameStart(c) || std::isdigit(static_cast<unsigned char>(c));
}

class Splitter {
 public:
  explicit Splitter(std::string_view text) : rest(text) {}

  ExpandedSource Split() {
    while (SkipBlanks()) {
      if (rest.front() == '#' && atLineStart)
        ReadMarker(Take(std::min(rest.find('\n'), rest.size())));
      else
        ReadToken();
    }
    return {std::move(tokens), std::move(headers)};
  }

 private:
  bool SkipBlanks() {
    atLineStart = tokens.empty();
    while (!rest.empty() && std::isspace(static_cast<unsigned char>(rest.front()))) {
      atLineStart |= rest.front() == '\n';
      rest.remove_prefix(1);
    }
    return !rest.empty();
  }

  std::string_view Take(size_t length) {
    const std::string_view taken = rest.substr(0, length);
    rest.remove_prefix(taken.size());
    return taken;
  }

  // "# LINE "FILE" FLAGS": 1 enters a file, 2 comes back to one. What the source itself includes
  // lies at depth 1.
  void ReadMarker(std::string_view marker) {
    const size_t quote = marker.rfind('"');
    if (quote == std::string_view::npos) return;
    const std::string_view flags = marker.substr(quote + 1);
    const bool enters = flags.starts_with(" 1"), leaves = flags.starts_with(" 2");
    const std::string_view path = marker.substr(0, quote);
    if (enters && ++depth == 1) headers.emplace_back(path.substr(path.find_last_of("/\"") + 1));
    if (leaves) --depth;
  }

  void ReadToken() {
    const char c = rest.front();
    if (IsNameStart(c))
      ReadWord();
    else if (std::isdigit(static_cast<unsigned char>(c)))
      Add(CppToken::cNumber, NumberLength());
    else if (c == '"' || c == '\'')
      Add(CppToken::cLiteral, LiteralLength(0));
    else
      Add(CppToken::cSign, SignLength());
  }

  void ReadWord() {
    const size_t length = WordLength();
    const bool isPrefix =
        length < rest.size() && (rest[length] == '"' || rest[length] == '\'') && length <= 3;
    if (!isPrefix) return Add(CppToken::cName, length);
    const bool isRaw = rest[length - 1] == 'R' && rest[length] == '"';
    Add(CppToken::cLiteral, isRaw ? RawLength(length) : LiteralLength(length));
  }

  size_t WordLength() const {
    const auto end = std::find_if_not(rest.begin(), rest.end(), IsNamePart);
    return static_cast<size_t>(end - rest.begin());
  }

  size_t NumberLength() const {
    size_t length = 1;
    for (; length < rest.size(); ++length) {
      const char c = rest[length];
      const bool isSign = (c == '+' || c == '-') &&
                          std::string_view("eEpP").find(rest[length - 1]) != std::string_view::npos;
      if (!IsNamePart(c) && c != '.' && c != '\'' && !isSign) break;
    }
    return length;
  }

  size_t LiteralLength(size_t start) const {
    size_t i = start + 1;
    while (i < rest.size() && rest[i] != rest[start]) i += rest[i] == '\\' ? 2 : 1;
    return std::min(i + 1, rest.size());
  }

  size_t RawLength(size_t quote) const {
    const size_t open = rest.find('(', quote);
    if (open == std::string_view::npos) return rest.size();
    std::string end = ")";
    end.append(rest.substr(quote + 1, open - quote - 1)).append("\"");
    const size_t found = rest.find(end, open);
    return found == std::string_view::npos ? rest.size() : found + end.size();
  }

  size_t SignLength() const {
    for (const std::string_view sign : cSigns)
      if (rest.starts_with(sign)) return sign.size();
    return 1;
  }

  void Add(CppToken::Kind kind, size_t length) {
    const int header = depth > 0 ? static_cast<int>(headers.size()) - 1 : -1;
    tokens.push_back({kind, Take(length), header});
  }

  std::string_view rest;
  std::vector<CppToken> tokens;
  bool atLineStart = true;
  std::vector<std::string> headers;
  int depth = 0;
};

std::string_view ClosingOf(const CppToken& token) {
  if (token.Is("(")) return ")";
  if (token.Is("[")) return "]";
  return token.Is("{") ? "}" : "";
}

}  // namespace

ExpandedSource SplitTokens(std::string_view expanded) {
  return Splitter(expanded).Split();
}

const CppToken& CppCursor::Peek(size_t ahead) const {
  static const CppToken none;
  return position + ahead < tokens->size() ? (*tokens)[position + ahead] : none;
}

const CppToken& CppCursor::Next() {
  const CppToken& token = Peek();
  ++position;
  return token;
}

bool CppCursor::Accept(std::string_view text) {
  const bool accepted = Is(text);
  if (accepted) ++position;
  return accepted;
}

void CppCursor::SkipBalanced() {
  std::vector<std::string_view> closings;
  do {
    const CppToken& token = Next();
    if (const std::string_view closing = ClosingOf(token); !closing.empty())
      closings.push_back(closing);
    else if (!closings.empty() && token.Is(closings.back()))
      closings.pop_back();
  } while (!closings.empty() && !AtEnd());
}

void CppCursor::SkipAngles() {
  int depth = 0;
  while (!AtEnd() && !Is(";") && !Is("}")) {
    if (!ClosingOf(Peek()).empty()) {
      SkipBalanced();
      continue;
    }
    const CppToken& token = Next();
    if (token.Is("<")) ++depth;
    if (token.Is(">") && --depth == 0) return;
  }
}

void CppCursor::SkipStatement() {
  while (!AtEnd() && !Is("}")) {
    if (Accept(";")) return;
    SkipBalanced();
  }
}

void CppCursor::SkipAttributes() {
  for (;;) {
    if (Is("[") && Peek(1).Is("[")) {
      SkipBalanced();
    } else if (IsOneOf(Peek(), cCompilerWords)) {
      Next();
    } else if (IsOneOf(Peek(), cWordsWithBrackets)) {
      Next();
      SkipBalanced();
    } else {
      return;
    }
  }
}

void CppCursor::SkipRequires() {
  Next();
  do {
    if (Accept("requires")) {
      if (Is("(")) SkipBalanced();
      SkipBalanced();
      continue;
    }
    if (Is("(")) {
      SkipBalanced();
      continue;
    }
    while (Is("::") || Peek().kind == CppToken::cName) {
      Next();
      if (Is("<")) SkipAngles();
      if (!Accept("::")) break;
    }
  } while (Accept("&&") || Accept("||"));
}

}  // namespace zendry
