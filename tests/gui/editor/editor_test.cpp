#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>

#include "EditorFixture.h"
#include "ScopedVariable.h"
#include "browser/BrowserActs.h"
#include "editor/EditorActs.h"

// Editing in the whole program: keys typed into the editor in front, what it offers and what lands
// in the file.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class IdeEditor : public test::EditorFixture {
 protected:
  static void TypeKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  // Removes "@" from the text and puts the caret there.
  static void PutCaret(CppEditor& editor) {
    const size_t at = editor.GetText().find('@');
    ASSERT_NE(at, std::string::npos);
    editor.Select(static_cast<int>(at), static_cast<int>(at) + 1);
    editor.ReplaceSelection("");
  }
  static bool ListIsOpen() { return Front().Send(mavro::SCI_AUTOCACTIVE) != 0; }
  // The entry of the open list that Enter would accept.
  static std::string Chosen() {
    std::string text(static_cast<size_t>(Front().Send(mavro::SCI_AUTOCGETCURRENTTEXT)) + 1, '\0');
    Front().Send(mavro::SCI_AUTOCGETCURRENTTEXT, 0, text.data());
    text.resize(text.find('\0'));
    return text;
  }
};

TEST_F(IdeEditor, Typing_MarksTheTab_AndCtrlSWritesTheFile) {
  ide.Run({}, [&] {
    Open("a.cpp", "int a;\n");
    Type("x");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp*"));
    IdeDriver::Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(ide.files.Read("a.cpp"), "xint a;\n");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
  });
}

TEST_F(IdeEditor, Undo_ByKey_TakesTheMarkAway) {
  ide.Run({}, [&] {
    Open("a.cpp", "int a;\n");
    Type("x");
    IdeDriver::Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Front().GetText(), "int a;\n");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
  });
}

TEST_F(IdeEditor, StatusBar_SaysCaretEncodingLineEndsAndOvertyping) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "one\r\ntwo\r\n");
    editor.ShowLine(2);
    EXPECT_TRUE(test::WaitFor([] { return IdeDriver::Status(cCaretPane) == "Ln 2   Col 1"; }))
        << IdeDriver::Status(cCaretPane);
    EXPECT_EQ(IdeDriver::Status(cEncodingPane), "UTF-8   CR LF");
    TypeKey(Qt::Key_Insert);
    EXPECT_TRUE(test::WaitFor([] { return IdeDriver::Status(cEncodingPane).starts_with("OVR"); }));
  });
}

TEST_F(IdeEditor, MemberOfAProjectsClass_IsOfferedAfterADot) {
  const std::string shape = "class Shape {\n public:\n  int width;\n  int area();\n};\n";
  const std::string main = "#include \"shape.h\"\n\nint main() {\n  Shape s;\n  @\n}\n";
  ide.Run({ide.Project({{"shape.h", shape}, {"main.cpp", main}})}, [&] {
    CppEditor& editor = *Tabs().OpenFile(ide.files.Path("main.cpp"));
    PutCaret(editor);
    Type("s.");
    ASSERT_TRUE(ListIsOpen());
    EXPECT_EQ(Chosen(), "area");
    Type("w");
    EXPECT_EQ(Chosen(), "width");
    TypeKey(Qt::Key_Return);
    EXPECT_THAT(editor.GetText(), HasSubstr("  s.width\n"));
  });
}

TEST_F(IdeEditor, AFileAlone_HasItsOwnClassesAndThoseItIncludes) {
  ide.files.Write("part.h", "struct Part { int length; };\n");
  const std::string solo = ide.files.Write("solo.cpp",
                                           "#include \"part.h\"\nstruct Point { int x; };\nint "
                                           "main() {\n  Point p;\n  Part q;\n  @\n}\n");
  ide.Run({solo}, [&] {
    PutCaret(Front());
    Type("p.");
    ASSERT_TRUE(ListIsOpen());
    EXPECT_EQ(Chosen(), "x");
    TypeKey(Qt::Key_Return);
    Type("; q.");
    ASSERT_TRUE(ListIsOpen());
    EXPECT_EQ(Chosen(), "length");
    TypeKey(Qt::Key_Return);
    EXPECT_THAT(Front().GetText(), HasSubstr("  p.x; q.length\n"));
  });
}

TEST_F(IdeEditor, AFileBesideAProject_HasItsOwnClasses) {
  ide.Run({ide.Project({{"main.cpp", "struct Point { int ofProject; };\n"}})}, [&] {
    PutCaret(Open("beside.cpp", "struct Point { int own; };\nint f() {\n  Point p;\n  @\n}\n"));
    Type("p.");
    ASSERT_TRUE(ListIsOpen());
    EXPECT_EQ(Chosen(), "own");
  });
}

