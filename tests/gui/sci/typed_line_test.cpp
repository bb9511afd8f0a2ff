#include <gtest/gtest.h>

#include <QScreen>

#include "EditorForm.h"
#include "PaintWatch.h"

namespace mavro {
namespace {

using test::EditorForm;
using test::PaintWatch;
using test::RunEditor;

struct PaintedForm : EditorForm {
  QWidget& Text() const { return test::TextWidget(editor); }

  // The caret doesn't blink: the component paints no line but for the typed letter.
  void Begin(const std::string& text) {
    editor.Send(SCI_SETCARETPERIOD, 0);
    Fill(text);
    QTest::qWait(0);
  }

  // The lines that typing has painted.
  int LinesPaintedBy(const std::string& typed) {
    PaintWatch watch;
    Text().installEventFilter(&watch);
    Type(typed);
    QTest::qWait(0);
    const auto height = static_cast<int>(editor.Send(SCI_TEXTHEIGHT, 0));
    return (watch.painted.boundingRect().height() + height - 1) / height;
  }

  // True if the screen shows what a painting of all of the text would show.
  testing::AssertionResult IsShownRight() const {
    const QWidget& text = Text();
    const QPoint at = text.mapTo(text.window(), QPoint());
    const QImage shown =
        text.screen()
            ->grabWindow(text.window()->winId(), at.x(), at.y(), text.width(), text.height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    const QImage whole = Text().grab().toImage().convertToFormat(QImage::Format_RGB32);
    if (shown.isNull()) return testing::AssertionFailure() << "nothing is on the screen";
    return shown == whole ? testing::AssertionSuccess()
                          : testing::AssertionFailure() << "another picture is on the screen";
  }
};

TEST(TypedLine, LetterAtTheEndOfALine_PaintsNoOtherLine) {
  PaintedForm form;
  RunEditor(form, [&] {
    form.Begin("int a;\nint b@\nint c;\nint d;\n");
    form.Type("b");
    QTest::qWait(0);
    EXPECT_EQ(form.LinesPaintedBy("x"), 1);
    EXPECT_EQ(form.Shown(), "int a;\nint bbx@\nint c;\nint d;\n");
    EXPECT_TRUE(form.IsShownRight());
  });
}

TEST(TypedLine, LetterWithinALine_PaintsNoOtherLine) {
  PaintedForm form;
  RunEditor(form, [&] {
    form.Begin("int a;\nint b@b;\nint c;\n");
    form.Type("b");
    QTest::qWait(0);
    EXPECT_EQ(form.LinesPaintedBy("x"), 1);
    EXPECT_TRUE(form.IsShownRight());
  });
}

TEST(TypedLine, LetterOfTwoBytes_PaintsNoOtherLine) {
  PaintedForm form;
  RunEditor(form, [&] {
    form.Begin("// \xC3\xA4@\nint c;\nint d;\n");
    QWidget* focused = QApplication::focusWidget();
    const auto type = [&] {
      QKeyEvent key(QEvent::KeyPress, Qt::Key_Odiaeresis, Qt::NoModifier, QString(QChar(0xF6)));
      QApplication::sendEvent(focused, &key);
      QTest::qWait(0);
    };
    type();
    PaintWatch watch;
    form.Text().installEventFilter(&watch);
    type();
    const auto height = static_cast<int>(form.editor.Send(SCI_TEXTHEIGHT, 0));
    EXPECT_LE(watch.painted.boundingRect().height(), height);
    EXPECT_EQ(form.Shown(), "// \xC3\xA4\xC3\xB6\xC3\xB6@\nint c;\nint d;\n");
    EXPECT_TRUE(form.IsShownRight());
  });
}

TEST(TypedLine, SignThatOpensAComment_PaintsTheLinesBelow) {
  PaintedForm form;
  RunEditor(form, [&] {
    form.Begin("int a;\n@\nint c;\nint d;\n");
    form.Type("/");
    QTest::qWait(0);
    EXPECT_GT(form.LinesPaintedBy("*"), 2);
    EXPECT_TRUE(form.IsShownRight());
  });
}

TEST(TypedLine, BracketWithAPartnerBelow_IsShownRight) {
  PaintedForm form;
  RunEditor(form, [&] {
    form.Begin("foo@\n  bar);\nint d;\n");
    for (const char* typed : {"(", "x", ",", " "}) {
      form.Type(typed);
      QTest::qWait(0);
      EXPECT_TRUE(form.IsShownRight()) << typed;
    }
  });
}

TEST(TypedLine, SelectionOverLines_IsShownRight) {
  PaintedForm form;
  RunEditor(form, [&] {
    form.Begin("int a;\nint b;\nint c;\nint d;\n");
    form.editor.Select(3, 16);
    QTest::qWait(0);
    form.Type("x");
    QTest::qWait(0);
    EXPECT_EQ(form.Shown(), "intx@t c;\nint d;\n");
    EXPECT_TRUE(form.IsShownRight());
  });
}

TEST(TypedLine, WrappedLineThatGrows_IsShownRight) {
  PaintedForm form;
  RunEditor(form, [&] {
    form.editor.Send(SCI_SETWRAPMODE, 1);
    form.Begin(std::string(60, 'a') + "@\nint c;\nint d;\n");
    for (int i = 0; i < 40; ++i) form.Type("a ");
    QTest::qWait(0);
    EXPECT_TRUE(form.IsShownRight());
  });
}

TEST(TypedLine, LineThatLeavesTheWindow_IsShownRight) {
  PaintedForm form;
  RunEditor(form, [&] {
    form.Begin("int a;\n@\nint c;\nint d;\n");
    for (int i = 0; i < 100; ++i) form.Type("ab");
    QTest::qWait(0);
    EXPECT_TRUE(form.IsShownRight());
  });
}

TEST(TypedLine, LineOutOfSight_ComesBackAndIsShownRight) {
  PaintedForm form;
  RunEditor(form, [&] {
    std::string text = "@";
    for (int i = 0; i < 100; ++i) text += "int a;\n";
    form.Begin(text);
    form.editor.Send(SCI_LINESCROLL, 0, 50);
    QTest::qWait(0);
    form.Type("x");
    QTest::qWait(0);
    EXPECT_EQ(form.editor.Send(SCI_GETFIRSTVISIBLELINE), 0);
    EXPECT_TRUE(form.IsShownRight());
  });
}

}  // namespace
}  // namespace mavro
