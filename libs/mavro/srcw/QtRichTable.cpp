#include "QtRichTable.h"

#include <QTextLength>
#include <algorithm>
#include <cmath>

#include "RtfReader.h"

namespace mavro {

namespace {

constexpr double cTwipsPerPixel = 15;  // at 96 dots per inch
constexpr double cLeastContrast = 4.5;
constexpr double cLightPaper = 0.5;     // the luminance above which a background counts as light
constexpr double cPageMargins = 2 * 4;  // of the document

double Pixels(int twips) {
  return twips / cTwipsPerPixel;
}

// Relative luminance, from 0 for black to 1 for white.
double Luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
  const double one = Luminance(a), other = Luminance(b);
  return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

struct Line {
  double width;
  QTextFrameFormat::BorderStyle style;
};

Line LineOf(RtfCell::Border border) {
  switch (border) {
    case RtfCell::cSingle:
      return {1, QTextFrameFormat::BorderStyle_Solid};
    case RtfCell::cThick:
      return {2, QTextFrameFormat::BorderStyle_Solid};
    case RtfCell::cDouble:
      return {3, QTextFrameFormat::BorderStyle_Double};
    default:
      return {0, QTextFrameFormat::BorderStyle_None};
  }
}

}  // namespace

QColor Legible(QColor wanted, const QColor& background) {
  if (Luminance(background) > cLightPaper) return wanted;
  constexpr float cLighter = 0.05f;
  float hue = 0, saturation = 0, lightness = 0;
  wanted.getHslF(&hue, &saturation, &lightness);
  while (Contrast(wanted, background) < cLeastContrast && lightness < 1) {
    lightness = std::min(lightness + cLighter, 1.0f);
    wanted.setHslF(std::max(hue, 0.0f), saturation, lightness);
  }
  return wanted;
}

QTextTableFormat TableFormatOf(const RtfRow& row, int cells, int viewWidth) {
  QTextTableFormat format;
  format.setColumns(cells);
  format.setBorder(0);
  format.setBorderCollapse(true);
  format.setCellSpacing(0);
  format.setLeftMargin(std::max(Pixels(row.left), 0.0));
  QList<QTextLength> widths;
  double total = 0;
  int left = std::max(row.left, 0);
  for (const RtfCell& cell : row.cells) {
    widths.append(QTextLength(QTextLength::FixedLength, Pixels(std::max(cell.right - left, 1))));
    total += widths.back().rawValue();
    left = std::max(cell.right, left);
  }
  if (total + cPageMargins > viewWidth) {
    for (QTextLength& width : widths)
      width = QTextLength(QTextLength::PercentageLength, 100 * width.rawValue() / total);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
  } else if (static_cast<int>(row.cells.size()) == cells) {
    format.setWidth(QTextLength(QTextLength::FixedLength, total));
  }
  while (widths.size() < cells) widths.append(QTextLength());
  format.setColumnWidthConstraints(widths);
  return format;
}

QTextTableCellFormat CellFormatOf(const RtfRow& row, int cell, double lineHeight) {
  const bool isDefined = static_cast<size_t>(cell) < row.cells.size();
  const RtfCell own = isDefined ? row.cells[static_cast<size_t>(cell)] : RtfCell();
  const Line top = LineOf(own.borders[RtfCell::cTop]), left = LineOf(own.borders[RtfCell::cLeft]),
             bottom = LineOf(own.borders[RtfCell::cBottom]),
             right = LineOf(own.borders[RtfCell::cRight]);
  // The toolkit's rows have no height of their own: the space around the text makes it.
  const double space = Pixels(std::abs(row.height)) - lineHeight - top.width - bottom.width;
  const double above = std::max(space / 2, 1.0);
  const double beside = std::max(Pixels(row.gap), 0.0);
  QTextTableCellFormat format;
  format.setTopPadding(above);
  format.setBottomPadding(above);
  format.setLeftPadding(beside);
  format.setRightPadding(beside);
  if (own.background >= 0) format.setBackground(QColor::fromRgb(static_cast<QRgb>(own.background)));
  if (own.align == RtfCell::cCentered) format.setVerticalAlignment(QTextCharFormat::AlignMiddle);
  if (own.align == RtfCell::cAtBottom) format.setVerticalAlignment(QTextCharFormat::AlignBottom);
  format.setTopBorder(top.width);
  format.setTopBorderStyle(top.style);
  format.setLeftBorder(left.width);
  format.setLeftBorderStyle(left.style);
  format.setBottomBorder(bottom.width);
  format.setBottomBorderStyle(bottom.style);
  format.setRightBorder(right.width);
  format.setRightBorderStyle(right.style);
  return format;
}

}  // namespace mavro
