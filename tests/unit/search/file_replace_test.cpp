#include "base/TextDigest.h"
#include "search/FileReplace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "Privileges.h"
#include "SmallDisk.h"
#include "TempFolder.h"
#include "TextsInMemory.h"
#include "base/TextDigest.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FileReplaceTest : public testing::Test {
 protected:
  ReplaceSum Replace(const std::vector<std::string>& paths, const LineTerm& term,
                     const std::string& with) {
    return ReplaceInFiles(paths, TextScan(term), with, open, undo);
  }
  test::TempFolder folder;
  test::TextsInMemory open;
  test::JournalsInMemory store;
  ReplaceUndo undo{store};
};

TEST_F(FileReplaceTest, AllHits_AndNothingElse) {
  const std::string odd("\0\x01\xFF\t \v", 6);
  const std::string a = folder.Write("a", "old old\r\n" + odd + "old\n\rcold" + odd);
  const ReplaceSum sum = Replace({a}, {"old", true}, "newer");
  EXPECT_EQ(folder.Read("a"), "newer newer\r\n" + odd + "newer\n\rcnewer" + odd);
  EXPECT_EQ(sum.files, 1u);
  EXPECT_THAT(sum.failed, IsEmpty());
}

TEST_F(FileReplaceTest, MissedHits_StayAndAreCounted) {
  const std::string a = folder.Write("a", "aaab aab\n");
  const ReplaceSum sum = Replace({a}, {"aab", true}, "X");
  EXPECT_EQ(folder.Read("a"), "aaab X\n");
  EXPECT_EQ(sum.hits, 1u);
  EXPECT_EQ(sum.missed, 1u);
}

TEST_F(FileReplaceTest, Encodings_Stay) {
  const std::string wide = folder.Write("w", std::string("\xFF\xFE"
                                                         "a\0b\0\xE4\0",
                                                         8));
  const std::string mark = folder.Write("m",
                                        "\xEF\xBB\xBF"
                                        "ab");
  Replace({wide, mark}, {"ab"}, "\u20AC");
  EXPECT_EQ(folder.Read("w"), std::string("\xFF\xFE\xAC\x20\xE4\0", 6));
  EXPECT_EQ(folder.Read("m"), "\xEF\xBB\xBF\u20AC");
}

TEST_F(FileReplaceTest, ANewTextThatTheEncodingHasNotGot_IsNamed) {
  const std::string bytes = std::string(
      "\xFF\xFE"
      "a\0",
      4);
  const std::string wide = folder.Write("w", bytes), b = folder.Write("b", "a");
  const ReplaceSum sum = Replace({wide, b}, {"a"}, "\xFF");
  EXPECT_THAT(sum.failed, ElementsAre(HasSubstr("encoding")));
  EXPECT_EQ(folder.Read("w"), bytes);
  EXPECT_EQ(folder.Read("b"), "\xFF");
}

TEST_F(FileReplaceTest, AnOpenEditor_IsChangedInOneStep_AndItsFileIsNot) {
  const std::string a = folder.Write("a", "old");
  open.texts[a].text = "old, typed old";
  const ReplaceSum sum = Replace({a}, {"old"}, "new");
  EXPECT_EQ(open.texts[a].text, "new, typed new");
  EXPECT_EQ(open.texts[a].steps, 1);
  EXPECT_EQ(folder.Read("a"), "old");
  EXPECT_EQ(sum.hits, 2u);
  EXPECT_EQ(undo.Undo(open).restored, 1u);
  EXPECT_EQ(open.texts[a].text, "old, typed old");
}

TEST_F(FileReplaceTest, FilesThatMayNotBeWritten_AreNamed_AndTheRestGoesOn) {
  std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);
  const test::WithoutRights user;
  const std::string a = folder.Write("a", "old"), b = folder.Write("b", "old"),
                    c = folder.Write("c", "old");
  std::filesystem::permissions(a, std::filesystem::perms::owner_read);
  open.texts[c].text = "old";
  open.texts[c].whyFixed = "its text is read only";
  const ReplaceSum sum = Replace({a, b, c, folder.Path("gone")}, {"old"}, "new");
  EXPECT_EQ(sum.failed.size(), 3u);
  EXPECT_EQ(folder.Read("b"), "new");
}

