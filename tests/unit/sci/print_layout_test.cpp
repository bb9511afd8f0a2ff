#include "PrintLayout.h"

#include <gtest/gtest.h>

#include "FakePaper.h"

namespace mavro {
namespace {

using test::FakePaper;
using Place = PrintLayout::Place;

struct Lines : PrintText {
  int LineFrom(int line) const override {
    while (line < static_cast<int>(lines.size()) && hidden == line) ++line;
    return line < static_cast<int>(lines.size()) ? line : -1;
  }
  PrintLine Line(int line) const override {
    PrintLine read;
    read.text = lines[static_cast<size_t>(line)];
    read.styles = styles.empty() ? std::string(read.text.size(), '\0') : styles;
    read.isFolded = hidden == line + 1;
    return read;
  }
  int LastNumber() const override { return static_cast<int>(lines.size()); }

  std::vector<std::string> lines;
  std::string styles;
  int hidden = -1;
};

struct PrintLayoutTest : testing::Test {
  PrintLayoutTest() { styles.hasNumbers = false; }

  // The rows of a line on paper with room for so many letters, each piece as "x:text".
  std::vector<std::string> Rows(const std::string& line, int letters) {
    text.lines = {line};
    PrintLayout layout(text, paper, styles);
    std::vector<std::string> shown;
    for (const PrintRow& row : layout.RowsOf(0, letters * 10)) {
      std::string& to = shown.emplace_back();
      for (const PrintPiece& piece : row.pieces)
        to += (to.empty() ? "" : " ") + std::to_string(static_cast<int>(piece.left / 10)) + ":" +
              piece.text;
    }
    return shown;
  }
  // Prints pages with room for some rows of text.
  std::vector<std::string> Pages(int letters, int rows) {
    PrintLayout layout(text, paper, styles);
    for (Place place = layout.First(); place.line >= 0;) {
      paper.StartPage();
      place =
          layout.Page(place, {0, 0, letters * 10, rows * 20}, PrintLayout::Drawing::cDrawn, tops);
    }
    return log.pages;
  }
  using Texts = std::vector<std::string>;

