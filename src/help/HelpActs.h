#pragma once

#include "base/CommandTable.h"

namespace zendry {

// The commands of the menu "&Help".
class HelpActs : public CommandList {
 public:
  HelpActs();

 private:
  void CarryOut(int) override {}
};

extern HelpActs theHelpActs;

}  // namespace zendry
