#include <gtest/gtest.h>

#include "GuiDriver.h"
#include "SplitContainer.h"

namespace mavro {
namespace {

struct SplitForm : Form {
  Panel first, second, inner;
  SplitContainer split;
  SplitForm(int orientation = 1) {
    SetBounds(0, 0, 600, 400);
    split.orientation = orientation;
    split.pan1 = &first;
    split.pan2 = &second;
    split.dock = Dock::cFill;
    inner.dock = Dock::cFill;
    second.Add(&inner);
    split.SetPosition(200);
    Add(&split);
  }
  Control& Bar() { return *split.children[1]; }
};

TEST(SplitContainer, Create_PlacesPanesAroundTheBar) {
  SplitForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.first.Bounds(), (Rect{0, 0, 200, 400}));
    EXPECT_EQ(form.Bar().Bounds(), (Rect{200, 0, 4, 400}));
    EXPECT_EQ(form.second.Bounds(), (Rect{204, 0, 396, 400}));
    EXPECT_EQ(form.inner.Bounds(), (Rect{0, 0, 396, 400}));
  });
}

TEST(SplitContainer, Flat_StacksThePanes) {
  SplitForm form(0);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.first.Bounds(), (Rect{0, 0, 600, 200}));
    EXPECT_EQ(form.Bar().Bounds(), (Rect{0, 200, 600, 4}));
    EXPECT_EQ(form.second.Bounds(), (Rect{0, 204, 600, 196}));
  });
}

TEST(SplitContainer, SetPosition_BelowTheMinimum_IsTheMinimum) {
  SplitForm form;
  test::RunForm(form, false, [&] {
    form.split.SetPosition(20);
    EXPECT_EQ(form.split.Position(), 100);
    form.split.SetPosition(590);
    EXPECT_EQ(form.split.Position(), 500);
    form.split.SetPosition(500);
    EXPECT_EQ(form.split.Position(), 500);
  });
}

TEST(SplitContainer, FirstPosition_IsNotClamped) {
  SplitForm form;
  form.split.SetPosition(30);
  test::RunForm(form, false, [&] { EXPECT_EQ(form.split.Position(), 30); });
}

struct FreeForm : Form {
  Panel first, second;
  SplitContainer split;
  FreeForm() {
    SetBounds(0, 0, 600, 400);
    split.pan1 = &first;
    split.pan2 = &second;
    split.dock = Dock::cFill;
    Add(&split);
  }
};

TEST(SplitContainer, WithoutAPosition_BothPanesShareTheRoom) {
  for (const int orientation : {1, 0}) {
    FreeForm form;
    form.split.orientation = orientation;
    test::RunForm(form, false, [&] {
      const int size = orientation == 1 ? 600 : 400;
      EXPECT_EQ(form.split.position, (size - 4) / 2);
      EXPECT_EQ(orientation == 1 ? form.first.width : form.first.height, (size - 4) / 2);
      EXPECT_EQ(orientation == 1 ? form.second.width : form.second.height, (size - 4) / 2);
      form.SetSize(800, 800);
      QTest::qWait(1);
      EXPECT_EQ(form.split.position, 398);
      form.split.position = 250;
      form.SetSize(600, 600);
      QTest::qWait(1);
      EXPECT_EQ(form.split.position, 250);
    });
  }
}

TEST(SplitContainer, WithoutAPositionAndHardlyAnyRoom_ShowsTheBar) {
  FreeForm form;
  form.SetBounds(0, 0, 60, 60);
  test::RunForm(form, false, [&] { EXPECT_LE(form.split.position, 56); });
}

TEST(SplitContainer, Position_IsAProperty) {
  FreeForm form;
  form.split.position = 200;
  EXPECT_EQ(form.split.position, 200);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.first.width, 200);
    form.split.position = 20;
    EXPECT_EQ(form.split.position, 100) << "the smallest size";
    form.split.SetPosition(300);
    EXPECT_EQ(form.split.position, 300);
    EXPECT_EQ(form.first.width, 300);
    QWindow* window = test::WidgetOf(form)->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, QPoint(302, 100));
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, QPoint(352, 100));
    EXPECT_EQ(form.split.position, 350);
  });
}

