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

// Owns the bar, places the panes on both sides of it and routes the notifications of their
// children.
class SplitContainer::Impl : public Container::Impl {
 public:
  void Create() override;
  void AfterCreate() override;
  Param WndProc(unsigned message, Param wParam, Param lParam) override;

  // Moves the bar to `wanted`, clamped once it has been placed; does nothing if it is already
  // there.
  void SetPosition(int wanted);
  // Places the panes, the bar and the contents of the panes.
  void PlaceAndLayOut();
  // Called when the property has been assigned.
  void PositionChanged();

  int told =
      -1;  // value of the property: the bar's place, or before the window exists, its future place

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
