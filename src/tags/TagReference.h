#pragma once

#include <string>

namespace zendry {

class TagData;

// Reference libraries: the standard library and the framework. The installation describes each by a
// definition file, extension "tgd", whose elements are told apart by their first letter:
//
//   l  n: the library's name, p: folder of the following headers, from the definition's own one on
//      when it is relative
//   o  o: options; with "-x" among them the compiled tags are kept in the cache, else not
//   h  n: the header's name, p: its file (else the name), o: options, id: number of its tags
//
// The compiled tags lie beside it, the last letter of the name replaced by "x"; TagCache.h has
// their form. TagData::loadReference brings both together.

// The path of a definition's compiled tags.
std::string CachePath(const std::string& definition);

// False when the definition can't be opened; true when the cache can't be, or was written earlier.
bool definitionIsNewer(const std::string& path, const std::string& cache);

// Replaces the tags of `data` by those of the headers that a definition names, and appends the
// headers. Headers that can't be opened are logged and passed over; so is, without a word, a
// definition that can't be read.
void loadDefinition(TagData& data, const std::string& path);

}  // namespace zendry
