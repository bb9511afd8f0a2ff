#include "ListBox.h"

#include "ItemsImpl.h"

namespace mavro {

class ListBox::Impl : public ItemsImpl {
 public:
  void Create() override {
    CreateNative("ListBox", cWantsKeys);
    ShowItems();
  }

 protected:
  ItemList& Items() const override { return TheList().items; }
  void OnListCommand(int code) override {
    if (code != LBN_SELCHANGE) return;
    selectedIndex = Window()->SelectedItem();
    FireNotify(TheList().onSelChanged, selectedIndex);
  }

 private:
  ListBox& TheList() const { return *static_cast<ListBox*>(owner); }
};

ListBox::ListBox()
    : Control(new Impl),
      items(impl),
      selectedIndex(impl, static_cast<PropertySetter>(&ItemsImpl::SelectedIndexChanged),
                    &static_cast<Impl*>(impl)->selectedIndex) {
  SetSize(120, 100);
}

}  // namespace mavro
