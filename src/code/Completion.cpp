#include "code/Completion.h"

#include <algorithm>
#include <array>

#include "code/CodeSources.h"
#include "code/ContainerTypes.h"

namespace zendry {

namespace {

constexpr size_t cShortestText = 2;
constexpr int cDataMember = 'm';

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
  if (!text.substr(0, LastPart(text)).ends_with("->")) return false;
  const TagItem* first = items.front();
  return first->owner && !first->module && IsArrowForeign(first->owner->name);
}

}  // namespace

std::string WhyNoList(std::string_view text) {
  constexpr size_t cLongestShown = 60;
  const size_t nameStart = LastPart(text);
  const std::string_view name = text.substr(nameStart);
  if (text.empty()) return "No list: type the beginning of a name first";
  if (name.empty() || nameStart > 0) {
    const size_t length = std::min(nameStart, cLongestShown);
    return "No list: nothing fits after " + std::string(text.substr(nameStart - length, length)) +
           std::string(name.substr(0, cLongestShown));
  }
  if (name.size() < cShortestText) return "No list: type two letters of a name first";
  return "No list: no known name begins with " + std::string(name.substr(0, cLongestShown));
}

std::optional<CompletionRequest> RequestOf(std::string_view text) {
  if (text.size() < cShortestText) return std::nullopt;
  for (const auto& [ending, kind] : cEndings) {
    if (!text.ends_with(ending)) continue;
    if (kind == 0) return std::nullopt;
    text.remove_suffix(ending.size());
    return CompletionRequest{static_cast<RequestKind>(kind), std::string(text), false};
  }
  const size_t part = LastPart(text);
  return CompletionRequest{part > 0 ? cPrefixRequest : cAnyRequest, std::string(text.substr(part))};
}

std::string ListText(std::vector<TagItem*> items) {
  const auto isBefore = [](const TagItem* a, const TagItem* b) { return a->name < b->name; };
  std::stable_sort(items.begin(), items.end(), isBefore);
  std::string text;
  const std::string* last = nullptr;
  for (const TagItem* item : items) {
    if (last && *last == item->name) continue;
    last = &item->name;
    if (item->name.find(' ') != std::string::npos) continue;
    if (!text.empty()) text += ' ';
    text += item->name;
    text += item->kind == cDataMember ? "?1" : "?2";
  }
  return text;
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

bool Completion::getCompletion(const CaretText& editor, std::string& text, std::string& list) {
  const std::string typed = text;
  const std::optional<CompletionRequest> request = RequestOf(typed);
  std::vector<TagItem*> items;
  if (request) {
    collectCompletions(items, editor, request->text, request->kind);
    text = request->typesPrefix ? request->text : std::string();
  }
  list = ListText(items);
  if (LastPart(typed) > 0 && (list.empty() || LeadsElsewhere(items, typed)))
    CompleteByTypes(editor, text, list);
  return !list.empty();
}

// Replaces the list if the operand's type gives another one.
void Completion::CompleteByTypes(const CaretText& editor, std::string& text, std::string& list) {
  sources.RefreshTags();
  const std::optional<ExprOperand> operand = wizard.operandAt(editor);
  if (!operand) return;
  std::vector<TagItem*> items;
  if (operand->nameSpace.empty())
    wizard.tags.listMembers(items, operand->className, operand->prefix);
  else
    wizard.tags.listNamespace(items, operand->nameSpace, operand->prefix);
  std::string found = ListText(std::move(items));
  if (found.empty()) return;
  list = std::move(found);
  text = operand->prefix;
}

std::optional<CallTip> Completion::callTipAt(const CaretText& editor) {
  if (!IsInCall(editor)) return std::nullopt;
  sources.RefreshTags();
  return wizard.callTipAt(editor);
}

}  // namespace zendry
