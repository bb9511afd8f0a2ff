#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <memory>

#include "Button.h"
#include "Edit.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Looks.h"

namespace mavro {
namespace {

struct MemoForm : Form {
  test::EventLog log;
  Memo memo;
  Button ok;

  MemoForm() {
    SetBounds(0, 0, 400, 260);
    autoDialogKeys = true;
    memo.SetBounds(0, 0, 400, 200);
    Add(&memo);
    ok.SetLocation(10, 210);
    ok.kind = Button::cOk;
    Add(&ok);
    log.Listen("change", memo.onChange);
    log.Listen("caret", memo.onCaretMoved);
    log.Listen("ok", ok.onClick);
  }
  QPlainTextEdit* Widget() { return qobject_cast<QPlainTextEdit*>(test::WidgetOf(memo)); }
  QScrollBar* Bar() { return Widget()->verticalScrollBar(); }
  void AppendLines(int count) {
    for (int i = 0; i < count; ++i) memo.Append("line " + std::to_string(i) + "\n");
  }
  // True once what was appended is in the widget.
  bool Shows(int blocks) {
    return test::WaitFor([&] { return Widget()->blockCount() == blocks; });
  }
};

std::string ThroughAWindow(const std::string& bytes) {
  MemoForm form;
  form.memo.text = bytes;
  test::RunForm(form, false, [&] { EXPECT_EQ(form.memo.text.Get(), bytes); });
  return form.memo.text;
}

TEST(Memo, Text_AnyBytesAndLineEnds_ComeOutAsTheyWent) {
  const std::string cases[] = {"",
                               "\n",
                               "\r\n",
                               "\r",
                               "one line",
                               "a\nb\n",
                               "a\r\nb\r\n",
                               "a\r\nb\nc\rd\n\r\n\r\r\n",
                               "no end\r\nat last",
                               "\xFF\xFE \xC3\n\x80\r\n\xE4\xB8\x96",
                               "para \xE2\x80\xA9 line \xE2\x80\xA8 frame \xEF\xB7\x90\xEF\xB7\x91",
                               "nbsp\xC2\xA0 form\f bell\a esc\x1B[31m",
                               std::string("nul\0s\0", 6),
                               "\xF0\x9F\x98\x80\n"};
  for (const std::string& bytes : cases) EXPECT_EQ(ThroughAWindow(bytes), bytes);
}

TEST(Memo, Append_CutAnywhere_GivesTheSameBytesAndLines) {
  const std::string bytes = "a\r\n\xE4\xB8\x96\xF0\x9F\x98\x80\nx\r\n";
  for (size_t cut = 0; cut <= bytes.size(); ++cut) {
    MemoForm form;
    test::RunForm(form, false, [&] {
      form.memo.Append(bytes.substr(0, cut));
      QTest::qWait(0);
      form.memo.Append(bytes.substr(cut));
      EXPECT_EQ(form.memo.text.Get(), bytes);
      EXPECT_TRUE(form.Shows(4)) << cut;
      EXPECT_EQ(form.Widget()->toPlainText().toStdString(), "a\n\xE4\xB8\x96\xF0\x9F\x98\x80\nx\n");
    });
  }
}

TEST(Memo, Append_BeforeTheWindow_IsShownWithIt) {
  MemoForm form;
  form.memo.Append("a\n");
  form.memo.Append("b");
  EXPECT_EQ(form.memo.text.Get(), "a\nb");
  EXPECT_EQ(form.memo.LineCount(), 2);
  test::RunForm(form, false, [&] { EXPECT_EQ(form.Widget()->toPlainText(), "a\nb"); });
  EXPECT_EQ(form.log.Take(), "");
}

TEST(Memo, Append_FollowsTheEnd) {
  MemoForm form;
  test::RunForm(form, false, [&] {
    form.AppendLines(500);
    ASSERT_TRUE(form.Shows(501));
    EXPECT_GT(form.Bar()->maximum(), 0);
    EXPECT_EQ(form.Bar()->value(), form.Bar()->maximum());
    form.memo.height = 100;
    EXPECT_EQ(form.Bar()->value(), form.Bar()->maximum());
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(Memo, Append_ScrolledUpWithASelection_LeavesBoth) {
  MemoForm form;
  test::RunForm(form, false, [&] {
    form.AppendLines(500);
    ASSERT_TRUE(form.Shows(501));
    form.memo.GoToLine(3);
    QTest::keyClick(form.Widget(), Qt::Key_End, Qt::ShiftModifier);
    form.Bar()->setValue(40);
    form.AppendLines(500);
    ASSERT_TRUE(form.Shows(1001));
    EXPECT_EQ(form.Bar()->value(), 40);
    EXPECT_EQ(form.Widget()->textCursor().selectedText(), "line 2");
  });
}

TEST(Memo, Append_CaretAtTheEnd_StaysAndSelectsNothing) {
  MemoForm form;
  test::RunForm(form, false, [&] {
    form.memo.Append("abc");
    form.memo.Update();
    form.memo.Focus();
    QTest::keyClick(form.Widget(), Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(form.Widget(), Qt::Key_Left, Qt::ShiftModifier);
    QTest::keyClick(form.Widget(), Qt::Key_Right, Qt::ShiftModifier);
    form.memo.Append("def");
    form.memo.Update();
    EXPECT_EQ(form.Widget()->toPlainText(), "abcdef");
    EXPECT_EQ(form.memo.CaretColumn(), 4);
    EXPECT_FALSE(form.Widget()->textCursor().hasSelection());
  });
}

TEST(Memo, MaxLines_KeepsTheLastOnes) {
  MemoForm form;
  form.memo.maxLines = 10;
  test::RunForm(form, false, [&] {
    form.AppendLines(100);
    ASSERT_TRUE(test::WaitFor([&] { return form.memo.LineCount() == 10; }));
    EXPECT_EQ(form.memo.text.Get().substr(0, 8), "line 91\n");
    EXPECT_EQ(form.memo.text.Get().substr(64), "line 99\n");
  });
}

TEST(Memo, MaxLines_ScrolledUp_KeepsTheLinesInView) {
  MemoForm form;
  form.memo.maxLines = 500;
  test::RunForm(form, false, [&] {
    form.AppendLines(499);
    ASSERT_TRUE(form.Shows(500));
    form.Bar()->setValue(100);
    form.memo.Append("x\ny\n");
    ASSERT_TRUE(test::WaitFor([&] { return form.Bar()->value() == 98; }));
  });
}

TEST(Memo, Append_WhileATaskBlocks_IsShownWithoutTimers) {
  MemoForm form;
  test::RunForm(form, false, [&] {
    form.AppendLines(50);
    QElapsedTimer clock;
    clock.start();
    while (form.Widget()->blockCount() < 51 && clock.elapsed() < 20000)
      QAbstractEventDispatcher::instance()->processEvents(QEventLoop::ExcludeUserInputEvents |
                                                          QEventLoop::X11ExcludeTimers);
    EXPECT_EQ(form.Widget()->blockCount(), 51);
  });
}

TEST(Memo, Update_ShowsAllThatWasAppended) {
  MemoForm form;
  test::RunForm(form, false, [&] {
    form.AppendLines(50);
    form.memo.Update();
    EXPECT_EQ(form.Widget()->blockCount(), 51);
  });
}

TEST(Memo, Clear_TakesWhatWaitsToBeShownToo) {
  MemoForm form;
  test::RunForm(form, false, [&] {
    form.AppendLines(3);
    form.memo.Clear();
    EXPECT_EQ(form.memo.text.Get(), "");
    EXPECT_EQ(form.memo.LineCount(), 1);
    form.memo.Append("new");
    EXPECT_EQ(form.memo.text.Get(), "new");
  });
}

TEST(Memo, GoToLine_PutsTheCaretAndTellsIt) {
  MemoForm form;
  test::RunForm(form, false, [&] {
    form.AppendLines(500);
    form.memo.GoToLine(300);
    EXPECT_EQ(form.memo.CaretLine(), 300);
    EXPECT_EQ(form.memo.CaretColumn(), 1);
    EXPECT_EQ(form.log.Take(), "caret:0 ");
    EXPECT_TRUE(form.Widget()->viewport()->rect().contains(form.Widget()->cursorRect()));
  });
}

TEST(Memo, GoToLine_OutOfRange_TakesTheNearest) {
  MemoForm form;
  form.memo.text = "a\nb\nc";
  test::RunForm(form, false, [&] {
    for (const auto& [wanted, got] : {std::pair(99, 3), {0, 1}, {-5, 1}, {2, 2}}) {
      form.memo.GoToLine(wanted);
      EXPECT_EQ(form.memo.CaretLine(), got);
    }
  });
}

TEST(Memo, GoToLine_BeforeTheWindow_IsInViewWhenItShows) {
  MemoForm form;
  form.AppendLines(500);
  form.memo.GoToLine(400);
  EXPECT_EQ(form.memo.CaretLine(), 400);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.memo.CaretLine(), 400);
    EXPECT_TRUE(form.Widget()->viewport()->rect().contains(form.Widget()->cursorRect()));
  });
}

TEST(Memo, Caret_ColumnCountsCharacters) {
  MemoForm form;
  form.memo.text = "\xC3\xA4\xF0\x9F\x98\x80\xFFx\n";
  test::RunForm(form, false, [&] {
    form.memo.Focus();
    QTest::keyClick(form.Widget(), Qt::Key_End);
    EXPECT_EQ(form.memo.CaretColumn(), 5);
    EXPECT_EQ(form.log.Take(), "caret:0 ");
  });
}

TEST(Memo, MarkLine_ColoursOneLineUntilTheNext) {
  MemoForm form;
  form.memo.text = "a\nb\nc\n";
  form.memo.MarkLine(2);
  test::RunForm(form, false, [&] {
    const auto marked = [&] {
      const auto marks = form.Widget()->extraSelections();
      return marks.isEmpty() ? 0 : marks.first().cursor.blockNumber() + 1;
    };
    EXPECT_EQ(marked(), 2);
    form.memo.MarkLine(3);
    EXPECT_EQ(marked(), 3);
    form.memo.MarkLine(99);
    EXPECT_EQ(marked(), 0);
    form.memo.MarkLine(1);
    form.memo.MarkLine(0);
    EXPECT_EQ(marked(), 0);
  });
}

TEST(Memo, LongLine_StaysOneLineOfTheText) {
  MemoForm form;
  std::string bytes = "first\r\n";
  bytes += std::string(5000, 'x') + "\xF0\x9F\x98\x80" + std::string(5000, 'y') + "\r\nlast";
  form.memo.text = bytes;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.memo.text.Get(), bytes);
    EXPECT_EQ(form.memo.LineCount(), 3);
    EXPECT_GT(form.Widget()->blockCount(), 5);
    form.memo.GoToLine(3);
    EXPECT_EQ(form.memo.CaretLine(), 3);
    EXPECT_EQ(form.Widget()->textCursor().block().text(), "last");
    QTest::keyClick(form.Widget(), Qt::Key_Left);
    EXPECT_EQ(form.memo.CaretLine(), 2);
    EXPECT_EQ(form.memo.CaretColumn(), 10002);
    form.memo.SelectAll();
    QTest::keyClick(form.Widget(), Qt::Key_C, Qt::ControlModifier);
    std::string copied = QGuiApplication::clipboard()->text().toStdString();
    bytes.erase(std::remove(bytes.begin(), bytes.end(), '\r'), bytes.end());
    EXPECT_EQ(copied, bytes);
  });
}

