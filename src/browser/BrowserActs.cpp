#include "browser/BrowserActs.h"

#include "base/HelpCommands.h"
#include "code/WordAtCaret.h"
#include "editor/EditTabs.h"

namespace zendry {

namespace {

using mavro::cControlKey;
using mavro::cShiftKey;

using enum Offered;

constexpr CommandRow cRows[] = {
    {1106, "&Find Symbol", cKeyF12, cLater},
    {cCompleteCommand, "&Compleate code", cControlKey | cKeySpace},
    {cShowTipCommand, "&Show params info", cControlKey | cShiftKey | cKeySpace},
    {1109, "Add Class Member", cShiftKey | cKeyF12, cLater},
    {mavro::cSeparatorRow},
    {cSwitchFileCommand, "&Swich Src/Hdr", cControlKey | cKeySlash},
    {mavro::cSeparatorRow},
    {cFindDeclarationCommand, "Find D&eclaration", cControlKey | cShiftKey | cKeyUp, cLater},
    {cFindDefinitionCommand, "Find &Definition", cControlKey | cShiftKey | cKeyDown, cLater},
    {mavro::cSeparatorRow},
    {1111, "Open Browser", cControlKey | cKeyF12, cLater},
};

}  // namespace

BrowserActs theBrowserActs;

BrowserActs::BrowserActs() : CommandList(cRows) {}

void BrowserActs::CarryOut(int id) {
  EditTab* tab = tabs ? tabs->Active() : nullptr;
  if (!tab) return;
  if (id == cWordHelpCommand) {
    if (onWordHelp) onWordHelp(WordAtCaret(tab->editor->LiveText()).text);
    return;
  }
  if (id == cSwitchFileCommand) return tabs->GoToCounterpart();
  if (id == cCompleteCommand) tab->editor->AskForList();
  if (id == cShowTipCommand) tab->editor->startCallTip();
  tab->editor->Focus();
}

}  // namespace zendry
