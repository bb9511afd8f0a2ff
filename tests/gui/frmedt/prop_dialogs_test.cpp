// A word of the toolkit, and a field of the registry's rows.

#include "frmedt/CtrlReg.h"
#include "frmedt/FontPropDlg.h"
#include "frmedt/FormData.h"
#include "frmedt/ItemsDlg.h"
#include "frmedt/PropClass.h"
#include "frmedt/PropEditors.h"
#include "frmedt/SelectDlg.h"
#include "frmedt/ToolBarEditor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "IdeDriver.h"
#include "Looks.h"

namespace zendry {
namespace {

using testing::IsEmpty;

// Runs `ask`, which shows the dialog, and the script once it is up.
template <class Dialog>
auto Answer(Dialog& dialog, const std::function<void()>& script, const auto& ask) {
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    if (mavro::activeForm != &dialog) return;
    if (!static_cast<mavro::Form::Impl*>(dialog.impl)->firstShowDone) return;
    poll.stop();
    script();
  });
  poll.start(2);
  return ask();
}

class PropDialogs : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override {
    if (GetParam()) QApplication::setPalette(test::DarkPalette());
  }
  void TearDown() override { QApplication::setPalette(light); }
  void Look(const mavro::Form& form, const std::string& name) const {
    EXPECT_THAT(test::UnreadableCaptions(form), IsEmpty());
    test::Shot(form, name + (GetParam() ? "-dark" : ""));
  }

  const QPalette light = QApplication::palette();
};

INSTANTIATE_TEST_SUITE_P(Looks, PropDialogs, testing::Bool(),
                         [](const auto& look) { return look.param ? "dark" : "light"; });

struct FontCase {
  const char* text;
  int size, flags;
  const char* answer;
};

TEST_P(PropDialogs, Font_ShowsAndWritesSizeAndStyle) {
  const FontCase cases[] = {
      {"Font(10)", 10, 0, "Font(10)"},
      {"Font(11, Font::cBold)", 11, 1, "Font(11, Font::cBold)"},
      {"Font(9, Font::cItalic)", 9, 2, "Font(9, Font::cItalic)"},
      {"Font(8, Font::cBold|Font::cItalic)", 8, 3, "Font(8, Font::cBold|Font::cItalic)"},
      {"Font(\"Arial\", 10)", 10, 0, "Font(10)"},  // the typeface is lost
      {"<default>", 0, 0, "Font(0)"}};
  for (const FontCase& one : cases) {
    FontPropDlg dialog(one.text);
    std::string font = one.text;
    EXPECT_TRUE(Answer(
        dialog,
        [&] {
          EXPECT_EQ(dialog.sizeEdit.value, one.size) << one.text;
          EXPECT_EQ(dialog.styleGroup.itemFlags, one.flags) << one.text;
          Look(dialog, "font-dialog");
          test::Click(dialog.okButton);
        },
        [&] { return dialog.Ask(font); }));
    EXPECT_EQ(font, one.answer);
  }
}

TEST_P(PropDialogs, Font_ATypedNumberIsTheSize) {
  FontPropDlg dialog("Font(10, Font::cBold)");
  std::string font;
  EXPECT_TRUE(Answer(
      dialog,
      [&] {
        QTest::keyClicks(QApplication::focusWidget(), "18");
        test::Key(dialog, Qt::Key_Return);
      },
      [&] { return dialog.Ask(font); }));
  EXPECT_EQ(font, "Font(18, Font::cBold)");
}

TEST_P(PropDialogs, Font_TheClearButtonEmpties_OtherEndsKeep) {
  for (const bool clears : {true, false}) {
    FontPropDlg dialog("Font(10)");
    std::string font = "Font(10)";
    EXPECT_EQ(Answer(
                  dialog,
                  [&] {
                    if (clears)
                      test::Click(dialog.clearButton);
                    else
                      test::Key(dialog, Qt::Key_Escape);
                  },
                  [&] { return dialog.Ask(font); }),
              clears);
    EXPECT_EQ(font, clears ? "" : "Font(10)");
  }
  FontPropDlg dialog("Font(10)");
  std::string font = "Font(10)";
  EXPECT_FALSE(Answer(
      dialog, [&] { dialog.Close(); }, [&] { return dialog.Ask(font); }));
  EXPECT_EQ(font, "Font(10)") << "the close box";
}