TEST(Memo, LongLine_TenMegabytes_IsShownAndComesBack) {
  MemoForm form;
  const std::string bytes(10 << 20, 'z');
  test::RunForm(form, false, [&] {
    form.memo.Append(bytes);
    form.Widget()->grab();
    form.memo.Append("z\nend");
    EXPECT_EQ(form.memo.LineCount(), 2);
    EXPECT_EQ(form.memo.text.Get().size(), bytes.size() + 5);
  });
}

TEST(Memo, Copy_GivesTheSelectedLines) {
  MemoForm form;
  form.memo.text = "one\r\ntwo\r\nthree";
  form.memo.readOnly = true;
  test::RunForm(form, false, [&] {
    form.memo.Focus();
    QTest::keyClick(form.Widget(), Qt::Key_Right);
    QTest::keyClick(form.Widget(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(form.Widget(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "ne\nt");
  });
}

TEST(Memo, Typing_EnterTabAndText_FireOnChange) {
  MemoForm form;
  test::RunForm(form, false, [&] {
    form.memo.Focus();
    test::Key(form, Qt::Key_A);
    test::Key(form, Qt::Key_Return);
    test::Key(form, Qt::Key_Tab);
    test::Key(form, Qt::Key_B);
    EXPECT_EQ(form.memo.text.Get(), "a\r\n\tb");
    EXPECT_NE(form.log.Take().find("change:0"), std::string::npos);
    EXPECT_TRUE(form.memo.IsFocused());
  });
}

TEST(Memo, Typing_NewLinesEndAsThoseOfTheText) {
  MemoForm form;
  form.memo.text = "a\nb\r\nc";
  test::RunForm(form, false, [&] {
    form.memo.Focus();
    QTest::keyClick(form.Widget(), Qt::Key_Return);
    EXPECT_EQ(form.memo.text.Get(), "\na\nb\r\nc");
    form.memo.GoToLine(4);
    QTest::keyClick(form.Widget(), Qt::Key_Return);
    EXPECT_EQ(form.memo.text.Get(), "\na\nb\r\n\nc");
    QTest::keyClick(form.Widget(), Qt::Key_Backspace);
    EXPECT_EQ(form.memo.text.Get(), "\na\nb\r\nc");
  });
}

TEST(Memo, Paste_ReplacesTheSelection) {
  MemoForm form;
  form.memo.text = "a\r\nb\nc";
  test::RunForm(form, false, [&] {
    form.memo.Focus();
    QTest::keyClick(form.Widget(), Qt::Key_Down, Qt::ShiftModifier);
    QGuiApplication::clipboard()->setText("1\n2");
    QTest::keyClick(form.Widget(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.memo.text.Get(), "1\r\n2b\nc");
  });
}

TEST(Memo, Undo_TakesTypingBack) {
  MemoForm form;
  form.memo.text = "a\nb";
  test::RunForm(form, false, [&] {
    form.memo.Focus();
    QTest::keyClicks(form.Widget(), "xy");
    QTest::keyClick(form.Widget(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form.memo.text.Get(), "a\nb");
    QTest::keyClick(form.Widget(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form.memo.text.Get(), "a\nb");
  });
}

TEST(Memo, ReadOnly_TakesNoKeysAndLetsTabPass) {
  MemoForm form;
  form.memo.readOnly = true;
  form.memo.text = "text";
  test::RunForm(form, false, [&] {
    form.memo.Focus();
    test::Key(form, Qt::Key_A);
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.memo.text.Get(), "text");
    test::Key(form, Qt::Key_Tab);
    EXPECT_FALSE(form.memo.IsFocused());
  });
}

TEST(Memo, Enter_DoesNotPressTheDefaultButton) {
  MemoForm form;
  test::RunForm(form, true, [&] {
    form.memo.Focus();
    test::Key(form, Qt::Key_Return);
    SendMessage(form.impl->hwnd, WM_COMMAND, 1, 0);
    EXPECT_EQ(form.log.Take().find("ok"), std::string::npos);
    EXPECT_EQ(form.state, cShown);
  });
}

TEST(Memo, Monospaced_TakesTheFixedFontAtTheFontsSize) {
  MemoForm form;
  form.memo.monospaced = true;
  form.memo.font = Font(14);
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(test::HasFixedWidth(form.Widget()->font()));
    EXPECT_EQ(form.Widget()->font().pointSize(), 14);
    form.memo.font = Font(9);
    EXPECT_TRUE(test::HasFixedWidth(form.Widget()->font()));
  });
}

TEST(Memo, Hidden_TakesTextAndShowsItsEndWhenShown) {
  MemoForm form;
  form.memo.visible = false;
  test::RunForm(form, false, [&] {
    form.AppendLines(500);
    ASSERT_TRUE(form.Shows(501));
    form.memo.visible = true;
    EXPECT_EQ(form.Bar()->value(), form.Bar()->maximum());
  });
}

// A burst is shown in parts, so that no part takes long; the rest waits for no more than one.
TEST(Memo, Burst_LeavesLittleWaiting) {
  MemoForm form;
  test::RunForm(form, false, [&] {
    const std::string lines(16 << 10, '\n');
    for (int part = 1; part <= 40; ++part) {
      form.memo.Append(lines);
      const int appended = part * static_cast<int>(lines.size());
      EXPECT_GT(form.Widget()->blockCount(), appended - (128 << 10));
    }
  });
}

TEST(Memo, Destroyed_InItsOwnEvents) {
  for (const bool byChange : {true, false}) {
    test::EventLog log;
    MemoForm form;
    auto memo = std::make_unique<Memo>();
    memo->text = "a\nb";
    log.Listen("gone", byChange ? memo->onChange : memo->onCaretMoved,
               [&](NotifyArgs&) { memo.reset(); });
    form.Add(memo.get());
    test::RunForm(form, false, [&] {
      memo->Focus();
      QTest::keyClick(test::WidgetOf(*memo), byChange ? Qt::Key_A : Qt::Key_Down);
      EXPECT_EQ(memo, nullptr);
    });
  }
}

TEST(Memo, Destroyed_WithTextWaiting_LeavesItsForm) {
  MemoForm form;
  auto memo = std::make_unique<Memo>();
  const Control* gone = memo.get();
  form.Add(memo.get());
  test::RunForm(form, false, [&] {
    for (int i = 0; i < 100; ++i) memo->Append("x\n");
    memo.reset();
    QApplication::processEvents();
    EXPECT_TRUE(std::find(form.children.begin(), form.children.end(), gone) == form.children.end());
  });
}

}  // namespace
}  // namespace mavro
