#pragma once

#include "Application.h"

namespace zendry {

// The program from its settings to its settings: reads them, shows the main window with the file
// that the command line names, and writes them when the last window has gone. Answers the exit
// code.
int RunIde(const mavro::ArgumentList& arguments);

}  // namespace zendry
