#include "code/Completion.h"

#include <algorithm>
#include <array>

#include "base/CaretText.h"
#include "code/CodeSources.h"
#include "code/CodeTokens.h"
#include "code/ContainerTypes.h"
#include "code/FreeNames.h"
#include "code/MemberAccess.h"
#include "code/TagText.h"
#include "code/TextScanner.h"

namespace zendry {

namespace {

constexpr int cLongestText = 256;  // bytes before the caret
constexpr size_t cMostTaken = 200;
constexpr size_t cMostRead = 100;  // rows whose declarations are looked at
constexpr size_t cNowhere = std::string::npos;
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

// True if the list after "->" has the members of a class with an arrow of its own, of a container,
// or of an iterator, but those of the object that it holds or points to are wanted.
bool LeadsElsewhere(const std::vector<TagItem*>& items, std::string_view text) {
  if (items.empty()) return true;
  if (!text.substr(0, LastPart(text)).ends_with("->")) return false;
  const auto isArrow = [](const TagItem* item) { return item->name == "operator ->"; };
  if (std::any_of(items.begin(), items.end(), isArrow)) return true;
  const TagItem* first = items.front();
  return first->owner && !first->module && IsArrowForeign(first->owner->name);
}

// True if the member operator before the caret follows an index or a call: the names show neither
// the index nor which of several functions the arguments fit.
bool IsAfterBrackets(const CaretText& editor, std::string_view text) {
  const size_t part = LastPart(text);
  if (text.substr(0, part) != "." && text.substr(0, part) != "->") return false;
  int before = editor.CaretPosition() - static_cast<int>(text.size());
  char c = ' ';
  while (before > 0 && (c == ' ' || c == '\t')) {
    editor.CopyRange(before - 1, before, &c);
    --before;
  }
  return c == ']' || c == ')';
}

bool IsType(const TagItem& item) {
  const RowKind kind = KindOf(item);
  return kind == RowKind::cClass || kind == RowKind::cEnum || kind == RowKind::cTypedef;
}

// The beginning of the name that ends a text.
size_t NameStart(std::string_view text) {
  size_t start = text.size();
  while (start > 0 && IsWordChar(static_cast<unsigned char>(text[start - 1]))) --start;
  return start;
}

// The whole word at the caret.
std::string WordAround(const CaretText& editor) {
  const int caret = editor.CaretPosition();
  const int end = std::min(caret + cLongestText, editor.Length());
  const int start = std::max(caret - cLongestText, 0);
  std::string text(static_cast<size_t>(std::max(end - start, 0)), '\0');
  if (!text.empty()) editor.CopyRange(start, end, text.data());
  const auto isWord = [&](size_t at) { return IsWordChar(static_cast<unsigned char>(text[at])); };
  const auto middle = static_cast<size_t>(caret - start);
  size_t first = middle, last = middle;
  while (first > 0 && isWord(first - 1)) --first;
  while (last < text.size() && isWord(last)) ++last;
  return text.substr(first, last - first);
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
  if (text.size() == 1 && cMemberChars.find(text[0]) != cNowhere) return std::nullopt;
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
                       cMemberChars.find(text[begin - 1]) != cNowhere))
    --begin;
  return text.substr(begin);
}

void Completion::collectCompletions(std::vector<TagItem*>& out, const CaretText& editor,
                                    std::string_view text, RequestKind kind) {
  Collect(out, editor, text, kind, ScopeAt(editor));
}

void Completion::Collect(Items& out, const CaretText& editor, std::string_view text,
                         RequestKind kind, const std::string& scope) {
  sources.RefreshTags();
  wizard.tags.LookFrom(sources.ModuleOf(editor));
  ResolveInfo info;
  info.kind = kind;
  const auto list = [&](std::string_view prefix) {
    TagLookup& tags = wizard.tags;
    tags.listMembers(out, info.type, prefix, 0, tags.ModuleNamed(info.file), &scope);
  };
  const int typed = static_cast<int>(text.size());
  switch (kind) {
    case cClassRequest:
      wizard.tags.listMembers(out, text, "");
      break;
    case cMemberRequest:
      if (wizard.resolveAt(editor, info, -1)) list("");
      break;
    case cPrefixRequest:
      if (wizard.resolveAt(editor, info, -1 - typed)) list(text);
      break;
    case cAnyRequest:
      if (const TagItem* item = wizard.currentItem(editor); item && item->owner)
        wizard.tags.listMembers(out, item->owner->name, text, 0, nullptr, &scope);
      wizard.tags.listGlobals(out, text);
      break;
  }
}

// Each step that refreshes the tags makes the ones found before void: they are rows by then.
CompletionList Completion::Complete(const CaretText& editor, std::string_view leftOfCaret) {
  const std::optional<CompletionRequest> request = RequestOf(leftOfCaret);
  const std::string_view operand = leftOfCaret.substr(0, LastPart(leftOfCaret));
  const Place place{operand, ScopeAt(editor)};
  if (request && operand.empty()) return CompleteFreely(editor, request->text, place);
  CompletionList list;
  Items items;
  if (request) {
    Collect(items, editor, request->text, request->kind, place.scope);
    if (request->typesPrefix) list.typed = request->text;
  }
  const bool leadsElsewhere = !operand.empty() && (IsAfterBrackets(editor, leftOfCaret) ||
                                                   LeadsElsewhere(items, leftOfCaret));
  list.rows = RowsOf(editor, std::move(items), place, list.typed);
  if (leadsElsewhere) CompleteByTypes(editor, place, list);
  Finish(list);
  return list;
}

