#include "frmedt/CtrlReg.h"

#include <algorithm>
#include <span>

#include "Assert.h"
#include "frmedt/PropClass.h"

namespace zendry {

namespace {

// Group: the tables that all classes share, bit 0 of their masks first.

constexpr PropDef cSharedProps[] = {
    {"dock", cDockKind, "cNone", &thePropDock},
    {"left", cLeftKind, nullptr, &thePropInteger},
    {"top", cTopKind, nullptr, &thePropInteger},
    {"width", cWidthKind, nullptr, &thePropInteger},
    {"height", cHeightKind, nullptr, &thePropInteger},
    {"borderStyle", cBorderKind, "cNone", &thePropBorder},
    {"backColor", cBackColorKind, "<default>", &thePropColor},
    {"foreColor", cForeColorKind, "<default>", &thePropColor},
    {"font", cFontKind, "<default>", &thePropFont},
    {"text", cTextKind, nullptr, &thePropString},
    {"dataLink", cDataLinkKind, nullptr, &thePropExpression},
    {"toolTip", cToolTipKind, nullptr, &thePropString},
    {"tag", cTagKind, nullptr, &thePropInteger},
};

constexpr EventDef cSharedEvents[] = {
    {"onClick", "NotifyArgs"},      {"onDblClick", "NotifyArgs"},  {"onCreate", "NotifyArgs"},
    {"onContextMenu", "MouseArgs"}, {"onMouseDown", "MouseArgs"},  {"onMouseUp", "MouseArgs"},
    {"onMouseMove", "MouseArgs"},   {"onMouseLeave", "MouseArgs"}, {"onMouseEnter", "MouseArgs"},
    {"onMouseWeel", "MouseArgs"},   {"onKeyDown", "KeyArgs"},      {"onKeyUp", "KeyArgs"},
    {"onChar", "KeyArgs"},          {"onMove", "NotifyArgs"},      {"onResize", "NotifyArgs"},
    {"onGotFocus", "NotifyArgs"},   {"onLostFocus", "NotifyArgs"},
};

// Group: the rows of one class or two.

constexpr PropDef cFormProps[] = {
    {"resizable", cOtherKind, "true", &thePropBoolean},
    {"center", cOtherKind, "true", &thePropBoolean},
    {"windowType", cOtherKind, "cNormal", &thePropWindowType},
};
constexpr EventDef cFormEvents[] = {
    {"onActivate", "NotifyArgs"}, {"onChangeState", "NotifyArgs"}, {"onShow", "NotifyArgs"},
    {"onClose", "NotifyArgs"},    {"onDestroy", "NotifyArgs"},     {"onKeyPreview", "NotifyArgs"},
};
constexpr PropDef cLabelProps[] = {{"align", cOtherKind, "cLeft", &thePropAlign}};
constexpr PropDef cEditProps[] = {
    {"dataType", cOtherKind, "cNormal", &thePropDataType},
    {"readOnly", cOtherKind, "false", &thePropBoolean},
};
constexpr EventDef cEditEvents[] = {{"onChange", "NotifyArgs"}, {"onValidate", "ItemArgs"}};
constexpr PropDef cComboProps[] = {
    {"items", cItemsKind, nullptr, &thePropStrItems},
    {"selectedIndex", cOtherKind, nullptr, &thePropInteger},
    {"chooseOnly", cOtherKind, "false", &thePropBoolean},
};
constexpr EventDef cComboEvents[] = {{"onSelChanged", "ItemArgs"}};
constexpr PropDef cButtonProps[] = {
    {"kind", cDetailKind, "cNone", &thePropButtonKind},
    {"cmd", cOtherKind, nullptr, &thePropInteger},
    {"hot", cOtherKind, "false", &thePropBoolean},
    {"icon", cSecondDetailKind, "cNone", &thePropIcon},
};
constexpr PropDef cCheckProps[] = {{"checked", cOtherKind, "false", &thePropBoolean}};
constexpr PropDef cRadioProps[] = {
    {"items", cItemsKind, nullptr, &thePropStrItems},
    {"itemIndex", cIndexKind, nullptr, &thePropInteger},
};
constexpr EventDef cChangeEvents[] = {{"onChange", "NotifyArgs"}};
constexpr PropDef cListBoxProps[] = {
    {"items", cItemsKind, nullptr, &thePropStrItems},
    {"selectedIndex", cIndexKind, nullptr, &thePropInteger},
};
constexpr EventDef cListBoxEvents[] = {{"onSelChanged", "NotifyArgs"}};
constexpr PropDef cTabProps[] = {
    {"pages", cPagesKind, nullptr, &thePropPages, false},
    {"selectedIndex", cIndexKind, nullptr, &thePropInteger},
};
constexpr PropDef cListProps[] = {
    {"colCount", cOtherKind, "0", &thePropInteger},
    {"rowCount", cOtherKind, "0", &thePropInteger},
    {"fullRowSelect", cOtherKind, "true", &thePropBoolean},
    {"editLabels", cOtherKind, "false", &thePropBoolean},
    {"gridLines", cOtherKind, "true", &thePropBoolean},
    {"headerVisible", cOtherKind, "true", &thePropBoolean},
    {"showSelection", cOtherKind, "false", &thePropBoolean},
};
constexpr EventDef cListEvents[] = {
    {"onCreate", "NotifyArgs"},    {"onChoose", "NotifyArgs"}, {"onChangeText", "NotifyArgs"},
    {"onChangeSel", "NotifyArgs"}, {"onPostEdit", "ItemArgs"},
};
constexpr PropDef cGridProps[] = {
    {"lockCol", cOtherKind, nullptr, &thePropInteger},
    {"rowHeight", cOtherKind, nullptr, &thePropInteger},
};
constexpr EventDef cGridEvents[] = {{"onStartEdit", "ItemArgs"}};
constexpr EventDef cTreeEvents[] = {{"onChoose", "TreeArgs"}, {"onExpand", "TreeArgs"}};
constexpr EventDef cPaintEvents[] = {{"onDraw", "NotifyArgs"}, {"onPaint", "PaintArgs"}};
constexpr PropDef cToolBarProps[] = {{"items", cItemsKind, nullptr, &thePropTbItems}};
constexpr PropDef cTrackProps[] = {
    {"min", cOtherKind, "0", &thePropInteger},
    {"max", cOtherKind, "100", &thePropInteger},
    {"value", cOtherKind, "0", &thePropInteger},
    {"orientation", cOrientationKind, "cHorizontal", &thePropOrientation},
};
constexpr PropDef cSpinProps[] = {
    {"min", cOtherKind, "0", &thePropInteger},
    {"max", cOtherKind, "100", &thePropInteger},
    {"value", cOtherKind, "0", &thePropInteger},
};
constexpr PropDef cCheckGroupProps[] = {
    {"items", cItemsKind, nullptr, &thePropStrItems},
    {"itemFlags", cIndexKind, nullptr, &thePropInteger},
};
constexpr PropDef cImageProps[] = {
    {"stretch", cOtherKind, "false", &thePropBoolean},
    {"autosize", cOtherKind, "false", &thePropBoolean},
    {"proportional", cOtherKind, "false", &thePropBoolean},
};
constexpr PropDef cDialProps[] = {
    {"pos", cPositionKind, "0", &thePropFloat},
    {"min", cMinimumKind, "0", &thePropFloat},
    {"max", cMaximumKind, "60", &thePropFloat},
    {"steps", cStepsKind, "60", &thePropInteger},
    {"showPos", cOtherKind, "true", &thePropBoolean},
    {"labels", cDetailKind, "cMinMax", &thePropDialLabels},
    {"text", cSecondDetailKind, "", &thePropString},
};

// A class of the toolbox. `second` rows go after the `own` ones.
struct ClassRow {
  const char* name;
  int id;
  unsigned propMask;
  unsigned eventMask;
  std::span<const PropDef> own = {};
  std::span<const EventDef> events = {};
  std::span<const PropDef> second = {};
  std::span<const EventDef> secondEvents = {};
};

constexpr ClassRow cClasses[] = {
    {"Label", cLabelId, 0x1BFF, 0x600A, cLabelProps},
    {"Edit", cEditId, 0x1BFF, 0x1E00A, cEditProps, cEditEvents},
    {"Memo", cMemoId, 0x1BFF, 0x600A},
    {"ComboBox", cComboBoxId, 0x1BFF, 0x600A, cComboProps, cComboEvents},
    {"Button", cButtonId, 0x1BFF, 0x600B, cButtonProps},
    {"CheckBox", cCheckBoxId, 0x1BFF, 0x640B, cCheckProps},
    {"RichView", cRichViewId, 0x1BFF, 0x600A},
    {"GroupBox", cGroupBoxId, 0x13FF, 0x600A},
    {"RadioGroup", cRadioGroupId, 0x1BFF, 0x600A, cRadioProps, cChangeEvents},
    {"Panel", cPanelId, 0x18FF, 0x63FA},
    {"ListBox", cListBoxId, 0x18FF, 0x600A, cListBoxProps, cListBoxEvents},
    {"TabCtrl", cTabCtrlId, 0x1A3F, 0x600A, cTabProps, cChangeEvents},
    {"ListView", cListViewId, 0x18FF, 0x640A, cListProps, cListEvents},
    {"TreeView", cTreeViewId, 0x18FF, 0x640A, {}, cTreeEvents},
    {"DataGrid", cDataGridId, 0xFBFF, 0xFFFF, cListProps, cListEvents, cGridProps, cGridEvents},
    {"PaintBox", cPaintBoxId, 0x18FF, 0xFFFF, {}, cPaintEvents},
    {"PlotXY", cPlotXYId, 0x18FF, 0xFFFF},
    {"ToolBar", cToolBarId, 0x18FF, 0x600B, cToolBarProps},
    {"StatusBar", cStatusBarId, 0x18FF, 0x600A},
    {"ProgressBar", cProgressBarId, 0x18FF, 0x600A},
    {"TrackBar", cTrackBarId, 0x18FF, 0x600A, cTrackProps, cChangeEvents},
    {"SpinEdit", cSpinEditId, 0x1CFF, 0x600A, cSpinProps, cChangeEvents},
    {"CheckGroup", cCheckGroupId, 0x1FFF, 0x600A, cCheckGroupProps, cChangeEvents},
    {"Image", cImageId, 0x18FF, 0x600A, cImageProps},
    {"DialCtrl", cDialCtrlId, 0x18FF, 0x600A, cDialProps, cChangeEvents},
    {"TabPage", cTabPageId, 0x1200, 0x600A},
};

template <class Row>
void Append(std::vector<Row>& rows, std::span<const Row> more) {
  rows.insert(rows.end(), more.begin(), more.end());
}

template <class Row>
void AppendMasked(std::vector<Row>& rows, std::span<const Row> shared, unsigned mask) {
  for (size_t bit = 0; bit < shared.size(); ++bit)
    if (mask >> bit & 1) rows.push_back(shared[bit]);
}

void SetFlags(CtrlClass& made) {
  const int id = made.ctrlId;
  made.isContainer = id == cGroupBoxId || id == cPanelId || id == cTabPageId;
  made.noBounds = made.isPage = id == cTabPageId;
  made.thirdFlag = id == cStatusBarId || id == cTabCtrlId;
  made.alwaysRefresh = id == cTabCtrlId;
}

CtrlClass MakeClass(const ClassRow& row) {
  CtrlClass made(row.name, row.id, row.propMask, row.eventMask);
  Append(made.props, row.own);
  Append(made.props, row.second);
  Append(made.events, row.events);
  Append(made.events, row.secondEvents);
  SetFlags(made);
  if (row.id == cEditId) made.props[made.FindRow("borderStyle")].defaultValue = "cFixed3d";
  if (row.id == cTabCtrlId) {
    // A tab control has no text of its own: the row edits that of the current page.
    const int idx = made.FindRow("text");
    MAVRO_ASSERT_AS(idx > 0, "idx>0");
    made.props[idx].emit = false;
  }
  return made;
}

CtrlClass MakeFormClass() {
  CtrlClass made("Form", cFormId, 0xFFFF, 0xFFFE);
  Append<PropDef>(made.props, cFormProps);
  Append<EventDef>(made.events, cFormEvents);
  made.isContainer = true;
  return made;
}

std::vector<CtrlClass> MakeRegistry() {
  std::vector<CtrlClass> classes;
  classes.reserve(std::size(cClasses));
  for (const ClassRow& row : cClasses) classes.push_back(MakeClass(row));
  return classes;
}

}  // namespace

const CtrlClass WindowRegClass = MakeFormClass();

CtrlClass::CtrlClass(std::string_view newName, int newId, unsigned propMask, unsigned eventMask)
    : name(newName), ctrlId(newId) {
  AppendMasked<PropDef>(props, cSharedProps, propMask);
  AppendMasked<EventDef>(events, cSharedEvents, eventMask);
}

int CtrlClass::FindRow(std::string_view row) const {
  const auto at = std::find_if(props.begin(), props.end(),
                               [&](const PropDef& prop) { return prop.name == row; });
  return at == props.end() ? -1 : static_cast<int>(at - props.begin());
}

std::string_view CtrlClass::DefaultOf(std::string_view row) const {
  const int at = FindRow(row);
  return at < 0 || !props[at].defaultValue ? std::string_view() : props[at].defaultValue;
}

const std::vector<CtrlClass>& Registry() {
  static const std::vector<CtrlClass> classes = MakeRegistry();
  return classes;
}

void InitRegistry() {
  Registry();
}

const CtrlClass* FindClass(std::string_view name) {
  const std::vector<CtrlClass>& classes = Registry();
  const auto at = std::find_if(classes.begin(), classes.end(),
                               [&](const CtrlClass& one) { return one.name == name; });
  return at == classes.end() ? nullptr : &*at;
}

}  // namespace zendry
