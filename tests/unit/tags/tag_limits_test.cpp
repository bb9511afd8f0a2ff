#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "TagRun.h"
#include "TempFolder.h"
#include "tags/LineInput.h"
#include "tags/TagChars.h"

// The limits of a parse: the length of a line, the number of tags, the depth of blocks.

namespace zendry {
namespace {

using test::ParseTags;
using test::TagsOf;

std::string Repeat(std::string_view text, int count) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

// `int b;` after a line of so many bytes.
std::string AfterLine(size_t length) {
  return "int a;\n//" + std::string(length - 2, 'x') + "\nint b;\n";
}

TEST(TagLimits, LineOf1023Bytes_IsRead) {
  EXPECT_EQ(TagsOf(AfterLine(1023)), "v a:int; v b:int;");
}

TEST(TagLimits, LineOf1024Bytes_EndsTheSource) {
  const test::TagRun run = ParseTags(AfterLine(1024));
  EXPECT_EQ(test::ShortTags(run.lines), "v a:int;");
  EXPECT_EQ(run.log, "Line to long --> \n");
}

TEST(TagLimits, LongLine_IsReadUpToItsLimit) {
  EXPECT_EQ(
      TagsOf("int a;" + std::string(1000, ' ') + "int b;" + std::string(1000, ' ') + "int c;"),
      "v a:int; v b:int;");
}

TEST(TagLimits, LongLineOfAnyLength_EndsQuickly) {
  EXPECT_EQ(TagsOf("int a;\n" + std::string(3000000, 'x')), "v a:int;");
  EXPECT_EQ(TagsOf("int a;\n\"" + std::string(3000000, 'x')), "v a:int;");
}

TEST(TagLimits, IncludeInALongLine_IsRecordedUpToItsLimit) {
  const test::TagRun run =
      ParseTags("#include \"a.h\"" + std::string(2000, ' ') + "\n#include <b>\n");
  ASSERT_EQ(run.store.includes.size(), 1u);
  EXPECT_EQ(run.store.includes[0].name, "a.h");
}

TEST(TagLimits, TagNumber1025_IsStoredAndTheLast) {
  const test::TagRun run = ParseTags(Repeat("int a;\n", 2000));
  EXPECT_EQ(run.store.globals.size(), 1025u);
  EXPECT_EQ(run.store.globals.back().line, 1025);
  EXPECT_EQ(run.log, "To many tags --> \n");
}

TEST(TagLimits, TagNumber1026OnTheSameLine_IsNotReached) {
  const test::TagRun run = ParseTags(Repeat("int a;\n", 1023) + "int b, c, d, e;\n");
  EXPECT_EQ(run.store.globals.size(), 1025u);
  EXPECT_EQ(run.store.globals.back().name, "c");
}

TEST(TagLimits, MacrosBeyondTheLimit_EndTheSource) {
  const test::TagRun run = ParseTags(Repeat("#define A\n", 3000));
  EXPECT_EQ(run.store.globals.size(), 1025u);
}

TEST(TagLimits, ExactlyTheMostTags_AreNoReasonToLog) {
  const test::TagRun run = ParseTags(Repeat("int a;\n", 1024));
  EXPECT_EQ(run.store.globals.size(), 1024u);
  EXPECT_EQ(run.log, "");
}

TEST(TagLimits, RaisedLimits_Hold) {
  theTagParser.SetLimits(3000, 200000);
  EXPECT_EQ(ParseTags(Repeat("int a;\n", 3000)).log, "");
  EXPECT_EQ(ParseTags(Repeat("int a;\n", 3001)).log, "To many tags --> \n");
  EXPECT_EQ(TagsOf(AfterLine(200000)), "v a:int; v b:int;");
  EXPECT_EQ(ParseTags(AfterLine(200001)).log, "Line to long --> \n");
  theTagParser.SetLimits(TagParser::cMostTags, LineInput::cLongestLine);
  EXPECT_EQ(TagsOf(AfterLine(1024)), "v a:int;");
}

TEST(TagLimits, GivingUp_IsReportedUntilTheNextSource) {
  for (const std::string& text : {AfterLine(1024), Repeat("int a;\n", 1025)}) {
    ParseTags(text);
    EXPECT_TRUE(theTagParser.gaveUp);
    ParseTags("int a;");
    EXPECT_FALSE(theTagParser.gaveUp);
  }
}

TEST(TagLimits, NamesBeginningWithUnderscore_DontCount) {
  EXPECT_EQ(TagsOf(Repeat("int _a;\n", 3000) + "int b;"), "v b:int;");
}

TEST(TagLimits, NextSource_StartsCountingAgain) {
  ParseTags(Repeat("int a;\n", 2000));
  EXPECT_EQ(TagsOf("int a;"), "v a:int;");
}

class TagDepth : public testing::TestWithParam<const char*> {};

TEST_P(TagDepth, HundredThousandLevels_KeepTheTagsFoundSoFar) {
  const std::string text = "int a;\n" + Repeat(std::string(GetParam()) + '\n', 100000);
  EXPECT_EQ(TagsOf(text).substr(0, 8), "v a:int;");
}

TEST_P(TagDepth, HundredThousandLevelsInEveryLanguage_End) {
  const std::string text = Repeat(std::string(GetParam()) + '\n', 100000);
  for (const LanguageRecord& record : Languages()) {
    test::TagRunOptions options;
    options.language = record.language;
    options.locals = true;
    EXPECT_LE(ParseTags(text, "a.cpp", options).store.globals.size(), 1025u);
  }
}

INSTANTIATE_TEST_SUITE_P(Openings, TagDepth,
                         testing::Values("{", "(", "[", "<", "#if 1", "#if 0", "#else", "class {",
                                         "class A {", "namespace n {", "extern \"C\" {", "f(",
                                         "int f() {", "int (*", "enum {", "= {", ": a(", "}", ")",
                                         "template <", "requires (", "/*", "a::", "operator (",
                                         "\\?", "??", "'", "\"", "catch (", "x = 'a", "R\"(", ",",
                                         "!", "public:", "case 1:", "f(a(", "(a(", "a<b(", "~"),
                         [](const auto& info) { return std::to_string(info.index); });

TEST(TagLimits, BlocksBeyondTheDeepest_AreSkippedByTheirBraces) {
  const std::string tags =
      TagsOf(Repeat("namespace n {\n", 600) + "int deep;\n" + Repeat("}\n", 600) + "int after;");
  EXPECT_EQ(tags.find("deep"), std::string::npos);
  EXPECT_NE(tags.find("v after:int;"), std::string::npos);
}

// A declaration within so many blocks.
std::string InBlocks(int count) {
  return Repeat("namespace n {\n", count) + "int deep;\n" + Repeat("}\n", count) + "int after;";
}

TEST(TagLimits, Block500_IsReadAndBlock501IsNot) {
  EXPECT_NE(TagsOf(InBlocks(500)).find("deep:int; v after:int;"), std::string::npos);
  const std::string tags = TagsOf(InBlocks(501));
  EXPECT_EQ(tags.find("deep"), std::string::npos);
  EXPECT_NE(tags.find("v after:int;"), std::string::npos);
}

TEST(TagLimits, NineteenConditionals_AreFollowed) {
  EXPECT_EQ(TagsOf(Repeat("#if 1\n", 18) + "#if 0\nint no;\n#else\nint a;\n" +
                   Repeat("#endif\n", 19) + "int b;"),
            "v a:int; v b:int;");
}

TEST(TagLimits, TwentiethConditional_IsNotFollowed) {
  EXPECT_EQ(TagsOf(Repeat("#if 1\n", 19) + "#if 0\nint a;\n#endif\n"), "v a:int;");
}

// A file is parsed where it stands in memory, another text as it comes in pieces.
TEST(TagLimits, FileAndText_GiveTheSame) {
  const test::TempFolder folder;
  const std::string pieces[] = {"int a;",
                                "class A {",
                                "};",
                                "}",
                                "#define X",
                                "\\",
                                "\n",
                                "\r\n",
                                "\r",
                                "#if 0\n",
                                "#else\n",
                                "#endif\n",
                                "/*",
                                "*/",
                                "void f(int b) {\n",
                                "\"",
                                "'",
                                "?\?/",
                                " ",
                                std::string(1, '\0'),
                                std::string(1018, 'x'),
                                "namespace n {\n",
                                "using B::b;",
                                "enum {e,"};
  std::mt19937 random(815);
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    for (int i = 0; i < round % 40; ++i) text += pieces[random() % std::size(pieces)];
    FileReader file;
    const test::TagRun inMemory = test::ParseTagsOf(file, folder.Write("a.cpp", text));
    const test::TagRun inPieces =
        ParseTags(text, "a.cpp", {std::nullopt, false, 1 + random() % 99});
    ASSERT_EQ(inMemory.lines, inPieces.lines) << text;
    ASSERT_EQ(inMemory.log, inPieces.log) << text;
  }
}

TEST(TagLimits, SourceThatEndsInALongLine_HasNothingAhead) {
  const test::TempFolder folder;
  for (const size_t length :
       {LineInput::cLongestLine, LineInput::cLongestLine + 1, LineInput::cLongestLine + 2}) {
    FileReader reader;
    ASSERT_TRUE(reader.open(folder.Write("a.cpp", std::string(length, 'x')).c_str()).Ok());
    TagData store;
    LineInput lines;
    lines.Start(reader, &store);
    size_t count = 0;
    for (int c = lines.lineGetc(); c != -1; c = lines.lineGetc()) count += c == 'x';
    EXPECT_EQ(count, std::min(length, LineInput::cLongestLine + 1));
    EXPECT_EQ(lines.Ahead(), "");
  }
}

// An identifier ends at each byte that isn't of one, whatever its length.
TEST(TagLimits, NameOfEachLength_EndsBeforeEachOtherByte) {
  for (size_t length = 1; length <= 40; ++length)
    for (int c = 1; c < 256; ++c) {
      if (c == '\\' || c == '?') continue;
      const std::string name(length, 'Z'), byte(1, static_cast<char>(c));
      const bool goesOn = IsClass(c, cIdentifierChar);
      const std::string expected = "d " + name + (goesOn ? byte + "z" : "") + ";";
      EXPECT_EQ(TagsOf("#define " + name + byte + "z\n"), expected) << c;
    }
}

}  // namespace
}  // namespace zendry
