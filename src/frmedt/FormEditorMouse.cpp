#include <algorithm>
#include <cstdlib>
#include <functional>

#include "SystemDialogs.h"
#include "TabCtrl.h"
#include "frmedt/DesignGuides.h"
#include "frmedt/FormEditor.h"

// The surface: what the mouse does on it.

namespace zendry {

using mavro::Control;
using mavro::Cursor;
using mavro::MouseArgs;
using mavro::Rect;
using mavro::Selector;

namespace {

constexpr int cMarkOffset = 2;  // of a number of the Tab order from the corner of its control

Cursor CursorOf(int hit, Cursor otherwise) {
  switch (hit) {
    case 0:
      return otherwise;
    case 1:
    case 2:
    case 3:
      return Cursor::cSizeWE;
    case 4:
    case 8:
      return Cursor::cSizeNS;
    case 5:
    case 10:
      return Cursor::cSizeNWSE;
    default:
      return Cursor::cSizeNESW;
  }
}

}  // namespace

int FormEditor::HitAt(int x, int y) const {
  if (!selector.Contains(x, y)) return cNoEdge;
  int edges = cNoEdge;
  if (x <= selector.left + cHandleBand)
    edges = cLeftEdge;
  else if (x >= selector.left + selector.width - cHandleBand)
    edges = cRightEdge;
  if (y <= selector.top + cHandleBand)
    edges += cTopEdge;
  else if (y >= selector.top + selector.height - cHandleBand)
    edges += cBottomEdge;
  return edges;
}

void FormEditor::ShowCursorAt(int x, int y) {
  const bool isOver = selector.selected && selector.Contains(x, y);
  cursor = isOver && !isTabOrder ? CursorOf(HitAt(x, y), Cursor::cSizeAll) : Cursor::cArrow;
}

void FormEditor::OnPress(MouseArgs& args) {
  pressedX = args.x;
  pressedY = args.y;
  if (args.button != MouseArgs::cLeft || dragging) return;
  if (isTabOrder) {
    Control* found = ControlAt(args.x, args.y);
    if (CtrlRec* rec = live.RecordOf(found)) TakeTabPlace(*rec);
    return;
  }
  const bool extend = args.modifiers & mavro::cControl;
  Control* control = selector.ctrl;
  Selector* result = &selector;
  const bool isOnFrame = selector.selected && selector.Contains(args.x, args.y) &&
                         (args.x <= selector.left + cFrameBand ||
                          args.x >= selector.left + selector.width - cFrameBand ||
                          args.y <= selector.top + cFrameBand ||
                          args.y >= selector.top + selector.height - cFrameBand);
  if (!isOnFrame) {
    control = ControlAt(args.x, args.y);
    if (control) {
      result = Select(control, extend);
    } else {
      ClearSelection();
      control = this;
    }
  }
  hit = cNoEdge;
  cursor = Cursor::cDefault;
  host.TakeFocus();
  if (result == &selector && !extend)
    if (CtrlRec* rec = live.RecordOf(control)) host.ShowRecord(*rec);
  if (extend) host.SelectionExtended();
  const CtrlClass* tool = host.ChosenTool();
  if (tool) {
    DropControl(*tool, args.x, args.y);
  } else if (selector.selected && result && !extend) {
    BeginDrag(args.x, args.y);
    ChoosePageAt(args.x, args.y);
  }
}

// A click on the tab of a page brings it to the front, as it does in the program.
void FormEditor::ChoosePageAt(int x, int y) {
  auto* tabs = dynamic_cast<mavro::TabCtrl*>(selector.ctrl);
  if (!tabs) return;
  const Rect at = RectOf(*tabs);
  const int page = tabs->TabAt(x - at.left, y - at.top);
  if (page < 0 || page == tabs->selectedIndex) return;
  tabs->selectedIndex = page;
  host.ShowRecord(ShownRecord());
}

void FormEditor::BeginDrag(int x, int y) {
  hit = HitAt(x, y);
  cursor = CursorOf(hit, Cursor::cSizeAll);
  grabLeft = x - selector.left;
  grabTop = y - selector.top;
  grabRight = x - selector.width;
  grabBottom = y - selector.height;
  dragging = true;
  before.clear();
  siblings.clear();
  const auto all = Selectors();
  for (const Selector* each : all) before.push_back(each->ctrl->Bounds());
  for (Control* other : selector.ctrl->parent->children) {
    const auto isIt = [other](const Selector* each) { return each->ctrl == other; };
    if (std::none_of(all.begin(), all.end(), isIt)) siblings.push_back(RectOf(*other));
  }
}

void FormEditor::OnMoved(MouseArgs& args) {
  if (dragging && (args.button & MouseArgs::cLeft))
    Drag(args.x, args.y, args.modifiers & mavro::cShift);
  else if (!dragging)
    ShowCursorAt(args.x, args.y);
}

void FormEditor::Drag(int x, int y, bool keepsAxis) {
  if (!selector.selected) return;
  int newLeft = x - grabLeft;
  int newTop = y - grabTop;
  if (keepsAxis && hit == cNoEdge) {
    const bool isLevel = std::abs(x - pressedX) >= std::abs(y - pressedY);
    (isLevel ? newTop : newLeft) = isLevel ? pressedY - grabTop : pressedX - grabLeft;
  }
  const int oldLeft = selector.left, oldTop = selector.top;
  const int right = selector.left + selector.width, bottom = selector.top + selector.height;
  if (hit == cNoEdge) {
    selector.left = newLeft;
    selector.top = newTop;
  }
  if (hit & cLeftEdge) {
    if (right - newLeft > 0) selector.width = right - newLeft;
    selector.left = newLeft;
  }
  if ((hit & cRightEdge) && x - grabRight > 0) selector.width = x - grabRight;
  if (hit & cTopEdge) {
    if (bottom - newTop > 0) selector.height = bottom - newTop;
    selector.top = newTop;
  }
  if ((hit & cBottomEdge) && y - grabBottom > 0) selector.height = y - grabBottom;
  selector.Apply();
  for (const auto& other : others) {
    if (!other->selected) continue;
    other->left += newLeft - oldLeft;
    other->top += newTop - oldTop;
    other->Apply();
  }
  CtrlRec& rec = ShownRecord();
  if (selector.ctrl->dock != mavro::Dock::cNone || hit != cNoEdge) LayoutAround(rec);
  ShowGuides();
  host.ShowPlace(rec);
}

void FormEditor::ShowGuides() {
  std::vector<Mark> marks;
  if (selector.ctrl->dock == mavro::Dock::cNone)
    for (const Rect& line : GuideLines(selector.Bounds(), siblings)) marks.push_back({line, ""});
  ShowMarks(marks);
}

void FormEditor::OnReleased(MouseArgs& args) {
  if (!dragging || args.button != MouseArgs::cLeft) return;
  dragging = false;
  ShowMarks({});
  FollowControls();
  ShowCursorAt(args.x, args.y);
  host.StepDone();
}

bool FormEditor::CancelDrag() {
  if (!dragging) return false;
  dragging = false;
  ShowMarks({});
  const auto all = Selectors();
  for (size_t i = 0; i < all.size() && i < before.size(); ++i) {
    const Rect& was = before[i];
    all[i]->ctrl->SetBounds(was.left, was.top, was.width, was.height);
    if (CtrlRec* rec = live.RecordOf(all[i]->ctrl)) LayoutAround(*rec);
  }
  FollowControls();
  cursor = Cursor::cDefault;
  host.ShowPlace(ShownRecord());
  return true;
}

void FormEditor::OnDouble(mavro::NotifyArgs&) {}

void FormEditor::ShowTabOrder(bool on) {
  isTabOrder = on;
  ordered.clear();
  if (on)
    ShowTabMarks();
  else
    ShowMarks({});
}

// "2.1" is the first control in the second one of the form.
void FormEditor::ShowTabMarks() {
  std::vector<Mark> marks;
  const std::function<void(const CtrlRec&, const std::string&)> add = [&](const CtrlRec& parent,
                                                                          const std::string& path) {
    int number = 0;
    for (const CtrlRec* rec : form.ChildrenOf(parent)) {
      const std::string place = path + std::to_string(++number);
      if (!rec->ctrl) continue;
      const bool isHiddenPage = rec->classDef->isPage && live.CurrentPage(parent) != rec;
      if (isHiddenPage) continue;
      const Rect at = RectOf(*rec->ctrl);
      marks.push_back({{at.left + cMarkOffset, at.top + cMarkOffset, 0, 0}, place});
      add(*rec, place + ".");
    }
  };
  add(form.root, "");
  ShowMarks(marks);
}

// The controls that have been clicked come first, in the order of the clicks.
void FormEditor::TakeTabPlace(CtrlRec& rec) {
  if (rec.classDef->isPage) return;
  if (!ordered.empty() && ordered.front()->parent != rec.parent) ordered.clear();
  if (std::find(ordered.begin(), ordered.end(), &rec) != ordered.end()) return;
  ordered.push_back(&rec);
  std::vector<CtrlRec*> wanted = ordered;
  for (CtrlRec* sibling : form.ChildrenOf(*rec.parent))
    if (std::find(wanted.begin(), wanted.end(), sibling) == wanted.end()) wanted.push_back(sibling);
  size_t next = 0;
  for (CtrlRec*& place : form.controls)
    if (place != &form.root && place->parent == rec.parent) place = wanted[next++];
  if (auto* container = dynamic_cast<mavro::Container*>(rec.parent->ctrl)) {
    for (size_t i = 0; i < wanted.size(); ++i) {
      const auto& children = container->children;
      const auto at = std::find(children.begin(), children.end(), wanted[i]->ctrl);
      if (at == children.end() || i >= children.size()) continue;
      mavro::MoveChild(*container, static_cast<int>(at - children.begin()), static_cast<int>(i));
    }
    container->RenewRoutes();
    LayoutAround(rec);
  }
  ShowTabMarks();
  host.StepDone();
}

}  // namespace zendry
