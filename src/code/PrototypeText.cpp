#include "code/PrototypeText.h"

#include <algorithm>

#include "base/TrimText.h"
#include "code/CodeTokens.h"

namespace zendry {

namespace {

constexpr std::string_view cDeclarationWords = "virtual static explicit friend inline extern";
constexpr std::string_view cInlineWords = "inline constexpr consteval template";
// Words with parentheses after them that hold no parameters.
constexpr std::string_view cWordsWithGroup =
    "decltype alignas explicit noexcept throw requires __attribute__ __declspec";

bool IsAttribute(const CodeTokens& tokens, int at) {
  return tokens.Is(at, "[") && tokens.Is(at + 1, "[") && tokens.IsOpening(at);
}

// The ">" of template arguments that begin here, else the same token.
int SkipAngles(const CodeTokens& tokens, int at) {
  return tokens.Is(at, "<") ? std::max(tokens.AngleEnd(at), at) : at;
}

// The "(" of the parameters after the word "operator".
int OpenAfterOperator(const CodeTokens& tokens, int at) {
  if (tokens.Is(at + 1, "(") && tokens.Is(at + 2, ")")) return tokens.Is(at + 3, "(") ? at + 3 : -1;
  for (++at; at < tokens.Count(); ++at)
    if (tokens.Is(at, "(")) return at;
  return -1;
}

struct Function {
  int name = -1;
  int open = -1;
};

// "void (*name(int))(char)" has its parameters within parentheses.
Function FindFunction(const CodeTokens& tokens, int begin, int end) {
  for (int at = begin; at < end; ++at) {
    if (tokens.Is(at, "operator")) return {at, OpenAfterOperator(tokens, at)};
    if (IsAttribute(tokens, at)) at = tokens.Partner(at);
    at = SkipAngles(tokens, at);
    if (tokens.Is(at, "=")) return {};
    if (!tokens.Is(at, "(") || !tokens.IsOpening(at)) continue;
    if (tokens.IsOneOf(at + 1, "* &") || tokens.IsOneOf(at - 1, cWordsWithGroup)) {
      const Function inner = tokens.IsOneOf(at + 1, "* &")
                                 ? FindFunction(tokens, at + 1, tokens.Partner(at))
                                 : Function();
      if (inner.open >= 0) return inner;
      at = tokens.Partner(at);
      continue;
    }
    if (!tokens.IsWord(at - 1)) return {};
    return {tokens.Is(at - 2, "~") ? at - 2 : at - 1, at};
  }
  return {};
}

// Collects the pieces of a text that stay.
class Kept {
 public:
  Kept(const CodeTokens& itsTokens, std::string_view itsText) : tokens(itsTokens), text(itsText) {}

  // Leaves out the tokens from `begin` up to `end`, with the blanks after or before them.
  void DropWithBlanksAfter(int begin, int end) {
    Add(static_cast<size_t>(tokens.Start(begin)));
    from = static_cast<size_t>(tokens.Start(end));
  }
  void DropWithBlanksBefore(int begin, int end) {
    Add(static_cast<size_t>(tokens.End(begin - 1)));
    from = static_cast<size_t>(tokens.End(end - 1));
  }
  void Insert(int token, std::string_view added) {
    Add(static_cast<size_t>(tokens.Start(token)));
    kept += added;
  }
  std::string Rest() {
    Add(text.size());
    while (!kept.empty() && IsBlank(kept.back())) kept.pop_back();
    return kept;
  }

 private:
  static bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
  void Add(size_t end) {
    if (end > from) kept += text.substr(from, end - from);
    from = std::max(from, end);
  }

