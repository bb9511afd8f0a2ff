#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

class PropClass;

// What a property is for. The numbers up to cHeightKind are geometry, which the writer writes apart
// from other properties.
enum PropKind {
  cClassKind = 0,
  cNameKind = 1,
  cDockKind = 2,
  cLeftKind = 3,
  cTopKind = 4,
  cWidthKind = 5,
  cHeightKind = 6,
  cBorderKind = 7,
  cBackColorKind = 8,
  cForeColorKind = 9,
  cFontKind = 10,
  cTextKind = 11,
  cDataLinkKind = 12,
  cToolTipKind = 13,
  cTagKind = 14,
  cPagesKind = 15,
  cItemsKind = 16,
  cIndexKind = 17,
  cOrientationKind = 18,
  cDetailKind = 19,
  cSecondDetailKind = 20,
  cMinimumKind = 21,
  cMaximumKind = 22,
  cPositionKind = 23,
  cStepsKind = 24,
  cOtherKind = 25
};

// A row of a class's table of properties.
struct PropDef {
  const char* name;          // of the member in source
  int kind;                  // a PropKind
  const char* defaultValue;  // may be null, which means empty
  const PropClass* cvt;      // the type of its values
  bool emit = true;          // the writer makes a statement of it
};

// A row of a class's table of events.
struct EventDef {
  const char* name;
  const char* argType;  // class of the handler's argument
};

// Numbers of the classes, for the tables of what needs a window: how a control is made and how a
// value reaches it. 12 is the tab control; 0 is the form.
enum CtrlId {
  cFormId = 0,
  cLabelId = 1,
  cEditId = 2,
  cButtonId = 3,
  cCheckBoxId = 4,
  cRichViewId = 5,
  cMemoId = 6,
  cGroupBoxId = 7,
  cRadioGroupId = 8,
  cPanelId = 9,
  cComboBoxId = 10,
  cListBoxId = 11,
  cTabCtrlId = 12,
  cListViewId = 13,
  cTreeViewId = 14,
  cDataGridId = 15,
  cPaintBoxId = 16,
  cPlotXYId = 17,
  cToolBarId = 18,
  cStatusBarId = 19,
  cProgressBarId = 20,
  cTrackBarId = 21,
  cSpinEditId = 22,
  cCheckGroupId = 23,
  cImageId = 24,
  cDialCtrlId = 25,
  cTabPageId = 26
};

// A class of controls that forms may hold: its tables and its flags.
class CtrlClass {
 public:
  // Copies the rows of the tables which all classes share that the masks select, in their order.
  CtrlClass(std::string_view newName, int newId, unsigned propMask, unsigned eventMask);
  CtrlClass(const CtrlClass&) = delete;
  CtrlClass& operator=(const CtrlClass&) = delete;
  CtrlClass(CtrlClass&&) = default;

  // The place of a row in `props`, -1 without one.
  int FindRow(std::string_view row) const;
  // The default of a row's value, empty without one.
  std::string_view DefaultOf(std::string_view row) const;

  bool noBounds = false;       // has no geometry in source, and isn't in the toolbox
  bool isContainer = false;    // controls may be dropped into it
  bool thirdFlag = false;      // nothing reads it
  bool alwaysRefresh = false;  // the property box is filled again even for the same control
  bool isPage = false;         // is attached to its parent as a page
  std::string name;
  int ctrlId;
  std::vector<PropDef> props;
  std::vector<EventDef> events;
};

// The class of the form itself. It isn't in the registry, so FindClass doesn't find it.
extern const CtrlClass WindowRegClass;

// The classes in the order of the toolbox.
const std::vector<CtrlClass>& Registry();
// Builds the registry. Further calls do nothing; the functions here call it themselves.
void InitRegistry();
// The class of that name; null without one.
const CtrlClass* FindClass(std::string_view name);

}  // namespace zendry
