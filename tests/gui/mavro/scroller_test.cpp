#include "Scroller.h"

#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QScrollBar>
#include <memory>

#include "Button.h"
#include "Edit.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Label.h"
#include "Wheel.h"

namespace mavro {
namespace {

struct ScrollForm : Form {
  Scroller scroller;
  Button far, inner;
  std::string log;
  int refuse = 0;

  ScrollForm() {
    SetBounds(0, 0, 300, 200);
    scroller.SetBounds(10, 10, 200, 120);
    far.SetBounds(20, 500, 84, 34);
    scroller.Add(&far);
    scroller.SetScrollRange(cVertical, 1000, 100);
    scroller.onVScroll.Add_H(this, &ScrollForm::OnVScroll);
    scroller.onHScroll.Add_H(this, &ScrollForm::OnHScroll);
    Add(&scroller);
  }
  void OnVScroll(ScrollArgs& args) {
    log += "v" + std::to_string(args.code) + ":" + std::to_string(args.position) + " ";
    if (refuse) args.position = -1;
  }
  void OnHScroll(ScrollArgs& args) { log += "h" + std::to_string(args.code) + " "; }
  QAbstractScrollArea* Area() {
    return qobject_cast<QAbstractScrollArea*>(test::WidgetOf(scroller));
  }
  Param Send(unsigned message, int code) {
    return SendMessage(scroller.impl->hwnd, message, code, 0);
  }
  int Position() { return scroller.GetScrollInfo(cVertical).position; }
};

TEST(Scroller, Messages_MoveBarAndChildren) {
  ScrollForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Send(WM_VSCROLL, SB_PAGEDOWN), 1);
    EXPECT_EQ(form.Position(), 99);
    EXPECT_EQ(test::WidgetOf(form.far)->y(), 401);
    EXPECT_EQ(form.far.top, 500);
    EXPECT_EQ(form.Send(WM_VSCROLL, SB_LINEUP), 1);
    EXPECT_EQ(form.Position(), 98);
    EXPECT_EQ(form.log, "v3:0 v0:99 ");
  });
}

TEST(Scroller, BottomStopsWhereTheLastPageIsInView) {
  ScrollForm form;
  test::RunForm(form, false, [&] {
    form.Send(WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(form.Position(), 901);
    form.Send(WM_VSCROLL, SB_TOP);
    EXPECT_EQ(form.Position(), 0);
  });
}

TEST(Scroller, Event_RefusesByMinusOne) {
  ScrollForm form;
  test::RunForm(form, false, [&] {
    form.refuse = 1;
    EXPECT_EQ(form.Send(WM_VSCROLL, SB_LINEDOWN), 0);
    EXPECT_EQ(form.Position(), 0);
    QTest::mouseClick(form.Area()->verticalScrollBar(), Qt::LeftButton, {},
                      QPoint(5, form.Area()->verticalScrollBar()->height() / 2));
    EXPECT_EQ(form.Area()->verticalScrollBar()->value(), 0);
  });
}

TEST(Scroller, ClickOnTheBar_GoesByMessage) {
  ScrollForm form;
  test::RunForm(form, false, [&] {
    QScrollBar* bar = form.Area()->verticalScrollBar();
    ASSERT_TRUE(bar->isVisible());
    QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(bar->width() / 2, bar->height() / 2));
    EXPECT_EQ(form.log, "v3:0 ");
    EXPECT_EQ(form.Position(), 99);
    bar->triggerAction(QAbstractSlider::SliderToMaximum);
    EXPECT_EQ(form.Position(), 901);
    test::Shot(form, "scroller");
  });
}

TEST(Scroller, HiddenBar_WhereAllIsInView) {
  ScrollForm form;
  test::RunForm(form, false, [&] {
    EXPECT_FALSE(form.Area()->horizontalScrollBar()->isVisible());
    form.scroller.SetScrollRange(cHorizontal, 500, 50);
    EXPECT_TRUE(test::WaitFor([&] { return form.Area()->horizontalScrollBar()->isVisible(); }));
    form.scroller.SetScrollPosition(cHorizontal, 30);
    EXPECT_EQ(test::WidgetOf(form.far)->x(), -10);
    EXPECT_EQ(form.far.left, 20);
    form.scroller.SetScrollRange(cHorizontal, 0, 0);
    EXPECT_EQ(test::WidgetOf(form.far)->x(), 20);
    EXPECT_EQ(form.log, "");
  });
}

TEST(Scroller, PositionAndRangeSetBefore_AreShown) {
  ScrollForm form;
  form.scroller.SetScrollPosition(cVertical, 250);
  test::RunForm(form, false, [&] { EXPECT_EQ(test::WidgetOf(form.far)->y(), 250); });
}

TEST(Scroller, HugeAndReversedRanges_Stand) {
  ScrollForm form;
  test::RunForm(form, false, [&] {
    form.scroller.SetScrollRange(cVertical, INT_MAX, 1, INT_MIN);
    form.Send(WM_VSCROLL, SB_BOTTOM);
    form.scroller.SetScrollRange(cVertical, -5, -5, 10);
    form.Send(WM_VSCROLL, SB_PAGEDOWN);
    form.scroller.SetScrollPosition(cVertical, -100);
    EXPECT_EQ(form.Position(), 10);
  });
}

