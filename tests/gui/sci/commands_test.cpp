#include <gtest/gtest.h>

#include <random>

#include "EditorForm.h"

namespace mavro {
namespace {

using test::EditorForm;
using test::RunEditor;

std::string Marked(const SciEditor& editor) {
  std::string lines;
  for (int line = 0; line < editor.LineCount(); ++line)
    if (editor.Send(SCI_MARKERGET, static_cast<std::uintptr_t>(line)) & 2)
      lines += std::to_string(line) + " ";
  return lines;
}

struct CommandCase {
  int id;
  const char* before;  // "@" is the caret
  const char* after;
};

TEST(SciCommands, TextCommands_DoWhatTheirNameSays) {
  const CommandCase cases[] = {
      {cSciDeleteLine, "a\nb@b\nc", "a\n@c"},
      {cSciGoToMatch, "(a)@ b", "(@a) b"},
      {cSciGoToMatch, "(@a) b", "(a)@ b"},
      {cSciGoToMatch, "@(a) b", "(a)@ b"},
      {cSciGoToMatch, "(a@ b", "(a@ b"},
      {cSciGoToMatch, "(@a b", "(@a b"},
      {cSciGoToMatch, "@", "@"},
  };
  for (const CommandCase& row : cases) {
    EditorForm form;
    RunEditor(form, [&] {
      form.Fill(row.before);
      EXPECT_TRUE(form.editor.OnCommand(row.id));
      EXPECT_EQ(form.Shown(), row.after) << row.id << " " << row.before;
    });
  }
}

// In these texts, "[" and "]" enclose the selection; both in one place are the caret.
struct LinesCase {
  int id;
  const char* before;
  const char* after;
};

TEST(SciCommands, LineCommands_ChangeTheLinesOfTheSelection) {
  const LinesCase cases[] = {
      {cSciToggleComment, "a;\n\tb[];\nc;", "a;\n\t// b;\nc;"},
      {cSciToggleComment, "\t// b[];", "\tb;"},
      {cSciToggleComment, "//b[];", "b;"},
      {cSciToggleComment, "\t[a;\n\t\tb;\n\n]c;", "\t// a;\n\t// \tb;\n\nc;"},
      {cSciToggleComment, "[// a;\nb;]", "// // a;\n// b;"},
      {cSciToggleComment, "[// a;\n\n  //b;]", "a;\n\n  b;"},
      {cSciToggleComment, "[]", ""},
      {cSciToggleComment, " [] ", "  "},
      {cSciMoveLinesUp, "a\nb[]\nc", "b\na\nc"},
      {cSciMoveLinesUp, "a[]\nb", "a\nb"},
      {cSciMoveLinesDown, "a[]\nb\nc", "b\na\nc"},
      {cSciMoveLinesDown, "[a\nb]\nc", "c\na\nb"},
      {cSciMoveLinesDown, "a\nb[]", "a\nb"},
      {cSciDuplicate, "a[]\nb", "a\na\nb"},
      {cSciDuplicate, "x[ab]y", "xababy"},
      {cSciJoinLines, "a[]  \n\tb\nc", "a b\nc"},
      {cSciJoinLines, "[a\n  b\nc]\nd", "a b c\nd"},
      {cSciJoinLines, "a[]\n\nb", "a\nb"},
      {cSciJoinLines, "  []\nb", "  b"},
      {cSciJoinLines, "a[]", "a"},
      {cSciSortLines, "[c\na\nb]\na", "a\nb\nc\na"},
      {cSciSortLines, "[c\na\n]b\n", "a\nc\nb\n"},
      {cSciSortLines, "b[]\na", "b\na"},
      {cSciSortLines, "[b\na]", "a\nb"},
  };
  for (const LinesCase& row : cases) {
    EditorForm form;
    RunEditor(form, [&] {
      std::string text = row.before;
      const size_t start = text.find('[');
      text.erase(start, 1);
      const size_t end = text.find(']');
      text.erase(end, 1);
      form.Fill(text);
      form.editor.Select(static_cast<int>(start), static_cast<int>(end));
      EXPECT_TRUE(form.editor.OnCommand(row.id));
      EXPECT_EQ(form.editor.GetText(), row.after) << row.id << " " << row.before;
      form.editor.OnCommand(cSciUndo);
      EXPECT_EQ(form.editor.GetText(), text) << "one undo step";
    });
  }
}

TEST(SciCommands, Zoom_InOutAndNone) {
  EditorForm form;
  RunEditor(form, [&] {
    form.editor.OnCommand(cSciZoomIn);
    form.editor.OnCommand(cSciZoomIn);
    form.editor.OnCommand(cSciZoomOut);
    EXPECT_EQ(form.editor.Send(SCI_GETZOOM), 1);
    form.editor.OnCommand(cSciZoomNone);
    EXPECT_EQ(form.editor.Send(SCI_GETZOOM), 0);
  });
}

TEST(SciCommands, Case_OfTheSelection_IsChanged) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("aB cD");
    form.editor.Select(0, 2);
    EXPECT_TRUE(form.editor.OnCommand(cSciUpperCase));
    EXPECT_EQ(form.editor.GetText(), "AB cD");
    form.editor.Select(3, 5);
    EXPECT_TRUE(form.editor.OnCommand(cSciLowerCase));
    EXPECT_EQ(form.editor.GetText(), "AB cd");
  });
}

