#include "ItemsImpl.h"

#include <algorithm>

#include "Assert.h"

namespace mavro {

namespace {

ItemMirror& MirrorOf(SysImpl* target) {
  return *dynamic_cast<ItemMirror*>(target);
}

}  // namespace

void ItemList::Insert(const std::string& item, int index) {
  MAVRO_ASSERT(index >= -1 && index <= GetCount());
  const int place = index == -1 ? GetCount() : index;
  items.insert(items.begin() + place, item);
  MirrorOf(target).ItemInserted(place);
}

void ItemList::Remove(int index) {
  MAVRO_ASSERT(index >= 0 && index < GetCount());
  items.erase(items.begin() + index);
  MirrorOf(target).ItemRemoved(index);
}

void ItemList::Clear() {
  items.clear();
  MirrorOf(target).ItemsCleared();
}

const std::string& ItemList::operator[](int index) const {
  MAVRO_ASSERT(index >= 0 && index < GetCount());
  return items[static_cast<size_t>(index)];
}

int ItemList::IndexOf(const std::string& item) const {
  const auto found = std::find(items.begin(), items.end(), item);
  return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

void ItemsImpl::Destroy() {
  destroying = true;
  SysImpl::Destroy();
  destroying = false;
}

void ItemsImpl::OnCommand(int code, Param handle) {
  if (handle == 0)
    SysImpl::OnCommand(code, handle);
  else if (!destroying)
    OnListCommand(code >> 16);
}

Param ItemsImpl::OnNotify(NotifyHeader*) {
  return 1;
}

// The selected item stays selected if others are inserted before it or removed.
void ItemsImpl::ItemInserted(int index) {
  if (hwnd) Window()->InsertItem(index, Items()[index]);
  if (!hwnd || selectedIndex < index) return;
  Window()->SelectItem(++selectedIndex);
}

void ItemsImpl::ItemRemoved(int index) {
  if (hwnd) Window()->RemoveItem(index);
  if (!hwnd || selectedIndex < index) return;
  selectedIndex = selectedIndex == index ? -1 : selectedIndex - 1;
  Window()->SelectItem(selectedIndex);
}

void ItemsImpl::ItemsCleared() {
  selectedIndex = -1;
  if (hwnd) Window()->ClearItems();
}

// An index without an item selects none.
void ItemsImpl::SelectedIndexChanged() {
  if (!hwnd) return;
  if (selectedIndex < -1 || selectedIndex >= Items().GetCount()) selectedIndex = -1;
  Window()->SelectItem(selectedIndex);
}

void ItemsImpl::ShowItems() {
  for (int i = 0; i < Items().GetCount(); ++i) Window()->InsertItem(i, Items()[i]);
  if (selectedIndex != -1) SelectedIndexChanged();
}

}  // namespace mavro
