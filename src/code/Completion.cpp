#include "code/Completion.h"

#include <algorithm>
#include <array>

#include "base/CaretText.h"
#include "code/CodeSources.h"
#include "code/ContainerTypes.h"
#include "code/MemberAccess.h"
#include "code/TextScanner.h"

namespace zendry {

namespace {

constexpr int cLongestText = 256;  // bytes before the caret
constexpr size_t cMostTaken = 200;
constexpr std::string_view cMemberChars = ".->:";

// The operators that a name may follow.
constexpr std::array<std::string_view, 3> cOperators = {"->", "::", "."};

// The request of a text with this ending; the ending itself is passed over. Rows are tried in
// order.
struct EndingRow {
  std::string_view ending;
  int kind = 0;  // 0: nothing
};

constexpr std::array<EndingRow, 6> cEndings = {{
    {"-", 0},
    {"::", cClassRequest},
    {":", 0},
    {"->", cMemberRequest},
    {">", 0},
    {".", cMemberRequest},
}};

// The beginning of the part of a text after its last operator; 0 without an operator.
size_t LastPart(std::string_view text) {
  size_t begin = 0;
  for (const std::string_view sign : cOperators) {
    const size_t found = text.rfind(sign);
    if (found != text.npos) begin = std::max(begin, found + sign.size());
  }
  return begin;
}

// True if the list after "->" has the members of a container, a smart pointer or an iterator, but
// those of the object that it holds or points to are wanted.
bool LeadsElsewhere(const std::vector<TagItem*>& items, std::string_view text) {
  if (items.empty()) return true;
  if (!text.substr(0, LastPart(text)).ends_with("->")) return false;
  const TagItem* first = items.front();
  return first->owner && !first->module && IsArrowForeign(first->owner->name);
}

// The beginning of the name that ends a text.
size_t NameStart(std::string_view text) {
  size_t start = text.size();
  while (start > 0 && IsWordChar(static_cast<unsigned char>(text[start - 1]))) --start;
  return start;
}

}  // namespace

std::string WhyNoList(std::string_view text) {
  constexpr size_t cLongestShown = 60;
  const size_t nameStart = LastPart(text);
  const std::string_view name = text.substr(nameStart);
  if (text.empty()) return "No list: no name is known here";
  if (name.empty() || nameStart > 0) {
    const size_t length = std::min(nameStart, cLongestShown);
    return "No list: nothing fits after " + std::string(text.substr(nameStart - length, length)) +
           std::string(name.substr(0, cLongestShown));
  }
  return "No list: no known name begins with " + std::string(name.substr(0, cLongestShown));
}

std::optional<CompletionRequest> RequestOf(std::string_view text) {
  if (text.size() == 1 && cMemberChars.find(text[0]) != cMemberChars.npos) return std::nullopt;
  for (const auto& [ending, kind] : cEndings) {
    if (!text.ends_with(ending)) continue;
    if (kind == 0) return std::nullopt;
    text.remove_suffix(ending.size());
    return CompletionRequest{static_cast<RequestKind>(kind), std::string(text), false};
  }
  const size_t part = LastPart(text);
  if (part > 0) return CompletionRequest{cPrefixRequest, std::string(text.substr(part))};
  return CompletionRequest{cAnyRequest, std::string(text.substr(NameStart(text)))};
}

std::string ExpressionLeftOf(const CaretText& editor) {
  const int caret = editor.CaretPosition();
  const int lineStart = editor.PositionFromLine(editor.LineFromPosition(caret));
  const int start = std::max(lineStart, caret - cLongestText);
  std::string text(static_cast<size_t>(std::max(caret - start, 0)), '\0');
  if (!text.empty()) editor.CopyRange(start, caret, text.data());
  size_t begin = text.size();
  while (begin > 0 && (IsWordChar(static_cast<unsigned char>(text[begin - 1])) ||
                       cMemberChars.find(text[begin - 1]) != cMemberChars.npos))
    --begin;
  return text.substr(begin);
}

void Completion::collectCompletions(std::vector<TagItem*>& out, const CaretText& editor,
                                    std::string_view text, RequestKind kind) {
  sources.RefreshTags();
  ResolveInfo info;
  info.kind = kind;
  const int typed = static_cast<int>(text.size());
  switch (kind) {
    case cClassRequest:
      wizard.tags.listMembers(out, text, "");
      break;
    case cMemberRequest:
      if (wizard.resolveAt(editor, info, -1)) wizard.tags.listMembers(out, info.type, "");
      break;
    case cPrefixRequest:
      if (wizard.resolveAt(editor, info, -1 - typed)) wizard.tags.listMembers(out, info.type, text);
      break;
    case cAnyRequest:
      if (const TagItem* item = wizard.currentItem(editor); item && item->owner)
        wizard.tags.listMembers(out, item->owner->name, text);
      wizard.tags.listGlobals(out, text);
      break;
  }
}

CompletionList Completion::Complete(const CaretText& editor, std::string_view leftOfCaret) {
  CompletionList list;
  Items items;
  if (const std::optional<CompletionRequest> request = RequestOf(leftOfCaret)) {
    collectCompletions(items, editor, request->text, request->kind);
    if (request->typesPrefix) list.typed = request->text;
  }
  if (LastPart(leftOfCaret) > 0 && LeadsElsewhere(items, leftOfCaret))
    if (const auto operand = CompleteByTypes(editor, items)) list.typed = operand->prefix;
  DropHidden(editor, items, leftOfCaret);
  for (const TagItem* item : items) list.rows.push_back(RowOf(*item));
  Tidy(list.rows);
  list.selected = LastTaken(list.rows);
  return list;
}

bool Completion::getCompletion(const CaretText& editor, std::string& text, std::string& list) {
  CompletionList found = Complete(editor, text);
  list = ListText(found.rows);
  text = std::move(found.typed);
  return !list.empty();
}

// Replaces the items if the operand's type gives others.
std::optional<ExprOperand> Completion::CompleteByTypes(const CaretText& editor, Items& items) {
  sources.RefreshTags();
  std::optional<ExprOperand> operand = wizard.operandAt(editor);
  if (!operand) return std::nullopt;
  Items found;
  if (operand->nameSpace.empty())
    wizard.tags.listMembers(found, operand->className, operand->prefix);
  else
    wizard.tags.listNamespace(found, operand->nameSpace, operand->prefix);
  if (found.empty()) return std::nullopt;
  items = std::move(found);
  return operand;
}

// Where members are defined, all of the class may be named behind its "::".
void Completion::DropHidden(const CaretText& editor, Items& items, std::string_view text) {
  const TagItem* around = wizard.currentItem(editor);
  MemberAccess access(wizard.tags, around && around->owner ? around->owner->name : std::string());
  Items reachable;
  for (TagItem* item : items)
    if (!IsSpecialMember(*item) && access.IsReachable(*item)) reachable.push_back(item);
  const bool isScope = text.substr(0, LastPart(text)).ends_with("::");
  const bool hidesAny = reachable.size() < items.size();
  if (hidesAny && !(isScope && IsAtFileLevel(editor))) items = std::move(reachable);
}

void Completion::NoteTaken(const CompletionRow& row) {
  const auto isSame = [&](const CompletionRow& other) {
    return other.name == row.name && other.owner == row.owner;
  };
  std::erase_if(taken, isSame);
  if (taken.size() >= cMostTaken) taken.erase(taken.begin());
  taken.push_back(row);
}

size_t Completion::LastTaken(const std::vector<CompletionRow>& rows) const {
  for (auto row = taken.rbegin(); row != taken.rend(); ++row) {
    const auto isBefore = [](const CompletionRow& a, const CompletionRow& b) {
      return a.name < b.name;
    };
    const auto found = std::lower_bound(rows.begin(), rows.end(), *row, isBefore);
    if (found != rows.end() && found->name == row->name && found->owner == row->owner)
      return static_cast<size_t>(found - rows.begin());
  }
  return 0;
}

std::optional<CallTip> Completion::callTipAt(const CaretText& editor) {
  sources.RefreshTags();
  return wizard.callTipAt(editor);
}

}  // namespace zendry
