#include "WordRules.h"

#include <algorithm>
#include <bitset>
#include <cctype>
#include <vector>

#include "CharSets.h"

namespace mavro {

namespace {

constexpr const char* cBraces = "[](){}";
constexpr const char* cColonLanguage = "python";
constexpr int cColonStyle = 10;

using CharSet = std::bitset<256>;

CharSet SetOf(const char* chars) {
  CharSet set;
  for (; chars && *chars; ++chars) set.set(static_cast<unsigned char>(*chars));
  return set;
}

char Small(char c) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

bool BeginsWith(std::string_view word, std::string_view start, LetterCase letterCase) {
  if (letterCase == LetterCase::cCounts) return word.starts_with(start);
  return word.size() >= start.size() &&
         std::equal(start.begin(), start.end(), word.begin(),
                    [](char a, char b) { return Small(a) == Small(b); });
}

bool IsBrace(const SciText& text, int position, const EditorLanguage* language) {
  if (position < 0 || position >= text.Length()) return false;
  if (!IsInSet(cBraces, text.Range(position, position + 1)[0])) return false;
  const int wanted = language ? language->operatorStyle : 0;
  return wanted == 0 || text.StyleAt(position) == wanted;
}

bool IsColon(const SciText& text, int position, const EditorLanguage* language) {
  return language && language->name && std::string_view(language->name) == cColonLanguage &&
         position >= 0 && text.Range(position, position + 1) == ":" &&
         text.StyleAt(position) == cColonStyle;
}

}  // namespace

std::string WordToComplete(std::string_view lineToCaret, const char* wordChars) {
  size_t start = lineToCaret.size();
  while (start > 0 && IsInSet(wordChars, lineToCaret[start - 1])) --start;
  const std::string_view word = lineToCaret.substr(start);
  if (word.find_first_not_of("0123456789") == std::string_view::npos) return {};
  return std::string(word);
}

bool IsOfferedUnasked(std::string_view word, const EditorLanguage* language) {
  if (word.size() < cLeastWord) return false;
  return !language || !Includes(language->keywords, word);
}

bool NamesMember(std::string_view lineToWord, const EditorLanguage* language) {
  if (!language || lineToWord.empty()) return false;
  if (lineToWord.back() == '.') return IsInSet(language->memberChars, '.');
  return lineToWord.size() > 1 && IsInSet(language->memberChars, lineToWord.back()) &&
         IsInSet(language->memberChars, lineToWord[lineToWord.size() - 2]);
}

FoundWords CollectWords(std::string_view text, std::string_view start, const char* wordChars,
                        LetterCase letterCase, const char* without) {
  const CharSet set = SetOf(wordChars);
  const auto isWord = [&set](char c) { return set[static_cast<unsigned char>(c)]; };
  std::vector<std::string_view> words;
  for (size_t at = 0; at < text.size();) {
    if (!isWord(text[at])) {
      ++at;
      continue;
    }
    const size_t first = at;
    while (at < text.size() && isWord(text[at])) ++at;
    const std::string_view word = text.substr(first, at - first);
    if (word.size() > start.size() && BeginsWith(word, start, letterCase)) words.push_back(word);
  }
  std::sort(words.begin(), words.end());
  words.erase(std::unique(words.begin(), words.end()), words.end());
  std::erase_if(words, [without](std::string_view word) { return Includes(without, word); });
  FoundWords found;
  for (const std::string_view word : words)
    found.list.append(found.count++ ? " " : "").append(word);
  return found;
}

BraceAtCaret FindBrace(const SciText& text, int caret, const EditorOptions& options,
                       const EditorLanguage* language) {
  if (!options.braceMatch) return {};
  if (IsBrace(text, caret - 1, language)) return {caret - 1, false, false};
  if (IsColon(text, caret - 1, language)) return {caret - 1, true, false};
  if (options.braceMatchAfter && IsBrace(text, caret, language)) return {caret, false, true};
  return {};
}

}  // namespace mavro
