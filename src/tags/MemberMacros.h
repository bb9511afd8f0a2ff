#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "tags/TagData.h"

namespace zendry {

// The members that macros bring into classes: for "#define HEADER int next; int kind", a class with
// "HEADER;" in its block has `next` and `kind`. Macros with arguments bring none.
class MemberMacros {
 public:
  // The declarations of a macro, as members of a class of its name whose lines are the macro's;
  // null if it has none. `text` is that of the macro's file. Valid until that is parsed again.
  TagClass* MembersOf(const TagItem& macro, TagData& file, std::string_view text);
  // The class of an unnamed block, the type of a member of `struct { ... } u;` in such a macro;
  // null without it.
  TagClass* BlockNamed(std::string_view name);
  // True if MembersOf() needs no text.
  bool IsKnown(const TagItem& macro, const TagData& file) const;

 private:
  struct Expansion {
    uint64_t generation = 0;  // of the file
    TagData tags;
  };

  std::map<std::pair<const TagData*, int>, Expansion> expansions;  // by file and line
};

// The text that an object-like macro stands for, at most 8 KB of it; empty for other macros. Line
// numbers begin with 1.
std::string BodyOfMacro(std::string_view text, int line, std::string_view name);

}  // namespace zendry
