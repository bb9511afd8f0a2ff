#include "code/CodeWizard.h"

#include <gtest/gtest.h>

#include <string>

#include "CodeText.h"

namespace zendry {
namespace {

using test::Tag;

// A project of one module, "a.cpp", which every text represents. Its class Shape derives from Base;
// a method of Shape begins at line 10 of the text.
class CodeWizardTest : public ::testing::Test {
 protected:
  CodeWizardTest() {
    stores.Class("Base").members = {Tag("id", 'm', "int", 2), Tag("link", 'm', "Shape", 3)};
    stores.Class("Shape", 1, "Base").members = {
        Tag("next", 'm', "Shape", 2), Tag("pos", 'm', "Point", 3), Tag("draw", 'p', "void", 4),
        Tag("draw", 'f', "void", 10, 0)};
    stores.Existing("Shape").members[2].signature = "(int depth)";
    stores.Class("Point").members = {Tag("x", 'm', "int", 2), Tag("y", 'm', "int", 3)};
    stores.Changed();
  }
  // A text whose line 10 opens the method draw of Shape.
  static std::string InMethod(const std::string& body) {
    return std::string(9, '\n') + "void Shape::draw(int depth) {\n" + body;
  }
  void AddGlobal(const TagItem& item) {
    stores.current->globals.push_back(item);
    stores.Changed();
  }
  // The name `offset` bytes from the caret, as "NAME:TYPE"; "none" when nothing is found.
  std::string Resolve(const std::string& text, int offset = 0, int kind = '?') {
    const test::CodeText editor(text);
    info = ResolveInfo();
    info.kind = kind;
    return wizard.resolveAt(editor, info, offset) ? info.name + ":" + info.type : "none";
  }
  // The same for a caret after a member operator of one character.
  std::string ResolveMember(const std::string& text) { return Resolve(text, -1, 'm'); }
  std::string CurrentItem(const std::string& text) {
    const test::CodeText editor(text);
    const TagItem* item = wizard.currentItem(editor);
    if (!item) return "none";
    EXPECT_EQ(item->module, stores.current);
    return (item->owner ? item->owner->name + "." : "") + item->name;
  }

