#include <gtest/gtest.h>

#include "EditorForm.h"

// Brackets and quotes in pairs, by real keys.

namespace mavro {
namespace {

using test::EditorForm;
using test::RunEditor;

struct PairsForm : EditorForm {
  PairsForm() { editor.options->closePairs = true; }
  void Undo() { editor.OnCommand(cSciUndo); }
};

// A text, the keys, and the text after them.
struct PairCase {
  const char* before;
  const char* typed;
  const char* after;
};

void Check(std::initializer_list<PairCase> cases) {
  for (const PairCase& row : cases)
    for (const bool settles : {false, true}) {
      PairsForm form;
      RunEditor(form, [&] {
        form.Fill(row.before);
        for (const char c : std::string(row.typed)) {
          form.Type(std::string(1, c));
          if (settles) form.Settle();
        }
        EXPECT_EQ(form.Shown(), row.after) << row.before << " " << row.typed << settles;
      });
    }
}

TEST(SciPairs, BracketsAndQuotes_GetTheirPartners) {
  Check({{"@", "f(", "f(@)"},
         {"@", "a[", "a[@]"},
         {"@", "{", "{@}"},
         {"@", "s = \"", "s = \"@\""},
         {"@", "c = '", "c = '@'"},
         {"@ + 1", "f(", "f(@) + 1"},
         {"@\n", "f(", "f(@)\n"},
         {"@\t;", "f(", "f(@)\t;"},
         {"f(@)", "g(", "f(g(@))"},
         {"a[@]", "(", "a[(@)]"},
         {"{@}", "[", "{[@]}"},
         {"@", "f(a[{\"", "f(a[{\"@\"}])"},
         {"// a\n@", "'", "// a\n'@'"},
         {"/* a */ @", "\"", "/* a */ \"@\""},
         {"s = \"a\" + @", "\"", "s = \"a\" + \"@\""}});
}

TEST(SciPairs, BeforeAWord_NothingIsClosed) {
  Check({{"@x", "(", "(@x"},
         {"@1", "[", "[@1"},
         {"@;", "f(", "f(@;"},
         {"@(a)", "(", "(@(a)"},
         {"@\"a\"", "\"", "\"@\"a\""},
         {"@a", "'", "'@a"}});
}

TEST(SciPairs, OutsideOfCode_NothingIsClosed) {
  Check({{"@", "// f(", "// f(@"},
         {"@", "// say \"", "// say \"@"},
         {"@", "// don't", "// don't@"},
         {"@", "/* [", "/* [@"},
         {"/* a\n@\n*/", "{\"'(", "/* a\n{\"'(@\n*/"},
         {"s = R\"x(\n@\n)x\";", "(\"'", "s = R\"x(\n(\"'@\n)x\";"},
         {"s = R\"x(@)x\";", "[", "s = R\"x([@)x\";"},
         {"s = \"a @\"", "(", "s = \"a (@\""},
         {"s = \"a@", "\"", "s = \"a\"@"},
         {"s = \"a\\@", "\"", "s = \"a\\\"@"},
         {"c = '@'", "(", "c = '(@'"},
         {"@", "1'000", "1'000@"},
         {"@", "0xA'", "0xA'@"},
         {"@", "u'", "u'@"},
         {"@", "R\"", "R\"@"},
         {"@", "#error don'", "#error don'@"},
         {"@", "#include <a (", "#include <a (@>"},
         {"@", "#define S \"(", "#define S \"(@\""}});
}

TEST(SciPairs, Directives_CloseWhatTheirLineOpens) {
  Check({{"@", "#include <", "#include <@>"},
         {"@", "#include <a.h>", "#include <a.h>@"},
         {"@", "# import <", "# import <@>"},
         {"@", "#include \"", "#include \"@\""},
         {"@", "#include \"a.h\"", "#include \"a.h\"@"},
         {"@", "#include <a.h> <", "#include <a.h> <@"},
         {"@", "#define F(", "#define F(@)"},
         {"@", "#define S \"", "#define S \"@\""},
         {"@", "#define S \"a\" \"", "#define S \"a\" \"@\""},
         {"@", "#if a <", "#if a <@"},
         {"@", "a <", "a <@"}});
}

TEST(SciPairs, TheCloserOfAnAutomaticPartner_IsTypedOver) {
  Check({{"@", "f()", "f()@"},
         {"@", "f(g(1))", "f(g(1))@"},
         {"@", "a[1]", "a[1]@"},
         {"@", "{}", "{}@"},
         {"@", "s = \"a\";", "s = \"a\";@"},
         {"@", "s = \"\";", "s = \"\";@"},
         {"@", "c = 'a';", "c = 'a';@"},
         {"@", "c = '\\'';", "c = '\\'';@"},
         {"@", "s = \"\\\"\";", "s = \"\\\"\";@"},
         {"@", "s = \"\\\\\";", "s = \"\\\\\";@"},
         {"@", "f({a[0], \"b\"});", "f({a[0], \"b\"});@"}});
}

TEST(SciPairs, ACloserThatTheUserWrote_StaysAndAnotherComes) {
  Check({{"f(@)", ")", "f()@)"},
         {"a[@]", "]", "a[]@]"},
         {"s = \"a@\"", "\"", "s = \"a\"@\""},
         {"@", "f())", "f())@"}});
}

TEST(SciPairs, ThePairThatTheCaretHasLeft_IsAnOrdinaryOne) {
  PairsForm form;
  RunEditor(form, [&] {
    form.Type("f(");
    test::Key(form, Qt::Key_Left);
    test::Key(form, Qt::Key_Right);
    form.Type(")");
    EXPECT_EQ(form.Shown(), "f()@)");
    form.Fill("@\nx");
    form.Type("f(");
    test::Key(form, Qt::Key_Down);
    test::Key(form, Qt::Key_Up);
    test::Key(form, Qt::Key_End);
    test::Key(form, Qt::Key_Left);
    form.Type(")");
    EXPECT_EQ(form.Shown(), "f()@)\nx");
  });
}

TEST(SciPairs, ACaretThatMovesInsideThePair_MayTypeOver) {
  PairsForm form;
  RunEditor(form, [&] {
    form.Type("f(ab");
    test::Key(form, Qt::Key_Left);
    test::Key(form, Qt::Key_Left);
    test::Key(form, Qt::Key_Right);
    test::Key(form, Qt::Key_Right);
    form.Type(")");
    EXPECT_EQ(form.Shown(), "f(ab)@");
  });
}

TEST(SciPairs, AClickElsewhere_EndsThePair) {
  PairsForm form;
  RunEditor(form, [&] {
    form.Type("f(");
    form.editor.Select(0, 0);
    form.Settle();
    form.editor.Select(2, 2);
    form.Settle();
    form.Type(")");
    EXPECT_EQ(form.Shown(), "f()@)");
  });
}

TEST(SciPairs, Backspace_BetweenAnAutomaticPair_RemovesBoth) {
  PairsForm form;
  RunEditor(form, [&] {
    form.Type("f(");
    test::Key(form, Qt::Key_Backspace);
    EXPECT_EQ(form.Shown(), "f@");
    form.Type("([");
    test::Key(form, Qt::Key_Backspace);
    test::Key(form, Qt::Key_Backspace);
    EXPECT_EQ(form.Shown(), "f@");
    form.Type("(a");
    test::Key(form, Qt::Key_Backspace);
    EXPECT_EQ(form.Shown(), "f(@)") << "not empty before";
    form.Undo();
    EXPECT_EQ(form.Shown(), "f(a@)");
    form.Fill("f(@)");
    test::Key(form, Qt::Key_Backspace);
    EXPECT_EQ(form.Shown(), "f@)") << "the user's own";
  });
}

TEST(SciPairs, Undo_TakesThePairBackInOneStep) {
  PairsForm form;
  RunEditor(form, [&] {
    form.Type("foo(");
    form.Undo();
    EXPECT_EQ(form.Shown(), "foo@");
    form.editor.OnCommand(cSciRedo);
    EXPECT_EQ(form.editor.GetText(), "foo()");
    form.Undo();
    form.Type("(");
    test::Key(form, Qt::Key_Backspace);
    form.Undo();
    EXPECT_EQ(form.editor.GetText(), "foo()");
  });
}

TEST(SciPairs, ASelection_IsSurrounded) {
  PairsForm form;
  RunEditor(form, [&] {
    form.Fill("a bc d");
    form.editor.Select(2, 4);
    form.Type("(");
    EXPECT_EQ(form.editor.GetText(), "a (bc) d");
    EXPECT_EQ(form.editor.SelectedText(), "bc");
    form.Type("\"");
    EXPECT_EQ(form.editor.GetText(), "a (\"bc\") d");
    form.Undo();
    EXPECT_EQ(form.editor.GetText(), "a (bc) d");
    form.editor.Select(5, 3);
    form.Type("'");
    EXPECT_EQ(form.Shown(), "a ('@bc') d") << "the caret stays at its end of the selection";
    form.editor.Select(0, 1);
    form.Type("<");
    EXPECT_EQ(form.Shown(), "<@ ('bc') d");
    form.editor.Select(0, 1);
    form.Type(")");
    EXPECT_EQ(form.Shown(), ")@ ('bc') d") << "a closer replaces";
  });
}

TEST(SciPairs, EnterBetweenBraces_OpensTheBlock) {
  PairsForm form;
  form.editor.options->useTabs = false;
  RunEditor(form, [&] {
    form.Fill("   if (x) @");
    form.Type("{\n");
    EXPECT_EQ(form.Shown(), "   if (x) {\n      @\n   }");
    form.Undo();
    EXPECT_EQ(form.Shown(), "   if (x) {@}") << "one step";
    form.Type("\ny;\n}");
    EXPECT_EQ(form.Shown(), "   if (x) {\n      y;\n   }@");
    form.Undo();
    EXPECT_EQ(form.editor.GetText(), "   if (x) {\n      y;\n      \n   }");
  });
}

TEST(SciPairs, TheEndOfABlock_IsTypedOverFromABlankLineOnly) {
  PairsForm form;
  RunEditor(form, [&] {
    form.Type("{\ny;}");
    EXPECT_EQ(form.Shown(), "{\n\ty;}@\n}");
    form.Fill("@");
    form.Type("{\n}");
    EXPECT_EQ(form.Shown(), "{\n}@");
    form.Fill("{\n@\n}");
    form.Type("}");
    EXPECT_EQ(form.Shown(), "{\n}@\n}") << "the user's own";
  });
}

TEST(SciPairs, CrLf_BlocksKeepTheLineEndsOfTheText) {
  PairsForm form;
  RunEditor(form, [&] {
    form.editor.Send(SCI_SETEOLMODE, SC_EOL_CRLF);
    form.Type("{\ny;\n}");
    EXPECT_EQ(form.Shown(), "{\r\n\ty;\r\n}@");
  });
}

TEST(SciPairs, Off_OvertypingRecordingReadOnlyAndPlainText) {
  const auto typed = [](const std::function<void(EditorForm&)>& prepare) {
    PairsForm form;
    std::string text;
    RunEditor(form, [&] {
      prepare(form);
      form.Type("f(\"{");
      text = form.Shown();
    });
    return text;
  };
  EXPECT_EQ(typed([](EditorForm&) {}), "f(\"{@\")");
  EXPECT_EQ(typed([](EditorForm& form) { form.editor.options->closePairs = false; }), "f(\"{@");
  EXPECT_EQ(typed([](EditorForm& form) { form.editor.Send(SCI_SETOVERTYPE, 1); }), "f(\"{@");
  EXPECT_EQ(typed([](EditorForm& form) { form.editor.OnCommand(cSciRecordMacro); }), "f(\"{@");
  EXPECT_EQ(typed([](EditorForm& form) { form.editor.Send(SCI_SETREADONLY, 1); }), "@");
  EXPECT_EQ(typed([](EditorForm& form) { form.editor.SetLanguage(nullptr); }), "f(\"{@");
}

TEST(SciPairs, ATip_OpensWithTheCloserAndEndsWhereItIsTyped) {
  PairsForm form;
  form.editor.offeredTip = "foo(int a, int b)";
  RunEditor(form, [&] {
    form.Type("foo(");
    EXPECT_EQ(form.Shown(), "foo(@)");
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 1);
    form.Type("(1),2");
    EXPECT_EQ(form.Shown(), "foo((1),2@)");
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 1);
    form.Type(")");
    EXPECT_EQ(form.Shown(), "foo((1),2)@");
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 0);
    EXPECT_EQ(form.editor.parenDepth, 0);
  });
}

TEST(SciPairs, AList_ComesBetweenThePair_AndTheCloserClosesIt) {
  PairsForm form;
  form.editor.offered = "alpha?1";
  RunEditor(form, [&] {
    form.Type("f(p.");
    EXPECT_EQ(form.editor.Send(SCI_AUTOCACTIVE), 1);
    form.Type(")");
    EXPECT_EQ(form.editor.Send(SCI_AUTOCACTIVE), 0);
    EXPECT_EQ(form.Shown(), "f(p.)@");
  });
}

}  // namespace
}  // namespace mavro
