#include "code/TagText.h"

#include <algorithm>

#include "base/CaretText.h"
#include "code/CallableText.h"
#include "code/CodeSources.h"
#include "code/DeclRead.h"
#include "tags/MacroText.h"
#include "tags/TagData.h"

namespace zendry {

namespace {

constexpr int cMacro = 'd';
constexpr std::string_view cNoType = "explicit";  // a tag of a constructor has it for a type
constexpr std::string_view cOperator = "operator";
constexpr int cLinesBefore = 3;
constexpr int cLinesAfter = 2;
constexpr int cMostBytes = 2000;  // of those lines
constexpr size_t cMostFiles = 8;  // whose whole text is searched
constexpr size_t cMostAliasText = 65536;

std::string_view FileNameOf(std::string_view path) {
  return path.substr(path.find_last_of('/') + 1);
}

// The token that names a class in its head; -1 without it.
int ClassName(const CodeTokens& tokens, int lineStart, const TagClass& record) {
  const std::string_view name = std::string_view(record.name).substr(record.name.rfind(':') + 1);
  for (int i = 0; i < tokens.Count(); ++i)
    if (tokens.Start(i) >= lineStart && tokens.Is(i, name) &&
        tokens.IsOneOf(i - 1, "class struct union"))
      return i;
  return -1;
}

}  // namespace

TagText::Piece TagText::AroundInEditor(int line) const {
  const int lineStart = editor.PositionFromLine(line - 1);
  int start = editor.PositionFromLine(std::max(line - 1 - cLinesBefore, 0));
  start = std::max(start, lineStart - cMostBytes);
  const int end = std::min(editor.PositionFromLine(line + cLinesAfter), lineStart + cMostBytes);
  Piece piece{std::string(static_cast<size_t>(std::max(end - start, 0)), '\0'), lineStart - start};
  if (end > start) editor.CopyRange(start, end, piece.text.data());
  return piece;
}

TagText::Piece TagText::Around(const TagItem& item) {
  if (!item.module || item.line < 1) return {};
  if (item.module == current) return AroundInEditor(item.line);
  const Source& source = SourceOf(*item.module);
  const auto startOf = [&](int line) {
    const auto at = static_cast<size_t>(std::max(line - 1, 0));
    return at < source.lines.size() ? source.lines[at] : source.text.size();
  };
  const size_t lineStart = startOf(item.line);
  const size_t before = lineStart - std::min<size_t>(lineStart, cMostBytes);
  const size_t start = std::max(startOf(item.line - cLinesBefore), before);
  const size_t end = std::min(startOf(item.line + cLinesAfter + 1), lineStart + cMostBytes);
  return {source.text.substr(start, end - start), static_cast<int>(lineStart - start)};
}

const TagText::Source& TagText::SourceOf(const TagData& module) {
  static const Source cNone;
  const auto known = read.find(&module);
  if (known != read.end()) return known->second;
  if (read.size() >= cMostFiles) return cNone;
  Source& source = read[&module];
  source.text = sources.TextOf(module);
  for (size_t at = 0; at < source.text.size();) {
    source.lines.push_back(at);
    at = std::min(source.text.find('\n', at), source.text.size() - 1) + 1;
  }
  return source;
}

TypeText TagText::TypeOf(const TagItem& item, StepBudget& budget) {
  // Names of a library have their whole types.
  if (!item.module && !item.owner)
    if (std::optional<TypeText> type = ReadTypeText(item.type)) return *type;
  const Piece piece = Around(item);
  const CodeTokens tokens(piece.text);
  for (int i = 0; i < tokens.Count() && budget.Take(); ++i) {
    if (tokens.Start(i) < piece.lineStart || !tokens.Is(i, item.name)) continue;
    const std::optional<CodeDecl> decl = DeclarationAt(tokens, i, budget);
    if (!decl) continue;
    // If the tag has another single type name, the text has changed since.
    const bool isSameType = decl->type.Name() == item.type || item.type == "auto";
    if (isSameType || decl->type.path.size() > 1) return decl->type;
  }
  return item.type.empty() ? TypeText() : TypeOfName(item.type, false);
}

std::string TagText::DeclaredType(const TagItem& item, StepBudget& budget) {
  const Piece piece = Around(item);
  const CodeTokens tokens(piece.text);
  for (int i = 0; i < tokens.Count() && budget.Take(); ++i) {
    if (tokens.Start(i) < piece.lineStart || !tokens.Is(i, item.name)) continue;
    const std::string type = ResultBefore(tokens, i, budget);
    if (!type.empty() && type.find(',') == type.npos) return type;
  }
  return Print(TypeOf(item, budget));
}

// A tag keeps all parameters and only the last word of the type.
std::optional<Callable> TagText::FunctionOf(const TagItem& item, StepBudget& budget) {
  Callable callable{item.type == cNoType ? std::string() : item.type, item.name, item.signature};
  if (item.owner) callable.name = item.owner->name + "::" + item.name;
  const Piece piece = Around(item);
  const CodeTokens tokens(piece.text);
  const std::string_view word = item.name.starts_with(cOperator) ? cOperator : item.name;
  for (int i = 0; i < tokens.Count() && budget.Take(); ++i) {
    if (tokens.Start(i) < piece.lineStart || !tokens.Is(i, word)) continue;
    if (IsDeleted(tokens, i)) return std::nullopt;
    std::string result = ResultBefore(tokens, i, budget);
    // If the tag's type isn't in it, the text has changed since.
    const bool isSame = result.find(callable.result) != result.npos || item.type == "auto";
    if (!callable.result.empty() && isSame) callable.result = std::move(result);
    break;
  }
  return callable;
}

std::optional<Callable> TagText::CallableOf(const TagItem& item, StepBudget& budget) {
  if (!item.signature.empty()) return FunctionOf(item, budget);
  const Piece piece = Around(item);
  if (item.kind == cMacro)
    return MacroIn(std::string_view(piece.text).substr(piece.lineStart), item.name);
  const CodeTokens tokens(piece.text);
  for (int i = 0; i < tokens.Count() && budget.Take(); ++i) {
    if (tokens.Start(i) < piece.lineStart || !tokens.Is(i, item.name)) continue;
    std::optional<Callable> callable = CallableAt(tokens, i, budget);
    if (!callable) continue;
    callable->name = item.owner ? item.owner->name + "::" + item.name : item.name;
    return callable;
  }
  return std::nullopt;
}

std::optional<std::string> TagText::Expansion(const TagItem& macro, bool takesArguments,
                                              const std::vector<std::string>& arguments) {
  const Piece piece = Around(macro);
  const std::string_view text = std::string_view(piece.text).substr(piece.lineStart);
  const std::optional<MacroText> read = ReadMacro(text, 1, macro.name);
  if (!read || read->takesArguments != takesArguments) return std::nullopt;
  return Expand(*read, arguments);
}

std::vector<std::string> TagText::ParametersOf(const TagClass& record) {
  const Piece piece = Around(record);
  const CodeTokens tokens(piece.text);
  const int name = ClassName(tokens, piece.lineStart, record);
  return name < 0 ? std::vector<std::string>() : TemplateParameters(tokens, name);
}

std::vector<TypeText> TagText::BasesOf(const TagClass& record) {
  const Piece piece = Around(record);
  const CodeTokens tokens(piece.text);
  std::vector<TypeText> bases;
  int at = ClassName(tokens, piece.lineStart, record);
  while (at >= 0 && at < tokens.Count() && !tokens.IsOneOf(at, ": { ;")) ++at;
  while (at >= 0 && tokens.IsOneOf(at, ": ,")) {
    ++at;
    while (tokens.IsOneOf(at, "public protected private virtual")) ++at;
    std::optional<TypeText> base = ReadType(tokens, at);
    if (!base) break;
    bases.push_back(std::move(*base));
  }
  return bases;
}

std::optional<TypeText> TagText::DefaultOf(const TagItem& function, std::string_view parameter) {
  const Piece piece = Around(function);
  const CodeTokens tokens(piece.text);
  int name = 0;
  while (name < tokens.Count() &&
         (tokens.Start(name) < piece.lineStart || !tokens.Is(name, function.name)))
    ++name;
  int open = name;
  while (open > 0 && !tokens.IsOneOf(open, "; { }") && !tokens.Is(open - 1, "template")) --open;
  const int close = tokens.Is(open, "<") ? tokens.AngleEnd(open) : -1;
  for (int at = open + 1; at < close; ++at) {
    if (!tokens.Is(at, parameter) || !tokens.Is(at + 1, "=")) continue;
    at += 2;
    std::optional<TypeText> type = ReadType(tokens, at);
    if (type) type->pointers = ReadPointers(tokens, at);
    return type;
  }
  return std::nullopt;
}

std::optional<TypeText> TagText::IncludedAlias(std::string_view name, StepBudget& budget) {
  if (!current) return std::nullopt;
  for (const IncludeRec& include : current->includes) {
    const auto isIncluded = [&](const TagData* module) {
      return module != current && FileNameOf(module->fileName) == FileNameOf(include.name);
    };
    const auto& modules = sources.Modules();
    const auto module = std::find_if(modules.begin(), modules.end(), isIncluded);
    if (module == modules.end()) continue;
    const std::string& text = SourceOf(**module).text;
    if (text.size() > cMostAliasText || text.find("using") == text.npos) continue;
    const CodeTokens tokens(text);
    for (int i = 1; i < tokens.Count() && budget.Take(); ++i) {
      if (!tokens.Is(i, name) || !tokens.Is(i - 1, "using")) continue;
      if (auto decl = DeclarationAt(tokens, i, budget)) return decl->type;
    }
  }
  return std::nullopt;
}

}  // namespace zendry
