#include "TrackBar.h"

#include "RangeImpl.h"

namespace mavro {

class TrackBar::Impl : public RangeImpl {
 public:
  void Create() override {
    CreateNative("msctls_trackbar32", cWantsKeys);
    OrientationChanged();
    RangeChanged();
  }

  void OrientationChanged() {
    if (hwnd) Window()->SetOrientation(orientation);
  }

  Orientation orientation = cHorizontal;

 protected:
  void OnChange() override { FireNotify(static_cast<TrackBar*>(owner)->onChange, value); }
};

TrackBar::TrackBar()
    : Control(new Impl),
      min(impl, static_cast<PropertySetter>(&RangeImpl::RangeChanged),
          &static_cast<Impl*>(impl)->min),
      max(impl, static_cast<PropertySetter>(&RangeImpl::RangeChanged),
          &static_cast<Impl*>(impl)->max),
      value(impl, static_cast<PropertySetter>(&RangeImpl::RangeChanged),
            &static_cast<Impl*>(impl)->value),
      orientation(impl, static_cast<PropertySetter>(&Impl::OrientationChanged),
                  &static_cast<Impl*>(impl)->orientation) {
  impl->textIsLive = false;
  SetSize(200, 30);
}

}  // namespace mavro
