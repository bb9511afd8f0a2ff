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

// Shows one page of the control and hides the others, and routes what the pages' children tell.
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
  // For a page that has just come into the list of pages, or left its place there.
  void PageAdded(TabPage& page);
  void PageRemoved(TabPage& page, int index);

  int selectedIndex = -1;  // may be ahead of the pages until the window exists
  bool closable = false;
  bool movable = false;
  int imageList = 0;
  int usedList = 0;  // the list in force: another can't take its place
  TabPage* shown = nullptr;
  int draggedFrom = -1;  // where the selected page was when handlers were last told

 private:
  TabCtrl& Tabs() const { return *static_cast<TabCtrl*>(owner); }
  void NumberPages();
  void PageMoved(int from, int to);
  void TellMove();
  void MoveFocus(TabPage& from, TabPage* to);
  bool ShowSelected();
};

}  // namespace mavro
