#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QRawFont>
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
  // True if a font's file can be a part of a document.
  static bool CanEmbed(const QRawFont& font);

 private:
  struct Letter {
    quint32 glyph = 0;
    double width = 0;
  };
  struct Entry {
    PrintFont asked;
    QFont toolkit;
    QFontMetricsF metrics;
    QRawFont raw;
    std::unordered_map<char32_t, Letter> letters;
  };
  const Entry& At(int font) const { return entries[static_cast<size_t>(font)]; }
  Letter LetterOf(Entry& entry, char32_t code);
  bool ShapeSimply(Entry& entry, std::string_view text, Run& run, double& width);
  static std::vector<Run> ShapeWhole(const Entry& entry, const QString& text);

  const int dpi;
  std::deque<Entry> entries;
};

}  // namespace mavro
