#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>
#include <QWheelEvent>
#include "DarkPalette.h"

#include "EditorColours.h"
#include "EditorForm.h"
#include "StylePalette.h"

namespace mavro {
namespace {

using test::AsPixel;
using test::EditorForm;
using test::RunEditor;

TEST(SciEditor, Send_BeforeTheWindow_AnswersNothing) {
  SciEditor editor;
  EXPECT_EQ(editor.Send(SCI_GETLENGTH), 0);
  EXPECT_EQ(editor.GetText(), "");
  EXPECT_FALSE(editor.load("/nowhere").Ok());
  EXPECT_FALSE(editor.save("/nowhere").Ok());
}

TEST(SciEditor, Type_Letters_StandInTheText) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Type("int a;\nb");
    EXPECT_EQ(form.editor.GetText(), "int a;\nb");
    EXPECT_EQ(form.editor.CaretLine(), 1);
    EXPECT_TRUE(form.editor.dirty);
    EXPECT_EQ(form.editor.savePoints, "left ");
    EXPECT_GT(form.editor.textChanges, 0);
  });
}

TEST(SciEditor, Undo_BackToTheSavePoint_IsClean) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Type("a");
    EXPECT_TRUE(form.editor.OnCommand(cSciUndo));
    EXPECT_FALSE(form.editor.dirty);
    EXPECT_EQ(form.editor.savePoints, "left reached ");
    EXPECT_TRUE(form.editor.OnCommand(cSciRedo));
    EXPECT_EQ(form.editor.GetText(), "a");
  });
}

TEST(SciEditor, TextOperations_LinesRangesAndSelection_AreInBytes) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("one\r\ntwo\nthree");
    SciEditor& editor = form.editor;
    EXPECT_EQ(editor.Length(), 14);
    EXPECT_EQ(editor.LineCount(), 3);
    EXPECT_EQ(editor.LineText(0), "one\r\n");
    EXPECT_EQ(editor.LineText(2), "three");
    EXPECT_EQ(editor.LineStart(1), 5);
    EXPECT_EQ(editor.LineEnd(1), 8);
    EXPECT_EQ(editor.LineOf(9), 2);
    EXPECT_EQ(editor.GetRange(-5, 3), "one");
    EXPECT_EQ(editor.GetRange(12, 99), "ee");
    EXPECT_EQ(editor.GetRange(8, 3), "");
    editor.Select(8, 5);
    EXPECT_EQ(editor.SelectedText(), "two");
    EXPECT_EQ(editor.Selection(), (std::pair{5, 8}));
    editor.ReplaceSelection(std::string_view("a\0b", 3));
    EXPECT_EQ(editor.GetText(), std::string("one\r\na\0b\nthree", 14));
  });
}

TEST(SciEditor, ChangeCount_InsertAndDelete_CountAtOnce) {
  EditorForm form;
  RunEditor(form, [&] {
    const unsigned long before = form.editor.ChangeCount();
    form.editor.Send(SCI_ADDTEXT, 1, "x");
    EXPECT_EQ(form.editor.ChangeCount(), before + 1);
    form.editor.Send(SCI_CLEARALL);
    EXPECT_EQ(form.editor.ChangeCount(), before + 2);
  });
}

struct OptionCase {
  unsigned message;
  std::uintptr_t wParam;
  std::intptr_t wanted;
};

