#include "Form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <QMenu>
#include <QMenuBar>
#include <cstdio>
#include <stdexcept>

#include "Application.h"
#include "FormImpl.h"
#include "GuiDriver.h"
#include "Menu.h"
#include "QtEnding.h"
#include "ScriptedDialogs.h"

namespace mavro {
namespace {

// A form that writes down what happens to it.
struct RecordingForm : Form {
  std::string log;
  bool refuse = false;

  RecordingForm() {
    SetBounds(0, 0, 300, 200);
    onCreate.Add_H(this, &RecordingForm::Created);
    onShow.Add_H(this, &RecordingForm::Shown);
    onClose.Add_H(this, &RecordingForm::Closing);
    onDestroy.Add_H(this, &RecordingForm::Destroyed);
  }
  void Created(NotifyArgs&) { log += "create "; }
  void Shown(NotifyArgs&) { log += "show "; }
  void Closing(NotifyArgs& args) {
    log += "close ";
    if (refuse) args.value = 0;
  }
  void Destroyed(NotifyArgs&) { log += "destroy "; }
};

TEST(Form, Maximize_FillsTheScreenAndKnowsTheWayBack) {
  Form form;
  form.SetBounds(10, 20, 300, 200);
  form.Maximize(true);
  EXPECT_TRUE(form.IsMaximized());
  EXPECT_EQ(form.NormalBounds().width, 300) << "no window yet";
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(test::WaitFor([&] { return form.Bounds().width > 300; }));
    EXPECT_EQ(form.NormalBounds().left, 10);
    EXPECT_EQ(form.NormalBounds().top, 20);
    EXPECT_EQ(form.NormalBounds().height, 200);
    form.Maximize(false);
    EXPECT_TRUE(test::WaitFor([&] { return form.Bounds().width == 300; }));
    EXPECT_FALSE(form.IsMaximized());
  });
}

int keptForEnd = 0;

TEST(Application, KeepOnEnd_IsCalledWhenTheSessionIsAboutToEnd) {
  theApplication.KeepOnEnd([] { ++keptForEnd; });
  KeepForEnd();
  EXPECT_EQ(keptForEnd, 1);
  theApplication.KeepOnEnd(nullptr);
  KeepForEnd();
  EXPECT_EQ(keptForEnd, 1);
  EXPECT_FALSE(EndWithSession())
      << "the toolkit closes the windows of a program that keeps nothing";
}

TEST(ApplicationDeathTest, KeepOnEnd_EndOfTheSession_EndsWithoutAQuestion) {
  EXPECT_EXIT(
      {
        theApplication.KeepOnEnd([] { std::fputs("kept", stderr); });
        EndWithSession();
      },
      testing::ExitedWithCode(0), "kept");
}

TEST(ApplicationDeathTest, KeepOnEnd_Signals_KeepAndEndTheProgram) {
  for (const int number : {SIGTERM, SIGHUP})
    EXPECT_EXIT(
        {
          signal(number, SIG_DFL);
          theApplication.KeepOnEnd([] { std::fputs("kept", stderr); });
          raise(number);
          test::WaitFor([] { return false; });
        },
        testing::KilledBySignal(number), "kept")
        << number;
}

TEST(ApplicationDeathTest, KeepOnEnd_LoopThatDoesNotComeRound_IsNotWaitedFor) {
  EXPECT_EXIT(
      {
        signal(SIGTERM, SIG_DFL);
        theApplication.KeepOnEnd([] { std::fputs("kept", stderr); });
        raise(SIGTERM);
        raise(SIGTERM);  // as the alarm does in the end
      },
      testing::KilledBySignal(SIGTERM), testing::Not(testing::HasSubstr("kept")));
}

TEST(Form, Run_FiresItsEventsInOrder) {
  RecordingForm form;
  test::RunForm(form, false, [&] { EXPECT_EQ(form.log, "create show "); });
  EXPECT_EQ(form.log, "create show close destroy ");
  EXPECT_EQ(form.state, cNoWindow);
  EXPECT_EQ(formCount, 0);
}

TEST(Form, Close_Refused_StaysWithItsWindows) {
  RecordingForm form;
  form.refuse = true;
  bool shown = false;
  test::RunForm(form, false, [&] {
    form.Close();
    shown = form.impl->hwnd && form.impl->hwnd->IsShown() && form.state == cShown;
  });
  EXPECT_TRUE(shown);
}

TEST(Form, Run_AgainAfterClose_MakesTheWindowsAgain) {
  RecordingForm form;
  test::RunForm(form, false, [] {});
  form.log.clear();
  test::RunForm(form, false, [&] { EXPECT_EQ(form.log, "create show "); });
  EXPECT_EQ(form.log, "create show close destroy ");
}

