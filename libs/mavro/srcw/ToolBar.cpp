#include "ToolBar.h"

#include <algorithm>

#include "Application.h"
#include "Assert.h"
#include "Icons.h"
#include "NativeToolBar.h"
#include "SysImpl.h"

namespace mavro {

namespace {

constexpr int cDefaultPicture = 22;

// "&Open..." with Ctrl+O becomes "Open (Ctrl+O)".
std::string LabelOf(const Action& action) {
  std::string label;
  for (size_t i = 0; i < action.text.size(); ++i) {
    if (action.text[i] == '&' && i + 1 < action.text.size()) ++i;
    label += action.text[i];
  }
  while (!label.empty() && (label.back() == ' ' || label.back() == '.')) label.pop_back();
  const std::string key = HotKeyText(action.hotkey);
  return key.empty() ? label : label + " (" + key.substr(1) + ")";
}

}  // namespace

// Routes the notifications of the bar's own children as a container does, although programs can't
// use the bar as a container.
class ToolBar::Impl : public Container::Impl {
 public:
  void Create() override;
  Param WndProc(unsigned message, Param wParam, Param lParam) override;
  void OnCommand(int cmd, Param handle) override;

  NativeToolBar* Window() const { return static_cast<NativeToolBar*>(hwnd); }
  void ImagesChanged();
  void ShowRows();
  void ShowRow(int row);
  void PlaceRows();

  int images = 0;

 private:
  ToolBar& Bar() const { return *static_cast<ToolBar*>(owner); }
  ToolRowLook LookOf(const Row& row) const;
  Control* LiveControl(const Row& row) const;
  // The framework's own icons if no strip is set.
  int StripOf() const { return images == 0 ? Icons::cStrip : images; }
  Rect PictureSize() const;
  static int CommandOf(const Row& row);