TEST(SciEditor, ApplyOptions_Defaults_AreSentToTheComponent) {
  const OptionCase cases[] = {
      {SCI_GETTABWIDTH, 0, 3},
      {SCI_GETINDENT, 0, 3},
      {SCI_GETUSETABS, 0, 1},
      {SCI_AUTOCGETMAXHEIGHT, 0, 12},
      {SCI_GETMOUSEDWELLTIME, 0, 500},
      {SCI_GETMARGINWIDTHN, 0, 0},
      {SCI_GETMARGINWIDTHN, 1, 16},
      {SCI_GETMARGINWIDTHN, 2, 0},
      {SCI_GETMARGINTYPEN, 0, 1},
      {SCI_GETMARGINTYPEN, 1, 0},
      {SCI_GETMARGINSENSITIVEN, 2, 1},
      {SCI_GETMARGINSENSITIVEN, 1, 0},
      {SCI_GETCODEPAGE, 0, 0},
      {SCI_STYLEGETSIZE, 32, 14},
      {SCI_GETLEXER, 0, 3},
      {SCI_GETEOLMODE, 0, SC_EOL_LF},
      {SCI_AUTOCGETCANCELATSTART, 0, 0},
      {SCI_AUTOCGETDROPRESTOFWORD, 0, 0},
      {SCI_AUTOCGETIGNORECASE, 0, 0},
      {SCI_GETEDGEMODE, 0, 0},
  };
  EditorForm form;
  RunEditor(form, [&] {
    for (const OptionCase& row : cases)
      EXPECT_EQ(form.editor.Send(row.message, row.wParam), row.wanted) << row.message;
    EXPECT_EQ(form.editor.Send(SCI_GETMARGINMASKN, 2) & 0xFFFFFFFF, 0xFE000000);
    EXPECT_EQ(form.editor.Send(SCI_GETMARGINMASKN, 1) & 0xFE000000, 0);
  });
}

TEST(SciEditor, ApplyOptions_FoldMarginOn_HasItsWidth) {
  EditorForm form;
  form.editor.options->foldMargin = true;
  form.editor.options->bookmarkMargin = false;
  form.editor.options->edgeColumn = 80;
  RunEditor(form, [&] {
    EXPECT_EQ(form.editor.Send(SCI_GETMARGINWIDTHN, 2), 20);
    EXPECT_EQ(form.editor.Send(SCI_GETMARGINWIDTHN, 1), 0);
    EXPECT_EQ(form.editor.Send(SCI_GETEDGECOLUMN), 80);
  });
}

struct FoldCase {
  int style;
  int symbols[6];
};

TEST(SciEditor, FoldStyles_EachOfFour_DefinesItsSymbols) {
  const FoldCase cases[] = {{0, {7, 8, 5, 5, 5, 5}},
                            {1, {6, 2, 5, 5, 5, 5}},
                            {2, {20, 18, 9, 16, 19, 21}},
                            {3, {14, 12, 9, 10, 13, 15}}};
  const unsigned markers[] = {31, 30, 29, 28, 25, 26};
  EditorForm form;
  RunEditor(form, [&] {
    for (const FoldCase& row : cases) {
      form.editor.options->foldStyle = row.style;
      form.editor.applyOptions();
      for (int i = 0; i < 6; ++i)
        EXPECT_EQ(form.editor.Send(SCI_MARKERSYMBOLDEFINED, markers[i]), row.symbols[i])
            << row.style << " " << i;
    }
  });
}

TEST(SciEditor, FoldStyle_OutOfRange_IsTheNearest) {
  EditorForm form;
  form.editor.options->foldStyle = 99;
  RunEditor(form, [&] { EXPECT_EQ(form.editor.Send(SCI_MARKERSYMBOLDEFINED, 31), 14); });
}

std::string Property(SciEditor& editor, const char* name) {
  char value[20] = "";
  editor.Send(SCI_GETPROPERTY, reinterpret_cast<std::uintptr_t>(name), value);
  return value;
}

TEST(SciEditor, LexerProperties_FollowTheOptions) {
  EditorForm form;
  form.editor.options->foldMargin = true;
  form.editor.options->foldComment = true;
  RunEditor(form, [&] {
    EXPECT_EQ(Property(form.editor, "fold"), "1");
    EXPECT_EQ(Property(form.editor, "fold.compact"), "0");
    EXPECT_EQ(Property(form.editor, "fold.comment"), "1");
    EXPECT_EQ(Property(form.editor, "fold.preprocessor"), "0");
    EXPECT_EQ(Property(form.editor, "fold.flags"), std::to_string(0x10));
    EXPECT_EQ(Property(form.editor, "fold.symbols"), "3");
  });
}

