#pragma once

#include <string>

namespace mavro {

// What a list shows about a name besides the name itself.
struct ListNote {
  std::string type;    // in the second column of the list
  std::string detail;  // beside the list while the row is selected; empty for nothing
};

}  // namespace mavro
