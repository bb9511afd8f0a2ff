#include "LibraryReader.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace zendry {

namespace {

enum Access { cPrivate, cProtected, cPublic };

// Words before a declaration that say nothing about its type.
constexpr std::string_view cSpecifiers[] = {"constexpr", "consteval",    "constinit", "inline",
                                            "virtual",   "mutable",      "extern",    "register",
                                            "typename",  "thread_local", "noexcept"};
constexpr std::string_view cClassKeys[] = {"class", "struct", "union"};
// Words followed by brackets that are not a parameter list.
constexpr std::string_view cTypeFunctions[] = {"decltype", "noexcept", "explicit", "__typeof__",
                                               "__decltype"};

// The state of reading a declaration other than a class.
struct Declaration {
  LibraryMember member;
  std::vector<std::string> furtherNames;  // of data
  bool isFriend = false;
  bool isUnclear = false;  // for example a pointer to a function
};

class LibraryParser {
 public:
  LibraryParser(const CppTokens& tokens, std::string space, std::vector<std::string> leftOut,
                bool withProtected)
      : cursor(tokens),
        space(std::move(space)),
        leftOut(std::move(leftOut)),
        leastAccess(withProtected ? cProtected : cPublic) {}

  Library Read() {
    while (!cursor.AtEnd()) {
      ReadNamespaceMember(space.empty());
      cursor.Accept("}");
    }
    for (size_t i = 0; i < library.classes.size(); ++i)
      library.byName.try_emplace(library.classes[i].name, i);
    return std::move(library);
  }

 private:
  // Group: outside of classes.

  void ReadNamespaceMember(bool isInside) {
    cursor.SkipAttributes();
    if (cursor.Is("namespace") || (cursor.Is("inline") && cursor.Peek(1).Is("namespace")))
      return ReadNamespace(isInside);
    if (cursor.Is("extern") && cursor.Peek(1).kind == CppToken::Kind::cLiteral &&
        cursor.Peek(2).Is("{")) {
      cursor.position += 3;
      return ReadMembersUntilBrace(isInside);
    }
    if (cursor.Is("extern") && cursor.Peek(1).Is("template")) return cursor.SkipStatement();
    if (!SkipTemplateHeads()) return;
    if (cursor.Is("using")) return ReadAlias(isInside);
    if (cursor.Is("typedef")) return ReadNamespaceTypedef(isInside);
    if (LibraryClass found; ReadClass(found)) {
      if (found.isOpenEnum) AddEnumerators(found, isInside);
      return AddClass(std::move(found), isInside);
    }
    AddDeclared(ReadDeclaration(), isInside);
  }

  void AddName(LibraryName::Kind kind, LibraryMember member, bool isInside) {
    if (!member.name.empty() && member.name.front() != '_')
      library.names.push_back({kind, currentSpace, isInside, std::move(member)});
  }

  void AddEnumerators(const LibraryClass& found, bool isInside) {
    for (const LibraryMember& member : found.members)
      AddName(LibraryName::cEnumerator, member, isInside);
  }

  // Neither definitions of members nor classes that are only announced.
  void AddDeclared(Declaration declaration, bool isInside) {
    LibraryMember& member = declaration.member;
    const bool isFunction = member.kind == LibraryMember::cFunction;
    if (declaration.isUnclear || member.type.empty() || member.isDeleted) return;
    if (member.type.back().Is("::") || member.name.starts_with("operator")) return;
    if (!isFunction && member.type.size() == 1 && IsOneOf(member.type[0], cClassKeys)) return;
    for (std::string& name : declaration.furtherNames) {
      LibraryMember further = member;
      further.name = std::move(name);
      AddName(LibraryName::cDeclared, std::move(further), isInside);
    }
    AddName(LibraryName::cDeclared, std::move(member), isInside);
  }

  void ReadMembersUntilBrace(bool isInside) {
    while (!cursor.AtEnd() && !cursor.Accept("}")) ReadNamespaceMember(isInside);
  }

