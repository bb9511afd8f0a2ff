#include "frame/ToolActs.h"

#include "editor/EditTabs.h"
#include "editor/EditorHost.h"
#include "editor/SourceTidy.h"
#include "frame/IdeOptForm.h"
#include "frame/MainForm.h"
#include "frame/PrjActs.h"
#include "frame/SearchWindow.h"
#include "frmedt/DesignSession.h"
#include "frmedt/NewForm.h"
#include "project/Project.h"

namespace zendry {

namespace {

using mavro::cControlKey;
using mavro::cShiftKey;

constexpr CommandRow cRows[] = {
    {cFindInProjectCommand, "Find In Project", cControlKey | cShiftKey | 'F',
     WhileBuilding::cRefused},
    {cReplaceInProjectCommand, "Replace In Project", cControlKey | cShiftKey | 'R',
     WhileBuilding::cRefused},
    {cUndoReplaceCommand, "&Undo replace in project", 0, WhileBuilding::cRefused},
    {mavro::cSeparatorRow},
    {cTidyCommand, "C++ source tidy", cControlKey | cShiftKey | cKeyF11, WhileBuilding::cRefused},
    {mavro::cSeparatorRow},
    {cOpenDesignerCommand, "Open Form Designer ", cKeyF11, WhileBuilding::cRefused},
    {cNewFormCommand, "Insert New Form ", cShiftKey | cKeyF11, WhileBuilding::cRefused},
    {cIdeOptionsCommand, "Ide Options"},
};

}  // namespace

ToolActs theToolActs;

ToolActs::ToolActs() : CommandList(cRows) {}

void ToolActs::CarryOut(int id) {
  ProjectSearch* search = theMainForm ? &theMainForm->search->commands : nullptr;
  if (id == cFindInProjectCommand && search) return search->Find();
  if (id == cReplaceInProjectCommand && search) return search->Replace();
  if (id == cUndoReplaceCommand && search) return search->UndoReplace();
  if (id == cNewFormCommand && tabs)
    NewForm(*tabs, [](const std::string& path) {
      if (theProject.isOpen) thePrjActs.AddMade(path);
    });
  if (id == cIdeOptionsCommand && theMainForm) return ChangeIdeOptions();
  if (id == cOpenDesignerCommand && theMainForm && tabs)
    return DesignForm(*tabs, theMainForm->completion.wizard, theMainForm->sources);
  EditTab* tab = tabs ? tabs->Active() : nullptr;
  if (id == cTidyCommand && tab) tabs->Host()->Say(TidySource(*tab->editor));
}

}  // namespace zendry