  const CodeTokens& tokens;
  const std::string_view text;
  std::string kept;
  size_t from = 0;
};

void DropDefaults(Kept& kept, const CodeTokens& tokens, int open, int close) {
  int begin = -1;
  for (int at = open + 1; at <= close; ++at) {
    const bool isEnd = at == close || tokens.Is(at, ",");
    if (isEnd && begin >= 0) kept.DropWithBlanksBefore(begin, at);
    if (isEnd) begin = -1;
    if (begin < 0 && tokens.Is(at, "=")) begin = at;
    if (at == close) break;
    if (tokens.IsOpening(at))
      at = tokens.Partner(at);
    else if (const int end = SkipAngles(tokens, at); end < close)
      at = end;
  }
}

void DropAfterParameters(Kept& kept, const CodeTokens& tokens, int close) {
  for (int at = close + 1; at < tokens.Count(); ++at) {
    if (tokens.IsOneOf(at, "override final")) {
      kept.DropWithBlanksBefore(at, at + 1);
    } else if (IsAttribute(tokens, at)) {
      kept.DropWithBlanksBefore(at, tokens.Partner(at) + 1);
      at = tokens.Partner(at);
    } else if (tokens.Is(at, "=")) {
      return kept.DropWithBlanksBefore(at, tokens.Count());
    } else if (tokens.IsOpening(at)) {
      at = tokens.Partner(at);
    }
  }
}

}  // namespace

PrototypeText::PrototypeText(std::string_view written) : text(Trimmed(written, " \t\r\n;")) {
  const CodeTokens tokens(text);
  const Function found = FindFunction(tokens, 0, tokens.Count());
  if (found.open < 0 || !tokens.IsOpening(found.open)) return;
  name = found.name;
  open = found.open;
  bool isFriend = false, isInline = false;
  for (int at = 0; at < name; ++at) {
    isFriend = isFriend || tokens.Is(at, "friend");
    isInline = isInline || tokens.IsOneOf(at, cInlineWords);
  }
  std::string_view value;
  bool hasArrow = false;
  for (int at = tokens.Partner(open) + 1; at < tokens.Count(); ++at) {
    if (tokens.Is(at, "{")) hasBody = true;
    if (tokens.Is(at, "->")) hasArrow = true;
    if (tokens.Is(at, "=") && value.empty()) value = tokens.Text(at + 1);
    if (tokens.IsOpening(at)) at = tokens.Partner(at);
  }
  const bool isDestructor = tokens.Is(name, "~");
  const bool isDeduced = !hasArrow && name > 0 && tokens.Is(name - 1, "auto");
  const bool hasAutoParameter = [&] {
    for (int at = open; at < tokens.Partner(open); ++at)
      if (tokens.Is(at, "auto")) return true;
    return false;
  }();
  if (hasBody || isFriend || (!value.empty() && !(value == "0" && isDestructor))) return;
  place = isInline || isDeduced || hasAutoParameter ? BodyPlace::cInClass : BodyPlace::cOutside;
}

std::string PrototypeText::DefinitionHead(const std::string& owner,
                                          const std::vector<std::string>& ownTypes) const {
  const CodeTokens tokens(text);
  Kept kept(tokens, text);
  for (int at = 0; at < name; ++at) {
    if (tokens.IsOneOf(at, cDeclarationWords)) {
      const bool hasGroup = tokens.Is(at + 1, "(") && tokens.IsOpening(at + 1) && at + 1 < open;
      const int last = hasGroup ? tokens.Partner(at + 1) : at;
      kept.DropWithBlanksAfter(at, last + 1);
      at = last;
    } else if (IsAttribute(tokens, at)) {
      kept.DropWithBlanksAfter(at, tokens.Partner(at) + 1);
      at = tokens.Partner(at);
    } else if (tokens.IsWord(at) && !tokens.Is(at - 1, "::") &&
               std::find(ownTypes.begin(), ownTypes.end(), tokens.Text(at)) != ownTypes.end()) {
      kept.Insert(at, owner + "::");
    }
  }
  kept.Insert(name, owner + "::");
  const int close = tokens.Partner(open);
  DropDefaults(kept, tokens, open, close);
  DropAfterParameters(kept, tokens, close);
  return kept.Rest();
}

}  // namespace zendry
