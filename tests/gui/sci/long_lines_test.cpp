#include <gtest/gtest.h>

#include <QClipboard>

#include "EditorForm.h"
#include "LongLines.h"
#include "ScriptedDialogs.h"
#include "TempFolder.h"

// Files with lines that the toolkit would measure for seconds, minutes or hours.

namespace mavro {
namespace {

using test::EditorForm;
using test::RunEditor;

constexpr size_t cLimit = LongLineFolder::cMostOnScreen;

std::string Numbers(size_t bytes) {
  std::string text;
  text.reserve(bytes + 10);
  for (int i = 0; text.size() < bytes; ++i) text += std::to_string(i) + ",";
  text.resize(bytes);
  return text;
}

const std::string& LongLine() {
  static const std::string line = Numbers(3 * cLimit);
  return line;
}

std::string StandIn(int number) {
  return LongLines::CharacterOf(number);
}

struct LongCase {
  const char* name;
  std::string line;
  size_t lines;
};

// Without the stand-ins this takes hours; how long it takes is measured by "hard_lines_bench".
TEST(SciLongLines, Load_WhateverTheLines_IsOnTheScreenAndSavedTheSame) {
  const LongCase cases[] = {
      {"one line of 200 MB", Numbers(200'000'000), 1},
      {"one line of 20 MB", Numbers(20'000'000) + "\r\n", 1},
      {"one line of 20 MB, other bytes", "\xFF" + Numbers(20'000'000), 1},
      {"one line of 20 MB, zeros", std::string(20'000'000, '\0'), 1},
      {"one line of 20 MB, letters of two bytes",
       [] {
         std::string text;
         while (text.size() < 20'000'000) text += "\u00E4";
         return text;
       }(),
       1},
      {"a screen of lines just short enough", Numbers(LongLineFolder::cOrdinaryBytes) + "\n", 100},
      {"many lines of the limit", Numbers(cLimit) + "\n", 40},
      {"very many longer lines", Numbers(LongLineFolder::cOrdinaryBytes + 1) + "\n", 10'000},
  };
  test::TempFolder folder;
  for (const LongCase& row : cases) {
    std::string bytes;
    for (size_t i = 0; i < row.lines; ++i) bytes += row.line;
    const std::string path = folder.Write("a.json", bytes);
    EditorForm form;
    form.editor.options->foldMargin = true;
    RunEditor(form, [&] {
      ASSERT_TRUE(form.editor.load(path).Ok()) << row.name;
      form.Settle();
      EXPECT_FALSE(form.editor.dirty);
      EXPECT_EQ(form.editor.Send(SCI_CANUNDO), 0);
      ASSERT_TRUE(form.editor.save(folder.Path("b")).Ok()) << row.name;
      EXPECT_TRUE(folder.Read("b") == bytes) << row.name;
    });
  }
}

TEST(SciLongLines, Load_ALineOfTheLimit_IsShownAndOneByteMoreIsNot) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    for (const size_t more : {0, 1}) {
      const std::string bytes = "a\n" + Numbers(cLimit + more) + "\nb\n";
      ASSERT_TRUE(form.editor.load(folder.Write("a", bytes)).Ok());
      EXPECT_EQ(form.editor.LinesNotShown(), static_cast<int>(more));
      EXPECT_EQ(form.editor.GetRange(0, form.editor.Length()),
                more ? "a\n" + StandIn(0) + "\nb\n" : bytes);
      EXPECT_TRUE(form.editor.GetText() == bytes);
      EXPECT_EQ(form.editor.LineCount(), 4);
      EXPECT_EQ(form.editor.WholeLength(), bytes.size());
    }
  });
}

struct EncodingCase {
  const char* head;
  const char* name;
  bool hasWideUnits;
};

std::string AsUtf16(const std::string& text) {
  std::string bytes = "\xFF\xFE";
  for (const char c : text) bytes += {c, '\0'};
  return bytes;
}

