#include "base/NameMatch.h"

#include <gtest/gtest.h>

#include <string>

namespace zendry {
namespace {

TEST(MatchPath, LettersInTheirOrder_Fit) {
  EXPECT_TRUE(MatchPath("edt", "/p/EditTabs.cpp"));
  EXPECT_TRUE(MatchPath("EDITTABSCPP", "/p/EditTabs.cpp"));
  EXPECT_TRUE(MatchPath("e t", "/p/EditTabs.cpp")) << "blanks mean nothing";
  EXPECT_TRUE(MatchPath("p/edit", "/p/EditTabs.cpp"));
  EXPECT_FALSE(MatchPath("tde", "/p/EditTabs.cpp"));
  EXPECT_FALSE(MatchPath("editt2", "/p/EditTabs.cpp"));
  EXPECT_FALSE(MatchPath("x", ""));
}

TEST(MatchPath, NothingTyped_EverythingFitsEquallyWell) {
  EXPECT_EQ(MatchPath("", "/a/b.cpp"), MatchPath("  ", "/longer/path.h"));
  EXPECT_TRUE(MatchPath("", ""));
}

struct BetterCase {
  const char* typed;
  const char* better;
  const char* worse;
};

TEST(MatchPath, TheBetterOne) {
  const BetterCase cases[] = {
      {"tabs", "/p/Tabs.cpp", "/p/EditTabs.cpp"},
      {"tabs", "/p/EditTabs.cpp", "/tabs/Edit.cpp"},
      {"et", "/p/EditTabs.cpp", "/p/Reset.cpp"},
      {"et", "/p/edit_tabs.cpp", "/p/reset.cpp"},
      {"main", "/p/main.cpp", "/p/main_window.cpp"},
      {"main", "/p/main.cpp", "/p/domain.cpp"},
      {"main", "/p/main_window.cpp", "/p/m_a_i_n.cpp"},
      {"abc", "/p/xx_abc.cpp", "/p/a_xb_xc_x.cpp"},
      {"srced", "/src/editor/x.cpp", "/some/rare/code/ed/y.cpp"},
  };
  for (const BetterCase& row : cases) {
    ASSERT_TRUE(MatchPath(row.typed, row.better)) << row.better;
    ASSERT_TRUE(MatchPath(row.typed, row.worse)) << row.worse;
    EXPECT_GT(*MatchPath(row.typed, row.better), *MatchPath(row.typed, row.worse))
        << row.typed << ": " << row.better << " before " << row.worse;
  }
}

TEST(MatchPath, LongTexts_AreCut) {
  EXPECT_TRUE(MatchPath(std::string(1000, 'a'), std::string(64, 'a')));
  EXPECT_FALSE(MatchPath(std::string(1000, 'a'), std::string(63, 'a')));
  EXPECT_FALSE(MatchPath("x", "x" + std::string(1024, 'a')));
  EXPECT_TRUE(MatchPath("x", "x" + std::string(1023, 'a')));
}

}  // namespace
}  // namespace zendry