  void ReadNamespace(bool isInside) {
    const bool isInline = cursor.Accept("inline");
    cursor.Next();
    cursor.SkipAttributes();
    std::string name;
    bool isOurs = isInside;
    while (cursor.Peek().kind == CppToken::Kind::cWord && !cursor.Is("__attribute__")) {
      name = cursor.Next().text;
      isOurs = isOurs || name == space;
      cursor.Accept("::");
      cursor.Accept("inline");
    }
    cursor.SkipAttributes();
    if (!cursor.Is("{")) return cursor.SkipStatement();
    // Later openings of the namespace omit the word.
    if (isInline) inlineSpaces.insert(name);
    const bool isHidden =
        !inlineSpaces.contains(name) && (name.empty() || name.front() == '_' ||
                                         std::count(leftOut.begin(), leftOut.end(), name) > 0);
    if (isHidden || !isOurs) return cursor.SkipBalanced();
    cursor.Next();
    std::string outer = currentSpace;
    if (!isInline && !inlineSpaces.contains(name)) currentSpace = name;
    ReadMembersUntilBrace(true);
    currentSpace = std::move(outer);
  }

  // False when the declaration was only an instantiation or a concept.
  bool SkipTemplateHeads() {
    while (cursor.Accept("template")) {
      if (!cursor.Is("<")) {
        cursor.SkipStatement();
        return false;
      }
      cursor.SkipAngles();
      if (cursor.Is("requires")) cursor.SkipRequires();
    }
    if (cursor.Is("concept")) {
      cursor.SkipStatement();
      return false;
    }
    cursor.SkipAttributes();
    return true;
  }

  CppTokens TakeStatement() {
    CppTokens tokens;
    while (!cursor.AtEnd() && !cursor.Is(";") && !cursor.Is("}")) {
      const size_t start = cursor.position;
      cursor.SkipBalanced();
      for (const size_t end = std::exchange(cursor.position, start); cursor.position < end;)
        tokens.push_back(cursor.Next());
    }
    cursor.Accept(";");
    return tokens;
  }

  // The parts of "using NAME = TYPE;"; the name is empty for other declarations with "using".
  LibraryAlias TakeAlias() {
    cursor.Next();
    LibraryAlias alias;
    alias.header = cursor.Peek().header;
    if (cursor.Peek().kind == CppToken::Kind::cWord) {
      alias.name = cursor.Next().text;
      cursor.SkipAttributes();
      if (!cursor.Accept("=")) alias.name.clear();
    }
    alias.type = TakeStatement();
    return alias;
  }

  // The same for "typedef TYPE NAME;".
  LibraryAlias TakeTypedef() {
    cursor.Next();
    LibraryAlias alias;
    alias.header = cursor.Peek().header;
    alias.type = TakeStatement();
    const auto isBracket = [](const CppToken& token) { return token.Is("(") || token.Is("["); };
    if (alias.type.size() < 2 || alias.type.back().kind != CppToken::Kind::cWord ||
        std::any_of(alias.type.begin(), alias.type.end(), isBracket))
      return alias;
    alias.name = alias.type.back().text;
    alias.type.pop_back();
    return alias;
  }

  void ReadAlias(bool isInside) { AddAlias(TakeAlias(), isInside); }

  // "typedef struct {...} NAME;" makes a class.
  void ReadNamespaceTypedef(bool isInside) {
    const size_t start = cursor.position;
    cursor.Next();
    LibraryClass found;
    const bool isClass = ReadClassAndBody(found);
    const CppToken name = cursor.Peek();
    if (!isClass || name.kind != CppToken::Kind::cWord || !cursor.Peek(1).Is(";")) {
      cursor.position = start;
      return AddAlias(TakeTypedef(), isInside);
    }
    cursor.SkipStatement();
    if (found.isOpenEnum) AddEnumerators(found, isInside);
    const std::string tag = std::exchange(found.name, std::string(name.text));
    AddClass(found, isInside);
    found.name = tag;
    if (tag != name.text) AddClass(std::move(found), isInside);
  }

