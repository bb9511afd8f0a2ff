#include "code/ExprTypes.h"

#include <algorithm>

#include "base/CaretText.h"
#include "code/CodeSources.h"
#include "code/ContainerTypes.h"
#include "code/DeclRead.h"

namespace zendry {

namespace {

constexpr int cMostDepth = 24;  // of expressions and types that depend on each other
constexpr int cMostAliases = 8;
constexpr int cAliasCost = 20;       // steps for looking for one
constexpr int cLongestTypedef = 64;  // tokens
constexpr int cValueCost = 200;      // steps for resolving a declaration
constexpr std::string_view cBasicPrefix = "basic_";
constexpr std::string_view cMemberOperators = ". -> ::";

bool IsClassKind(int kind) {
  return kind == 'c' || kind == 's' || kind == 'u' || kind == 'i';
}

constexpr int cMacro = 'd';
constexpr int cTypedef = 't';
constexpr int cNamespace = 'n';
constexpr int cEnum = 'g';
constexpr int cDataMember = 'm';

// Counts one level of depth for as long as it lives.
class Deeper {
 public:
  explicit Deeper(int& theDepth) : depth(++theDepth) {}
  ~Deeper() { --depth; }
  Deeper(const Deeper&) = delete;
  Deeper& operator=(const Deeper&) = delete;
  bool IsTooDeep() const { return depth > cMostDepth; }

 private:
  int& depth;
};

// Gives a variable another value for as long as it lives.
class ScopedValue {
 public:
  ScopedValue(int& theVariable, int value) : variable(theVariable), kept(theVariable) {
    variable = value;
  }
  ~ScopedValue() { variable = kept; }
  ScopedValue(const ScopedValue&) = delete;
  ScopedValue& operator=(const ScopedValue&) = delete;

