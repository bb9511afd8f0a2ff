#include "SpinEdit.h"

#include <algorithm>

#include "RangeImpl.h"

namespace mavro {

// The text is that of the number; a text that is set before the window exists becomes the value.
class SpinEdit::Impl : public RangeImpl {
 public:
  Impl() {
    keepTextOnDestroy = true;
    text = "0";
  }

  void Create() override {
    CreateNative("msctls_updown32", cWantsKeys);
    const std::string wanted = text;
    const auto [low, high] = std::minmax(min, max);
    Window()->SetRange(low, high, low);
    hwnd->SetText(wanted);
    value = Window()->Value();
  }

  void ValueChanged() {
    text = std::to_string(value);
    RangeChanged();
  }

 protected:
  void OnChange() override { FireNotify(static_cast<SpinEdit*>(owner)->onChange, value); }
};

SpinEdit::SpinEdit()
    : Control(new Impl),
      min(impl, static_cast<PropertySetter>(&RangeImpl::RangeChanged),
          &static_cast<Impl*>(impl)->min),
      max(impl, static_cast<PropertySetter>(&RangeImpl::RangeChanged),
          &static_cast<Impl*>(impl)->max),
      value(impl, static_cast<PropertySetter>(&Impl::ValueChanged),
            &static_cast<Impl*>(impl)->value) {
  SetSize(80, 24);
}

}  // namespace mavro
