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
// The stamp is what makes the text one to be trusted: the mark of the definition file that it was
// made from and that of all bytes before the stamp. A text that was cut, damaged, written by
// somebody else or made from another definition (one of another compiler, say) has no fitting one.
// Readers that know no stamp pass over it.

// A number that differs, as good as surely, for texts that differ.
uint64_t TextMark(std::string_view text);

// The text for `data`. Classes with a leading "_" are left out. A class of the family
// "basic_string" (letters 0, 4 and 5 are "b", "c" and "_", at least 7 of them) is written without
// its first six letters, with its whole name as alias.
//
// There is no escape for a double quote in a value: it is written as it stands and misread later,
// as long as the text can be read at all. Where it couldn't, and where a value is too long for any
// reader, the element goes without signature, without type or bases, or is left out.
std::string CacheText(const TagData& data, uint64_t definitionMark);

// Whether a text ends with a stamp that fits it and, if that is given, its definition.
bool IsCacheTrue(std::string_view text, const uint64_t* definitionMark);

// Adds the headers and the classes with their members of a text. The globals are not read back, nor
// are line and kind of a class; members have the access 1. Stops at nothing: what it can't read it
// passes over, and all of a text with an element that no reader stands.
void ReadCacheText(std::string_view text, TagData& data);

}  // namespace zendry
