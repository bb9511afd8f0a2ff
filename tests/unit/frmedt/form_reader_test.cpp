#include "frmedt/FormReader.h"

#include <gtest/gtest.h>

#include "FormSource.h"
#include "frmedt/CtrlReg.h"

namespace zendry {
namespace {

using test::ReadForm;

std::vector<std::string> Names(const FormData& form) {
  std::vector<std::string> names;
  for (const CtrlRec* rec : form.controls) names.push_back(rec->name);
  return names;
}
using Texts = std::vector<std::string>;

TEST(FormReader, Declarations_MakeRecordsInOrder) {
  const ReadForm form("Button one, two;\n\tEdit three;\n// word\nint x;\n", "");
  EXPECT_EQ(Names(form.data), (Texts{"this-", "one", "two", "three", "word", "x"}));
  EXPECT_EQ(form.data.Find("two")->declClass, "Button");
  EXPECT_EQ(form.data.Find("three")->index, 3U);
  EXPECT_EQ(form.data.Find("x")->declClass, "int");
}

TEST(FormReader, ACommentOfOneWord_IsNoControl) {
  const ReadForm form("//word\nButton one;\n", "");
  EXPECT_EQ(Names(form.data), (Texts{"this-", "one"}));
}

TEST(FormReader, Indent_CountsTheCharactersBeforeTheMarker) {
  FormData form;
  form.ReadDecl({"  \t//!decl\n"});
  form.ReadInit({"\t\t//!init\n"});
  EXPECT_EQ(form.declIndent, 3);
  EXPECT_EQ(form.initIndent, 2);
}

TEST(FormReader, Bounds_AreFourProperties) {
  const ReadForm form("Button one, two, three;\n",
                      "//!<Button>\none.SetBounds(1, -2, 30, 40);\n"
                      "two.SetLocation(5, 6);\nthree.SetSize(10, 20);\n");
  EXPECT_EQ(form.data.Find("one")->ValueText("left"), "1");
  EXPECT_EQ(form.data.Find("one")->ValueText("top"), "-2");
  EXPECT_EQ(form.data.Find("one")->ValueText("width"), "30");
  EXPECT_EQ(form.data.Find("one")->ValueText("height"), "40");
  EXPECT_EQ(form.data.Find("two")->ValueText("top"), "6");
  EXPECT_EQ(form.data.Find("two")->ValueText("width"), "");
  EXPECT_EQ(form.data.Find("three")->ValueText("width"), "10");
  EXPECT_EQ(form.data.Find("three")->ValueText("left"), "");
}

TEST(FormReader, OddBounds_BecomeNumbers) {
  const ReadForm form("Button one, two;\n",
                      "one.SetBounds(99999999999, -99999999999, x, 0x10);\ntwo.SetBounds(7);\n");
  EXPECT_EQ(form.data.Find("one")->ValueText("left"), "2147483647");
  EXPECT_EQ(form.data.Find("one")->ValueText("top"), "-2147483648");
  EXPECT_EQ(form.data.Find("one")->ValueText("width"), "0");
  EXPECT_EQ(form.data.Find("one")->ValueText("height"), "0");
  EXPECT_EQ(form.data.Find("two")->ValueText("left"), "7");
  EXPECT_EQ(form.data.Find("two")->ValueText("top"), "");
}

TEST(FormReader, Events_HaveTheNameBehindTheScope) {
  const ReadForm form(
      "Button one;\n",
      "one.onClick.Add_H(this, &This::DoIt);\n"
      "one.onMove.Add_H(this, &Other::DoMove);\nthis->onShow.Add_H(this, &This::Shown);\n");
  EXPECT_EQ(form.data.Find("one")->HandlerOf("onClick"), "DoIt");
  EXPECT_EQ(form.data.Find("one")->HandlerOf("onMove"), "DoMove");
  EXPECT_EQ(form.data.root.HandlerOf("onShow"), "Shown");
  EXPECT_EQ(form.data.Find("one")->HandlerOf("onChar"), "");
}

TEST(FormReader, Add_SetsTheParent) {
  const ReadForm form("Panel pan;\nButton one;\n", "this->Add(&pan);\npan.Add(&one);\n");
  EXPECT_EQ(form.data.Find("pan")->parent, &form.data.root);
  EXPECT_EQ(form.data.Find("one")->parent, form.data.Find("pan"));
  EXPECT_TRUE(form.data.Find("one")->hasAdd);
}

TEST(FormReader, WrongAdd_IsReportedAndReadingGoesOn) {
  const ReadForm form("Button one;\n", "this->Add(one);\nthis->Add(&one);\n");
  ASSERT_EQ(form.data.reports.size(), 1U);
  EXPECT_EQ(form.data.reports[0].text, "Wrong Add statment");
  EXPECT_EQ(form.data.reports[0].line, 1);
  EXPECT_TRUE(form.data.Find("one")->hasAdd);
}

TEST(FormReader, UnknownStatements_BecomeRawEntries) {
  const ReadForm form("Button one;\n", "one.Foo(1);\none.bar = 2;\n");
  const CtrlRec& one = *form.data.Find("one");
  ASSERT_EQ(one.props.size(), FindClass("Button")->props.size() + 2);
  EXPECT_EQ(one.props[one.props.size() - 2].value, "Foo = 1)");
  EXPECT_EQ(one.props.back().value, "bar = 2");
  EXPECT_EQ(one.FindValue("bar"), nullptr);
}

TEST(FormReader, NamesOfTwoCharacters_LoseTheirStatements) {
  ReadForm form("Button b1, b12;\n",
                "b1.text = \"x\";\nb12.text = \"y\";\nthis->Add(&b1);\nthis->Add(&b12);\n");
  EXPECT_EQ(form.data.Find("b1")->ValueText("text"), "");
  EXPECT_EQ(form.data.Find("b12")->ValueText("text"), "y");
  EXPECT_TRUE(form.data.CheckParents());
}

TEST(FormReader, TheMarkerNamesTheClassOfAnUnregisteredOne) {
  const ReadForm form("MyButton one;\nButton two;\n",
                      "//!<Button>\none.hot = true;\n//!<Edit>\ntwo.hot = true;\n");
  EXPECT_EQ(form.data.Find("one")->className, "Button");
  EXPECT_EQ(form.data.Find("one")->declClass, "MyButton");
  EXPECT_EQ(form.data.Find("two")->className, "Button");
}

// The container stands later, so the last marker is the button's.
TEST(FormReader, AnAddBeforeTheContainersMarker_DoesNotGiveItTheClass) {
  const ReadForm form("Button one;\nMyPanel pan;\n",
                      "//!<Button>\none.hot = true;\npan.Add(&one);\n"
                      "//!<Panel>\npan.SetSize(1, 2);\nthis->Add(&pan);\n");
  EXPECT_EQ(form.data.Find("pan")->className, "Panel");
  EXPECT_EQ(form.data.Find("one")->parent, form.data.Find("pan"));
  EXPECT_TRUE(form.data.reports.empty());
}

TEST(FormReader, AControlWithoutStatements_GetsTheClassOfTheMarkerBeforeItsAdd) {
  const ReadForm form("MyPage page;\n", "//!<TabPage>\ntabs1.Add(&page);\n");
  EXPECT_EQ(form.data.Find("page")->className, "TabPage");
}

TEST(FormReader, UnknownClass_IsReportedAndItsStatementsAreKept) {
  ReadForm form("Gadget gad;\nButton one;\n",
                "//!<Thing>\ngad.SetBounds(1, 2, 3, 4);\ngad.Spin(2);  \nthis->Add(&gad);\n"
                "//!<Button>\none.text = \"x\";\nthis->Add(&one);\n");
  ASSERT_EQ(form.data.reports.size(), 1U);
  EXPECT_EQ(form.data.reports[0].text, "Control gad class not defined");
  EXPECT_EQ(form.data.Find("gad")->classDef, nullptr);
  EXPECT_EQ(form.data.Find("gad")->kept, (Texts{"gad.SetBounds(1, 2, 3, 4);", "gad.Spin(2);"}));
  EXPECT_EQ(form.data.Find("one")->ValueText("text"), "x");
  EXPECT_TRUE(form.data.CheckParents());
  EXPECT_EQ(test::InitBody(form.data),
            "//!<Thing>\ngad.SetBounds(1, 2, 3, 4);\ngad.Spin(2);\nthis->Add(&gad);\n"
            "//!<Button>\none.text = \"x\";\nthis->Add(&one);\n");
}

TEST(FormReader, EventsOfAnUnknownClass_AreKept) {
  const std::string body =
      "//!<Gadget>\ngad.onSpin.Add_H(this, &This::DoSpin);\nthis->Add(&gad);\n";
  const ReadForm form("Gadget gad;\n", body);
  EXPECT_TRUE(form.data.Find("gad")->events.empty());
  EXPECT_EQ(test::InitBody(form.data), body);
}

TEST(FormReader, AStatementThatIsNotWhole_IsNotKept) {
  const ReadForm form("Gadget gad;\n", "gad.Spin(1,\n2);\nthis->Add(&gad);\n");
  EXPECT_TRUE(form.data.Find("gad")->kept.empty());
}

TEST(FormReader, HandlersThatDoNotExist_AreKept) {
  const std::string body =
      "//!<Button>\none.onNothing.Add_H(this, &This::None);\nthis->Add(&one);\n";
  EXPECT_EQ(test::InitBody(ReadForm("Button one;\n", body).data), body);
}

TEST(FormReader, TwoControlsOfOneName_AreOne) {
  const ReadForm form("Button one;\nEdit one;\n", "this->Add(&one);\n");
  EXPECT_EQ(Names(form.data), (Texts{"this-", "one"}));
  EXPECT_EQ(form.data.Find("one")->declClass, "Edit");
}

TEST(FormReader, CheckParents_NamesTheFirstWithoutAnAdd) {
  ReadForm form("Button one, two, three;\n", "this->Add(&one);\n");
  EXPECT_FALSE(form.data.CheckParents());
  EXPECT_EQ(form.data.reports.back().text, "two hasn't Add statment!");
}

TEST(FormReader, CheckParents_FindsCircles) {
  ReadForm own("Panel pan;\n", "pan.Add(&pan);\n");
  EXPECT_FALSE(own.data.CheckParents());
  EXPECT_EQ(own.data.reports.back().text, "pan is in itself!");
  ReadForm two("Panel one, two;\n", "one.Add(&two);\ntwo.Add(&one);\n");
  EXPECT_FALSE(two.data.CheckParents());
  ReadForm chain("Panel one, two, three;\n",
                 "this->Add(&one);\none.Add(&two);\ntwo.Add(&three);\n");
  EXPECT_TRUE(chain.data.CheckParents());
}

TEST(FormReader, TheFormCannotBeAddedOrDeclared) {
  const ReadForm form("int this-;\n", "foo.Add(&this->x);\n");
  EXPECT_EQ(form.data.root.declClass, "");
  EXPECT_EQ(form.data.root.parent, nullptr);
}

TEST(FormReader, LongValues_StayWhole) {
  const std::string text(3000, 'x');
  const ReadForm form("Button one;\n", "one.text = \"" + text + "\";\nthis->Add(&one);\n");
  EXPECT_EQ(form.data.Find("one")->ValueText("text"), text);
  EXPECT_NE(test::WrittenInit(form.data).find("one.text = \"" + text + "\";\r\n"),
            std::string::npos);
}

TEST(FormData, UniqueName_GoesBehindTheLargestNumber) {
  const ReadForm form("Button button1, button3, buttonx;\n", "");
  EXPECT_EQ(form.data.UniqueName("Button"), "button4");
  EXPECT_EQ(form.data.UniqueName("Edit"), "edit1");
  EXPECT_EQ(form.data.UniqueName("TabCtrl"), "tabCtrl1");
}

TEST(FormData, NameProblem) {
  const ReadForm form("Button one, two;\n", "");
  EXPECT_EQ(form.data.NameProblem("three", form.data.Find("one")), "");
  EXPECT_EQ(form.data.NameProblem("one", form.data.Find("one")), "");
  EXPECT_EQ(form.data.NameProblem("two", form.data.Find("one")), "The name is not unique");
  for (const char* name : {"", "ab", "1abc", "a b", "class", "b-c"})
    EXPECT_NE(form.data.NameProblem(name, nullptr), "") << name;
}

TEST(FormData, DeleteRecord_TakesWhatIsInIt) {
  ReadForm form("Panel pan, inner;\nButton one, two;\n",
                "this->Add(&pan);\npan.Add(&inner);\ninner.Add(&one);\nthis->Add(&two);\n");
  form.data.DeleteRecord(*form.data.Find("pan"));
  EXPECT_EQ(Names(form.data), (Texts{"this-", "two"}));
  ReadForm circle("Panel one, two;\n", "one.Add(&two);\ntwo.Add(&one);\n");
  circle.data.DeleteRecord(*circle.data.Find("one"));
  EXPECT_EQ(Names(circle.data), Texts{"this-"});
}

TEST(FormData, FillDefaults_StopsAtTheFirstRawEntryAndLeavesGeometry) {
  ReadForm form("Button one;\n", "one.foo = 1;\n");
  CtrlRec& one = *form.data.Find("one");
  one.FillDefaults();
  EXPECT_EQ(one.FindValue("kind")->value, "cNone");
  EXPECT_EQ(one.FindValue("left")->value, "");
  EXPECT_EQ(one.props.back().value, "foo = 1");
}

TEST(FormData, AddControl_IsReadyToBeWritten) {
  FormData form;
  CtrlRec& pan = form.AddControl(*FindClass("Panel"), form.root, "panel1");
  form.AddControl(*FindClass("Button"), pan, "button1");
  EXPECT_EQ(test::InitBody(form),
            "//!<Panel>\nthis->Add(&panel1);\n//!<Button>\npanel1.Add(&button1);\n");
}

}  // namespace
}  // namespace zendry
