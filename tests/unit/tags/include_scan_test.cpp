#include "tags/IncludeScan.h"

#include <gtest/gtest.h>

#include <string>

namespace zendry {
namespace {

// Each entry as "FLAG NAME;".
std::string Scan(std::string_view text) {
  std::string names;
  for (const IncludeRec& entry : ScanIncludes(text))
    names += std::to_string(entry.quoted) + " " + entry.name + ";";
  return names;
}

TEST(IncludeScan, QuotedName_HasFlagOne) {
  EXPECT_EQ(Scan("#include \"a.h\"\n"), "1 a.h;");
}

TEST(IncludeScan, AngleName_HasFlagZero) {
  EXPECT_EQ(Scan("#include <sys/a.h>\n"), "0 sys/a.h;");
}

TEST(IncludeScan, SeveralLines_KeepTheirOrder) {
  EXPECT_EQ(Scan("#include <b>\nint i;\n#include \"a\"\n#include \"a\"\n"), "0 b;1 a;1 a;");
}

TEST(IncludeScan, WhiteSpace_IsIgnoredEverywhere) {
  EXPECT_EQ(Scan("#  in\tclude\v\f <a b.h>\n"), "0 ab.h;");
}

TEST(IncludeScan, BranchOfAnotherPlatform_IsMarked) {
  const auto found =
      ScanIncludes("#ifdef _WIN32\n# include <a>\n#else\n# include <b>\n#endif\n#include <c>\n");
  ASSERT_EQ(found.size(), 3u);
  EXPECT_TRUE(found[0].isElsewhere);
  EXPECT_FALSE(found[1].isElsewhere);
  EXPECT_FALSE(found[2].isElsewhere);
}

TEST(IncludeScan, HashAfterABlank_IsNone) {
  EXPECT_EQ(Scan(" #include \"a.h\"\n\t#include \"b.h\"\n"), "");
}

TEST(IncludeScan, OtherDirectives_AreNone) {
  EXPECT_EQ(Scan("#define X \"a\"\n#includes\n#incl\n#\n##include \"a\"\n#INCLUDE \"a\"\n"), "");
}

TEST(IncludeScan, CommentsAndSkippedBranches_Count) {
  EXPECT_EQ(Scan("/*\n#include \"a.h\"\n*/\n#if 0\n#include \"b.h\"\n#endif\n"), "1 a.h;1 b.h;");
}

TEST(IncludeScan, AllLineEnds_EndALine) {
  EXPECT_EQ(Scan("#include \"a\"\r\n#include \"b\"\r#include \"c\"\n#include \"d\""),
            "1 a;1 b;1 c;1 d;");
  EXPECT_EQ(Scan("#include \"a\r\nb\"\n"), "");
  EXPECT_EQ(Scan("\r\r#include \"a\"\r\r"), "1 a;");
}

TEST(IncludeScan, NameThatIsNotClosed_IsNone) {
  EXPECT_EQ(Scan("#include \"a.h\n#include <b.h\n#include\n#include \""), "");
  EXPECT_EQ(Scan("#include <a.h\"\n"), "");
}

TEST(IncludeScan, RestOfTheLine_IsPassedOver) {
  EXPECT_EQ(Scan("#include \"a.h\" \"b.h\" // #include \"c.h\"\n"), "1 a.h;");
}

TEST(IncludeScan, OtherDelimiter_IsClosedByAQuote) {
  EXPECT_EQ(Scan("#include NAME\"\n"), "1 AME;");
  EXPECT_EQ(Scan("#include NAME\n"), "");
}

TEST(IncludeScan, NameOf244Characters_IsTheLongest) {
  const std::string name(244, 'x');
  EXPECT_EQ(Scan("#include \"" + name + "\"\n"), "1 " + name + ";");
  EXPECT_EQ(Scan("#include \"" + name + "x\"\n#include \"a\"\n"), "1 a;");
}

TEST(IncludeScan, BrokenText_HasNone) {
  EXPECT_EQ(Scan(""), "");
  EXPECT_EQ(Scan(std::string(1000000, '\0')), "");
  EXPECT_EQ(Scan(std::string(1000000, '\r')), "");
  EXPECT_EQ(Scan(std::string(1000000, '#')), "");
  EXPECT_EQ(Scan("#include \"" + std::string(1000000, ' ')), "");
}

}  // namespace
}  // namespace zendry
