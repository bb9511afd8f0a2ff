#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <random>

#include "BytesRead.h"
#include "EditorFixture.h"
#include "IfKilled.h"
#include "Privileges.h"

// Unsaved text: the copies that are kept while it is edited, how they come back, and the files that
// a save may replace.

namespace zendry {
namespace {

namespace fs = std::filesystem;
using test::IdeDriver;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int cChange = 5000;  // more than a small copy has room for steps

class IdeSaving : public test::EditorFixture {
 protected:
  // Has what is due written as the clock would, five seconds later.
  static void Keep(CppEditor& editor) {
    editor.onUpdateUI();
    editor.TickRescue(TextRescue::Clock::now() + TextRescue::cLongestBehind);
  }
  // The text offered after a kill at this moment, or "nothing".
  static std::string IfKilled() {
    const auto found = test::TextsIfKilled();
    return found.empty() ? "nothing" : found.size() == 1 ? found[0].content : "more than one";
  }
  bool HasSteps() const {
    for (const auto& entry : fs::directory_iterator(ide.home.Path(".zendry/rescue")))
      if (entry.path().string().ends_with("-steps")) return true;
    return false;
  }
  // Leaves copies of the open texts, as if this program had been killed.
  void LeaveAll() {
    const std::string ended = std::to_string(test::EndedProcess());
    const fs::path folder = ide.home.Path(".zendry/rescue");
    std::vector<fs::path> copies;
    for (const auto& entry : fs::directory_iterator(folder)) copies.push_back(entry.path());
    for (const fs::path& copy : copies) {
      std::string name = copy.filename();
      const std::string own = "-" + std::to_string(getpid()) + ".";
      name.replace(name.find(own), own.size(), "-" + ended + ".");
      fs::copy_file(copy, folder / name);
    }
  }
  size_t RescueFiles() const {
    const fs::path folder = ide.home.Path(".zendry/rescue");
    return fs::exists(folder)
               ? static_cast<size_t>(std::distance(fs::directory_iterator(folder), {}))
               : 0;
  }
};

std::string Lines(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += "int line" + std::to_string(i) + " = 0;\n";
  return text;
}

// Each way in which a text changes.
struct Edit {
  const char* name;
  void (*act)(CppEditor& editor);
};

const Edit cEdits[] = {
    {"type", [](CppEditor&) { QTest::keyClicks(QApplication::focusWidget(), "if (a) {"); }},
    {"return", [](CppEditor&) { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); }},
    {"undo", [](CppEditor& e) { e.Send(mavro::SCI_UNDO); }},
    {"redo", [](CppEditor& e) { e.Send(mavro::SCI_REDO); }},
    {"overtype",
     [](CppEditor& e) {
       e.Send(mavro::SCI_EDITTOGGLEOVERTYPE);
       QTest::keyClicks(QApplication::focusWidget(), "xy");
       e.Send(mavro::SCI_EDITTOGGLEOVERTYPE);
     }},
    {"replace",
     [](CppEditor& e) {
       e.Select(3, 40);
       e.ReplaceSelection(std::string("a\0b", 3));
     }},
    {"backspace and delete",
     [](CppEditor&) {
       QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
       QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
     }},
    {"duplicate lines", [](CppEditor& e) { e.Send(mavro::SCI_LINEDUPLICATE); }},
    {"swap lines", [](CppEditor& e) { e.Send(mavro::SCI_LINETRANSPOSE); }},
    {"indent", [](CppEditor& e) { e.Select(0, 60), e.Send(mavro::SCI_TAB); }},
    {"upper case", [](CppEditor& e) { e.Select(0, 60), e.Send(mavro::SCI_UPPERCASE); }},
    {"macro",
     [](CppEditor& e) {
       e.OnCommand(mavro::cSciRecordMacro);
       QTest::keyClicks(QApplication::focusWidget(), "m;n");
       e.OnCommand(mavro::cSciRecordMacro);
       e.OnCommand(mavro::cSciPlayMacro);
     }},
    {"line ends", [](CppEditor& e) { e.Send(mavro::SCI_CONVERTEOLS, mavro::SC_EOL_CRLF); }},
    {"both ends of the text",
     [](CppEditor& e) {
       e.Send(mavro::SCI_APPENDTEXT, 3, "end");
       e.Send(mavro::SCI_INSERTTEXT, 0, "start");
     }},
    {"letters beyond ASCII",
     [](CppEditor& e) { e.Send(mavro::SCI_INSERTTEXT, 7, "\xC3\xA4\xE2\x82\xAC"); }},
    {"set text", [](CppEditor& e) { e.Send(mavro::SCI_SETTEXT, 0, "all of it is new\n"); }},
    {"clear", [](CppEditor& e) { e.Send(mavro::SCI_CLEARALL); }},
    {"undo all",
     [](CppEditor& e) {
       for (int i = 0; i < 4; ++i) e.Send(mavro::SCI_UNDO);
     }},
};

TEST_F(IdeSaving, EachWayOfEditing_IsKeptByteForByte) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", Lines(cChange));
    Type("x");
    Keep(editor);
    for (const Edit& edit : cEdits) {
      edit.act(editor);
      Keep(editor);
      ASSERT_TRUE(editor.dirty) << edit.name;
      EXPECT_TRUE(IfKilled() == editor.GetText()) << edit.name;
    }
    EXPECT_TRUE(HasSteps());
  });
}

