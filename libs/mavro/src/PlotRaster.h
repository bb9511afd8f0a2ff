#pragma once

#include <cstdint>
#include <vector>

#include "Bitmap.h"
#include "PlotReduce.h"

namespace mavro {

// How much of each pixel the curve of one series covers, with smooth edges. Made for many short
// strokes: several times faster than paths of the toolkit. Where strokes overlap, the larger
// coverage holds. Whatever lies outside is left out.
class PlotRaster {
 public:
  PlotRaster(int itsWidth, int itsHeight);

  void Clear();
  void Line(const PlotStroke& stroke, double thickness);
  // Round dots of one size.
  void Dots(const std::vector<PlotPoint>& middles, double radius);
  // Paints the covered pixels in a plain colour, 0xRRGGBB, over a bitmap of the same size.
  void PaintTo(const Bitmap& bitmap, int32_t rgb) const;

  // 0 for a free pixel to 255 for one that is covered whole.
  int Coverage(int x, int y) const { return mask[At(x, y)]; }

 private:
  size_t At(int x, int y) const {
    return static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x);
  }
  void Cover(int x, int y, double share);
  void Upright(double x, double top, double bottom, double thickness);

  int width, height;
  std::vector<uint8_t> mask;  // row by row, and room for one more lane of a stamp
};

}  // namespace mavro
