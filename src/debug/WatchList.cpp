#include "debug/WatchList.h"

namespace zendry {

WatchList::WatchList() {
  list.AddColumn("variable", 100);
  list.AddColumn("value", 700);
  list.fullRowSelect = true;
  list.dock = mavro::Dock::cFill;
  Add(&list);
}

void WatchList::Prepare() {
  if (list.rowCount == 0) list.AddRow("");
}

void WatchList::Clear() {
  list.Clear();
  Prepare();
}

}  // namespace zendry
