#include "tags/TagIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "CodeText.h"
#include "NaiveWalk.h"
#include "code/TagLookup.h"

namespace zendry {
namespace {

using test::Tag;

// A project of a few modules whose tags have names and bases drawn from so few letters that
// everything collides: overloads, classes in several modules, loops, bases met twice.
class RandomProject {
 public:
  explicit RandomProject(unsigned seed) : random(seed) {
    const int modules = 1 + Below(5);
    for (int i = 0; i < modules; ++i) Fill(stores.Module(std::to_string(i) + ".cpp"));
    Fill(stores.libraryStore);
  }
  // As if the file had been parsed again.
  void ParseAgain() { Fill(*stores.modules[Below(static_cast<int>(stores.modules.size()))]); }
  void AddModule() { Fill(stores.Module(std::to_string(stores.modules.size()) + "n.cpp")); }
  void RemoveModule() {
    if (stores.modules.size() < 2) return;
    stores.modules.erase(stores.modules.begin() + Below(static_cast<int>(stores.modules.size())));
  }
  std::string Name() { return std::string(1, static_cast<char>('a' + Below(6))); }
  std::string FileName() { return std::to_string(Below(6)) + ".cpp"; }
  int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random); }

  test::CodeStores stores;

 private:
  void Fill(TagData& data) {
    data.clear();
    for (int i = Below(6); i > 0; --i) data.globals.push_back(Tag(Name(), "vfd"[Below(3)]));
    for (int i = Below(5); i > 0; --i) {
      TagClass& record = test::CodeStores::AddClass(data, Name(), Below(3) - 1);
      if (record.line >= 0) {
        record.kind = "csu"[Below(3)];
        record.inheritance = Bases();
      }
      for (int m = Below(5); m > 0; --m)
        record.members.push_back(Tag(Name(), "mfp"[Below(3)], Name(), 1, Below(2) ? 'b' : 0));
    }
    data.Changed();
  }
  // Mostly one base; with more the walk through loops takes too long.
  std::string Bases() {
    const int draw = Below(20);
    if (draw < 8) return {};
    return draw < 19 ? Name() : Name() + "," + Name();
  }

  std::mt19937 random;
};

// Each item once, at its first place.
std::vector<TagItem*> FirstPlaces(const std::vector<TagItem*>& items) {
  std::vector<TagItem*> first;
  std::set<TagItem*> met;
  for (TagItem* item : items)
    if (met.insert(item).second) first.push_back(item);
  return first;
}

// The first item of each name, sorted.
std::vector<TagItem*> FirstNames(std::vector<TagItem*> items) {
  const auto isBefore = [](const TagItem* a, const TagItem* b) { return a->name < b->name; };
  const auto isSame = [](const TagItem* a, const TagItem* b) { return a->name == b->name; };
  std::stable_sort(items.begin(), items.end(), isBefore);
  items.erase(std::unique(items.begin(), items.end(), isSame), items.end());
  return items;
}

void ExpectSameAnswers(RandomProject& project, TagLookup& lookup) {
  test::NaiveWalk naive(project.stores);
  for (int i = 0; i < 10; ++i) {
    const std::string name = project.Name();
    const std::string other = project.Name();
    const std::string file = project.Below(3) ? project.FileName() : "";
    const std::string prefix = project.Below(2) ? other : "";
    ASSERT_EQ(lookup.findClass(name), naive.FindClass(name));
    ASSERT_EQ(lookup.findGlobal(name, file), naive.FindGlobal(name, file));
    ASSERT_EQ(lookup.findMember(name, other, TagLookup::Want::cDeclaration),
              naive.FindMember(name, other, false, 0));
    ASSERT_EQ(lookup.findMember(name, other, TagLookup::Want::cDefinition),
              naive.FindMember(name, other, true, 0));
    ASSERT_EQ(lookup.findMemberInClass(name, other), naive.FindMemberInClass(name, other, 0));
    std::vector<TagItem*> found, expected;
    lookup.listMembers(found, name, prefix);
    naive.ListMembers(expected, name, prefix, 0);
    ASSERT_EQ(FirstPlaces(found), FirstPlaces(expected));
    found.clear();
    expected.clear();
    lookup.listGlobals(found, prefix);
    naive.ListGlobals(expected, prefix);
    ASSERT_EQ(FirstNames(found), FirstNames(expected));
  }
}

