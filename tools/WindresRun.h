#pragma once

#include <string>

#include "WindresOptions.h"

namespace zendry {

struct WindresResult {
  std::string messages;  // for standard error; may hold warnings of a run that went well
  bool ok = false;
};

// Compiles a script. The object appears whole or not at all: one of that name from before is gone
// when the run fails. `gcc` is the preprocessor's program.
WindresResult RunWindres(const WindresOptions& options, const std::string& gcc);

}  // namespace zendry
