#pragma once

#include "Label.h"
#include "NativeButtons.h"
#include "SysImpl.h"

namespace mavro {

// The platform half of labels.
class Label::Impl : public SysImpl {
 public:
  void Create() override;
  void PrepareStyle() override;
  // Finds the control that the label names: it exists by the time the label is shown.
  void Show(bool on) override;

  void AlignChanged();

  Align align = Align::cLeft;

 private:
  NativeLabel* Window() const { return static_cast<NativeLabel*>(hwnd); }
};

}  // namespace mavro