TEST_F(FileReplaceTest, WithoutAJournal_NothingIsChanged) {
  const std::string a = folder.Write("a", "old");
  store.whyNot = "no room";
  EXPECT_THAT(Replace({a}, {"old"}, "new").whyNothing, HasSubstr("no room"));
  EXPECT_EQ(folder.Read("a"), "old");
  EXPECT_TRUE(undo.IsEmpty());
}

TEST_F(FileReplaceTest, NoHit_LeavesNoJournal) {
  const std::string a = folder.Write("a", "old");
  EXPECT_EQ(Replace({a}, {"other"}, "new").files, 0u);
  EXPECT_THAT(store.journals, IsEmpty());
}

TEST_F(FileReplaceTest, Undo_BringsAllBack_TheLastFirst) {
  const std::string a = folder.Write("a", "one\r\n"), b = folder.Write("b", "one two");
  Replace({a, b}, {"one"}, "two");
  Replace({b}, {"two"}, "three");
  EXPECT_EQ(folder.Read("b"), "three three");
  EXPECT_EQ(undo.Undo(open).restored, 1u);
  EXPECT_EQ(folder.Read("b"), "two two");
  EXPECT_EQ(undo.Undo(open).restored, 2u);
  EXPECT_EQ(folder.Read("a"), "one\r\n");
  EXPECT_EQ(folder.Read("b"), "one two");
  EXPECT_FALSE(undo.Undo(open).wasThereOne);
  EXPECT_THAT(store.journals, IsEmpty());
}

TEST_F(FileReplaceTest, Undo_RefusesFilesThatWereChangedSince) {
  const std::string a = folder.Write("a", "one"), b = folder.Write("b", "one"),
                    c = folder.Write("c", "one");
  Replace({a, b, c}, {"one"}, "two");
  folder.Write("b", "two, and more");
  std::filesystem::remove(c);
  const UndoneReplace undone = undo.Undo(open);
  EXPECT_EQ(undone.restored, 1u);
  EXPECT_THAT(undone.refused, ElementsAre(b, c));
  EXPECT_EQ(folder.Read("a"), "one");
  EXPECT_EQ(folder.Read("b"), "two, and more");
  folder.Write("b", "two");
  EXPECT_EQ(undo.Undo(open).restored, 1u) << "as soon as the file is as it was";
  EXPECT_EQ(folder.Read("b"), "one");
}

TEST_F(FileReplaceTest, ARefusedOne_DoesNotHideTheOneBefore) {
  const std::string a = folder.Write("a", "one"), b = folder.Write("b", "one");
  Replace({a}, {"one"}, "two");
  Replace({b}, {"one"}, "two");
  folder.Write("b", "else");
  const UndoneReplace undone = undo.Undo(open);
  EXPECT_EQ(undone.restored, 1u);
  EXPECT_THAT(undone.refused, ElementsAre(b));
  EXPECT_EQ(folder.Read("a"), "one");
}

// Stops before the call of this number, counted from 0.
ReplaceGoesOn StopAt(int& calls, int last) {
  return [&calls, last](const std::string&, size_t done, size_t total) {
    EXPECT_LT(done, total);
    return calls++ < last;
  };
}

TEST_F(FileReplaceTest, Stopped_WhatIsWrittenStays_AndOnlyThatIsUndone) {
  const std::vector<std::string> paths = {folder.Write("a", "one"), folder.Write("b", "one"),
                                          folder.Write("c", "one")};
  for (int last = 0; last <= 6; ++last) {
    int calls = 0;
    const ReplaceSum sum =
        ReplaceInFiles(paths, TextScan({"one"}), "two", open, undo, StopAt(calls, last));
    const size_t written = static_cast<size_t>(std::max(last - 3, 0));
    EXPECT_EQ(sum.files, written) << last;
    EXPECT_EQ(sum.whyNothing.empty(), last >= 3) << last;
    EXPECT_EQ(sum.untouched, last < 3 ? 0 : 3 - written) << last;
    for (size_t i = 0; i < 3; ++i)
      EXPECT_EQ(mavro::ReadFileText(paths[i]).text, i < written ? "two" : "one") << last;
    if (written < 3) folder.Write("c", "changed by the user, which doesn't matter");
    const UndoneReplace undone = undo.Undo(open);
    EXPECT_EQ(undone.restored, written) << last;
    EXPECT_EQ(undone.wasThereOne, written > 0) << last;
    EXPECT_THAT(undone.refused, IsEmpty()) << last;
    EXPECT_THAT(store.journals, IsEmpty()) << last;
    folder.Write("c", "one");
  }
}

