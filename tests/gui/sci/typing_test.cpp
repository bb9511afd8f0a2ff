#include <gtest/gtest.h>

#include <QInputMethodEvent>
#include <QKeyEvent>

#include "EditorForm.h"

namespace mavro {
namespace {

using test::EditorForm;
using test::RunEditor;

std::string OpenList(const SciEditor& editor) {
  if (!editor.Send(SCI_AUTOCACTIVE)) return "";
  char text[100] = "";
  editor.Send(SCI_AUTOCGETCURRENTTEXT, 0, text);
  return text;
}

TEST(SciTyping, MemberSign_WithAnAnswer_OpensTheList) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2";
  RunEditor(form, [&] {
    form.Fill("Foo f;\nf@");
    form.Type(".");
    EXPECT_EQ(form.editor.asked, "[f.]");
    EXPECT_EQ(OpenList(form.editor), "alpha");
    test::Key(form, Qt::Key_Down);
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.Shown(), "Foo f;\nf.beta@");
  });
}

TEST(SciTyping, MemberSign_WithoutAnAnswer_ShowsNothing) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("x@");
    form.Type("->");
    EXPECT_EQ(form.editor.asked, "[x-][x->]");
    EXPECT_EQ(OpenList(form.editor), "");
  });
}

TEST(SciTyping, LongWord_WhoseStartIsScrolledAway_OffersNothingAndLives) {
  EditorForm form;
  const std::string word(2000, 'x');
  RunEditor(form, [&] {
    form.Fill(word + "yz\n" + word + "@");
    form.Type("y");
    EXPECT_EQ(OpenList(form.editor), "");
    EXPECT_EQ(form.Shown(), word + "yz\n" + word + "y@");
  });
}

TEST(SciTyping, List_ALetter_Narrows) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2";
  RunEditor(form, [&] {
    form.Fill("f@");
    form.Type(".b");
    EXPECT_EQ(OpenList(form.editor), "beta");
    EXPECT_EQ(form.editor.asked, "[f.]");
    test::Key(form, Qt::Key_Tab);
    EXPECT_EQ(form.Shown(), "f.beta@");
  });
}

TEST(SciTyping, List_AnotherSign_ClosesIt) {
  EditorForm form;
  form.editor.offered = "alpha?1";
  RunEditor(form, [&] {
    form.Fill("f@");
    form.Type(".;");
    EXPECT_EQ(OpenList(form.editor), "");
    EXPECT_EQ(form.editor.GetText(), "f.;");
  });
}

TEST(SciTyping, List_AMemberSign_AsksAgain) {
  EditorForm form;
  form.editor.offered = "alpha?1";
  RunEditor(form, [&] {
    form.Fill("f@");
    form.Type(".:");
    EXPECT_EQ(form.editor.asked, "[f.][f.:]");
    EXPECT_EQ(OpenList(form.editor), "alpha");
  });
}

TEST(SciTyping, List_ThatTheCaretWasTakenAwayFrom_ReplacesNothing) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab}) {
    EditorForm form;
    form.editor.offered = "alpha?1";
    RunEditor(form, [&] {
      form.Fill("a.b;\nf@;\nlast;");
      form.Type(".");
      ASSERT_EQ(OpenList(form.editor), "alpha");
      form.editor.Select(form.editor.Length(), form.editor.Length());
      test::Key(form, key);
      EXPECT_EQ(OpenList(form.editor), "");
      EXPECT_TRUE(form.editor.GetText().starts_with("a.b;\nf.;\nlast;")) << form.Shown();
    });
  }
}

TEST(SciTyping, List_Escape_ClosesIt) {
  EditorForm form;
  form.editor.offered = "alpha?1";
  RunEditor(form, [&] {
    form.Fill("f@");
    form.Type(".");
    test::Key(form, Qt::Key_Escape);
    EXPECT_EQ(OpenList(form.editor), "");
    EXPECT_EQ(form.editor.GetText(), "f.");
  });
}

TEST(SciTyping, Tip_OpensAndClosesWithTheCall) {
  EditorForm form;
  form.editor.offeredTip = "foo(int a, int b)";
  RunEditor(form, [&] {
    form.Fill("x = @");
    form.Type("foo");
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 0);
    form.Type("(");
    EXPECT_EQ(form.editor.askedTips, "[foo]");
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 1);
    EXPECT_TRUE(form.editor.tipActive);
    EXPECT_EQ(form.editor.tipStartPos, 4);
    EXPECT_EQ(form.editor.functionName, "foo");
    form.Type("1,2");
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 1);
    form.Type(")");
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 0);
    EXPECT_FALSE(form.editor.tipActive);
    EXPECT_EQ(form.editor.parenDepth, 0);
  });
}

