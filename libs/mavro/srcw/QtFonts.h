#pragma once

#include <QFont>
#include <QFontMetrics>

#include "FontCached.h"

namespace mavro {

// A font of the toolkit.
class FontHandle {
 public:
  explicit FontHandle(const QFont& itsFont) : font(itsFont), metrics(itsFont) {}

  const QFont font;
  const QFontMetrics metrics;
};

}  // namespace mavro
