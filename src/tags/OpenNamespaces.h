#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace zendry {

class TagData;
class TagIndex;
struct TagClass;

// The namespaces whose names a file may use without a qualifier: those that it opens, and those of
// its "using namespace".
class OpenNamespaces {
 public:
  using TextOf = std::function<std::string(const TagData&)>;

  // True for a namespace, "a::b", if the file opens its innermost part; true for none at all.
  bool IsOpen(std::string_view space, const TagData& file, const TextOf& textOf);

 private:
  struct Names {
    uint64_t generation = 0;  // of the file
    std::set<std::string, std::less<>> names;
  };
  std::map<const TagData*, Names> known;
};

// True if a namespace, "a::b::c", is the one that a qualifier means: "c", "b::c" or all of it.
bool IsNamespace(std::string_view space, std::string_view qualifier);

// The name of a class as its declaration has it: in `int n::A::f() {` the function belongs to the
// class A, which is declared within the namespace n. The name itself if that is a class, or if no
// class is left without what comes before it.
std::string_view WithoutNamespaces(const TagIndex& index, std::string_view name);

// A class in another one that a file defines with its namespace: A::Private, defined as
// `class n::A::Private { ... };`. Null without one.
TagClass* ClassInNamespace(const TagIndex& index, TagData& file, std::string_view name);

}  // namespace zendry
