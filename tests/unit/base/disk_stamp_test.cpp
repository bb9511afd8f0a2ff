#include "base/DiskStamp.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "TempFolder.h"

namespace zendry {
namespace {

TEST(DiskStamp, UntouchedFile_KeepsItsStamp) {
  test::TempFolder folder;
  const std::string path = folder.Write("a", "1");
  const DiskStamp stamp = ReadDiskStamp(path);
  EXPECT_TRUE(stamp.exists);
  EXPECT_TRUE(stamp.isKnown);
  EXPECT_EQ(stamp.size, 1);
  EXPECT_EQ(ReadDiskStamp(path), stamp);
}

TEST(DiskStamp, MissingFile_HasTheStampOfNothing) {
  test::TempFolder folder;
  EXPECT_EQ(ReadDiskStamp(folder.Path("none")), DiskStamp());
  EXPECT_EQ(ReadDiskStamp(""), DiskStamp());
}

// A folder is no file, but differs from nothing and from another folder.
TEST(DiskStamp, Folder_DoesNotExistAsAFile) {
  test::TempFolder folder, other;
  const DiskStamp stamp = ReadDiskStamp(folder.Path());
  EXPECT_FALSE(stamp.exists);
  EXPECT_TRUE(stamp.isKnown);
  EXPECT_NE(stamp, DiskStamp());
  EXPECT_NE(stamp, ReadDiskStamp(other.Path()));
}

TEST(DiskStamp, AreOneFile_LinksYes_CopiesAndMissingFilesNo) {
  test::TempFolder folder;
  const std::string path = folder.Write("a", "1"), copy = folder.Write("b", "1");
  const auto areOne = [&](const std::string& other) {
    return AreOneFile(ReadDiskStamp(path), ReadDiskStamp(other));
  };
  ASSERT_EQ(symlink("a", folder.Path("link").c_str()), 0);
  ASSERT_EQ(link(path.c_str(), folder.Path("hard").c_str()), 0);
  EXPECT_TRUE(areOne(path));
  EXPECT_TRUE(areOne(folder.Path("link")));
  EXPECT_TRUE(areOne(folder.Path("hard")));
  EXPECT_FALSE(areOne(copy));
  EXPECT_FALSE(areOne(folder.Path("none")));
  EXPECT_FALSE(AreOneFile(ReadDiskStamp(folder.Path("none")), ReadDiskStamp(folder.Path("none"))));
}

TEST(DiskStamp, UnknownState_IsNotTheStampOfNothing) {
  test::TempFolder folder;
  const std::string loop = folder.Path("loop");
  ASSERT_EQ(symlink("loop", loop.c_str()), 0);
  for (const std::string& path : {loop, folder.Path(std::string(300, 'n'))}) {
    EXPECT_FALSE(ReadDiskStamp(path).isKnown) << path;
    EXPECT_FALSE(ReadDiskStamp(path).exists);
  }
  EXPECT_TRUE(ReadDiskStamp(folder.Path("none")).isKnown);
  EXPECT_TRUE(ReadDiskStamp(folder.Write("a", "") + "/b").isKnown) << "there can't be any";
}

TEST(DiskStamp, SameSizeAnotherTime_Differs) {
  test::TempFolder folder;
  const std::string path = folder.Write("a", "1");
  const timespec before[2] = {{1000, 1}, {1000, 1}}, after[2] = {{1000, 2}, {1000, 2}};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), before, 0), 0);
  const DiskStamp stamp = ReadDiskStamp(path);
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), after, 0), 0);
  EXPECT_NE(ReadDiskStamp(path), stamp);
  EXPECT_EQ(stamp.changed, 1'000'000'000'001);
}

TEST(DiskStamp, ReplacedFile_DiffersEvenWithTheSameTimeAndSize) {
  test::TempFolder folder;
  const std::string path = folder.Write("a", "1");
  const std::string other = folder.Write("b", "2");
  const timespec times[2] = {{1000, 1}, {1000, 1}};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  ASSERT_EQ(utimensat(AT_FDCWD, other.c_str(), times, 0), 0);
  const DiskStamp stamp = ReadDiskStamp(path);
  std::filesystem::rename(other, path);
  EXPECT_NE(ReadDiskStamp(path), stamp);
}

TEST(DiskStamp, Link_HasTheStampOfItsTarget) {
  test::TempFolder folder;
  const std::string path = folder.Write("a", "1");
  std::filesystem::create_symlink(path, folder.Path("link"));
  EXPECT_EQ(ReadDiskStamp(folder.Path("link")), ReadDiskStamp(path));
}

}  // namespace
}  // namespace zendry
