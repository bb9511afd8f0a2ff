// Menus that change while they are attached.
#include <gtest/gtest.h>

#include <QMenuBar>

#include "Form.h"
#include "GuiDriver.h"
#include "Menu.h"

namespace mavro {
namespace {

struct Acts : ActionList {
  std::string log;
  Acts() {
    SetTarget(this, &Acts::OnCommand);
    first = Add(1300, "First", cControlKey | 'N');
    second = Add(1301, "Second", cControlKey | 'M');
  }
  void OnCommand(int id) { log += std::to_string(id) + " "; }
  std::string Take() { return std::exchange(log, {}); }
  Action* first;
  Action* second;
};

struct MenuForm : Form {
  Acts acts;
  Menu one, two;
  MenuBar bar;
  MenuForm() {
    SetBounds(0, 0, 300, 200);
    one.SetTitle("One");
    two.SetTitle("Two");
    bar.Add(&one);
    bar.Add(&two);
    menuBar = &bar;
  }
  // Presses the hotkeys of both actions and answers what they did.
  std::string Keys() {
    test::Key(*this, Qt::Key_N, Qt::ControlModifier);
    test::Key(*this, Qt::Key_M, Qt::ControlModifier);
    return acts.Take();
  }
  std::string Command(int id) {
    SendMessage(impl->hwnd, WM_COMMAND, id, 0);
    return acts.Take();
  }
};

TEST(MenuRemove, SameCommandElsewhere_StaysAlive) {
  MenuForm form;
  form.one.AddItem(form.acts.first);
  form.two.AddItem(form.acts.first);
  test::RunForm(form, false, [&] {
    form.one.Remove(0);
    EXPECT_EQ(form.Command(1300), "1300 ");
    EXPECT_EQ(form.Keys(), "1300 ");
    form.two.Remove(0);
    EXPECT_EQ(form.Command(1300), "");
    EXPECT_EQ(form.Keys(), "");
    EXPECT_TRUE(form.bar.accelerators.empty());
  });
}

TEST(MenuRemove, Submenu_TakesItsCommandsAlong) {
  MenuForm form;
  Menu* more = form.one.AddMenu("More");
  more->AddItem(form.acts.first);
  more->AddMenu("Still more")->AddItem(form.acts.second);
  form.two.AddItem(form.acts.second);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.bar.actions.size(), 3u);
    form.one.Remove(0);
    EXPECT_EQ(form.bar.actions.size(), 1u);
    EXPECT_EQ(form.Keys(), "1301 ");
  });
}

TEST(MenuItems, AddedAfterAttaching_WorkByClickAndHotkey) {
  MenuForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Keys(), "");
    form.one.AddItem(form.acts.first);
    EXPECT_EQ(form.Keys(), "1300 ");
    Menu* more = form.two.AddMenu("More");
    more->AddItem(form.acts.second);
    EXPECT_EQ(form.Keys(), "1300 1301 ");
    more->EnableAction(form.acts.second, false);
    EXPECT_EQ(form.Keys(), "1300 ");
    form.one.Clear();
    EXPECT_EQ(form.Keys(), "");
    ActionList further;
    further.Add(1400, "Further", 0);
    form.one.Fill(form.acts);
    more->EnableAction(form.acts.second, true);
    EXPECT_EQ(form.Keys(), "1300 1301 ");
  });
  EXPECT_TRUE(form.bar.actions.empty());
}

TEST(MenuItems, MenuAddedToAnAttachedBar_IsShownAndWorks) {
  MenuForm form;
  Menu three;
  three.SetTitle("Three");
  three.AddItem(form.acts.first);
  test::RunForm(form, false, [&] {
    form.bar.Add(&three);
    EXPECT_EQ(test::WidgetOf(form)->findChild<QMenuBar*>()->actions().size(), 3);
    EXPECT_EQ(form.Keys(), "1300 ");
  });
}

TEST(MenuItems, AddedToAnOpenedPopup_ReachTheirHandler) {
  MenuForm form;
  ContextMenu popup;
  Panel panel;
  panel.menu = &popup;
  form.Add(&panel);
  popup.root.AddItem(form.acts.first);
  popup.root.Insert(&popup);
  test::RunForm(form, false, [&] {
    popup.root.AddItem(form.acts.second);
    SendMessage(panel.impl->hwnd, WM_COMMAND, 1301, 0);
    EXPECT_EQ(form.acts.Take(), "1301 ");
  });
}

}  // namespace
}  // namespace mavro
