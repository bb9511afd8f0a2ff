#include "config/IdeConfig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "TempFolder.h"
#include "base/FileKinds.h"
#include "config/EditorSettings.h"

namespace zendry {
namespace {

class IdeConfigTest : public testing::Test {
 protected:
  ~IdeConfigTest() override {
    theEditorSettings = EditorSettings();
    ForgetAddedFileKinds();
  }

  // Reads a configuration of this content into `config` and `fonts`.
  void Read(std::string_view text) {
    folder.Write("Zendry.cfg", text);
    config.appDir = folder.Path() + "/";
    result = ReadConfig(config, fonts);
  }

  test::TempFolder folder;
  mavro::FileResult result;
  IdeConfig config;
  IdeFonts fonts;
};

TEST_F(IdeConfigTest, Defaults) {
  EXPECT_EQ(config.gcc, "gcc");
  EXPECT_EQ(config.gpp, "g++");
  EXPECT_EQ(config.gdb, "gdb");
  EXPECT_EQ(config.linker, "g++");
  EXPECT_EQ(config.ar, "ar");
  EXPECT_EQ(config.windres, "windres");
  EXPECT_EQ(config.windresOptions, "-D _WIN32_WINNT=0x0501 -O coff");
  EXPECT_EQ(fonts.fonts[0].name, "Verdana");
  EXPECT_EQ(fonts.fonts[1].name, "Courier New");
  EXPECT_EQ(fonts.fonts[2].name, "Ariel");
  EXPECT_EQ(fonts.fonts[2].kind, 2);
  EXPECT_EQ(fonts.fonts[2].size, 10);
  EXPECT_FALSE(fonts.largeToolBar);
}

TEST_F(IdeConfigTest, ToolSets_AreFilledById) {
  Read("<gcc id=\"0\" o=\"Debian\" p=\"@/tools\" v=\"-fno-x\"/><go id=\"2\" o=\"c\"/>");
  EXPECT_EQ(config.toolSets[0].name, "Debian");
  EXPECT_EQ(config.toolSets[0].folder, "@/tools");
  EXPECT_EQ(config.toolSets[0].flags, "-fno-x");
  EXPECT_EQ(config.toolSets[2].name, "c");
}

TEST_F(IdeConfigTest, ToolSet_OfOtherId_IsDropped) {
  Read("<gcc id=\"3\" o=\"x\"/><gcc o=\"x\"/><gcc id=\"-5\" o=\"x\"/>");
  for (const ToolSet& set : config.toolSets) EXPECT_EQ(set.name, "");
}

TEST_F(IdeConfigTest, LibraryAndAddOn_RepeatedKey_Overwrites) {
  Read("<lib n=\"m\" p=\"-I1\" v=\"-l1\"/><l n=\"m\" p=\"-I2\"/><add n=\"a\" p=\"x\" v=\"y\"/>");
  ASSERT_EQ(config.libSets.size(), 1u);
  EXPECT_EQ(config.libSets["m"].include, "-I2");
  EXPECT_EQ(config.libSets["m"].link, "");
  EXPECT_FALSE(config.libSets["m"].expanded);
  ASSERT_EQ(config.addOns.size(), 1u);
  EXPECT_EQ(config.addOns["a"].include, "x");
  EXPECT_EQ(config.addOns["a"].link, "y");
}

TEST_F(IdeConfigTest, FileKinds_AreAddedToTheTable) {
  Read(
      "<kind id=\"1\" value=\"cc  C\"/><kind id=\"3\" value=\"hpp\"/><kind id=\"5\" value=\"prj\"/>"
      "<kind value=\"x\"/>");
  EXPECT_EQ(FileKind("a.cc"), cCppSource);
  EXPECT_EQ(FileKind("a.C"), cCppSource);
  EXPECT_EQ(FileKind("a.hpp"), cHeader);
  EXPECT_EQ(FileKind("a.prj"), cUnknownKind) << "only sources and headers";
  EXPECT_EQ(FileKind("a.x"), cUnknownKind);
  Read("<kind id=\"1\" value=\"cxx\"/>");
  EXPECT_EQ(FileKind("a.cxx"), cCppSource);
  EXPECT_EQ(FileKind("a.cc"), cUnknownKind) << "the file as it is read last";
}

TEST_F(IdeConfigTest, Font_IsCopiedToTheEditor) {
  Read("<font id=\"1\" n=\"Mono\" o=\"1\" v=\"12\"/><font id=\"3\" n=\"X\"/><font n=\"X\"/>");
  EXPECT_EQ(fonts.fonts[1].name, "Mono");
  EXPECT_EQ(fonts.fonts[1].style, 1);
  EXPECT_EQ(fonts.fonts[1].size, 12);
  EXPECT_EQ(fonts.fonts[1].kind, 1);
  EXPECT_EQ(theEditorSettings.fonts[1].name, "Mono");
  EXPECT_EQ(fonts.fonts[0].name, "Verdana");
}

TEST_F(IdeConfigTest, Font_SizeThatNobodyCouldRead_IsTheUsualOneForTheEditor) {
  for (const char* size : {"3", "0", "-12", "73", "99999999999", "x", ""}) {
    Read(std::string("<font id=\"1\" n=\"Mono\" v=\"") + size + "\"/>");
    EXPECT_EQ(theEditorSettings.fonts[cFixedFont].size, 10) << size;
  }
  Read("<font id=\"0\" n=\"M\" v=\"4\"/><font id=\"2\" n=\"M\" v=\"72\"/>");
  EXPECT_EQ(theEditorSettings.fonts[cVariableFont].size, 4);
  EXPECT_EQ(theEditorSettings.fonts[cOutputFont].size, 72);
}

TEST_F(IdeConfigTest, Font_StyleBitsThatMeanNothing_AreDroppedForTheEditor) {
  Read("<font id=\"0\" n=\"M\" o=\"3\"/><font id=\"1\" n=\"M\" o=\"6\"/><font id=\"2\" o=\"-4\"/>");
  EXPECT_EQ(fonts.fonts[cFixedFont].style, 6);
  EXPECT_EQ(theEditorSettings.fonts[cVariableFont].style, 3);
  EXPECT_EQ(theEditorSettings.fonts[cFixedFont].style, 2);
  EXPECT_EQ(theEditorSettings.fonts[cOutputFont].style, 0);
}

TEST_F(IdeConfigTest, Defaults_AreSet) {
  Read("<set id=\"2\" o=\"1\"/>");
  EXPECT_EQ(config.defaultSet, 2);
  EXPECT_EQ(config.defaultOption, 1);
}

TEST_F(IdeConfigTest, LimitsOfTheTagParser_CanOnlyBeRaised) {
  Read("<set id=\"2\"/>");
  EXPECT_EQ(config.mostTags, 1024);
  EXPECT_EQ(config.longestLine, 1023);
  Read("<parser id=\"5\" value=\"-1\"/>");
  EXPECT_EQ(config.mostTags, 1024);
  EXPECT_EQ(config.longestLine, 1023);
  Read("<parser id=\"1000000\" value=\"5000000\"/>");
  EXPECT_EQ(config.mostTags, 1000000);
  EXPECT_EQ(config.longestLine, 5000000);
}

TEST_F(IdeConfigTest, UnknownElements_AreIgnored) {
  Read("<config>\r\n<x n=\"1\"/>\r\n<!-- g --></gcc><l n=\"m\"/>");
  EXPECT_EQ(config.libSets.size(), 1u);
  EXPECT_EQ(config.toolSets[0].name, "");
}

TEST_F(IdeConfigTest, MissingFile_ChangesNothing) {
  config.appDir = "ide.exe";
  EXPECT_EQ(ReadConfig(config, fonts).Words(), "");
  config.appDir = folder.Path() + "/";
  EXPECT_EQ(ReadConfig(config, fonts).Words(), "");
  EXPECT_TRUE(config.libSets.empty());
}

// Thirty switches of twenty characters are a value that no reader takes.
TEST_F(IdeConfigTest, ValueThatIsTooLong_IsPassedOverAndSaid) {
  std::string switches;
  for (int i = 10; i < 40; ++i) switches += "-I/opt/libraries/" + std::to_string(i) + " ";
  Read("<l n=\"a\" p=\"-I1\"/>\n<l n=\"b\" p=\"" + switches + "\"/>\n<l n=\"c\" p=\"-I3\"/>\n");
  EXPECT_EQ(config.libSets.size(), 2u);
  EXPECT_EQ(config.libSets["c"].include, "-I3");
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.doubt, config.appDir +
                              "Zendry.cfg: left out is a value of more than some 500 characters: "
                              "<l n=\"b\" p=\"-I/opt/libraries/10 -I/opt/l...");
}

TEST_F(IdeConfigTest, ValueOfTheMostCharacters_IsTaken) {
  const std::string longest(509, 'x');
  Read("<l n=\"a\" p=\"" + longest + "\" v=\"\"/>");
  EXPECT_EQ(config.libSets["a"].include, longest);
  EXPECT_EQ(result.Words(), "");
}

TEST_F(IdeConfigTest, FolderOrPipeInItsPlace_ChangesNothing) {
  folder.Folder("a/Zendry.cfg");
  folder.Folder("b");
  ASSERT_EQ(mkfifo(folder.Path("b/Zendry.cfg").c_str(), 0600), 0);
  for (const char* name : {"a/", "b/"}) {
    config.appDir = folder.Path(name);
    EXPECT_THAT(ReadConfig(config, fonts).error,
                testing::StartsWith(config.appDir + "Zendry.cfg: is "));
  }
  EXPECT_TRUE(config.libSets.empty());
}

TEST_F(IdeConfigTest, BrokenContent_KeepsWhatCanBeRead) {
  Read("");
  Read(std::string(100000, '\0'));
  Read(std::string(1000000, 'x'));
  EXPECT_TRUE(config.libSets.empty());
  Read(std::string("\0\xff<l n=\"m\0\"/>", 14) + "<l n=\"q\"r\"/>\n\n<");
  EXPECT_EQ(config.libSets.count(std::string("m\0", 2)), 1u);
}

TEST_F(IdeConfigTest, CutAtEveryByte_IsRead) {
  const std::string text =
      "<gcc id=\"0\" o=\"a\" p=\"b\" v=\"c\"/>\n<font id=\"1\" n=\"M\" v=\"9\"/>\n<s id=\"1\"/>\n";
  for (size_t length = 0; length <= text.size(); ++length) Read(text.substr(0, length));
  EXPECT_EQ(config.toolSets[0].flags, "c");
  EXPECT_EQ(config.defaultSet, 1);
}

TEST(InstallRoot, IsTheParentOfTheProgramsFolder) {
  EXPECT_EQ(InstallRoot("/opt/z/bin/"), "/opt/z/");
  EXPECT_EQ(InstallRoot("/bin/"), "/");
  EXPECT_EQ(InstallRoot("/"), "/");
  EXPECT_EQ(InstallRoot("a/"), "");
  EXPECT_EQ(InstallRoot("zendry"), "");
  EXPECT_EQ(InstallRoot("z"), "z");
  EXPECT_EQ(InstallRoot(""), "");
}

class ResolveToolPathTest : public testing::Test {
 protected:
  ResolveToolPathTest() : saved(theIdeConfig.appDir) { theIdeConfig.appDir = "/opt/z/bin/"; }
  ~ResolveToolPathTest() override { theIdeConfig.appDir = saved; }
  std::string saved;
};

TEST_F(ResolveToolPathTest, EmptyFolder_IsTheNameAlone) {
  EXPECT_EQ(ResolveToolPath("", "gcc"), "gcc");
}

TEST_F(ResolveToolPathTest, Folder_IsJoined) {
  EXPECT_EQ(ResolveToolPath("/usr/bin", "gcc"), "/usr/bin/gcc");
}

TEST_F(ResolveToolPathTest, At_StandsForTheInstallRoot) {
  EXPECT_EQ(ResolveToolPath("@/tools", "gcc"), "/opt/z/tools/gcc");
  EXPECT_EQ(ResolveToolPath("@/t", "gcc"), "/opt/z/t/gcc");
  EXPECT_EQ(ResolveToolPath("t@/t", "gcc"), "t@/t/gcc");
}

TEST_F(ResolveToolPathTest, AtOfTwoCharacters_IsAFolder) {
  EXPECT_EQ(ResolveToolPath("@/", "gcc"), "@//gcc");
}

}  // namespace
}  // namespace zendry
