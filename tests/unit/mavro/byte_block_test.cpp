#include "ByteBlock.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace mavro {
namespace {

ByteBlock StarsIn(ByteBlock bytes) {
  return reinterpret_cast<ByteBlock>(bytes == '*');
}

size_t StarAt(std::string_view text) {
  const char* const end = text.data() + text.size();
  return static_cast<size_t>(FindMarked(text.data(), end, StarsIn) - text.data());
}

TEST(ByteBlock, FirstSet_CountsTheBytesBefore) {
  EXPECT_EQ(FirstSet(ByteBlock{}), cByteBlock);
  EXPECT_FALSE(HasAny(ByteBlock{}));
  for (size_t i = 0; i < cByteBlock; ++i) {
    ByteBlock block{};
    block[i] = 1;
    EXPECT_TRUE(HasAny(block));
    EXPECT_EQ(FirstSet(block), i);
    block[cByteBlock - 1] = 255;
    EXPECT_EQ(FirstSet(block), i);
  }
}

TEST(ByteBlock, FirstMarkedByte_IsFoundAtEachPlaceOfATextOfEachLength) {
  for (size_t length = 0; length <= 3 * cByteBlock + 1; ++length) {
    // Stars before and behind the text aren't of it.
    const std::string around = "*" + std::string(length, 'a') + "****************";
    EXPECT_EQ(StarAt(std::string_view(around).substr(1, length)), length);
    for (size_t at = 0; at < length; ++at) {
      std::string text = around;
      text[at + 1] = text[length] = '*';
      EXPECT_EQ(StarAt(std::string_view(text).substr(1, length)), at) << length;
    }
  }
}

TEST(ByteBlock, NoText_HasNoMarkedByte) {
  EXPECT_EQ(FindMarked<>(nullptr, nullptr, StarsIn), nullptr);
}

}  // namespace
}  // namespace mavro
