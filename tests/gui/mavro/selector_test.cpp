#include "Selector.h"

#include <gtest/gtest.h>

#include <QTabBar>

#include "Button.h"
#include "Clipboard.h"
#include "EventLog.h"
#include "Form.h"
#include "GroupBox.h"
#include "GuiDriver.h"
#include "LayoutForm.h"
#include "TabCtrl.h"

namespace mavro {
namespace {

struct CanvasForm : Form {
  LayoutForm canvas;
  Button button;
  Panel panel;
  Button inner;
  CanvasForm() {
    SetBounds(0, 0, 400, 300);
    canvas.SetBounds(10, 10, 360, 260);
    button.SetBounds(20, 20, 80, 31);
    panel.SetBounds(120, 40, 200, 120);
    panel.borderStyle = BorderStyle::cFixed3d;
    inner.SetBounds(10, 20, 61, 33);
    panel.Add(&inner);
    canvas.Add(&button);
    canvas.Add(&panel);
    Add(&canvas);
  }
};

QColor PixelOf(const Control& control, int x, int y) {
  return QColor(test::WidgetOf(control)->grab().toImage().pixel(x, y));
}

const QColor cRed(0xFA, 0, 0);

TEST(Selector, Attach_ShowsEightGripsAtCornersAndMiddles) {
  CanvasForm form;
  test::RunForm(form, false, [&] {
    form.canvas.selector.Attach(&form.button, Selector::Look::cPrimary);
    for (int y : {0, (31 - 5) / 2, 31 - 5})
      for (int x : {0, (80 - 5) / 2, 80 - 5}) {
        const bool isMiddle = y == 13 && x == 37;
        EXPECT_EQ(PixelOf(form.button, x, y) == cRed, !isMiddle) << x << "," << y;
        EXPECT_EQ(PixelOf(form.button, x + 4, y + 4) == cRed, !isMiddle) << x << "," << y;
      }
    EXPECT_NE(PixelOf(form.button, 5, 5), cRed);
    test::Shot(form, "selector");
  });
}

TEST(Selector, OtherFrames_HaveBlackGripsInLightThemes) {
  CanvasForm form;
  test::RunForm(form, false, [&] {
    Selector other(form.canvas);
    other.Attach(&form.button, Selector::Look::cOther);
    EXPECT_EQ(PixelOf(form.button, 0, 0), QColor(Qt::black));
    other.Clear();
    EXPECT_NE(PixelOf(form.button, 0, 0), QColor(Qt::black));
  });
}

TEST(Selector, Rectangle_CountsBordersOfContainers) {
  CanvasForm form;
  test::RunForm(form, false, [&] {
    Selector& selector = form.canvas.selector;
    selector.Attach(&form.inner, Selector::Look::cPrimary);
    const QPoint at = test::WidgetOf(form.inner)->mapTo(test::WidgetOf(form.canvas), QPoint());
    EXPECT_EQ(selector.left, at.x());
    EXPECT_EQ(selector.top, at.y());
    EXPECT_EQ(selector.offsetX, at.x() - 10);
    EXPECT_EQ(selector.offsetY, at.y() - 20);
    EXPECT_EQ(selector.width, 61);
    EXPECT_EQ(selector.height, 33);
  });
}

TEST(Selector, Apply_MovesTheControlAndTheGripsFollow) {
  CanvasForm form;
  test::RunForm(form, false, [&] {
    Selector& selector = form.canvas.selector;
    selector.Attach(&form.inner, Selector::Look::cPrimary);
    selector.left += 7;
    selector.top -= 4;
    selector.width = 90;
    selector.height = 41;
    selector.Apply();
    EXPECT_EQ(form.inner.Bounds(), (Rect{17, 16, 90, 41}));
    EXPECT_EQ(PixelOf(form.inner, 89, 40), cRed);
    EXPECT_EQ(form.canvas.RectOf(form.inner), selector.Bounds());
  });
}

TEST(Selector, Contains_EndsAtTheRightAndBottomEdge) {
  CanvasForm form;
  test::RunForm(form, false, [&] {
    Selector& selector = form.canvas.selector;
    selector.Attach(&form.button, Selector::Look::cPrimary);
    EXPECT_TRUE(selector.Contains(20, 20));
    EXPECT_TRUE(selector.Contains(99, 50));
    EXPECT_FALSE(selector.Contains(19, 20));
    EXPECT_FALSE(selector.Contains(100, 50));
    EXPECT_FALSE(selector.Contains(99, 51));
  });
}

TEST(Selector, Clear_WorksAfterTheControlHasGone) {
  CanvasForm form;
  test::RunForm(form, false, [&] {
    {
      Button late;
      late.SetBounds(0, 0, 50, 50);
      form.canvas.Add(&late);
      form.canvas.selector.Attach(&late, Selector::Look::cPrimary);
      form.canvas.Remove(&late);
    }
    form.canvas.selector.Clear();
    EXPECT_FALSE(form.canvas.selector.selected);
    EXPECT_EQ(form.canvas.selector.ctrl, nullptr);
  });
}

TEST(Selector, Grips_LeaveTheMouseToTheCanvas) {
  CanvasForm form;
  struct Presses : object {
    std::string log;
    void On(MouseArgs& args) { log += std::to_string(args.x) + "," + std::to_string(args.y); }
  } presses;
  form.canvas.onMouseDown.Add_H(&presses, &Presses::On);
  test::EventLog clicks;
  clicks.Listen("click", form.button.onClick);
  test::RunForm(form, false, [&] {
    form.canvas.selector.Attach(&form.button, Selector::Look::cPrimary);
    test::Click(form.canvas, QPoint(22, 22));
    EXPECT_EQ(presses.log, "22,22");
    EXPECT_EQ(clicks.Take(), "");
  });
}

TEST(LayoutForm, RectOf_FindsControlsOnPagesAndInGroups) {
  CanvasForm form;
  GroupBox group;
  Button inGroup;
  group.SetBounds(10, 60, 100, 100);
  inGroup.SetBounds(5, 6, 40, 20);
  group.Add(&inGroup);
  form.canvas.Add(&group);
  TabCtrl tabs;
  TabPage page;
  Button onPage;
  tabs.SetBounds(120, 170, 200, 80);
  onPage.SetBounds(3, 4, 40, 20);
  page.Add(&onPage);
  tabs.Add(&page);
  form.canvas.Add(&tabs);
  test::RunForm(form, false, [&] {
    for (const Button* control : {&inGroup, &onPage}) {
      const QPoint at = test::WidgetOf(*control)->mapTo(test::WidgetOf(form.canvas), QPoint());
      EXPECT_EQ(form.canvas.RectOf(*control), (Rect{at.x(), at.y(), 40, 20}));
    }
  });
}

TEST(LayoutForm, Marks_AreAboveTheChildrenUntilReplaced) {
  CanvasForm form;
  test::RunForm(form, false, [&] {
    const QColor before = PixelOf(form.canvas, 30, 30);
    form.canvas.ShowMarks({{{30, 0, 1, 200}, ""}});
    const QColor line =
        test::WidgetOf(form.canvas)->palette().color(QPalette::Active, QPalette::Highlight);
    EXPECT_EQ(PixelOf(form.canvas, 30, 30), line);
    form.canvas.ShowMarks({{{20, 20, 8, 8}, "12"}});
    EXPECT_EQ(PixelOf(form.canvas, 30, 60), PixelOf(form.canvas, 31, 60));
    EXPECT_EQ(PixelOf(form.canvas, 20, 20), line);
    test::Shot(form, "layout-form-marks");
    form.canvas.ShowMarks({});
    EXPECT_EQ(PixelOf(form.canvas, 30, 30), before);
  });
}

TEST(LayoutForm, Children_GetNeitherTheFocusNorMnemonics) {
  CanvasForm form;
  Button outside;
  outside.SetBounds(10, 272, 80, 24);
  form.Add(&outside);
  form.button.text = "&Press";
  test::EventLog clicks;
  clicks.Listen("click", form.button.onClick);
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(outside.IsFocused());
    for (int i = 0; i < 4; ++i) {
      test::Key(form, Qt::Key_Tab);
      EXPECT_FALSE(form.button.IsFocused());
      EXPECT_FALSE(form.inner.IsFocused());
    }
    test::Key(form, Qt::Key_P, Qt::AltModifier);
    QTest::qWait(0);
    EXPECT_EQ(clicks.Take(), "");
  });
}

