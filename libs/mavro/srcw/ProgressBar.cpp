#include "ProgressBar.h"

#include "RangeImpl.h"

namespace mavro {

class ProgressBar::Impl : public RangeImpl {
 public:
  void Create() override {
    CreateNative("msctls_progress32", cWantsKeys);
    RangeChanged();
  }
};

ProgressBar::ProgressBar()
    : Control(new Impl),
      min(impl, static_cast<PropertySetter>(&RangeImpl::RangeChanged),
          &static_cast<Impl*>(impl)->min),
      max(impl, static_cast<PropertySetter>(&RangeImpl::RangeChanged),
          &static_cast<Impl*>(impl)->max),
      value(impl, static_cast<PropertySetter>(&RangeImpl::RangeChanged),
            &static_cast<Impl*>(impl)->value) {
  impl->textIsLive = false;
  SetSize(200, 20);
}

}  // namespace mavro
