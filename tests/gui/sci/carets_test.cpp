#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QClipboard>
#include <QGuiApplication>

#include "EditorForm.h"
#include "OccurrenceRules.h"

// Several carets and columns of text, by real keys and clicks.

namespace mavro {
namespace {

using test::EditorForm;
using test::RunEditor;

struct CaretsForm : EditorForm {
  // Gives the editor a text and a caret for each "@" in it.
  void FillAll(std::string text) {
    std::vector<int> places;
    for (size_t at = text.find('@'); at != text.npos; at = text.find('@')) {
      text.erase(at, 1);
      places.push_back(static_cast<int>(at));
    }
    Fill(text);
    for (const int place : places)
      editor.Send(place == places[0] ? SCI_SETSELECTION : SCI_ADDSELECTION,
                  static_cast<std::uintptr_t>(place), place);
  }
  // The text with "@" at each caret, and "^" at the other end of its selection.
  std::string ShownAll() const {
    std::vector<std::pair<int, char>> marks;
    const auto count = static_cast<std::uintptr_t>(editor.Send(SCI_GETSELECTIONS));
    for (std::uintptr_t i = 0; i < count; ++i) {
      const auto caret = static_cast<int>(editor.Send(SCI_GETSELECTIONNCARET, i));
      const auto anchor = static_cast<int>(editor.Send(SCI_GETSELECTIONNANCHOR, i));
      marks.emplace_back(caret, '@');
      if (anchor != caret) marks.emplace_back(anchor, '^');
    }
    std::sort(marks.rbegin(), marks.rend());
    std::string text = editor.GetText();
    for (const auto& [place, sign] : marks) text.insert(static_cast<size_t>(place), 1, sign);
    return text;
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    test::Key(*this, key, modifiers);
  }
  QPoint PointOf(int position) const {
    const auto x = editor.Send(SCI_POINTXFROMPOSITION, 0, position);
    const auto y = editor.Send(SCI_POINTYFROMPOSITION, 0, position);
    QWidget* view = static_cast<QAbstractScrollArea*>(test::WidgetOf(editor))->viewport();
    return view->mapTo(view->window(), QPoint(static_cast<int>(x), static_cast<int>(y) + 4));
  }
  QWindow* ItsWindow() const { return test::WidgetOf(*this)->windowHandle(); }
  void ClickAt(int position, Qt::KeyboardModifiers modifiers) {
    QTest::mouseClick(ItsWindow(), Qt::LeftButton, modifiers, PointOf(position));
  }
  void Drag(int from, int to, Qt::KeyboardModifiers modifiers) {
    QTest::mousePress(ItsWindow(), Qt::LeftButton, modifiers, PointOf(from));
    QTest::mouseMove(ItsWindow(), PointOf(to));
    QTest::mouseRelease(ItsWindow(), Qt::LeftButton, modifiers, PointOf(to));
  }
};

// A text, what is done, and the text after it.
void Check(const std::string& before, const std::function<void(CaretsForm&)>& act,
           const std::string& after) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.FillAll(before);
    act(form);
    EXPECT_EQ(form.ShownAll(), after);
  });
}

void SetClipboard(const char* text) {
  QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
}

TEST(SciCarets, CtrlClick_AddsOne_AndEscapeReturnsToOne) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.Fill("ab\ncd\nef");
    form.ClickAt(1, Qt::NoModifier);
    form.ClickAt(4, Qt::ControlModifier);
    form.ClickAt(7, Qt::ControlModifier);
    EXPECT_EQ(form.ShownAll(), "a@b\nc@d\ne@f");
    form.Type("x");
    EXPECT_EQ(form.ShownAll(), "ax@b\ncx@d\nex@f");
    form.Press(Qt::Key_Escape);
    EXPECT_EQ(form.ShownAll(), "axb\ncxd\nex@f");
    form.Press(Qt::Key_Escape);
    EXPECT_EQ(form.ShownAll(), "axb\ncxd\nex@f");
  });
}

TEST(SciCarets, CaretsAboveAndBelow_AreAddedAtTheEdges) {
  Check(
      "ab\nc@d\nef\ngh",
      [](CaretsForm& form) {
        form.editor.OnCommand(cSciCaretBelow);
        form.editor.OnCommand(cSciCaretBelow);
        form.editor.OnCommand(cSciCaretBelow);
        form.editor.OnCommand(cSciCaretAbove);
        form.editor.OnCommand(cSciCaretAbove);
      },
      "a@b\nc@d\ne@f\ng@h");
}

