#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

#include "Color.h"
#include "Font.h"

namespace mavro {

// Converts a framework colour for painting with `palette`; system colours follow the palette.
QColor ToScreenColor(Color color, const QPalette& palette);
// Applies a framework font to the platform's font for the widget.
QFont ToScreenFont(const Font& font, const QFont& base);

}  // namespace mavro
