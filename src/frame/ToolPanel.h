#pragma once

#include "Core.h"
#include "TabCtrl.h"
#include "ToolBar.h"

namespace zendry {

// The small bar above the left tabs. Its buttons depend on the visible page: on "Project" they act
// on the project, on "Classes" on the class browser. The last button closes the panel.
class ToolPanel : public mavro::Panel {
 public:
  enum Row { cMainRow, cAddRow, cRemoveRow, cCloseRow };

  // `newTabs` are the tabs whose visible page decides; not owned.
  explicit ToolPanel(mavro::TabCtrl& newTabs);

  // Enables the buttons that can act on the visible page.
  void UpdateButtons();

  mavro::ToolBar bar;
  mavro::NotifyEvent onClosePanel;

 private:
  void OnButton(mavro::NotifyArgs& args);
  void OnPage(mavro::NotifyArgs& args);
  mavro::Action* ActionOf(int row) const;
  bool IsOffered(const mavro::Action* action) const;

  mavro::TabCtrl& tabs;
};

}  // namespace zendry