TEST(SciTyping, Tip_AParenthesisInside_RaisesTheDepth) {
  EditorForm form;
  form.editor.offeredTip = "foo(int a, int b)";
  RunEditor(form, [&] {
    form.Type("foo(bar(");
    EXPECT_EQ(form.editor.parenDepth, 2);
    EXPECT_EQ(form.editor.functionName, "foo") << "nothing is known of bar: the tip stays";
    form.Type("1)");
    EXPECT_EQ(form.editor.parenDepth, 1);
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 1);
    form.Type(")");
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 0);
  });
}

bool TipIsShown(const EditorForm& form) {
  return form.editor.Send(SCI_CALLTIPACTIVE) != 0;
}

TEST(SciTyping, Tip_AMemberListComesInIt_AndTheTipIsBackAfterIt) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape}) {
    EditorForm form;
    form.editor.offeredTip = "foo(int a, int b)";
    form.editor.offered = "alpha?1 beta?2";
    RunEditor(form, [&] {
      form.Type("foo(p");
      EXPECT_TRUE(TipIsShown(form));
      form.Type(".");
      EXPECT_EQ(OpenList(form.editor), "alpha");
      EXPECT_FALSE(TipIsShown(form)) << "one of both";
      test::Key(form, key);
      EXPECT_EQ(OpenList(form.editor), "");
      EXPECT_TRUE(TipIsShown(form));
      EXPECT_EQ(form.Shown(), key == Qt::Key_Escape ? "foo(p.@" : "foo(p.alpha@");
    });
  }
}

TEST(SciTyping, Tip_Escape_ClosesTheListFirst) {
  EditorForm form;
  form.editor.offeredTip = "foo(int a, int b)";
  form.editor.offered = "alpha?1";
  RunEditor(form, [&] {
    form.Type("foo(p.");
    test::Key(form, Qt::Key_Escape);
    EXPECT_TRUE(TipIsShown(form));
    test::Key(form, Qt::Key_Escape);
    EXPECT_FALSE(TipIsShown(form));
    EXPECT_FALSE(form.editor.tipActive);
    form.Type("a, {");
    form.Settle();
    EXPECT_FALSE(TipIsShown(form)) << "it stays closed";
    form.editor.startCallTip();
    EXPECT_TRUE(TipIsShown(form)) << "until somebody asks";
  });
}

TEST(SciTyping, Tip_GoesWhenTheCaretLeavesTheCall) {
  struct Row {
    Qt::Key key;
    bool stays;
  };
  for (const auto& [key, stays] : {Row{Qt::Key_Left, true}, Row{Qt::Key_Home, false},
                                   Row{Qt::Key_Up, false}, Row{Qt::Key_End, true}}) {
    EditorForm form;
    form.editor.offeredTip = "foo(int a, int b)";
    RunEditor(form, [&] {
      form.Fill("x;\n@");
      form.Type("foo(12");
      ASSERT_TRUE(TipIsShown(form));
      test::Key(form, key);
      EXPECT_EQ(TipIsShown(form), stays) << key;
      EXPECT_EQ(form.editor.tipActive, stays) << key;
    });
  }
}

TEST(SciTyping, Tip_GoesWithItsBracket) {
  EditorForm form;
  form.editor.offeredTip = "foo(int a, int b)";
  RunEditor(form, [&] {
    form.Type("foo(1");
    test::Key(form, Qt::Key_Backspace);
    EXPECT_TRUE(TipIsShown(form));
    test::Key(form, Qt::Key_Backspace);
    EXPECT_FALSE(TipIsShown(form));
    form.Fill("foo(1@");
    form.editor.startCallTip();
    ASSERT_TRUE(TipIsShown(form));
    form.editor.Send(SCI_CLEARALL);
    form.Settle();
    EXPECT_FALSE(TipIsShown(form)) << "the whole text is gone";
  });
}

