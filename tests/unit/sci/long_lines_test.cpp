#include "LongLines.h"

#include <gtest/gtest.h>

#include <random>

#include "MarkedText.h"

namespace mavro {
namespace {

constexpr size_t cOrdinary = LongLineFolder::cOrdinaryBytes;
constexpr size_t cScreen = LongLineFolder::cMostOnScreen;

std::string FoldInChunks(LongLines& lines, std::string_view text, size_t chunk) {
  std::string shown;
  LongLineFolder folder(lines, [&shown](std::string_view piece) { shown += piece; });
  for (size_t at = 0; at < text.size(); at += chunk) folder.Take(text.substr(at, chunk));
  folder.Finish();
  return shown;
}

TEST(LongLines, Fold_ALineOfTheLimit_StaysAndOneByteMoreDoesNot) {
  for (const char* end : {"\n", "\r\n", "\r", ""}) {
    LongLines lines;
    const std::string kept = "a\n" + std::string(cScreen, 'x') + end;
    EXPECT_EQ(lines.Fold(kept), kept);
    EXPECT_TRUE(lines.IsEmpty());
    const std::string text = "a\n" + std::string(cScreen + 1, 'x') + end;
    EXPECT_EQ(lines.Fold(text), "a\n" + LongLines::CharacterOf(0) + end);
    EXPECT_EQ(lines.Unfold(lines.Fold(text)), text);
  }
}

TEST(LongLines, Fold_OrdinaryLines_StayHoweverManyThereAre) {
  std::string text;
  for (size_t i = 0; i < 2 * cScreen / cOrdinary; ++i) text += std::string(cOrdinary, 'x') + "\n";
  LongLines lines;
  EXPECT_TRUE(lines.Fold(text) == text);
}

TEST(LongLines, Fold_LongerLinesOnOneScreen_StayUpToTheLimitTogether) {
  const std::string line = std::string(cOrdinary + 1, 'x') + "\n";
  const size_t most = cScreen / (cOrdinary + 1);
  std::string text;
  for (size_t i = 0; i < most; ++i) text += line;
  LongLines lines;
  EXPECT_TRUE(lines.Fold(text) == text) << "in so many lines only the first were on one screen";
  const std::string quarter = std::string(cScreen / 4, 'x') + "\n";
  EXPECT_EQ(lines.Fold(quarter + quarter + quarter + quarter).size(), 4 * quarter.size());
  EXPECT_EQ(lines.Fold(quarter + quarter + quarter + quarter + quarter).size(),
            4 * quarter.size() + LongLines::cStandInBytes + 1);
}

TEST(LongLines, Fold_LongerLinesMoreThanAScreenApart_Stay) {
  const std::string line = std::string(cScreen, 'x') + "\n";
  for (const char* end : {"\n", "\r\n", "\r"}) {
    std::string ordinary;
    for (long i = 0; i < LongLineFolder::cScreenLines - 1; ++i) ordinary += end;
    LongLines lines;
    EXPECT_EQ(lines.Fold(line + ordinary + line).size(), line.size() + ordinary.size() + 5);
    const std::string apart = line + ordinary + end + end + line;
    EXPECT_TRUE(lines.Fold(apart) == apart);
  }
}

std::string OddText(std::mt19937& random) {
  std::string text;
  for (unsigned n = random() % 6; n > 0; --n) {
    switch (random() % 5) {
      case 0:
        text += std::string(random() % 3 * cScreen / 2 + random() % 3, 'x');
        break;
      case 1:
        text += LongLines::CharacterOf(static_cast<int>(random() % 4));
        break;
      case 2:
        text += std::string("\xF4\x80\0\xFF\x80", random() % 5);
        break;
      default:
        text += std::string(random() % 9, 'y');
    }
    text += std::string("\r\n\n").substr(random() % 3, random() % 3);
  }
  return text;
}

TEST(LongLines, Unfold_GivesTheSameBytes_HoweverTheTextCame) {
  std::mt19937 random(1);
  for (int seed = 0; seed < 300; ++seed) {
    const std::string text = OddText(random);
    LongLines lines;
    const std::string shown = FoldInChunks(lines, text, 1 + random() % (300 * 1024));
    ASSERT_TRUE(lines.Unfold(shown) == text) << seed;
    ASSERT_EQ(lines.AreIn(shown), shown != text) << seed;
    const std::string again = lines.Fold(text);
    ASSERT_TRUE(lines.Unfold(again) == text) << "with stand-ins of before, " << seed;
  }
}

TEST(LongLines, CharactersOfTheText_AreNoStandIns) {
  const std::string own = LongLines::CharacterOf(0) + LongLines::CharacterOf(2);
  const std::string longLine(cScreen + 1, 'x');
  const std::string text = own + "\n" + longLine + "\n" + longLine + "2\n" + longLine + "3";
  LongLines lines;
  const std::string shown = lines.Fold(text);
  EXPECT_EQ(shown, own + "\n" + LongLines::CharacterOf(1) + "\n" + LongLines::CharacterOf(3) +
                       "\n" + LongLines::CharacterOf(4));
  EXPECT_EQ(lines.Unfold(shown), text);
}

TEST(LongLines, CharacterThatIsAStandInByNow_GetsOneOfItsOwn) {
  const std::string longLine(cScreen + 1, 'x');
  LongLines lines;
  ASSERT_EQ(lines.Fold(longLine), LongLines::CharacterOf(0));
  const std::string pasted = LongLines::CharacterOf(0) + LongLines::CharacterOf(0);
  EXPECT_EQ(lines.Fold(pasted), LongLines::CharacterOf(1) + LongLines::CharacterOf(1));
  EXPECT_EQ(lines.Unfold(lines.Fold(pasted)), pasted);
}

TEST(LongLines, Keep_MoreThanThereAreCharacters_Refuses) {
  LongLines lines;
  for (int i = 0; i < 0x8000; ++i) ASSERT_EQ(lines.Keep(std::to_string(i)), i);
  EXPECT_EQ(lines.Keep("x"), -1);
  EXPECT_EQ(lines.KeepCharacter(7), 0x8000) << "what collides finds room all the same";
}

TEST(LongLines, Keep_TheSameLine_HasTheSameStandIn) {
  LongLines lines;
  const std::string line(cScreen + 1, 'x');
  EXPECT_EQ(lines.Keep(line + "1"), 0);
  EXPECT_EQ(lines.Keep(line + "2"), 1) << "they begin alike";
  EXPECT_EQ(lines.Keep(line + "1"), 0);
  EXPECT_EQ(lines.Keep(line + "2"), 1);
}

TEST(LongLines, Note_TellsLengthAndBeginning) {
  LongLines lines;
  EXPECT_EQ(lines.NoteOf(lines.Keep("\"a\"\t\xC3\xA4" + std::string(20'971'514, '1'))),
            "20,971,520 bytes not shown: \"a\"...1" + std::string(53, '1') + "...");
  EXPECT_EQ(lines.NoteOf(lines.Keep(std::string(999, '1'))).substr(0, 9), "999 bytes");
  EXPECT_EQ(lines.NoteOf(7), "");
}

// A text with its stand-ins; it gets each change as an editor does.
struct Shown {
  test::MarkedText text{""};
  LongLines lines;
  StandIns places{text, lines};

