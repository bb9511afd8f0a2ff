#include "WindresOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Arguments = std::vector<std::string>;

TEST(WindresOptions, LineOfTheBuild_IsUnderstood) {
  const WindresOptions options =
      ReadWindresOptions({"-i", "my app.rc", "-o", "out-rel/app.res", "-D", "_WIN32_WINNT=0x0501",
                          "-O", "coff", "-Wall", "-Wextra", "-fno-diagnostics-show-caret",
                          "-fdiagnostics-color=never", "-I", "/opt/libs/mavro"});
  EXPECT_EQ(options.error, "");
  EXPECT_EQ(options.input, "my app.rc");
  EXPECT_EQ(options.output, "out-rel/app.res");
  EXPECT_THAT(options.defines, ElementsAre("_WIN32_WINNT=0x0501"));
  EXPECT_THAT(options.includeFolders, ElementsAre("/opt/libs/mavro"));
}

TEST(WindresOptions, NamesWithoutOptions_AreScriptAndObject) {
  const WindresOptions options = ReadWindresOptions({"in.rc", "-O", "coff", "out.o"});
  EXPECT_EQ(options.error, "");
  EXPECT_EQ(options.input, "in.rc");
  EXPECT_EQ(options.output, "out.o");
}

TEST(WindresOptions, LongForms_AreTheShortOnes) {
  const WindresOptions options = ReadWindresOptions(
      {"--input=in.rc", "--output", "out.o", "--include-dir=inc", "--define", "A=1", "--undefine=B",
       "--input-format=rc", "--output-format=coff", "--verbose"});
  EXPECT_EQ(options.error, "");
  EXPECT_EQ(options.input, "in.rc");
  EXPECT_EQ(options.output, "out.o");
  EXPECT_THAT(options.includeFolders, ElementsAre("inc"));
  EXPECT_THAT(options.defines, ElementsAre("A=1"));
  EXPECT_THAT(options.undefines, ElementsAre("B"));
  EXPECT_TRUE(options.isVerbose);
}

TEST(WindresOptions, ValuesMayBeJoined) {
  const WindresOptions options =
      ReadWindresOptions({"-iin.rc", "-oout.o", "-Iinc", "-DA", "-UB", "-Jrc", "-Ocoff"});
  EXPECT_EQ(options.error, "");
  EXPECT_EQ(options.input, "in.rc");
  EXPECT_EQ(options.output, "out.o");
  EXPECT_THAT(options.includeFolders, ElementsAre("inc"));
  EXPECT_THAT(options.defines, ElementsAre("A"));
  EXPECT_THAT(options.undefines, ElementsAre("B"));
}

TEST(WindresOptions, OptionsWithoutMeaningHere_AreDropped) {
  const WindresOptions options = ReadWindresOptions({"-r",
                                                     "-v",
                                                     "-l",
                                                     "0x409",
                                                     "--language=9",
                                                     "-F",
                                                     "pe-x86-64",
                                                     "--target=elf64",
                                                     "-c",
                                                     "65001",
                                                     "--codepage=1252",
                                                     "--use-temp-file",
                                                     "--no-use-temp-file",
                                                     "-O2",
                                                     "-g",
                                                     "-m64",
                                                     "-pipe",
                                                     "-s",
                                                     "-std=c++20",
                                                     "in.rc",
                                                     "out.o"});
  EXPECT_EQ(options.error, "");
  EXPECT_EQ(options.input, "in.rc");
  EXPECT_EQ(options.output, "out.o");
}

TEST(WindresOptions, Preprocessor_IsSplitByBlanksAndQuotes) {
  const WindresOptions options = ReadWindresOptions(
      {"--preprocessor", "\"my gcc\" -E -xc", "--preprocessor-arg", "-DX=1", "a", "b"});
  EXPECT_THAT(options.preprocessor, ElementsAre("my gcc", "-E", "-xc"));
  EXPECT_THAT(options.preprocessorArguments, ElementsAre("-DX=1"));
}

TEST(WindresOptions, AfterTwoDashes_AllAreFiles) {
  const WindresOptions options = ReadWindresOptions({"--", "-in.rc", "-out.o"});
  EXPECT_EQ(options.input, "-in.rc");
  EXPECT_EQ(options.output, "-out.o");
}

TEST(WindresOptions, Questions_NeedNoFiles) {
  EXPECT_TRUE(ReadWindresOptions({"-h"}).wantsHelp);
  EXPECT_TRUE(ReadWindresOptions({"--version"}).wantsVersion);
  EXPECT_EQ(ReadWindresOptions({"--help"}).error, "");
}

struct WrongLine {
  const char* name;
  Arguments arguments;
  const char* error;
};
void PrintTo(const WrongLine& line, std::ostream* out) {
  *out << line.name;
}

struct WindresWrongLine : testing::TestWithParam<WrongLine> {};

TEST_P(WindresWrongLine, IsRefusedInWords) {
  EXPECT_EQ(ReadWindresOptions(GetParam().arguments).error, GetParam().error);
}

const WrongLine cWrongLines[] = {
    {"nothing", {}, "no script is named"},
    {"no_object", {"a.rc"}, "no object is named: -o FILE"},
    {"three_files", {"a", "b", "c"}, "one script and one object are expected, and then comes c"},
    {"value_missing", {"a", "b", "-I"}, "-I needs a value"},
    {"long_value_missing", {"a", "b", "--define"}, "--define needs a value"},
    {"unknown", {"-x"}, "there is no option -x"},
    {"unknown_long", {"--wide"}, "there is no option --wide"},
    {"empty_long", {"--=x"}, "there is no option --=x"},
    {"value_for_none", {"--verbose=1"}, "there is no option --verbose=1"},
    {"res_output",
     {"-O", "res", "a", "b"},
     "the format res can't be written, only an object: -O coff"},
    {"res_input", {"-J", "res", "a", "b"}, "the format res can't be read, only rc"},
};
INSTANTIATE_TEST_SUITE_P(Windres, WindresWrongLine, testing::ValuesIn(cWrongLines),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace zendry
