#pragma once

#include "ListView.h"
#include "TabCtrl.h"

namespace zendry {

// A page of watched expressions and their values. One empty row always stands at its end.
class WatchList : public mavro::TabPage {
 public:
  WatchList();

  // Gives the list its empty row.
  void Prepare();
  // Takes all rows away but the empty one.
  void Clear();

  mavro::ListView list;
};

}  // namespace zendry
