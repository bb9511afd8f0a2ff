// Signs beside lines: they follow their lines, go with them and come back with them.
#include <gtest/gtest.h>

#include "EditorForm.h"

namespace mavro {
namespace {

using test::EditorForm;
using test::RunEditor;

constexpr MarkType cMarks[] = {{1, {}, MarkSign::cDisc, true, false, false},
                               {5, {}, MarkSign::cRing, true, false, false}};
constexpr int cDisc = 1, cRing = 5;

struct SignForm : EditorForm {
  SignForm() {
    editor.markTypes = cMarks;
    editor.markTypeCount = 2;
  }
  // Signs on the lines 1 and 3 of six.
  void Prepare() {
    Fill("zero\none\ntwo\nthree\nfour\nfive");
    first = editor.AddSign(cDisc, 1);
    second = editor.AddSign(cDisc, 3);
  }
  std::string Lines() {
    return std::to_string(editor.SignLine(first)) + " " + std::to_string(editor.SignLine(second));
  }
  // Deletes from the start of a line, and some bytes of it, up to another place.
  void Delete(int fromLine, int fromByte, int toLine, int toByte) {
    editor.Select(editor.LineStart(fromLine) + fromByte, editor.LineStart(toLine) + toByte);
    editor.ReplaceSelection("");
  }