TEST_F(IdeSaving, RandomEditing_IsKeptByteForByte) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", Lines(cChange));
    Type("x");
    std::mt19937 random(7);
    const size_t kinds = std::size(cEdits) - 3;  // without those that take all of it away
    for (int round = 0; round < 60; ++round) {
      for (unsigned i = random() % 6; i > 0; --i) {
        const int place = static_cast<int>(random() % static_cast<unsigned>(editor.Length()));
        if (random() % 3 == 0) editor.Select(place, place);
        cEdits[random() % kinds].act(editor);
      }
      Keep(editor);
      ASSERT_TRUE(!editor.dirty || IfKilled() == editor.GetText()) << round;
    }
  });
}

TEST_F(IdeSaving, TextReadAgain_BeginsWithoutACopy_AndIsKeptFromThere) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", Lines(cChange));
    Type("x");
    Keep(editor);
    ide.files.Write("a.cpp", "other\n" + Lines(cChange));
    ASSERT_TRUE(editor.Load(editor.fileName).Ok());
    Keep(editor);
    EXPECT_EQ(IfKilled(), "nothing");
    Type("y");
    Keep(editor);
    EXPECT_TRUE(IfKilled() == editor.GetText());
  });
}

TEST_F(IdeSaving, UndoneUpToTheSave_LeavesNothing_AndRedoIsKeptAgain) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "text\n");
    Type("x");
    Keep(editor);
    editor.Send(mavro::SCI_UNDO);
    EXPECT_EQ(IfKilled(), "nothing");
    editor.Send(mavro::SCI_REDO);
    Keep(editor);
    EXPECT_EQ(IfKilled(), "xtext\n");
  });
}

TEST_F(IdeSaving, CleanEnd_LeavesNeitherCopyNorSteps) {
  ide.dialogs.answers = {mavro::Answer::cNo};
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", Lines(cChange));
    for (int i = 0; i < 3; ++i) {
      Type("x");
      Keep(editor);
    }
    EXPECT_TRUE(HasSteps());
  });
  EXPECT_EQ(RescueFiles(), 0u);
}

// --- Coming back.

struct EncodedFile {
  const char* name;
  std::string bytes;    // of the file
  std::string changed;  // with "x" typed in front
};

std::vector<EncodedFile> EncodedFiles() {
  const auto bytes = [](const char* text, size_t length) { return std::string(text, length); };
  return {
      {"UTF-16 LE", bytes("\xFF\xFE\xE4\0\n\0", 6), bytes("\xFF\xFEx\0\xE4\0\n\0", 8)},
      {"UTF-16 BE", bytes("\xFE\xFF\0\xE4\0\n", 6), bytes("\xFE\xFF\0x\0\xE4\0\n", 8)},
      {"UTF-16 of odd length", bytes("\xFF\xFE\xE4\0\n", 5), bytes("\xFF\xFEx\0\xE4\0\n", 7)},
      {"lone surrogate", bytes("\xFF\xFE\0\xD8\n\0", 6), bytes("\xFF\xFEx\0\0\xD8\n\0", 8)},
      {"UTF-8 with a mark", "\xEF\xBB\xBF\xC3\xA4\n", "\xEF\xBB\xBFx\xC3\xA4\n"},
      {"UTF-8", "\xC3\xA4\n", "x\xC3\xA4\n"},
      {"8 bit", "\xE4\n", "x\xE4\n"},
      {"NUL and mixed line ends", bytes("\0\r\n\n\r", 5), bytes("x\0\r\n\n\r", 6)},
  };
}

