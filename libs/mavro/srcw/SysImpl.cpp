#include "SysImpl.h"

#include "Assert.h"
#include "DataLink.h"
#include "Graphics.h"

namespace mavro {

namespace {

constexpr uint32_t cControlStyle = 0x44000000;    // WS_CHILD | WS_CLIPSIBLINGS
constexpr uint32_t cContainerStyle = 0x46000000;  // and WS_CLIPCHILDREN
constexpr uint32_t cContainerExStyle = 0x10000;   // WS_EX_CONTROLPARENT

struct ColorRow {
  std::string_view className;
  unsigned message;
};

constexpr ColorRow cColorRows[] = {{"Edit", WM_CTLCOLOREDIT},
                                   {"ListBox", WM_CTLCOLORLISTBOX},
                                   {"ComboBox", WM_CTLCOLORLISTBOX},
                                   {"Button", WM_CTLCOLORBTN}};

// The message by which a window of a class asks for its colours.
unsigned ColorMessage(std::string_view className) {
  for (const ColorRow& row : cColorRows)
    if (row.className == className) return row.message;
  return WM_CTLCOLORSTATIC;
}

}  // namespace

void CallSetter(SysImpl* target, PropertySetter setter) {
  (target->*setter)();
}

TextProperty& TextProperty::operator=(const std::string& wanted) {
  if (target)
    target->SetText(wanted);
  else
    shown = wanted;
  return *this;
}

std::string TextProperty::Get() const {
  return target ? target->GetText() : shown;
}

// Nothing moves in memory while the text stays the same.
const std::string& TextProperty::Read() const {
  const std::string now = Get();
  if (shown != now) shown = now;
  return shown;
}

SysImpl::SysImpl(Type itsType)
    : type(itsType),
      style(itsType == cControl ? cControlStyle : cContainerStyle),
      exStyle(itsType == cControl ? 0 : cContainerExStyle),
      eraseBackground(itsType != cControl) {}

SysImpl::~SysImpl() = default;

void SysImpl::AfterCreate() {}

void SysImpl::PrepareStyle() {}

void SysImpl::OnDrawItem() {}

Rect& SysImpl::OwnerBounds() const {
  return owner->bounds;
}

void SysImpl::CreateNative(std::string_view className, int flags) {
  if (dataLink) dataLink->Load();
  if ((flags & cWantsKeys) && (owner->onKeyDown.HasHandlers() || owner->onKeyUp.HasHandlers()))
    subclass = true;
  PrepareStyle();
  const bool shows = visible && owner->parent && owner->parent->state == cShown;
  style = shows ? style | WS_VISIBLE : style & ~WS_VISIBLE;
  owner->state = shows ? cShown : cHidden;
  CreateInfo info;
  info.className = className;
  info.style = style;
  info.exStyle = exStyle;
  info.id = owner->id;
  info.bounds = owner->bounds;
  info.parent = owner->parent ? owner->parent->impl->hwnd : nullptr;
  info.control = owner;
  hwnd = MakeNativeWindow(info);
  MAVRO_ASSERT(hwnd);
  if (!text.empty()) hwnd->SetText(text);
  if (!font.IsDefault()) hwnd->SetFont(font);
  if (borderStyle != BorderStyle::cNone) hwnd->SetBorder(borderStyle);
  if (!foreColor.IsDefault() || !backColor.IsDefault()) ShowColors();
  if (cursor != Cursor::cDefault) hwnd->SetCursor(cursor);
  if (!enabled) hwnd->Enable(false);
  if (shows) hwnd->Show(true);
  const Rect real = hwnd->Bounds();
  owner->bounds.width = real.width;
  owner->bounds.height = real.height;
  WndProc(WM_CREATED, 2, 0);
}

void SysImpl::Destroy() {
  if (!hwnd) return;
  if (type != cForm) hwnd->Show(false);
  for (Control* child : owner->children) child->impl->Destroy();
  if (!hwnd) return;
  if (keepTextOnDestroy) text = hwnd->Text();
  DestroyNativeWindow(hwnd);
  owner->state = cNoWindow;
}

// A window shown inside a hidden container becomes visible together with the container. Children
// are shown and hidden with their container; a handler may have hidden it again, or destroyed it.
void SysImpl::Show(bool on) {
  if (!hwnd) return;
  hwnd->Show(on && visible);
  const bool parentShows = !owner->parent || owner->parent->state == cShown;
  const int wanted = on && visible && parentShows ? cShown : cHidden;
  if (owner->state == wanted) return;
  const bool tells = wanted == cShown || owner->state == cShown;
  owner->state = wanted;
  const NativeWindow* window = hwnd;
  if (tells && !FireNotify(owner->onVisible, wanted == cShown)) return;
  for (size_t i = 0; IsWindow(window) && i < owner->children.size();) {
    Control* child = owner->children[i];
    child->impl->Show(child->visible);
    if (IsWindow(window) && i < owner->children.size() && owner->children[i] == child) ++i;
  }
}

std::string SysImpl::GetText() const {
  return hwnd && textIsLive ? hwnd->Text() : text;
}

void SysImpl::SetText(const std::string& newText) {
  if (GetText() == newText) return;
  text = newText;
  if (hwnd) hwnd->SetText(newText);
}

void SysImpl::BoundsChanged() {
  if (!hwnd) return;
  const Rect old = hwnd->Bounds();
  if (old.width != owner->bounds.width || old.height != owner->bounds.height)
    owner->layoutPending = true;
  hwnd->Move(owner->bounds);
}

void SysImpl::EnabledChanged() {
  if (hwnd) hwnd->Enable(enabled);
}

// A child that becomes visible in a shown parent gets its window shown, with its children. Its
// siblings close up or make room when the parent's layout next runs.
void SysImpl::VisibleChanged() {
  if (owner->parent) owner->parent->layoutPending = true;
  if (!hwnd) return;
  if (visible) SetStateTree(owner, cMarkLayout);
  Show(visible);
}

void SysImpl::ColorsChanged() {
  backgroundBrush.reset();
  if (hwnd) ShowColors();
}

void SysImpl::ShowColors() {
  if (type != cControl) return hwnd->SetColors(foreColor, backColor);
  PaintColors colors;
  const Param brush =
      hwnd->parent ? SendMessage(hwnd->parent, ColorMessage(hwnd->className),
                                 reinterpret_cast<Param>(&colors), reinterpret_cast<Param>(hwnd))
                   : 0;
  const bool paintsGround = brush != 0 && !colors.transparent;
  hwnd->SetColors(colors.text,
                  paintsGround ? reinterpret_cast<const Brush*>(brush)->color : Color());
}

void SysImpl::FontChanged() {
  if (hwnd) hwnd->SetFont(font);
}

void SysImpl::CursorChanged() {
  if (hwnd) hwnd->SetCursor(cursor);
}

// The children keep their places inside the border.
void SysImpl::BorderChanged() {
  if (!hwnd) return;
  hwnd->SetBorder(borderStyle);
  for (Control* child : owner->children) child->impl->BoundsChanged();
  owner->layoutPending = true;
}

void SysImpl::HintChanged() {
  if (hwnd) hwnd->SetHint(hint);
}

// Without a name of its own the control is called by its hint again.
void SysImpl::AccessibleNameChanged() {
  if (!hwnd) return;
  hwnd->SetAccessibleName(accessibleName);
  if (accessibleName.empty() && !hint.empty()) hwnd->SetHint(hint);
}

Rect SysImpl::ClientRect() const {
  if (!hwnd) return owner->bounds;
  return hwnd->DockArea();
}

bool SysImpl::FireNotify(NotifyEvent& event, int value) {
  NotifyArgs args{owner, value};
  return event.Fire(args);
}

Control* FocusedIn(Control& control) {
  if (control.IsFocused()) return &control;
  for (Control* child : control.children)
    if (Control* focused = FocusedIn(*child)) return focused;
  return nullptr;
}

}  // namespace mavro