TEST(SciLongLines, EachEncoding_IsKeptAndOneLetterTypedChangesNothingElse) {
  test::TempFolder folder;
  EditorForm form;
  form.editor.options->smartIndent = false;
  RunEditor(form, [&] {
    const std::string before = "a\n" + LongLine() + "\nb";
    const std::string after = "aQ\n" + LongLine() + "\nb";
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {before, after, "UTF-8"},
        {"\xEF\xBB\xBF" + before, "\xEF\xBB\xBF" + after, "UTF-8 BOM"},
        {AsUtf16(before) + "z", AsUtf16(after) + "z", "UTF-16 LE"},
        {before + "\xE4\xFF", after + "\xE4\xFF", "8 bit"},
        {before + "\xC3\xA4", after + "\xC3\xA4", "UTF-8"},
    };
    for (const auto& [bytes, changed, name] : cases) {
      ASSERT_TRUE(form.editor.load(folder.Write("a", bytes)).Ok());
      EXPECT_EQ(form.editor.LinesNotShown(), 1) << name;
      EXPECT_EQ(form.editor.EncodingName(), name);
      ASSERT_TRUE(form.editor.save(folder.Path("a")).Ok());
      EXPECT_TRUE(folder.Read("a") == bytes) << name;
      form.editor.Select(1, 1);
      form.Type("Q");
      ASSERT_TRUE(form.editor.save(folder.Path("a")).Ok());
      EXPECT_TRUE(folder.Read("a") == changed) << name;
    }
  });
}

TEST(SciLongLines, OtherBytes_ALetterThatIsNoByte_IsRefusedInWords) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    const std::string bytes = "\xE4\n" + LongLine();
    ASSERT_TRUE(form.editor.load(folder.Write("a", bytes)).Ok());
    form.editor.ReplaceSelection("\u20AC");
    const std::string error = form.editor.save(folder.Path("a")).error;
    EXPECT_NE(error.find("letters that are no byte"), std::string::npos) << error;
    EXPECT_TRUE(form.editor.dirty);
    form.editor.OnCommand(cSciUndo);
    form.editor.ReplaceSelection("\u00FC");
    ASSERT_TRUE(form.editor.save(folder.Path("a")).Ok());
    EXPECT_TRUE(folder.Read("a") == "\xFC" + bytes);
  });
}

TEST(SciLongLines, SelectAllDeleteAndUndo_BringsEveryByteBack) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    const std::string bytes = "a\n" + LongLine() + "\nb" + LongLine() + "\n";
    ASSERT_TRUE(form.editor.load(folder.Write("a", bytes)).Ok());
    form.editor.Select(0, form.editor.Length());
    test::Key(form, Qt::Key_Delete);
    EXPECT_EQ(form.editor.GetText(), "");
    EXPECT_EQ(form.editor.LinesNotShown(), 0);
    form.editor.OnCommand(cSciUndo);
    EXPECT_TRUE(form.editor.GetText() == bytes);
    EXPECT_FALSE(form.editor.dirty);
    form.editor.OnCommand(cSciRedo);
    EXPECT_EQ(form.editor.GetText(), "");
    form.editor.OnCommand(cSciUndo);
    ASSERT_TRUE(form.editor.save(folder.Path("a")).Ok());
    EXPECT_TRUE(folder.Read("a") == bytes);
  });
}

TEST(SciLongLines, TypingAroundTheNote_NeverTakesAByteOfIt) {
  test::TempFolder folder;
  EditorForm form;
  form.editor.options->smartIndent = false;
  RunEditor(form, [&] {
    ASSERT_TRUE(form.editor.load(folder.Write("a", "ab\n" + LongLine() + "\ncd\n")).Ok());
    form.editor.Select(3, 3);
    form.Type("Q");
    EXPECT_TRUE(form.editor.GetText() == "ab\nQ" + LongLine() + "\ncd\n");
    test::Key(form, Qt::Key_End);
    form.Type("R");
    EXPECT_TRUE(form.editor.GetText() == "ab\nQ" + LongLine() + "R\ncd\n");
    test::Key(form, Qt::Key_Left);
    test::Key(form, Qt::Key_Left);
    EXPECT_EQ(form.editor.CaretPosition(), 4) << "one step over the note";
    test::Key(form, Qt::Key_Backspace);
    EXPECT_TRUE(form.editor.GetText() == "ab\n" + LongLine() + "R\ncd\n");
  });
}

