#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace mavro {

// Pixels to draw on or to show: 0xAARRGGBB, the colours multiplied by the alpha, rows from the top.
// This is a handle: copies share the pixels. A bitmap without a size is empty.
class Bitmap {
 public:
  // The maximum number of pixels of one bitmap; a bitmap that would need more is empty.
  static constexpr int64_t cMaxPixels = int64_t{64} << 20;
  // True for a size that a bitmap can have.
  static constexpr bool IsPossible(int64_t width, int64_t height) {
    return width > 0 && height > 0 && width <= cMaxPixels && height <= cMaxPixels / width;
  }

  Bitmap() = default;
  // The size is in pixels; `pixelRatio` is the number of pixels in one unit of length. All pixels
  // are transparent at first.
  Bitmap(int width, int height, double pixelRatio = 1);

  bool IsEmpty() const { return bits == nullptr; }
  // In pixels; 0 when empty.
  int Width() const { return bits ? bits->width : 0; }
  int Height() const { return bits ? bits->height : 0; }
  double PixelRatio() const { return bits ? bits->ratio : 1; }
  // The first pixel of a row, which must exist.
  uint32_t* Row(int y) const { return bits->pixels.data() + size_t(y) * size_t(bits->width); }
  // True when both are handles of the same pixels.
  friend bool operator==(const Bitmap&, const Bitmap&) = default;

 private:
  struct Bits {
    int width;
    int height;
    double ratio;
    std::vector<uint32_t> pixels;
  };
  std::shared_ptr<Bits> bits;
};

}  // namespace mavro
