#include "RichView.h"

#include <gtest/gtest.h>

#include <QAbstractTextDocumentLayout>
#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>
#include <ctime>
#include <functional>
#include <memory>

#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

constexpr char cHelp[] =
    "{\\rtf1\\ansi{\\fonttbl{\\f0 Sans;}}{\\colortbl;\\red200\\green0\\blue0;}"
    "\\b\\fs32 Title\\b0\\fs24\\par plain \\cf1 red\\cf0  \\'e9\\par"
    "\\li360\\fi-180\\bullet\\tab point\\par\\pard "
    "{\\field{\\*\\fldinst HYPERLINK \"topic:1\"}{\\fldrslt a link}}\\par}";

struct RichForm : Form {
  RichView view;
  std::string links;

  RichForm() {
    SetBounds(0, 0, 360, 220);
    view.SetBounds(10, 10, 320, 180);
    view.text = cHelp;
    view.onLink.Add_H(this, &RichForm::OnLink);
    Add(&view);
  }
  void OnLink(ItemArgs& args) { links += args.text + " "; }
  QTextBrowser* Widget() { return qobject_cast<QTextBrowser*>(test::WidgetOf(view)); }
  QTextCharFormat FormatAt(const char* word) {
    QTextCursor found = Widget()->document()->find(word);
    return found.charFormat();
  }
};

TEST(RichView, ShowsTextAndLooks) {
  RichForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.view.PlainText(), "Title\nplain red \xC3\xA9\n\xE2\x80\xA2\tpoint\na link");
    EXPECT_EQ(form.FormatAt("Title").fontWeight(), QFont::Bold);
    EXPECT_EQ(form.FormatAt("Title").fontPointSize(), 16);
    EXPECT_EQ(form.FormatAt("red").foreground().color(), QColor(200, 0, 0));
    EXPECT_EQ(form.view.text.Get(), cHelp);
    test::Shot(form, "rich_view");
  });
}

TEST(RichView, Link_ByEnterAndByClick) {
  RichForm form;
  test::RunForm(form, false, [&] {
    form.view.Focus();
    QTest::keyClick(form.Widget(), Qt::Key_Tab);
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.links, "topic:1 ");
    const QTextCursor link = form.Widget()->document()->find("a link");
    const QPoint at = form.Widget()->cursorRect(link).center() - QPoint(4, 0);
    QTest::mouseClick(form.Widget()->viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(form.links, "topic:1 topic:1 ");
  });
}

TEST(RichView, IsToReadOnly_AndCanBeSelected) {
  RichForm form;
  test::RunForm(form, false, [&] {
    form.view.Focus();
    QTest::keyClick(form.Widget(), Qt::Key_X);
    EXPECT_EQ(form.view.PlainText().find('x'), std::string::npos);
    form.view.SelectAll();
    EXPECT_EQ(form.view.SelectedText(), form.view.PlainText());
  });
}

TEST(RichView, OtherTexts_AreShownAsTheyAre) {
  RichForm form;
  test::RunForm(form, false, [&] {
    form.view.text = "<b>no</b>\nrich \xFF text";
    EXPECT_EQ(form.view.PlainText(), "<b>no</b>\nrich \xFF text");
    form.view.text = "";
    EXPECT_EQ(form.view.PlainText(), "");
    form.view.text = "{\\rtf1 cut {\\b of";
    EXPECT_EQ(form.view.PlainText(), "cut of");
  });
}

TEST(RichView, NewText_IsShownFromItsStart) {
  RichForm form;
  test::RunForm(form, false, [&] {
    std::string many = "{\\rtf1 ";
    for (int i = 0; i < 200; ++i) many += "line\\par ";
    form.view.text = many + "}";
    EXPECT_EQ(form.Widget()->verticalScrollBar()->value(), 0);
  });
}

// A pair of numbers is one character, in rich text and in plain text.
TEST(RichView, SurrogatePairs_AreOneCharacter) {
  RichForm form;
  test::RunForm(form, false, [&] {
    form.view.text = "{\\rtf1 a\\u-10179?\\u-8704?b}";
    EXPECT_EQ(form.view.PlainText(),
              "a\xF0\x9F\x98\x80"
              "b");
    form.view.text = "a\xF0\x9F\x98\x80";
    EXPECT_EQ(form.view.PlainText(), "a\xF0\x9F\x98\x80");
    form.view.SelectAll();
    EXPECT_EQ(form.view.SelectedText(), "a\xF0\x9F\x98\x80");
  });
}

