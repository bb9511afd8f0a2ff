#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>

#include "TestBuild.h"
#include "ZendryMakeRun.h"

// The build commands with the real compilers found on PATH.

namespace zendry {
namespace {

struct RealBuild : testing::Test {
  test::TestBuild build;
  RealBuild() {
    for (auto& set : theIdeConfig.toolSets) set.folder = "";
  }
  std::string Run(const std::string& program) {
    return test::Program({build.Path(program)}, build.files.Path()).Wait().out;
  }
};

const char* const cEvilStems[] = {
    "a b",   " a",     "a ",    "a\tb",   "a\"b",       "\"",       "\"\"",     "a'b",
    "$HOME", "a$(x)b", "`x`",   "a;b",    "a&b",        "a|b",      "a<b",      "a>b",
    "a#b",   "#",      "a:b",   "a@b",    "@",          "@list",    "a%b",      "%s%n",
    "%{x}",  "-o",     "-",     "--help", "-Wl,x",      "a\nb",     "a\rb",     "a*b",
    "?",     "[a]",    "{a,b}", "(a)",    "~",          "!a",       "^a",       "a=b",
    "a,b",   "+a",     "a..b",  "..a",    "\x01\x1b[m", "\xc3\xa4", "\xff\xfe", "a \"b\" -o c"};

// One program of many sources, each with a name of its own kind, linked directly and by way of a
// library.
TEST_F(RealBuild, SourcesWithEvilNames_BuildAndRun) {
  std::string main = "#include <stdio.h>\n", sum = "0";
  int number = 0;
  for (const char* stem : cEvilStems) {
    const std::string function = "f" + std::to_string(++number);
    build.Add(std::string(stem) + ".c", "int " + function + "(void) { return 1; }\n");
    main += "int " + function + "(void);\n";
    sum += " + " + function + "()";
  }
  build.Add("main file.c", main + "int main(void) { printf(\"%d\", " + sum + "); return 0; }\n");
  build.project.outName = "-my \"program\" $x.exe";
  ASSERT_TRUE(build.builder.Build(Builder::Scope::cStale)) << build.shell.output;
  EXPECT_TRUE(build.builder.HasSucceeded());
  EXPECT_EQ(Run("out-rel/" + build.project.outName), std::to_string(number));
  build.shell.output.clear();
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.shell.output, testing::Not(testing::HasSubstr("Compiling")));
}

// In both modes, with a macro that needs quotes.
TEST_F(RealBuild, TheMakefile_MakesTheSameObjects) {
  build.Add("a.cpp",
            "const char* text() { return TEXT; }\nint main() { return text()[1] - ' '; }\n");
  build.Add("b.c", "int twice(int i) { return DOUBLE(i); }\n");
  const std::string macros = " \"-DTEXT=\\\"a $b\\\"\" -DDOUBLE(x)=(2*x)";
  build.project.releaseOptions.comp = "-O2" + macros;
  build.project.debugOptions.comp = "-g" + macros;
  for (const int mode : {zendry::cRelease, zendry::cDebug}) {
    build.project.SetMode(mode);
    ASSERT_TRUE(build.builder.Build(Builder::Scope::cAll)) << build.shell.output;
    ASSERT_EQ(build.project.ExportMakefile("").error, "");
    const auto make =
        test::Program({"/usr/bin/make", "-B", "-C", build.Path("")}, build.files.Path()).Wait();
    ASSERT_EQ(make.status, 0) << make.out << build.files.Read("Makefile");
    const std::string folder = mode == zendry::cRelease ? "out-rel/" : "out-dbg/";
    for (const char* object : {"a.o", "b.o"})
      EXPECT_EQ(build.files.Read(object), build.files.Read(folder + object)) << object;
  }
}

TEST_F(RealBuild, BaseNameTwice_BothAreLinked) {
  build.Add("a/x.c", "int other(void);\nint main(void) { return other(); }\n");
  build.Add("b/x.c", "int other(void) { return 0; }\n");
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale)) << build.shell.output;
  EXPECT_EQ(Run("out-rel/p.exe"), "");
}

// Waits until the file system's clock has gone on, so that a file written now is newer than all
// that exist.
void WaitForNewTime(const test::TempFolder& folder) {
  const auto timeOf = [&folder] {
    struct stat info;
    stat(folder.Write("clock", "").c_str(), &info);
    return std::pair(info.st_mtim.tv_sec, info.st_mtim.tv_nsec);
  };
  const auto first = timeOf();
  while (timeOf() == first) continue;
}

// Random edits of sources and headers: what Make builds behaves as what Rebuild builds.
TEST_F(RealBuild, RandomEdits_MakeGivesWhatRebuildGives) {
  constexpr int cSources = 4, cHeaders = 4, cRounds = 8;
  std::mt19937 random(20);
  const auto below = [&random](int n) {
    return static_cast<int>(random() % static_cast<unsigned>(n));
  };
  // Header i includes header i + 1 and shows a number; source i includes header i.
  const auto header = [&](int i) {
    const std::string next =
        i + 1 < cHeaders ? "#include \"h" + std::to_string(i + 1) + ".h\"\n" : "";
    return next + "static const int h" + std::to_string(i) + " = " + std::to_string(below(1000)) +
           ";\n";
  };
  const auto source = [&](int i) {
    std::string values;
    for (int h = i; h < cHeaders; ++h) values += " + 7 * h" + std::to_string(h);
    return "#include \"h" + std::to_string(i) + ".h\"\nint s" + std::to_string(i) +
           "(void) { return " + std::to_string(below(1000)) + values + "; }\n";
  };
  for (int i = 0; i < cHeaders; ++i) build.Add("h" + std::to_string(i) + ".h", header(i));
  for (int i = 0; i < cSources; ++i) build.Add("s" + std::to_string(i) + ".c", source(i));
  build.Add("main.c",
            "#include <stdio.h>\nint s0(void), s1(void), s2(void), s3(void);\nint main(void) { "
            "printf(\"%d %d %d %d\", s0(), s1(), s2(), s3()); return 0; }\n");
  ASSERT_TRUE(build.builder.Build(Builder::Scope::cStale));
  std::string last = Run("out-rel/p.exe");
  for (int round = 0; round < cRounds; ++round) {
    WaitForNewTime(build.install);
    for (int edits = 1 + below(2); edits > 0; --edits) {
      const int i = below(cHeaders);
      if (below(3))
        build.files.Write("h" + std::to_string(i) + ".h", header(i));
      else
        build.files.Write("s" + std::to_string(i) + ".c", source(i));
    }
    ASSERT_TRUE(build.builder.Build(Builder::Scope::cStale));
    const std::string made = Run("out-rel/p.exe");
    ASSERT_TRUE(build.builder.Build(Builder::Scope::cAll));
    EXPECT_EQ(made, Run("out-rel/p.exe")) << "round " << round;
    EXPECT_NE(made, last);
    last = made;
  }
}

}  // namespace
}  // namespace zendry
