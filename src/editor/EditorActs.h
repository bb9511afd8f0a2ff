#pragma once

#include "base/CommandTable.h"

namespace zendry {

// Ids that others name. Commands are numbered from 801 in the order of the table, but for the few
// that have a number of their own.
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
  cRedoCommand = 848
};

class EditTabs;

// The commands of the source editor.
class EditorActs : public CommandList {
 public:
  EditorActs();
  // The tabs in whose front editor commands act; null for none, where nothing happens.
  void Bind(EditTabs* newTabs) { tabs = newTabs; }

 private:
  void CarryOut(int id) override;

  EditTabs* tabs = nullptr;
};

extern EditorActs theEditorActs;

}  // namespace zendry
