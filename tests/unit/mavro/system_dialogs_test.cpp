#include "SystemDialogs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ScriptedDialogs.h"

namespace mavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Dialogs, Message_WithoutWindows_IsPrintedWithItsTitle) {
  testing::internal::CaptureStderr();
  Dialogs().message("Pipe read error", "Compiler error", cOkOnly | cErrorIcon);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Compiler error: Pipe read error\n");
}

TEST(Dialogs, Message_WithoutWindows_IsAnsweredHarmlessly) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(Dialogs().message("", "", cOkOnly), Answer::cOk);
  EXPECT_EQ(Dialogs().message("", "", cYesNo), Answer::cNo);
  EXPECT_EQ(Dialogs().message("", "", cYesNoCancel), Answer::cCancel);
  EXPECT_EQ(Dialogs().message("", "", cYesNo | cErrorIcon), Answer::cNo);
  testing::internal::GetCapturedStderr();
}

TEST(Dialogs, Choosing_WithoutWindows_IsCancelled) {
  EXPECT_THAT(Dialogs().chooseFiles(FileQuestion{}), IsEmpty());
  EXPECT_EQ(Dialogs().chooseFolder("Folder", "/tmp"), "");
  Color color;
  EXPECT_FALSE(Dialogs().chooseColor("Colour", color));
  Dialogs().beep();
}

TEST(Information, Text_IsShownUnderItsTitle) {
  test::ScriptedDialogs dialogs;
  Information("Saved");
  EXPECT_THAT(dialogs.texts, ElementsAre("Information: Saved"));
  EXPECT_THAT(dialogs.flags, ElementsAre(cOkOnly));
}

TEST(Confirm, WithoutCancel_AsksYesOrNo) {
  test::ScriptedDialogs dialogs;
  dialogs.answers = {Answer::cYes, Answer::cNo};
  EXPECT_TRUE(Confirm("Save?"));
  EXPECT_FALSE(Confirm("Sure?"));
  EXPECT_THAT(dialogs.texts, ElementsAre("Confirmation: Save?", "Confirmation: Sure?"));
  EXPECT_THAT(dialogs.flags, ElementsAre(cYesNo, cYesNo));
}

TEST(ConfirmLoss, AsksWithNoForEnter) {
  test::ScriptedDialogs dialogs;
  dialogs.answers = {Answer::cYes, Answer::cNo};
  EXPECT_TRUE(ConfirmLoss("Overwrite?"));
  EXPECT_FALSE(ConfirmLoss("Overwrite?"));
  EXPECT_EQ(dialogs.texts.at(0), "Confirmation: Overwrite?");
  EXPECT_EQ(dialogs.flags.at(0), cYesNo | cDefaultNo);
}

TEST(Confirm, WithCancel_TellsItFromNo) {
  test::ScriptedDialogs dialogs;
  dialogs.answers = {Answer::cCancel, Answer::cNo, Answer::cYes};
  bool cancelled = false;
  EXPECT_FALSE(Confirm("Save?", &cancelled));
  EXPECT_TRUE(cancelled);
  EXPECT_FALSE(Confirm("Save?", &cancelled));
  EXPECT_FALSE(cancelled);
  cancelled = true;
  EXPECT_TRUE(Confirm("Save?", &cancelled));
  EXPECT_FALSE(cancelled);
  EXPECT_THAT(dialogs.flags, ElementsAre(cYesNoCancel, cYesNoCancel, cYesNoCancel));
}

TEST(Beep, GoesThroughTheTable) {
  test::ScriptedDialogs dialogs;
  Beep();
  EXPECT_EQ(dialogs.beeps, 1);
}

}  // namespace
}  // namespace mavro