  void AddAlias(LibraryAlias alias, bool isInside) {
    const bool isElsewhere = alias.name.empty() && alias.type.size() == 2 && alias.type[0].Is("::");
    LibraryMember member;
    member.kind = LibraryMember::cType;
    member.name = isElsewhere ? std::string(alias.type[1].text) : alias.name;
    member.type = alias.type;
    if (member.name.starts_with('_')) library.hiddenTypes[member.name] = alias.type;
    AddName(isElsewhere ? LibraryName::cElsewhere : LibraryName::cType, std::move(member),
            isInside);
    if (isInside && !alias.name.empty() && alias.name.front() != '_')
      library.aliases.push_back(std::move(alias));
  }

  // True for classes whose specialisations have members that the primary definition lacks.
  static bool IsMerged(const std::string& name) { return name == "atomic" || name == "atomic_ref"; }

  // Appends those members and bases whose names the class doesn't have.
  static void Merge(LibraryClass& into, const LibraryClass& other) {
    std::set<std::string> names;
    for (const LibraryMember& member : into.members) names.insert(member.name);
    for (const LibraryMember& member : other.members)
      if (!names.contains(member.name)) into.members.push_back(member);
    for (const LibraryBase& base : other.bases) {
      const auto isSame = [&](const LibraryBase& old) { return old.name == base.name; };
      if (std::none_of(into.bases.begin(), into.bases.end(), isSame)) into.bases.push_back(base);
    }
  }

  // A primary definition replaces a specialisation that came before it.
  void AddClass(LibraryClass found, bool isInside) {
    if (!isInside || found.name.empty()) return;
    found.space = currentSpace;
    const auto same = std::find_if(library.classes.begin(), library.classes.end(),
                                   [&](const LibraryClass& old) { return old.name == found.name; });
    if (same == library.classes.end())
      library.classes.push_back(std::move(found));
    else if (same->isSpecialisation && !found.isSpecialisation)
      *same = std::move(found);
    else if (IsMerged(found.name))
      Merge(*same, found);
  }

  // Group: classes and enumerations.

  // Reads a whole definition. False, with nothing read, when the next declaration is not one.
  bool ReadClass(LibraryClass& found) {
    if (!ReadClassAndBody(found)) return false;
    cursor.SkipStatement();
    return true;
  }

  // The same up to the "}".
  bool ReadClassAndBody(LibraryClass& found) {
    const size_t start = cursor.position;
    const bool isEnum = cursor.Is("enum");
    if (!isEnum && !IsOneOf(cursor.Peek(), cClassKeys)) return false;
    const Access access = cursor.Is("class") ? cPrivate : cPublic;
    cursor.Next();
    const bool isScoped = isEnum && (cursor.Accept("class") || cursor.Accept("struct"));
    cursor.SkipAttributes();
    const CppToken name = cursor.Peek();
    found.header = name.header;
    found.isOpenEnum = isEnum && !isScoped;
    ReadClassName(found);
    cursor.Accept("final");
    const bool isDefinition = cursor.Is("{") || cursor.Is(":");
    if (!isDefinition) {
      cursor.position = start;
      return false;
    }
    if (isEnum)
      ReadEnumerators(found, name);
    else
      ReadBody(found, access);
    return true;
  }

  void ReadClassName(LibraryClass& found) {
    bool isQualified = false;
    while (cursor.Peek().kind == CppToken::Kind::cWord && !cursor.Is("final")) {
      found.name = cursor.Next().text;
      if (cursor.Is("<")) {
        cursor.SkipAngles();
        found.isSpecialisation = true;
      }
      isQualified |= cursor.Accept("::");
    }
    // A qualified name defines a class that was declared inside another class.
    if (isQualified) found.name.clear();
  }

