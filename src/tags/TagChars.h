#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "tags/LineInput.h"
#include "tags/TagLanguages.h"

namespace zendry {

// Symbols that stand for a whole string and a whole character constant.
inline constexpr int STRING_MARK = 211;
inline constexpr int CHAR_MARK = 195;

// The classes of a byte for the two lower layers; bits.
enum CharClass : uint8_t {
  cBlankChar = 1,
  cLineEndChar = 2,
  cSpaceChar = 4,        // any white space
  cSpecialChar = 8,      // may begin a literal, a comment, a directive, a trigraph or a splice
  cIdentifierChar = 16,  // within an identifier
  cIdentifierStart = 32,
  cHighChar = 64,     // within an identifier of Java and at its start
  cBracketChar = 128  // a bracket, or a sign that ends a template's arguments
};

constexpr std::array<uint8_t, 256> MakeCharClasses() {
  std::array<uint8_t, 256> classes{};
  const auto mark = [&classes](std::string_view chars, int bits) {
    for (const char c : chars) classes[static_cast<unsigned char>(c)] |= bits;
  };
  mark(" \t", cBlankChar);
  mark("\n", cLineEndChar);
  mark(" \t\n\v\f\r", cSpaceChar);
  mark("\"#'/\\?", cSpecialChar);
  mark("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$",
       cIdentifierChar | cIdentifierStart);
  mark("0123456789", cIdentifierChar);
  mark("~", cIdentifierStart);
  mark("(){}[]<>;", cBracketChar);
  for (int c = 0xC0; c < 256; ++c) classes[c] |= cHighChar;
  return classes;
}
inline constexpr std::array<uint8_t, 256> cCharClasses = MakeCharClasses();

constexpr bool IsClass(int c, int bits) {
  return c >= 0 && (cCharClasses[static_cast<unsigned char>(c)] & bits) != 0;
}

enum DirectiveState {
  DIRECTIVE_NONE,
  DIRECTIVE_DEFINE,
  DIRECTIVE_HASH,
  DIRECTIVE_IF,
  DIRECTIVE_PRAGMA,
  DIRECTIVE_UNDEF
};

// One level of nested conditionals.
struct Conditional {
  bool allBranchesOff = false;  // it is in a branch that isn't seen
  bool oneBranchOnly = false;   // it began within a statement
  bool branchTaken = false;
  bool skipping = false;
  int blockLevel = 0;  // the block that it began in
};

// The stream of characters that the declaration parser reads: a comment becomes a blank, a literal
// becomes one symbol, directives don't appear but make their tags, and only the branches of
// conditionals that count are seen.
class Cpp {
 public:
  static constexpr unsigned cMostLevels = 19;

  // To be called before each pass over a source, after its lines have been started.
  void sourceInit(bool isLaterPass, Language theLanguage, bool isHeaderFile);
  // The next character, -1 at the end.
  int sourceGetc() {
    if (!HasPushback() && lines.cursor != lines.lineEnd) [[likely]] {
      const auto c = static_cast<unsigned char>(*lines.cursor);
      const uint8_t bits = cCharClasses[c];
      if ((bits & cSpecialChar) == 0) [[likely]] {
        ++lines.cursor;
        if ((bits & cBlankChar) == 0) directive.allowed = (bits & cLineEndChar) != 0;
        return c;
      }
    }
    return ReadSource();
  }
  // Pushes a character back. Two can be held.
  void sourceUngetc(int c);
  // The next character that isn't white space. `blanksSkipped` is true if there was any.
  int skipBlanks() {
    const bool hasBlanks = PassBlanks();
    int c = sourceGetc();
    blanksSkipped = hasBlanks || IsClass(c, cSpaceChar);
    while (IsClass(c, cSpaceChar)) c = sourceGetc();
    return c;
  }
  // True if anything but a comment or a closing brace follows before the end of the line.
  bool HasMoreOnLine() const;
  // Appends the rest of an identifier.
  void ReadIdentifierRest(std::string& name);
  bool IsIdentifierStart(int c) const {
    return IsClass(c, cIdentifierStart) || (isJava && IsHighIdentifier(c));
  }
  // The text of the literal that the last mark stands for, as it is written; empty when that is
  // no longer known. A literal over several lines is written as an empty one.
  std::string TakeLiteral() { return std::exchange(literal, {}); }
  // Takes the characters of the line that come next, up to white space, a bracket, a semicolon or
  // one that needs a closer look.
  std::string_view TakePlain();
  // Passes over all characters but braces and those that need a closer look.
  void SkipToBrace();
  // True if the last byte that was read is this one, as it is in the source, and none is held.
  bool IsJustAfter(char c) const {
    return !HasPushback() && lines.cursor > lines.lineStart && lines.cursor[-1] == c;
  }
  // The place in the source of the next byte.
  int Place() const { return lines.PlaceOf(lines.cursor); }
  // Drops the characters that are held and the rest of the source.
  void Stop();

  LineInput lines;
  bool keepsLiterals = false;
  bool midStatement = false;
  int blockLevel = 0;  // the block that is being read
  bool laterPass = false;
  bool blanksSkipped = false;
  int directivesRead = 0;
  struct {
    DirectiveState state = DIRECTIVE_NONE;
    bool allowed = true;
    std::string name;
    unsigned condDepth = 0;
    Conditional ifdef[cMostLevels + 1];
  } directive;

 private:
  // The effect of a directive, or of a branch that isn't seen, on the character just read.
  struct Seen {
    bool directive = false;
    bool ignore = false;
  };

  bool HasPushback() const { return (ungetch | ungetch2 | decided | lines.linePushback) != 0; }
  static bool IsHighIdentifier(int c) {
    return c != STRING_MARK && c != CHAR_MARK && IsClass(c, cHighChar);
  }
  bool IsIdentifierPart(int c) const {
    return IsClass(c, cIdentifierChar) || (isJava && IsClass(c, cHighChar));
  }

  // Passes over the blanks that come next in the line; true if there are any.
  bool PassBlanks() {
    if (HasPushback()) return false;
    const char* at = lines.cursor;
    while (at != lines.lineEnd && (*at == ' ' || *at == '\t')) ++at;
    return std::exchange(lines.cursor, at) != at;
  }
  // The end of the identifier's characters that come next in the line.
  const char* IdentifierEnd() const;
  int ReadSource();
  int ReadVisible();
  int Fold(int c, Seen& seen);
  int FoldOther(int c, Seen& seen);
  void SkipUnseen(Seen& seen);
  int FoldQuestion(int& c);
  int FoldBackslash(int c);
  int FoldSlash();
  int FoldQuote();
  int FoldApostrophe();
  void KeepLiteral(int line, const char* start);
  bool SkipRawString();
  bool IsDigitSeparator();
  void SkipString();
  void SkipCharacter();
  void SkipBlockComment();
  int SkipLineComment();

  bool HandleDirective(int c);
  bool HandleHash(int c);
  bool HandleIf(int c);
  bool HandleElse(std::string_view word);
  bool HandleEndif();
  void HandleDefine(int c);
  void HandlePragma(int c);
  void ReadDirectiveName(int c);
  void MakeMacroTag();
  Conditional& Level() { return directive.ifdef[directive.condDepth]; }

  int ungetch = 0;
  int ungetch2 = 0;
  int decided = 0;  // a question mark that isn't looked at again
  Language language = Language::cC;
  bool isJava = false;
  bool isCOrCpp = true;
  bool isHeader = false;
  std::string literal;
  int separatorLine = 0;                 // line of the last digit separator
  const char* separatorPlace = nullptr;  // its place in that line
};

extern Cpp theCpp;

}  // namespace zendry