TEST(TagIndex, RandomStores_GiveTheAnswersOfTheWalk) {
  for (unsigned seed = 0; seed < 60; ++seed) {
    SCOPED_TRACE(seed);
    RandomProject project(seed);
    TagLookup lookup(project.stores);
    ExpectSameAnswers(project, lookup);
    if (HasFatalFailure()) return;
  }
}

TEST(TagIndex, StoresThatChange_GiveTheAnswersOfTheWalk) {
  for (unsigned seed = 0; seed < 25; ++seed) {
    SCOPED_TRACE(seed);
    RandomProject project(seed);
    TagLookup lookup(project.stores);
    for (int step = 0; step < 5; ++step) {
      const int change = project.Below(8);
      if (change == 0)
        project.AddModule();
      else if (change == 1)
        project.RemoveModule();
      else
        for (int more = project.Below(3); more >= 0; --more) project.ParseAgain();
      ExpectSameAnswers(project, lookup);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(TagIndex, ModuleReplacedAtItsPlace_IsSeen) {
  test::CodeStores stores;
  stores.Module("a.cpp").globals = {Tag("old", 'v')};
  stores.Changed();
  TagIndex index;
  index.Update(stores.modules);
  EXPECT_NE(index.FindGlobal("old", ""), nullptr);
  *stores.modules[0] = TagData();
  stores.modules[0]->fileName = "b.cpp";
  stores.modules[0]->globals = {Tag("new", 'v', "own")};
  index.Update(stores.modules);
  EXPECT_EQ(index.FindGlobal("old", ""), nullptr);
  ASSERT_NE(index.FindGlobal("new", "b.cpp"), nullptr);
}

TEST(TagIndex, UnchangedStores_KeepTheirPlaces) {
  test::CodeStores stores;
  stores.Module("a.cpp").globals = {Tag("x", 'v')};
  stores.Module("b.cpp").globals = {Tag("y", 'v')};
  stores.Changed();
  TagIndex index;
  index.Update(stores.modules);
  stores.Module("b.cpp").clear();
  index.Update(stores.modules);
  EXPECT_EQ(index.Globals().All().size(), 1u);
  EXPECT_EQ(index.FindGlobal("x", "")->module, stores.modules[0]);
}

// The tags that a module had before are gone: those of two may not be compared with each other.
TEST(TagIndex, TwoModulesThatChange_AreSeen) {
  test::CodeStores stores;
  for (const char* name : {"a.cpp", "b.cpp", "c.cpp"}) {
    TagData& module = stores.Module(name);
    for (char letter = 'a'; letter < 'm'; ++letter)
      module.globals.push_back(Tag(std::string(20, letter), 'v'));
  }
  stores.Changed();
  TagIndex index;
  index.Update(stores.modules);
  for (const int changed : {0, 2}) {
    TagData& module = *stores.modules[changed];
    module.globals = {Tag(std::string(20, 'z'), 'v', std::to_string(changed))};
    module.Changed();
  }
  index.Update(stores.modules);
  EXPECT_EQ(index.FindGlobal(std::string(20, 'z'), "c.cpp")->type, "2");
  EXPECT_EQ(index.FindGlobal(std::string(20, 'a'), "a.cpp")->module, stores.modules[1]);
  EXPECT_EQ(index.Globals().All().size(), 14u);
}

TEST(TagIndex, NoModules_HasNothing) {
  TagIndex index;
  index.Update({});
  EXPECT_EQ(index.FindClass("x"), nullptr);
  EXPECT_EQ(index.FindGlobal("x", ""), nullptr);
  EXPECT_TRUE(index.Classes().Named("x").empty());
}

TEST(TagIndex, TwoModulesOfOneName_FirstIsMeant) {
  test::CodeStores stores;
  stores.Module("a.cpp");
  stores.Module("b.cpp").globals = {Tag("g", 'v', "first")};
  stores.stores.emplace_back().fileName = "b.cpp";
  stores.stores.back().globals = {Tag("g", 'v', "second")};
  stores.modules.push_back(&stores.stores.back());
  stores.Changed();
  TagIndex index;
  index.Update(stores.modules);
  EXPECT_EQ(index.FindGlobal("g", "b.cpp")->type, "first");
}

}  // namespace
}  // namespace zendry
