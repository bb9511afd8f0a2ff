#pragma once

#include <map>
#include <string>
#include <vector>

#include "CppTokens.h"

namespace zendry {

using CppTokens = std::vector<CppToken>;

// A public member of a class as it was declared.
struct LibraryMember {
  enum Kind { cFunction, cData, cType };

  Kind kind = cData;
  std::string name;      // as in "operator []"
  CppTokens type;        // without what says nothing about the value; empty for constructors
  CppTokens parameters;  // without the parentheses
  bool isConst = false;
  bool isStatic = false;
  bool isDeleted = false;
};

struct LibraryBase {
  std::string name;  // last component of its name
  CppTokens type;
};

struct LibraryClass {
  std::string name;
  int header = -1;
  bool isSpecialisation = false;
  bool isOpenEnum = false;         // an enumeration whose values are names of what it stands in too
  std::vector<LibraryBase> bases;  // public ones
  std::vector<LibraryMember> members;
  std::vector<LibraryClass> nested;
};

// Another name for a type, outside of classes.
struct LibraryAlias {
  std::string name;
  int header = -1;
  CppTokens type;
};

// What a library's headers declare, in the order of appearance.
struct Library {
  std::vector<LibraryClass> classes;  // templates once, by their primary definition if there is one
  std::vector<LibraryAlias> aliases;
  std::map<std::string, size_t> byName;  // index of the class
};

// Reads the classes of the namespace `space` and of those in it from preprocessed headers. Inner
// namespaces whose names stand in `leftOut` or begin with an underscore are passed over; of two
// classes of one name the first one counts. Of a class its public members are taken, with
// `withProtected` the protected ones too. It takes for granted that the headers compile; what it
// doesn't understand it passes over.
Library ReadLibrary(const CppTokens& tokens, const std::string& space,
                    const std::vector<std::string>& leftOut, bool withProtected);

}  // namespace zendry