TEST(SciCarets, LettersBackspaceAndDelete_ActAtEach_InSingleUndoSteps) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.FillAll("a@b\nc@d\n@");
    form.Type("x");
    EXPECT_EQ(form.ShownAll(), "ax@b\ncx@d\nx@");
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "ab\ncd\n");
    form.FillAll("ab@c\nde@f");
    form.Press(Qt::Key_Backspace);
    EXPECT_EQ(form.ShownAll(), "a@c\nd@f");
    form.Press(Qt::Key_Delete);
    EXPECT_EQ(form.ShownAll(), "a@\nd@");
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "ac\ndf");
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "abc\ndef");
  });
}

TEST(SciCarets, DeleteAndBackspace_JoinLinesAtEach) {
  Check(
      "a@\nb@\nc", [](CaretsForm& form) { form.Press(Qt::Key_Delete); }, "a@b@c");
  Check(
      "a\n@b\n@c", [](CaretsForm& form) { form.Press(Qt::Key_Backspace); }, "a@b@c");
}

TEST(SciCarets, BracketsAreNotClosed) {
  CaretsForm form;
  form.editor.options->closePairs = true;
  RunEditor(form, [&] {
    form.Fill("@");
    form.Type("f(");
    EXPECT_EQ(form.ShownAll(), "f(@)");
    form.FillAll("f@\ng@");
    form.Type("(");
    EXPECT_EQ(form.ShownAll(), "f(@\ng(@");
    form.Type(")");
    EXPECT_EQ(form.ShownAll(), "f()@\ng()@");
  });
}

TEST(SciCarets, Enter_IndentsAtEach_InOneUndoStep) {
  CaretsForm form;
  form.editor.options->useTabs = false;
  RunEditor(form, [&] {
    form.FillAll("if (a) {@x;\n}\n   if (b) {@y;\n   }");
    form.Type("\n");
    EXPECT_EQ(form.ShownAll(), "if (a) {\n   @x;\n}\n   if (b) {\n      @y;\n   }");
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "if (a) {x;\n}\n   if (b) {y;\n   }");
  });
}

TEST(SciCarets, Enter_TwiceInOneLine) {
  Check(
      "   a@b@c", [](CaretsForm& form) { form.Type("\n"); }, "   a\n\t@b\n\t@c");
}

TEST(SciCarets, ABraceIsIndentedAtEach) {
  CaretsForm form;
  form.editor.options->useTabs = false;
  RunEditor(form, [&] {
    form.FillAll("   if (a) {\n      @\n   if (b) {\n      @");
    form.Type("}");
    EXPECT_EQ(form.ShownAll(), "   if (a) {\n   }@\n   if (b) {\n   }@");
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "   if (a) {\n      \n   if (b) {\n      ") << "one step";
  });
}

TEST(SciCarets, ASelection_IsReplacedAtEach) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.FillAll("ab@ ab@");
    form.Press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(form.ShownAll(), "a@b^ a@b^");
    form.Type("\n");
    EXPECT_EQ(form.ShownAll(), "a\n@ a\n @");
  });
}

TEST(SciCarets, HomeEndAndArrows_MoveEach_WithShiftSelect) {
  Check(
      "ab@c\nde@f", [](CaretsForm& form) { form.Press(Qt::Key_Home); }, "@abc\n@def");
  Check(
      "ab@c\nde@f", [](CaretsForm& form) { form.Press(Qt::Key_End, Qt::ShiftModifier); },
      "ab^c@\nde^f@");
  Check(
      "ab@c\nde@f", [](CaretsForm& form) { form.Press(Qt::Key_Left); }, "a@bc\nd@ef");
  Check(
      "a@b\n\nc@d\nef", [](CaretsForm& form) { form.Press(Qt::Key_Down); }, "ab\n@\ncd\ne@f");
  Check(
      "ab\nc@d\nef\ng@h", [](CaretsForm& form) { form.Press(Qt::Key_Up, Qt::ShiftModifier); },
      "a@b\nc^d\ne@f\ng^h");
}

