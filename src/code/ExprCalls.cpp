#include <algorithm>
#include <set>

#include "code/CallableText.h"
#include "code/CodeSources.h"
#include "code/ContainerTypes.h"
#include "code/ExprTypes.h"
#include "code/OuterDefinition.h"

// What a call may mean.

namespace zendry {

namespace {

constexpr int cFunction = 'f';
constexpr int cPrototype = 'p';
constexpr int cMacro = 'd';
constexpr int cTypedef = 't';
constexpr int cDataMember = 'm';
constexpr size_t cMostOverloads = 200;
constexpr size_t cMostFiles = 2000;  // that one file includes
constexpr std::string_view cCallOperator = "operator ()";
constexpr std::string_view cMakers = "make_unique make_shared make_unique_for_overwrite";

bool IsFunction(const TagItem& item) {
  return item.kind == cFunction || item.kind == cPrototype;
}

std::string_view LastName(std::string_view name) {
  const size_t colon = name.rfind("::");
  return colon == name.npos ? name : name.substr(colon + 2);
}

std::string_view BaseName(std::string_view path) {
  return path.substr(path.find_last_of('/') + 1);
}

// The files that a file includes, and those that they include, by their names.
std::set<const TagData*> FilesAround(const TagData& file, const std::vector<TagData*>& modules) {
  std::map<std::string_view, std::vector<const TagData*>> byName;
  for (const TagData* module : modules) byName[BaseName(module->fileName)].push_back(module);
  std::set<const TagData*> around = {&file};
  for (std::vector<const TagData*> open = {&file}; !open.empty() && around.size() < cMostFiles;) {
    const TagData& next = *open.back();
    open.pop_back();
    for (const IncludeRec& include : next.includes) {
      const auto found = byName.find(BaseName(include.name));
      if (found == byName.end()) continue;
      for (const TagData* module : found->second)
        if (around.insert(module).second) open.push_back(module);
    }
  }
  return around;
}

// Looks for the ":" before the first initialiser of the members of a constructor. Returns the token
// of the constructor's name; -1 when there is none.
int ConstructorBefore(const CodeTokens& tokens, int name) {
  int at = name - 1;
  while (tokens.Is(at, ",") && tokens.IsOneOf(at - 1, ") }") && tokens.IsClosing(at - 1)) {
    at = tokens.Partner(at - 1) - 1;
    if (tokens.Is(at, ">")) at = tokens.AngleStart(at) - 1;
    if (!tokens.IsWord(at)) return -1;
    while (tokens.Is(at - 1, "::")) at -= 2;
    --at;
  }
  if (!tokens.Is(at, ":")) return -1;
  --at;
  if (tokens.Is(at, "noexcept")) --at;
  if (!tokens.Is(at, ")") || !tokens.IsClosing(at)) return -1;
  at = tokens.Partner(at) - 1;
  return tokens.IsWord(at) ? at : -1;
}

}  // namespace

std::vector<Callable> ExprTypes::Callables(const OpenCall& call, int& begin) {
  int end = call.bracket;
  const bool isBrace = tokens.Is(end, "{");
  begin = OperandStart(tokens, end, budget);
  if (begin < 0) return {};
  before = begin;
  // "(*pointer)(" calls like "pointer(".
  while (tokens.Is(begin, "(") && tokens.Partner(begin) == end - 1) {
    ++begin;
    --end;
    while (tokens.Is(begin, "*")) ++begin;
  }
  const bool isName = begin + 1 == end;
  if (auto found = Initialised(begin, end, isBrace)) return *found;
  if (isName)
    if (auto found = Declared(begin, isBrace)) return *found;
  if (auto found = MadeByLibrary(begin, end)) return *found;
  if (isName)
    if (auto found = LocalCallables(std::string(tokens.Text(begin)))) return *found;
  if (const Found value = ValueOf(begin, end)) return OfValue(*value, isBrace);
  const int last = end - 1;
  const bool isLibrary = isName || (tokens.Is(last - 1, "::") && tokens.Is(last - 2, "std"));
  return isLibrary ? OfLibrary(tokens.Text(last)) : CallableList();
}

ExprTypes::CallableList ExprTypes::OfLibrary(std::string_view name) {
  std::vector<const TagItem*> items;
  if (TagData* library = sources.Library())
    for (const TagItem& item : library->globals)
      if (item.name == name && (IsFunction(item) || item.kind == cMacro)) items.push_back(&item);
  for (const char* space : {"", "std"}) {
    if (!items.empty()) break;
    for (const TagItem* item : tags.findLibraryNames(space, name))
      if (IsFunction(*item)) items.push_back(item);
  }
  return Read(items);
}

// "Foo f(": the constructors of the type. Outside of functions a function is being declared.
std::optional<ExprTypes::CallableList> ExprTypes::Declared(int name, bool isBrace) {
  if (!tokens.IsWord(name - 1) && !tokens.IsOneOf(name - 1, "> ,")) return std::nullopt;
  const std::optional<CodeDecl> decl = DeclarationAt(tokens, name, budget);
  if (!decl || decl->isAlias) return std::nullopt;
  if (!isBrace && !IsInFunction(tokens, name, budget)) return CallableList();
  const Value value{decl->type, OwnerName()};
  CallableList found = Constructors(value, isBrace);
  if (found.empty() && !IsKnown(value)) return std::nullopt;
  return found;
}

// "Foo::Foo() : member(": the constructors of the member or base.
std::optional<ExprTypes::CallableList> ExprTypes::Initialised(int begin, int end, bool isBrace) {
  if (!tokens.IsOneOf(begin - 1, ": ,")) return std::nullopt;
  const int name = ConstructorBefore(tokens, begin);
  if (name < 0 || IsInFunction(tokens, begin, budget)) return std::nullopt;
  const int owner = tokens.Is(name - 1, "::") && tokens.IsWord(name - 2) ? name - 2 : name;
  const TagClass* record = ClassOf(TypeOfName(tokens.Text(owner)), OwnerName());
  const std::string_view word = tokens.Text(begin);
  TagItem* member =
      record && begin + 1 == end ? tags.findMemberInClass(record->name, word) : nullptr;
  if (member && member->kind == cDataMember) {
    const Found value = ItemValue(*member, {});
    return value ? Constructors(*value, isBrace) : CallableList();
  }
  const std::optional<TypeText> base = ReadTypeText(tokens.Source(begin, end));
  if (!base) return std::nullopt;
  return Constructors({*base, record ? record->name : OwnerName()}, isBrace);
}

// "std::make_unique<Foo>(": the constructors of the argument.
std::optional<ExprTypes::CallableList> ExprTypes::MadeByLibrary(int begin, int end) {
  if (!tokens.Is(end - 1, ">")) return std::nullopt;
  const std::optional<TypeText> path = ReadTypeText(tokens.Source(begin, end));
  if (!path || !IsInList(cMakers, path->Name())) return std::nullopt;
  return Constructors({path->Argument(0), OwnerName()}, false);
}

// The nearest variable, parameter or lambda of the text with this name.
std::optional<ExprTypes::CallableList> ExprTypes::LocalCallables(const std::string& name) {
  const std::optional<CodeDecl> decl = FindDeclaration(tokens, name, before, budget);
  const int last = decl ? decl->name : 0;
  for (int at = before - 1; at > last && budget.Take(); --at) {
    if (!tokens.Is(at, name) || !tokens.Is(at - 1, "*") || !tokens.IsOneOf(at + 1, ") [")) continue;
    if (std::optional<Callable> found = CallableAt(tokens, at, budget)) return CallableList{*found};
  }
  if (!decl) return std::nullopt;
  if (std::optional<Callable> found = CallableAt(tokens, decl->name, budget))
    return CallableList{*found};
  if (std::optional<Callable> found = OfType(decl->type, name)) return CallableList{*found};
  // The function itself is declared here: its tag tells more.
  const bool isFunction =
      tokens.Is(decl->name + 1, "(") && !IsInFunction(tokens, decl->name, budget);
  return isFunction ? OfTag(name) : std::nullopt;
}

// A member of the class around, or something global.
std::optional<ExprTypes::CallableList> ExprTypes::OfTag(const std::string& name) {
  TagItem* item = OwnerName().empty() ? nullptr : tags.findMemberInClass(OwnerName(), name);
  if (!item) item = tags.findGlobal(name, scopeFile);
  return item ? std::optional(Overloads(*item)) : std::nullopt;
}

// An object whose type is a name for that of a pointer to a function.
std::optional<Callable> ExprTypes::OfType(const TypeText& type, const std::string& name) {
  if (type.IsEmpty()) return std::nullopt;
  const std::optional<CodeDecl> alias = FindAlias(type.Name());
  std::optional<Callable> found = alias ? CallableAt(tokens, alias->name, budget) : std::nullopt;
  const TagItem* tag = found ? nullptr : tags.findGlobal(type.Name(), scopeFile);
  if (tag && tag->kind == cTypedef) found = tagText.CallableOf(*tag, budget);
  if (found) found->name = name;
  return found;
}

ExprTypes::CallableList ExprTypes::OfValue(const Value& value, bool isBrace) {
  if (value.isType) {
    // In C a function may have the name of a structure: "stat(".
    CallableList found = Constructors(value, isBrace);
    return found.empty() && !isBrace ? OfLibrary(value.type.Name()) : found;
  }
  if (value.item && (IsFunction(*value.item) || value.item->kind == cMacro))
    return Overloads(*value.item);
  if (value.item)
    if (std::optional<Callable> found = tagText.CallableOf(*value.item, budget)) return {*found};
  const std::string name = value.item ? value.item->name : std::string(tokens.Text(before));
  if (std::optional<Callable> found = OfType(value.type, name)) return {*found};
  const Value object = Plain(value);
  if (object.type.pointers > 0) return {};
  const TagClass* record = ClassOf(object.type, object.scope);
  TagItem* call = record ? MemberNamed(*record, cCallOperator) : nullptr;
  return call ? Overloads(*call) : CallableList();
}

ExprTypes::CallableList ExprTypes::Constructors(const Value& value, bool isBrace) {
  const Value plain = Plain(value);
  TagClass* record = plain.type.pointers > 0 ? nullptr : ClassOf(plain.type, plain.scope);
  if (!record) return {};
  const std::string_view name = LastName(record->name);
  const std::string basic = "basic_" + std::string(name);
  std::vector<const TagItem*> items;
  for (TagItem& member : record->members) {
    if (!IsFunction(member) || IsOuterDefinition(member)) continue;
    if (member.name != name && member.name != basic) continue;
    member.owner = record;
    member.module = record->module;
    items.push_back(&member);
  }
  if (items.empty() && isBrace) return Aggregate(*record);
  return Read(items);
}

// "Point{": the data members of a class without constructors.
ExprTypes::CallableList ExprTypes::Aggregate(const TagClass& record) {
  std::string members;
  for (const TagItem& member : record.members) {
    if (member.kind != cDataMember) continue;
    if (!members.empty()) members += ", ";
    TagItem item = member;
    item.module = record.module;
    members += tagText.DeclaredType(item, budget) + " " + member.name;
  }
  if (members.empty()) return {};
  return {Callable{{}, record.name, "{" + members + "}"}};
}

// Functions with the same name: those of the class, or the global ones of this file and of those
// that it includes. If they have none, the files' order decides.
ExprTypes::CallableList ExprTypes::Overloads(const TagItem& item) {
  std::vector<const TagItem*> items;
  const auto collect = [&](std::vector<TagItem>& list, TagClass* owner, TagData* module) {
    for (TagItem& other : list) {
      if (other.name != item.name || !IsFunction(other) || items.size() >= cMostOverloads) continue;
      if (owner && owner->line >= 0 && IsOuterDefinition(other)) continue;
      other.owner = owner;
      other.module = module;
      items.push_back(&other);
    }
  };
  if (!item.owner && !item.module) {
    for (const TagItem* other : tags.findNamesakes(item))
      if (other->kind == item.kind) items.push_back(other);
    if (items.empty()) items.push_back(&item);
    return Read(items);
  }
  if (item.kind == cMacro) return Read({&item});
  if (item.owner) {
    collect(item.owner->members, item.owner, item.owner->module);
    return Read(items);
  }
  const auto& modules = sources.Modules();
  const auto current = std::find_if(modules.begin(), modules.end(), [this](const TagData* module) {
    return module->fileName == scopeFile;
  });
  std::set<const TagData*> around;
  if (current != modules.end()) around = FilesAround(**current, modules);
  const auto places = tags.EnsureIndex().Globals().Named(item.name);
  if (places.empty()) return Read({&item});
  for (const auto& [module, record] : places)
    if (around.contains(modules[module]))
      collect(modules[module]->globals, nullptr, modules[module]);
  if (items.empty()) collect(item.module->globals, nullptr, item.module);
  return Read(items);
}

// The first function of the same name that takes as many arguments; `first` itself if none does.
TagItem& ExprTypes::FittingOverload(TagItem& first, const ExprStep& call) {
  if (!IsFunction(first) || !first.module) return first;
  int arguments = call.begin < call.end ? 1 : 0;
  for (int at = call.begin; at < call.end; ++at) {
    if (tokens.IsOpening(at)) at = tokens.Partner(at);
    if (tokens.Is(at, ",")) ++arguments;
  }
  if (ArityOf(first.signature).Takes(arguments)) return first;
  const auto fits = [&](const TagItem& other) {
    return other.name == first.name && IsFunction(other) &&
           ArityOf(other.signature).Takes(arguments);
  };
  if (first.owner) {
    const auto found = std::find_if(first.owner->members.begin(), first.owner->members.end(), fits);
    if (found == first.owner->members.end()) return first;
    found->module = first.module;
    found->owner = first.owner;
    return *found;
  }
  const TagIndex& index = tags.EnsureIndex();
  for (const auto& [number, record] : index.Globals().Named(first.name))
    for (TagItem& other : index.Modules()[static_cast<size_t>(number)]->globals) {
      if (!fits(other)) continue;
      other.module = index.Modules()[static_cast<size_t>(number)];
      other.owner = nullptr;
      return other;
    }
  return first;
}

// Of a prototype and the definition the longer one stays: it has names or default values.
ExprTypes::CallableList ExprTypes::Read(const std::vector<const TagItem*>& items) {
  CallableList found;
  std::map<std::string, size_t> places;
  for (const TagItem* item : items) {
    std::optional<Callable> callable = tagText.CallableOf(*item, budget);
    if (!callable) continue;
    const std::string types = item->owner ? std::string() : ParameterTypes(callable->parameters);
    const auto [place, isNew] = places.try_emplace(types, found.size());
    if (item->owner || isNew)
      found.push_back(std::move(*callable));
    else if (callable->parameters.size() > found[place->second].parameters.size())
      found[place->second] = std::move(*callable);
  }
  return found;
}

}  // namespace zendry
