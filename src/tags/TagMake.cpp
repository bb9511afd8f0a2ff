#include "tags/TagC.h"
#include "tags/TagChars.h"
#include "tags/TagMacros.h"
#include "tags/TagParser.h"

namespace zendry {
namespace {

using enum TagType;

bool IsFunctionLike(TagType type) {
  return type == cFunction || type == cMethod || type == cPrototype;
}

bool IsClassLike(TagType type) {
  return type == cClass || type == cStruct || type == cUnion;
}

bool HasExtraFields(TagType type) {
  switch (type) {
    case cClass:
    case cEnum:
    case cEnumerator:
    case cEvent:
    case cField:
    case cFunction:
    case cInterface:
    case cMember:
    case cMethod:
    case cNamespace:
    case cProperty:
    case cPrototype:
    case cStruct:
    case cTask:
    case cTypedef:
    case cUnion:
      return true;
    default:
      return false;
  }
}

bool IsNamespaceLike(Declaration declaration) {
  return declaration == DECLARES_NAMESPACE || declaration == DECLARES_PROGRAM;
}

std::string_view KindName(Language language, TagType type) {
  const TagKind* kind = FindKind(language, type);
  return kind == nullptr ? std::string_view("class") : kind->name;
}

}  // namespace

void TagC::PutAfter(std::string& names, std::string_view name, std::string_view separator) {
  if (!names.empty() && !name.empty()) names += separator;
  names += name;
}

std::string_view TagC::Separator() const {
  return IsJavaOrCSharp() ? "." : "::";
}

void TagC::tagFunction(Statement& st, const Token& token) {
  if (!token.IsName()) return;
  const bool isFileScope =
      st.access == ACCESS_PRIVATE || (!st.IsMember() && st.scope == SCOPEKIND_STATIC);
  TagType type = cFunction;
  if (IsJavaOrCSharp())
    type = cMethod;
  else if (language == Language::cVera && st.declaration == DECLARES_TASK)
    type = cTask;
  MakeTag(st, token, isFileScope, type);
}

void TagC::tagVariable(Statement& st, const Token& token) {
  if (!token.IsName()) return;
  const bool isPrivate = st.access == ACCESS_PRIVATE;
  const bool isStatic = st.scope == SCOPEKIND_STATIC;
  if (st.scope == SCOPEKIND_TYPEDEF) {
    MakeTag(st, token, true, cTypedef);
  } else if (st.declaration == DECLARES_EVENT) {
    MakeTag(st, token, isPrivate, cEvent);
  } else if (st.declaration == DECLARES_PACKAGE) {
    MakeTag(st, token, false, cPackage);
  } else if (!IsTypeSpecifier(st.declaration) || st.seen.cannotBeVariable) {
    return;
  } else if (st.IsMember()) {
    if (IsJavaOrCSharp())
      MakeTag(st, token, isPrivate, cField);
    else if (IsCOrCpp() && !HasTypeOfMember(st, token))
      NoteMemberMacro(st, token);
    else if (st.scope == SCOPEKIND_GLOBAL || isStatic)
      MakeTag(st, token, true, cMember);
  } else if (st.scope == SCOPEKIND_EXTERN || !st.seen.typeSeen) {
    MakeTag(st, token, false, cExternVar);
  } else {
    MakeTag(st, token, isStatic, st.seen.inFunction ? cLocal : cVariable);
  }
}

void TagC::NoteMemberMacro(Statement& st, const Token& token) {
  FindFullScope(st);
  theTagParser.AddMemberMacro(fullScope, token.name);
}

// False for a word alone in a class, which is a macro.
bool TagC::HasTypeOfMember(Statement& st, const Token& token) const {
  return st.isPartial || st.TokensBefore() == 0 || st.seen.parenNameSeen || st.context.IsName() ||
         &token != &st.earlierToken(st.TokensBefore());
}

void TagC::MakeTag(Statement& st, const Token& token, bool isFileScope, TagType type) {
  isFileScope = isFileScope && !isHeader;
  if (!token.IsName() || token.name.empty() || !IsKindEnabled(language, type)) return;
  if (isFileScope && !theTagParser.keepFilePrivate) return;
  FindFullScope(st);
  const TagKind& kind = KindOf(language, type);
  TagFacts facts;
  facts.lineNumber = token.lineNumber;
  facts.isFileScope = isFileScope;
  facts.name = token.name;
  facts.kindName = kind.name;
  facts.kind = kind.letter;
  if (HasExtraFields(type)) FillExtra(facts, st, type);
  SetTypeRef(facts, st);
  facts.blockType = st.blockType;
  if (IsClassLike(type)) {
    fullName = fullScope;
    PutAfter(fullName, token.name, Separator());
    facts.scopeName = fullName;
  }
  theTagParser.addTag(facts);
  if (theTagParser.addQualifiedTag) AddQualified(facts, type);
}

// Joins the names of the blocks around a statement, from those around its parent.
void TagC::FindScope(Statement& st) {
  if (st.isScopeKnown) return;
  st.isScopeKnown = true;
  st.hasRealName = false;
  st.outerScope.clear();
  st.outerNamespace.clear();
  Statement* parent = st.parent;
  if (parent == nullptr) return;
  FindScope(*parent);
  st.outerScope = parent->outerScope;
  st.outerNamespace = parent->outerNamespace;
  st.hasRealName = parent->hasRealName;
  if (!IsPartOfScope(parent->declaration)) return;
  std::string part;
  if (parent->context.IsName()) part = parent->context.name;
  const bool isNamed = parent->openedName.IsName();
  PutAfter(part, isNamed ? std::string_view(parent->openedName.name) : "<anonymous>", Separator());
  st.hasRealName = st.hasRealName || isNamed || parent->context.IsName();
  PutAfter(IsNamespaceLike(parent->declaration) ? st.outerNamespace : st.outerScope, part,
           Separator());
}

void TagC::FindFullScope(Statement& st) {
  FindScope(st);
  const bool hasContext = st.context.IsName();
  fullScope.clear();
  fullNamespace = st.outerNamespace;
  if (st.hasRealName || hasContext) fullScope = st.outerScope;
  if (!hasContext) return;
  // The qualifier of a namespace is a namespace too: `namespace a::b {`.
  PutAfter(st.declaration == DECLARES_NAMESPACE ? fullNamespace : fullScope, st.context.name,
           Separator());
}

void TagC::FillExtra(TagFacts& facts, const Statement& st, TagType type) {
  if (IsFunctionLike(type) && !argText.empty()) facts.signature = argText;
  const bool hasContext = st.context.IsName();
  const bool isInNamespace = st.parent != nullptr && IsNamespaceLike(st.parent->declaration);
  const bool isInScope = hasContext || st.HasContextualParent() || isInNamespace;
  if (!fullScope.empty() && isInScope) {
    facts.scopeKind = KindName(language, hasContext ? cClass : TagTypeOf(st.parent->declaration));
    facts.scopeName = fullScope;
  }
  if (!fullNamespace.empty()) facts.namespaceName = fullNamespace;
  const bool hasBases = type == cClass || type == cInterface || type == cStruct;
  if (hasBases && !st.baseNames.empty()) facts.inheritance = st.baseNames;
  if (hasBases) facts.hiddenBases = st.hiddenBases;
  const bool tellsImplementation = IsCpp() || IsJavaOrCSharp();
  if (tellsImplementation && st.implementation != IMP_DEFAULT)
    facts.implementation = ImplementationText(st.implementation);
  if (!st.IsMember()) return;
  if (IsCpp() && st.scope == SCOPEKIND_FRIEND)
    facts.access = cFriendAccess;
  else if (st.access != ACCESS_UNKNOWN)
    facts.access = AccessText(st.access);
}

// The word before the name; a qualifier or a name in capitals gives way to a type before it. After
// a comma there is none, and the type of the tag before is used.
void TagC::SetTypeRef(TagFacts& facts, Statement& st) {
  const auto isName = [&](int n) {
    return st.earlierToken(n).IsName() && st.earlierToken(n).name == facts.name;
  };
  const int known = st.TokensBefore();
  int n = 0;
  while (n <= known && !isName(n)) ++n;
  if (++n > known) {
    if (tokenAtLastTag == TOKEN_COMMA) facts.typeRef = "@";
  } else if (const Token& type = TypeAt(st, n); type.IsName() || type.Is(TOKEN_KEYWORD)) {
    facts.typeRef = type.name;
  }
  tokenAtLastTag = st.activeToken().type;
}

const Token& TagC::TypeAt(Statement& st, int n) const {
  const Token& nearest = st.earlierToken(n);
  const bool mayGiveWay = nearest.IsKeyword(Keyword::cConst) ||
                          nearest.IsKeyword(Keyword::cVolatile) ||
                          (nearest.IsName() && IsInCapitals(nearest.name));
  if (!mayGiveWay || IsJavaOrCSharp()) return nearest;
  for (++n; n <= st.TokensBefore(); ++n) {
    const Token& token = st.earlierToken(n);
    if (IsTypeWord(token) && !token.Is(TOKEN_BRACE_CLOSE) && !IsInCapitals(token.name))
      return token;
  }
  return nearest;
}

// The same tag under its qualified name. An enumerator belongs to the scope that its enumeration is
// in.
void TagC::AddQualified(TagFacts facts, TagType type) {
  if (facts.scopeKind.data() == nullptr) return;
  std::string name = fullScope;
  if (type == cEnumerator) {
    const size_t last = name.rfind("::");
    name.resize(last == name.npos ? 0 : last);
  }
  PutAfter(name, facts.name, Separator());
  facts.name = name;
  theTagParser.addTag(facts);
}

}  // namespace zendry
