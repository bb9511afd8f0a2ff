#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "LineRules.h"

namespace mavro {

// The read operation over a tool's pipe. It answers at most 80 bytes at a time, which is what the
// rounds of delivery go by, and fetches much more than that from the system beneath.
class PipeReader {
 public:
  // What became of a fetch: bytes are there now; none yet; the output has ended; it can't be read.
  enum class Fetch { cBytes, cNone, cEnd, cError };

  PipeReader();

  // Fetches what the pipe holds, up to a limit, behind what is there. `descriptor` doesn't block.
  Fetch FetchAhead(int descriptor);
  size_t BytesAhead() const { return ahead.size() - taken; }
  // The next at most 80 bytes; empty if there are none. Valid until the next fetch.
  std::string_view Read();

 private:
  NewlineConverter converter;
  std::vector<char> piece;
  std::string ahead;
  size_t taken = 0;
};

}  // namespace mavro
