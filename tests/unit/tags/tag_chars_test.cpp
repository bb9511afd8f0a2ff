#include "tags/TagChars.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "TagRun.h"
#include "TempFolder.h"

namespace zendry {
namespace {

using test::ParseTags;
using test::TagsOf;

// The stream that the declaration parser would read. The marks show as S and K.
std::string Stream(std::string_view text, Language language = Language::cC) {
  test::TextReader reader(text);
  TagData store;
  EXPECT_TRUE(reader.open("").Ok());
  theTagParser.Bind(store, &reader);
  theCpp.lines.Start(reader, &store);
  theCpp.sourceInit(false, language, false);
  std::string result;
  for (int c = theCpp.sourceGetc(); c != -1; c = theCpp.sourceGetc())
    result += c == STRING_MARK ? 'S' : c == CHAR_MARK ? 'K' : static_cast<char>(c);
  return result;
}

std::string IncludesOf(std::string_view text) {
  std::string names;
  for (const IncludeRec& include : ParseTags(text).store.includes)
    names += (include.quoted ? "\"" : "<") + include.name + ' ';
  return names;
}

TEST(TagChars, Marks_HaveTheirValues) {
  EXPECT_EQ(STRING_MARK, 211);
  EXPECT_EQ(CHAR_MARK, 195);
}

TEST(TagChars, DirectiveStates_HaveTheirValues) {
  EXPECT_EQ(DIRECTIVE_NONE, 0);
  EXPECT_EQ(DIRECTIVE_DEFINE, 1);
  EXPECT_EQ(DIRECTIVE_HASH, 2);
  EXPECT_EQ(DIRECTIVE_IF, 3);
  EXPECT_EQ(DIRECTIVE_PRAGMA, 4);
  EXPECT_EQ(DIRECTIVE_UNDEF, 5);
}

struct Fold {
  const char* name;
  std::string_view text;
  std::string_view stream;
};

class TagFold : public testing::TestWithParam<Fold> {};

TEST_P(TagFold, Text_BecomesItsStream) {
  EXPECT_EQ(Stream(GetParam().text), GetParam().stream);
}

using namespace std::string_view_literals;

INSTANTIATE_TEST_SUITE_P(
    Rows, TagFold,
    testing::Values(
        Fold{"Plain", "ab 1\n", "ab 1\n"}, Fold{"LastLineWithoutEnd", "a\nb", "a\nb"},
        Fold{"String", "a\"x;\"b", "aSb"}, Fold{"EscapedQuote", "\"\\\"\"x", "Sx"},
        Fold{"StringOverLines", "\"a\nb\"c", "Sc"}, Fold{"StringToTheEnd", "a\"x", "aS"},
        Fold{"StringEndingInBackslash", "\"x\\", "S"}, Fold{"Character", "'x'y", "Ky"},
        Fold{"EscapedApostrophe", "'\\''y", "Ky"}, Fold{"CharacterToTheLineEnd", "'xy\nz", "K\nz"},
        Fold{"CharacterToTheEnd", "'x", "K"}, Fold{"BasedNumber", "8'hFF;", "8K;"},
        Fold{"BasedNumberUpperCase", "'D12+1", "K+1"}, Fold{"BasedNumberOctal", "'o7 x", "K x"},
        Fold{"BasedNumberBinary", "'b01]", "K]"}, Fold{"CharacterOfABase", "'d';", "K;"},
        Fold{"BlockComment", "a/*x*/b", "a b"}, Fold{"CommentOverLines", "a/*\n\n*/b", "a b"},
        Fold{"StarsInComment", "/***/a/**/b", " a b"}, Fold{"CommentToTheEnd", "a/*x", "a "},
        Fold{"CommentEndingInAStar", "a/*x*", "a "}, Fold{"SlashStarSlash", "/*/a*/b", " b"},
        Fold{"LineComment", "a//x\nb", "a\n\nb"}, Fold{"HiddenLineEnd", "a//x\\\ny\nb", "a\n\nb"},
        Fold{"LineCommentToTheEnd", "a//x", "a"}, Fold{"Slash", "a/b", "a/b"},
        Fold{"SlashAtTheEnd", "a/", "a/"}, Fold{"Splice", "a\\\nb", "a\\b"},
        Fold{"Backslash", "a\\b", "a\\b"}, Fold{"BackslashQuestion", "\\?a", "\\?a"},
        Fold{"BackslashAtTheEnd", "a\\", "a\\"}, Fold{"Question", "a?b", "a?b"},
        Fold{"QuestionAtTheEnd", "a?", "a?"}, Fold{"TwoQuestions", "??x", "??x"},
        Fold{"TwoQuestionsAtTheEnd", "a??", "a??"},
        Fold{"TrigraphOpenBracket",
             "?"
             "?(",
             "["},
        Fold{"TrigraphCloseBracket",
             "?"
             "?)",
             "]"},
        Fold{"TrigraphOpenBrace",
             "?"
             "?<",
             "{"},
        Fold{"TrigraphCloseBrace",
             "?"
             "?>",
             "}"},
        Fold{"TrigraphBar",
             "?"
             "?!",
             "|"},
        Fold{"TrigraphCaret",
             "?"
             "?'",
             "^"},
        Fold{"TrigraphTilde",
             "?"
             "?-",
             "~"},
        Fold{"TrigraphBackslash",
             "a?"
             "?/\nb",
             "a\\b"},
        Fold{"TrigraphHash",
             "?"
             "?=define X\na",
             "\na"},
        Fold{"HashWithinALine", "a # b", "a # b"}, Fold{"Directive", "#define X y\na", "\na"},
        Fold{"SplicedDirective", "#define X \\\n y\na", "\na"},
        Fold{"CommentInDirective", "#define X /* y\n*/ z\na", "\na"},
        Fold{"StringInDirective", "#define X \"y\nz\" z\na", "\na"},
        Fold{"UnknownDirective", "#foo bar\na", "\na"},
        Fold{"LineNumberDirective", "# 12 \"x\"\na", "\na"}, Fold{"EmptyDirective", "#\na", "\na"},
        Fold{"DirectiveAtTheEnd", "#", ""}, Fold{"ByteZero", "a\0b\nc"sv, "ac"sv},
        Fold{"OnlyZeros", "\0\0\0"sv, ""sv}, Fold{"Empty", "", ""}),
    [](const auto& info) { return info.param.name; });

TEST(TagChars, DigitSeparator_IsPartOfItsNumber) {
  EXPECT_EQ(Stream("1'000'000;", Language::cCpp), "1000000;");
  EXPECT_EQ(Stream("1'000;\n", Language::cC), "1000;\n");
  EXPECT_EQ(Stream("0xA'B;\n", Language::cC), "0xAB;\n");
  EXPECT_EQ(Stream("1'000;\n", Language::cVera), "1K\n");
  EXPECT_EQ(Stream("u8'x';", Language::cCpp), "u8K;");
  EXPECT_EQ(Stream("1 'x';", Language::cCpp), "1 K;");
  EXPECT_EQ(Stream("0x' ';", Language::cCpp), "0xK;");
}

TEST(TagChars, RawStringsDelimiter_HasUpTo16Characters) {
  const std::string mark = "0123456789abcdef";
  EXPECT_EQ(Stream("R\"" + mark + "(a\" b)" + mark + "\" c", Language::cCpp), "RS c");
  EXPECT_EQ(Stream("R\"" + mark + "g(a\" b)c\"\"d", Language::cCpp), "RS b)cSd");
}

TEST(TagChars, RawString_EndsAtItsDelimiterInCppAlone) {
  EXPECT_EQ(Stream("R\"(a\")\" b", Language::cCpp), "RS b");
  EXPECT_EQ(Stream("R\"x(\n)\"\n)x\" b", Language::cCpp), "RS b");
  EXPECT_EQ(Stream("fR\"(\" b", Language::cCpp), "fRS b");
  EXPECT_EQ(Stream("R\"(\" b", Language::cC), "RS b");
  EXPECT_EQ(Stream("R\"too long a delimiter(\" b", Language::cCpp), "RS b");
  EXPECT_EQ(Stream("R\"(never", Language::cCpp), "RS");
}

TEST(TagChars, Pushback_HoldsTwo) {
  Stream("");
  theCpp.sourceUngetc('a');
  theCpp.sourceUngetc('b');
  EXPECT_EQ(theCpp.sourceGetc(), 'b');
  EXPECT_EQ(theCpp.sourceGetc(), 'a');
  EXPECT_EQ(theCpp.sourceGetc(), -1);
}

TEST(TagChars, ThirdPushback_IsAnAssertion) {
  Stream("");
  theCpp.sourceUngetc('a');
  theCpp.sourceUngetc('b');
  EXPECT_DEATH(theCpp.sourceUngetc('c'), "Cpp.ungetch2 == '.0'");
}

TEST(TagChars, HeldQuestionMarks_DontCountAsPushback) {
  EXPECT_EQ(Stream("#if 0\n\\?\\?\\?\\?\\?\n??x??x??x\n#endif\na"), "\na");
  EXPECT_EQ(TagsOf("f(a(\\?\\?\nint b;"), "");
}

TEST(TagChars, SkipBlanks_TakesAllWhiteSpace) {
  Stream("");
  EXPECT_EQ(TagsOf(" \t\v\f\r\nint\v\f\ta;"), "v a:int;");
}

// Lines.

TEST(TagChars, CarriageReturns_CountLinesLikeNewlines) {
  const test::TagRun run = ParseTags("int a;\rint b;\r\rint c;\r");
  ASSERT_EQ(run.store.globals.size(), 3u);
  EXPECT_EQ(run.store.globals[1].line, 2);
  EXPECT_EQ(run.store.globals[2].line, 4);
}

TEST(TagChars, CarriageReturnAtTheEnd_IsOneNewline) {
  EXPECT_EQ(Stream("a\r"), "a\n");
  EXPECT_EQ(theCpp.lines.lineNumber, 1);
}

TEST(TagChars, CarriageReturnAndNewlineReadApart_AreOneLineEnd) {
  test::TagRunOptions options;
  options.mostAtOnce = 1;
  EXPECT_EQ(ParseTags("int a;\r\nint b;\r\n", "a.cpp", options).store.globals[1].line, 2);
}

TEST(TagChars, TagLine_IsTheLineOfTheName) {
  const test::TagRun run = ParseTags("int\n\n  a\n;\n");
  EXPECT_EQ(run.store.globals.at(0).line, 3);
}

// Includes.

TEST(TagChars, Includes_AreRecordedFromTheFirstColumnOnly) {
  EXPECT_EQ(IncludesOf("#include <a>\n #include <b>\n#include \"c\"\n"), "<a \"c ");
}

TEST(TagChars, IncludesInCommentsAndSkippedBranches_AreRecorded) {
  EXPECT_EQ(IncludesOf("/*\n#include <a>\n*/\n#if 0\n#include <b>\n#endif\n"), "<a <b ");
}

TEST(TagChars, IncludeOf245Characters_RecordsNothing) {
  EXPECT_EQ(IncludesOf("#include <" + std::string(245, 'x') + ">\n"), "");
  EXPECT_EQ(IncludesOf("#include <" + std::string(244, 'x') + ">\n"),
            "<" + std::string(244, 'x') + ' ');
}

// Directives.

TEST(TagChars, IfZero_ShowsTheElseBranchOnly) {
  EXPECT_EQ(TagsOf("#if 0\nint a;\n#else\nint b;\n#endif\nint c;"), "v b:int; v c:int;");
}

TEST(TagChars, IfOne_ShowsBothBranchesOutsideAStatement) {
  EXPECT_EQ(TagsOf("#if 1\nint a;\n#else\nint b;\n#endif\n"), "v a:int; v b:int;");
}

TEST(TagChars, Ifdef_ShowsBothBranchesOutsideAStatement) {
  EXPECT_EQ(TagsOf("#ifdef X\nint a;\n#else\nint b;\n#endif\n"), "v a:int; v b:int;");
}

TEST(TagChars, IfWithinAStatement_ShowsItsFirstBranchOnly) {
  EXPECT_EQ(TagsOf("int\n#if X\na\n#else\nb\n#endif\n;"), "v a:int;");
}

TEST(TagChars, IfZeroWithinAStatement_ShowsTheElseBranch) {
  EXPECT_EQ(TagsOf("int\n#if 0\na\n#else\nb\n#endif\n;"), "v b:int;");
}

TEST(TagChars, ElifAfterIfZero_IsShown) {
  EXPECT_EQ(TagsOf("#if 0\nint a;\n#elif X\nint b;\n#else\nint c;\n#endif\n"), "v b:int; v c:int;");
}

TEST(TagChars, ElifWithinAStatement_ShowsTheFirstBranchOnly) {
  EXPECT_EQ(TagsOf("int\n#if X\na\n#elif Y\nb\n#else\nc\n#endif\n;"), "v a:int;");
  EXPECT_EQ(TagsOf("int\n#if X\na\n#elif Y\nb\n#elif Z\nc\n#endif\n;"), "v a:int;");
}

// Only an "else" counts as the branch that was taken; an "elif" lets the next one be read too.
TEST(TagChars, BranchesAfterIfZeroWithinAStatement) {
  EXPECT_EQ(TagsOf("int\n#if 0\na,\n#elif Y\nb,\n#else\nc\n#endif\n;"), "v b:int; v c:int;");
  EXPECT_EQ(TagsOf("int\n#if 0\na,\n#else\nb\n#else\n,c\n#endif\n;"), "v b:int;");
}

TEST(TagChars, BranchesWithinASkippedBranch_AreAllSkipped) {
  EXPECT_EQ(TagsOf("#if 0\n#if 1\nint a;\n#else\nint b;\n#endif\n#endif\nint c;"), "v c:int;");
}

TEST(TagChars, AnyWordBeginningWithIf_OpensALevel) {
  EXPECT_EQ(TagsOf("#ifxyz 0\nint a;\n#endif\nint b;"), "v b:int;");
}

TEST(TagChars, ReadIfZero_ShowsBothBranches) {
  theTagParser.readIfZero = true;
  EXPECT_EQ(TagsOf("#if 0\nint a;\n#else\nint b;\n#endif\n"), "v a:int; v b:int;");
  theTagParser.readIfZero = false;
}

TEST(TagChars, EndifWithoutIf_IsIgnored) {
  EXPECT_EQ(TagsOf("#endif\n#endif\nint a;"), "v a:int;");
}

TEST(TagChars, Undef_YieldsAMacroTag) {
  EXPECT_EQ(TagsOf("#undef FOO\n"), "d FOO;");
}

TEST(TagChars, PragmaWeak_YieldsAMacroTag) {
  EXPECT_EQ(TagsOf("#pragma weak foo\n"), "d foo;");
  EXPECT_EQ(TagsOf("#pragma once\n#pragma weak 1\n#pragma\n#pragma weak\n"), "");
}

TEST(TagChars, BlankAfterTheHash_IsNoMatter) {
  EXPECT_EQ(TagsOf("# define X\n#\tdefine Y\n"), "d X; d Y;");
}

TEST(TagChars, TrigraphHash_BeginsADirective) {
  EXPECT_EQ(TagsOf("?"
                   "?=define X\n"),
            "d X;");
}

TEST(TagChars, CommentBeforeADirective_LetsItBe) {
  EXPECT_EQ(TagsOf("/* c */ #define X\n"), "d X;");
}

TEST(TagChars, CommentWithinADirective_DoesntEndIt) {
  EXPECT_EQ(TagsOf("#define X /* c\n */ int no;\nint a;"), "d X; v a:int;");
}

TEST(TagChars, HashAfterText_IsNoDirective) {
  EXPECT_EQ(TagsOf("; #define X\n"), "");
}

TEST(TagChars, MacroNames_BeginLikeIdentifiers) {
  EXPECT_EQ(TagsOf("#define $a\n#define ~b\n#define 1c\n#define\n#define (\n"), "d $a; d ~b;");
}

TEST(TagChars, MacrosOfASource_AreItsOwn) {
  EXPECT_NE(ParseTags("#define A\n", "a.cpp").lines.find("file:"), std::string::npos);
  EXPECT_EQ(ParseTags("#define A\n", "a.h").lines.find("file:"), std::string::npos);
}

TEST(TagChars, PrivateTagsNotWanted_AreLeftOut) {
  theTagParser.keepFilePrivate = false;
  EXPECT_EQ(TagsOf("#define A\nstatic int b;\nint c;"), "v c:int;");
  EXPECT_EQ(TagsOf("#define A\nstatic int b;\nint c;", "a.h"), "d A; v b:int; v c:int;");
  theTagParser.keepFilePrivate = true;
}

TEST(TagChars, Java_HasNoMacros) {
  test::TagRunOptions options;
  options.language = Language::cJava;
  EXPECT_EQ(TagsOf("#define A\n", "a.java", options), "");
}

// Files.

TEST(TagChars, FileOnDisk_IsReadWithoutAReader) {
  test::TempFolder folder;
  const std::string path = folder.Path("a.cpp");
  std::ofstream(path) << "int a;\n";
  TagData store;
  store.fileName = path;
  EXPECT_TRUE(theTagParser.parseBuffer(store, nullptr, false));
  ASSERT_EQ(store.globals.size(), 1u);
  EXPECT_EQ(store.globals[0].fileId, 0);
}

TEST(TagChars, FileThatIsNone_IsLoggedAndChangesNothing) {
  test::TempFolder folder;
  test::TagLog log;
  TagData store;
  store.fileName = folder.Path("none.cpp");
  store.globals.resize(1);
  EXPECT_TRUE(theTagParser.parseBuffer(store, nullptr, false));
  EXPECT_EQ(log.text, "cannot open: --> " + store.fileName + '\n');
  EXPECT_EQ(store.globals.size(), 1u);
}

TEST(TagChars, UnknownExtension_IsSilentlyNothing) {
  test::TagLog log;
  TagData store;
  theTagParser.Bind(store);
  EXPECT_FALSE(theTagParser.parseFile("/nowhere/a.txt", 3));
  EXPECT_EQ(log.text, "");
}

TEST(FileReader, Destruction_ClosesItsFile) {
  test::TempFolder folder;
  std::ofstream(folder.Path("x")) << "a";
  const auto nextDescriptor = [] {
    const int file = open("/dev/null", O_RDONLY);
    close(file);
    return file;
  };
  const int before = nextDescriptor();
  {
    FileReader reader;
    ASSERT_EQ(reader.open(folder.Path("x").c_str()).error, "");
  }
  EXPECT_EQ(nextDescriptor(), before);
}

TEST(FileReader, Bytes_AreReadAndTakenBack) {
  test::TempFolder folder;
  std::ofstream(folder.Path("x"), std::ios::binary) << "a\xff"
                                                    << "b";
  FileReader reader;
  EXPECT_FALSE(reader.IsOpen());
  ASSERT_EQ(reader.open(folder.Path("x").c_str()).error, "");
  EXPECT_EQ(reader.getc(), 'a');
  EXPECT_EQ(reader.getc(), 255);
  reader.ungetc(255);
  EXPECT_EQ(reader.getc(), 255);
  char rest[4];
  EXPECT_EQ(reader.read(rest, sizeof rest), 1u);
  EXPECT_EQ(reader.getc(), -1);
  reader.close();
  EXPECT_FALSE(reader.IsOpen());
  EXPECT_EQ(reader.getc(), -1);
}

TEST(FileReader, Rewind_BeginsAgainWithWhatWasRead) {
  test::TempFolder folder;
  const std::string path = folder.Write("x", "ab");
  FileReader reader;
  ASSERT_TRUE(reader.open(path.c_str()).Ok());
  EXPECT_EQ(reader.getc(), 'a');
  folder.Write("x", "other");
  ASSERT_TRUE(reader.Rewind(path.c_str()).Ok());
  EXPECT_EQ(reader.getc(), 'a');
  EXPECT_EQ(reader.getc(), 'b');
  EXPECT_EQ(reader.getc(), -1);
}

TEST(FileReader, RewindOfAnotherKind_OpensItAnew) {
  test::TextReader reader("ab");
  ASSERT_TRUE(reader.open("").Ok());
  EXPECT_EQ(reader.getc(), 'a');
  EXPECT_TRUE(reader.Rewind("").Ok());
  EXPECT_TRUE(reader.IsOpen());
  EXPECT_EQ(reader.getc(), 'a');
}

TEST(FileReader, FileThatIsNone_CantBeOpened) {
  FileReader reader;
  EXPECT_EQ(reader.open("/nowhere/none").error, "/nowhere/none: No such file or directory");
  EXPECT_FALSE(reader.IsOpen());
  EXPECT_EQ(reader.read(nullptr, 0), 0u);
  reader.close();
}

}  // namespace
}  // namespace zendry
