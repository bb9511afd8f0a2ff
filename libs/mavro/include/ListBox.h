#pragma once

#include "Core.h"
#include "ItemList.h"

namespace mavro {

// A list of texts; one of them is selected.
class ListBox : public Control {
 public:
  class Impl;
  ListBox();

  ItemList items;
  // -1, or any index without an item, for none.
  WriteProperty<int> selectedIndex;
  NotifyEvent onSelChanged;  // by the user only, not by assignment; value: the selected index
};

// A drop-down list of texts.
class ComboBox : public Control {
 public:
  class Impl;
  ComboBox();

  ItemList items;
  WriteProperty<int> selectedIndex;
  WriteProperty<bool> chooseOnly;  // the user can't type any other text
  // By the user only, not by assignment; row and value: the selected index.
  ItemEvent onSelChanged;
  NotifyEvent onChange;  // the user has typed into the text
};

}  // namespace mavro
