#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "Descriptor.h"
#include "FileCalls.h"
#include "FileParts.h"
#include "FileProduct.h"
#include "FileText.h"
#include "Privileges.h"
#include "ScopedVariable.h"
#include "TempFolder.h"

namespace mavro {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A folder with a file, and a profile folder of its own.
struct SaveFileTextTest : testing::Test {
  SaveFileTextTest() : home("HOME", profile.Path()), path(folder.Write("file.cpp", "old\n")) {
    fs::permissions(folder.Path(), fs::perms::all);
    fs::permissions(profile.Path(), fs::perms::all);
  }

  struct stat Status(const std::string& name) const {
    struct stat status = {};
    lstat(folder.Path(name).c_str(), &status);
    return status;
  }
  mode_t Mode(const std::string& name) const { return Status(name).st_mode & 07777; }

  void ExpectSaved(const std::string& name = "file.cpp") {
    const FileResult result = SaveFileText(folder.Path(name), "new text\n");
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(folder.Read(name), "new text\n");
  }
  void ExpectRefused(const std::string& target, const std::string& reason) {
    EXPECT_EQ(SaveFileText(target, "new").error, "can't write " + target + ": " + reason);
  }
  bool RescueIsEmpty() const {
    const std::string rescue = profile.Path(".zendry/rescue");
    return !fs::exists(rescue) || fs::is_empty(rescue);
  }

