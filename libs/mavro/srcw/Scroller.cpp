#include "Scroller.h"

#include <algorithm>

#include "NativeScroller.h"
#include "ScrollStep.h"
#include "SysImpl.h"

namespace mavro {

class Scroller::Impl : public Container::Impl {
 public:
  void Create() override {
    CreateNative("mavroScroller", cWantsKeys);
    for (const Orientation direction : {cHorizontal, cVertical}) {
      Window()->SetScroll(direction, infos[direction]);
      infos[direction] = Window()->ReadScroll(direction);
    }
  }

  Param WndProc(unsigned message, Param wParam, Param lParam) override {
    if (message == WM_HSCROLL) return OnScroll(cHorizontal, static_cast<int>(wParam));
    if (message == WM_VSCROLL) return OnScroll(cVertical, static_cast<int>(wParam));
    if (message == WM_REVEAL) return Reveal(*reinterpret_cast<const NativeWindow*>(lParam));
    return Container::Impl::WndProc(message, wParam, lParam);
  }

  void SetRange(Orientation direction, const ScrollInfo& wanted) {
    infos[direction] = wanted;
    if (!hwnd) return;
    Window()->SetScroll(direction, wanted);
    Moved(direction);
  }

  void SetPosition(Orientation direction, int position) {
    infos[direction].position = position;
    if (!hwnd) return;
    Window()->SetScrollPosition(direction, position);
    Moved(direction);
  }

  ScrollInfo infos[2];  // by Orientation

 private:
  NativeScroller* Window() const { return static_cast<NativeScroller*>(hwnd); }

  Param OnScroll(Orientation direction, int code) {
    infos[direction] = Window()->ReadScroll(direction);
    const ScrollInfo& info = infos[direction];
    const bool dragged = code == SB_THUMBTRACK || code == SB_THUMBPOSITION;
    return Step(direction, code, dragged ? info.track : info.position);
  }

  // Asks the handlers, then moves.
  Param Step(Orientation direction, int code, int from) {
    auto& scroller = static_cast<Scroller&>(Owner());
    const ScrollInfo& info = infos[direction];
    ScrollArgs args{owner, code, from};
    ScrollEvent& event = direction == cHorizontal ? scroller.onHScroll : scroller.onVScroll;
    if (!event.Fire(args) || !hwnd || args.position == -1) return 0;
    const auto next = ScrollStep(code, args.position, info.page, info.max);
    if (!next) return 0;
    SetPosition(direction, *next);
    return 1;
  }

  // Brings a window inside this one into view, its start if it doesn't fit.
  Param Reveal(const NativeWindow& inner) {
    const NativeWindow* window = hwnd;
    const Rect content = hwnd->ScreenClientRect();
    const Rect around = inner.parent->ScreenClientRect();
    const Rect place = inner.Bounds();
    RevealSpan(cHorizontal, around.left + place.left - content.left, place.width, content.width);
    if (IsWindow(window))
      RevealSpan(cVertical, around.top + place.top - content.top, place.height, content.height);
    return 0;
  }

  void RevealSpan(Orientation direction, int start, int length, int seen) {
    infos[direction] = Window()->ReadScroll(direction);
    const int position = infos[direction].position;
    int wanted = position;
    if (start + length > position + seen) wanted = start + length - seen;
    if (start < wanted) wanted = start;
    if (wanted != position) Step(direction, SB_THUMBPOSITION, std::max(wanted, 0));
  }

  // The children follow.
  void Moved(Orientation direction) {
    infos[direction] = Window()->ReadScroll(direction);
    for (Control* child : owner->children) child->impl->BoundsChanged();
  }
};

Scroller::Scroller() : Container(new Impl) {
  impl->textIsLive = false;
}

Scroller::Impl& Scroller::TheImpl() const {
  return *static_cast<Impl*>(impl);
}

void Scroller::SetScrollRange(Orientation direction, int max, int page, int min) {
  ScrollInfo wanted = TheImpl().infos[direction];
  wanted.min = min;
  wanted.max = max;
  wanted.page = page;
  TheImpl().SetRange(direction, wanted);
}

void Scroller::SetScrollPosition(Orientation direction, int position) {
  TheImpl().SetPosition(direction, position);
}

const ScrollInfo& Scroller::GetScrollInfo(Orientation direction) const {
  return TheImpl().infos[direction];
}

}  // namespace mavro