  void ReadEnumerators(LibraryClass& found, const CppToken& name) {
    const CppToken type =
        found.name.empty() ? CppToken{CppToken::Kind::cWord, "int", found.header} : name;
    while (!cursor.AtEnd() && !cursor.Is("{") && !cursor.Is(";")) cursor.Next();
    if (!cursor.Accept("{")) return;
    while (!cursor.AtEnd() && !cursor.Accept("}")) {
      LibraryMember member;
      member.name = cursor.Next().text;
      member.isStatic = true;
      member.type = {type};
      found.members.push_back(std::move(member));
      while (!cursor.AtEnd() && !cursor.Is(",") && !cursor.Is("}")) cursor.SkipBalanced();
      cursor.Accept(",");
    }
  }

  void ReadBases(LibraryClass& found, Access access) {
    while (!cursor.AtEnd() && !cursor.Is("{")) {
      Access baseAccess = access;
      LibraryBase base;
      while (!cursor.AtEnd() && !cursor.Is("{") && !cursor.Accept(",")) {
        const size_t start = cursor.position;
        if (cursor.Accept("public"))
          baseAccess = cPublic;
        else if (cursor.Accept("protected"))
          baseAccess = cProtected;
        else if (cursor.Accept("private"))
          baseAccess = cPrivate;
        else if (cursor.Is("<"))
          cursor.SkipAngles();
        else if (cursor.Peek().kind == CppToken::Kind::cWord)
          base.name = cursor.Next().text;
        else
          cursor.Next();
        for (size_t end = std::exchange(cursor.position, start); cursor.position < end;)
          base.type.push_back(cursor.Next());
      }
      if (baseAccess == cPublic) found.bases.push_back(std::move(base));
    }
  }

  void ReadBody(LibraryClass& found, Access access) {
    if (cursor.Accept(":")) ReadBases(found, access);
    cursor.Next();
    while (!cursor.AtEnd() && !cursor.Accept("}")) {
      const size_t start = cursor.position;
      if (!ReadAccess(access)) ReadMember(found, access >= leastAccess);
      if (cursor.position == start) cursor.Next();
    }
  }

  bool ReadAccess(Access& access) {
    if (!cursor.Peek(1).Is(":")) return false;
    if (cursor.Is("public"))
      access = cPublic;
    else if (cursor.Is("protected"))
      access = cProtected;
    else if (cursor.Is("private"))
      access = cPrivate;
    else
      return false;
    cursor.position += 2;
    return true;
  }

  void ReadMember(LibraryClass& owner, bool isKept) {
    cursor.SkipAttributes();
    const bool isTemplate = cursor.Is("template");
    if (!SkipTemplateHeads()) return;
    if (cursor.Accept(";")) return;
    if (cursor.Is("static_assert") || cursor.Is("friend")) return SkipDeclaration();
    if (cursor.Is("using") || cursor.Is("typedef")) {
      LibraryAlias alias = cursor.Is("using") ? TakeAlias() : TakeTypedef();
      if (isKept && !isTemplate) AddType(owner, std::move(alias));
      return;
    }
    if (LibraryClass inner; ReadClass(inner)) {
      if (isKept) AddNested(owner, std::move(inner));
      return;
    }
    if (IsForwardDeclaration()) return cursor.SkipStatement();
    Declaration declaration = ReadDeclaration();
    if (isKept) AddMember(owner, std::move(declaration));
  }

  bool IsForwardDeclaration() const {
    return (IsOneOf(cursor.Peek(), cClassKeys) || cursor.Is("enum")) && cursor.Peek(2).Is(";");
  }

  // "using Base::name;" makes a member of the base public.
  static void AddUsed(LibraryClass& owner, const CppTokens& tokens) {
    if (tokens.size() < 2 || tokens.back().kind != CppToken::Kind::cWord) return;
    LibraryMember member;
    member.kind = LibraryMember::cFunction;
    member.name = tokens.back().text;
    if (!tokens[tokens.size() - 2].Is("::")) return;
    member.type = {{CppToken::Kind::cWord, "auto", -1}};
    owner.members.push_back(std::move(member));
  }