// The bytes of the saved file are those that were typed, with the indentation of the rules.
TEST_F(IdeEditor, TypedText_IsInTheFileAsItWasTyped) {
  const std::string classes =
      "struct Point { int move; };\nPoint p;\nint newest, double_it, elephant;\n";
  const std::pair<const char*, const char*> cases[] = {
      {"do\n", "do\n\t"},
      {"// the new\n", "// the new\n"},
      {"// this moves p.\n", "// this moves p.\n"},
      {"/* p.\n*/", "/* p.\n */"},
      {"ele\n", "ele\n"},
      {"char c = '.';\n", "char c = '.';\n"},
      {"auto s = \"p.\n", "auto s = \"p.\n\t\""},
      {"auto s = \"p. elep\";\n", "auto s = \"p. elep\";\n"},
      {"#include <elep.\n", "#include <elep.\n>"},
      {"double x = 1.;\n", "double x = 1.;\n"},
  };
  ide.Run({}, [&] {
    for (const auto& [typed, wanted] : cases) {
      CppEditor& editor = Open("typed.cpp", classes);
      editor.Select(editor.Length(), editor.Length());
      for (const char c : std::string(typed))
        if (c == '\n')
          TypeKey(Qt::Key_Return);
        else
          Type(std::string(1, c));
      IdeDriver::Press(Qt::Key_S, Qt::ControlModifier);
      EXPECT_EQ(ide.files.Read("typed.cpp"), classes + wanted) << typed;
      IdeDriver::Press(Qt::Key_F4, Qt::ControlModifier);
    }
  });
}

TEST_F(IdeEditor, KeysNobodyHasTaken_LeaveTheFileAsItIs) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "int a;\n");
    for (const auto& [key, modifier] :
         {std::pair(Qt::Key_Q, Qt::AltModifier), std::pair(Qt::Key_J, Qt::AltModifier),
          std::pair(Qt::Key_Period, Qt::ControlModifier)})
      IdeDriver::Press(key, modifier);
    EXPECT_EQ(editor.GetText(), "int a;\n");
    EXPECT_FALSE(editor.dirty);
  });
}

TEST_F(IdeEditor, UnsavedMember_WinsOverTheFile) {
  const std::string main = "int main() {\n  Shape* s;\n  @\n}\n";
  ide.Run({ide.Project(
              {{"shape.h", "class Shape {\n public:\n  int width;\n};\n"}, {"main.cpp", main}})},
          [&] {
            CppEditor& header = *Tabs().OpenFile(ide.files.Path("shape.h"));
            header.ShowLine(3);
            Type("int depth; ");
            CppEditor& editor = *Tabs().OpenFile(ide.files.Path("main.cpp"));
            PutCaret(editor);
            Type("s->d");
            ASSERT_TRUE(ListIsOpen());
            EXPECT_EQ(Chosen(), "depth");
          });
}

TEST_F(IdeEditor, UnknownVariable_ShowsNothingAndLogs) {
  const test::ScopedVariable log("ZENDRY_LOG", ide.files.Path("log"));
  ide.Run({ide.Project({{"main.cpp", "int main() {\n  @\n}\n"}})}, [&] {
    CppEditor& editor = *Tabs().OpenFile(ide.files.Path("main.cpp"));
    PutCaret(editor);
    Type("nobody.");
    EXPECT_FALSE(ListIsOpen());
    EXPECT_THAT(ide.files.Read("log"), HasSubstr("Resolve - not global: "));
    EXPECT_THAT(theMainForm->output.text.Get(), Not(HasSubstr("Resolve")));
  });
}

TEST_F(IdeEditor, CallTip_ShowsAtTheParenthesis_AndGoesAtItsEnd) {
  const std::string main = "int add(int first, int second);\n\nint main() {\n  @\n}\n";
  ide.Run({ide.Project({{"main.cpp", main}})}, [&] {
    CppEditor& editor = *Tabs().OpenFile(ide.files.Path("main.cpp"));
    PutCaret(editor);
    Type("add(");
    EXPECT_TRUE(editor.tipActive);
    EXPECT_EQ(editor.tipText, "int add(int first, int second)");
    Type("1, 2)");
    EXPECT_FALSE(editor.tipActive);
  });
}

