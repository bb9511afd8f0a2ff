#pragma once

#include <QColor>
#include <QTextTableCellFormat>
#include <QTextTableFormat>

namespace mavro {

struct RtfRow;

// A colour of letters that can be read on a background. Rich text is written for white paper: on a
// dark background a letter that is too dark becomes lighter.
QColor Legible(QColor wanted, const QColor& background);

// The look of a row of so many cells in a view of that width. A row that is wider than the view is
// as wide as the view.
QTextTableFormat TableFormatOf(const RtfRow& row, int cells, int viewWidth);
// The look of one of its cells, for text with lines of that height.
QTextTableCellFormat CellFormatOf(const RtfRow& row, int cell, double lineHeight);

}  // namespace mavro
