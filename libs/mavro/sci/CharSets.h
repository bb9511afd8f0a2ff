#pragma once

#include <string_view>

namespace mavro {

// True if the set, which may be null, has the character. NUL is in no set.
bool IsInSet(const char* set, char character);

// True for a list of words and characters that is tested as words: it begins with a letter.
bool IsWordList(const char* wordsOrCharacters);

// True if a list of words holds the whole word, or if the word is one character of a set of
// characters.
bool Includes(const char* wordsOrCharacters, std::string_view word);

// True if the text is empty or has only blanks and tabs.
bool IsBlank(std::string_view text);

}  // namespace mavro
