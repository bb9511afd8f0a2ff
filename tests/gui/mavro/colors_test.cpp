#include <gtest/gtest.h>

#include <QPalette>

#include "Button.h"
#include "Edit.h"
#include "Form.h"
#include "Graphics.h"
#include "GuiDriver.h"
#include "Label.h"
#include "ListBox.h"
#include "SysImpl.h"

namespace mavro {
namespace {

struct ColorForm : Form {
  Edit first, edit;
  Label label;

  ColorForm() {
    SetBounds(0, 0, 300, 200);
    for (Control* control : std::initializer_list<Control*>{&first, &edit, &label}) Add(control);
    edit.SetLocation(0, 40);
    label.SetLocation(0, 80);
    label.text = "text";
  }
  Param Ask(Control& control, PaintColors& colors, unsigned message = WM_CTLCOLOREDIT) {
    return SendMessage(impl->hwnd, message, reinterpret_cast<Param>(&colors),
                       reinterpret_cast<Param>(control.impl->hwnd));
  }
  static QColor Shown(Control& control, QPalette::ColorRole role) {
    return test::WidgetOf(control)->palette().color(role);
  }
};

TEST(ControlColors, BothDefault_NothingIsSet) {
  ColorForm form;
  test::RunForm(form, false, [&] {
    PaintColors colors;
    EXPECT_EQ(form.Ask(form.edit, colors), 0);
    EXPECT_TRUE(colors.text.IsDefault());
    EXPECT_FALSE(colors.transparent);
    EXPECT_EQ(form.edit.impl->backgroundBrush, nullptr);
  });
}

TEST(ControlColors, ForeOnly_TextOnTheGroundBehind) {
  ColorForm form;
  form.edit.foreColor = Color::cRed;
  test::RunForm(form, false, [&] {
    PaintColors colors;
    EXPECT_NE(form.Ask(form.edit, colors), 0);
    EXPECT_EQ(colors.text, Color(Color::cRed));
    EXPECT_TRUE(colors.transparent);
    EXPECT_TRUE(colors.back.IsDefault());
  });
}

TEST(ControlColors, BackOnly_BrushMadeOnFirstUse) {
  ColorForm form;
  form.edit.backColor = Color::cYellow;
  EXPECT_EQ(form.edit.impl->backgroundBrush, nullptr);
  test::RunForm(form, false, [&] {
    PaintColors colors;
    const Param brush = form.Ask(form.edit, colors);
    EXPECT_EQ(brush, reinterpret_cast<Param>(form.edit.impl->backgroundBrush.get()));
    EXPECT_EQ(reinterpret_cast<const Brush*>(brush)->color, Color(Color::cYellow));
    EXPECT_EQ(colors.back, Color(Color::cYellow));
    EXPECT_FALSE(colors.transparent);
    EXPECT_TRUE(colors.text.IsDefault());
  });
}

TEST(ControlColors, EveryMessageOfTheFamily_IsAnswered) {
  ColorForm form;
  form.edit.backColor = Color::cBlue;
  test::RunForm(form, false, [&] {
    for (unsigned message = 0x133; message <= 0x138; ++message) {
      PaintColors colors;
      EXPECT_NE(form.Ask(form.edit, colors, message), 0) << message;
    }
  });
}

TEST(ControlColors, Window_ShowsThem) {
  ColorForm form;
  form.edit.foreColor = Color::cRed;
  form.edit.backColor = Color::cYellow;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(ColorForm::Shown(form.edit, QPalette::Text), QColor(255, 0, 0));
    EXPECT_EQ(ColorForm::Shown(form.edit, QPalette::Base), QColor(255, 255, 0));
    form.edit.backColor = Color::cGreen;
    EXPECT_EQ(ColorForm::Shown(form.edit, QPalette::Base), QColor(0, 255, 0));
    form.edit.backColor = Color();
    form.edit.foreColor = Color();
    EXPECT_EQ(ColorForm::Shown(form.edit, QPalette::Base),
              ColorForm::Shown(form.first, QPalette::Base));
  });
}

TEST(ControlColors, RenumberedChild_LosesThem) {
  ColorForm form;
  form.edit.backColor = Color::cYellow;
  Edit before;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(ColorForm::Shown(form.edit, QPalette::Base), QColor(255, 255, 0));
    form.Insert(&before, 0);
    EXPECT_EQ(form.edit.impl->hwnd->id, 2);
    EXPECT_EQ(form.edit.id, 0x2002);
    PaintColors colors;
    EXPECT_EQ(form.Ask(form.edit, colors), 0);
    EXPECT_NE(ColorForm::Shown(form.edit, QPalette::Base), QColor(255, 255, 0));
  });
}

TEST(ControlColorsDeath, IndexPastTheEnd_Stops) {
  ColorForm form;
  form.edit.backColor = Color::cYellow;
  test::RunForm(form, false, [&] {
    form.edit.impl->hwnd->id = 0x2000 | 77;
    PaintColors colors;
    EXPECT_DEATH(form.Ask(form.edit, colors), "id < cont->children.size\\(\\)");
    form.edit.impl->hwnd->id = 0x2001;
  });
}

TEST(BorderStyle, EditsFrame_ComesAndGoes) {
  ColorForm form;
  EXPECT_EQ(form.edit.borderStyle, BorderStyle::cFixed3d);
  form.first.borderStyle = BorderStyle::cNone;
  test::RunForm(form, false, [&] {
    EXPECT_FALSE(test::WidgetOf(form.first)->property("frame").toBool());
    EXPECT_TRUE(test::WidgetOf(form.edit)->property("frame").toBool());
    form.first.borderStyle = BorderStyle::cFrame;
    EXPECT_TRUE(test::WidgetOf(form.first)->property("frame").toBool());
  });
}

TEST(BorderStyle, Container_PlacesChildrenInsideTheBorder) {
  Form form;
  Panel panel;
  Edit filling;
  panel.SetBounds(10, 10, 100, 60);
  panel.borderStyle = BorderStyle::cFrame;
  filling.dock = Dock::cFill;
  panel.Add(&filling);
  form.Add(&panel);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(filling.Bounds(), (Rect{0, 0, 98, 58}));
    EXPECT_EQ(test::WidgetOf(filling)->pos(), QPoint(1, 1));
    panel.borderStyle = BorderStyle::cNone;
    RunPendingLayout(&panel);
    EXPECT_EQ(filling.Bounds(), (Rect{0, 0, 100, 60}));
    EXPECT_EQ(test::WidgetOf(filling)->pos(), QPoint(0, 0));
  });
}

TEST(BorderStyle, EveryStyle_OnEveryKind) {
  ColorForm form;
  ListBox list;
  Button button;
  form.Add(&list);
  form.Add(&button);
  test::RunForm(form, false, [&] {
    for (Control* control : form.children)
      for (int style = 4; style >= 0; --style) {
        control->borderStyle = static_cast<BorderStyle>(style);
        EXPECT_EQ(control->borderStyle, static_cast<BorderStyle>(style));
      }
  });
}

}  // namespace
}  // namespace mavro
