#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "EditReplaceDlg.h"
#include "EditorForm.h"
#include "FindCommands.h"
#include "FindTextDlg.h"
#include "Looks.h"
#include "ScriptedDialogs.h"
#include "SearchState.h"

// Searches in one editor, by their commands and in their dialogs.

namespace mavro {
namespace {

using test::EditorForm;
using test::RunEditor;

class SciFind : public testing::Test {
 protected:
  SciFind() { theSearch = {}; }
  ~SciFind() override { theSearch = {}; }

  std::string Selected() const {
    const auto [start, end] = form.editor.Selection();
    return std::to_string(start) + "-" + std::to_string(end);
  }
  // Runs `script` in the dialog that `id` shows.
  void InDialog(int id, const std::function<void(Form&)>& script) {
    bool ran = false;
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, [&, poll] {
      Form* dialog = activeForm;
      if (!dialog || dialog == &form) return;
      if (!static_cast<Form::Impl*>(dialog->impl)->firstShowDone) return;
      poll->stop();
      poll->deleteLater();
      ran = true;
      script(*dialog);
      if (activeForm == dialog) dialog->Close();
    });
    poll->start(2);
    form.editor.OnCommand(id);
    EXPECT_TRUE(ran) << "no dialog was shown";
  }
  static void Type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), text); }
  // What the dialog says: the last of its labels.
  static std::string Said(Form& dialog) { return dialog.children.back()->text; }
  std::string Marks() {
    std::string marks;
    for (int i = 0; i < form.editor.Length(); ++i)
      marks +=
          form.editor.Send(SCI_INDICATORVALUEAT, 10, static_cast<std::intptr_t>(i)) ? '^' : ' ';
    return marks;
  }

  test::ScriptedDialogs dialogs;
  EditorForm form;
};

TEST_F(SciFind, Next_GoesOn_AndAtTheEndBeepsAndStartsOver) {
  RunEditor(form, [&] {
    form.Fill("ab @ab ab");
    theSearch.findText = "AB";
    FindNext(form.editor, FindWay::cForward);
    EXPECT_EQ(Selected(), "3-5");
    FindNext(form.editor, FindWay::cForward);
    EXPECT_EQ(Selected(), "6-8");
    EXPECT_EQ(dialogs.beeps, 0);
    FindNext(form.editor, FindWay::cForward);
    EXPECT_EQ(Selected(), "0-2");
    EXPECT_EQ(dialogs.beeps, 1);
    FindNext(form.editor, FindWay::cBackward);
    EXPECT_EQ(Selected(), "6-8") << "backward from the start finds the last one";
    EXPECT_EQ(dialogs.beeps, 2);
  });
}

TEST_F(SciFind, WithoutWrap_TheSelectionStays) {
  RunEditor(form, [&] {
    form.Fill("ab @x");
    theSearch.findText = "ab";
    theSearch.wrap = false;
    FindNext(form.editor, FindWay::cForward);
    EXPECT_FALSE(theSearch.found);
    EXPECT_EQ(Selected(), "3-3");
    EXPECT_EQ(theSearch.whyNot, "Not found: ab");
    EXPECT_EQ(dialogs.beeps, 0);
  });
}

TEST_F(SciFind, AFoldedLine_IsShown) {
  RunEditor(form, [&] {
    form.editor.options->foldMargin = true;
    form.editor.applyOptions();
    form.Fill("@void f() {\n  int needle;\n}\n");
    form.editor.OnCommand(cSciCloseFolds);
    EXPECT_FALSE(form.editor.Send(SCI_GETLINEVISIBLE, 1));
    theSearch.findText = "needle";
    FindNext(form.editor, FindWay::cForward);
    EXPECT_TRUE(form.editor.Send(SCI_GETLINEVISIBLE, 1));
    EXPECT_EQ(form.editor.SelectedText(), "needle");
  });
}

TEST_F(SciFind, HitsWithoutLetters_AreFoundOneAfterTheOther) {
  RunEditor(form, [&] {
    form.Fill("@a\nb\nc");
    theSearch.findText = "^";
    theSearch.regExp = true;
    form.editor.Select(0, 0);
    FindNext(form.editor, FindWay::cForward);
    EXPECT_EQ(Selected(), "2-2");
    FindNext(form.editor, FindWay::cForward);
    EXPECT_EQ(Selected(), "4-4");
    FindNext(form.editor, FindWay::cBackward);
    EXPECT_EQ(Selected(), "2-2");
  });
}