  test::TempFolder folder, profile;
  test::ScopedVariable home;
  std::string path;
};

TEST_F(SaveFileTextTest, ExistingFile_IsReplacedAndNothingElseStays) {
  const ino_t before = Status("file.cpp").st_ino;
  ExpectSaved();
  EXPECT_NE(Status("file.cpp").st_ino, before);
  EXPECT_THAT(folder.Names(), ElementsAre("file.cpp"));
  EXPECT_THAT(profile.Names(), IsEmpty()) << "nothing is put aside for it";
}

TEST_F(SaveFileTextTest, AnyBytes_AreWrittenAsTheyAre) {
  std::string bytes(100'000, '\0');
  for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7 >> 3);
  EXPECT_TRUE(SaveFileText(path, bytes).Ok());
  EXPECT_EQ(folder.Read("file.cpp"), bytes);
  EXPECT_TRUE(SaveFileText(path, "").Ok());
  EXPECT_EQ(folder.Read("file.cpp"), "");
}

TEST_F(SaveFileTextTest, TextInParts_IsWrittenAsAWhole) {
  const std::string large(5 << 20, 'x');
  const TextParts parts = [&](const TakePart& take) {
    take("a") && take("") && take(large) && take("b\n");
  };
  EXPECT_EQ(SaveFileParts(path, parts).error, "");
  EXPECT_EQ(folder.Read("file.cpp"), "a" + large + "b\n");
  EXPECT_EQ(SaveFileParts(path, [](const TakePart&) {}).error, "");
  EXPECT_EQ(folder.Read("file.cpp"), "");
}

TEST_F(SaveFileTextTest, TextInPartsInPlace_IsAsLongAsItsParts) {
  fs::create_hard_link(path, folder.Path("link.cpp"));
  for (const std::string& first : {std::string("longer than before\n"), std::string("s")}) {
    const TextParts parts = [&](const TakePart& take) { take(first) && take("b\n"); };
    EXPECT_EQ(SaveFileParts(path, parts).error, "");
    EXPECT_EQ(folder.Read("link.cpp"), first + "b\n");
    EXPECT_TRUE(RescueIsEmpty());
  }
}

TEST_F(SaveFileTextTest, PartThatCannotBeWritten_IsTheLastThatIsTaken) {
  const FileCalls saved = TheFileCalls();
  TheFileCalls().write = [](int, const void*, size_t) -> ssize_t {
    errno = ENOSPC;
    return -1;
  };
  int taken = 0;
  const FileResult result = SaveFileParts(path, [&](const TakePart& take) {
    for (bool isWanted = true; isWanted && taken < 9; ++taken) isWanted = take("part");
  });
  TheFileCalls() = saved;
  EXPECT_THAT(result.error, HasSubstr("No space left"));
  EXPECT_EQ(taken, 1);
  EXPECT_EQ(folder.Read("file.cpp"), "old\n");
}

TEST_F(SaveFileTextTest, NewFile_GetsTheUsualMode) {
  const mode_t mask = umask(027);
  ExpectSaved("new.cpp");
  umask(mask);
  EXPECT_EQ(Mode("new.cpp"), 0640u);
  EXPECT_THAT(folder.Names(), ElementsAre("file.cpp", "new.cpp"));
}

TEST_F(SaveFileTextTest, Mode_IsKept) {
  for (mode_t mode : {0644u, 0750u, 0600u, 0666u, 04755u, 02775u}) {
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
    const mode_t mask = umask(077);
    ExpectSaved();
    umask(mask);
    EXPECT_EQ(Mode("file.cpp"), mode);
  }
}

TEST_F(SaveFileTextTest, RelativePath_IsTakenFromTheCurrentFolder) {
  const fs::path before = fs::current_path();
  fs::current_path(folder.Path());
  const FileResult result = SaveFileText("file.cpp", "relative\n");
  fs::current_path(before);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(folder.Read("file.cpp"), "relative\n");
}

TEST_F(SaveFileTextTest, OddNames_AreNamesLikeOthers) {
  for (const std::string& name :
       {std::string("a b"), std::string("-o"), std::string("a\nb"), std::string("$(x)"),
        std::string("\xff\xfe"), std::string(255, 'n'), std::string(".zendry-save-x")})
    ExpectSaved(name);
}

TEST_F(SaveFileTextTest, Links_AreFollowedAndStay) {
  folder.Folder("deep");
  fs::create_symlink("../second", folder.Path("deep/first"));
  fs::create_symlink(folder.Path("file.cpp"), folder.Path("second"));
  ExpectSaved("deep/first");
  EXPECT_TRUE(fs::is_symlink(folder.Path("deep/first")));
  EXPECT_TRUE(fs::is_symlink(folder.Path("second")));
  EXPECT_FALSE(fs::is_symlink(path));
  EXPECT_EQ(folder.Read("file.cpp"), "new text\n");
}

TEST_F(SaveFileTextTest, DanglingLink_MakesItsTarget) {
  fs::create_symlink("later.cpp", folder.Path("link"));
  ExpectSaved("link");
  EXPECT_TRUE(fs::is_symlink(folder.Path("link")));
  EXPECT_EQ(folder.Read("later.cpp"), "new text\n");
}

TEST_F(SaveFileTextTest, LinkLoop_IsRefused) {
  fs::create_symlink("loop", folder.Path("loop"));
  ExpectRefused(folder.Path("loop"), "Too many levels of symbolic links");
}

TEST_F(SaveFileTextTest, FurtherHardLink_SeesTheNewText) {
  fs::create_hard_link(path, folder.Path("other.cpp"));
  ExpectSaved();
  EXPECT_EQ(folder.Read("other.cpp"), "new text\n");
  EXPECT_EQ(Status("file.cpp").st_nlink, 2u);
  EXPECT_TRUE(RescueIsEmpty());
}

TEST_F(SaveFileTextTest, FurtherHardLink_ShorterTextIsCutToItsLength) {
  folder.Write("file.cpp", std::string(200'000, 'o'));
  fs::create_hard_link(path, folder.Path("other.cpp"));
  ExpectSaved();
  EXPECT_TRUE(SaveFileText(path, std::string(300'000, 'n')).Ok());
  EXPECT_EQ(folder.Read("other.cpp"), std::string(300'000, 'n'));
}

TEST_F(SaveFileTextTest, FurtherHardLinkWithoutRescueFolder_IsRefusedAndUntouched) {
  fs::create_hard_link(path, folder.Path("other.cpp"));
  profile.Write(".zendry", "a file in its place");
  ExpectRefused(path, "its old content can't be put aside: there is no rescue folder");
  EXPECT_EQ(folder.Read("file.cpp"), "old\n");
}

TEST_F(SaveFileTextTest, FolderWithoutWriteRight_IsWrittenInPlace) {
  fs::permissions(path, fs::perms::all);
  fs::permissions(folder.Path(), fs::perms(0555));
  const ino_t before = Status("file.cpp").st_ino;
  const test::WithoutRights user;
  ExpectSaved();
  EXPECT_EQ(Status("file.cpp").st_ino, before);
  EXPECT_TRUE(RescueIsEmpty());
}

TEST_F(SaveFileTextTest, NewFileInAFolderWithoutWriteRight_IsRefused) {
  fs::permissions(folder.Path(), fs::perms(0555));
  const test::WithoutRights user;
  ExpectRefused(folder.Path("new.cpp"), "Permission denied");
}

TEST_F(SaveFileTextTest, FileWithoutWriteRight_IsRefusedAlthoughTheFolderAllows) {
  fs::permissions(path, fs::perms(0444));
  const test::WithoutRights user;
  ExpectRefused(path, "Permission denied");
  EXPECT_EQ(folder.Read("file.cpp"), "old\n");
}

TEST_F(SaveFileTextTest, ForeignOwner_StaysOwner) {
  if (!test::WithoutRights::CanGiveAway()) GTEST_SKIP() << "needs a file of another user";
  fs::permissions(path, fs::perms(0666));
  const ino_t before = Status("file.cpp").st_ino;
  {
    const test::WithoutRights user;
    ExpectSaved();
  }
  EXPECT_EQ(Status("file.cpp").st_uid, 0u);
  EXPECT_EQ(Status("file.cpp").st_ino, before) << "in place";
  EXPECT_THAT(folder.Names(), ElementsAre("file.cpp"));
}

TEST_F(SaveFileTextTest, OwnerAndGroup_AreKeptWhereAllowed) {
  if (!test::WithoutRights::CanGiveAway()) GTEST_SKIP() << "needs a file of another user";
  ASSERT_EQ(chown(path.c_str(), test::WithoutRights::cNobody, 12), 0);
  const ino_t before = Status("file.cpp").st_ino;
  ExpectSaved();
  EXPECT_NE(Status("file.cpp").st_ino, before) << "replaced";
  EXPECT_EQ(Status("file.cpp").st_uid, test::WithoutRights::cNobody);
  EXPECT_EQ(Status("file.cpp").st_gid, 12u);
}

TEST_F(SaveFileTextTest, OwnerAloneOrGroupAlone_AreKeptToo) {
  if (!test::WithoutRights::CanGiveAway()) GTEST_SKIP() << "needs a file of another user";
  const uid_t owners[] = {geteuid(), test::WithoutRights::cNobody};
  const gid_t groups[] = {12, getegid()};
  for (const int i : {0, 1}) {
    ASSERT_EQ(chown(path.c_str(), owners[i], groups[i]), 0);
    ExpectSaved();
    EXPECT_EQ(Status("file.cpp").st_uid, owners[i]);
    EXPECT_EQ(Status("file.cpp").st_gid, groups[i]);
  }
}

TEST_F(SaveFileTextTest, ForeignFileInAStickyFolder_IsWrittenInPlace) {
  if (!test::WithoutRights::CanGiveAway()) GTEST_SKIP() << "needs a file of another user";
  fs::permissions(folder.Path(), fs::perms(01777));
  fs::permissions(path, fs::perms(0666));
  const test::WithoutRights user;
  ExpectSaved();
  EXPECT_THAT(folder.Names(), ElementsAre("file.cpp"));
}

TEST_F(SaveFileTextTest, Attributes_AreKept) {
  if (setxattr(path.c_str(), "user.note", "kept", 4, 0) != 0)
    GTEST_SKIP() << "the file system has no attributes";
  const ino_t before = Status("file.cpp").st_ino;
  ExpectSaved();
  char value[8] = {};
  EXPECT_EQ(getxattr(path.c_str(), "user.note", value, sizeof value), 4);
  EXPECT_STREQ(value, "kept");
  EXPECT_NE(Status("file.cpp").st_ino, before);
}

constexpr char cAccessList[] = "system.posix_acl_access";
constexpr char cDefaultList[] = "system.posix_acl_default";

// An access list as the kernel stores it: owner rw, user 65534 rw, group r, mask rw, others none.
struct AccessList {
  struct Entry {
    uint16_t tag, rights;
    uint32_t id;
  };
  uint32_t version = 2;
  Entry entries[5] = {
      {0x01, 6, ~0u}, {0x02, 6, 65534}, {0x04, 4, ~0u}, {0x10, 6, ~0u}, {0x20, 0, ~0u}};

  // False where the file system has none.
  bool GiveTo(const std::string& path, const char* name = cAccessList) const {
    return setxattr(path.c_str(), name, this, sizeof *this, 0) == 0;
  }
  bool Has(const std::string& path) const {
    char kept[sizeof *this] = {};
    return getxattr(path.c_str(), cAccessList, kept, sizeof kept) == ssize_t(sizeof *this) &&
           std::memcmp(kept, this, sizeof *this) == 0;
  }
};

bool HasAnyAccessList(const std::string& path) {
  return getxattr(path.c_str(), cAccessList, nullptr, 0) >= 0;
}

TEST_F(SaveFileTextTest, AccessList_IsKept) {
  const AccessList list;
  if (!list.GiveTo(path)) GTEST_SKIP() << "the file system has no access lists";
  ExpectSaved();
  EXPECT_TRUE(list.Has(path));
}

TEST_F(SaveFileTextTest, FoldersDefaultList_GivesASavedFileNoRights) {
  if (!AccessList().GiveTo(folder.Path(), cDefaultList))
    GTEST_SKIP() << "the file system has no access lists";
  for (mode_t mode : {0600u, 0644u, 0664u, 04750u}) {
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
    const ino_t before = Status("file.cpp").st_ino;
    ExpectSaved();
    EXPECT_NE(Status("file.cpp").st_ino, before);
    EXPECT_EQ(Mode("file.cpp"), mode);
    EXPECT_FALSE(HasAnyAccessList(path)) << mode;
  }
}

TEST_F(SaveFileTextTest, FoldersDefaultList_ReplacesNoListOfTheFile) {
  AccessList own;
  own.entries[1].rights = 4;
  if (!own.GiveTo(path) || !AccessList().GiveTo(folder.Path(), cDefaultList))
    GTEST_SKIP() << "the file system has no access lists";
  ExpectSaved();
  EXPECT_TRUE(own.Has(path));
}

TEST_F(SaveFileTextTest, FoldersDefaultList_IsANewFilesUsualOne) {
  if (!AccessList().GiveTo(folder.Path(), cDefaultList))
    GTEST_SKIP() << "the file system has no access lists";
  ExpectSaved("new.cpp");
  EXPECT_TRUE(HasAnyAccessList(folder.Path("new.cpp")));
}

TEST_F(SaveFileTextTest, FileThatMayNotBeRead_KeepsItsAccessRights) {
  if (!test::WithoutRights::CanGiveAway()) GTEST_SKIP() << "needs a file of another user";
  AccessList list;
  if (!list.GiveTo(folder.Path(), cDefaultList))
    GTEST_SKIP() << "the file system has no access lists";
  ASSERT_EQ(chown(path.c_str(), test::WithoutRights::cNobody, test::WithoutRights::cNobody), 0);
  for (const bool hasList : {false, true}) {
    list.entries[0].rights = 2;
    if (hasList)
      ASSERT_TRUE(list.GiveTo(path));
    else
      ASSERT_EQ(chmod(path.c_str(), 0200), 0);
    {
      const test::WithoutRights user;
      EXPECT_EQ(SaveFileText(path, "new text\n").error, "");
    }
    EXPECT_EQ(folder.Read("file.cpp"), "new text\n");
    EXPECT_EQ(hasList ? list.Has(path) : !HasAnyAccessList(path), true) << hasList;
  }
}

TEST_F(SaveFileTextTest, AccessListThatCannotBeTakenAway_IsAvoidedByWritingInPlace) {
  if (!AccessList().GiveTo(folder.Path(), cDefaultList))
    GTEST_SKIP() << "the file system has no access lists";
  const FileCalls saved = TheFileCalls();
  TheFileCalls().fremovexattr = [](int, const char*) {
    errno = EPERM;
    return -1;
  };
  const ino_t before = Status("file.cpp").st_ino;
  ExpectSaved();
  TheFileCalls() = saved;
  EXPECT_EQ(Status("file.cpp").st_ino, before);
  EXPECT_FALSE(HasAnyAccessList(path));
}

// Writing takes the set-id bits of a file away from who isn't the superuser.
TEST_F(SaveFileTextTest, ModeOfAFileWrittenInPlace_IsKept) {
  if (!test::WithoutRights::CanGiveAway()) GTEST_SKIP() << "needs another user";
  ASSERT_EQ(chown(path.c_str(), test::WithoutRights::cNobody, test::WithoutRights::cNobody), 0);
  fs::create_hard_link(path, folder.Path("other.cpp"));
  ASSERT_EQ(chmod(path.c_str(), 04755), 0);
  {
    const test::WithoutRights user;
    ExpectSaved();
  }
  EXPECT_EQ(Mode("file.cpp"), 04755u);
}

TEST_F(SaveFileTextTest, AttributeThatCannotBeCarriedOver_IsKeptByWritingInPlace) {
  if (setxattr(path.c_str(), "user.note", "kept", 4, 0) != 0)
    GTEST_SKIP() << "the file system has no attributes";
  const FileCalls saved = TheFileCalls();
  TheFileCalls().fsetxattr = [](int, const char*, const void*, size_t, int) {
    errno = EPERM;
    return -1;
  };
  const ino_t before = Status("file.cpp").st_ino;
  ExpectSaved();
  TheFileCalls() = saved;
  EXPECT_EQ(Status("file.cpp").st_ino, before);
  EXPECT_THAT(folder.Names(), ElementsAre("file.cpp"));
}

TEST_F(SaveFileTextTest, WhatIsNoFile_IsRefusedInWords) {
  ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
  const Descriptor socketFile(socket(AF_UNIX, SOCK_STREAM, 0));
  sockaddr_un address = {AF_UNIX, {}};
  std::strncpy(address.sun_path, folder.Path("socket").c_str(), sizeof address.sun_path - 1);
  ASSERT_EQ(bind(socketFile.Number(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ExpectRefused(folder.Path("fifo"), "it is a pipe");
  ExpectRefused(folder.Path("socket"), "it is a socket");
  ExpectRefused(folder.Path(), "it is a folder");
  ExpectRefused(folder.Path(""), "it is a folder");
  ExpectRefused("/dev/null", "it is a device");
}

TEST_F(SaveFileTextTest, ImpossiblePaths_AreRefusedInWords) {
  ExpectRefused("", "the name is empty");
  ExpectRefused(folder.Path("none/a"), "No such file or directory");
  ExpectRefused(folder.Path("file.cpp/a"), "Not a directory");
  ExpectRefused(folder.Path(std::string(256, 'n')), "File name too long");
  ExpectRefused(path + '\0' + "x", "the name holds a NUL byte");
  EXPECT_EQ(folder.Read("file.cpp"), "old\n");
}

TEST_F(SaveFileTextTest, FolderThatTakesItsPlaceMeanwhile_IsLeftAlone) {
  static std::string place;
  static FileCalls saved;
  place = path;
  saved = TheFileCalls();
  TheFileCalls().fsync = [](int file) {
    fs::remove(place);
    fs::create_directory(place);
    TheFileCalls() = saved;
    return saved.fsync(file);
  };
  ExpectRefused(path, "Is a directory");
  EXPECT_THAT(folder.Names(), ElementsAre("file.cpp"));
}

// The name of the temporary file in a folder; empty without one.
std::string TemporaryIn(const std::string& folder) {
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.path().filename().string().starts_with(".zendry-save-")) return entry.path();
  return "";
}

TEST_F(SaveFileTextTest, TemporaryFileTakenAwayWhileItIsWritten_KeepsTheOldText) {
  static std::string place;
  static FileCalls saved;
  place = folder.Path();
  saved = TheFileCalls();
  TheFileCalls().fsync = [](int file) {
    TheFileCalls() = saved;
    fs::remove(TemporaryIn(place));
    return saved.fsync(file);
  };
  ExpectRefused(path, "No such file or directory");
  EXPECT_EQ(folder.Read("file.cpp"), "old\n");
  EXPECT_THAT(folder.Names(), ElementsAre("file.cpp"));
}

// Another save may take a temporary file for left over before it is locked.
TEST_F(SaveFileTextTest, TemporaryFileTakenAwayBeforeItIsLocked_IsMadeAgain) {
  static std::string place;
  static FileCalls saved;
  place = folder.Path();
  saved = TheFileCalls();
  TheFileCalls().flock = [](int file, int operation) {
    TheFileCalls() = saved;
    fs::remove(TemporaryIn(place));
    return saved.flock(file, operation);
  };
  ExpectSaved();
  EXPECT_THAT(folder.Names(), ElementsAre("file.cpp"));
}

TEST_F(SaveFileTextTest, AHundredTemporaryNamesAreTried) {
  static FileCalls saved;
  static int tries = 0;
  saved = TheFileCalls();
  tries = 0;
  TheFileCalls().openat = [](int folder, const char* name, int flags, mode_t mode) {
    if (!(flags & O_EXCL)) return saved.openat(folder, name, flags, mode);
    ++tries;
    errno = EEXIST;
    return -1;
  };
  ExpectRefused(path, "File exists");
  TheFileCalls() = saved;
  EXPECT_EQ(tries, 100);
  EXPECT_EQ(folder.Read("file.cpp"), "old\n");
}

TEST_F(SaveFileTextTest, Append_Impossible_IsRefusedInWords) {
  const std::string missing = folder.Path("none/steps");
  EXPECT_EQ(AppendFileText(missing, 0, "x").error,
            "can't write " + missing + ": No such file or directory");
  const std::string steps = folder.Path("steps");
  EXPECT_EQ(AppendFileText(steps, 3, "x").error,
            "can't write " + steps + ": No such file or directory");
  EXPECT_EQ(AppendFileText(path, 5, "x").error, "can't write " + path + ": it has become shorter");
  EXPECT_EQ(AppendFileText(path, 4, "x").error, "");
  EXPECT_EQ(folder.Read("file.cpp"), "old\nx");
}

TEST_F(SaveFileTextTest, Append_ThatFails_LeavesTheFileAsLongAsItWas) {
  static FileCalls saved;
  saved = TheFileCalls();
  TheFileCalls().fsync = [](int) {
    errno = EIO;
    return -1;
  };
  const std::string error = AppendFileText(path, 4, "more").error;
  TheFileCalls() = saved;
  EXPECT_EQ(error, "can't write " + path + ": Input/output error");
  EXPECT_EQ(folder.Read("file.cpp"), "old\n");
}

TEST_F(SaveFileTextTest, TemporaryFileLockedByAnotherSave_IsLeftToIt) {
  static FileCalls saved;
  saved = TheFileCalls();
  TheFileCalls().flock = [](int, int) {
    TheFileCalls() = saved;
    errno = EWOULDBLOCK;
    return -1;
  };
  ExpectSaved();
}

TEST_F(SaveFileTextTest, LeftOversOfKilledSaves_AreRemoved) {
  folder.Write(".zendry-save-0123456789abcdef", "half");
  ExpectSaved();
  EXPECT_THAT(folder.Names(), ElementsAre("file.cpp"));
}

// Such a save has given its file to the owner of the one that it was to replace.
TEST_F(SaveFileTextTest, LeftOverOfASaveByTheSuperuser_IsRemovedByTheNext) {
  if (!test::WithoutRights::CanGiveAway()) GTEST_SKIP() << "needs a file of another user";
  const std::string left = folder.Write(".zendry-save-0123456789abcdef", "half");
  ASSERT_EQ(chown(left.c_str(), test::WithoutRights::cNobody, 12), 0);
  ExpectSaved();
  EXPECT_THAT(folder.Names(), ElementsAre("file.cpp"));
}

TEST_F(SaveFileTextTest, ForeignLeftOver_StaysForOtherUsers) {
  if (!test::WithoutRights::CanGiveAway()) GTEST_SKIP() << "needs a file of another user";
  folder.Write(".zendry-save-0123456789abcdef", "of the superuser");
  fs::permissions(path, fs::perms::all);
  {
    const test::WithoutRights user;
    ExpectSaved();
  }
  EXPECT_EQ(folder.Names().size(), 2u);
}

TEST_F(SaveFileTextTest, FilesThatOnlyLookLikeLeftOvers_Stay) {
  folder.Write(".zendry-save-0123456789abcdeg", "g is no digit");
  folder.Write(".zendry-save-0123456789abcdef0", "too long");
  folder.Folder(".zendry-save-0000000000000000");
  const Descriptor busy(open(folder.Write(".zendry-save-1111111111111111", "being written").c_str(),
                             O_RDONLY | O_CLOEXEC));
  ASSERT_EQ(flock(busy.Number(), LOCK_EX), 0);
  fs::create_symlink("file.cpp", folder.Path(".zendry-save-2222222222222222"));
  ExpectSaved();
  EXPECT_EQ(folder.Names().size(), 6u);
}

using Save = FileResult (*)(const std::string& path, std::string_view content);

// The calls of a save that make the order in which things reach the disk, as a text.
std::string OrderOfCalls(const std::string& path, Save save = SaveFileText) {
  static std::string order;
  static FileCalls saved;
  order.clear();
  saved = TheFileCalls();
  TheFileCalls().write = [](int file, const void* bytes, size_t size) {
    order += "write ";
    return saved.write(file, bytes, size);
  };
  TheFileCalls().fsync = [](int file) {
    struct stat status;
    fstat(file, &status);
    order += S_ISDIR(status.st_mode) ? "sync-folder " : "sync ";
    return saved.fsync(file);
  };
  TheFileCalls().renameat = [](int fromFolder, const char* from, int toFolder, const char* to) {
    order += "rename ";
    return saved.renameat(fromFolder, from, toFolder, to);
  };
  TheFileCalls().unlinkat = [](int at, const char* name, int flags) {
    order += "remove ";
    return saved.unlinkat(at, name, flags);
  };
  EXPECT_TRUE(save(path, "new text\n").Ok());
  TheFileCalls() = saved;
  return order;
}

TEST_F(SaveFileTextTest, NewContent_IsOnDiskBeforeItTakesTheName) {
  EXPECT_EQ(OrderOfCalls(path), "write sync rename sync-folder ");
}

TEST_F(SaveFileTextTest, Product_IsOnDiskBeforeItTakesAnOldFilesName_ANewOneIsNotWaitedFor) {
  EXPECT_EQ(OrderOfCalls(path, SaveProduct), "write sync rename sync-folder ");
  EXPECT_EQ(OrderOfCalls(folder.Path("new.pdf"), SaveProduct), "write rename ");
  EXPECT_EQ(folder.Read("new.pdf"), "new text\n");
}

TEST_F(SaveFileTextTest, RescueCopy_IsOnDiskBeforeTheFileIsTouchedAndUntilItIs) {
  fs::create_hard_link(path, folder.Path("other.cpp"));
  EXPECT_EQ(OrderOfCalls(path), "write sync sync-folder write sync remove ");
}

TEST_F(SaveFileTextTest, NoRoomToGrowInPlace_ShowsBeforeTheFileIsTouched) {
  fs::create_hard_link(path, folder.Path("other.cpp"));
  const timespec before = Status("file.cpp").st_mtim;
  const FileCalls saved = TheFileCalls();
  TheFileCalls().fallocate = [](int, int, off_t, off_t) {
    errno = ENOSPC;
    return -1;
  };
  EXPECT_EQ(SaveFileText(path, "longer than before").error,
            "can't write " + path + ": No space left on device");
  TheFileCalls() = saved;
  const timespec after = Status("file.cpp").st_mtim;
  EXPECT_EQ(before.tv_nsec, after.tv_nsec);
  EXPECT_EQ(before.tv_sec, after.tv_sec);
  EXPECT_TRUE(RescueIsEmpty());
}

TEST_F(SaveFileTextTest, ShortWrites_GoOnWhereTheyStopped) {
  const FileCalls saved = TheFileCalls();
  TheFileCalls().write = [](int file, const void* bytes, size_t size) {
    return ::write(file, bytes, size > 3 ? 3 : size);
  };
  ExpectSaved();
  fs::create_hard_link(path, folder.Path("other.cpp"));
  EXPECT_TRUE(SaveFileText(path, "in place\n").Ok());
  TheFileCalls() = saved;
  EXPECT_EQ(folder.Read("file.cpp"), "in place\n");
}

TEST_F(SaveFileTextTest, InterruptedWrites_AreRepeated) {
  static bool interrupt;
  interrupt = true;
  const FileCalls saved = TheFileCalls();
  TheFileCalls().write = [](int file, const void* bytes, size_t size) -> ssize_t {
    interrupt = !interrupt;
    if (interrupt) return ::write(file, bytes, size);
    errno = EINTR;
    return -1;
  };
  ExpectSaved();
  TheFileCalls() = saved;
}

TEST_F(SaveFileTextTest, FileSystemWithoutSync_IsNoFailure) {
  const FileCalls saved = TheFileCalls();
  TheFileCalls().fsync = [](int) {
    errno = EINVAL;
    return -1;
  };
  ExpectSaved();
  TheFileCalls() = saved;
}

TEST_F(SaveFileTextTest, Descriptors_AreNotLeaked) {
  fs::create_hard_link(path, folder.Path("other.cpp"));
  const Descriptor before(dup(0));
  for (int i = 0; i < 5; ++i) {
    EXPECT_TRUE(SaveFileText(path, "in place").Ok());
    EXPECT_TRUE(SaveFileText(folder.Path("new.cpp"), "beside").Ok());
    EXPECT_FALSE(SaveFileText(folder.Path(), "refused").Ok());
  }
  const Descriptor after(dup(0));
  EXPECT_EQ(after.Number(), before.Number() + 1);
}

}  // namespace
}  // namespace mavro
