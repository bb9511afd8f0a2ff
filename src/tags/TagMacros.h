#pragma once

#include <string_view>

#include "tags/TagStatement.h"

namespace zendry {

// Macros aren't expanded, so their names and places are all that tells them from what is declared.

// True for a name without a small letter, such as GUARDED_BY, and for one that begins with two
// underscores, such as __THROW.
bool LooksLikeMacro(std::string_view name);
// True for a name without a small letter and with at least two characters.
bool IsInCapitals(std::string_view name);
// True for a word that can be the type of a declaration, or the end of one: no storage class, no
// `struct` and the like, and no qualifier.
bool IsTypeWord(const Token& token);

// The arguments of a macro, or the parameters of a function, seen before they are read.
struct GroupAhead {
  bool isClosed = false;  // its end is near enough to be seen
  bool looksLikeParameters = false;
  char after = 0;  // the character after the group that isn't white space, 0 if it isn't seen
  std::string_view rest;  // the text from there on
};
// `text` begins after the opening parenthesis.
GroupAhead LookAtGroup(std::string_view text, Language language);

}  // namespace zendry