TEST(SciCarets, DownOverAShortLine_KeepsTheColumns) {
  Check(
      "abcd@\nab\nabcd\nab@c\n\nabc",
      [](CaretsForm& form) {
        form.Press(Qt::Key_Down);
        EXPECT_EQ(form.ShownAll(), "abcd\nab@\nabcd\nabc\n@\nabc");
        form.Press(Qt::Key_Down);
      },
      "abcd\nab\nabcd@\nabc\n\nab@c");
}

TEST(SciCarets, CaretsAtOnePlace_AreOne) {
  Check(
      "a@b@\n\n",
      [](CaretsForm& form) {
        form.Press(Qt::Key_Down);
        form.Type("x");
      },
      "ab\nx@\n");
  CaretsForm form;
  RunEditor(form, [&] {
    form.Fill("ab@c");
    form.ClickAt(2, Qt::ControlModifier);
    form.Type("x");
    EXPECT_EQ(form.ShownAll(), "abx@c");
  });
}

TEST(SciCarets, SelectionsThatTouchAreTwo_ACaretAtOneIsPartOfIt) {
  Check(
      "ab@cd\nab@cd\nabcd",
      [](CaretsForm& form) {
        form.Press(Qt::Key_Down, Qt::ShiftModifier);
        form.Press(Qt::Key_Right, Qt::ShiftModifier);
        form.Type("x");
      },
      "abx@x@d");
  Check(
      "ab@cd\nabcd",
      [](CaretsForm& form) {
        form.Press(Qt::Key_Left);
        form.Press(Qt::Key_Right);
        form.Press(Qt::Key_Down, Qt::ShiftModifier);
        form.editor.OnCommand(cSciCaretAbove);
        form.Type("x");
      },
      "abx@cd");
}

TEST(SciCarets, CtrlDrag_AddsASelection) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.Fill("@abcd\nefgh");
    form.Drag(6, 8, Qt::ControlModifier);
    EXPECT_EQ(form.ShownAll(), "@abcd\ne^fg@h");
    form.Type("x");
    EXPECT_EQ(form.ShownAll(), "x@abcd\nex@h");
  });
}

TEST(SciCarets, OccurrencesThatTouch_AreAllSelected) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.Fill("a-a-a-");
    form.editor.Select(0, 2);
    EXPECT_EQ(form.editor.SelectOccurrences(), 3);
    EXPECT_EQ(form.editor.Send(SCI_GETSELECTIONS), 3);
    form.Type("b");
    EXPECT_EQ(form.editor.GetText(), "bbb");
  });
}

TEST(SciCarets, AColumnOfLettersOfAllWidths_IsReplacedByAPaste) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.Fill("iiW@Wi\nWiiWi\nxxxxx");
    form.Press(Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
    form.Press(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    form.Press(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    std::string wanted = form.ShownAll();
    for (size_t at = wanted.find('^'); at != wanted.npos; at = wanted.find('^', at))
      wanted.replace(at, wanted.find('@', at) + 1 - at, "+");
    SetClipboard("+");
    form.Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.editor.GetText(), wanted);
  });
}

TEST(SciCarets, EnterInAColumn_LeavesIt) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.Fill("abc\nab@c\nabc");
    form.Press(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    form.Type("\n");
    EXPECT_EQ(form.ShownAll(), "abc\nabc\nab\n@c");
    form.Press(Qt::Key_Backspace);
    EXPECT_EQ(form.ShownAll(), "abc\nabc\nab@c");
    form.Press(Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
    form.Press(Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
    form.Press(Qt::Key_Backspace);
    EXPECT_EQ(form.ShownAll(), "abc\nabc\nab@");
  });
}

