#pragma once

#include "Core.h"

namespace mavro {

// The state of a scroll bar. `page` of the numbers from `min` to `max` are in view; the bar is
// hidden if all of them are.
struct ScrollInfo {
  int min = 0;
  int max = 0;
  int page = 0;
  int position = 0;
  int track = 0;  // position of the thumb while it is dragged
};

// The user's action on a scroll bar: the low four bits of a scroll message's first parameter.
enum ScrollCode {
  SB_LINEUP,
  SB_LINEDOWN,
  SB_PAGEUP,
  SB_PAGEDOWN,
  SB_THUMBPOSITION,
  SB_THUMBTRACK,
  SB_TOP,
  SB_BOTTOM,
  SB_ENDSCROLL
};

// A scroll bar is about to move.
struct ScrollArgs {
  Control* sender = nullptr;
  int code = 0;      // a ScrollCode
  int position = 0;  // where the step begins, or where the thumb is; -1 refuses the move
};

using ScrollEvent = Event<ScrollArgs>;

// A container with scroll bars that move its children. The children's bounds don't change: they
// count from the upper left corner of the scrolled area. A child that gets the keyboard focus is
// scrolled into view, and a notch of the wheel scrolls by three lines of text; both fire onHScroll
// and onVScroll as if the thumb were moved there.
class Scroller : public Container {
 public:
  class Impl;
  Scroller();

  // Set the range of one bar, the size of its visible part, and its position.
  void SetScrollRange(Orientation direction, int max, int page, int min = 0);
  void SetScrollPosition(Orientation direction, int position);
  // The state when it was last read from the bar.
  const ScrollInfo& GetScrollInfo(Orientation direction) const;

  ScrollEvent onHScroll, onVScroll;

 private:
  Impl& TheImpl() const;
};

}  // namespace mavro