// A word that is shown in parts is one word for whoever asks.
TEST(RichView, LongWord_IsReadSelectedAndCopiedWhole) {
  for (const size_t length : {511U, 512U, 513U, 5000U}) {
    const std::string word(length, 'w');
    const std::string plain = "first\n" + word + " next\nlast";
    const std::string rich = "{\\rtf1 first\\par{\\b ww}" + word.substr(2) + " next\\par last}";
    for (const std::string& text : {plain, rich}) {
      RichForm form;
      test::RunForm(form, false, [&] {
        form.view.text = text;
        EXPECT_EQ(form.Widget()->document()->blockCount(), 3 + int(length - 1) / 512);
        EXPECT_EQ(form.view.PlainText(), plain);
        form.view.SelectAll();
        EXPECT_EQ(form.view.SelectedText(), plain);
        form.Widget()->copy();
        EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), plain);
        QTextCursor part(form.Widget()->document());
        part.setPosition(3);
        part.setPosition(static_cast<int>(6 + length), QTextCursor::KeepAnchor);
        form.Widget()->setTextCursor(part);
        EXPECT_EQ(form.view.SelectedText().substr(0, 5), "st\nww");
        form.view.text = "short";
        EXPECT_EQ(form.view.PlainText(), "short");
      });
    }
  }
}

// The parts of a word never cut a character.
TEST(RichView, LongWordOfPairs_StaysWhole) {
  std::string word = "a";
  for (int i = 0; i < 3000; ++i) word += "\xF0\x9F\x98\x80";
  RichForm form;
  test::RunForm(form, false, [&] {
    form.view.text = word;
    for (QTextBlock block = form.Widget()->document()->begin(); block.isValid();
         block = block.next())
      EXPECT_FALSE(block.text().front().isLowSurrogate());
    EXPECT_EQ(form.view.PlainText(), word);
  });
}

// What is seen is shown at once, the rest when it has been painted.
struct LongForm : RichForm {
  LongForm() {
    text = "";
    for (int line = 0; line < cLines; ++line)
      plain += "line " + std::to_string(line) + " with some words\n";
    rtf = "{\\rtf1\\ansi ";
    for (const char c : plain) c == '\n' ? rtf += "\\line " : rtf += c;
    plain.pop_back();
    rtf.replace(rtf.size() - 6, 6, "\\par}");
  }
  int Letters() { return Widget()->document()->characterCount(); }
  static constexpr int cLines = 1500;
  std::string plain, rtf;
};

