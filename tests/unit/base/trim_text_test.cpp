#include "base/TrimText.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

TEST(TrimText, BlanksAreTakenFromTheEndsOnly) {
  EXPECT_EQ(Trimmed(" \t\r\n\v\fa b \tc\f\v\n\r\t "), "a b \tc");
  EXPECT_EQ(Trimmed("x"), "x");
  EXPECT_EQ(Trimmed(" \t\n"), "");
  EXPECT_EQ(Trimmed(""), "");
}

TEST(TrimText, OnlyTheGivenBytesAreTaken) {
  EXPECT_EQ(Trimmed(" ;a;\n", " ;"), "a;\n");
  EXPECT_EQ(Trimmed("\na ", " "), "\na");
}

TEST(TrimText, BytesOfOtherLettersStay) {
  const std::string_view wide("\xA0\xC2\xA0\0 ", 5);
  EXPECT_EQ(Trimmed(wide), wide.substr(0, 4));
}

}  // namespace
}  // namespace zendry
