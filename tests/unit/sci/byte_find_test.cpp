#include "ByteFind.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "AsciiCase.h"

namespace mavro {
namespace {

constexpr auto cNowhere = std::string_view::npos;

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), AsciiLower);
  return text;
}

TEST(ByteFind, FindsTheFirstPlaceFromThereOn) {
  const ByteFind find("ab", LetterCase::cExact);
  EXPECT_EQ(find.Next("xabab", 0), 1u);
  EXPECT_EQ(find.Next("xabab", 1), 1u);
  EXPECT_EQ(find.Next("xabab", 2), 3u);
  EXPECT_EQ(find.Next("xabab", 4), cNowhere);
  EXPECT_EQ(find.Next("xaBAb", 0), cNowhere);
  EXPECT_EQ(find.Next("", 0), cNowhere);
}

TEST(ByteFind, NothingIsFoundNowhere) {
  const ByteFind find("", LetterCase::cExact);
  EXPECT_EQ(find.Next("abc", 0), cNowhere);
  EXPECT_EQ(find.Last("abc", 0, 3), cNowhere);
}

TEST(ByteFind, FoldsAsciiLettersOnly) {
  const ByteFind find("A[z", LetterCase::cFolded);
  EXPECT_EQ(find.Next("..a[Z", 0), 2u);
  EXPECT_EQ(find.Next("..a{Z", 0), cNowhere) << "the bit of case in a sign means another sign";
  EXPECT_EQ(ByteFind("@", LetterCase::cFolded).Next("``", 0), cNowhere);
}

TEST(ByteFind, LastEndsBeforeThere) {
  const ByteFind find("aa", LetterCase::cExact);
  EXPECT_EQ(find.Last("aaaa", 0, 4), 2u);
  EXPECT_EQ(find.Last("aaaa", 0, 3), 1u);
  EXPECT_EQ(find.Last("aaaa", 1, 2), cNowhere);
  std::string large(300'000, '.');
  large.replace(1000, 2, "aa");
  EXPECT_EQ(find.Last(large, 0, large.size()), 1000u);
  large.replace(large.size() - 64 * 1024 - 1, 2, "aa");
  EXPECT_EQ(find.Last(large, 0, large.size()), large.size() - 64 * 1024 - 1) << "over two windows";
}

// Texts of few letters have hits at all places of a block.
TEST(ByteFind, AgreesWithAPlainSearch_InTextsOfAllLengths) {
  std::mt19937 random(1);
  const auto text = [&](size_t length) {
    std::string made(length, ' ');
    for (char& c : made) c = "abAB.\xE4"[random() % 6];
    return made;
  };
  for (int round = 0; round < 20'000; ++round) {
    const std::string wanted = text(1 + random() % 4);
    const std::string in = text(random() % 200);
    const size_t from = random() % 20;
    EXPECT_EQ(ByteFind(wanted, LetterCase::cExact).Next(in, from), in.find(wanted, from));
    EXPECT_EQ(ByteFind(wanted, LetterCase::cFolded).Next(in, from),
              Lower(in).find(Lower(wanted), from))
        << wanted << " in " << in;
    EXPECT_EQ(ByteFind(wanted, LetterCase::cExact).Last(in, 0, in.size()), in.rfind(wanted));
  }
}

TEST(CountBytes, CountsThem) {
  for (size_t length : {0u, 1u, 15u, 16u, 17u, 4079u, 4080u, 4081u, 10'000u}) {
    std::string text(length, '\n');
    EXPECT_EQ(CountBytes(text, '\n'), length);
    EXPECT_EQ(CountBytes(text, '.'), 0u);
    if (length > 3) text[3] = '.';
    EXPECT_EQ(CountBytes(text, '.'), length > 3 ? 1u : 0u);
  }
}

}  // namespace
}  // namespace mavro