TEST(SciLongLines, Overtyping_BeforeTheNote_PutsLettersIn) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    ASSERT_TRUE(form.editor.load(folder.Write("a", "ab\n" + LongLine() + "\ncd\n")).Ok());
    form.editor.Send(SCI_SETOVERTYPE, 1);
    form.editor.Select(3, 3);
    form.Type("QR");
    EXPECT_TRUE(form.editor.GetText() == "ab\nQR" + LongLine() + "\ncd\n");
    EXPECT_EQ(form.editor.Send(SCI_GETOVERTYPE), 1) << "elsewhere it goes on";
    form.editor.Select(0, 0);
    form.Type("S");
    EXPECT_TRUE(form.editor.GetText() == "Sb\nQR" + LongLine() + "\ncd\n");
  });
}

TEST(SciLongLines, CopyAndPaste_HaveTheWholeLine) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    const std::string bytes = "a\n" + LongLine() + "\nb\n";
    ASSERT_TRUE(form.editor.load(folder.Write("a", bytes)).Ok());
    form.editor.Select(2, 7);
    EXPECT_TRUE(form.editor.SelectedText() == LongLine() + "\n");
    form.editor.OnCommand(cSciCopy);
    EXPECT_TRUE(QApplication::clipboard()->text().toStdString() == LongLine() + "\n");
    form.editor.Select(0, 0);
    form.editor.OnCommand(cSciPaste);
    EXPECT_EQ(form.editor.LinesNotShown(), 2);
    EXPECT_TRUE(form.editor.GetText() == LongLine() + "\n" + bytes);
    ASSERT_TRUE(form.editor.load(folder.Write("b", "other")).Ok());
    EXPECT_TRUE(QApplication::clipboard()->text().toStdString() == LongLine() + "\n")
        << "also when the file is no longer open";
  });
}

TEST(SciLongLines, Paste_OfALongLine_IsNotShownEither) {
  EditorForm form;
  RunEditor(form, [&] {
    for (const char* start : {"ascii", "\u00E4"}) {
      form.Fill(start);
      QApplication::clipboard()->setText(QString::fromStdString(LongLine()));
      form.editor.Select(0, 0);
      form.editor.OnCommand(cSciPaste);
      EXPECT_EQ(form.editor.LinesNotShown(), 1) << start;
      EXPECT_TRUE(form.editor.GetText() == LongLine() + start);
      form.editor.OnCommand(cSciUndo);
      EXPECT_EQ(form.editor.GetText(), start);
    }
  });
}

TEST(SciLongLines, TextProperty_IsTheWholeText) {
  EditorForm form;
  RunEditor(form, [&] {
    form.editor.text = LongLine();
    EXPECT_EQ(form.editor.LinesNotShown(), 1);
    EXPECT_TRUE(std::string(form.editor.text) == LongLine());
  });
}

TEST(SciLongLines, Show_AShortOneAtOnce_AndTheTextStaysSaved) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    std::string bytes;
    for (int i = 0; i < 2; ++i) bytes += Numbers(cLimit) + "\n";
    ASSERT_TRUE(form.editor.load(folder.Write("a", bytes)).Ok());
    ASSERT_EQ(form.editor.LinesNotShown(), 1);
    EXPECT_FALSE(form.editor.ShowLongLine()) << "the caret is in the other line";
    form.editor.Select(form.editor.LineStart(1), form.editor.LineStart(1));
    EXPECT_TRUE(form.editor.ShowLongLine());
    EXPECT_EQ(form.editor.LinesNotShown(), 0);
    EXPECT_FALSE(form.editor.dirty);
    EXPECT_TRUE(form.editor.GetRange(0, form.editor.Length()) == bytes);
    form.editor.OnCommand(cSciUndo);
    EXPECT_TRUE(form.editor.GetText() == bytes);
    EXPECT_EQ(form.editor.LinesNotShown(), 1);
  });
}

