#include "code/LocalNames.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "code/CodeTokens.h"
#include "code/DeclRead.h"

namespace zendry {

namespace {

constexpr int cDeclarationCost = 20;  // steps for reading one
constexpr std::string_view cBeforeDeclaration =
    "; { } ( [ ] > , : class const constexpr constinit enum extern inline long register short "
    "signed static struct thread_local typedef typename union unsigned volatile";
constexpr std::string_view cAfterParameters = "const noexcept override final mutable try";
constexpr std::string_view cControls = "for if switch while";
constexpr std::string_view cCatch = "catch";
constexpr std::string_view cScopes = "class enum extern namespace struct union";
constexpr std::string_view cOpening = "( [ {";

// Reads the tokens before the caret backward, and out of the blocks around it.
class LocalReader {
 public:
  explicit LocalReader(const CodeTokens& theTokens) : tokens(theTokens) {}

  // The names, and the token of each.
  struct Local {
    CompletionRow row;
    int token = 0;
  };

  std::vector<Local> Read() {
    int at = tokens.Count() - 1;
    bool inStatement = true;
    while (at >= 0 && budget.Take()) {
      const size_t before = rows.size();
      at = ReadInside(at, inStatement);
      const bool isBlock = tokens.Is(at, "{");
      if (at < 0 || (isBlock && IsScope(at)) || (!isBlock && !IsControl(at))) rows.resize(before);
      if (isBlock && IsScope(at)) break;
      if (isBlock) at = ReadHead(at);
      inStatement = true;
      if (!isBlock) --at;
    }
    return std::move(rows);
  }

 private:
  bool IsOpen(int at) const { return tokens.IsOneOf(at, cOpening) && tokens.Partner(at) < 0; }
  bool IsControl(int open) const { return tokens.IsOneOf(open - 1, cControls) || IsCatch(open); }
  bool IsCatch(int open) const { return tokens.Is(open - 1, cCatch); }

  // Notes what is declared between the caret, or an inner bracket, and the bracket that is open
  // there. Returns that bracket; -1 at the beginning of the text.
  int ReadInside(int at, bool inStatement) {
    for (; at >= 0 && budget.Take(); --at) {
      if (IsOpen(at)) return at;
      if (tokens.Is(at, "}") && tokens.IsClosing(at)) {
        at = BeforeBlock(tokens, at) + 1;
        inStatement = false;
      } else if (tokens.Is(at, ")") && tokens.IsClosing(at)) {
        const int open = tokens.Partner(at);
        if (inStatement && IsControl(open)) ReadGroup(open, at);
        at = open;
      } else if (tokens.Is(at, ";")) {
        inStatement = false;
      } else {
        Note(at, false);
      }
    }
    return -1;
  }

  // What is declared between a pair of parentheses.
  void ReadGroup(int open, int close) {
    const bool needsValue = tokens.IsOneOf(open - 1, cControls);
    for (int at = close - 1; at > open && budget.Take(); --at) {
      const bool isGroup = tokens.IsClosing(at) && !tokens.Is(at, "]");
      if (isGroup)
        at = tokens.Partner(at);
      else
        Note(at, needsValue);
    }
  }

  // What is declared before the "{" of a block: parameters, captures, variables of a loop. Returns
  // the last token of the statement before it.
  int ReadHead(int brace) {
    const size_t before = rows.size();
    int at = brace - 1;
    if (const int close = OldParameters(brace); close >= 0) {
      NoteOldParameters(close + 1, brace);
      return tokens.Partner(close) - 1;
    }
    for (; at >= 0 && budget.Take(); --at) {
      if (IsOpen(at) || tokens.Is(at, ";")) return at;
      if (tokens.Is(at, "}") && !IsMemberValue(at, brace)) return at;
      if (tokens.Is(at, ":")) {
        // The members that a constructor initialises are before its parameters.
        if (!tokens.Is(at - 1, ")")) return at;
        rows.resize(before);
      } else if (tokens.Is(at, ")") && tokens.IsClosing(at)) {
        const int open = tokens.Partner(at);
        ReadGroup(open, at);
        at = open;
      } else if (tokens.IsClosing(at) && !tokens.Is(at, "]")) {
        at = tokens.Partner(at);
      } else if (!tokens.Is(at + 1, "(")) {
        Note(at, false);
      }
    }
    return at;
  }

  // The ")" of "f(a, b) int a; long b; {", where the types of the parameters follow their names; -1
  // for any other block.
  int OldParameters(int brace) {
    if (!tokens.Is(brace - 1, ";")) return -1;
    for (int at = brace - 1; at >= 0 && budget.Take(); --at) {
      if (tokens.IsOneOf(at, "{ } ( =")) return -1;
      if (!tokens.IsClosing(at)) continue;
      const int open = tokens.Partner(at);
      if (tokens.Is(at, ")") && IsListOfNames(open, at))
        return tokens.IsWord(at + 1) && tokens.IsWord(open - 1) && !IsControl(open) ? at : -1;
      at = open;
    }
    return -1;
  }

  bool IsListOfNames(int open, int close) const {
    for (int at = open + 1; at < close; ++at)
      if (tokens.Is(at, ",") != ((at - open) % 2 == 0) ||
          !(tokens.IsWord(at) || tokens.Is(at, ",")))
        return false;
    return (close - open) % 2 == 0;
  }

