#include "frame/EditorMenus.h"

#include "browser/BrowserActs.h"
#include "debug/Debugger.h"
#include "editor/EditorActs.h"

namespace zendry {

namespace {

// Rows from other lists, in a different order.
struct CtxMargActs : mavro::ActionList {
  CtxMargActs() {
    AddRow(theEditorActs.Find(cToggleBookmarkCommand));
    AddRow(theDebugger.Find(cBreakpointCommand));
  }
};

struct CtxEditorActs : mavro::ActionList {
  CtxEditorActs() {
    AddRow(theBrowserActs.Find(cFindDeclarationCommand));
    AddRow(theBrowserActs.Find(cFindDefinitionCommand));
    AddSeparator();
    for (const int id :
         {cCutCommand, cCopyCommand, cPasteCommand, cUndoCommand, cRedoCommand, cFindCommand,
          cFindRepeatCommand, cGoToMatchCommand, cLowerCaseCommand, cShowLongLineCommand})
      AddRow(theEditorActs.Find(id));
  }
};

struct CtxDebugActs : mavro::ActionList {
  CtxDebugActs() {
    Add({cBreakpointCommand, cAddWatchCommand});
    AddSeparator();
    Add({cStepIntoCommand, cStepOverCommand, cStepOutCommand, cRunToCursorCommand});
    AddSeparator();
    Add({cRunCommand, cPauseCommand, cStopDebugCommand});
    AddSeparator();
    Add({cViewStackCommand, cViewBreakpointsCommand});
    AddSeparator();
    AddRow(theEditorActs.Find(cCopyCommand));
    AddRow(theEditorActs.Find(cToggleBookmarkCommand));
  }
  void Add(std::initializer_list<int> ids) {
    for (const int id : ids) AddRow(theDebugger.Find(id));
  }
};

struct FilledMenu : mavro::ContextMenu {
  explicit FilledMenu(mavro::ActionList& rows) { root.Fill(rows); }
};

}  // namespace

mavro::ContextMenu& EditorTextMenu() {
  static CtxEditorActs rows;
  static FilledMenu menu(rows);
  return menu;
}

mavro::ContextMenu& EditorDebugMenu() {
  static CtxDebugActs rows;
  static FilledMenu menu(rows);
  return menu;
}

mavro::ContextMenu& EditorMarginMenu() {
  static CtxMargActs rows;
  static FilledMenu menu(rows);
  return menu;
}

}  // namespace zendry
