#include "CharSets.h"

#include <cstring>

namespace mavro {

bool IsInSet(const char* set, char character) {
  return set && character != '\0' && std::strchr(set, character) != nullptr;
}

bool IsWordList(const char* wordsOrCharacters) {
  if (!wordsOrCharacters) return false;
  const char first = wordsOrCharacters[0];
  return (first >= 'a' && first <= 'z') || (first >= 'A' && first <= 'Z');
}

bool Includes(const char* wordsOrCharacters, std::string_view word) {
  if (!IsWordList(wordsOrCharacters))
    return word.size() == 1 && IsInSet(wordsOrCharacters, word.front());
  std::string_view rest = wordsOrCharacters;
  while (!rest.empty()) {
    const std::string_view one = rest.substr(0, rest.find(' '));
    if (!one.empty() && one == word) return true;
    rest.remove_prefix(std::min(one.size() + 1, rest.size()));
  }
  return false;
}

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(" \t") == std::string_view::npos;
}

}  // namespace mavro
