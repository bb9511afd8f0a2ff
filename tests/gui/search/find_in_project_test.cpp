#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "EditorFixture.h"
#include "Looks.h"
#include "SearchState.h"
#include "base/TextDigest.h"
#include "frame/SearchWindow.h"
#include "frame/ToolActs.h"

// Searches in the files of the project, in the whole program.

namespace zendry {
namespace {

using mavro::theSearch;
using test::IdeDriver;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class IdeFindInProject : public test::EditorFixture {
 protected:
  static void Press(Qt::Key key) { IdeDriver::Press(key, Qt::ControlModifier | Qt::ShiftModifier); }
  static std::vector<std::string> Rows() { return IdeDriver::Rows(theMainForm->resultList.list); }
  // Presses the key of a dialog and types into it, up to Enter.
  void Find(const std::string& text) {
    ide.OnDialog([text](mavro::Form& dialog) {
      EXPECT_EQ(dialog.text, "Find In Project");
      Type(text);
      test::Shot(dialog, "find-in-project");
      EXPECT_THAT(test::UnreadableCaptions(dialog), IsEmpty());
      test::Key(dialog, Qt::Key_Return);
    });
    Press(Qt::Key_F);
    Activate();
  }
  // The platform of the tests activates no window by itself.
  static void Activate() {
    test::WidgetOf(*theMainForm)->activateWindow();
    EXPECT_TRUE(test::WaitFor([] { return mavro::activeForm == theMainForm; }));
  }
  // `inList` is called with the list of files, whose answer ends it.
  void Replace(const std::string& text, const std::string& with,
               const std::function<void(mavro::Form&)>& inList) {
    ide.OnDialog([&, inList](mavro::Form& dialog) {
      EXPECT_EQ(dialog.text, "Repace in project");
      Type(text);
      test::Key(dialog, Qt::Key_P, Qt::AltModifier);
      Type(with);
      ide.OnDialog([&dialog, inList](mavro::Form& list) {
        if (&list != &dialog) inList(list);
      });
      test::Key(dialog, Qt::Key_Return);
    });
    Press(Qt::Key_R);
    Activate();
  }
  static void Accept(mavro::Form& list) {
    test::Shot(list, "replace-list");
    EXPECT_THAT(test::UnreadableCaptions(list), IsEmpty());
    for (mavro::Control* child : list.children)
      for (mavro::Control* button : dynamic_cast<mavro::Panel*>(child)
                                        ? static_cast<mavro::Panel*>(child)->children
                                        : std::vector<mavro::Control*>())
        if (button->text == "Replace") test::Click(*button);
  }
};

TEST_F(IdeFindInProject, Hits_AreListed_AndF4WalksThem) {
  const std::string project =
      ide.Project({{"a.cpp", "int one;\n\tone();\n"}, {"b.cpp", "// onone ONE\n"}});
  ide.Run({project}, [&] {
    Find("one");
    EXPECT_THAT(Rows(), ElementsAre("a.cpp|1|int one;", "a.cpp|2| one();", "b.cpp|1|// onone ONE"));
    EXPECT_EQ(IdeDriver::Status(), "3 lines in 2 files");
    EXPECT_EQ(theMainForm->bottomTabs.selectedIndex, cResultPage);
    IdeDriver::Press(Qt::Key_F4);
    EXPECT_EQ(Front().CaretLine(), 0);
    EXPECT_EQ(Front().CaretPosition(), 4);
    IdeDriver::Press(Qt::Key_F4);
    EXPECT_EQ(Front().CaretLine(), 1);
    EXPECT_EQ(Front().CaretPosition(), 10) << "after the TAB";
    IdeDriver::Press(Qt::Key_F4);
    EXPECT_EQ(Tabs().Active()->caption, "b.cpp");
    EXPECT_EQ(Front().CaretPosition(), 5);
    IdeDriver::Press(Qt::Key_F4);
    EXPECT_EQ(ide.dialogs.beeps, 1) << "the end of the list";
    IdeDriver::Press(Qt::Key_F4, Qt::ShiftModifier);
    EXPECT_EQ(Tabs().Active()->caption, "a.cpp");
  });
}

TEST_F(IdeFindInProject, MissedLines_AreUnderACaption_ThatF4Passes) {
  const std::string project = ide.Project({{"a.cpp", "aaab\naab\n"}});
  ide.Run({project}, [&] {
    Find("aab");
    EXPECT_THAT(Rows(),
                ElementsAre("a.cpp|2|aab", "||Only a full search finds 1 line:", "a.cpp|1|aaab"));
    IdeDriver::Press(Qt::Key_F4);
    EXPECT_EQ(Front().CaretLine(), 1);
    IdeDriver::Press(Qt::Key_F4);
    EXPECT_EQ(Front().CaretLine(), 0);
    IdeDriver::Press(Qt::Key_F4, Qt::ShiftModifier);
    EXPECT_EQ(Front().CaretLine(), 1);
  });
}

TEST_F(IdeFindInProject, UnsavedText_IsWhatIsSearched) {
  const std::string project = ide.Project({{"a.cpp", "on disk\n"}});
  ide.Run({project}, [&] {
    theMainForm->editTabs.OpenFile(ide.files.Path("a.cpp"));
    Type("typed ");
    Find("typed");
    EXPECT_THAT(Rows(), ElementsAre("a.cpp|1|typed on disk"));
    Find("nowhere");
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_EQ(IdeDriver::Status(), "Not found: nowhere");
    Front().OnCommand(cUndoCommand);
  });
}

// Holes of files take no room on the disk, but a search goes over all of them.
TEST_F(IdeFindInProject, TheStopButton_EndsALongSearch_WhichShowsItsProgress) {
  constexpr int cFiles = 40;
  std::vector<IdeDriver::File> sources;
  for (int i = 0; i < cFiles; ++i) sources.push_back({std::to_string(i) + ".cpp", "needle\n"});
  const std::string project = ide.Project(sources);
  ide.Run({project}, [&] {
    for (const auto& source : sources)
      std::filesystem::resize_file(ide.files.Path(source.name), 50'000'000);
    std::string progress;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
      if (!theMainForm->search->commands.IsRunning()) return;
      timer.stop();
      progress = IdeDriver::Status();
      test::ClickToolRow(theMainForm->toolBar, cStopRow);
    });
    timer.start(1);
    Find("needle");
    EXPECT_THAT(progress, HasSubstr("Searching "));
    EXPECT_THAT(IdeDriver::Status(), HasSubstr(", stopped"));
    EXPECT_GT(Rows().size(), 0u);
    EXPECT_LT(Rows().size(), static_cast<size_t>(cFiles));
    EXPECT_FALSE(theMainForm->toolBar.GetRow(cStopRow).enabled);
  });
}