  int ownHeight = ToolBarHeight(cDefaultPicture);  // the height that the pictures need
};

void ToolBar::Impl::Create() {
  CreateNative("ToolbarWindow32", cWantsKeys);
  Window()->SetStrip(StripOf());
  ShowRows();
}

Param ToolBar::Impl::WndProc(unsigned message, Param wParam, Param lParam) {
  // A command of the bar's own popup menu. It has no row.
  if (message == WM_COMMAND && lParam == 0) {
    OnMenuCommand(0, static_cast<int>(wParam));
    return 0;
  }
  if (message == WM_SIZE) {
    owner->layoutPending = true;
    RunPendingLayout(owner);
  }
  return Container::Impl::WndProc(message, wParam, lParam);
}

void ToolBar::Impl::OnCommand(int cmd, Param) {
  const Row& row = Bar().GetRow(cmd);
  if (row.action && row.action->Execute()) return;
  FireNotify(Bar().onClick, CommandOf(row));
}

int ToolBar::Impl::CommandOf(const Row& row) {
  if (row.action) return row.action->id;
  return row.command == -1 ? row.image : row.command;
}

Rect ToolBar::Impl::PictureSize() const {
  const ImageStrip* strip = theApplication.FindImageList(StripOf());
  if (!strip) return {0, 0, cDefaultPicture, cDefaultPicture};
  return {0, 0, strip->width, strip->height};
}

void ToolBar::Impl::ImagesChanged() {
  const int wanted = ToolBarHeight(PictureSize().height);
  if (owner->height == ownHeight) owner->height = wanted;
  ownHeight = wanted;
  if (!hwnd) return;
  Window()->SetStrip(StripOf());
  ShowRows();
}

ToolRowLook ToolBar::Impl::LookOf(const Row& row) const {
  ToolRowLook look;
  if (row.separator) look.kind = ToolRowWish::cSeparator;
  if (row.control) look.kind = ToolRowWish::cControl;
  look.image = row.image;
  look.label = row.action ? LabelOf(*row.action) : row.text;
  look.enabled = row.enabled;
  return look;
}

// The control of a row, unless it has been destroyed or moved elsewhere.
Control* ToolBar::Impl::LiveControl(const Row& row) const {
  const auto& children = owner->children;
  const auto found = std::find(children.begin(), children.end(), row.control);
  return found == children.end() ? nullptr : *found;
}

void ToolBar::Impl::ShowRows() {
  std::vector<ToolRowLook> looks;
  for (const Row& row : Bar().rows) looks.push_back(LookOf(row));
  Window()->SetRows(looks);
  PlaceRows();
}

void ToolBar::Impl::ShowRow(int row) {
  if (hwnd) Window()->SetRow(row, LookOf(Bar().GetRow(row)));
}

// A control without room is placed where it is not visible; it keeps its size.
void ToolBar::Impl::PlaceRows() {
  std::vector<ToolRowWish> wishes;
  for (const Row& row : Bar().rows) {
    const Control* control = LiveControl(row);
    const bool takesRoom = control && control->visible;
    wishes.push_back({LookOf(row).kind, takesRoom ? control->width.Get() : 0,
                      takesRoom ? control->height.Get() : 0});
  }
  const Rect picture = PictureSize();
  const ToolRowPlan plan = PlanToolRows(wishes, hwnd->ClientWidth(), hwnd->ClientHeight(),
                                        picture.width, picture.height);
  Window()->Place(plan);
  for (const Row& row : Bar().rows) {
    Control* control = LiveControl(row);
    if (!control) continue;
    const Rect& place = plan.places[static_cast<size_t>(row.id)];
    if (place.width > 0)
      control->SetBounds(place.left, place.top, place.width, place.height);
    else
      control->SetLocation(-control->width, control->top);
  }
}

void ToolBarItems::Add(int image, const std::string& toolTip) {
  owner.AddButton(image, toolTip);
}

void ToolBarItems::Add(ToolBarSeparator) {
  owner.AddSeparator();
}

int ToolBarItems::GetCount() const {
  return owner.RowCount();
}

ToolBar::ToolBar()
    : Control(new Impl),
      items(*this),
      images(impl, static_cast<PropertySetter>(&Impl::ImagesChanged), &TheImpl().images) {
  impl->textIsLive = false;
  height = ToolBarHeight(cDefaultPicture);
}

ToolBar::~ToolBar() {
  if (impl->hwnd) impl->Destroy();
}

ToolBar::Impl& ToolBar::TheImpl() const {
  return *static_cast<Impl*>(impl);
}

void ToolBar::Append(Row row) {
  row.id = RowCount();
  rows.push_back(std::move(row));
  if (impl->hwnd) TheImpl().ShowRows();
}

void ToolBar::Add(Action* action, int image) {
  if (image >= 0) action->image = image;
  Row row;
  row.action = action;
  row.image = action->image;
  Append(std::move(row));
}

void ToolBar::AddButton(int image, const std::string& label, int command) {
  Row row;
  row.image = image;
  row.command = command;
  row.text = label;
  Append(std::move(row));
}

void ToolBar::AddSeparator() {
  Row row;
  row.separator = true;
  Append(std::move(row));
}

void ToolBar::AddControl(Control* control) {
  InsertChild(*this, control, -1);
  Row row;
  row.control = control;
  Append(std::move(row));
}

const ToolBar::Row& ToolBar::GetRow(int cmd) const {
  MAVRO_ASSERT_AS(cmd >= 0 && cmd < RowCount() && rows[static_cast<size_t>(cmd)].id == cmd,
                  "getMe()->items.data[cmd].id == cmd");
  return rows[static_cast<size_t>(cmd)];
}

void ToolBar::SetAction(int row, Action* action, int image) {
  Row changed = GetRow(row);
  changed.action = action;
  if (image >= 0) changed.image = image;
  rows[static_cast<size_t>(row)] = std::move(changed);
  TheImpl().ShowRow(row);
}

void ToolBar::Command(int row, int message) {
  const bool on = message > 0;
  if (GetRow(row).enabled == on) return;
  rows[static_cast<size_t>(row)].enabled = on;
  TheImpl().ShowRow(row);
}

void ToolBar::Clear() {
  rows.clear();
  while (!children.empty()) RemoveChild(*this, static_cast<int>(children.size()) - 1);
  Rebuild();
}

void ToolBar::Rebuild() {
  if (impl->hwnd) TheImpl().ShowRows();
}

void ToolBar::Layout() {
  if (impl->hwnd) TheImpl().PlaceRows();
}

}  // namespace mavro
