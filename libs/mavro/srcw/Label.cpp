#include "Label.h"

#include <algorithm>

#include "LabelImpl.h"

namespace mavro {

namespace {

// The control that follows `label` among its siblings, if it takes the keyboard.
Control* NamedBy(Control& label) {
  if (!label.parent) return nullptr;
  const auto& siblings = label.parent->children;
  auto next = std::find(siblings.begin(), siblings.end(), &label);
  if (next == siblings.end() || ++next == siblings.end()) return nullptr;
  return (*next)->impl->hwnd ? *next : nullptr;
}

}  // namespace

void Label::Impl::Create() {
  CreateNative("Static", cWantsKeys);
}

void Label::Impl::PrepareStyle() {
  style &= ~static_cast<uint32_t>(SS_CENTER | SS_RIGHT);
  if (align == Align::cCenter) style |= SS_CENTER;
  if (align == Align::cRight) style |= SS_RIGHT;
}

void Label::Impl::Show(bool on) {
  if (hwnd && on) {
    Control* named = NamedBy(*owner);
    Window()->SetBuddy(named ? named->impl->hwnd : nullptr);
  }
  SysImpl::Show(on);
}

void Label::Impl::AlignChanged() {
  if (hwnd) Window()->SetAlign(align);
}

Label::Label()
    : Control(new Impl),
      align(impl, static_cast<PropertySetter>(&Impl::AlignChanged),
            &static_cast<Impl*>(impl)->align) {
  SetSize(80, 18);
}

}  // namespace mavro
