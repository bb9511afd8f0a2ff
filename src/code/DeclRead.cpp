#include "code/DeclRead.h"

#include <algorithm>

#include "code/DeclScan.h"
#include "tags/TagMacros.h"

namespace zendry {

namespace {

constexpr std::string_view cAfterPointer = "* & && const volatile";
constexpr std::string_view cAfterParameters = "const noexcept override final mutable";
// The signs that can follow a declared name.
constexpr std::string_view cAfterName = "; = ( { [ , ) : ]";
// The same after macros, where a name in capitals may also be the declared one.
constexpr std::string_view cAfterMacros = "; = {";
constexpr int cLongestStatement = 512;  // tokens
constexpr int cDeclarationCost = 20;    // steps for reading one

// The end of an initial value that begins here: the sign that continues the declaration.
int InitEnd(const CodeTokens& tokens, int at, StepBudget& budget) {
  for (int steps = 0; at < tokens.Count() && steps < cLongestStatement && budget.Take();
       ++steps, ++at) {
    if (tokens.IsOneOf(at, "; , ) ] }")) return at;
    if (tokens.IsOpening(at)) {
      at = tokens.Partner(at);
    } else if (tokens.Is(at, "<")) {
      const int close = tokens.AngleEnd(at);
      if (close > at && tokens.IsOneOf(close + 1, "( { ::")) at = close;
    }
  }
  return at;
}

// The token after the macros that follow a declared name: "T* name GUARDED_BY(lock) UNUSED = 0;".
int AfterMacros(const CodeTokens& tokens, int at) {
  const int first = at;
  while (tokens.IsWord(at) && IsInCapitals(tokens.Text(at))) {
    ++at;
    if (tokens.Is(at, "(") && tokens.IsOpening(at)) at = tokens.Partner(at) + 1;
  }
  return at == first || tokens.IsOneOf(at, cAfterMacros) ? at : first;
}

// Reads the text after the name: "[]" and the initial value.
int ReadInit(const CodeTokens& tokens, CodeDecl& decl, StepBudget& budget) {
  int at = AfterMacros(tokens, decl.name + 1);
  for (; tokens.Is(at, "[") && tokens.IsOpening(at); at = tokens.Partner(at) + 1)
    ++decl.type.pointers;
  decl.isRange = tokens.Is(at, ":");
  if (tokens.Is(at, "=") || decl.isRange) {
    decl.initBegin = at + 1;
    decl.initEnd = InitEnd(tokens, at + 1, budget);
    return decl.initEnd;
  }
  if (!tokens.IsOneOf(at, "( {") || !tokens.IsOpening(at)) return at;
  decl.initBegin = at + 1;
  decl.initEnd = tokens.Partner(at);
  // In "auto f() -> Foo" the type comes after the name.
  int result = decl.initEnd + 1;
  while (tokens.IsOneOf(result, cAfterParameters)) ++result;
  if (tokens.Is(result, "->")) {
    if (std::optional<TypeText> type = ReadType(tokens, ++result)) {
      type->pointers = ReadPointers(tokens, result);
      decl.type = *type;
    }
  }
  return decl.initEnd + 1;
}

// A name with its type directly before it.
std::optional<CodeDecl> TypedDeclaration(const CodeTokens& tokens, int name, StepBudget& budget) {
  const int begin = TypeStart(tokens, name);
  if (begin < 0) return std::nullopt;
  int at = begin;
  std::optional<TypeText> type = ReadType(tokens, at);
  if (!type) return std::nullopt;
  CodeDecl decl{*type, name, begin};
  decl.type.pointers = ReadPointers(tokens, at);
  if (at != name) return std::nullopt;
  ReadInit(tokens, decl, budget);
  if (tokens.IsOneOf(name + 1, "; ,"))
    decl.isAlias = tokens.Is(StatementStart(tokens, name, budget), "typedef");
  return decl;
}

// A later name of a list: "Foo a(1), *b".
std::optional<CodeDecl> ListedDeclaration(const CodeTokens& tokens, int name, StepBudget& budget) {
  const int begin = StatementStart(tokens, name, budget);
  int at = begin;
  const bool isAlias = tokens.Is(at, "typedef");
  if (isAlias) ++at;
  const std::optional<TypeText> type = ReadType(tokens, at);
  if (!type) return std::nullopt;
  while (at <= name && budget.Take()) {
    CodeDecl decl{*type, at, begin};
    decl.type.pointers = ReadPointers(tokens, at);
    decl.name = at;
    decl.isAlias = isAlias;
    if (!tokens.IsWord(at)) return std::nullopt;
    at = ReadInit(tokens, decl, budget);
    if (decl.name == name) return decl;
    if (!tokens.Is(at, ",")) return std::nullopt;
    ++at;
  }
  return std::nullopt;
}

// A name between the brackets of "auto& [a, b] = x" or of a lambda's "[a = x]".
std::optional<CodeDecl> BracketedDeclaration(const CodeTokens& tokens, int name,
                                             StepBudget& budget) {
  int open = name - 1;
  int before = 0;
  while (tokens.IsWord(open) || tokens.IsOneOf(open, ", & =")) {
    if (!budget.Take() || name - open > cLongestStatement) return std::nullopt;
    if (tokens.Is(open--, ",")) ++before;
  }
  if (!tokens.Is(open, "[")) return std::nullopt;
  CodeDecl decl{TypeOfName("auto"), name, open};
  if (tokens.Is(name + 1, "=")) {
    decl.initBegin = name + 2;
    decl.initEnd = InitEnd(tokens, name + 2, budget);
    return decl;
  }
  int type = open - 1;
  while (tokens.IsOneOf(type, "& &&")) --type;
  const int close = tokens.Partner(open);
  if (!tokens.Is(type, "auto") || close < 0 || !tokens.IsOneOf(close + 1, "= : { ("))
    return std::nullopt;
  const bool isGroup = tokens.IsOpening(close + 1);
  decl.begin = type;
  decl.binding = before;
  decl.isRange = tokens.Is(close + 1, ":");
  decl.initBegin = close + 2;
  decl.initEnd = isGroup ? tokens.Partner(close + 1) : InitEnd(tokens, close + 2, budget);
  return decl;
}

std::optional<CodeDecl> UsingDeclaration(const CodeTokens& tokens, int name) {
  int at = name + 2;
  const std::optional<TypeText> type = ReadType(tokens, at);
  if (!type) return std::nullopt;
  CodeDecl decl{*type, name, name - 1};
  decl.type.pointers = ReadPointers(tokens, at);
  decl.isAlias = true;
  return decl;
}

}  // namespace

int StatementStart(const CodeTokens& tokens, int index, StepBudget& budget) {
  int at = index - 1;
  for (int steps = 0; at >= 0 && steps < cLongestStatement && budget.Take(); ++steps, --at) {
    const bool isBlock = tokens.Is(at, "}") && !tokens.Is(at + 1, ",");
    if (isBlock || tokens.IsOneOf(at, "; { ( [ :")) break;
    if (tokens.IsClosing(at)) at = tokens.Partner(at);
  }
  return at + 1;
}

int TypeStart(const CodeTokens& tokens, int end) {
  int at = end - 1;
  while (tokens.IsOneOf(at, cAfterPointer) || IsMacroBeforePointer(tokens, at)) --at;
  for (;;) {
    if (tokens.Is(at, ">")) at = tokens.AngleStart(at) - 1;
    if (at < 0 || !tokens.IsWord(at) || !CanNameType(tokens.Text(at))) return -1;
    if (!tokens.Is(at - 1, "::")) break;
    if (!tokens.IsWord(at - 2) && !tokens.Is(at - 2, ">")) return at - 1;  // "::Foo"
    at -= 2;
  }
  return tokens.IsOneOf(at - 1, ". -> goto using") ? -1 : at;
}

std::optional<CodeDecl> DeclarationAt(const CodeTokens& tokens, int name, StepBudget& budget) {
  if (!tokens.IsWord(name) || !tokens.IsOneOf(AfterMacros(tokens, name + 1), cAfterName))
    return std::nullopt;
  const int before = name - 1;
  if (tokens.Is(before, "using"))
    return tokens.Is(name + 1, "=") ? UsingDeclaration(tokens, name) : std::nullopt;
  if (tokens.IsOneOf(name + 1, ", ] =") && tokens.IsOneOf(before, "[ , &")) {
    if (auto decl = BracketedDeclaration(tokens, name, budget)) return decl;
  }
  if (tokens.IsWord(before) || tokens.IsOneOf(before, "* & && >")) {
    if (auto decl = TypedDeclaration(tokens, name, budget)) return decl;
  }
  if (tokens.IsOneOf(before, ", * &")) return ListedDeclaration(tokens, name, budget);
  return std::nullopt;
}

bool IsTypeHead(const CodeTokens& tokens, int name) {
  return tokens.IsWord(name) && tokens.IsOneOf(name - 1, "class enum struct union") &&
         tokens.IsOneOf(name + 1, "{ : final");
}

bool IsTemplateParameter(const CodeTokens& tokens, int name) {
  const int before = tokens.Is(name - 1, "...") ? name - 2 : name - 1;
  return tokens.IsWord(name) && tokens.IsOneOf(before, "class typename") &&
         tokens.IsOneOf(before - 1, "< ,") && tokens.IsOneOf(name + 1, ", > =");
}

std::optional<CodeDecl> FindDeclaration(const CodeTokens& tokens, std::string_view name, int before,
                                        StepBudget& budget) {
  for (int at = before - 1; at >= 0 && budget.Take(); --at) {
    if (tokens.Is(at, "}") && tokens.IsClosing(at)) {
      at = BeforeBlock(tokens, at) + 1;
      continue;
    }
    if (!tokens.Is(at, name) || !budget.Take(cDeclarationCost)) continue;
    if (auto decl = DeclarationAt(tokens, at, budget)) return decl;
  }
  return std::nullopt;
}

int BeforeBlock(const CodeTokens& tokens, int close) {
  int at = tokens.Partner(close) - 1;
  int word = at;
  while (tokens.IsOneOf(word, cAfterParameters)) --word;
  if (tokens.Is(word, ")") && tokens.IsClosing(word)) at = tokens.Partner(word) - 1;
  return at;
}

std::vector<std::string> TemplateParameters(const CodeTokens& tokens, int name) {
  std::vector<std::string> names;
  int close = name - 1;
  while (tokens.IsOneOf(close, "class struct union")) --close;
  const int open = tokens.Is(close, ">") ? tokens.AngleStart(close) : -1;
  if (open < 0 || !tokens.Is(open - 1, "template")) return names;
  int depth = 0;
  for (int at = open; at < close; ++at) {
    if (tokens.Is(at, "<")) ++depth;
    if (tokens.Is(at, ">")) --depth;
    const bool isLast = depth == 1 && tokens.IsOneOf(at + 1, ", = >");
    if (isLast && tokens.IsWord(at) && !tokens.Is(at - 1, "=")) names.emplace_back(tokens.Text(at));
  }
  return names;
}

}  // namespace zendry