TEST(SciCarets, LettersOfOtherWidths_GetNoBlanksBetweenThem) {
  CaretsForm form;
  form.editor.options->useTabs = false;
  RunEditor(form, [&] {
    form.Fill("wider@\n\niiiiiiiiii");
    form.Press(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    form.Press(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    form.Type("kr-k");
    const std::string text = form.editor.GetText();
    EXPECT_TRUE(text.starts_with("widerkr-k\n ")) << text;
    for (size_t at = 0, line = 0; line < 3; ++line) {
      at = text.find("kr-k", at);
      ASSERT_NE(at, text.npos) << text;
      ++at;
    }
  });
}

TEST(SciCarets, EscapeFromAColumn_LeavesNoBlanks) {
  CaretsForm form;
  form.editor.options->monospaced = true;
  RunEditor(form, [&] {
    form.editor.applyOptions();
    form.Fill("abc@\n\nabc");
    form.Press(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    form.Press(Qt::Key_Escape);
    form.Type("x");
    EXPECT_EQ(form.ShownAll(), "abc\nx@\nabc");
  });
}

TEST(SciCarets, AtTheEdgesOfTheText_TheCaretStays) {
  Check(
      "a@b\nc@d", [](CaretsForm& form) { form.Press(Qt::Key_Up); }, "a@b\ncd");
  Check(
      "a@b\nc@d", [](CaretsForm& form) { form.Press(Qt::Key_Down); }, "ab\nc@d");
}

TEST(SciCarets, Paste_GivesEachALineIfTheCountsMatch_ElseTheWholeText) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.FillAll("a@;\nb@;");
    SetClipboard("1\n2\n");
    form.Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.ShownAll(), "a1@;\nb2@;");
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "a;\nb;") << "one step";
    form.FillAll("a@;\nb@;");
    SetClipboard("1\n2\n3");
    form.Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.editor.GetText(), "a1\n2\n3;\nb1\n2\n3;");
    form.FillAll("a@;\nb@;");
    SetClipboard("x");
    form.editor.OnCommand(cSciPaste);
    EXPECT_EQ(form.ShownAll(), "ax@;\nbx@;");
  });
}

TEST(SciCarets, Copy_HasALineForEach_WhichPasteGivesBack) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.FillAll("ab@ cd@\n");
    form.Press(Qt::Key_Left, Qt::ShiftModifier);
    form.Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "b\nd");
    form.Press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(form.ShownAll(), "a@ c@\n");
    form.Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.ShownAll(), "ab@ cd@\n");
  });
}

TEST(SciCarets, Overtyping_ReplacesAtEach) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.FillAll("@ab\n@\n");
    form.editor.Send(SCI_SETOVERTYPE, 1);
    form.Type("x");
    EXPECT_EQ(form.ShownAll(), "x@b\nx@\n");
  });
}

TEST(SciCarets, NoListAndNoTip_ComeByThemselves) {
  CaretsForm form;
  form.editor.offered = "alpha?1";
  form.editor.offeredTip = "foo(int a)";
  RunEditor(form, [&] {
    form.FillAll("elephant;\n@\n@");
    form.Type("p.foo(elepha");
    EXPECT_EQ(form.editor.Send(SCI_AUTOCACTIVE), 0);
    EXPECT_EQ(form.editor.Send(SCI_CALLTIPACTIVE), 0);
    EXPECT_EQ(form.editor.asked + form.editor.askedTips, "");
    EXPECT_GT(form.editor.textChanges, 0);
  });
}

TEST(SciCarets, AltDrag_SelectsAColumn_AndLettersGoIntoAllItsRows) {
  CaretsForm form;
  form.editor.options->monospaced = true;
  RunEditor(form, [&] {
    form.editor.applyOptions();
    form.Fill("abcd\nefgh\nij\nklmn");
    form.Drag(1, 16, Qt::AltModifier);
    EXPECT_EQ(form.editor.Send(SCI_GETSELECTIONMODE), SC_SEL_RECTANGLE);
    form.Type("x");
    EXPECT_EQ(form.editor.GetText(), "axd\nexh\nix\nkxn");
    form.Type("y");
    EXPECT_EQ(form.editor.GetText(), "axyd\nexyh\nixy\nkxyn");
    form.editor.OnCommand(cSciUndo);
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "abcd\nefgh\nij\nklmn");
  });
}

