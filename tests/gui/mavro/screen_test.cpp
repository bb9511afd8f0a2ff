#include <gtest/gtest.h>

#include "Application.h"
#include "Form.h"
#include "GuiDriver.h"
#include "QtScreen.h"

namespace mavro {
namespace {

TEST(Screen, Area_IsThatOfTheFormsScreen) {
  Form form;
  test::RunForm(form, false, [&] {
    const Rect area = ScreenArea(&form);
    EXPECT_GT(area.width, 0);
    EXPECT_GT(area.height, 0);
    EXPECT_EQ(area, ScreenArea(nullptr));
  });
}

TEST(Screen, GoneScreen_LeavesTheAreaOfTheLast) {
  const Rect before = ScreenArea(nullptr);
  EXPECT_EQ(UsableArea(nullptr), before);
}

}  // namespace
}  // namespace mavro
