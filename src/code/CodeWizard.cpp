#include "code/CodeWizard.h"

#include <algorithm>

#include "code/CodeSources.h"
#include "code/DeclScan.h"
#include "code/LocalNames.h"
#include "code/TextScanner.h"

namespace zendry {

namespace {

constexpr int cClass = 'c';
constexpr int cFarthestItem = 100'000;  // lines
constexpr size_t cLongestCall = 511;

std::string Trace(const ResolveInfo& info) {
  return info.type + " " + info.name + " " + info.signature;
}

std::string FileOf(const TagItem* item) {
  return item && item->module ? item->module->fileName : std::string();
}

// The argument text of a call of the word at `start`; empty when none follows.
std::string CallText(TextScanner& scanner, int start) {
  scanner.position = start + 1;
  while (scanner.position < scanner.limit - 1 && IsWordChar(scanner.At(scanner.position)))
    ++scanner.position;
  std::string text;
  if (scanner.At(scanner.position) != '(') return text;
  while (text.size() < cLongestCall && !text.ends_with(')')) {
    const int c = scanner.readForward();
    if (c == 0) break;
    text += static_cast<char>(c);
  }
  return text;
}

// True if that many opening parentheses are directly before a place: "((p)). " is "p.", but in
// "((A*)p)." a group stands for more than its last word.
bool IsInGroups(TextScanner& scanner, int place, int groups) {
  for (; groups > 0; --groups) {
    do --place;
    while (place > 0 && IsWhiteSpace(scanner.At(place)));
    if (place < 0 || scanner.At(place) != '(') return false;
  }
  return true;
}

// Looks for the tag that begins nearest above a line.
class NearestItem {
 public:
  explicit NearestItem(int theLine) : line(theLine) {}

  void Look(TagItem& item, TagClass* owner) {
    const int away = line - (item.line - 1);
    if (away < 0 || away >= nearest) return;
    nearest = away;
    found = &item;
    found->owner = owner;
  }

  // If nothing begins above, a class counts from its first line to that of its last member.
  void LookAround(TagClass& record) {
    if (found || record.kind != cClass || line <= record.line) return;
    const auto isBelow = [this](const TagItem& member) { return line < member.line; };
    if (std::none_of(record.members.begin(), record.members.end(), isBelow)) return;
    found = &record;
    found->owner = &record;
  }

  TagItem* found = nullptr;