TEST_F(IdeSaving, KilledAndTakenOver_EachEncoding_IsSavedInItsOwn) {
  for (const EncodedFile& file : EncodedFiles()) {
    for (const bool gone : {false, true}) {
      ide.dialogs.answers = {mavro::Answer::cNo};
      ide.Run({}, [&] {
        CppEditor& editor = Open("a.cpp", file.bytes);
        editor.Send(mavro::SCI_INSERTTEXT, 0, "x");
        Keep(editor);
        LeaveAll();
      });
      if (gone) fs::remove(ide.files.Path("a.cpp"));
      ide.dialogs.answers = {mavro::Answer::cYes};
      ide.Run({}, [&] {
        EXPECT_TRUE(Front().dirty) << file.name;
        EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn)) << file.name;
        EXPECT_EQ(ide.files.Read("a.cpp"), file.changed) << file.name << gone;
        EXPECT_EQ(RescueFiles(), 0u) << file.name;
      });
    }
  }
}

TEST_F(IdeSaving, TakenOver_FileIsNewerOnDisk_IsAskedAboutLikeAnyChangeByOthers) {
  ide.dialogs.answers = {mavro::Answer::cNo};
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    Type("mine ");
    Keep(Front());
    LeaveAll();
  });
  ide.files.Write("a.cpp", "newer, by another program\n");
  ide.dialogs.answers = {mavro::Answer::cYes, mavro::Answer::cYes};
  ide.Run({}, [&] {
    Tabs().CheckDisk();  // if the window's coming to the front hasn't
    EXPECT_THAT(ide.dialogs.texts.back(), HasSubstr("Load it again and lose your changes?"));
    EXPECT_EQ(Front().GetText(), "newer, by another program\n");
    EXPECT_EQ(IfKilled(), "mine old\n");  // as long as undoing can bring it back
  });
}

TEST_F(IdeSaving, TakenOver_FileIsNewerOnDisk_SaveAsksBeforeItIsReplaced) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "newer, by another program\n");
    RescuedText rescued;
    rescued.path = editor.fileName;
    rescued.content = "mine\n";
    rescued.facts.disk = {true, 1, 2, 3, 4};
    EXPECT_TRUE(editor.TakeRescued(rescued));
    EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cOwn));  // answered No
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("was changed by another program!")));
    EXPECT_EQ(ide.files.Read("a.cpp"), "newer, by another program\n");
    ide.dialogs.answers = {mavro::Answer::cYes};
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_EQ(ide.files.Read("a.cpp"), "mine\n");
  });
}

TEST_F(IdeSaving, TakenOver_EncodingIsDamaged_TextIsSavedAsUtf8) {
  for (const char* number : {"255", "-1", "6"}) {
    const std::string path = ide.files.Write("a.cpp", "old\n");
    ide.LeaveRescued("text", path,
                     "zendry-text-1 1 " + std::string(number) + " -1 0 0 0 0 0 " +
                         std::string(1, '\0') + "caf\u00E9\n");
    ide.dialogs.answers = {mavro::Answer::cYes};
    ide.Run({}, [&] {
      ASSERT_NE(Tabs().Active(), nullptr) << number;
      EXPECT_EQ(Front().GetText(), "caf\u00E9\n") << number;
      ide.dialogs.answers = {mavro::Answer::cYes};
      EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn)) << number;
      EXPECT_EQ(ide.files.Read("a.cpp"), "caf\u00E9\n") << number;
    });
  }
}

TEST_F(IdeSaving, TakenOver_FileIsAsItWas_SavesWithoutAQuestion) {
  ide.dialogs.answers = {mavro::Answer::cNo};
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    Type("mine ");
    Keep(Front());
    LeaveAll();
  });
  ide.dialogs.answers = {mavro::Answer::cYes};
  ide.Run({}, [&] {
    ide.dialogs.texts.clear();
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    EXPECT_EQ(ide.files.Read("a.cpp"), "mine old\n");
  });
}

TEST_F(IdeSaving, TwoTextsOfOneFile_ComeBackInATabEach) {
  const std::string path = ide.files.Write("a.cpp", "old\n");
  ide.LeaveRescued("text", path, "first\n");
  ide.LeaveRescued("text", path, "second\n");
  ide.dialogs.answers = {mavro::Answer::cYes, mavro::Answer::cYes};
  ide.Run({}, [&] {
    ASSERT_EQ(Tabs().TabCount(), 2);
    const std::vector<std::string> texts = {Tabs().GetTab(0)->editor->GetText(),
                                            Tabs().GetTab(1)->editor->GetText()};
    EXPECT_THAT(texts, testing::UnorderedElementsAre("first\n", "second\n"));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp*", "Noname*"));
    EXPECT_EQ(Tabs().GetTab(1)->editor->fileName, "") << "one file has one tab";
  });
}

