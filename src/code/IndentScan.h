#pragma once

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>
#include <vector>

#include "code/CppIndent.h"
#include "code/CppLexer.h"

namespace zendry {

// Where a line belongs: `base` plus the columns of the habit; or, if the text aligns, `aligned`.
struct IndentPlace {
  IndentHabit habit = IndentHabit::cSame;
  int base = 0;
  int aligned = -1;  // none
};

// Reads a text of C or C++ and says for each line where its place is, from the lines before it and
// its own first words. Lines inside literals are left out.
class IndentScan {
 public:
  // A line's start in the text, its place and the columns it is indented by now.
  using Visit = std::function<void(size_t start, const IndentPlace& place, int columns)>;

  IndentScan(std::string_view theText, int theTabWidth, Visit theVisit);

  void Run();

 private:
  enum class Kind : unsigned char { cFile, cNamespace, cClass, cEnum, cBlock, cInit, cParen };
  enum class Control : unsigned char { cIf, cElse, cLoop, cDo, cTry };

  // A statement that governs the next one. Its column is that of the line it begins in.
  struct Owner {
    Control control;
    int column;
  };

  // The binary operators by how tightly they bind; the first column of the operand of each.
  static constexpr size_t cLevels = 11;

  struct Expression {
    std::array<int, cLevels> starts;  // -1: the next token's
    int first = -1;                   // column of the first token
    int literal = -1;                 // column of the last string
    int stream = -1;                  // column of the first "<<"
    int question = -1;                // column of "?"
    int chain = -1;                   // column of a "." that began a line
    Expression() { starts.fill(-1); }
    // The operands of operators that bind more tightly than `level` begin anew.
    void Restart(size_t level) { std::fill(starts.begin() + level, starts.end(), -1); }
  };

  // An open bracket and the statement being read inside it.
  struct Frame {
    Kind kind = Kind::cFile;
    char sign = 0;
    bool isLambda = false;  // the statement around goes on after it
    bool isArray = false;   // "[" that begins a lambda
    int base = 0;           // the closing sign's column
    int after = -1;         // the column of the first token, if it is in the bracket's line
    bool isEmpty = true;    // no token yet
    int inner = -1;         // the column of the last statement that began a line
    int label = -1;         // the column of the last `case`
    std::vector<Owner> owners;
    bool hasJumped = false;  // the statement before was a `break` or its like
    bool isEnded = false;    // the statement of the owners is complete
    // The statement:
    bool isOpen = false;  // it has begun
    int column = 0;       // of the line it begins in
    int tokens = 0;
    bool needsHeader = false;  // "(" after `if` is to come
    bool isClass = false, isEnum = false, isNamespace = false, isTemplate = false;
    bool hasParens = false, hasAssign = false, isMacro = false, isLabel = false;
    bool inMembers = false;  // after the colon of member initialisers or base classes
    int colon = -1, member = -1;
    bool lambdaComes = false;
    bool isAttribute = false;  // its last parentheses are those of a macro
    bool isJump = false;       // it is a `break` or its like
    Expression expression;
  };

  // The state at a conditional directive.
  using State = std::vector<Frame>;

  Frame& Top() { return frames.back(); }
  void BeginLine(size_t start);
  int ColumnOf(size_t place);
  size_t FirstOfLine(size_t start) const;
  char SignAfter(const CppPiece& piece) const;
  void ReadGap(size_t from, size_t to);
  size_t ReadComment(size_t at, size_t to);
  void ReadDirective(const CppPiece& piece, size_t start);
  void ReadMacroBody(size_t start, size_t end);
  void ReadPiece(const CppPiece& piece, size_t start);

  void Consume(const CppPiece& piece, int column);
  bool BeginStatement(const CppPiece& piece, int column);
  bool ContinueOwner(std::string_view word);
  bool BeginControl(std::string_view word, int column);
  void EndStatement();
  void EndHeader();
  void ReadWord(std::string_view word);
  void ReadSign(const CppPiece& piece, int column);
  void ReadOperator(std::string_view sign, int column);
  bool ReadColon();
  void OpenParen(char sign);
  void OpenBare(int column);
  Kind KindOfBrace();
  void OpenBrace(int column);
  void Close(char sign);
  bool EndsAsMacro(const CppPiece& next) const;
  bool IsLabel(const CppPiece& piece) const;

  // Where a line that begins with a piece belongs (IndentPlaces.cpp); an empty piece is none yet.
  IndentPlace PlaceOf(const CppPiece& piece);
  IndentPlace PlaceOfClosing();
  IndentPlace PlaceOfStatement(const CppPiece& piece);
  IndentPlace PlaceOfLabel(std::string_view word);
  IndentPlace PlaceOfRest(const CppPiece& piece);
  IndentPlace PlaceInParen(const CppPiece& piece);
  IndentPlace PlaceOfOperand(const CppPiece& piece, IndentPlace otherwise);
  int StatementColumn() const;
  // -1: no binary operator.
  static int LevelOf(std::string_view sign);

  const std::string_view text;
  const int tabWidth;
  const Visit visit;
  State frames;
  std::vector<State> conditionals;
  CppPiece before;         // the last piece
  int lineIndent = 0;      // of the line being read
  bool startsLine = true;  // the piece being read is the first of its line
  size_t lineStart = 0;    // where the line being read begins
  size_t knownPlace = 0;   // a place in it whose column is known
  int knownColumn = 0;
};

}  // namespace zendry
