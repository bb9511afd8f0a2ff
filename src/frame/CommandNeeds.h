#pragma once

#include <bitset>

namespace zendry {

// The condition that a command needs.
enum class Needs {
  cNothing,
  cTab,
  cSelection,
  cUndo,
  cRedo,
  cMacro,  // one that is not being recorded
  cProject,
  cBuildSource,  // in front: of the project, or any source as long as no project is open
  cProjectOrSource,
  cTabOrProject,
  cErrors,  // in the error list
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
