#pragma once

#include <mavro>
#include <string>

#include "EmptyText.h"

namespace zendry {

class Debugger;
class EditTabs;

// The dialog that lists the breakpoints.
class BreakEditor : public mavro::Form {
  typedef BreakEditor This;

 public:
  // `itsDebugger` has the breakpoints, `itsTabs` shows their places; neither is owned.
  BreakEditor(Debugger& itsDebugger, EditTabs& itsTabs);

  // Shows the breakpoints anew: their numbers, places or conditions have changed.
  void Fill();

  // clang-format off
	//!decl
	mavro::Panel buttons;
	mavro::Button locate, condition, remove, removeAll, close;
	mavro::ListView list;
	//!end
  // clang-format on

 private:
  void Initialize();
  void OnLocate(mavro::NotifyArgs& args);
  void OnCondition(mavro::NotifyArgs& args);
  void OnRemove(mavro::NotifyArgs& args);
  void OnRemoveAll(mavro::NotifyArgs& args);
  void OnSelected(mavro::NotifyArgs& args);
  void OnKey(mavro::KeyArgs& args);
  void OnEdited(mavro::ItemArgs& args);
  void SelectRow(int row);
  void UpdateButtons();

  Debugger& debugger;
  EditTabs& tabs;
  mavro::EmptyText noBreakpoints;
};

}  // namespace zendry
