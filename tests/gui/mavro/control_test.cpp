#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "Button.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Label.h"
#include "Virtual.h"

namespace mavro {
namespace {

struct PlainForm : Form {
  PlainForm() { SetBounds(0, 0, 400, 300); }
};

// A panel that counts the calls of one setter and writes its events down.
struct Recorder : Panel {
  std::string log;
  bool handle = false;
  Recorder() {
    onMouseDown.Add_H(this, &Recorder::Mouse);
    onMouseUp.Add_H(this, &Recorder::Mouse);
    onDblClick.Add_H(this, &Recorder::DoubleClick);
    onVisible.Add_H(this, &Recorder::Visible);
    onKeyDown.Add_H(this, &Recorder::Key);
    onKeyUp.Add_H(this, &Recorder::Key);
    onChar.Add_H(this, &Recorder::Key);
  }
  void Mouse(MouseArgs& args) {
    log += (args.kind == MouseArgs::cDown ? "down" : "up") + std::to_string(args.button) + "@" +
           std::to_string(args.x) + "," + std::to_string(args.y) + " ";
    args.handled = handle;
  }
  void DoubleClick(NotifyArgs&) { log += "double "; }
  void Visible(NotifyArgs& args) { log += args.value ? "visible " : "hidden "; }
  void Key(KeyArgs& args) {
    log += "key" + std::to_string(args.kind) + ":" + std::to_string(args.key) + " ";
    args.handled = handle;
  }
};

TEST(Container, Insert_SetsParentAndTaggedIdAndRenumbers) {
  Panel panel, a, b, c;
  panel.Add(&a);
  panel.Add(&b);
  panel.Insert(&c, 0);
  EXPECT_EQ(c.id, 0x2000);
  EXPECT_EQ(a.id, 0x2001);
  EXPECT_EQ(b.id, 0x2002);
  EXPECT_EQ(a.parent, &panel);
  panel.Remove(0);
  EXPECT_EQ(a.id, 0x2000);
  EXPECT_EQ(c.parent, nullptr);
}

TEST(Container, Remove_NotAChild_IsIgnored) {
  Panel panel, stranger;
  panel.Remove(&stranger);
  EXPECT_EQ(panel.GetControlCount(), 0);
}

TEST(ContainerDeath, BrokenPreconditions_StopWithTheirExpression) {
  Panel panel, child;
  panel.Add(&child);
  EXPECT_DEATH(panel.Add(&child), "ctrl->parent==NULL");
  Panel other;
  EXPECT_DEATH(panel.Insert(&other, 2), "index >= -1 && index <= GetControlCount\\(\\)");
  EXPECT_DEATH(panel.Remove(1), "index >= 0 && index < GetControlCount\\(\\)");
  EXPECT_DEATH(panel.Remove(nullptr), "comp != NULL");
}

TEST(Container, Add_WithoutWindow_CreatesNothing) {
  Panel panel, child;
  panel.Add(&child);
  EXPECT_EQ(child.impl->hwnd, nullptr);
  EXPECT_EQ(child.state, cNoWindow);
}

TEST(Container, Add_Running_CreatesShowsAndLaysOutAtOnce) {
  PlainForm form;
  Panel child;
  child.dock = Dock::cFill;
  test::RunForm(form, false, [&] {
    form.Add(&child);
    EXPECT_EQ(child.state, cShown);
    EXPECT_TRUE(child.impl->hwnd->IsShown());
    EXPECT_EQ(child.Bounds(), (Rect{0, 0, 400, 300}));
    form.Remove(&child);
    EXPECT_EQ(child.impl->hwnd, nullptr);
  });
}

TEST(Container, Renumbering_LiveChild_GetsTheBareIndexInItsWindow) {
  PlainForm form;
  Panel a, b;
  form.Add(&a);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(a.impl->hwnd->id, 0x2000);
    form.Insert(&b, 0);
    EXPECT_EQ(a.impl->hwnd->id, 1);
    EXPECT_EQ(a.id, 0x2001);
  });
}

