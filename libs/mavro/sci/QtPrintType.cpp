#include "QtPrintType.h"

#include <QFontDatabase>
#include <QGlyphRun>
#include <QString>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "QtText.h"

namespace mavro {

namespace {

constexpr int cPointsInInch = 72;
// Letters above this may be shaped with those beside them.
constexpr char32_t cFirstShaped = 0x300;

}  // namespace

int QtPrintType::Add(const PrintFont& font) {
  for (size_t i = 0; i < entries.size(); ++i)
    if (entries[i].asked == font) return static_cast<int>(i);
  QFont toolkit;
  if (!font.face.empty()) toolkit.setFamily(ToScreen(font.face));
  toolkit.setPixelSize(
      std::max(1, static_cast<int>(std::lround(double(font.size) * dpi / cPointsInInch))));
  toolkit.setBold(font.isBold);
  toolkit.setItalic(font.isItalic);
  toolkit.setKerning(false);
  toolkit.setHintingPreference(QFont::PreferNoHinting);
  QRawFont raw = QRawFont::fromFont(toolkit);
  if (!CanEmbed(raw)) {
    toolkit.setFamily(QFontDatabase::systemFont(QFontDatabase::GeneralFont).family());
    raw = QRawFont::fromFont(toolkit);
  }
  entries.push_back({font, toolkit, QFontMetricsF(toolkit), raw, {}});
  return static_cast<int>(entries.size()) - 1;
}

// Old kinds of fonts have other tables, or none.
bool QtPrintType::CanEmbed(const QRawFont& font) {
  if (font.fontTable("hmtx").isEmpty()) return false;
  return !font.fontTable("glyf").isEmpty() || !font.fontTable("CFF ").isEmpty();
}

PrintHeights QtPrintType::HeightsOf(int font) const {
  const QFontMetricsF& metrics = At(font).metrics;
  return {static_cast<int>(std::ceil(metrics.ascent())),
          static_cast<int>(std::ceil(metrics.descent())),
          static_cast<int>(std::ceil(std::max(0.0, metrics.leading())))};
}

QtPrintType::Letter QtPrintType::LetterOf(Entry& entry, char32_t code) {
  const auto [found, isNew] = entry.letters.try_emplace(code);
  if (!isNew) return found->second;
  const QList<quint32> glyphs = entry.raw.glyphIndexesForString(QString::fromUcs4(&code, 1));
  if (glyphs.size() != 1 || glyphs[0] == 0) return {};
  found->second = {glyphs[0], entry.raw.advancesForGlyphIndexes(glyphs).value(0).x()};
  return found->second;
}

// The letters of most texts stand beside each other, whatever they are. False if one may not, or if
// the font hasn't got it.
bool QtPrintType::ShapeSimply(Entry& entry, std::string_view text, Run& run, double& width) {
  width = 0;
  for (size_t at = 0; at < text.size();) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead >= 0xE0) return false;
    char32_t code = lead;
    if (lead >= 0x80) {
      if (lead < 0xC2 || at + 1 >= text.size()) return false;
      code = static_cast<char32_t>((lead & 0x1F) << 6 | (text[at + 1] & 0x3F));
      if (code >= cFirstShaped) return false;
    }
    at += lead < 0x80 ? 1 : 2;
    const Letter letter = LetterOf(entry, code);
    if (letter.glyph == 0) return false;
    run.glyphs.append(letter.glyph);
    run.places.append(QPointF(width, 0));
    run.letters += code;
    width += letter.width;
  }
  run.font = entry.raw;
  run.isMain = true;
  return true;
}

std::vector<QtPrintType::Run> QtPrintType::ShapeWhole(const Entry& entry, const QString& text) {
  QTextLayout layout(text, entry.toolkit);
  layout.beginLayout();
  const QTextLine line = layout.createLine();
  layout.endLayout();
  const double baseline = line.isValid() ? line.ascent() : 0;
  std::vector<Run> runs;
  const auto letters = text.toStdU32String();
  const QList<QGlyphRun> shaped = layout.glyphRuns();
  for (const QGlyphRun& part : shaped) {
    Run& run = runs.emplace_back();
    run.font = part.rawFont();
    run.glyphs = part.glyphIndexes();
    run.places = part.positions();
    for (QPointF& place : run.places) place.ry() -= baseline;
    // Only a text in one font is known by its letters; the others have no more than a glyph.
    if (shaped.size() == 1) run.letters = letters;
  }
  return runs;
}

double QtPrintType::WidthOf(int font, std::string_view text) {
  Entry& entry = entries[static_cast<size_t>(font)];
  Run run;
  double width = 0;
  if (ShapeSimply(entry, text, run, width)) return width;
  const QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  const auto letters = shown.toStdU32String();
  if (letters.size() != 1) return entry.metrics.horizontalAdvance(shown);
  Letter& known = entry.letters[letters[0]];
  if (known.width == 0) known.width = entry.metrics.horizontalAdvance(shown);
  return known.width;
}

std::vector<QtPrintType::Run> QtPrintType::Shape(int font, std::string_view text) {
  Entry& entry = entries[static_cast<size_t>(font)];
  Run run;
  double width = 0;
  if (ShapeSimply(entry, text, run, width)) return {std::move(run)};
  return ShapeWhole(entry, QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

}  // namespace mavro
