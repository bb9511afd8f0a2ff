#include "frmedt/LiveControls.h"

#include <algorithm>
#include <cstdlib>
#include <mavro>
#include <utility>

#include "frmedt/CtrlReg.h"
#include "frmedt/PropClass.h"

namespace zendry {

namespace {

using Purpose = LiveControls::Purpose;
using ControlPtr = std::unique_ptr<mavro::Control>;

constexpr int cSmallWidth = 80, cSmallHeight = 24;  // of combo and spin placeholders
constexpr int cInfoWidth = 100;                     // of the only part of a status bar
constexpr int cGridRow = 20, cGridColumn = 90;      // of a grid's placeholder
constexpr int cMostRows = 10000, cMostCols = 200;   // of a list that is only tried

struct ColorRow {
  std::string_view name;
  mavro::Color color;
};

constexpr ColorRow cColors[] = {{"cBlack", mavro::Color::cBlack},
                                {"cBlue", mavro::Color::cBlue},
                                {"cCyan", mavro::Color::cCyan},
                                {"cDarkGray", mavro::Color::cDarkGray},
                                {"cGray", mavro::Color::cGray},
                                {"cGreen", mavro::Color::cGreen},
                                {"cLightGray", mavro::Color::cLightGray},
                                {"cMagenta", mavro::Color::cMagenta},
                                {"cOrange", mavro::Color::cOrange},
                                {"cPink", mavro::Color::cPink},
                                {"cRed", mavro::Color::cRed},
                                {"cWhite", mavro::Color::cWhite},
                                {"cYellow", mavro::Color::cYellow},
                                {"cWindow", mavro::Color::cWindow},
                                {"cWindowText", mavro::Color::cWindowText},
                                {"cControl", mavro::Color::cControl},
                                {"cControlText", mavro::Color::cControlText},
                                {"cControlShadow", mavro::Color::cControlShadow}};

template <class Made>
ControlPtr New() {
  return std::make_unique<Made>();
}

ControlPtr NewStatusBar() {
  auto bar = std::make_unique<mavro::StatusBar>();
  bar->AddPane(cInfoWidth, "Info");
  return bar;
}

ControlPtr NewPlaceholder() {
  return std::make_unique<mavro::ChildCtrl>(mavro::PaintPlaceholder);
}

// Titles, rows and columns, with the control's text in the first title.
void PaintGrid(mavro::ChildCtrl& control, mavro::Graphics& graphics) {
  mavro::PaintPlaceholder(control, graphics);
  graphics.SetPen(mavro::Pen(mavro::Color::cControlShadow));
  for (int y = cGridRow; y < control.height; y += cGridRow) {
    graphics.MoveTo(0, y);
    graphics.LineTo(control.width, y);
  }
  for (int x = cGridColumn; x < control.width; x += cGridColumn) {
    graphics.MoveTo(x, 0);
    graphics.LineTo(x, control.height);
  }
}

ControlPtr NewGrid() {
  return std::make_unique<mavro::ChildCtrl>(PaintGrid);
}

ControlPtr NewCombo() {
  auto combo = std::make_unique<mavro::ChildCtrl>(mavro::PaintComboPlaceholder);
  combo->flag = true;
  combo->SetSize(cSmallWidth, cSmallHeight);
  return combo;
}

ControlPtr NewSpin() {
  auto spin = std::make_unique<mavro::ChildCtrl>(mavro::PaintSpinPlaceholder);
  spin->SetSize(cSmallWidth, cSmallHeight);
  return spin;
}

// How the control of a class is made for each purpose.
struct ClassRow {
  int id;
  ControlPtr (*onSurface)();
  ControlPtr (*inPreview)();
};

constexpr ClassRow cClasses[] = {
    {cLabelId, New<mavro::Label>, New<mavro::Label>},
    {cEditId, New<mavro::Edit>, New<mavro::Edit>},
    {cButtonId, New<mavro::Button>, New<mavro::Button>},
    {cCheckBoxId, New<mavro::CheckBox>, New<mavro::CheckBox>},
    {cRichViewId, NewPlaceholder, New<mavro::RichView>},
    {cMemoId, NewPlaceholder, New<mavro::Memo>},
    {cGroupBoxId, New<mavro::GroupBox>, New<mavro::GroupBox>},
    {cRadioGroupId, New<mavro::RadioGroup>, New<mavro::RadioGroup>},
    {cPanelId, New<mavro::Panel>, New<mavro::Panel>},
    {cComboBoxId, NewCombo, New<mavro::ComboBox>},
    {cListBoxId, NewPlaceholder, New<mavro::ListBox>},
    {cTabCtrlId, New<mavro::TabCtrl>, New<mavro::TabCtrl>},
    {cListViewId, NewPlaceholder, New<mavro::ListView>},
    {cTreeViewId, NewPlaceholder, New<mavro::TreeView>},
    {cDataGridId, NewGrid, New<mavro::DataGrid>},
    {cPaintBoxId, NewPlaceholder, New<mavro::PaintBox>},
    {cPlotXYId, NewPlaceholder, New<mavro::PlotXY>},
    {cToolBarId, New<mavro::ToolBar>, New<mavro::ToolBar>},
    {cStatusBarId, NewStatusBar, New<mavro::StatusBar>},
    {cProgressBarId, New<mavro::ProgressBar>, New<mavro::ProgressBar>},
    {cTrackBarId, New<mavro::TrackBar>, New<mavro::TrackBar>},
    {cSpinEditId, NewSpin, New<mavro::SpinEdit>},
    {cCheckGroupId, New<mavro::CheckGroup>, New<mavro::CheckGroup>},
    {cImageId, NewPlaceholder, New<mavro::Image>},
    {cDialCtrlId, New<mavro::DialCtrl>, New<mavro::DialCtrl>},
    {cTabPageId, New<mavro::TabPage>, New<mavro::TabPage>},
};

void FillItems(mavro::ItemList& items, const std::string& value) {
  items.Clear();
  for (const std::string& item : SplitItems(value)) items.Add(item);
}

// The number of an icon that an item of a tool bar begins with.
int IconNumber(std::string_view icon) {
  const bool isNamed = icon.size() > 7 && icon.starts_with("Ic") && icon[5] == ':';
  if (!isNamed) return std::atoi(std::string(icon).c_str());
  const std::vector<std::string> icons = SplitOptions(thePropIcon.ref);
  const auto found = std::find(icons.begin(), icons.end(), icon.substr(7));
  return found == icons.end() ? 0 : static_cast<int>(found - icons.begin());
}

bool IsSeparatorItem(std::string_view item) {
  return item.size() > 10 && item[0] == '_' && item[1] == 's' && item[10] == '_';
}

// The tool tip begins one character behind the comma and is shown as it is written.
void FillToolBar(mavro::ToolBar& bar, const std::string& value) {
  bar.Clear();
  for (const std::string& item : SplitItems(value)) {
    const size_t comma = item.find(',');
    if (comma == std::string::npos || comma < 1) {
      if (IsSeparatorItem(item)) bar.AddSeparator();
    } else {
      bar.AddButton(IconNumber(std::string_view(item).substr(0, comma)), item.substr(comma + 1));
    }
  }
  bar.Rebuild();
}

void ApplyToDial(mavro::DialCtrl& dial, int kind, const std::string& value, int number) {
  switch (kind) {
    case cDetailKind:
      dial.labels = number;
      break;
    case cSecondDetailKind:
      dial.text = value;
      break;
    case cMinimumKind:
      dial.min = std::atof(value.c_str());
      break;
    case cMaximumKind:
      dial.max = std::atof(value.c_str());
      break;
    case cPositionKind:
      dial.pos = std::atof(value.c_str());
      break;
    case cStepsKind:
      dial.steps = number;
      break;
    case cOtherKind:
      dial.showPos = number == 0;
      break;
    default:
      break;
  }
}

bool IsTrue(const std::string& value) {
  return value == "true";
}

void ApplyToList(mavro::ListView& list, std::string_view name, const std::string& value,
                 int number) {
  if (name == "colCount") list.colCount = std::clamp(number, 0, cMostCols);
  if (name == "rowCount") list.rowCount = std::clamp(number, 0, cMostRows);
  if (name == "fullRowSelect") list.fullRowSelect = IsTrue(value);
  if (name == "editLabels") list.editLabels = IsTrue(value);
  if (name == "gridLines") list.gridLines = IsTrue(value);
  if (name == "headerVisible") list.headerVisible = IsTrue(value);
  if (name == "showSelection") list.showSelection = IsTrue(value);
  auto* grid = dynamic_cast<mavro::DataGrid*>(&list);
  if (grid && name == "lockCol") grid->lockCol = number;
  if (grid && name == "rowHeight") grid->rowHeight = number;
}

// Properties that have no kind of their own and are seen: the surface shows what the program shows.
void ApplyByName(mavro::Control& control, std::string_view name, const std::string& value,
                 int number) {
  const auto is = [name](std::string_view row) { return name == row; };
  if (auto* label = dynamic_cast<mavro::Label*>(&control); label && is("align"))
    label->align = static_cast<mavro::Align>(number);
  if (auto* box = dynamic_cast<mavro::CheckBox*>(&control); box && is("checked"))
    box->checked = IsTrue(value);
  if (auto* edit = dynamic_cast<mavro::Edit*>(&control)) {
    if (is("readOnly")) edit->readOnly = IsTrue(value);
    if (is("dataType")) edit->dataType = number;
  }
  if (auto* button = dynamic_cast<mavro::Button*>(&control); button && is("hot"))
    button->hot = IsTrue(value);
  if (auto* bar = dynamic_cast<mavro::TrackBar*>(&control)) {
    if (is("min")) bar->min = number;
    if (is("max")) bar->max = number;
    if (is("value")) bar->value = number;
  }
  if (auto* spin = dynamic_cast<mavro::SpinEdit*>(&control)) {
    if (is("min")) spin->min = number;
    if (is("max")) spin->max = number;
    if (is("value")) spin->value = number;
  }
  if (auto* combo = dynamic_cast<mavro::ComboBox*>(&control)) {
    if (is("chooseOnly")) combo->chooseOnly = IsTrue(value);
    if (is("selectedIndex") && !value.empty()) combo->selectedIndex = number;
  }
  if (auto* list = dynamic_cast<mavro::ListView*>(&control))
    ApplyToList(*list, name, value, number);
  if (auto* spin = dynamic_cast<mavro::ChildCtrl*>(&control);
      spin && spin->painter == mavro::PaintSpinPlaceholder && is("value"))
    spin->text = value;
}

}  // namespace

mavro::Color ColorOf(std::string_view name) {
  for (const ColorRow& row : cColors)
    if (row.name == name) return row.color;
  return {};
}

mavro::Font FontOf(std::string_view text) {
  const FontText told = FontText::Parse(text);
  const int style =
      (told.isBold ? mavro::Font::cBold : 0) | (told.isItalic ? mavro::Font::cItalic : 0);
  return {told.size, style, told.name};
}

LiveControls::~LiveControls() {
  Clear();
}

mavro::Control* LiveControls::Make(CtrlRec& rec) {
  if (!rec.classDef) return nullptr;
  for (const ClassRow& row : cClasses) {
    if (row.id != rec.classDef->ctrlId) continue;
    ControlPtr made = purpose == Purpose::cSurface ? row.onSurface() : row.inPreview();
    // A placeholder of a class without a text says what it stands for.
    const bool isNameless = rec.classDef->FindRow("text") < 0;
    if (auto* child = dynamic_cast<mavro::ChildCtrl*>(made.get());
        child && isNameless && child->painter == mavro::PaintPlaceholder)
      child->text = rec.classDef->name;
    mavro::Control& control = *made;
    SetGround(rec, control, "");
    controls[&rec] = std::move(made);
    Bind(rec, control);
    return &control;
  }
  return nullptr;
}

void LiveControls::Bind(CtrlRec& rec, mavro::Control& control) {
  rec.ctrl = &control;
  records[&control] = &rec;
}

bool LiveControls::Create(CtrlRec& rec) {
  if (rec.ctrl) return true;
  if (!rec.parent || rec.parent->createFailed) {
    failures.push_back("Control: " + rec.name + " has no parent!");
    return false;
  }
  rec.createFailed = true;  // a chain of parents that comes back here ends
  if (!rec.parent->ctrl && !Create(*rec.parent)) {
    rec.parent->createFailed = true;
    return false;
  }
  rec.createFailed = false;
  if (!Make(rec)) {
    failures.push_back("Control: " + rec.name + " error on Create");
    rec.createFailed = true;
    return false;
  }
  ApplyAll(rec);
  if (Attach(rec)) return true;
  failures.push_back("Control: " + rec.name + " error on Create");
  Destroy(rec);
  rec.createFailed = true;
  return false;
}

// Containers first: the siblings of each come in the order of the source, wherever what is in them
// is declared. Then the records that are in no container of the form, for their sentences.
void LiveControls::CreateAll() {
  std::unordered_map<const CtrlRec*, std::vector<CtrlRec*>> inside;
  for (CtrlRec* rec : form.controls)
    if (rec != &form.root) inside[rec->parent].push_back(rec);
  std::vector<CtrlRec*> order = inside[&form.root];
  for (size_t at = 0; at < order.size(); ++at) {
    const std::vector<CtrlRec*>& more = inside[order[at]];
    order.insert(order.end(), more.begin(), more.end());
  }
  for (CtrlRec* rec : order)
    if (!rec->ctrl && !rec->createFailed) Create(*rec);
  for (CtrlRec* rec : form.controls)
    if (rec != &form.root && !rec->ctrl && !rec->createFailed) Create(*rec);
}

bool LiveControls::Attach(CtrlRec& rec) {
  mavro::Control* parent = rec.parent ? rec.parent->ctrl : nullptr;
  if (auto* tabs = dynamic_cast<mavro::TabCtrl*>(parent)) {
    auto* page = dynamic_cast<mavro::TabPage*>(rec.ctrl);
    if (page) tabs->Add(page);
    return page;
  }
  auto* container = dynamic_cast<mavro::Container*>(parent);
  if (container) container->Add(rec.ctrl);
  return container;
}

void LiveControls::Destroy(CtrlRec& rec) {
  for (CtrlRec* child : form.ChildrenOf(rec)) Destroy(*child);
  if (!rec.ctrl || &rec == &form.root) return;
  mavro::Control* parent = rec.parent ? rec.parent->ctrl : nullptr;
  records.erase(rec.ctrl);
  rec.ctrl = nullptr;
  rec.createFailed = false;
  places.erase(&rec);
  controls.erase(&rec);
  // The windows after it have other numbers now.
  if (auto* container = dynamic_cast<mavro::Container*>(parent)) container->RenewRoutes();
}

// Controls in others go before these.
void LiveControls::Clear() {
  for (CtrlRec* rec : form.controls)
    if (rec != &form.root && rec->ctrl && (!rec->parent || rec->parent == &form.root))
      Destroy(*rec);
  for (const auto& [control, rec] : records) rec->ctrl = nullptr;
  records.clear();
  places.clear();
  controls.clear();
}

void LiveControls::ApplyAll(CtrlRec& rec) {
  for (const PropValue& prop : rec.props)
    if (prop.pd && !prop.value.empty() && prop.pd->kind != cPagesKind) Apply(rec, prop);
}

void LiveControls::ReapplyAll(CtrlRec& rec) {
  for (const PropValue& prop : rec.props)
    if (prop.pd && prop.pd->kind != cPagesKind) Apply(rec, prop);
}

void LiveControls::Apply(CtrlRec& rec, const PropValue& prop) {
  if (!prop.pd || !rec.ctrl) return;
  const char* byDefault = prop.pd->defaultValue ? prop.pd->defaultValue : "";
  const std::string value = prop.value.empty() ? byDefault : prop.value;
  if (prop.pd->kind <= cTextKind || prop.pd->kind == cToolTipKind)
    ApplyGeneral(rec, prop, value);
  else
    ApplyToClass(rec, prop, value);
}

// The surface itself stays where it is and is not docked, whatever the program's form does.
void LiveControls::ApplyGeometry(CtrlRec& rec, int kind, int number) {
  mavro::Control& control = *rec.ctrl;
  const bool isForm = &rec == &form.root;
  switch (kind) {
    case cDockKind:
      if (!isForm) control.dock = static_cast<mavro::Dock>(number);
      break;
    case cLeftKind:
      if (!isForm) control.left = number;
      break;
    case cTopKind:
      if (!isForm) control.top = number;
      break;
    case cWidthKind:
      control.width = number;
      break;
    default:
      control.height = number;
      break;
  }
}

// The text of a tab control is that of its page in front.
void LiveControls::ApplyText(CtrlRec& rec, const std::string& value) {
  if (rec.classDef && rec.classDef->ctrlId == cTabCtrlId) {
    if (CtrlRec* page = CurrentPage(rec)) {
      page->SetValueText("text", value);
      page->ctrl->text = value;
    }
    return;
  }
  rec.ctrl->text = value;
}

// Bars show no ground of their own; the grid would be seen through them.
mavro::Color LiveControls::GroundOf(const CtrlRec& rec, const std::string& value) const {
  const mavro::Color color = ColorOf(value);
  const int id = rec.classDef ? rec.classDef->ctrlId : cFormId;
  const bool isBar = purpose == Purpose::cSurface && (id == cToolBarId || id == cStatusBarId);
  const bool hasGround = &rec == &form.root || isBar;
  return hasGround && color.IsDefault() ? mavro::Color(mavro::Color::cControl) : color;
}

// In a preview, controls without a value keep the ground that they have in the program.
void LiveControls::SetGround(const CtrlRec& rec, mavro::Control& control,
                             const std::string& value) {
  const mavro::Color ground = GroundOf(rec, value);
  if (purpose == Purpose::cSurface || !ground.IsDefault()) control.backColor = ground;
}

void LiveControls::ApplyGeneral(CtrlRec& rec, const PropValue& prop, const std::string& value) {
  mavro::Control& control = *rec.ctrl;
  const int number = ValueNumber(*prop.pd->cvt, value);
  switch (prop.pd->kind) {
    case cDockKind:
    case cLeftKind:
    case cTopKind:
    case cWidthKind:
    case cHeightKind:
      if (!value.empty()) ApplyGeometry(rec, prop.pd->kind, number);
      break;
    case cBorderKind:
      control.borderStyle = static_cast<mavro::BorderStyle>(number);
      break;
    case cBackColorKind:
      SetGround(rec, control, value);
      control.Invalidate();
      break;
    case cForeColorKind:
      control.foreColor = ColorOf(value);
      control.Invalidate();
      break;
    case cFontKind:
      control.font = FontOf(value);
      break;
    case cTextKind:
      ApplyText(rec, value);
      break;
    case cToolTipKind:
      if (purpose == Purpose::cPreview) control.toolTip = value;
      break;
    default:
      break;
  }
}

void LiveControls::ApplyToClass(CtrlRec& rec, const PropValue& prop, const std::string& value) {
  mavro::Control& control = *rec.ctrl;
  const int number = ValueNumber(*prop.pd->cvt, value);
  const int kind = prop.pd->kind;
  if (kind == cPagesKind && value == "...") {
    AddPage(rec);
  } else if (auto* dial = dynamic_cast<mavro::DialCtrl*>(&control)) {
    ApplyToDial(*dial, kind, value, number);
  } else if (auto* button = dynamic_cast<mavro::Button*>(&control);
             button && (kind == cDetailKind || kind == cSecondDetailKind)) {
    if (kind == cDetailKind)
      button->kind = number;
    else
      button->icon = number;
  } else if (auto* group = dynamic_cast<mavro::ButtonGroup*>(&control)) {
    if (kind == cItemsKind) FillItems(group->items, value);
    if (kind == cIndexKind)
      group->Select(value.empty() && rec.classDef->ctrlId == cRadioGroupId ? -1 : number);
  } else if (auto* list = dynamic_cast<mavro::ListBox*>(&control)) {
    if (kind == cItemsKind) FillItems(list->items, value);
    if (kind == cIndexKind) list->selectedIndex = value.empty() ? -1 : number;
  } else if (auto* combo = dynamic_cast<mavro::ComboBox*>(&control); combo && kind == cItemsKind) {
    FillItems(combo->items, value);
  } else if (auto* tabs = dynamic_cast<mavro::TabCtrl*>(&control); tabs && kind == cIndexKind) {
    if (number >= 0 && number < tabs->TabCount()) tabs->selectedIndex = number;
  } else if (auto* bar = dynamic_cast<mavro::ToolBar*>(&control); bar && kind == cItemsKind) {
    FillToolBar(*bar, value);
  } else if (auto* track = dynamic_cast<mavro::TrackBar*>(&control);
             track && kind == cOrientationKind) {
    const bool isLevel = value.size() > 1 && value[1] == 'H';
    track->orientation = isLevel ? mavro::cHorizontal : mavro::cVertical;
  } else {
    ApplyByName(control, prop.pd->name, value, number);
  }
}

void LiveControls::Refresh(CtrlRec& rec) {
  if (!rec.ctrl) return;
  const mavro::Rect now = rec.ctrl->Bounds();
  const mavro::Rect was = std::exchange(places.emplace(&rec, now).first->second, now);
  const bool isForm = &rec == &form.root;  // its place on the surface means nothing
  const auto copy = [&](PropValue& prop, int here, int before) {
    if (prop.value.empty() || here != before) prop.value = std::to_string(here);
  };
  for (PropValue& prop : rec.props) {
    if (!prop.pd) break;
    if (prop.pd->kind == cLeftKind) copy(prop, isForm ? 0 : now.left, isForm ? 0 : was.left);
    if (prop.pd->kind == cTopKind) copy(prop, isForm ? 0 : now.top, isForm ? 0 : was.top);
    if (prop.pd->kind == cWidthKind) copy(prop, now.width, was.width);
    if (prop.pd->kind == cHeightKind) copy(prop, now.height, was.height);
  }
  rec.FillDefaults();
}

void LiveControls::RefreshAll() {
  for (CtrlRec* rec : form.controls) Refresh(*rec);
}

CtrlRec* LiveControls::AddPage(CtrlRec& rec) {
  auto* tabs = dynamic_cast<mavro::TabCtrl*>(rec.ctrl);
  const CtrlClass* pageClass = FindClass("TabPage");
  MAVRO_ASSERT_AS(pageClass, "panCd.classDef");
  if (!tabs) return nullptr;
  int number = tabs->TabCount() + 1;
  std::string caption = "Page" + std::to_string(number);
  while (form.Find(rec.name + caption)) caption = "Page" + std::to_string(++number);
  CtrlRec& page = form.AddControl(*pageClass, rec, rec.name + caption);
  page.SetValueText("text", caption);
  Make(page);
  ApplyAll(page);
  Attach(page);
  return &page;
}

CtrlRec* LiveControls::CurrentPage(const CtrlRec& rec) const {
  auto* tabs = dynamic_cast<mavro::TabCtrl*>(rec.ctrl);
  if (!tabs || tabs->TabCount() == 0 || tabs->selectedIndex < 0) return nullptr;
  return RecordOf(tabs->GetPage(tabs->selectedIndex));
}

CtrlRec* LiveControls::RecordOf(const mavro::Control* control) const {
  const auto found = records.find(control);
  return found == records.end() ? nullptr : found->second;
}

}  // namespace zendry
