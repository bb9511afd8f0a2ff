#include "QtPrintType.h"

#include <QFontDatabase>
#include <QGlyphRun>
#include <QString>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <numeric>

#include "QtText.h"

namespace mavro {

namespace {

constexpr int cPointsInInch = 72;

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
  entries.push_back({font, toolkit, QFontMetricsF(toolkit), raw, {}, {}});
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

const QtPrintType::Letter& QtPrintType::LetterOf(Entry& entry, char32_t code) {
  Letter& letter = entry.letters[code];
  if (letter.code == code && letter.glyph != 0) return letter;
  const QList<quint32> glyphs = entry.raw.glyphIndexesForString(QString::fromUcs4(&code, 1));
  if (glyphs.size() == 1 && glyphs[0] != 0)
    letter = {glyphs[0], entry.raw.advancesForGlyphIndexes(glyphs).value(0).x(), code};
  return letter;
}

const std::vector<QtPrintType::Letter>& QtPrintType::SimpleLetters(int font,
                                                                   std::string_view text) {
  Entry& entry = entries[static_cast<size_t>(font)];
  static const std::vector<Letter> none;
  simple.clear();
  for (size_t at = 0; at < text.size(); ++at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    char32_t code = lead;
    if (lead >= 0x80) {
      if (lead < 0xC2 || lead >= 0xE0 || at + 1 >= text.size()) return none;
      code = static_cast<char32_t>((lead & 0x1F) << 6 | (text[++at] & 0x3F));
      if (code >= cFirstShaped) return none;
    }
    simple.push_back(LetterOf(entry, code));
    if (simple.back().glyph == 0) return none;
  }
  return simple;
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
  const std::vector<Letter>& letters = SimpleLetters(font, text);
  if (!letters.empty())
    return std::accumulate(letters.begin(), letters.end(), 0.0,
                           [](double sum, const Letter& letter) { return sum + letter.width; });
  Entry& entry = entries[static_cast<size_t>(font)];
  const QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  const auto codes = shown.toStdU32String();
  if (codes.size() != 1) return entry.metrics.horizontalAdvance(shown);
  const auto [known, isNew] = entry.widths.try_emplace(codes[0]);
  if (isNew) known->second = entry.metrics.horizontalAdvance(shown);
  return known->second;
}

std::vector<QtPrintType::Run> QtPrintType::Shape(int font, std::string_view text) {
  const std::vector<Letter>& letters = SimpleLetters(font, text);
  const Entry& entry = At(font);
  if (letters.empty())
    return ShapeWhole(entry, QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
  Run run;
  double x = 0;
  for (const Letter& letter : letters) {
    run.glyphs.append(letter.glyph);
    run.places.append(QPointF(x, 0));
    run.letters += letter.code;
    x += letter.width;
  }
  run.font = entry.raw;
  run.isMain = true;
  return {std::move(run)};
}

}  // namespace mavro
