#include "project/SourceFacts.h"

#include <algorithm>

#include "base/TrimText.h"
#include "code/CppLexer.h"

namespace zendry {

namespace {

bool IsNameByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// Takes the name at the start of the text.
std::string_view TakeName(std::string_view& text) {
  text = Trimmed(text);
  size_t size = 0;
  while (size < text.size() && IsNameByte(text[size])) ++size;
  const std::string_view name = text.substr(0, size);
  text.remove_prefix(size);
  return name;
}

bool IsDefinedByTheCompiler(std::string_view name) {
  constexpr std::string_view cNames[] = {"__cplusplus", "__GNUC__",  "__linux__", "__linux",
                                         "linux",       "__unix__",  "__unix",    "unix",
                                         "__STDC__",    "__GLIBC__", "__x86_64__"};
  return std::ranges::find(cNames, name) != std::end(cNames);
}

// True if a condition is false as long as nobody defines a macro for it.
bool IsOffByDefault(std::string_view keyword, std::string_view condition) {
  if (keyword == "ifndef") return false;
  if (keyword == "ifdef") return !IsDefinedByTheCompiler(TakeName(condition));
  if (condition.starts_with("0") && (condition.size() == 1 || !IsNameByte(condition[1])))
    return true;
  std::string_view rest = condition;
  if (TakeName(rest) != "defined") return false;
  if (rest.find("||") != std::string_view::npos) return false;
  rest = Trimmed(rest);
  if (rest.starts_with('(')) rest.remove_prefix(1);
  return !IsDefinedByTheCompiler(TakeName(rest));
}

class FactsReader {
 public:
  explicit FactsReader(std::string_view text) : lexer(text) {}
  SourceFacts Read();

 private:
  using Kind = CppPiece::Kind;

  struct Branch {
    bool isOff = false;
    bool offInElse = false;
    int braces = 0;  // open when the first branch began
    bool needsConfig = false;
  };

  void TakeDirective(std::string_view line);
  void TakeInclude(std::string_view rest);
  void TakeSign(std::string_view sign);
  bool IsDefinition();
  bool IsOff() const {
    return std::ranges::any_of(branches, [](const Branch& branch) { return branch.isOff; });
  }

  CppLexer lexer;
  SourceFacts facts;
  std::vector<Branch> branches;
  int braces = 0;
};

void FactsReader::TakeInclude(std::string_view rest) {
  rest = Trimmed(rest);
  if (rest.empty() || (rest[0] != '"' && rest[0] != '<')) return;
  const bool quoted = rest[0] == '"';
  const size_t end = rest.find(quoted ? '"' : '>', 1);
  if (end == std::string_view::npos || end == 1) return;
  const std::string_view name = rest.substr(1, end - 1);
  const bool ifAsked = std::ranges::any_of(branches, [](const Branch& b) { return b.needsConfig; });
  if (ifAsked && name.ends_with("config.h")) facts.asksForConfig = true;
  facts.includes.push_back({{quoted, false, std::string(name)}, IsOff()});
}

// Each branch of a condition begins with the braces that were open before the first.
void FactsReader::TakeDirective(std::string_view line) {
  line.remove_prefix(std::min(line.find('#'), line.size() - 1) + 1);
  const std::string_view keyword = TakeName(line);
  line = Trimmed(line);
  if (keyword == "include") return TakeInclude(line);
  if (keyword.starts_with("if")) {
    const bool isOff = IsOffByDefault(keyword, line);
    branches.push_back({isOff, !isOff, braces, line.find("HAVE_CONFIG_H") != line.npos});
    return;
  }
  if (branches.empty()) return;
  if (keyword == "else" || keyword.starts_with("elif")) {
    Branch& branch = branches.back();
    // The last branch is on if all before it are off.
    branch.isOff = keyword == "else" ? branch.offInElse : true;
    branch.needsConfig = false;
    braces = branch.braces;
  } else if (keyword == "endif") {
    branches.pop_back();
  }
}

// After `main`: true if parameters and a body follow; those of the old form are declared between.
bool FactsReader::IsDefinition() {
  int parentheses = 0;
  for (bool isFirst = true;; isFirst = false) {
    const CppPiece piece = lexer.Next();
    if (piece.kind == Kind::cEnd) return false;
    if (piece.kind == Kind::cDirective) {
      TakeDirective(piece.text);
      continue;
    }
    if (isFirst && piece.text != "(") {
      TakeSign(piece.text);
      return false;
    }
    if (piece.text == "(") ++parentheses;
    if (piece.text == ")" && --parentheses == 0) break;
  }
  for (bool declares = false;;) {
    const CppPiece piece = lexer.Next();
    if (piece.kind == Kind::cDirective) TakeDirective(piece.text);
    if (piece.kind == Kind::cEnd) return false;
    if (piece.text == "{") {
      TakeSign("{");
      return true;
    }
    if (piece.kind == Kind::cWord || piece.text == "->") declares = true;
    if (piece.kind == Kind::cSign && !declares) return false;
    if (piece.text == "=" || piece.text == "}") return false;
  }
}

void FactsReader::TakeSign(std::string_view sign) {
  if (sign == "{") ++braces;
  if (sign == "}") braces = std::max(0, braces - 1);
}

SourceFacts FactsReader::Read() {
  bool afterExtern = false;
  bool afterLinkage = false;
  int linkage = 0;  // open `extern "C" {`
  for (CppPiece piece = lexer.Next(); piece.kind != Kind::cEnd; piece = lexer.Next()) {
    if (piece.kind == Kind::cDirective) {
      TakeDirective(piece.text);
      continue;
    }
    if (piece.text == "{" && afterLinkage)
      ++linkage;
    else if (piece.text == "}" && braces == 0 && linkage > 0)
      --linkage;
    else if (piece.kind == Kind::cWord && piece.text == "main" && braces == 0 && !facts.hasMain)
      facts.hasMain = !IsOff() && IsDefinition();
    else if (piece.kind == Kind::cSign)
      TakeSign(piece.text);
    afterLinkage = afterExtern && piece.kind == Kind::cLiteral;
    afterExtern = piece.kind == Kind::cWord && piece.text == "extern";
  }
  return std::move(facts);
}

}  // namespace

SourceFacts ReadSourceFacts(std::string_view text) {
  return FactsReader(text).Read();
}

}  // namespace zendry
