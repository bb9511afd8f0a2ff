#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "IdeDriver.h"
#include "TabDrag.h"
#include "editor/EditTabs.h"

// The open files.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;
using testing::IsEmpty;

class IdeTabs : public testing::Test {
 protected:
  EditTabs& Tabs() { return theMainForm->editTabs; }
  std::string Write(const std::string& name, const std::string& text = "text\n") {
    return ide.files.Write(name, text);
  }
  CppEditor& Open(const std::string& name, const std::string& text = "text\n") {
    return *Tabs().OpenFile(Write(name, text));
  }

  static void SetText(CppEditor& editor, const std::string& text) {
    editor.Send(mavro::SCI_SELECTALL);
    editor.ReplaceSelection(text);
  }

  IdeDriver ide;
};

TEST_F(IdeTabs, OpenFile_TwiceWithAnotherCase_SelectsTheOneTab) {
  ide.Run({}, [&] {
    CppEditor& first = Open("a.cpp");
    Open("b.cpp");
    EXPECT_EQ(Tabs().OpenFile(ide.files.Path("A.CPP")), &first);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp", "b.cpp"));
    EXPECT_EQ(Tabs().selectedIndex, 0);
  });
}

TEST_F(IdeTabs, OpenFile_TwoFilesThatDifferInCase_HaveATabEach) {
  ide.Run({}, [&] {
    Open("a.cpp", "small");
    EXPECT_EQ(Open("A.cpp", "big").GetText(), "big");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp", "A.cpp"));
  });
}

TEST_F(IdeTabs, OpenFile_AlreadyOpen_LeavesTheRecentListAlone) {
  ide.Run({}, [&] {
    Open("a.cpp");
    Open("b.cpp");
    Tabs().OpenFile(ide.files.Path("a.cpp"));
    EXPECT_THAT(theIdeSession.recentFiles.items,
                ElementsAre(ide.files.Path("b.cpp"), ide.files.Path("a.cpp")));
  });
}

TEST_F(IdeTabs, OpenFile_RelativePath_OnlySaysSo) {
  ide.Run({}, [&] {
    EXPECT_EQ(Tabs().OpenFile("src/a.cpp"), nullptr);
    EXPECT_EQ(Tabs().TabCount(), 0);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Error: src/a.cpp->path format"));
    EXPECT_THAT(ide.dialogs.flags, ElementsAre(mavro::cErrorIcon));
  });
}

TEST_F(IdeTabs, OpenFile_MissingOrFolder_SaysSoAndOpensNoTab) {
  ide.Run({}, [&] {
    for (const std::string& path : {ide.files.Path("none.cpp"), ide.files.Folder("dir.cpp")}) {
      EXPECT_EQ(Tabs().OpenFile(path), nullptr);
      EXPECT_EQ(ide.dialogs.texts.back(), "Error: Could not open file \"" + path + "\"");
    }
    EXPECT_EQ(Tabs().TabCount(), 0);
    EXPECT_THAT(theIdeSession.recentFiles.items, IsEmpty());
  });
}

TEST_F(IdeTabs, OpenFile_AnyBytes_AreShownUnchanged) {
  const std::string bytes("\0\x01\xff\xfe\r\n\r\x1b[31m end", 16);
  ide.Run({}, [&] {
    EXPECT_EQ(Open("a.cpp", bytes).GetText(), bytes);
    EXPECT_EQ(Open("empty.cpp", "").GetText(), "");
  });
}

TEST_F(IdeTabs, GoTo_PutsTheCaretAtTheLineAndSaysSo) {
  ide.Run({}, [&] {
    const std::string path = Write("a.cpp", "1\n2\n3\n4\n");
    EXPECT_EQ(Tabs().GoTo(path, 3)->ShownLine(), 3);
    EXPECT_THAT(IdeDriver::Status(cCaretPane), testing::StartsWith("Ln 3   Col "));
    EXPECT_EQ(Tabs().GoTo(path, 0)->ShownLine(), 3);
    EXPECT_GE(Tabs().GoTo(path, 99999)->ShownLine(), 4);
    EXPECT_EQ(Tabs().GoTo(ide.files.Path("none.cpp"), 3), nullptr);
  });
}

