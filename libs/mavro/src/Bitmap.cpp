#include "Bitmap.h"

namespace mavro {

Bitmap::Bitmap(int width, int height, double pixelRatio) {
  if (!IsPossible(width, height)) return;
  const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
  bits = std::make_shared<Bits>(Bits{width, height, pixelRatio, std::vector<uint32_t>(count)});
}

}  // namespace mavro
