#pragma once

#include <string>
#include <vector>

#include "LibraryReader.h"

namespace zendry {

// A part of a digest: the declarations of one header, or the next part of them.
struct DigestPart {
  int header = -1;
  std::string text;
};

// Writes a library's classes as plain declarations that the tag parser understands, independent of
// the style of the library's headers: one member on a line, no templates, attributes or bodies, no
// names that only the library's authors need.
//
// - Members that a class inherits from bases with a leading underscore are written as its own.
// - A class that the library has for several kinds of letters ("basic_string") is written under the
//   name that everybody uses ("string"); names for other kinds are derived from it.
// - Further names of a class are classes derived from it, so that they are found.
// - The values of an enumeration that isn't one of C are its static members.
//
// No line has 1024 characters, and no part gives more tags than the parser takes from one file.
std::vector<DigestPart> WriteDigest(const Library& library);

// The names of a library that are in no class, as the lines of its file of names (LibraryNames.h):
// functions with their parameters, macros, types, variables and enumerators, and the classes of
// inner namespaces other than `space`. Variants for further floating types are left out, and
// overloads with a policy of execution.
std::string WriteNames(const Library& library, const std::string& space);

}  // namespace zendry
