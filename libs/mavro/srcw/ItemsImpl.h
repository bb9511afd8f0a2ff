#pragma once

#include "ItemList.h"
#include "NativeLists.h"
#include "SysImpl.h"

namespace mavro {

// Receives the changes of an ItemList; the platform half of its control derives from it.
class ItemMirror {
 public:
  virtual ~ItemMirror() = default;
  virtual void ItemInserted(int index) = 0;
  virtual void ItemRemoved(int index) = 0;
  virtual void ItemsCleared() = 0;
};

// The platform half of controls that show a list of texts of which one is selected.
class ItemsImpl : public SysImpl, public ItemMirror {
 public:
  void Destroy() override;
  void OnCommand(int code, Param handle) override;
  // Enter is passed on: it presses the OK button of the form.
  Param OnNotify(NotifyHeader* header) override;

  void ItemInserted(int index) override;
  void ItemRemoved(int index) override;
  void ItemsCleared() override;

  virtual void SelectedIndexChanged();

  int selectedIndex = -1;

 protected:
  virtual ItemList& Items() const = 0;
  // Handles a notification code of the window.
  virtual void OnListCommand(int code) = 0;
  // Copies items and selection to the new window.
  void ShowItems();
  NativeItems* Window() const { return static_cast<NativeItems*>(hwnd); }

 private:
  bool destroying = false;
};

}  // namespace mavro
