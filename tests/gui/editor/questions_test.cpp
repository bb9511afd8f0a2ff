#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QApplication>
#include <filesystem>

#include "EditorFixture.h"
#include "IfKilled.h"

// Questions about unsaved text and about files that others have changed: one at a time, and no key
// that closes one may lose a text.

namespace zendry {
namespace {

using mavro::Answer;
using test::IdeDriver;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class IdeQuestions : public test::EditorFixture {
 protected:
  // As when a message box opens above the main window.
  static void Activate(bool on) {
    QEvent event(on ? QEvent::WindowActivate : QEvent::WindowDeactivate);
    QApplication::sendEvent(test::WidgetOf(*theMainForm), &event);
  }
  void WriteElsewhere(const std::string& text) { ide.files.Write("a.cpp", text); }
};

TEST_F(IdeQuestions, ClosingATab_Cancelled_KeepsTextTabAndRescueCopy) {
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    Type("mine ");
    ide.dialogs.answers = {Answer::cCancel};
    IdeDriver::Press(Qt::Key_F4, Qt::ControlModifier);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(EndsWith("was modified!\tSave?")));
    EXPECT_EQ(ide.dialogs.flags.at(0), mavro::cYesNoCancel);
    EXPECT_EQ(Front().GetText(), "mine old\n");
    EXPECT_TRUE(Front().dirty);
    EXPECT_EQ(ide.files.Read("a.cpp"), "old\n");
  });
}

TEST_F(IdeQuestions, ClosingATab_YesSavesAndNoDrops) {
  ide.Run({}, [&] {
    for (const Answer answer : {Answer::cYes, Answer::cNo}) {
      Open("a.cpp", "old\n");
      Type("mine ");
      ide.dialogs.answers = {answer};
      EXPECT_TRUE(Tabs().CloseTab(0, EditTabs::Unsaved::cAsk));
      EXPECT_EQ(ide.files.Read("a.cpp"), answer == Answer::cYes ? "mine old\n" : "old\n");
      EXPECT_EQ(Tabs().TabCount(), 0);
    }
  });
}

TEST_F(IdeQuestions, ATextWithoutAName_IsAskedAboutByOne) {
  ide.Run({}, [&] {
    Tabs().NewTab("");
    Type("mine");
    EXPECT_FALSE(Tabs().CloseTab(0, EditTabs::Unsaved::cAsk));
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("File:   Noname\n")));
  });
}

TEST_F(IdeQuestions, ClosingAll_CancelledAtTheSecond_ClosesNone) {
  ide.Run({}, [&] {
    Open("a.cpp", "a\n");
    Type("x");
    Open("b.cpp", "b\n");
    Type("y");
    ide.dialogs.answers = {Answer::cNo, Answer::cCancel};
    EXPECT_FALSE(Tabs().CloseAll());
    EXPECT_EQ(Tabs().TabCount(), 2);
    EXPECT_EQ(Tabs().GetTab(0)->editor->GetText(), "xa\n");
    EXPECT_TRUE(Tabs().GetTab(0)->editor->dirty);
  });
}

TEST_F(IdeQuestions, ClosingTheWindow_Cancelled_KeepsItAndItsTexts) {
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    Type("mine ");
    ide.dialogs.answers = {Answer::cCancel};
    theMainForm->Close();
    EXPECT_EQ(theMainForm->state, mavro::cShown);
    EXPECT_EQ(Front().GetText(), "mine old\n");
  });
}

TEST_F(IdeQuestions, ClosingAProject_CancelledAtItsOwnQuestion_KeepsEveryTab) {
  ide.Run({ide.Project({{"a.cpp", ""}})}, [&] {
    Open("a.cpp", "old\n");
    Type("mine ");
    theProject.modified = true;
    ide.dialogs.answers = {Answer::cNo, Answer::cCancel};
    EXPECT_FALSE(theFileActs.CloseProject());
    EXPECT_THAT(ide.dialogs.texts,
                ElementsAre(HasSubstr("was modified!"), HasSubstr("Project file was not saved!")));
    EXPECT_TRUE(theProject.isOpen);
    ASSERT_EQ(Tabs().TabCount(), 1);
    EXPECT_EQ(Front().GetText(), "mine old\n");
    ide.dialogs.answers = {Answer::cNo, Answer::cNo};
  });
}

TEST_F(IdeQuestions, SaveOfAFileChangedElsewhere_AsksOnceWhileTheWindowLosesItsActivity) {
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    Type("mine ");
    WriteElsewhere("from elsewhere\n");
    ide.dialogs.onMessage = [] {
      Activate(false);
      Activate(true);
    };
    IdeDriver::Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("Replace its changes?")));
    EXPECT_EQ(ide.dialogs.flags.at(0), mavro::cYesNo | mavro::cDefaultNo);
    ide.dialogs.onMessage = nullptr;
    Activate(false);
    Activate(true);
    EXPECT_THAT(ide.dialogs.texts, SizeIs(1)) << "asked about the same change again";
    EXPECT_EQ(Front().GetText(), "mine old\n");
    EXPECT_EQ(ide.files.Read("a.cpp"), "from elsewhere\n");
  });
}

