#include "tags/PlatformBranches.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace zendry {
namespace {

// The branch behind each of the lines: "+" for one that may be this platform's, "-" for others.
std::string Branches(std::string_view text) {
  PlatformBranches branches;
  branches.Start();
  std::string found;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size() - 1);
    branches.Take(text.substr(0, end));
    found += branches.IsElsewhere() ? '-' : '+';
    text.remove_prefix(end + 1);
  }
  return found;
}

TEST(PlatformBranches, NamesOfOtherPlatforms) {
  EXPECT_EQ(Branches("#ifdef _WIN32\n#else\n#endif\n"), "-++");
  EXPECT_EQ(Branches("#ifndef _WIN32\n#else\n#endif\n"), "+-+");
  EXPECT_EQ(Branches("# ifdef\t__linux__\n#  else\n# endif\n"), "+-+");
  EXPECT_EQ(Branches("#if defined(_WIN32)\n#elif defined(__APPLE__)\n#else\n#endif\n"), "--++");
  EXPECT_EQ(Branches("#if defined __linux__\n#elif MINE\n#else\n#endif\n"), "+--+");
}

TEST(PlatformBranches, OtherConditions_AreUnknown) {
  EXPECT_EQ(Branches("#ifdef MINE\n#else\n#endif\n"), "+++");
  EXPECT_EQ(Branches("#if 0\n#elif VERSION > 3\n#endif\n"), "+++");
  EXPECT_EQ(Branches("#ifdef _WIN32_WINNT\n#endif\n"), "++") << "a longer name";
  EXPECT_EQ(Branches("#if defined(_WIN32\n#endif\n#if\n#endif\n#\n"), "+++++");
  EXPECT_EQ(Branches("#else\n#endif\n#ifdef _WIN32\n"), "++-") << "too many ends";
}

TEST(PlatformBranches, JoinedConditions) {
  EXPECT_EQ(Branches("#if defined(WIN32) || defined(_WIN32)\n#else\n#endif\n"), "-++");
  EXPECT_EQ(Branches("#if defined(MINE) || defined(_WIN32)\n#else\n#endif\n"), "+++");
  EXPECT_EQ(Branches("#if defined(MINE) && defined(_WIN32)\n#else\n#endif\n"), "-++");
  EXPECT_EQ(Branches("#if (defined _WIN32 || WIN32) && !defined(MINE)\n#endif\n"), "-+");
  EXPECT_EQ(Branches("#if !(defined(_WIN32) || defined(__APPLE__))\n#else\n#endif\n"), "+-+");
  EXPECT_EQ(Branches("#if defined(_MSC_VER) && _MSC_VER >= 1800 // old\n#endif\n"), "-+");
  EXPECT_EQ(Branches("#if _MSC_VER + MINE\n#endif\n"), "++") << "not understood";
  EXPECT_EQ(Branches("#if !_WIN32 == MINE\n#else\n#endif\n"), "+++");
}

TEST(PlatformBranches, WithinEachOther) {
  EXPECT_EQ(Branches("#ifdef _WIN32\n#ifdef A\n#else\n#endif\n#else\n#ifdef A\n#endif\n#endif\n"),
            "----++++");
}

TEST(PlatformBranches, ThoseTooDeep_CountAsTheOnesAround) {
  for (const int depth : {63, 64}) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += "#ifdef A\n";
    const std::string found = Branches(text + "#ifdef _WIN32\n#endif\n#ifdef A\n");
    EXPECT_EQ(found.substr(depth), depth == 63 ? "-++" : "+++");
  }
  PlatformBranches again;
  again.Start();
  for (int i = 0; i < 66; ++i) again.Take("#ifdef A");
  again.Start();
  again.Take("#ifdef _WIN32");
  EXPECT_TRUE(again.IsElsewhere());
  again.Take("#endif");
  EXPECT_FALSE(again.IsElsewhere()) << "of a text before";
  std::string groups(100'000, '(');
  EXPECT_EQ(Branches("#if " + groups + "\n#else\n"), "++");
}

}  // namespace
}  // namespace zendry
