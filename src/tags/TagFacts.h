#pragma once

#include <string_view>

namespace zendry {

// The access of a function that a class names as its friend.
inline constexpr std::string_view cFriendAccess = "friend";

// The declaration parser's facts about one tag. The texts are in the parser and valid until the
// next tag. A missing text has a null `data()`, which is not the same as an empty text.
struct TagFacts {
  int lineNumber = 0;
  bool isFileScope = false;  // seen in its own source file only
  std::string_view name;
  std::string_view kindName;  // "class", "prototype", ...
  char kind = 0;              // the kind's letter in the table of its language
  std::string_view access;
  std::string_view implementation;
  std::string_view inheritance;    // base names, joined by commas
  std::string_view hiddenBases;    // those of them that only the class itself may use
  std::string_view scopeKind;      // kind name of the scope that the tag is in
  std::string_view scopeName;      // its qualified name; for a class-like tag the tag's own name
  std::string_view namespaceName;  // the namespace part of the scope
  std::string_view signature;
  std::string_view typeRef;    // "@" stands for the type of the tag before
  std::string_view blockType;  // the class whose block comes before the name: `struct {...} name;`
};

}  // namespace zendry
