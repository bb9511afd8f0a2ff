#pragma once

#include <string>
#include <vector>

namespace mavro {

class SysImpl;

// The texts of a list or combo box. They are kept here before the window exists and mirrored to it
// afterwards.
class ItemList {
 public:
  explicit ItemList(SysImpl* impl) : target(impl) {}
  ItemList(const ItemList&) = delete;
  ItemList& operator=(const ItemList&) = delete;

  // An index must be that of an existing item.
  void Add(const std::string& item) { Insert(item, -1); }
  void Insert(const std::string& item, int index);  // -1: at the end
  void Remove(int index);
  void Clear();
  int GetCount() const { return static_cast<int>(items.size()); }
  const std::string& operator[](int index) const;
  int IndexOf(const std::string& item) const;  // -1 if absent

 private:
  SysImpl* target;
  std::vector<std::string> items;
};

}  // namespace mavro