  Lines text;
  PrintStyles styles;
  FakePaper::Log log;
  FakePaper paper{400, 300, log};
  std::vector<PrintLayout::LineTop> tops;
};

TEST_F(PrintLayoutTest, LongLine_BreaksAfterABlank) {
  EXPECT_EQ(Rows("one two three", 8), (Texts{"0:one two ", "0:three"}));
  EXPECT_EQ(Rows("one two", 7), Texts{"0:one two"});
  EXPECT_EQ(Rows("one two", 6), (Texts{"0:one ", "0:two"}));
}

TEST_F(PrintLayoutTest, LongWord_BreaksBeforeTheLetterThatDoesNotFit) {
  EXPECT_EQ(Rows("abcdefgh", 3), (Texts{"0:abc", "0:def", "0:gh"}));
}

TEST_F(PrintLayoutTest, RestOfALine_BeginsBelowItsFirstLetter_UpToTheMiddle) {
  EXPECT_EQ(Rows("  one two", 6), (Texts{"0:  one ", "2:two"}));
  EXPECT_EQ(Rows("      one two", 10), (Texts{"0:      one ", "5:two"}));
}

TEST_F(PrintLayoutTest, Tab_ReachesTheNextStop) {
  EXPECT_EQ(Rows("\ta\tbcd\te", 20), Texts{"4:a 8:bcd 12:e"});
  EXPECT_EQ(Rows("abcd\te", 20), Texts{"0:abcd 8:e"});
}

TEST_F(PrintLayoutTest, Styles_MakePieces_AndBlanksJoinTheOneBefore) {
  text.styles = std::string("\1\1\0\2\2", 5);
  EXPECT_EQ(Rows("ab cd", 20), (Texts{"0:ab  3:cd"}));
}

TEST_F(PrintLayoutTest, LettersThatCannotBeSeen_AreNamed) {
  EXPECT_EQ(Rows(std::string("a\0b", 3), 20), Texts{"0:a[x00]b"});
  EXPECT_EQ(Rows("a\u202E;", 20), Texts{"0:a[U+202E];"});
  EXPECT_EQ(Rows("a\xFFz\xC3", 20), Texts{"0:a[xFF]z[xC3]"});
}

TEST_F(PrintLayoutTest, OtherBytes_AreTheLettersWithTheirNumbers) {
  styles.isUtf8 = false;
  EXPECT_EQ(Rows("\xE9t\xE9", 20), Texts{"0:\u00E9t\u00E9"});
}

TEST_F(PrintLayoutTest, Marks_StayWithTheirLetter) {
  EXPECT_EQ(Rows("ae\u0301o", 20), (Texts{"0:a 1:e\u0301 3:o"}));
  EXPECT_EQ(Rows("ae\u0301o", 2), (Texts{"0:a", "0:e\u0301", "0:o"}));
}

TEST_F(PrintLayoutTest, Pages_HaveEachLetterOnce) {
  text.lines = {"one two three", "", "four"};
  EXPECT_EQ(Pages(8, 2), (Texts{"one two \nthree", "four"}));
}

TEST_F(PrintLayoutTest, PageLowerThanARow_HasOneRow) {
  text.lines = {"a", "b"};
  EXPECT_EQ(Pages(8, 0), (Texts{"a", "b"}));
}

TEST_F(PrintLayoutTest, Numbers_AreRightOfEachOther_AndOnlyBesideTheFirstRow) {
  styles.hasNumbers = true;
  text.lines = Texts(10, "x");
  text.lines[8] = "ab cd";
  Pages(7, 20);
  EXPECT_EQ(log.places[0], "10,15 1");
  EXPECT_EQ(log.places[1], "40,15 x");
  EXPECT_EQ(log.places[16], "10,175 9");
  EXPECT_EQ(log.places[17], "40,175 ab ");
  EXPECT_EQ(log.places[18], "40,195 cd");
  EXPECT_EQ(log.places[19], "0,215 10");
}

TEST_F(PrintLayoutTest, LinesThatAreLeftOut_ShowASignAtTheLineBefore) {
  text.lines = {"f() {", "inside", "}"};
  text.hidden = 1;
  EXPECT_EQ(Pages(10, 9), Texts{"f() { \u2026\n}"});
  ASSERT_EQ(tops.size(), 2u);
  EXPECT_EQ(tops[1].line, 2);
  EXPECT_EQ(tops[1].top, 20);
}

TEST_F(PrintLayoutTest, MeasuredPage_EndsWhereTheDrawnOneDoes) {
  text.lines = {std::string(95, 'x'), "y"};
  PrintLayout layout(text, paper, styles);
  const PrintRect area{0, 0, 100, 60};
  paper.StartPage();
  const Place measured = layout.Page(layout.First(), area, PrintLayout::Drawing::cMeasured, tops);
  EXPECT_EQ(log.pages, Texts{""});
  EXPECT_EQ(measured, (Place{0, 3}));
  EXPECT_EQ(layout.StartOf(measured), 30);
  EXPECT_EQ(layout.Page(layout.First(), area, PrintLayout::Drawing::cDrawn, tops), measured);
}

// The rows of a line are kept from page to page, so that a long one takes time once.
TEST_F(PrintLayoutTest, LineOfAMegabyte_IsBrokenOnce) {
  struct Counted : Lines {
    PrintLine Line(int line) const override {
      ++reads;
      return Lines::Line(line);
    }
    mutable int reads = 0;
  } counted;
  counted.lines = {std::string(1 << 20, 'x')};
  PrintLayout layout(counted, paper, styles);
  int pages = 0;
  for (Place place = layout.First(); place.line >= 0; ++pages)
    place = layout.Page(place, {0, 0, 1000, 1000}, PrintLayout::Drawing::cMeasured, tops);
  EXPECT_EQ(pages, ((1 << 20) + 4999) / 5000);
  EXPECT_EQ(counted.reads, 1);
}

}  // namespace
}  // namespace mavro