TEST(TabCtrl, TabAt_FindsThePageOfATab) {
  Form form;
  form.SetBounds(0, 0, 300, 200);
  TabCtrl tabs;
  TabPage first, second;
  first.text = "One";
  second.text = "Two";
  tabs.SetBounds(10, 10, 250, 150);
  tabs.Add(&first);
  tabs.Add(&second);
  form.Add(&tabs);
  EXPECT_EQ(tabs.TabAt(5, 5), -1) << "no window yet";
  test::RunForm(form, false, [&] {
    const auto* row = test::WidgetOf(tabs)->findChild<QTabBar*>();
    for (int i = 0; i < 2; ++i) {
      const QPoint at = row->mapTo(test::WidgetOf(tabs), row->tabRect(i).center());
      EXPECT_EQ(tabs.TabAt(at.x(), at.y()), i);
    }
    EXPECT_EQ(tabs.TabAt(5, 100), -1) << "the page";
    EXPECT_EQ(tabs.TabAt(240, 5), -1) << "beside the tabs";
  });
}

TEST(Clipboard, KeepsEveryByteOfAText) {
  SetClipboardText("a\r\nb \xC3\xA4");
  EXPECT_EQ(ClipboardText(), "a\r\nb \xC3\xA4");
  SetClipboardText("");
  EXPECT_EQ(ClipboardText(), "");
}

}  // namespace
}  // namespace mavro
