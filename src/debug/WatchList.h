#pragma once

#include "ListView.h"
#include "TabCtrl.h"
#include "debug/Watches.h"

namespace zendry {

class Debugger;

// A page of watched expressions and their values, for one of the debugger's lists. The last row is
// always empty: an expression that is typed there is added.
class WatchList : public mavro::TabPage {
 public:
  WatchList();

  // Whose list it shows, and which; without a debugger it is only shown. `newDebugger` isn't owned.
  void Bind(Debugger* newDebugger, int newNumber);

  // Adds the empty row.
  void Prepare();
  // Removes all rows except the empty one, and their expressions.
  void Clear();
  // Shows all rows anew; the same for the value of one row. A cell that is being edited stays open.
  void ShowAll();
  void ShowValue(int row);

  mavro::ListView list;

 private:
  const std::vector<Watch>& Rows() const;
  void OnChoose(mavro::NotifyArgs& args);
  void OnClickRow(mavro::NotifyArgs& args);
  void OnKey(mavro::KeyArgs& args);
  void OnEdited(mavro::ItemArgs& args);

  Debugger* debugger = nullptr;
  int number = 0;
};

}  // namespace zendry