TEST(SciCarets, AltShiftArrows_SelectAColumn_AlsoAfterTheEndOfShortLines) {
  CaretsForm form;
  form.editor.options->monospaced = true;
  RunEditor(form, [&] {
    form.editor.options->useTabs = false;
    form.editor.applyOptions();
    form.Fill("abc@\n\nabc");
    form.Press(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    form.Press(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    form.Type("x");
    EXPECT_EQ(form.editor.GetText(), "abcx\n   x\nabcx");
    form.Press(Qt::Key_Escape);
    form.Fill("@ab\ncd\nef");
    form.Press(Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
    form.Press(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    form.Press(Qt::Key_Delete);
    EXPECT_EQ(form.editor.GetText(), "b\nd\nef");
  });
}

TEST(SciCarets, AColumn_IsCopiedAndPastedAsOne) {
  CaretsForm form;
  form.editor.options->monospaced = true;
  RunEditor(form, [&] {
    form.editor.applyOptions();
    form.Fill("@abc\ndef\n123\n4");
    form.Press(Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
    form.Press(Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
    form.Press(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    form.Press(Qt::Key_C, Qt::ControlModifier);
    form.editor.Select(10, 10);
    form.Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.editor.GetText(), "abc\ndef\n12ab3\n4 de");
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "abc\ndef\n123\n4") << "one step";
  });
}

TEST(SciCarets, AllOccurrences_OfTheWord_AreSelectedAndTypedInto) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.Fill("ab abc ab; Ab\nx.a@b=ab2;");
    EXPECT_EQ(form.editor.SelectOccurrences(), 3);
    EXPECT_EQ(form.ShownAll(), "^ab@ abc ^ab@; Ab\nx.^ab@=ab2;");
    EXPECT_EQ(form.editor.CaretPosition(), 18) << "the main one is where the caret was";
    form.Type("n");
    form.Type("ew");
    EXPECT_EQ(form.editor.GetText(), "new abc new; Ab\nx.new=ab2;");
  });
}

TEST(SciCarets, AllOccurrences_OfASelection) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.Fill("a-b a-bc");
    form.editor.Select(0, 3);
    EXPECT_EQ(form.editor.SelectOccurrences(), 2) << "no word: parts of words count";
    form.Fill("ab abc");
    form.editor.Select(0, 1);
    EXPECT_EQ(form.editor.SelectOccurrences(), 2);
    form.Fill(" @ ");
    EXPECT_EQ(form.editor.SelectOccurrences(), 0);
    EXPECT_EQ(form.ShownAll(), " @ ");
  });
}

TEST(SciCarets, NextOccurrence_IsAddedAndGoesOnAtTheStart) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.Fill("ab ab a@b");
    EXPECT_TRUE(form.editor.AddNextOccurrence());
    EXPECT_EQ(form.ShownAll(), "ab ab ^ab@");
    EXPECT_TRUE(form.editor.AddNextOccurrence());
    EXPECT_EQ(form.ShownAll(), "^ab@ ab ^ab@");
    EXPECT_TRUE(form.editor.AddNextOccurrence());
    EXPECT_FALSE(form.editor.AddNextOccurrence());
    EXPECT_EQ(form.ShownAll(), "^ab@ ^ab@ ^ab@");
  });
}

std::string Words(size_t count) {
  std::string text;
  for (size_t i = 0; i < count; ++i) text += "  word = " + std::to_string(i) + ";\n";
  return text;
}

TEST(SciCarets, TenThousandOccurrences_AreTypedInto_AndOneMoreIsRefused) {
  CaretsForm form;
  RunEditor(form, [&] {
    form.Fill(Words(cMostCarets));
    form.editor.Select(3, 3);
    EXPECT_EQ(form.editor.SelectOccurrences(), static_cast<int>(cMostCarets));
    EXPECT_EQ(form.editor.Send(SCI_GETSELECTIONS), static_cast<std::intptr_t>(cMostCarets));
    form.Type("n");
    std::string wanted = Words(cMostCarets);
    for (size_t at = wanted.find("word"); at != wanted.npos; at = wanted.find("word", at))
      wanted.replace(at, 4, "n");
    EXPECT_EQ(form.editor.GetText(), wanted);
    form.Fill(Words(cMostCarets + 1));
    form.editor.Select(3, 3);
    EXPECT_GT(form.editor.SelectOccurrences(), static_cast<int>(cMostCarets));
    EXPECT_EQ(form.editor.Send(SCI_GETSELECTIONS), 1);
  });
}

TEST(SciCarets, OccurrencesInFolds_Count) {
  CaretsForm form;
  form.editor.options->foldMargin = true;
  RunEditor(form, [&] {
    form.editor.applyOptions();
    form.Fill("void f() {\n  ab;\n}\nab@;\n");
    form.editor.Send(SCI_COLOURISE, 0, -1);
    form.editor.OnCommand(cSciFoldAll);
    EXPECT_EQ(form.editor.Send(SCI_GETLINEVISIBLE, 1), 0);
    EXPECT_EQ(form.editor.SelectOccurrences(), 2);
    form.Type("x");
    EXPECT_EQ(form.editor.GetText(), "void f() {\n  x;\n}\nx;\n");
  });
}

}  // namespace
}  // namespace mavro
