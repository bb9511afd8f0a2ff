#include "QtFonts.h"

#include <QGuiApplication>
#include <vector>

#include "QtPalette.h"

namespace mavro {

namespace {

struct CachedFont {
  Font font;
  std::weak_ptr<FontHandle> handle;
};

// The handles that are still in use. A program has only a few fonts.
std::vector<CachedFont>& LiveFonts() {
  static std::vector<CachedFont> fonts;
  return fonts;
}

std::shared_ptr<FontHandle> SharedHandle(const Font& font) {
  auto& fonts = LiveFonts();
  std::erase_if(fonts, [](const CachedFont& cached) { return cached.handle.expired(); });
  for (const CachedFont& cached : fonts)
    if (cached.font == font) return cached.handle.lock();
  auto made = std::make_shared<FontHandle>(ToScreenFont(font, QGuiApplication::font()));
  fonts.push_back({font, made});
  return made;
}

}  // namespace

const std::shared_ptr<FontHandle>& FontCached::Handle() const {
  if (handle && madeFrom == *this) return handle;
  madeFrom = *this;
  handle = size < 0 ? nullptr : SharedHandle(*this);
  return handle;
}

}  // namespace mavro
