#pragma once

#include "Core.h"

namespace mavro {

// What a scroll bar stands at. `page` of the numbers from `min` to `max` are in view; the bar is
// hidden when all of them are.
struct ScrollInfo {
  int min = 0;
  int max = 0;
  int page = 0;
  int position = 0;
  int track = 0;  // where the thumb is while it is dragged
};

// What the user did with a scroll bar: the low four bits of a scroll message's first parameter.
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
  int position = 0;  // what the step starts from, or where the thumb is; -1 refuses the move
};

using ScrollEvent = Event<ScrollArgs>;

// A container with scroll bars that move its children. The children's bounds stay what they are:
// they count from the upper left corner of what is scrolled. A child that the keyboard goes to is
// scrolled into view, and a notch of the wheel scrolls by three lines of text; onHScroll and
// onVScroll are asked as when the thumb is moved there.
class Scroller : public Container {
 public:
  class Impl;
  Scroller();

  // Of one bar: what it counts, how much of that is seen at once, and where it stands.
  void SetScrollRange(Orientation direction, int max, int page, int min = 0);
  void SetScrollPosition(Orientation direction, int position);
  // As last read from the bar.
  const ScrollInfo& GetScrollInfo(Orientation direction) const;

  ScrollEvent onHScroll, onVScroll;

 private:
  Impl& TheImpl() const;
};

}  // namespace mavro
