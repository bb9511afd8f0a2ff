#include "rescue/RescueSteps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "FileFaults.h"
#include "FileText.h"
#include "IfKilled.h"
#include "ScopedHome.h"
#include "SmallDisk.h"
#include "TempFolder.h"
#include "rescue/TextRescue.h"

// Unsaved text is kept as a copy and the steps after it. Reading gives the text of the last step
// that is whole.

namespace zendry {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::SizeIs;

// A text that reports its changes before they happen, as the editor does.
class TrackedText : public RescueSource {
 public:
  std::string RescuePath() const override { return path; }
  TextFacts RescueFacts() const override { return facts; }
  size_t PieceLength() const override { return text.size(); }
  void AppendPiece(size_t start, size_t end, std::string& to) const override {
    to += text.substr(start, end - start);
  }

  void Insert(size_t start, const std::string& added) {
    rescue.WillChange(static_cast<int>(start), 0, static_cast<int>(added.size()));
    text.insert(start, added);
  }
  void Erase(size_t start, size_t removed) {
    rescue.WillChange(static_cast<int>(start), static_cast<int>(removed), 0);
    text.erase(start, removed);
  }
  // Has what has changed written; false when that fails.
  bool Keep() {
    rescue.Changed(1, {});
    return rescue.KeepNow();
  }

  std::string path = "/folder/main.cpp";
  std::string text;
  TextFacts facts;
  TextRescue rescue{*this};
};

std::string RandomBytes(std::mt19937& random, size_t most) {
  std::string bytes(random() % (most + 1), '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

// One change: mostly typing and erasing at one place, at times elsewhere, at times much.
void ChangeAtRandom(TrackedText& text, size_t& place, std::mt19937& random) {
  const size_t length = text.text.size();
  if (random() % 8 == 0 || place > length) place = random() % (length + 1);
  switch (random() % 8) {
    case 0:
      return text.Insert(place, RandomBytes(random, 300));
    case 1:
      return text.Erase(place, std::min<size_t>(random() % 300, length - place));
    case 2:
      if (place == 0) return;
      return text.Erase(--place, 1);
    case 3:
      place = std::min(length, place + random() % 40);
      return text.Insert(place, "x");
    default:
      return text.Insert(place++, RandomBytes(random, 1));
  }
}

class RescueSteps : public testing::Test {
 protected:
  fs::path Folder() const { return home.Path(".zendry/rescue"); }
  fs::path Find(bool steps) const {
    for (const auto& entry : fs::directory_iterator(Folder()))
      if (entry.path().string().ends_with("-steps") == steps) return entry.path();
    return {};
  }
  fs::path Copy() const { return Find(false); }
  fs::path Steps() const { return Find(true); }
  size_t StepBytes() const { return Steps().empty() ? 0 : fs::file_size(Steps()); }
  static std::string Kept() {
    const auto found = test::TextsIfKilled();
    return found.size() == 1 ? found[0].content : "no copy";
  }
  void WriteSteps(const std::string& bytes) {
    home.Write(".zendry/rescue/" + Steps().filename().string(), bytes);
  }

  test::TempFolder home;
  test::ScopedHome scopedHome{home.Path()};
};

TEST_F(RescueSteps, RandomChanges_ComeBackByteForByte_AfterEachKeep) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    std::mt19937 random(seed);
    TrackedText text;
    text.text = RandomBytes(random, seed % 3 ? 2000 : 0);
    size_t place = 0;
    for (int keep = 0; keep < 40; ++keep) {
      for (unsigned i = random() % 30; i > 0; --i) ChangeAtRandom(text, place, random);
      ASSERT_TRUE(text.Keep());
      ASSERT_TRUE(Kept() == text.text) << "seed " << seed << ", keep " << keep;
    }
    EXPECT_GT(StepBytes(), 0u) << seed;
  }
}

TEST_F(RescueSteps, SmallChangeOfALargeText_WritesThatChangeOnly) {
  TrackedText text;
  text.text.assign(5'000'000, 'a');
  ASSERT_TRUE(text.Keep());
  const DiskStamp copy = ReadDiskStamp(Copy());
  text.Insert(2'500'000, std::string(200, 'b'));
  ASSERT_TRUE(text.Keep());
  EXPECT_EQ(ReadDiskStamp(Copy()), copy);
  EXPECT_LT(StepBytes(), 300u);
  EXPECT_TRUE(Kept() == text.text);
}

TEST_F(RescueSteps, ChangesAtBothEnds_DoNotBringWhatLiesBetween) {
  TrackedText text;
  text.text.assign(5'000'000, 'a');
  ASSERT_TRUE(text.Keep());
  for (int i = 0; i < 10; ++i) {
    text.Insert(0, "x");
    text.Erase(text.text.size() - 2, 2);
  }
  ASSERT_TRUE(text.Keep());
  EXPECT_LT(StepBytes(), 500u);
  EXPECT_TRUE(Kept() == text.text);
}

TEST_F(RescueSteps, NothingChanged_WritesNothing) {
  TrackedText text;
  ASSERT_TRUE(text.Keep());
  ASSERT_TRUE(text.Keep());
  EXPECT_TRUE(Steps().empty());
}

TEST_F(RescueSteps, MoreThanAPartOfTheText_BecomesANewCopy_AndItsStepsFollow) {
  TrackedText text;
  text.text.assign(1'000'000, 'a');
  ASSERT_TRUE(text.Keep());
  const DiskStamp copy = ReadDiskStamp(Copy());
  text.Insert(5, "small");
  ASSERT_TRUE(text.Keep());
  text.Insert(500'000, std::string(300'000, 'b'));
  ASSERT_TRUE(text.Keep());
  EXPECT_NE(ReadDiskStamp(Copy()), copy);
  EXPECT_TRUE(Kept() == text.text) << "the steps of the old copy are still there";
  text.Insert(7, "c");
  ASSERT_TRUE(text.Keep());
  EXPECT_LT(StepBytes(), 100u);
  EXPECT_TRUE(Kept() == text.text);
}