TEST_F(IdeEditor, CompleteByKey_OffersAgain) {
  const std::string main = "struct Shape { int width; };\n\nint main() {\n  Shape s;\n  @\n}\n";
  ide.Run({ide.Project({{"main.cpp", main}})}, [&] {
    PutCaret(*Tabs().OpenFile(ide.files.Path("main.cpp")));
    Type("s.");
    TypeKey(Qt::Key_Escape);
    ASSERT_FALSE(ListIsOpen());
    IdeDriver::Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_TRUE(ListIsOpen());
  });
}

TEST_F(IdeEditor, ListAskedForWithoutLetters_HasWhatCanStandThere) {
  ide.Run({}, [&] {
    Open("a.cpp", "struct Shape {};\nint main(int argc) {\n  Shape s;\n  @\n}\n");
    PutCaret(Front());
    IdeDriver::Press(Qt::Key_Space, Qt::ControlModifier);
    ASSERT_TRUE(ListIsOpen());
    Type("argc");
    EXPECT_EQ(Chosen(), "argc");
    EXPECT_EQ(Front().getListNote("argc").type, "int");
    EXPECT_EQ(Front().getListNote("while").type, "keyword");
    EXPECT_EQ(Front().getListNote("main").detail, "int main(int argc)");
  });
}

TEST_F(IdeEditor, NameTakenLast_IsSelectedInTheNextList) {
  const std::string code =
      "struct S { int alpha; int beta; int bold; };\nint main() {\n  S s;\n  @\n}\n";
  ide.Run({}, [&] {
    Open("a.cpp", code);
    PutCaret(Front());
    Type("s.");
    EXPECT_EQ(Chosen(), "alpha");
    Type("bo");
    TypeKey(Qt::Key_Return);
    Type("; s.");
    EXPECT_EQ(Chosen(), "bold");
    Type("b");
    EXPECT_EQ(Chosen(), "bold");
    Type("e");
    EXPECT_EQ(Chosen(), "beta");
    TypeKey(Qt::Key_Return);
    EXPECT_THAT(Front().GetText(), HasSubstr("  s.bold; s.beta\n"));
  });
}

TEST_F(IdeEditor, AskedListThatIsEmpty_SaysWhyInTheStatusLine) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "struct Shape {};\nint main() {\n  Shape s;\n  \n}\n");
    editor.Select(editor.LineEnd(3), editor.LineEnd(3));
    const auto ask = [] { IdeDriver::Press(Qt::Key_Space, Qt::ControlModifier); };
    Type("zq");
    ask();
    EXPECT_FALSE(ListIsOpen());
    EXPECT_EQ(IdeDriver::Status(), "No list: no known name begins with zq");
    Open("a.txt", "some");
    ask();
    EXPECT_EQ(IdeDriver::Status(), "No list: names are known in C and C++ only");
  });
}

TEST_F(IdeEditor, Macro_RecordedAndPlayedByKeys) {
  ide.Run({}, [&] {
    Open("a.cpp", "\n");
    IdeDriver::Press(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(IdeDriver::Status(cNotePane), "Macro recording");
    Type("a;b");
    IdeDriver::Press(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(IdeDriver::Status(cNotePane), "");
    IdeDriver::Press(Qt::Key_M, Qt::ControlModifier);
    EXPECT_EQ(Front().GetText(), "a;ba;b\n");
  });
}

TEST_F(IdeEditor, SwitchFile_ByKey_OpensTheCounterpart) {
  ide.Run({}, [&] {
    ide.files.Write("a.h", "");
    Open("a.cpp", "");
    IdeDriver::Press(Qt::Key_Slash, Qt::ControlModifier);
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("a.h"));
    IdeDriver::Press(Qt::Key_Slash, Qt::ControlModifier);
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("a.cpp"));
  });
}

TEST_F(IdeEditor, DiskChanged_CleanText_IsAskedAboutAndLoadedAgain) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "old\n");
    ide.files.Write("a.cpp", "from elsewhere\n");
    ide.dialogs.answers = {mavro::Answer::cYes};
    Tabs().CheckDisk();
    EXPECT_EQ(editor.GetText(), "from elsewhere\n");
    EXPECT_THAT(ide.dialogs.texts,
                ElementsAre("Confirmation: File:   " + editor.fileName +
                            "\n\nwas changed by another program!\tLoad it again?"));
    Tabs().CheckDisk();
    EXPECT_EQ(ide.dialogs.texts.size(), 1u);
  });
}

