#include "GroupBox.h"

#include "SysImpl.h"

namespace mavro {

class GroupBox::Impl : public Container::Impl {
 public:
  Impl() { keepTextOnDestroy = true; }
  void Create() override { CreateNative("Button", cWantsKeys); }
  void PrepareStyle() override { style |= BS_GROUPBOX; }
};

GroupBox::GroupBox() : Container(new Impl) {}

}  // namespace mavro