TEST(Form, Modal_DisablesTheOthersAndReturnsItsResult) {
  RecordingForm main;
  int result = 0;
  bool mainEnabledInside = true;
  bool mainEnabledAfter = false;
  test::RunForm(main, false, [&] {
    RecordingForm dialog;
    result = test::RunForm(dialog, true, [&] {
      mainEnabledInside = main.impl->hwnd->IsEnabled();
      dialog.impl->OnMenuCommand(1, Form::cOk);
    });
    mainEnabledAfter = main.impl->hwnd->IsEnabled();
  });
  EXPECT_EQ(result, Form::cOk);
  EXPECT_FALSE(mainEnabledInside);
  EXPECT_TRUE(mainEnabledAfter);
}

TEST(Form, SecondNonModalForm_ReturnsAtOnceAndItsCloseDoesNotEndTheProgram) {
  RecordingForm main;
  bool mainStays = false;
  test::RunForm(main, false, [&] {
    RecordingForm second;
    second.Run(false);
    EXPECT_EQ(formCount, 2);
    second.Close();
    EXPECT_EQ(formCount, 1);
    QTest::qWait(1);
    mainStays = main.state == cShown;
  });
  EXPECT_TRUE(mainStays);
}

TEST(Form, Close_DestroysOwnedFormsFirst) {
  RecordingForm main;
  RecordingForm* owned = nullptr;
  test::RunForm(main, false, [&] {
    owned = new RecordingForm;
    owned->Run(false);
    EXPECT_EQ(owned->owner, &main);
  });
  EXPECT_EQ(owned->impl->hwnd, nullptr);
  EXPECT_EQ(owned->owner, nullptr);
  delete owned;
}

TEST(Form, Escape_WithoutACancelButton_OnlySetsTheResult) {
  RecordingForm main;
  test::RunForm(main, false, [&] {
    RecordingForm dialog;
    test::RunForm(dialog, true, [&] {
      test::Key(dialog, Qt::Key_Escape);
      EXPECT_EQ(dialog.result, Form::cCancel);
      EXPECT_EQ(dialog.state, cShown);
    });
  });
}

struct ThrowingForm : RecordingForm {
  ThrowingForm() { onActivate.Add_H(this, &ThrowingForm::Throw); }
  void Throw(NotifyArgs&) {
    if (log.find("thrown") != std::string::npos) return;
    log += "thrown ";
    throw std::runtime_error("out of ideas");
  }
};

TEST(Form, HandlerThrows_OneMessageBoxWithTheText) {
  test::ScriptedDialogs dialogs;
  ThrowingForm form;
  test::RunForm(form, false, [] {});
  ASSERT_EQ(dialogs.texts.size(), 1u);
  EXPECT_NE(dialogs.texts[0].find("out of ideas"), std::string::npos);
}

struct Acts : ActionList {
  std::string log;
  Acts() {
    SetTarget(this, &Acts::OnCommand);
    Add(1300, "&New", cControlKey | 'N');
    Add(1301, "&Stop", 0x74);
  }
  void OnCommand(int id) { log += std::to_string(id) + " "; }
};

struct MenuForm : RecordingForm {
  Acts acts;
  Menu fileMenu;
  MenuBar bar;
  int previewed = 0;
  bool swallowPreview = false;
  MenuForm() {
    fileMenu.SetTitle("&File");
    fileMenu.Fill(acts);
    bar.Add(&fileMenu);
    menuBar = &bar;
    onKeyPreview.Add_H(this, &MenuForm::Preview);
  }
  void Preview(NotifyArgs& args) {
    previewed = args.value;
    if (swallowPreview) args.value = 0;
  }
};

TEST(Accelerator, KeyOfAMenuRow_RunsItsCommandOnce) {
  MenuForm form;
  test::RunForm(form, false, [&] {
    test::Key(form, Qt::Key_N, Qt::ControlModifier);
    test::Key(form, Qt::Key_F5);
  });
  EXPECT_EQ(form.acts.log, "1300 1301 ");
}

TEST(Accelerator, GrayItem_DoesNotAct) {
  MenuForm form;
  test::RunForm(form, false, [&] {
    form.fileMenu.Enable(false);
    test::Key(form, Qt::Key_N, Qt::ControlModifier);
    form.fileMenu.Enable(true);
    test::Key(form, Qt::Key_F5);
  });
  EXPECT_EQ(form.acts.log, "1301 ");
}

TEST(Accelerator, NoTableWithoutHotkeys) {
  MenuForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.bar.accelerators.size(), 2u);
    EXPECT_EQ(form.bar.accelerators[0].flags, cControlKey);
    EXPECT_EQ(form.bar.accelerators[0].key, 'N');
    EXPECT_EQ(form.bar.accelerators[0].command, 1300);
  });
  EXPECT_TRUE(form.bar.accelerators.empty());
  EXPECT_TRUE(form.bar.actions.empty());
}

