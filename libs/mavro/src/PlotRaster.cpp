#include "PlotRaster.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace mavro {

namespace {

// The length of the part of pixel `pixel` that lies between two places.
double Overlap(int pixel, double from, double to) {
  return std::min(to, pixel + 1.0) - std::max(from, static_cast<double>(pixel));
}

// Cuts a stroke at the sides of a box around the raster. False if nothing is left.
bool Clip(PlotStroke& stroke, double right, double bottom, double margin) {
  const double dx = stroke.to.x - stroke.from.x;
  const double dy = stroke.to.y - stroke.from.y;
  double enters = 0, leaves = 1;
  const auto cut = [&](double step, double distance) {
    if (step == 0) return distance >= 0;
    const double at = distance / step;
    if (step < 0)
      enters = std::max(enters, at);
    else
      leaves = std::min(leaves, at);
    return enters <= leaves;
  };
  if (!cut(-dx, stroke.from.x + margin) || !cut(dx, right + margin - stroke.from.x) ||
      !cut(-dy, stroke.from.y + margin) || !cut(dy, bottom + margin - stroke.from.y))
    return false;
  const PlotPoint from = stroke.from;
  stroke.from = {from.x + enters * dx, from.y + enters * dy};
  stroke.to = {from.x + leaves * dx, from.y + leaves * dy};
  return true;
}

constexpr int cLane = 16;   // bytes that the processor compares at once
constexpr int cPlaces = 4;  // of a dot inside a pixel, in each direction

// The coverage of one dot, in rows of whole lanes.
struct Stamp {
  int reach = 0;   // pixels on each side of the middle one
  int stride = 0;  // bytes of a row
  std::vector<uint8_t> coverage;
};

Stamp MakeStamp(double radius, int across, int down) {
  Stamp stamp;
  stamp.reach = static_cast<int>(std::ceil(radius + 1));
  const int side = 2 * stamp.reach + 1;
  stamp.stride = (side + cLane - 1) / cLane * cLane;
  stamp.coverage.resize(static_cast<size_t>(stamp.stride) * static_cast<size_t>(side));
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x) {
      const double dx = x - stamp.reach + 0.5 - static_cast<double>(across) / cPlaces;
      const double dy = y - stamp.reach + 0.5 - static_cast<double>(down) / cPlaces;
      const double share = std::clamp(radius + 0.5 - std::hypot(dx, dy), 0.0, 1.0);
      stamp.coverage[static_cast<size_t>(y * stamp.stride + x)] =
          static_cast<uint8_t>(share * 255 + 0.5);
    }
  return stamp;
}

// The larger of each two bytes of a lane. Bytes past the end of a row keep their value, because
// the stamp has zeros there.
void LayOn(uint8_t* __restrict to, const uint8_t* __restrict from) {
  for (int i = 0; i < cLane; ++i) to[i] = std::max(to[i], from[i]);
}

int Mixed(uint32_t under, int shift, int over, int alpha) {
  const int below = static_cast<int>(under >> shift & 0xFF);
  return (over * alpha + below * (255 - alpha) + 127) / 255;
}

}  // namespace

PlotRaster::PlotRaster(int itsWidth, int itsHeight)
    : width(itsWidth),
      height(itsHeight),
      mask(static_cast<size_t>(itsWidth) * static_cast<size_t>(itsHeight) + cLane) {}

void PlotRaster::Clear() {
  std::fill(mask.begin(), mask.end(), uint8_t{0});
}

void PlotRaster::Cover(int x, int y, double share) {
  if (x < 0 || y < 0 || x >= width || y >= height || share <= 0) return;
  uint8_t& now = mask[At(x, y)];
  now = std::max(now, static_cast<uint8_t>(std::min(share, 1.0) * 255 + 0.5));
}

// The usual stroke of a column with many points.
void PlotRaster::Upright(double x, double top, double bottom, double thickness) {
  const double half = thickness / 2;
  const double from = std::max(top - half, -1.0), to = std::min(bottom + half, height + 1.0);
  const int last = static_cast<int>(std::floor(x + half));
  for (int column = static_cast<int>(std::floor(x - half)); column <= last; ++column) {
    const double across = Overlap(column, x - half, x + half);
    if (column < 0 || column >= width || across <= 0) continue;
    const auto whole = static_cast<uint8_t>(std::min(across, 1.0) * 255 + 0.5);
    const int begin = std::max(static_cast<int>(std::ceil(from)), 0);
    const int end = std::min(static_cast<int>(std::floor(to)), height);
    for (int row = begin; row < end; ++row) {
      uint8_t& now = mask[At(column, row)];
      now = std::max(now, whole);
    }
    const int above = static_cast<int>(std::floor(from)), below = static_cast<int>(std::floor(to));
    if (above < begin || begin >= end) Cover(column, above, across * Overlap(above, from, to));
    if (below >= end) Cover(column, below, across * Overlap(below, from, to));
  }
}