 private:
  const int line;
  int nearest = cFarthestItem;
};

}  // namespace

void fill(ResolveInfo& info, const TagItem& item) {
  info.name = item.name;
  info.file = FileOf(&item);
  info.reserved = 0;
  info.targetLine = item.line - 1;
  info.kind = item.kind;
  info.signature = item.signature;
  info.type = item.type;
  if (item.owner) info.className = item.owner->name;
}

TagItem* CodeWizard::currentItem(const CaretText& editor) {
  sources.RefreshTags();
  TagData* module = sources.ModuleOf(editor);
  tags.LookFrom(module);
  if (!module) return nullptr;
  NearestItem nearest(editor.LineFromPosition(editor.CaretPosition()));
  for (TagItem& item : module->globals) nearest.Look(item, nullptr);
  for (auto& [name, record] : module->classes) {
    for (TagItem& member : record.members) nearest.Look(member, &record);
    nearest.LookAround(record);
  }
  if (nearest.found) nearest.found->module = module;
  return nearest.found;
}

bool CodeWizard::resolveAt(const CaretText& editor, ResolveInfo& info, int offset) {
  const int request = info.kind;
  info = {};
  info.kind = request;
  TagItem* scopeItem = currentItem(editor);
  if (ResolveNames(editor, scopeItem, info, offset)) return true;
  const bool isForMembers =
      request == cClassRequest || request == cMemberRequest || request == cPrefixRequest;
  return !isForMembers && ResolveByTypes(editor, scopeItem, info, editor.CaretPosition() + offset);
}

bool CodeWizard::ResolveNames(const CaretText& editor, TagItem* scopeItem, ResolveInfo& info,
                              int offset) {
  TextScanner scanner(editor);
  scanner.position = std::clamp(scanner.position + offset, 0, editor.Length());
  if (resolveChain(scanner, scopeItem, info)) return true;
  if (info.name.empty()) return false;
  if (info.name == "this") return ResolveThis(scopeItem, info);
  if (info.kind == cClassRequest) {
    if (const TagClass* found = tags.findClass(info.name)) {
      fill(info, *found);
      info.type = found->name;
      info.name.clear();
      return true;
    }
  }
  return ResolveTag(scopeItem, info);
}

// Resolves an expression whose first name is declared in the text.
bool CodeWizard::resolveChain(TextScanner& scanner, const TagItem* scopeItem, ResolveInfo& info) {
  const bool isOperator = info.kind == cMemberRequest || info.kind == cPrefixRequest;
  int place = isOperator ? operandEnd(scanner, scanner.position) : scanner.position;
  int groups = 0;
  for (; place > 0 && !IsWordChar(scanner.At(place)); --place) {
    if (scanner.At(place) == ')') ++groups;
    if (isOperator && scanner.At(place) == ']') return false;
  }
  const Chain chain = readChain(scanner, place);
  if (isOperator && !IsInGroups(scanner, chain.start, groups)) return false;
  info.name = chain.text;
  if (info.name.empty()) return false;
  if (const auto decl = declarationAt(scanner, chain.wordEnd)) {
    info.type = decl->type;
    info.position = chain.wordEnd;
    info.line = scanner.editor.LineFromPosition(info.position);
  }
  info.signature = CallText(scanner, chain.start);
  if (info.type.empty()) findLocalDecl(scanner, chain.start, scopeItem, info);
  if (info.type.empty()) return false;
  if (isOperator && scopeItem && scopeItem->owner)
    info.type = tags.NameInScope(info.type, scopeItem->owner->name);
  sources.Log("-----> ", Trace(info));
  info.targetLine = info.line;
  if (info.memberPath.empty()) return true;
  const TagItem* member = tags.findMemberPath(info.memberPath, info.type);
  if (!member) return false;
  fill(info, *member);
  if (isOperator) info.type = tags.NameInScope(info.type, info.className, member->module);
  sources.Log("-------> ", Trace(info));
  return true;
}

// Looks for the declaration of the chain's head between the enclosing tag's first line and the
// chain.
void CodeWizard::findLocalDecl(TextScanner& scanner, int from, const TagItem* scopeItem,
                               ResolveInfo& info) {
  const size_t dot = info.name.find('.');
  if (dot != std::string::npos) {
    info.memberPath = info.name.substr(dot + 1);
    info.name.resize(dot);
  }
  const int lowerBound =
      scopeItem ? scanner.editor.PositionFromLine(std::max(scopeItem->line - 1, 0)) : 0;
  const auto decl = findTextDecl(scanner, info.name, from, lowerBound);
  if (!decl) return;
  info.type = decl->type;
  info.position = decl->position;
  info.line = info.targetLine = scanner.editor.LineFromPosition(decl->position);
}

bool CodeWizard::ResolveThis(const TagItem* scopeItem, ResolveInfo& info) {
  if (!scopeItem) return false;
  fill(info, *scopeItem);
  info.type = info.className;
  info.name.clear();
  return info.memberPath.empty() || WalkMemberPath(info);
}

bool CodeWizard::ResolveTag(const TagItem* scopeItem, ResolveInfo& info) {
  const TagItem* found = FindMemberOrGlobal(scopeItem, info.name);
  if (!found) return false;
  fill(info, *found);
  return info.memberPath.empty() || WalkMemberPath(info);
}

// The name at a place, or the nearest one shortly before it.
bool CodeWizard::ResolveByTypes(const CaretText& editor, const TagItem* scopeItem,
                                ResolveInfo& info, int place) {
  TextScanner scanner(editor);
  place = std::clamp(place, 0, editor.Length());
  const int nearest = std::max(place - TextScanner::cNearReach, 0);
  while (place > nearest && !IsWordChar(scanner.At(place)) && !IsWordChar(scanner.At(place - 1)))
    --place;
  const int farthest = place + TextScanner::cWindow;
  while (place < farthest && IsWordChar(scanner.At(place))) ++place;
  ExprTypes types(tags, sources, editor, sources.ModuleOf(editor), scopeItem, place);
  const TagItem* found = types.Item();
  if (!found) return false;
  info = {};
  fill(info, *found);
  return true;
}

std::optional<ExprOperand> CodeWizard::operandAt(const CaretText& editor) {
  const TagItem* scopeItem = currentItem(editor);
  return ExprTypes(tags, sources, editor, sources.ModuleOf(editor), scopeItem,
                   editor.CaretPosition())
      .Operand();
}

int CodeWizard::localPlace(const CaretText& editor, int position, std::string_view name) {
  const CodeTokens tokens = CodeTokens::Before(editor, position);
  StepBudget budget;
  const bool isInside = IsInFunction(tokens, tokens.Count(), budget);
  const int token = isInside ? LocalDeclaration(tokens, name) : HeadParameter(tokens, name);
  return token < 0 ? -1 : position - (tokens.Size() - tokens.Start(token));
}

bool CodeWizard::isDeclaredAt(const CaretText& editor, int wordEnd) {
  const int end = std::min(wordEnd + TextScanner::cNearReach, editor.Length());
  const CodeTokens tokens = CodeTokens::Before(editor, end);
  int token = tokens.Count() - 1;
  while (token >= 0 && tokens.Size() - tokens.End(token) < end - wordEnd) --token;
  StepBudget budget;
  return DeclarationAt(tokens, token, budget).has_value() || IsTypeHead(tokens, token) ||
         IsTemplateParameter(tokens, token);
}

TagItem* CodeWizard::bestOverload(const CaretText& editor, int callEnd,
                                  const std::vector<TagItem*>& functions) {
  ExprTypes types(tags, sources, editor, sources.ModuleOf(editor), currentItem(editor), callEnd);
  return types.BestOverload(functions);
}

// The text from the tag around the caret on has all that counts, unless the parser has lost its way
// in the braces.
std::optional<CallTip> CodeWizard::callTipAt(const CaretText& editor) {
  const TagItem* scopeItem = currentItem(editor);
  const int scopeStart = scopeItem ? editor.PositionFromLine(std::max(scopeItem->line - 1, 0)) : 0;
  std::optional<CallTip> tip = FindCallTip(editor, scopeItem, scopeStart);
  if (!tip && scopeStart > 0) tip = FindCallTip(editor, scopeItem, 0);
  return tip;
}

std::optional<CallTip> CodeWizard::FindCallTip(const CaretText& editor, const TagItem* scopeItem,
                                               int earliest) {
  const int caret = editor.CaretPosition();
  ExprTypes types(tags, sources, editor, sources.ModuleOf(editor), scopeItem, caret, earliest);
  const std::vector<OpenCall> calls = types.Calls();
  for (const OpenCall& call : calls) {
    CallTip tip{{}, call.argument, call.arguments};
    int name = 0;
    tip.bracket = caret - types.BytesBefore(call.bracket);
    tip.innermost = caret - types.BytesBefore(calls.front().bracket);
    const std::vector<Callable> callables = types.Callables(call, name);
    if (callables.empty()) continue;
    const std::vector<int> fits = types.FitsOf(callables, call);
    for (size_t i = 0; i < callables.size(); ++i) {
      tip.overloads.push_back(SignatureOf(callables[i]));
      tip.overloads.back().fit = fits[i];
    }
    tip.name = caret - types.BytesBefore(name);
    SortByArguments(tip.overloads, tip.arguments);
    return tip;
  }
  return std::nullopt;
}

TagItem* CodeWizard::FindMemberOrGlobal(const TagItem* scopeItem, const std::string& name) {
  const std::string file = FileOf(scopeItem);
  if (scopeItem && scopeItem->owner) {
    TagItem* member = tags.findMember(scopeItem->owner->name, name, TagLookup::Want::cDeclaration,
                                      0, scopeItem->module);
    if (member) return member;
    sources.Log("Resolve - not member", " in file=" + file + " memb=" + name);
  }
  TagItem* global = tags.findGlobal(name, file);
  if (!global) sources.Log("Resolve - not global: ", name);
  return global;
}

bool CodeWizard::WalkMemberPath(ResolveInfo& info) {
  sources.Log("Before findMemberPath type=", info.type);
  const TagItem* member =
      tags.findMemberPath(info.memberPath, info.type, tags.ModuleNamed(info.file));
  if (member) fill(info, *member);
  return member;
}

}  // namespace zendry
