#pragma once

#include <string>
#include <vector>

namespace mavro {

// The numbers of a dial: its range and its grid.
struct DialScale {
  double min = 0;
  double max = 60;
  int steps = 60;
};

// The scale goes clockwise from the lower left to the lower right; angles are in radians, clockwise
// from the right, since the y axis of windows points down.
constexpr double cDialStart = 2.356194490;  // three quarters of pi
constexpr double cDialSweep = 4.712388980;  // one and a half pi

// The nearest value on the grid, within the range. A range of no length has one value, its minimum;
// a scale without steps has no grid. NaN gives the minimum.
double Quantise(const DialScale& scale, double value);
// The angle of a value; the start if the range has no length.
double AngleOfValue(const DialScale& scale, double value);
// The value at an angle of -pi to pi; in the gap below the dial it is the nearer end.
double ValueOfAngle(const DialScale& scale, double angle);
// A range that can be drawn: an end that is NaN becomes equal to the other end, an infinite end
// becomes a very large number.
DialScale Drawable(const DialScale& scale);
// The steps that get a tick: both ends, and ticks at equal distances between them, with at most
// `most` distances on the scale. If the number of steps has no divisor near `most`, the ticks are
// at round numbers, and the last distance differs. The time does not depend on the number of steps.
std::vector<int> DialMarks(int steps, int most);
// A value as a label shows it: at most six digits and no trailing zeros after the point.
std::string DialText(double value);

}  // namespace mavro
