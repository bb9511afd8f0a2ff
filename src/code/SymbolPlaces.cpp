#include "code/SymbolPlaces.h"

#include <algorithm>
#include <cstdlib>

#include "code/CallTip.h"
#include "code/CallableText.h"
#include "code/CodeSources.h"
#include "code/CodeTokens.h"
#include "code/TextScanner.h"
#include "code/WordAtCaret.h"

namespace zendry {

namespace {

constexpr int cFunction = 'f';
constexpr int cPrototype = 'p';
constexpr int cTypedef = 't';
constexpr int cEnum = 'g';
constexpr int cNamespace = 'n';
constexpr int cLongestCall = 4000;  // bytes
constexpr int cNear = 200;

using Want = SymbolPlaces::Want;

bool IsFunction(int kind) {
  return kind == cFunction || kind == cPrototype;
}

// The parameter types, and the words after the parameters by which overloads differ.
std::string TypesOf(const std::string& signature) {
  std::string types = ParameterTypes(signature);
  const size_t close = signature.rfind(')');
  const std::string_view after =
      close == std::string::npos ? std::string_view() : std::string_view(signature).substr(close);
  if (after.find("const") != after.npos) types += "const";
  return types;
}

// The call of the name that ends at `place`.
struct CallText {
  int arguments = -1;  // -1 if it isn't called
  int end = 0;         // the position of the closing bracket
};

CallText CallAt(const CaretText& editor, int place) {
  const int end = std::min(editor.Length(), place + cLongestCall);
  std::string text(static_cast<size_t>(end - place), '\0');
  editor.CopyRange(place, end, text.data());
  const CodeTokens tokens(std::move(text));
  int open = 0;
  if (tokens.Is(open, "<")) open = tokens.AngleEnd(open) + 1;
  if (!tokens.Is(open, "(") || !tokens.IsOpening(open)) return {};
  const int close = tokens.Partner(open);
  CallText call{close > open + 1, place + tokens.Start(close)};
  for (int at = open + 1; at < close; ++at) {
    if (tokens.IsOpening(at))
      at = tokens.Partner(at);
    else if (tokens.Is(at, "<") && tokens.AngleEnd(at) > at && tokens.AngleEnd(at) < close)
      at = tokens.AngleEnd(at);
    else if (tokens.Is(at, ","))
      ++call.arguments;
  }
  return call;
}

// How the text around a name uses it.
enum class NameUse { cPlain, cMember, cQualified, cScope, cNamespace, cType, cTagged, cLabel };

// The tokens around a word, by a few bytes on each side.
NameUse UseOf(const CaretText& editor, const CaretWord& word) {
  const int begin = std::max(word.begin - cNear, 0);
  std::string text(static_cast<size_t>(word.begin - begin), '\0');
  editor.CopyRange(begin, word.begin, text.data());
  const CodeTokens before(std::move(text));
  const int last = before.Count() - 1;
  if (before.IsOneOf(last, ". -> .* ->*")) return NameUse::cMember;
  if (before.Is(last, "::")) return NameUse::cQualified;
  if (before.Is(last, "goto")) return NameUse::cLabel;
  if (before.Is(last, "namespace")) return NameUse::cNamespace;
  if (before.IsOneOf(last, "struct class union enum")) return NameUse::cTagged;
  const int end = word.begin + static_cast<int>(word.text.size());
  const int far = std::min(end + cNear, editor.Length());
  text.assign(static_cast<size_t>(far - end), '\0');
  editor.CopyRange(end, far, text.data());
  const CodeTokens after(std::move(text));
  if (after.Is(0, "::")) return NameUse::cScope;
  int at = 0;
  while (after.IsOneOf(at, "* & && const")) ++at;
  const bool isOperator = at > 0 && before.IsOneOf(last, ") ] = return");
  return after.IsWord(at) && !isOperator ? NameUse::cType : NameUse::cPlain;
}

// The position of a label, which is in the same function as its "goto": the nearest one.
int LabelPlace(const CaretText& editor, const CaretWord& word) {
  const int from = std::max(word.begin - CodeTokens::cMostText, 0);
  const int to = std::min(word.begin + CodeTokens::cMostText, editor.Length());
  std::string text(static_cast<size_t>(to - from), '\0');
  editor.CopyRange(from, to, text.data());
  const CodeTokens tokens(std::move(text));
  int nearest = -1;
  for (int at = 0; at < tokens.Count(); ++at) {
    if (!tokens.Is(at, word.text) || !tokens.Is(at + 1, ":")) continue;
    if (!tokens.IsOneOf(at - 1, "; { } : )")) continue;
    const int place = from + tokens.Start(at);
    if (nearest < 0 || std::abs(place - word.begin) < std::abs(nearest - word.begin))
      nearest = place;
  }
  return nearest;
}

int NameEnd(const CaretText& editor, int place) {
  TextScanner scanner(editor);
  while (IsWordChar(scanner.At(place))) ++place;
  return place;
}

std::string_view StemOf(std::string_view path) {
  const size_t dot = path.rfind('.');
  const size_t slash = path.rfind('/');
  return dot == path.npos || (slash != path.npos && dot < slash) ? path : path.substr(0, dot);
}

// 0 for the same file, 1 for its counterpart, 2 for others.
int Distance(const TagItem& item, std::string_view path) {
  const std::string& its = item.module->fileName;
  if (its == path) return 0;
  return StemOf(its).substr(its.rfind('/') + 1) == StemOf(path).substr(path.rfind('/') + 1) ? 1 : 2;
}

void SortByDistance(std::vector<TagItem*>& items, const std::string& path) {
  std::stable_sort(items.begin(), items.end(), [&](const TagItem* a, const TagItem* b) {
    return Distance(*a, path) < Distance(*b, path);
  });
}

// Keeps those that pass, if any do.
template <class Filter>
void Prefer(std::vector<TagItem*>& items, Filter passes) {
  if (std::none_of(items.begin(), items.end(), passes)) return;
  std::erase_if(items, [&](TagItem* item) { return !passes(item); });
}

CodePlace PlaceOf(const TagItem& item) {
  return {item.module->fileName, std::max(item.line - 1, 0), item.name};
}

}  // namespace

bool HaveSameTypes(const TagItem& a, const TagItem& b) {
  return TypesOf(a.signature) == TypesOf(b.signature);
}

std::optional<IncludeName> IncludeNameIn(std::string_view line) {
  const auto skipBlanks = [&line] {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  };
  skipBlanks();
  if (!line.starts_with('#')) return std::nullopt;
  line.remove_prefix(1);
  skipBlanks();
  if (!line.starts_with("include")) return std::nullopt;
  const size_t open = line.find_first_of("\"<");
  if (open == line.npos) return std::nullopt;
  const bool isQuoted = line[open] == '"';
  const size_t close = line.find(isQuoted ? '"' : '>', open + 1);
  if (close == line.npos || close == open + 1) return std::nullopt;
  return IncludeName{std::string(line.substr(open + 1, close - open - 1)), isQuoted};
}

TagClass* SymbolPlaces::ClassSeen(std::string_view name, const TagData* module) {
  for (;;) {
    if (TagClass* found = wizard.tags.findClass(name, module)) return found;
    const size_t colon = name.find("::");
    if (colon == name.npos) return nullptr;
    name.remove_prefix(colon + 2);
  }
}

// All functions of this name and owner in the project. Two files may have different classes of one
// name: members are those of the class that their file sees.
std::vector<TagItem*> SymbolPlaces::Namesakes(const TagItem& item) {
  std::vector<TagItem*> found;
  const auto collect = [&](std::vector<TagItem>& items, TagClass* owner, TagData& module) {
    for (TagItem& other : items) {
      if (other.name != item.name || !IsFunction(other.kind)) continue;
      other.module = &module;
      other.owner = owner;
      found.push_back(&other);
    }
  };
  const TagClass* meant = item.owner ? ClassSeen(item.owner->name, item.module) : nullptr;
  const std::string owner = meant ? std::string(meant->name) : OwnerName(item);
  for (TagData* module : sources.Modules()) {
    if (!item.owner) {
      collect(module->globals, nullptr, *module);
      continue;
    }
    for (auto& [name, record] : module->classes) {
      if (name != owner && !name.ends_with("::" + owner)) continue;
      const bool isSame =
          record.line >= 0 ? !meant || &record == meant : ClassSeen(name, module) == meant;
      if (isSame) collect(record.members, &record, *module);
    }
  }
  return found;
}

std::vector<TagItem*> SymbolPlaces::Counterparts(const TagItem& item, Want want) {
  const int kind = want == Want::cDefinition ? cFunction : cPrototype;
  std::vector<TagItem*> found = Namesakes(item);
  std::erase_if(found, [&](const TagItem* other) { return other->kind != kind; });
  const std::string types = TypesOf(item.signature);
  const int most = ArityOf(item.signature).most;
  const auto isSame = [&](const TagItem* other) { return TypesOf(other->signature) == types; };
  const auto isAsLong = [&](const TagItem* o) { return ArityOf(o->signature).most == most; };
  Prefer(found, isAsLong);
  Prefer(found, isSame);
  if (item.module) SortByDistance(found, item.module->fileName);
  return found;
}

// Of functions that take as many arguments the one that fits their types. If the types don't tell,
// the one that was resolved, or the first. Null if it is that, or if none takes as many.
TagItem* SymbolPlaces::CalledOf(std::vector<TagItem*> all, const TagItem& item,
                                const CaretText& editor, int arguments, int callEnd) {
  std::erase_if(all,
                [&](const TagItem* each) { return !ArityOf(each->signature).Takes(arguments); });
  Prefer(all, [&](const TagItem* each) { return each->kind == item.kind; });
  const auto isResolved = [&](const TagItem* each) {
    return each->line == item.line && each->module == item.module;
  };
  std::stable_partition(all.begin(), all.end(), isResolved);
  if (all.empty()) return nullptr;
  TagItem* best = wizard.bestOverload(editor, callEnd, all);
  return best ? best : all.front();
}

// A name of the text around it: a variable, a parameter or a label.
bool SymbolPlaces::FindInText(SymbolAnswer& answer, const CaretText& editor, const CaretWord& word,
                              bool isLabel) {
  const int position =
      isLabel ? LabelPlace(editor, word) : wizard.localPlace(editor, word.begin, word.text);
  if (position < 0) return false;
  answer.name = word.text;
  answer.places.push_back({editor.Path(), editor.LineFromPosition(position), word.text, position});
  return true;
}

// A name that is declared where it stands, and has no tag.
void SymbolPlaces::FindOwnPlace(SymbolAnswer& answer, const CaretText& editor,
                                const CaretWord& word) {
  const int end = word.begin + static_cast<int>(word.text.size());
  if (!wizard.isDeclaredAt(editor, end)) return;
  answer.name = word.text;
  answer.places.push_back(
      {editor.Path(), editor.LineFromPosition(word.begin), word.text, word.begin});
}

// A name that stands where only a type or a scope can. The class itself is meant, not one of its
// constructors. In C a name may be that of a structure and of a type: "struct" before it decides.
bool SymbolPlaces::FindType(SymbolAnswer& answer, const CaretText& editor, const std::string& name,
                            bool isTagged) {
  const TagItem* scope = wizard.currentItem(editor);
  const TagData* module = scope ? scope->module : nullptr;
  const TagItem* found = nullptr;
  std::string owner = scope ? OwnerName(*scope) : "";
  while (!found && !owner.empty()) {
    found = wizard.tags.findClass(owner + "::" + name, module);
    const size_t colon = owner.rfind("::");
    owner.resize(colon == std::string::npos ? 0 : colon);
  }
  if (!found && !isTagged) {
    const TagItem* global = wizard.tags.findGlobal(name, editor.Path());
    if (global && global->kind == cTypedef) found = global;
  }
  if (!found) found = wizard.tags.findClass(name, module);
  if (!found) {
    const TagItem* global = wizard.tags.findGlobal(name, editor.Path());
    if (global && global->kind == cEnum) found = global;
  }
  if (!found || !found->module || found->line <= 0) return false;
  answer.name = name;
  answer.places.push_back(PlaceOf(*found));
  answer.places.back().name = name;
  return true;
}

// Many files open a namespace; the first of them that a compiler would read declares it.
bool SymbolPlaces::FindNamespace(SymbolAnswer& answer, const CaretText& editor,
                                 const std::string& name) {
  const TagLookup::NamespacePlace found =
      wizard.tags.findNamespace(name, wizard.tags.ModuleNamed(editor.Path()));
  if (found.line <= 0) return false;
  answer.name = name;
  answer.places.push_back({found.file->fileName, found.line - 1, name});
  return true;
}

// `item` may be a copy of the tag that was resolved.
void SymbolPlaces::Choose(SymbolAnswer& answer, const TagItem& item, Want want,
                          const CaretText& editor) {
  const int caret = editor.CaretPosition();
  const int caretLine = editor.LineFromPosition(caret);
  const std::string path = editor.Path();
  const auto isAtCaret = [&](const TagItem* other) {
    return other->line - 1 == caretLine && other->module->fileName == path;
  };
  std::vector<TagItem*> all = Namesakes(item);
  const TagItem* chosen = &item;
  if (const auto here = std::find_if(all.begin(), all.end(), isAtCaret); here != all.end()) {
    chosen = *here;
  } else if (const CallText call = CallAt(editor, NameEnd(editor, caret)); call.arguments >= 0) {
    SortByDistance(all, item.module->fileName);
    if (TagItem* called = CalledOf(all, item, editor, call.arguments, call.end)) chosen = called;
  }
  if (want == Want::cNearest && isAtCaret(chosen))
    want = chosen->kind == cPrototype ? Want::cDefinition : Want::cDeclaration;
  const int wanted = want == Want::cDefinition ? cFunction : cPrototype;
  if (want != Want::cNearest && chosen->kind != wanted)
    for (const TagItem* other : Counterparts(*chosen, want))
      answer.places.push_back(PlaceOf(*other));
  if (answer.places.empty()) answer.places.push_back(PlaceOf(*chosen));
}

// A name that completion needs no lookup for: a member or class of the classes around, or an
// enumerator.
TagItem* SymbolPlaces::FindInScopes(const CaretText& editor, const std::string& name) {
  const TagItem* scope = wizard.currentItem(editor);
  const TagData* module = scope ? scope->module : nullptr;
  std::string owner = scope ? OwnerName(*scope) : "";
  while (!owner.empty()) {
    if (TagItem* found = wizard.tags.findMemberInClass(owner, name, 0, module)) return found;
    if (TagClass* found = wizard.tags.findClass(owner + "::" + name, module)) return found;
    const size_t colon = owner.rfind("::");
    owner.resize(colon == std::string::npos ? 0 : colon);
  }
  const TagIndex& index = wizard.tags.EnsureIndex();
  const auto places = index.Enumerators().Named(name);
  if (places.empty()) return nullptr;
  auto place = std::find_if(places.begin(), places.end(), [&](const auto& each) {
    return index.Modules()[static_cast<size_t>(each.module)] == module;
  });
  if (place == places.end()) place = places.begin();
  place->record->module = index.Modules()[static_cast<size_t>(place->module)];
  place->record->owner = nullptr;
  return place->record;
}

// A name that reads like a declaration and is none.
TagItem* SymbolPlaces::FindKnown(const CaretText& editor, const std::string& name) {
  if (TagItem* found = FindInScopes(editor, name)) return found;
  return wizard.tags.findGlobal(name, editor.Path());
}

// A class and its bases, by all names that they have in headers.
void SymbolPlaces::AddClasses(std::vector<std::string>& names, const std::string& name, int depth) {
  const bool isKnown = std::find(names.begin(), names.end(), name) != names.end();
  if (name.empty() || isKnown || depth > TagLookup::cMostDepth) return;
  names.push_back(name);
  const TagClass* record = wizard.tags.findClass(name);
  if (!record) return;
  // A class of a library may be kept under a shorter name: "string" for "basic_string".
  if (!record->module)
    names.push_back(record->signature.empty() ? "basic_" + name : record->signature);
  const std::string bases = record->inheritance;
  for (size_t begin = 0; begin < bases.size();) {
    const size_t end = std::min(bases.find(',', begin), bases.size());
    AddClasses(names, bases.substr(begin, end - begin), depth + 1);
    begin = end + 1;
  }
}

UnplacedName SymbolPlaces::Unplaced(const CaretText& editor, const CaretWord& word,
                                    const SymbolAnswer& answer) {
  UnplacedName sought;
  sought.name = word.text;
  const NameUse use = UseOf(editor, word);
  sought.isMember = use == NameUse::cMember;
  AddClasses(sought.classes, answer.unplaced.classes.empty() ? "" : answer.unplaced.classes[0], 0);
  const std::string scope = ScopeBefore(editor, word);
  if (!scope.empty()) {
    const size_t colon = scope.rfind("::");
    sought.nameSpace = colon == scope.npos ? scope : scope.substr(colon + 2);
    AddClasses(sought.classes, sought.nameSpace, 0);
  } else if (sought.isMember && sought.classes.empty()) {
    if (const std::optional<ExprOperand> operand = wizard.operandAt(editor))
      AddClasses(sought.classes, operand->className, 0);
  } else if (sought.classes.empty()) {
    const TagItem* around = wizard.currentItem(editor);
    if (around && around->owner) AddClasses(sought.classes, around->owner->name, 0);
  }
  return sought;
}

SymbolAnswer SymbolPlaces::AtCaret(const CaretText& editor, Want want) {
  const CaretWord word = WordAtCaret(editor);
  SymbolAnswer answer = FindTagged(editor, want, word);
  if (answer.places.empty() && !word.text.empty()) answer.unplaced = Unplaced(editor, word, answer);
  return answer;
}

SymbolAnswer SymbolPlaces::FindTagged(const CaretText& editor, Want want, const CaretWord& word) {
  const NameUse use = word.text.empty() ? NameUse::cQualified : UseOf(editor, word);
  SymbolAnswer first;
  const bool isTagged = use == NameUse::cTagged;
  const bool isOfText = use != NameUse::cMember && use != NameUse::cQualified &&
                        use != NameUse::cNamespace && !isTagged;
  if (isOfText && FindInText(first, editor, word, use == NameUse::cLabel)) return first;
  const bool isOfType = isTagged || use == NameUse::cType || use == NameUse::cScope;
  if (isOfType && FindType(first, editor, word.text, isTagged)) return first;
  const bool isOfNamespace = use == NameUse::cScope || use == NameUse::cNamespace;
  if (isOfNamespace && FindNamespace(first, editor, word.text)) return first;
  ResolveInfo info;
  info.kind = cAnyRequest;
  const bool isFound = wizard.resolveAt(editor, info, 0);
  SymbolAnswer answer;
  answer.name = info.memberPath.empty() ? info.name : info.name + "." + info.memberPath;
  if (isFound) answer.name = info.name;
  if (isFound && !info.className.empty() && info.className != info.name)
    answer.name = info.className + "::" + info.name;
  if (!isFound) {
    const bool isName = !info.name.empty() && info.memberPath.empty();
    const TagItem* found = isName ? FindInScopes(editor, info.name) : nullptr;
    if (found && found->module)
      answer.places.push_back(PlaceOf(*found));
    else if (use != NameUse::cMember && use != NameUse::cQualified)
      FindOwnPlace(answer, editor, word);
    return answer;
  }
  const bool isTag = info.kind != cAnyRequest;
  if (!isTag) {
    const TagItem* here = wizard.currentItem(editor);
    const bool isFunction =
        here && IsFunction(here->kind) && here->name == info.name && here->line - 1 == info.line;
    if (isFunction) {
      Choose(answer, *here, want, editor);
      return answer;
    }
    const bool isWrong = info.name == word.text && info.position > word.begin &&
                         !wizard.isDeclaredAt(editor, info.position);
    const TagItem* other = isWrong ? FindKnown(editor, info.name) : nullptr;
    if (other && other->module)
      answer.places.push_back(PlaceOf(*other));
    else
      answer.places.push_back({editor.Path(), info.targetLine, info.name, info.position});
    return answer;
  }
  if (info.kind == cNamespace && FindNamespace(first, editor, info.name)) return first;
  TagData* module = info.file.empty() ? nullptr : wizard.tags.ModuleNamed(info.file);
  answer.isLibrary = info.file.empty();
  if (answer.isLibrary) {
    if (!info.className.empty()) answer.unplaced.classes.push_back(info.className);
    return answer;
  }
  TagClass owner;
  TagItem item;
  owner.name = info.className;
  owner.module = item.module = module;
  item.name = info.name;
  item.kind = info.kind;
  item.line = info.targetLine + 1;
  item.signature = info.signature;
  if (!info.className.empty()) item.owner = &owner;
  if (module && IsFunction(info.kind))
    Choose(answer, item, want, editor);
  else
    answer.places.push_back({info.file, std::max(info.targetLine, 0), info.name});
  return answer;
}

SymbolAnswer SymbolPlaces::Around(const CaretText& editor, Want want) {
  SymbolAnswer answer;
  TagItem* item = wizard.currentItem(editor);
  if (!item) return answer;
  const bool isMember = item->owner && item->owner != item;
  answer.name = isMember ? item->owner->name + "::" + item->name : item->name;
  if (IsFunction(item->kind)) {
    const int wanted = want == Want::cDefinition ? cFunction : cPrototype;
    const bool isInline = item->kind == cFunction && item->access != 0;
    if (item->kind == wanted || isInline) {
      answer.places.push_back(PlaceOf(*item));
      return answer;
    }
    for (const TagItem* other : Counterparts(*item, want)) answer.places.push_back(PlaceOf(*other));
    return answer;
  }
  answer.places.push_back(PlaceOf(*item));
  return answer;
}

}  // namespace zendry
