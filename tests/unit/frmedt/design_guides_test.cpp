#include "frmedt/DesignGuides.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zendry {
namespace {

using mavro::Rect;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(DesignGuides, EqualEdges_GetALineFromOneToTheOther) {
  EXPECT_THAT(GuideLines({10, 10, 50, 20}, {{10, 100, 70, 30}}), ElementsAre(Rect{10, 10, 1, 120}));
  EXPECT_THAT(GuideLines({30, 10, 50, 20}, {{10, 100, 70, 30}}), ElementsAre(Rect{79, 10, 1, 120}));
}

TEST(DesignGuides, EqualMiddles_GetALine) {
  EXPECT_THAT(GuideLines({10, 10, 50, 20}, {{200, 5, 70, 30}}), ElementsAre(Rect{10, 20, 260, 1}));
}

TEST(DesignGuides, OnePixelBeside_GetsNone) {
  EXPECT_THAT(GuideLines({11, 10, 50, 20}, {{10, 100, 70, 30}}), IsEmpty());
  EXPECT_THAT(GuideLines({11, 10, 50, 20}, {}), IsEmpty());
}

TEST(DesignGuides, SeveralInLine_ShareOneLine) {
  EXPECT_THAT(GuideLines({10, 100, 50, 20}, {{10, 10, 70, 30}, {10, 200, 20, 40}}),
              ElementsAre(Rect{10, 10, 1, 230}));
}

}  // namespace
}  // namespace zendry
