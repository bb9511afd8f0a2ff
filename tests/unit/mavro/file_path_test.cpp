#include "FilePath.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "TempFolder.h"

namespace mavro {
namespace {

TEST(FolderOf, EndsWithItsSlash) {
  EXPECT_EQ(FolderOf("/a/b/c.cpp"), "/a/b/");
  EXPECT_EQ(FolderOf("a/c.cpp"), "a/");
  EXPECT_EQ(FolderOf("/c.cpp"), "/");
  EXPECT_EQ(FolderOf("/a/b/"), "/a/b/");
}

TEST(FolderOf, ANameAlone_HasNone) {
  EXPECT_EQ(FolderOf("c.cpp"), "");
  EXPECT_EQ(FolderOf(""), "");
}

TEST(IsFolder, FoldersAndLinksToThem) {
  test::TempFolder files;
  files.Write("file", "");
  std::filesystem::create_directory_symlink(files.Path(), files.Path("link"));
  std::filesystem::create_symlink(files.Path("nothing"), files.Path("dangling"));
  EXPECT_TRUE(IsFolder(files.Path()));
  EXPECT_TRUE(IsFolder(files.Path("link")));
  EXPECT_FALSE(IsFolder(files.Path("file")));
  EXPECT_FALSE(IsFolder(files.Path("dangling")));
  EXPECT_FALSE(IsFolder(files.Path("nothing")));
}

}  // namespace
}  // namespace mavro
