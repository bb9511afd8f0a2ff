#include <gtest/gtest.h>

#include <QAccessible>

#include "AccessText.h"
#include "EditorForm.h"

namespace mavro {
namespace {

using test::EditorForm;
using test::RunEditor;

// The way to an editor that counts what an answer costs: messages, and the bytes they look at.
class CountingDoor : public AccessText::Door {
 public:
  explicit CountingDoor(SciEditor& itsEditor) : editor(itsEditor) {}

  std::intptr_t Send(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override {
    ++cost;
    if (message == SCI_COUNTCODEUNITS) cost += static_cast<int>(lParam) - static_cast<int>(wParam);
    if (message == SCI_POSITIONRELATIVECODEUNITS) cost += static_cast<int>(lParam);
    return editor.Send(message, wParam, lParam);
  }
  std::string Range(int start, int end) override {
    cost += end - start;
    return editor.GetRange(start, end);
  }

  long cost = 0;

 private:
  SciEditor& editor;
};

QAccessibleTextInterface* TextOf(const EditorForm& form) {
  return QAccessible::queryAccessibleInterface(test::WidgetOf(form.editor))->textInterface();
}

TEST(SciAccess, Interface_IsOfAnEditableText) {
  EditorForm form;
  RunEditor(form, [&] {
    QAccessibleInterface* access =
        QAccessible::queryAccessibleInterface(test::WidgetOf(form.editor));
    EXPECT_EQ(access->role(), QAccessible::EditableText);
    EXPECT_TRUE(access->state().multiLine);
    EXPECT_TRUE(access->state().editable);
    form.editor.OnCommand(cSciReadOnly);
    EXPECT_TRUE(access->state().readOnly);
    EXPECT_NE(access->textInterface(), nullptr);
    EXPECT_NE(access->editableTextInterface(), nullptr);
  });
}

struct UnitCase {
  int offset;
  QAccessible::TextBoundaryType type;
  const char16_t* at;
  const char16_t* before;
  const char16_t* after;
};

TEST(SciAccess, LineWordAndCharacter_AtBeforeAndAfter) {
  const UnitCase cases[] = {
      {0, QAccessible::LineBoundary, u"one two\n", u"", u"\u00E4\U0001F600b\n"},
      {10, QAccessible::LineBoundary, u"\u00E4\U0001F600b\n", u"one two\n", u"end"},
      {14, QAccessible::LineBoundary, u"end", u"\u00E4\U0001F600b\n", u""},
      {5, QAccessible::WordBoundary, u"two", u" ", u"\n"},
      {0, QAccessible::CharBoundary, u"o", u"", u"n"},
      {9, QAccessible::CharBoundary, u"\U0001F600", u"\u00E4", u"b"},
  };
  EditorForm form;
  RunEditor(form, [&] {
    form.editor.codePage = 65001;
    form.editor.applyOptions();
    form.Fill("one two\n\u00E4\U0001F600b\nend");
    QAccessibleTextInterface* text = TextOf(form);
    EXPECT_EQ(text->characterCount(), 16);
    for (const UnitCase& row : cases) {
      int start = -1, end = -1;
      EXPECT_EQ(text->textAtOffset(row.offset, row.type, &start, &end), QString::fromUtf16(row.at))
          << row.offset;
      EXPECT_EQ(text->text(start, end), QString::fromUtf16(row.at)) << row.offset;
      EXPECT_EQ(text->textBeforeOffset(row.offset, row.type, &start, &end),
                QString::fromUtf16(row.before))
          << row.offset;
      EXPECT_EQ(text->textAfterOffset(row.offset, row.type, &start, &end),
                QString::fromUtf16(row.after))
          << row.offset;
    }
  });
}

TEST(SciAccess, CaretAndSelection_AreRead_AndSet) {
  EditorForm form;
  RunEditor(form, [&] {
    form.editor.codePage = 65001;
    form.editor.applyOptions();
    form.Fill("\u00E4\u00E4x@y");
    QAccessibleTextInterface* text = TextOf(form);
    EXPECT_EQ(text->cursorPosition(), 3);
    EXPECT_EQ(text->selectionCount(), 0);
    text->setCursorPosition(1);
    EXPECT_EQ(form.editor.CaretPosition(), 2);
    text->setSelection(0, 1, 3);
    EXPECT_EQ(form.editor.SelectedText(), "\u00E4x");
    int start = 0, end = 0;
    text->selection(0, &start, &end);
    EXPECT_EQ(std::pair(start, end), (std::pair{1, 3}));
    text->removeSelection(0);
    EXPECT_EQ(text->selectionCount(), 0);
    text->setCursorPosition(9999);
    EXPECT_EQ(form.editor.CaretPosition(), form.editor.Length());
  });
}

TEST(SciAccess, OtherBytes_AreALetterEach) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("\xE4 \xFF");
    QAccessibleTextInterface* text = TextOf(form);
    EXPECT_EQ(text->characterCount(), 3);
    EXPECT_EQ(text->text(0, 3), QString::fromLatin1("\xE4 \xFF"));
  });
}

TEST(SciAccess, CodePageChangesUnderAReader_IsFollowed) {
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("a\n\u00E4\nb\nc");
    QAccessibleTextInterface* text = TextOf(form);
    for (const int codePage : {0, 65001, 0, 65001}) {
      form.editor.codePage = codePage;
      form.editor.applyOptions();
      EXPECT_EQ(text->characterCount(), codePage ? 7 : 8);
      form.editor.ReplaceSelection("x\n");
      EXPECT_EQ(text->cursorPosition(), 2);
      form.editor.OnCommand(cSciUndo);
    }
  });
}

long CostAtTheEnd(EditorForm& form, int lines) {
  std::string content;
  for (int i = 0; i < lines; ++i) content += "int a\u00E4; // another line\n";
  form.editor.codePage = 65001;
  form.editor.applyOptions();
  form.Fill(content + "the last line");
  form.editor.Send(SCI_DOCUMENTEND);
  CountingDoor door(form.editor);
  const AccessText text(door);
  const int caret = text.CaretOffset();
  door.cost = 0;
  for (const auto unit :
       {AccessText::Unit::cLine, AccessText::Unit::cWord, AccessText::Unit::cCharacter}) {
    text.Text(text.UnitAt(caret, unit));
    text.Text(text.UnitBefore(caret, unit));
    text.Text(text.UnitAfter(caret, unit));
  }
  text.CharacterCount();
  return door.cost;
}

TEST(SciAccess, Cost_AtTheEndOfALongText_IsThatOfAShortOne) {
  EditorForm form;
  RunEditor(form, [&] {
    const long inShort = CostAtTheEnd(form, 10);
    EXPECT_EQ(CostAtTheEnd(form, 20000), inShort);
    EXPECT_LT(inShort, 1000);
  });
}

}  // namespace
}  // namespace mavro
