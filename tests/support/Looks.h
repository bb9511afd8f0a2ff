#pragma once

#include <QFontMetrics>
#include <QImage>
#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "Button.h"
#include "GuiDriver.h"
#include "Label.h"

// Says by its pixels if a person can read a form.

namespace test {

inline QImage Pixels(const mavro::Control& control) {
  return WidgetOf(control)->grab().toImage();
}

// Measured: not every fixed font says that it is one.
inline bool HasFixedWidth(const QFont& font) {
  const QFontMetrics metrics(font);
  return metrics.horizontalAdvance('i') == metrics.horizontalAdvance('M');
}

// The most frequent colour.
inline QRgb GroundOf(const QImage& image) {
  std::map<QRgb, int> counts;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y)];
  const auto most =
      std::max_element(counts.begin(), counts.end(),
                       [](const auto& a, const auto& b) { return a.second < b.second; });
  return most == counts.end() ? 0 : most->first;
}

// How far the brightest or darkest pixel is from the ground, in steps of gray: 0 is an empty
// picture, 255 black on white.
inline int InkStrength(const QImage& image) {
  const int ground = qGray(GroundOf(image));
  int strength = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      strength = std::max(strength, std::abs(qGray(image.pixel(x, y)) - ground));
  return strength;
}

// The pixels of a colour.
inline int CountPixels(const QImage& image, QRgb colour) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) == colour;
  return count;
}

// True for controls that show their text in one line.
inline bool HasCaption(const mavro::Control& control) {
  return dynamic_cast<const mavro::Label*>(&control) ||
         dynamic_cast<const mavro::Button*>(&control) ||
         dynamic_cast<const mavro::CheckBox*>(&control);
}

// The captions below a control that can be seen, are not grayed and are hard to read: wider or
// higher than their control, or without ink that differs from its ground.
inline std::vector<std::string> UnreadableCaptions(const mavro::Control& root) {
  constexpr int cLeastStrength = 60;
  std::vector<std::string> found;
  for (const mavro::Control* child : root.children) {
    const QWidget* widget = WidgetOf(*child);
    if (!widget->isVisible() || !widget->isEnabled()) continue;
    const QString text = QString::fromStdString(child->text).remove('&');
    if (HasCaption(*child) && !text.isEmpty()) {
      const QSize needed = QFontMetrics(widget->font()).size(Qt::TextSingleLine, text);
      const bool isCut = needed.width() > widget->width() || needed.height() > widget->height();
      if (isCut || InkStrength(Pixels(*child)) < cLeastStrength) found.push_back(child->text);
    }
    for (const std::string& inner : UnreadableCaptions(*child)) found.push_back(inner);
  }
  return found;
}

}  // namespace test
