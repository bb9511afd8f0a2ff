#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

#include "Color.h"
#include "Font.h"

namespace mavro {

// A framework colour as painted with `palette`; system colours follow it.
QColor ToScreenColor(Color color, const QPalette& palette);
// A framework font over the platform's font for the widget.
QFont ToScreenFont(const Font& font, const QFont& base);

}  // namespace mavro
