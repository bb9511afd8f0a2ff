#include "wizards/Repository.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Privileges.h"
#include "SmallDisk.h"
#include "TempFolder.h"

namespace zendry {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> Shown(const std::vector<RepositoryItems::Item>& items) {
  std::vector<std::string> shown;
  for (const auto& item : items) shown.push_back(item.folder + "|" + item.text);
  return shown;
}

TEST(RepositoryItems, TemplatesAndDemos_ByTheFlag) {
  const RepositoryItems items = ReadRepositoryItems(
      "a=First\n#demos\nb=Second\n#@Title of b\n#@\n#temp\nc=Third=x\r\n#\n\nno sign\nx\n#@T2\n");
  EXPECT_THAT(Shown(items.templates), ElementsAre("a|First", "c|Third=x"));
  EXPECT_THAT(Shown(items.demos), ElementsAre("b|Second"));
  EXPECT_THAT(items.demoTitles, ElementsAre("Title of b", "T2"));
  EXPECT_EQ(items.DemoFolder(0), "b");
  EXPECT_EQ(items.DemoFolder(1), "");
  EXPECT_EQ(items.DemoFolder(-1), "");
}

TEST(RepositoryItems, LinesOfUpToTwoCharacters_AreSkipped) {
  const RepositoryItems items = ReadRepositoryItems("#d\na=\na=b\n#x \nd=e");
  EXPECT_THAT(Shown(items.templates), ElementsAre("a|b")) << "\"#d\" is too short to count";
  EXPECT_THAT(Shown(items.demos), ElementsAre("d|e"));
}

TEST(RepositoryItems, FoldersThatLeadOut_AreRefused) {
  const RepositoryItems items = ReadRepositoryItems(
      "../x=1\n/etc=2\na/../../b=3\na/b=4\n=5\nC:\\x=6\n..a=7\n./a=8\na\\b=9\n#d.\n#@T\n../y=1\n");
  EXPECT_THAT(Shown(items.templates), ElementsAre("a/b|4", "..a|7"));
  EXPECT_EQ(items.DemoFolder(0), "");
}

TEST(RepositoryItems, EmptyAndBinaryTexts_CanBeRead) {
  EXPECT_THAT(ReadRepositoryItems("").templates, IsEmpty());
  std::string bytes;
  for (int i = 0; i < 4096; ++i) bytes += static_cast<char>(i * 7 % 256);
  ReadRepositoryItems(bytes);
  EXPECT_THAT(ReadRepositoryItems(std::string(1 << 20, '=')).templates, IsEmpty());
}

TEST(ProjectName, HasDigitsAndWhatLiesBetweenBigAAndSmallZ) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string name(1, static_cast<char>(byte));
    const bool allowed = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'z');
    EXPECT_EQ(IsProjectName(name), allowed) << byte;
    EXPECT_EQ(IsProjectName("a" + name), allowed) << byte;
  }
  EXPECT_TRUE(IsProjectName("my_project"));
  EXPECT_TRUE(IsProjectName("Proj1"));
  EXPECT_TRUE(IsProjectName("a^b"));
  EXPECT_FALSE(IsProjectName("my project"));
  EXPECT_FALSE(IsProjectName(""));
}

TEST(ConsoleSource, HasItsLines) {
  EXPECT_EQ(ConsoleSource(true),
            "#include<cstdlib>\n#include<iostream>\n\n\nusing namespace std;\n\n\n"
            "int main(int argc, char *argv[])\n{\n\t\n\treturn 0;\n};\n");
  EXPECT_EQ(ConsoleSource(false),
            "#include<stdio.h>\n\n\nint main(int argc, char *argv[])\n{\n\t\n\treturn 0;\n};\n");
}

struct CopyFolderTest : testing::Test {
  test::TempFolder files;
  const std::string source = files.Folder("from");
  const std::string target = files.Path("to/deep");
};

TEST_F(CopyFolderTest, CopiesAll_RenamesTheProjectsFiles) {
  files.Write("from/_.zpj", "project");
  files.Write("from/_.cpp", std::string("\0\xff\r\n", 4));
  files.Write("from/sub/_.h", "h");
  files.Write("from/_x.h", "x");
  files.Write("from/a_.h", "a");
  files.Write("from/demo.zpj", "d");
  files.Write("from/sub/demo.zpj", "d");
  files.Folder("from/empty");
  const FolderCopy copy = CopyFolder(target, source, "Mine", {"demo.zpj"});
  // "_.zpj" and the renamed file would have one name: the second is refused.
  EXPECT_THAT(copy.error, HasSubstr("is there already"));
  fs::remove(files.Path("from/demo.zpj"));
  EXPECT_EQ(CopyFolder(target, source, "Mine").error, "") << "equal files are no question";
  EXPECT_EQ(files.Read("to/deep/Mine.cpp"), std::string("\0\xff\r\n", 4));
  for (const char* name : {"Mine.zpj", "sub/Mine.h", "_x.h", "a_.h", "sub/demo.zpj", "empty"})
    EXPECT_TRUE(files.Exists(std::string("to/deep/") + name)) << name;
}

