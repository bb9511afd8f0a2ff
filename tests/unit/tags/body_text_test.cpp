#include "tags/BodyText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "TagRun.h"
#include "TempFolder.h"
#include "tags/TagChars.h"

namespace zendry {
namespace {

bool Counts(char c) {
  return std::string_view("{}\"#'/\\?").find(c) != std::string_view::npos;
}

void ExpectPassed(std::string_view text) {
  const char* const end = text.data() + text.size();
  const BodyText passed = PassBodyText(text.data(), end);
  const char* const stop = std::find_if(text.data(), end, Counts);
  EXPECT_EQ(passed.stop - text.data(), stop - text.data());
  EXPECT_EQ(passed.newlines, std::count(text.data(), stop, '\n'));
}

TEST(BodyText, EachByteThatCounts_StopsAtEachPlaceOfABlock) {
  for (size_t length = 0; length <= 50; ++length)
    for (int c = 0; c < 256; ++c) {
      std::string text(length, 'a');
      text += static_cast<char>(c);
      text += "b{";
      ExpectPassed(text);
      ExpectPassed(std::string_view(text).substr(0, length + 1));
    }
}

TEST(BodyText, NewlinesBehindTheStop_AreNotCounted) {
  for (size_t at = 0; at <= 40; ++at) {
    std::string text(41, '\n');
    text[at] = '}';
    ExpectPassed(text);
  }
}

TEST(BodyText, MoreNewlinesThanAByteCounts_AreCounted) {
  for (const size_t count : {255u * 16 - 1, 255u * 16, 255u * 16 + 1, 70'000u})
    ExpectPassed(std::string(count, '\n') + "{\n");
}

// What a reader of bodies sees: each byte that SkipToBrace() stops at, its line, and if a directive
// could begin after it.
std::vector<std::string> StopsOf(FileReader& reader, const std::string& path, size_t longestLine) {
  TagData store;
  EXPECT_TRUE(reader.open(path.c_str()).Ok());
  theTagParser.Bind(store, &reader);
  theCpp.lines.longestLine = longestLine;
  theCpp.lines.Start(reader, &store);
  theCpp.sourceInit(false, Language::cCpp, false);
  std::vector<std::string> stops;
  for (int c = 0; c != -1;) {
    theCpp.SkipToBrace();
    c = theCpp.sourceGetc();
    stops.push_back(std::to_string(c) + " " + std::to_string(theCpp.lines.lineNumber) + " " +
                    std::to_string(theCpp.lines.tagLine) + " " +
                    std::to_string(theCpp.directive.allowed) + " " +
                    std::string(theCpp.lines.Ahead().substr(0, 50)));
  }
  for (const IncludeRec& include : store.includes) stops.push_back(include.name);
  theCpp.lines.longestLine = LineInput::cLongestLine;
  return stops;
}

std::vector<std::string> StopsOf(std::string_view text, size_t longestLine, size_t readAtOnce) {
  test::TextReader reader(text);
  reader.most = readAtOnce;
  return StopsOf(reader, "", longestLine);
}

// Lines over which no body is passed as a whole, as one of them could be too long, give the same.
TEST(BodyText, LinesPassedTogether_GiveWhatLinesOneByOneGive) {
  const std::vector<std::string> pieces = {"a",
                                           " ",
                                           "\t",
                                           "\n",
                                           "\n\n\n",
                                           "{",
                                           "}",
                                           "\"s{\"",
                                           "'c'",
                                           "// {\n",
                                           "/*}*/",
                                           "#if\n",
                                           "\n#else\n",
                                           "\n#include \"x.h\"\n",
                                           "\\\n",
                                           "?",
                                           "\r\n",
                                           "\r",
                                           "\n  #endif\n",
                                           "word and word\n",
                                           "0123456789",
                                           "\n;\n"};
  const test::TempFolder folder;
  std::mt19937 random(4711);
  for (int round = 0; round < 300; ++round) {
    std::string text;
    while (text.size() < static_cast<size_t>(round) * 20) text += pieces[random() % pieces.size()];
    if (round % 7 == 0) text += '\0';
    if (round % 3 == 0) text += "behind {\n";
    const auto expected = StopsOf(text, LineInput::cLongestLine, 1 << 20);
    for (const size_t readAtOnce : {size_t{1} << 20, size_t{64}, size_t{1}})
      ASSERT_EQ(StopsOf(text, size_t{1} << 30, readAtOnce), expected) << round << ": " << text;
    FileReader file;
    ASSERT_EQ(StopsOf(file, folder.Write("a.cpp", text), size_t{1} << 30), expected) << text;
  }
}

TEST(BodyText, BodyLargerThanWhatIsReadAtOnce_HasItsLines) {
  std::string text;
  while (text.size() < 300'000) text += "  statement;\n";
  const auto lines = std::to_string(std::count(text.begin(), text.end(), '\n') + 1);
  const auto stops = StopsOf(text + "  }\n", size_t{1} << 30, 1 << 20);
  ASSERT_EQ(stops.size(), 3u);  // the first character, the brace, the end
  EXPECT_EQ(stops[1], "125 " + lines + " " + lines + " 0 \n");
}

}  // namespace
}  // namespace zendry