TEST_F(IdeTabs, Activate_FindsTabsWithoutOpening) {
  ide.Run({}, [&] {
    EXPECT_EQ(Tabs().Activate("/none", true), nullptr);
    CppEditor& a = Open("a.cpp");
    Open("b.cpp");
    EXPECT_EQ(Tabs().Activate(a.fileName, false), &a);
    EXPECT_EQ(Tabs().selectedIndex, 1);
    EXPECT_EQ(Tabs().Activate(a.fileName, true), &a);
    EXPECT_EQ(Tabs().selectedIndex, 0);
    EXPECT_EQ(theMainForm->ActiveFile(), a.fileName);
    EXPECT_TRUE(a.IsFocused());
  });
}

TEST_F(IdeTabs, CtrlF4_ClosesTheTabInFront) {
  ide.Run({}, [&] {
    Open("a.cpp");
    Open("b.cpp");
    IdeDriver::Press(Qt::Key_F4, Qt::ControlModifier);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    IdeDriver::Press(Qt::Key_F4, Qt::ControlModifier);
    EXPECT_EQ(Tabs().TabCount(), 0);
    IdeDriver::Press(Qt::Key_F4, Qt::ControlModifier);
    EXPECT_EQ(theMainForm->ActiveFile(), "");
    EXPECT_EQ(IdeDriver::Status(cCaretPane), "Ln 0   Col 0");
  });
}

TEST_F(IdeTabs, CtrlS_WithoutATab_DoesNothing) {
  ide.Run({}, [&] {
    IdeDriver::Press(Qt::Key_S, Qt::ControlModifier);
    theFileActs.OnCommand(cSaveCommand);
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    EXPECT_THAT(ide.dialogs.questions, IsEmpty());
  });
}

TEST_F(IdeTabs, CloseButton_ClosesItsTab) {
  ide.Run({}, [&] {
    Open("a.cpp");
    Open("b.cpp");
    mavro::NotifyArgs args{&Tabs(), 0};
    Tabs().onCloseRequest.Fire(args);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("b.cpp"));
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("b.cpp"));
  });
}

TEST_F(IdeTabs, SetModified_MarksTheCaption) {
  ide.Run({}, [&] {
    Open("a.cpp");
    Tabs().Active()->SetModified(true);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp*"));
    Tabs().Active()->SetModified(false);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
  });
}

TEST_F(IdeTabs, CloseTab_DirtyAnsweredNo_ClosesAndLeavesTheFile) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "old");
    const std::string path = editor.fileName;
    SetText(editor, "new");
    ide.dialogs.answers = {mavro::Answer::cNo};
    EXPECT_TRUE(Tabs().CloseTab(0, EditTabs::Unsaved::cAsk));
    EXPECT_EQ(Tabs().TabCount(), 0);
    EXPECT_EQ(ide.files.Read("a.cpp"), "old");
    EXPECT_THAT(ide.dialogs.texts,
                ElementsAre("Confirmation: File:   " + path + "\n\nwas modified!\tSave?"));
  });
}

TEST_F(IdeTabs, CloseTab_DirtyAnsweredYes_SavesFirst) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "old");
    SetText(editor, "new");
    ide.dialogs.answers = {mavro::Answer::cYes};
    EXPECT_TRUE(Tabs().CloseTab(0, EditTabs::Unsaved::cAsk));
    EXPECT_EQ(ide.files.Read("a.cpp"), "new");
  });
}

TEST_F(IdeTabs, CloseAll_SaveFails_AllTabsStay) {
  ide.Run({}, [&] {
    Open("a.cpp");
    CppEditor& editor = Open("gone/b.cpp");
    const std::string path = editor.fileName;
    Open("c.cpp");
    SetText(editor, "new");
    std::filesystem::remove_all(ide.files.Path("gone"));
    ide.dialogs.answers = {mavro::Answer::cYes};
    EXPECT_FALSE(Tabs().CloseAll());
    EXPECT_EQ(Tabs().TabCount(), 3);
    EXPECT_TRUE(editor.dirty);
    EXPECT_EQ(ide.dialogs.texts.back(), "Error: Error on save file:" + path);
  });
}

