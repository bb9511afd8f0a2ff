#include <gtest/gtest.h>

#include <cmath>

#include "DarkPalette.h"
#include "GuiDriver.h"
#include "Looks.h"
#include "ScriptedDialogs.h"
#include "TempFolder.h"

// The demo as it is shipped, but its main.
#include "../../../dist/Repos/demos/plotter/formula.cpp"
#include "../../../dist/Repos/demos/plotter/plotform.cpp"

namespace {

struct ValueRow {
  const char* formula;
  double x;
  double y;
};

TEST(DemoFormula, Values) {
  const ValueRow rows[] = {
      {"2+3*4", 0, 14},   {"(2+3)*4", 0, 20}, {"8-2-1", 0, 5},         {"8/4/2", 0, 1},
      {"2^3^2", 0, 512},  {"-x^2", 3, -9},    {"(-x)^2", 3, 9},        {"2*-x", 3, -6},
      {"x^-1", 4, 0.25},  {"--x", 3, 3},      {" 1.5e2 * x ", 2, 300}, {".5", 0, 0.5},
      {"cos(pi)", 0, -1}, {"ln(e)", 0, 1},    {"abs(-2)", 0, 2},       {"sqrt(x)+exp(0)", 16, 5}};
  for (const ValueRow& row : rows) {
    Formula formula;
    ASSERT_TRUE(formula.Parse(row.formula)) << row.formula << " " << formula.Error();
    EXPECT_NEAR(formula.At(row.x), row.y, 1e-12) << row.formula;
  }
}

struct ErrorRow {
  const char* formula;
  const char* error;
};

TEST(DemoFormula, Mistakes_AreSaidWithTheirPlace) {
  const ErrorRow rows[] = {{"", "at 1: a value is missing"},
                           {"2+", "at 3: a value is missing"},
                           {"(2", "at 3: a bracket is not closed"},
                           {"2)", "at 2: something is left over"},
                           {"2 x", "at 3: something is left over"},
                           {"sin x", "at 5: a function needs brackets"},
                           {"1+wrong(x)", "at 3: \"wrong\" has no meaning"},
                           {".", "at 1: this is no number"}};
  for (const ErrorRow& row : rows) {
    Formula formula;
    EXPECT_FALSE(formula.Parse(row.formula)) << row.formula;
    EXPECT_EQ(formula.Error(), row.error) << row.formula;
    EXPECT_TRUE(std::isnan(formula.At(1)));
  }
}

TEST(DemoFormula, AnyDepth_HasAnEnd) {
  for (const char* piece : {"(", "-", "2^", "sin("}) {
    std::string deep;
    for (int i = 0; i < 100000; ++i) deep += piece;
    EXPECT_FALSE(Formula().Parse(deep)) << piece;
  }
}

// The first control of a kind below another, or null.
template <class Kind>
Kind* First(Control& below) {
  for (Control* child : below.children) {
    if (auto* found = dynamic_cast<Kind*>(child)) return found;
    if (auto* found = First<Kind>(*child)) return found;
  }
  return nullptr;
}

TEST(DemoPlotter, Enter_AddsTheCurve) {
  PlotForm form;
  test::RunForm(form, false, [&] {
    auto& plot = *First<PlotXY>(form);
    auto& formula = *First<Edit>(form);
    ASSERT_EQ(plot.SeriesCount(), 1) << "the formula that the window begins with";
    EXPECT_EQ(plot.Series(0).name, formula.text.Get());
    formula.Focus();
    formula.text = "cos(x)";
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(plot.SeriesCount(), 2);
    formula.text = "2*";
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(plot.SeriesCount(), 2);
    formula.text = "x^2/20";
    test::Click(*First<Button>(form));
    ASSERT_EQ(plot.SeriesCount(), 3);
    EXPECT_EQ(plot.Series(2).name, "x^2/20");
    EXPECT_EQ(plot.Series(2).y.front(), 5);
  });
}

TEST(DemoPlotter, Save_WritesThePicture) {
  const test::TempFolder folder;
  test::ScriptedDialogs dialogs;
  dialogs.files = {{folder.Path() + "/curve.png"}};
  PlotForm form;
  form.AddCurve("sin(x)");
  test::RunForm(form, false, [&] {
    test::Click(*First<Panel>(form)->children.back());
    Picture saved;
    EXPECT_EQ(saved.Load(folder.Path() + "/curve.png"), PictureResult::cLoaded);
  });
}

TEST(DemoPlotter, LightAndDark_CanBeRead) {
  const QPalette light = QApplication::palette();
  for (const bool isDark : {false, true}) {
    QApplication::setPalette(isDark ? test::DarkPalette() : light);
    PlotForm form;
    for (const char* curve : {"x^2/60", "exp(-x^2/8)*2"}) EXPECT_TRUE(form.AddCurve(curve));
    test::RunForm(form, false, [&] {
      EXPECT_EQ(test::UnreadableCaptions(form), std::vector<std::string>());
      const std::string scale = qEnvironmentVariable("QT_SCALE_FACTOR", "1").toStdString();
      test::Shot(form, std::string("demo-plotter-") + (isDark ? "dark-" : "light-") + scale);
    });
  }
  QApplication::setPalette(light);
}

}  // namespace