  static void AddType(LibraryClass& owner, LibraryAlias alias) {
    if (alias.name.empty()) return AddUsed(owner, alias.type);
    LibraryMember member;
    member.kind = LibraryMember::cType;
    member.name = std::move(alias.name);
    member.type = std::move(alias.type);
    owner.members.push_back(std::move(member));
  }

  // The members of a union without a name, and the values of an enumeration, become the owner's.
  static void AddNested(LibraryClass& owner, LibraryClass inner) {
    if (inner.name.empty() || inner.isOpenEnum)
      owner.members.insert(owner.members.end(), inner.members.begin(), inner.members.end());
    if (!inner.name.empty() && !inner.isSpecialisation) owner.nested.push_back(std::move(inner));
  }

  static void AddMember(LibraryClass& owner, Declaration declaration) {
    LibraryMember& member = declaration.member;
    if (declaration.isFriend || declaration.isUnclear || member.name.empty() || member.isDeleted)
      return;
    for (std::string& name : declaration.furtherNames) {
      owner.members.push_back(member);
      owner.members.back().name = std::move(name);
    }
    owner.members.push_back(std::move(member));
  }

  // Group: functions and data.

  void SkipDeclaration() { ReadDeclaration(); }

  // Reads to the end of a declaration, its body included.
  Declaration ReadDeclaration() {
    Declaration declaration;
    const size_t start = cursor.position;
    while (!cursor.AtEnd() && !cursor.Is("}")) {
      if (cursor.Accept(";")) return Finished(std::move(declaration));
      if (cursor.Is("(") && !EndsTypeFunction(start)) {
        ReadFunction(declaration);
        return declaration;
      }
      if (!ReadHeadToken(declaration)) break;
    }
    return Finished(std::move(declaration));
  }

  bool EndsTypeFunction(size_t start) {
    if (cursor.position == start) return false;
    --cursor.position;
    const bool ends = IsOneOf(cursor.Peek(), cTypeFunctions);
    ++cursor.position;
    return ends;
  }

  // Reads one token, or several that belong together, before the parameters. False at the end of
  // the declaration.
  bool ReadHeadToken(Declaration& declaration) {
    LibraryMember& member = declaration.member;
    cursor.SkipAttributes();
    if (cursor.Is("operator")) {
      member.name = ReadOperatorName();
      return true;
    }
    if (cursor.Is("requires")) {
      cursor.SkipRequires();
      return true;
    }
    if (cursor.Is("=") || cursor.Is("{") || cursor.Is(":")) return SkipInitialiser();
    if (cursor.Is(",")) {
      declaration.furtherNames.push_back(TakeDataName(member));
      cursor.Next();
      return true;
    }
    if (cursor.Is("[") || cursor.Is("(")) {
      cursor.SkipBalanced();
      return true;
    }
    const size_t start = cursor.position;
    if (cursor.Is("<"))
      cursor.SkipAngles();
    else
      cursor.Next();
    for (const size_t end = std::exchange(cursor.position, start); cursor.position < end;)
      AddHeadToken(declaration, cursor.Next());
    return true;
  }

  static void AddHeadToken(Declaration& declaration, const CppToken& token) {
    if (token.Is("static"))
      declaration.member.isStatic = true;
    else if (token.Is("friend"))
      declaration.isFriend = true;
    else if (!IsOneOf(token, cSpecifiers) && !token.Is("explicit"))
      declaration.member.type.push_back(token);
  }

  // Moves over "= VALUE", "{ VALUE }" or ": BITS". The declaration is not a function then.
  bool SkipInitialiser() {
    const bool isBraced = cursor.Is("{");
    if (isBraced) {
      cursor.SkipBalanced();
      return true;
    }
    while (!cursor.AtEnd() && !cursor.Is(";") && !cursor.Is(",") && !cursor.Is("}")) {
      if (cursor.Is("<"))
        cursor.Next();
      else
        cursor.SkipBalanced();
    }
    return true;
  }

