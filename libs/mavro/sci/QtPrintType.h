#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QRawFont>
#include <array>
#include <deque>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "PrintDevice.h"

namespace mavro {

// The fonts of a printing device: measures texts and turns them into glyphs. It is the same for
// every device of a resolution, so that pages don't depend on the device.
class QtPrintType {
 public:
  explicit QtPrintType(int itsDpi) : dpi(itsDpi) {}

  int Add(const PrintFont& font);
  PrintHeights HeightsOf(int font) const;
  double WidthOf(int font, std::string_view text);
  int SizeOf(int font) const { return At(font).toolkit.pixelSize(); }
  const PrintFont& FontOf(int font) const { return At(font).asked; }

  // Glyphs of one font file beside each other. Places are from the start of the baseline.
  struct Run {
    QRawFont font;
    QList<quint32> glyphs;
    QList<QPointF> places;
    std::u32string letters;
    bool isMain = false;  // the font is the asked one
  };
  std::vector<Run> Shape(int font, std::string_view text);

  // A letter of a text whose letters stand beside each other in the asked font.
  struct Letter {
    quint32 glyph = 0;  // 0: the font hasn't got it
    double width = 0;
    char32_t code = 0;
  };
  // The letters of a text; empty if it has to be shaped. Valid until the next call.
  const std::vector<Letter>& SimpleLetters(int font, std::string_view text);
  const QRawFont& RawFontOf(int font) const { return At(font).raw; }

  // True if a font's file can be a part of a document.
  static bool CanEmbed(const QRawFont& font);

 private:
  // Letters below this one stand beside each other; others may take their shape from their
  // neighbours.
  static constexpr char32_t cFirstShaped = 0x300;
  struct Entry {
    PrintFont asked;
    QFont toolkit;
    QFontMetricsF metrics;
    QRawFont raw;
    std::array<Letter, cFirstShaped> letters = {};
    std::unordered_map<char32_t, double> widths;  // of other letters
  };
  const Entry& At(int font) const { return entries[static_cast<size_t>(font)]; }
  static const Letter& LetterOf(Entry& entry, char32_t code);
  static std::vector<Run> ShapeWhole(const Entry& entry, const QString& text);

  const int dpi;
  std::deque<Entry> entries;
  std::vector<Letter> simple;
};

}  // namespace mavro
