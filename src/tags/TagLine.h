#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "tags/TagFacts.h"
#include "tags/TagLanguages.h"

namespace zendry {

// A tag as a line of a tags file, without the newline: name, file and place separated by TABs, the
// letter of the kind, then the fields that the tag has: line, scope (under the name of its kind:
// class, struct, namespace ...), signature, typeref, access, implementation, inherits and file.
// TAB, line ends and backslashes in a value are written as in C.
std::string TagLine(const TagFacts& facts, std::string_view file, Language language);

// What such a line has between the file's TAB and the fields: the place, the kind and the place
// once more.
class TagPlace {
 public:
  TagPlace(int lineNumber, char kind);
  std::string_view Text() const { return {text.data(), size}; }

 private:
  std::array<char, 40> text;
  size_t size;
};

// The other parts that don't tell the file, appended to a text: the name with its TAB, and the
// fields behind the line's number.
void AppendTagName(std::string& text, const TagFacts& facts);
void AppendTagFields(std::string& text, const TagFacts& facts, Language language);

// A value as it is written in a tags file.
std::string EscapedForTags(std::string_view text);

}  // namespace zendry
