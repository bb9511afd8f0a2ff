#include "code/ContainerTypes.h"

#include <gtest/gtest.h>

#include <string>

namespace zendry {
namespace {

std::string ToText(const std::optional<TypeText>& type) {
  return type ? Print(*type) : "none";
}

TypeText Type(const char* text) {
  return *ReadTypeText(text);
}

struct Row {
  const char* type;
  const char* element;
  const char* pointee;
  const char* indexed;
};

TEST(ContainerTypes, Iterators_AreThoseOfAClassAndNoPointers) {
  EXPECT_EQ(ToText(PointeeOf(Type("std::vector<A>::iterator"))), "A");
  EXPECT_EQ(ToText(PointeeOf(Type("std::vector<A>::iterator*"))), "none");
  EXPECT_EQ(ToText(PointeeOf(Type("iterator"))), "none");
  EXPECT_EQ(ToText(PointeeOf(Type("std::vector<A>::iterators"))), "none");
}

TEST(ContainerTypes, ElementPointeeAndIndex) {
  const Row rows[] = {
      {"std::vector<A>", "A", "none", "A"},
      {"vector<A*>", "A*", "none", "A*"},
      {"deque<A>", "A", "none", "A"},
      {"array<A, 3>", "A", "none", "A"},
      {"span<A>", "A", "none", "A"},
      {"list<A>", "A", "none", "none"},
      {"std::unordered_set<A>", "A", "none", "none"},
      {"initializer_list<A>", "A", "none", "none"},
      {"std::map<K, A>", "pair<K,A>", "none", "A"},
      {"unordered_map<K, A>", "pair<K,A>", "none", "A"},
      {"multimap<K, A>", "pair<K,A>", "none", "none"},
      {"std::unique_ptr<A>", "A", "A", "A"},
      {"std::shared_ptr<A>", "A", "A", "A"},
      {"std::optional<A>", "A", "A", "A"},
      {"std::vector<A>::iterator", "A", "A", "A"},
      {"map<K, A>::const_iterator", "pair<K,A>", "pair<K,A>", "pair<K,A>"},
      {"stack<A>", "none", "none", "none"},
      {"std::vector", "none", "none", "none"},
      {"std::vector<3>", "none", "none", "none"},
      {"std::vector<A>*", "none", "none", "none"},
      {"own::vector<A>", "none", "none", "none"},
      {"Foo<A>", "none", "none", "none"},
      {"Foo<A>::iterator", "none", "none", "none"},
      {"iterator", "none", "none", "none"},
  };
  for (const auto& [type, element, pointee, indexed] : rows) {
    EXPECT_EQ(ToText(ElementOf(Type(type))), element) << type;
    EXPECT_EQ(ToText(PointeeOf(Type(type))), pointee) << type;
    EXPECT_EQ(ToText(IndexedOf(Type(type))), indexed) << type;
  }
}

TEST(ContainerTypes, Members) {
  const std::array<const char*, 3> rows[] = {
      {"std::vector<A>", "front", "A"},
      {"std::vector<A>", "back", "A"},
      {"std::vector<A>", "at", "A"},
      {"std::vector<A>", "emplace_back", "A"},
      {"std::vector<A>", "data", "A*"},
      {"std::vector<A>", "begin", "std::vector<A>::iterator"},
      {"std::vector<A>", "value_type", "A"},
      {"std::vector<A>", "const_iterator", "std::vector<A>::iterator"},
      {"std::vector<A>", "size", "none"},
      {"stack<A>", "top", "A"},
      {"map<K, A>", "at", "A"},
      {"map<K, A>", "find", "map<K,A>::iterator"},
      {"map<K, A>", "insert", "pair<map<K,A>::iterator,bool>"},
      {"multimap<K, A>", "insert", "multimap<K,A>::iterator"},
      {"set<A>", "insert", "pair<set<A>::iterator,bool>"},
      {"pair<A, B>", "first", "A"},
      {"pair<A, B>", "second", "B"},
      {"unique_ptr<A>", "get", "A*"},
      {"unique_ptr<A>", "release", "A*"},
      {"weak_ptr<A>", "lock", "shared_ptr<A>"},
      {"optional<A>", "value", "A"},
      {"future<A>", "get", "A"},
      {"atomic<A>", "load", "A"},
      {"pair<A>", "second", "none"},
      {"Foo<A>", "front", "none"},
      {"vector<A>", "", "none"},
  };
  for (const auto& [type, member, expected] : rows)
    EXPECT_EQ(ToText(MemberOf(Type(type), member)), expected) << type << " " << member;
}

TEST(ContainerTypes, Bindings) {
  EXPECT_EQ(ToText(BoundOf(Type("std::pair<A, B>"), 1)), "B");
  EXPECT_EQ(ToText(BoundOf(Type("tuple<A, B, C>"), 2)), "C");
  EXPECT_EQ(ToText(BoundOf(Type("tuple<A>"), 1)), "none");
  EXPECT_EQ(ToText(BoundOf(Type("vector<A>"), 0)), "none");
}

TEST(ContainerTypes, Classes) {
  EXPECT_TRUE(IsContainerType(Type("std::map<K, V>")));
  EXPECT_TRUE(IsContainerType(Type("map<K, V>::iterator")));
  EXPECT_FALSE(IsContainerType(Type("Map<K, V>")));
  EXPECT_FALSE(IsContainerType(TypeText()));
  EXPECT_TRUE(IsArrowForeign("unique_ptr"));
  EXPECT_TRUE(IsArrowForeign("iterator"));
  EXPECT_TRUE(IsArrowForeign("vector"));
  EXPECT_FALSE(IsArrowForeign("string"));
  EXPECT_FALSE(IsArrowForeign(""));
}

TEST(ClassOfVariable, OfTheStreams) {
  EXPECT_EQ(ClassOfVariable("cout"), "ostream");
  EXPECT_EQ(ClassOfVariable("cin"), "istream");
  EXPECT_EQ(ClassOfVariable("ou"), "");
  EXPECT_EQ(ClassOfVariable(""), "");
}

TEST(ResultOf, Functions) {
  EXPECT_EQ(ResultOf("to_string"), CallResult::cString);
  EXPECT_EQ(ResultOf("move"), CallResult::cArgument);
  EXPECT_EQ(ResultOf("find_if"), CallResult::cArgument);
  EXPECT_EQ(ResultOf("begin"), CallResult::cIterator);
  EXPECT_EQ(ResultOf("make_unique"), CallResult::cUniquePointer);
  EXPECT_EQ(ResultOf("make_shared"), CallResult::cSharedPointer);
  EXPECT_EQ(ResultOf("mov"), CallResult::cUnknown);
  EXPECT_EQ(ResultOf(""), CallResult::cUnknown);
}

}  // namespace
}  // namespace zendry
