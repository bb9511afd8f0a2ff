#include "PlotTicks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace mavro {

namespace {

constexpr double cMostValue = 1e300;   // spans and their products stay finite
constexpr double cLeastSpan = 1e-290;  // its quotients stay finite
constexpr double cLeastShare = 1e-12;  // of the larger end: below that, numbers have too few digits
constexpr double cAir = 0.04;          // of the span, at each end
constexpr double cAlikeAir = 0.1;      // of the value, if all values are equal
constexpr int cMostDigits = 6;         // before or after the point; beyond, labels have exponents
constexpr int cLeastPixels = 24;       // between two ticks, before labels are measured

// The exponent of a power of ten that is not larger than `value`.
int Exponent(double value) {
  const int guess = static_cast<int>(std::floor(std::log10(value)));
  return std::pow(10.0, guess + 1) <= value * (1 + 1e-9) ? guess + 1 : guess;
}

// 1.5e+06 as 1.5e6, and no zeros at the end of the digits.
std::string ShortExponent(const std::string& text) {
  const size_t e = text.find('e');
  std::string digits = text.substr(0, e);
  if (digits.find('.') != std::string::npos) {
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') digits.pop_back();
  }
  const int exponent = std::stoi(text.substr(e + 1));
  return digits + "e" + std::to_string(exponent);
}

std::string Printed(const char* format, int digits, double value) {
  char text[64];
  std::snprintf(text, sizeof text, format, digits, value);
  return text;
}

// Labels of multiples of a step whose largest is `largest`.
std::string LabelOf(double value, double step, double largest) {
  if (value == 0) return "0";
  const int stepExponent = Exponent(step);
  const int top = Exponent(std::max(largest, step));
  if (top < cMostDigits && stepExponent >= -cMostDigits)
    return Printed("%.*f", std::max(0, -stepExponent), value);
  const int own = Exponent(std::abs(value));
  return ShortExponent(Printed("%.*e", std::max(0, own - stepExponent), value));
}

double Limited(double value) {
  return std::clamp(value, -cMostValue, cMostValue);
}

bool Overlap(const std::vector<PlotTick>& ticks, const PlotRange& range, const TickRoom& room,
             const LabelSize& size) {
  for (size_t i = 1; i < ticks.size(); ++i) {
    const auto start = [&](size_t at) {
      const int own = size(ticks[at].label);
      return LabelStart(TickPixel(range, room.length, ticks[at].value), own, room);
    };
    if (start(i - 1) + size(ticks[i - 1].label) + room.gap > start(i)) return true;
  }
  return false;
}

}  // namespace

bool HasPlace(double value) {
  return std::isfinite(value);
}

PlotRange DrawableRange(const PlotRange& range) {
  if (!HasPlace(range.min) || !HasPlace(range.max)) return {};
  double min = Limited(std::min(range.min, range.max));
  double max = Limited(std::max(range.min, range.max));
  const double least = std::max(cLeastSpan, std::max(std::abs(min), std::abs(max)) * cLeastShare);
  if (max - min >= least) return {min, max};
  const double middle = min + (max - min) / 2;
  return {middle - least, middle + least};
}

PlotRange RangeAround(double least, double largest) {
  if (!HasPlace(least) || !HasPlace(largest)) return {};
  const double min = Limited(least);
  const double max = Limited(largest);
  if (min == max) {
    const double air = min == 0 ? 1 : std::abs(min) * cAlikeAir;
    return DrawableRange({min - air, max + air});
  }
  const double air = (max - min) * cAir;
  return DrawableRange({min - air, max + air});
}

double TickStep(double span, int most) {
  const double wanted = span / std::max(most, 1);
  const double power = std::pow(10.0, Exponent(wanted));
  for (const int times : {1, 2, 5})
    if (times * power >= wanted * (1 - 1e-9)) return times * power;
  return 10 * power;
}

std::vector<PlotTick> TicksOf(const PlotRange& range, int most) {
  const double step = TickStep(range.Span(), most);
  const double slack = 1e-6;  // of a step: an end that is a multiple gets its tick
  const double first = std::ceil(range.min / step - slack);
  const double last = std::floor(range.max / step + slack);
  const double largest = std::max(std::abs(range.min), std::abs(range.max));
  std::vector<PlotTick> ticks;
  for (double i = first; i <= last; ++i) {
    const double value = i == 0 ? 0 : i * step;
    ticks.push_back({value, LabelOf(value, step, largest)});
  }
  return ticks;
}

int LabelStart(int tick, int size, const TickRoom& room) {
  const int most = room.length + room.after - size;
  return std::max(std::min(tick - size / 2, most), -room.before);
}

int TickPixel(const PlotRange& range, int length, double value) {
  return static_cast<int>(std::lround((value - range.min) / range.Span() * length));
}

std::vector<PlotTick> FitTicks(const PlotRange& range, const TickRoom& room,
                               const LabelSize& size) {
  int most = std::max(room.length / cLeastPixels, 1);
  for (;; --most) {
    std::vector<PlotTick> ticks = TicksOf(range, most);
    if (!Overlap(ticks, range, room, size)) return ticks;
    if (most > 1) continue;
    ticks.resize(1);
    return ticks;
  }
}

}  // namespace mavro
