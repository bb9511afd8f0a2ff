#pragma once

#include <string>
#include <string_view>

#include "EditorLanguage.h"
#include "EditorOptions.h"
#include "SciText.h"

namespace mavro {

// The word of a set of characters that ends at the end of `lineToCaret`; empty if it has digits
// only.
std::string WordToComplete(std::string_view lineToCaret, const char* wordChars);

// True if the words that begin with `word` are offered unasked: it is long enough to be rare in
// text that means something else, and it is not a keyword already.
bool IsOfferedUnasked(std::string_view word, const EditorLanguage* language);
constexpr size_t cLeastWord = 3;

// True if what ends the line to the word is an operator whose right side names a member: a dot, or
// two of the language's member characters, such as "->" and "::". No keyword stands there.
bool NamesMember(std::string_view lineToWord, const EditorLanguage* language);

// The distance from the caret to look for words in. The limit makes typing cost the same in any
// text.
constexpr int cWordReach = 64 * 1024;

enum class LetterCase { cCounts, cIgnored };

// The words of a text that begin with `start` and are longer, each once, sorted, with blanks
// between; none that `without` includes.
struct FoundWords {
  std::string list;
  int count = 0;
};
FoundWords CollectWords(std::string_view text, std::string_view start, const char* wordChars,
                        LetterCase letterCase, const char* without = nullptr);

// The brace at the caret, and what is marked with it.
struct BraceAtCaret {
  int position = -1;    // -1: none
  bool colon = false;   // a colon that opens a block: its partner is the end of the line
  bool behind = false;  // it is after the caret
};
BraceAtCaret FindBrace(const SciText& text, int caret, const EditorOptions& options,
                       const EditorLanguage* language);

}  // namespace mavro
