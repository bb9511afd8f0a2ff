#include "frmedt/FormClip.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frmedt/CtrlReg.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct FormClipTest : testing::Test {
  CtrlRec& Add(const std::string& className, const std::string& name, CtrlRec* parent = nullptr) {
    CtrlRec& rec = form.AddControl(*FindClass(className), parent ? *parent : form.root, name);
    for (const char* row : {"left", "top", "width", "height"}) rec.SetValueText(row, "10");
    return rec;
  }
  static std::vector<std::string> Names(const std::vector<CtrlRec*>& records) {
    std::vector<std::string> names;
    for (const CtrlRec* rec : records) names.push_back(rec->name);
    return names;
  }
  FormData form;
};

TEST_F(FormClipTest, Copy_IsTheStatementsOfTheControls) {
  CtrlRec& button = Add("Button", "start");
  button.SetValueText("text", "Go");
  button.events.push_back({"onClick", "OnGo"});
  Add("Edit", "other");
  const std::string text = CopyText(form, {&button});
  EXPECT_THAT(text, HasSubstr("Button start;"));
  EXPECT_THAT(text, HasSubstr("start.SetBounds(10, 10, 10, 10);"));
  EXPECT_THAT(text, HasSubstr("start.text = \"Go\";"));
  EXPECT_THAT(text, HasSubstr("start.onClick.Add_H(this, &This::OnGo);"));
  EXPECT_THAT(text, HasSubstr("this->Add(&start);"));
  EXPECT_THAT(text, testing::Not(HasSubstr("other")));
  EXPECT_EQ(CopyText(form, {}), "");
}

TEST_F(FormClipTest, Paste_NamesAnewWhatIsTaken) {
  CtrlRec& panel = Add("Panel", "panel1");
  CtrlRec& inner = Add("Button", "button1", &panel);
  inner.SetValueText("text", "In");
  const std::string text = CopyText(form, {&panel});
  const auto pasted = PasteText(form, form.root, text);
  ASSERT_THAT(Names(pasted), ElementsAre("panel2"));
  const auto children = form.ChildrenOf(*pasted[0]);
  ASSERT_THAT(Names(children), ElementsAre("button2"));
  EXPECT_EQ(children[0]->ValueText("text"), "In");
  EXPECT_THAT(Names(PasteText(form, panel, CopyText(form, {&inner}))), ElementsAre("button3"));
}

TEST_F(FormClipTest, Paste_IntoAnotherForm_KeepsTheNames) {
  CtrlRec& edit = Add("Edit", "amount");
  FormData other;
  EXPECT_THAT(Names(PasteText(other, other.root, CopyText(form, {&edit}))), ElementsAre("amount"));
  EXPECT_EQ(other.Find("amount")->ValueText("left"), "10");
}

TEST_F(FormClipTest, ShortNames_AreNotLost) {
  CtrlRec& edit = Add("Edit", "e");
  edit.SetValueText("text", "kept");
  const auto pasted = PasteText(form, form.root, CopyText(form, {&edit}));
  ASSERT_EQ(pasted.size(), 1u);
  EXPECT_EQ(pasted[0]->ValueText("text"), "kept");
}

TEST_F(FormClipTest, Paste_OfAnythingElse_AddsNothing) {
  for (const char* text : {"", "hello", "//!decl\n", "//!init\nfoo.bar = 1;\n//!end\n", "int x;\n"})
    EXPECT_TRUE(PasteText(form, form.root, text).empty()) << text;
  EXPECT_EQ(form.controls.size(), 1u);
}

TEST_F(FormClipTest, CopyForm_CopiesAllWithTheirParents) {
  CtrlRec& inner = Add("Button", "inner");
  CtrlRec& panel = Add("Panel", "panel");
  inner.parent = &panel;
  form.root.SetValueText("text", "Title");
  FormData copy;
  CopyForm(form, copy);
  EXPECT_EQ(copy.root.ValueText("text"), "Title");
  EXPECT_EQ(copy.Find("inner")->parent, copy.Find("panel"));
  EXPECT_EQ(copy.Find("panel")->parent, &copy.root);
}

}  // namespace
}  // namespace zendry
