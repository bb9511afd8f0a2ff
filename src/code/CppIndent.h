#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace zendry {

// The rules of indentation in which one code base differs from another. Each is the number of
// columns from the place that the line is measured from.
enum class IndentHabit : unsigned char {
  cSame,          // always 0
  cBlock,         // the first statement of a block, from the block's owner or own brace
  cSub,           // the one statement of an `if`, from the `if`
  cCase,          // `case`, from its `switch` or own brace
  cCaseBody,      // a statement, from its `case`
  cAccess,        // `public:`, from its class
  cLabel,         // a label, from the owner of its block
  cNamespace,     // what a namespace holds, from the namespace
  cClass,         // a member, from its class
  cEnum,          // an enumerator, from its list's owner
  cInit,          // a value, from the line that its list begins in
  cBraceControl,  // a brace in a line of its own, from its `if`
  cBraceCase,     // a brace in a line of its own, from its `case`
  cBraceOther,    // a brace in a line of its own, from its function or class
  cContinuation,  // the rest of a statement, from its start
  cTernary,       // "?", from its condition
  cParen,         // an argument, from the line that ends in the opening parenthesis
  cColon,         // the colon before member initialisers or base classes
  cDirective,     // "#", from the margin
  cHead,          // the name of a function whose type is in the line before, from the type
  cCount
};

// Where a text has its opening braces: at the ends of lines; those of functions in lines of their
// own; all in lines of their own; those of statements indented too.
enum class BraceHabit : unsigned char { cAttached, cOwnOfFunctions, cOwn, cIndented };

// How a text indents its lines.
struct IndentHabits {
  int unit = 4;
  int tabWidth = 4;
  bool useTabs = false;
  bool aligns = true;  // what continues an expression is below the place where it began
  BraceHabit braces = BraceHabit::cAttached;
  std::array<int, static_cast<size_t>(IndentHabit::cCount)> columns{};

  int Of(IndentHabit habit) const { return columns[static_cast<size_t>(habit)]; }
};

// The habits of a new text that is indented by `unit` columns.
IndentHabits UsualHabits(int unit, int tabWidth, bool useTabs);

// The habits of a text of C or C++; `usual` has those that it doesn't show. Looks at no more than
// the first 128 KB.
IndentHabits LearnHabits(std::string_view text, const IndentHabits& usual);

// The columns that the last line of a text of C or C++ should be indented by. The text should begin
// outside of comments, literals and, if possible, functions. None inside a literal.
std::optional<int> IndentOfLastLine(std::string_view text, const IndentHabits& habits);

// The blanks and tabs that lead from one column to another.
std::string BlanksOf(int from, int to, const IndentHabits& habits);

}  // namespace zendry