TEST_F(IdeFindInProject, TheStopButton_EndsAReplacement_WhoseFilesCanBeUndone) {
  constexpr size_t cFiles = 40;
  std::vector<IdeDriver::File> sources;
  for (size_t i = 0; i < cFiles; ++i) sources.push_back({std::to_string(i) + ".cpp", "old\n"});
  const std::string project = ide.Project(sources);
  ide.Run({project}, [&] {
    ProjectSearch& search = theMainForm->search->commands;
    search.shownEvery = std::chrono::milliseconds(0);
    const auto changed = [&] {
      size_t count = 0;
      for (const auto& source : sources) count += ide.files.Read(source.name) == "new\n";
      return count;
    };
    std::string progress;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
      if (!search.IsRunning() || changed() < 3) return;
      timer.stop();
      progress = IdeDriver::Status();
      test::ClickToolRow(theMainForm->toolBar, cStopRow);
    });
    timer.start(0);
    Replace("old", "new", Accept);
    EXPECT_THAT(progress, HasSubstr("Replacing in "));
    const size_t written = changed();
    EXPECT_GE(written, 3u);
    EXPECT_LT(written, cFiles);
    EXPECT_EQ(IdeDriver::Status(),
              std::to_string(written) + " hits replaced in " + std::to_string(written) +
                  " files, stopped: " + std::to_string(cFiles - written) + " files stay as before");
    EXPECT_FALSE(theMainForm->toolBar.GetRow(cStopRow).enabled);
    theToolActs.OnCommand(cUndoReplaceCommand);
    EXPECT_EQ(changed(), 0u);
    EXPECT_FALSE(theMainForm->CanAct(theToolActs.Find(cUndoReplaceCommand)));
  });
}

TEST_F(IdeFindInProject, Replace_ChangesTickedFiles_AndUndoBringsThemBack) {
  const std::string project = ide.Project(
      {{"a.cpp", "old\r\nold\n"}, {"b.cpp", "old\n"}, {"c.cpp", "// old\n"}, {"d.cpp", "none\n"}});
  ide.Run({project}, [&] {
    theMainForm->editTabs.OpenFile(ide.files.Path("a.cpp"));
    Replace("old", "newer", [](mavro::Form& list) {
      mavro::ListView* rows = nullptr;
      for (mavro::Control* child : list.children)
        if (auto* found = dynamic_cast<mavro::ListView*>(child)) rows = found;
      ASSERT_TRUE(rows);
      EXPECT_THAT(IdeDriver::Rows(*rows),
                  ElementsAre("\u2611|a.cpp|2|", "\u2611|b.cpp|1|", "\u2611|c.cpp|1|"));
      test::Key(list, Qt::Key_Down);
      test::Key(list, Qt::Key_Space);
      EXPECT_EQ(rows->GetCell(1, 0), "\u2610");
      Accept(list);
    });
    EXPECT_EQ(IdeDriver::Status(), "3 hits replaced in 2 files");
    EXPECT_EQ(Front().GetText(), "newer\r\nnewer\n");
    EXPECT_TRUE(Front().dirty);
    EXPECT_EQ(ide.files.Read("a.cpp"), "old\r\nold\n") << "the editor's text isn't saved";
    EXPECT_EQ(ide.files.Read("b.cpp"), "old\n");
    EXPECT_EQ(ide.files.Read("c.cpp"), "// newer\n");
    EXPECT_TRUE(theMainForm->CanAct(theToolActs.Find(cUndoReplaceCommand)));
    theToolActs.OnCommand(cUndoReplaceCommand);
    EXPECT_EQ(Front().GetText(), "old\r\nold\n");
    EXPECT_EQ(ide.files.Read("c.cpp"), "// old\n");
    EXPECT_FALSE(theMainForm->CanAct(theToolActs.Find(cUndoReplaceCommand)));
    Front().OnCommand(cUndoCommand);
    EXPECT_EQ(Front().GetText(), "newer\r\nnewer\n") << "the editor's own undo knows each step";
    Front().OnCommand(cUndoCommand);
    EXPECT_FALSE(Front().dirty);
  });
}

