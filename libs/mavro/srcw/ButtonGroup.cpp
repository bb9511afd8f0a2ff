#include "ButtonGroup.h"

#include <climits>

#include "Assert.h"
#include "ItemsImpl.h"
#include "NativeButtons.h"
#include "NativeGroups.h"

namespace mavro {

namespace {

constexpr int cMaxFlags = 32;

// The bits below `index`.
uint32_t LowBits(int index) {
  return index >= cMaxFlags ? ~0U : (1U << index) - 1;
}

}  // namespace

// Mirrors the items to the window; the derived classes know the meaning of `selected`.
class ButtonGroup::Impl : public Container::Impl, public ItemMirror {
 public:
  Impl() { keepTextOnDestroy = true; }

  void Create() override;
  void Destroy() override;
  void OnCommand(int code, Param handle) override;
  // Enter is passed on: it presses the OK button of the form.
  Param OnNotify(NotifyHeader*) override { return 1; }

  void ItemInserted(int index) override;
  void ItemRemoved(int index) override;
  void ItemsCleared() override;

  void SelectedChanged();

  int selected = 0;

 protected:
  ButtonGroup& Group() const { return *static_cast<ButtonGroup*>(owner); }
  // The new value of `selected` after an item is inserted or removed, so that each item keeps its
  // state.
  virtual int AfterInsert(int index) const = 0;
  virtual int AfterRemove(int index) const = 0;
  virtual int Nothing() const = 0;
  virtual int Valid(int wanted) const = 0;
  virtual int MaxItems() const { return INT_MAX; }

 private:
  NativeButtonGroup* Window() const { return static_cast<NativeButtonGroup*>(hwnd); }
  bool destroying = false;
};

namespace {

class RadioImpl final : public ButtonGroup::Impl {
 public:
  RadioImpl() { selected = -1; }
  void PrepareStyle() override { style |= BS_AUTORADIOBUTTON; }

 protected:
  int AfterInsert(int index) const override { return selected < index ? selected : selected + 1; }
  int AfterRemove(int index) const override {
    if (selected == index) return -1;
    return selected < index ? selected : selected - 1;
  }
  int Nothing() const override { return -1; }
  int Valid(int wanted) const override {
    return wanted < 0 || wanted >= Group().items.GetCount() ? -1 : wanted;
  }
};

class CheckImpl final : public ButtonGroup::Impl {
 public:
  void PrepareStyle() override { style |= BS_AUTOCHECKBOX; }

 protected:
  int AfterInsert(int index) const override {
    const auto flags = static_cast<uint32_t>(selected);
    const uint32_t low = LowBits(index);
    return static_cast<int>((flags & low) | ((flags & ~low) << 1));
  }
  int AfterRemove(int index) const override {
    const auto flags = static_cast<uint32_t>(selected);
    const uint32_t low = LowBits(index);
    return static_cast<int>((flags & low) | ((flags >> 1) & ~low));
  }
  int Nothing() const override { return 0; }
  int Valid(int wanted) const override { return wanted; }
  int MaxItems() const override { return cMaxFlags; }
};

}  // namespace

void ButtonGroup::Impl::Create() {
  CreateNative("mavroBtnGroup", cWantsKeys);
  for (int i = 0; i < Group().items.GetCount(); ++i) Window()->InsertItem(i, Group().items[i]);
  SelectedChanged();
}

void ButtonGroup::Impl::Destroy() {
  destroying = true;
  Container::Impl::Destroy();
  destroying = false;
}

void ButtonGroup::Impl::OnCommand(int code, Param handle) {
  if (handle == 0) return SysImpl::OnCommand(code, handle);
  if ((code >> 16) != BN_CLICKED || destroying) return;
  const int now = Window()->SelectedItems();
  if (now == selected) return;
  selected = now;
  FireNotify(Group().onChange, now);
}

// Before the window exists, items and selection may be set in any order: `selected` stays as it is.
void ButtonGroup::Impl::ItemInserted(int index) {
  MAVRO_ASSERT_AS(Group().items.GetCount() <= MaxItems(), "items.GetCount() <= MaxItems()");
  if (!hwnd) return;
  Window()->InsertItem(index, Group().items[index]);
  selected = AfterInsert(index);
  SelectedChanged();
}

void ButtonGroup::Impl::ItemRemoved(int index) {
  if (!hwnd) return;
  Window()->RemoveItem(index);
  selected = AfterRemove(index);
  SelectedChanged();
}

void ButtonGroup::Impl::ItemsCleared() {
  selected = Nothing();
  if (hwnd) Window()->ClearItems();
}

void ButtonGroup::Impl::SelectedChanged() {
  if (!hwnd) return;
  selected = Valid(selected);
  Window()->SelectItems(selected);
}

ButtonGroup::ButtonGroup(Impl* newImpl) : Container(newImpl), items(newImpl) {}

const int& ButtonGroup::Selected() const {
  return static_cast<const Impl*>(impl)->selected;
}

void ButtonGroup::Select(int selected) {
  auto* group = static_cast<Impl*>(impl);
  group->selected = selected;
  group->SelectedChanged();
}

RadioGroup::RadioGroup()
    : ButtonGroup(new RadioImpl),
      itemIndex(impl, static_cast<PropertySetter>(&Impl::SelectedChanged),
                &static_cast<Impl*>(impl)->selected) {}

CheckGroup::CheckGroup()
    : ButtonGroup(new CheckImpl),
      itemFlags(impl, static_cast<PropertySetter>(&Impl::SelectedChanged),
                &static_cast<Impl*>(impl)->selected) {}

}  // namespace mavro