TEST(SciTyping, Tip_UpAndDown_ChangeTheSignature) {
  EditorForm form;
  form.editor.offeredTip = "foo(int a)";
  form.editor.furtherTips = {"foo(int a, int b)", "foo(char* s, int n, int m)"};
  RunEditor(form, [&] {
    form.Fill("x;\n@");
    form.Type("foo(");
    EXPECT_EQ(form.editor.tipText, "foo(int a)");
    test::Key(form, Qt::Key_Down);
    EXPECT_EQ(form.editor.tipText, "foo(int a, int b)");
    test::Key(form, Qt::Key_Up);
    test::Key(form, Qt::Key_Up);
    EXPECT_EQ(form.editor.tipText, "foo(char* s, int n, int m)");
    form.Type("1, 2");
    EXPECT_EQ(form.editor.tipText, "foo(char* s, int n, int m)") << "the user has chosen it";
    EXPECT_EQ(form.Shown(), "x;\nfoo(1, 2@");
    test::Key(form, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(form.editor.CaretLine(), 0) << "the arrow alone belongs to the tip";
  });
}

TEST(SciTyping, Tip_AnArgumentTooMany_ShowsTheNextSignature) {
  EditorForm form;
  form.editor.offeredTip = "foo(int a)";
  form.editor.furtherTips = {"foo(int a, int b)"};
  RunEditor(form, [&] {
    form.Type("foo(1");
    EXPECT_EQ(form.editor.tipText, "foo(int a)");
    form.Type(",");
    EXPECT_EQ(form.editor.tipText, "foo(int a, int b)");
  });
}

TEST(SciTyping, Tip_AClickOnAnArrow_ChangesTheSignature) {
  EditorForm form;
  form.editor.offeredTip = "foo(int a)";
  form.editor.furtherTips = {"foo(int a, int b)", "foo()"};
  RunEditor(form, [&] {
    form.Type("foo(");
    QWidget* tip = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->isVisible() && window != test::WidgetOf(form)->window()) tip = window;
    ASSERT_TRUE(tip);
    const int middle = tip->height() / 2;
    QTest::mouseClick(tip, Qt::LeftButton, Qt::NoModifier, QPoint(6, middle));
    EXPECT_EQ(form.editor.tipText, "foo()") << "the upper arrow";
  });
}

TEST(SciTyping, Tip_AMouseThatRestsAndMoves_LeavesIt) {
  for (const bool showsValue : {false, true}) {
    EditorForm form;
    form.editor.offeredTip = "foo(int a)";
    form.editor.hidesTip = showsValue;
    RunEditor(form, [&] {
      form.Type("foo(");
      QWidget* sci = test::WidgetOf(form.editor);
      const auto mouse = [&](const char* what) {
        QMetaObject::invokeMethod(sci, what, Q_ARG(int, 2), Q_ARG(int, 1), Q_ARG(int, 1));
      };
      mouse("SCN_DWELLSTART");
      EXPECT_EQ(TipIsShown(form), !showsValue);
      if (showsValue) form.editor.Send(SCI_CALLTIPSHOW, 0, "a = 1");
      mouse("SCN_DWELLEND");
      EXPECT_TRUE(TipIsShown(form));
      EXPECT_TRUE(form.editor.tipActive);
      test::Key(form, Qt::Key_Escape);
      mouse("SCN_DWELLSTART");
      form.editor.Send(SCI_CALLTIPSHOW, 0, "a = 1");
      mouse("SCN_DWELLEND");
      EXPECT_FALSE(TipIsShown(form)) << "a value goes with the mouse";
    });
  }
}

TEST(SciTyping, Tip_EnterInTheCall_KeepsIt) {
  EditorForm form;
  form.editor.offeredTip = "foo(int a)";
  RunEditor(form, [&] {
    form.Type("  foo(1, // c");
    ASSERT_TRUE(TipIsShown(form));
    form.Type("\n");
    EXPECT_EQ(form.Shown(), "  foo(1, // c\n  @") << "indented as elsewhere";
    EXPECT_FALSE(TipIsShown(form)) << "this editor reads single lines";
  });
}

TEST(SciTyping, Recording_NoTipAndNoList) {
  EditorForm form;
  form.editor.offered = "alpha?1";
  form.editor.offeredTip = "foo(int a)";
  RunEditor(form, [&] {
    form.editor.OnCommand(cSciRecordMacro);
    form.Type("foo(f.");
    EXPECT_EQ(OpenList(form.editor), "");
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 0);
    EXPECT_EQ(form.editor.asked + form.editor.askedTips, "");
    EXPECT_GT(form.editor.textChanges, 0) << "the text has changed all the same";
  });
}

