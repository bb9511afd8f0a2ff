#pragma once

#include <array>
#include <string>
#include <string_view>

#include "Assert.h"
#include "tags/TagKeywords.h"
#include "tags/TagLanguages.h"

namespace zendry {

enum TokenType {
  TOKEN_NONE = 0,
  TOKEN_ARGS = 1,  // a parameter list
  TOKEN_BRACE_CLOSE = 2,
  TOKEN_BRACE_OPEN = 3,
  TOKEN_COMMA = 5,
  TOKEN_DOUBLE_COLON = 6,
  TOKEN_KEYWORD = 7,
  TOKEN_NAME = 8,
  TOKEN_PAREN_NAME = 10,  // a name alone in parentheses
  TOKEN_SEMICOLON = 11
};

enum ScopeKind {
  SCOPEKIND_GLOBAL,
  SCOPEKIND_STATIC,
  SCOPEKIND_EXTERN,
  SCOPEKIND_FRIEND,
  SCOPEKIND_TYPEDEF
};

enum Declaration {
  DECLARES_NONE,
  DECLARES_BASE,  // something of a base type
  DECLARES_CLASS,
  DECLARES_ENUM,
  DECLARES_EVENT,
  DECLARES_FUNCTION,
  DECLARES_IGNORE,
  DECLARES_INTERFACE,
  DECLARES_NAMESPACE,
  DECLARES_PLAIN_NAMES,  // extern "C"
  DECLARES_PACKAGE,
  DECLARES_PROGRAM,
  DECLARES_STRUCT,
  DECLARES_TASK,
  DECLARES_UNION,
  DECLARES_COUNT
};

enum Implementation { IMP_DEFAULT, IMP_ABSTRACT, IMP_VIRTUAL, IMP_PURE_VIRTUAL, IMP_COUNT };

enum Access {
  ACCESS_UNKNOWN,
  ACCESS_LOCAL,
  ACCESS_PRIVATE,
  ACCESS_PROTECTED,
  ACCESS_PUBLIC,
  ACCESS_DEFAULT,
  ACCESS_COUNT
};

std::string_view ImplementationText(Implementation imp);
std::string_view AccessText(Access access);
// True if the declaration's block is a class or the like, so that names in it are members.
bool IsContextual(Declaration declaration);
// True if a variable or a prototype can be declared with it.
bool IsTypeSpecifier(Declaration declaration);
// True if the name of a block of this declaration is part of the qualified names within it.
bool IsPartOfScope(Declaration declaration);
// True if a block of this declaration is read, whatever else is skipped.
bool IsReadBlock(Declaration declaration);
// The type of a declaration's tag; the declaration must have one.
TagType TagTypeOf(Declaration declaration);

struct Token {
  bool Is(TokenType which) const { return type == which; }
  bool IsName() const { return type == TOKEN_NAME; }
  bool IsKeyword(Keyword which) const { return type == TOKEN_KEYWORD && keyword == which; }
  void Reset(int line) {
    type = TOKEN_NONE;
    keyword = Keyword::cNone;
    modern = ModernWord::cNone;
    lineNumber = line;
    name.clear();
  }

  TokenType type = TOKEN_NONE;
  Keyword keyword = Keyword::cNone;
  ModernWord modern = ModernWord::cNone;
  std::string name;
  int lineNumber = 0;
};

// True for the keyword of a class or the like: `class A;` announces a name and declares nothing.
bool IsForwardWord(const Token& token);

// The state of the statement that is being read at one level of blocks.
struct Statement {
  static constexpr int cRing = 7;  // as many tokens are remembered

  struct Flags {
    bool nameSeen = false;
    bool typeSeen = false;
    bool parenNameSeen = false;
    bool argsSeen = false;
    bool isPointer = false;
    bool inFunction = false;
    bool assignment = false;
    bool cannotBeVariable = false;
    bool bodyInMacro = false;  // a macro after the parameters is the function's body
    bool isQualified = false;  // colons come before the next name
  };

  // Begins a block within `outer`, null at the first level.
  void Start(Statement* outer, Language language, int line);
  // A partial statement follows a comma: the beginning of the whole statement is still valid.
  void resetStatement(bool partial, int line);

  Token& activeToken() { return token[tokenIndex]; }
  // The token that was active n tokens ago.
  Token& earlierToken(int n) {
    MAVRO_ASSERT_AS(n < cRing, "n < num");
    return token[static_cast<size_t>(tokenIndex < n ? tokenIndex + cRing - n : tokenIndex - n)];
  }
  // How many tokens of the statement before the active one are still known.
  int TokensBefore() const { return stepCount < cRing ? stepCount : cRing - 1; }
  void stepTokenForward(int line);
  void stepTokenBack(int line);
  void markToken(TokenType type, int line);
  // Notes that the active token, a name, may be what the statement declares.
  void noteName();

  bool HasContextualParent() const;
  bool IsParent(Declaration which) const;
  bool IsMember() const { return context.IsName() || HasContextualParent(); }

  ScopeKind scope = SCOPEKIND_GLOBAL;
  Declaration declaration = DECLARES_NONE;
  Flags seen;
  bool isPartial = false;  // it goes on after a comma
  Implementation implementation = IMP_DEFAULT;
  int tokenIndex = 0;
  int stepCount = 0;  // tokens of the statement before the active one
  std::array<Token, cRing> token;
  Token context;          // the qualifier of a name such as a::b
  Token openedName;       // the name of the block that the statement opened
  std::string blockType;  // the class that the statement's block has declared, by its store's name
  Access access = ACCESS_UNKNOWN;
  Access defaultAccess = ACCESS_UNKNOWN;
  std::string baseNames;    // joined by commas
  std::string hiddenBases;  // those of them that are private or protected
  Statement* parent = nullptr;

  // The names of the blocks around, put together when the first tag of the block asks for them.
  bool isScopeKnown = false;
  bool hasRealName = false;
  std::string outerScope;
  std::string outerNamespace;
};

}  // namespace zendry
