#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EditorFixture.h"
#include "IfKilled.h"
#include "LongLines.h"
#include "editor/EditorActs.h"

// Files with lines that are not shown, in the whole program: what it says, keeps and saves.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::HasSubstr;
using testing::Not;

// One that must not have the whole of a file's text, and one that must.
template <class T>
concept CanLoad = requires(T editor) {
  editor.load(std::string());
};
template <class T>
concept CanSave = requires(T editor) {
  editor.save(std::string());
};
static_assert(CanLoad<mavro::SciEditor> && CanSave<mavro::SciEditor>);
static_assert(!CanLoad<CppEditor> && !CanSave<CppEditor>);

class IdeLongLines : public test::EditorFixture {
 protected:
  static std::string Text(size_t bytes) {
    return "int before;\n\"" + std::string(bytes - 3, 'x') + "\";\nint after;\n";
  }
  static std::string Text() { return Text(2 * mavro::LongLineFolder::cMostOnScreen); }
  static void Keep(CppEditor& editor) {
    editor.onUpdateUI();
    editor.TickRescue(TextRescue::Clock::now() + TextRescue::cLongestBehind);
  }
  static std::string IfKilled() {
    const auto found = test::TextsIfKilled();
    return found.size() == 1 ? found[0].content : "not one";
  }
};

TEST_F(IdeLongLines, StatusBar_SaysHowManyAreNotShown) {
  ide.Run({}, [&] {
    const size_t limit = mavro::LongLineFolder::cMostOnScreen;
    EXPECT_THAT(Open("a.cpp", Text(limit)).TextNote(), Not(HasSubstr("not shown")));
    EXPECT_THAT(Open("b.cpp", Text(limit + 1)).TextNote(), HasSubstr("   1 line not shown"));
    EXPECT_THAT(Open("c.cpp", Text() + Text()).TextNote(), HasSubstr("   2 lines not shown"));
  });
}

TEST_F(IdeLongLines, Opened_IsOnTheScreen) {
  ide.Run({}, [&] {
    ASSERT_TRUE(Tabs().OpenFile(ide.files.Write("a.cpp", Text(20'000'000))));
    test::Shot(*theMainForm, "ide-long-line");
    EXPECT_EQ(Front().LinesNotShown(), 1);
  });
}

TEST_F(IdeLongLines, Edited_IsSavedAndRescuedWhole) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", Text());
    Type("y");
    Keep(editor);
    EXPECT_TRUE(IfKilled() == "y" + Text()) << "the first copy";
    editor.Select(editor.Length(), editor.Length());
    Type("z");
    Keep(editor);
    EXPECT_TRUE(IfKilled() == "y" + Text() + "z") << "a step behind it";
    editor.Select(editor.LineStart(1), editor.LineEnd(1));
    const std::string longLine = editor.SelectedText();
    editor.ReplaceSelection("");
    Keep(editor);
    EXPECT_EQ(IfKilled(), "yint before;\n\nint after;\nz");
    IdeDriver::Press(Qt::Key_Z, Qt::ControlModifier);
    Keep(editor);
    EXPECT_TRUE(IfKilled() == "y" + Text() + "z") << "brought back by undo";
    editor.Select(0, 0);
    editor.ReplaceSelection(longLine);
    Keep(editor);
    EXPECT_TRUE(IfKilled() == longLine + "y" + Text() + "z") << "a second one";
    Type("w");
    Keep(editor);
    EXPECT_TRUE(IfKilled() == longLine + "wy" + Text() + "z");
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_TRUE(ide.files.Read("a.cpp") == longLine + "wy" + Text() + "z");
  });
}

TEST_F(IdeLongLines, Shown_TheRescueCopyStaysWhole) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", Text(mavro::LongLineFolder::cMostOnScreen + 1));
    Type("y");
    Keep(editor);
    editor.Select(editor.LineStart(1), editor.LineStart(1));
    theEditorActs.OnCommand(cShowLongLineCommand);
    EXPECT_EQ(editor.LinesNotShown(), 0);
    Keep(editor);
    EXPECT_TRUE(IfKilled() == editor.GetText());
    IdeDriver::Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor.LinesNotShown(), 1);
    Type("z");
    Keep(editor);
    EXPECT_TRUE(IfKilled() == editor.GetText());
  });
}

TEST_F(IdeLongLines, Rescued_TheLineIsNotShownAndSavedWhole) {
  const std::string path = ide.files.Write("a.cpp", "old\n");
  ide.LeaveRescued("text", path, Text());
  ide.dialogs.answers = {mavro::Answer::cYes};
  ide.Run({}, [&] {
    EXPECT_EQ(Front().LinesNotShown(), 1);
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_TRUE(ide.files.Read("a.cpp") == Text());
  });
}

// The parser's places are those of the shown text.
TEST_F(IdeLongLines, WhatIsAroundIt_IsCompletedAsAlways) {
  const std::string main = "#include \"shape.h\"\n" + Text() + "int main() {\n  Shape s;\n\n}\n";
  const std::string shape = "class Shape {\n public:\n  int width;\n  int area();\n};\n";
  ide.Run({ide.Project({{"shape.h", shape}, {"main.cpp", main}})}, [&] {
    CppEditor& editor = *Tabs().OpenFile(ide.files.Path("main.cpp"));
    EXPECT_EQ(editor.LinesNotShown(), 1);
    editor.ShowLine(editor.LineCount() - 2);
    Type("s.");
    EXPECT_NE(editor.Send(mavro::SCI_AUTOCACTIVE), 0);
  });
}

}  // namespace
}  // namespace zendry
