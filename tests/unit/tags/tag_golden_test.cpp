#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "Golden.h"
#include "TagRun.h"

namespace zendry {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> Sources() {
  std::vector<std::string> sources;
  for (const auto& entry : fs::directory_iterator(TEST_DATA "/tags"))
    if (const std::string ext = entry.path().extension(); ext != ".tags" && ext != ".new")
      sources.push_back(entry.path().filename());
  std::sort(sources.begin(), sources.end());
  return sources;
}

class TagGolden : public testing::TestWithParam<std::string> {
 protected:
  std::string Path() const { return TEST_DATA "/tags/" + GetParam(); }
  test::TagRun Parse(const std::string& text, size_t mostAtOnce = 1 << 20) const {
    test::TagRunOptions options;
    options.mostAtOnce = mostAtOnce;
    options.locals = GetParam().find("locals") != std::string::npos;
    if (GetParam().ends_with(".java")) options.language = Language::cJava;
    return test::ParseTags(text, GetParam(), options);
  }
};

std::string Replaced(const std::string& text, const std::string& newline) {
  std::string result;
  for (const char c : text) c == '\n' ? void(result += newline) : void(result += c);
  return result;
}

TEST_P(TagGolden, Source_GivesItsTags) {
  const test::TagRun run = Parse(test::ReadData(Path()));
  std::string includes;
  for (const IncludeRec& include : run.store.includes)
    includes += std::string("# ") + (include.quoted ? "quoted " : "angled ") + include.name + '\n';
  std::string log;
  if (!run.log.empty()) log = "! " + Replaced(run.log.substr(0, run.log.size() - 1), "\n! ") + '\n';
  EXPECT_TRUE(test::MatchesGolden(Path() + ".tags", run.lines + includes + log));
}

TEST_P(TagGolden, OtherLineEnds_GiveTheSame) {
  const std::string text = test::ReadData(Path());
  const std::string lines = Parse(text).lines;
  EXPECT_EQ(Parse(Replaced(text, "\r\n")).lines, lines);
  EXPECT_EQ(Parse(Replaced(text, "\r")).lines, lines);
}

TEST_P(TagGolden, ReadInSmallPieces_GivesTheSame) {
  const std::string text = test::ReadData(Path());
  const std::string lines = Parse(text).lines;
  EXPECT_EQ(Parse(text, 1).lines, lines);
  EXPECT_EQ(Parse(Replaced(text, "\r\n"), 7).lines, lines);
}

// Tags once made stay, whatever comes after.
TEST_P(TagGolden, CutAtAnyByte_Ends) {
  const std::string text = test::ReadData(Path());
  const std::string whole = Parse(text).lines;
  const auto count = [](const std::string& lines) {
    return std::count(lines.begin(), lines.end(), '\n');
  };
  for (size_t length = 0; length < text.size(); ++length)
    EXPECT_LE(count(Parse(text.substr(0, length)).lines), count(whole) + 1) << "cut at " << length;
}

INSTANTIATE_TEST_SUITE_P(Data, TagGolden, testing::ValuesIn(Sources()), [](const auto& info) {
  std::string name = info.param;
  for (char& c : name)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return name;
});

TEST(TagGoldens, ThereAreSixty) {
  EXPECT_GE(Sources().size(), 60u);
}

}  // namespace
}  // namespace zendry
