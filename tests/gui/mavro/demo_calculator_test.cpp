#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "GuiDriver.h"
#include "Looks.h"

// The demo as it is shipped, but its main.
#include "../../../dist/Repos/demos/calculator/calcform.cpp"
#include "../../../dist/Repos/demos/calculator/engine.cpp"

namespace {

struct KeysRow {
  const char* keys;
  const char* display;
};

TEST(Engine, Keys_GiveWhatTheDisplayShows) {
  const KeysRow rows[] = {
      {"", "0"},
      {"12.5", "12.5"},
      {"007", "7"},
      {".5", "0.5"},
      {"1..5", "1.5"},
      {"2+3=", "5"},
      {"2+3*4=", "20"},
      {"2+*3=", "6"},
      {"2+3===", "11"},
      {"9/4=", "2.25"},
      {"1-3=", "-2"},
      {"5n", "-5"},
      {"0n", "0"},
      {"5nn", "5"},
      {"200+10%=", "220"},
      {"200*10%=", "20"},
      {"50%", "0.5"},
      {"123bb", "1"},
      {"5b", "0"},
      {"5nb", "0"},
      {"2+3=b", "5"},
      {"2+3=4", "4"},
      {"1/3=", "0.333333333333"},
      {"5c", "0"},
      {"2+3c4=", "4"},
      {"xyz", "0"},
  };
  for (const KeysRow& row : rows) {
    Engine engine;
    for (const char* key = row.keys; *key; ++key) engine.Press(*key);
    EXPECT_EQ(engine.Display(), row.display) << row.keys;
  }
}

TEST(Engine, DivisionByZero_IsAnErrorUntilCleared) {
  Engine engine;
  for (const char key : std::string("5/0=")) engine.Press(key);
  EXPECT_EQ(engine.Display(), "Error");
  for (const char key : std::string("1+2=nb%")) engine.Press(key);
  EXPECT_EQ(engine.Display(), "Error");
  engine.Press('c');
  EXPECT_EQ(engine.Display(), "0");
}

TEST(Engine, LongNumbers_StopAtTwelveDigits) {
  Engine engine;
  for (int i = 0; i < 50; ++i) engine.Press('9');
  EXPECT_EQ(engine.Display().size(), 12u);
  for (int i = 0; i < 200; ++i) {
    engine.Press('*');
    engine.Press('9');
    engine.Press('9');
  }
  engine.Press('=');
  EXPECT_EQ(engine.Display(), "Error");
}

// The label that shows the number, by what it says: the second child of the first control.
std::string Shown(const Form& form) {
  return form.children[0]->children[1]->text;
}

Control& ButtonOf(const Form& form, char key) {
  for (Control* child : form.children)
    if (child->tag == key) return *child;
  throw std::runtime_error("no such button");
}

TEST(Calculator, Clicks_Calculate) {
  CalcForm form;
  test::RunForm(form, false, [&] {
    for (const char key : std::string("12*3=")) test::Click(ButtonOf(form, key));
    EXPECT_EQ(Shown(form), "36");
  });
}

TEST(Calculator, Keys_Calculate) {
  CalcForm form;
  test::RunForm(form, false, [&] {
    for (const auto& [key, modifiers] : {std::pair{Qt::Key_7, Qt::NoModifier},
                                         {Qt::Key_Asterisk, Qt::ShiftModifier},
                                         {Qt::Key_6, Qt::NoModifier},
                                         {Qt::Key_Return, Qt::NoModifier}})
      test::Key(form, key, modifiers);
    EXPECT_EQ(Shown(form), "42");
    test::Key(form, Qt::Key_5);
    test::Key(form, Qt::Key_5);
    test::Key(form, Qt::Key_Backspace);
    EXPECT_EQ(Shown(form), "5");
    test::Key(form, Qt::Key_Escape);
    EXPECT_EQ(Shown(form), "0");
  });
}

TEST(Calculator, LightAndDark_EveryCaptionCanBeRead) {
  const QPalette light = QApplication::palette();
  for (const bool isDark : {false, true}) {
    QApplication::setPalette(isDark ? test::DarkPalette() : light);
    CalcForm form;
    test::RunForm(form, false, [&] {
      for (const char key : std::string("12.5*8=1024/3=250+15%")) test::Click(ButtonOf(form, key));
      EXPECT_EQ(Shown(form), "37.5");
      EXPECT_EQ(test::UnreadableCaptions(form), std::vector<std::string>());
      EXPECT_EQ(qGray(test::GroundOf(test::Pixels(form))) < 128, isDark);
      const QString scale = qEnvironmentVariable("QT_SCALE_FACTOR", "1");
      test::Shot(form, (isDark ? "calculator-dark-" : "calculator-light-") + scale.toStdString());
    });
  }
  QApplication::setPalette(light);
}

}  // namespace
