#pragma once

#include <optional>
#include <string_view>

#include "code/TypeText.h"

namespace zendry {

// What the standard library's containers, iterators and smart pointers give. Their headers say it
// with parameters of templates ("reference", "Tp"), which no tag resolves; the tables here say it
// in terms of the arguments of the type as it was written. A "std" before the name doesn't matter.

// Whether the tables know the class.
bool IsContainerType(const TypeText& type);
// Whether "->" never leads to the members of that class of the library itself: it is a container, a
// smart pointer or an iterator.
bool IsArrowForeign(std::string_view className);
// What "*x", a range "for" over it or an element of a range has as its type; for an iterator
// ("std::vector<Foo>::iterator"), a container, a smart pointer or an optional. Nothing for others.
std::optional<TypeText> ElementOf(const TypeText& type);
// What "x->" leads to: of smart pointers, optionals and iterators, not of containers.
std::optional<TypeText> PointeeOf(const TypeText& type);
// What "x[i]" is.
std::optional<TypeText> IndexedOf(const TypeText& type);
// What "x.member" or a call of it is, for the members that depend on the template arguments.
std::optional<TypeText> MemberOf(const TypeText& type, std::string_view member);
// The type of a name of a structured binding by its place: of pairs and tuples.
std::optional<TypeText> BoundOf(const TypeText& type, size_t place);

// What a call of a function of the standard library gives.
enum class CallResult {
  cUnknown,
  cArgument,       // the type of its first argument: "std::move(x)"
  cIterator,       // an iterator of its first argument: "std::begin(x)"
  cUniquePointer,  // to its first template argument
  cSharedPointer,
  cString,
};
CallResult ResultOf(std::string_view function);
// The class of a variable of the standard library, such as "cout"; empty for other names.
std::string_view ClassOfVariable(std::string_view name);

}  // namespace zendry
