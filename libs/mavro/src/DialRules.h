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
// from the right, as the y axis of windows has them.
constexpr double cDialStart = 2.356194490;  // three quarters of pi
constexpr double cDialSweep = 4.712388980;  // one and a half pi

// The value on the grid that is nearest, within the range. A range without extent has one value,
// its minimum; a scale without steps has no grid. A value that is no number gives the minimum.
double Quantise(const DialScale& scale, double value);
// Where a value points; the start for a range without extent.
double AngleOfValue(const DialScale& scale, double value);
// The value that an angle of -pi to pi points to; in the gap below the dial the nearer end.
double ValueOfAngle(const DialScale& scale, double angle);
// A range that can be drawn: an end that is no number is where the other one is, endless ones are
// far away.
DialScale Drawable(const DialScale& scale);
// The steps that get a tick: both ends, and between them at equal distances as many as there may be
// when `most` such distances fill the scale. A number of steps that has no divisor near `most` gets
// round numbers, and a last distance of its own. The time does not grow with the steps.
std::vector<int> DialMarks(int steps, int most);
// A value as a label shows it: at most six digits and no zeros behind the point.
std::string DialText(double value);

}  // namespace mavro
