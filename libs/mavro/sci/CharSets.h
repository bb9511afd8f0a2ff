#pragma once

#include <string_view>

namespace mavro {

// True if the set, which may be null, has the character. NUL is in no set.
bool IsInSet(const char* set, char character);

// True for a list of words and characters that is tested as words: it begins with a letter.
bool IsWordList(const char* wordsOrCharacters);

// Tests a word against words or characters: a list of words must hold it whole, of a set of
// characters it must be one.
bool Includes(const char* wordsOrCharacters, std::string_view word);

// True for blanks and tabs, and for nothing at all.
bool IsBlank(std::string_view text);

}  // namespace mavro
