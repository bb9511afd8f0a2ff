#pragma once

#include "ListView.h"
#include "TabCtrl.h"

namespace zendry {

// A page of watched expressions and their values. The last row is always empty.
class WatchList : public mavro::TabPage {
 public:
  WatchList();

  // Adds the empty row.
  void Prepare();
  // Removes all rows except the empty one.
  void Clear();

  mavro::ListView list;
};

}  // namespace zendry