TEST_F(IdeEditor, DiskChanged_DirtyTextAnsweredNo_StaysAndIsAskedOnce) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "old\n");
    Type("mine ");
    ide.files.Write("a.cpp", "from elsewhere\n");
    ide.dialogs.answers = {mavro::Answer::cNo, mavro::Answer::cNo};
    Tabs().CheckDisk();
    Tabs().CheckDisk();
    EXPECT_EQ(editor.GetText(), "mine old\n");
    EXPECT_EQ(ide.dialogs.texts.size(), 1u);
  });
}

TEST_F(IdeEditor, Save_FileChangedElsewhere_AsksBeforeItIsReplaced) {
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    Type("mine ");
    ide.files.Write("a.cpp", "from elsewhere\n");
    ide.dialogs.answers = {mavro::Answer::cNo};
    EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_EQ(ide.files.Read("a.cpp"), "from elsewhere\n");
    EXPECT_TRUE(Front().dirty);
    ide.dialogs.answers = {mavro::Answer::cYes};
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_EQ(ide.files.Read("a.cpp"), "mine old\n");
  });
}

TEST_F(IdeEditor, OwnSave_IsNotTakenForAChangeOfOthers) {
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    Type("mine ");
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    Tabs().CheckDisk();
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
  });
}

TEST_F(IdeEditor, NewFile_OfAProject_MakesOpensAndAddsBoth) {
  ide.Run({ide.Project({{"main.cpp", ""}})}, [&] {
    ide.OnDialog([](mavro::Form& form) {
      EXPECT_EQ(form.text.Get(), "New...p.zpj");
      test::Shot(form, "new-file");
      Type("shape");
      test::Key(form, Qt::Key_Return);
    });
    IdeDriver::Press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(ide.files.Read("shape.h"), "#pragma once\n\n");
    EXPECT_EQ(ide.files.Read("shape.cpp"), "#include \"shape.h\"\n\n");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("shape.h", "shape.cpp"));
    EXPECT_NE(theProject.FindFile(ide.files.Path("shape.h")), nullptr);
    EXPECT_THAT(ide.files.Read("p.zpj"), HasSubstr("shape.cpp"));
  });
}

TEST_F(IdeEditor, NewFile_WithoutAName_SaysSo) {
  ide.Run({ide.Project({{"main.cpp", ""}})}, [&] {
    ide.OnDialog([](mavro::Form& form) { test::Key(form, Qt::Key_Return); });
    IdeDriver::Press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Error: Error: no file name!"));
    EXPECT_EQ(Tabs().TabCount(), 0);
  });
}

TEST_F(IdeEditor, NewFile_Escape_MakesNothing) {
  ide.Run({ide.Project({{"main.cpp", ""}})}, [&] {
    ide.OnDialog([](mavro::Form& form) {
      Type("shape");
      test::Key(form, Qt::Key_Escape);
    });
    IdeDriver::Press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_FALSE(ide.files.Exists("shape.h"));
    EXPECT_EQ(Tabs().TabCount(), 0);
  });
}

TEST_F(IdeEditor, NewFile_ThatIsThereAlready_IsNeverWrittenOver) {
  ide.Run({ide.Project({{"main.cpp", ""}})}, [&] {
    ide.files.Write("shape.h", "precious");
    ide.OnDialog([](mavro::Form& form) {
      Type("shape");
      test::Key(form, Qt::Key_Return);
    });
    ide.dialogs.answers = {mavro::Answer::cNo};
    IdeDriver::Press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(ide.files.Read("shape.h"), "precious");
    EXPECT_FALSE(ide.files.Exists("shape.cpp"));
  });
}

TEST_F(IdeEditor, New_WithoutAProject_OpensATextWithoutAName) {
  ide.Run({}, [&] {
    IdeDriver::Press(Qt::Key_N, Qt::ControlModifier);
    Type("int a;");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("Noname*"));
    ide.dialogs.files = {{ide.files.Path("new.cpp")}};
    IdeDriver::Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(ide.files.Read("new.cpp"), "int a;");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("new.cpp"));
  });
}

TEST_F(IdeEditor, UnsavedText_IsKeptAndGoneAfterTheSave) {
  ide.Run({}, [&] {
    Open("a.cpp", "old\n");
    Type(std::string(250, 'x'));
    const std::string folder = mavro::RescueFolder();
    const auto copies = [&folder] {
      return std::distance(std::filesystem::directory_iterator(folder), {});
    };
    EXPECT_TRUE(test::WaitFor([&] { return copies() == 1; }));
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_EQ(copies(), 0);
  });
}