// A live child that is renumbered loses its route, and gets it back.
TEST(Container, RenewRoutes_GivesClicksAndColorsBack) {
  PlainForm form;
  Panel first;
  Button button;
  Label label;
  first.SetBounds(200, 0, 50, 50);
  label.SetBounds(0, 100, 80, 18);
  label.backColor = Color::cYellow;
  form.Add(&first);
  form.Add(&button);
  form.Add(&label);
  test::EventLog log;
  log.Listen("click", button.onClick);
  const auto ground = [&] {
    return test::WidgetOf(label)->palette().color(QPalette::Window) == QColor(255, 255, 0);
  };
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(ground());
    form.Remove(&first);
    test::Click(button);
    EXPECT_EQ(log.Take(), "");
    EXPECT_FALSE(ground());
    form.RenewRoutes();
    EXPECT_EQ(button.impl->hwnd->id, 0x2000);
    test::Click(button);
    EXPECT_EQ(log.Take(), "click:0 ");
    EXPECT_TRUE(ground());
    form.Insert(&first, 0);
    form.RenewRoutes();
    test::Click(button);
    EXPECT_EQ(log.Take(), "click:0 ");
    EXPECT_EQ(label.impl->hwnd->id, 0x2002);
  });
}

TEST(Property, EqualValue_MovesNoWindow) {
  PlainForm form;
  Panel child;
  child.SetBounds(10, 10, 50, 50);
  form.Add(&child);
  test::RunForm(form, false, [&] {
    test::WidgetOf(child)->setGeometry(1, 1, 5, 5);
    child.width = 50;
    EXPECT_EQ(test::WidgetOf(child)->width(), 5);
    child.width = 51;
    EXPECT_EQ(test::WidgetOf(child)->geometry(), QRect(1, 1, 51, 50));
  });
}

TEST(Property, BeforeTheWindow_StoresOnlyAndAppliesAtCreation) {
  PlainForm form;
  Panel child;
  child.left = 7;
  child.width = 33;
  child.enabled = false;
  form.Add(&child);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(test::WidgetOf(child)->geometry(), QRect(7, 0, 33, 100));
    EXPECT_FALSE(test::WidgetOf(child)->isEnabled());
  });
}

TEST(Control, NotVisible_InAShownContainer_IsHiddenWithState2) {
  PlainForm form;
  Recorder child;
  child.visible = false;
  form.Add(&child);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(child.state, cHidden);
    EXPECT_FALSE(child.impl->hwnd->IsShown());
    child.visible = true;
    EXPECT_EQ(child.state, cShown);
    EXPECT_TRUE(child.impl->hwnd->IsShown());
    child.visible = false;
  });
  EXPECT_EQ(child.log, "visible hidden ");
}

TEST(Displayable, RemovingTheFirstOfAHundred_TheLastIsStillFound) {
  PlainForm form;
  std::vector<std::unique_ptr<Panel>> panels;
  for (int i = 0; i < 100; ++i) {
    panels.push_back(std::make_unique<Panel>());
    form.Add(panels.back().get());
  }
  test::RunForm(form, false, [&] {
    const long first = panels.front()->impl->hwnd->userData;
    NativeWindow* last = panels.back()->impl->hwnd;
    form.Remove(panels.front().get());
    EXPECT_EQ(last->userData, first);
    EXPECT_EQ(ControlOf(last), panels.back().get());
  });
}

TEST(Displayable, UserDataZero_GoesToDefaultHandling) {
  PlainForm form;
  Recorder child;
  form.Add(&child);
  test::RunForm(form, false, [&] {
    NativeWindow* window = child.impl->hwnd;
    const long data = std::exchange(window->userData, 0);
    window->takeDefault = false;
    SendMessage(window, WM_LBUTTONDOWN, 0, PackPoint(1, 1));
    EXPECT_TRUE(window->takeDefault);
    window->userData = data;
  });
  EXPECT_EQ(child.log, "visible ");
}

TEST(Mouse, Buttons_CarryTheirNumbersAndPlaces) {
  PlainForm form;
  Recorder child;
  child.SetBounds(20, 30, 100, 100);
  form.Add(&child);
  test::RunForm(form, false, [&] {
    child.log.clear();
    test::Click(child, QPoint(5, 6));
    test::Click(child, QPoint(7, 8), Qt::RightButton);
    test::Click(child, QPoint(9, 10), Qt::MiddleButton);
  });
  EXPECT_EQ(child.log, "down1@5,6 up1@5,6 down2@7,8 up2@7,8 down4@9,10 up4@9,10 ");
}

TEST(Mouse, DoubleClick_OnlyTheLeftButtonReportsOne) {
  PlainForm form;
  Recorder child;
  form.Add(&child);
  test::RunForm(form, false, [&] {
    child.log.clear();
    SendMessage(child.impl->hwnd, WM_LBUTTONDBLCLK, 1, PackPoint(1, 2));
    SendMessage(child.impl->hwnd, WM_RBUTTONDBLCLK, 2, PackPoint(3, 4));
    SendMessage(child.impl->hwnd, WM_MBUTTONDBLCLK, 4, PackPoint(5, 6));
  });
  EXPECT_EQ(child.log, "double down2@3,4 down4@5,6 ");
}

