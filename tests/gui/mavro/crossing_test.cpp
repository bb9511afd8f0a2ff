// The mouse comes over a control and leaves it.
#include <gtest/gtest.h>

#include <QCursor>

#include "Core.h"
#include "Form.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

struct CrossedForm : Form {
  Panel panel;
  std::string log;

  CrossedForm() {
    SetBounds(0, 0, 300, 200);
    panel.SetBounds(40, 30, 100, 80);
    panel.onMouseEnter.Add_H(this, &CrossedForm::OnMouse);
    panel.onMouseEnter.Add_H(this, &CrossedForm::OnNotify);
    panel.onMouseLeave.Add_H(this, &CrossedForm::OnNotify);
    panel.onMouseLeave.Add_H(this, &CrossedForm::OnMouse);
    Add(&panel);
  }
  void OnMouse(MouseArgs& args) {
    EXPECT_EQ(args.sender, &panel);
    log += args.kind == MouseArgs::cEnter ? "enters at " : "leaves at ";
    log += std::to_string(args.x) + "," + std::to_string(args.y) + "; ";
  }
  void OnNotify(NotifyArgs& args) {
    EXPECT_EQ(args.sender, &panel);
    log += "notify " + std::to_string(args.value) + "; ";
  }
  // As the window system does: the cursor is there when the window hears of it.
  void MoveTo(int x, int y) {
    QCursor::setPos(test::WidgetOf(*this)->mapToGlobal(QPoint(x, y)));
    QTest::mouseMove(test::WidgetOf(*this)->windowHandle(), {x, y});
  }
};

TEST(Crossing, HandlersOfBothKinds_AreReportedInOrder_WithThePlace) {
  CrossedForm form;
  test::RunForm(form, false, [&] {
    form.MoveTo(5, 5);
    form.log.clear();
    form.MoveTo(50, 45);
    EXPECT_TRUE(test::WaitFor([&] { return !form.log.empty(); }));
    EXPECT_EQ(std::exchange(form.log, ""), "enters at 10,15; notify 0; ");
    form.MoveTo(60, 45);
    EXPECT_EQ(form.log, "") << "inside there is no more to tell";
    form.MoveTo(5, 6);
    EXPECT_TRUE(test::WaitFor([&] { return !form.log.empty(); }));
    EXPECT_EQ(form.log, "notify 0; leaves at -35,-24; ");
  });
}

TEST(Crossing, BorderedControl_CountsFromInsideItsBorder) {
  CrossedForm form;
  form.panel.borderStyle = BorderStyle::cFrame;
  test::RunForm(form, false, [&] {
    const Rect inside = form.panel.impl->hwnd->ClientArea();
    ASSERT_GT(inside.left, 0);
    form.MoveTo(5, 5);
    form.log.clear();
    form.MoveTo(50, 45);
    EXPECT_TRUE(test::WaitFor([&] { return !form.log.empty(); }));
    EXPECT_EQ(form.log, "enters at " + std::to_string(10 - inside.left) + "," +
                            std::to_string(15 - inside.top) + "; notify 0; ");
  });
}

}  // namespace
}  // namespace mavro
