// Rules that hold for every kind of control.
#include <gtest/gtest.h>

#include <QAccessible>
#include <memory>

#include "AllocationCount.h"
#include "Button.h"
#include "ButtonGroup.h"
#include "Edit.h"
#include "Form.h"
#include "GroupBox.h"
#include "GuiDriver.h"
#include "IconView.h"
#include "Label.h"
#include "ListBox.h"
#include "ListView.h"
#include "ProgressBar.h"
#include "PropertyBox.h"
#include "QtInput.h"
#include "RichView.h"
#include "ScriptedDialogs.h"
#include "Scroller.h"
#include "SpinEdit.h"
#include "SplitContainer.h"
#include "StatusBar.h"
#include "TabCtrl.h"
#include "ToolBar.h"
#include "TrackBar.h"
#include "TreeView.h"

namespace mavro {
namespace {

struct Kind {
  const char* name;
  std::function<std::unique_ptr<Control>()> make;
  QAccessible::Role role;
};

template <class T>
Kind KindOf(const char* name, QAccessible::Role role) {
  return {name, [] { return std::make_unique<T>(); }, role};
}

const Kind cKinds[] = {
    KindOf<Label>("Label", QAccessible::StaticText),
    KindOf<Edit>("Edit", QAccessible::EditableText),
    KindOf<Memo>("Memo", QAccessible::EditableText),
    KindOf<Button>("Button", QAccessible::Button),
    KindOf<CheckBox>("CheckBox", QAccessible::CheckBox),
    KindOf<ComboBox>("ComboBox", QAccessible::ComboBox),
    KindOf<ListBox>("ListBox", QAccessible::List),
    KindOf<ListView>("ListView", QAccessible::Tree),
    KindOf<TreeView>("TreeView", QAccessible::Tree),
    KindOf<IconView>("IconView", QAccessible::List),
    KindOf<GroupBox>("GroupBox", QAccessible::Grouping),
    KindOf<RadioGroup>("RadioGroup", QAccessible::Grouping),
    KindOf<CheckGroup>("CheckGroup", QAccessible::Grouping),
    KindOf<SpinEdit>("SpinEdit", QAccessible::SpinBox),
    KindOf<TrackBar>("TrackBar", QAccessible::Slider),
    KindOf<ProgressBar>("ProgressBar", QAccessible::ProgressBar),
    KindOf<RichView>("RichView", QAccessible::StaticText),
    KindOf<StatusBar>("StatusBar", QAccessible::StatusBar),
    KindOf<Panel>("Panel", QAccessible::Border),
    KindOf<Scroller>("Scroller", QAccessible::Client),
    KindOf<PropertyBox>("PropertyBox", QAccessible::Client),
    KindOf<TabCtrl>("TabCtrl", QAccessible::PageTabList),  // named by the page that is shown
};

void PrintTo(const Kind& kind, std::ostream* out) {
  *out << kind.name;
}

class EveryKind : public testing::TestWithParam<Kind> {
 protected:
  EveryKind() : control(GetParam().make()) {
    form.SetBounds(0, 0, 300, 200);
    control->SetBounds(10, 40, 200, 100);
    form.Add(control.get());
    form.Add(&other);
  }

