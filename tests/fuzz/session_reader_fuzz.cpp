#include <cstdint>
#include <string_view>

#include "base/XmlTag.h"
#include "project/SessionFile.h"

// Reads a session file. Texts with an overlong token end the process by rule.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (zendry::TokensFit(text)) zendry::ReadSessionText(text);
  return 0;
}