  std::string ReadOperatorName() {
    cursor.Next();
    std::string name = "operator ";
    if (cursor.Is("(") && cursor.Peek(1).Is(")")) {
      cursor.position += 2;
      return name + "()";
    }
    bool afterName = false;
    while (!cursor.AtEnd() && !cursor.Is("(") && !cursor.Is(";")) {
      const CppToken& token = cursor.Next();
      const bool isName = token.kind == CppToken::Kind::cWord;
      if (isName && afterName) name += ' ';
      name += token.text;
      afterName = isName;
    }
    return name;
  }

  static std::string TakeDataName(LibraryMember& member) {
    if (member.type.empty() || member.type.back().kind != CppToken::Kind::cWord) return "";
    std::string name(member.type.back().text);
    member.type.pop_back();
    return name;
  }

  static Declaration Finished(Declaration declaration) {
    LibraryMember& member = declaration.member;
    if (member.name.empty()) member.name = TakeDataName(member);
    if (member.type.empty()) declaration.isUnclear = true;
    return declaration;
  }

  // Reads from the opening parenthesis on.
  void ReadFunction(Declaration& declaration) {
    LibraryMember& member = declaration.member;
    member.kind = LibraryMember::cFunction;
    declaration.isUnclear =
        member.name.empty() && (cursor.Peek(1).Is("*") || cursor.Peek(1).Is("&"));
    if (member.name.empty()) TakeFunctionName(member);
    const size_t start = cursor.position + 1;
    cursor.SkipBalanced();
    const size_t end = cursor.position;
    for (cursor.position = start; cursor.position + 1 < end;)
      member.parameters.push_back(cursor.Next());
    cursor.position = end;
    ReadFunctionTail(member);
  }

  static void TakeFunctionName(LibraryMember& member) {
    member.name = TakeDataName(member);
    if (!member.type.empty() && member.type.back().Is("~")) {
      member.type.pop_back();
      member.name.insert(0, "~");
    }
  }

  // Reads from the end of the parameters to the end of the body or the ";".
  void ReadFunctionTail(LibraryMember& member) {
    while (!cursor.AtEnd() && !cursor.Is("}")) {
      if (cursor.Accept(";")) return;
      if (cursor.Is("{")) return cursor.SkipBalanced();
      if (cursor.Is(":")) return SkipInitialisersAndBody();
      if (cursor.Accept("const"))
        member.isConst = true;
      else if (cursor.Accept("->"))
        ReadTrailingType(member);
      else if (cursor.Accept("="))
        member.isDeleted = cursor.Is("delete");
      else if (cursor.Is("requires"))
        cursor.SkipRequires();
      else if (cursor.Is("[") || cursor.Is("("))
        cursor.SkipBalanced();
      else
        cursor.Next();
    }
  }

  void ReadTrailingType(LibraryMember& member) {
    member.type.clear();
    while (!cursor.AtEnd() && !cursor.Is(";") && !cursor.Is("{") && !cursor.Is("requires")) {
      const size_t start = cursor.position;
      cursor.SkipBalanced();
      for (const size_t end = std::exchange(cursor.position, start); cursor.position < end;)
        member.type.push_back(cursor.Next());
    }
  }

  // Moves over ": member(value), member{value} { body }".
  void SkipInitialisersAndBody() {
    do {
      cursor.Next();
      while (!cursor.AtEnd() && !cursor.Is("(") && !cursor.Is("{")) {
        if (cursor.Is("<"))
          cursor.SkipAngles();
        else
          cursor.Next();
      }
      cursor.SkipBalanced();
      cursor.Accept("...");
    } while (cursor.Is(","));
    if (cursor.Is("{")) cursor.SkipBalanced();
  }

  CppCursor cursor;
  const std::string space;
  const std::vector<std::string> leftOut;
  const Access leastAccess;
  std::set<std::string> inlineSpaces;
  std::string currentSpace;
  Library library;
};

}  // namespace

Library ReadLibrary(const CppTokens& tokens, const std::string& space,
                    const std::vector<std::string>& leftOut, bool withProtected) {
  return LibraryParser(tokens, space, leftOut, withProtected).Read();
}

}  // namespace zendry
