#include "DialRules.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace mavro {

namespace {

constexpr double cFullCircle = 6.283185307;

// 0 at the scale's minimum, 1 at its maximum.
double Share(const DialScale& scale, double value) {
  const double share = (value - scale.min) / (scale.max - scale.min);
  return std::isfinite(share) ? std::clamp(share, 0.0, 1.0) : 0;
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

int StepsPerTick(int steps, int most) {
  for (int per = 1; per < steps; ++per)
    if (steps % per == 0 && steps / per <= most) return per;
  return std::max(steps, 1);
}

std::string DialText(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", value == 0 ? 0 : value);
  return text;
}

}  // namespace mavro