TEST(SciEditor, Styles_RowsOfTheLanguage_AreSentAsGiven) {
  EditorForm form;
  RunEditor(form, [&] {
    const SciEditor& editor = form.editor;
    for (const StyleRow* row = test::cSmallStyles; row->style < StyleRow::cEnd; ++row) {
      const auto style = static_cast<std::uintptr_t>(row->style);
      EXPECT_EQ(editor.Send(SCI_STYLEGETFORE, style), row->foreground.light) << style;
      EXPECT_EQ(editor.Send(SCI_STYLEGETBOLD, style), (row->flags & 0x1000) != 0) << style;
      EXPECT_EQ(editor.Send(SCI_STYLEGETITALIC, style), (row->flags & 0x2000) != 0) << style;
      EXPECT_EQ(editor.Send(SCI_STYLEGETEOLFILLED, style), (row->flags & 0x8000) != 0) << style;
      EXPECT_EQ(editor.Send(SCI_STYLEGETSIZE, style), row->flags & 0xFF ? row->flags & 0xFF : 14);
      const int ground = row->background.light ? row->background.light : 0xFFFFFF;
      EXPECT_EQ(editor.Send(SCI_STYLEGETBACK, style), ground) << style;
    }
    EXPECT_EQ(editor.Send(SCI_STYLEGETBACK, 33), ColourOf(cMarginGround).light);
    EXPECT_EQ(editor.Send(SCI_STYLEGETBACK, 37), 0xFFFFFF);
  });
}

std::string Face(const SciEditor& editor, std::uintptr_t style) {
  char face[100] = "";
  editor.Send(SCI_STYLEGETFONT, style, face);
  return face;
}

TEST(SciEditor, SwitchFontType_Flips_AllButTheNumbers) {
  EditorForm form;
  form.editor.options->fontFace = "DejaVu Sans";
  form.editor.options->monoFace = "DejaVu Sans Mono";
  RunEditor(form, [&] {
    EXPECT_EQ(Face(form.editor, 0), "DejaVu Sans");
    EXPECT_TRUE(form.editor.OnCommand(cSciSwitchFontType));
    EXPECT_TRUE(form.editor.options->monospaced);
    EXPECT_EQ(Face(form.editor, 0), "DejaVu Sans Mono");
    EXPECT_EQ(Face(form.editor, 5), "DejaVu Sans Mono");
    EXPECT_EQ(form.editor.Send(SCI_STYLEGETSIZE, 1), 14);
    EXPECT_EQ(Face(form.editor, 33), "DejaVu Sans");
    EXPECT_TRUE(form.editor.OnCommand(cSciSwitchFontType));
    EXPECT_EQ(Face(form.editor, 0), "DejaVu Sans");
  });
}

TEST(SciEditor, ShowLineNumbers_ManyLines_FitTheirMargin) {
  EditorForm form;
  RunEditor(form, [&] {
    EXPECT_TRUE(form.editor.OnCommand(cSciShowLineNumbers));
    const auto narrow = form.editor.Send(SCI_GETMARGINWIDTHN, 0);
    EXPECT_GE(narrow, 20);
    form.Fill(std::string(100000, '\n'));
    EXPECT_GT(form.editor.Send(SCI_GETMARGINWIDTHN, 0), narrow);
    EXPECT_TRUE(form.editor.OnCommand(cSciShowLineNumbers));
    EXPECT_EQ(form.editor.Send(SCI_GETMARGINWIDTHN, 0), 0);
  });
}

TEST(SciEditor, MarkTypes_Enabled_ColourTheGroundOfTheirLine) {
  static constexpr MarkType cTypes[] = {
      {0, 0xFF0000}, {1, 0xFF, MarkSign::cNone, false}, {2, 0xFF00, MarkSign::cError}};
  EditorForm form;
  form.editor.markTypes = cTypes;
  form.editor.markTypeCount = 3;
  RunEditor(form, [&] {
    EXPECT_EQ(form.editor.Send(SCI_MARKERSYMBOLDEFINED, 0), SC_MARK_BACKGROUND);
    EXPECT_NE(form.editor.Send(SCI_MARKERSYMBOLDEFINED, 1), SC_MARK_BACKGROUND);
    form.Fill("a\nb\nc");
    form.editor.SetLineMark(2, 0);
    form.editor.SetLineMark(2, 2);
    EXPECT_EQ(form.editor.Send(SCI_MARKERGET, 0), 0) << "an exclusive mark stands once";
    EXPECT_EQ(form.editor.Send(SCI_MARKERGET, 2), 1 << 2 | 1 << 10) << "ground and sign";
    form.editor.RemoveLineMarks(2);
    EXPECT_EQ(form.editor.Send(SCI_MARKERGET, 2), 0);
  });
}

