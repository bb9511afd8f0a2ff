#include "tags/TagChars.h"
#include "tags/TagParser.h"

namespace zendry {
namespace {

constexpr size_t cLongestWord = 9;

bool IsLetter(int c) {
  return IsClass(c, cIdentifierStart) && c != '_' && c != '$' && c != '~';
}

}  // namespace

// Handles a character of a directive by the directive's state. True if the character isn't seen.
bool Cpp::HandleDirective(int c) {
  switch (directive.state) {
    case DIRECTIVE_NONE:
      return Level().skipping;
    case DIRECTIVE_HASH:
      return HandleHash(c);
    case DIRECTIVE_IF:
      return HandleIf(c);
    case DIRECTIVE_DEFINE:
    case DIRECTIVE_UNDEF:
      HandleDefine(c);
      break;
    case DIRECTIVE_PRAGMA:
      HandlePragma(c);
      break;
  }
  directive.state = DIRECTIVE_NONE;
  return false;
}

bool Cpp::HandleHash(int c) {
  char letters[cLongestWord];
  size_t length = 0;
  while (IsLetter(c) && length < cLongestWord) {
    letters[length++] = static_cast<char>(c);
    c = lines.lineGetc();
  }
  lines.linePushback = c == -1 ? 0 : c;
  const std::string_view word(letters, length);
  directive.state = DIRECTIVE_NONE;
  if (word == "define")
    directive.state = DIRECTIVE_DEFINE;
  else if (word == "undef")
    directive.state = DIRECTIVE_UNDEF;
  else if (word.starts_with("if"))
    directive.state = DIRECTIVE_IF;
  else if (word == "elif" || word == "else")
    return HandleElse(word);
  else if (word == "endif")
    return HandleEndif();
  else if (word == "pragma")
    directive.state = DIRECTIVE_PRAGMA;
  return false;
}

// Only a condition that begins with 0 counts as false.
bool Cpp::HandleIf(int c) {
  directive.state = DIRECTIVE_NONE;
  if (directive.condDepth >= cMostLevels) return false;
  const bool isOff = Level().skipping;
  const bool firstBranch = c != '0';
  ++directive.condDepth;
  Conditional& level = Level();
  level = {isOff, midStatement, firstBranch, isOff, blockLevel};
  if (!isOff && !firstBranch && !laterPass)
    level.skipping = level.oneBranchOnly || !theTagParser.readIfZero;
  return level.skipping;
}

// A branch that opened or closed a block is the only one that is read, like one that ends within a
// statement: the other branches hold the same brace once more.
bool Cpp::HandleElse(std::string_view word) {
  Conditional& level = Level();
  if ((midStatement || blockLevel != level.blockLevel) && !laterPass) level.oneBranchOnly = true;
  level.skipping = level.allBranchesOff || (level.branchTaken && level.oneBranchOnly);
  if (!level.skipping && word == "else" && !laterPass)
    level.branchTaken = level.oneBranchOnly || midStatement;
  return level.skipping;
}

bool Cpp::HandleEndif() {
  if (directive.condDepth > 0) --directive.condDepth;
  return Level().skipping;
}

void Cpp::HandleDefine(int c) {
  if (!IsClass(c, cIdentifierStart)) return;
  ReadDirectiveName(c);
  MakeMacroTag();
}

void Cpp::HandlePragma(int c) {
  if (!IsClass(c, cIdentifierStart)) return;
  ReadDirectiveName(c);
  if (directive.name != "weak") return;
  do c = lines.lineGetc();
  while (IsClass(c, cBlankChar));
  if (IsClass(c, cIdentifierStart)) {
    ReadDirectiveName(c);
    MakeMacroTag();
  } else {
    lines.linePushback = c == -1 ? 0 : c;
  }
}

void Cpp::ReadDirectiveName(int c) {
  directive.name.assign(1, static_cast<char>(c));
  do {
    const char* const end = IdentifierEnd();
    directive.name.append(lines.cursor, end);
    lines.cursor = end;
    c = lines.lineGetc();
    if (IsClass(c, cIdentifierChar)) directive.name += static_cast<char>(c);
  } while (IsClass(c, cIdentifierChar));
  lines.linePushback = c == -1 ? 0 : c;
}

void Cpp::MakeMacroTag() {
  if (!IsKindEnabled(language, TagType::cMacro)) return;
  if (!isHeader && !theTagParser.keepFilePrivate) return;
  const TagKind& kind = KindOf(language, TagType::cMacro);
  TagFacts facts;
  facts.lineNumber = lines.tagLine;
  facts.isFileScope = !isHeader;
  facts.name = directive.name;
  facts.kindName = kind.name;
  facts.kind = kind.letter;
  theTagParser.addTag(facts);
}

}  // namespace zendry
