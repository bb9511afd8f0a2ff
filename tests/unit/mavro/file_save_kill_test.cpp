#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <random>

#include "FileCalls.h"
#include "FileText.h"
#include "ScopedHome.h"
#include "TempFolder.h"

// Programs killed at any moment of a save of a long text.

namespace mavro {
namespace {

namespace fs = std::filesystem;
using std::chrono::nanoseconds;

constexpr size_t cBytes = 4 << 20;
constexpr int cKills = 200;

// Nothing reaches a disk for good: a killed program leaves to others what it has written, synced or
// not, and syncing takes long.
struct KilledSaves : testing::Test {
  KilledSaves() : saved(TheFileCalls()) {
    TheFileCalls().fsync = [](int) { return 0; };
  }
  ~KilledSaves() override { TheFileCalls() = saved; }

  // Starts a program that saves `text` and ends.
  pid_t StartSaving(const std::string& text) const {
    const pid_t child = fork();
    if (child == 0) _exit(SaveFileText(path, text).Ok() ? 0 : 1);
    return child;
  }

  static void Wait(nanoseconds time) {
    const timespec span = {time.count() / 1'000'000'000, time.count() % 1'000'000'000};
    nanosleep(&span, nullptr);
  }

  // The shortest of some, so that few saves end before they are killed.
  nanoseconds TimeOfASave() const {
    nanoseconds shortest = nanoseconds::max();
    for (int i = 0; i < 5; ++i) {
      const auto start = std::chrono::steady_clock::now();
      waitpid(StartSaving(old), nullptr, 0);
      shortest = std::min<nanoseconds>(shortest, std::chrono::steady_clock::now() - start);
    }
    return shortest;
  }

  // Saves `text` in a program that is killed that much later; whether it came to its end.
  bool SaveAndKill(const std::string& text, nanoseconds later) const {
    const pid_t child = StartSaving(text);
    Wait(later);
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status);
  }

  std::string Content() const { return ReadFileText(path).text; }

  fs::path RescueFile() const {
    const fs::path rescue = home.Path(".zendry/rescue");
    if (!fs::exists(rescue) || fs::is_empty(rescue)) return {};
    return fs::directory_iterator(rescue)->path();
  }

  const test::TempFolder folder, home;
  const test::ScopedHome profile{home.Path()};
  const FileCalls saved;
  const std::string old = std::string(cBytes, 'o');
  const std::string path = folder.Write("file", old);
};

TEST_F(KilledSaves, AtRandomMoments_TheFileIsTheOldTextOrTheNew) {
  std::mt19937 random(7);
  fs::permissions(path, fs::perms(0640));
  const nanoseconds whole = TimeOfASave();
  int ended = 0;
  for (int i = 0; i < cKills; ++i) {
    const std::string before = Content();
    const std::string text(cBytes - static_cast<size_t>(i), static_cast<char>('a' + i % 26));
    ended += SaveAndKill(text, whole * (random() % 1000) / 1000);
    const std::string after = Content();
    ASSERT_TRUE(after == before || after == text) << "kill " << i;
    ASSERT_EQ(fs::status(path).permissions(), fs::perms(0640));
    ASSERT_LE(folder.Names().size(), 2u) << "a killed save leaves one file, the next removes it";
  }
  ASSERT_TRUE(SaveFileText(path, old).Ok());
  EXPECT_TRUE(Content() == old);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"file"});
  EXPECT_LT(ended, cKills);
}

// Written in place, a file can be left half written; then the whole old text is in the rescue
// folder.
TEST_F(KilledSaves, InPlaceAtRandomMoments_TheOldTextIsTheFileOrPutAside) {
  std::mt19937 random(8);
  fs::create_hard_link(path, folder.Path("other"));
  const nanoseconds whole = TimeOfASave();
  for (int i = 0; i < cKills / 4; ++i) {
    folder.Write("file", old);
    const std::string text(cBytes - static_cast<size_t>(i), 'n');
    SaveAndKill(text, whole * (random() % 1000) / 1000);
    const std::string after = Content();
    const fs::path rescued = RescueFile();
    if (after != old && after != text) {
      ASSERT_FALSE(rescued.empty()) << "kill " << i;
      ASSERT_TRUE(ReadFileText(rescued.string()).text == old) << "kill " << i;
    }
    if (!rescued.empty()) fs::remove(rescued);
    ASSERT_EQ(folder.Names(), (std::vector<std::string>{"file", "other"}));
    ASSERT_EQ(fs::hard_link_count(path), 2u);
  }
}

}  // namespace
}  // namespace mavro
