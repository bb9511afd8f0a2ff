#include "CppTokens.h"

#include <utility>

namespace zendry {

namespace {

constexpr std::string_view cCompilerWords[] = {"__extension__", "__restrict", "__inline",
                                               "__inline__"};
constexpr std::string_view cWordsWithBrackets[] = {"__attribute__", "__attribute", "alignas",
                                                   "__asm", "__asm__"};

class Splitter {
 public:
  explicit Splitter(std::string_view text) : lexer(text) {}

  ExpandedSource Split() {
    for (CppPiece piece = lexer.Next(); piece.kind != CppPiece::Kind::cEnd; piece = lexer.Next()) {
      if (piece.kind == CppPiece::Kind::cDirective)
        ReadMarker(piece.text);
      else
        Add(piece);
    }
    return {std::move(tokens), std::move(headers), std::move(macros)};
  }

 private:
  // "# LINE "FILE" FLAGS": 1 enters a file, 2 returns to one. A header that the source itself
  // includes has depth 1.
  void ReadMarker(std::string_view marker) {
    constexpr std::string_view cDefine = "#define ";
    if (marker.starts_with(cDefine)) return ReadMacro(marker.substr(cDefine.size()));
    const size_t quote = marker.rfind('"');
    if (quote == std::string_view::npos) return;
    const std::string_view flags = marker.substr(quote + 1);
    const bool enters = flags.starts_with(" 1"), leaves = flags.starts_with(" 2");
    const std::string_view path = marker.substr(0, quote);
    if (enters && ++depth == 1) headers.emplace_back(path.substr(path.find_last_of("/\"") + 1));
    if (leaves) --depth;
  }

  void ReadMacro(std::string_view text) {
    if (depth == 0) return;
    const size_t end = text.find_first_of(" (");
    ExpandedMacro macro{std::string(text.substr(0, end)), {}};
    if (end != text.npos && text[end] == '(')
      macro.parameters = text.substr(end, text.find(')') + 1 - end);
    macros.push_back(std::move(macro));
  }

  void Add(const CppPiece& piece) {
    const int header = depth > 0 ? static_cast<int>(headers.size()) - 1 : -1;
    tokens.push_back({piece.kind, piece.text, header});
  }

  CppLexer lexer;
  std::vector<CppToken> tokens;
  std::vector<std::string> headers;
  std::vector<ExpandedMacro> macros;
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
    while (Is("::") || Peek().kind == CppToken::Kind::cWord) {
      Next();
      if (Is("<")) SkipAngles();
      if (!Accept("::")) break;
    }
  } while (Accept("&&") || Accept("||"));
}

}  // namespace zendry
