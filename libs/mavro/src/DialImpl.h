#pragma once

#include "CustomImpl.h"
#include "DialCtrl.h"
#include "DialRules.h"

namespace mavro {

// All the values that a dial's picture depends on.
struct DialLook {
  int width = 0, height = 0;  // of the client area
  int centerX = 0, centerY = 0;
  int radius = 0;  // of the knob
  Color light, mid, dark, background, ink;
  DialScale scale;
  double position = 0;
  int labels = DialCtrl::cMinMax;
  bool ticks = true;
  bool showPos = true;
  bool focused = false;
  bool enabled = true;
  std::string text;
};

// The last knob drawn, and the values that it depended on.
struct KnobPicture {
  std::vector<double> key;
  Bitmap bitmap;
};

// Draws the dial on a surface of its client area.
void DrawDial(Graphics& graphics, const DialLook& look, KnobPicture& knob);

class DialCtrl::Impl : public CustomCtrl::Impl {
 public:
  void Create() override;
  Param WndProc(unsigned message, Param wParam, Param lParam) override;

  bool SetValue(double value);
  void ComputeColors();
  // Rounds the last requested position to the grid.
  void AdjustPosition();
  // The current place and appearance of the knob.
  DialLook Look() const;

  void PosChanged();
  void ScaleChanged();
  void LookChanged();

  KnobPicture knob;
  DialScale scale;
  double shownPos = 0;  // the value of the property; between two assignments the position
  bool showPos = true;
  int labels = cMinMax;

 protected:
  bool OnOwnKey(int virtualKey) override;

 private:
  void TurnTo(int x, int y);
  bool IsOnKnob(int x, int y) const;
  void ShowAccessibleValue();

  double position = 0;
  double asked = 0;  // the last assigned or turned value, kept since another scale may contain it
  bool turning = false;
  Color light, mid, dark;
};

}  // namespace mavro