TEST(Scroller, ChildrensCommands_TravelAsInAnyContainer) {
  ScrollForm form;
  form.far.SetLocation(10, 10);
  int clicks = 0;
  struct Counter : object {
    explicit Counter(int& its) : count(its) {}
    void On(NotifyArgs&) { ++count; }
    int& count;
  } counter(clicks);
  form.far.onClick.Add_H(&counter, &Counter::On);
  test::RunForm(form, false, [&] { test::Click(form.far); });
  EXPECT_EQ(clicks, 1);
}

TEST(Scroller, WheelNotch_MovesThreeLinesOfText) {
  ScrollForm form;
  Label label;
  label.SetBounds(0, 0, 100, 50);
  form.scroller.Add(&label);
  test::RunForm(form, false, [&] {
    const int line = form.Area()->fontMetrics().lineSpacing();
    test::TurnWheel(label, QPoint(5, 5), -120);
    EXPECT_EQ(form.Position(), 3 * line);
    EXPECT_EQ(test::WidgetOf(label)->y(), -3 * line);
    test::TurnWheel(form.scroller, QPoint(5, 5), 120);
    EXPECT_EQ(form.Position(), 0);
    form.Send(WM_VSCROLL, SB_LINEDOWN);
    EXPECT_EQ(form.Position(), 1);
    form.log.clear();
    form.refuse = true;
    test::TurnWheel(label, QPoint(5, 5), -120);
    EXPECT_EQ(form.Position(), 1);
    EXPECT_NE(form.log, "");
  });
}

// Edits one below the other, more than are seen at once, the last in a panel.
struct LongForm : ScrollForm {
  Edit edits[5];
  Panel panel;
  LongForm() {
    far.visible = false;
    for (int i = 0; i < 4; ++i) {
      edits[i].SetBounds(5, i * 100, 80, 24);
      scroller.Add(&edits[i]);
    }
    panel.SetBounds(5, 400, 150, 90);
    edits[4].SetBounds(5, 60, 80, 24);
    panel.Add(&edits[4]);
    scroller.Add(&panel);
  }
  bool IsSeen(const Control& control) {
    const QWidget* view = Area()->viewport();
    const QWidget* widget = test::WidgetOf(control);
    return view->rect().contains(QRect(widget->mapTo(view, QPoint(0, 0)), widget->size()));
  }
};

TEST(Scroller, FollowsTheFocus) {
  LongForm form;
  test::RunForm(form, false, [&] {
    EXPECT_FALSE(form.IsSeen(form.edits[4]));
    for (Edit& edit : form.edits) {
      EXPECT_TRUE(edit.IsFocused());
      EXPECT_TRUE(form.IsSeen(edit));
      test::Key(form, Qt::Key_Tab);
    }
    EXPECT_TRUE(form.IsSeen(form.edits[0])) << "round again";
    form.edits[4].Focus();
    EXPECT_TRUE(form.IsSeen(form.edits[4]));
    test::Key(form, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(form.IsSeen(form.edits[3]));
  });
}

TEST(Scroller, FocusByTheMouse_MovesNothingUnderIt) {
  LongForm form;
  test::RunForm(form, false, [&] {
    form.scroller.SetScrollPosition(cVertical, 210);
    test::Click(form.edits[2], QPoint(30, 18));
    EXPECT_TRUE(form.edits[2].IsFocused());
    EXPECT_EQ(form.Position(), 210);
  });
}

TEST(Scroller, FocusThatAHandlerRefusesToFollow_ScrollsNothing) {
  LongForm form;
  form.refuse = 1;
  test::RunForm(form, false, [&] {
    form.edits[4].Focus();
    EXPECT_EQ(form.Position(), 0);
    EXPECT_TRUE(form.edits[4].IsFocused());
  });
}

TEST(Container, ScrollMessages_AnswerZero) {
  ScrollForm form;
  Panel panel;
  form.Add(&panel);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(SendMessage(panel.impl->hwnd, WM_HSCROLL, SB_LINEDOWN, 0), 0);
    EXPECT_EQ(SendMessage(panel.impl->hwnd, WM_VSCROLL, SB_LINEDOWN, 0), 0);
  });
}

struct DoomedForm : ScrollForm {
  std::unique_ptr<Scroller> doomed = std::make_unique<Scroller>();
  void Doom(ScrollArgs&) { doomed.reset(); }
};

TEST(Scroller, Destroyed_InItsEvent) {
  DoomedForm form;
  form.doomed->SetScrollRange(cVertical, 100, 10);
  form.doomed->onVScroll.Add_H(&form, &DoomedForm::Doom);
  form.Add(form.doomed.get());
  test::RunForm(form, false, [&] {
    auto* area = qobject_cast<QAbstractScrollArea*>(test::WidgetOf(*form.doomed));
    area->verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(form.doomed, nullptr);
  });
}

}  // namespace
}  // namespace mavro
