#include "frmedt/EventBox.h"

#include <algorithm>
#include <cctype>

#include "frmedt/EventDlg.h"

namespace zendry {

namespace {

constexpr int cDialogLeft = 108, cDialogBelow = 88;  // of the dialog, from the designer's corner

}  // namespace

EventBox::EventBox(const FormData& itsForm) : form(itsForm) {
  text = "Events";
  box.dock = mavro::Dock::cFill;
  box.waitsForDoubleClick = true;
  box.onChange.Add_H(this, &EventBox::OnChange);
  box.onDblClickRow.Add_H(this, &EventBox::OnDoubleClick);
  Add(&box);
}

void EventBox::Show(CtrlRec& newRec) {
  rec = &newRec;
  rows.clear();
  if (rec->classDef)
    for (const EventDef& event : rec->classDef->events) rows.push_back(&event);
  box.SetCount(static_cast<int>(rows.size()));
  for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
    mavro::PopertyItem& item = box.Item(row);
    item.SetTitle(EventOf(row).name);
    item.index = row;
    item.text = EventOf(row).argType;
    item.SetMode(mavro::PopertyItem::cButton);
    item.SetValue(rec->HandlerOf(EventOf(row).name));
  }
  box.FitTitles();
}

void EventBox::Clear() {
  rec = nullptr;
  rows.clear();
  box.SetCount(0);
}

bool EventBox::HasRow(int row) const {
  return rec && row >= 0 && row < static_cast<int>(rows.size());
}

std::string EventBox::HandlerName(int row) const {
  return rec->HandlerOf(EventOf(row).name);
}

// Two rows may be of one event: both show its handler.
void EventBox::Bind(int row, const std::string& name) {
  const std::string event = EventOf(row).name;
  const auto isOurs = [&](const EventBinding& binding) { return binding.event == event; };
  const auto last = std::find_if(rec->events.rbegin(), rec->events.rend(), isOurs);
  if (last == rec->events.rend())
    rec->events.push_back({event, name});
  else
    last->handler = name;
  for (int other = 0; other < static_cast<int>(rows.size()); ++other)
    if (EventOf(other).name == event) box.Item(other).SetValue(name);
}

void EventBox::SetHandler(int row, const std::string& name) {
  if (!HasRow(row) || (!name.empty() && HandlerName(row) == name)) return;
  Bind(row, name);
  if (onBind) onBind(*rec);
}

void EventBox::Disconnect(int row) {
  if (!HasRow(row)) return;
  const std::string event = EventOf(row).name;
  const size_t erased = std::erase_if(
      rec->events, [&](const EventBinding& binding) { return binding.event == event; });
  for (int other = 0; other < static_cast<int>(rows.size()); ++other)
    if (EventOf(other).name == event) box.Item(other).SetValue(rec->HandlerOf(event));
  if (erased > 0 && onBind) onBind(*rec);
}

void EventBox::AddHandler(int row) {
  if (!HasRow(row)) return;
  std::string name = HandlerName(row);
  if (name.empty()) {
    name = NewHandlerName(*rec, EventOf(row).name);
    SetHandler(row, name);
  }
  if (onRequestHandler) onRequestHandler(form.root.declClass, name, EventOf(row).argType);
}

void EventBox::RemoveHandler(int row) {
  if (!HasRow(row) || HandlerName(row).empty()) return;
  const std::string name = HandlerName(row);
  const std::string argType = EventOf(row).argType;
  Disconnect(row);
  if (onRequestRemoval) onRequestRemoval(form.root.declClass, name, argType);
}

void EventBox::OnChange(mavro::ItemArgs& args) {
  AskFor(args.row);
}

void EventBox::OnDoubleClick(mavro::ItemArgs& args) {
  AddHandler(args.row);
}

// The dialog opens below the row, so that this can be seen.
void EventBox::AskFor(int row) {
  if (!HasRow(row)) return;
  std::vector<std::string> names;
  for (const FormHandler& handler : form.handlers)
    if (handler.argType == EventOf(row).argType) names.push_back(handler.name);
  EventDlg dialog(names, HandlerName(row));
  if (const mavro::Form* frame = GetForm()) {
    const int scrolled = box.GetScrollInfo(mavro::cVertical).position;
    const mavro::Rect around = frame->Bounds();
    const int top = around.top + box.Item(row).Bounds().top - scrolled + cDialogBelow;
    const int lowest = around.top + around.height - dialog.height;
    dialog.center = false;
    dialog.SetLocation(around.left + cDialogLeft, std::max(std::min(top, lowest), around.top));
  }
  if (!dialog.Ask()) return;
  const std::string name = dialog.Handler();
  if (dialog.command == EventDlg::cDisconnect) return Disconnect(row);
  if (name.empty() && dialog.command != EventDlg::cAddNew) return;
  if (dialog.command == EventDlg::cRemoveMethod) return RemoveHandler(row);
  if (!name.empty()) SetHandler(row, name);
  if (dialog.command == EventDlg::cAddNew || dialog.command == EventDlg::cGoToSource)
    AddHandler(row);
}

std::string NewHandlerName(const CtrlRec& rec, std::string event) {
  if (!event.empty()) event[0] = 'O';
  std::string name = (rec.parent ? rec.name : std::string()) + "Do" + event;
  name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
  return name;
}

}  // namespace zendry
