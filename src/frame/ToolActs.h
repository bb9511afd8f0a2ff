#pragma once

#include "base/CommandTable.h"

namespace zendry {

class EditTabs;

constexpr int cFindInProjectCommand = 1005;
constexpr int cReplaceInProjectCommand = 1006;
constexpr int cTidyCommand = 1007;
constexpr int cUndoReplaceCommand = 1008;
constexpr int cIdeOptionsCommand = 1602;
constexpr int cOpenDesignerCommand = 3290;
constexpr int cNewFormCommand = 3291;

// The commands of the menu "&Tools".
class ToolActs : public CommandList {
 public:
  ToolActs();
  // The tabs whose front editor the commands act on; null for none: then commands do nothing.
  void Bind(EditTabs* newTabs) { tabs = newTabs; }

 private:
  void CarryOut(int id) override;

  EditTabs* tabs = nullptr;
};

extern ToolActs theToolActs;

}  // namespace zendry
