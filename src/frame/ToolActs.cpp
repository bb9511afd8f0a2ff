#include "frame/ToolActs.h"

namespace zendry {

namespace {

using mavro::cControlKey;
using mavro::cShiftKey;

using enum Offered;

constexpr CommandRow cRows[] = {
    {1005, "Find In Project", cControlKey | cShiftKey | 'F', cLater},
    {1006, "Replace In Project", cControlKey | cShiftKey | 'R', cLater},
    {mavro::cSeparatorRow},
    {1007, "C++ source tidy", cControlKey | cShiftKey | cKeyF11, cLater},
    {mavro::cSeparatorRow},
    {cOpenDesignerCommand, "Open Form Designer ", cKeyF11, cLater},
    {3291, "Insert New Form ", cShiftKey | cKeyF11, cLater},
    {1602, "Ide Options", 0, cLater},
};

}  // namespace

ToolActs theToolActs;

ToolActs::ToolActs() : CommandList(cRows) {}

}  // namespace zendry
