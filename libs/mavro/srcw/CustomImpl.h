#pragma once

#include "CustomCtrl.h"
#include "NativeCanvas.h"
#include "SysImpl.h"

namespace mavro {

// Holds the back buffer of a control that paints itself, and remakes it with the window's size, the
// screen's scale and the palette.
class CustomCtrl::Impl : public SysImpl {
 public:
  void Create() override;
  void PrepareStyle() override;
  void Destroy() override;
  Param WndProc(unsigned message, Param wParam, Param lParam) override;

  void Redraw(int notify);
  // Has onDraw fill the buffer before the next painting, once for any number of calls.
  void MarkStale();

  Graphics backBuffer;

 protected:
  NativeCanvas* Canvas() const { return static_cast<NativeCanvas*>(hwnd); }
  // Called for a key that no handler has used; true if the control itself uses it.
  virtual bool OnOwnKey(int virtualKey);

 private:
  CustomCtrl& Custom() const { return *static_cast<CustomCtrl*>(owner); }
  void MakeBackBuffer();
  // False if the control is gone afterwards.
  bool Refresh();
  void Paint();
  Param OnUnusedKey(int virtualKey, Param result);

  Picture bufferPixels;
  bool isDrawn = false;    // onDraw has filled the buffer since it was made
  bool offersKey = false;  // while an unused key is offered to dialog navigation
};

}  // namespace mavro
