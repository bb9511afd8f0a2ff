#include "tags/IncludeGraph.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>

namespace zendry {
namespace {

class IncludeGraphTest : public ::testing::Test {
 protected:
  TagData& Add(const std::string& name, const std::vector<std::string>& includes = {}) {
    modules.push_back(&stores.emplace_back());
    modules.back()->fileName = name;
    Set(*modules.back(), includes);
    return *modules.back();
  }
  static void Set(TagData& store, const std::vector<std::string>& includes) {
    store.clear();
    for (const std::string& name : includes) {
      const bool isQuoted = name.front() != '<';
      store.addInclude(isQuoted ? name : name.substr(1, name.size() - 2), isQuoted);
    }
  }
  // The distances by the order of the files; "-" for one that isn't reached.
  std::string From(const TagData& store) {
    std::string text;
    for (const int distance : graph.DistancesFrom(&store, modules))
      text += distance == IncludeGraph::cFar ? "-" : std::to_string(distance);
    return text;
  }

  std::deque<TagData> stores;
  std::vector<TagData*> modules;
  IncludeGraph graph;
};

TEST_F(IncludeGraphTest, IncludesAreFollowedNearestFirst) {
  const TagData& a = Add("/p/a.cpp", {"b.h", "c.h"});
  const TagData& b = Add("/p/b.h", {"c.h"});
  const TagData& c = Add("/p/c.h", {"d.h", "a.cpp"});
  Add("/p/d.h", {"none.h", "<vector>"});
  Add("/p/e.h");
  EXPECT_EQ(From(a), "0112-");
  EXPECT_EQ(From(b), "2012-");
  EXPECT_EQ(From(c), "1201-");
}

TEST_F(IncludeGraphTest, FilesOfOtherPlatforms_AreFartherThanAllOthers) {
  TagData& a = Add("/p/a.cpp");
  a.addInclude("win.h", true, true);
  a.addInclude("unix.h", true);
  Add("/p/win.h", {"both.h", "more.h"});
  Add("/p/unix.h", {"near.h"});
  Add("/p/near.h", {"both.h"});
  Add("/p/both.h");
  Add("/p/more.h");
  const std::vector<int>& distances = graph.DistancesFrom(&a, modules);
  constexpr int cElsewhere = IncludeGraph::cElsewhere;
  EXPECT_EQ(distances, (std::vector<int>{0, cElsewhere + 1, 1, 2, 3, cElsewhere + 2}));
}

TEST_F(IncludeGraphTest, ReadOrder_IncludedFilesFirst_EachOnce) {
  const TagData& a = Add("/p/a.cpp", {"b.h", "c.h"});
  Add("/p/b.h", {"c.h"});
  const TagData& c = Add("/p/c.h", {"d.h", "a.cpp"});
  Add("/p/d.h");
  Add("/p/e.h", {"d.h"});
  EXPECT_EQ(graph.ReadOrder(&a, modules), (std::vector<int>{3, 2, 1, 0}));
  EXPECT_EQ(graph.ReadOrder(&c, modules), (std::vector<int>{3, 1, 0, 2})) << "a circle ends";
  const TagData other;
  EXPECT_TRUE(graph.ReadOrder(&other, modules).empty());
}

TEST_F(IncludeGraphTest, FileBesideTheIncludingOne_GoesFirst) {
  const TagData& first = Add("/p/one/main.cpp", {"options.h"});
  const TagData& second = Add("/p/two/main.cpp", {"options.h"});
  Add("/p/one/options.h");
  Add("/p/two/options.h");
  EXPECT_EQ(From(first), "0-1-");
  EXPECT_EQ(From(second), "-0-1");
}

TEST_F(IncludeGraphTest, PathsInIncludes) {
  const TagData& main = Add("/p/src/main.cpp", {"two/options.h", "../lib/x.h", "<deep/y.h>"});
  Add("/p/src/one/options.h");
  Add("/p/include/two/options.h");
  Add("/p/lib/x.h");
  Add("/p/other/deep/y.h");
  Add("/p/other/notdeep/y.h");
  EXPECT_EQ(From(main), "0-111-");
}

TEST_F(IncludeGraphTest, AmongSeveral_TheOneInTheNearestFolder) {
  const TagData& main = Add("/p/b/src/main.cpp", {"x.h"});
  Add("/p/a/include/x.h");
  Add("/p/b/include/x.h");
  Add("/p/c/include/x.h");
  EXPECT_EQ(From(main), "0-1-");
}

TEST_F(IncludeGraphTest, ChangesAreFollowed) {
  TagData& a = Add("/p/a.cpp");
  Add("/p/b.h");
  EXPECT_EQ(From(a), "0-");
  Set(a, {"b.h"});
  EXPECT_EQ(From(a), "01");
  Add("/p/c.h");
  EXPECT_EQ(From(a), "01-");
  modules[2]->fileName = "/p/d.h";
  Set(a, {"d.h"});
  Set(*modules[2], {"b.h"});
  EXPECT_EQ(From(a), "021");
}

TEST_F(IncludeGraphTest, StrangersHaveNoDistances) {
  Add("/p/a.cpp");
  const TagData stranger;
  EXPECT_EQ(From(stranger), "");
}

}  // namespace
}  // namespace zendry
