#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mavro {

// The style of a piece of rich text.
struct RtfStyle {
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strike = false;
  int halfPoints = 24;  // size of the letters in halves of a point
  int32_t color = -1;   // 0xRRGGBB; -1 for that of the page
  int face = -1;        // index among the faces; -1 for the page's own
  int link = -1;        // index among the links; -1 for none
  friend bool operator==(const RtfStyle&, const RtfStyle&) = default;
};

// Text of one style: UTF-8 with tabs, and a newline where a line ends within its paragraph.
struct RtfRun {
  RtfStyle style;
  std::string text;
};

struct RtfParagraph {
  enum Align { cLeft, cCenter, cRight, cJustified };
  Align align = cLeft;
  int leftIndent = 0;   // in twips, twentieths of a point
  int firstIndent = 0;  // of its first line, beyond leftIndent; mostly negative, for bullets
  int before = 0;       // twips above and below
  int after = 0;
  bool isInTable = false;
  int row = -1;  // index among the rows; -1 for a paragraph outside of tables
  int cell = 0;  // the cell of the row, from 0
  std::vector<RtfRun> runs;
};

// A cell of a table row, as its row defines it.
struct RtfCell {
  enum Border { cNone, cSingle, cDouble, cThick };
  enum Side { cTop, cLeft, cBottom, cRight };
  enum Align { cAtTop, cCentered, cAtBottom };
  int right = 0;            // twips from the page's edge to the cell's right edge
  int32_t background = -1;  // 0xRRGGBB; -1 for none
  Align align = cAtTop;     // of its text
  std::array<Border, 4> borders{};
};

// A row of a table. It may have more texts than cells.
struct RtfRow {
  int left = 0;    // twips from the page's edge to the first cell
  int gap = 0;     // twips between a cell's side and its text
  int height = 0;  // twips; a row with much text is higher
  std::vector<RtfCell> cells;
};

// The content of a rich text. Unknown elements are skipped; `complete` is true if the text was one
// whole group, as it should be.
struct RtfText {
  std::vector<RtfParagraph> paragraphs;
  std::vector<std::string> faces;
  std::vector<std::string> links;  // targets of the links
  std::vector<RtfRow> rows;
  bool complete = false;
};

// True if `bytes` begin like rich text.
bool IsRtf(std::string_view bytes);

// Reads the subset of RTF that help texts use: fonts, sizes, colours, bold, italic, underlined and
// struck letters, paragraphs with alignment and indents, tabs, line ends, bullets, links, rows of
// tables with borders and backgrounds, and characters given in code page 1252 or by number. Never
// fails: an unclosed group ends with the text, groups nested too deeply are skipped, and other
// bytes are kept unchanged. The time is linear in the length.
RtfText ReadRtf(std::string_view bytes);

}  // namespace mavro
