#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zendry {

class CodeTokens;
struct TypePart;

// A type as it is written: "const std::map<int, ns::Foo*>::iterator &" has the parts "std", "map"
// with two arguments, and "iterator". Words that don't affect its members are left out, and so is
// the reference.
struct TypeText {
  std::vector<TypePart> path;  // empty for a template argument that isn't a type
  int pointers = 0;            // "*" and "[]" after it
  bool isExact = true;         // false: it may also be a pointer

  bool IsEmpty() const { return path.empty(); }
  // The last name of the path; empty without one.
  const std::string& Name() const;
  // The template arguments of the last name; empty for a type without any.
  const std::vector<TypeText>& Arguments() const;
  // The argument at this index; an empty type without one.
  TypeText Argument(size_t index) const;
  // The names of the path joined by "::", from the part `first` on.
  std::string Names(size_t first = 0) const;
  // The type without its last name: the scope of that name.
  TypeText Outer() const;
};

// A name of a path with its template arguments.
struct TypePart {
  std::string name;
  std::vector<TypeText> arguments;
};

// True for a built-in type of the language, such as "unsigned int".
bool IsBuiltIn(const TypeText& type);
// The type with this single name.
TypeText TypeOfName(std::string_view name, bool isExact = true);

// Reads the type at the token `at`, without the pointers after it, and moves `at` to the token
// after the type. Without a type there, it returns nothing and `at` may be anywhere.
std::optional<TypeText> ReadType(const CodeTokens& tokens, int& at);
// True for a word such as FAR between a type and its "*".
bool IsMacroBeforePointer(const CodeTokens& tokens, int at);
// Reads "*", "&" and "const" after a type. Returns the number of pointers.
int ReadPointers(const CodeTokens& tokens, int& at);
// Reads a whole text as a type with its pointers.
std::optional<TypeText> ReadTypeText(std::string_view text);
// The type as a text again: "std::map<int,ns::Foo*>::iterator".
std::string Print(const TypeText& type);

}  // namespace zendry
