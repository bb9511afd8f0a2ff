#pragma once

#include <string>

#include "WindresOptions.h"

namespace zendry {

struct WindresResult {
  std::string messages;  // for standard error; a successful run may have warnings
  bool ok = false;
};

// Compiles a script. The object is written whole or not at all; when the run fails, an older object
// of that name is deleted. `gcc` is the preprocessor's program.
WindresResult RunWindres(const WindresOptions& options, const std::string& gcc);

}  // namespace zendry