 private:
  int& variable;
  const int kept;
};

// True if a class declares another name for a type.
bool HasAlias(const TagClass& record, std::string_view name) {
  return std::any_of(record.members.begin(), record.members.end(), [&](const TagItem& member) {
    return member.kind == cTypedef && member.name == name;
  });
}

bool IsDeduced(const TypeText& type) {
  return type.path.size() == 1 && type.Name() == "auto";
}

// True if the type may be a pointer.
bool MayBePointer(const TypeText& type) {
  return !type.isExact && !IsContainerType(type);
}

// Replaces the parameters of a class template by its arguments.
void Substitute(TypeText& type, const std::vector<std::string>& parameters,
                const std::vector<TypeText>& arguments) {
  for (TypePart& part : type.path)
    for (TypeText& argument : part.arguments) Substitute(argument, parameters, arguments);
  if (type.path.size() != 1 || !type.Arguments().empty()) return;
  for (size_t i = 0; i < parameters.size() && i < arguments.size(); ++i) {
    if (type.Name() != parameters[i]) continue;
    const int pointers = type.pointers;
    const bool isExact = type.isExact;
    type = arguments[i];
    type.pointers += pointers;
    type.isExact = type.isExact && isExact;
    return;
  }
}

}  // namespace

ExprTypes::ExprTypes(TagLookup& theTags, CodeSources& theSources, const CaretText& editor,
                     const TagData* current, const TagItem* theScope, int place, int earliest)
    : tags(theTags),
      sources(theSources),
      tagText(theSources, editor, current),
      scope(theScope),
      scopeFile(current ? current->fileName : std::string()),
      tokens(CodeTokens::Before(editor, place, earliest)) {}

std::optional<ExprOperand> ExprTypes::Operand() {
  int sign = tokens.Count() - 1;
  std::string prefix;
  if (tokens.IsWord(sign) && !tokens.IsOneOf(sign, cMemberOperators)) prefix = tokens.Text(sign--);
  if (!tokens.IsOneOf(sign, cMemberOperators)) return std::nullopt;
  const int begin = OperandStart(tokens, sign, budget);
  if (begin < 0) return std::nullopt;
  before = begin;
  std::optional<ExprOperand> operand;
  if (tokens.Is(sign, "::")) {
    operand = Scope(begin, sign);
  } else if (Found value = ValueOf(begin, sign); value && !value->isType) {
    if (tokens.Is(sign, "->")) value = Pointee(*value);
    const Value plain = Plain(*value);
    if (const TagClass* record = ClassOf(plain.type, plain.scope)) {
      const bool isOfLibrary = !record->module && tags.findClass(record->name) != record;
      operand = {record->name, isOfLibrary ? "std" : "", {}};
    }
  }
  if (operand) operand->prefix = prefix;
  return operand;
}

// A class or a namespace comes before "::".
std::optional<ExprOperand> ExprTypes::Scope(int begin, int end) {
  std::optional<TypeText> path = ReadTypeText(tokens.Source(begin, end));
  if (!path) return std::nullopt;
  FollowNamespaceAlias(*path);
  const Value plain = Plain({*path, OwnerName()});
  if (const TagClass* record = ClassOf(plain.type, plain.scope))
    return ExprOperand{record->name, {}, {}};
  // The enumerators of a class's enum are kept among the members of the class.
  const Value outer = Plain({path->Outer(), OwnerName()});
  const TagClass* record = ClassOf(outer.type, outer.scope);
  const TagItem* member = record ? tags.findMemberInClass(record->name, path->Name()) : nullptr;
  const bool isEnum = member && member->kind == cEnum;
  return ExprOperand{{}, isEnum ? record->name : path->Name(), {}};
}

// "namespace fs = std::filesystem;"
void ExprTypes::FollowNamespaceAlias(TypeText& path) const {
  for (int i = 0; i + 3 < tokens.Count(); ++i) {
    if (!tokens.Is(i, "namespace") || !tokens.Is(i + 1, path.path.front().name) ||
        !tokens.Is(i + 2, "="))
      continue;
    int at = i + 3;
    const std::optional<TypeText> meant = ReadType(tokens, at);
    if (!meant || !tokens.Is(at, ";")) continue;
    path.path.erase(path.path.begin());
    path.path.insert(path.path.begin(), meant->path.begin(), meant->path.end());
    return;
  }
}

TagItem* ExprTypes::Item() {
  const int end = tokens.Count();
  const int begin = tokens.IsWord(end - 1) ? OperandStart(tokens, end, budget) : -1;
  if (begin < 0) return nullptr;
  before = begin;
  const Found value = ValueOf(begin, end);
  return value ? value->item : nullptr;
}

std::string ExprTypes::OwnerName() const {
  return scope && scope->owner ? scope->owner->name : std::string();
}

ExprTypes::Found ExprTypes::ValueOf(int begin, int end) {
  const std::optional<Expr> expr = ReadExpr(tokens, begin, end, budget);
  return expr ? ValueOf(*expr) : Found();
}

ExprTypes::Found ExprTypes::ValueOf(const Expr& expr) {
  const Deeper deeper(depth);
  if (deeper.IsTooDeep()) return std::nullopt;
  Found value;
  for (size_t i = 0; i < expr.size() && budget.Take(); ++i) {
    const ExprStep& step = expr[i];
    const bool isCall = i + 1 < expr.size() && expr[i + 1].kind == ExprStep::Kind::cCall;
    const ExprStep* const call = isCall ? &expr[i + 1] : nullptr;
    if (i > 0) {
      value = Apply(*value, step, call);
    } else if (step.kind == ExprStep::Kind::cThis) {
      if (OwnerName().empty()) return std::nullopt;
      value = Value{TypeOfName(OwnerName()), {}};
      value->type.pointers = 1;
    } else if (step.kind == ExprStep::Kind::cValue) {
      value = Value{step.type, OwnerName()};
    } else {
      value = NameValue(step, call);
    }
    if (!value) return std::nullopt;
  }
  return value;
}

ExprTypes::Found ExprTypes::Apply(const Value& value, const ExprStep& step, const ExprStep* call) {
  using Kind = ExprStep::Kind;
  Value result = value;
  switch (step.kind) {
    case Kind::cMember:
    case Kind::cArrow:
      return MemberValue(value, step.name, step.kind == Kind::cArrow, call);
    case Kind::cIndex:
      return Indexed(value);
    case Kind::cDeref:
      return Dereferenced(value);
    case Kind::cAddress:
      ++result.type.pointers;
      return result;
    default:
      // A function already has the type of its result; a call of a type gives a value.
      result.isType = false;
      return result;
  }
}

ExprTypes::Found ExprTypes::NameValue(const ExprStep& step, const ExprStep* call) {
  const TypeText& path = step.type;
  if (path.path.size() > 1 || !path.Arguments().empty()) {
    if (call)
      if (Found result = LibraryCall(path, *call)) return result;
    return QualifiedValue(path);
  }
  const std::string& name = path.Name();
  if (Found local = LocalValue(name)) return local;
  if (!OwnerName().empty())
    if (TagItem* member = tags.findMemberInClass(OwnerName(), name))
      return ItemValue(call ? FittingOverload(*member, *call) : *member, TypeOfName(OwnerName()));
  if (TagItem* global = tags.findGlobal(name, scopeFile)) {
    if (global->kind == cMacro)
      if (Found expanded = ExpandedValue(*global, call)) return expanded;
    return ItemValue(call ? FittingOverload(*global, *call) : *global, {});
  }
  if (call)
    if (Found result = LibraryCall(path, *call)) return result;
  return QualifiedValue(path);
}

// The nearest declaration in the text whose type is known. A text that only looks like a
// declaration, such as "a & b", has no known type.
ExprTypes::Found ExprTypes::LocalValue(const std::string& name) {
  for (int from = before; from > 0;) {
    const std::optional<CodeDecl> decl = FindDeclaration(tokens, name, from, budget);
    if (!decl) return std::nullopt;
    from = decl->name;
    if (!budget.Take(cValueCost)) return std::nullopt;
    Found value = DeclValue(*decl);
    if (!value || !IsKnown(*value)) continue;
    value->isType = decl->isAlias;
    return value;
  }
  return std::nullopt;
}

ExprTypes::Found ExprTypes::DeclValue(const CodeDecl& decl) {
  const ScopedValue earlier(before, decl.name);
  if (!IsDeduced(decl.type)) return Value{decl.type, OwnerName()};
  Found value = ValueOf(decl.initBegin, decl.initEnd);
  if (!value || value->isType) return std::nullopt;
  value->item = nullptr;
  if (decl.isRange) value = ElementValue(*value);
  if (value && decl.binding >= 0) value = BoundValue(*value, static_cast<size_t>(decl.binding));
  return value;
}

// A class by its name, or a name that is declared in one.
ExprTypes::Found ExprTypes::QualifiedValue(const TypeText& path) {
  const Value type{path, OwnerName(), true};
  if (path.path.size() > 1) {
    const Value outer = Plain({path.Outer(), OwnerName()});
    if (TagClass* record = ClassOf(outer.type, outer.scope)) {
      if (TagClass* nested = tags.findClass(record->name + "::" + path.Name()))
        return Value{TypeOfName(nested->name), {}, true, nested};
      if (TagItem* member = MemberNamed(*record, path.Name()))
        return ItemValue(*member, outer.type);
    }
  }
  if (IsKnown(type)) return type;
  const bool isStandard = path.path.size() > 1 && path.path.front().name == "std";
  if (isStandard)
    if (TagItem* named = LibraryName(path)) return ItemValue(*named, {});
  if (TagItem* global = tags.findGlobal(path.Name(), scopeFile)) return ItemValue(*global, {});
  if (TagItem* named = LibraryName(path)) return ItemValue(*named, {});
  const std::string_view className = ClassOfVariable(path.Name());
  return className.empty() ? Found() : Value{TypeOfName(className), {}};
}

// A name of the reference libraries by its namespace.
TagItem* ExprTypes::LibraryName(const TypeText& path) {
  if (path.path.size() < 2) return nullptr;
  const std::string& space = path.path[path.path.size() - 2].name;
  const std::vector<TagItem*> named = tags.findLibraryNames(space, path.Name());
  return named.empty() ? nullptr : named.front();
}

ExprTypes::Found ExprTypes::LibraryCall(const TypeText& path, const ExprStep& call) {
  if (path.path.size() > 2 || (path.path.size() == 2 && path.path.front().name != "std"))
    return std::nullopt;
  const CallResult result = ResultOf(path.Name());
  Value made{path, OwnerName()};
  switch (result) {
    case CallResult::cUnknown:
      return std::nullopt;
    case CallResult::cUniquePointer:
    case CallResult::cSharedPointer:
      if (path.Arguments().empty()) return std::nullopt;
      made.type.path.back().name =
          result == CallResult::cUniquePointer ? "unique_ptr" : "shared_ptr";
      return made;
    case CallResult::cString:
      return Value{TypeOfName("string"), {}};
    case CallResult::cArgument:
    case CallResult::cIterator:
      break;
  }
  int end = call.begin;
  while (end < call.end && !tokens.Is(end, ","))
    end = (tokens.IsOpening(end) ? tokens.Partner(end) : end) + 1;
  Found argument = ValueOf(call.begin, end);
  if (!argument || argument->isType) return std::nullopt;
  argument->item = nullptr;
  return result == CallResult::cArgument ? argument : MemberValue(*argument, "begin", false);
}

ExprTypes::Found ExprTypes::ItemValue(TagItem& item, const TypeText& owner) {
  if (IsClassKind(item.kind) || (item.kind == 0 && item.line == 0))
    return Value{TypeOfName(item.name), {}, true, &item};
  Value value{tagText.TypeOf(item, budget), item.owner ? item.owner->name : std::string()};
  value.item = &item;
  value.isType = item.kind == cTypedef;
  if (item.kind == cNamespace) return std::nullopt;
  if (item.owner) FillArguments(value, *item.owner, AsBase(owner, *item.owner));
  const bool isParameter = value.type.path.size() == 1 && !item.signature.empty() && item.module &&
                           !IsBuiltIn(value.type) && !ClassOf(value.type, value.scope);
  if (isParameter)
    if (std::optional<TypeText> type = tagText.DefaultOf(item, value.type.Name())) {
      type->pointers += value.type.pointers;
      value.type = *type;
    }
  return value;
}

// The type of a base class as the class of an object names it: for an object of the type Leaf,
// declared as `class Leaf : public Node<Leaf>`, its base Node is Node<Leaf>. The type itself if
// that isn't known or has no arguments.
TypeText ExprTypes::AsBase(const TypeText& type, const TagClass& base) {
  const Deeper deeper(depth);
  const TagClass* record = deeper.IsTooDeep() ? nullptr : ClassOf(type, {});
  if (!record || record == &base || !record->module || tagText.ParametersOf(base).empty())
    return type;
  const std::vector<std::string> parameters = tagText.ParametersOf(*record);
  for (TypeText& named : tagText.BasesOf(*record)) {
    if (!budget.Take(cAliasCost)) break;
    Substitute(named, parameters, type.Arguments());
    const TagClass* next = ClassOf(named, record->name);
    if (next == &base) return named;
    if (next && next != record && tags.IsDerived(next->name, base.name)) return AsBase(named, base);
  }
  return type;
}

// Fills the arguments of the object's type into a type that a member of `record` was declared with.
void ExprTypes::FillArguments(Value& value, const TagClass& record, const TypeText& owner) {
  const std::string declared = value.type.Name();
  for (TypeText around = owner; !around.IsEmpty(); around = around.Outer()) {
    if (around.Arguments().empty()) continue;
    const bool isOwner = around.path.size() == owner.path.size();
    const TagClass* found = isOwner ? &record : ClassOf(around, {});
    if (found) Substitute(value.type, tagText.ParametersOf(*found), around.Arguments());
  }
  if (value.type.Name() != declared) {
    value.scope = OwnerName();
  } else if (value.type.path.size() == 1 && ClassOf(owner, {}) == &record &&
             (tags.findClass(record.name + "::" + declared) ||
              (!owner.Arguments().empty() && HasAlias(record, declared)))) {
    // A type inside a template has the template's arguments too.
    value.type.path.insert(value.type.path.begin(), owner.path.begin(), owner.path.end());
  }
}

// The value that "->" leads to.
ExprTypes::Value ExprTypes::Pointee(const Value& value) {
  const Value object = Plain(value);
  if (object.type.pointers > 0) return object;
  if (Found pointee = WithType(PointeeOf(object.type), object)) return Plain(*pointee);
  if (Found result = OperatorValue(object, "operator ->")) return Plain(*result);
  return object;
}

// The project may have a class with the name of one of the library.
TagItem* ExprTypes::MemberNamed(const TagClass& record, std::string_view name) {
  const bool isOfLibrary = &record == tags.findLibraryClass(record.name);
  return tags.findMemberInClass(record.name, name, 0, isOfLibrary ? sources.Library() : nullptr);
}

ExprTypes::Found ExprTypes::MemberValue(const Value& value, const std::string& name, bool isArrow,
                                        const ExprStep* call) {
  const Deeper deeper(depth);
  if (deeper.IsTooDeep() || value.isType) return std::nullopt;
  Value object = isArrow ? Pointee(value) : Plain(value);
  object.type.pointers = 0;
  TagClass* record = ClassOf(object.type, object.scope);
  TagItem* member = record ? MemberNamed(*record, name) : nullptr;
  Found result;
  if (!record || !record->module) result = WithType(MemberOf(object.type, name), object);
  if (result) result->item = member;
  if (!result && member)
    result = ItemValue(call ? FittingOverload(*member, *call) : *member, object.type);
  return result || member ? result : MacroMember(object, name);
}

ExprTypes::Found ExprTypes::WithType(std::optional<TypeText> type, const Value& from) const {
  if (!type) return std::nullopt;
  return Value{*type, from.scope};
}

// The value that an operator of a class gives.
ExprTypes::Found ExprTypes::OperatorValue(const Value& value, const char* name) {
  const TagClass* record = ClassOf(value.type, value.scope);
  TagItem* member = record ? MemberNamed(*record, name) : nullptr;
  if (!member) return std::nullopt;
  Found result = ItemValue(*member, value.type);
  if (result) result->item = nullptr;
  return result && IsKnown(*result) ? result : Found();
}

ExprTypes::Found ExprTypes::Indexed(const Value& value) {
  Value object = Plain(value);
  object.item = nullptr;
  if (object.type.pointers > 0) {
    --object.type.pointers;
    return object;
  }
  if (Found element = WithType(IndexedOf(object.type), object)) return element;
  if (Found result = OperatorValue(object, "operator []")) return result;
  return MayBePointer(object.type) ? object : Found();
}

ExprTypes::Found ExprTypes::Dereferenced(const Value& value) {
  Value object = Plain(value);
  object.item = nullptr;
  if (object.type.pointers > 0) {
    --object.type.pointers;
    return object;
  }
  if (Found element = WithType(PointeeOf(object.type), object)) return element;
  if (Found result = OperatorValue(object, "operator *")) return result;
  return MayBePointer(object.type) ? object : Found();
}

// The value that a "for" over a range takes out of it.
ExprTypes::Found ExprTypes::ElementValue(const Value& value) {
  Value range = Plain(value);
  if (range.type.pointers > 0) {
    --range.type.pointers;
    return range;
  }
  if (Found element = WithType(ElementOf(range.type), range)) return element;
  const Found begin = MemberValue(range, "begin", false);
  if (!begin) return std::nullopt;
  return Dereferenced(*begin);
}

// A name of "auto [a, b]": an argument of a pair, or a data member by its position.
ExprTypes::Found ExprTypes::BoundValue(const Value& value, size_t place) {
  const Value object = Plain(value);
  if (Found bound = WithType(BoundOf(object.type, place), object)) return bound;
  TagClass* record = ClassOf(object.type, object.scope);
  if (!record) return std::nullopt;
  for (TagItem& member : record->members) {
    if (member.kind != cDataMember || place-- > 0) continue;
    member.module = record->module;
    member.owner = record;
    return ItemValue(member, object.type);
  }
  return std::nullopt;
}

bool ExprTypes::IsKnown(const Value& value) {
  const Value plain = Plain(value);
  return IsBuiltIn(plain.type) || IsContainerType(plain.type) || ClassOf(plain.type, plain.scope);
}

ExprTypes::Value ExprTypes::Plain(Value value) {
  const Deeper deeper(depth);
  for (int i = 0; i < cMostAliases && !deeper.IsTooDeep() && budget.Take(cAliasCost); ++i) {
    if (IsBuiltIn(value.type) || IsContainerType(value.type)) break;
    const Found alias = Alias(value);
    if (!alias || alias->type.IsEmpty()) break;
    const int pointers = value.type.pointers;
    const bool isExact = value.type.isExact;
    value.type = alias->type;
    value.scope = alias->scope;
    value.type.pointers += pointers;
    value.type.isExact = value.type.isExact && isExact;
  }
  return value;
}

ExprTypes::Found ExprTypes::Alias(const Value& value) {
  if (value.type.IsEmpty()) return std::nullopt;
  return value.type.path.size() == 1 ? NamedAlias(value) : NestedAlias(value);
}

ExprTypes::Found ExprTypes::NamedAlias(const Value& value) {
  const std::string& name = value.type.Name();
  if (const std::optional<CodeDecl> decl = FindAlias(name)) return Value{decl->type, OwnerName()};
  if (ClassOf(value.type, value.scope)) return std::nullopt;
  for (const std::string& owner : {value.scope, OwnerName()}) {
    if (owner.empty()) continue;
    TagItem* member = tags.findMemberInClass(owner, name);
    if (member && member->kind == cTypedef) return ItemValue(*member, {});
  }
  TagItem* global = tags.findGlobal(name, scopeFile);
  if (global && global->kind == cTypedef) return ItemValue(*global, {});
  if (global && global->kind == cMacro) return MacroAlias(*global);
  return WrittenAlias(name);
}

// The nearest alias of that name that the text makes.
std::optional<CodeDecl> ExprTypes::FindAlias(const std::string& name) {
  if (!aliases) {
    aliases.emplace();
    for (int i = 0; i < tokens.Count(); ++i)
      if (tokens.IsOneOf(i, "using typedef")) aliases->push_back(i);
  }
  for (auto at = aliases->rbegin(); at != aliases->rend(); ++at)
    for (int i = *at + 1; *at < before && i < *at + cLongestTypedef && budget.Take(); ++i) {
      if (tokens.Is(i, ";")) break;
      if (!tokens.Is(i, name) || !budget.Take(cAliasCost)) continue;
      const std::optional<CodeDecl> decl = DeclarationAt(tokens, i, budget);
      if (decl && decl->isAlias && decl->type.Names() != name) return decl;
    }
  return std::nullopt;
}

// "Outer::Name": a type that a class, a namespace or a container declares.
ExprTypes::Found ExprTypes::NestedAlias(const Value& value) {
  const std::string& name = value.type.Name();
  const Value outer = Plain({value.type.Outer(), value.scope});
  if (Found made = WithType(MemberOf(outer.type, name), outer)) {
    // A type that is an iterator by its name already isn't an alias of one.
    return Print(made->type) == Print(value.type) ? Found() : made;
  }
  const TagClass* record = ClassOf(outer.type, outer.scope);
  if (!record && value.type.path.front().name != "std" && !ClassOf(value.type, value.scope)) {
    TagItem* global = tags.findGlobal(name, scopeFile);
    return global && global->kind == cTypedef ? ItemValue(*global, {}) : Found();
  }
  if (!record || tags.findClass(record->name + "::" + name)) return std::nullopt;
  TagItem* member = MemberNamed(*record, name);
  if (member) return member->kind == cTypedef ? ItemValue(*member, outer.type) : Found();
  return WrittenAlias(name);
}

// An alias without a tag: one in the text, or in a file that it includes.
ExprTypes::Found ExprTypes::WrittenAlias(const std::string& name) {
  if (const std::optional<CodeDecl> decl = FindAlias(name)) return Value{decl->type, OwnerName()};
  const std::optional<TypeText> included = tagText.IncludedAlias(name, budget);
  return included ? Found(Value{*included, OwnerName()}) : Found();
}

// Tags name a class with the classes around it and without its namespaces.
TagClass* ExprTypes::ClassOf(const TypeText& type, const std::string& from) {
  if (type.IsEmpty() || IsContainerType(type.Outer())) return nullptr;
  const bool isStandard = type.path.size() == 2 && type.path.front().name == "std";
  if (isStandard)
    if (TagClass* found = tags.findLibraryClass(type.Name())) return found;
  const std::string names = type.Names();
  for (std::string around = from; !around.empty();) {
    if (TagClass* found = tags.findClass(around + "::" + names)) return found;
    const size_t colon = around.rfind("::");
    around.resize(colon == around.npos ? 0 : colon);
  }
  for (size_t first = 0; first < type.path.size(); ++first)
    if (TagClass* found = tags.findClass(type.Names(first))) return found;
  const std::string_view last = type.Name();
  if (last.starts_with(cBasicPrefix)) return tags.findClass(last.substr(cBasicPrefix.size()));
  return nullptr;
}

}  // namespace zendry