TEST(SciCommands, SelectToMatch_TheCaretIsAfterTheBrace) {
  for (const char* before : {"x (a)@ b", "x (@a) b"}) {
    EditorForm form;
    RunEditor(form, [&] {
      form.Fill(before);
      EXPECT_TRUE(form.editor.OnCommand(cSciSelectToMatch));
      EXPECT_EQ(form.editor.SelectedText(), "(a)");
      EXPECT_EQ(form.editor.CaretPosition(), 5);
    });
  }
}

TEST(SciCommands, CutCopyPaste_GoThroughTheClipboard) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("one two");
    form.editor.Select(0, 3);
    form.editor.OnCommand(cSciCut);
    EXPECT_EQ(form.editor.GetText(), " two");
    form.editor.Select(4, 4);
    form.editor.OnCommand(cSciPaste);
    EXPECT_EQ(form.editor.GetText(), " twoone");
    form.editor.Select(1, 4);
    form.editor.OnCommand(cSciCopy);
    form.editor.Select(0, 0);
    form.editor.OnCommand(cSciPaste);
    EXPECT_EQ(form.editor.GetText(), "two twoone");
  });
}

TEST(SciCommands, Bookmark_Toggle_ComesAndGoes) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("a\n@b\nc");
    form.editor.OnCommand(cSciToggleBookmark);
    EXPECT_EQ(Marked(form.editor), "1 ");
    form.editor.OnCommand(cSciToggleBookmark);
    EXPECT_EQ(Marked(form.editor), "");
    form.editor.ToggleBookmark(0);
    form.editor.ToggleBookmark(2);
    form.editor.OnCommand(cSciClearBookmarks);
    EXPECT_EQ(Marked(form.editor), "");
  });
}

struct BookmarkCase {
  int id;
  int from;
  int to;
};

TEST(SciCommands, Bookmarks_NextAndPrevious_WrapAround) {
  const BookmarkCase cases[] = {
      {cSciNextBookmark, 0, 1}, {cSciNextBookmark, 1, 3}, {cSciNextBookmark, 3, 1},
      {cSciNextBookmark, 4, 1}, {cSciPrevBookmark, 4, 3}, {cSciPrevBookmark, 3, 1},
      {cSciPrevBookmark, 1, 3}, {cSciPrevBookmark, 0, 3},
  };
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("a\nb\nc\nd\ne");
    form.editor.ToggleBookmark(1);
    form.editor.ToggleBookmark(3);
    for (const BookmarkCase& row : cases) {
      form.editor.goToLine(row.from);
      form.editor.OnCommand(row.id);
      EXPECT_EQ(form.editor.CaretLine(), row.to) << row.id << " from " << row.from;
    }
  });
}

