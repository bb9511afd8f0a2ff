#pragma once

#include "base/CommandTable.h"

namespace zendry {

constexpr int cOpenDesignerCommand = 3290;

// The commands of the menu "&Tools".
class ToolActs : public CommandList {
 public:
  ToolActs();

 private:
  void CarryOut(int) override {}
};

extern ToolActs theToolActs;

}  // namespace zendry
