#include "tags/TagStatement.h"

#include "Assert.h"

namespace zendry {
namespace {

constexpr std::string_view cImplementations[] = {"?", "abstract", "virtual", "pure virtual"};
static_assert(std::size(cImplementations) == IMP_COUNT);

constexpr std::string_view cAccesses[] = {"???",       "local",  "private",
                                          "protected", "public", "default"};
static_assert(std::size(cAccesses) == ACCESS_COUNT);

struct DeclarationRow {
  Declaration declaration;
  bool isContextual;
  bool isTypeSpecifier;
  bool isPartOfScope;
  bool isReadBlock;
  TagType tag;
};

using enum TagType;

constexpr DeclarationRow cDeclarations[] = {
    {DECLARES_NONE, false, false, false, false, cUndefined},
    {DECLARES_BASE, false, true, false, false, cUndefined},
    {DECLARES_CLASS, true, true, true, true, cClass},
    {DECLARES_ENUM, true, true, true, true, cEnum},
    {DECLARES_EVENT, false, true, false, false, cEvent},
    {DECLARES_FUNCTION, false, false, false, false, cFunction},
    {DECLARES_IGNORE, false, false, false, false, cUndefined},
    {DECLARES_INTERFACE, true, false, true, true, cInterface},
    {DECLARES_NAMESPACE, false, false, true, true, cNamespace},
    {DECLARES_PLAIN_NAMES, false, false, false, true, cUndefined},
    {DECLARES_PACKAGE, false, false, false, false, cPackage},
    {DECLARES_PROGRAM, false, false, true, false, cProgram},
    {DECLARES_STRUCT, true, true, true, true, cStruct},
    {DECLARES_TASK, false, false, false, false, cTask},
    {DECLARES_UNION, true, true, true, true, cUnion},
};
static_assert(std::size(cDeclarations) == DECLARES_COUNT);

const DeclarationRow& RowOf(Declaration declaration) {
  return cDeclarations[declaration];
}

Access DefaultAccess(const Statement* parent, Language language) {
  if (parent == nullptr) return ACCESS_UNKNOWN;
  switch (parent->declaration) {
    case DECLARES_INTERFACE:
    case DECLARES_STRUCT:
      return ACCESS_PUBLIC;
    case DECLARES_CLASS:
      return language == Language::cJava ? ACCESS_DEFAULT : ACCESS_PRIVATE;
    default:
      return ACCESS_UNKNOWN;
  }
}

}  // namespace

std::string_view ImplementationText(Implementation imp) {
  MAVRO_ASSERT_AS(static_cast<int>(imp) < IMP_COUNT, "(int) imp < IMP_COUNT");
  return cImplementations[imp];
}

std::string_view AccessText(Access access) {
  MAVRO_ASSERT_AS(static_cast<int>(access) < ACCESS_COUNT, "(int) access < ACCESS_COUNT");
  return cAccesses[access];
}

bool IsContextual(Declaration declaration) {
  return RowOf(declaration).isContextual;
}

bool IsTypeSpecifier(Declaration declaration) {
  return RowOf(declaration).isTypeSpecifier;
}

bool IsPartOfScope(Declaration declaration) {
  return RowOf(declaration).isPartOfScope;
}

bool IsReadBlock(Declaration declaration) {
  return RowOf(declaration).isReadBlock;
}

TagType TagTypeOf(Declaration declaration) {
  const TagType type = RowOf(declaration).tag;
  MAVRO_ASSERT_AS(type != cUndefined, "\"Unexpected declaration\" == NULL");
  return type;
}

bool IsForwardWord(const Token& token) {
  if (!token.Is(TOKEN_KEYWORD)) return false;
  switch (token.keyword) {
    case Keyword::cClass:
    case Keyword::cEnum:
    case Keyword::cInterface:
    case Keyword::cNamespace:
    case Keyword::cStruct:
    case Keyword::cUnion:
      return true;
    default:
      return false;
  }
}

void Statement::Start(Statement* outer, Language language, int line) {
  parent = outer;
  defaultAccess = DefaultAccess(parent, language);
  isScopeKnown = false;
  resetStatement(false, line);
}

void Statement::resetStatement(bool partial, int line) {
  if (!partial) {
    scope = SCOPEKIND_GLOBAL;
    declaration = HasContextualParent() ? DECLARES_BASE : DECLARES_NONE;
    access = defaultAccess;
    blockType.clear();
  }
  isPartial = partial;
  seen = {};
  seen.inFunction = parent != nullptr && parent->seen.inFunction;
  implementation = IMP_DEFAULT;
  tokenIndex = stepCount = 0;
  for (Token& each : token) each.Reset(line);
  context.Reset(line);
  openedName.Reset(line);
  baseNames.clear();
  hiddenBases.clear();
}

void Statement::stepTokenForward(int line) {
  tokenIndex = tokenIndex == cRing - 1 ? 0 : tokenIndex + 1;
  ++stepCount;
  activeToken().Reset(line);
}

void Statement::stepTokenBack(int line) {
  tokenIndex = tokenIndex == 0 ? cRing - 1 : tokenIndex - 1;
  if (stepCount > 0) --stepCount;
  activeToken().Reset(line);
}

void Statement::markToken(TokenType type, int line) {
  activeToken().Reset(line);
  activeToken().type = type;
}

void Statement::noteName() {
  MAVRO_ASSERT_AS(activeToken().IsName(), "isType (activeToken (st), TOKEN_NAME)");
  if (seen.nameSeen && declaration == DECLARES_NONE) declaration = DECLARES_BASE;
  seen.nameSeen = seen.typeSeen = true;
}

bool Statement::HasContextualParent() const {
  return parent != nullptr && IsContextual(parent->declaration);
}

bool Statement::IsParent(Declaration which) const {
  return parent != nullptr && parent->declaration == which;
}

}  // namespace zendry