TEST(SciCommands, Bookmarks_SelectTo_ExtendsTheSelection) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("a\nb@\nc\nd");
    form.editor.ToggleBookmark(0);
    form.editor.ToggleBookmark(3);
    form.editor.OnCommand(cSciSelectToNextBookmark);
    EXPECT_EQ(form.editor.SelectedText(), "\nc\n");
    form.editor.Select(3, 3);
    form.editor.OnCommand(cSciSelectToPrevBookmark);
    EXPECT_EQ(form.editor.SelectedText(), "a\nb");
    EXPECT_EQ(form.editor.CaretPosition(), 0);
  });
}

TEST(SciCommands, Bookmarks_None_NothingMoves) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("a\nb@");
    form.editor.OnCommand(cSciNextBookmark);
    form.editor.OnCommand(cSciPrevBookmark);
    EXPECT_EQ(form.Shown(), "a\nb@");
  });
}

TEST(SciCommands, Macro_Recorded_IsReplayed) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("@");
    form.editor.OnCommand(cSciRecordMacro);
    EXPECT_TRUE(form.editor.inMacroRecord);
    form.Type("a;b\n");
    form.editor.OnCommand(cSciRecordMacro);
    EXPECT_FALSE(form.editor.inMacroRecord);
    ASSERT_FALSE(form.editor.macro.empty());
    EXPECT_EQ(form.editor.macro[0], "2170;0;1;a");
    EXPECT_EQ(form.editor.macro[1], "2170;0;1;;");
    form.editor.OnCommand(cSciPlayMacro);
    EXPECT_EQ(form.editor.GetText(), "a;b\na;b\n");
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "a;b\n") << "a replay is one step";
  });
}

TEST(SciCommands, Macro_RecordedAgain_ForgetsTheOldOne) {
  EditorForm form;
  RunEditor(form, [&] {
    form.editor.macro = {"2170;0;1;old"};
    form.editor.OnCommand(cSciRecordMacro);
    EXPECT_TRUE(form.editor.macro.empty());
    form.editor.OnCommand(cSciPlayMacro);
    EXPECT_EQ(form.editor.GetText(), "") << "nothing is played while one is recorded";
  });
}

TEST(SciCommands, Macro_TextWithSemicolons_IsReplayedWhole) {
  EditorForm form;
  RunEditor(form, [&] {
    form.editor.macro = {"2170;0;1;a;b;c"};
    form.editor.OnCommand(cSciPlayMacro);
    EXPECT_EQ(form.editor.GetText(), "a;b;c");
  });
}

TEST(SciCommands, Macro_GarbageLines_DoNoHarm) {
  std::mt19937 random(7);
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("some text\nof two lines");
    for (int i = 0; i < 3000; ++i) {
      std::string line = std::to_string(random() % 5000) + ";" +
                         std::to_string(static_cast<int>(random())) + ";" +
                         std::to_string(random() % 3) + ";";
      for (unsigned n = random() % 9; n > 0; --n) line += static_cast<char>(random() % 255 + 1);
      line.resize(random() % (line.size() + 1));
      form.editor.macro = {line};
      form.editor.OnCommand(cSciPlayMacro);
      if (form.editor.Length() > 100000) form.Fill("short again");
    }
    EXPECT_EQ(form.editor.Send(SCI_GETREADONLY), 0);
  });
}

struct ToggleCase {
  int id;
  unsigned ask;
  int on;
};