TEST_F(RescueSteps, ManySteps_AreWrittenAgainBeforeTheyOutgrowTheText) {
  TrackedText text;
  ASSERT_TRUE(text.Keep());
  size_t most = 0;
  for (int i = 0; i < 1200; ++i) {
    text.Insert(text.text.size(), std::string(200, 'a'));
    ASSERT_TRUE(text.Keep());
    most = std::max(most, StepBytes());
  }
  EXPECT_LT(most, 120'000u);
  EXPECT_TRUE(Kept() == text.text);
}

TEST_F(RescueSteps, ManyChangesFarApart_BecomeANewCopy) {
  TrackedText text;
  text.text.assign(2'000'000, 'a');
  ASSERT_TRUE(text.Keep());
  for (size_t i = 0; i < 20'000; ++i) text.Insert(i * 100, "b");
  ASSERT_TRUE(text.Keep());
  EXPECT_EQ(StepBytes(), 0u);
  EXPECT_TRUE(Kept() == text.text);
}

TEST_F(RescueSteps, TornLastStep_IsLeftOut_WhereverItIsCut) {
  TrackedText text;
  text.text = "one\n";
  ASSERT_TRUE(text.Keep());
  text.Insert(4, "two\n");
  ASSERT_TRUE(text.Keep());
  const size_t sound = StepBytes();
  const std::string before = text.text;
  text.Insert(8, "three\n");
  ASSERT_TRUE(text.Keep());
  const std::string all = home.Read(".zendry/rescue/" + Steps().filename().string());
  for (size_t end = sound; end < all.size(); ++end) {
    WriteSteps(all.substr(0, end));
    ASSERT_EQ(Kept(), before) << end;
  }
  WriteSteps(all + "garbage behind the end, as a disk may leave it there");
  EXPECT_EQ(Kept(), text.text);
}

TEST_F(RescueSteps, AnyBitTurned_LeavesOutThatStep) {
  TrackedText text;
  text.text = "one\n";
  ASSERT_TRUE(text.Keep());
  text.Insert(4, "two\n");
  ASSERT_TRUE(text.Keep());
  const std::string all = home.Read(".zendry/rescue/" + Steps().filename().string());
  for (size_t i = 0; i < all.size() * 8; ++i) {
    std::string damaged = all;
    damaged[i / 8] = static_cast<char>(damaged[i / 8] ^ (1 << i % 8));
    WriteSteps(damaged);
    ASSERT_EQ(Kept(), "one\n") << "bit " << i;
  }
}

TEST_F(RescueSteps, GarbageOrZeros_AreNoSteps) {
  std::mt19937 random(1);
  TrackedText text;
  text.text = "one\n";
  ASSERT_TRUE(text.Keep());
  text.Insert(0, "x");
  ASSERT_TRUE(text.Keep());
  for (const std::string& bytes : {std::string(), std::string(4096, '\0'),
                                   std::string(4096, '\xFF'), RandomBytes(random, 4096)}) {
    WriteSteps(bytes);
    EXPECT_EQ(Kept(), "one\n");
  }
}

// A step whose sum is right and whose places are not.
TEST_F(RescueSteps, ImpossibleChanges_EndTheSteps) {
  const uint32_t rows[][3] = {{5, 0, 0}, {4, 1, 0}, {0, 5, 0}, {0, 0, 1}, {0xFFFFFFFF, 2, 0}};
  for (const auto& row : rows) {
    std::string changes(sizeof row, '\0');
    std::memcpy(changes.data(), row, sizeof row);
    for (size_t length = 0; length < 8; ++length)
      EXPECT_EQ(ApplySteps("text", 7, MakeStep(7, 1, length, changes)), "text");
  }
  EXPECT_EQ(ApplySteps("text", 7, MakeStep(7, 1, 4, "odd")), "text");
  EXPECT_EQ(ApplySteps("text", 7, MakeStep(8, 1, 4, "")), "text");
}

// A step of copy 7 that puts a byte in front and promises a length.
std::string StepThatPuts(char byte, uint64_t number, size_t length) {
  const uint32_t head[3] = {0, 0, 1};
  std::string changes(sizeof head, '\0');
  std::memcpy(changes.data(), head, sizeof head);
  return MakeStep(7, number, length, changes + byte);
}

TEST_F(RescueSteps, StepsInAWrongOrderOrTwice_EndAtTheFirst) {
  const std::string first = StepThatPuts('a', 1, 1);
  EXPECT_EQ(ApplySteps("", 7, first + StepThatPuts('b', 2, 2)), "ba");
  EXPECT_EQ(ApplySteps("", 7, first + StepThatPuts('b', 1, 2)), "a");
  EXPECT_EQ(ApplySteps("", 7, first + StepThatPuts('b', 3, 2)), "a");
  EXPECT_EQ(ApplySteps("", 7, StepThatPuts('b', 2, 1)), "");
}

TEST_F(RescueSteps, StepThatDoesNotKeepItsPromisedLength_EndsTheSteps) {
  for (const size_t promised : {0, 1, 3})
    EXPECT_EQ(ApplySteps("x", 7, StepThatPuts('a', 1, promised) + StepThatPuts('b', 2, 3)), "x");
  EXPECT_EQ(ApplySteps("x", 7, StepThatPuts('a', 1, 2) + StepThatPuts('b', 2, 2)), "ax");
  EXPECT_EQ(ApplySteps("x", 7, StepThatPuts('a', 1, 2) + StepThatPuts('b', 2, 3)), "bax");
}

// The bytes that two inserted bytes need: as one span with what lies between, or as two.
size_t BytesOfTwo(size_t first, size_t second, size_t most = 1000, size_t mostCount = 10) {
  TrackedText text;
  text.text = std::string(100, '.');
  TextChanges changes;
  changes.Begin(100, most, mostCount);
  for (const size_t start : {first, second}) {
    changes.Add(start, 0, 1, text);
    text.text.insert(start, "x");
  }
  return changes.Take(text).size();
}

TEST_F(RescueSteps, ChangesUpTo16BytesApart_AreOneSpan) {
  constexpr size_t cHead = TextChanges::cOverhead;
  EXPECT_EQ(BytesOfTwo(40, 41 + 16), cHead + 18);
  EXPECT_EQ(BytesOfTwo(40, 41 + 17), 2 * cHead + 2);
  EXPECT_EQ(BytesOfTwo(40, 40 - 16), cHead + 18);
  EXPECT_EQ(BytesOfTwo(40, 40 - 17), 2 * cHead + 2);
}

TEST_F(RescueSteps, MoreBytesOrChangesThanAllowed_AreGivenUp) {
  constexpr size_t cTwo = 2 * (TextChanges::cOverhead + 1);
  EXPECT_EQ(BytesOfTwo(0, 90, cTwo, 2), cTwo);
  EXPECT_EQ(BytesOfTwo(0, 90, cTwo - 1, 2), 0u);
  EXPECT_EQ(BytesOfTwo(0, 90, cTwo, 1), 0u);
}

// True if so many added bytes were written as a step.
bool IsStep(size_t length, size_t added) {
  test::TempFolder home;
  const test::ScopedHome scopedHome(home.Path());
  TrackedText text;
  text.text.assign(length, '.');
  EXPECT_TRUE(text.Keep());
  text.Insert(0, std::string(added, 'x'));
  EXPECT_TRUE(text.Keep());
  for (const auto& entry : fs::directory_iterator(home.Path(".zendry/rescue")))
    if (entry.path().string().ends_with("-steps")) return true;
  return false;
}

TEST_F(RescueSteps, StepsHoldUpTo64KOrAQuarterOfTheText) {
  constexpr size_t cHead = TextChanges::cOverhead;
  EXPECT_TRUE(IsStep(1000, 65536 - cHead));
  EXPECT_FALSE(IsStep(1000, 65536 - cHead + 1));
  EXPECT_TRUE(IsStep(400'000, 100'000 - cHead));
  EXPECT_FALSE(IsStep(400'000, 100'000 - cHead + 1));
}

TEST_F(RescueSteps, StepsWithoutACopy_AreNothing_AndGo) {
  const std::string name = "text-" + std::to_string(test::EndedProcess()) + "-1-steps";
  home.Write(".zendry/rescue/" + name, MakeStep(7, 1, 0, ""));
  EXPECT_THAT(FindRescuedTexts(), IsEmpty());
  EXPECT_FALSE(home.Exists(".zendry/rescue/" + name));
}

TEST_F(RescueSteps, Find_LeavesTheStepsOfLivingPrograms) {
  TrackedText text;
  ASSERT_TRUE(text.Keep());
  text.Insert(0, "x");
  ASSERT_TRUE(text.Keep());
  FindRescuedTexts();
  EXPECT_FALSE(Steps().empty());
}

TEST_F(RescueSteps, Drop_TakesTheStepsAwayToo) {
  TrackedText text;
  ASSERT_TRUE(text.Keep());
  text.Insert(0, "x");
  ASSERT_TRUE(text.Keep());
  text.rescue.Drop();
  EXPECT_TRUE(fs::is_empty(Folder()));
}

TEST_F(RescueSteps, CopyOrStepsTakenAwayByOthers_AreWrittenAgain) {
  TrackedText text;
  text.text = "one\n";
  for (const bool steps : {false, true, true}) {
    ASSERT_TRUE(text.Keep());
    text.Insert(0, "x");
    ASSERT_TRUE(text.Keep());
    fs::remove(Find(steps));
    text.Insert(0, "y");
    ASSERT_TRUE(text.Keep());
    EXPECT_EQ(Kept(), text.text);
  }
  fs::remove_all(Folder());
  text.Insert(0, "z");
  ASSERT_TRUE(text.Keep());
  EXPECT_EQ(Kept(), text.text);
}

TEST_F(RescueSteps, OtherPathOrFacts_AreKeptWithTheText) {
  TrackedText text;
  ASSERT_TRUE(text.Keep());
  text.path = "/folder/other.cpp";
  ASSERT_TRUE(text.Keep());
  EXPECT_EQ(test::TextsIfKilled().at(0).path, "/folder/other.cpp");
  text.facts = {2, std::string(1, '\0'), {true, 1, 2, 3, -4}};
  ASSERT_TRUE(text.Keep());
  EXPECT_EQ(test::TextsIfKilled().at(0).facts, text.facts);
}

TEST_F(RescueSteps, CopyWithoutFactsOrWithDamagedOnes_IsTextAlone) {
  const std::string name = ".zendry/rescue/text-" + std::to_string(test::EndedProcess()) + "-1";
  for (const std::string& content :
       {std::string("int a;\n"), std::string(), std::string("a\0b", 3),
        std::string("zendry-text-1 \0x", 16), std::string("zendry-text-1 1 2 3"),
        std::string("zendry-text-1 1 0 -1 1 2 3 4 5 6 7 \0x", 38),
        std::string("zendry-text-1 99999999999999999999 0 -1 1 2 3 4 5 \0x", 53)}) {
    home.Write(name, "/a.cpp" + std::string(1, '\0') + content);
    ASSERT_THAT(FindRescuedTexts(), SizeIs(1));
    EXPECT_EQ(FindRescuedTexts()[0].content, content);
    EXPECT_EQ(FindRescuedTexts()[0].facts, TextFacts());
  }
}

TEST_F(RescueSteps, OddByteBeyondAByte_IsNone) {
  const std::string name = ".zendry/rescue/text-" + std::to_string(test::EndedProcess()) + "-1";
  for (const auto& [number, byte] : {std::pair("255", "\xFF"), std::pair("256", "")}) {
    home.Write(name, "/a.cpp" + std::string(1, '\0') + "zendry-text-1 1 2 " + number +
                         " 1 2 3 4 5 " + std::string(1, '\0') + "a");
    ASSERT_THAT(FindRescuedTexts(), SizeIs(1));
    EXPECT_EQ(FindRescuedTexts()[0].facts.oddByte, byte) << number;
    EXPECT_EQ(FindRescuedTexts()[0].content, "a");
  }
}

TEST_F(RescueSteps, AnnouncedChangeThatNeverComes_DoesNoHarm) {
  TrackedText text;
  text.text = "one\n";
  ASSERT_TRUE(text.Keep());
  text.Insert(0, "x");
  text.rescue.WillChange(0, 0, 9);
  ASSERT_TRUE(text.Keep());
  EXPECT_EQ(Kept(), "xone\n");
  text.rescue.WillChange(3, 0, 100);  // far from the next: its bytes are read before that
  text.Insert(0, std::string(50, 'y'));
  text.Insert(55, "z");
  ASSERT_TRUE(text.Keep());
  EXPECT_EQ(Kept(), text.text);
}

TEST_F(RescueSteps, KeepAll_WritesTheWholeText_AndStepsGoOnAfterIt) {
  TrackedText text;
  text.text = "one\n";
  ASSERT_TRUE(text.Keep());
  text.Insert(0, "x");
  text.rescue.Changed(1, {});
  TextRescue::KeepAll();
  EXPECT_TRUE(Steps().empty());
  EXPECT_EQ(Kept(), "xone\n");
  text.Insert(0, "y");
  ASSERT_TRUE(text.Keep());
  EXPECT_EQ(Kept(), "yxone\n");
}

// Where there is no room for the whole text, a step of one byte still is kept.
TEST_F(RescueSteps, KeepAll_CopyThatFails_BecomesAStep) {
  TrackedText text;
  text.text = "one\n";
  ASSERT_TRUE(text.Keep());
  text.Insert(0, "x");
  text.rescue.Changed(1, {});
  {
    const test::FileFaults faults(1, ENOSPC);
    TextRescue::KeepAll();
    ASSERT_TRUE(faults.hit);
  }
  EXPECT_EQ(Kept(), "xone\n");
  EXPECT_FALSE(Steps().empty());
}

// The calls of one keep, each failing in turn: the older or the newer text is there all the time,
// and the next keep is whole.
TEST_F(RescueSteps, EachCallFails_OldOrNewText_AndTheNextKeepHasAll) {
  for (const int error : {ENOSPC, EIO, EACCES}) {
    for (const size_t added : {10, 200'000}) {  // a step, a new copy
      bool hit = true;
      for (int n = 1; hit; ++n) {
        TrackedText text;
        text.text = "one\n";
        ASSERT_TRUE(text.Keep());
        text.Insert(4, "two\n");
        ASSERT_TRUE(text.Keep());
        const std::string before = text.text;
        text.Insert(2, std::string(added, 'x'));
        bool kept = false;
        {
          test::FileFaults faults(n, error, test::FileFaults::Extent::cAllFrom);
          kept = text.Keep();
          hit = faults.hit;
        }
        const std::string found = Kept();
        ASSERT_TRUE(found == text.text || (!kept && found == before)) << error << " at " << n;
        text.Insert(0, "y");
        ASSERT_TRUE(text.Keep());
        ASSERT_TRUE(Kept() == text.text) << error << " at " << n;
      }
    }
  }
}

TEST_F(RescueSteps, KilledAtAnyCall_OldOrNewTextIsOffered) {
  for (const size_t added : {10, 200'000}) {
    bool killed = true;
    for (int n = 1; killed; ++n) {
      const std::string before = "one\ntwo\n";
      const std::string after = "on" + std::string(added, 'x') + "e\ntwo\n";
      const int status = test::RunInChild([&] {
        TrackedText text;
        text.text = "one\n";
        text.Keep();
        text.Insert(4, "two\n");
        text.Keep();
        text.Insert(2, std::string(added, 'x'));
        const test::FileFaults faults(n, test::FileFaults::cKill);
        text.Keep();
        raise(SIGKILL);
        return 0;
      });
      ASSERT_TRUE(WIFSIGNALED(status));
      const auto found = FindRescuedTexts();
      ASSERT_THAT(found, SizeIs(1)) << n;
      ASSERT_TRUE(found[0].content == before || found[0].content == after) << n;
      killed = found[0].content == before;
      RescueCopies::Forget(found[0]);
      ASSERT_LT(n, 100);
    }
    EXPECT_THAT(FindRescuedTexts(), IsEmpty());
  }
}

TEST_F(RescueSteps, FullDisk_KeepsTheOlderText_AndGoesOnWhenThereIsRoom) {
  enum { cGood, cNoCopy, cNotFull, cLost, cNotAgain };
  const std::string profile = home.Folder("disk");
  const int answer = test::RunOnSmallDisk(profile, "512k", [&]() -> int {
    const test::ScopedHome onDisk(profile);
    TrackedText text;
    text.text.assign(200'000, 'a');
    if (!text.Keep()) return cNoCopy;
    const std::string filler = profile + "/filler";
    std::ofstream(filler) << std::string(1'000'000, 'f') << std::flush;
    const std::string before = text.text;
    text.Insert(100, std::string(20'000, 'b'));
    if (text.Keep()) return cNotFull;
    unlink(filler.c_str());
    const auto found = test::TextsIfKilled();
    if (found.size() != 1 || found[0].content != before) return cLost;
    text.Insert(7, "c");
    return text.Keep() ? cGood : cNotAgain;
  });
  if (answer == test::cCannotMount) GTEST_SKIP() << "nobody may mount here";
  EXPECT_EQ(answer, cGood);
}

}  // namespace
}  // namespace zendry
