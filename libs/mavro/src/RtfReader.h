#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mavro {

// How a piece of rich text looks.
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
  std::vector<RtfRun> runs;
};

// What a rich text says. What is not understood is skipped; `complete` tells whether the text was
// one whole group, as it should be.
struct RtfText {
  std::vector<RtfParagraph> paragraphs;
  std::vector<std::string> faces;
  std::vector<std::string> links;  // where clicks lead
  bool complete = false;
};

// Whether `bytes` begin as rich text does.
bool IsRtf(std::string_view bytes);

// Reads the part of RTF that help texts are written in: fonts, sizes, colours, bold, italic,
// underlined and struck letters, paragraphs with alignment and indents, tabs, line ends, bullets,
// links, and characters told by code page 1252 or by number. Never fails: a group that is not
// closed ends with the text, groups nested too deeply are skipped, and other bytes are kept as they
// are. The time grows with the length only.
RtfText ReadRtf(std::string_view bytes);

}  // namespace mavro
