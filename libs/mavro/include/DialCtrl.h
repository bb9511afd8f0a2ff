#pragma once

#include "CustomCtrl.h"

namespace mavro {

// A round knob over a scale of three quarters of a circle. Turned with the mouse and by Home, End,
// Left and Right.
class DialCtrl : public CustomCtrl {
 public:
  class Impl;
  enum Labels { cNone, cMinMax, cView };

  DialCtrl();

  // Puts the value on the grid of steps between min and max. True if that changed the position;
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

// A colour with each channel times `factor`, rounded; system colours become plain ones.
Color Scaled(Color color, double factor);

// A colour of a ring lit from the upper left: `a` where the light falls, `b` opposite. The angle is
// in radians, clockwise from the right.
Color Shade(double dAngle, Color a, Color b);
// A circle of pixels, each in the shade of its own angle.
void DrawRing(Graphics& graphics, int cx, int cy, int r, Color a, Color b);

}  // namespace mavro