TEST(SciLongLines, Show_ALongOne_IsAskedAbout) {
  test::TempFolder folder;
  test::ScriptedDialogs dialogs;
  EditorForm form;
  RunEditor(form, [&] {
    ASSERT_TRUE(form.editor.load(folder.Write("a", Numbers(20'000'000))).Ok());
    dialogs.answers = {Answer::cNo};
    EXPECT_FALSE(form.editor.ShowLongLine());
    ASSERT_EQ(dialogs.texts.size(), 1u);
    EXPECT_NE(dialogs.texts[0].find("about 24 seconds"), std::string::npos) << dialogs.texts[0];
    EXPECT_EQ(form.editor.LinesNotShown(), 1);
  });
}

TEST(SciLongLines, Note_DoubleClicked_ShowsTheLine) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    ASSERT_TRUE(form.editor.load(folder.Write("a", "a\n" + Numbers(cLimit + 1) + "\n")).Ok());
    form.Settle();
    const auto place = [&](unsigned message) {
      return static_cast<int>(form.editor.Send(message, 0, static_cast<std::intptr_t>(2)));
    };
    const QPoint in(place(SCI_POINTXFROMPOSITION) + 3, place(SCI_POINTYFROMPOSITION) + 3);
    auto* area = test::WidgetOf(form.editor)->findChild<QWidget*>("qt_scrollarea_viewport");
    ASSERT_TRUE(area);
    QTest::mouseClick(area, Qt::LeftButton, {}, in);
    QTest::mouseDClick(area, Qt::LeftButton, {}, in);
    EXPECT_EQ(form.editor.LinesNotShown(), 0);
  });
}

TEST(SciLongLines, Note_IsDrawnAsWideAsItsText) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    ASSERT_TRUE(form.editor.load(folder.Write("a", LongLine() + "\n")).Ok());
    form.Settle();
    test::Shot(form, "sci-editor-long-line");
    const auto x = [&](int position) {
      return form.editor.Send(SCI_POINTXFROMPOSITION, 0, static_cast<std::intptr_t>(position));
    };
    EXPECT_GT(x(4) - x(0), 300);
    ASSERT_TRUE(form.editor.load(folder.Write("b", StandIn(0) + "\n")).Ok());
    form.Settle();
    EXPECT_LT(x(4) - x(0), 100) << "a character of the text has no note";
    EXPECT_EQ(form.editor.LinesNotShown(), 0);
  });
}

TEST(SciLongLines, TakeText_HasTheWholeLineAndCanBeUndone) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    const std::string first = "a\n" + LongLine() + "\n", second = LongLine() + "\nb\n";
    ASSERT_TRUE(form.editor.load(folder.Write("a", first)).Ok());
    form.editor.TakeText(second, cPlainText, "");
    EXPECT_EQ(form.editor.LinesNotShown(), 1);
    EXPECT_TRUE(form.editor.GetText() == second);
    form.editor.OnCommand(cSciUndo);
    EXPECT_TRUE(form.editor.GetText() == first);
    form.editor.TakeText("\xFF" + second, cPlainText, "");
    ASSERT_TRUE(form.editor.save(folder.Path("b")).Ok());
    EXPECT_TRUE(folder.Read("b") == "\xFF" + second);
  });
}

