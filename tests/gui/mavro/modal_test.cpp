// Modal forms: above their owner, with the keyboard, and open for as long as they say.
#include <gtest/gtest.h>

#include <memory>

#include "Application.h"
#include "Button.h"
#include "DataLink.h"
#include "Edit.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Menu.h"

namespace mavro {
namespace {

struct TextSource : DataSource {
  std::string value = "old";
  void Get(std::string& out) override { out = value; }
  void Set(const std::string& in) override { value = in; }
};

struct AskForm : Form {
  Edit edit;
  Button ok, cancel;
  AskForm() {
    SetBounds(0, 0, 300, 200);
    ok.kind = Button::cOk;
    ok.SetLocation(0, 50);
    cancel.kind = Button::cCancel;
    cancel.SetLocation(100, 50);
    Add(&edit);
    Add(&ok);
    Add(&cancel);
  }
};

QWindow* WindowOf(const Form& form) {
  return test::WidgetOf(form)->windowHandle();
}

TEST(ModalOwner, ConstructedBeforeAnyFormRuns_IsSettledWhenItRuns) {
  AskForm dialog;  // a member of a program's own object, say
  Form main;
  EXPECT_EQ(dialog.owner, nullptr);
  test::RunForm(main, false, [&] {
    test::RunForm(dialog, true, [&] {
      EXPECT_EQ(dialog.owner, &main);
      EXPECT_EQ(WindowOf(dialog)->transientParent(), WindowOf(main));
    });
    EXPECT_EQ(dialog.impl->hwnd, nullptr);
  });
}

TEST(ModalOwner, FromAModalForm_StandsAboveThatOne) {
  AskForm inner;
  Form main;
  test::RunForm(main, false, [&] {
    AskForm outer;
    test::RunForm(outer, true, [&] {
      test::RunForm(inner, true,
                    [&] { EXPECT_EQ(WindowOf(inner)->transientParent(), WindowOf(outer)); });
      AskForm third;
      test::RunForm(third, true,
                    [&] { EXPECT_EQ(WindowOf(third)->transientParent(), WindowOf(outer)); });
    });
  });
}

TEST(ModalOwner, OwnerThatIsNotOnTheScreen_GivesWayToOneThatIs) {
  Form never;
  Form main;
  AskForm dialog;
  dialog.owner = &never;
  test::RunForm(main, false, [&] {
    test::RunForm(dialog, true,
                  [&] { EXPECT_EQ(WindowOf(dialog)->transientParent(), WindowOf(main)); });
  });
  dialog.owner = nullptr;
}

TEST(ModalOwner, FirstForm_HasNone) {
  AskForm dialog;
  test::RunForm(dialog, true, [&] { EXPECT_EQ(dialog.owner, nullptr); });
}

TEST(ModalKeyboard, OwnerThatIsActivated_GivesItBack) {
  Form main;
  Edit behind;
  main.Add(&behind);
  test::RunForm(main, false, [&] {
    AskForm dialog;
    test::RunForm(dialog, true, [&] {
      test::WidgetOf(main)->activateWindow();
      EXPECT_TRUE(test::WaitFor([&] { return test::WidgetOf(dialog)->isActiveWindow(); }));
      EXPECT_EQ(activeForm, &dialog);
      EXPECT_TRUE(dialog.edit.IsFocused());
      QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_X);
      EXPECT_EQ(dialog.edit.text.Get(), "x");
      EXPECT_EQ(behind.text.Get(), "");
    });
  });
}

// Counts how often the window is asked to come to the front.
struct FrontCounter : QObject {
  int activations = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::WindowActivate) ++activations;
    return false;
  }
};

TEST(ModalKeyboard, OwnerThatIsClicked_ActivatesTheInnermostModalForm) {
  Form main;
  test::RunForm(main, false, [&] {
    AskForm outer;
    test::RunForm(outer, true, [&] {
      AskForm inner;
      test::RunForm(inner, true, [&] {
        for (Form* blocked : std::initializer_list<Form*>{&main, &outer}) {
          FrontCounter counter;
          const auto elsewhere = std::make_unique<QWindow>();
          elsewhere->show();
          elsewhere->requestActivate();
          ASSERT_TRUE(test::WaitFor([&] { return !test::WidgetOf(inner)->isActiveWindow(); }));
          test::WidgetOf(inner)->installEventFilter(&counter);
          test::Click(*blocked, QPoint(50, 90));
          EXPECT_TRUE(test::WaitFor([&] { return counter.activations > 0; }));
          EXPECT_TRUE(test::WidgetOf(inner)->isActiveWindow());
        }
      });
    });
  });
}

TEST(ModalKeys, FirstForm_HasEnterAndEscape) {
  AskForm first, second;
  EXPECT_EQ(test::RunForm(first, true, [&] { test::Key(first, Qt::Key_Return); }), Form::cOk);
  EXPECT_EQ(test::RunForm(second, true, [&] { test::Key(second, Qt::Key_Escape); }), Form::cCancel);
}