TEST_F(IdeFindInProject, ClosingTheProject_ForgetsTheOldTexts) {
  const std::string project = ide.Project({{"a.cpp", "old\n"}});
  ide.Run({project}, [&] {
    Replace("old", "new", Accept);
    EXPECT_EQ(ide.files.Read("a.cpp"), "new\n");
    const auto journals = [&] {
      size_t count = 0;
      for (const auto& entry : std::filesystem::directory_iterator(ide.home.Path(".zendry/rescue")))
        count += entry.path().filename().string().starts_with("replace-");
      return count;
    };
    EXPECT_EQ(journals(), 1u);
    theFileActs.OnCommand(cCloseProjectCommand);
    EXPECT_EQ(journals(), 0u);
  });
}

TEST_F(IdeFindInProject, AReplacementOfAnEndedProgram_CanBeUndone) {
  const std::string project = ide.Project({{"a.cpp", "new\n"}, {"b.cpp", "old\n"}});
  ide.LeaveRescued("replace", project,
                   WriteReplaceJournal({{ide.files.Path("a.cpp"), "old\n", DigestOf("new\n")},
                                        {ide.files.Path("b.cpp"), "old\n", DigestOf("new\n")}}));
  ide.Run({project}, [&] {
    EXPECT_THAT(IdeDriver::Status(), HasSubstr("Undo replace in project"));
    theToolActs.OnCommand(cUndoReplaceCommand);
    EXPECT_EQ(ide.files.Read("a.cpp"), "old\n");
    EXPECT_EQ(ide.files.Read("b.cpp"), "old\n");
  });
}

TEST_F(IdeFindInProject, History_OutlivesTheProgram) {
  const std::string project = ide.Project({{"a.cpp", "old\n"}});
  ide.Run({project}, [&] {
    Find("a=b :");
    theSearch.wrap = false;
  });
  EXPECT_THAT(ide.Ini(), HasSubstr("find1=:a=b :\n"));
  theSearch = {};
  ide.Run({project}, [&] {
    EXPECT_THAT(theSearch.history, ElementsAre("a=b :"));
    EXPECT_FALSE(theSearch.wrap);
    theSearch.wrap = true;
  });
}

TEST_F(IdeFindInProject, FindAndReplaceInTheTab_ByTheirKeys) {
  ide.Run({}, [&] {
    Open("a.cpp", "one two\none\n");
    ide.OnDialog([](mavro::Form& dialog) {
      EXPECT_EQ(dialog.text, "Find");
      Type("one");
      test::Key(dialog, Qt::Key_Return);
      test::Key(dialog, Qt::Key_Escape);
    });
    IdeDriver::Press(Qt::Key_F, Qt::ControlModifier);
    Activate();
    EXPECT_EQ(Front().Selection(), std::pair(0, 3));
    IdeDriver::Press(Qt::Key_F3);
    EXPECT_EQ(Front().Selection(), std::pair(8, 11));
    IdeDriver::Press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(Front().Selection(), std::pair(0, 3));
    IdeDriver::Press(Qt::Key_F3, Qt::ControlModifier);
    EXPECT_EQ(Front().Selection(), std::pair(8, 11));
    theSearch.findText = "no such";
    IdeDriver::Press(Qt::Key_F3);
    EXPECT_EQ(IdeDriver::Status(), "Not found: no such");
    ide.OnDialog([](mavro::Form& dialog) {
      EXPECT_EQ(dialog.text, "Replace");
      dialog.Close();
    });
    IdeDriver::Press(Qt::Key_R, Qt::ControlModifier);
    Activate();
    Front().SetReadOnly(true);
    theMainForm->UpdateCommands();
    EXPECT_FALSE(theMainForm->CanAct(theEditorActs.Find(mavro::cSciReplace)));
  });
}

}  // namespace
}  // namespace zendry
