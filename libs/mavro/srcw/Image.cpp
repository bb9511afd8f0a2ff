#include "Image.h"

#include "NativeCanvas.h"
#include "SysImpl.h"

namespace mavro {

// Paints the picture in the size that the flags ask for.
class Image::Impl : public SysImpl {
 public:
  void Create() override { CreateNative("mavroCustom", cWantsKeys); }

  Param WndProc(unsigned message, Param wParam, Param lParam) override {
    if (message != WM_PAINT) return SysImpl::WndProc(message, wParam, lParam);
    if (!picture.IsEmpty())
      static_cast<NativeCanvas*>(hwnd)->PaintBitmap(picture.Pixels(), Target());
    return 0;
  }

  void LookChanged() {
    if (hwnd) hwnd->Invalidate();
  }
  void OnPicture(NotifyArgs&) { LookChanged(); }

  Picture picture;
  bool stretch = false;
  bool autosize = false;
  bool proportional = false;

 private:
  Rect Target() const {
    PictureSize size{picture.Width(), picture.Height()};
    if (stretch && !autosize) {
      const PictureSize box{hwnd->ClientWidth(), hwnd->ClientHeight()};
      size = proportional ? FitProportional(size, box) : box;
    }
    return {0, 0, size.width, size.height};
  }
};

namespace {

Image::Impl& ImplOf(SysImpl* impl) {
  return *static_cast<Image::Impl*>(impl);
}

}  // namespace

Image::Image()
    : Control(new Impl),
      picture(ImplOf(impl).picture),
      stretch(impl, static_cast<PropertySetter>(&Impl::LookChanged), &ImplOf(impl).stretch),
      autosize(impl, static_cast<PropertySetter>(&Impl::LookChanged), &ImplOf(impl).autosize),
      proportional(impl, static_cast<PropertySetter>(&Impl::LookChanged),
                   &ImplOf(impl).proportional) {
  picture.onChange.Add_H(&ImplOf(impl), &Impl::OnPicture);
}

}  // namespace mavro
