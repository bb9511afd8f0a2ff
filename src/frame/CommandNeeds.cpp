#include "frame/CommandNeeds.h"

#include "SciCommands.h"
#include "base/FileCommands.h"
#include "base/HelpCommands.h"
#include "browser/BrowserActs.h"
#include "build/BuildActs.h"
#include "debug/Debugger.h"
#include "editor/EditorActs.h"
#include "frame/PrjActs.h"
#include "frame/ToolActs.h"
#include "frame/ViewCommands.h"

namespace zendry {

namespace {

struct NeedsRow {
  int id;
  Needs needs;
};

using enum Needs;

constexpr NeedsRow cRows[] = {
    {cSaveCommand, cTab},
    {cSaveAsCommand, cTab},
    {cCloseCommand, cTab},
    {cCloseAllCommand, cTab},
    {cPrintCommand, cTab},
    {cPrintPreviewCommand, cTab},
    {cSaveAllCommand, cTabOrProject},
    {cSaveProjectCommand, cProject},
    {cCloneProjectCommand, cProject},
    {cCloseProjectCommand, cProject},
    {cRecentFilesCommand, cRecentFiles},
    {cRecentProjectsCommand, cRecentProjects},
    {cCutCommand, cWritableSelection},
    {cCopyCommand, cSelection},
    {cPasteCommand, cWritable},
    {cUndoCommand, cUndo},
    {cRedoCommand, cRedo},
    {mavro::cSciDeleteLine, cWritable},
    {mavro::cSciLowerCase, cWritable},
    {mavro::cSciUpperCase, cWritable},
    {mavro::cSciToggleComment, cWritableSource},
    {mavro::cSciMoveLinesUp, cWritable},
    {mavro::cSciMoveLinesDown, cWritable},
    {mavro::cSciDuplicate, cWritable},
    {mavro::cSciJoinLines, cWritable},
    {mavro::cSciSortLines, cWritable},
    {mavro::cSciStripBlanks, cWritable},
    {mavro::cSciEndsLf, cWritable},
    {mavro::cSciEndsCrLf, cWritable},
    {mavro::cSciEndsCr, cWritable},
    {mavro::cSciWrapLines, cSmallText},
    {mavro::cSciShowWhiteSpace, cTab},
    {mavro::cSciShowLineEnds, cTab},
    {mavro::cSciCloseFolds, cFolds},
    {mavro::cSciOpenFolds, cFolds},
    {cShowLongLineCommand, cLongLines},
    {cRecordMacroCommand, cTab},
    {cPlayMacroCommand, cMacro},
    {cCompileFileCommand, cBuildSource},
    {cMakeCommand, cProjectOrSource},
    {cRebuildCommand, cProjectOrSource},
    {cSwitchModeCommand, cProject},
    {cClearOutputCommand, cProject},
    {cNextErrorCommand, cErrors},
    {cPreviousErrorCommand, cErrors},
    {cAddFileCommand, cProject},
    {cRemoveFileCommand, cProject},
    {cProjectOptionsCommand, cProject},
    {cCreateMakefileCommand, cProject},
    {cBreakpointCommand, cBreakableLine},
    {cClearBreakpointsCommand, cBreakpoints},
    {cAddWatchCommand, cTab},
    {cClearWatchesCommand, cWatches},
    {cStepIntoCommand, cStep},
    {cStepOutCommand, cStep},
    {cStepOverCommand, cStep},
    {cRunToCursorCommand, cStepInSource},
    {cRunCommand, cStep},
    {cRunPlainCommand, cRunPlain},
    {cPauseCommand, cRunning},
    {cStopDebugCommand, cSession},
    {cViewStackCommand, cPaused},
    {cCommanderCommand, cSession},
    {cParametersCommand, cProject},
    {cTidyCommand, cTab},
    {cOpenDesignerCommand, cTab},
    {cNewFormCommand, cTabOrProject},
    {mavro::cSciFind, cTab},
    {mavro::cSciFindSelection, cTab},
    {mavro::cSciFindSelectionBack, cTab},
    {mavro::cSciFindRepeat, cTab},
    {mavro::cSciFindPrevious, cTab},
    {mavro::cSciReplace, cWritable},
    {cFindInProjectCommand, cTabOrProject},
    {cReplaceInProjectCommand, cTabOrProject},
    {cUndoReplaceCommand, cReplaceUndo},
    {cAddMemberCommand, cTab},
    {cOpenBrowserCommand, cTab},
    {cDeleteMemberCommand, cClassNode},
    {cBackCommand, cPlaceBehind},
    {cForwardCommand, cPlaceAhead},
    {cWordHelpCommand, cTab},
    {cShowLeftCommand, cHiddenLeftPanel},
    {cShowBottomCommand, cHiddenBottomPanel},
};

}  // namespace

Needs NeedsOf(int commandId) {
  for (const NeedsRow& row : cRows)
    if (row.id == commandId) return row.needs;
  return cNothing;
}

}  // namespace zendry
