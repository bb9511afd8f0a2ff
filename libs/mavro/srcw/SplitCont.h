#pragma once

#include "SplitContainer.h"
#include "SysImpl.h"

namespace mavro {

// Drags the bar and moves the panes with it.
class SplitBar::Impl : public SysImpl {
 public:
  void Create() override;
  Param WndProc(unsigned message, Param wParam, Param lParam) override;

  SplitContainer* container = nullptr;  // not owned
  bool isVertical = true;

 private:
  void ShowCursor(bool inside);
  int AxisPosition(Param lParam) const;

  int grabOffset = 0;
  bool dragging = false;
};

// Owns the bar, places the panes on both sides of it and routes what their children tell.
class SplitContainer::Impl : public Container::Impl {
 public:
  void Create() override;
  void AfterCreate() override;
  Param WndProc(unsigned message, Param wParam, Param lParam) override;

  // Moves the bar to `wanted`, clamped once it has been placed; nothing when it stands there.
  void SetPosition(int wanted);
  // Places panes and bar, and what the panes hold.
  void PlaceAndLayOut();
  // What the property says has been assigned.
  void PositionChanged();

  int told =
      -1;  // what the property says: where the bar is, or before the window where it shall be

 private:
  SplitContainer& Split() const;
  int Size() const;
  int Middle() const;
  void MoveTo(int p);
  int Clamp(int p) const;
  void Place();
  bool PlaceSingle(int w, int h);

  SplitBar bar;
  int position = -1;  // where the bar was placed; -1 before the first time
  bool isSet = false;
};

}  // namespace mavro