TEST_F(IdeQuestions, LosingTheActivity_AsksNothing) {
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    WriteElsewhere("from elsewhere\n");
    Activate(false);
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    Activate(true);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(EndsWith("Load it again?")));
  });
}

TEST_F(IdeQuestions, AfterANoToLoading_EachSaveAsksBeforeItReplaces) {
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    Type("mine ");
    WriteElsewhere("from elsewhere\n");
    Tabs().CheckDisk();
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("Load it again and lose your changes?")));
    EXPECT_EQ(ide.dialogs.flags.at(0), mavro::cYesNo | mavro::cDefaultNo);
    for (size_t asked = 2; asked <= 3; ++asked) {
      EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
      EXPECT_THAT(ide.dialogs.texts, SizeIs(asked));
      EXPECT_THAT(ide.dialogs.texts.back(), HasSubstr("Replace its changes?"));
      EXPECT_EQ(ide.files.Read("a.cpp"), "from elsewhere\n");
    }
  });
}

TEST_F(IdeQuestions, AFileThatIsGone_IsSaidOnce) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "old\n");
    std::filesystem::remove(editor.fileName);
    Tabs().CheckDisk();
    EXPECT_EQ(IdeDriver::Status(), "No longer there, its text is here only: " + editor.fileName);
    theMainForm->SetStatus("", "");
    Tabs().CheckDisk();
    EXPECT_EQ(IdeDriver::Status(), "Ready");
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
  });
}

TEST_F(IdeQuestions, AnotherChangeAfterANo_IsAskedAbout) {
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    for (size_t change = 1; change <= 2; ++change) {
      WriteElsewhere(std::string(change, 'x') + "\n");
      Tabs().CheckDisk();
      Tabs().CheckDisk();
      EXPECT_THAT(ide.dialogs.texts, SizeIs(change));
    }
  });
}

TEST_F(IdeQuestions, LoadedAgain_IsOneUndoStepAndLeavesACopyUntilTheTabGoes) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "old\n");
    Type("mine ");
    WriteElsewhere("from elsewhere\n");
    ide.dialogs.answers = {Answer::cYes};
    Tabs().CheckDisk();
    EXPECT_EQ(editor.GetText(), "from elsewhere\n");
    EXPECT_FALSE(editor.dirty);
    ASSERT_THAT(test::TextsIfKilled(), SizeIs(1));
    EXPECT_EQ(test::TextsIfKilled()[0].content, "mine old\n");
    IdeDriver::Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor.GetText(), "mine old\n");
    EXPECT_TRUE(editor.dirty);
    Tabs().CloseTab(0, EditTabs::Unsaved::cDrop);
    EXPECT_THAT(test::TextsIfKilled(), IsEmpty());
  });
}

TEST_F(IdeQuestions, LoadedAgainAndSaved_LeavesNoCopy) {
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    Type("mine ");
    WriteElsewhere("from elsewhere\n");
    ide.dialogs.answers = {Answer::cYes};
    Tabs().CheckDisk();
    Type("more ");
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_THAT(test::TextsIfKilled(), IsEmpty());
  });
}

TEST_F(IdeQuestions, LoadedAgain_KeepsCaretAndBookmarksOfWhatStays) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "one\ntwo\nthree\nfour\n");
    editor.ToggleBookmark(2);
    editor.goToLine(3);
    WriteElsewhere("one\ntwo and more\nthree\nfour\n");
    ide.dialogs.answers = {Answer::cYes};
    Tabs().CheckDisk();
    EXPECT_EQ(editor.CaretLine(), 3);
    EXPECT_NE(editor.Send(mavro::SCI_MARKERGET, 2), 0);
    EXPECT_EQ(editor.Send(mavro::SCI_MARKERGET, 1), 0);
  });
}

// The text of another program has the size and the time of the text that was read.
TEST_F(IdeQuestions, ChangedWithItsTimePutBack_CountsAsChanged) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "old\n");
    const auto time = std::filesystem::last_write_time(editor.fileName);
    WriteElsewhere("new\n");
    std::filesystem::last_write_time(editor.fileName, time);
    EXPECT_TRUE(editor.ChangeOnDisk());
  });
}

TEST_F(IdeQuestions, OnlyTheModeChanged_IsNoChangeOfTheText) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "old\n");
    chmod(editor.fileName.c_str(), 0600);
    EXPECT_FALSE(editor.ChangeOnDisk());
  });
}

}  // namespace
}  // namespace zendry