TEST(ModalKeys, FirstFormThatRefusesThem_HasNone) {
  AskForm form;
  form.autoDialogKeys = false;
  EXPECT_EQ(test::RunForm(form, true,
                          [&] {
                            test::Key(form, Qt::Key_Escape);
                            EXPECT_EQ(form.state, cShown);
                            form.impl->OnMenuCommand(1, 7);
                          }),
            7);
}

TEST(ModalKeys, FirstFormThatIsNotModal_HasNone) {
  AskForm form;
  test::EventLog log;
  log.Listen("ok", form.ok.onClick);
  test::RunForm(form, false, [&] { test::Key(form, Qt::Key_Return); });
  EXPECT_EQ(log.Take(), "");
  EXPECT_FALSE(form.autoDialogKeys);
}

// A dialog whose OK is only taken for a text that isn't empty.
struct StrictForm : AskForm {
  TextSource source;
  int closings = 0;
  StrictForm() {
    edit.dataLink = &source;
    ok.onClick.Add_H(this, &StrictForm::Check);
    onClose.Add_H(this, &StrictForm::Closing);
  }
  void Check(NotifyArgs&) {
    if (edit.text.Get().empty()) StayOpen();
  }
  void Closing(NotifyArgs& args) {
    ++closings;
    args.value = 0;
  }
};

TEST(StayOpen, KeepsTheDialogWithNothingStored_UntilTheAnswerIsGood) {
  for (const bool byKey : {false, true}) {
    StrictForm form;
    const auto press = [&] {
      if (byKey)
        test::Key(form, Qt::Key_Return);
      else
        test::Click(form.ok);
    };
    const int result = test::RunForm(form, true, [&] {
      form.edit.text = "";
      press();
      EXPECT_EQ(form.state, cShown);
      EXPECT_EQ(form.result, Form::cNone);
      EXPECT_EQ(form.source.value, "old");
      EXPECT_EQ(form.closings, 0);
      press();
      EXPECT_EQ(form.state, cShown);
      form.edit.text = "new";
      press();
      EXPECT_EQ(form.impl->hwnd, nullptr);
    });
    EXPECT_EQ(result, Form::cOk);
    EXPECT_EQ(form.source.value, "new");
    EXPECT_EQ(form.closings, 1) << "told, and its refusal not asked";
  }
}

struct PoliteForm : StrictForm {
  PoliteForm() { onClose.Add_H(this, &PoliteForm::Let); }
  void Let(NotifyArgs& args) { args.value = 1; }
};

TEST(StayOpen, ThenTheCloseBox_StoresNothing) {
  PoliteForm form;
  test::RunForm(form, true, [&] {
    form.edit.text = "";
    test::Key(form, Qt::Key_Return);
    form.Close();
    EXPECT_EQ(form.impl->hwnd, nullptr);
  });
  EXPECT_EQ(form.result, Form::cNone);
  EXPECT_EQ(form.source.value, "old");
}

TEST(StayOpen, OutsideAClick_KeepsNothingOpen) {
  AskForm form;
  EXPECT_EQ(test::RunForm(form, true,
                          [&] {
                            form.StayOpen();
                            test::Click(form.ok);
                            EXPECT_EQ(form.impl->hwnd, nullptr);
                          }),
            Form::cOk);
}

struct KeyActs : ActionList {
  std::string log;
  KeyActs() {
    SetTarget(this, &KeyActs::OnCommand);
    Add(1300, "&New", cControlKey | 'N');
  }
  void OnCommand(int id) { log += std::to_string(id) + " "; }
};

struct KeyForm : AskForm {
  KeyActs acts;
  Menu menu;
  MenuBar bar;
  int previewed = 0;
  KeyForm() {
    menu.Fill(acts);
    bar.Add(&menu);
    menuBar = &bar;
    onKeyPreview.Add_H(this, &KeyForm::Preview);
  }
  void Preview(NotifyArgs& args) { previewed = args.value; }
};

TEST(ProcessMessages, ModalFormOpenedInside_KeepsPreviewAndAccelerators) {
  Form main;
  test::RunForm(main, false, [&] {
    KeyForm dialog;
    QTimer::singleShot(0, [&] {
      test::RunForm(dialog, true, [&] {
        test::Key(dialog, Qt::Key_Q);
        EXPECT_EQ(dialog.previewed, 'Q');
        test::Key(dialog, Qt::Key_N, Qt::ControlModifier);
        EXPECT_EQ(dialog.acts.log, "1300 ");
      });
    });
    for (int i = 0; i < 50 && dialog.acts.log.empty(); ++i) theApplication.ProcessMessages();
    EXPECT_EQ(dialog.acts.log, "1300 ");
  });
}

}  // namespace
}  // namespace mavro