CompletionList Completion::CompleteFreely(const CaretText& editor, const std::string& typed,
                                          const Place& place) {
  CompletionList list{typed, {}, 0};
  const CodeTokens tokens = CodeTokens::Before(editor, editor.CaretPosition());
  AddLocalNames(list.rows, tokens, typed);
  Items items;
  Collect(items, editor, typed, cAnyRequest, place.scope);
  const std::string word = WordAround(editor);
  const TagData* front = sources.ModuleOf(editor);
  const int line = editor.LineFromPosition(editor.CaretPosition()) + 1;
  std::erase_if(items, [&](const TagItem* item) {
    const bool isItself = item->module == front && item->line == line && item->name == word;
    return isItself || item->name.find("::") != cNowhere;
  });
  for (CompletionRow& row : RowsOf(editor, std::move(items), place, typed))
    list.rows.push_back(std::move(row));
  AddKnownNames(list.rows, wizard.tags, tokens, editor.Path(), place.scope, typed);
  Finish(list);
  return list;
}

bool Completion::getCompletion(const CaretText& editor, std::string& text, std::string& list) {
  CompletionList found = Complete(editor, text);
  list = ListText(found.rows);
  text = std::move(found.typed);
  return !list.empty();
}

// Replaces the rows if the operand's type gives others.
void Completion::CompleteByTypes(const CaretText& editor, const Place& place,
                                 CompletionList& list) {
  sources.RefreshTags();
  const std::optional<ExprOperand> operand = wizard.operandAt(editor);
  if (!operand) return;
  Items found;
  if (!operand->className.empty())
    wizard.tags.listMembers(found, operand->className, operand->prefix, 0,
                            operand->nameSpace.empty() ? nullptr : sources.Library(),
                            place.operand.ends_with("::") ? nullptr : &place.scope);
  else
    wizard.tags.listNamespace(found, operand->nameSpace, operand->prefix);
  std::vector<CompletionRow> rows = RowsOf(editor, std::move(found), place, operand->prefix);
  if (rows.empty()) return;
  list.rows = std::move(rows);
  list.typed = operand->prefix;
}

// The class that the code at the caret belongs to; empty without one.
std::string Completion::ScopeAt(const CaretText& editor) {
  const TagItem* around = wizard.currentItem(editor);
  return around && around->owner ? around->owner->name : std::string();
}

// Where members are defined, all of the class may be named after its "::". No type is named after
// a value.
std::vector<CompletionRow> Completion::RowsOf(const CaretText& editor, Items items,
                                              const Place& place, std::string_view prefix) {
  const bool isScope = place.operand.ends_with("::");
  const bool isOfValue = !place.operand.empty() && !isScope;
  // A member defined as n::A::f is one of A.
  const TagClass* own = wizard.tags.findClass(place.scope);
  MemberAccess access(wizard.tags, own ? own->name : place.scope);
  Items shown;
  for (TagItem* item : items) {
    const bool isHidden = IsSpecialMember(*item) || !access.IsReachable(*item);
    if (!isHidden && !(isOfValue && IsType(*item))) shown.push_back(item);
  }
  const bool hidesAny = shown.size() < items.size();
  if (hidesAny && !(isScope && IsAtFileLevel(editor))) items = std::move(shown);
  if (isScope) AddNestedClasses(items, place.operand, prefix);
  std::vector<CompletionRow> rows;
  rows.reserve(items.size());
  for (const TagItem* item : items) rows.push_back(RowOf(*item));
  ReadTypes(editor, items, rows);
  return rows;
}

// A tag has the last word of its type: the declaration tells of pointers, references and arguments.
// Each look into one takes some time, so long lists show the tags' types.
void Completion::ReadTypes(const CaretText& editor, const Items& items,
                           std::vector<CompletionRow>& rows) {
  if (items.size() > cMostRead) return;
  TagText text(sources, editor, sources.ModuleOf(editor));
  StepBudget budget;
  for (size_t i = 0; i < items.size(); ++i)
    if (items[i]->module && items[i]->line > 0 && !rows[i].type.empty())
      rows[i].type = text.DeclaredType(*items[i], budget);
}

// The classes inside of the one that a text such as "ns::Outer::" names.
void Completion::AddNestedClasses(Items& items, std::string_view scope, std::string_view prefix) {
  scope.remove_suffix(2);
  if (!wizard.tags.findClass(scope)) scope = scope.substr(NameStart(scope));
  wizard.tags.listNestedClasses(items, scope, prefix);
}

void Completion::NoteTaken(const CompletionRow& row) {
  const auto isSame = [&](const CompletionRow& other) {
    return other.name == row.name && other.owner == row.owner;
  };
  std::erase_if(taken, isSame);
  if (taken.size() >= cMostTaken) taken.erase(taken.begin());
  taken.push_back(row);
}

const CompletionRow* Completion::LastTaken(const CompletionList& list,
                                           std::string_view typed) const {
  for (auto row = taken.rbegin(); row != taken.rend(); ++row) {
    const CompletionRow* found = row->name.starts_with(typed) ? list.Find(row->name) : nullptr;
    if (found && found->owner == row->owner) return found;
  }
  return nullptr;
}

void Completion::Finish(CompletionList& list) const {
  Tidy(list.rows);
  if (const CompletionRow* row = LastTaken(list, list.typed))
    list.selected = static_cast<size_t>(row - list.rows.data());
}

std::optional<CallTip> Completion::callTipAt(const CaretText& editor) {
  if (!IsInCall(editor)) return std::nullopt;
  sources.RefreshTags();
  return wizard.callTipAt(editor);
}

}  // namespace zendry
