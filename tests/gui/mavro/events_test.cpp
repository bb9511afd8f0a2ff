// Every input event of every class is sent once, to the window that it belongs to.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMenu>
#include <QTimer>
#include <array>
#include <map>
#include <memory>

#include "Button.h"
#include "ButtonGroup.h"
#include "ChildCtrl.h"
#include "CustomCtrl.h"
#include "DialCtrl.h"
#include "Edit.h"
#include "Form.h"
#include "GroupBox.h"
#include "GuiDriver.h"
#include "IconView.h"
#include "Image.h"
#include "Label.h"
#include "LayoutForm.h"
#include "ListBox.h"
#include "ListView.h"
#include "Menu.h"
#include "PlotXY.h"
#include "ProgressBar.h"
#include "RichView.h"
#include "Scroller.h"
#include "SpinEdit.h"
#include "StatusBar.h"
#include "TabCtrl.h"
#include "ToolBar.h"
#include "TrackBar.h"
#include "TreeView.h"
#include "Wheel.h"

namespace mavro {
namespace {

// Counts every input event of one control, by name, and remembers where the last one was.
struct Ear : object {
  explicit Ear(Control& control) {
    control.onMouseDown.Add_H(this, &Ear::Mouse);
    control.onMouseUp.Add_H(this, &Ear::Mouse);
    control.onMouseMove.Add_H(this, &Ear::Mouse);
    control.onMouseWeel.Add_H(this, &Ear::Mouse);
    control.onContextMenu.Add_H(this, &Ear::Mouse);
    control.onDblClick.Add_H(this, &Ear::Double);
    control.onKeyDown.Add_H(this, &Ear::Key);
    control.onKeyUp.Add_H(this, &Ear::Key);
    control.onChar.Add_H(this, &Ear::Key);
    control.onGotFocus.Add_H(this, &Ear::Got);
    control.onLostFocus.Add_H(this, &Ear::Lost);
  }
  void Mouse(MouseArgs& args) {
    static const std::map<int, std::string> names = {{MouseArgs::cDown, "down"},
                                                     {MouseArgs::cUp, "up"},
                                                     {MouseArgs::cMove, "move"},
                                                     {MouseArgs::cWheel, "wheel"},
                                                     {MouseArgs::cContext, "context"}};
    ++counts[names.at(args.kind)];
    last = {args.x, args.y};
    args.handled = uses;
  }
  void Double(NotifyArgs&) { ++counts["double"]; }
  void Key(KeyArgs& args) {
    ++counts[args.kind == KeyArgs::cDown ? "key" : args.kind == KeyArgs::cUp ? "release" : "char"];
  }
  void Got(NotifyArgs&) { ++counts["got"]; }
  void Lost(NotifyArgs&) { ++counts["lost"]; }

  // The events since the last call, as "NAMExCOUNT" in the order of names.
  std::string Take() {
    std::string all;
    for (const auto& [name, count] : std::exchange(counts, {}))
      all += (all.empty() ? "" : " ") + name + "x" + std::to_string(count);
    return all;
  }

