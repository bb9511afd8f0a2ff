#include "base/LargeBlocks.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

namespace zendry {
namespace {

using Block = std::unique_ptr<char, decltype(&std::free)>;

Block Make(size_t size) {
  return {static_cast<char*>(NewBlock(size)), std::free};
}

// The kernel's flags of the mapping that an address lies in.
std::string FlagsAt(const void* address) {
  std::ifstream maps("/proc/self/smaps");
  const auto wanted = reinterpret_cast<uintptr_t>(address);
  bool isHere = false;
  for (std::string line; std::getline(maps, line);) {
    std::istringstream words(line);
    uintptr_t start = 0, end = 0;
    char dash = 0;
    if (words >> std::hex >> start >> dash >> end && dash == '-')
      isHere = start <= wanted && wanted < end;
    else if (isHere && line.starts_with("VmFlags:"))
      return line + " ";
  }
  return {};
}

bool WantsHugePages(const void* address) {
  return FlagsAt(address).find(" hg ") != std::string::npos;
}

TEST(LargeBlocks, NewBlock_FromTheLimitOn_HasHugePages) {
  const Block below = Make(cLargeBlock - 1), at = Make(cLargeBlock), above = Make(cLargeBlock + 1);
  ASSERT_TRUE(below && at && above);
  EXPECT_FALSE(WantsHugePages(below.get()));
  EXPECT_TRUE(WantsHugePages(at.get()));
  EXPECT_TRUE(WantsHugePages(above.get()));
}

TEST(LargeBlocks, NewBlock_RestOfALargeBlock_HasSmallPages) {
  const Block block = Make(cLargeBlock + 4096);
  ASSERT_TRUE(block);
  EXPECT_TRUE(WantsHugePages(block.get() + cLargeBlock - 1));
  EXPECT_FALSE(WantsHugePages(block.get() + cLargeBlock));
}

TEST(LargeBlocks, NewBlock_EverySize_CanBeWrittenWhole) {
  for (const size_t size : {size_t{0}, size_t{1}, cLargeBlock - 1, cLargeBlock, cLargeBlock + 1}) {
    const Block block = Make(size);
    ASSERT_TRUE(block) << size;
    if (size == 0) continue;
    block.get()[0] = 'a';
    block.get()[size - 1] = 'b';
    EXPECT_EQ(block.get()[size - 1], 'b') << size;
  }
}

TEST(LargeBlocks, NewBlock_MoreThanThereIs_IsNull) {
  volatile size_t most = SIZE_MAX / 2;  // not known to the compiler, which would warn
  EXPECT_FALSE(Make(most));
}

}  // namespace
}  // namespace zendry
