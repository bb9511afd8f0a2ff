#pragma once

#include "Core.h"
#include "ItemList.h"

namespace mavro {

// A list of texts of which one is selected.
class ListBox : public Control {
 public:
  class Impl;
  ListBox();

  ItemList items;
  // -1 for none, as any other index that no item has.
  WriteProperty<int> selectedIndex;
  NotifyEvent onSelChanged;  // by the user only, not by assignment; value: the selected index
};

// A closed list of texts that opens on demand.
class ComboBox : public Control {
 public:
  class Impl;
  ComboBox();

  ItemList items;
  WriteProperty<int> selectedIndex;
  WriteProperty<bool> chooseOnly;  // the user may not type a text of his own
  // By the user only, not by assignment; row and value: the selected index.
  ItemEvent onSelChanged;
};

}  // namespace mavro
