#include "frame/ToolActs.h"

#include "editor/EditTabs.h"
#include "editor/EditorHost.h"
#include "editor/SourceTidy.h"

namespace zendry {

namespace {

using mavro::cControlKey;
using mavro::cShiftKey;

using enum Offered;

constexpr CommandRow cRows[] = {
    {1005, "Find In Project", cControlKey | cShiftKey | 'F', cLater},
    {1006, "Replace In Project", cControlKey | cShiftKey | 'R', cLater},
    {mavro::cSeparatorRow},
    {cTidyCommand, "C++ source tidy", cControlKey | cShiftKey | cKeyF11, cNow,
     WhileBuilding::cRefused},
    {mavro::cSeparatorRow},
    {cOpenDesignerCommand, "Open Form Designer ", cKeyF11, cLater},
    {3291, "Insert New Form ", cShiftKey | cKeyF11, cLater},
    {1602, "Ide Options", 0, cLater},
};

}  // namespace

ToolActs theToolActs;

ToolActs::ToolActs() : CommandList(cRows) {}

void ToolActs::CarryOut(int id) {
  EditTab* tab = tabs ? tabs->Active() : nullptr;
  if (id == cTidyCommand && tab) tabs->Host()->Say(TidySource(*tab->editor));
}

}  // namespace zendry