TEST_F(FileReplaceTest, ATextThatIsTypedIntoMeanwhile_StaysAndIsNamed) {
  const std::string a = folder.Write("a", "old"), b = folder.Write("b", "old");
  open.texts[a].text = "old";
  const ReplaceSum sum = ReplaceInFiles({a, b}, TextScan({"old"}), "new", open, undo,
                                        [&](const std::string&, size_t done, size_t) {
                                          if (done == 2) open.texts[a].text = "typed old";
                                          return true;
                                        });
  EXPECT_EQ(open.texts[a].text, "typed old");
  EXPECT_THAT(sum.failed, ElementsAre(HasSubstr("was changed meanwhile")));
  EXPECT_EQ(folder.Read("b"), "new");
  EXPECT_THAT(undo.Undo(open).refused, IsEmpty());
}

TEST_F(FileReplaceTest, AFullDisk_LeavesEachFileWhole) {
  test::TempFolder disk;
  const int answer = test::RunOnSmallDisk(disk.Path(), "200k", [&] {
    const std::string text(30'000, 'a');
    std::vector<std::string> paths;
    for (const char* name : {"a", "b", "c"}) paths.push_back(disk.Write(name, text));
    const ReplaceSum sum = Replace(paths, {"aaa"}, "bbbbbbbbb");
    size_t news = 0;
    for (const char* name : {"a", "b", "c"}) {
      const std::string now = disk.Read(name);
      if (now != text && now != std::string(90'000, 'b')) return 1;
      news += now != text;
    }
    if (sum.files != news || sum.failed.size() != 3 - news || news == 3) return 2;
    const UndoneReplace undone = undo.Undo(open);
    for (const char* name : {"a", "b", "c"})
      if (disk.Read(name) != text) return 3;
    return undone.failed.empty() ? 0 : 4;
  });
  if (answer == test::cCannotMount) GTEST_SKIP() << "nobody may mount here";
  EXPECT_EQ(answer, 0);
}

TEST(ReplaceJournal, IsReadAsWritten_AndOnlyWhole) {
  const std::vector<ReplacedFile> files = {{"/a b", std::string("x\0\ny", 4), 7}, {"/c", "", 0}};
  const std::string journal = WriteReplaceJournal(files);
  const auto read = ReadReplaceJournal(journal);
  ASSERT_TRUE(read);
  ASSERT_EQ(read->size(), 2u);
  EXPECT_EQ((*read)[0].path, "/a b");
  EXPECT_EQ((*read)[0].oldBytes, files[0].oldBytes);
  EXPECT_EQ((*read)[0].newDigest, 7u);
  for (size_t length = 0; length < journal.size(); ++length)
    EXPECT_FALSE(ReadReplaceJournal(std::string_view(journal).substr(0, length))) << length;
  for (const char* odd : {"zendry-replace 1\n9999999999999999999 1 1\n/aend\n",
                          "zendry-replace 1\n-1 1 1\n/aend\n", "zendry-replace 1\n1 1\nend\n"})
    EXPECT_FALSE(ReadReplaceJournal(odd)) << odd;
}

TEST(ReplaceUndo, TakesOverWhatEndedProgramsHaveLeft_AndForgetsIt) {
  test::TempFolder folder;
  test::TextsInMemory open;
  test::JournalsInMemory store;
  const std::string a = folder.Write("a", "new");
  store.journals[-1] = WriteReplaceJournal({{a, "old", DigestOf("new")}});
  store.left = {-1};
  ReplaceUndo undo(store);
  EXPECT_TRUE(undo.TakeLeft());
  EXPECT_EQ(undo.Undo(open).restored, 1u);
  EXPECT_EQ(folder.Read("a"), "old");
  store.journals[1] = "";
  EXPECT_TRUE(undo.TakeLeft());
  undo.Forget();
  EXPECT_FALSE(store.journals.contains(-1));
  EXPECT_TRUE(undo.IsEmpty());
}

}  // namespace
}  // namespace zendry
