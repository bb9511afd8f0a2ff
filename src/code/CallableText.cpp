#include "code/CallableText.h"

#include <algorithm>
#include <iterator>

#include "code/DeclRead.h"
#include "code/DeclScan.h"

namespace zendry {

namespace {

// Words before a function that aren't part of its type.
constexpr std::string_view cNoTypeWords =
    "static virtual inline extern explicit friend constexpr consteval constinit register typedef "
    "mutable thread_local public private protected using";
constexpr std::string_view cAfterParameters = "const noexcept override final mutable & &&";
constexpr std::string_view cPointer = "* & && const volatile";

// The tokens as text, with a blank wherever there was any space.
std::string Join(const CodeTokens& tokens, int begin, int end) {
  std::string text;
  for (int at = begin; at < end; ++at) {
    if (at > begin && tokens.Start(at) > tokens.End(at - 1)) text += ' ';
    text += tokens.Text(at);
  }
  return text;
}

bool IsMacroName(std::string_view word) {
  const auto isSmall = [](char c) { return c >= 'a' && c <= 'z'; };
  return word.starts_with("__") ||
         (word.size() > 1 && std::none_of(word.begin(), word.end(), isSmall));
}

// True if a type begins here; in "HANDLE const" none does.
bool IsTypeAt(const CodeTokens& tokens, int at, int end) {
  while (at < end && tokens.IsOneOf(at, "const volatile")) ++at;
  return at < end && tokens.IsWord(at);
}

// Passes over one word, attribute or template head before a type. False if the type begins.
bool PassOne(const CodeTokens& tokens, int& at, int end) {
  const bool isGroup = tokens.Is(at + 1, "(") && tokens.IsOpening(at + 1);
  if (tokens.Is(at, "template")) {
    const int close = tokens.AngleEnd(at + 1);
    if (close < 0) return false;
    at = close + 1;
  } else if (tokens.IsOneOf(at, cNoTypeWords) || !(tokens.IsWord(at) || tokens.IsOpening(at))) {
    if (tokens.Is(at, "::")) return false;
    ++at;
  } else if (tokens.Is(at, "[") && tokens.IsOpening(at)) {
    at = tokens.Partner(at) + 1;
  } else if (tokens.IsWord(at) && IsMacroName(tokens.Text(at)) && at + 1 < end &&
             (isGroup || IsTypeAt(tokens, at + 1, end))) {
    at = isGroup ? tokens.Partner(at + 1) + 1 : at + 1;
  } else {
    return false;
  }
  return at < end;
}

std::string TypeBetween(const CodeTokens& tokens, int begin, int end) {
  while (begin < end && PassOne(tokens, begin, end)) {
  }
  return begin < end && !tokens.Is(begin, "~") ? Join(tokens, begin, end) : std::string();
}

// The token after the words that can follow the parameters.
int AfterParameters(const CodeTokens& tokens, int close) {
  int at = close + 1;
  while (tokens.IsOneOf(at, cAfterParameters) || (tokens.Is(at, "(") && tokens.IsOpening(at)))
    at = tokens.IsOpening(at) ? tokens.Partner(at) + 1 : at + 1;
  return at;
}

// The type after "->" behind the parameters; empty without one.
std::string ResultAfter(const CodeTokens& tokens, int close) {
  const int arrow = AfterParameters(tokens, close);
  if (!tokens.Is(arrow, "->")) return {};
  int end = arrow + 1;
  while (end < tokens.Count() && !tokens.IsOneOf(end, "{ ; = , )")) ++end;
  return Join(tokens, arrow + 1, end);
}

// The "(" of the parameters of the function whose name is at this token; -1 without one.
int ParametersOf(const CodeTokens& tokens, int name) {
  int at = name + 1;
  if (tokens.Is(name, "operator")) {
    const bool isCallOperator = tokens.Is(at, "(") && tokens.Is(at + 1, ")");
    if (isCallOperator) at += 2;
    while (!isCallOperator && at < tokens.Count() && !tokens.IsOneOf(at, "( ; {")) ++at;
  }
  return tokens.Is(at, "(") && tokens.IsOpening(at) ? at : -1;
}

// The type directly before a token, in a list of parameters too.
std::string NearType(const CodeTokens& tokens, int end) {
  int begin = TypeStart(tokens, end);
  if (begin < 0) return {};
  while (tokens.IsWord(begin - 1)) --begin;
  return TypeBetween(tokens, begin, end);
}

std::string Parameters(const CodeTokens& tokens, int open) {
  return Join(tokens, open, tokens.Partner(open) + 1);
}

// "int (*name)(char)", "typedef int name(char)".
std::optional<Callable> PointerAt(const CodeTokens& tokens, int name, StepBudget& budget) {
  int open = name + 1;
  int end = name;
  if (tokens.Is(open, ")") && tokens.IsClosing(open)) {
    end = tokens.Partner(open);
    if (!tokens.IsOneOf(end + 1, "* & ::") && !tokens.IsWord(end + 1)) return std::nullopt;
    ++open;
  } else if (tokens.Is(open, "[") && tokens.IsOpening(open) &&
             tokens.Is(tokens.Partner(open) + 1, ")")) {
    // A table of pointers.
    open = tokens.Partner(open) + 1;
    end = tokens.Partner(open);
    if (end < 0 || !tokens.Is(end + 1, "*")) return std::nullopt;
    ++open;
  } else {
    const int start = StatementStart(tokens, name, budget);
    if (!tokens.Is(start, "typedef")) return std::nullopt;
  }
  if (!tokens.Is(open, "(") || !tokens.IsOpening(open)) return std::nullopt;
  std::string result = NearType(tokens, end);
  if (result.empty()) return std::nullopt;
  return Callable{std::move(result), std::string(tokens.Text(name)), Parameters(tokens, open)};
}

// A type whose values can be called: "std::function<int(char)>", "int (*)(char)".
std::optional<Callable> CallableType(const CodeTokens& tokens, int begin, int end) {
  while (end > begin && tokens.IsOneOf(end - 1, cPointer)) --end;
  if (tokens.Is(end - 1, ">")) {
    const int angle = tokens.AngleStart(end - 1);
    const bool isFunction = tokens.IsOneOf(angle - 1, "function move_only_function function_ref");
    return angle > begin && isFunction ? CallableType(tokens, angle + 1, end - 1) : std::nullopt;
  }
  if (!tokens.Is(end - 1, ")") || !tokens.IsClosing(end - 1)) return std::nullopt;
  const int open = tokens.Partner(end - 1);
  int typeEnd = open;
  if (tokens.Is(open - 1, ")") && tokens.Is(open - 2, "*")) typeEnd = tokens.Partner(open - 1);
  std::string result = TypeBetween(tokens, begin, typeEnd);
  if (typeEnd <= begin || result.empty()) return std::nullopt;
  return Callable{std::move(result), {}, Parameters(tokens, open)};
}

// The lambda that begins with the token at `bracket`.
std::optional<Callable> LambdaAt(const CodeTokens& tokens, int bracket) {
  if (!tokens.Is(bracket, "[") || !tokens.IsOpening(bracket)) return std::nullopt;
  int open = tokens.Partner(bracket) + 1;
  if (tokens.Is(open, "<")) open = tokens.AngleEnd(open) + 1;
  if (tokens.Is(open, "{")) return Callable{{}, {}, "()"};
  if (!tokens.Is(open, "(") || !tokens.IsOpening(open)) return std::nullopt;
  return Callable{ResultAfter(tokens, tokens.Partner(open)), {}, Parameters(tokens, open)};
}

// The type of a variable, or the one that "using" gives a name.
std::optional<Callable> TypedCallable(const CodeTokens& tokens, int name) {
  if (tokens.Is(name - 1, "using") && tokens.Is(name + 1, "=")) {
    int end = name + 2;
    while (end < tokens.Count() && !tokens.Is(end, ";")) ++end;
    return CallableType(tokens, name + 2, end);
  }
  const int begin = TypeStart(tokens, name);
  return begin < 0 ? std::nullopt : CallableType(tokens, begin, name);
}

// True for "# define ".
bool IsDefine(std::string_view text) {
  std::string letters;
  std::remove_copy_if(text.begin(), text.end(), std::back_inserter(letters),
                      [](char c) { return c == ' ' || c == '\t'; });
  return letters == "#define" && (text.ends_with(' ') || text.ends_with('\t'));
}

constexpr std::string_view cTypeWords =
    "const volatile struct class enum union unsigned signed long short typename";

// Appends a parameter without its name and default value.
void AppendType(std::string& types, const CodeTokens& tokens, int begin, int end) {
  for (int at = begin; at < end; ++at)
    if (tokens.Is(at, "=")) end = at;
  const auto isType = [&](int at) {
    return tokens.IsWord(at) && !tokens.IsOneOf(at, cTypeWords) && !tokens.Is(at - 1, "::");
  };
  int words = 0;
  for (int at = begin; at < end; ++at) words += isType(at);
  if (words > 1 && isType(end - 1)) --end;
  for (int at = begin; at < end; ++at) types.append(tokens.Text(at)) += ' ';
  types += ',';
}

}  // namespace

std::string ResultBefore(const CodeTokens& tokens, int name, StepBudget& budget) {
  if (const int open = ParametersOf(tokens, name); open > 0)
    if (std::string result = ResultAfter(tokens, tokens.Partner(open)); !result.empty())
      return result;
  const bool isInParens = tokens.Is(name - 1, "(") && tokens.Is(name + 1, ")");
  int end = isInParens ? name - 1 : name;
  while (tokens.Is(end - 1, "::")) {
    end -= 2;
    if (tokens.Is(end, ">")) end = tokens.AngleStart(end) - 1;
    if (end < 0) return {};
  }
  return TypeBetween(tokens, StatementStart(tokens, end, budget), end);
}

bool IsDeleted(const CodeTokens& tokens, int name) {
  const int open = ParametersOf(tokens, name);
  if (open < 0) return false;
  const int at = AfterParameters(tokens, tokens.Partner(open));
  return tokens.Is(at, "=") && tokens.Is(at + 1, "delete");
}

std::optional<Callable> CallableAt(const CodeTokens& tokens, int name, StepBudget& budget) {
  std::optional<Callable> callable = PointerAt(tokens, name, budget);
  if (!callable) callable = TypedCallable(tokens, name);
  const bool hasValue = tokens.IsOneOf(name + 1, "= { (");
  if (!callable && hasValue) callable = LambdaAt(tokens, name + 2);
  if (callable) callable->name = tokens.Text(name);
  return callable;
}

std::optional<Callable> MacroIn(std::string_view text, std::string_view name) {
  const std::string head = std::string(name) + "(";
  for (size_t at = text.find(head); at != text.npos; at = text.find(head, at + 1)) {
    const size_t line = text.rfind('\n', at) + 1;
    const std::string_view before = text.substr(line, at - line);
    if (!IsDefine(before)) continue;
    const size_t close = text.find(')', at);
    if (close == text.npos) return std::nullopt;
    const size_t open = at + name.size();
    return Callable{{}, std::string(name), std::string(text.substr(open, close + 1 - open))};
  }
  return std::nullopt;
}

std::string ParameterTypes(std::string_view parameters) {
  const CallSignature signature = SignatureOf({{}, {}, std::string(parameters)});
  std::string types;
  for (const auto& [start, end] : signature.parameters) {
    const CodeTokens tokens(signature.label.substr(start, end - start));
    AppendType(types, tokens, 0, tokens.Count());
  }
  return types;
}

}  // namespace zendry