TEST(SciLongLines, Reload_ReplacesOnlyWhatDiffers_AndCanBeUndone) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    const std::string first = "a\n" + LongLine() + "\nb\n" + LongLine() + "2\n";
    const std::string second = "a\n" + LongLine() + "\nc\n" + LongLine() + "3\n";
    ASSERT_TRUE(form.editor.load(folder.Write("a", first)).Ok());
    EXPECT_EQ(form.editor.TextDigest(), SciEditor::DigestOfFile(folder.Path("a")));
    form.editor.ToggleBookmark(1);
    ASSERT_TRUE(form.editor.reload(folder.Write("a", second)).Ok());
    EXPECT_EQ(form.editor.TextDigest(), SciEditor::DigestOfFile(folder.Path("a")));
    EXPECT_TRUE(form.editor.GetText() == second);
    EXPECT_EQ(form.editor.LinesNotShown(), 2);
    EXPECT_EQ(form.editor.Send(SCI_MARKERGET, 1), 2) << "the first line was left alone";
    form.editor.OnCommand(cSciUndo);
    EXPECT_TRUE(form.editor.GetText() == first);
    ASSERT_TRUE(form.editor.save(folder.Path("a")).Ok());
    EXPECT_TRUE(folder.Read("a") == first);
  });
}

TEST(SciLongLines, Reload_OfOtherBytes_WithAndWithoutALongLine_IsSavedTheSame) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    const std::string withLine = "\xE4\n" + LongLine(), without = "\xFC\n", ascii = "x\n";
    for (const std::string& first : {withLine, without, ascii})
      for (const std::string& second : {withLine, without, ascii}) {
        ASSERT_TRUE(form.editor.load(folder.Write("a", first)).Ok());
        EXPECT_EQ(form.editor.TextDigest(), SciEditor::DigestOfFile(folder.Path("a")));
        ASSERT_TRUE(form.editor.reload(folder.Write("a", second)).Ok());
        EXPECT_EQ(form.editor.TextDigest(), SciEditor::DigestOfFile(folder.Path("a")));
        ASSERT_TRUE(form.editor.save(folder.Path("b")).Ok());
        EXPECT_TRUE(folder.Read("b") == second);
        form.editor.OnCommand(cSciUndo);
        const bool isWritten = form.editor.save(folder.Path("b")).Ok();
        EXPECT_TRUE(!isWritten || folder.Read("b") == first) << "or refused in words";
      }
  });
}

TEST(SciLongLines, Load_ThatFails_KeepsTextAndLines) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    const std::string bytes = "a\n" + LongLine() + "\n";
    ASSERT_TRUE(form.editor.load(folder.Write("a", bytes)).Ok());
    EXPECT_FALSE(form.editor.load("/proc/self/mem").Ok());
    EXPECT_TRUE(form.editor.GetText() == bytes);
    EXPECT_EQ(form.editor.LinesNotShown(), 1);
  });
}

// The changes that are reported beforehand lead from one whole text to the next.
TEST(SciLongLines, WillChange_TellsPlacesOfTheWholeText) {
  struct Teller : EditorForm {
    struct Editor : mavro::SciEditor {
      void onTextWillChange(long position, long removed, long added) override {
        told += std::to_string(position) + "-" + std::to_string(removed) + "+" +
                std::to_string(added) + " ";
      }
      std::string told;
    };
    Editor other;
    Teller() {
      editor.dock = Dock::cNone;
      other.dock = Dock::cFill;
      Add(&other);
    }
  };
  test::TempFolder folder;
  Teller form;
  RunEditor(form, [&] {
    ASSERT_TRUE(form.other.load(folder.Write("a", "a\n" + LongLine() + "\nb\n")).Ok());
    const std::string line = std::to_string(LongLine().size());
    const std::string behind = std::to_string(LongLine().size() + 3);
    form.other.Select(7, 7);
    form.other.ReplaceSelection("Q");
    form.other.Select(2, 6);
    form.other.Send(SCI_CLEAR);
    form.other.OnCommand(cSciUndo);
    EXPECT_EQ(form.other.told, behind + "-0+1 2-" + line + "+0 2-0+-1 ");
  });
}

}  // namespace
}  // namespace mavro