  void Insert(int at, const std::string& added) {
    places.WillInsert(at, static_cast<int>(added.size()));
    text.text.insert(static_cast<size_t>(at), added);
  }
  void Delete(int at, int length) {
    places.WillDelete(at, length);
    text.text.erase(static_cast<size_t>(at), static_cast<size_t>(length));
  }
  std::string Whole(size_t start, size_t end) {
    std::string to;
    places.AppendWhole(start, end, to);
    return to;
  }
};

TEST(StandIns, Whole_EveryRange_IsThatOfTheWholeText) {
  Shown shown;
  shown.lines.Keep("first line");
  shown.lines.Keep("2nd");
  shown.Insert(0, "a" + LongLines::CharacterOf(0) + "bc" + LongLines::CharacterOf(1));
  const std::string whole = "afirst linebc2nd";
  EXPECT_EQ(shown.places.Count(), 2);
  EXPECT_EQ(shown.places.WholeLength(), whole.size());
  EXPECT_EQ(shown.places.WholePosition(1), 1u);
  EXPECT_EQ(shown.places.WholePosition(5), 11u);
  EXPECT_EQ(shown.places.At(1), 0);
  EXPECT_EQ(shown.places.At(0), -1);
  EXPECT_EQ(shown.places.At(7), 1);
  for (size_t start = 0; start <= whole.size(); ++start)
    for (size_t end = start; end <= whole.size() + 2; ++end)
      ASSERT_EQ(shown.Whole(start, end), whole.substr(start, end - start)) << start << " " << end;
}

TEST(StandIns, EveryChange_IsFollowed) {
  std::mt19937 random(2);
  Shown shown;
  for (int i = 0; i < 3; ++i) shown.lines.Keep("line " + std::to_string(i));
  for (int step = 0; step < 20'000; ++step) {
    const int length = shown.text.Length();
    const int at = static_cast<int>(random() % static_cast<unsigned>(length + 1));
    if (random() % 2 && length > 0)
      shown.Delete(at, static_cast<int>(random() % static_cast<unsigned>(length - at + 1)) % 9);
    else
      shown.Insert(
          at, std::string("xy").substr(random() % 2) +
                  LongLines::CharacterOf(static_cast<int>(random() % 4)).substr(0, random() % 5));
    if (random() % 3 == 0) continue;
    const std::string whole = shown.lines.Unfold(shown.text.text);
    ASSERT_EQ(shown.places.WholeLength(), whole.size()) << step;
    ASSERT_EQ(shown.Whole(0, whole.size()), whole) << step;
  }
}

TEST(StandIns, CharacterTypedBeforeALongLineCame_IsNeverAStandIn) {
  Shown shown;
  shown.Insert(0, LongLines::CharacterOf(0));
  shown.Delete(0, 4);
  EXPECT_EQ(shown.lines.Keep("a line"), 1) << "undoing may bring it back";
}

}  // namespace
}  // namespace mavro
