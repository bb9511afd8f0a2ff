#include "Edit.h"

#include "EditImpl.h"
#include "EditText.h"

namespace mavro {

namespace {

struct TypeStyle {
  int dataType;
  uint32_t style;
};

constexpr TypeStyle cTypeStyles[] = {{Edit::cUpperCase, ES_UPPERCASE},
                                     {Edit::cPassword, ES_PASSWORD}};

}  // namespace

Edit::Impl::Impl() {
  keepTextOnDestroy = true;
}

void Edit::Impl::Create() {
  CreateNative("Edit", cWantsKeys);
  if (borderStyle == BorderStyle::cNone) Window()->SetBorder(borderStyle);
  Window()->SetReadOnly(readOnly);
  Window()->SetDataType(dataType);
}

void Edit::Impl::Destroy() {
  destroying = true;
  SysImpl::Destroy();
  destroying = false;
  edited = false;
}

void Edit::Impl::PrepareStyle() {
  style &= ~static_cast<uint32_t>(ES_READONLY | ES_UPPERCASE | ES_PASSWORD);
  if (readOnly) style |= ES_READONLY;
  for (const TypeStyle& row : cTypeStyles)
    if (row.dataType == dataType) style |= row.style;
}

void Edit::Impl::OnCommand(int code, Param handle) {
  if (handle == 0)
    SysImpl::OnCommand(code, handle);
  else if (!destroying)
    OnEditCommand(code >> 16);
}

void Edit::Impl::OnEditCommand(int code) {
  if (code != EN_CHANGE) return;
  edited = true;
  FireNotify(static_cast<Edit*>(owner)->onChange);
}

Param Edit::Impl::OnNotify(NotifyHeader*) {
  return Commit() ? 1 : 0;
}

Param Edit::Impl::WndProc(unsigned message, Param wParam, Param lParam) {
  if (message == WM_KILLFOCUS && !destroying && !Commit()) return 0;
  return SysImpl::WndProc(message, wParam, lParam);
}

bool Edit::Impl::Commit() {
  ItemArgs args;
  return !edited || FireValidate(args);
}

bool Edit::Impl::Valid() {
  ItemArgs args;
  return FireValidate(args) && args.value != 0;
}

bool Edit::Impl::FireValidate(ItemArgs& args) {
  edited = false;
  args.sender = owner;
  args.text = GetText();
  args.value = CheckText(dataType, args.text) == TextFit::cWhole;
  return static_cast<Edit*>(owner)->onValidate.Fire(args);
}

void Edit::Impl::DataTypeChanged() {
  if (hwnd) Window()->SetDataType(dataType);
}

void Edit::Impl::ReadOnlyChanged() {
  if (hwnd) Window()->SetReadOnly(readOnly);
}

void Edit::Impl::SelectAll() {
  if (hwnd) Window()->SelectAll();
}

Edit::Edit() : Edit(new Impl) {
  impl->borderStyle = BorderStyle::cFixed3d;
  SetSize(80, 24);
}

Edit::Edit(SysImpl* newImpl)
    : Control(newImpl),
      dataType(impl, static_cast<PropertySetter>(&Impl::DataTypeChanged),
               &static_cast<Impl*>(impl)->dataType),
      readOnly(impl, static_cast<PropertySetter>(&Impl::ReadOnlyChanged),
               &static_cast<Impl*>(impl)->readOnly) {}

void Edit::SelectAll() {
  static_cast<Impl*>(impl)->SelectAll();
}

bool Edit::Valid() {
  return static_cast<Impl*>(impl)->Valid();
}

}  // namespace mavro