TEST_F(SciFind, Selection_IsTheWordAtTheCaret_AsAWholeWord) {
  RunEditor(form, [&] {
    form.Fill("ab@c abcd Abc abc");
    form.editor.OnCommand(cSciFindSelection);
    EXPECT_EQ(Selected(), "13-16");
    EXPECT_EQ(theSearch.findText, "abc");
    EXPECT_TRUE(theSearch.matchCase && theSearch.wholeWord);
    form.editor.OnCommand(cSciFindSelectionBack);
    EXPECT_EQ(Selected(), "0-3");
    EXPECT_EQ(theSearch.history.front(), "abc");
  });
}

TEST_F(SciFind, SelectedPartOfAWord_IsFoundInOtherWords_AWholeWordIsNot) {
  RunEditor(form, [&] {
    form.Fill("@abcd xabc abc");
    form.editor.Select(0, 3);
    form.editor.OnCommand(cSciFindSelection);
    EXPECT_EQ(Selected(), "6-9");
    EXPECT_TRUE(theSearch.matchCase && !theSearch.wholeWord);
    form.editor.Select(10, 13);
    form.editor.OnCommand(cSciFindSelection);
    EXPECT_EQ(Selected(), "10-13");
    EXPECT_TRUE(theSearch.wholeWord);
  });
}

TEST_F(SciFind, SelectionWithoutAWord_ShowsTheDialog) {
  RunEditor(form, [&] {
    form.Fill("a  @  b");
    InDialog(cSciFindSelection, [](Form& dialog) { EXPECT_EQ(dialog.text, "Find"); });
    theSearch = {};
    InDialog(cSciFindRepeat, [](Form& dialog) { EXPECT_EQ(dialog.text, "Find"); });
  });
}