TEST(SciCommands, Toggles_SwitchOnAndOff) {
  const ToggleCase cases[] = {
      {cSciShowWhiteSpace, SCI_GETVIEWWS, 1},
      {cSciShowLineEnds, SCI_GETVIEWEOL, 1},
      {cSciWrapLines, SCI_GETWRAPMODE, 1},
      {cSciReadOnly, SCI_GETREADONLY, 1},
  };
  EditorForm form;
  RunEditor(form, [&] {
    for (const ToggleCase& row : cases) {
      EXPECT_TRUE(form.editor.OnCommand(row.id));
      form.editor.applyOptions();
      EXPECT_EQ(form.editor.Send(row.ask), row.on) << row.id;
      EXPECT_TRUE(form.editor.OnCommand(row.id));
      EXPECT_EQ(form.editor.Send(row.ask), 0) << row.id;
    }
  });
}

TEST(SciCommands, FoldAll_ClosesAndOpens) {
  EditorForm form;
  form.editor.options->foldMargin = true;
  RunEditor(form, [&] {
    form.Fill("void f() {\n\tx;\n}\nvoid g() {\n\ty;\n}\n");
    form.editor.OnCommand(cSciFoldAll);
    EXPECT_EQ(form.editor.Send(SCI_GETLINEVISIBLE, 1), 0);
    EXPECT_EQ(form.editor.Send(SCI_GETLINEVISIBLE, 4), 0);
    form.editor.goToLine(4);
    EXPECT_EQ(form.editor.Send(SCI_GETLINEVISIBLE, 4), 1) << "going there unfolds";
    form.editor.OnCommand(cSciFoldAll);
    EXPECT_EQ(form.editor.Send(SCI_GETLINEVISIBLE, 1), 1);
  });
}

TEST(SciCommands, CloseFolds_ClosesInnerOnes_AndTheCaretGoesToTheLineThatRemains) {
  EditorForm form;
  form.editor.options->foldMargin = true;
  RunEditor(form, [&] {
    form.Fill("x;\nvoid f() {\n\tif (a) {\n\t\ty@;\n\t}\n}\nz;\n");
    const auto shown = [&] {
      std::string lines;
      for (std::uintptr_t line = 0; line < 7; ++line)
        if (form.editor.Send(SCI_GETLINEVISIBLE, line)) lines += std::to_string(line);
      return lines;
    };
    form.editor.OnCommand(cSciCloseFolds);
    EXPECT_EQ(shown(), "016");
    EXPECT_EQ(form.Shown(), "x;\nvoid f() {@\n\tif (a) {\n\t\ty;\n\t}\n}\nz;\n");
    form.editor.OnCommand(cSciCloseFolds);
    EXPECT_EQ(shown(), "016") << "again";
    form.editor.Send(SCI_TOGGLEFOLD, 1);
    EXPECT_EQ(shown(), "01256") << "the inner fold is closed";
    form.editor.OnCommand(cSciOpenFolds);
    EXPECT_EQ(shown(), "0123456");
    form.editor.Select(0, 0);
    form.editor.OnCommand(cSciCloseFolds);
    EXPECT_EQ(form.editor.CaretPosition(), 0) << "in no fold";
  });
}

TEST(SciCommands, Folds_ClosedAndOpened_TheCaretStaysInItsRow) {
  EditorForm form;
  form.editor.options->foldMargin = true;
  RunEditor(form, [&] {
    std::string text;
    for (int i = 0; i < 200; ++i) text += "void f() {\n\tx;\n\ty;\n}\n";
    form.Fill(text + "z;\n");
    form.editor.goToLine(603);
    const auto row = [&] {
      const auto line = static_cast<std::uintptr_t>(form.editor.CaretLine());
      return form.editor.Send(SCI_VISIBLEFROMDOCLINE, line) -
             form.editor.Send(SCI_GETFIRSTVISIBLELINE);
    };
    const auto before = row();
    form.editor.OnCommand(cSciCloseFolds);
    EXPECT_EQ(form.editor.CaretLine(), 600);
    EXPECT_EQ(row(), before);
    form.editor.OnCommand(cSciOpenFolds);
    EXPECT_EQ(row(), before);
    form.editor.Select(0, 0);
    form.editor.Send(SCI_SETFIRSTVISIBLELINE, 400);
    form.editor.OnCommand(cSciCloseFolds);
    EXPECT_EQ(form.editor.Send(SCI_GETFIRSTVISIBLELINE), 100) << "the caret is far away";
    form.editor.OnCommand(cSciOpenFolds);
    EXPECT_EQ(form.editor.Send(SCI_GETFIRSTVISIBLELINE), 400);
  });
}