  Form form;
  Edit other;
  std::unique_ptr<Control> control;
};

INSTANTIATE_TEST_SUITE_P(Kinds, EveryKind, testing::ValuesIn(cKinds),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(EveryKind, HasANameAndARole) {
  TabPage page;
  page.text = "what it is for";
  control->hint = "what it is for";
  if (auto* tabs = dynamic_cast<TabCtrl*>(control.get())) tabs->Add(&page);
  test::RunForm(form, false, [&] {
    QAccessibleInterface* shown =
        QAccessible::queryAccessibleInterface(control->impl->hwnd->StyledWidget());
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->role(), GetParam().role);
    EXPECT_EQ(shown->text(QAccessible::Name), "what it is for");
  });
}

TEST_P(EveryKind, MouseMove_WithoutHandlers_AsksForNoMemory) {
  test::RunForm(form, false, [&] {
    const QWidget* widget = test::WidgetOf(*control);
    const auto tell = [&] { SendMessage(WindowOf(widget), WM_MOUSEMOVE, 0, PackPoint(5, 5)); };
    tell();
    const long before = test::AllocationCount();
    for (int i = 0; i < 100; ++i) tell();
    EXPECT_EQ(test::AllocationCount() - before, 0);
  });
}

TEST_P(EveryKind, Destroyed_WhileTheFormRuns) {
  test::RunForm(form, false, [&] {
    control->Focus();
    control.reset();
    EXPECT_EQ(form.GetControlCount(), 1);
    other.Focus();
    EXPECT_TRUE(other.IsFocused());
  });
}

TEST_P(EveryKind, RemovedAndAddedAgain_GetsANewWindow) {
  test::RunForm(form, false, [&] {
    form.Remove(control.get());
    EXPECT_EQ(control->impl->hwnd, nullptr);
    EXPECT_EQ(control->state, cNoWindow);
    form.Add(control.get());
    EXPECT_NE(control->impl->hwnd, nullptr);
    EXPECT_EQ(control->state, cShown);
  });
}

TEST_P(EveryKind, NegativeAndHugeBounds_Stand) {
  control->SetBounds(-50, -50, -10, -20);
  test::RunForm(form, false, [&] {
    control->SetBounds(INT_MAX / 2, INT_MIN / 2, 0, 0);
    control->SetBounds(0, 0, 100000, 100000);
    control->SetBounds(10, 10, -100000, -100000);
    control->SetBounds(10, 10, 100, 50);
    EXPECT_EQ(control->impl->hwnd->Bounds(), (Rect{10, 10, 100, 50}));
  });
}

TEST_P(EveryKind, AnyText_ComesOutAsItWent) {
  const std::string texts[] = {"a\xFF\xC3(", std::string("n\0l", 3),
                               "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D"};
  if (std::string(GetParam().name) == "SpinEdit") return;
  test::RunForm(form, false, [&] {
    for (const std::string& text : texts) {
      control->text = text;
      EXPECT_EQ(control->text.Get(), text);
    }
  });
}

enum class Deed { cCloseForm, cDelete, cModal, cThrow };

// Handlers that destroy the control that called them.
struct Doer : object {
  Doer(Form& itsForm, std::unique_ptr<Control>& its) : form(itsForm), control(its) {}

  template <class Args>
  void On(Args&) {
    if (done) return;
    done = true;
    switch (deed) {
      case Deed::cCloseForm:
        return form.Close();
      case Deed::cDelete:
        return control.reset();
      case Deed::cModal: {
        Form inner;
        test::RunForm(inner, true, [] {});
        return;
      }
      case Deed::cThrow:
        throw std::runtime_error("from a handler");
    }
  }

  Form& form;
  std::unique_ptr<Control>& control;
  Deed deed = Deed::cCloseForm;
  bool done = false;
};

TEST_P(EveryKind, Handlers_MayDoAnything) {
  for (const Deed deed : {Deed::cThrow, Deed::cModal, Deed::cDelete, Deed::cCloseForm}) {
    test::ScriptedDialogs dialogs;
    Form itsForm;
    auto its = GetParam().make();
    its->SetBounds(10, 10, 100, 50);
    Doer doer(itsForm, its);
    doer.deed = deed;
    its->onMouseDown.Add_H(&doer, &Doer::On<MouseArgs>);
    itsForm.Add(its.get());
    test::RunForm(itsForm, false, [&] {
      SendMessage(its->impl->hwnd, WM_LBUTTONDOWN, 1, PackPoint(5, 5));
      EXPECT_TRUE(doer.done);
      EXPECT_EQ(its == nullptr, deed == Deed::cDelete);
      EXPECT_EQ(itsForm.impl->hwnd == nullptr, deed == Deed::cCloseForm);
    });
    EXPECT_EQ(dialogs.texts.size(), deed == Deed::cThrow ? 1u : 0u);
  }
}

struct ClosingForm : Form {
  ClosingForm() { onClose.Add_H(this, &ClosingForm::OnClose); }
  void OnClose(NotifyArgs&) {
    Form question;
    Button yes;
    yes.kind = Button::cOk;
    question.Add(&yes);
    answer = test::RunForm(question, true, [&] { test::Click(yes); });
  }
  int answer = 0;
};

TEST(FormClosing, ModalFormFromOnClose) {
  ClosingForm form;
  test::RunForm(form, false, [&] { form.Close(); });
  EXPECT_EQ(form.answer, Form::cOk);
  EXPECT_EQ(form.impl->hwnd, nullptr);
}

TEST(Edit, TenMegabytes_GoInAndOut) {
  Form form;
  Edit edit;
  form.Add(&edit);
  std::string text(10 * 1024 * 1024, 'x');
  text[5] = '\xFF';
  edit.text = text;
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(edit.text.Get() == text);
    edit.text = "short";
    EXPECT_EQ(edit.text.Get(), "short");
  });
}

}  // namespace
}  // namespace mavro
