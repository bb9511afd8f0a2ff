#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace mavro {

// Bytes of a text that are looked at together. Comparisons and the operators of bits work on each
// of them; a comparison gives bytes that are all ones or 0.
inline constexpr size_t cByteBlock = 16;
using ByteBlock = unsigned char __attribute__((vector_size(cByteBlock)));
using ByteBlockWords = uint64_t __attribute__((vector_size(cByteBlock)));

// The bytes from there on; there must be as many.
inline ByteBlock LoadBlock(const char* from) {
  ByteBlock block;
  std::memcpy(&block, from, sizeof block);
  return block;
}

// True if a byte of the block isn't 0.
inline bool HasAny(ByteBlock block) {
  const auto words = reinterpret_cast<ByteBlockWords>(block);
  return (words[0] | words[1]) != 0;
}

// The number of bytes before the first that isn't 0; cByteBlock if there is none.
inline size_t FirstSet(ByteBlock block) {
  const auto zeros = [](uint64_t word) {
    const bool isLittle = std::endian::native == std::endian::little;
    return static_cast<size_t>(isLittle ? std::countr_zero(word) : std::countl_zero(word));
  };
  const auto words = reinterpret_cast<ByteBlockWords>(block);
  return (words[0] != 0 ? zeros(words[0]) : 64 + zeros(words[1])) / 8;
}

// The first byte of the text that `marks` tells of: for a block it gives one whose bytes aren't 0
// where they are wanted. `end` if there is none.
template <typename Marks>
const char* FindMarked(const char* from, const char* end, Marks marks) {
  const auto size = static_cast<size_t>(end - from);
  if (size < cByteBlock) {
    char copy[cByteBlock] = {};
    if (size > 0) std::memcpy(copy, from, size);
    return from + std::min(FirstSet(marks(LoadBlock(copy))), size);
  }
  // The last block begins among bytes that have been looked at.
  for (const char* at = from;; at = std::min(at + cByteBlock, end - cByteBlock)) {
    const size_t first = FirstSet(marks(LoadBlock(at)));
    if (first != cByteBlock || at == end - cByteBlock) return at + first;
  }
}

}  // namespace mavro
