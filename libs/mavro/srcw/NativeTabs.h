#pragma once

#include "NativeWindow.h"

namespace mavro {

// Codes of the WM_NOTIFY of a row of tabs.
enum TabCode {
  TCN_SELCHANGE = -551,
  TCN_CLOSE = -560,
  TCN_MOVED = -561,   // sent during the row's own work: the receiver follows, and calls no handler
  TCN_DRAGGED = -562  // after one or more moves: now handlers may do anything
};

struct TabHeader : NotifyHeader {
  int index = -1;
  int oldIndex = -1;  // TCN_MOVED
};

// A row of tabs above the area of the pages, which is the client area. The window around both is
// the parent of the row: it gets the row's notifications itself.
class NativeTabs : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  virtual void InsertTab(int index, const std::string& caption) = 0;
  virtual void RemoveTab(int index) = 0;
  virtual void SetCaption(int index, const std::string& caption) = 0;
  // Shows which tab is selected; sends no notification.
  virtual void SelectTab(int index) = 0;
  virtual void SetClosable(bool on) = 0;
  // Lets the user drag tabs. The row sends its notification after it has moved its tab.
  virtual void SetMovable(bool on) = 0;
  // Sets the strip of the tabs' pictures, and a tab's picture in it; -1 for none.
  virtual void SetStrip(int stripId) = 0;
  virtual void SetImage(int index, int image) = 0;
  // Places the row and the page area for the present size, also while the window is hidden.
  virtual void Arrange() = 0;
  // The tab at a point of the whole window, -1 for none.
  virtual int TabAt(int x, int y) const = 0;
};

}  // namespace mavro