TEST(KeyPreview, GetsKeysThatAreNoAccelerators) {
  MenuForm form;
  test::RunForm(form, false, [&] { test::Key(form, Qt::Key_Q); });
  EXPECT_EQ(form.previewed, 'Q');
}

TEST(Menu, MenuClick_ReachesTheHandler) {
  MenuForm form;
  test::RunForm(form, false, [&] { SendMessage(form.impl->hwnd, WM_COMMAND, 1300, 0); });
  EXPECT_EQ(form.acts.log, "1300 ");
}

// The texts of the native menu bar.
QAction* ShownItem(const MenuForm& form, int row) {
  const auto* bar = test::WidgetOf(form)->findChild<QMenuBar*>();
  return bar->actions().at(0)->menu()->actions().at(row);
}

TEST(Menu, CheckedItem_ShowsItsMark) {
  MenuForm form;
  form.fileMenu.GetMenu(1)->Check(true);
  test::RunForm(form, false, [&] {
    EXPECT_FALSE(ShownItem(form, 0)->isCheckable());
    EXPECT_TRUE(ShownItem(form, 1)->isChecked());
    form.fileMenu.GetMenu(1)->Check(false);
    EXPECT_FALSE(ShownItem(form, 1)->isChecked());
    EXPECT_FALSE(form.fileMenu.GetMenu(1)->checked);
  });
}

TEST(Menu, CheckedItem_Clicked_KeepsTheMarkThatTheProgramGaveIt) {
  MenuForm form;
  form.fileMenu.GetMenu(1)->Check(true);
  test::RunForm(form, false, [&] {
    ShownItem(form, 1)->trigger();
    EXPECT_TRUE(ShownItem(form, 1)->isChecked());
  });
  EXPECT_EQ(form.acts.log, "1301 ");
}

TEST(Menu, UnknownCommand_IsDropped) {
  MenuForm form;
  test::RunForm(form, false, [&] { SendMessage(form.impl->hwnd, WM_COMMAND, 999, 0); });
  EXPECT_EQ(form.acts.log, "");
}

TEST(Menu, Fill_SeparatorTextDash_IsASeparatorAndReachesNoActions) {
  Acts acts;
  acts.Add(1302, "-");
  Menu menu;
  menu.Fill(acts);
  EXPECT_TRUE(menu.GetMenu(2)->IsSeparator());
  struct AnyMenu : ActionMenu {
    void Attach(Control*) override {}
  } reached;
  menu.Insert(&reached);
  EXPECT_EQ(reached.actions.size(), 2u);
}

TEST(Menu, Fill_SubmenuIsFollowedByASeparator) {
  ActionList list;
  list.AddSubmenu("More");
  list.Add(900, "In");
  list.EndSubmenu();
  list.Add(901, "After");
  Menu menu;
  menu.Fill(list);
  ASSERT_EQ(menu.GetMenuCount(), 3);
  auto* more = static_cast<Menu*>(menu.GetMenu(0));
  EXPECT_TRUE(more->isSubmenu);
  EXPECT_EQ(more->title, "More");
  EXPECT_EQ(more->GetMenuCount(), 1);
  EXPECT_TRUE(menu.GetMenu(1)->IsSeparator());
}

TEST(Menu, Fill_NestedTenDeep_TheTenthFallsIntoTheLevelAbove) {
  ActionList list;
  for (int i = 0; i < 10; ++i) list.AddSubmenu("m" + std::to_string(i));
  list.Add(900, "Deepest");
  Menu menu;
  menu.Fill(list);
  Menu* at = &menu;
  int depth = 0;
  while (at->GetMenuCount() > 0 && at->GetMenu(0)->isSubmenu) {
    at = static_cast<Menu*>(at->GetMenu(0));
    ++depth;
  }
  EXPECT_EQ(depth, 9);
  EXPECT_EQ(at->GetMenu(0)->action->text, "Deepest");
}

TEST(Menu, EndRowWithoutSubmenu_StopsTheFill) {
  ActionList list;
  list.Add(900, "A");
  list.EndSubmenu();
  list.Add(901, "B");
  Menu menu;
  menu.Fill(list);
  EXPECT_EQ(menu.GetMenuCount(), 1);
}

TEST(AppDir, CutsAtTheLastSlashAndTurnsBackslashes) {
  EXPECT_EQ(AppDirOf("/opt/z/bin/zendry", "/home"), "/opt/z/bin/");
  EXPECT_EQ(AppDirOf("zendry", "/home"), "zendry");
  EXPECT_EQ(AppDirOf("/zendry", "/home"), "/zendry");
  EXPECT_EQ(AppDirOf("./bin/zendry", "/home/u"), "/home/u/./bin/");
}

}  // namespace
}  // namespace mavro
