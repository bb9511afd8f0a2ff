#pragma once

#include <QString>
#include <QTextDocument>

namespace mavro {

// A tool tip that shows `text` as it is, even if it looks like markup.
inline QString PlainToolTip(const QString& text) {
  if (!Qt::mightBeRichText(text)) return text;
  return "<span style='white-space:pre'>" + text.toHtmlEscaped() + "</span>";
}

}  // namespace mavro
