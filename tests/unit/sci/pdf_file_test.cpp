#include "PdfFile.h"

#include <gtest/gtest.h>

#include "FileText.h"

namespace mavro {
namespace {

// The tables of a font file.
FontTable TablesOf(std::string file) {
  return [file = std::move(file)](const char* tag) -> std::string {
    const auto number = [&](size_t at, int bytes) {
      size_t value = 0;
      for (int i = 0; i < bytes; ++i)
        value = value << 8 | static_cast<unsigned char>(file[at + static_cast<size_t>(i)]);
      return value;
    };
    for (size_t i = 0; i < number(4, 2); ++i) {
      const size_t row = 12 + 16 * i;
      if (file.compare(row, 4, tag) == 0)
        return file.substr(number(row + 8, 4), number(row + 12, 4));
    }
    return {};
  };
}

FontTable Mono() {
  const FileText file = ReadFileText("/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf");
  EXPECT_TRUE(file.Ok()) << file.error;
  return TablesOf(file.text);
}

size_t Count(const std::string& text, const std::string& what) {
  size_t count = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
  return count;
}

TEST(FontFacts, OfAFixedFont_HaveOneWidthForLetters) {
  FontFacts facts;
  ASSERT_TRUE(ReadFontFacts(Mono(), facts));
  EXPECT_EQ(facts.widths[36], 602);  // A
  EXPECT_EQ(facts.widths[37], 602);
  EXPECT_GT(facts.ascent, 700);
  EXPECT_LT(facts.descent, -200);
}

TEST(FontFacts, WithoutTables_AreRefused) {
  FontFacts facts;
  EXPECT_FALSE(ReadFontFacts([](const char*) { return std::string(); }, facts));
  EXPECT_FALSE(ReadFontFacts([](const char*) { return std::string(60, '\x7F'); }, facts));
}

TEST(SubsetFont, KeepsNumbersAndDropsOtherOutlines) {
  const FontTable whole = Mono();
  const std::string part = SubsetFont(whole, {36});
  const FontTable tables = TablesOf(part);
  EXPECT_EQ(tables("maxp"), whole("maxp"));
  EXPECT_EQ(tables("hmtx"), whole("hmtx"));
  EXPECT_LT(tables("glyf").size(), 2000u);
  EXPECT_GT(tables("glyf").size(), 50u);
}

// An accented letter is made of its letter and the accent.
TEST(SubsetFont, KeepsThePartsOfAGlyph) {
  const FontTable whole = Mono();
  const size_t alone = TablesOf(SubsetFont(whole, {36}))("glyf").size();
  size_t composed = 0;
  for (uint16_t glyph = 90; glyph < 140; ++glyph)
    composed = std::max(composed, TablesOf(SubsetFont(whole, {glyph}))("glyf").size());
  EXPECT_GT(composed, alone);
}

TEST(SubsetFont, OfDamagedTables_IsEmptyOrEnds) {
  EXPECT_EQ(SubsetFont([](const char*) { return std::string(); }, {1}), "");
  for (const size_t length : {size_t{2}, size_t{54}, size_t{200}, size_t{5000}}) {
    const FontTable whole = Mono();
    const FontTable cut = [&](const char* tag) { return whole(tag).substr(0, length); };
    SubsetFont(cut, {1, 36, 200, 65535});
  }
}

TEST(PdfText, IsUtf16WithAMark) {
  EXPECT_EQ(PdfText("a\u00E9\U0001F600"), "<FEFF006100E9D83DDE00>");
  EXPECT_EQ(PdfText("\xFFz"), "<FEFFFFFD007A>");
}

TEST(PdfFile, HasPagesFontsAndATableOfContents) {
  PdfFile pdf;
  const int font = pdf.AddFont({"Mono", Mono(), false, true});
  for (int page = 0; page < 3; ++page) {
    pdf.BeginPage(1200, 2400, 1200);
    pdf.Glyphs(font, 167, 0x0000FF, 200, {{36, 100, U"A"}, {37, 200.5, U"B"}, {38, 900, U"C"}});
    pdf.AddOutline("main", 600);
    pdf.EndPage();
  }
  const std::string file = pdf.Finish("a.cpp");
  EXPECT_TRUE(file.starts_with("%PDF-1.5\n"));
  EXPECT_TRUE(file.ends_with("%%EOF\n"));
  EXPECT_EQ(Count(file, "/Type /Page "), 3u);
  EXPECT_EQ(Count(file, "/Title " + PdfText("main")), 3u);
  EXPECT_EQ(Count(file, "/XYZ null 108.0000 null"), 3u);
  EXPECT_EQ(Count(file, "1.0000 0.0000 0.0000 rg"), 3u);
  // The second letter is where the first one ends, the third one isn't.
  const std::string shown("1 0 0 -1 100 200 Tm (\0$\0%) Tj 1 0 0 -1 900 200 Tm (\0&) Tj\nET", 60);
  EXPECT_EQ(Count(file, shown), 3u);
  EXPECT_EQ(Count(file, "/FontFile2"), 1u);
  EXPECT_EQ(Count(file, "<0024> <0041>"), 1u);
}

// Words of a line in other colours follow each other; an area between them ends the text.
TEST(PdfFile, TextThatBeginsWhereTheLastOneEnded_HasNoPlace) {
  PdfFile pdf;
  const int font = pdf.AddFont({"Mono", Mono(), false, true});
  pdf.BeginPage(1200, 2400, 1200);
  pdf.Glyphs(font, 1000, 0, 200, {{'A', 100, U"a"}});
  pdf.Glyphs(font, 1000, 0xFF, 200, {{'B', 703, U"b"}});  // the first one is 602 wide
  pdf.Glyphs(font, 1000, 0xFF, 200, {{'C', 1306, U"c"}});
  pdf.Glyphs(font, 1000, 0xFF, 300, {{'E', 2512, U"e"}});
  pdf.Fill(0, 0, 10, 10, 0);
  pdf.EndPage();
  const std::string file = pdf.Finish("a.cpp");
  EXPECT_EQ(Count(file, "BT\n"), 1u);
  EXPECT_EQ(Count(file, std::string("100 200 Tm (\0A) Tj\n1.0000", 25)), 1u);
  EXPECT_EQ(Count(file, std::string("rg\n(\0B) Tj\n1 0 0 -1 1306", 24)), 1u);
  EXPECT_EQ(Count(file, "1306 200 Tm "), 1u);
  EXPECT_EQ(Count(file, "2512 300 Tm "), 1u);
  EXPECT_LT(file.find("ET\n"), file.find("re f\n"));
}

// Bytes that would end a text, or that readers change, are written with a backslash.
TEST(PdfFile, GlyphsWithBytesThatMeanSomething_AreWrittenSo) {
  PdfFile pdf;
  const int font = pdf.AddFont({"Mono", Mono(), false, true});
  pdf.BeginPage(1200, 2400, 1200);
  pdf.Glyphs(font, 167, 0, 200, {{'(', 0, U"a"}});
  pdf.Glyphs(font, 167, 0, 200, {{')' << 8 | '\\', 0, U"b"}});
  pdf.Glyphs(font, 167, 0, 200, {{'\r' << 8 | '\n', 0, U"c"}});
  pdf.EndPage();
  const std::string file = pdf.Finish("a.cpp");
  EXPECT_EQ(Count(file, std::string("Tm (\0\\() Tj", 11)), 1u);
  EXPECT_EQ(Count(file, "Tm (\\)\\\\) Tj"), 1u);
  EXPECT_EQ(Count(file, "(\\r\n) Tj"), 1u);
}

// Every entry of the table of objects leads to the object with its number.
TEST(PdfFile, TableOfObjects_IsTrue) {
  PdfFile pdf;
  pdf.BeginPage(100, 100, 72);
  pdf.EndPage();
  const std::string file = pdf.Finish("");
  const size_t table = std::stoul(file.substr(file.rfind("startxref") + 10));
  ASSERT_EQ(file.compare(table, 5, "xref\n"), 0);
  const size_t first = file.find("0000000000 65535 f \n") + 20;
  int object = 1;
  for (size_t row = first; file.compare(row + 16, 4, " n \n") == 0; row += 20, ++object)
    EXPECT_EQ(file.compare(std::stoul(file.substr(row, 10)), 7, std::to_string(object) + " 0 obj"),
              0);
  EXPECT_EQ(object, 7);
}

}  // namespace
}  // namespace mavro
