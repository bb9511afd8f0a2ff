#include <gtest/gtest.h>

#include <string>

#include "TagRun.h"

// How tags come into the store.

namespace zendry {
namespace {

using test::ParseTags;

TagFacts Facts(std::string_view name, char kind) {
  TagFacts facts;
  facts.name = name;
  facts.kind = kind;
  facts.lineNumber = 7;
  return facts;
}

// A store that the parser has been bound to, with nothing in it.
class TagStore : public testing::Test {
 protected:
  void SetUp() override {
    run = ParseTags("", "a.cpp");
    theTagParser.Bind(store);
  }

  test::TagRun run;
  TagData store;
};

TEST_F(TagStore, Variable_IsAGlobal) {
  const test::TagRun one = ParseTags("int a;");
  EXPECT_EQ(one.store.globals.size(), 1u);
  EXPECT_TRUE(one.store.classes.empty());
}

TEST_F(TagStore, FunctionOfAClassNeverSeen_MakesARecordWithoutKind) {
  const test::TagRun one = ParseTags("void A::f() {}");
  const TagClass& record = one.store.classes.at("A");
  EXPECT_EQ(record.name, "A");
  EXPECT_EQ(record.line, -1);
  EXPECT_EQ(record.kind, 0);
  ASSERT_EQ(record.members.size(), 1u);
  EXPECT_EQ(record.members[0].kind, 'f');
}

TEST_F(TagStore, ClassSeenAfterItsMembers_KeepsThem) {
  const test::TagRun one = ParseTags("void A::f() {}\nclass A : B { int c; };");
  const TagClass& record = one.store.classes.at("A");
  EXPECT_EQ(record.kind, 'c');
  EXPECT_EQ(record.line, 2);
  EXPECT_EQ(record.inheritance, "B");
  EXPECT_EQ(record.members.size(), 2u);
}

TEST_F(TagStore, Classes_AreNumberedInTheirOrder) {
  const test::TagRun one = ParseTags("struct B {}; class A {}; union C {};");
  EXPECT_EQ(one.store.classes.at("B").serial, 1);
  EXPECT_EQ(one.store.classes.at("A").serial, 2);
  EXPECT_EQ(one.store.classes.at("C").serial, 3);
  EXPECT_EQ(one.store.classCount, 3);
}

TEST_F(TagStore, NestedClass_StandsUnderItsQualifiedName) {
  const test::TagRun one = ParseTags("namespace n { class A { struct B { int x; }; }; }");
  EXPECT_EQ(one.store.classes.count("A"), 1u);
  EXPECT_EQ(one.store.classes.at("A::B").members.at(0).name, "x");
}

TEST_F(TagStore, Enumerators_AreMembersOfTheClassAround) {
  const test::TagRun one = ParseTags("class A { enum E { X }; };\nenum F { Y };");
  const auto& members = one.store.classes.at("A").members;
  ASSERT_EQ(members.size(), 2u);
  EXPECT_EQ(members[1].name, "X");
  EXPECT_EQ(one.store.classes.at("F").members.at(0).name, "Y");
}

TEST_F(TagStore, Access_IsItsThirdLetter) {
  const test::TagRun one =
      ParseTags("class A { int a; protected: int b; public: int c; friend void d(); };");
  const auto& members = one.store.classes.at("A").members;
  EXPECT_EQ(members.at(0).access, 'i');
  EXPECT_EQ(members.at(1).access, 'o');
  EXPECT_EQ(members.at(2).access, 'b');
  EXPECT_EQ(members.at(3).access, 'i');
}

TEST_F(TagStore, AccessOfAGlobal_IsNone) {
  TagFacts facts = Facts("a", 'v');
  facts.access = "public";
  theTagParser.addTag(facts);
  EXPECT_EQ(store.globals.at(0).access, 0);
}

TEST_F(TagStore, Signature_IsKept) {
  EXPECT_EQ(ParseTags("int f(int a) { }").store.globals.at(0).signature, "(int a)");
}

TEST_F(TagStore, NamelessAndSystemNames_AreDropped) {
  theTagParser.addTag(TagFacts());
  theTagParser.addTag(Facts("", 'v'));
  theTagParser.addTag(Facts("_a", 'v'));
  EXPECT_TRUE(store.globals.empty());
}

TEST_F(TagStore, AtSign_IsTheTypeBefore) {
  TagFacts facts = Facts("a", 'v');
  facts.typeRef = "int";
  theTagParser.addTag(facts);
  facts.typeRef = "@";
  theTagParser.addTag(facts);
  facts.typeRef = {};
  theTagParser.addTag(facts);
  EXPECT_EQ(store.globals.at(1).type, "int");
  EXPECT_EQ(store.globals.at(2).type, "");
}

TEST_F(TagStore, ClassWithoutScopeName_IsAnAssertion) {
  EXPECT_DEATH(theTagParser.addTag(Facts("A", 'c')), "clsN!=NULL");
}

TEST_F(TagStore, MemberWithoutScopeName_IsAnAssertion) {
  TagFacts facts = Facts("a", 'm');
  facts.scopeKind = "class";
  EXPECT_DEATH(theTagParser.addTag(facts), "clsN!=NULL");
}

TEST_F(TagStore, FileId_IsStampedOnEveryTag) {
  test::TextReader reader("class A { int b; }; int c; void D::e() {}");
  theTagParser.Bind(store, &reader);
  EXPECT_FALSE(theTagParser.parseFile("x.h", 42));
  EXPECT_EQ(store.globals.at(0).fileId, 42);
  EXPECT_EQ(store.classes.at("A").fileId, 42);
  EXPECT_EQ(store.classes.at("A").members.at(0).fileId, 42);
  EXPECT_EQ(store.classes.at("D").fileId, 42);
}

TEST_F(TagStore, ParsingAgain_AddsToWhatIsThere) {
  test::TextReader reader("int a;");
  store.fileName = "a.cpp";
  theTagParser.parseBuffer(store, &reader, false);
  theTagParser.parseBuffer(store, &reader, false);
  EXPECT_EQ(store.globals.size(), 2u);
}

TEST_F(TagStore, TagsThatAreOnlyTold_AreTheSameAndAreNotStored) {
  const std::string text =
      "#include \"b.h\"\nclass A : B { friend class C; using B::b; int f(); union { int u; }; };\n"
      "struct { int x, y; } both;\ntypedef struct { int z; } Z;\nenum E { e1, e2 };\nint a, *p;\n"
      "namespace n { class D { MACRO class I {}; }; }\nint A::f() { return 0; }\nusing U = Z;\n";
  const test::TagRun stored = test::ParseTags(text);
  theTagParser.storesTags = false;
  const test::TagRun told = test::ParseTags(text);
  theTagParser.storesTags = true;
  EXPECT_FALSE(stored.store.globals.empty());
  EXPECT_FALSE(stored.store.classes.empty());
  EXPECT_EQ(told.lines, stored.lines);
  EXPECT_TRUE(told.store.globals.empty());
  EXPECT_TRUE(told.store.classes.empty());
  EXPECT_TRUE(told.store.includes.empty());
  EXPECT_EQ(test::ParseTags(text).store.includes.size(), 1u);
}

TEST_F(TagStore, Locals_AreStoredWhenAskedForOnly) {
  test::TagRunOptions options;
  options.locals = true;
  EXPECT_EQ(ParseTags("void f() { int a; }", "a.cpp", options).store.globals.size(), 2u);
  EXPECT_EQ(ParseTags("void f() { int a; }").store.globals.size(), 1u);
}

TEST_F(TagStore, Change_IsReported) {
  const uint64_t before = store.Generation();
  test::TextReader reader("int a;");
  store.fileName = "a.cpp";
  theTagParser.parseBuffer(store, &reader, false);
  EXPECT_NE(store.Generation(), before);
}

TEST(TagLine, Values_AreEscaped) {
  TagFacts facts = Facts("a\\b", 'v');
  facts.signature = "(\t\n\r)";
  EXPECT_EQ(TagLine(facts, "x\ty", Language::cC),
            "a\\\\b\tx\\ty\t7;\"\tv\tline:7\tsignature:(\\t\\n\\r)");
}

TEST(TagLine, Fields_StandInTheirOrder) {
  TagFacts facts = Facts("f", 'f');
  facts.scopeKind = "class";
  facts.scopeName = "A";
  facts.namespaceName = "n";
  facts.signature = "()";
  facts.typeRef = "int";
  facts.access = "public";
  facts.implementation = "virtual";
  facts.inheritance = "B";
  facts.isFileScope = true;
  EXPECT_EQ(TagLine(facts, "x.h", Language::cCpp),
            "f\tx.h\t7;\"\tf\tline:7\tclass:n::A\tsignature:()\ttyperef:int\taccess:public\t"
            "implementation:virtual\tinherits:B\tfile:");
}

TEST(TagLine, Class_StandsInWhatIsAroundIt) {
  TagFacts facts = Facts("B", 'c');
  facts.scopeKind = "class";
  facts.scopeName = "A.B";
  EXPECT_EQ(TagLine(facts, "x", Language::cJava), "B\tx\t7;\"\tc\tline:7\tclass:A");
}

}  // namespace
}  // namespace zendry
