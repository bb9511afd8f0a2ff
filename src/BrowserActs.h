#pragma once

#include "Action.h"

namespace zendry {

// The commands on symbols of the source.
class BrowserActs : public mavro::ActionList {
 public:
  BrowserActs();
};

extern BrowserActs theBrowserActs;

}  // namespace zendry