// --- "Save as" that fails.

TEST_F(IdeSaving, SaveAsFails_NewNameStaysUnsaved_AndIsWhatIsRescued) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "old\n");
    Type("mine ");
    Keep(editor);
    const std::string path = ide.files.Path("none/new.cpp");
    ide.dialogs.files = {{path}};
    EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cAsked));
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Error: Error on save file:" + path));
    EXPECT_EQ(editor.fileName, path);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("new.cpp*"));
    Keep(editor);
    ASSERT_THAT(test::TextsIfKilled(), SizeIs(1));
    EXPECT_EQ(test::TextsIfKilled()[0].path, path);
    EXPECT_EQ(test::TextsIfKilled()[0].content, "mine old\n");
    ide.files.Folder("none");
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_THAT(ide.dialogs.texts, SizeIs(1));
    EXPECT_EQ(ide.files.Read("none/new.cpp"), "mine old\n");
    EXPECT_EQ(ide.files.Read("a.cpp"), "old\n");
  });
}

TEST_F(IdeSaving, SaveAsFails_CleanTextBecomesUnsaved) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "old\n");
    ide.dialogs.files = {{ide.files.Path("none/new.cpp")}};
    EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cAsked));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("new.cpp*"));
    Type("x");
    editor.Send(mavro::SCI_UNDO);
    EXPECT_TRUE(editor.dirty) << "no file of that name has this text";
    ide.files.Folder("none");
    Tabs().SaveAll();
    EXPECT_EQ(ide.files.Read("none/new.cpp"), "old\n");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("new.cpp"));
    Tabs().CheckDisk();
    EXPECT_THAT(ide.dialogs.texts, SizeIs(1));
  });
}

// The user has agreed to replace that file as it was then.
TEST_F(IdeSaving, SaveAsOverAFileFails_NextSaveReplacesItUnlessItHasChangedSince) {
  fs::permissions(ide.files.Path(), fs::perms::all);
  for (const bool changed : {false, true}) {
    ide.Run({}, [&] {
      ide.dialogs.texts.clear();
      CppEditor& editor = Open("a.cpp", "old\n");
      Type("mine ");
      const std::string path = ide.files.Write("b.cpp", "theirs\n");
      ASSERT_EQ(chmod(path.c_str(), 0444), 0);
      ide.dialogs.files = {{path}};
      {
        const test::WithoutRights user;
        EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cAsked));
      }
      ASSERT_EQ(chmod(path.c_str(), 0644), 0);
      if (changed) ide.files.Write("b.cpp", "theirs, and newer\n");
      EXPECT_EQ(Tabs().SaveActive(EditTabs::SaveName::cOwn), !changed);  // answered No
      EXPECT_THAT(ide.dialogs.texts, SizeIs(changed ? 2 : 1));
      EXPECT_EQ(ide.files.Read("b.cpp"), changed ? "theirs, and newer\n" : "mine old\n");
      EXPECT_EQ(editor.dirty, changed);
    });
  }
}

// "Changed by another program" must be true.
TEST_F(IdeSaving, StateOfTheFileCantBeTold_NothingIsAskedThenOrLater) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("shut/a.cpp", "old\n");
    fs::permissions(ide.files.Path("shut"), fs::perms::none);
    {
      const test::WithoutRights user;
      Tabs().CheckDisk();
      editor.AcceptDisk();
    }
    fs::permissions(ide.files.Path("shut"), fs::perms::owner_all);
    Tabs().CheckDisk();
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    ide.files.Write("shut/a.cpp", "theirs\n");
    Tabs().CheckDisk();
    EXPECT_THAT(ide.dialogs.texts, SizeIs(1));
  });
}

TEST_F(IdeSaving, SaveFailsInAFolderThatIsShut_ChangeByOthersIsStillSeen) {
  ide.Run({}, [&] {
    Open("shut/a.cpp", "old\n");
    Type("mine ");
    fs::permissions(ide.files.Path("shut"), fs::perms::none);
    {
      const test::WithoutRights user;
      EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    }
    fs::permissions(ide.files.Path("shut"), fs::perms::owner_all);
    ide.files.Write("shut/a.cpp", "theirs\n");
    EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cOwn));  // answered No
    EXPECT_EQ(ide.files.Read("shut/a.cpp"), "theirs\n");
  });
}