// The colour of a line where no text is.
QRgb GroundBehind(EditorForm& form, int line) {
  const QImage image = test::WidgetOf(form.editor)->grab().toImage();
  const auto y = form.editor.Send(SCI_POINTYFROMPOSITION, 0,
                                  static_cast<std::intptr_t>(form.editor.LineStart(line)));
  return image.pixel(image.width() / 2, static_cast<int>(y) + 4);
}

TEST(SciEditor, MarkedLine_HasItsGroundAndSign_AlsoUnderTheCaret) {
  static constexpr MarkType cTypes[] = {{4, ColourOf(cErrorGround), MarkSign::cError}};
  EditorForm form;
  form.editor.markTypes = cTypes;
  form.editor.markTypeCount = 1;
  RunEditor(form, [&] {
    form.Fill("a\nb\nc\n");
    form.Settle();
    const auto signs = [&] {
      const QImage image = test::WidgetOf(form.editor)->grab().toImage();
      int reds = 0;
      for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < 16; ++x) reds += image.pixelColor(x, y) == QColor(0xCC, 0x22, 0x22);
      return reds;
    };
    EXPECT_EQ(signs(), 0);
    form.editor.SetLineMark(4, 1);
    form.Settle();
    EXPECT_GT(signs(), 30);
    EXPECT_EQ(GroundBehind(form, 0), AsPixel(cCaretLineGround));
    EXPECT_EQ(GroundBehind(form, 1), AsPixel(cErrorGround));
    EXPECT_EQ(GroundBehind(form, 2), AsPixel(cTextGround));
    form.editor.goToLine(1);
    form.Settle();
    EXPECT_EQ(GroundBehind(form, 0), AsPixel(cTextGround));
    EXPECT_EQ(GroundBehind(form, 1), AsPixel(cErrorGround)) << "the mark is not hidden";
    form.editor.RemoveLineMarks(4);
    form.Settle();
    EXPECT_EQ(GroundBehind(form, 1), AsPixel(cCaretLineGround));
  });
}

TEST(SciEditor, Folds_ALineIsDrawnBelowClosedOnes_AboveOpenOnesWhenWanted) {
  EditorForm form;
  form.editor.options->foldMargin = true;
  RunEditor(form, [&] {
    form.Fill("int a;\nvoid f() {\n\tx;\n}\nint b;\n");
    form.Settle();
    // Rows of pixels, right of all text, that are dark.
    const auto lines = [&] {
      form.Settle();
      const QImage image = test::WidgetOf(form.editor)->grab().toImage();
      int rows = 0;
      for (int y = 2; y < image.height() - 20; ++y)
        rows += qGray(image.pixel(image.width() - 40, y)) < 100;
      return rows;
    };
    EXPECT_EQ(lines(), 0);
    form.editor.Send(SCI_TOGGLEFOLD, 1);
    EXPECT_EQ(lines(), 1);
    form.editor.Send(SCI_TOGGLEFOLD, 1);
    form.editor.options->lineAboveOpenFolds = true;
    form.editor.applyOptions();
    EXPECT_EQ(lines(), 1);
    form.editor.Send(SCI_TOGGLEFOLD, 1);
    EXPECT_EQ(lines(), 0);
  });
}

TEST(SciEditor, LeftOutBranch_HasAGroundOfItsOwnAndTheSameInks) {
  EditorForm form;
  form.editor.small.leftOutStyles = 64;
  RunEditor(form, [&] {
    form.Fill("int a;\n#if 0\nint b;\n#endif\n");
    form.Settle();
    EXPECT_EQ(GroundBehind(form, 2), AsPixel(cLeftOutGround));
    EXPECT_EQ(GroundBehind(form, 3), AsPixel(cTextGround));
    EXPECT_EQ(form.editor.Send(SCI_STYLEGETFORE, 64 + 5), form.editor.Send(SCI_STYLEGETFORE, 5));
  });
}

