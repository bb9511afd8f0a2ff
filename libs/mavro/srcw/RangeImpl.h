#pragma once

#include "NativeRanges.h"
#include "SysImpl.h"

namespace mavro {

// The platform half of controls that show a number in a range.
class RangeImpl : public SysImpl {
 public:
  void Destroy() override;
  void OnCommand(int code, Param handle) override;
  // Enter commits the typed text and is passed on.
  Param OnNotify(NotifyHeader* header) override;

  // Sends range and value to the window; before it exists they are kept as they were set.
  void RangeChanged();

  int min = 0;
  int max = 100;
  int value = 0;

 protected:
  NativeRange* Window() const { return static_cast<NativeRange*>(hwnd); }
  // The user has changed the value.
  virtual void OnChange() {}

 private:
  bool destroying = false;
};

}  // namespace mavro
