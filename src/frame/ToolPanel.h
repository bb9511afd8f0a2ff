#pragma once

#include "Core.h"
#include "TabCtrl.h"
#include "ToolBar.h"

namespace zendry {

// The small bar above the left tabs. What its buttons do depends on the page that is shown: on
// "Project" they act on the project, on "Classes" on the class browser; the last one closes the
// panel.
class ToolPanel : public mavro::Panel {
 public:
  enum Row { cMainRow, cAddRow, cRemoveRow, cCloseRow };

  // The tabs whose page decides; not owned.
  explicit ToolPanel(mavro::TabCtrl& newTabs);

  // Offers what the page shown can do.
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
