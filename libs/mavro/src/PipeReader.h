#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "LineRules.h"

namespace mavro {

// The read operation over a tool's pipe. It returns at most 80 bytes at a time, the unit of a
// delivery round, but fetches much more at once from the system.
class PipeReader {
 public:
  // The result of a fetch: bytes have arrived; none yet; the output has ended; it can't be read.
  enum class Fetch { cBytes, cNone, cEnd, cError };

  PipeReader();

  // Appends the content of the pipe, up to a limit, to the present bytes. `descriptor` doesn't
  // block.
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
