#pragma once

#include "Application.h"

namespace zendry {

// Runs the program: reads the settings, shows the main window with the file that the command line
// names, and writes the settings after the last window has closed. Answers the exit code.
int RunIde(const mavro::ArgumentList& arguments);

}  // namespace zendry
