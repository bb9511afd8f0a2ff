#include "code/Completion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CodeText.h"

namespace zendry {
namespace {

using test::Tag;

// A request as "KIND TEXT", with a "+" after it when the text has been typed already.
std::string Request(std::string_view text) {
  const auto request = RequestOf(text);
  if (!request) return "none";
  return std::string(1, static_cast<char>(request->kind)) + " " + request->text +
         (request->typesPrefix ? "+" : "");
}

TEST(RequestOf, OneCharacterOfAnOperator_IsNone) {
  for (const char* text : {".", ":", ">", "-"}) EXPECT_EQ(Request(text), "none") << text;
}

TEST(RequestOf, NoOrOneLetter_AsksForAnything) {
  EXPECT_EQ(Request(""), "? +");
  EXPECT_EQ(Request("a"), "? a+");
}

TEST(RequestOf, EndInMinus_IsNone) {
  EXPECT_EQ(Request("a-"), "none");
}

TEST(RequestOf, EndInTwoColons_AsksForTheClass) {
  EXPECT_EQ(Request("Foo::"), "C Foo");
  EXPECT_EQ(Request("ns::Foo::"), "C ns::Foo");
  EXPECT_EQ(Request("::"), "C ");
}

TEST(RequestOf, EndInOneColon_IsNone) {
  EXPECT_EQ(Request("a:"), "none");
}

TEST(RequestOf, EndInArrow_AsksForMembers) {
  EXPECT_EQ(Request("p->"), "m p");
  EXPECT_EQ(Request("a.p->"), "m a.p");
  EXPECT_EQ(Request("->"), "m ");
}

TEST(RequestOf, EndInGreaterAlone_IsNone) {
  EXPECT_EQ(Request("a>"), "none");
  EXPECT_EQ(Request(">>"), "none");
}

TEST(RequestOf, EndInDot_AsksForMembers) {
  EXPECT_EQ(Request("a."), "m a");
  EXPECT_EQ(Request("a->b."), "m a->b");
  EXPECT_EQ(Request(".."), "m .");
}

TEST(RequestOf, OperatorInside_AsksForAPrefixOfMembers) {
  EXPECT_EQ(Request("a.b"), "P b+");
  EXPECT_EQ(Request("p->next.x"), "P x+");
  EXPECT_EQ(Request("Foo::bar"), "P bar+");
  EXPECT_EQ(Request("a.b->cd"), "P cd+");
  EXPECT_EQ(Request(".x"), "P x+");
}

TEST(RequestOf, OtherText_AsksForAnything) {
  EXPECT_EQ(Request("ab"), "? ab+");
  EXPECT_EQ(Request("a-b"), "? b+");
  EXPECT_EQ(Request("a:b"), "? b+");
  EXPECT_EQ(Request("a>b"), "? b+");
}

std::string Text(const std::vector<TagItem*>& items) {
  std::vector<CompletionRow> rows;
  for (const TagItem* item : items) rows.push_back(RowOf(*item));
  Tidy(rows);
  return ListText(rows);
}

std::string List(std::vector<TagItem> items) {
  std::vector<TagItem*> pointers;
  for (TagItem& item : items) pointers.push_back(&item);
  return Text(pointers);
}

TEST(ListText, Names_AreSortedByTheirBytes) {
  EXPECT_EQ(List({Tag("b", 'm'), Tag("_", 'm'), Tag("B", 'm'), Tag("a1", 'm'), Tag("a", 'm')}),
            "B?1 _?1 a?1 a1?1 b?1");
  EXPECT_EQ(List({Tag("\xc3\xa4", 'm'), Tag("z", 'm')}), "z?1 \xc3\xa4?1");
}

TEST(ListText, Pictures_TellTheKinds) {
  std::vector<TagItem> items;
  for (const char letter : std::string("mvxfpcsugetdnl"))
    items.push_back(Tag(std::string(1, letter), letter));
  items.push_back(Tag("read from a cache", 0));
  items.back().name = "C";
  EXPECT_EQ(List(items), "C?3 c?3 d?7 e?5 f?2 g?4 l?10 m?1 n?8 p?2 s?3 t?6 u?3 v?1 x?1");
}

TEST(ListText, EqualNames_KeepTheFirst) {
  EXPECT_EQ(List({Tag("x", 'p'), Tag("x", 'm'), Tag("a", 'm'), Tag("a", 'p')}), "a?1 x?2");
}

TEST(ListText, ManyEqualNames_KeepTheFirst) {
  std::vector<TagItem> items;
  for (int i = 0; i < 100; ++i)
    items.push_back(Tag("x" + std::to_string(i % 3), i < 3 ? 'm' : 'p'));
  EXPECT_EQ(List(items), "x0?1 x1?1 x2?1");
}

TEST(ListText, NameWithABlank_IsLeftOut) {
  EXPECT_EQ(List({Tag("operator new", 'p'), Tag("a", 'm'), Tag("operator ()", 'p')}), "a?1");
}

TEST(ListText, NoItems_GiveNoText) {
  EXPECT_EQ(List({}), "");
}

// A project of one module, which every text represents; line 10 of the text opens a method of
// Shape.
class CompletionTest : public ::testing::Test {
 protected:
  CompletionTest() {
    stores.Class("Base").members = {Tag("id", 'm', "int", 2), Tag("same", 'm', "int", 3)};
    stores.Class("Shape", 1, "Base").members = {
        Tag("next", 'm', "Shape", 2), Tag("pos", 'm', "Point", 3), Tag("draw", 'p', "void", 4),
        Tag("draw", 'p', "void", 5), Tag("draw", 'f', "void", 10, 0)};
    stores.Existing("Shape").members[2].signature = "(int depth)";
    stores.Class("Point").members = {Tag("x", 'm', "int", 2), Tag("y", 'm', "int", 3)};
    TagItem move = Tag("moveTo", 'f', "Point", 30);
    move.signature = "(Point where, int speed)";
    stores.current->globals = {move, Tag("main", 'f', "int", 40),
                               Tag("theShape", 'v', "Shape", 50)};
    stores.Changed();
  }
  static std::string InMethod(const std::string& body) {
    return std::string(9, '\n') + "void Shape::draw(int depth) {\n" + body;
  }
  // The list that opens at the caret, and after it "|" and the part of the names that has been
  // typed.
  std::string Complete(const std::string& withCaret) {
    const test::CodeText editor(withCaret);
    std::string text = editor.LeftOfCaret();
    std::string list;
    if (!completion.getCompletion(editor, text, list)) return "nothing";
    return list + (text.empty() ? "" : "|" + text);
  }
  std::string Tip(const std::string& withCaret) {
    const test::CodeText editor(withCaret);
    const std::optional<CallTip> tip = completion.callTipAt(editor);
    return tip ? tip->overloads.front().label : "nothing";
  }

