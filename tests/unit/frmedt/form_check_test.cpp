#include "frmedt/FormCheck.h"

#include <gtest/gtest.h>

#include "FormSource.h"
#include "frmedt/FormKeep.h"
#include "frmedt/FormStatement.h"

namespace zendry {
namespace {

using test::FormLines;
using Texts = std::vector<std::string>;

Texts Losses(const std::string& decl, const std::string& init) {
  Texts words;
  for (const FormLoss& loss :
       CheckRegions(FormLines("//!decl\n" + decl), FormLines("//!init\n" + init)))
    words.push_back((loss.isInDecl ? "d" : "i") + std::to_string(loss.line) + ' ' + loss.Words());
  return words;
}
Texts InitLosses(const std::string& init) {
  return Losses("Button one, two;\n", init);
}

TEST(PlainStatement, DropsBlanksThatMeanNothing) {
  EXPECT_EQ(PlainStatement("  a . b = \"x  y\" + c d ;\r\n"), "a.b=\"x  y\"+c d;");
  EXPECT_EQ(PlainStatement("a = 'x';  //  b  "), "a='x';//  b");
  EXPECT_EQ(PlainStatement("\"a\\\" b\" c"), "\"a\\\" b\"c");
}

TEST(FormCheck, WhatTheDesignerWrites_ComesBack) {
  EXPECT_EQ(Losses("Button one, two;\nEdit six;\n",
                   "this->SetBounds(0, 0, 300, 200);\n//!<Button>\none.SetBounds(1, 2, 3, 4);\n"
                   "one.text = \"a;b\";\none.onClick.Add_H(this, &This::Do);\nthis->Add(&one);\n"
                   "//!<Button>\nthis->Add(&two);\n//!<Edit>\nthis->Add(&six);\n"),
            Texts{});
}

TEST(FormCheck, LayoutOfStatements_DoesNotCount) {
  EXPECT_EQ(Losses("  Button one ;\n\nButton two,six;\n",
                   "\t one.SetBounds(1,2,3,4) ;\n\nthis->Add( &one "
                   ");\nthis->Add(&two);\nthis->Add(&six);\n"),
            Texts{});
}

TEST(FormCheck, TheClosingMarker_MayBeAmongTheLines) {
  EXPECT_EQ(Losses("Button one;\n//!end\n", "//!<Button>\nthis->Add(&one);\n//!end\n"), Texts{});
  EXPECT_EQ(Losses("Button one;\n//!end\n", "// x\nthis->Add(&one);\n//!end\n"),
            Texts{"i1 lost: // x"});
}

TEST(FormCheck, LostStatements_AreNamed) {
  EXPECT_EQ(InitLosses("// a note\none.text = name;\nif (x) {\n"),
            (Texts{"i1 lost: // a note", "i2 lost: one.text = name;",
                   "i3 lost: if (x) { (names of one or two characters are not read)"}));
  EXPECT_EQ(InitLosses("one.hot = false;\n"),
            Texts{"i1 lost: one.hot = false; (it is the default)"});
  EXPECT_EQ(InitLosses("one.kind = Button::cNone;\n")[0],
            "i1 lost: one.kind = Button::cNone; (it is the default)");
}

TEST(FormCheck, ChangedStatements_AreNamedWithWhatComes) {
  EXPECT_EQ(InitLosses("one.Foo(1);\n"), Texts{"i1 changed: one.Foo(1); becomes one.Foo = 1);"});
  EXPECT_EQ(InitLosses("one.text = \"a\"; // note\n"),
            Texts{"i1 changed: one.text = \"a\"; // note becomes one.text = \"a\"; // not\";"});
  EXPECT_EQ(InitLosses("this->SetBounds(5, 6, 7, 8);\n"),
            Texts{"i1 changed: this->SetBounds(5, 6, 7, 8); becomes this->SetBounds(0, 0, 7, 8);"});
  EXPECT_EQ(InitLosses("one.SetLocation(1, 2);\none.SetSize(3, 4);\n"),
            (Texts{"i1 changed: one.SetLocation(1, 2); becomes one.SetBounds(1, 2, 3, 4);",
                   "i2 changed: one.SetSize(3, 4); becomes one.SetBounds(1, 2, 3, 4);"}));
  EXPECT_EQ(InitLosses("one.backColor = shade;\n"),
            Texts{"i1 changed: one.backColor = shade; becomes one.backColor = Color::shade;"});
}

TEST(FormCheck, MovedStatements_AreNamed) {
  EXPECT_EQ(InitLosses("one.hot = true;\none.text = \"a\";\nthis->Add(&one);\n"),
            Texts{"i1 moved: one.hot = true;"});
}

TEST(FormCheck, Declarations_AreComparedByTheirNames) {
  EXPECT_EQ(Losses("Button one;\nEdit one;\n", ""),
            (Texts{"d1 changed: Button one; becomes Edit one;"}));
  EXPECT_EQ(Losses("Button a11, a12, a13, a14, a15, a16, a17;\n", ""),
            Texts{"d1 lost: Button a11, a12, a13, a14, a15, a16, a17;"});
  EXPECT_EQ(Losses("//note\nint a = 5;\n", ""), (Texts{"d1 lost: //note", "d2 lost: int a = 5;"}));
  EXPECT_EQ(Losses("Button one; Edit two;\n", ""), (Texts{"d1 lost: Button one; Edit two;"}));
}

TEST(FormCheck, Markers_AreStatementsToo) {
  EXPECT_EQ(Losses("Button one;\n", "//!<Edit>\none.hot = true;\nthis->Add(&one);\n"),
            Texts{"i1 lost: //!<Edit>"});
  EXPECT_EQ(CheckRegions(FormLines("//!declx\n"), FormLines("//!init\n"))[0].Words(),
            "changed: //!declx becomes //!decl");
}

TEST(FormCheck, CheckForm_TellsFileAndLine) {
  FormLocator locator;
  locator.Scan(std::make_shared<FormText>(
      "a.cpp", "class A {\n//!decl\n//!ended\nvoid I() {\n//!init\n// x\n//!end\n}};\n"));
  ASSERT_TRUE(locator.Select(0, [](const std::string&, bool) { return nullptr; }));
  const std::vector<FormLoss> losses = CheckForm(locator.Selected());
  ASSERT_EQ(losses.size(), 2U);
  EXPECT_EQ(losses[0].line, 5);
  EXPECT_EQ(losses[0].path, "a.cpp");
  EXPECT_EQ(losses[1].line, 2);
}

TEST(FitsRegion, TakesTheTellableStatements) {
  for (const char* line :
       {"", "\t", "//!<Button>", "this->SetBounds(0, 0, 300, 200);", "one.SetBounds(-1, 2, 3, 4);",
        "one.SetLocation(1, 2);", "one.text = \"a; \\\"b\\\"\";", "one.hot = true;",
        "one.backColor = Color::cRed;", "one.font = Font(12, Font::cBold);", "one.Foo = bar(1);",
        "one.items.Add(\"a\");", "bar.items.Add(Icons::icoNew, \"New\");",
        "one.onClick.Add_H(this, &This::DoIt);", "this->onShow.Add_H(this, &This::DoIt);",
        "this->Add(&one);", "pan.Add(&one);"})
    EXPECT_TRUE(FitsRegion(line, false)) << line;
  for (const char* line : {"Button one;", "ns::Button one, two;", "Button a, b, c, d, e;", ""})
    EXPECT_TRUE(FitsRegion(line, true)) << line;
}

TEST(FitsRegion, RefusesWhatIsLost) {
  for (const char* line :
       {"// note", "b1.text = \"a\";", "one.Foo(1);", "one.text = name;", "one.text = \"a\"",
        "one.text = \"a\"; // note", "one.hot = true; two.hot = true;", "if (x) {", "}",
        "one.backColor = shade;", "one.SetBounds(1, 2, 3);", "one.SetBounds(x, 2, 3, 4);",
        "this->Add(one);", "one.onClick.Add_H(this, &Other::DoIt);", "this.text = \"a\";"})
    EXPECT_FALSE(FitsRegion(line, false)) << line;
  for (const char* line :
       {"Button", "Button a, b, c, d, e, f;", "int x = 5;", "Button *x;", "// a b"})
    EXPECT_FALSE(FitsRegion(line, true)) << line;
}

TEST(TakeKept, TakesWhatIsLostAndLeavesTheRest) {
  Texts decl = FormLines("//!decl\nButton one;\nint count = 5;\n");
  Texts init = FormLines(
      "//!init\n\tone.Foo(1);\none.hot = true;\nif (x) {\n\tone.hot = false;\n"
      "this->Add(&one);\n");
  const KeptLines kept = TakeKept(decl, init);
  EXPECT_EQ(kept.decl, Texts{"int count = 5;\n"});
  EXPECT_EQ(kept.init, (Texts{"\tone.Foo(1);\n", "one.hot = true;\n", "// if (x) {\n",
                              "\tone.hot = false;\n"}));
  EXPECT_TRUE(CheckRegions(decl, init).empty());
}

TEST(TakeKept, LinesThatFollowEachOther_AreOneStatement) {
  Texts decl = FormLines("//!decl\nButton one;\n");
  Texts init = FormLines("//!init\nfoo(1,\n  2,\n  3);\nthis->Add(&one);\n// note\none.Bar(\n");
  const KeptLines kept = TakeKept(decl, init);
  EXPECT_EQ(kept.init, (Texts{"foo(1,\n", "  2,\n", "  3);\n", "// note\n", "// one.Bar(\n"}));
  Texts region = {"//!init\n", "//!end\n"};
  AppendKept(region, {"x();\n"});
  EXPECT_EQ(region, (Texts{"//!init\n", "//!end\n", "x();\n"}));
}

}  // namespace
}  // namespace zendry
