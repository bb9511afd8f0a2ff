#pragma once

#include "Core.h"
#include "ItemList.h"

namespace mavro {

// A titled frame with a button for each of its items. The arrow keys go from item to item.
class ButtonGroup : public Container {
 public:
  class Impl;

  // What is selected, as one number: see the sons.
  const int& Selected() const;
  void Select(int selected);

  ItemList items;
  NotifyEvent onChange;  // by the user only, not by assignment; value: what is selected now

 protected:
  explicit ButtonGroup(Impl* newImpl);
};

// One item of several is chosen.
class RadioGroup : public ButtonGroup {
 public:
  RadioGroup();
  WriteProperty<int> itemIndex;  // -1 for none, as any other index that no item has
};

// Each item is checked or not.
class CheckGroup : public ButtonGroup {
 public:
  CheckGroup();
  WriteProperty<int> itemFlags;  // bit 0 stands for the first item; there are at most 32
};

}  // namespace mavro
