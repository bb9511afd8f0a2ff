#include "PrintLayout.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace mavro {

namespace {

constexpr size_t cMostJoined = 32;   // letters that are shaped together
constexpr double cMostIndent = 0.5;  // of the width, for the rest of a long line
constexpr char cFoldedSign[] = " \u2026";

struct Range {
  char32_t first, last;
};
// Letters that take their shape or place from those beside them: marks, joiners, and the scripts
// that are not written letter by letter.
constexpr Range cJoining[] = {
    {0x300, 0x36F},   {0x483, 0x489},   {0x590, 0x109F},    {0x1780, 0x18AF},
    {0x1A00, 0x1AFF}, {0x1B00, 0x1BFF}, {0x1DC0, 0x1DFF},   {0x200C, 0x200D},
    {0x20D0, 0x20FF}, {0xA8E0, 0xA8FF}, {0xFB1D, 0xFDFF},   {0xFE00, 0xFE0F},
    {0xFE20, 0xFE2F}, {0xFE70, 0xFEFE}, {0x1F3FB, 0x1F3FF}, {0xE0100, 0xE01EF},
};
// Letters that can't be seen, or that turn the direction of those after them.
constexpr Range cHidden[] = {
    {0x00, 0x08},     {0x0A, 0x1F},     {0x7F, 0x9F},     {0xAD, 0xAD},
    {0x34F, 0x34F},   {0x61C, 0x61C},   {0x115F, 0x1160}, {0x180E, 0x180E},
    {0x200B, 0x200B}, {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2060, 0x2069},
    {0x3164, 0x3164}, {0xFEFF, 0xFEFF}, {0xFFA0, 0xFFA0}, {0xFFF9, 0xFFFB},
};

template <size_t n>
bool IsIn(const Range (&table)[n], char32_t letter) {
  return std::any_of(std::begin(table), std::end(table), [letter](const Range& range) {
    return letter >= range.first && letter <= range.last;
  });
}

struct Letter {
  char32_t code = 0;
  size_t length = 1;
  bool isByte = false;  // no letter: a byte that is not UTF-8
};

Letter LetterAt(std::string_view text, size_t at, bool isUtf8) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[at + i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80 || !isUtf8) return {lead, 1, false};
  const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || at + length > text.size()) return {lead, 1, true};
  char32_t code = lead & (0x7F >> length);
  for (size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return {lead, 1, true};
    code = code << 6 | (byte(i) & 0x3F);
  }
  const bool isLong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  if (isLong || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return {lead, 1, true};
  return {code, length, false};
}

std::string NameOf(const Letter& letter) {
  char name[16];
  const bool isSmall = letter.isByte || letter.code < 0x80;
  std::snprintf(name, sizeof name, isSmall ? "[x%02X]" : "[U+%04X]",
                static_cast<unsigned>(letter.code));
  return name;
}

// Of bytes that are letters: those above 0x7F have two bytes in UTF-8.
std::string Utf8Of(unsigned char byte) {
  if (byte < 0x80) return std::string(1, static_cast<char>(byte));
  return {static_cast<char>(0xC0 | byte >> 6), static_cast<char>(0x80 | (byte & 0x3F))};
}

}  // namespace

PrintLayout::PrintLayout(const PrintText& itsText, PrintDevice& itsDevice,
                         const PrintStyles& itsStyles)
    : text(itsText), device(itsDevice), styles(itsStyles) {
  int descent = 0;
  const auto take = [&](const PrintFont& font) {
    const int number = device.AddFont(font);
    const PrintHeights heights = device.HeightsOf(number);
    ascent = std::max(ascent, heights.ascent);
    descent = std::max(descent, heights.descent + heights.leading);
    std::array<double, 128> unknown;
    unknown.fill(-1);
    widths.resize(std::max(widths.size(), static_cast<size_t>(number) + 1), unknown);
    return number;
  };
  for (size_t i = 0; i < fonts.size(); ++i) {
    const bool isSame = i > 0 && styles.looks[i].font == styles.looks[i - 1].font;
    fonts[i] = isSame ? fonts[i - 1] : take(styles.looks[i].font);
  }
  numberFont = take(styles.numbers.font);
  rowHeight = std::max(1, ascent + descent);
  blankWidth = device.WidthOf(fonts[0], " ");
  if (!styles.hasNumbers) return;
  const std::string widest(std::to_string(text.LastNumber()).size(), '9');
  numberWidth = device.WidthOf(numberFont, widest + "  ");
}

