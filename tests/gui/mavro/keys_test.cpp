// A control gets the named key when that key is pressed.
#include "Keys.h"

#include <gtest/gtest.h>

#include "Action.h"
#include "ChildCtrl.h"
#include "CustomCtrl.h"
#include "Form.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

struct KeyRow {
  Qt::Key pressed;
  int told;
};

constexpr KeyRow cRows[] = {
    {Qt::Key_Backspace, Key::cBackspace},
    {Qt::Key_Tab, Key::cTab},
    {Qt::Key_Return, Key::cEnter},
    {Qt::Key_Enter, Key::cEnter},
    {Qt::Key_Shift, Key::cShift},
    {Qt::Key_Control, Key::cControl},
    {Qt::Key_Alt, Key::cAlt},
    {Qt::Key_Escape, Key::cEscape},
    {Qt::Key_Space, Key::cSpace},
    {Qt::Key_PageUp, Key::cPageUp},
    {Qt::Key_PageDown, Key::cPageDown},
    {Qt::Key_End, Key::cEnd},
    {Qt::Key_Home, Key::cHome},
    {Qt::Key_Left, Key::cLeft},
    {Qt::Key_Up, Key::cUp},
    {Qt::Key_Right, Key::cRight},
    {Qt::Key_Down, Key::cDown},
    {Qt::Key_Insert, Key::cInsert},
    {Qt::Key_Delete, Key::cDelete},
    {Qt::Key_Menu, Key::cMenu},
    {Qt::Key_F1, Key::cF1},
    {Qt::Key_F12, Key::cF12},
    {Qt::Key_Semicolon, Key::cSemicolon},
    {Qt::Key_Plus, Key::cPlus},
    {Qt::Key_Comma, Key::cComma},
    {Qt::Key_Minus, Key::cMinus},
    {Qt::Key_Period, Key::cPeriod},
    {Qt::Key_Slash, Key::cSlash},
    {Qt::Key_QuoteLeft, Key::cBackquote},
    {Qt::Key_A, 'A'},
    {Qt::Key_Z, 'Z'},
    {Qt::Key_0, '0'},
    {Qt::Key_9, '9'},
};

struct KeyForm : Form {
  CustomCtrl field;
  int key = 0;
  KeyForm() {
    field.SetBounds(10, 10, 50, 50);
    field.wantsKeys = true;
    field.onKeyDown.Add_H(this, &KeyForm::OnKey);
    Add(&field);
  }
  void OnKey(KeyArgs& args) {
    key = args.key;
    args.handled = true;
  }
};

TEST(Keys, EachName_IsTheKeyThatAControlGets) {
  KeyForm form;
  test::RunForm(form, false, [&] {
    form.field.Focus();
    for (const KeyRow& row : cRows) {
      form.key = 0;
      QTest::keyPress(test::WidgetOf(form.field), row.pressed);
      EXPECT_EQ(form.key, row.told) << row.pressed;
      QTest::keyRelease(test::WidgetOf(form.field), row.pressed);
    }
  });
}

TEST(Keys, Names_AreThoseOfHotkeys) {
  EXPECT_EQ(HotKeyText(cControlKey | Key::cF5), "\tCtrl+F5");
  EXPECT_EQ(HotKeyText(cShiftKey | Key::cPageUp), "\tShift+PgUp");
  EXPECT_EQ(HotKeyText(cAltKey | 'N'), "\tAlt+N");
}

}  // namespace
}  // namespace mavro
