#pragma once

namespace zendry {

// Commands on the window's own parts.
enum ViewCommand {
  cShowLeftCommand = 1500,
  cShowBottomCommand = 1501,
  cToggleToolBarCommand = 1502,
  cToggleStatusBarCommand = 1503
};

}  // namespace zendry
