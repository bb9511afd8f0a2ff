#pragma once

#include <map>
#include <string>
#include <vector>

#include "CppTokens.h"

namespace zendry {

using CppTokens = std::vector<CppToken>;

// A public member of a class, as declared.
struct LibraryMember {
  enum Kind { cFunction, cData, cType };

  Kind kind = cData;
  std::string name;      // as in "operator []"
  CppTokens type;        // without words that don't describe the value; empty for constructors
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
  std::string space;  // the last name of its namespace
  int header = -1;
  bool isSpecialisation = false;
  bool isOpenEnum = false;         // its values are also names of the enclosing scope
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

// A name outside of classes: a function, a variable, an enumerator, a type or a macro.
struct LibraryName {
  enum Kind { cDeclared, cType, cEnumerator, cMacro, cElsewhere };  // cElsewhere: by "using ::name"

  Kind kind = cDeclared;
  std::string space;      // the last name of its namespace; empty outside of all
  bool isInside = false;  // of the library's namespace
  LibraryMember member;
};

// The declarations of a library's headers, in the order of appearance.
struct Library {
  std::vector<LibraryClass> classes;  // templates once, by their primary definition if there is one
  std::vector<LibraryAlias> aliases;
  std::map<std::string, size_t> byName;  // index of the class
  std::vector<LibraryName> names;
  std::map<std::string, CppTokens> hiddenTypes;  // outside of classes, with a leading underscore
};

// Reads the classes of the namespace `space` and of its inner namespaces from preprocessed headers,
// and all names outside of classes. The namespace of C's headers is empty: nothing is outside of
// it. Skips inner namespaces whose names are in `leftOut` or begin with an underscore. If two
// classes have the same name, the first one counts. Takes the public members of a class, with
// `withProtected` the protected members too. Assumes that the headers compile; skips declarations
// that it doesn't understand.
Library ReadLibrary(const CppTokens& tokens, const std::string& space,
                    const std::vector<std::string>& leftOut, bool withProtected);

}  // namespace zendry
