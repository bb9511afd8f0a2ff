#include "code/TagLookup.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CodeText.h"

namespace zendry {
namespace {

using test::Tag;
using Want = TagLookup::Want;

class TagLookupTest : public ::testing::Test {
 protected:
  // Adds a class with one data member to the first module.
  void AddClass(const std::string& name, const std::string& bases, const std::string& member,
                const std::string& type = "") {
    stores.Class(name, 1, bases).members.push_back(Tag(member, 'm', type));
    stores.Changed();
  }
  // The found item as "OWNER.NAME:TYPE"; "none" for nothing.
  static std::string ToText(const TagItem* item) {
    if (!item) return "none";
    return (item->owner ? item->owner->name + "." : "") + item->name + ":" + item->type;
  }
  std::string Members(const std::string& className, const std::string& prefix = "") {
    std::vector<TagItem*> found;
    lookup.listMembers(found, className, prefix);
    std::string names;
    for (const TagItem* item : found) names += item->owner->name + "." + item->name + " ";
    return names;
  }
  std::string Globals(const std::string& prefix) {
    std::vector<TagItem*> found;
    lookup.listGlobals(found, prefix);
    std::string names;
    for (const TagItem* item : found) names += item->module->fileName + ":" + item->name + " ";
    return names;
  }

  test::CodeStores stores;
  TagLookup lookup{stores};
};

TEST_F(TagLookupTest, FindClass_FirstModuleThatHasItWins) {
  TagData& second = stores.Module("b.cpp");
  TagClass& late = test::CodeStores::AddClass(stores.Module("c.cpp"), "Foo", 5);
  TagClass& early = test::CodeStores::AddClass(second, "Foo", 9);
  stores.Changed();
  EXPECT_EQ(lookup.findClass("Foo"), &early);
  EXPECT_EQ(early.module, &second);
  EXPECT_EQ(late.module, nullptr);
  EXPECT_EQ(lookup.findClass("Fo"), nullptr);
}

TEST_F(TagLookupTest, FindClass_KnownFromItsMembersOnly_DoesNotCount) {
  stores.Class("Foo", -1);
  stores.Changed();
  EXPECT_EQ(lookup.findClass("Foo"), nullptr);
  TagClass& real = test::CodeStores::AddClass(stores.Module("b.cpp"), "Foo", 0);
  stores.Changed();
  EXPECT_EQ(lookup.findClass("Foo"), &real);
}

TEST_F(TagLookupTest, FindClass_LibraryComesLast) {
  stores.Class("Foo", -1);
  TagClass& library = test::CodeStores::AddClass(stores.libraryStore, "Foo", 0);
  library.module = &stores.libraryStore;
  stores.Changed();
  EXPECT_EQ(lookup.findClass("Foo"), &library);
  EXPECT_EQ(library.module, nullptr);
  TagClass& own = test::CodeStores::AddClass(stores.Module("b.cpp"), "Foo", 3);
  stores.Changed();
  EXPECT_EQ(lookup.findClass("Foo"), &own);
}

TEST_F(TagLookupTest, FindClass_WithoutLibraryOrModules_FindsNothing) {
  stores.library = nullptr;
  stores.modules.clear();
  EXPECT_EQ(lookup.findClass("Foo"), nullptr);
  EXPECT_EQ(lookup.findGlobal("Foo", "a.cpp"), nullptr);
  EXPECT_EQ(lookup.findMember("Foo", "x", Want::cDeclaration), nullptr);
}

TEST_F(TagLookupTest, FindGlobal_NamedModuleComesFirst) {
  stores.Module("a.cpp").globals = {Tag("g", 'v', "A")};
  stores.Module("b.cpp").globals = {Tag("h", 'v'), Tag("g", 'v', "B"), Tag("g", 'v', "C")};
  stores.Changed();
  EXPECT_EQ(ToText(lookup.findGlobal("g", "b.cpp")), "g:B");
  EXPECT_EQ(lookup.findGlobal("g", "b.cpp")->module, stores.modules[1]);
  EXPECT_EQ(ToText(lookup.findGlobal("g", "")), "g:A");
  EXPECT_EQ(ToText(lookup.findGlobal("g", "other.cpp")), "g:A");
  EXPECT_EQ(ToText(lookup.findGlobal("h", "a.cpp")), "h:");
}

TEST_F(TagLookupTest, FindGlobal_ClassStandsIn) {
  TagClass& record = stores.Class("Foo", 4);
  stores.Changed();
  EXPECT_EQ(lookup.findGlobal("Foo", "a.cpp"), &record);
  stores.Module().globals = {Tag("Foo", 'f', "int")};
  stores.Changed();
  EXPECT_EQ(ToText(lookup.findGlobal("Foo", "a.cpp")), "Foo:int");
}

TEST_F(TagLookupTest, FindMember_DeclarationOrDefinition) {
  stores.Class("Foo").members = {Tag("f", 'f', "outer", 9, 0), Tag("f", 'p', "proto", 2),
                                 Tag("g", 'f', "inline", 3, 'b'), Tag("x", 'm', "data", 4, 0)};
  stores.Changed();
  EXPECT_EQ(ToText(lookup.findMember("Foo", "f", Want::cDeclaration)), "Foo.f:proto");
  EXPECT_EQ(ToText(lookup.findMember("Foo", "f", Want::cDefinition)), "Foo.f:outer");
  EXPECT_EQ(ToText(lookup.findMember("Foo", "g", Want::cDeclaration)), "Foo.g:inline");
  EXPECT_EQ(ToText(lookup.findMember("Foo", "g", Want::cDefinition)), "Foo.g:inline");
  EXPECT_EQ(ToText(lookup.findMember("Foo", "x", Want::cDeclaration)), "none");
  EXPECT_EQ(ToText(lookup.findMember("Foo", "x", Want::cDefinition)), "Foo.x:data");
}

TEST_F(TagLookupTest, FindMember_PrototypeNeedsNoAccess) {
  stores.Class("Foo").members = {Tag("f", 'p', "proto", 2, 0)};
  stores.Changed();
  EXPECT_EQ(ToText(lookup.findMember("Foo", "f", Want::cDeclaration)), "Foo.f:proto");
}

TEST_F(TagLookupTest, FindMember_SetsModuleAndOwner) {
  TagData& module = stores.Module("b.cpp");
  TagClass& record = test::CodeStores::AddClass(module, "Foo", -1);
  record.members = {Tag("f", 'f')};
  stores.Changed();
  const TagItem* found = lookup.findMember("Foo", "f", Want::cDefinition);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->module, &module);
  EXPECT_EQ(found->owner, &record);
}

TEST_F(TagLookupTest, FindMember_BasesOfAModuleComeBeforeTheNextModule) {
  stores.Class("Foo", 1, "Base");
  AddClass("Base", "", "x", "base");
  test::CodeStores::AddClass(stores.Module("b.cpp"), "Foo", 1).members = {Tag("x", 'm', "second")};
  stores.Changed();
  EXPECT_EQ(ToText(lookup.findMember("Foo", "x", Want::cDeclaration)), "Base.x:base");
}

TEST_F(TagLookupTest, FindMember_DoesNotLookIntoTheLibrary) {
  test::CodeStores::AddClass(stores.libraryStore, "Foo", 0).members = {Tag("x", 'm')};
  EXPECT_EQ(lookup.findMember("Foo", "x", Want::cDeclaration), nullptr);
}

TEST_F(TagLookupTest, FindMemberInClass_LeavesOutDefinitionsOutside) {
  stores.Class("Foo").members = {Tag("f", 'f', "outer", 9, 0), Tag("x", 'm', "data", 1, 0)};
  stores.Changed();
  EXPECT_EQ(lookup.findMemberInClass("Foo", "f"), nullptr);
  EXPECT_EQ(ToText(lookup.findMemberInClass("Foo", "x")), "Foo.x:data");
}

TEST_F(TagLookupTest, FindMemberInClass_FindsInheritedMembersOfTheLibrary) {
  stores.Class("Foo", 1, "Lib");
  test::CodeStores::AddClass(stores.libraryStore, "Lib", 0).members = {Tag("x", 'm', "int")};
  stores.Changed();
  const TagItem* found = lookup.findMemberInClass("Foo", "x");
  EXPECT_EQ(ToText(found), "Lib.x:int");
  EXPECT_EQ(found->module, nullptr);
}

TEST_F(TagLookupTest, MemberOfTwoBases_IsThatOfTheBaseListedLast) {
  AddClass("A", "", "b", "ofA");
  AddClass("B", "", "b", "ofB");
  stores.Class("Foo", 1, "A,B");
  stores.Changed();
  EXPECT_EQ(ToText(lookup.findMemberInClass("Foo", "b")), "B.b:ofB");
  EXPECT_EQ(ToText(lookup.findMember("Foo", "b", Want::cDeclaration)), "B.b:ofB");
  EXPECT_EQ(Members("Foo"), "B.b A.b ");
}

TEST_F(TagLookupTest, Inheritance_IsWalkedSeventeenClassesDeep) {
  for (int i = 0; i < 20; ++i)
    AddClass("C" + std::to_string(i), "C" + std::to_string(i + 1), "x" + std::to_string(i));
  EXPECT_EQ(ToText(lookup.findMemberInClass("C0", "x16")), "C16.x16:");
  EXPECT_EQ(lookup.findMemberInClass("C0", "x17"), nullptr);
  EXPECT_EQ(ToText(lookup.findMember("C0", "x16", Want::cDeclaration)), "C16.x16:");
  EXPECT_EQ(lookup.findMember("C0", "x17", Want::cDeclaration), nullptr);
  EXPECT_TRUE(Members("C0").ends_with("C16.x16 "));
  EXPECT_EQ(ToText(lookup.findMemberInClass("C2", "x3", 15)), "C3.x3:");
  EXPECT_EQ(lookup.findMemberInClass("C2", "x4", 15), nullptr);
  EXPECT_EQ(lookup.findMemberInClass("C2", "x2", 17), nullptr);
}

TEST_F(TagLookupTest, InheritanceLoops_EndAtDepth17) {
  AddClass("A", "B", "a");
  AddClass("B", "A", "b");
  AddClass("Self", "Self", "s");
  EXPECT_EQ(lookup.findMemberInClass("A", "x"), nullptr);
  EXPECT_EQ(lookup.findMember("A", "x", Want::cDeclaration), nullptr);
  EXPECT_EQ(ToText(lookup.findMemberInClass("A", "b")), "B.b:");
  EXPECT_EQ(lookup.findMemberInClass("Self", "x"), nullptr);
}

TEST_F(TagLookupTest, LoopsOfManyBases_EndSoon) {
  std::string bases = "C0";
  for (int i = 1; i < 40; ++i) bases += ",C" + std::to_string(i);
  for (int i = 0; i < 40; ++i) AddClass("C" + std::to_string(i), bases, "x" + std::to_string(i));
  EXPECT_EQ(lookup.findMemberInClass("C0", "y"), nullptr);
  EXPECT_EQ(lookup.findMember("C0", "y", Want::cDeclaration), nullptr);
  std::vector<TagItem*> found;
  lookup.listMembers(found, "C0", "x1");
  EXPECT_GE(found.size(), 11u);
}

TEST_F(TagLookupTest, BrokenBases_ArePassedOver) {
  AddClass("A", "", "x");
  for (const char* bases : {",", ",,A,,", "A,", ",A", " ", "Foo,A,Foo"}) {
    stores.Class("Foo", 1, bases);
    stores.Changed();
    EXPECT_EQ(lookup.findMemberInClass("Foo", "x") != nullptr,
              std::string(bases).find('A') != std::string::npos)
        << bases;
  }
}

TEST_F(TagLookupTest, FindMemberPath_WalksTheTypes) {
  AddClass("Foo", "", "a", "Bar");
  AddClass("Bar", "Base", "b", "Baz");
  AddClass("Base", "", "inherited", "Baz");
  AddClass("Baz", "", "c", "int");
  EXPECT_EQ(ToText(lookup.findMemberPath("a", "Foo")), "Foo.a:Bar");
  EXPECT_EQ(ToText(lookup.findMemberPath("a.b.c", "Foo")), "Baz.c:int");
  EXPECT_EQ(ToText(lookup.findMemberPath("a.inherited.c", "Foo")), "Baz.c:int");
  EXPECT_EQ(lookup.findMemberPath("a.x.c", "Foo"), nullptr);
  EXPECT_EQ(lookup.findMemberPath("a.b.c.d", "Foo"), nullptr);
}

TEST_F(TagLookupTest, FindMemberPath_DotAtTheStartIsPartOfTheName) {
  AddClass("Foo", "", ".a.b", "dotted");
  AddClass("Foo", "", "a", "Bar");
  EXPECT_EQ(ToText(lookup.findMemberPath(".a.b", "Foo")), "Foo..a.b:dotted");
  EXPECT_EQ(ToText(lookup.findMemberPath("a.", "Foo")), "Foo.a:Bar");
  EXPECT_EQ(lookup.findMemberPath("", "Foo"), nullptr);
}

TEST_F(TagLookupTest, ListMembers_OwnFirstThenBasesFromTheLast) {
  AddClass("A", "", "a");
  AddClass("B", "", "b");
  AddClass("Foo", "A,B", "f");
  EXPECT_EQ(Members("Foo"), "Foo.f B.b A.a ");
}

TEST_F(TagLookupTest, ListMembers_TakesThePrefixOnly) {
  stores.Class("Foo", 1, "A").members = {Tag("first", 'm'), Tag("f", 'p'), Tag("second", 'm')};
  AddClass("A", "", "fine");
  EXPECT_EQ(Members("Foo", "fi"), "Foo.first A.fine ");
  EXPECT_EQ(Members("Foo", "zz"), "");
}

TEST_F(TagLookupTest, ListMembers_LeavesOutDefinitionsOutside) {
  stores.Class("Foo").members = {Tag("f", 'f', "", 9, 0), Tag("g", 'f', "", 3, 'i')};
  stores.Changed();
  EXPECT_EQ(Members("Foo"), "Foo.g ");
}

TEST_F(TagLookupTest, ListMembers_BaseMetTwice_IsListedOnce) {
  AddClass("Base", "", "x");
  AddClass("A", "Base", "a");
  AddClass("B", "Base", "b");
  AddClass("Foo", "A,B", "f");
  EXPECT_EQ(Members("Foo"), "Foo.f B.b Base.x A.a ");
}

TEST_F(TagLookupTest, ListMembers_ClassThatIsNotFound_IsLogged) {
  AddClass("Foo", "Gone", "f");
  EXPECT_EQ(Members("Foo"), "Foo.f ");
  EXPECT_EQ(stores.TakeLog(), " - class not found|Gone\n");
  EXPECT_EQ(Members(""), "");
  EXPECT_EQ(stores.TakeLog(), " - class not found|\n");
}

TEST_F(TagLookupTest, ListMembers_AtDepth17_IsEmpty) {
  AddClass("Foo", "", "f");
  std::vector<TagItem*> found;
  lookup.listMembers(found, "Foo", "", 17);
  EXPECT_TRUE(found.empty());
  EXPECT_EQ(stores.TakeLog(), "");
}

TEST_F(TagLookupTest, ListGlobals_FirstOfEachNameThenClasses) {
  stores.Module("a.cpp").globals = {Tag("fb", 'v'), Tag("fa", 'f'), Tag("x", 'v')};
  stores.Module("b.cpp").globals = {Tag("fa", 'v'), Tag("fc", 'v')};
  test::CodeStores::AddClass(stores.Module("b.cpp"), "fd", 2);
  stores.Changed();
  EXPECT_EQ(Globals("f"), "a.cpp:fa a.cpp:fb b.cpp:fc b.cpp:fd ");
  EXPECT_EQ(Globals(""), "a.cpp:fa a.cpp:fb b.cpp:fc a.cpp:x b.cpp:fd ");
  EXPECT_EQ(Globals("fz"), "");
}

TEST_F(TagLookupTest, ListGlobals_TakesWhatIsDeclaredAsAClass) {
  stores.Class("S").kind = 's';
  stores.Class("U").kind = 'u';
  stores.Class("M", -1);
  stores.Class("C");
  stores.Changed();
  EXPECT_EQ(Globals(""), "a.cpp:C a.cpp:S a.cpp:U ");
}

TEST_F(TagLookupTest, ListGlobals_TakesTheEnumeratorsOfEnumsInNoClass) {
  stores.Class("E", -1).members = {Tag("red", 'e'), Tag("size", 'm')};
  stores.Class("C").members = {Tag("blue", 'e')};
  stores.Changed();
  EXPECT_EQ(Globals(""), "a.cpp:C a.cpp:red ");
}

TEST_F(TagLookupTest, ListGlobals_ClearsTheOwner) {
  TagClass& record = stores.Class("Foo");
  record.owner = &record;
  stores.Changed();
  Globals("Foo");
  EXPECT_EQ(record.owner, nullptr);
}

}  // namespace
}  // namespace zendry
