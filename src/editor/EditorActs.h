#pragma once

#include <bitset>

#include "SciCommands.h"
#include "base/CommandTable.h"

namespace zendry {

// Ids that other files use. Commands are numbered from 801 in the order of the table, except the
// few that have a number of their own.
enum EditorCommand {
  cFindCommand = 801,
  cFindRepeatCommand = 804,
  cToggleBookmarkCommand = 808,
  cCutCommand = 814,
  cCopyCommand = 815,
  cPasteCommand = 816,
  cUndoCommand = 817,
  cLowerCaseCommand = 822,
  cLineNumbersCommand = 826,
  cFontTypeCommand = 827,
  cShowLongLineCommand = 835,
  cGoToMatchCommand = 842,
  cPlayMacroCommand = 844,
  cRecordMacroCommand = 845,
  cRedoCommand = 848,
  // Tabs; other commands are above 860.
  cLastTabCommand = 880,
  cCloseTabCommand = 881,
  cStripWhenSavingCommand = 882,
  cEndLastLineCommand = 883,
  cTabListCommand = 884,
  cFirstTabCommand = 891,
  cNinthTabCommand = 899
};

// Commands that switch something, or choose one of several: a mark is beside those that are on.
constexpr int cMarkedCommands[] = {
    cLineNumbersCommand,       cFontTypeCommand,        mavro::cSciWrapLines,
    mavro::cSciShowWhiteSpace, mavro::cSciShowLineEnds, mavro::cSciReadOnly,
    mavro::cSciEndsLf,         mavro::cSciEndsCrLf,     mavro::cSciEndsCr,
    cStripWhenSavingCommand,   cEndLastLineCommand};
using CommandMarks = std::bitset<std::size(cMarkedCommands)>;

class EditTabs;

// The commands of the source editor.
class EditorActs : public CommandList {
 public:
  EditorActs();
  // The tabs whose front editor the commands act on; null for none: then commands do nothing.
  void Bind(EditTabs* newTabs) { tabs = newTabs; }
  // What is on: the settings, and the state of the text in front.
  CommandMarks MarksNow() const;

 private:
  void CarryOut(int id) override;

  EditTabs* tabs = nullptr;
};

extern EditorActs theEditorActs;

}  // namespace zendry
