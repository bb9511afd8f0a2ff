#include "base/CommandTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "ScriptedDialogs.h"
#include "base/BuildInProgress.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr CommandRow cRows[] = {
    {900, "Now"},
    {mavro::cSeparatorRow},
    {902, "Refused", 0, WhileBuilding::cRefused},
};

struct List : CommandList {
  List() : CommandList(cRows) {}
  void CarryOut(int id) override { done.push_back(id); }
  std::vector<int> done;
};

struct CommandTable : testing::Test {
  test::ScriptedDialogs dialogs;
  List list;
};

TEST_F(CommandTable, Action_ReachesTheListsOwnFunction) {
  EXPECT_TRUE(list.Find(900)->Execute());
  EXPECT_TRUE(list.Find(902)->Execute());
  EXPECT_THAT(list.done, ElementsAre(900, 902));
}

TEST_F(CommandTable, WhileABuildRuns_OnlyWhatItRefusesBeeps) {
  {
    const BuildInProgress build;
    list.Find(902)->Execute();
    EXPECT_THAT(list.done, IsEmpty());
    EXPECT_EQ(dialogs.beeps, 1);
    list.Find(900)->Execute();
    EXPECT_THAT(list.done, ElementsAre(900));
    EXPECT_EQ(dialogs.beeps, 1);
  }
  list.Find(902)->Execute();
  EXPECT_THAT(list.done, ElementsAre(900, 902));
}

// The stop button's command is in no menu.
TEST_F(CommandTable, WhileABuildRuns_AnIdWithoutARowIsCarriedOut) {
  const BuildInProgress build;
  list.OnCommand(903);
  EXPECT_THAT(list.done, ElementsAre(903));
}

TEST_F(CommandTable, OfBuildsWithinBuilds_TheOuterOneCountsToItsEnd) {
  const BuildInProgress outer;
  std::optional<BuildInProgress> inner(std::in_place);
  inner.reset();
  EXPECT_TRUE(IsRefusedByBuild());
}

TEST_F(CommandTable, WithoutABuild_NothingIsRefusedAndNothingBeeps) {
  EXPECT_FALSE(IsRefusedByBuild());
  EXPECT_EQ(dialogs.beeps, 0);
}

}  // namespace
}  // namespace zendry
