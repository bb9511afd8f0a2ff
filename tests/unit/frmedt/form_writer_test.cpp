#include "frmedt/FormWriter.h"

#include <gtest/gtest.h>

#include "FormSource.h"
#include "frmedt/CtrlReg.h"

namespace zendry {
namespace {

using test::InitBody;
using test::ReadForm;
using test::WrittenDecl;

std::string Rewritten(const std::string& decl, const std::string& init) {
  return InitBody(ReadForm(decl, init).data);
}

TEST(FormWriter, AnEmptyForm_HasItsMarkersOnly) {
  FormData form;
  form.declIndent = 1;
  form.initIndent = 2;
  EXPECT_EQ(WrittenDecl(form), "\t//!decl\r\n\t//!end\r\n");
  EXPECT_EQ(test::WrittenInit(form), "\t\t//!init\r\n\t\t//!end\r\n");
}

TEST(FormWriter, Indentation_EndsAt64Tabs) {
  FormData form;
  form.declIndent = 100;
  EXPECT_EQ(WrittenDecl(form).find('/'), 64U);
}

TEST(FormWriter, SixButtons_AreTwoStatements) {
  const ReadForm form("Button b11, b12, b13, b14, b15;\nButton b16;\n", "");
  EXPECT_EQ(WrittenDecl(form.data),
            "//!decl\r\nButton b11, b12, b13, b14, b15;\r\nButton b16;\r\n//!end\r\n");
}

TEST(FormWriter, OnlyNeighboursShareAStatement) {
  const ReadForm form("Button one;\nEdit two;\nButton three;\nButton four;\n", "");
  EXPECT_EQ(WrittenDecl(form.data),
            "//!decl\r\nButton one;\r\nEdit two;\r\nButton three, four;\r\n//!end\r\n");
}

TEST(FormWriter, Lines_GoInAtTheIndex) {
  const ReadForm form("Button one;\n", "");
  std::vector<std::string> lines = {"before", "after"};
  FormWriter(form.data).WriteDecl(lines, 1);
  EXPECT_EQ(lines, (std::vector<std::string>{"before", "//!decl\r\n", "Button one;\r\n",
                                             "//!end\r\n", "after"}));
}

TEST(FormWriter, StatementsComeInTheOrderOfTheTables) {
  EXPECT_EQ(
      Rewritten("Button one;\n",
                "this->Add(&one);\none.onClick.Add_H(this, &This::DoIt);\none.hot = true;\n"
                "one.text = \"Go\";\none.SetBounds(1, 2, 3, 4);\nthis->SetBounds(0, 0, 9, 8);\n"),
      "this->SetBounds(0, 0, 9, 8);\n//!<Button>\none.SetBounds(1, 2, 3, 4);\n"
      "one.text = \"Go\";\none.hot = true;\none.onClick.Add_H(this, &This::DoIt);\n"
      "this->Add(&one);\n");
}

TEST(FormWriter, Docks_WriteTheSizeThatCounts) {
  const std::string all = "one.height = 4;\none.width = 3;\n";
  const auto docked = [&](const std::string& dock) {
    return Rewritten("Panel one;\n", "one.dock = Dock::" + dock + ";\n" + all);
  };
  EXPECT_EQ(docked("cTop"), "//!<Panel>\none.dock = Dock::cTop;\none.height = 4;\n");
  EXPECT_EQ(docked("cBootom"), "//!<Panel>\none.dock = Dock::cBootom;\none.height = 4;\n");
  EXPECT_EQ(docked("cLeft"), "//!<Panel>\none.dock = Dock::cLeft;\none.width = 3;\n");
  EXPECT_EQ(docked("cRight"), "//!<Panel>\none.dock = Dock::cRight;\none.width = 3;\n");
  EXPECT_EQ(docked("cFill"), "//!<Panel>\none.dock = Dock::cFill;\n");
  EXPECT_EQ(docked("cNone"), "//!<Panel>\none.SetSize(3, 4);\n");
}

TEST(FormWriter, TheForm_IsAlwaysAtTheOrigin) {
  EXPECT_EQ(Rewritten("", "this->SetBounds(30, 40, 300, 200);\n"),
            "this->SetBounds(0, 0, 300, 200);\n");
}

TEST(FormWriter, BoundsThatAreNotKnown_AreNotWritten) {
  EXPECT_EQ(Rewritten("Edit one;\n", "one.SetSize(10, 20);\n"),
            "//!<Edit>\none.SetSize(10, 20);\n");
  EXPECT_EQ(Rewritten("Edit one;\n", "one.SetLocation(1, 2);\n"),
            "//!<Edit>\none.SetLocation(1, 2);\n");
  EXPECT_EQ(Rewritten("Edit one;\n", "one.left = 5;\n"), "//!<Edit>\none.left = 5;\n");
  EXPECT_EQ(Rewritten("Edit one;\n", "one.SetSize(10, 20);\none.left = 5;\n"),
            "//!<Edit>\none.left = 5;\none.SetSize(10, 20);\n");
}

TEST(FormWriter, Pages_HaveNoBounds) {
  EXPECT_EQ(Rewritten("TabPage page;\n", "page.text = \"One\";\ntabs1.Add(&page);\n"),
            "//!<TabPage>\npage.text = \"One\";\ntabs1.Add(&page);\n//!<?>\n");
}

TEST(FormWriter, Defaults_AreNotWritten) {
  EXPECT_EQ(Rewritten("Button one;\nEdit two;\n",
                      "one.hot = false;\none.kind = Button::cNone;\none.backColor = Color::cRed;\n"
                      "two.borderStyle = BorderStyle::cFixed3d;\n"),
            "//!<Button>\none.backColor = Color::cRed;\n//!<Edit>\n");
  EXPECT_EQ(Rewritten("Edit two;\n", "two.borderStyle = BorderStyle::cNone;\n"),
            "//!<Edit>\ntwo.borderStyle = BorderStyle::cNone;\n");
}

TEST(FormWriter, RowsThatAreNotEmitted_AreNot) {
  EXPECT_EQ(
      Rewritten("TabCtrl tab;\n", "tab.text = \"x\";\ntab.pages = 1;\ntab.selectedIndex = 1;\n"),
      "//!<TabCtrl>\ntab.selectedIndex = 1;\n");
}

TEST(FormWriter, Lists_AreAStatementForEachItem) {
  EXPECT_EQ(Rewritten("ListBox one;\nToolBar bar;\n",
                      "one.items.Add(\"a\");\none.items.Add(\"b\");\n"
                      "bar.items.Add(Icons::icoNew, \"New\");\nbar.items.Add(_separator_);\n"),
            "//!<ListBox>\none.items.Add(\"a\");\none.items.Add(\"b\");\n"
            "//!<ToolBar>\nbar.items.Add(Icons::icoNew, \"New\");\nbar.items.Add(_separator_);\n");
}

TEST(FormWriter, RawEntries_ComeBackAsTheyWereMangled) {
  EXPECT_EQ(Rewritten("Button one;\n", "one.Foo(1);\nthis->Foo = 1;\n"),
            "this-.Foo = 1;\n//!<Button>\none.Foo = 1);\n");
  EXPECT_EQ(Rewritten("Button one;\n", "this-.Foo = 1;\n"), "this-.Foo = 1;\n//!<Button>\n");
}

TEST(FormWriter, TextsWithoutQuotes_AreLost) {
  EXPECT_EQ(Rewritten("Button one;\n", "one.text = name;\n"), "//!<Button>\n");
}

TEST(FormWriter, EscapedQuotes_StayEscaped) {
  const std::string line = "one.text = \"a \\\"b\\\" \\\\\";\n";
  EXPECT_EQ(Rewritten("Button one;\n", line), "//!<Button>\n" + line);
}

TEST(FormWriter, FontTexts_StayWhole) {
  const std::string line = "one.font = Font(\"Arial\", 10);\n";
  EXPECT_EQ(Rewritten("Label one;\n", line), "//!<Label>\n" + line);
}

TEST(FormWriter, TheMarkerNamesTheRegisteredClass) {
  const ReadForm form("MyButton one;\n", "//!<Button>\none.hot = true;\nthis->Add(&one);\n");
  EXPECT_EQ(WrittenDecl(form.data), "//!decl\r\nMyButton one;\r\n//!end\r\n");
  EXPECT_EQ(InitBody(form.data), "//!<Button>\none.hot = true;\nthis->Add(&one);\n");
}

TEST(FormWriter, EmptyHandlers_AreNotWritten) {
  FormData form;
  CtrlRec& one = form.AddControl(*FindClass("Button"), form.root, "one");
  one.events = {{"onClick", ""}, {"onMove", "DoMove"}};
  EXPECT_EQ(InitBody(form),
            "//!<Button>\none.onMove.Add_H(this, &This::DoMove);\nthis->Add(&one);\n");
}

TEST(FormWriter, StatementsOf_IsOneControl) {
  const ReadForm form("Button one, two;\n",
                      "one.hot = true;\ntwo.hot = true;\nthis->Add(&one);\nthis->Add(&two);\n");
  EXPECT_EQ(test::Joined(FormWriter(form.data).StatementsOf(*form.data.Find("two"))),
            "//!<Button>\r\ntwo.hot = true;\r\nthis->Add(&two);\r\n");
}

}  // namespace
}  // namespace zendry
