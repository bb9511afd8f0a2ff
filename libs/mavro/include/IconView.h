#pragma once

#include <string>
#include <vector>

#include "Core.h"

namespace mavro {

// A view of pictures with a text below each; one of them is selected.
class IconView : public Control {
 public:
  class Impl;
  // A picture and its text.
  struct Item {
    std::string text;
    int image = -1;  // index in the strip, -1 for none
  };
  IconView();

  // Appends an item and returns its index.
  int Add(const std::string& itemText, int image);
  void Remove(int index);
  void Clear();
  int GetCount() const { return static_cast<int>(items.size()); }
  const Item& GetItem(int index) const;

  WriteProperty<int> imageList;      // strip of the pictures, by resource id; 0 for none
  WriteProperty<int> selectedIndex;  // -1, or any index without an item, for none
  NotifyEvent onChangeSel;           // by the user only, not by assignment; value: the index
  NotifyEvent onChoose;              // double click or Enter on an item; value: the index

 private:
  std::vector<Item> items;
};

}  // namespace mavro