  std::map<std::string, int> counts;
  QPoint last;
  bool uses = false;  // marks mouse events as handled
};

// Closes each popup by Escape as soon as it is open, and counts them.
struct PopupCloser {
  PopupCloser() {
    QObject::connect(&timer, &QTimer::timeout, [this] {
      QWidget* shown = QApplication::activePopupWidget();
      if (!shown) return;
      ++opened;
      QTest::keyClick(shown, Qt::Key_Escape);
    });
    timer.start(0);
  }
  QTimer timer;
  int opened = 0;
};

// Presses and releases the right button; what opens on the press has gone before the release.
void RightClick(const Control& control, QPoint at) {
  QWidget* widget = test::WidgetOf(control);
  QWindow* window = widget->window()->windowHandle();
  const QPoint place = widget->mapTo(widget->window(), at);
  QTest::mousePress(window, Qt::RightButton, Qt::NoModifier, place);
  QTest::mouseRelease(window, Qt::RightButton, Qt::NoModifier, place);
}

using Maker = std::function<std::unique_ptr<Control>()>;

struct Kind {
  const char* name;
  Maker make;
  QPoint at;  // of the window itself, not of a child; null for the middle
};

template <class T>
Maker Plain() {
  return [] { return std::make_unique<T>(); };
}

template <class T>
Maker WithItems() {
  return [] {
    auto made = std::make_unique<T>();
    for (const char* item : {"one", "two", "three"}) made->items.Add(item);
    return made;
  };
}

struct ShownTabs : TabCtrl {
  TabPage page;
  ShownTabs() {
    page.text = "A page";
    Add(&page);
  }
};

struct ShownBar : ToolBar {
  ShownBar() { AddButton(1, "a button"); }
};

struct ShownList : ListView {
  ShownList() {
    colCount = 2;
    rowCount = 3;
  }
};

struct ShownCanvas : CustomCtrl {
  ShownCanvas() { wantsKeys = true; }
};

struct ShownBox : PaintBox {
  ShownBox() { wantsKeys = true; }
};

struct TypedCombo : ComboBox {
  TypedCombo() { items.Add("one"); }
};

const Kind cKinds[] = {
    {"Label", Plain<Label>(), {}},
    {"Edit", Plain<Edit>(), {}},
    {"Memo", Plain<Memo>(), {}},
    {"Button", Plain<Button>(), {}},
    {"CheckBox", Plain<CheckBox>(), {}},
    {"ComboBox", Plain<TypedCombo>(), {}},
    {"ListBox", WithItems<ListBox>(), {}},
    {"ListView", Plain<ShownList>(), {20, 40}},
    {"TreeView", Plain<TreeView>(), {}},
    {"IconView", Plain<IconView>(), {}},
    {"GroupBox", Plain<GroupBox>(), {}},
    {"RadioGroup", WithItems<RadioGroup>(), {}},
    {"RadioGroupsItem", WithItems<RadioGroup>(), {20, 30}},
    {"CheckGroup", WithItems<CheckGroup>(), {}},
    {"SpinEdit", Plain<SpinEdit>(), {}},
    {"TrackBar", Plain<TrackBar>(), {}},
    {"ProgressBar", Plain<ProgressBar>(), {}},
    {"RichView", Plain<RichView>(), {}},
    {"StatusBar", Plain<StatusBar>(), {}},
    {"Panel", Plain<Panel>(), {}},
    {"Scroller", Plain<Scroller>(), {}},
    {"TabCtrl", Plain<ShownTabs>(), {15, 8}},
    {"ToolBar", Plain<ShownBar>(), {}},
    {"ToolBarsButton", Plain<ShownBar>(), {12, 12}},
    {"Image", Plain<Image>(), {}},
    {"DialCtrl", Plain<DialCtrl>(), {}},
    {"CustomCtrl", Plain<ShownCanvas>(), {}},
    {"PaintBox", Plain<ShownBox>(), {}},
    {"PlotXY", Plain<PlotXY>(), {}},
    {"ChildCtrl", Plain<ChildCtrl>(), {}},
    {"LayoutForm", Plain<LayoutForm>(), {}},
};

void PrintTo(const Kind& kind, std::ostream* out) {
  *out << kind.name;
}

// A form with a menu bar, so that its client area is not its window's, and a control in a panel.
struct EveryClass : testing::TestWithParam<Kind> {
  EveryClass() : control(GetParam().make()) {
    form.SetBounds(0, 0, 400, 300);
    fileMenu.SetTitle("&File");
    bar.Add(&fileMenu);
    form.menuBar = &bar;
    other.SetBounds(0, 200, 80, 24);
    panel.SetBounds(0, 0, 400, 200);
    control->SetBounds(10, 40, 200, 100);
    panel.Add(control.get());
    form.Add(&panel);
    form.Add(&other);
    ears = {std::make_unique<Ear>(*control), std::make_unique<Ear>(panel),
            std::make_unique<Ear>(form)};
  }
  QPoint Place() {
    return GetParam().at.isNull() ? test::WidgetOf(*control)->rect().center() : GetParam().at;
  }
  // Puts the mouse where it will be clicked, and forgets the events of that.
  void Forget() {
    QWidget* widget = test::WidgetOf(*control);
    QTest::mouseMove(widget->window()->windowHandle(), widget->mapTo(widget->window(), Place()));
    QCoreApplication::processEvents();
    for (const auto& ear : ears) ear->counts.clear();
  }
  // The events of the control, its panel and its form.
  std::string Received() {
    return ears[0]->Take() + " | " + ears[1]->Take() + " | " + ears[2]->Take();
  }

