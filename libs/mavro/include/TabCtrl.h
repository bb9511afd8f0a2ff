#pragma once

#include <vector>

#include "Core.h"

namespace mavro {

class TabCtrl;

// A page of a tab control; its text is the tab's caption. The tab control shows and hides its
// pages. A page that is destroyed leaves its tab control.
class TabPage : public Panel {
 public:
  class Impl;
  TabPage();
  ~TabPage() override;

  int pageIndex = -1;       // kept by the tab control
  int image = -1;           // picture of its tab; set by TabCtrl::SetPageImage
  TabCtrl* tabs = nullptr;  // the control it stands in; not owned
};

// Pages of which one is shown, chosen by tabs above them.
class TabCtrl : public Control {
 public:
  class Impl;
  TabCtrl();
  ~TabCtrl() override;

  // Puts `page` before the one at `index`, -1 for the end; not owned. The first page is selected;
  // otherwise the selection stays with its page.
  void Add(TabPage* page, int index = -1);
  // Takes a page out and destroys its windows. If it was selected, the next one is, or the last;
  // the caller knows, so that onChange tells nobody.
  void RemovePage(int index);
  int TabCount() const { return static_cast<int>(pages.size()); }
  TabPage* GetPage(int ix) const;
  int IndexOf(const TabPage* page) const;  // -1 if it is none of these
  // Gives a page's tab a picture of the image list, -1 for none. There must be a list.
  void SetPageImage(int ix, int image);
  // Places the page that is shown.
  void Layout() override;

  WriteProperty<int> selectedIndex;  // -1 while there is no page
  WriteProperty<int> imageList;      // strip of the tabs' pictures, by resource id; set once
  // Tabs have a close button and answer the middle button. They stand for what the user has opened:
  // a "&" in their captions is shown, and gives no mnemonic as it does otherwise.
  WriteProperty<bool> closable;
  // The user may put the tabs into another order by dragging them.
  WriteProperty<bool> movable;
  // Value: the page now shown; by the user or by assignment in a control that has a window.
  NotifyEvent onChange;
  NotifyEvent onCloseRequest;  // value: the page whose close button was pressed
  // Row: the place that a dragged page had; value: the one it has now. Told as it passes other
  // tabs; the pages are in the new order already, and the selection has stayed with its page.
  ItemEvent onMovePage;

 private:
  friend class TabPage;
  Impl& TheImpl() const;

  std::vector<TabPage*> pages;
};

}  // namespace mavro
