#pragma once

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

// The same, appended to a text. The file's name comes escaped: it is the same in many lines.
void AppendTagLine(std::string& text, const TagFacts& facts, std::string_view escapedFile,
                   Language language);

// A value as it is written in a tags file.
std::string EscapedForTags(std::string_view text);

}  // namespace zendry
