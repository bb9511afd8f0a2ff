// The roles and names of windows and their parts, as screen readers get them.
#include <gtest/gtest.h>

#include <QAccessible>
#include <mavro>

#include "GuiDriver.h"

namespace {

QAccessible::Role RoleOf(const Control& control) {
  return QAccessible::queryAccessibleInterface(test::WidgetOf(control))->role();
}

QString NameOf(const Control& control) {
  QWidget* named = control.impl->hwnd->StyledWidget();
  return QAccessible::queryAccessibleInterface(named)->text(QAccessible::Name);
}

TEST(Roles, FirstForm_IsAWindowWithItsTitle) {
  Form form;
  form.text = "Title";
  test::RunForm(form, false, [&] {
    EXPECT_EQ(RoleOf(form), QAccessible::Window);
    EXPECT_EQ(NameOf(form), "Title");
  });
}

TEST(Roles, ModalForm_IsADialog) {
  Form form;
  test::RunForm(form, true, [&] { EXPECT_EQ(RoleOf(form), QAccessible::Dialog); });
  test::RunForm(form, false, [&] { EXPECT_EQ(RoleOf(form), QAccessible::Window) << "run again"; });
}

TEST(Roles, FormAboveAnother_IsADialog) {
  Form form;
  test::RunForm(form, false, [&] {
    Form above(&form);
    above.Show();
    EXPECT_EQ(RoleOf(above), QAccessible::Dialog);
    above.Close();
  });
}

TEST(Roles, ToolBar_IsOne) {
  Form form;
  ToolBar bar;
  bar.AddButton(Icons::icoNew, "New");
  form.Add(&bar);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(RoleOf(bar), QAccessible::ToolBar);
    auto* access = QAccessible::queryAccessibleInterface(test::WidgetOf(bar));
    EXPECT_EQ(access->childCount(), 2) << "a button, and the one for what has no room";
  });
}

struct NamedForm : Form {
  Label label;
  Edit edit;
  Memo memo;
  TreeView tree;
  ListView list;
  Button button;
  NamedForm() {
    label.text = "&Label:";
    button.text = "Button";
    for (Control* control :
         std::initializer_list<Control*>{&label, &edit, &memo, &tree, &list, &button})
      Add(control);
  }
};

TEST(AccessibleName, NamesWhatNothingElseNames) {
  NamedForm form;
  form.memo.accessibleName = "Notes";
  form.tree.accessibleName = "Classes";
  form.list.accessibleName = "Errors";
  test::RunForm(form, false, [&] {
    EXPECT_EQ(NameOf(form.edit), "Label:");
    EXPECT_EQ(NameOf(form.memo), "Notes");
    EXPECT_EQ(NameOf(form.tree), "Classes");
    EXPECT_EQ(NameOf(form.list), "Errors");
    EXPECT_EQ(NameOf(form.button), "Button");
  });
}

TEST(AccessibleName, StandsBeforeTextLabelAndHint_AndGivesThemBack) {
  NamedForm form;
  test::RunForm(form, false, [&] {
    form.tree.hint = "A hint";
    EXPECT_EQ(NameOf(form.tree), "A hint");
    form.tree.accessibleName = "Own";
    EXPECT_EQ(NameOf(form.tree), "Own");
    form.tree.hint = "Another";
    EXPECT_EQ(NameOf(form.tree), "Own");
    form.tree.accessibleName = "";
    EXPECT_EQ(NameOf(form.tree), "Another");
    form.edit.accessibleName = form.button.accessibleName = "Own";
    EXPECT_EQ(NameOf(form.edit), "Own");
    EXPECT_EQ(NameOf(form.button), "Own");
    form.edit.accessibleName = form.button.accessibleName = "";
    EXPECT_EQ(NameOf(form.edit), "Label:");
    EXPECT_EQ(NameOf(form.button), "Button");
  });
}

}  // namespace
