#pragma once

#include "Action.h"

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
  cGoToMatchCommand = 842,
  cPlayMacroCommand = 844,
  cRecordMacroCommand = 845,
  cRedoCommand = 848
};

// The commands of the source editor.
class EditorActs : public mavro::ActionList {
 public:
  EditorActs();
  // Carries out a command in the editor in front; without one nothing happens.
  void OnCommand(int id);
};

extern EditorActs theEditorActs;

}  // namespace zendry