TEST(SciEditor, Palette_BecomesDark_ColoursAreReadable) {
  const QPalette before = QApplication::palette();
  EditorForm form;
  RunEditor(form, [&] {
    QApplication::setPalette(test::DarkPalette());
    form.Settle();
    for (int style = 0; style <= 12; ++style) {
      const auto at = static_cast<std::uintptr_t>(style);
      const int fore = static_cast<int>(form.editor.Send(SCI_STYLEGETFORE, at));
      const int back = static_cast<int>(form.editor.Send(SCI_STYLEGETBACK, at));
      EXPECT_GE(Contrast(fore, back), 4.5) << style;
      EXPECT_LT(Lightness(back), 100) << style;
    }
    QApplication::setPalette(before);
    form.Settle();
    EXPECT_EQ(form.editor.Send(SCI_STYLEGETFORE, 5), 0xEF0000);
  });
}

TEST(SciEditor, Wheel_WithControl_Zooms) {
  EditorForm form;
  RunEditor(form, [&] {
    auto* viewport = qobject_cast<QAbstractScrollArea*>(test::WidgetOf(form.editor))->viewport();
    const auto turn = [&](int delta, Qt::KeyboardModifiers modifiers) {
      QWheelEvent event(QPointF(9, 9), viewport->mapToGlobal(QPointF(9, 9)), QPoint(),
                        QPoint(0, delta), Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
      QApplication::sendEvent(viewport, &event);
    };
    turn(120, Qt::ControlModifier);
    turn(60, Qt::ControlModifier);
    turn(60, Qt::ControlModifier);
    EXPECT_EQ(form.editor.Send(SCI_GETZOOM), 2);
    turn(-360, Qt::ControlModifier);
    EXPECT_EQ(form.editor.Send(SCI_GETZOOM), -1);
    turn(120, Qt::NoModifier);
    EXPECT_EQ(form.editor.Send(SCI_GETZOOM), -1);
  });
}

TEST(SciEditor, Insert_Key_SwitchesToOvertype) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("@abc");
    form.editor.updates = 0;
    test::Key(form, Qt::Key_Insert);
    EXPECT_EQ(form.editor.Send(SCI_GETOVERTYPE), 1);
    form.Type("x");
    form.Settle();
    EXPECT_EQ(form.Shown(), "x@bc");
    EXPECT_GT(form.editor.updates, 0);
  });
}

TEST(SciEditor, Dwell_PositionZero_IsNotReported) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("abc");
    auto* sci = test::WidgetOf(form.editor);
    QMetaObject::invokeMethod(sci, "SCN_DWELLSTART", Q_ARG(int, 0), Q_ARG(int, 1), Q_ARG(int, 1));
    EXPECT_EQ(form.editor.dwelt, -1);
    QMetaObject::invokeMethod(sci, "SCN_DWELLSTART", Q_ARG(int, 2), Q_ARG(int, 1), Q_ARG(int, 1));
    EXPECT_EQ(form.editor.dwelt, 2);
  });
}

TEST(SciEditor, Drop_OfFiles_IsLeftToTheWindow) {
  EditorForm form;
  RunEditor(form, [&] {
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile("/tmp/a.cpp")});
    auto* viewport = qobject_cast<QAbstractScrollArea*>(test::WidgetOf(form.editor))->viewport();
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(viewport, &enter);
    EXPECT_FALSE(enter.isAccepted());
  });
}

TEST(SciEditor, ClosingWithAListATipOrARecording_IsClean) {
  for (int round = 0; round < 3; ++round) {
    EditorForm form;
    form.editor.offered = "alpha?1 beta?2";
    form.editor.offeredTip = "foo(int a)";
    RunEditor(form, [&] {
      form.Fill("a\n@");
      if (round == 0) form.Type("f.");
      if (round == 1) form.Type("foo(");
      if (round == 2) form.editor.OnCommand(cSciRecordMacro);
      EXPECT_EQ(form.editor.Send(SCI_AUTOCACTIVE), round == 0);
      EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), round == 1);
    });
    EXPECT_EQ(form.editor.Send(SCI_GETLENGTH), 0);
  }
}

}  // namespace
}  // namespace mavro
