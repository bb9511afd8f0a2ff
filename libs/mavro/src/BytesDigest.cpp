#include "BytesDigest.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace mavro {

namespace {

// Odd numbers with bits all over, so that each step can be undone and no difference gets lost.
constexpr uint64_t cSpread = 0x9E3779B97F4A7C15;
constexpr uint64_t cStep = 0xC2B2AE3D27D4EB4F;
constexpr int cTurn = 31;

uint64_t Mixed(uint64_t lane, uint64_t word) {
  return std::rotl(lane + word * cSpread, cTurn) * cStep;
}

}  // namespace

void BytesDigest::Take(Lanes& lanes, const char* block) {
  for (size_t i = 0; i < cLanes; ++i) {
    uint64_t word;
    std::memcpy(&word, block + i * sizeof word, sizeof word);
    lanes[i] = Mixed(lanes[i], word);
  }
}

void BytesDigest::Add(std::string_view bytes) {
  length += bytes.size();
  if (filled > 0) {
    const size_t taken = std::min(cBlock - filled, bytes.size());
    std::copy_n(bytes.data(), taken, rest.data() + filled);
    filled += taken;
    bytes.remove_prefix(taken);
    if (filled < cBlock) return;
    Take(lanes, rest.data());
    filled = 0;
  }
  // Lanes of its own stay in registers.
  Lanes local = lanes;
  for (; bytes.size() >= cBlock; bytes.remove_prefix(cBlock)) Take(local, bytes.data());
  lanes = local;
  filled = bytes.copy(rest.data(), bytes.size());
}

size_t BytesDigest::Value() const {
  std::array<char, cBlock> last = {};
  std::copy_n(rest.data(), filled, last.data());
  Lanes all = lanes;
  Take(all, last.data());
  uint64_t value = length;
  for (const uint64_t lane : all) value = Mixed(value, lane);
  value ^= value >> 29;
  value *= cSpread;
  return static_cast<size_t>(value ^ value >> 32);
}

size_t DigestOfBytes(std::string_view bytes) {
  BytesDigest digest;
  digest.Add(bytes);
  return digest.Value();
}

}  // namespace mavro
