#pragma once

#include <bitset>

namespace zendry {

// The condition that a command needs.
enum class Needs {
  cNothing,
  cTab,
  cWritable,        // a tab with a text that can be changed
  cWritableSource,  // in a language with comments
  cWritableSelection,
  cFolds,      // a tab with a text that has folds
  cSmallText,  // a tab with a text that is not huge
  cLongLines,  // that are not shown
  cSelection,
  cUndo,
  cRedo,
  cMacro,  // one that is not being recorded
  cProject,
  cBuildSource,  // in front: of the project, or any source as long as no project is open
  cProjectOrSource,
  cTabOrProject,
  cErrors,       // in the error list, or results of a search
  cReplaceUndo,  // a replacement in files that can be undone
  cClassNode,    // selected in the class tree
  cPlaceBehind,  // that the user came from
  cPlaceAhead,
  cBreakableLine,  // the caret's: of a source that has a file
  cBreakpoints,
  cWatches,       // in the list in front
  cStep,          // what can be run, and not in the middle of a run
  cStepInSource,  // the same, with a source in front
  cRunPlain,      // the same, and no debug session
  cPaused,        // a debug session whose program has stopped
  cRunning,       // one whose program runs
  cSession,       // one in any state
  cRecentFiles,
  cRecentProjects,
  cHiddenLeftPanel,
  cHiddenBottomPanel,
  cCount
};

// The needs that are met.
using MetNeeds = std::bitset<static_cast<size_t>(Needs::cCount)>;

// The need of a command, by its id.
Needs NeedsOf(int commandId);

inline bool IsMet(const MetNeeds& met, Needs needs) {
  return needs == Needs::cNothing || met[static_cast<size_t>(needs)];
}

}  // namespace zendry
