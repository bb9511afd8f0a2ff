#include "ItemsImpl.h"
#include "ListBox.h"

namespace mavro {

class ComboBox::Impl : public ItemsImpl {
 public:
  Impl() { keepTextOnDestroy = true; }

  void Create() override {
    CreateNative("ComboBox", cWantsKeys);
    ShowItems();
  }

  void PrepareStyle() override {
    style = (style & ~static_cast<uint32_t>(CBS_DROPDOWNLIST)) |
            (chooseOnly ? CBS_DROPDOWNLIST : CBS_DROPDOWN);
  }

  // The text is that of the selected item, even before the window exists.
  void SelectedIndexChanged() override {
    if (!hwnd && selectedIndex >= 0 && selectedIndex < Items().GetCount())
      text = Items()[selectedIndex];
    ItemsImpl::SelectedIndexChanged();
  }

  void ChooseOnlyChanged() {
    if (hwnd) static_cast<NativeComboBox*>(hwnd)->SetChooseOnly(chooseOnly);
  }

  bool chooseOnly = false;

 protected:
  ItemList& Items() const override { return TheBox().items; }
  void OnListCommand(int code) override {
    if (code == LBN_SELCHANGE) {
      selectedIndex = Window()->SelectedItem();
      ItemArgs args{owner, selectedIndex, selectedIndex, -1, GetText()};
      TheBox().onSelChanged.Fire(args);
    } else if (code == CBN_EDITCHANGE) {
      selectedIndex = -1;
      FireNotify(TheBox().onChange, 0);
    }
  }

 private:
  ComboBox& TheBox() const { return *static_cast<ComboBox*>(owner); }
};

ComboBox::ComboBox()
    : Control(new Impl),
      items(impl),
      selectedIndex(impl, static_cast<PropertySetter>(&ItemsImpl::SelectedIndexChanged),
                    &static_cast<Impl*>(impl)->selectedIndex),
      chooseOnly(impl, static_cast<PropertySetter>(&Impl::ChooseOnlyChanged),
                 &static_cast<Impl*>(impl)->chooseOnly) {
  SetSize(100, 24);
}

}  // namespace mavro
