#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zendry {

class TagData;

// The text of a library's compiled tags, a file with extension "tgx". Its elements:
//
//   <reference n="lib">                           the headers, one TAB in:
//   <hdr n="name" id="id" o="options" p="path"/>
//   </reference>
//   <globals n="count">                           the globals, one TAB in:
//   <itm n="name" id="header's id" o="kind and line" p="signature" v="type"/>
//   </globals>
//   <class n="name" id=".." o=".." p="bases" v="alias">   for each class; its members as <itm/>,
//   </class>                                              one TAB in
//   <stamp n="definition" o="bytes"/>             see below
//
// The stamp makes it possible to trust the text: it holds the mark (TextMark.h) of the definition
// file that the text was made from and the mark of all bytes before the stamp. A text that was cut,
// damaged or made from another definition (one of another compiler, say) has no matching stamp. A
// text without any stamp is trusted as well. Readers that don't know the stamp pass over it.

// The text for `data`. Classes with a leading "_" are left out. A class of the family
// "basic_string" (letters 0, 4 and 5 are "b", "c" and "_", at least 7 of them) is written without
// its first six letters, with its whole name as alias.
//
// There is no escape for a double quote in a value: it is written as it is and misread later, as
// long as the text can be read at all. If it couldn't be read, or a value is too long for any
// reader, the element is written without signature, without type or bases, or is left out.
std::string CacheText(const TagData& data, uint64_t definitionMark);

// True if a text has all parts of the format and no stamp. One that was cut between two classes is
// taken for whole: nothing tells their number.
bool IsUnstampedCache(std::string_view text);

// True if a text ends with a stamp that matches it and, if one is given, its definition.
bool IsCacheTrue(std::string_view text, const uint64_t* definitionMark);

// Adds the headers of a text, and its classes with their members. The globals are not read back,
// nor are line and kind of a class; members have the access 1. Never fails: it passes over the
// parts that it can't read, and over the whole of a text with an element that no reader can take.
void ReadCacheText(std::string_view text, TagData& data);

}  // namespace zendry
