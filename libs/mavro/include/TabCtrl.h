#pragma once

#include <vector>

#include "Core.h"

namespace mavro {

class TabCtrl;

// A page of a tab control; its text is the tab's caption. The tab control shows and hides its
// pages. The destructor removes the page from its tab control.
class TabPage : public Panel {
 public:
  class Impl;
  TabPage();
  ~TabPage() override;

  int pageIndex = -1;       // kept by the tab control
  int image = -1;           // picture of its tab; set by TabCtrl::SetPageImage
  TabCtrl* tabs = nullptr;  // the control that contains it; not owned
};

// A stack of pages with tabs above them; the user chooses the page that is shown.
class TabCtrl : public Control {
 public:
  class Impl;
  TabCtrl();
  ~TabCtrl() override;

  // Inserts `page` before the one at `index`, -1 for the end; not owned. The first page that is
  // added is selected; after that the same page stays selected.
  void Add(TabPage* page, int index = -1);
  // Takes a page out and destroys its windows. If it was selected, the next page is selected, or
  // the last one; onChange is not fired, since the caller knows about it.
  void RemovePage(int index);
  int TabCount() const { return static_cast<int>(pages.size()); }
  TabPage* GetPage(int ix) const;
  int IndexOf(const TabPage* page) const;  // -1 if it isn't in the control
  // Sets the picture of a page's tab, an index in the image list, -1 for none. There must be a
  // list.
  void SetPageImage(int ix, int image);
  // The page whose tab is at a point of the control, -1 for none and without a window.
  int TabAt(int x, int y) const;
  // Places the visible page.
  void Layout() override;

  WriteProperty<int> selectedIndex;  // -1 while there is no page
  WriteProperty<int> imageList;      // strip of the tabs' pictures, by resource id; set once
  // Tabs have a close button, and a middle click requests a close too. Such tabs are for documents:
  // a "&" in their captions is shown as it is, while in other tabs it sets a mnemonic.
  WriteProperty<bool> closable;
  // The user can reorder the tabs by dragging them.
  WriteProperty<bool> movable;
  // Another page is shown, by the user or by assignment in a control that has a window; value: the
  // page.
  NotifyEvent onChange;
  NotifyEvent onCloseRequest;  // value: the page whose close button was pressed
  // Row: the old index of a dragged page; value: its new index. Fired each time it passes other
  // tabs; the pages are already in the new order, and the same page is still selected.
  ItemEvent onMovePage;

 private:
  friend class TabPage;
  Impl& TheImpl() const;

  std::vector<TabPage*> pages;
};

}  // namespace mavro