struct EndsCase {
  int id;
  const char* name;
  const char* text;
};

TEST(SciCommands, LineEnds_AreConverted_OneUndoStepWithTheWayOfEndingLines) {
  const EndsCase cases[] = {
      {cSciEndsLf, "LF", "a\nbb\n\nc\n"},
      {cSciEndsCrLf, "CR LF", "a\r\nbb\r\n\r\nc\r\n"},
      {cSciEndsCr, "CR", "a\rbb\r\rc\r"},
  };
  for (const EndsCase& from : cases)
    for (const EndsCase& to : cases) {
      EditorForm form;
      RunEditor(form, [&] {
        form.editor.Send(SCI_SETEOLMODE, from.id == cSciEndsLf     ? SC_EOL_LF
                                         : from.id == cSciEndsCrLf ? SC_EOL_CRLF
                                                                   : SC_EOL_CR);
        form.Fill(from.text);
        form.editor.Select(form.editor.LineStart(1) + 1, form.editor.LineStart(1) + 1);
        for (const int line : {1, 3}) form.editor.ToggleBookmark(line);
        form.editor.OnCommand(to.id);
        EXPECT_EQ(form.editor.GetText(), to.text);
        EXPECT_EQ(form.editor.LineEndName(), to.name);
        EXPECT_EQ(Marked(form.editor), "1 3 ") << from.name << " to " << to.name;
        EXPECT_EQ(form.editor.CaretPosition(), form.editor.LineStart(1) + 1);
        EXPECT_EQ(form.editor.dirty, from.id != to.id);
        form.editor.OnCommand(cSciUndo);
        EXPECT_EQ(form.editor.GetText(), from.text);
        EXPECT_EQ(form.editor.LineEndName(), from.id == to.id ? to.name : from.name);
        EXPECT_EQ(Marked(form.editor), "1 3 ") << "undone " << from.name << " to " << to.name;
        EXPECT_FALSE(form.editor.dirty);
        form.editor.OnCommand(cSciRedo);
        EXPECT_EQ(form.editor.GetText(), to.text);
        EXPECT_EQ(form.editor.LineEndName(), to.name);
      });
    }
}

TEST(SciCommands, LineEnds_MixedOnes_BecomeAlike) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("a\r\nb\nc\rd");
    form.editor.OnCommand(cSciEndsLf);
    EXPECT_EQ(form.editor.GetText(), "a\nb\nc\nd");
    form.Fill("one line");
    form.editor.OnCommand(cSciEndsCrLf);
    EXPECT_FALSE(form.editor.dirty) << "there is nothing to convert";
    EXPECT_EQ(form.editor.LineEndName(), "CR LF");
  });
}

TEST(SciCommands, StripBlanks_OfTheSelectedLinesOrOfAll_OneUndoStep) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("a \nb\t \n  \nc  ");
    form.editor.OnCommand(cSciStripBlanks);
    EXPECT_EQ(form.editor.GetText(), "a\nb\n\nc");
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "a \nb\t \n  \nc  ");
    form.editor.Select(4, 6);
    form.editor.OnCommand(cSciStripBlanks);
    EXPECT_EQ(form.editor.GetText(), "a \nb\n  \nc  ");
  });
}

