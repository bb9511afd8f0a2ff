#include <gtest/gtest.h>

#include <string>

#include "ParsedProject.h"

// What the project's own class templates give: elements, iterators, members of their bases.

namespace zendry {
namespace {

class TemplateTypes : public ::testing::Test {
 protected:
  TemplateTypes() {
    project.Add("/p/list.h",
                "#include <list>\n#include <map>\nnamespace own {\n"
                "struct Item {\n  int size;\n  int name();\n};\n"
                "template <class T> class List {\npublic:\n"
                "  typedef typename std::list<T>::iterator Iterator;\n"
                "  typedef T Element;\n"
                "  using Pair = std::pair<int, T>;\n"
                "  Iterator begin();\n  Iterator find(int n);\n  Element first();\n  Pair pair();\n"
                "};\n"
                "template <class Key, class T> class Map {\npublic:\n"
                "  typedef typename std::map<Key, T>::iterator Iterator;\n  Iterator begin();\n};\n"
                "template <class T> class Ring {\npublic:\n"
                "  struct Cursor {\n    T& operator*();\n    T* operator->();\n"
                "    Cursor& operator++();\n  };\n"
                "  Cursor begin();\n  Cursor end();\n};\n"
                "struct Walk {\n  Item& operator*() const;\n  bool operator!=(Walk w);\n};\n"
                "struct Range {\n  Walk begin() const;\n  Walk end() const;\n};\n"
                "struct Closed {\n  int begin() const;\n};\n"
                "typedef List<Item*> Items;\ntypedef Map<int, Items> Table;\n}\n");
  }
  std::string In(const std::string& body) {
    return project.Names(
        "/p/main.cpp",
        "#include \"list.h\"\nusing namespace own;\nvoid f() {\n  " + body + "\n}\n");
  }

  static constexpr const char* cItem = "name size";
  test::ParsedProject project;
};

TEST_F(TemplateTypes, ElementsOfAnOwnContainer) {
  EXPECT_EQ(In("Items items; for (auto item : items) item->@"), cItem);
  EXPECT_EQ(In("Items items; auto it = items.begin(); (*it)->@"), cItem);
  EXPECT_EQ(In("Items items; (*items.find(2))->@"), cItem);
  EXPECT_EQ(In("Items items; items.first()->@"), cItem);
  EXPECT_EQ(In("Items items; items.pair().second->@"), cItem);
  EXPECT_EQ(In("Table t; for (const auto& entry : t) entry.second.@"), "begin find first pair");
  EXPECT_EQ(In("Table t; for (auto& [id, list] : t) list.@"), "begin find first pair");
  EXPECT_EQ(In("Table t; auto it = t.begin(); it->second.first()->@"), cItem);
}

TEST_F(TemplateTypes, ElementsByTheIteratorsOperator) {
  EXPECT_EQ(In("Ring<Item> ring; for (auto& item : ring) item.@"), cItem);
  EXPECT_EQ(In("Ring<Item*> ring; for (auto item : ring) item->@"), cItem);
  EXPECT_EQ(In("Range range; for (auto& item : range) item.@"), cItem);
  EXPECT_EQ(In("Range range; auto it = range.begin(); (*it).@"), cItem);
  EXPECT_EQ(In("Closed range; for (auto& item : range) item.@"), "") << "its begin is no iterator";
}

TEST_F(TemplateTypes, MembersOfABaseWithArguments) {
  project.Add(
      "/p/base.h",
      "template <class Self> class Base {\npublic:\n  Self* required();\n  Self* link;\n};\n"
      "class Leaf : public Base<Leaf> {\npublic:\n  Leaf* check();\n  int own;\n};\n"
      "template <class T> class Next : public Base<T> {\npublic:\n  int next;\n};\n"
      "class Last : private Next<Leaf>, public Next<Last> {\npublic:\n  int last;\n};\n");
  const auto in = [&](const std::string& body) {
    return project.Names("/p/main.cpp", "#include \"base.h\"\nvoid f() {\n  " + body + "\n}\n");
  };
  EXPECT_EQ(in("Leaf leaf; leaf.required()->@"), "check link own required");
  EXPECT_EQ(in("Leaf leaf; leaf.check()->required()->link->@"), "check link own required");
  EXPECT_EQ(in("Next<Leaf> n; n.required()->@"), "check link own required");
  EXPECT_EQ(in("Next<int> n; n.required()->@"), "");
}

TEST_F(TemplateTypes, MemberWithSeveralDeclarations_ByTheNumberOfArguments) {
  project.Add("/p/set.h",
              "struct Name { int letters; };\n"
              "class Set {\npublic:\n  Name section() const;\n  Set* section(int number);\n"
              "  Set* both(int a, int b = 0);\n};\n");
  const auto in = [&](const std::string& body) {
    return project.Names("/p/main.cpp", "#include \"set.h\"\nvoid f(Set s) {\n  " + body + "\n}\n");
  };
  EXPECT_EQ(in("s.section().@"), "letters");
  EXPECT_EQ(in("s.section(1)->@"), "both section");
  EXPECT_EQ(in("s.both(1)->section(2)->section().@"), "letters");
}

TEST_F(TemplateTypes, ResultIsTheDefaultOfAParameter) {
  project.Add(
      "/p/make.h",
      "class Group { public: int add(); };\n"
      "class App {\npublic:\n  template <typename T = Group> T* group(int n) { return 0; }\n"
      "  template <typename T> T* other(int n) { return 0; }\n};\n");
  const auto in = [&](const std::string& body) {
    return project.Names("/p/main.cpp",
                         "#include \"make.h\"\nvoid f(App a) {\n  " + body + "\n}\n");
  };
  EXPECT_EQ(in("a.group(1)->@"), "add");
  EXPECT_EQ(in("auto g = a.group(1); g->@"), "add");
  EXPECT_EQ(in("a.other(1)->@"), "");
}

// `class n::A::Private { ... };` in a source completes `class Private;` of the class.
TEST_F(TemplateTypes, NestedClassThatIsDefinedElsewhere) {
  project.Add(
      "/p/file.h",
      "namespace lib { namespace in {\nclass File {\npublic:\n  int open();\nprivate:\n"
      "  class Private;\n  Private* d;\n};\nclass Other {\n  class Private;\n  Private* d;\n"
      "  int look();\n};\n} }\n");
  const std::string code =
      "#include \"file.h\"\nusing namespace lib;\n"
      "class in::File::Private {\npublic:\n  int handle;\n  File* file;\n};\n";
  EXPECT_EQ(project.Names("/p/file.cpp", code + "int in::File::open() {\n  d->@\n}\n"),
            "file handle");
  EXPECT_EQ(project.Names("/p/file.cpp", code + "int in::File::open() {\n  d->file->d->@\n}\n"),
            "file handle");
  EXPECT_EQ(project.Names("/p/file.cpp", code + "int in::Other::look() {\n  d->@\n}\n"), "")
      << "another class's";
}

}  // namespace
}  // namespace zendry
