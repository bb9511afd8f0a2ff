#include "SplitCont.h"

#include <algorithm>

#include "Assert.h"

namespace mavro {

namespace {

void RelayPane(Control* pane) {
  if (pane->impl->type == SysImpl::cControl || pane->state == cNoWindow) return;
  pane->layoutPending = true;
  RunPendingLayout(pane);
}

}  // namespace

SplitContainer& SplitContainer::Impl::Split() const {
  return *static_cast<SplitContainer*>(owner);
}

void SplitContainer::Impl::Create() {
  SplitContainer& split = Split();
  Control* const pan1 = split.pan1;
  Control* const pan2 = split.pan2;
  MAVRO_ASSERT_AS(pan1 && pan2, "pan1!=0 && pan2!=0");
  auto* barImpl = static_cast<SplitBar::Impl*>(bar.impl);
  barImpl->container = &split;
  barImpl->isVertical = split.orientation == 1;
  if (split.children.empty()) {
    InsertChild(split, pan1, -1);
    InsertChild(split, &bar, -1);
    InsertChild(split, pan2, -1);
  }
  CreateNative("mavrosplitcont", cWantsKeys);
}

void SplitContainer::Impl::AfterCreate() {
  position = -1;
  isSet = told >= 0;
  MoveTo(isSet ? told : Middle());
}

int SplitContainer::Impl::Size() const {
  return Split().orientation == 1 ? hwnd->ClientWidth() : hwnd->ClientHeight();
}

// The position that gives both panes the same size, as far as their smallest sizes allow.
int SplitContainer::Impl::Middle() const {
  const SplitContainer& split = Split();
  const int most = std::max(Size() - split.minSize2 - SplitBar::cThickness, 0);
  const int least = std::min(split.minSize1, most);
  return std::clamp((Size() - SplitBar::cThickness) / 2, least, most);
}

int SplitContainer::Impl::Clamp(int p) const {
  const SplitContainer& split = Split();
  if (!bar.impl->hwnd || position < 0) return p;
  const int size = Size();
  if (p < split.minSize1) return split.minSize1;
  if (p >= size - split.minSize2) return size - split.minSize2;
  return p;
}

void SplitContainer::Impl::SetPosition(int wanted) {
  isSet = true;
  MoveTo(Clamp(wanted));
}

void SplitContainer::Impl::PositionChanged() {
  if (hwnd) SetPosition(told);
}

void SplitContainer::Impl::MoveTo(int p) {
  told = p;
  if (p == position) return;
  position = p;
  PlaceAndLayOut();
}

void SplitContainer::Impl::PlaceAndLayOut() {
  if (Split().children.size() != 3 || !bar.impl->hwnd || position < 0) return;
  Place();
  RelayPane(Split().pan1);
  RelayPane(Split().pan2);
}

// Shows a single pane without the bar, which would have nothing to move.
bool SplitContainer::Impl::PlaceSingle(int w, int h) {
  const SplitContainer& split = Split();
  const bool isSingle = split.pan1->visible != split.pan2->visible;
  if (bar.visible == isSingle) bar.visible = !isSingle;
  if (isSingle) (split.pan1->visible ? split.pan1 : split.pan2)->SetBounds(0, 0, w, h);
  return isSingle;
}

void SplitContainer::Impl::Place() {
  SplitContainer& split = Split();
  const int w = hwnd->ClientWidth();
  const int h = hwnd->ClientHeight();
  const int p = position;
  if (PlaceSingle(w, h)) return;
  constexpr int cBar = SplitBar::cThickness;
  if (split.orientation == 1) {
    split.pan1->SetBounds(0, 0, p, h);
    bar.SetBounds(p, 0, cBar, h);
    split.pan2->SetBounds(p + cBar, 0, w - p - cBar, h);
  } else {
    split.pan1->SetBounds(0, 0, w, p);
    bar.SetBounds(0, p, w, cBar);
    split.pan2->SetBounds(0, p + cBar, w, h - p - cBar);
  }
}

// The first pane keeps its size, the second gets the rest; before a position is set they share.
Param SplitContainer::Impl::WndProc(unsigned message, Param wParam, Param lParam) {
  if (message == WM_SIZE && position >= 0) {
    if (!isSet) told = position = Middle();
    PlaceAndLayOut();
  }
  return Container::Impl::WndProc(message, wParam, lParam);
}

void SplitBar::Impl::Create() {
  CreateNative("mavroSplitter", 0);
  ShowCursor(true);
}

void SplitBar::Impl::ShowCursor(bool inside) {
  const Cursor sizing = isVertical ? Cursor::cSizeWE : Cursor::cSizeNS;
  owner->cursor = inside ? sizing : Cursor::cDefault;
}

// The mouse position along the axis of the container, in the coordinates of the bar's position.
int SplitBar::Impl::AxisPosition(Param lParam) const {
  return isVertical ? PointX(lParam) + owner->left : PointY(lParam) + owner->top;
}

Param SplitBar::Impl::WndProc(unsigned message, Param wParam, Param lParam) {
  auto* split = container ? static_cast<SplitContainer::Impl*>(container->impl) : nullptr;
  if (!split) return SysImpl::WndProc(message, wParam, lParam);
  switch (message) {
    case WM_LBUTTONDOWN:
      hwnd->CaptureMouse(true);
      dragging = true;
      grabOffset = AxisPosition(lParam) - (isVertical ? owner->left : owner->top);
      ShowCursor(true);
      return 0;
    case WM_MOUSEMOVE:
      if (wParam != 0 && dragging) split->SetPosition(AxisPosition(lParam) - grabOffset);
      break;
    case WM_LBUTTONUP:
      hwnd->CaptureMouse(false);
      if (dragging) {
        dragging = false;
        split->SetPosition(AxisPosition(lParam) - grabOffset);
      }
      return 0;
    default:
      break;
  }
  return SysImpl::WndProc(message, wParam, lParam);
}

SplitBar::SplitBar() : Control(new Impl) {
  SetBounds(100, 100, cThickness, cThickness);
}

SplitContainer::SplitContainer()
    : Control(new Impl),
      position(impl, static_cast<PropertySetter>(&Impl::PositionChanged),
               &static_cast<Impl*>(impl)->told) {
  SetBounds(0, 0, 200, 200);
}

SplitContainer::~SplitContainer() {
  if (impl->hwnd) impl->Destroy();
}

void SplitContainer::Layout() {
  static_cast<Impl*>(impl)->PlaceAndLayOut();
}

void SplitContainer::SetPosition(int newPosition) {
  auto* split = static_cast<Impl*>(impl);
  split->told = newPosition;
  split->PositionChanged();
}

}  // namespace mavro
