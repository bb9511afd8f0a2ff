#pragma once

#include <string_view>

namespace zendry {

// The danger of a compiler's switch that comes from somebody else.
enum class Risk {
  cRuns,         // it can start a program, or names a file that can
  cWrites,       // it names a file to write
  cHandsOn,      // the rest, parted by commas, goes to the preprocessor, assembler or linker
  cHandsOnNext,  // the same for the next argument
  cUnasked       // it writes files or chooses tools, as many projects want it: a danger only where
                 // somebody else's commands are read
};

struct RiskySwitch {
  std::string_view begin;  // an argument that begins so is this switch
  Risk risk = Risk::cRuns;
  bool takesNext = false;     // an argument that is no longer has its value in the next one
  bool holdsOptions = false;  // the value is a file with further options
};

// The row that an argument begins with; null if it has no known danger.
const RiskySwitch* FindRiskySwitch(std::string_view argument);

}  // namespace zendry
