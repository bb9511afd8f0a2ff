#include "RtfReader.h"

#include <gmock/gmock.h>

namespace mavro {
namespace {

// A text as lines of "looks|text" per run, paragraphs in brackets.
std::string Shown(const RtfText& text) {
  std::string shown;
  for (const RtfParagraph& paragraph : text.paragraphs) {
    shown += '[';
    for (const RtfRun& run : paragraph.runs) {
      const RtfStyle& style = run.style;
      if (style.bold) shown += "<b>";
      if (style.italic) shown += "<i>";
      if (style.underline) shown += "<u>";
      if (style.strike) shown += "<s>";
      if (style.halfPoints != 24) shown += "<" + std::to_string(style.halfPoints) + ">";
      if (style.color != -1) shown += "<#" + std::to_string(style.color) + ">";
      if (style.face >= 0) shown += "<" + text.faces[static_cast<size_t>(style.face)] + ">";
      if (style.link >= 0) shown += "<a " + text.links[static_cast<size_t>(style.link)] + ">";
      shown += run.text;
    }
    shown += ']';
  }
  return shown;
}

std::string Shown(std::string_view rtf) {
  return Shown(ReadRtf(rtf));
}

struct Row {
  const char* what;
  const char* rtf;
  const char* shown;
};

class RtfRows : public testing::TestWithParam<Row> {};

TEST_P(RtfRows, ReadAs) {
  EXPECT_EQ(Shown(GetParam().rtf), GetParam().shown);
}

constexpr Row cRows[] = {
    {"Text", "{\\rtf1\\ansi Hello}", "[Hello]"},
    {"Paragraphs", "{\\rtf1 a\\par b\\par}", "[a][b]"},
    {"Page_EndsTheParagraph", "{\\rtf1 a\\page b\\row c}", "[a][b][c]"},
    {"Byte_InLettersOfEitherCase", "{\\rtf1 \\'E4\\'e4\\'Fc}", "[\u00e4\u00e4\u00fc]"},
    {"Number_OfNoCharacter_IsLost", "{\\rtf1 \\u0 ?\\u65536 ?\\u65 ?}", "[\ufffd\ufffdA]"},
    {"Number_LastOfTheFirstPlane", "{\\rtf1 \\u65533 ?\\u-3 ?}", "[\ufffd\ufffd]"},
    {"EmptyParagraph", "{\\rtf1 a\\par\\par b}", "[a][][b]"},
    {"Bold_EndsByNumberZero", "{\\rtf1 a\\b b\\b0 c}", "[a<b>bc]"},
    {"Bold_EndsWithItsGroup", "{\\rtf1 a{\\b b}c}", "[a<b>bc]"},
    {"Italic", "{\\rtf1 {\\i x}}", "[<i>x]"},
    {"Underline_EndsByUlnone", "{\\rtf1 \\ul x\\ulnone y}", "[<u>xy]"},
    {"Strike", "{\\rtf1 \\strike x}", "[<s>x]"},
    {"Size", "{\\rtf1 \\fs40 x}", "[<40>x]"},
    {"Size_OfNothingIsTheUsual", "{\\rtf1 \\fs0 x}", "[x]"},
    {"Plain_EndsAllLooks", "{\\rtf1\\b\\i\\fs30\\plain x}", "[x]"},
    {"Colors", "{\\rtf1{\\colortbl;\\red255\\green1\\blue2;}\\cf1 x\\cf0 y}", "[<#16711938>xy]"},
    {"Color_OutOfTheTable_IsNone", "{\\rtf1{\\colortbl;}\\cf9 x}", "[x]"},
    {"Fonts", "{\\rtf1{\\fonttbl{\\f0\\fswiss Arial;}{\\f1 Courier New;}}\\f1 x\\f0 y}",
     "[<Courier New>x<Arial>y]"},
    {"Font_NotInTheTable_IsThePages", "{\\rtf1{\\fonttbl{\\f0 A;}}\\f7 x}", "[x]"},
    {"TabAndLine", "{\\rtf1 a\\tab b\\line c}", "[a\tb\nc]"},
    {"HexBytes_AreCodePage1252", "{\\rtf1 \\'e9\\'80\\'41}",
     "[\xC3\xA9\xE2\x82\xAC"
     "A]"},
    {"HexByte_WithoutACharacter_IsLost", "{\\rtf1 \\'81}", "[\xEF\xBF\xBD]"},
    {"Bullet", "{\\rtf1\\bullet  x}", "[\xE2\x80\xA2 x]"},
    {"Unicode_FallbackIsSkipped", "{\\rtf1 \\u233?x}", "[\xC3\xA9x]"},
    {"Unicode_HexFallbackIsSkipped", "{\\rtf1 \\u8364\\'80x}", "[\xE2\x82\xACx]"},
    {"Unicode_NegativeNumber", "{\\rtf1 \\u-3913?}", "[\xEF\x82\xB7]"},
    {"Unicode_FallbackOfTwo", "{\\rtf1\\uc2 \\u233abx}", "[\xC3\xA9x]"},
    {"Unicode_NoFallback", "{\\rtf1\\uc0 \\u233 x}", "[\xC3\xA9x]"},
    {"Unicode_Pair", "{\\rtf1\\uc0 \\u-10179 \\u-8704 x}", "[\xF0\x9F\x98\x80x]"},
    {"Unicode_Pair_WithFallbacks", "{\\rtf1 \\u-10179?\\u-8704?x}", "[\xF0\x9F\x98\x80x]"},
    {"Unicode_Pair_WithHexFallbacks", "{\\rtf1 \\u-10179\\'3f\\u-8704\\'3f}", "[\xF0\x9F\x98\x80]"},
    {"Unicode_HalfAPair_WithFallback_IsLost", "{\\rtf1 \\u-10179?x}", "[\xEF\xBF\xBDx]"},
    {"Unicode_HalfAPair_IsLost", "{\\rtf1\\uc0 \\u-10179 x}", "[\xEF\xBF\xBDx]"},
    {"EscapedSigns", "{\\rtf1 \\{\\}\\\\}", "[{}\\]"},
    {"IgnorableDestination_IsSkipped", "{\\rtf1{\\*\\generator Writer {x};}a}", "[a]"},
    {"KnownDestinations_AreSkipped", "{\\rtf1{\\info{\\title T}}{\\pict 00ff}a}", "[a]"},
    {"UnknownWord_IsSkipped", "{\\rtf1\\nosuchword42 a}", "[a]"},
    {"Binary_IsSkipped", "{\\rtf1 a\\bin4 }}}}b}", "[ab]"},
    {"LineEndsInTheText_MeanNothing", "{\\rtf1 a\r\nb\nc}", "[abc]"},
    {"EscapedLineEnd_IsAParagraph", "{\\rtf1 a\\\nb}", "[a][b]"},
    {"Link", "{\\rtf1 x{\\field{\\*\\fldinst HYPERLINK \"http://a/?b\"}{\\fldrslt here}}y}",
     "[x<a http://a/?b>herey]"},
    {"Utf8_IsKept", "{\\rtf1 \xC3\xA4}", "[\xC3\xA4]"},
    {"InvalidUtf8_IsKept", "{\\rtf1 \xFFx}", "[\xFFx]"},
    {"Unclosed_EndsWithTheText", "{\\rtf1 {\\b x", "[<b>x]"},
    {"TooManyClosed_GoesOn", "{\\rtf1 x}}}}y", "[xy]"},
    {"CutAfterBackslash", "{\\rtf1 x\\", "[x]"},
    {"CutInHex", "{\\rtf1 x\\'e", "[xe]"},
    {"NoGroupAtAll", "plain", "[plain]"},
    {"HugeNumbers", "{\\rtf1\\fs99999999999999999999 x\\li-99999999999 y}", "[<400>xy]"},
    {"NotANumber", "{\\rtf1\\fs-x y}", "[-x y]"},
};

INSTANTIATE_TEST_SUITE_P(Table, RtfRows, testing::ValuesIn(cRows),
                         [](const auto& row) { return row.param.what; });

TEST(RtfReader, Nothing_IsNothing) {
  const RtfText text = ReadRtf("");
  EXPECT_TRUE(text.paragraphs.empty());
  EXPECT_FALSE(text.complete);
}

TEST(RtfReader, Nul_IsKept) {
  EXPECT_EQ(Shown(std::string_view("{\\rtf1 a\0b}", 11)), std::string("[a\0b]", 5));
}

TEST(RtfReader, ParagraphLook_LastsUntilPard) {
  const RtfText text = ReadRtf("{\\rtf1\\qc\\li720\\fi-360\\sb20\\sa30 a\\par b\\par\\pard c}");
  ASSERT_EQ(text.paragraphs.size(), 3u);
  EXPECT_EQ(text.paragraphs[1].align, RtfParagraph::cCenter);
  EXPECT_EQ(text.paragraphs[1].leftIndent, 720);
  EXPECT_EQ(text.paragraphs[1].firstIndent, -360);
  EXPECT_EQ(text.paragraphs[1].before, 20);
  EXPECT_EQ(text.paragraphs[1].after, 30);
  EXPECT_EQ(text.paragraphs[2].align, RtfParagraph::cLeft);
}

TEST(RtfReader, Colors_AThousandAreKept) {
  const auto told = [](size_t before) {
    return Shown("{\\rtf1{\\colortbl" + std::string(before, ';') + "\\red255;}\\cf" +
                 std::to_string(before) + " x}");
  };
  EXPECT_EQ(told(999), "[<#16711680>x]");
  EXPECT_EQ(told(1000), "[x]");
}

TEST(RtfReader, Face_OfAHundredBytes_TakesNoMore) {
  const std::string name(99, 'x');
  const RtfText text = ReadRtf("{\\rtf1{\\fonttbl{\\f0 " + name + "\\'41\\'42;}}\\f0 a}");
  ASSERT_EQ(text.faces.size(), 1u);
  EXPECT_EQ(text.faces[0], name + "A");
}

TEST(RtfReader, StandIns_AreAtMostAHundred) {
  const auto behind = [](size_t count) {
    return Shown("{\\rtf1\\uc200\\u65 " + std::string(count, 'x') + "y}");
  };
  EXPECT_EQ(behind(99), "[A]");
  EXPECT_EQ(behind(100), "[Ay]");
}

TEST(RtfReader, Binary_IsAMillionBytesAtMost) {
  const std::string bytes(1'000'000, '{');
  EXPECT_EQ(Shown("{\\rtf1\\bin2000000 " + bytes + "y}"), "[y]");
}

TEST(RtfReader, Complete_OneGroupThatIsClosed) {
  EXPECT_TRUE(ReadRtf("{\\rtf1 a{b}c}").complete);
  EXPECT_FALSE(ReadRtf("{\\rtf1 a{b}c").complete);
  EXPECT_FALSE(ReadRtf("abc").complete);
}

TEST(RtfReader, IsRtf_LooksAtTheStart) {
  EXPECT_TRUE(IsRtf("{\\rtf1}"));
  EXPECT_FALSE(IsRtf(" {\\rtf1}"));
  EXPECT_FALSE(IsRtf("{\\rt"));
}

TEST(RtfReader, GroupsTooDeep_AreSkippedAndTheRestRead) {
  std::string rtf = "{\\rtf1 a";
  for (int i = 0; i < 100000; ++i) rtf += "{x";
  rtf.append(100000, '}');
  rtf += "b}";
  const RtfText text = ReadRtf(rtf);
  ASSERT_EQ(text.paragraphs.size(), 1u);
  EXPECT_EQ(text.paragraphs[0].runs[0].text.back(), 'b');
  EXPECT_LT(text.paragraphs[0].runs[0].text.size(), 300u);
  EXPECT_TRUE(text.complete);
}

TEST(RtfReader, CutAnywhere_Ends) {
  const std::string rtf =
      "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red1;}\\b x\\'e9\\u233?"
      "{\\field{\\*\\fldinst HYPERLINK \"u\"}{\\fldrslt l}}\\par}";
  for (size_t length = 0; length <= rtf.size(); ++length)
    EXPECT_LE(ReadRtf(std::string_view(rtf).substr(0, length)).paragraphs.size(), 1u);
}

constexpr char cRow[] =
    "{\\rtf1{\\colortbl;\\red255\\green200\\blue64;}a\\par\\trowd\\trql\\trgaph108\\trrh600"
    "\\trleft36\\clbrdrt\\brdrdb\\clbrdrl\\brdrth\\clbrdrb\\brdrsh\\brdrs\\clcbpat1\\clvertalc"
    "\\cellx900\\cellx1800\\pard\\intbl {\\b x}\\cell\\pard\\intbl y\\cell\\row\\pard z}";

TEST(RtfTables, Row_IsReadAsDefined) {
  const RtfText text = ReadRtf(cRow);
  EXPECT_EQ(Shown(text), "[a][<b>x][y][z]");
  ASSERT_EQ(text.rows.size(), 1u);
  const RtfRow& row = text.rows[0];
  EXPECT_EQ(row.left, 36);
  EXPECT_EQ(row.gap, 108);
  EXPECT_EQ(row.height, 600);
  ASSERT_EQ(row.cells.size(), 2u);
  EXPECT_EQ(row.cells[0].right, 900);
  EXPECT_EQ(row.cells[0].background, 0xFFC840);
  EXPECT_EQ(row.cells[0].align, RtfCell::cCentered);
  EXPECT_THAT(row.cells[0].borders, testing::ElementsAre(RtfCell::cDouble, RtfCell::cThick,
                                                         RtfCell::cSingle, RtfCell::cNone));
  EXPECT_EQ(row.cells[1].right, 1800);
  EXPECT_EQ(row.cells[1].background, -1);
  EXPECT_THAT(row.cells[1].borders, testing::Each(RtfCell::cNone));
}

// The paragraphs of a text as "row.cell", "-" for one outside of tables.
std::string Places(std::string_view rtf) {
  std::string places;
  const RtfText text = ReadRtf(rtf);
  for (const RtfParagraph& paragraph : text.paragraphs) {
    if (paragraph.row < 0) {
      places += "- ";
      continue;
    }
    EXPECT_LT(static_cast<size_t>(paragraph.row), text.rows.size());
    places += std::to_string(paragraph.row) + "." + std::to_string(paragraph.cell) + " ";
  }
  return places;
}

TEST(RtfTables, Paragraphs_KnowTheirCells) {
  EXPECT_EQ(Places(cRow), "- 0.0 0.1 - ");
  EXPECT_EQ(Places("{\\rtf1\\trowd\\cellx9\\intbl a\\par b\\cell\\row c\\cell\\row\\pard d}"),
            "0.0 0.0 1.0 - ");
  EXPECT_EQ(Places("{\\rtf1\\trowd\\cellx9\\intbl a\\cell b\\row\\pard c}"), "0.0 0.1 - ");
  EXPECT_EQ(Places("{\\rtf1\\trowd\\cellx9\\intbl a\\cell b"), "0.0 0.1 ");
  EXPECT_EQ(Places("{\\rtf1\\trowd\\cellx9\\intbl a"), "0.0 ");
  EXPECT_EQ(Places("{\\rtf1\\intbl a\\par}"), "- ");
}

TEST(RtfTables, CellOutsideOfRows_IsATab) {
  EXPECT_EQ(Shown("{\\rtf1 a\\cell b\\row c}"), "[a\tb][c]");
}

TEST(RtfTables, Cells_HaveALimit) {
  std::string rtf = "{\\rtf1\\trowd\\intbl ";
  for (int i = 0; i < 66; ++i) rtf += "\\cellx1 x\\cell ";
  const RtfText text = ReadRtf(rtf + "\\row}");
  ASSERT_EQ(text.rows.size(), 1u);
  EXPECT_EQ(text.rows[0].cells.size(), 64u);
  ASSERT_EQ(text.paragraphs.size(), 65u);
  EXPECT_EQ(text.paragraphs[63].cell, 63);
  EXPECT_EQ(text.paragraphs[64].runs[0].text, "x\tx\t");
}

}  // namespace
}  // namespace mavro