TEST(SciTyping, Words_OneFits_IsOffered) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("elephant = 1;\nelse\n@");
    form.Type("ele");
    EXPECT_EQ(OpenList(form.editor), "elephant");
    EXPECT_TRUE(form.editor.wordCompleting);
    test::Key(form, Qt::Key_Tab);
    EXPECT_EQ(form.editor.LineText(2), "elephant");
  });
}

TEST(SciTyping, Words_Enter_EndsTheLineUnlessTheUserHasMovedInTheList) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("elephant = 1;\n@");
    form.Type("ele");
    ASSERT_EQ(OpenList(form.editor), "elephant");
    form.Type("\n");
    EXPECT_EQ(form.Shown(), "elephant = 1;\nele\n@");
    form.Type("ele");
    test::Key(form, Qt::Key_Down);
    form.Type("\n");
    EXPECT_EQ(form.Shown(), "elephant = 1;\nele\nelephant@");
    form.Type("\nele");
    test::Key(form, Qt::Key_Down);
    form.Type("p");
    ASSERT_EQ(OpenList(form.editor), "elephant") << "another list: nothing is chosen yet";
    form.Type("\n");
    EXPECT_EQ(form.Shown(), "elephant = 1;\nele\nelephant\nelep\n@");
  });
}

TEST(SciTyping, Words_KeypadEnter_EndsTheLineToo) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("elephant\n@");
    form.Type("ele");
    ASSERT_EQ(OpenList(form.editor), "elephant");
    test::Key(form, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(form.Shown(), "elephant\nele\n@");
  });
}

TEST(SciTyping, Words_Asked_EnterTakesOne) {
  EditorForm form;
  form.editor.offered = "elephant?1";
  form.editor.clearAsked = false;
  RunEditor(form, [&] {
    form.Fill("elephant\n@");
    form.Type("ele");
    form.editor.startCompletion();
    ASSERT_EQ(OpenList(form.editor), "elephant");
    form.Type("\n");
    EXPECT_EQ(form.Shown(), "elephant\nelephant@");
  });
}

TEST(SciTyping, Words_UnderThreeLettersOrAKeyword_NothingIsOffered) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("elephant format\n@");
    form.Type("el");
    EXPECT_EQ(OpenList(form.editor), "");
    form.Type("e");
    EXPECT_EQ(OpenList(form.editor), "elephant");
    form.Type("\nfor");
    EXPECT_EQ(OpenList(form.editor), "") << "a keyword";
    form.Type("m");
    EXPECT_EQ(OpenList(form.editor), "format");
  });
}

TEST(SciTyping, Words_BehindAnOperatorOfMembers_AreNoKeywords) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("while\nwhiley\n@");
    form.Type("a::whil");
    EXPECT_EQ(OpenList(form.editor), "whiley");
    form.Fill("while\n@");
    form.Type("a::whil");
    EXPECT_EQ(OpenList(form.editor), "");
    form.Type("\nwhil");
    EXPECT_EQ(OpenList(form.editor), "while");
  });
}

TEST(SciTyping, Words_TheOneThatTheCaretIsInIsNotOffered) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("el@ant\n");
    form.Type("e");
    EXPECT_EQ(OpenList(form.editor), "");
    form.Fill("elephant\nel@ant\n");
    form.Type("e");
    EXPECT_EQ(OpenList(form.editor), "elephant");
  });
}

TEST(SciTyping, Words_ThatBecomeAKeyword_CloseTheirList) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("whiley\n@");
    form.Type("whil");
    ASSERT_EQ(OpenList(form.editor), "whiley");
    form.Type("e");
    EXPECT_EQ(OpenList(form.editor), "");
    test::Key(form, Qt::Key_Tab);
    EXPECT_EQ(form.Shown(), "whiley\nwhile\t@");
  });
}

// What is typed at the caret of a text, and if anything may open.
struct QuietCase {
  const char* before;
  const char* typed;
  bool opens;
};