TEST_F(CopyFolderTest, ANameThatIsToBeRenamed_IsSoOnlyInTheFolderItself) {
  files.Write("from/demo.zpj", "d");
  files.Write("from/sub/demo.zpj", "d");
  EXPECT_EQ(CopyFolder(target, source, "Mine", {"demo.zpj"}).error, "");
  EXPECT_TRUE(files.Exists("to/deep/Mine.zpj"));
  EXPECT_TRUE(files.Exists("to/deep/sub/demo.zpj"));
}

TEST_F(CopyFolderTest, AnExistingFile_IsReplacedOnlyIfTheUserAgrees) {
  files.Write("from/a.cpp", "new");
  files.Write("from/b.cpp", "new");
  files.Write("to/deep/a.cpp", "mine");
  FolderCopy copy = CopyFolder(target, source, "P");
  EXPECT_TRUE(copy.wasRefused);
  EXPECT_THAT(copy.error, HasSubstr(target + "/a.cpp"));
  EXPECT_EQ(files.Read("to/deep/a.cpp"), "mine");
  std::vector<std::string> asked;
  const auto agree = [&](const std::string& path) {
    asked.push_back(path);
    return true;
  };
  EXPECT_EQ(CopyFolder(target, source, "P", {}, agree).error, "");
  EXPECT_THAT(asked, ElementsAre(target + "/a.cpp"));
  EXPECT_EQ(files.Read("to/deep/a.cpp"), "new");
}

TEST_F(CopyFolderTest, LinksOutOfTheFolderAndDevices_AreNotFollowed) {
  files.Write("secret", "s");
  files.Write("from/a.cpp", "a");
  fs::create_symlink("a.cpp", files.Path("from/inside.cpp"));
  fs::create_symlink("../secret", files.Path("from/outside.cpp"));
  fs::create_symlink("nowhere", files.Path("from/dangling.cpp"));
  fs::create_directory_symlink("..", files.Path("from/round"));
  mkfifo(files.Path("from/pipe").c_str(), 0600);
  const FolderCopy copy = CopyFolder(target, source, "P");
  EXPECT_EQ(copy.error, "");
  EXPECT_EQ(copy.passedOver.size(), 4u);
  EXPECT_EQ(files.Read("to/deep/inside.cpp"), "a");
  EXPECT_FALSE(files.Exists("to/deep/outside.cpp"));
  EXPECT_FALSE(files.Exists("to/deep/round"));
  EXPECT_FALSE(files.Exists("to/deep/pipe"));
}

TEST_F(CopyFolderTest, AnUnreadableFile_EndsTheCopyAndIsNamed) {
  files.Write("from/a.cpp", "a");
  fs::permissions(files.Write("from/b.cpp", "b"), fs::perms::none);
  files.Write("from/c.cpp", "c");
  fs::permissions(files.Folder("to"), fs::perms::all);
  fs::permissions(files.Path(), fs::perms::all);
  fs::permissions(source, fs::perms::all);
  FolderCopy copy;
  {
    const test::WithoutRights user;
    copy = CopyFolder(target, source, "P");
  }
  EXPECT_THAT(copy.error, HasSubstr("b.cpp"));
  EXPECT_THAT(copy.copied, ElementsAre(target + "/a.cpp")) << "what is copied stays";
}

TEST_F(CopyFolderTest, ATargetThatIsAFile_OrLiesInTheSource_IsRefused) {
  files.Write("from/a.cpp", "a");
  EXPECT_NE(CopyFolder(files.Write("file", ""), source, "P").error, "");
  EXPECT_NE(CopyFolder(files.Path("file/below"), source, "P").error, "");
  EXPECT_THAT(CopyFolder(files.Path("from/in"), source, "P").error, HasSubstr("is copied"));
  EXPECT_THAT(CopyFolder(source, source, "P").error, HasSubstr("is copied"));
  EXPECT_NE(CopyFolder(target, files.Path("gone"), "P").error, "");
  EXPECT_EQ(CopyFolder(files.Path("from2"), source, "P").error, "")
      << "a longer name is no folder in it";
}

TEST_F(CopyFolderTest, ATargetWithoutTheRightToWrite_IsNamed) {
  files.Write("from/a.cpp", "a");
  const std::string locked = files.Folder("locked");
  fs::permissions(locked, fs::perms::owner_read | fs::perms::owner_exec);
  fs::permissions(files.Path(), fs::perms::all);
  const test::WithoutRights user;
  EXPECT_THAT(CopyFolder(locked, source, "P").error, HasSubstr(locked));
}

TEST_F(CopyFolderTest, AFullDisk_EndsTheCopy_WhatIsThereStays) {
  files.Write("from/a.cpp", std::string(50'000, 'a'));
  files.Write("from/b.cpp", std::string(500'000, 'b'));
  const std::string disk = files.Folder("disk");
  const int answer = test::RunOnSmallDisk(disk, "256k", [&] {
    const FolderCopy copy = CopyFolder(disk, source, "P");
    const bool named = copy.error.find("b.cpp") != std::string::npos;
    const bool whole = fs::file_size(disk + "/a.cpp") == 50'000;
    return named && whole && !fs::exists(disk + "/b.cpp") ? 0 : 1;
  });
  if (answer == test::cCannotMount) GTEST_SKIP() << "nobody may mount here";
  EXPECT_EQ(answer, 0);
}

}  // namespace
}  // namespace zendry
