#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "CommandLine.h"

// Every text splits; what it split into, quoted, splits into the same again; and any argument comes
// back as it was.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::vector<std::string> arguments = mavro::SplitCommandLine(text);
  std::string line;
  for (const std::string& argument : arguments) line += mavro::QuoteArgument(argument) + " ";
  if (mavro::SplitCommandLine(line) != arguments) std::abort();
  if (mavro::SplitCommandLine(mavro::QuoteArgument(text)) != std::vector{std::string(text)})
    std::abort();
  return 0;
}
