#include "FileText.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "Descriptor.h"
#include "Privileges.h"
#include "ScopedVariable.h"
#include "TempFolder.h"

namespace mavro {
namespace {

namespace fs = std::filesystem;

mode_t ModeOf(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

TEST(ReadFileText, Bytes_AreAsTheyAre) {
  const test::TempFolder folder;
  const std::string bytes("a\r\n\0\xff\xfe\x1b[31m\n\r", 14);
  const FileText file = ReadFileText(folder.Write("a", bytes));
  EXPECT_TRUE(file.Ok());
  EXPECT_EQ(file.text, bytes);
}

TEST(ReadFileText, EmptyFile_IsEmptyText) {
  const test::TempFolder folder;
  const FileText file = ReadFileText(folder.Write("a", ""));
  EXPECT_EQ(file.error, "");
  EXPECT_EQ(file.text, "");
}

TEST(ReadFileText, LargeFile_IsWhole) {
  const test::TempFolder folder;
  std::string text(3 << 20, 'x');
  text += "end";
  EXPECT_EQ(ReadFileText(folder.Write("a", text)).text, text);
}

TEST(ReadFileText, FileWithoutASize_IsReadToItsEnd) {
  EXPECT_NE(ReadFileText("/proc/self/status").text.find("Name:"), std::string::npos);
}

TEST(ReadFileText, Link_IsFollowed) {
  const test::TempFolder folder;
  folder.Write("a", "text");
  fs::create_symlink("a", folder.Path("link"));
  EXPECT_EQ(ReadFileText(folder.Path("link")).text, "text");
}

// A link counts as something that is there, wherever it leads.
TEST(ReadFileText, WhatIsNoFile_IsAnErrorWithItsReasonAndNeverBlocks) {
  const test::TempFolder folder;
  ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
  fs::create_symlink("none", folder.Path("dangling"));
  fs::create_symlink("loop", folder.Path("loop"));
  const struct {
    std::string path, reason;
    bool isMissing;
  } rows[] = {
      {"", "No such file or directory", true},
      {folder.Path("none"), "No such file or directory", true},
      {folder.Path("none/a"), "No such file or directory", true},
      {std::string(5000, 'x'), "File name too long", true},
      {folder.Path("dangling"), "No such file or directory", false},
      {folder.Path("loop"), "Too many levels of symbolic links", false},
      {folder.Path(), "is a folder", false},
      {folder.Path("fifo"), "is not a regular file", false},
      {"/dev/zero", "is not a regular file", false},
      {"/dev/null", "is not a regular file", false},
  };
  for (const auto& row : rows) {
    const FileText file = ReadFileText(row.path);
    EXPECT_EQ(file.error, row.path + ": " + row.reason);
    EXPECT_EQ(file.isMissing, row.isMissing) << row.path;
    EXPECT_EQ(file.text, "");
  }
}

TEST(ReadFileText, UnreadableFile_IsAnError) {
  const test::TempFolder folder;
  const std::string path = folder.Write("a", "text");
  fs::permissions(folder.Path(), fs::perms::all);
  fs::permissions(path, fs::perms::none);
  const test::WithoutRights user;
  EXPECT_EQ(ReadFileText(path).error, path + ": Permission denied");
}

// Bytes that the system refuses to read.
TEST(ReadFileText, ReadThatFails_IsAnErrorWithItsReason) {
  EXPECT_EQ(ReadFileText("/proc/self/mem").error, "/proc/self/mem: Input/output error");
}

TEST(ReadFileText, SparseFileBeyondTheLimit_IsAnError) {
  const test::TempFolder folder;
  const std::string path = folder.Write("a", "");
  ASSERT_EQ(truncate(path.c_str(), off_t(1) << 31), 0);
  EXPECT_EQ(ReadFileText(path).error, path + ": can't be read");
}

TEST(FileExists, TellsFilesFromFoldersAndOthers) {
  const test::TempFolder folder;
  const std::string file = folder.Write("a", "");
  fs::create_symlink("a", folder.Path("toFile"));
  fs::create_symlink(".", folder.Path("toFolder"));
  fs::create_symlink("none", folder.Path("dangling"));
  EXPECT_TRUE(FileExists(file));
  EXPECT_TRUE(FileExists(folder.Path("toFile")));
  EXPECT_FALSE(FolderExists(file));
  EXPECT_TRUE(FolderExists(folder.Path()));
  EXPECT_TRUE(FolderExists(folder.Path("toFolder")));
  for (const std::string& path :
       {folder.Path("none"), folder.Path("dangling"), std::string(), std::string("/dev/null")}) {
    EXPECT_FALSE(FileExists(path)) << path;
    EXPECT_FALSE(FolderExists(path)) << path;
  }
  EXPECT_FALSE(FileExists(folder.Path()));
}

TEST(ProfileFolder, Home_IsTakenWithoutItsTrailingSlash) {
  const test::ScopedVariable home("HOME", "/home/somebody//");
  EXPECT_EQ(ProfileFolder(), "/home/somebody");
}

TEST(ProfileFolder, NoHome_IsThatOfThePasswordDatabase) {
  const passwd* entry = getpwuid(getuid());
  ASSERT_TRUE(entry);
  const test::ScopedVariable home("HOME", "");
  EXPECT_EQ(ProfileFolder(), entry->pw_dir);
  unsetenv("HOME");
  EXPECT_EQ(ProfileFolder(), entry->pw_dir);
}

TEST(RescueFolder, Missing_IsMadeForUsAlone) {
  const test::TempFolder folder;
  const test::ScopedVariable home("HOME", folder.Path());
  EXPECT_EQ(RescueFolder(), folder.Path(".zendry/rescue"));
  EXPECT_EQ(ModeOf(folder.Path(".zendry/rescue")), 0700u);
  EXPECT_EQ(RescueFolder(), folder.Path(".zendry/rescue"));
}

TEST(RescueFolder, OpenToOthers_IsClosedToThem) {
  const test::TempFolder folder;
  const test::ScopedVariable home("HOME", folder.Path());
  fs::permissions(folder.Folder(".zendry/rescue"), fs::perms::all);
  EXPECT_EQ(RescueFolder(), folder.Path(".zendry/rescue"));
  EXPECT_EQ(ModeOf(folder.Path(".zendry/rescue")), 0700u);
}

TEST(RescueFolder, OpenToSome_IsClosedToThem) {
  const test::TempFolder folder;
  const test::ScopedVariable home("HOME", folder.Path());
  const std::string rescue = folder.Folder(".zendry/rescue");
  for (const mode_t others : {01, 02, 04, 010, 020, 040}) {
    ASSERT_EQ(chmod(rescue.c_str(), 0700 | others), 0);
    EXPECT_EQ(RescueFolder(), rescue);
    EXPECT_EQ(ModeOf(rescue), 0700u) << std::oct << others;
  }
}

TEST(RescueFolder, FileInItsPlaceOrItsParents_CannotBeHad) {
  for (const char* name : {".zendry", ".zendry/rescue"}) {
    const test::TempFolder folder;
    const test::ScopedVariable home("HOME", folder.Path());
    folder.Write(name, "a file");
    EXPECT_EQ(RescueFolder(), "") << name;
    EXPECT_EQ(folder.Read(name), "a file");
  }
}

TEST(RescueFolder, NoHomeOrNoRight_CannotBeHad) {
  const test::TempFolder folder;
  const test::ScopedVariable home("HOME", folder.Path("none"));
  EXPECT_EQ(RescueFolder(), "");
  fs::permissions(folder.Folder("none"), fs::perms::owner_read | fs::perms::owner_exec);
  const test::WithoutRights user;
  EXPECT_EQ(RescueFolder(), "");
}

}  // namespace
}  // namespace mavro