TEST(SciCommands, StripBlanks_InARawLiteral_Stay) {
  EditorForm form;
  form.editor.small.rawStyle = 20;
  RunEditor(form, [&] {
    form.Fill("x; \ns = R\"(a  \n  \n)\";  \ny;  ");
    form.editor.OnCommand(cSciStripBlanks);
    EXPECT_EQ(form.editor.GetText(), "x;\ns = R\"(a  \n  \n)\";\ny;");
  });
}

struct RefusingEditor : test::AskedEditor {
  void onRefusedChange() override { ++refused; }
  int refused = 0;
};

TEST(SciCommands, ReadOnly_EveryChange_IsRefusedAndTold) {
  Form form;
  form.SetBounds(0, 0, 600, 400);
  RefusingEditor editor;
  editor.dock = Dock::cFill;
  form.Add(&editor);
  test::RunForm(form, false, [&] {
    editor.Focus();
    editor.ReplaceSelection("b \na ");
    editor.OnCommand(cSciReadOnly);
    EXPECT_TRUE(editor.IsReadOnly());
    EXPECT_EQ(editor.refused, 0);
    QTest::keyClick(test::WidgetOf(form)->windowHandle(), 'x');
    EXPECT_GE(editor.refused, 1);
    for (const int id : {cSciEndsCrLf, cSciStripBlanks, cSciUndo, cSciDeleteLine, cSciPaste,
                         cSciToggleComment, cSciJoinLines, cSciSortLines, cSciDuplicate})
      editor.OnCommand(id);
    EXPECT_EQ(editor.GetText(), "b \na ");
    EXPECT_EQ(editor.LineEndName(), "LF");
    editor.TakeText("rescued", cPlainText, "");
    EXPECT_EQ(editor.GetText(), "rescued") << "no work is lost";
  });
}

TEST(SciCommands, FoldMargin_AClick_TogglesTheLine) {
  EditorForm form;
  form.editor.options->foldMargin = true;
  RunEditor(form, [&] {
    form.Fill("void f() {\n\tx;\n}\n");
    form.editor.Send(SCI_COLOURISE, 0, static_cast<std::intptr_t>(-1));
    test::Click(form.editor, QPoint(16 + 12, 8));
    EXPECT_EQ(form.editor.Send(SCI_GETLINEVISIBLE, 1), 0);
    test::Click(form.editor, QPoint(16 + 12, 8));
    EXPECT_EQ(form.editor.Send(SCI_GETLINEVISIBLE, 1), 1);
  });
}

TEST(SciCommands, GoToLine_FarAway_ALittleIsLeftAbove) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill(std::string(500, '\n'));
    form.editor.goToLine(300);
    EXPECT_EQ(form.editor.CaretLine(), 300);
    const auto top = form.editor.Send(SCI_GETFIRSTVISIBLELINE);
    EXPECT_LT(top, 300);
    EXPECT_GE(top, 290);
    form.editor.goToLine(9999);
    EXPECT_EQ(form.editor.CaretLine(), 500);
    form.editor.goToLine(-3);
    EXPECT_EQ(form.editor.CaretLine(), 0);
  });
}

TEST(SciCommands, ForeignIds_AreNotTheEditors) {
  EditorForm form;
  RunEditor(form, [&] {
    for (const int id : {0, -1, 800, 828, 1300}) EXPECT_FALSE(form.editor.OnCommand(id)) << id;
  });
}

TEST(SciCommands, EveryCommand_WithoutAWindow_DoesNothing) {
  SciEditor editor;
  for (int id = 800; id < 850; ++id)
    if (id != cSciRecordMacro) editor.OnCommand(id);
  EXPECT_EQ(editor.GetText(), "");
}

TEST(SciCommands, EveryCommand_OnAnEmptyText_DoesNoHarm) {
  EditorForm form;
  RunEditor(form, [&] {
    for (int id = 800; id < 850; ++id)
      if (id < cSciFind || id > cSciGoToLine) form.editor.OnCommand(id);  // those ask
    form.Settle();
    EXPECT_EQ(form.editor.LineCount(), 1);
  });
}

}  // namespace
}  // namespace mavro
