#include "config/PrintSettings.h"

#include <gtest/gtest.h>

#include "PageSetup.h"

namespace zendry {
namespace {

using mavro::thePageSetup;
using Values = std::map<std::string, std::string>;

struct PrintSettingsTest : testing::Test {
  PrintSettingsTest() { thePageSetup = {}; }
  ~PrintSettingsTest() override { thePageSetup = {}; }
};

TEST_F(PrintSettingsTest, NewSetup_WritesNothing) {
  Values values = {{"other", "1"}, {"print-paper", "A4"}};
  StorePrintSettings(values);
  EXPECT_EQ(values, (Values{{"other", "1"}}));
}

TEST_F(PrintSettingsTest, ChangedSetup_ComesBack) {
  thePageSetup.paper = "Letter";
  thePageSetup.left = 2540;
  thePageSetup.hasHeader = false;
  thePageSetup.isAsFolded = true;
  thePageSetup.size = 11;
  const mavro::PageSetup wanted = thePageSetup;
  Values values;
  StorePrintSettings(values);
  EXPECT_EQ(values, (Values{{"print-paper", "Letter"},
                            {"print-margins", "2540;1500;1500;1500"},
                            {"print-header", "0"},
                            {"print-folded", "1"},
                            {"print-size", "11"}}));
  thePageSetup = {};
  TakePrintSettings(values);
  EXPECT_EQ(thePageSetup, wanted);
}

TEST_F(PrintSettingsTest, DamagedValues_AreMadeUsable) {
  TakePrintSettings({{"print-paper", "\x01"}, {"print-margins", "1;2;3"}, {"print-size", "x"}});
  EXPECT_EQ(thePageSetup.paper, "A4");
  EXPECT_EQ(thePageSetup.left, 1500);
  TakePrintSettings({{"print-margins", "999999999;-5;0;999999999"}, {"print-size", "1000"}});
  EXPECT_EQ(thePageSetup.top, 0);
  EXPECT_LE(thePageSetup.left + thePageSetup.right, 21000 - 2000);
  EXPECT_EQ(thePageSetup.size, 72);
}

}  // namespace
}  // namespace zendry
