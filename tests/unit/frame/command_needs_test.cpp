#include "frame/CommandNeeds.h"

#include <gtest/gtest.h>

#include "base/FileCommands.h"
#include "build/BuildActs.h"

namespace zendry {
namespace {

TEST(CommandNeeds, BuildNeedsAProjectOrASource_CompilingASource) {
  EXPECT_EQ(NeedsOf(cMakeCommand), Needs::cProjectOrSource);
  EXPECT_EQ(NeedsOf(cCompileFileCommand), Needs::cBuildSource);
  EXPECT_EQ(NeedsOf(cStopBuildCommand), Needs::cNothing);
}

TEST(CommandNeeds, OfNoCommandNamed_AreNothing) {
  EXPECT_EQ(NeedsOf(cNewCommand), Needs::cNothing);
  EXPECT_EQ(NeedsOf(0), Needs::cNothing);
}

TEST(CommandNeeds, IsMet_OnlyOnceItsOwnBitIsSet) {
  MetNeeds met;
  EXPECT_TRUE(IsMet(met, Needs::cNothing));
  EXPECT_FALSE(IsMet(met, Needs::cTab));
  met[static_cast<size_t>(Needs::cSelection)] = true;
  EXPECT_FALSE(IsMet(met, Needs::cTab));
  EXPECT_TRUE(IsMet(met, Needs::cSelection));
}

}  // namespace
}  // namespace zendry
