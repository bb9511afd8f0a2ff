#include <gtest/gtest.h>

#include "Form.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

struct Box : Panel {
  Box(Dock where, int w, int h) {
    dock = where;
    SetBounds(0, 0, w, h);
  }
};

struct Frame : Panel {
  Frame(int w, int h) { SetBounds(0, 0, w, h); }
};

TEST(DockLayout, LeftFillRight_FillGetsTheRestWhateverItsPlace) {
  Frame frame(200, 100);
  Box left(Dock::cLeft, 50, 7), fill(Dock::cFill, 1, 1), right(Dock::cRight, 30, 7);
  frame.Add(&left);
  frame.Add(&fill);
  frame.Add(&right);
  RunPendingLayout(&frame);
  EXPECT_EQ(left.Bounds(), (Rect{0, 0, 50, 100}));
  EXPECT_EQ(right.Bounds(), (Rect{170, 0, 30, 100}));
  EXPECT_EQ(fill.Bounds(), (Rect{50, 0, 120, 100}));
}

TEST(DockLayout, TopThenLeft_LeftStartsBelow) {
  Frame frame(100, 100);
  Box top(Dock::cTop, 1, 20), left(Dock::cLeft, 30, 1);
  frame.Add(&top);
  frame.Add(&left);
  RunPendingLayout(&frame);
  EXPECT_EQ(top.Bounds(), (Rect{0, 0, 100, 20}));
  EXPECT_EQ(left.Bounds(), (Rect{0, 20, 30, 80}));
}

TEST(DockLayout, LeftThenTop_TopStartsBeside) {
  Frame frame(100, 100);
  Box left(Dock::cLeft, 30, 1), top(Dock::cTop, 1, 20);
  frame.Add(&left);
  frame.Add(&top);
  RunPendingLayout(&frame);
  EXPECT_EQ(top.Bounds(), (Rect{30, 0, 70, 20}));
}

TEST(DockLayout, RunsOnce_UntilItIsWantedAgain) {
  Frame frame(100, 100);
  Box fill(Dock::cFill, 1, 1);
  frame.Add(&fill);
  RunPendingLayout(&frame);
  EXPECT_FALSE(frame.layoutPending);
  fill.SetBounds(5, 5, 6, 6);
  RunPendingLayout(&frame);
  EXPECT_EQ(fill.Bounds(), (Rect{5, 5, 6, 6}));
  frame.layoutPending = true;
  RunPendingLayout(&frame);
  EXPECT_EQ(fill.Bounds(), (Rect{0, 0, 100, 100}));
}

TEST(DockLayout, OtherSize_WantsIt_OtherPlaceDoesNot) {
  Frame frame(100, 100);
  RunPendingLayout(&frame);
  frame.layoutPending = false;
  frame.SetLocation(7, 8);
  EXPECT_FALSE(frame.layoutPending);
  frame.SetSize(100, 101);
  EXPECT_TRUE(frame.layoutPending);
  frame.layoutPending = false;
  frame.SetSize(101, 101);
  EXPECT_TRUE(frame.layoutPending);
}

struct StateRow {
  int given, state;
  bool isLaidOut;
};

TEST(SetStateTree, OnlyAMarkAndShowing_WantALayout_AndOnlyAMarkKeepsTheState) {
  for (const StateRow& row :
       {StateRow{cMarkLayout, cShown, true}, StateRow{cAboutToShow, cAboutToShow, true},
        StateRow{cShown, cShown, false}, StateRow{cHidden, cHidden, false}}) {
    Frame frame(100, 100);
    Box inner(Dock::cNone, 50, 50), deep(Dock::cFill, 1, 1);
    frame.Add(&inner);
    inner.Add(&deep);
    for (Control* control : std::initializer_list<Control*>{&frame, &inner, &deep}) {
      control->state = cShown;
      control->layoutPending = false;
    }
    SetStateTree(&frame, row.given);
    for (Control* control : std::initializer_list<Control*>{&frame, &inner, &deep}) {
      EXPECT_EQ(control->state, row.state) << row.given;
      EXPECT_EQ(control->layoutPending, row.isLaidOut) << row.given;
    }
  }
}

TEST(RenewRoutes, WithoutWindows_DoesNothing) {
  Frame frame(100, 100);
  Box child(Dock::cNone, 5, 5);
  frame.Add(&child);
  frame.RenewRoutes();
  EXPECT_EQ(child.id, 0 | cChildRoute);
}

TEST(DockLayout, TwoFills_OnlyTheLaterIsPlaced) {
  Frame frame(100, 100);
  Box first(Dock::cFill, 11, 12), second(Dock::cFill, 1, 1);
  frame.Add(&first);
  frame.Add(&second);
  RunPendingLayout(&frame);
  EXPECT_EQ(first.Bounds(), (Rect{0, 0, 11, 12}));
  EXPECT_EQ(second.Bounds(), (Rect{0, 0, 100, 100}));
}

TEST(DockLayout, Hidden_TakesNoRoomWhenLayoutNextRuns) {
  Frame frame(100, 100);
  Box top(Dock::cTop, 1, 20), fill(Dock::cFill, 1, 1);
  frame.Add(&top);
  frame.Add(&fill);
  RunPendingLayout(&frame);
  top.visible = false;
  EXPECT_EQ(fill.Bounds(), (Rect{0, 20, 100, 80}));
  RunPendingLayout(&frame);
  EXPECT_EQ(fill.Bounds(), (Rect{0, 0, 100, 100}));
}

TEST(DockLayout, NotPending_DoesNothing) {
  Frame frame(100, 100);
  Box fill(Dock::cFill, 5, 5);
  frame.Add(&fill);
  frame.layoutPending = false;
  RunPendingLayout(&frame);
  EXPECT_EQ(fill.Bounds(), (Rect{0, 0, 5, 5}));
}

TEST(SetBounds, HeightMinusOne_KeepsTheHeight) {
  Frame frame(100, 40);
  frame.SetBounds(1, 2, 3, -1);
  EXPECT_EQ(frame.Bounds(), (Rect{1, 2, 3, 40}));
}

TEST(SetBounds, OnlyAChangeOfSizeMarksTheLayout) {
  Frame frame(100, 40);
  frame.layoutPending = false;
  frame.SetBounds(5, 5, 100, 40);
  EXPECT_FALSE(frame.layoutPending);
  frame.SetBounds(5, 5, 101, 40);
  EXPECT_TRUE(frame.layoutPending);
}

}  // namespace
}  // namespace mavro
