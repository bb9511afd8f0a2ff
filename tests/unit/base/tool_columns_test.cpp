#include "base/ToolColumns.h"

#include <gtest/gtest.h>

#include <string>

namespace zendry {
namespace {

TEST(ToolColumns, Tab_GoesToTheNextStop) {
  EXPECT_EQ(ByteInColumn("\tx", 9), 1u);
  EXPECT_EQ(ColumnOfByte("\tx", 1), 9);
  EXPECT_EQ(ColumnOfByte("1234567\tx", 8), 9);
  EXPECT_EQ(ColumnOfByte("12345678\tx", 9), 17);
}

TEST(ToolColumns, Character_OfSeveralBytes_IsOneColumn) {
  const std::string line = "\xC3\xA9\xE2\x82\xACx";
  EXPECT_EQ(ByteInColumn(line, 2), 2u);
  EXPECT_EQ(ByteInColumn(line, 3), 5u);
  EXPECT_EQ(ColumnOfByte(line, 5), 3);
}

TEST(ToolColumns, Outside_IsAnEndOfTheLine) {
  EXPECT_EQ(ByteInColumn("ab", 0), 0u);
  EXPECT_EQ(ByteInColumn("ab", -5), 0u);
  EXPECT_EQ(ByteInColumn("ab", 3), 2u);
  EXPECT_EQ(ByteInColumn("ab", 4), 2u);
  EXPECT_EQ(ColumnOfByte("ab", 0), 1);
  EXPECT_EQ(ColumnOfByte("ab", 2), 3);
  EXPECT_EQ(ColumnOfByte("ab", 99), 3);
  EXPECT_EQ(ColumnOfByte("", 0), 1);
}

TEST(ToolColumns, ByteOfEachCharacter_ComesBack) {
  const std::string line = "a\t\xC3\xA9 b\t\tc\xFF";
  for (const size_t byte : {0u, 1u, 2u, 4u, 5u, 6u, 7u, 8u, 9u})
    EXPECT_EQ(ByteInColumn(line, ColumnOfByte(line, byte)), byte) << byte;
}

}  // namespace
}  // namespace zendry
