#include "frmedt/FormHistory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frmedt/CtrlReg.h"

namespace zendry {
namespace {

using testing::ElementsAre;

struct FormHistoryTest : testing::Test {
  CtrlRec& AddButton(const std::string& name) {
    return form.AddControl(*FindClass("Button"), form.root, name);
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (size_t i = 1; i < form.controls.size(); ++i) names.push_back(form.controls[i]->name);
    return names;
  }
  void Undo() {
    history.Undo([this] { ++rebuilds; });
  }
  void Redo() {
    history.Redo([this] { ++rebuilds; });
  }

  FormData form;
  FormHistory history{form};
  int rebuilds = 0;
};

TEST_F(FormHistoryTest, Commit_WithoutAChange_IsNoStep) {
  EXPECT_FALSE(history.Commit());
  EXPECT_FALSE(history.CanUndo());
  EXPECT_FALSE(history.CanRedo());
  EXPECT_FALSE(history.IsChanged());
}

TEST_F(FormHistoryTest, Values_GoBackAndForthInPlace) {
  AddButton("one");
  history.Commit();
  CtrlRec* rec = form.Find("one");
  rec->SetValueText("text", "A");
  EXPECT_TRUE(history.Commit());
  rec->SetValueText("text", "B");
  rec->events.push_back({"onClick", "Go"});
  EXPECT_TRUE(history.Commit());
  const auto outcome = history.Undo([] { FAIL(); });
  EXPECT_FALSE(outcome.isRebuilt);
  EXPECT_THAT(outcome.changed, ElementsAre(rec));
  EXPECT_EQ(rec->ValueText("text"), "A");
  EXPECT_TRUE(rec->events.empty());
  history.Redo([] { FAIL(); });
  EXPECT_EQ(rec->ValueText("text"), "B");
  EXPECT_EQ(rec->HandlerOf("onClick"), "Go");
  EXPECT_FALSE(history.CanRedo());
}

TEST_F(FormHistoryTest, ThirtySteps_LeadBackToTheEmptyForm) {
  for (int i = 0; i < 30; ++i) {
    AddButton("b" + std::to_string(i));
    history.Commit();
  }
  form.DeleteRecord(*form.Find("b3"));
  history.Commit();
  EXPECT_TRUE(history.IsChanged());
  Undo();
  EXPECT_EQ(Names().size(), 30u);
  EXPECT_EQ(Names()[3], "b3");
  for (int i = 0; i < 30; ++i) Undo();
  EXPECT_TRUE(Names().empty());
  EXPECT_FALSE(history.CanUndo());
  EXPECT_FALSE(history.IsChanged());
  for (int i = 0; i < 31; ++i) Redo();
  EXPECT_EQ(Names().size(), 29u);
  EXPECT_EQ(rebuilds, 62);
}

TEST_F(FormHistoryTest, NewStep_ForgetsWhatWasUndone) {
  AddButton("one");
  history.Commit();
  Undo();
  AddButton("two");
  history.Commit();
  EXPECT_FALSE(history.CanRedo());
  Undo();
  Redo();
  EXPECT_THAT(Names(), ElementsAre("two"));
}

TEST_F(FormHistoryTest, ParentsComeBack_EvenThoseBehindTheirChildren) {
  CtrlRec& inner = AddButton("inner");
  CtrlRec& panel = form.AddControl(*FindClass("Panel"), form.root, "panel");
  inner.parent = &panel;
  history.Commit();
  form.DeleteRecord(panel);
  history.Commit();
  EXPECT_TRUE(Names().empty());
  Undo();
  EXPECT_THAT(Names(), ElementsAre("inner", "panel"));
  EXPECT_EQ(form.Find("inner")->parent, form.Find("panel"));
  EXPECT_EQ(form.Find("panel")->parent, &form.root);
}

TEST_F(FormHistoryTest, TwoControlsOfOneName_StayTwo) {
  AddButton("one").SetValueText("text", "first");
  AddButton("two").SetValueText("text", "second");
  form.Find("two")->name = "one";
  history.Commit();
  AddButton("three");
  history.Commit();
  Undo();
  ASSERT_THAT(Names(), ElementsAre("one", "one"));
  EXPECT_EQ(form.controls[1]->ValueText("text"), "first");
  EXPECT_EQ(form.controls[2]->ValueText("text"), "second");
}

TEST_F(FormHistoryTest, AnotherOrder_IsAStep) {
  AddButton("one");
  AddButton("two");
  history.Commit();
  std::swap(form.controls[1], form.controls[2]);
  EXPECT_TRUE(history.Commit());
  Undo();
  EXPECT_THAT(Names(), ElementsAre("one", "two"));
}

}  // namespace
}  // namespace zendry
