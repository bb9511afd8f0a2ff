#pragma once

#include <cstdint>
#include <string_view>

namespace zendry {

// A number that tells a text from any other that is likely to come instead (FNV-1a). The same in
// every run of the program, so that it may be kept on the disk.
inline uint64_t DigestOf(std::string_view text) {
  uint64_t digest = 0xCBF29CE484222325u;
  for (const char byte : text)
    digest = (digest ^ static_cast<unsigned char>(byte)) * 0x100000001B3u;
  return digest;
}

}  // namespace zendry