TEST_F(SciFind, Dialog_MarksAndCountsWhileTyping_AndFindsWithEnter) {
  RunEditor(form, [&] {
    form.Fill("@one two one\nOne");
    InDialog(cSciFind, [&](Form& dialog) {
      Type("on");
      EXPECT_EQ(Said(dialog), "3 hits");
      Type("ex");
      EXPECT_EQ(Said(dialog), "No hit");
      test::Key(dialog, Qt::Key_Backspace);
      EXPECT_EQ(Marks(), "^^^     ^^^ ^^^");
      test::Shot(dialog, "find-text");
      EXPECT_THAT(test::UnreadableCaptions(dialog), testing::IsEmpty());
      test::Key(dialog, Qt::Key_C, Qt::AltModifier);
      EXPECT_TRUE(test::WaitFor([&] { return Said(dialog) == "2 hits"; }));
      test::Key(dialog, Qt::Key_Return);
      EXPECT_EQ(activeForm, &dialog) << "it stays open";
      EXPECT_EQ(Selected(), "0-3");
      test::Key(dialog, Qt::Key_F, Qt::AltModifier);
      EXPECT_TRUE(test::WaitFor([&] { return Selected() == "8-11"; }));
      test::Key(dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(Marks().find('^'), std::string::npos) << "the marks go with the dialog";
    form.editor.OnCommand(cSciFindPrevious);
    EXPECT_EQ(Selected(), "0-3");
  });
}

TEST_F(SciFind, OnADarkDesktop_HitsAndDialogsAreReadable) {
  const QPalette before = QApplication::palette();
  QApplication::setPalette(test::DarkPalette());
  RunEditor(form, [&] {
    form.Fill("@int count = 0;  // count\ncount += 1;\n");
    theSearch.findText = "count";
    for (const int id : {cSciFind, cSciReplace})
      InDialog(id, [&](Form& dialog) {
        EXPECT_THAT(test::UnreadableCaptions(dialog), testing::IsEmpty());
        EXPECT_EQ(Said(dialog), "3 hits");
        test::Shot(dialog, id == cSciFind ? "find-text-dark" : "replace-text-dark");
        form.Settle();
        test::Shot(form, "find-hits-dark");
        EXPECT_GT(test::CountPixels(test::Pixels(form), test::AsPixel(cFoundGround, true)), 500);
      });
  });
  QApplication::setPalette(before);
}

TEST_F(SciFind, Dialog_SaysWhatIsWrongWithAnExpression) {
  RunEditor(form, [&] {
    form.Fill("@aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa");
    theSearch.regExp = true;
    InDialog(cSciFind, [&](Form& dialog) {
      Type("(a+");
      EXPECT_EQ(Said(dialog), "Not an expression: missing closing parenthesis (at 3)");
      test::Key(dialog, Qt::Key_Return);
      EXPECT_EQ(activeForm, &dialog);
      Type(")+[bc]");
      EXPECT_EQ(Said(dialog), "This expression takes too long in a line of this text");
    });
    EXPECT_TRUE(dialogs.texts.empty()) << "no box";
  });
}

TEST_F(SciFind, Dialog_BeginsWithTheSelection_ElseWithTheLastText) {
  RunEditor(form, [&] {
    form.Fill("@ab cd\nef");
    form.editor.Select(3, 5);
    InDialog(cSciFind, [&](Form& dialog) { EXPECT_EQ(Said(dialog), "1 hit"); });
    EXPECT_EQ(theSearch.findText, "cd");
    form.editor.Select(3, 7);
    InDialog(cSciFind, [](Form&) {});
    EXPECT_EQ(theSearch.findText, "cd") << "a selection over lines is no text to look for";
  });
}

TEST_F(SciFind, Replace_OneAfterTheOther) {
  RunEditor(form, [&] {
    form.Fill("@ab ab ab");
    InDialog(cSciReplace, [&](Form& dialog) {
      Type("ab");
      test::Key(dialog, Qt::Key_P, Qt::AltModifier);
      Type("x");
      test::Shot(dialog, "replace-text");
      EXPECT_THAT(test::UnreadableCaptions(dialog), testing::IsEmpty());
      test::Key(dialog, Qt::Key_Return);
      EXPECT_EQ(form.editor.GetText(), "ab ab ab") << "the first press only finds";
      EXPECT_EQ(Selected(), "0-2");
      test::Key(dialog, Qt::Key_Return);
      EXPECT_EQ(form.editor.GetText(), "x ab ab");
      test::Key(dialog, Qt::Key_Return);
      EXPECT_EQ(form.editor.GetText(), "x x ab");
    });
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "x ab ab");
  });
}

TEST_F(SciFind, ReplaceAll_IsOneUndoStep_AndSaysHowMany) {
  RunEditor(form, [&] {
    form.Fill("@a b a\na");
    theSearch.findText = "a";
    theSearch.replaceText = "aa";
    InDialog(cSciReplace, [&](Form& dialog) {
      for (Control* child : dialog.children)
        if (child->text == "Replace all") test::Click(*child);
      EXPECT_TRUE(test::WaitFor([&] { return form.editor.GetText() == "aa b aa\naa"; }));
      EXPECT_EQ(Said(dialog), "3 replaced. Left: 6 hits");
    });
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "a b a\na");
  });
}

TEST_F(SciFind, ReplaceAll_InTheSelection_WhichGrows) {
  RunEditor(form, [&] {
    form.Fill("@a a\na a\na");
    form.editor.Select(2, 6);
    theSearch.findText = "a";
    theSearch.replaceText = "xyz";
    InDialog(cSciReplace, [&](Form& dialog) {
      EXPECT_EQ(theSearch.findText, "a");
      for (Control* child : dialog.children)
        if (child->text == "Replace all") test::Click(*child);
      EXPECT_TRUE(test::WaitFor([&] { return form.editor.GetText() == "a xyz\nxyz a\na"; }));
    });
    EXPECT_EQ(Selected(), "2-10");
  });
}

TEST_F(SciFind, ReplaceAll_WithGroupsAndLineEnds) {
  RunEditor(form, [&] {
    form.Fill("@a=1;b=2;");
    form.editor.Send(SCI_SETEOLMODE, SC_EOL_CRLF);
    theSearch.findText = "(\\w)=(\\d);";
    theSearch.replaceText = "\\2:\\1\\n";
    theSearch.regExp = true;
    EXPECT_EQ(ReplaceAll(form.editor, ReplaceIn::cWholeFile), 2);
    EXPECT_EQ(form.editor.GetText(), "1:a\r\n2:b\r\n");
    theSearch.findText = "x*";
    EXPECT_EQ(ReplaceAll(form.editor, ReplaceIn::cWholeFile), 0) << "a hit without letters ends it";
    form.editor.SetReadOnly(true);
    theSearch.findText = "1";
    EXPECT_EQ(ReplaceAll(form.editor, ReplaceIn::cWholeFile), 0);
  });
}

TEST_F(SciFind, AHundredThousandHits_AreReplacedAndComeBack) {
  RunEditor(form, [&] {
    std::string text;
    for (int i = 0; i < 100'000; ++i) text += "int value;\n";
    form.editor.TakeText(text, cPlainText, "");
    theSearch.findText = "value";
    theSearch.replaceText = "number";
    EXPECT_EQ(ReplaceAll(form.editor, ReplaceIn::cWholeFile), 100'000);
    EXPECT_EQ(form.editor.GetText().substr(0, 12), "int number;\n");
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), text);
  });
}

}  // namespace
}  // namespace mavro