  test::CodeStores stores;
  CodeWizard wizard{stores};
  ResolveInfo info;
};

TEST_F(CodeWizardTest, Fill_TakesWhatTheTagSays) {
  TagItem item = Tag("draw", 'p', "void", 7);
  item.signature = "(int)";
  item.owner = &stores.Existing("Shape");
  item.module = stores.current;
  ResolveInfo filled;
  filled.reserved = 5;
  filled.line = 3;
  filled.position = 4;
  filled.memberPath = "kept";
  fill(filled, item);
  EXPECT_EQ(filled.kind, 'p');
  EXPECT_EQ(filled.name, "draw");
  EXPECT_EQ(filled.className, "Shape");
  EXPECT_EQ(filled.signature, "(int)");
  EXPECT_EQ(filled.type, "void");
  EXPECT_EQ(filled.file, "a.cpp");
  EXPECT_EQ(filled.reserved, 0);
  EXPECT_EQ(filled.targetLine, 6);
  EXPECT_EQ(filled.line, 3);
  EXPECT_EQ(filled.position, 4);
  EXPECT_EQ(filled.memberPath, "kept");
}

TEST_F(CodeWizardTest, Fill_WithoutModuleAndOwner_ClearsTheFileOnly) {
  ResolveInfo filled;
  filled.file = "old";
  filled.className = "Old";
  fill(filled, Tag("g", 'v'));
  EXPECT_EQ(filled.file, "");
  EXPECT_EQ(filled.className, "Old");
}

TEST_F(CodeWizardTest, CurrentItem_IsTheNearestAboveTheCaret) {
  stores.current->classes.clear();
  stores.current->globals = {Tag("a", 'v', "", 1), Tag("b", 'f', "", 3), Tag("c", 'f', "", 5)};
  stores.Changed();
  EXPECT_EQ(CurrentItem("@"), "a");
  EXPECT_EQ(CurrentItem("\n@"), "a");
  EXPECT_EQ(CurrentItem("\n\n@"), "b");
  EXPECT_EQ(CurrentItem("\n\n\n@"), "b");
  EXPECT_EQ(CurrentItem("\n\n\n\n@"), "c");
  EXPECT_EQ(CurrentItem("\n\n\n\n\n\n\n\n@"), "c");
}

TEST_F(CodeWizardTest, CurrentItem_OfOneLine_IsTheEarlier) {
  stores.current->globals = {Tag("a", 'v', "", 4), Tag("b", 'v', "", 4)};
  stores.Existing("Shape").members = {Tag("m", 'm', "", 4)};
  stores.Changed();
  EXPECT_EQ(CurrentItem("\n\n\n@"), "a");
}

TEST_F(CodeWizardTest, CurrentItem_MemberNearerThanAGlobal_Wins) {
  AddGlobal(Tag("g", 'v', "", 9));
  EXPECT_EQ(CurrentItem(InMethod("@")), "Shape.draw");
}

TEST_F(CodeWizardTest, CurrentItem_100000LinesAbove_IsTooFar) {
  stores.current->classes.clear();
  stores.current->globals = {Tag("a", 'v', "", 1)};
  stores.Changed();
  EXPECT_EQ(CurrentItem(std::string(99'999, '\n')), "a");
  EXPECT_EQ(CurrentItem(std::string(100'000, '\n')), "none");
}

TEST_F(CodeWizardTest, CurrentItem_BetweenClassAndItsLastMember_IsTheClass) {
  stores.current->classes.clear();
  stores.Class("Foo", 2).members = {Tag("x", 'm', "", 9)};
  stores.Changed();
  EXPECT_EQ(CurrentItem("\n\n@"), "none");
  EXPECT_EQ(CurrentItem("\n\n\n@"), "Foo.Foo");
  EXPECT_EQ(CurrentItem("\n\n\n\n\n\n\n@"), "Foo.Foo");
  EXPECT_EQ(CurrentItem("\n\n\n\n\n\n\n\n@"), "Foo.x");
  stores.Existing("Foo").kind = 's';
  EXPECT_EQ(CurrentItem("\n\n\n@"), "none");
}

TEST_F(CodeWizardTest, CurrentItem_SomethingAbove_KeepsTheClassOut) {
  stores.current->classes.clear();
  stores.current->globals = {Tag("g", 'v', "", 1)};
  stores.Class("Foo", 2).members = {Tag("x", 'm', "", 9)};
  stores.Changed();
  EXPECT_EQ(CurrentItem("\n\n\n@"), "g");
}

TEST_F(CodeWizardTest, CurrentItem_RefreshesTheTagsFirst) {
  CurrentItem("@");
  EXPECT_EQ(stores.refreshes, 1);
}

TEST_F(CodeWizardTest, CurrentItem_WithoutModule_IsNone) {
  stores.current = nullptr;
  EXPECT_EQ(CurrentItem("@"), "none");
  EXPECT_EQ(Resolve("Foo f;\nf@"), "f:Foo");
}

TEST_F(CodeWizardTest, This_IsTheClassOfTheEnclosingMethod) {
  EXPECT_EQ(ResolveMember(InMethod("this->@")), ":Shape");
  EXPECT_EQ(info.className, "Shape");
}

TEST_F(CodeWizardTest, ThisWithAPath_WalksItsMembers) {
  EXPECT_EQ(ResolveMember(InMethod("this->pos.@")), "pos:Point");
  EXPECT_EQ(ResolveMember(InMethod("this->next->pos.@")), "pos:Point");
  EXPECT_EQ(ResolveMember(InMethod("this->gone.@")), "none");
}

TEST_F(CodeWizardTest, This_OutsideOfAMethod_IsNothing) {
  stores.current->classes.clear();
  stores.Changed();
  EXPECT_EQ(ResolveMember("this->@"), "none");
  AddGlobal(Tag("main", 'f', "int", 1));
  EXPECT_EQ(ResolveMember("this->@"), ":");
}

TEST_F(CodeWizardTest, Local_WinsOverAMemberOfAnotherType) {
  EXPECT_EQ(ResolveMember(InMethod("Point next;\nnext.@")), "next:Point");
  EXPECT_EQ(info.file, "");
  EXPECT_EQ(ResolveMember(InMethod("next.@")), "next:Shape");
  EXPECT_EQ(info.file, "a.cpp");
}

TEST_F(CodeWizardTest, Local_TellsItsPlace) {
  const std::string text = InMethod("int i;\n  Point here;\nhere@");
  EXPECT_EQ(Resolve(text), "here:Point");
  EXPECT_EQ(info.line, 11);
  EXPECT_EQ(info.targetLine, 11);
  EXPECT_EQ(info.position, static_cast<int>(text.find("here")));
}

TEST_F(CodeWizardTest, Local_OfAnotherFunction_IsNotSeen) {
  EXPECT_EQ(ResolveMember("void f() { Point gone; }\n\n\n\n\n\n\n\n\n" +
                          std::string("void Shape::draw(int) {\ngone.@")),
            "none");
}

TEST_F(CodeWizardTest, Parameter_IsFound) {
  EXPECT_EQ(ResolveMember(std::string(9, '\n') + "void Shape::draw(Point at) {\nat.@"), "at:Point");
}

TEST_F(CodeWizardTest, LocalWithAPath_WalksMembersAndBases) {
  EXPECT_EQ(ResolveMember(InMethod("Shape s;\ns.pos.@")), "pos:Point");
  EXPECT_EQ(ResolveMember(InMethod("Shape *s;\ns->link->pos.@")), "pos:Point");
  EXPECT_EQ(info.className, "Shape");
}

TEST_F(CodeWizardTest, PathThroughTwoBases_TakesTheBaseListedLast) {
  stores.Class("One").members = {Tag("b", 'm', "First")};
  stores.Class("Two").members = {Tag("b", 'm', "Second")};
  stores.Class("Both", 1, "One,Two");
  stores.Changed();
  EXPECT_EQ(Resolve(InMethod("Both a;\na.b@")), "b:Second");
}

TEST_F(CodeWizardTest, InheritanceLoop_EndsAtDepth17) {
  stores.Class("A", 1, "B");
  stores.Class("B", 1, "A");
  stores.Changed();
  EXPECT_EQ(Resolve(InMethod("A a;\na.gone@")), "none");
}

TEST_F(CodeWizardTest, CaretInAComment_ReadsTheWordBeforeItTheSameWay) {
  EXPECT_EQ(ResolveMember(InMethod("Point p; // see p.@")), "p:Point");
  EXPECT_EQ(ResolveMember(InMethod("Point p; /* see p.@ */")), "p:Point");
}

TEST_F(CodeWizardTest, Index_VanishesAndTheTypeOfTheArrayCounts) {
  EXPECT_EQ(Resolve(InMethod("Point *p;\np[i].x@")), "x:int");
  EXPECT_EQ(info.className, "Point");
  EXPECT_EQ(Resolve(InMethod("Point *p; int i;\np[i].@"), -1, 'm'), "p:Point");
}

TEST_F(CodeWizardTest, Declaration_IsFoundAtTheCaret) {
  const std::string text = InMethod("static const Point *p@;");
  EXPECT_EQ(Resolve(text), "p:Point");
  EXPECT_EQ(info.line, 10);
  EXPECT_EQ(info.targetLine, 10);
  EXPECT_EQ(info.position, static_cast<int>(text.find('@')));
}

TEST_F(CodeWizardTest, Call_TellsItsArgumentText) {
  Resolve(InMethod("Point p;\np@(1, /* one */ 2) + 3"));
  EXPECT_EQ(info.signature, "(1,  2)");
  Resolve(InMethod("Point p;\np@ (1)"));
  EXPECT_EQ(info.signature, "");
  Resolve(InMethod("Point p;\np@(1, 2"));
  EXPECT_EQ(info.signature, "(1, 2");
  Resolve(InMethod("Point p;\np@(" + std::string(1000, 'x') + ")"));
  EXPECT_EQ(info.signature.size(), 511u);
}

TEST_F(CodeWizardTest, Member_IsFoundInTheBasesToo) {
  EXPECT_EQ(ResolveMember(InMethod("link->@")), "link:Shape");
  EXPECT_EQ(info.className, "Base");
}

TEST_F(CodeWizardTest, MemberMissed_IsLoggedAndGlobalsFollow) {
  AddGlobal(Tag("theShape", 'v', "Shape", 40));
  EXPECT_EQ(ResolveMember(InMethod("theShape->@")), "theShape:Shape");
  EXPECT_EQ(stores.TakeLog(), "Resolve - not member| in file=a.cpp memb=theShape\n");
}

TEST_F(CodeWizardTest, UnknownVariable_IsLoggedAsNoGlobal) {
  EXPECT_EQ(ResolveMember("gone.@"), "none");
  EXPECT_EQ(stores.TakeLog(), "Resolve - not global: |gone\n");
}

TEST_F(CodeWizardTest, Global_OfTheScopesFileComesFirst) {
  stores.Module("b.cpp").globals = {Tag("g", 'v', "Other", 1), Tag("main", 'f', "int", 2)};
  AddGlobal(Tag("g", 'v', "Point", 40));
  stores.current = &stores.Module("b.cpp");
  EXPECT_EQ(ResolveMember("\n\ng.@"), "g:Other");
}

TEST_F(CodeWizardTest, GlobalWithAPath_IsWalkedAndLogged) {
  AddGlobal(Tag("theShape", 'v', "Shape", 40));
  EXPECT_EQ(Resolve("theShape.pos.x@"), "x:int");
  EXPECT_EQ(stores.TakeLog(), "Before findMemberPath type=|Shape\n");
  EXPECT_EQ(Resolve("theShape.gone.x@"), "none");
}

TEST_F(CodeWizardTest, LocalWithAPath_IsLogged) {
  Resolve(InMethod("Shape s;\ns.pos@"));
  EXPECT_EQ(stores.TakeLog(), "-----> |Shape s \n-------> |Point pos \n");
  Resolve(InMethod("Shape s;\ns@(1)"));
  EXPECT_EQ(stores.TakeLog(), "-----> |Shape s (1)\n");
}

TEST_F(CodeWizardTest, LocalWhosePathFails_IsTriedAsMemberAndGlobal) {
  EXPECT_EQ(Resolve(InMethod("Point next;\nnext.pos@")), "pos:Point");
  EXPECT_EQ(info.className, "Shape");
}

TEST_F(CodeWizardTest, Function_TellsItsSignature) {
  EXPECT_EQ(Resolve(InMethod("draw(@")), "draw:void");
  EXPECT_EQ(info.signature, "(int depth)");
  EXPECT_EQ(info.kind, 'p');
  EXPECT_EQ(info.targetLine, 3);
}

TEST_F(CodeWizardTest, ClassRequest_GivesTheClass) {
  EXPECT_EQ(Resolve("Shape@", 0, 'C'), ":Shape");
  EXPECT_EQ(info.kind, 'c');
  EXPECT_EQ(Resolve("Gone@", 0, 'C'), "none");
}

TEST_F(CodeWizardTest, OtherRequestOfAClass_FindsItAsAGlobal) {
  EXPECT_EQ(Resolve("Shape@"), "Shape:");
  EXPECT_EQ(info.file, "a.cpp");
}

TEST_F(CodeWizardTest, CallResult_IsOfTheFunctionsType) {
  AddGlobal(Tag("find", 'f', "Point", 40));
  EXPECT_EQ(ResolveMember("find(a, b).@"), "find:Point");
  EXPECT_EQ(ResolveMember(InMethod("(link).@")), "link:Shape");
}

TEST_F(CodeWizardTest, MemberOperator_MakesAUseOfWhatLooksDeclared) {
  AddGlobal(Tag("p", 'v', "Point", 40));
  for (const char* before : {"return ", "(a && ", "f(a, ", "(a * ", "delete "})
    EXPECT_EQ(ResolveMember(std::string(before) + "p.@"), "p:Point") << before;
}

TEST_F(CodeWizardTest, Names_InsideStringsCountAsText) {
  EXPECT_EQ(ResolveMember(InMethod("Point p; puts(\"p.@")), "p:Point");
}

TEST_F(CodeWizardTest, Offset_MovesThePlace) {
  EXPECT_EQ(Resolve(InMethod("Point p; next@"), -6), "p:Point");
  EXPECT_EQ(Resolve("Point p;", -1'000'000), "Point:");
  EXPECT_EQ(Resolve("@Point p;", 1'000'000), "p:Point");
}

TEST_F(CodeWizardTest, BrokenText_ResolvesToNothing) {
  for (const char* text :
       {"",   "@",  ".",  "..",    "->", "::", ")",  "].", "}.",    "((((.", "\"",
        "/*", "*/", "//", "\n\n.", ";.", ",.", "=.", ">.", "\x80.", "0x."})
    EXPECT_EQ(ResolveMember(text), "none") << text;
  EXPECT_EQ(ResolveMember(std::string("\0\0.", 3)), "none");
  EXPECT_EQ(ResolveMember(std::string(100'000, 'a') + "."), "none");
  EXPECT_EQ(ResolveMember(std::string(100'000, '.')), "none");
}

TEST_F(CodeWizardTest, EveryCutOfAText_ResolvesWithoutHarm) {
  const std::string text =
      "struct A : B { int x; };\nA *f(A a, A &b) { /* c */ A::g(a.x, b->x[1]).y; // d\n}\n";
  for (size_t length = 0; length <= text.size(); ++length)
    for (const int kind : {'m', 'P', '?', 'C'}) Resolve(text.substr(0, length), -1, kind);
}

TEST_F(CodeWizardTest, TagLinesOutsideOfTheText_AreHarmless) {
  stores.Existing("Shape").members[3].line = 1'000'000;
  stores.Existing("Shape").members[0].line = -5;
  stores.Existing("Shape").members[1].line = 0;
  stores.Changed();
  EXPECT_EQ(ResolveMember(InMethod("Point p;\np.@")), "p:Point");
}

}  // namespace
}  // namespace zendry
