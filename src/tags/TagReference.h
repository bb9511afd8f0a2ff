#pragma once

#include <string>

namespace zendry {

class TagData;

// Reference libraries: the standard library and the framework. The installation describes each by a
// definition file, extension "tgd", whose elements are distinguished by their first letter:
//
//   l  n: the library's name, p: folder of the following headers, from the definition's own one on
//      when it is relative
//   o  o: options; with "-x" among them the compiled tags are kept in the cache, else not
//   h  n: the header's name, p: its file (else the name), o: options, id: number of its tags
//
// The compiled tags are in a file beside it, with the last letter of the name replaced by "x";
// TagCache.h has their form. TagData::loadReference uses both.

// The path of a definition's compiled tags.
std::string CachePath(const std::string& definition);

// True if the cache can't be opened or is older than the definition. False if the definition can't
// be opened.
bool definitionIsNewer(const std::string& path, const std::string& cache);

// Replaces the tags of `data` by those of the headers that a definition names, and appends the
// headers. Headers that can't be opened are logged and passed over. A definition that can't be read
// is passed over without a message.
void loadDefinition(TagData& data, const std::string& path);

}  // namespace zendry
