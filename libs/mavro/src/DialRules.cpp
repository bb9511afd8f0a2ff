#include "DialRules.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace mavro {

namespace {

constexpr double cFullCircle = 6.283185307;
constexpr double cFarthest = 8e307;  // so that the range (max - min) is finite too

// 0 at the scale's minimum, 1 at its maximum.
double Share(const DialScale& scale, double value) {
  const double share = (value - scale.min) / (scale.max - scale.min);
  return std::isfinite(share) ? std::clamp(share, 0.0, 1.0) : 0;
}

// The first of 1, 2, 5, 10, 20, ... that divides the steps into at most `most` distances.
int RoundDistance(int steps, int most) {
  int64_t per = 1;
  for (int i = 0; (steps + per - 1) / per > most; ++i) per = i % 3 == 1 ? per / 2 * 5 : per * 2;
  return static_cast<int>(per);
}

// The number of steps between two marks: all equal if this gives at least a third of the allowed
// marks.
int StepsPerMark(int steps, int most) {
  for (int count = std::min(most, steps); count >= std::max(1, std::min(most, steps) / 3); --count)
    if (steps % count == 0) return steps / count;
  return RoundDistance(steps, most);
}

}  // namespace

double Quantise(const DialScale& scale, double value) {
  const double range = scale.max - scale.min;
  if (range == 0 || !std::isfinite(range) || std::isnan(value)) return scale.min;
  double v = value;
  if (scale.steps > 0 && std::isfinite(value)) {
    const double k = std::round((value - scale.min) * scale.steps / range);
    v = range / scale.steps * k + scale.min;
  }
  return std::clamp(v, std::min(scale.min, scale.max), std::max(scale.min, scale.max));
}

double AngleOfValue(const DialScale& scale, double value) {
  return cDialStart + Share(scale, value) * cDialSweep;
}

double ValueOfAngle(const DialScale& scale, double angle) {
  double behindStart = angle - cDialStart;
  if (behindStart < 0) behindStart += cFullCircle;
  const double gap = cFullCircle - cDialSweep;
  if (behindStart > cDialSweep + gap / 2) return scale.min;
  return scale.min + (scale.max - scale.min) * std::min(behindStart / cDialSweep, 1.0);
}

DialScale Drawable(const DialScale& scale) {
  DialScale drawable = scale;
  if (std::isnan(drawable.min)) drawable.min = scale.max;
  if (std::isnan(drawable.max)) drawable.max = drawable.min;
  if (std::isnan(drawable.min)) drawable.min = drawable.max = 0;
  drawable.min = std::clamp(drawable.min, -cFarthest, cFarthest);
  drawable.max = std::clamp(drawable.max, -cFarthest, cFarthest);
  return drawable;
}

std::vector<int> DialMarks(int steps, int most) {
  if (steps < 1) steps = 1;
  const int per = StepsPerMark(steps, most);
  std::vector<int> marks{0};
  // A mark too close to the end would overlap the last one.
  for (int left = steps - per; left >= per / 2 + per % 2 && left > 0; left -= per)
    marks.push_back(marks.back() + per);
  marks.push_back(steps);
  return marks;
}

std::string DialText(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", value == 0 ? 0 : value);
  return text;
}

}  // namespace mavro