  test::CodeStores stores;
  Completion completion{stores};
};

TEST_F(CompletionTest, DotAfterALocal_ListsTheMembersOfItsType) {
  EXPECT_EQ(Complete(InMethod("Point p;\np.@")), "x?1 y?1");
}

TEST_F(CompletionTest, ArrowAfterAPointer_ListsTheMembersOfItsType) {
  EXPECT_EQ(Complete(InMethod("Point *x;\nx->@")), "x?1 y?1");
  EXPECT_EQ(Complete(InMethod("const Point * const x;\nx->@")), "x?1 y?1");
}

TEST_F(CompletionTest, InheritedMembers_AreListedToo) {
  EXPECT_EQ(Complete(InMethod("Shape s;\ns.@")), "draw?2 id?1 next?1 pos?1 same?1");
}

TEST_F(CompletionTest, TwoOverloads_AppearOnce) {
  EXPECT_EQ(Complete(InMethod("Shape s;\ns.dr@")), "draw?2|dr");
}

TEST_F(CompletionTest, TwoColons_ListTheClassWithoutItsDefinitionsOutside) {
  stores.Existing("Shape").members.push_back(Tag("hidden", 'f', "", 60, 0));
  stores.Changed();
  EXPECT_EQ(Complete("Shape::@"), "draw?2 id?1 next?1 pos?1 same?1");
  EXPECT_EQ(Complete("Gone::@"), "nothing");
  EXPECT_EQ(stores.TakeLog(), " - class not found|Gone\n");
}

TEST_F(CompletionTest, This_ListsTheClassOfTheMethod) {
  EXPECT_EQ(Complete(InMethod("this->@")), "draw?2 id?1 next?1 pos?1 same?1");
}

TEST_F(CompletionTest, UnknownVariable_ShowsNothingAndIsLogged) {
  EXPECT_EQ(Complete("unknown.@"), "nothing");
  EXPECT_EQ(stores.TakeLog(), "Resolve - not global: |unknown\n");
}

TEST_F(CompletionTest, PrefixOfMembers_TellsWhatHasBeenTyped) {
  EXPECT_EQ(Complete(InMethod("Shape s;\ns.n@")), "next?1|n");
  EXPECT_EQ(Complete(InMethod("next->pos.x@")), "x?1|x");
  EXPECT_EQ(Complete(InMethod("Shape s;\ns.zz@")), "nothing");
}

TEST_F(CompletionTest, Chain_IsWalkedToItsEnd) {
  EXPECT_EQ(Complete(InMethod("next->next.pos.@")), "x?1 y?1");
  EXPECT_EQ(Complete(InMethod("theShape.pos.@")), "x?1 y?1");
}

TEST_F(CompletionTest, CallAndIndex_ListTheMembersOfTheirResult) {
  EXPECT_EQ(Complete(InMethod("moveTo(a, b)->@")), "x?1 y?1");
  EXPECT_EQ(Complete(InMethod("Point *p;\np[i]->@")), "x?1 y?1");
}

TEST_F(CompletionTest, FreeName_ListsMembersGlobalsAndClasses) {
  EXPECT_EQ(Complete(InMethod("mo@")), "moveTo?2|mo");
  EXPECT_EQ(Complete(InMethod("dr@")), "draw?2|dr");
  EXPECT_EQ(Complete(InMethod("Sh@")), "Shape?3|Sh");
  EXPECT_EQ(Complete(InMethod("zz@")), "nothing");
}

TEST_F(CompletionTest, FreeName_FirstOfEqualNamesIsTheMember) {
  stores.Module("b.cpp").globals = {Tag("next", 'v'), Tag("other", 'v')};
  stores.Changed();
  EXPECT_EQ(Complete(InMethod("ne@")), "new?9 next?1|ne");
  EXPECT_EQ(Complete(InMethod("ot@")), "other?1|ot");
}

TEST_F(CompletionTest, FreeNameOutsideOfAClass_ListsNoMembers) {
  EXPECT_EQ(Complete(std::string(39, '\n') + "dr@"), "nothing");
}

TEST_F(CompletionTest, OneLetter_ShowsItsNames) {
  EXPECT_EQ(Complete(InMethod("m@")), "main?2 moveTo?2 mutable?9|m");
}

TEST_F(CompletionTest, OneSign_ShowsNothing) {
  EXPECT_EQ(Complete(InMethod("+ .@")), "nothing");
}

TEST_F(CompletionTest, CollectCompletions_OfEveryKind) {
  struct Row {
    const char* text;
    const char* request;
    RequestKind kind;
    const char* expected;
  };
  const Row rows[] = {{"", "Point", cClassRequest, "x?1 y?1"},
                      {"Point p; p.", "p", cMemberRequest, "x?1 y?1"},
                      {"Point p; p.x", "x", cPrefixRequest, "x?1"},
                      {"Point p; p.", "", cPrefixRequest, "x?1 y?1"},
                      {"", "ma", cAnyRequest, "main?2"}};
  for (const Row& row : rows) {
    const test::CodeText editor(InMethod(row.text));
    std::vector<TagItem*> found;
    completion.collectCompletions(found, editor, row.request, row.kind);
    EXPECT_EQ(Text(found), row.expected) << row.text;
  }
}

TEST_F(CompletionTest, FreeNameWithoutLetters_ListsEverything) {
  const test::CodeText editor(InMethod(""));
  std::vector<TagItem*> found;
  completion.collectCompletions(found, editor, "", cAnyRequest);
  EXPECT_EQ(Text(found),
            "Base?3 Point?3 Shape?3 draw?2 id?1 main?2 moveTo?2 next?1 pos?1 same?1 theShape?1");
}

TEST_F(CompletionTest, Tags_AreRefreshedFirst) {
  Complete("Shape::@");
  EXPECT_GE(stores.refreshes, 1);
  stores.refreshes = 0;
  Tip("moveTo(@");
  EXPECT_GE(stores.refreshes, 1);
}

TEST_F(CompletionTest, CallTip_IsTypeNameAndParameters) {
  EXPECT_EQ(Tip("moveTo(@"), "Point moveTo(Point where, int speed)");
  EXPECT_EQ(Tip(InMethod("draw(@)")), "void Shape::draw(int depth)");
  EXPECT_EQ(Tip(InMethod("next->draw(@")), "void Shape::draw(int depth)");
  EXPECT_EQ(Tip(InMethod("this->draw(@")), "void Shape::draw(int depth)");
  EXPECT_EQ(Tip(InMethod("moveTo(next, @")), "Point moveTo(Point where, int speed)");
  EXPECT_EQ(Tip("gone(@"), "nothing");
}

TEST_F(CompletionTest, BrokenText_ShowsNothing) {
  for (const char* text : {".@", "->@", "::@", "..@", ").@", "]->@", "(.@", "\"a\".@", "5.@",
                           "->->@", ".->@", "\xff.@", "/*.@", "//\n.@"})
    EXPECT_EQ(Complete(text), "nothing") << text;
}

TEST_F(CompletionTest, RowTakenLast_IsTheSelectedOne) {
  const test::CodeText editor(InMethod("Shape s;\ns.@"));
  const auto selected = [&] {
    const CompletionList list = completion.Complete(editor, "s.");
    return list.rows[list.selected].name;
  };
  EXPECT_EQ(selected(), "draw");
  completion.NoteTaken({"pos", RowKind::cData, "", "", "Shape"});
  EXPECT_EQ(selected(), "pos");
  completion.NoteTaken({"pos", RowKind::cData, "", "", "Other"});
  completion.NoteTaken({"same", RowKind::cData, "", "", "Base"});
  EXPECT_EQ(selected(), "same");
  completion.NoteTaken({"pos", RowKind::cData, "", "", "Shape"});
  EXPECT_EQ(selected(), "pos");
  for (int i = 0; i < 199; ++i)
    completion.NoteTaken({"other" + std::to_string(i), RowKind::cData, "", "", ""});
  EXPECT_EQ(selected(), "pos");
  completion.NoteTaken({"more", RowKind::cData, "", "", ""});
  EXPECT_EQ(selected(), "draw");
}

TEST(ExpressionLeftOf, EndsAtTheLineAndAtAnythingElse) {
  EXPECT_EQ(ExpressionLeftOf(test::CodeText("x = a.b->c::d@ e")), "a.b->c::d");
  EXPECT_EQ(ExpressionLeftOf(test::CodeText("f(x).y@")), ".y");
  EXPECT_EQ(ExpressionLeftOf(test::CodeText("a.\n@")), "");
  EXPECT_EQ(ExpressionLeftOf(test::CodeText(std::string(300, 'a'))), std::string(256, 'a'));
}

TEST(WhyNoList, NamesWhatWasLookedFor) {
  EXPECT_EQ(WhyNoList(""), "No list: no name is known here");
  EXPECT_EQ(WhyNoList("a"), "No list: no known name begins with a");
  EXPECT_EQ(WhyNoList("ab"), "No list: no known name begins with ab");
  EXPECT_EQ(WhyNoList("p."), "No list: nothing fits after p.");
  EXPECT_EQ(WhyNoList("p->x"), "No list: nothing fits after p->x");
  EXPECT_EQ(WhyNoList("A::"), "No list: nothing fits after A::");
  EXPECT_LT(WhyNoList(std::string(1000, 'a') + "." + std::string(1000, 'b')).size(), 200u);
}

}  // namespace
}  // namespace zendry