TEST_P(PropDialogs, Items_AreTheLinesOfAMemo) {
  ItemsDlg dialog;
  std::string items = "one\r\ntwo\r\n";
  EXPECT_TRUE(Answer(
      dialog,
      [&] {
        EXPECT_EQ(dialog.linesMemo.text, "one\r\ntwo\r\n");
        test::Key(dialog, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), "three \")");
        Look(dialog, "items-dialog");
        test::Click(dialog.okButton);
      },
      [&] { return dialog.Ask(items); }));
  EXPECT_EQ(items, "one\r\ntwo\r\nthree \")\r\n");
  EXPECT_FALSE(Answer(
      dialog,
      [&] {
        dialog.linesMemo.text = "";
        test::Click(dialog.cancelButton);
      },
      [&] { return dialog.Ask(items); }));
  EXPECT_EQ(items, "one\r\ntwo\r\nthree \")\r\n");
}

TEST(LinesAsItems, AnyLineEnds_AndEmptyLinesStay) {
  EXPECT_EQ(LinesAsItems(""), "");
  EXPECT_EQ(LinesAsItems("a"), "a\r\n");
  EXPECT_EQ(LinesAsItems("a\nb\rc\r\n"), "a\r\nb\r\nc\r\n");
  EXPECT_EQ(LinesAsItems("a\n\nb"), "a\r\n\r\nb\r\n");
  EXPECT_EQ(LinesAsItems("\r\n"), "\r\n");
}

TEST_P(PropDialogs, ToolBarItems_AreAddedByButtons) {
  ToolBarEditor dialog;
  std::string items = "Icons::icoNew, \"New\"\r\n";
  EXPECT_TRUE(Answer(
      dialog,
      [&] {
        EXPECT_EQ(dialog.iconBox.items[0], "cNone");
        EXPECT_EQ(dialog.iconBox.items[mavro::Icons::icoOpen], "icoOpen");
        test::WidgetOf(dialog.iconBox)->setFocus();
        test::Key(dialog, Qt::Key_Home);
        test::Key(dialog, Qt::Key_Down);
        test::Key(dialog, Qt::Key_Down);
        EXPECT_EQ(dialog.addButton.icon, mavro::Icons::icoOpen);
        Look(dialog, "tool-bar-editor");
        test::Click(dialog.addButton);
        test::Click(dialog.separatorButton);
        test::Click(dialog.acceptButton);
      },
      [&] { return dialog.Ask(items); }));
  EXPECT_EQ(items, "Icons::icoNew, \"New\"\r\nIcons::icoOpen, \"Open\"\r\n_separator_\r\n");
  EXPECT_FALSE(Answer(
      dialog, [&] { test::Key(dialog, Qt::Key_Escape); }, [&] { return dialog.Ask(items); }));
}

TEST_P(PropDialogs, ToolBarItems_TheIconOfTheButtonIsTheOneThatIsAdded) {
  ToolBarEditor dialog;
  std::string items;
  EXPECT_TRUE(Answer(
      dialog,
      [&] {
        EXPECT_EQ(dialog.iconBox.text, "icoNew");
        EXPECT_EQ(dialog.addButton.icon, mavro::Icons::icoNew);
        test::Click(dialog.addButton);
        test::Click(dialog.acceptButton);
      },
      [&] { return dialog.Ask(items); }));
  EXPECT_EQ(items, "Icons::icoNew, \"New\"\r\n");
}

TEST_P(PropDialogs, Select_AnswersTheRow) {
  const std::vector<std::string> names = {"FirstForm", "SecondForm"};
  SelectDlg first(names);
  EXPECT_EQ(Answer(
                first,
                [&] {
                  Look(first, "select-form");
                  test::Key(first, Qt::Key_Return);
                },
                [&] { return first.Choose(); }),
            0);
  SelectDlg second(names);
  EXPECT_EQ(Answer(
                second,
                [&] {
                  test::Key(second, Qt::Key_Down);
                  test::Click(second.okButton, QPoint(10, 10));
                },
                [&] { return second.Choose(); }),
            1);
  SelectDlg third(names);
  EXPECT_EQ(Answer(
                third, [&] { test::Key(third, Qt::Key_Escape); }, [&] { return third.Choose(); }),
            -1);
}

TEST(EditValue, WithoutADialog_TheTextIsTaken) {
  const PropDef row = {"width", cWidthKind, nullptr, &thePropInteger};
  PropValue value{&row, "1"};
  PropContext context;
  context.prop = &value;
  context.text = "22";
  EXPECT_TRUE(EditValue(context));
  EXPECT_EQ(value.value, "22");
}

}  // namespace
}  // namespace zendry