// The user has not agreed to replace a file that couldn't be seen when its name was chosen.
TEST_F(IdeSaving, SaveAsIntoAFolderThatIsShut_FileInIt_IsAskedAboutOnceItIsSeen) {
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    Type("mine ");
    ide.dialogs.files = {{ide.files.Write("shut/b.cpp", "theirs\n")}};
    fs::permissions(ide.files.Path("shut"), fs::perms::none);
    {
      const test::WithoutRights user;
      EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cAsked));
    }
    fs::permissions(ide.files.Path("shut"), fs::perms::owner_all);
    EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cOwn));  // answered No
    EXPECT_THAT(ide.dialogs.texts.back(), HasSubstr("was changed by another program!"));
    EXPECT_EQ(ide.files.Read("shut/b.cpp"), "theirs\n");
  });
}

TEST_F(IdeSaving, SaveAsFails_FileOfThatNameComesLater_IsAskedAbout) {
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    Type("mine ");
    ide.dialogs.files = {{ide.files.Path("none/new.cpp")}};
    EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cAsked));
    ide.files.Write("none/new.cpp", "theirs\n");
    EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_THAT(ide.dialogs.texts.back(), HasSubstr("was changed by another program!"));
    EXPECT_EQ(ide.files.Read("none/new.cpp"), "theirs\n");
  });
}

TEST_F(IdeSaving, SaveOfATextWithoutAName_Fails_KeepsTheChosenNameAndTheText) {
  ide.Run({}, [&] {
    IdeDriver::Press(Qt::Key_N, Qt::ControlModifier);
    Type("int a;");
    const std::string path = ide.files.Path("none/new.cpp");
    ide.dialogs.files = {{path}};
    EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    Keep(Front());
    EXPECT_EQ(test::TextsIfKilled().at(0).path, path);
    ide.files.Folder("none");
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_EQ(ide.files.Read("none/new.cpp"), "int a;");
    EXPECT_EQ(RescueFiles(), 0u);
  });
}

// --- One file by two names.

enum class LinkKind { cSymbolic, cHard };

class IdeSavingLinks : public IdeSaving, public testing::WithParamInterface<LinkKind> {
 protected:
  IdeSavingLinks() {
    ide.files.Write("own.cpp", "old\n");
    if (GetParam() == LinkKind::cSymbolic)
      fs::create_symlink("own.cpp", Link());
    else
      fs::create_hard_link(Own(), Link());
  }
  std::string Own() const { return ide.files.Path("own.cpp"); }
  std::string Link() const { return ide.files.Path("link.cpp"); }
  bool AreOneFile() const {
    return fs::equivalent(Own(), Link()) &&
           fs::is_symlink(Link()) == (GetParam() == LinkKind::cSymbolic);
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, IdeSavingLinks,
                         testing::Values(LinkKind::cSymbolic, LinkKind::cHard));

TEST_P(IdeSavingLinks, OpenedByBothNames_HasOneTab_AlsoAfterASave) {
  for (const bool byLink : {false, true}) {
    ide.Run({}, [&] {
      const std::string first = byLink ? Link() : Own(), second = byLink ? Own() : Link();
      CppEditor* editor = Tabs().OpenFile(first);
      Open("other.cpp", "");
      EXPECT_EQ(Tabs().OpenFile(second), editor);
      editor->Send(mavro::SCI_INSERTTEXT, 0, "x");
      EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
      EXPECT_EQ(Tabs().OpenFile(second), editor);
      EXPECT_THAT(IdeDriver::Captions(), SizeIs(2));
      EXPECT_TRUE(AreOneFile());
    });
  }
  EXPECT_EQ(ide.files.Read("own.cpp"), "xxold\n");
}

TEST_P(IdeSavingLinks, AnotherFileWithTheSameText_HasATabOfItsOwn) {
  ide.Run({}, [&] {
    Tabs().OpenFile(Own());
    Open("copy.cpp", "old\n");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("own.cpp", "copy.cpp"));
  });
}

TEST_P(IdeSavingLinks, SaveAsOntoTheOtherName_KeepsTheOneTab) {
  ide.Run({}, [&] {
    CppEditor* editor = Tabs().OpenFile(Own());
    editor->Send(mavro::SCI_INSERTTEXT, 0, "new ");
    ide.dialogs.files = {{Link()}};
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cAsked));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("link.cpp"));
    EXPECT_EQ(ide.files.Read("own.cpp"), "new old\n");
    EXPECT_TRUE(AreOneFile());
  });
}