  // The parameters that are declared between two tokens: "int a, *b; long c[];".
  void NoteOldParameters(int begin, int end) {
    std::vector<Local> found;
    for (int at = begin; at < end && budget.Take(cDeclarationCost); ++at) {
      const std::optional<TypeText> type = ReadType(tokens, at);
      for (bool isMore = type.has_value(); isMore && at < end;) {
        TypeText own = *type;
        own.pointers = ReadPointers(tokens, at);
        if (!tokens.IsWord(at)) break;
        const int token = at;
        const std::string name(tokens.Text(at++));
        for (; tokens.IsOpening(at); at = tokens.Partner(at) + 1)
          if (tokens.Is(at, "[")) ++own.pointers;
        found.push_back({{name, RowKind::cLocal, Print(own), {}, {}}, token});
        isMore = tokens.Is(at, ",");
        if (isMore) ++at;
      }
      while (at < end && !tokens.Is(at, ";")) ++at;
    }
    std::move(found.rbegin(), found.rend(), std::back_inserter(rows));
  }

  // True for the end of "a{1}" among the members that a constructor initialises.
  bool IsMemberValue(int close, int brace) const {
    if (tokens.Is(close + 1, ",")) return true;
    const int name = tokens.Partner(close) - 1;
    return close + 1 == brace && tokens.IsWord(name) && tokens.IsOneOf(name - 1, ", :");
  }

  // True for the block of a class, an enum or a namespace.
  bool IsScope(int brace) const {
    int last = brace - 1;
    while (tokens.IsOneOf(last, cAfterParameters) && !tokens.Is(last, "final")) --last;
    if (tokens.IsOneOf(last, ") =")) return false;
    for (int at = last; at >= 0; --at) {
      if (tokens.IsOneOf(at, "; { } (")) return false;
      if (tokens.IsOneOf(at, cScopes)) return true;
      if (tokens.IsClosing(at)) at = tokens.Partner(at);
    }
    return false;
  }

  // True for "x * y;" with a variable x.
  bool IsProduct(const CodeDecl& decl) {
    const int sign = decl.begin + 1;
    if (decl.name != sign + 1 || !tokens.IsOneOf(sign, "* & &&") || !tokens.Is(decl.name + 1, ";"))
      return false;
    const std::optional<CodeDecl> first =
        FindDeclaration(tokens, tokens.Text(decl.begin), decl.begin, budget);
    return first && !first->isAlias;
  }

  void Note(int at, bool needsValue) {
    if (!tokens.IsWord(at) || !budget.Take(cDeclarationCost)) return;
    if (IsTypeHead(tokens, at)) {
      rows.push_back({{std::string(tokens.Text(at)), RowKind::cClass, {}, {}, {}}, at});
      return;
    }
    const std::optional<CodeDecl> decl = DeclarationAt(tokens, at, budget);
    if (!decl || (needsValue && decl->initBegin == decl->initEnd)) return;
    if (IsProduct(*decl)) return;
    const bool isCapture = tokens.Is(decl->begin, "[");
    const bool isFirst = decl->begin == 0 || tokens.IsOneOf(decl->begin - 1, cBeforeDeclaration);
    if (!isCapture && !isFirst) return;
    const RowKind kind = decl->isAlias ? RowKind::cTypedef : RowKind::cLocal;
    rows.push_back({{std::string(tokens.Text(at)), kind, Print(decl->type), {}, {}}, at});
  }

  const CodeTokens& tokens;
  StepBudget budget;
  std::vector<Local> rows;
};

// Looks for "template <class T, typename... Ts>" with a name after one of these words, which begins
// before a "<".
int ParameterOf(const CodeTokens& tokens, int open, std::string_view name) {
  const int end = tokens.AngleEnd(open);
  for (int each = open + 1; each < end; ++each) {
    const int before = tokens.Is(each - 1, "...") ? each - 2 : each - 1;
    if (tokens.Is(each, name) && tokens.IsOneOf(before, "class typename int bool size_t"))
      return each;
  }
  return -1;
}

bool IsTemplateHead(const CodeTokens& tokens, int open) {
  return tokens.Is(open, "<") && tokens.Is(open - 1, "template");
}

int TemplateParameter(const CodeTokens& tokens, std::string_view name) {
  for (int at = tokens.Count() - 1; at > 0; --at) {
    const int found = IsTemplateHead(tokens, at) ? ParameterOf(tokens, at, name) : -1;
    if (found >= 0) return found;
  }
  return -1;
}

}  // namespace

std::vector<CompletionRow> LocalNames(const CodeTokens& tokens) {
  std::vector<CompletionRow> names;
  for (LocalReader::Local& local : LocalReader(tokens).Read())
    names.push_back(std::move(local.row));
  return names;
}

int LocalDeclaration(const CodeTokens& tokens, std::string_view name) {
  for (const LocalReader::Local& local : LocalReader(tokens).Read())
    if (local.row.name == name) return local.token;
  return TemplateParameter(tokens, name);
}

int HeadParameter(const CodeTokens& tokens, std::string_view name) {
  bool isOther = false;  // a declaration before the one that is asked about
  for (int at = tokens.Count() - 1; at > 0; --at) {
    if (tokens.Is(at, ";") || tokens.Is(at, "}")) isOther = true;
    if (tokens.IsClosing(at))
      at = tokens.Partner(at);
    else if (tokens.Is(at, "{"))
      isOther = false;
    const int found = !isOther && IsTemplateHead(tokens, at) ? ParameterOf(tokens, at, name) : -1;
    if (found >= 0) return found;
  }
  return -1;
}

}  // namespace zendry