TEST_F(IdeTabs, CloseTab_PastTheEnd_BreaksThePrecondition) {
  ide.Run({},
          [&] { EXPECT_DEATH(Tabs().CloseTab(0, EditTabs::Unsaved::cDrop), "n<TabCount\\(\\)"); });
}

TEST_F(IdeTabs, SaveActive_As_AsksAndTakesTheNewName) {
  ide.Run({}, [&] {
    Open("a.cpp", "text");
    ide.dialogs.files = {{ide.files.Path("new.cpp")}};
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cAsked));
    EXPECT_EQ(ide.dialogs.questions.at(0).title, "Save as");
    EXPECT_EQ(ide.dialogs.questions.at(0).defaultExtension, "cpp");
    EXPECT_EQ(ide.files.Read("new.cpp"), "text");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("new.cpp"));
    EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cAsked));
  });
}

TEST_F(IdeTabs, Open_AsksWithTheSourceFilter) {
  ide.Run({}, [&] {
    ide.dialogs.files = {{Write("a.cpp")}};
    IdeDriver::Press(Qt::Key_O, Qt::ControlModifier);
    ASSERT_EQ(ide.dialogs.questions.size(), 1u);
    EXPECT_EQ(ide.dialogs.questions[0].title, "Open...");
    EXPECT_THAT(ide.dialogs.questions[0].filter, testing::EndsWith("|All|*.*"));
    EXPECT_THAT(ide.dialogs.questions[0].filter, testing::StartsWith("C/C++ Files|*.cpp;*.cp;"));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
  });
}

TEST_F(IdeTabs, Keys_GoToTabsByPlaceAndByLastUse_AndCloseTheFront) {
  ide.Run({}, [&] {
    for (const char* name : {"a.cpp", "b.cpp", "c.cpp"}) Open(name);
    const auto front = [&] { return Tabs().Active()->caption; };
    IdeDriver::Press(Qt::Key_1, Qt::AltModifier);
    EXPECT_EQ(front(), "a.cpp");
    IdeDriver::Press(Qt::Key_9, Qt::AltModifier);
    EXPECT_EQ(front(), "a.cpp") << "there is no ninth";
    IdeDriver::Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(front(), "c.cpp");
    IdeDriver::Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(front(), "a.cpp");
    IdeDriver::Press(Qt::Key_2, Qt::AltModifier);
    IdeDriver::Press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp", "c.cpp"));
    for (int i = 0; i < 3; ++i) IdeDriver::Press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre());
    IdeDriver::Press(Qt::Key_Tab, Qt::ControlModifier);
  });
}

TEST_F(IdeTabs, Keys_OfLinesAndZoom_ReachTheEditor) {
  ide.Run({}, [&] {
    Open("a.cpp");
    CppEditor& editor = *Tabs().Active()->editor;
    editor.ReplaceSelection("a;\nb;\n");
    editor.ShowLine(2);
    IdeDriver::Press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_TRUE(editor.GetText().starts_with("b;\na;")) << editor.GetText();
    IdeDriver::Press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(editor.GetText().starts_with("// b;\na;")) << editor.GetText();
    IdeDriver::Press(Qt::Key_Plus, Qt::ControlModifier);
    IdeDriver::Press(Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier);
    IdeDriver::Press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(editor.Send(mavro::SCI_GETZOOM), 1);
  });
}

class IdeTabsDrag : public IdeTabs {
 protected:
  void Drag(int tab, int to) { test::TabDrag(Tabs(), tab).MoveTo(to); }
  void OpenThree() {
    for (const char* name : {"a.cpp", "b.cpp", "c.cpp"}) Open(name);
  }
};