TEST(Key, DownCharUp_ReachTheFocusedControlWithTheirCodes) {
  PlainForm form;
  Recorder child;
  form.Add(&child);
  test::RunForm(form, false, [&] {
    test::WidgetOf(child)->setFocusPolicy(Qt::StrongFocus);
    child.Focus();
    child.log.clear();
    test::Key(form, Qt::Key_A);
    test::Key(form, Qt::Key_Delete);
  });
  EXPECT_EQ(child.log, "key1:65 key4:97 key2:65 key1:46 key2:46 ");
}

TEST(Key, Handled_NoCharFollows) {
  PlainForm form;
  Recorder child;
  child.handle = true;
  form.Add(&child);
  test::RunForm(form, false, [&] {
    test::WidgetOf(child)->setFocusPolicy(Qt::StrongFocus);
    child.Focus();
    child.log.clear();
    test::Key(form, Qt::Key_A);
  });
  EXPECT_EQ(child.log, "key1:65 key2:65 ");
}

struct SelfRemover : Panel {
  bool alive = true;
  SelfRemover() { onMouseDown.Add_H(this, &SelfRemover::Down); }
  void Down(MouseArgs&) { delete this; }
};

TEST(Control, DeletesItselfInItsOwnHandler_IsSafe) {
  PlainForm form;
  auto* child = new SelfRemover;
  child->SetBounds(0, 0, 100, 100);
  form.Add(child);
  test::RunForm(form, false, [&] {
    QWindow* window = test::WidgetOf(form)->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    EXPECT_EQ(form.GetControlCount(), 0);
  });
}

struct FormCloser : Form {
  Recorder child;
  FormCloser() {
    SetBounds(0, 0, 200, 200);
    Add(&child);
    child.onMouseDown.Add_H(this, &FormCloser::Down);
  }
  void Down(MouseArgs&) { Close(); }
};

TEST(Control, ClosesItsFormInAHandler_IsSafe) {
  FormCloser form;
  test::RunForm(form, false, [&] { test::Click(form.child, QPoint(3, 3)); });
  EXPECT_EQ(form.state, cNoWindow);
}

TEST(Routing, CommandClasses_ReachTheirReceivers) {
  struct Spy : SysImpl {
    std::string log;
    void Create() override { CreateNative("mavroCont", 0); }
    void OnCommand(int code, Param handle) override {
      log += "command" + std::to_string(code) + (handle ? "h " : " ");
    }
    Param OnNotify(NotifyHeader* header) override {
      log += "notify" + std::to_string(header->code) + " ";
      return 42;
    }
    Param WndProc(unsigned message, Param wParam, Param lParam) override {
      if (message == WM_REFLECT) log += "reflect" + std::to_string(wParam) + " ";
      return SysImpl::WndProc(message, wParam, lParam);
    }
  };
  struct SpyControl : Control {
    SpyControl() : Control(new Spy) {}
    std::string& Log() { return static_cast<Spy*>(impl)->log; }
  };
  PlainForm form;
  Panel panel;
  SpyControl child;
  panel.Add(&child);
  form.Add(&panel);
  test::RunForm(form, false, [&] {
    NativeWindow* window = child.impl->hwnd;
    const Param handle = reinterpret_cast<Param>(window);
    SendMessage(panel.impl->hwnd, WM_COMMAND, 0x2000 | (7 << 16), handle);
    SendMessage(panel.impl->hwnd, WM_COMMAND, 0x1005, handle);
    SendMessage(panel.impl->hwnd, WM_COMMAND, 0x3000 | (9 << 16), handle);
    SendMessage(panel.impl->hwnd, WM_COMMAND, 0x4000, handle);
    NotifyHeader header{window, 0, 11};
    EXPECT_EQ(Notify(header), 42);
    EXPECT_EQ(SendMessage(panel.impl->hwnd, WM_NOTIFY, 0x1000, reinterpret_cast<Param>(&header)),
              0);
  });
  EXPECT_EQ(child.Log(), "command466944h command5 reflect9 notify11 ");
}

TEST(ClientText, BytesComeBackUnchanged) {
  const std::string odd = "caf\xC3\xA9 \xFF\xFE\x80 \xED\xA0\x80 \xF0\x9F\x98\x80 \xC3";
  PlainForm form;
  form.text = odd;
  test::RunForm(form, false, [&] { EXPECT_EQ(form.text.Get(), odd); });
}

}  // namespace
}  // namespace mavro
