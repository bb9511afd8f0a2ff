#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "FileFaults.h"
#include "FileText.h"
#include "ScopedVariable.h"
#include "SmallDisk.h"
#include "TempFolder.h"

namespace mavro {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using Extent = test::FileFaults::Extent;

const std::string cOld = "old " + std::string(100'000, 'o');
const std::string cNew = "new " + std::string(150'000, 'n');

// One file to be saved, in a folder and with a profile folder of its own.
struct Scene {
  enum Kind { cPlain, cMissing, cLinked, cHardLinked };

  explicit Scene(Kind kind) : kind(kind), home("HOME", profile.Path()) {
    if (kind != cMissing) folder.Write("file", cOld);
    if (kind == cLinked) fs::create_symlink("file", folder.Path("link"));
    if (kind == cHardLinked) fs::create_hard_link(folder.Path("file"), profile.Path("other"));
    if (kind == cPlain) setxattr(folder.Path("file").c_str(), "user.note", "x", 1, 0);
  }

  std::string Path() const { return folder.Path(kind == cLinked ? "link" : "file"); }
  // Nothing for a file that isn't there.
  std::optional<std::string> Content() const {
    const FileText file = ReadFileText(folder.Path("file"));
    return file.Ok() ? std::optional(file.text) : std::nullopt;
  }
  std::optional<std::string> OldContent() const {
    return kind == cMissing ? std::nullopt : std::optional(cOld);
  }
  bool IsOldOrNew() const { return Content() == cNew || Content() == OldContent(); }
  size_t Count() const { return folder.Names().size() - (kind == cLinked) - (Content() ? 1 : 0); }
  bool LinkStays() const { return kind != cLinked || fs::is_symlink(Path()); }
  // The one file in the rescue folder; empty for none.
  std::string Rescued() const {
    const fs::path rescue = profile.Path(".zendry/rescue");
    if (!fs::exists(rescue) || fs::is_empty(rescue)) return {};
    return fs::directory_iterator(rescue)->path().string();
  }

  Kind kind;
  test::TempFolder folder, profile;
  test::ScopedVariable home;
};

constexpr Scene::Kind cKinds[] = {Scene::cPlain, Scene::cMissing, Scene::cLinked,
                                  Scene::cHardLinked};
constexpr int cErrors[] = {ENOSPC, EIO, EDQUOT, EROFS, EACCES, EPERM};
constexpr int cMostCalls = 200;

// Nothing reaches a disk for good: whether it does is not to be seen from here, and takes long.
struct SaveFaults : testing::Test {
  SaveFaults() : saved(TheFileCalls()) {
    TheFileCalls().fsync = [](int) { return 0; };
  }
  ~SaveFaults() override { TheFileCalls() = saved; }
  FileCalls saved;
};

// Runs `check(n)` for n from 1 on until it answers that no call was hit any more.
void ForEachCall(const std::function<bool(int n)>& check) {
  int n = 1;
  while (n < cMostCalls && check(n)) ++n;
  EXPECT_GT(n, 8) << "hardly any call was tried";
  EXPECT_LT(n, cMostCalls);
}

void ExpectSecondSaveHeals(const Scene& scene) {
  EXPECT_EQ(SaveFileText(scene.Path(), cNew).error, "");
  EXPECT_EQ(scene.Content(), cNew);
  EXPECT_EQ(scene.Count(), 0u) << "a stray file stays";
  EXPECT_TRUE(scene.LinkStays());
}

// One call fails: the save may succeed without it, or everything is as before.
bool CheckOneFault(Scene::Kind kind, int n, int error) {
  SCOPED_TRACE(testing::Message() << "kind " << kind << ", call " << n << ", error " << error);
  Scene scene(kind);
  FileResult result;
  bool hit, hitRemoving;
  {
    test::FileFaults faults(n, error);
    result = SaveFileText(scene.Path(), cNew);
    hit = faults.hit;
    hitRemoving = faults.hitRemoving;
  }
  EXPECT_TRUE(scene.IsOldOrNew());
  EXPECT_TRUE(scene.LinkStays());
  if (result.Ok())
    EXPECT_EQ(scene.Content(), cNew);
  else
    EXPECT_THAT(result.error, HasSubstr("can't write " + scene.Path() + ": "));
  if (!hitRemoving) {
    EXPECT_EQ(scene.Count(), 0u) << "a stray file stays";
    EXPECT_EQ(scene.Rescued(), "");
  }
  ExpectSecondSaveHeals(scene);
  return hit;
}

TEST_F(SaveFaults, AnyOneCallFails_OldOrNewTextIsWhole) {
  for (Scene::Kind kind : cKinds)
    for (int error : cErrors) ForEachCall([&](int n) { return CheckOneFault(kind, n, error); });
}

// From one call on everything fails, what should mend the damage included: then the old text must
// be in the rescue folder and the message must say so.
bool CheckFaultThatStays(Scene::Kind kind, int n, int error) {
  SCOPED_TRACE(testing::Message() << "kind " << kind << ", from call " << n << ", error " << error);
  Scene scene(kind);
  FileResult result;
  bool hit;
  {
    test::FileFaults faults(n, error, Extent::cAllFrom);
    result = SaveFileText(scene.Path(), cNew);
    hit = faults.hit;
  }
  if (!scene.IsOldOrNew()) {
    EXPECT_EQ(ReadFileText(scene.Rescued()).text, cOld);
    EXPECT_THAT(result.error, HasSubstr("; its old content is in " + scene.Rescued()));
  }
  EXPECT_TRUE(scene.LinkStays());
  ExpectSecondSaveHeals(scene);
  return hit;
}

TEST_F(SaveFaults, ContentThatDoesNotReachTheDisk_ReplacesNothing) {
  const test::TempFolder folder;
  const std::string path = folder.Write("file.cpp", "old\n");
  const FileCalls saved = TheFileCalls();
  TheFileCalls().fsync = [](int) {
    errno = EIO;
    return -1;
  };
  const FileResult result = SaveFileText(path, "new\n");
  TheFileCalls() = saved;
  EXPECT_FALSE(result.Ok());
  EXPECT_EQ(folder.Read("file.cpp"), "old\n");
  EXPECT_EQ(folder.Names().size(), 1u);
}

TEST_F(SaveFaults, EverythingFailsFromACallOn_OldTextIsNotLost) {
  for (Scene::Kind kind : cKinds)
    for (int error : {ENOSPC, EIO})
      ForEachCall([&](int n) { return CheckFaultThatStays(kind, n, error); });
}

bool CheckKill(Scene::Kind kind, int n) {
  SCOPED_TRACE(testing::Message() << "kind " << kind << ", killed before call " << n);
  Scene scene(kind);
  const int status = test::RunInChild([&] {
    const test::FileFaults faults(n, test::FileFaults::cKill);
    return SaveFileText(scene.Path(), cNew).Ok() ? 0 : 1;
  });
  if (!scene.IsOldOrNew()) {
    EXPECT_EQ(kind, Scene::cHardLinked);
    EXPECT_EQ(ReadFileText(scene.Rescued()).text, cOld);
  }
  EXPECT_TRUE(scene.LinkStays());
  ExpectSecondSaveHeals(scene);
  return WIFSIGNALED(status);
}

TEST_F(SaveFaults, KilledBeforeAnyCall_OldOrNewTextIsWhole) {
  for (Scene::Kind kind : cKinds) ForEachCall([kind](int n) { return CheckKill(kind, n); });
}

// Answers how many of the checks fail.
int SaveOnAFullDisk(const test::TempFolder& disk) {
  const std::string small(50'000, 's'), large(300'000, 'l');
  int failures = 0;
  auto expect = [&failures](bool holds) { failures += holds ? 0 : 1; };

  const std::string path = disk.Write("file", cOld);
  const FileResult tooLarge = SaveFileText(path, large);
  expect(tooLarge.error == "can't write " + path + ": No space left on device");
  expect(disk.Read("file") == cOld);
  expect(disk.Names().size() == 1);
  expect(SaveFileText(path, small).Ok());
  expect(disk.Read("file") == small);

  disk.Write("file", cOld);
  fs::create_hard_link(path, disk.Path("other"));
  const FileResult inPlace = SaveFileText(path, large);
  expect(inPlace.error == "can't write " + path + ": No space left on device");
  expect(disk.Read("other") == cOld);
  expect(SaveFileText(path, cNew).Ok());
  expect(disk.Read("other") == cNew);
  return failures;
}

TEST_F(SaveFaults, DiskThatIsReallyFull_KeepsTheOldText) {
  const test::TempFolder disk, profile;
  const test::ScopedVariable home("HOME", profile.Path());
  const int failures =
      test::RunOnSmallDisk(disk.Path(), "256k", [&disk] { return SaveOnAFullDisk(disk); });
  if (failures == test::cCannotMount) GTEST_SKIP() << "no disk can be mounted here";
  EXPECT_EQ(failures, 0) << "checks failed";
}

}  // namespace
}  // namespace mavro