TEST(SplitContainer, Shrinking_KeepsTheBar) {
  SplitForm form;
  test::RunForm(form, false, [&] {
    form.SetSize(150, 300);
    QTest::qWait(1);
    EXPECT_EQ(form.split.Position(), 200);
    EXPECT_LT(form.second.Bounds().width, 0);
    form.SetSize(600, 400);
    QTest::qWait(1);
    EXPECT_EQ(form.second.Bounds(), (Rect{204, 0, 396, 400}));
  });
}

// As an application hides a pane: layout runs when it asks for it.
void Show(SplitForm& form, Control& pane, bool on) {
  pane.visible = on;
  form.split.layoutPending = true;
  RunPendingLayout(&form.split);
}

TEST(SplitContainer, HiddenPane_GivesItsRoomAndTheBarsToTheOther) {
  for (const int orientation : {0, 1}) {
    SplitForm form(orientation);
    test::RunForm(form, false, [&] {
      const Rect first = form.first.Bounds(), second = form.second.Bounds();
      Show(form, form.first, false);
      EXPECT_EQ(form.second.Bounds(), (Rect{0, 0, 600, 400}));
      EXPECT_EQ(form.inner.Bounds(), (Rect{0, 0, 600, 400}));
      EXPECT_FALSE(test::WidgetOf(form.Bar())->isVisible());
      EXPECT_EQ(form.split.Position(), 200);
      Show(form, form.first, true);
      EXPECT_EQ(form.first.Bounds(), first);
      EXPECT_EQ(form.second.Bounds(), second);
      EXPECT_TRUE(test::WidgetOf(form.Bar())->isVisible());
      Show(form, form.second, false);
      EXPECT_EQ(form.first.Bounds(), (Rect{0, 0, 600, 400}));
    });
  }
}

TEST(SplitContainer, HiddenPane_ResizedAndMoved_ComesBackAtTheNewPosition) {
  SplitForm form;
  test::RunForm(form, false, [&] {
    Show(form, form.first, false);
    form.SetSize(700, 300);
    EXPECT_TRUE(test::WaitFor([&] { return form.second.Bounds() == Rect{0, 0, 700, 300}; }));
    form.split.SetPosition(150);
    EXPECT_EQ(form.second.Bounds(), (Rect{0, 0, 700, 300}));
    Show(form, form.first, true);
    EXPECT_EQ(form.first.Bounds(), (Rect{0, 0, 150, 300}));
  });
}

TEST(SplitContainer, BothPanesHidden_LeaveTheirPlaces) {
  SplitForm form;
  test::RunForm(form, false, [&] {
    Show(form, form.first, false);
    Show(form, form.second, false);
    Show(form, form.first, true);
    EXPECT_EQ(form.first.Bounds(), (Rect{0, 0, 600, 400}));
    Show(form, form.second, true);
    EXPECT_EQ(form.first.Bounds(), (Rect{0, 0, 200, 400}));
  });
}

TEST(SplitContainer, PaneHiddenFromTheStart_TakesNoRoom) {
  SplitForm form;
  form.first.visible = false;
  test::RunForm(form, false, [&] { EXPECT_EQ(form.second.Bounds(), (Rect{0, 0, 600, 400})); });
}

TEST(SplitContainer, Drag_MovesTheBarWithTheMouse) {
  SplitForm form;
  test::RunForm(form, false, [&] {
    QWindow* window = test::WidgetOf(form)->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, QPoint(202, 100));
    QTest::mouseMove(window, QPoint(252, 120));
    EXPECT_EQ(form.split.Position(), 250);
    QTest::mouseMove(window, QPoint(10, 120));
    EXPECT_EQ(form.split.Position(), 100);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, QPoint(302, 100));
    EXPECT_EQ(form.split.Position(), 300);
    QTest::mouseMove(window, QPoint(400, 120));
    EXPECT_EQ(form.split.Position(), 300);
  });
}

TEST(SplitContainer, Bar_ShowsTheSizingCursor) {
  SplitForm upright, flat(0);
  test::RunForm(upright, false, [&] {
    EXPECT_EQ(test::WidgetOf(upright.Bar())->cursor().shape(), Qt::SizeHorCursor);
  });
  test::RunForm(flat, false, [&] {
    EXPECT_EQ(test::WidgetOf(flat.Bar())->cursor().shape(), Qt::SizeVerCursor);
  });
}

TEST(SplitContainerDeath, WithoutPanes_Stops) {
  SplitContainer split;
  EXPECT_DEATH(split.CreateControl(), "pan1!=0 && pan2!=0");
}

}  // namespace
}  // namespace mavro
