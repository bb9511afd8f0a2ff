#include "frmedt/FormEditor.h"

#include <algorithm>

#include "Assert.h"
#include "SystemDialogs.h"
#include "TabCtrl.h"

namespace zendry {

using mavro::Control;
using mavro::Rect;
using mavro::Selector;

FormEditor* theFormEditor = nullptr;

namespace {

constexpr int cFirstWidth = 600, cFirstHeight = 400;
constexpr int cFarAway = 100000;  // where the search for edges begins

int ToGrid(int value) {
  return (value + FormEditor::cGridStep / 2) / FormEditor::cGridStep * FormEditor::cGridStep;
}

}  // namespace

FormEditor::FormEditor(FormData& itsForm, DesignHost& itsHost)
    : live(itsForm), form(itsForm), host(itsHost) {
  theFormEditor = this;
  SetBounds(0, 0, cFirstWidth, cFirstHeight);
  backColor = mavro::Color(mavro::Color::cControl);
  live.Bind(form.root, *this);
  onMouseDown.Add_H(this, &FormEditor::OnPress);
  onMouseMove.Add_H(this, &FormEditor::OnMoved);
  onMouseUp.Add_H(this, &FormEditor::OnReleased);
  onDblClick.Add_H(this, &FormEditor::OnDouble);
}

FormEditor::~FormEditor() {
  ClearSelection();
  live.Clear();
  form.root.ctrl = nullptr;
  if (theFormEditor == this) theFormEditor = nullptr;
}

void FormEditor::CreateAll() {
  MAVRO_ASSERT_AS(form.root.ctrl == this, "frm.ctrl==this");
  live.ApplyAll(form.root);
  live.CreateAll();
  layoutPending = true;
  if (state != mavro::cNoWindow) mavro::RunPendingLayout(this);
}

void FormEditor::RecreateAll() {
  live.Bind(form.root, *this);
  live.ReapplyAll(form.root);
  CreateAll();
}

// The children in order: the first that contains the point.
Control* FormEditor::ControlIn(int x, int y, Control& container) {
  for (Control* child : container.children) {
    const Rect at = RectOf(*child);
    const bool isInside =
        x >= at.left && x < at.left + at.width && y >= at.top && y < at.top + at.height;
    if (isInside) return ControlOf(x, y, *child);
  }
  return nullptr;
}

// The control itself or, of one that holds others, what is in it at the point.
Control* FormEditor::ControlOf(int x, int y, Control& found) {
  const CtrlRec* rec = live.RecordOf(&found);
  if (!rec || found.children.empty()) return &found;
  Control* inside = nullptr;
  if (rec->classDef->alwaysRefresh) {
    const CtrlRec* page = live.CurrentPage(*rec);
    if (page) inside = ControlIn(x, y, *page->ctrl);
  } else if (rec->classDef->isContainer) {
    inside = ControlIn(x, y, found);
  }
  return inside ? inside : &found;
}

Control* FormEditor::ControlAt(int x, int y) {
  return ControlIn(x, y, *this);
}

std::vector<Selector*> FormEditor::Selectors() {
  std::vector<Selector*> all;
  if (selector.selected) all.push_back(&selector);
  for (const auto& other : others)
    if (other->selected) all.push_back(other.get());
  return all;
}

std::vector<CtrlRec*> FormEditor::SelectedRecords() const {
  std::vector<CtrlRec*> records;
  if (selector.selected) records.push_back(live.RecordOf(selector.ctrl));
  for (const auto& other : others)
    if (other->selected) records.push_back(live.RecordOf(other->ctrl));
  return records;
}

CtrlRec& FormEditor::ShownRecord() {
  CtrlRec* rec = selector.selected ? live.RecordOf(selector.ctrl) : nullptr;
  return rec ? *rec : form.root;
}

void FormEditor::ClearSelection() {
  others.clear();
  selector.Clear();
}

Selector* FormEditor::Select(Control* wanted, bool extend) {
  if (selector.selected && wanted == selector.ctrl) return &selector;
  if (!extend || !selector.selected) {
    for (const auto& other : others)
      if (other->selected && other->ctrl == wanted) return other.get();
    ClearSelection();
    selector.Attach(wanted, Selector::Look::cPrimary);
    return &selector;
  }
  for (const auto& other : others)
    if (other->ctrl == wanted) {
      other->selected = !other->selected;
      other->ShowGrips(other->selected);
      return other.get();
    }
  if (wanted->parent != selector.ctrl->parent) {
    mavro::Beep();
    return nullptr;
  }
  others.push_back(std::make_unique<Selector>(*this));
  others.back()->Attach(wanted, Selector::Look::cOther);
  return others.back().get();
}

void FormEditor::FollowControls() {
  for (Selector* each : Selectors()) each->Follow();
  if (isTabOrder) ShowTabMarks();
}

void FormEditor::LayoutAround(CtrlRec& rec) {
  for (Control* control : {rec.ctrl, rec.ctrl ? rec.ctrl->parent : nullptr}) {
    if (!control || control->children.empty()) continue;
    control->layoutPending = true;
    mavro::RunPendingLayout(control);
  }
}

bool FormEditor::DropControl(const CtrlClass& tool, int x, int y) {
  CtrlRec* target = &ShownRecord();
  if (target->classDef->alwaysRefresh) target = live.CurrentPage(*target);
  if (!target || !target->classDef->isContainer) {
    mavro::Beep();
    return false;
  }
  if (target != &form.root) {
    const Rect at = RectOf(*target->ctrl);
    x -= at.left;
    y -= at.top;
  }
  CtrlRec& rec = form.AddControl(tool, *target, form.UniqueName(tool.name));
  Control* control = live.Make(rec);
  if (!control) {
    mavro::Information("Create error");
    form.DeleteRecord(rec);
    return false;
  }
  control->SetBounds(x, y, control->width, control->height);
  live.Attach(rec);
  if (rec.FindValue("text")) {
    control->text = rec.name;
    rec.SetValueText("text", control->text);
  }
  LayoutAround(rec);
  Select(control, false);
  host.ShowRecord(rec);
  host.ResetTool();
  host.StepDone();
  return true;
}

void FormEditor::MoveSelection(int dx, int dy) {
  const auto all = Selectors();
  for (Selector* each : all) {
    each->Follow();
    each->left += dx;
    each->top += dy;
    each->Apply();
    if (CtrlRec* rec = live.RecordOf(each->ctrl)) LayoutAround(*rec);
    each->Follow();
  }
  if (all.empty()) return;
  host.ShowPlace(ShownRecord());
  host.StepDone();
}

void FormEditor::SizeSelection(int dw, int dh) {
  const auto all = Selectors();
  for (Selector* each : all) {
    each->Follow();
    each->width = std::max(1, each->width + dw);
    each->height = std::max(1, each->height + dh);
    each->Apply();
    if (CtrlRec* rec = live.RecordOf(each->ctrl)) LayoutAround(*rec);
    each->Follow();
  }
  if (all.empty()) return;
  host.ShowPlace(ShownRecord());
  host.StepDone();
}

void FormEditor::DeleteRecord(CtrlRec& rec) {
  live.Destroy(rec);
  form.DeleteRecord(rec);
}

// A page that is selected together with something on it goes once.
bool FormEditor::DeleteSelection() {
  const std::vector<CtrlRec*> selected = SelectedRecords();
  if (selected.empty()) return false;
  ClearSelection();
  for (CtrlRec* rec : selected) DeleteRecord(*rec);
  layoutPending = true;
  mavro::RunPendingLayout(this);
  host.ShowRecord(form.root);
  host.StepDone();
  return true;
}

void FormEditor::AlignAllToGrid() {
  for (const CtrlRec* rec : form.controls) {
    if (rec == &form.root || !rec->ctrl || rec->classDef->noBounds) continue;
    const Rect at = rec->ctrl->Bounds();
    rec->ctrl->SetBounds(ToGrid(at.left), ToGrid(at.top), ToGrid(at.width), ToGrid(at.height));
  }
}

// In the order of selecting, with equal gaps between the outermost edges.
void FormEditor::Space(bool isLevel) {
  const auto all = Selectors();
  if (all.size() < 3) return;
  int first = cFarAway, last = -cFarAway, sum = 0;
  for (const Selector* each : all) {
    const int from = isLevel ? each->left : each->top;
    const int size = isLevel ? each->width : each->height;
    first = std::min(first, from);
    last = std::max(last, from + size);
    sum += size;
  }
  const int gap = (last - first - sum) / (static_cast<int>(all.size()) - 1);
  int running = first;
  for (Selector* each : all) {
    (isLevel ? each->left : each->top) = running;
    running += (isLevel ? each->width : each->height) + gap;
    each->Apply();
  }
}

void FormEditor::Align(int command) {
  if (command == cAlignToGrid) AlignAllToGrid();
  if (command == cSpaceHoriz || command == cSpaceVert) Space(command == cSpaceHoriz);
  const Selector& anchor = selector;
  for (const auto& other : others) {
    if (!other->selected || command >= cAlignToGrid) continue;
    Selector& each = *other;
    switch (command) {
      case cAlignLeft:
        each.left = anchor.left;
        break;
      case cAlignRight:
        each.left = anchor.left + anchor.width - each.width;
        break;
      case cAlignTop:
        each.top = anchor.top;
        break;
      case cAlignBottom:
        each.top = anchor.top + anchor.height - each.height;
        break;
      default:
        if (command != cEqualHeight) each.width = anchor.width;
        if (command != cEqualWidth) each.height = anchor.height;
        break;
    }
    each.Apply();
  }
  for (CtrlRec* rec : SelectedRecords()) LayoutAround(*rec);
  host.ShowPlace(ShownRecord());
  host.StepDone();
}

}  // namespace zendry
