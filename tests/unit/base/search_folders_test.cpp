#include "base/SearchFolders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CommandLine.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Of(const char* line) {
  return SearchFolders(mavro::SplitCommandLine(line));
}

TEST(SearchFolders, AreThoseOfTheSwitches) {
  EXPECT_THAT(Of("gcc -c -Ia -I b/c -iquote q -isystem s -idirafter d -O2 x.c -o x.o"),
              ElementsAre("a", "b/c", "q", "s", "d"));
  EXPECT_THAT(Of("gcc -I\"my dir/x\" \"-Io t\" x.c"), ElementsAre("my dir/x", "o t"));
  EXPECT_THAT(Of("gcc -include a.h -DX=-Iz a-Ib.c"), IsEmpty());
  EXPECT_THAT(Of("gcc -I"), IsEmpty());
}

}  // namespace
}  // namespace zendry
