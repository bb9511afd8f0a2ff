#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tags/TagStatement.h"

namespace zendry {

struct GroupAhead;
struct TagFacts;

// Turns the stream of characters into tags for C, C++, C#, Java and Vera. It builds no tree: it
// remembers the last seven tokens of each statement and decides at each `;`, `,`, `{` and `}` what
// was declared.
class TagC {
 public:
  // The depth of nested blocks that are read; deeper blocks are skipped by counting braces.
  static constexpr int cDeepestBlock = 500;

  // Reads the source that the character layer holds. True if another pass is wanted, which never
  // happens.
  bool runPass(int passCount, Language theLanguage, bool isHeaderFile);

 private:
  // The facts about one parenthesised group.
  struct ParenGroup {
    bool isPointer = false;
    bool isArgList = true;
    bool isOldStyleList = false;
    bool mayBeName = true;
    bool badContents = false;
    bool argsInArgs = false;
    int paramCount = 1;
    int wordCount = 0;
    int depth = 1;
    bool firstChar = true;
    bool isOfMacro = false;  // the arguments of a macro, which may be parameters
  };
  // The counters of the scan after a parameter list.
  struct PostParens {
    int parameters = 0;
    int elementCount = 0;
    bool end = false;
  };

  // A block of a structure or union without a name.
  struct UnnamedBlock {
    bool isNoted = false;
    std::string name;        // of the class that its members go to first; "" for the globals
    std::string outerName;   // of the class around it; "" without one
    size_t memberCount = 0;  // what is in the class of that name before
  };

  // Blocks (TagC.cpp).
  UnnamedBlock NoteUnnamedBlock(Statement& st);
  void EndClassBlock(Statement& st, const UnnamedBlock& unnamed);
  void parseBlock(int blockLevel, Statement* parent);
  void ReadBlockBody(Statement& st, int blockLevel);
  bool IsBraceInitialiser(Statement& st) const;
  void EndStatement(Statement& st);
  void CheckTag(Statement& st);
  void CheckTagAtEnd(Statement& st);
  bool IsMemberWithValue(Statement& st) const;
  void NoteFriend(Statement& st, const Token& name);
  void CheckTagAtBrace(Statement& st);
  void CheckEnumerator(Statement& st);
  bool MayStandAlone(Statement& st) const;
  bool IsMacroAlone(Statement& st) const;
  void ExtendContext(Statement& st);
  Statement& StatementOf(int blockLevel);

  // Tokens (TagTokens.cpp).
  int NextChar();
  void AppendToArgText(int c);
  void PassPlain();
  int PeekChar();
  void readToken();
  void ReadOther(int c);
  void ReadWord(int c);
  void ReadColon();
  bool IsEnumHead(Statement& st) const;
  bool IsTemplateAhead() const;
  void ReadBitField();
  void ReadLess();
  void DropNext(int wanted);
  void ReadIdentifier(Token& token, int first);
  void ApplyWord(Token& token);
  bool IsNameInC(const Token& token);
  void skipInitialiser();
  int skipTo(std::string_view ends);
  bool skipBalanced(std::string_view pair);
  bool SkipTemplateArguments();
  bool DropOperatorRest(char first = '<');
  bool SkipBody();
  bool PassBody();
  bool IsBodyGivenUp(unsigned depthAtStart);
  bool FailToMatch(char opening, int line);
  void SkipGroupIfAny();
  void ResetStatement(bool partial);

  // Keywords (TagWords.cpp).
  void applyKeyword(Token& token);
  void ApplyModern(Token& token);
  bool ApplyScopeOrDeclaration(Keyword keyword);
  void ApplyAccess(Access access);
  void ApplyCatch();
  void ApplyOperator(Token& token);
  int ReadOperatorCall(Token& token);
  void ReadPackage(Token& token);
  void SkipStatement();
  void ApplyExport(Token& token);
  void ApplyModule();
  bool IsModuleStatement() const;
  void ApplyUsing();
  void NoteReopened();
  void ApplyTemplate();
  void ReadAlias(const Token& name);
  void ReadLiteralOperator(Token& token);
  void SkipConstraint();
  void SkipConcept(int first);
  void SkipThrows();
  void readParents(char separator);