  int first = 0, second = 0;
};

TEST(LineSigns, FollowLinesThatAreInsertedAndDeletedAbove) {
  SignForm form;
  RunEditor(form, [&] {
    form.Prepare();
    EXPECT_GT(form.first, 0);
    EXPECT_NE(form.first, form.second);
    form.editor.Select(0, 0);
    form.Type("a\nb\n");
    EXPECT_EQ(form.Lines(), "3 5");
    form.Delete(0, 0, 1, 0);
    EXPECT_EQ(form.Lines(), "2 4");
    form.editor.Select(form.editor.LineEnd(2), form.editor.LineEnd(2));
    form.Type("x");
    EXPECT_EQ(form.Lines(), "2 4");
  });
}

TEST(LineSigns, GoWithTheirLine) {
  struct Case {
    const char* name;
    int fromLine, fromByte, toLine, toByte;
    const char* left;
  };
  for (const Case& c :
       {Case{"the line and its end", 1, 0, 2, 0, "-1 2"},
        Case{"the end before and the line", 0, 4, 1, 3, "-1 2"},
        Case{"both of them", 0, 2, 4, 1, "-1 -1"}, Case{"its text only", 1, 0, 1, 3, "1 3"},
        Case{"its beginning", 0, 0, 1, 2, "0 2"}, Case{"its end", 1, 1, 2, 1, "1 2"},
        Case{"the end before it", 0, 4, 1, 0, "0 2"}, Case{"everything", 0, 0, 5, 4, "-1 -1"}}) {
    SignForm form;
    RunEditor(form, [&] {
      form.Prepare();
      form.Delete(c.fromLine, c.fromByte, c.toLine, c.toByte);
      EXPECT_EQ(form.Lines(), c.left) << c.name;
    });
  }
}

TEST(LineSigns, AnEmptyLineThatStays_KeepsItsSign) {
  SignForm form;
  RunEditor(form, [&] {
    form.Fill("one\n\nthree");
    form.first = form.editor.AddSign(cDisc, 1);
    form.second = form.editor.AddSign(cDisc, 2);
    form.Delete(0, 0, 1, 0);
    EXPECT_EQ(form.Lines(), "0 1");
  });
}

TEST(LineSigns, ALineThatIsMoved_TakesItsSignAlong) {
  SignForm form;
  RunEditor(form, [&] {
    form.Prepare();
    form.editor.Select(form.editor.LineStart(3), form.editor.LineStart(3));
    form.editor.OnCommand(cSciMoveLinesUp);
    EXPECT_EQ(form.editor.LineText(2), "three\n");
    EXPECT_EQ(form.Lines(), "1 2");
    form.editor.OnCommand(cSciMoveLinesDown);
    form.editor.OnCommand(cSciMoveLinesDown);
    EXPECT_EQ(form.Lines(), "1 4");
  });
}

TEST(LineSigns, Undo_BringsThemBack) {
  SignForm form;
  RunEditor(form, [&] {
    form.Prepare();
    form.Delete(1, 0, 2, 0);
    form.Settle();
    form.editor.Send(SCI_UNDO);
    EXPECT_EQ(form.Lines(), "1 3");
  });
}

TEST(LineSigns, ALineThatIsCutAndPasted_TakesItsSignAlong) {
  SignForm form;
  RunEditor(form, [&] {
    form.Prepare();
    form.Delete(1, 0, 2, 0);
    form.Settle();
    form.editor.Select(form.editor.Length(), form.editor.Length());
    form.editor.ReplaceSelection("\n  one\n");
    EXPECT_EQ(form.Lines(), "5 2");
  });
}

TEST(LineSigns, OneThatWasFoundToBeGone_StaysSo) {
  SignForm form;
  RunEditor(form, [&] {
    form.Prepare();
    form.Delete(1, 0, 2, 0);
    EXPECT_EQ(form.editor.SignLine(form.first), -1);
    form.editor.Send(SCI_UNDO);
    EXPECT_EQ(form.Lines(), "-1 3");
    EXPECT_EQ(form.editor.SignLine(99), -1);
  });
}

TEST(LineSigns, ChangeAndRemove) {
  SignForm form;
  RunEditor(form, [&] {
    form.Prepare();
    const auto marks = [&](int line) { return form.editor.Send(SCI_MARKERGET, line); };
    EXPECT_EQ(marks(1), 1 << (cDisc + 8));
    form.editor.ChangeSign(form.first, cRing);
    EXPECT_EQ(marks(1), 1 << (cRing + 8));
    EXPECT_EQ(form.Lines(), "1 3");
    form.editor.ToggleBookmark(1);
    form.editor.RemoveSign(form.first);
    EXPECT_EQ(marks(1), 1 << 1) << "bookmarks are others";
    form.editor.RemoveSign(form.first);
    EXPECT_EQ(form.Lines(), "-1 3");
    test::Shot(form, "editor_signs");
  });
}

struct ClickedEditor : test::AskedEditor {
  void onMarginClick(int line) override { clicked = line; }
  int clicked = -1;
};

TEST(LineSigns, AClickInTheMargin_IsToldIfWanted) {
  for (const bool wants : {false, true}) {
    Form form;
    form.SetBounds(0, 0, 400, 300);
    ClickedEditor editor;
    editor.options->marginClicks = wants;
    editor.dock = Dock::cFill;
    form.Add(&editor);
    test::RunForm(form, false, [&] {
      editor.ReplaceSelection("a\nb\nc\n");
      const auto y = static_cast<int>(editor.Send(SCI_POINTYFROMPOSITION, 0, editor.LineStart(1)));
      test::Click(editor, QPoint(8, y + 4));
      EXPECT_EQ(editor.clicked, wants ? 1 : -1);
    });
  }
}

TEST(MouseTip, ShowsWhereTheMouseRests_AndOnlyThen) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("abc");
    auto* sci = test::WidgetOf(form.editor);
    const auto mouse = [&](const char* what) {
      QMetaObject::invokeMethod(sci, what, Q_ARG(int, 2), Q_ARG(int, 1), Q_ARG(int, 1));
    };
    EXPECT_FALSE(form.editor.ShowMouseTip("abc = 1"));
    mouse("SCN_DWELLSTART");
    EXPECT_TRUE(form.editor.ShowMouseTip("abc = 1"));
    EXPECT_TRUE(form.editor.Send(SCI_CALLTIPACTIVE));
    mouse("SCN_DWELLEND");
    EXPECT_FALSE(form.editor.Send(SCI_CALLTIPACTIVE));
    EXPECT_FALSE(form.editor.ShowMouseTip("abc = 1")) << "the answer comes too late";
    EXPECT_FALSE(form.editor.Send(SCI_CALLTIPACTIVE));
  });
}

}  // namespace
}  // namespace mavro
