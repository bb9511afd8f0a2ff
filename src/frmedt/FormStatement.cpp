#include "frmedt/FormStatement.h"

#include <algorithm>
#include <cctype>

#include "code/CppLexer.h"
#include "frmedt/FormTokens.h"

namespace zendry {

namespace {

bool IsWordChar(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

bool IsBlank(char c) {
  return static_cast<unsigned char>(c) <= ' ';
}

bool IsName(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsWordChar) &&
         !std::isdigit(static_cast<unsigned char>(text[0]));
}

// The end of the literal that begins at `at`; the text's end if it isn't closed.
size_t LiteralEnd(std::string_view text, size_t at) {
  const char quote = text[at];
  for (size_t i = at + 1; i < text.size(); ++i) {
    if (text[i] == '\\')
      ++i;
    else if (text[i] == quote)
      return i + 1;
  }
  return text.size();
}

bool IsClassName(std::string_view text) {
  while (true) {
    const size_t scope = text.find("::");
    if (!IsName(text.substr(0, scope))) return false;
    if (scope == std::string_view::npos) return true;
    text.remove_prefix(scope + 2);
  }
}

}  // namespace

std::string PlainStatement(std::string_view line) {
  line = Trimmed(line);
  std::string plain;
  bool hadBlank = false;
  for (size_t i = 0; i < line.size();) {
    if (IsBlank(line[i])) {
      hadBlank = true;
      ++i;
      continue;
    }
    if (hadBlank && !plain.empty() && IsWordChar(plain.back()) && IsWordChar(line[i])) plain += ' ';
    hadBlank = false;
    const bool isLiteral = line[i] == '"' || line[i] == '\'';
    const bool isComment = line.substr(i).starts_with("//");
    const size_t end = isComment ? line.size() : isLiteral ? LiteralEnd(line, i) : i + 1;
    plain += line.substr(i, end - i);
    i = end;
  }
  return plain;
}

bool IsWholeStatement(std::string_view text) {
  CppLexer lexer(text);
  std::string open;
  std::string last = ";";
  for (CppPiece piece = lexer.Next(); piece.kind != CppPiece::Kind::cEnd; piece = lexer.Next()) {
    last = piece.text;
    if (last == "(" || last == "[" || last == "{") open += last;
    const char opening = last == ")" ? '(' : last == "]" ? '[' : last == "}" ? '{' : '\0';
    if (!opening) continue;
    if (open.empty() || open.back() != opening) return false;
    open.pop_back();
  }
  const bool isDirective = last.starts_with('#');
  return open.empty() && (last == ";" || last == "}" || isDirective);
}

FormDeclaration ReadDeclaration(std::string_view line) {
  line = Trimmed(line);
  if (!line.ends_with(';')) return {};
  line.remove_suffix(1);
  const size_t blank = std::find_if(line.begin(), line.end(), IsBlank) - line.begin();
  FormDeclaration result{std::string(line.substr(0, blank)), {}};
  if (!IsClassName(result.className)) return {};
  std::string_view names = line.substr(blank);
  while (true) {
    const size_t comma = names.find(',');
    const std::string_view name = Trimmed(names.substr(0, comma));
    if (!IsName(name)) return {};
    result.names.emplace_back(name);
    if (comma == std::string_view::npos) return result;
    names.remove_prefix(comma + 1);
  }
}

}  // namespace zendry
