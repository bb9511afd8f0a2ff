#include "PairRules.h"

#include <string>

#include "CharSets.h"
#include "TypingRules.h"

namespace mavro {

namespace {

constexpr std::string_view cOpeners = "([{<\"'";
constexpr std::string_view cPartners = ")]}>\"'";
constexpr std::string_view cMayFollow = " \t\r\n)]}";

// Styles are those of characters, so the one before the caret decides. At the start of a line that
// is the line end, which only comments and strings of several lines have a style for; the character
// after it has their style too.
bool IsInLiteral(const SciText& text, int caret, const EditorLanguage& language) {
  if (caret > text.LineStart(text.LineOf(caret))) return IsQuietPlace(text, caret - 1, language);
  if (caret < text.Length()) return IsQuietPlace(text, caret, language);
  return false;
}

// A quote after a letter or a digit ends nothing and opens nothing: it is part of a number, of a
// word or of a raw string's beginning. An apostrophe in a directive is one of its words.
PairChance ChanceOfQuote(const SciText& text, int caret, char typed,
                         const EditorLanguage& language) {
  const std::string line = text.Range(text.LineStart(text.LineOf(caret)), caret);
  const bool afterWord = !line.empty() && IsInSet(language.wordChars, line.back());
  if (afterWord && (typed == '\'' || line.back() == 'R')) return PairChance::cNone;
  if (IsDirective(line)) {
    const bool isOpen = typed == '"' && !EndsInLiteral(line) && !NamesFile(line);
    return isOpen ? PairChance::cAtAnyPlace : PairChance::cNone;
  }
  return IsInLiteral(text, caret, language) ? PairChance::cNone : PairChance::cAtAnyPlace;
}

}  // namespace

char PartnerOf(char opening) {
  const size_t at = cOpeners.find(opening);
  return at == cOpeners.npos || opening == '\0' ? '\0' : cPartners[at];
}

PairChance ChanceOfPair(const SciText& text, int caret, char typed,
                        const EditorLanguage& language) {
  if (PartnerOf(typed) == '\0') return PairChance::cNone;
  const std::string next = text.Range(caret, caret + 1);
  if (!next.empty() && cMayFollow.find(next[0]) == cMayFollow.npos) return PairChance::cNone;
  if (typed == '"' || typed == '\'') return ChanceOfQuote(text, caret, typed, language);
  if (typed != '<') return PairChance::cIfInCode;
  const std::string line = text.Range(text.LineStart(text.LineOf(caret)), caret);
  const bool opensName = language.directiveStyle != 0 && IncludesFile(line) && !NamesFile(line);
  return opensName ? PairChance::cAtAnyPlace : PairChance::cNone;
}

bool IsEscaped(const SciText& text, int caret, char closer) {
  if (closer != '"' && closer != '\'') return false;
  int backslashes = 0;
  while (text.Range(caret - backslashes - 1, caret - backslashes) == "\\") ++backslashes;
  return backslashes % 2 == 1;
}

void AutoPairs::KeepAround(int caret) {
  std::erase_if(pairs,
                [&](const Pair& pair) { return caret <= pair.opening || caret > pair.closing; });
}

void AutoPairs::Remove(int closing) {
  std::erase_if(pairs, [&](const Pair& pair) { return pair.closing == closing; });
}

void AutoPairs::WillInsert(int position, int length) {
  for (Pair& pair : pairs) {
    if (position <= pair.opening) pair.opening += length;
    if (position <= pair.closing) pair.closing += length;
  }
}

void AutoPairs::WillDelete(int position, int length) {
  const int end = position + length;
  const auto isIn = [&](int place) { return place >= position && place < end; };
  std::erase_if(pairs, [&](const Pair& pair) { return isIn(pair.opening) || isIn(pair.closing); });
  for (Pair& pair : pairs) {
    if (end <= pair.opening) pair.opening -= length;
    if (end <= pair.closing) pair.closing -= length;
  }
}

int AutoPairs::OpeningOf(int closing) const {
  for (const Pair& pair : pairs)
    if (pair.closing == closing) return pair.opening;
  return -1;
}

}  // namespace mavro
