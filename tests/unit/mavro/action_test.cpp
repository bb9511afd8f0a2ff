#include "Action.h"

#include <gtest/gtest.h>

namespace mavro {
namespace {

struct Acts : ActionList {
  int lastId = 0;
  Acts() { SetTarget(this, &Acts::OnCommand); }
  void OnCommand(int id) { lastId = id; }
};

TEST(ActionList, Add_ZeroId_TakesTheNextOfOneCounterForAllLists) {
  Acts a, b;
  const int first = a.Add(0, "x")->id;
  EXPECT_GE(first, 101);
  EXPECT_EQ(b.Add(0, "y")->id, first + 1);
}

TEST(ActionList, Add_CopiesTargetAndHandlerOfTheList) {
  Acts acts;
  EXPECT_TRUE(acts.Add(1300, "&New", cControlKey | 'N')->Execute());
  EXPECT_EQ(acts.lastId, 1300);
}

TEST(ActionList, Add_WithoutTarget_ExecuteAnswersFalse) {
  ActionList list;
  EXPECT_FALSE(list.Add(5, "x")->Execute());
}

TEST(Action, OfWhichHalfIsMissing_DoesNothing) {
  Acts acts;
  Action whole = *acts.Add(7, "x");
  Action noTarget = whole, noHandler = whole;
  noTarget.target = nullptr;
  noHandler.handler = nullptr;
  EXPECT_FALSE(noTarget.Execute());
  EXPECT_FALSE(noHandler.Execute());
  EXPECT_EQ(acts.lastId, 0);
  EXPECT_TRUE(whole.Execute());
}

TEST(HotKeyText, FirstAndLastOfEachKind) {
  const std::pair<int, const char*> rows[] = {
      {'0', "0"},      {'9', "9"},    {'A', "A"},    {'Z', "Z"},   {0x70, "F1"},  {0x7B, "F12"},
      {0x7C, ""},      {0x6F, ""},    {0xBA, ";"},   {0xC0, "`"},  {0xC1, ""},    {0xB9, ""},
      {0x20, "Space"}, {0x28, "Dn"},  {0x29, ""},    {0x1F, ""},   {0x09, "Tab"}, {0x0A, ""},
      {'0' - 1, ""},   {'9' + 1, ""}, {'A' - 1, ""}, {'Z' + 1, ""}};
  for (const auto& [key, name] : rows)
    EXPECT_EQ(HotKeyText(cControlKey | key), std::string("\tCtrl+") + name) << key;
}

TEST(ActionList, Add_NoImageGiven_IsMinusTwo) {
  Acts acts;
  EXPECT_EQ(acts.Add(5, "x")->image, -2);
}

TEST(ActionList, AddRow_ForeignAction_KeepsItsOwnTarget) {
  Acts owner, view;
  Action* action = owner.Add(845, "Copy");
  view.AddRow(action);
  EXPECT_TRUE(view.Actions().empty());
  ASSERT_EQ(view.Rows().size(), 1u);
  view.Rows()[0]->Execute();
  EXPECT_EQ(owner.lastId, 845);
  EXPECT_EQ(view.lastId, 0);
}

TEST(ActionList, MarkerRows_CarryTheReservedIdsAndAreShared) {
  Acts a, b;
  a.AddSeparator();
  a.AddSubmenu("More");
  a.EndSubmenu();
  b.AddSeparator();
  EXPECT_EQ(a.Rows()[0]->id, cSeparatorRow);
  EXPECT_EQ(a.Rows()[1]->id, cSubmenuRow);
  EXPECT_EQ(a.Rows()[1]->text, "More");
  EXPECT_EQ(a.Rows()[2]->id, cEndSubmenuRow);
  EXPECT_EQ(a.Rows()[0], b.Rows()[0]);
  EXPECT_TRUE(a.Actions().empty());
}

struct HotKeyCase {
  int hotkey;
  const char* text;
};

class HotKeys : public testing::TestWithParam<HotKeyCase> {};

TEST_P(HotKeys, Text) {
  EXPECT_EQ(HotKeyText(GetParam().hotkey), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Table, HotKeys,
    testing::Values(HotKeyCase{0, ""}, HotKeyCase{0x8004E, "\tCtrl+N"},
                    HotKeyCase{0x4007A, "\tShift+F11"}, HotKeyCase{0x7A, "\tF11"},
                    HotKeyCase{0xC0052, "\tCtrl+Shift+R"}, HotKeyCase{0x100071, "\tAlt+F2"},
                    HotKeyCase{0x1C0000 | 'Q', "\tCtrl+Alt+Shift+Q"},
                    HotKeyCase{0x80000 | 0xBF, "\tCtrl+/"}, HotKeyCase{0x80000 | 0xBA, "\tCtrl+;"},
                    HotKeyCase{0x80000 | 0xC0, "\tCtrl+`"},
                    HotKeyCase{0x80000 | 0x20, "\tCtrl+Space"},
                    HotKeyCase{0xC0026, "\tCtrl+Shift+Up"}, HotKeyCase{0x80028, "\tCtrl+Dn"},
                    HotKeyCase{0x80000 | '7', "\tCtrl+7"}, HotKeyCase{0x80000 | 0x08, "\tCtrl+"}));

}  // namespace
}  // namespace mavro
