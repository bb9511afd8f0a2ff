#include "Label.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QLabel>

#include "Edit.h"
#include "Form.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

struct LabelForm : Form {
  Label label;
  Edit edit;

  LabelForm() {
    SetBounds(0, 0, 300, 100);
    label.text = "&Name:";
    Add(&label);
    edit.SetLocation(100, 0);
    Add(&edit);
  }
  QLabel* Widget() const { return qobject_cast<QLabel*>(test::WidgetOf(label)); }
};

TEST(Label, NewOne_HasTheUsualSize) {
  Label label;
  EXPECT_EQ(label.Bounds(), (Rect{0, 0, 80, 18}));
  EXPECT_EQ(label.align, Align::cLeft);
}

TEST(Label, Mnemonic_FocusesTheNextControl) {
  LabelForm form;
  Edit other;
  other.SetLocation(200, 0);
  form.Add(&other);
  test::RunForm(form, false, [&] {
    other.Focus();
    test::Key(form, Qt::Key_N, Qt::AltModifier);
    EXPECT_TRUE(form.edit.IsFocused());
  });
}

TEST(Label, Text_NamesTheNextControlForScreenReaders) {
  LabelForm form;
  test::RunForm(form, false, [&] {
    QAccessibleInterface* shown = QAccessible::queryAccessibleInterface(test::WidgetOf(form.edit));
    EXPECT_EQ(shown->text(QAccessible::Name), "Name:");
    EXPECT_EQ(shown->role(), QAccessible::EditableText);
  });
}

TEST(Label, Text_IsReadBackWithItsMark) {
  LabelForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.label.text.Get(), "&Name:");
    form.label.text = "A && B <b>\xFF";
    EXPECT_EQ(form.label.text.Get(), "A && B <b>\xFF");
  });
}

TEST(Label, WithoutANextControl_TheMarkIsNotShown) {
  Form form;
  Label label;
  label.text = "R&&D &last";
  form.Add(&label);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(qobject_cast<QLabel*>(test::WidgetOf(label))->text(), "R&D last");
  });
}

TEST(Label, Align_BeforeAndWithTheWindow) {
  LabelForm form;
  form.label.align = Align::cRight;
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(form.Widget()->alignment() & Qt::AlignRight);
    form.label.align = Align::cCenter;
    EXPECT_TRUE(form.Widget()->alignment() & Qt::AlignHCenter);
  });
}

TEST(Label, NamedControl_Destroyed_IsForgotten) {
  Form form;
  Label label;
  auto edit = std::make_unique<Edit>();
  label.text = "&Name:";
  form.Add(&label);
  form.Add(edit.get());
  test::RunForm(form, false, [&] {
    edit.reset();
    test::Key(form, Qt::Key_N, Qt::AltModifier);
    label.text = "still here";
    EXPECT_EQ(label.text, "still here");
    EXPECT_FALSE(test::WidgetOf(label)->hasFocus());
  });
}

}  // namespace
}  // namespace mavro