// Goes along the longer direction, pixel by pixel, and covers what the line has of each across.
void PlotRaster::Line(const PlotStroke& stroke, double thickness) {
  PlotStroke cut = stroke;
  if (!Clip(cut, width, height, thickness + 1)) return;
  const bool isSteep = std::abs(cut.to.y - cut.from.y) > std::abs(cut.to.x - cut.from.x);
  if (cut.from.x == cut.to.x)
    return Upright(cut.from.x, std::min(cut.from.y, cut.to.y), std::max(cut.from.y, cut.to.y),
                   thickness);
  if (isSteep) {
    std::swap(cut.from.x, cut.from.y);
    std::swap(cut.to.x, cut.to.y);
  }
  if (cut.from.x > cut.to.x) std::swap(cut.from, cut.to);
  const double slope = (cut.to.y - cut.from.y) / (cut.to.x - cut.from.x);
  const double half = thickness / 2 * std::sqrt(1 + slope * slope);
  // Half a line's thickness more at both ends, so that strokes join.
  const double cap = thickness / 2 / std::sqrt(1 + slope * slope);
  const double begin = cut.from.x - cap, end = cut.to.x + cap;
  const int last = static_cast<int>(std::floor(end));
  for (int along = static_cast<int>(std::floor(begin)); along <= last; ++along) {
    const double share = Overlap(along, begin, end);
    const double middle = std::max(begin, static_cast<double>(along)) + share / 2;
    const double across = cut.from.y + (middle - cut.from.x) * slope;
    const int far = static_cast<int>(std::floor(across + half));
    for (int side = static_cast<int>(std::floor(across - half)); side <= far; ++side) {
      const double covered = share * Overlap(side, across - half, across + half);
      if (isSteep)
        Cover(side, along, covered);
      else
        Cover(along, side, covered);
    }
  }
}

// Most dots are whole: their stamps are laid on lane by lane. What stands out is cut pixel by
// pixel.
void PlotRaster::Dots(const std::vector<PlotPoint>& middles, double radius) {
  std::vector<Stamp> stamps;
  for (int place = 0; place <= cPlaces; ++place)
    for (int across = 0; across <= cPlaces; ++across)
      stamps.push_back(MakeStamp(radius, across, place));
  const int reach = stamps[0].reach, side = 2 * reach + 1, stride = stamps[0].stride;
  for (const PlotPoint& middle : middles) {
    const double column = std::floor(middle.x), row = std::floor(middle.y);
    if (column < -side || row < -side || column > width + side || row > height + side) continue;
    const auto place = [](double fraction) {
      return static_cast<size_t>(fraction * cPlaces + 0.5);
    };
    const size_t number = place(middle.y - row) * (cPlaces + 1) + place(middle.x - column);
    const uint8_t* from = stamps[number].coverage.data();
    const int left = static_cast<int>(column) - reach, top = static_cast<int>(row) - reach;
    const bool isWhole = left >= 0 && top >= 0 && left + side <= width && top + side <= height;
    for (int y = 0; y < side; ++y, from += stride) {
      if (isWhole) {
        uint8_t* to = mask.data() + At(left, top + y);
        for (int lane = 0; lane < stride; lane += cLane) LayOn(to + lane, from + lane);
      } else {
        for (int x = 0; x < side; ++x) Cover(left + x, top + y, from[x] / 255.0);
      }
    }
  }
}

void PlotRaster::PaintTo(const Bitmap& bitmap, int32_t rgb) const {
  const int red = rgb >> 16 & 0xFF, green = rgb >> 8 & 0xFF, blue = rgb & 0xFF;
  const uint32_t opaque = 0xFF000000U | static_cast<uint32_t>(rgb & 0xFFFFFF);
  for (int y = 0; y < height; ++y) {
    uint32_t* row = bitmap.Row(y);
    for (int x = 0; x < width; ++x) {
      const int alpha = mask[At(x, y)];
      if (alpha == 0) continue;
      if (alpha == 255) {
        row[x] = opaque;
        continue;
      }
      const uint32_t under = row[x];
      row[x] = static_cast<uint32_t>(Mixed(under, 24, 255, alpha)) << 24 |
               static_cast<uint32_t>(Mixed(under, 16, red, alpha)) << 16 |
               static_cast<uint32_t>(Mixed(under, 8, green, alpha)) << 8 |
               static_cast<uint32_t>(Mixed(under, 0, blue, alpha));
    }
  }
}

}  // namespace mavro
