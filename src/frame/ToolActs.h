#pragma once

#include "Action.h"

namespace zendry {

constexpr int cOpenDesignerCommand = 3290;

// The commands of the menu "&Tools".
class ToolActs : public mavro::ActionList {
 public:
  ToolActs();
};

extern ToolActs theToolActs;

}  // namespace zendry
