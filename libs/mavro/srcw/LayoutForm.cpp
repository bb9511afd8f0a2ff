#include "LayoutForm.h"

#include <algorithm>
#include <cmath>
#include <typeinfo>

#include "Graphics.h"
#include "Label.h"
#include "NativeGlass.h"
#include "SysImpl.h"
#include "TabCtrl.h"
#include "ToolBar.h"

namespace mavro {

LayoutForm* theLayoutForm = nullptr;

namespace {

constexpr Color cDotColor = Color::cControlShadow;

// True for controls that paint nothing, or hardly anything: on the canvas they could not be seen.
bool IsUnseen(const Control& control) {
  const auto& kind = typeid(control);
  const bool isBare = kind == typeid(Panel) || (kind == typeid(Label) && control.text.empty());
  if (isBare) return control.borderStyle == BorderStyle::cNone;
  if (const auto* bar = dynamic_cast<const ToolBar*>(&control)) return bar->RowCount() == 0;
  return kind == typeid(TabCtrl);
}

Rect Intersection(const Rect& one, const Rect& other) {
  const int left = std::max(one.left, other.left);
  const int top = std::max(one.top, other.top);
  const int right = std::min(one.left + one.width, other.left + other.width);
  const int bottom = std::min(one.top + one.height, other.top + other.height);
  return {left, top, right - left, bottom - top};
}

}  // namespace

// Paints the grid and keeps the glass over the children.
class LayoutForm::Impl : public Container::Impl {
 public:
  Impl() { childrenTakeKeys = false; }

  void Create() override {
    Container::Impl::Create();
    glass = MakeGlassLayer(*hwnd);
    glass->outlines = [this] { return Outlines(); };
    glass->ShowMarks(marks);
  }

  void AfterCreate() override {
    Container::Impl::AfterCreate();
    theLayoutForm = static_cast<LayoutForm*>(owner);
    if (FireNotify(owner->onResize) && hwnd) hwnd->Invalidate();
  }

  void Destroy() override {
    if (theLayoutForm == owner) theLayoutForm = nullptr;
    glass.reset();
    grid = Bitmap();
    Container::Impl::Destroy();
  }

  Param WndProc(unsigned message, Param wParam, Param lParam) override {
    if (message == WM_PAINT) {
      PaintGrid();
      return 0;
    }
    if (message == WM_SYSCOLORCHANGE) grid = Bitmap();
    if (message == WM_SIZE && glass) {
      glass->Fit();
      hwnd->Invalidate();
    }
    return Container::Impl::WndProc(message, wParam, lParam);
  }

  void ShowMarks(const std::vector<Mark>& wanted) {
    if (marks == wanted) return;
    marks = wanted;
    if (glass) glass->ShowMarks(marks);
  }
  const std::vector<Mark>& Marks() const { return marks; }

 private:
  void PaintGrid() {
    const Rect area{0, 0, hwnd->ClientWidth(), hwnd->ClientHeight()};
    if (area.width < 1 || area.height < 1) return;
    DrawGrid(area, PixelRatioOf(*hwnd));
    PaintPixels(*hwnd, grid);
  }

  // Thousands of dots: they are drawn anew only when the size, the screen or the palette changes.
  void DrawGrid(const Rect& area, double ratio) {
    const int width = static_cast<int>(std::ceil(area.width * ratio));
    const int height = static_cast<int>(std::ceil(area.height * ratio));
    if (grid.Width() == width && grid.Height() == height && grid.PixelRatio() == ratio) return;
    grid = Bitmap(width, height, ratio);
    if (grid.IsEmpty()) return;
    Graphics graphics(grid, owner);
    for (int y = 0; y < area.height; y += cGrid)
      for (int x = 0; x < area.width; x += cGrid) graphics.SetPixel(x, y, cDotColor);
  }

  std::vector<Rect> Outlines() const {
    std::vector<Rect> areas;
    AddOutlines(*owner, {0, 0, hwnd->ClientWidth(), hwnd->ClientHeight()}, areas);
    return areas;
  }

  // What is outside of `around` is not seen.
  void AddOutlines(const Control& parent, const Rect& around, std::vector<Rect>& areas) const {
    for (const Control* child : parent.children) {
      const bool isOutlined = IsUnseen(*child);
      if (!isOutlined && child->children.empty()) continue;
      if (!child->impl->hwnd || !child->impl->hwnd->IsShown()) continue;
      const Rect seen = Intersection(static_cast<const LayoutForm*>(owner)->RectOf(*child), around);
      if (seen.width < 1 || seen.height < 1) continue;
      if (isOutlined) areas.push_back(seen);
      AddOutlines(*child, seen, areas);
    }
  }

  std::unique_ptr<GlassLayer> glass;
  std::vector<Mark> marks;
  Bitmap grid;  // transparent but for the dots
};

LayoutForm::LayoutForm() : Container(new Impl) {}

LayoutForm::~LayoutForm() {
  if (impl->hwnd) impl->Destroy();
}

void LayoutForm::ShowMarks(const std::vector<Mark>& marks) {
  static_cast<Impl*>(impl)->ShowMarks(marks);
}

const std::vector<LayoutForm::Mark>& LayoutForm::Marks() const {
  return static_cast<const Impl*>(impl)->Marks();
}

Rect LayoutForm::RectOf(const Control& control) const {
  const NativeWindow* window = control.impl->hwnd;
  if (!window || !window->parent || !impl->hwnd) return control.Bounds();
  const Rect around = window->parent->ScreenClientRect();
  const Rect canvas = impl->hwnd->ScreenClientRect();
  Rect rect = window->Bounds();
  rect.left += around.left - canvas.left;
  rect.top += around.top - canvas.top;
  return rect;
}

}  // namespace mavro
