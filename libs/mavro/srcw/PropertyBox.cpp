#include "PropertyBox.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "Assert.h"
#include "Graphics.h"
#include "SysImpl.h"
#include "Virtual.h"

namespace mavro {

namespace {

constexpr int cRowGap = 2;
constexpr int cTitleLeft = 4;
constexpr int cTitleTop = 4;
constexpr int cEdgeWidth = 6;  // the part between title and editor that can be dragged
constexpr int cLeastColumn = 30;
constexpr int cLeastEditor = 50;
constexpr int cDoubleClickTime = 450;  // milliseconds; a little longer than desktops wait

}  // namespace

PopertyItem::PopertyItem() : editors{&edit, &button, &combo, &check} {
  title.text = "Item";
  title.cursor = Cursor::cArrow;
  title.onMouseDown.Add_H(this, &PopertyItem::OnTitle);
  Add(&title);
  combo.chooseOnly = true;
  button.text = "...";
  button.cursor = combo.cursor = check.cursor = Cursor::cArrow;
  edit.impl->ownKeys = cOwnEnter | cOwnArrows;
  for (Control* editor : {editors[cButton], editors[cCombo], editors[cCheck]})
    editor->impl->ownKeys = cOwnArrows;
  combo.impl->ownKeys |= cOwnEnter;
  edit.onChange.Add_H(this, &PopertyItem::OnTyped);
  edit.onKeyDown.Add_H(this, &PopertyItem::OnEditKey);
  edit.onLostFocus.Add_H(this, &PopertyItem::OnLeft);
  button.onMouseDown.Add_H(this, &PopertyItem::OnButtonPressed);
  button.onClick.Add_H(this, &PopertyItem::OnClicked);
  button.onDblClick.Add_H(this, &PopertyItem::OnDoubleClicked);
  check.onClick.Add_H(this, &PopertyItem::OnClicked);
  combo.onSelChanged.Add_H(this, &PopertyItem::OnChosen);
  for (Control* editor : {editors[cButton], editors[cCombo], editors[cCheck]})
    editor->onKeyDown.Add_H(this, &PopertyItem::OnArrow);
  onMouseDown.Add_H(this, &PopertyItem::OnEdge);
  onMouseMove.Add_H(this, &PopertyItem::OnEdge);
  onMouseUp.Add_H(this, &PopertyItem::OnEdge);
}

// The editors go before the row's window does.
PopertyItem::~PopertyItem() {
  if (impl->hwnd) impl->Destroy();
}

PropertyBox& PopertyItem::Box() const {
  return *static_cast<PropertyBox*>(parent);
}

// An editor that gets its window late finds its place by the next layout.
void PopertyItem::Enliven(Control& editor) {
  if (editor.parent) return;
  editor.visible = false;
  editor.accessibleName = title.text;
  Add(&editor);
}

void PopertyItem::SetMode(int newMode) {
  MAVRO_ASSERT(newMode >= cEdit && newMode <= cCheck);
  if (newMode == mode) return;
  ForgetTyping();
  if (Control* before = Active()) before->visible = false;
  mode = newMode;
  Enliven(*Active());
  Layout();
  Active()->visible = true;
}

void PopertyItem::SetOptions(const char* list) {
  options = list;
  combo.items.Clear();
  std::string_view rest = list;
  while (!rest.empty()) {
    const size_t end = std::min(rest.find('|'), rest.size());
    combo.items.Add(std::string(rest.substr(0, end)));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
}

void PopertyItem::SetTitle(const std::string& newTitle) {
  if (title.text == newTitle) return;
  title.text = newTitle;
  titleWidth = 0;
  for (Control* editor : editors)
    if (editor->parent) editor->accessibleName = newTitle;
}

void PopertyItem::SetValue(const std::string& value) {
  kept = value;
  ForgetTyping();
  if (mode == cEdit) edit.text = value;
  if (mode == cButton) button.text = value;
  if (mode == cCombo) combo.selectedIndex = combo.items.IndexOf(value);
  if (mode == cCheck) check.checked = value == "true";
}

std::string PopertyItem::Value() const {
  if (mode == cCheck) return check.checked ? "true" : "false";
  if (mode == cCombo) {
    const int chosen = combo.selectedIndex;
    return chosen < 0 || chosen >= combo.items.GetCount() ? std::string() : combo.items[chosen];
  }
  return Active() ? Active()->text.Get() : std::string();
}

void PopertyItem::Commit() {
  const std::string value = Value();
  if (mode == cEdit) {
    if (!edit.Valid()) return;
    kept = value;
    ForgetTyping();
  }
  ItemArgs args{&Box(), 0, index, -1, value};
  Box().onChange.Fire(args);
}

void PopertyItem::ForgetTyping() {
  typed = false;
  edit.impl->ownKeys &= ~cOwnEscape;
}

void PopertyItem::GiveBack() {
  edit.text = kept;
  ForgetTyping();
}

// Escape is the edit's own as long as there is something to give back.
void PopertyItem::OnTyped(NotifyArgs&) {
  typed = true;
  edit.impl->ownKeys |= cOwnEscape;
}

void PopertyItem::OnEditKey(KeyArgs& args) {
  if (args.key == VK_RETURN) {
    args.handled = true;
    edit.SelectAll();
    return Commit();
  }
  if (args.key == VK_ESCAPE && typed) {
    args.handled = true;
    GiveBack();
    return edit.SelectAll();
  }
  OnArrow(args);
}

void PopertyItem::OnLeft(NotifyArgs&) {
  if (!typed) return;
  if (edit.Valid())
    Commit();
  else
    GiveBack();
}

// Ctrl and Alt leave the arrows to the editor: they open the list of a combo box.
void PopertyItem::OnArrow(KeyArgs& args) {
  const bool moves = args.key == VK_UP || args.key == VK_DOWN;
  press = Press::cKey;
  if (args.key == VK_RETURN) args.handled = mode == cCombo;
  if (!moves || args.modifiers & (cControl | cAltOrMiddle)) return;
  args.handled = true;
  Box().FocusRow(index + (args.key == VK_UP ? -1 : 1));
}

void PopertyItem::OnButtonPressed(MouseArgs& args) {
  if (args.button == MouseArgs::cLeft) press = Press::cMouse;
}

void PopertyItem::OnClicked(NotifyArgs&) {
  const Press by = std::exchange(press, Press::cKey);
  if (by == Press::cSecond) return;
  if (mode == cButton && by == Press::cMouse && Box().waitsForDoubleClick)
    Box().ClickLater(*this);
  else
    Commit();
}

// The button takes the second press as a click of its own.
void PopertyItem::OnDoubleClicked(NotifyArgs&) {
  if (!Box().onDblClickRow.HasHandlers()) return;
  press = Press::cSecond;
  Box().doubleClickTime.Stop();
  ItemArgs args{&Box(), 0, index, -1, Value()};
  Box().onDblClickRow.Fire(args);
}

void PopertyItem::OnChosen(ItemArgs&) {
  Commit();
}

void PopertyItem::OnTitle(MouseArgs&) {
  Box().FocusRow(index);
}

void PopertyItem::OnEdge(MouseArgs& args) {
  const int edge = Box().TitleColumn();
  const bool isNear = args.x >= edge - cEdgeWidth && args.x <= edge;
  if (args.kind == MouseArgs::cMove)
    cursor = isNear || isDragging ? Cursor::cSizeWE : Cursor::cDefault;
  if (args.kind == MouseArgs::cDown && args.button == MouseArgs::cLeft) isDragging = isNear;
  if (args.kind == MouseArgs::cMove && isDragging) Box().DragEdge(args.x + cEdgeWidth / 2);
  if (args.kind == MouseArgs::cUp) isDragging = false;
}

void PopertyItem::Layout() {
  if (!parent) return;
  const int edge = Box().TitleColumn();
  title.SetBounds(cTitleLeft, cTitleTop, std::max(edge - cEdgeWidth - cTitleLeft, 0),
                  PropertyBox::cRowHeight - cTitleTop);
  title.hint = titleWidth > title.width ? title.text.Get() : std::string();
  const Rect place{edge, 0, std::max(width - edge, 0), PropertyBox::cRowHeight};
  if (Control* active = Active())
    active->SetBounds(place.left, place.top, place.width, place.height);
}

PropertyBox::PropertyBox() {
  width = 100;
  doubleClickTime.onTimer.Add_H(this, &PropertyBox::OnWaited);
  onResize.Add_H(this, &PropertyBox::OnResized);
}

PropertyBox::~PropertyBox() {
  if (impl->hwnd) impl->Destroy();
  while (!items.empty()) items.pop_back();
}

void PropertyBox::SetCount(int count) {
  if (count == used) return;
  doubleClickTime.Stop();
  while (static_cast<int>(items.size()) < count) {
    auto item = std::make_unique<PopertyItem>();
    item->index = static_cast<int>(items.size());
    item->visible = false;
    Add(item.get());
    items.push_back(std::move(item));
  }
  for (int row = 0; row < static_cast<int>(items.size()); ++row)
    items[static_cast<size_t>(row)]->visible = row < count;
  used = count;
  Layout();
}

PopertyItem& PropertyBox::Item(int row) {
  MAVRO_ASSERT(row >= 0 && row < used);
  return *items[static_cast<size_t>(row)];
}

void PropertyBox::FitTitles() {
  if (!impl->hwnd || used == 0) return;
  int widest = cLeastColumn;
  {
    const Graphics measure(this);
    for (int row = 0; row < used; ++row) {
      PopertyItem& item = *items[static_cast<size_t>(row)];
      if (item.titleWidth == 0) item.titleWidth = measure.TextWidth(item.title.text) + 1;
      widest = std::max(widest, item.titleWidth);
    }
  }
  if (!columnIsSet) column = cTitleLeft + widest + cEdgeWidth;
  Layout();
}

void PropertyBox::FocusRow(int row) {
  if (row < 0 || row >= used) return;
  const Control* editor = items[static_cast<size_t>(row)]->Active();
  if (editor && editor->impl->hwnd) editor->impl->hwnd->Focus(FocusBy::cTab);
}

// A narrow box gives the editors the larger half, so that both can be read in part.
int PropertyBox::TitleColumn() const {
  const int most = std::max(width - std::max(cLeastEditor, width * 2 / 5), cLeastColumn);
  return std::min(column, most);
}

void PropertyBox::DragEdge(int to) {
  columnIsSet = true;
  column = std::clamp(to, cLeastColumn, std::max(width - cLeastEditor, cLeastColumn));
  Layout();
}

void PropertyBox::Layout() {
  const int whole = used == 0 ? 0 : used * (cRowHeight + cRowGap) - cRowGap;
  const Rect seen = impl->ClientRect();
  SetScrollRange(cVertical, std::max(whole - 1, 0), seen.height);
  PlaceRows(seen.width);
  layoutPending = false;
}

// The size of the visible part has changed: also by the scroll bar, which comes and goes by itself.
void PropertyBox::OnResized(NotifyArgs&) {
  Layout();
}

void PropertyBox::PlaceRows(int itsWidth) {
  for (int row = 0; row < used; ++row) {
    PopertyItem& item = *items[static_cast<size_t>(row)];
    item.SetBounds(0, row * (cRowHeight + cRowGap), itsWidth, cRowHeight);
    item.layoutPending = false;
    item.Layout();
  }
}

void PropertyBox::ClickLater(const PopertyItem& item) {
  clicked = item.index;
  doubleClickTime.Start(cDoubleClickTime);
}

void PropertyBox::OnWaited(NotifyArgs&) {
  doubleClickTime.Stop();
  if (clicked >= 0 && clicked < used) Item(clicked).Commit();
}

}  // namespace mavro
