#pragma once

#include "NativeTabs.h"
#include "SysImpl.h"
#include "TabCtrl.h"

namespace mavro {

// Tells the tab when the page's text changes.
class TabPage::Impl : public Container::Impl {
 public:
  Param WndProc(unsigned message, Param wParam, Param lParam) override;

  Control* lastFocus = nullptr;  // had the focus when the page was left; may be gone since
};

// Shows one page of the control and hides the others, and routes the notifications of the pages'
// children.
class TabCtrl::Impl : public Container::Impl {
 public:
  void Create() override;
  Param WndProc(unsigned message, Param wParam, Param lParam) override;
  Param OnNotify(NotifyHeader* header) override;

  NativeTabs* Window() const { return static_cast<NativeTabs*>(hwnd); }
  void SelectedIndexChanged();
  void ClosableChanged();
  void MovableChanged();
  void ImageListChanged();
  void PageImageChanged(const TabPage& page);
  void CaptionChanged(TabPage& page);
  // Called after a page has been added to the list of pages, or removed from it.
  void PageAdded(TabPage& page);
  void PageRemoved(TabPage& page, int index);

  int selectedIndex = -1;  // may be greater than the last page's until the window exists
  bool closable = false;
  bool movable = false;
  int imageList = 0;
  int usedList = 0;  // the list in use: it can't be replaced
  TabPage* shown = nullptr;
  int draggedFrom = -1;  // index of the selected page when handlers were last called

 private:
  TabCtrl& Tabs() const { return *static_cast<TabCtrl*>(owner); }
  void NumberPages();
  void PageMoved(int from, int to);
  void SendMove();
  void MoveFocus(TabPage& from, TabPage* to);
  bool ShowSelected();
};

}  // namespace mavro
