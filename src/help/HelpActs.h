#pragma once

#include "Action.h"

namespace zendry {

class HelpActs : public mavro::ActionList {
 public:
  HelpActs();
};

extern HelpActs theHelpActs;

}  // namespace zendry
