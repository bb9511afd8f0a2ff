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

TEST(DiskStamp, NobodyCanSay_IsNotTheStampOfNothing) {
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
