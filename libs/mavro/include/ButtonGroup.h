#pragma once

#include "Core.h"
#include "ItemList.h"

namespace mavro {

// A titled frame with a button for each of its items. The arrow keys go from item to item.
class ButtonGroup : public Container {
 public:
  class Impl;

  // The selection as one number; see itemIndex and itemFlags of the derived classes.
  const int& Selected() const;
  void Select(int selected);

  ItemList items;
  NotifyEvent onChange;  // by the user only, not by assignment; value: the selection

 protected:
  explicit ButtonGroup(Impl* newImpl);
};

// One item of several is chosen.
class RadioGroup : public ButtonGroup {
 public:
  RadioGroup();
  WriteProperty<int> itemIndex;  // -1, or any index without an item, for none
};

// Each item is checked or not.
class CheckGroup : public ButtonGroup {
 public:
  CheckGroup();
  WriteProperty<int> itemFlags;  // bit 0 is for the first item; at most 32 items
};

}  // namespace mavro