TEST(SciTyping, ListsAndTips_ComeByThemselvesInCodeOnly) {
  const QuietCase cases[] = {
      {"@", "// this moves p.", false},
      {"@", "// elephan", false},
      {"@", "// foo(", false},
      {"@", "/* p.", false},
      {"/* a\n@\n*/", "p.", false},
      {"/* a\n@\n*/", "elephan", false},
      {"@", "s = \"p.", false},
      {"@", "s = \"foo(", false},
      {"@", "s = \"elephan", false},
      {"@", "c = '.", false},
      {"s = R\"x(@)x\";", "p.", false},
      {"s = R\"x(\n@\n)x\";", "elephan", false},
      {"@", "x = 1.", false},
      {"@", "#include <elephan", false},
      {"@", "#include \"p.", false},
      {"@", "#  include \"foo(", false},
      {"@", "#import \"p.", false},
      {"@", "#define S \"p.", false},
      {"@", "p.", true},
      {"@", "foo(", true},
      {"@", "elephan", true},
      {"@", "/**/ p.", true},
      {"// a\n@", "elephan", true},
      {"@", "x = 'a' + p.", true},
      {"@", "s = \"a\" + p.", true},
      {"@", "s = \"a\".", true},
      {"@", "x = 1 + p.", true},
      {"@", "x1.", true},
      {"@", "#define S p.", true},
      {"@", "#define S \"a\" p.", true},
      {"@", "#define S elephan", true},
      {"@", "// a\np.", true},
  };
  for (const QuietCase& row : cases)
    for (const bool settles : {true, false}) {
      EditorForm form;
      form.editor.offered = "alpha?1";
      form.editor.offeredTip = "foo(int a)";
      RunEditor(form, [&] {
        form.Fill("int elephants;\n" + std::string(row.before));
        for (const char c : std::string(row.typed)) {
          form.Type(std::string(1, c));
          if (settles) form.Settle();
        }
        const bool opened =
            form.editor.Send(SCI_AUTOCACTIVE) != 0 || form.editor.Send(SCI_CALLTIPACTIVE) != 0;
        EXPECT_EQ(opened, row.opens) << row.before << " " << row.typed << settles;
      });
    }
}

TEST(SciTyping, AskedList_InAComment_OpensAndEnterTakesIt) {
  EditorForm form;
  form.editor.offered = "alpha?1";
  RunEditor(form, [&] {
    form.Fill("// p.@");
    form.editor.startCompletion();
    EXPECT_EQ(OpenList(form.editor), "alpha");
    form.Type("al");
    EXPECT_EQ(OpenList(form.editor), "alpha");
    form.Type("\n");
    EXPECT_EQ(form.Shown(), "// p.alpha@");
  });
}

TEST(SciTyping, Tip_AParenthesisInALiteral_DoesNotCount) {
  EditorForm form;
  form.editor.offeredTip = "foo(int a, int b)";
  RunEditor(form, [&] {
    form.Type("foo(\")");
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 1);
    form.Type("(");
    EXPECT_EQ(form.editor.parenDepth, 1);
    form.Type("\", 1)");
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 0);
  });
}

TEST(SciTyping, Keys_NobodyHasTaken_TypeNothing) {
  const std::pair<Qt::Key, Qt::KeyboardModifiers> keys[] = {
      {Qt::Key_Q, Qt::AltModifier},
      {Qt::Key_2, Qt::AltModifier},
      {Qt::Key_Period, Qt::ControlModifier},
      {Qt::Key_Q, Qt::MetaModifier},
      {Qt::Key_Q, Qt::AltModifier | Qt::ShiftModifier},
      {Qt::Key_Q, Qt::ControlModifier | Qt::AltModifier},
  };
  for (const auto& [key, modifiers] : keys) {
    EditorForm form;
    RunEditor(form, [&] {
      form.Fill("a@");
      QKeyEvent press(QEvent::KeyPress, key, modifiers, QString(QChar(key)));
      QApplication::sendEvent(QApplication::focusWidget(), &press);
      EXPECT_EQ(form.Shown(), "a@") << key << " " << modifiers;
    });
  }
}

TEST(SciTyping, Keys_OfTheComponent_WorkWithTheirModifiers) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("one two@");
    test::Key(form, Qt::Key_Backspace, Qt::ControlModifier);
    EXPECT_EQ(form.Shown(), "one @");
    test::Key(form, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(form.editor.SelectedText(), "one ");
  });
}

