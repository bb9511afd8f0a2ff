#pragma once

#include <vector>

#include "IconView.h"
#include "TabCtrl.h"
#include "frmedt/CtrlReg.h"

namespace zendry {

// Picture strips of the designer among the program's resources, by resource id.
constexpr int cToolBoxStrip = 0x70;
constexpr int cDesignStrip = 0x71;

// A row of the toolbox.
struct ToolEntry {
  int imageIndex = 0;
  const CtrlClass* classDef = nullptr;  // that of the form means that no tool is chosen
};

// The page with the classes that can be dropped on a form. The first row stands for none of them.
class ToolBox : public mavro::TabPage {
 public:
  ToolBox();

  // The selected row; without a selection it selects the first one.
  const ToolEntry& Selected();
  // Selects the first row.
  void Reset();
  const std::vector<ToolEntry>& Entries() const { return entries; }

  mavro::IconView icons;

 private:
  std::vector<ToolEntry> entries;
};

}  // namespace zendry
