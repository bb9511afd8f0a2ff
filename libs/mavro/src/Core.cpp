#include "Core.h"

#include <algorithm>

#include "Assert.h"
#include "MoveElement.h"
#include "SysImpl.h"

namespace mavro {

namespace {

// Sets the ids of the children from index `from` on. A child with a window gets the bare index,
// without the route tag: its commands then reach the parent itself, and it loses its colours.
void Renumber(Control& parent, int from) {
  for (int i = from; i < static_cast<int>(parent.children.size()); ++i) {
    Control* child = parent.children[static_cast<size_t>(i)];
    child->id = i | cChildRoute;
    if (!child->impl->hwnd) continue;
    child->impl->hwnd->id = i;
    const SysImpl& its = *child->impl;
    if (!its.foreColor.IsDefault() || !its.backColor.IsDefault()) child->impl->ShowColors();
  }
}

}  // namespace

Control::Control(SysImpl* newImpl)
    : impl(newImpl),
      text(impl),
      enabled(impl, &SysImpl::EnabledChanged, &impl->enabled),
      visible(impl, &SysImpl::VisibleChanged, &impl->visible),
      left(impl, &SysImpl::BoundsChanged, &bounds.left),
      top(impl, &SysImpl::BoundsChanged, &bounds.top),
      width(impl, &SysImpl::BoundsChanged, &bounds.width),
      height(impl, &SysImpl::BoundsChanged, &bounds.height),
      cursor(impl, &SysImpl::CursorChanged, &impl->cursor),
      foreColor(impl, &SysImpl::ColorsChanged, &impl->foreColor),
      backColor(impl, &SysImpl::ColorsChanged, &impl->backColor),
      font(impl, &SysImpl::FontChanged, &impl->font),
      borderStyle(impl, &SysImpl::BorderChanged, &impl->borderStyle),
      hint(impl, &SysImpl::HintChanged, &impl->hint),
      toolTip(impl, &SysImpl::HintChanged, &impl->hint),
      accessibleName(impl, &SysImpl::AccessibleNameChanged, &impl->accessibleName),
      dataLink(*this) {
  impl->owner = this;
}

Control::~Control() {
  if (parent) {
    const auto found = std::find(parent->children.begin(), parent->children.end(), this);
    RemoveChild(*parent, static_cast<int>(found - parent->children.begin()));
  }
  if (impl->hwnd) impl->Destroy();
  for (Control* child : children) child->parent = nullptr;
  delete impl;
}

std::pair<int, int> Control::GetSizeHint() const {
  return sizeHint;
}

void Control::Layout() {}

void Control::CreateControl() {
  impl->Create();
  for (size_t i = 0; i < children.size(); ++i) children[i]->CreateControl();
  impl->AfterCreate();
  if (!hint.empty()) impl->HintChanged();
  if (!accessibleName.empty()) impl->AccessibleNameChanged();
  NotifyArgs args{this, 0};
  onCreate.Fire(args);
}

Color Control::InheritedForeColor() const {
  if (!foreColor.Get().IsDefault()) return foreColor;
  return parent ? parent->InheritedForeColor() : Color(Color::cControlText);
}

Color Control::InheritedBackColor() const {
  if (!backColor.Get().IsDefault()) return backColor;
  return parent ? parent->InheritedBackColor() : Color(Color::cControl);
}

void Control::SetBounds(int newLeft, int newTop, int newWidth, int newHeight) {
  const Rect old = bounds;
  bounds = {newLeft, newTop, newWidth, newHeight == -1 ? old.height : newHeight};
  if (bounds.width != old.width || bounds.height != old.height) layoutPending = true;
  impl->BoundsChanged();
}

void Control::SetLocation(int newLeft, int newTop) {
  SetBounds(newLeft, newTop, bounds.width, bounds.height);
}

void Control::SetSize(int newWidth, int newHeight) {
  SetBounds(bounds.left, bounds.top, newWidth, newHeight);
}

void Control::Focus() {
  if (impl->hwnd) impl->hwnd->Focus();
}

bool Control::IsFocused() const {
  return impl->hwnd && impl->hwnd->HasFocus();
}

void Control::Update() {
  if (impl->hwnd) impl->hwnd->Update();
}

void Control::Invalidate() {
  if (impl->hwnd) impl->hwnd->Invalidate();
}

void Container::Insert(Control* ctrl, int index) {
  InsertChild(*this, ctrl, index);
}

void Container::Remove(int index) {
  RemoveChild(*this, index);
}

void Container::Remove(Control* comp) {
  MAVRO_ASSERT_AS(comp, "comp != NULL");
  const auto found = std::find(children.begin(), children.end(), comp);
  if (found != children.end()) Remove(static_cast<int>(found - children.begin()));
}

void Container::RenewRoutes() {
  for (Control* child : children) {
    SysImpl& its = *child->impl;
    if (!its.hwnd || its.hwnd->id == child->id) continue;
    its.hwnd->id = child->id;
    if (!its.foreColor.IsDefault() || !its.backColor.IsDefault()) its.ShowColors();
  }
}

void InsertChild(Control& parent, Control* ctrl, int index) {
  const auto GetControlCount = [&parent] { return static_cast<int>(parent.children.size()); };
  MAVRO_ASSERT_AS(ctrl->parent == nullptr, "ctrl->parent==NULL");
  MAVRO_ASSERT(index >= -1 && index <= GetControlCount());
  const int place = index == -1 ? GetControlCount() : index;
  ctrl->parent = &parent;
  parent.children.insert(parent.children.begin() + place, ctrl);
  ctrl->id = place | cChildRoute;
  Renumber(parent, place + 1);
  parent.layoutPending = true;
  if (!parent.impl->hwnd) return;
  ctrl->CreateControl();
  if (ctrl->dock != Dock::cNone && parent.state == cShown) RunPendingLayout(&parent);
}

void RemoveChild(Control& parent, int index) {
  const auto GetControlCount = [&parent] { return static_cast<int>(parent.children.size()); };
  MAVRO_ASSERT(index >= 0 && index < GetControlCount());
  Control* child = parent.children[static_cast<size_t>(index)];
  if (child->impl->hwnd) child->impl->Destroy();
  child->parent = nullptr;
  parent.children.erase(parent.children.begin() + index);
  Renumber(parent, index);
  parent.layoutPending = true;
}

// Unlike the renumbering after an insert or a remove, a move lets each child keep its route and so
// its colours.
void MoveChild(Control& parent, int from, int to) {
  const int count = static_cast<int>(parent.children.size());
  MAVRO_ASSERT_AS(from >= 0 && from < count && to >= 0 && to < count,
                  "index >= 0 && index < GetControlCount()");
  MoveElement(parent.children, from, to);
  for (int i = std::min(from, to); i <= std::max(from, to); ++i) {
    Control* child = parent.children[static_cast<size_t>(i)];
    child->id = i | cChildRoute;
    if (NativeWindow* window = child->impl->hwnd) window->id = (window->id & cRouteMask) | i;
  }
}

Panel::Panel() : Panel(new Container::Impl) {
  impl->textIsLive = false;
}

}  // namespace mavro