  Menu fileMenu;
  MenuBar bar;
  Form form;
  Panel panel;
  Edit other;
  std::unique_ptr<Control> control;
  std::array<std::unique_ptr<Ear>, 3> ears;
};

INSTANTIATE_TEST_SUITE_P(Classes, EveryClass, testing::ValuesIn(cKinds),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(EveryClass, MouseButtons_AreSentOnce_ToTheControlAlone) {
  test::RunForm(form, false, [&] {
    other.Focus();
    Forget();
    test::Click(*control, Place(), Qt::MiddleButton);
    ears[0]->counts.erase("got");
    EXPECT_EQ(Received(), "downx1 upx1 |  | ");
  });
}

TEST_P(EveryClass, MouseMove_IsSentOnce_ToTheControlAlone) {
  test::RunForm(form, false, [&] {
    QWidget* widget = test::WidgetOf(*control);
    QWindow* window = widget->window()->windowHandle();
    Forget();
    QTest::mouseMove(window, widget->mapTo(widget->window(), Place() + QPoint(1, 1)));
    QCoreApplication::processEvents();
    EXPECT_EQ(Received(), "movex1 |  | ");
  });
}

TEST_P(EveryClass, DoubleClick_IsSentOnce_ToTheControlAlone) {
  test::RunForm(form, false, [&] {
    other.Focus();
    Forget();
    ears[0]->uses = true;
    QWidget* widget = test::WidgetOf(*control);
    QTest::mouseDClick(widget->window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                       widget->mapTo(widget->window(), Place()));
    ears[0]->counts.erase("got");
    EXPECT_EQ(Received(), "doublex1 downx1 upx2 |  | ");
  });
}

TEST_P(EveryClass, UsedWheel_IsSentOnce_AndGoesNoFurther) {
  ears[0]->uses = true;
  test::RunForm(form, false, [&] {
    Forget();
    test::TurnWheel(*control, Place(), -120);
    EXPECT_EQ(Received(), "wheelx1 |  | ");
  });
}

TEST_P(EveryClass, UnusedWheel_IsSentOnceToEachThatItReaches) {
  test::RunForm(form, false, [&] {
    Forget();
    test::TurnWheel(*control, Place(), -120);
    const std::string told = Received();
    EXPECT_TRUE(told == "wheelx1 | wheelx1 | wheelx1" || told == "wheelx1 |  | ") << told;
  });
}

TEST_P(EveryClass, UsedContextMenu_IsSentOnce_AndGoesNoFurther) {
  ears[0]->uses = true;
  test::RunForm(form, false, [&] {
    Forget();
    test::Click(*control, Place(), Qt::RightButton);
    ears[0]->counts.erase("got");
    EXPECT_EQ(Received(), "contextx1 downx1 upx1 |  | ");
  });
}

TEST_P(EveryClass, Keys_AreSentOnce_ToTheControlAlone) {
  test::RunForm(form, false, [&] {
    control->Focus();
    if (!control->IsFocused()) return;
    for (const auto key : {Qt::Key_A, Qt::Key_F7}) {
      Forget();
      test::Key(form, key);
      EXPECT_EQ(Received(),
                key == Qt::Key_A ? "charx1 keyx1 releasex1 |  | " : "keyx1 releasex1 |  | ");
    }
  });
}

TEST_P(EveryClass, Focus_IsSentOnceComingAndOnceGoing_ToTheControlAlone) {
  test::RunForm(form, false, [&] {
    other.Focus();
    Forget();
    control->Focus();
    if (!control->IsFocused()) return;
    EXPECT_EQ(Received(), "gotx1 |  | ");
    other.Focus();
    EXPECT_EQ(Received(), "lostx1 |  | ");
  });
}

TEST_P(EveryClass, PopupOfItsMenu_OpensOnce) {
  ContextMenu popup;
  ActionList acts;
  acts.Add(1500, "Act");
  popup.root.Fill(acts);
  control->menu = &popup;
  panel.menu = &popup;
  test::RunForm(form, false, [&] {
    PopupCloser closer;
    RightClick(*control, Place());
    EXPECT_EQ(closer.opened, 1);
  });
}

struct FormEvents : testing::Test {
  FormEvents() : ear(form) {
    form.SetBounds(0, 0, 400, 300);
    fileMenu.SetTitle("&File");
    bar.Add(&fileMenu);
    form.menuBar = &bar;
  }
  void Run(const std::function<void()>& script) { test::RunForm(form, false, script); }
  // A place of the client area, in coordinates of the form's window.
  QPoint At(int x, int y) {
    return form.impl->hwnd->ClientWidget()->mapTo(test::WidgetOf(form), QPoint(x, y));
  }
  void MoveTo(QPoint place) {
    QTest::mouseMove(Window(), place);
    QCoreApplication::processEvents();
    ear.counts.clear();
  }
  QWindow* Window() { return test::WidgetOf(form)->windowHandle(); }

  Menu fileMenu;
  MenuBar bar;
  Form form;
  Ear ear;
};

TEST_F(FormEvents, Mouse_OnceAndAtItsPlaceInTheClientArea) {
  Run([&] {
    MoveTo(At(30, 40));
    QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier, At(30, 40));
    EXPECT_EQ(ear.Take(), "downx1 upx1");
    EXPECT_EQ(ear.last, QPoint(30, 40));
    MoveTo(At(90, 40));
    QTest::mouseDClick(Window(), Qt::LeftButton, Qt::NoModifier, At(90, 40));
    EXPECT_EQ(ear.Take(), "doublex1 downx1 upx2");
    QTest::mouseMove(Window(), At(31, 44));
    QCoreApplication::processEvents();
    EXPECT_EQ(ear.Take(), "movex1");
    EXPECT_EQ(ear.last, QPoint(31, 44));
  });
}

TEST_F(FormEvents, WheelAndContextMenu_OnceAndAtTheirPlace) {
  Run([&] {
    ear.counts.clear();
    test::TurnWheel(form, At(50, 60), 120);
    EXPECT_EQ(ear.Take(), "wheelx1");
    EXPECT_EQ(ear.last, QPoint(50, 60));
    MoveTo(At(30, 40));
    QTest::mouseClick(Window(), Qt::RightButton, Qt::NoModifier, At(30, 40));
    EXPECT_EQ(ear.Take(), "contextx1 downx1 upx1");
  });
}

TEST_F(FormEvents, Keys_OnceWhereNothingHasTheFocus) {
  Run([&] {
    ear.counts.clear();
    test::Key(form, Qt::Key_A);
    EXPECT_EQ(ear.Take(), "charx1 keyx1 releasex1");
  });
}

TEST_F(FormEvents, WheelThatGoesUp_IsGivenInEachWindowsOwnPlaces) {
  Panel panel;
  Label label;
  panel.SetBounds(100, 50, 200, 150);
  label.SetBounds(20, 30, 80, 18);
  panel.Add(&label);
  form.Add(&panel);
  Ear onLabel(label), onPanel(panel);
  Run([&] {
    test::TurnWheel(label, QPoint(5, 6), 120);
    EXPECT_EQ(onLabel.last, QPoint(5, 6));
    EXPECT_EQ(onPanel.last, QPoint(25, 36));
    EXPECT_EQ(ear.last, QPoint(125, 86));
    onPanel.uses = true;
    ear.counts.clear();
    test::TurnWheel(label, QPoint(5, 6), 120);
    EXPECT_EQ(ear.Take(), "") << "the panel has used it";
  });
}

TEST_F(FormEvents, ContextMenuGoesUp_ToTheFirstWithAMenu) {
  Panel panel;
  Label label;
  ContextMenu popup, ofForm;
  ActionList acts;
  acts.Add(1500, "Act");
  popup.root.Fill(acts);
  ofForm.root.Fill(acts);
  panel.SetBounds(0, 0, 200, 150);
  panel.menu = &popup;
  form.menu = &ofForm;
  panel.Add(&label);
  form.Add(&panel);
  Ear onLabel(label);
  Run([&] {
    PopupCloser closer;
    ear.counts.clear();
    RightClick(label, QPoint(5, 6));
    EXPECT_EQ(closer.opened, 1);
    EXPECT_EQ(onLabel.counts["context"], 1);
    EXPECT_EQ(ear.counts["context"], 0);
    EXPECT_EQ(ofForm.attached, nullptr);
    EXPECT_EQ(popup.attached, &panel);
  });
}

// A disabled control takes no input: its parent gets it, as if the control were not there.
TEST_F(FormEvents, DisabledControl_GetsNothing) {
  Panel panel;
  Button button;
  panel.SetBounds(0, 0, 200, 150);
  button.enabled = false;
  panel.Add(&button);
  form.Add(&panel);
  Ear onButton(button), onPanel(panel);
  Run([&] {
    onButton.counts.clear();
    onPanel.counts.clear();
    test::Click(button, QPoint(5, 6));
    EXPECT_EQ(onButton.Take(), "");
    EXPECT_EQ(onPanel.counts["down"], 1);
    EXPECT_EQ(onPanel.counts["up"], 1);
    EXPECT_EQ(onPanel.last, QPoint(5, 6));
  });
}

// A handler that uses an event up while other messages of the window come and go.
struct Busy : object {
  explicit Busy(Panel& its) : panel(its) { panel.onContextMenu.Add_H(this, &Busy::Menu); }
  void Menu(MouseArgs& args) {
    ++menus;
    SendMessage(panel.impl->hwnd, WM_KILLFOCUS, 0, 0);
    args.handled = true;
  }
  Panel& panel;
  int menus = 0;
};

TEST_F(FormEvents, WhatIsUsed_StaysUsedWhateverComesMeanwhile) {
  Panel panel;
  panel.SetBounds(0, 0, 200, 150);
  form.Add(&panel);
  Busy busy(panel);
  Run([&] {
    ear.counts.clear();
    test::Click(panel, QPoint(5, 6), Qt::RightButton);
    EXPECT_EQ(busy.menus, 1);
    EXPECT_EQ(ear.Take(), "");
  });
}

}  // namespace
}  // namespace mavro
