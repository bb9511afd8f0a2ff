#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "EditorFixture.h"
#include "Looks.h"
#include "debug/BreakEditor.h"
#include "debug/DebugDlg.h"
#include "debug/ProgParamsDlg.h"

// The debugger's small dialogs, with no session.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::IsEmpty;

class DebugDialogs : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override {
    if (GetParam()) QApplication::setPalette(test::DarkPalette());
  }
  void TearDown() override { QApplication::setPalette(light); }
  void Keep(const mavro::Form& form, const std::string& name) const {
    test::Shot(form, name + (GetParam() ? "-dark" : ""));
  }

  const QPalette light = QApplication::palette();
  Debugger debugger;
};

TEST_P(DebugDialogs, Console_KeepsItsCommandsAndStaysOpen) {
  for (const bool isSecond : {false, true}) {
    DebugDlg dialog(debugger);
    test::RunForm(dialog, true, [&] {
      EXPECT_EQ(dialog.label.text.Get(), "Debuger command:");
      EXPECT_EQ(dialog.execute.text.Get(), "Execute");
      EXPECT_TRUE(dialog.command.IsFocused());
      EXPECT_THAT(test::UnreadableCaptions(dialog), IsEmpty());
      const int known = dialog.command.items.GetCount();
      QTest::keyClicks(QApplication::focusWidget(), "info threads");
      test::Key(dialog, Qt::Key_Return);
      ASSERT_TRUE(dialog.impl->hwnd) << "Enter executes";
      EXPECT_EQ(dialog.command.items.IndexOf("info threads"), 0);
      EXPECT_TRUE(!isSecond || dialog.command.items.GetCount() == known) << "it has that one";
      dialog.AppendLine("\x1b[31mred");
      EXPECT_EQ(dialog.output.text.Get(), "<1b>[31mred\n");
      Keep(dialog, "ide-console");
      dialog.command.text = "";
      test::Click(dialog.execute);
      EXPECT_EQ(dialog.output.text.Get(), "");
      test::Key(dialog, Qt::Key_Escape);
      EXPECT_FALSE(dialog.impl->hwnd);
    });
    EXPECT_EQ(dialog.result, mavro::Form::cCancel);
  }
}

TEST_P(DebugDialogs, Parameters_AreAcceptedOrNot) {
  ProgParamsDlg dialog("-a \"b c\"");
  bool accepted = false;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    if (mavro::activeForm != &dialog) return;
    if (!static_cast<mavro::Form::Impl*>(dialog.impl)->firstShowDone) return;
    poll.stop();
    EXPECT_THAT(test::UnreadableCaptions(dialog), IsEmpty());
    Keep(dialog, "ide-parameters");
    QTest::keyClicks(QApplication::focusWidget(), "--new");
    test::Key(dialog, Qt::Key_Return);
  });
  poll.start(2);
  accepted = dialog.Ask();
  EXPECT_TRUE(accepted);
  EXPECT_EQ(dialog.Accepted(), "--new") << "the old text was selected";
  EXPECT_THAT(debugger.breakpoints.entries, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Looks, DebugDialogs, testing::Bool(),
                         [](const auto& info) { return info.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace zendry