  // Parenthesised groups (TagParens.cpp) and what follows a parameter list (TagPostParens.cpp).
  void readParenGroup();
  void ReadGroupChars(ParenGroup& group);
  void ReadGroupChar(ParenGroup& group, int c);
  void OpenInGroup(ParenGroup& group);
  void ReadGroupWord(ParenGroup& group, int c);
  void CloseGroup(ParenGroup& group);
  bool IsValueOfVariable(int c);
  void AnalyzeGroup(const ParenGroup& group);
  bool MayHoldParameters(const ParenGroup& group) const;
  bool EndsGroupAhead(int first) const;
  bool IsSpecialValueAhead() const;
  bool IsNameInParens(const ParenGroup& group, int c);
  void ReadPostParens(const ParenGroup& group);
  void ReadJavaThrows();
  void ReadPostParensChar(const ParenGroup& group, PostParens& post, int c);
  bool ReadPostParensWord(const ParenGroup& group, PostParens& post, int c);
  bool SkipModernAfterParameters(ModernWord word);
  bool IsDeclaratorBehindType() const;
  bool SkipMacroAfterParameters();
  bool IsMacroBeforeDeclarator(const Token& word) const;
  void DropMacroBefore(const Token& word);
  bool IsClassHead(const Token& token) const;
  void SkipWordsBehindTypedef();
  void SkipMemberInitialisers();
  void SkipTrailingReturn();
  void RestartWith(Token& token);

  // Macros (TagMacros.cpp).
  GroupAhead LookAtNextGroup() const;
  bool TakeMacroGroup();
  bool TakeTypeMacro();
  bool IsDeclaratorAhead(std::string_view text, bool mayHaveParameters) const;
  bool TakeMacroInHead();
  bool CanBeFunction(Statement& st) const;
  bool NameMacroBody(Statement& st);
  bool HasTypeBefore(int n, bool mayBeInCapitals) const;
  const Token& DeclaredName(const Token& name, bool isHead) const;

  // Tags (TagMake.cpp).
  void tagFunction(Statement& st, const Token& token);
  void tagVariable(Statement& st, const Token& token);
  void NoteMemberMacro(Statement& st, const Token& token);
  bool HasTypeOfMember(Statement& st, const Token& token) const;
  void MakeTag(Statement& st, const Token& token, bool isFileScope, TagType type);
  void FindScope(Statement& st);
  void FindFullScope(Statement& st);
  static void PutAfter(std::string& names, std::string_view name, std::string_view separator);
  void FillExtra(TagFacts& facts, const Statement& st, TagType type);
  void SetTypeRef(TagFacts& facts, Statement& st);
  const Token& TypeAt(Statement& st, int n) const;
  void AddQualified(TagFacts facts, TagType type);
  std::string_view Separator() const;

  bool IsCOrCpp() const { return language == Language::cC || language == Language::cCpp; }
  bool IsCpp() const { return language == Language::cCpp; }
  bool IsJavaOrCSharp() const {
    return language == Language::cJava || language == Language::cCSharp;
  }

  Language language = Language::cC;
  bool isHeader = false;
  std::string argText;  // the text of the parameter list
  bool inArgText = false;
  Statement* currentStatement = nullptr;
  TokenType tokenAtLastTag = TOKEN_NONE;
  std::vector<std::unique_ptr<Statement>> statements;  // one for each level, reused
  Token scratch;                                       // a word that belongs to no statement
  std::string fullScope;
  std::string fullNamespace;
  std::string fullName;
};

extern TagC theTagC;

}  // namespace zendry
