#pragma once

#include <string>

namespace mavro {

// A font: size in points, style flags and face name. The constructors take the face first or last.
// A size of 0 means the platform's font.
class Font {
 public:
  enum Style { cNormal = 0, cBold = 1, cItalic = 2 };

  Font() = default;
  Font(int pointSize, int styleFlags = cNormal, std::string faceName = "")
      : size(pointSize), style(styleFlags), face(std::move(faceName)) {}
  Font(std::string faceName, int pointSize, int styleFlags = cNormal)
      : Font(pointSize, styleFlags, std::move(faceName)) {}

  bool IsDefault() const { return size == 0 && style == cNormal && face.empty(); }
  friend bool operator==(const Font&, const Font&) = default;

  int size = 0;
  int style = cNormal;
  std::string face;  // empty for the platform's face, which also replaces an unknown one
};

}  // namespace mavro
