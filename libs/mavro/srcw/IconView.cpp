#include "IconView.h"

#include "Assert.h"
#include "NativeIcons.h"
#include "SysImpl.h"

namespace mavro {

class IconView::Impl : public SysImpl {
 public:
  void Create() override;
  void Destroy() override;
  void PrepareStyle() override { style &= ~static_cast<uint32_t>(LVS_REPORT); }
  void OnCommand(int code, Param handle) override;
  // Enter that chooses no item presses the OK button.
  Param OnNotify(NotifyHeader*) override { return 1; }

  NativeIconView* Window() const { return static_cast<NativeIconView*>(hwnd); }
  void ImageListChanged();
  void SelectedIndexChanged();
  void ItemRemoved(int index);

  int imageList = 0;
  int selectedIndex = -1;

 private:
  IconView& View() const { return *static_cast<IconView*>(owner); }
  bool destroying = false;
};

void IconView::Impl::Create() {
  CreateNative("SysListView32", cWantsKeys);
  Window()->SetStrip(imageList);
  for (int i = 0; i < View().GetCount(); ++i) {
    const Item& item = View().GetItem(i);
    Window()->AddItem(item.text, item.image);
  }
  if (selectedIndex != -1) SelectedIndexChanged();
}

void IconView::Impl::Destroy() {
  destroying = true;
  SysImpl::Destroy();
  destroying = false;
}

void IconView::Impl::OnCommand(int code, Param handle) {
  if (handle == 0) return SysImpl::OnCommand(code, handle);
  if (destroying) return;
  if ((code >> 16) == IVN_CHOSEN) {
    FireNotify(View().onChoose, selectedIndex);
    return;
  }
  selectedIndex = Window()->SelectedItem();
  FireNotify(View().onChangeSel, selectedIndex);
}

void IconView::Impl::ImageListChanged() {
  if (hwnd) Window()->SetStrip(imageList);
}

void IconView::Impl::SelectedIndexChanged() {
  if (!hwnd) return;
  if (selectedIndex < -1 || selectedIndex >= View().GetCount()) selectedIndex = -1;
  Window()->SelectItem(selectedIndex);
}

// The selected item stays selected if others are removed.
void IconView::Impl::ItemRemoved(int index) {
  if (!hwnd) return;
  Window()->RemoveItem(index);
  if (selectedIndex >= index) selectedIndex = selectedIndex == index ? -1 : selectedIndex - 1;
  Window()->SelectItem(selectedIndex);
}

IconView::IconView()
    : Control(new Impl),
      imageList(impl, static_cast<PropertySetter>(&Impl::ImageListChanged),
                &static_cast<Impl*>(impl)->imageList),
      selectedIndex(impl, static_cast<PropertySetter>(&Impl::SelectedIndexChanged),
                    &static_cast<Impl*>(impl)->selectedIndex) {
  impl->textIsLive = false;
}

int IconView::Add(const std::string& itemText, int image) {
  items.push_back({itemText, image});
  if (impl->hwnd) static_cast<Impl*>(impl)->Window()->AddItem(itemText, image);
  return GetCount() - 1;
}

void IconView::Remove(int index) {
  MAVRO_ASSERT(index >= 0 && index < GetCount());
  items.erase(items.begin() + index);
  static_cast<Impl*>(impl)->ItemRemoved(index);
}

void IconView::Clear() {
  items.clear();
  static_cast<Impl*>(impl)->selectedIndex = -1;
  if (impl->hwnd) static_cast<Impl*>(impl)->Window()->ClearItems();
}

const IconView::Item& IconView::GetItem(int index) const {
  MAVRO_ASSERT(index >= 0 && index < GetCount());
  return items[static_cast<size_t>(index)];
}

}  // namespace mavro
