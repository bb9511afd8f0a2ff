#include "BytesDigest.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace mavro {
namespace {

constexpr size_t cBlock = 32;

std::string Bytes(size_t length) {
  std::string bytes;
  for (size_t i = 0; i < length; ++i) bytes += static_cast<char>(i * 7 + i / 5);
  return bytes;
}

TEST(BytesDigest, Add_AnyPieces_GiveTheSame) {
  const std::string bytes = Bytes(3 * cBlock + 5);
  for (size_t first = 0; first <= bytes.size(); ++first)
    for (size_t second = first; second <= bytes.size(); ++second) {
      BytesDigest digest;
      digest.Add(std::string_view(bytes).substr(0, first));
      digest.Add(std::string_view(bytes).substr(first, second - first));
      digest.Add(std::string_view(bytes).substr(second));
      EXPECT_EQ(digest.Value(), DigestOfBytes(bytes)) << first << " " << second;
    }
}

TEST(BytesDigest, Value_LengthsAroundABlock_Differ) {
  std::set<size_t> values;
  for (size_t length = 0; length <= 3 * cBlock; ++length)
    values.insert(DigestOfBytes(std::string(length, '\0')));
  EXPECT_EQ(values.size(), 3 * cBlock + 1);
}

TEST(BytesDigest, Value_EveryBit_Counts) {
  std::string bytes = Bytes(2 * cBlock + 3);
  std::set<size_t> values = {DigestOfBytes(bytes)};
  for (char& byte : bytes)
    for (int bit = 0; bit < 8; ++bit) {
      byte = static_cast<char>(byte ^ 1 << bit);
      values.insert(DigestOfBytes(bytes));
      byte = static_cast<char>(byte ^ 1 << bit);
    }
  EXPECT_EQ(values.size(), bytes.size() * 8 + 1);
}

// The same bit in two words that meet in one lane, and words or blocks that change places.
TEST(BytesDigest, Value_ChangesThatCouldCancel_Differ) {
  const std::string bytes = Bytes(4 * cBlock);
  std::set<size_t> values = {DigestOfBytes(bytes)};
  for (size_t at = 0; at < cBlock; ++at)
    for (int bit = 0; bit < 8; ++bit) {
      std::string other = bytes;
      for (const size_t place : {at, at + cBlock})
        other[place] = static_cast<char>(other[place] ^ 1 << bit);
      values.insert(DigestOfBytes(other));
    }
  EXPECT_EQ(values.size(), cBlock * 8 + 1);
  values.insert(DigestOfBytes(bytes.substr(cBlock, cBlock) + bytes.substr(0, cBlock) +
                              bytes.substr(2 * cBlock)));
  values.insert(DigestOfBytes(bytes.substr(8, 8) + bytes.substr(0, 8) + bytes.substr(16)));
  EXPECT_EQ(values.size(), cBlock * 8 + 3);
}

}  // namespace
}  // namespace mavro