TEST(RichView, LongText_ItsBeginningIsShownAtOnce_TheRestFollows) {
  LongForm form;
  test::RunForm(form, false, [&] {
    form.view.text = form.rtf;
    EXPECT_LT(form.Letters(), 20'000);
    EXPECT_GT(form.Letters(), 5'000);
    EXPECT_TRUE(test::WaitFor([&] { return form.Letters() > 30'000; }));
    EXPECT_TRUE(test::WaitFor([&] { return form.view.PlainText() == form.plain; }));
    EXPECT_EQ(form.Widget()->verticalScrollBar()->value(), 0) << "the beginning stays in view";
    EXPECT_EQ(form.Widget()->textCursor().position(), 0);
  });
}

TEST(RichView, LongText_IsWholeForWhoeverReadsSelectsOrGoesToItsEnd) {
  const std::function<void(LongForm&)> uses[] = {
      [](LongForm& form) { EXPECT_TRUE(form.view.PlainText() == form.plain); },
      [](LongForm& form) {
        form.view.SelectAll();
        EXPECT_TRUE(form.view.SelectedText() == form.plain);
      },
      [](LongForm& form) {
        form.view.Focus();
        test::Key(form, Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_TRUE(form.view.SelectedText() == form.plain);
      },
  };
  for (const auto& use : uses) {
    LongForm form;
    test::RunForm(form, false, [&] {
      form.view.text = form.rtf;
      ASSERT_LT(form.Letters(), 20'000);
      use(form);
      form.view.text = "{\\rtf1 short\\par}";
      EXPECT_EQ(form.view.PlainText(), "short") << "nothing of the text before comes later";
      int passes = 0;
      test::WaitFor([&passes] { return ++passes > 50; });
      EXPECT_EQ(form.view.PlainText(), "short");
    });
  }
}

// A word without a place to break it costs no more than a text of its length.
TEST(RichView, WordOfAMegabyte_IsShownWithinASecond) {
  const std::string word(1 << 20, 'w');
  for (const std::string& text :
       {word, "{\\rtf1 " + word + "}", "{\\rtf1 \\b a\\b0 " + word + "}"}) {
    RichForm form;
    test::RunForm(form, false, [&] {
      const std::clock_t start = std::clock();  // of this process: others may be busy
      form.view.text = text;
      form.Widget()->grab();
      EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC);
      EXPECT_EQ(form.view.PlainText().size(), word.size() + (text.find("\\b") != text.npos));
    });
  }
}

TEST(RichView, Destroyed_InOnLink) {
  struct DoomedForm : RichForm {
    std::unique_ptr<RichView> doomed = std::make_unique<RichView>();
    void Doom(ItemArgs&) { doomed.reset(); }
  } form;
  form.doomed->text = cHelp;
  form.doomed->onLink.Add_H(&form, &DoomedForm::Doom);
  form.Add(form.doomed.get());
  test::RunForm(form, false, [&] {
    form.doomed->Focus();
    QTest::keyClick(test::WidgetOf(*form.doomed), Qt::Key_Tab);
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.doomed, nullptr);
  });
}

constexpr char cTable[] =
    "{\\rtf1{\\colortbl\\red0\\green0\\blue0;\\red0\\green0\\blue200;\\red255\\green200\\blue64;}"
    "before\\par\\trowd\\trgaph108\\trrh600\\trleft36\\clbrdrt\\brdrdb\\clbrdrl\\brdrth\\clbrdrb\\b"
    "rdrs"
    "\\clcbpat2\\clvertalc\\cellx1500\\cellx3000\\pard\\intbl{\\fs28\\cf0 head}\\cell\\pard\\intbl "
    "side\\cell\\row\\pard{\\cf1 after}\\par\\trowd\\cellx99999\\intbl wide\\cell\\row\\pard end}";

struct TableForm : RichForm {
  TableForm() { view.text = cTable; }
  QTextTable* Table(int index) {
    return qobject_cast<QTextTable*>(Widget()->document()->rootFrame()->childFrames().at(index));
  }
};

TEST(RichView, Tables_AreShownAsDefined) {
  TableForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.view.PlainText(), "before\nhead\nside\nafter\nwide\nend");
    QTextTable* table = form.Table(0);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->columns(), 2);
    const auto cell = table->cellAt(0, 0).format().toTableCellFormat();
    EXPECT_EQ(cell.background().color(), QColor(255, 200, 64));
    EXPECT_EQ(cell.verticalAlignment(), QTextCharFormat::AlignMiddle);
    EXPECT_EQ(cell.topBorderStyle(), QTextFrameFormat::BorderStyle_Double);
    EXPECT_EQ(cell.leftBorder(), 2);
    EXPECT_EQ(cell.bottomBorder(), 1);
    EXPECT_EQ(cell.rightBorder(), 0);
    const QRectF place =
        form.Widget()->document()->documentLayout()->frameBoundingRect(form.Table(0));
    EXPECT_NEAR(place.height(), 40, 5);
    EXPECT_NEAR(place.width(), 200, 4);
    test::Shot(form, "rich_table");
  });
}

TEST(RichView, WideTable_IsAsWideAsTheView_AlsoWhenThatChanges) {
  TableForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Table(1)->format().width().type(), QTextLength::PercentageLength);
    form.view.SetBounds(10, 10, 250, 180);
    EXPECT_TRUE(test::WaitFor([&form] { return form.Widget()->width() < 300; }));
    EXPECT_EQ(form.Widget()->horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(form.Table(0)->format().width().type(), QTextLength::FixedLength);
    form.view.SetBounds(10, 10, 150, 180);
    EXPECT_TRUE(test::WaitFor([&form] { return form.Widget()->width() < 200; }));
    EXPECT_EQ(form.Table(0)->format().width().type(), QTextLength::PercentageLength);
  });
}

TEST(RichView, Colors_CanBeReadOnADarkPage_AlsoWhenThePaletteChanges) {
  TableForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.FormatAt("after").foreground().color(), QColor(0, 0, 200));
    EXPECT_EQ(form.FormatAt("head").foreground().color(), QColor(0, 0, 0));
    QPalette dark = form.Widget()->palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, Qt::white);
    form.Widget()->setPalette(dark);
    EXPECT_GT(form.FormatAt("after").foreground().color().lightness(), 120);
    EXPECT_EQ(form.FormatAt("after").foreground().color().hslHue(), 240);
    EXPECT_EQ(form.FormatAt("head").foreground().color(), QColor(0, 0, 0));
    EXPECT_EQ(form.FormatAt("side").foreground().style(), Qt::NoBrush);
    EXPECT_EQ(form.view.PlainText(), "before\nhead\nside\nafter\nwide\nend");
  });
}

}  // namespace
}  // namespace mavro
