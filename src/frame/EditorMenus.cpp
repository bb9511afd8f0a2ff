#include "frame/EditorMenus.h"

#include "base/CommandTable.h"
#include "browser/BrowserActs.h"
#include "debug/Debugger.h"
#include "editor/EditorActs.h"

namespace zendry {

namespace {

// Rows of other lists in an order of their own.
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

// A menu with its rows filled and grayed.
struct FilledMenu : mavro::ContextMenu {
  explicit FilledMenu(mavro::ActionList& rows) {
    root.Fill(rows);
    GrayUnhandled(root);
  }
};

}  // namespace

void GrayUnhandled(mavro::Menu& menu) {
  for (const auto& item : menu.items) {
    if (item->isSubmenu)
      GrayUnhandled(static_cast<mavro::Menu&>(*item));
    else if (item->action && !IsHandled(item->action))
      item->Enable(false);
  }
}

mavro::ContextMenu& EditorTextMenu() {
  static CtxEditorActs rows;
  static FilledMenu menu(rows);
  return menu;
}

mavro::ContextMenu& EditorMarginMenu() {
  static CtxMargActs rows;
  static FilledMenu menu(rows);
  return menu;
}

}  // namespace zendry
