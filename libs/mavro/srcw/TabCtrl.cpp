#include "TabCtrl.h"

#include <algorithm>
#include <utility>

#include "Assert.h"
#include "MoveElement.h"
#include "TabImpl.h"

namespace mavro {

namespace {

// True if `wanted` is at or below `control`; it may point to a destroyed control.
bool Holds(const Control& control, const Control* wanted) {
  return &control == wanted ||
         std::any_of(control.children.begin(), control.children.end(),
                     [wanted](const Control* child) { return Holds(*child, wanted); });
}

// The first control below `control` that takes the focus, or null.
Control* FirstFocusable(const Control& control) {
  for (Control* child : control.children) {
    if (!child->impl->hwnd || !child->impl->hwnd->IsShown()) continue;
    if (child->impl->hwnd->TakesFocus()) return child;
    if (Control* below = FirstFocusable(*child)) return below;
  }
  return nullptr;
}

}  // namespace

Param TabPage::Impl::WndProc(unsigned message, Param wParam, Param lParam) {
  auto* page = static_cast<TabPage*>(owner);
  if (message == WM_SETTEXT && page->tabs)
    static_cast<TabCtrl::Impl*>(page->tabs->impl)->CaptionChanged(*page);
  return Container::Impl::WndProc(message, wParam, lParam);
}

void TabCtrl::Impl::Create() {
  const auto& pages = Tabs().pages;
  MAVRO_ASSERT_AS(pages.empty() || selectedIndex < Tabs().TabCount(), "ix>-1 && ix<tabs.size()");
  if (pages.empty()) selectedIndex = -1;
  CreateNative("mavrotbctrl", cWantsKeys);
  for (const TabPage* page : pages) Window()->InsertTab(page->pageIndex, page->text);
  Window()->SetClosable(closable);
  Window()->SetMovable(movable);
  Window()->SelectTab(selectedIndex);
  if (imageList == 0) return;
  Window()->SetStrip(imageList);
  for (const TabPage* page : pages) PageImageChanged(*page);
}

// The row of tabs is treated as a child of this window, whatever its native parent.
Param TabCtrl::Impl::WndProc(unsigned message, Param wParam, Param lParam) {
  if (message == WM_NOTIFY) {
    auto* header = reinterpret_cast<NotifyHeader*>(lParam);
    if (header->from == hwnd) return OnNotify(header);
  }
  if (message == WM_SIZE) {
    owner->layoutPending = true;
    RunPendingLayout(owner);
  }
  return Container::Impl::WndProc(message, wParam, lParam);
}

Param TabCtrl::Impl::OnNotify(NotifyHeader* header) {
  const auto* told = static_cast<const TabHeader*>(header);
  switch (header->code) {
    case TCN_SELCHANGE:
      Tabs().selectedIndex = told->index;
      return 0;
    case TCN_CLOSE:
      FireNotify(Tabs().onCloseRequest, told->index);
      return 0;
    case TCN_MOVED:
      PageMoved(told->oldIndex, told->index);
      return 0;
    case TCN_DRAGGED:
      SendMove();
      return 0;
    default:
      return 1;
  }
}

void TabCtrl::Impl::SelectedIndexChanged() {
  const int vselectedIndex = selectedIndex;
  MAVRO_ASSERT(vselectedIndex >= 0);
  MAVRO_ASSERT_AS(!hwnd || vselectedIndex < Tabs().TabCount(), "ix>-1 && ix<tabs.size()");
  if (vselectedIndex >= Tabs().TabCount()) return;
  const NativeWindow* window = hwnd;
  if (window) Window()->SelectTab(vselectedIndex);
  if (ShowSelected() && window) FireNotify(Tabs().onChange, vselectedIndex);
}

void TabCtrl::Impl::ClosableChanged() {
  if (hwnd) Window()->SetClosable(closable);
}

void TabCtrl::Impl::MovableChanged() {
  if (hwnd) Window()->SetMovable(movable);
}

void TabCtrl::Impl::ImageListChanged() {
  const int wanted = std::exchange(imageList, usedList);
  MAVRO_ASSERT(imageList == 0);
  imageList = usedList = wanted;
  if (hwnd) Window()->SetStrip(imageList);
}

void TabCtrl::Impl::PageImageChanged(const TabPage& page) {
  if (hwnd) Window()->SetImage(page.pageIndex, page.image);
}

void TabCtrl::Impl::CaptionChanged(TabPage& page) {
  const int idx = Tabs().IndexOf(&page);
  MAVRO_ASSERT(idx != -1);
  if (hwnd) Window()->SetCaption(idx, page.text);
}

void TabCtrl::Impl::NumberPages() {
  int number = 0;
  for (TabPage* page : Tabs().pages) page->pageIndex = number++;
}

// The row may report the tab that was passed; the dragged tab is the selected one.
void TabCtrl::Impl::PageMoved(int from, int to) {
  if (draggedFrom < 0) draggedFrom = selectedIndex;
  MoveElement(Tabs().pages, from, to);
  MoveChild(*owner, from, to);
  NumberPages();
  if (shown) selectedIndex = shown->pageIndex;
}

void TabCtrl::Impl::SendMove() {
  ItemArgs args;
  args.sender = owner;
  args.row = std::exchange(draggedFrom, -1);
  args.value = selectedIndex;
  Tabs().onMovePage.Fire(args);
}

// Moves the focus to the control that last had it on the page, else to the first that takes it,
// else to the tabs.
void TabCtrl::Impl::MoveFocus(TabPage& from, TabPage* to) {
  Control* focused = hwnd ? FocusedIn(from) : nullptr;
  if (!focused) return;
  static_cast<TabPage::Impl*>(from.impl)->lastFocus = focused;
  Control* target = to ? static_cast<TabPage::Impl*>(to->impl)->lastFocus : nullptr;
  if (to && (!target || !Holds(*to, target))) target = FirstFocusable(*to);
  (target ? target : owner)->Focus();
}

// The new page is shown before the old one is hidden, and takes the focus from it, so that no other
// window gets the focus. False if a handler has destroyed the control or shown yet another page.
bool TabCtrl::Impl::ShowSelected() {
  const auto& pages = Tabs().pages;
  TabPage* next = selectedIndex < 0 ? nullptr : pages[static_cast<size_t>(selectedIndex)];
  TabPage* previous = shown;
  if (next == previous) return true;
  const NativeWindow* window = hwnd;
  const auto interrupted = [&] { return window && (!IsWindow(window) || shown != next); };
  shown = next;
  if (next) {
    owner->Layout();
    next->visible = true;
    if (interrupted()) return false;
  }
  const auto previousLives = [&] {
    return std::find(owner->children.begin(), owner->children.end(), previous) !=
           owner->children.end();
  };
  if (previous && previousLives()) {
    MoveFocus(*previous, next);
    if (interrupted()) return false;
    if (previousLives()) previous->visible = false;
    if (interrupted()) return false;
  }
  if (window) RunPendingLayout(owner);
  return !interrupted();
}

// Selects the page if it is the first one, or if its index was assigned before it was added.
void TabCtrl::Impl::PageAdded(TabPage& page) {
  NumberPages();
  page.visible = false;
  if (shown && page.pageIndex <= selectedIndex) ++selectedIndex;
  if (hwnd) Window()->InsertTab(page.pageIndex, page.text);
  if (imageList != 0) PageImageChanged(page);
  InsertChild(*owner, &page, page.pageIndex);
  if (shown) return;
  selectedIndex = std::max(selectedIndex, 0);
  if (selectedIndex < Tabs().TabCount()) ShowSelected();
}

void TabCtrl::Impl::PageRemoved(TabPage& page, int index) {
  NumberPages();
  const NativeWindow* window = hwnd;
  if (window) Window()->RemoveTab(index);
  if (selectedIndex > index || selectedIndex >= Tabs().TabCount()) --selectedIndex;
  if (window) Window()->SelectTab(selectedIndex);
  if (shown == &page) ShowSelected();
  if (window && !IsWindow(window)) return;
  const auto place = std::find(owner->children.begin(), owner->children.end(), &page);
  if (place == owner->children.end()) return;
  RemoveChild(*owner, static_cast<int>(place - owner->children.begin()));
  page.visible = true;
}

TabPage::TabPage() : Panel(new Impl) {
  impl->textIsLive = false;
}

TabPage::~TabPage() {
  if (tabs) tabs->RemovePage(pageIndex);
}

TabCtrl::TabCtrl()
    : Control(new Impl),
      selectedIndex(impl, static_cast<PropertySetter>(&Impl::SelectedIndexChanged),
                    &TheImpl().selectedIndex),
      imageList(impl, static_cast<PropertySetter>(&Impl::ImageListChanged), &TheImpl().imageList),
      closable(impl, static_cast<PropertySetter>(&Impl::ClosableChanged), &TheImpl().closable),
      movable(impl, static_cast<PropertySetter>(&Impl::MovableChanged), &TheImpl().movable) {
  impl->textIsLive = false;
}

TabCtrl::~TabCtrl() {
  if (impl->hwnd) impl->Destroy();
  for (TabPage* page : pages) {
    page->tabs = nullptr;
    page->pageIndex = -1;
  }
}

TabCtrl::Impl& TabCtrl::TheImpl() const {
  return *static_cast<Impl*>(impl);
}

void TabCtrl::Add(TabPage* page, int index) {
  MAVRO_ASSERT_AS(index == -1 || (index >= 0 && index < TabCount()),
                  "index == -1 || ( index >= 0 && index < TabCount() )");
  const auto place = index == -1 ? pages.end() : pages.begin() + index;
  pages.insert(place, page);
  page->tabs = this;
  TheImpl().PageAdded(*page);
}

void TabCtrl::RemovePage(int index) {
  TabPage* page = GetPage(index);
  pages.erase(pages.begin() + index);
  page->tabs = nullptr;
  page->pageIndex = -1;
  TheImpl().PageRemoved(*page, index);
}

TabPage* TabCtrl::GetPage(int ix) const {
  MAVRO_ASSERT_AS(ix > -1 && ix < TabCount(), "ix>-1 && ix<tabs.size()");
  return pages[static_cast<size_t>(ix)];
}

void TabCtrl::SetPageImage(int ix, int image) {
  MAVRO_ASSERT_AS(imageList != 0, "imageList != NULL");
  TabPage* page = GetPage(ix);
  page->image = image;
  TheImpl().PageImageChanged(*page);
}

int TabCtrl::TabAt(int x, int y) const {
  return impl->hwnd ? TheImpl().Window()->TabAt(x, y) : -1;
}

int TabCtrl::IndexOf(const TabPage* page) const {
  const auto found = std::find(pages.begin(), pages.end(), page);
  return found == pages.end() ? -1 : static_cast<int>(found - pages.begin());
}

void TabCtrl::Layout() {
  if (!impl->hwnd) return;
  TheImpl().Window()->Arrange();
  const Rect area = impl->ClientRect();
  if (TabPage* page = TheImpl().shown) page->SetBounds(0, 0, area.width, area.height);
}

}  // namespace mavro
