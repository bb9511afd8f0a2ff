#pragma once

#include <optional>
#include <string_view>

#include "code/TypeText.h"

namespace zendry {

// The types that the standard library's containers, iterators and smart pointers give. Their
// headers express them with template parameters ("reference", "Tp"), which tags can't resolve; the
// tables here express them with the arguments of the type as it was written. A "std" before the
// name doesn't matter.

// True if the tables know the class.
bool IsContainerType(const TypeText& type);
// True if "->" never leads to the members of that library class itself: it is a container, a smart
// pointer or an iterator.
bool IsArrowForeign(std::string_view className);
// The type of "*x", or of an element in a range "for" over x. For an iterator
// ("std::vector<Foo>::iterator"), a container, a smart pointer or an optional; nothing for others.
std::optional<TypeText> ElementOf(const TypeText& type);
// The type that "x->" leads to: for smart pointers, optionals and iterators, not for containers.
std::optional<TypeText> PointeeOf(const TypeText& type);
// The type of "x[i]".
std::optional<TypeText> IndexedOf(const TypeText& type);
// The type of "x.member" or a call of it, for the members that depend on the template arguments.
std::optional<TypeText> MemberOf(const TypeText& type, std::string_view member);
// The type of a name in a structured binding by its position, for pairs and tuples.
std::optional<TypeText> BoundOf(const TypeText& type, size_t place);

// The kind of value that a call of a standard library function gives.
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