TEST_F(IdeTabsDrag, Dragged_EditorsAreInTheOrderOfTheTabs) {
  ide.Run({}, [&] {
    OpenThree();
    {
      test::TabDrag drag(Tabs(), 0);
      drag.MoveTo(1);
      drag.MoveBy(40);
      test::Shot(*theMainForm, "ide-tab-dragged");
      drag.MoveTo(2);
    }
    test::Shot(*theMainForm, "ide-tab-dropped");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("b.cpp", "c.cpp", "a.cpp"));
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Tabs().GetTab(i), Tabs().GetPage(i));
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("a.cpp"));
    EXPECT_EQ(Tabs().Active(), Tabs().GetTab(2));
    EXPECT_TRUE(Tabs().Active()->editor->IsFocused());
  });
}

TEST_F(IdeTabsDrag, Dragged_OnADarkGround_IsDarkToo) {
  const QPalette light = QApplication::palette();
  QApplication::setPalette(test::DarkPalette());
  ide.Run({}, [&] {
    OpenThree();
    test::TabDrag drag(Tabs(), 0);
    drag.MoveTo(1);
    drag.MoveBy(40);
    test::Shot(*theMainForm, "ide-tab-dragged-dark");
    const QImage row = test::RowOf(Tabs()).grab().toImage();
    for (int x = 0; x < row.width(); x += 10)
      EXPECT_LT(row.pixelColor(x, row.height() - 3).lightness(), 128) << x;
  });
  QApplication::setPalette(light);
}

TEST_F(IdeTabsDrag, Dragged_TypingAndSavingGoesToTheFileInFront) {
  ide.Run({}, [&] {
    OpenThree();
    Drag(2, 0);
    IdeDriver::Press(Qt::Key_X);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("c.cpp*", "a.cpp", "b.cpp"));
    IdeDriver::Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("c.cpp", "a.cpp", "b.cpp"));
    EXPECT_EQ(ide.files.Read("c.cpp"), "xtext\n");
    EXPECT_EQ(ide.files.Read("a.cpp"), "text\n");
  });
}

TEST_F(IdeTabsDrag, Dragged_CloseButtonsCloseTheirOwnTab) {
  ide.Run({}, [&] {
    OpenThree();
    Drag(0, 2);
    QWidget* button = test::RowOf(Tabs()).tabButton(0, QTabBar::RightSide);
    test::Click(Tabs(), button->mapTo(test::WidgetOf(Tabs()), button->rect().center()));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("c.cpp", "a.cpp"));
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("a.cpp"));
    IdeDriver::Press(Qt::Key_F4, Qt::ControlModifier);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("c.cpp"));
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("c.cpp"));
  });
}

TEST_F(IdeTabsDrag, Dragged_ThenOpened_NewTabComesLast) {
  ide.Run({}, [&] {
    OpenThree();
    Drag(1, 0);
    Open("d.cpp");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("b.cpp", "a.cpp", "c.cpp", "d.cpp"));
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("d.cpp"));
    Tabs().Activate(ide.files.Path("a.cpp"), true);
    EXPECT_EQ(Tabs().selectedIndex, 1);
  });
}

TEST_F(IdeTabsDrag, Dragged_NextStartHasTheOrder) {
  const std::string project = ide.Project({{"a.cpp", ""}, {"b.cpp", ""}, {"c.cpp", ""}});
  ide.Run({project}, [&] {
    OpenThree();
    Drag(2, 0);
  });
  ide.Run({project}, [&] {
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("c.cpp", "a.cpp", "b.cpp"));
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("c.cpp"));
  });
}

TEST_F(IdeTabs, SaveAll_NoTabs_SavesTheChangedProjectAndItsSession) {
  ide.Run({ide.Project({{"a.cpp", ""}})}, [&] {
    theProject.RemoveFile(theProject.Files()[0]->id);
    theProject.modified = true;
    theFileActs.OnCommand(cSaveAllCommand);
    EXPECT_FALSE(theProject.modified);
    EXPECT_THAT(ide.files.Read("p.zpj"), testing::Not(testing::HasSubstr("a.cpp")));
    EXPECT_TRUE(ide.files.Exists("p.zend"));
  });
}

}  // namespace
}  // namespace zendry
