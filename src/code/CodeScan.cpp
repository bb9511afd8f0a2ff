#include "code/CodeScan.h"

#include <string>

#include "code/CppLexer.h"

namespace zendry {

namespace {

// A word that no text ends with. What swallows it is no code.
constexpr std::string_view cTyped = "zendryTypedHere";

bool Includes(std::string_view directive) {
  const size_t word = directive.find_first_not_of("# \t");
  return word != directive.npos && directive.substr(word).starts_with("include");
}

bool IsInComment(std::string_view directive) {
  for (size_t at = directive.find('/'); at < directive.size(); at = directive.find('/', at + 1)) {
    if (directive.substr(at, 2) == "//") return true;
    if (directive.substr(at, 2) != "/*") continue;
    at = directive.find("*/", at + 2);
    if (at == directive.npos) return true;
  }
  return false;
}

}  // namespace

bool IsCodeAt(std::string_view textToCaret) {
  std::string text(textToCaret);
  text += cTyped;
  CppLexer lexer(text);
  CppPiece last;
  for (CppPiece next = lexer.Next(); next.kind != CppPiece::Kind::cEnd; next = lexer.Next())
    last = next;
  if (!last.text.ends_with(cTyped)) return false;
  if (last.kind == CppPiece::Kind::cDirective)
    return !Includes(last.text) && !IsInComment(last.text);
  return last.kind == CppPiece::Kind::cWord;
}

}  // namespace zendry