std::string_view PrintLayout::Shown(const Token& token) const {
  return std::string_view(shownBytes).substr(token.shown, token.count);
}

double PrintLayout::Measure(int font, const Token& token) {
  const std::string_view shown = Shown(token);
  if (shown.size() != 1) return device.WidthOf(font, shown);
  double& known = widths[static_cast<size_t>(font)][static_cast<size_t>(shown[0] & 0x7F)];
  if (known < 0) known = device.WidthOf(font, shown);
  return known;
}

PrintLayout::Token PrintLayout::NextToken(const PrintLine& line, size_t& at) {
  Token token;
  token.start = static_cast<int>(at);
  token.look = static_cast<unsigned char>(at < line.styles.size() ? line.styles[at] : 0);
  token.shown = shownBytes.size();
  const auto byteAt = [&line](size_t i) {
    return i < line.text.size() ? static_cast<unsigned char>(line.text[i]) : 0u;
  };
  const unsigned byte = byteAt(at);
  token.isTab = byte == '\t';
  token.isBlank = token.isTab || byte == ' ';
  // Marks for a letter, and for a blank, come after it.
  const bool isAlone = token.isBlank || !styles.isUtf8 || byteAt(at + 1) < 0x80;
  if (token.isTab) {
    ++at;
    return token;
  }
  if (byte >= ' ' && byte < 0x7F && isAlone) {
    shownBytes += static_cast<char>(byte);
    ++at;
  } else {
    TakeOther(line, at, token);
  }
  token.count = shownBytes.size() - token.shown;
  token.width = Measure(fonts[static_cast<size_t>(token.look)], token);
  return token;
}

// A letter that is named, that isn't ASCII, or that has marks.
void PrintLayout::TakeOther(const PrintLine& line, size_t& at, Token& token) {
  const Letter first = LetterAt(line.text, at, styles.isUtf8);
  const size_t start = at;
  at += first.length;
  if (first.isByte || IsIn(cHidden, first.code)) {
    shownBytes += NameOf(first);
    return;
  }
  if (!styles.isUtf8) {
    shownBytes += Utf8Of(static_cast<unsigned char>(first.code));
    return;
  }
  token.isAlone = IsIn(cJoining, first.code);
  for (size_t joined = 1; joined < cMostJoined && at < line.text.size(); ++joined) {
    if (static_cast<unsigned char>(line.text[at]) < 0x80) break;
    const Letter next = LetterAt(line.text, at, true);
    if (next.isByte || IsIn(cHidden, next.code) || !IsIn(cJoining, next.code)) break;
    token.isAlone = true;
    at += next.length;
  }
  shownBytes.append(line.text, start, at - start);
}

// A tab reaches to the next stop, counted from the start of the line or of its rest.
void PrintLayout::Put(const Token& token, double& x, double start) {
  Token& put = row.emplace_back(token);
  if (put.isTab) {
    const double stop = std::max(1.0, blankWidth * styles.tabWidth);
    put.width = start + (std::floor((x - start) / stop + 1e-6) + 1) * stop - x;
  }
  x += put.width;
}

