#include "config/WindowSettings.h"

#include <gtest/gtest.h>

#include "ScopedHome.h"
#include "TempFolder.h"
#include "config/IdeSession.h"

namespace zendry {
namespace {

WindowSettings Read(const std::map<std::string, std::string>& values) {
  return ReadWindowSettings([&](const std::string& key) {
    const auto found = values.find(key);
    return found == values.end() ? std::string() : found->second;
  });
}

TEST(WindowSettings, Values_AreReadBack) {
  for (int theme = 0; theme < 3; ++theme)
    for (const int letters : {0, 6, 24})
      for (const bool rescue : {false, true}) {
        WindowSettings settings;
        settings.theme = theme;
        settings.letters = letters;
        settings.rescue = rescue;
        settings.reload = theme;
        EXPECT_EQ(Read(WindowSettingValues(settings)), settings);
      }
}

TEST(WindowSettings, WithoutAMeaning_AreNotSet) {
  EXPECT_EQ(Read({}), WindowSettings());
  for (const char* bad : {"x", "Dark", "5", "25", "-1", "99999999999"})
    EXPECT_EQ(Read({{"theme", bad}, {"ui-font", bad}, {"rescue", bad}, {"reload", bad}}),
              WindowSettings())
        << bad;
}

struct KeptWindowSettings : testing::Test {
  KeptWindowSettings() { theWindowSettings = {}; }
  ~KeptWindowSettings() override { theWindowSettings = {}; }

  test::TempFolder folder;
  test::ScopedHome home{folder.Path()};
};

TEST_F(KeptWindowSettings, OnlyWhatChanged_IsWritten) {
  const std::string first = folder.Write("first", "theme=dark\n");
  IdeSession session;
  session.Load(first);
  EXPECT_EQ(theWindowSettings.theme, WindowSettings::cDark);
  session.Save({});
  EXPECT_FALSE(session.values.contains("theme"));
  theWindowSettings.theme = WindowSettings::cDesktop;
  session.Save({});
  EXPECT_EQ(session.values["theme"], "system") << "else the installation's would come back";
  EXPECT_FALSE(session.values.contains("rescue"));
  IdeSession next;
  next.Load(first);
  EXPECT_EQ(theWindowSettings.theme, WindowSettings::cDesktop);
}

}  // namespace
}  // namespace zendry
