#pragma once

#include "CustomCtrl.h"

namespace mavro {

// A round knob on a scale of three quarters of a circle. The user turns it with the mouse or with
// Home, End, Left and Right.
class DialCtrl : public CustomCtrl {
 public:
  class Impl;
  enum Labels { cNone, cMinMax, cView };

  DialCtrl();

  // Rounds the value to the grid of steps between min and max. True if the position has changed;
  // onChange has then been fired.
  bool SetValue(double value);
  void CreateControl() override;

  WriteProperty<double> pos;
  WriteProperty<double> min;
  WriteProperty<double> max;
  WriteProperty<int> steps;
  WriteProperty<bool> showPos;
  WriteProperty<int> labels;  // numbers at the scale: none, at its ends, all around

  NotifyEvent onChange;

 private:
  Impl& TheImpl() const;
  void OnDraw(NotifyArgs& args);
};

// Multiplies each channel of a colour by `factor`, rounded; a system colour becomes a plain one.
Color Scaled(Color color, double factor);

// The colour of a ring lit from the upper left, at an angle: `a` on the lit side, `b` on the
// opposite side. The angle is in radians, clockwise from the right.
Color Shade(double dAngle, Color a, Color b);
// A circle of pixels, each in the shade of its own angle.
void DrawRing(Graphics& graphics, int cx, int cy, int r, Color a, Color b);

}  // namespace mavro
