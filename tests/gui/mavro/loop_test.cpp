#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Application.h"
#include "Form.h"
#include "GuiDriver.h"
#include "IdleHook.h"
#include "SpawnConsole.h"

namespace mavro {
namespace {

struct LoopForm : Form {
  Panel panel;
  int presses = 0;
  int keys = 0;
  LoopForm() {
    SetBounds(0, 0, 300, 200);
    panel.dock = Dock::cFill;
    panel.onMouseDown.Add_H(this, &LoopForm::Pressed);
    onKeyPreview.Add_H(this, &LoopForm::Previewed);
    Add(&panel);
  }
  void Pressed(MouseArgs&) { ++presses; }
  void Previewed(NotifyArgs&) { ++keys; }
};

int idlePasses = 0;

TEST(MessageLoop, IdleHook_RunsOncePerActivityAndNotForPaint) {
  LoopForm form;
  test::RunForm(form, false, [&] {
    idlePasses = 0;
    theApplication.idleHook = [] { ++idlePasses; };
    theApplication.ProcessMessages();
    EXPECT_EQ(idlePasses, 1);
    theApplication.idleHook = nullptr;
  });
}

// Ends its form as soon as the attached child has printed, without any input having come.
struct AttachedForm : LoopForm {
  SpawnConsole console;
  std::vector<std::string> lines;
  AttachedForm() { onShow.Add_H(this, &AttachedForm::Start); }
  void Start(NotifyArgs&) {
    console.SetOutput(
        [this](const std::string& line) {
          lines.push_back(line);
          Close();
        },
        "");
    console.Execute(std::string(TEST_CHILD) + " print hello", SpawnConsole::Mode::cAttached);
  }
};

TEST(MessageLoop, AttachedChildPrints_TheLoopWakesByItself) {
  {
    AttachedForm form;
    form.Run(false);
    ASSERT_EQ(form.lines.size(), 1u);
    EXPECT_EQ(form.lines[0], "hello\r\n");
  }
  EXPECT_EQ(TheIdleSlot().hook, nullptr);
}

struct PaintCounter : QObject {
  int paints = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints;
    return false;
  }
};

TEST(BlockingRun, WindowsRepaintWhileTheToolRuns) {
  LoopForm form;
  test::RunForm(form, false, [&] {
    PaintCounter counter;
    test::WidgetOf(form.panel)->installEventFilter(&counter);
    SpawnConsole console;
    int paintsBefore = -1;
    console.SetOutput(
        [&](const std::string&) {
          paintsBefore = counter.paints;
          form.panel.Invalidate();
        },
        "");
    console.Execute("bash -c \"echo a; sleep 0.3\"", SpawnConsole::Mode::cBlocking);
    EXPECT_GE(paintsBefore, 0) << "no output came";
    EXPECT_GT(counter.paints, paintsBefore);
  });
}

TEST(MessageLoop, ThreeNestedModalForms_EachEndsItsOwnLoop) {
  LoopForm main;
  std::string order;
  test::RunForm(main, false, [&] {
    LoopForm first;
    test::RunForm(first, true, [&] {
      LoopForm second;
      test::RunForm(second, true, [&] {
        LoopForm third;
        test::RunForm(third, true, [&] { order += "3"; });
        order += "2";
        EXPECT_FALSE(first.impl->hwnd->IsEnabled());
        EXPECT_TRUE(second.impl->hwnd->IsEnabled());
      });
      order += "1";
      EXPECT_TRUE(first.impl->hwnd->IsEnabled());
      EXPECT_FALSE(main.impl->hwnd->IsEnabled());
    });
    order += "0";
    EXPECT_TRUE(main.impl->hwnd->IsEnabled());
  });
  EXPECT_EQ(order, "3210");
}

TEST(ModalForm, BlockedWindow_GetsNoInput) {
  LoopForm main;
  test::RunForm(main, false, [&] {
    LoopForm dialog;
    test::RunForm(dialog, true, [&] {
      test::Click(main.panel, QPoint(5, 5));
      EXPECT_EQ(main.presses, 0);
      test::WidgetOf(main)->windowHandle()->close();
      EXPECT_EQ(main.state, cShown);
    });
    test::Click(main.panel, QPoint(5, 5));
  });
  EXPECT_EQ(main.presses, 1);
}

struct OpensFromClose : LoopForm {
  bool opened = false;
  OpensFromClose() { onClose.Add_H(this, &OpensFromClose::Ask); }
  void Ask(NotifyArgs&) {
    if (opened) return;
    opened = true;
    LoopForm question;
    test::RunForm(question, true, [] {});
  }
};

TEST(Form, OnCloseOpensAModalForm_TheCloseGoesOnAfterIt) {
  OpensFromClose form;
  test::RunForm(form, false, [&] { form.Close(); });
  EXPECT_TRUE(form.opened);
  EXPECT_EQ(form.state, cNoWindow);
}

struct ClosesInCreate : LoopForm {
  ClosesInCreate() { onCreate.Add_H(this, &ClosesInCreate::Created); }
  void Created(NotifyArgs&) { Close(); }
};

TEST(Form, ClosedInItsOwnOnCreate_RunReturns) {
  ClosesInCreate form;
  form.Run(false);
  EXPECT_EQ(form.impl->hwnd, nullptr);
  ClosesInCreate modal;
  modal.Run(true);
  EXPECT_EQ(modal.impl->hwnd, nullptr);
}

}  // namespace
}  // namespace mavro
