#pragma once

#include <memory>

#include "Font.h"

namespace mavro {

class FontHandle;  // a font as the platform draws it

// A font with its platform handle, which is made at first use and shared by all equal fonts.
class FontCached : public Font {
 public:
  using Font::Font;
  FontCached() = default;
  FontCached(const Font& font) : Font(font) {}

  // Null for a font that can't be made, which is one of negative size.
  const std::shared_ptr<FontHandle>& Handle() const;
  bool IsMade() const { return handle != nullptr; }

 private:
  mutable std::shared_ptr<FontHandle> handle;
  mutable Font madeFrom;
};

}  // namespace mavro
