#include <gtest/gtest.h>

#include "CommandLine.h"
#include "ScopedHome.h"
#include "TempFolder.h"
#include "base/FileKinds.h"
#include "config/EditorSettings.h"
#include "config/IdeSession.h"

namespace zendry {
namespace {

// The configuration that is installed beside the programs.
struct InstalledConfig : testing::Test {
  IdeConfig config;
  IdeFonts fonts;
  InstalledConfig() {
    config.appDir = TEST_DATA "/../../dist/";
    EXPECT_EQ(ReadConfig(config, fonts).Words(), "");
  }
  ~InstalledConfig() override { ForgetAddedFileKinds(); }
};

TEST_F(InstalledConfig, CompilerSets_AreNamedAndMakeGccPrintOneLinePerMessage) {
  for (const ToolSet& set : config.toolSets) {
    EXPECT_NE(set.name, "");
    for (const char* flag :
         {"-fno-diagnostics-show-caret", "-fdiagnostics-color=never", "-fdiagnostics-urls=never"})
      EXPECT_NE(set.flags.find(flag), std::string::npos) << set.name << " " << flag;
  }
  EXPECT_EQ(config.toolSets[0].folder, "@/tools");
  EXPECT_EQ(config.toolSets[1].folder, "");
  EXPECT_EQ(config.defaultSet, 0);
  EXPECT_EQ(config.defaultOption, 0);
}

TEST_F(InstalledConfig, FileKinds_OfAllUsualExtensions) {
  for (const char* name : {"a.cpp", "a.cp", "a.cc", "a.cxx", "a.c++", "a.C"})
    EXPECT_EQ(FileKind(name), cCppSource) << name;
  for (const char* name :
       {"a.h", "a.H", "a.hh", "a.hpp", "a.hxx", "a.h++", "a.inl", "a.ipp", "a.tpp"})
    EXPECT_EQ(FileKind(name), cHeader) << name;
  EXPECT_EQ(FileKind("a.c"), cCSource);
  for (const char* name : {"a.HPP", "a.CC", "a.txt", "cc"})
    EXPECT_EQ(FileKind(name), cUnknownKind) << name;
}

TEST_F(InstalledConfig, FrameworkSet_NamesHeadersLibraryAndWhatItNeeds) {
  ASSERT_EQ(config.libSets.size(), 1u);
  const LibSet& set = config.libSets.at("mavro");
  EXPECT_FALSE(set.expanded);
  EXPECT_EQ(mavro::SplitCommandLine(set.include).back(), "-I@/libs/mavro/include");
  const auto link = mavro::SplitCommandLine(set.link);
  ASSERT_GE(link.size(), 2u);
  EXPECT_EQ(link[0], "-L@/libs/mavro");
  EXPECT_EQ(link[1], "-lmavro");
}

TEST_F(InstalledConfig, Fonts_AreFacesOfThisSystem) {
  EXPECT_EQ(fonts.fonts[0].name, "DejaVu Sans");
  EXPECT_EQ(fonts.fonts[1].name, "DejaVu Sans Mono");
  EXPECT_EQ(fonts.fonts[2].name, "DejaVu Sans Mono");
  for (const FontRec& font : fonts.fonts) EXPECT_EQ(font.size, 10);
}

TEST_F(InstalledConfig, FirstStart_HasAFixedFontLineNumbersAndAMiddlingWindow) {
  const test::TempFolder home;
  const test::ScopedHome scoped(home.Path());
  IdeSession session;
  session.Load(config.appDir + "first-start.ini");
  EXPECT_EQ(theEditorSettings.useMonoFont, 1);
  EXPECT_EQ(theEditorSettings.lineNumbers, 1);
  EXPECT_EQ(session.FirstPlacement(0, 0, 2000, 1000).width, 1400);
  theEditorSettings = EditorSettings();
}

}  // namespace
}  // namespace zendry