// Makes a row of the first tokens.
void PrintLayout::Emit(size_t count, double start) {
  PrintRow& made = rows.emplace_back();
  made.start = count > 0 ? row[0].start : 0;
  double x = start;
  bool canJoin = false;
  for (size_t i = 0; i < count; ++i) {
    const Token& token = row[i];
    if (!token.isTab) {
      const bool joins =
          canJoin && !token.isAlone && (made.pieces.back().look == token.look || token.isBlank);
      if (!joins) made.pieces.push_back({x, token.look, {}});
      made.pieces.back().text += Shown(token);
    }
    canJoin = !token.isTab && !token.isAlone;
    x += token.width;
  }
}

void PrintLayout::Break(const PrintLine& line, double width) {
  rows.clear();
  row.clear();
  shownBytes.clear();
  double x = 0, start = 0, indent = 0;
  bool isIndent = true;
  for (size_t at = 0; at < line.text.size();) {
    const Token token = NextToken(line, at);
    isIndent = isIndent && token.isBlank;
    if (!token.isBlank && x + token.width > width && !row.empty()) {
      size_t count = row.size();
      while (count > 0 && !row[count - 1].isBlank) --count;
      const bool isAllIndent =
          std::all_of(row.begin(), row.begin() + static_cast<std::ptrdiff_t>(count),
                      [](const Token& before) { return before.isBlank; });
      if (count == 0 || isAllIndent) count = row.size();
      Emit(count, start);
      const std::vector<Token> rest(row.begin() + static_cast<std::ptrdiff_t>(count), row.end());
      row.clear();
      x = start = std::min(indent, width * cMostIndent);
      for (const Token& kept : rest) Put(kept, x, start);
    }
    Put(token, x, start);
    if (isIndent) indent = x;
  }
  if (line.isFolded) {
    Token sign;
    sign.shown = shownBytes.size();
    shownBytes += cFoldedSign;
    sign.count = shownBytes.size() - sign.shown;
    sign.start = static_cast<int>(line.text.size());
    Put(sign, x, start);
  }
  Emit(row.size(), start);
}

const std::vector<PrintRow>& PrintLayout::RowsOf(int line, double width) {
  if (line == rowsLine && width == rowsWidth) return rows;
  Break(text.Line(line), width);
  rowsLine = line;
  rowsWidth = width;
  return rows;
}

int PrintLayout::StartOf(Place place) const {
  const auto row = static_cast<size_t>(place.row);
  return place.line == rowsLine && row < rows.size() ? rows[row].start : 0;
}

PrintLayout::Place PrintLayout::Page(Place from, const PrintRect& area, Drawing drawing,
                                     std::vector<LineTop>& begun) {
  const int left = area.left + static_cast<int>(numberWidth);
  const double width = std::max(rowHeight, area.right - left);
  int top = area.top;
  Place place = from;
  for (bool isFirst = true; place.line >= 0; isFirst = false) {
    if (!isFirst && top + rowHeight > area.bottom) break;
    RowsOf(place.line, width);
    if (drawing == Drawing::cDrawn) {
      if (place.row == 0 && styles.hasNumbers) {
        const std::string number = std::to_string(text.NumberOf(place.line));
        const double right = left - device.WidthOf(numberFont, "  ");
        device.TextOut(right - device.WidthOf(numberFont, number), top + ascent, numberFont,
                       styles.numbers.ink, number);
      }
      if (place.row == 0) begun.push_back({place.line, top});
      if (static_cast<size_t>(place.row) < rows.size())
        DrawRow(rows[static_cast<size_t>(place.row)], left, top);
    }
    top += rowHeight;
    if (static_cast<size_t>(++place.row) >= rows.size()) place = {text.LineFrom(place.line + 1), 0};
  }
  return place;
}

void PrintLayout::DrawRow(const PrintRow& row, int left, int top) {
  for (const PrintPiece& piece : row.pieces) {
    const auto look = static_cast<size_t>(piece.look);
    device.TextOut(left + piece.left, top + ascent, fonts[look], styles.looks[look].ink,
                   piece.text);
  }
}

}  // namespace mavro
