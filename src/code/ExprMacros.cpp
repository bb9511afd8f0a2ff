// What macros stand for: values, types, and members.

#include <utility>

#include "code/ExprTypes.h"

namespace zendry {

namespace {

constexpr int cMostExpansions = 12;  // of one question
constexpr int cMacro = 'd';

// The arguments of a call as they are written.
std::vector<std::string> ArgumentTexts(const CodeTokens& tokens, const ExprStep& call) {
  std::vector<std::string> texts;
  int begin = call.begin;
  for (int at = call.begin; at < call.end; ++at) {
    if (tokens.IsOpening(at)) {
      at = tokens.Partner(at);
    } else if (tokens.Is(at, ",")) {
      texts.emplace_back(tokens.Source(begin, at));
      begin = at + 1;
    }
  }
  if (begin < call.end || !texts.empty()) texts.emplace_back(tokens.Source(begin, call.end));
  return texts;
}

}  // namespace

// The expansion is read as if it came after the declarations that are seen from the place.
ExprTypes::Found ExprTypes::ExpandedValue(TagItem& macro, const ExprStep* call) {
  if (++expansions > cMostExpansions) return std::nullopt;
  std::optional<std::string> text;
  if (call) text = tagText.Expansion(macro, true, ArgumentTexts(tokens, *call));
  if (!text) text = tagText.Expansion(macro, false, {});
  if (!text || text->empty()) return std::nullopt;
  const std::string seen(tokens.Source(0, before));
  CodeTokens whole = std::exchange(tokens, CodeTokens(seen + " " + *text));
  const std::optional<std::vector<int>> kept = std::exchange(aliases, std::nullopt);
  Found value = ValueOf(before, tokens.Count());
  tokens = std::move(whole);
  aliases = kept;
  if (value) value->item = &macro;
  return value;
}

// "#define Node struct node"
ExprTypes::Found ExprTypes::MacroAlias(const TagItem& macro) {
  if (++expansions > cMostExpansions) return std::nullopt;
  const std::optional<std::string> text = tagText.Expansion(macro, false, {});
  std::optional<TypeText> type = text ? ReadTypeText(*text) : std::nullopt;
  if (!type || type->Names() == macro.name) return std::nullopt;
  return Value{*type, OwnerName()};
}

// "#define s_name s_part.name" makes the members of a member look like its own.
ExprTypes::Found ExprTypes::MacroMember(const Value& object, const std::string& name) {
  TagItem* macro = tags.findGlobal(name, scopeFile);
  if (!macro || macro->kind != cMacro || ++expansions > cMostExpansions) return std::nullopt;
  const std::optional<std::string> text = tagText.Expansion(*macro, false, {});
  if (!text) return std::nullopt;
  const CodeTokens body(*text);
  Found value = object;
  for (int at = 0; at < body.Count() && value; at += 2) {
    const bool isLast = at + 1 == body.Count();
    if (!body.IsWord(at) || !(isLast || body.IsOneOf(at + 1, ". ->"))) return std::nullopt;
    const bool isArrow = body.Is(at - 1, "->");
    value = MemberValue(*value, std::string(body.Text(at)), isArrow);
  }
  return body.Count() > 0 ? value : Found();
}

}  // namespace zendry
