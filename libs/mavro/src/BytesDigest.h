#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace mavro {

// A number that tells bytes from any others that are likely to come instead. It is as fast as
// memory can be read, and the same however the bytes are cut into pieces. It holds in one run of
// the program only.
class BytesDigest {
 public:
  void Add(std::string_view bytes);
  size_t Value() const;

 private:
  static constexpr size_t cLanes = 4;  // that the processor works on side by side
  static constexpr size_t cBlock = cLanes * sizeof(uint64_t);
  using Lanes = std::array<uint64_t, cLanes>;
  static void Take(Lanes& lanes, const char* block);

  Lanes lanes = {1, 2, 3, 4};
  std::array<char, cBlock> rest = {};  // bytes that don't fill a block yet
  size_t filled = 0;
  uint64_t length = 0;
};

// The digest of bytes that are there at once.
size_t DigestOfBytes(std::string_view bytes);

}  // namespace mavro
