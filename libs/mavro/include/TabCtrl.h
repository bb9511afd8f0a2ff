#pragma once

#include "Core.h"

namespace mavro {

class TabCtrl;

// A page of a tab control; its text is the tab's caption.
class TabPage : public Panel {
 public:
  class Impl;
  TabPage();
  int pageIndex = -1;
  TabCtrl* tabs = nullptr;  // the control it stands in; not owned
};

// Pages of which one is shown, chosen by tabs above them.
class TabCtrl : public Control {
 public:
  class Impl;
  TabCtrl();

  // Puts `page` at `index`, -1 for the end; not owned.
  void Add(TabPage* page, int index = -1);
  void RemovePage(int index);
  int TabCount() const { return static_cast<int>(pages.size()); }
  TabPage* GetPage(int index) const;
  int IndexOf(const TabPage* page) const;

  WriteProperty<int> selectedIndex;  // -1 while there is no page
  WriteProperty<bool> closable;      // tabs have a close button and answer the middle button
  NotifyEvent onChange;              // value: the page now shown; by the user or by assignment
  NotifyEvent onCloseRequest;        // value: the page whose close button was pressed

 private:
  friend class Impl;
  friend class TabPage;
  std::vector<TabPage*> pages;
};

}  // namespace mavro
