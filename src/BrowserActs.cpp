#include "BrowserActs.h"

#include "CommandTable.h"

namespace zendry {

namespace {

using mavro::cControlKey;
using mavro::cShiftKey;

using enum Offered;

constexpr CommandRow cRows[] = {
    {1106, "&Find Symbol", cKeyF12, cLater},
    {1107, "&Compleate code", cControlKey | cKeySpace, cLater},
    {1108, "&Show params info", cControlKey | cShiftKey | cKeySpace, cLater},
    {1109, "Add Class Member", cShiftKey | cKeyF12, cLater},
    {mavro::cSeparatorRow},
    {1101, "&Swich Src/Hdr", cControlKey | cKeySlash, cLater},
    {mavro::cSeparatorRow},
    {1104, "Find D&eclaration", cControlKey | cShiftKey | cKeyUp, cLater},
    {1105, "Find &Definition", cControlKey | cShiftKey | cKeyDown, cLater},
    {mavro::cSeparatorRow},
    {1111, "Open Browser", cControlKey | cKeyF12, cLater},
};

}  // namespace

BrowserActs theBrowserActs;

BrowserActs::BrowserActs() {
  AddCommands(*this, cRows);
}

}  // namespace zendry