TEST(SciTyping, Letters_OfTheThirdLevelAndOfInputMethods_AreTyped) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("a@");
    QKeyEvent third(QEvent::KeyPress, Qt::Key_At, Qt::GroupSwitchModifier, "@");
    QApplication::sendEvent(QApplication::focusWidget(), &third);
    QKeyEvent plain(QEvent::KeyPress, Qt::Key_BraceLeft, Qt::NoModifier, "{");
    QApplication::sendEvent(QApplication::focusWidget(), &plain);
    QKeyEvent large(QEvent::KeyPress, Qt::Key_Q, Qt::ShiftModifier, "Q");
    QApplication::sendEvent(QApplication::focusWidget(), &large);
    QInputMethodEvent dead;
    dead.setCommitString(QString(QChar(0xE9)));
    QApplication::sendEvent(QApplication::focusWidget(), &dead);
    QInputMethodEvent word;
    word.setCommitString(QString(QChar(0x8A9E)));
    QApplication::sendEvent(QApplication::focusWidget(), &word);
    EXPECT_EQ(form.editor.GetText(), "a@{Q\xC3\xA9\xE8\xAA\x9E");
  });
}

TEST(SciTyping, Words_TwoFit_NothingIsOffered) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("elephant element\n@");
    form.Type("ele");
    EXPECT_EQ(OpenList(form.editor), "");
    EXPECT_FALSE(form.editor.wordCompleting);
  });
}

TEST(SciTyping, Words_Asked_AllAreShown) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("elephant element\nele@");
    EXPECT_TRUE(form.editor.startWordCompletion(WordOffer::cAny));
    EXPECT_EQ(OpenList(form.editor), "element");
  });
}

TEST(SciTyping, Words_LanguageWithoutThem_NothingIsOffered) {
  EditorForm form;
  form.editor.small.wordCompletion = false;
  RunEditor(form, [&] {
    form.Fill("elephant\n@");
    form.Type("ele");
    EXPECT_EQ(OpenList(form.editor), "");
  });
}

struct IndentCase {
  const char* before;
  const char* typed;
  const char* after;
};

TEST(SciTyping, SmartIndent_KeysInAWindow) {
  const IndentCase cases[] = {
      {"void f() {@", "\nx", "void f() {\n\tx@"},
      {"void f() {\n\tx;@", "\n}", "void f() {\n\tx;\n}@"},
      {"if (a)@", "\nx", "if (a)\n\tx@"},
      {"if (a)@", "\n{", "if (a)\n{@"},
      {"if (a)\n\tx;@", "\ny", "if (a)\n\tx;\ny@"},
      {"\tint a;@", "\nb", "\tint a;\n\tb@"},
      {"// if {@", "\nx", "// if {\nx@"},
      {"s = \"{\";@", "\nx", "s = \"{\";\nx@"},
      {"void f() {@}", "\n", "void f() {\n\t@}"},
  };
  for (const IndentCase& row : cases) {
    EditorForm form;
    RunEditor(form, [&] {
      form.Fill(row.before);
      form.Type(row.typed);
      EXPECT_EQ(form.Shown(), row.after) << row.before;
    });
  }
}

TEST(SciTyping, SimpleIndent_ANewLine_TakesTheIndentationAbove) {
  EditorForm form;
  form.editor.options->simpleIndent = true;
  form.editor.options->useTabs = false;
  RunEditor(form, [&] {
    form.Fill("    if {@");
    form.Type("\nx");
    EXPECT_EQ(form.Shown(), "    if {\n    x@");
  });
}

TEST(SciTyping, NoLanguage_OnlyTheLetters) {
  EditorForm form;
  form.editor.language = nullptr;
  form.editor.offered = "alpha?1";
  RunEditor(form, [&] {
    form.Fill("  {@");
    form.Type("\nf.");
    EXPECT_EQ(form.Shown(), "  {\nf.@");
    form.editor.startCompletion();
    form.editor.startCallTip();
    form.editor.updateCallTip();
    form.editor.autoIndent('\n');
    EXPECT_EQ(form.editor.expectedIndent(0), 0);
    EXPECT_EQ(form.editor.asked, "");
  });
}

TEST(SciTyping, LineEnds_OfTheFile_AreTyped) {
  const std::pair<int, const char*> modes[] = {
      {SC_EOL_CRLF, "a {\r\n\tb"}, {SC_EOL_CR, "a {\r\tb"}, {SC_EOL_LF, "a {\n\tb"}};
  for (const auto& [mode, wanted] : modes) {
    EditorForm form;
    RunEditor(form, [&] {
      form.Fill("a {@");
      form.editor.Send(SCI_SETEOLMODE, static_cast<std::uintptr_t>(mode));
      form.Type("\nb");
      EXPECT_EQ(form.editor.GetText(), wanted);
    });
  }
}

}  // namespace
}  // namespace mavro
