#include "LayoutForm.h"

#include "Graphics.h"
#include "NativeGlass.h"
#include "SysImpl.h"

namespace mavro {

LayoutForm* theLayoutForm = nullptr;

namespace {

constexpr Color cDotColor = Color::cControlShadow;

}  // namespace

// Paints the grid and keeps the glass over the children.
class LayoutForm::Impl : public Container::Impl {
 public:
  void Create() override {
    Container::Impl::Create();
    glass = MakeGlassLayer(*hwnd);
  }

  void AfterCreate() override {
    Container::Impl::AfterCreate();
    theLayoutForm = static_cast<LayoutForm*>(owner);
    if (FireNotify(owner->onResize) && hwnd) hwnd->Invalidate();
  }

  void Destroy() override {
    if (theLayoutForm == owner) theLayoutForm = nullptr;
    glass.reset();
    Container::Impl::Destroy();
  }

  Param WndProc(unsigned message, Param wParam, Param lParam) override {
    if (message == WM_PAINT) {
      PaintGrid();
      return 0;
    }
    if (message == WM_SIZE && glass) {
      glass->Fit();
      hwnd->Invalidate();
    }
    return Container::Impl::WndProc(message, wParam, lParam);
  }

 private:
  void PaintGrid() {
    Graphics graphics(owner, Graphics::cPainting);
    for (int y = 0; y < hwnd->ClientHeight(); y += cGrid)
      for (int x = 0; x < hwnd->ClientWidth(); x += cGrid) graphics.SetPixel(x, y, cDotColor);
  }

  std::unique_ptr<GlassLayer> glass;
};

LayoutForm::LayoutForm() : Container(new Impl) {}

LayoutForm::~LayoutForm() {
  if (impl->hwnd) impl->Destroy();
}

}  // namespace mavro
