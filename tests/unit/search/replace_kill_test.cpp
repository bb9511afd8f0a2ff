#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include "FileText.h"
#include "ScopedHome.h"
#include "TempFolder.h"
#include "TextsInMemory.h"
#include "rescue/RescueCopies.h"
#include "search/FileReplace.h"

// A replacement that is killed at any moment leaves each file whole, and can be undone.

namespace zendry {
namespace {

constexpr int cKills = 50;
constexpr int cFiles = 12;

// Journals in the rescue folder, as the window keeps them.
struct DiskStore : JournalStore {
  mavro::FileResult Keep(int id, const std::string& journal) override {
    return copies.Keep(id, "/p.zpj", journal);
  }
  std::string Read(int) override { return left.content; }
  void Drop(int) override { RescueCopies::Forget(left); }
  std::vector<int> Left() override {
    const auto found = copies.OfEndedProcesses();
    if (found.empty()) return {};
    left = found.front();
    return {-1};
  }
  RescueCopies copies{"replace"};
  RescueCopy left;
};

TEST(ReplaceKilled, AtAnyMoment_EachFileIsWhole_AndUndoIsComplete) {
  test::TempFolder home, folder;
  const test::ScopedHome scoped(home.Path());
  const std::string oldText = std::string(20'000, '.') + "old" + std::string(20'000, '.');
  const std::string newText = std::string(20'000, '.') + "brandnew" + std::string(20'000, '.');
  std::vector<std::string> paths;
  for (int i = 0; i < cFiles; ++i) paths.push_back(folder.Write(std::to_string(i), oldText));
  std::mt19937 random(1);
  int undone = 0, untouched = 0;
  for (int round = 0; round < cKills; ++round) {
    const pid_t child = fork();
    if (child == 0) {
      test::TextsInMemory open;
      DiskStore store;
      ReplaceUndo undo(store);
      ReplaceInFiles(paths, TextScan({"old"}), "brandnew", open, undo);
      raise(SIGKILL);
    }
    usleep(random() % 30'000);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    int news = 0;
    for (const std::string& path : paths) {
      const std::string now = mavro::ReadFileText(path).text;
      ASSERT_TRUE(now == oldText || now == newText) << path << " in round " << round;
      news += now == newText;
    }
    test::TextsInMemory open;
    DiskStore store;
    ReplaceUndo undo(store);
    const bool hasJournal = undo.TakeLeft();
    EXPECT_TRUE(hasJournal || news == 0);
    const size_t restored = hasJournal ? undo.Undo(open).restored : 0;
    EXPECT_EQ(restored, static_cast<size_t>(news));
    for (const std::string& path : paths) EXPECT_EQ(mavro::ReadFileText(path).text, oldText);
    EXPECT_TRUE(store.Left().empty()) << "nothing is left of it";
    ++(news > 0 ? undone : untouched);
  }
  RecordProperty("undone", undone);
  RecordProperty("untouched", untouched);
}

}  // namespace
}  // namespace zendry