TEST_F(IdeEditor, KilledProgram_ItsTextIsOfferedAndOpenedUnsaved) {
  const std::string path = ide.files.Write("a.cpp", "old\n");
  ide.LeaveRescued("text", path, "new\n");
  ide.dialogs.answers = {mavro::Answer::cYes};
  ide.Run({}, [&] {
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Confirmation: Zendry ended before this file was "
                                               "saved:\n" +
                                               path + "\n\nOpen it with its changes?"));
    EXPECT_EQ(Front().GetText(), "new\n");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp*"));
    EXPECT_EQ(ide.files.Read("a.cpp"), "old\n");
    EXPECT_THAT(FindRescuedTexts(), IsEmpty());
  });
}

TEST_F(IdeEditor, KilledProgram_AnsweredNo_ForgetsTheText) {
  const std::string path = ide.files.Write("a.cpp", "old\n");
  ide.LeaveRescued("text", path, "new\n");
  ide.dialogs.answers = {mavro::Answer::cNo};
  ide.Run({}, [&] { EXPECT_EQ(Tabs().TabCount(), 0); });
  EXPECT_THAT(FindRescuedTexts(), IsEmpty());
}

TEST_F(IdeEditor, KilledProgram_FileIsGone_TheTextComesBackWithoutIt) {
  ide.LeaveRescued("text", ide.files.Path("gone.cpp"), "new\n");
  ide.dialogs.answers = {mavro::Answer::cYes};
  ide.Run({}, [&] {
    EXPECT_EQ(Front().GetText(), "new\n");
    EXPECT_EQ(Front().fileName, ide.files.Path("gone.cpp"));
  });
}

TEST_F(IdeEditor, TwoHundredTabs_OpenAndClose) {
  ide.Run({}, [&] {
    for (int i = 0; i < 200; ++i) Open(std::to_string(i) + ".cpp", "int a;\n");
    EXPECT_EQ(Tabs().TabCount(), 200);
    EXPECT_TRUE(Tabs().CloseAll());
    EXPECT_EQ(Tabs().TabCount(), 0);
  });
}

TEST_F(IdeEditor, CloseWhileAListIsOpen_IsSafe) {
  const std::string main = "struct Shape { int width; };\nint main() {\n  Shape s;\n  @\n}\n";
  ide.Run({ide.Project({{"main.cpp", main}})}, [&] {
    PutCaret(*Tabs().OpenFile(ide.files.Path("main.cpp")));
    Type("s.");
    EXPECT_TRUE(ListIsOpen());
    EXPECT_TRUE(Tabs().CloseTab(0, EditTabs::Unsaved::cDrop));
    EXPECT_EQ(Tabs().TabCount(), 0);
  });
}

// Group: the value under the mouse.

class IdeHover : public IdeEditor {
 protected:
  // Rests the mouse on a place of the text until the editor has reported it.
  void RestOn(CppEditor& editor, const std::string& text, int column) {
    const auto at = static_cast<std::intptr_t>(editor.GetText().find(text)) + column;
    const QPoint place(static_cast<int>(editor.Send(mavro::SCI_POINTXFROMPOSITION, 0, at)) + 2,
                       static_cast<int>(editor.Send(mavro::SCI_POINTYFROMPOSITION, 0, at)) + 4);
    QWidget* widget = test::WidgetOf(editor);
    QSignalSpy dwelt(widget, SIGNAL(SCN_DWELLSTART(int, int, int)));
    QTest::mouseMove(widget->window()->windowHandle(),
                     widget->mapTo(widget->window(), QPoint(1, 1)));
    QTest::mouseMove(widget->window()->windowHandle(), widget->mapTo(widget->window(), place));
    EXPECT_TRUE(test::WaitFor([&] { return !dwelt.isEmpty(); }));
  }
};

TEST_F(IdeHover, WhileDebugging_TheExpressionIsAskedFor) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "int x;\nfoo->bar.part[i] = 1;\n");
    theDebugger.tipText.clear();
    RestOn(editor, "bar", 1);
    EXPECT_EQ(theDebugger.tipText, "") << "nothing is debugged";
    theDebugger.running = true;
    RestOn(editor, "part", 1);
    EXPECT_EQ(theDebugger.tipText, "foo->bar.part[i]");
    theIdeSession.debuggerTips = false;
    RestOn(editor, "foo", 1);
    EXPECT_EQ(theDebugger.tipText, "foo->bar.part[i]") << "it is switched off";
    theIdeSession.debuggerTips = true;
    editor.onDwell(editor.Length());
    EXPECT_EQ(theDebugger.tipText, "foo->bar.part[i]") << "nothing stands there";
    theDebugger.running = false;
  });
}

}  // namespace
}  // namespace zendry