TEST_P(IdeSavingLinks, SaveLeavesNothingInTheRescueFolder) {
  ide.Run({}, [&] {
    CppEditor* link = Tabs().OpenFile(Link());
    link->Send(mavro::SCI_INSERTTEXT, 0, "new ");
    Keep(*link);
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_EQ(RescueFiles(), 0u);
    EXPECT_EQ(ide.files.Read("own.cpp"), "new old\n");
  });
}

TEST_F(IdeSaving, OpenedThroughALinkedFolderOrADot_HasOneTab) {
  ide.Run({}, [&] {
    CppEditor* editor = &Open("p/a.cpp", "");
    fs::create_directory_symlink("p", ide.files.Path("q"));
    for (const char* name : {"q/a.cpp", "p/./a.cpp", "./p//a.cpp", "q/../p/a.cpp"})
      EXPECT_EQ(Tabs().OpenFile(ide.files.Path(name)), editor) << name;
    EXPECT_EQ(Tabs().TabCount(), 1);
    EXPECT_NE(&Open("r/a.cpp", ""), editor);
  });
}

TEST_F(IdeSaving, SaveAsOntoAFileOfAnotherTab_TakesItsPlaceUnlessItIsUnsaved) {
  ide.Run({}, [&] {
    CppEditor& other = Open("b.cpp", "b\n");
    other.Send(mavro::SCI_INSERTTEXT, 0, "mine ");
    Open("a.cpp", "a\n");
    ide.dialogs.files = {{other.fileName}, {other.fileName}};
    EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cAsked));
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("is open in another tab")));
    EXPECT_EQ(ide.files.Read("b.cpp"), "b\n");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("b.cpp*", "a.cpp"));
    other.Send(mavro::SCI_UNDO);
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cAsked));
    EXPECT_EQ(ide.files.Read("b.cpp"), "a\n");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("b.cpp"));
  });
}

TEST_F(IdeSaving, TextWithoutAName_IsAskedAboutAsNoname) {
  ide.Run({}, [&] {
    Tabs().OnCommand(cNewCommand);
    Type("x");
    EXPECT_TRUE(Tabs().CloseTab(0, EditTabs::Unsaved::cAsk) || !ide.dialogs.texts.empty());
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("File:   Noname\n")));
    ide.dialogs.answers = {mavro::Answer::cNo};
  });
}

TEST_F(IdeSaving, NoRoomForACopy_IsSaidAsLongAsThereIsNone) {
  ide.Run({}, [&] {
    const std::string rescue = ide.home.Folder(".zendry/rescue");
    fs::remove_all(rescue);
    ide.home.Write(".zendry/rescue", "a file in the folder's place");
    CppEditor& editor = Open("a.cpp", "");
    Type("x");
    Keep(editor);
    const auto note = [] { return IdeDriver::Status(cNotePane); };
    EXPECT_TRUE(test::WaitFor([&] { return note() == "No rescue copy"; }));
    EXPECT_EQ(IdeDriver::Status(), "Unsaved text has no copy: the folder for copies can't be had");
    theMainForm->SetStatus("something else", "");
    theMainForm->SetStatus("", "");
    EXPECT_THAT(IdeDriver::Status(), HasSubstr("has no copy"));
    fs::remove(rescue);
    editor.TickRescue(TextRescue::Clock::now() + 3 * TextRescue::cLongestBehind);
    EXPECT_TRUE(test::WaitFor([&] { return note().empty(); }));
    EXPECT_EQ(IdeDriver::Status(), "Ready");
  });
}

TEST_F(IdeSaving, WhenTheWindowComesToTheFront_AnUnchangedFileIsNotRead) {
  if (test::BytesRead() < 0) GTEST_SKIP() << "the system doesn't count";
  ide.Run({}, [&] {
    constexpr int cSize = 1'000'000;
    CppEditor& editor = Open("a.cpp", std::string(cSize, '\n'));
    const auto reads = [&] {
      const int64_t before = test::BytesRead();
      EXPECT_FALSE(editor.ChangeOnDisk());
      return test::BytesRead() - before >= cSize;
    };
    EXPECT_FALSE(reads());
    fs::permissions(editor.fileName, fs::perms::owner_all);
    EXPECT_TRUE(reads()) << "it may be another one";
    EXPECT_FALSE(reads());
  });
}

}  // namespace
}  // namespace zendry
