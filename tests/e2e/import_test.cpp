#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ZendryMakeRun.h"

// zendry-make --import and --compile-commands, with the real compilers.

namespace {

using test::Ended;
using testing::HasSubstr;

struct Import : testing::Test {
  test::MakeInstall install;
  test::TempFolder files;

  void WriteProgram() {
    files.Write("code/src/main.c", "#include <hello.h>\nint main(void) { return Hello(); }\n");
    files.Write("code/src/hello.c", "#include \"hello.h\"\nint Hello(void) { return ANSWER; }\n");
    files.Write("code/include/hello.h", "#define ANSWER 42\nint Hello(void);\n");
    files.Write("code/tools/other.c", "int main(void) { return 1; }\n");
  }
  Ended Run(const std::string& program) {
    return test::Program({files.Path(program)}, files.Path()).Wait();
  }
};

TEST_F(Import, AFolder_BuildsAtOnce_AndNothingElseIsWritten) {
  WriteProgram();
  const std::string project = files.Path("code/p.zpj");
  const Ended made = install.Make({"--import", files.Path("code"), "-o", project});
  EXPECT_EQ(made.status, 0) << made.err;
  EXPECT_THAT(made.out, HasSubstr("2 sources and 1 header; a console program, main in src/main.c"));
  EXPECT_THAT(made.out, HasSubstr("left out (has a main too): tools/other.c"));
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(files.Path("code")))
    names.push_back(entry.path().filename());
  EXPECT_THAT(names, testing::UnorderedElementsAre("p.zpj", "src", "include", "tools"));
  EXPECT_EQ(install.Make({project}).status, 0);
  EXPECT_EQ(Run("code/out-rel/p.exe").status, 42);
}

TEST_F(Import, TheMainAskedFor_IsTaken) {
  WriteProgram();
  const std::string project = files.Path("code/p.zpj");
  EXPECT_EQ(install.Make({"--import", files.Path("code"), "-o", project, "--main", "tools/other.c"})
                .status,
            0);
  EXPECT_EQ(install.Make({project}).status, 0);
  EXPECT_EQ(Run("code/out-rel/p.exe").status, 1);
}

TEST_F(Import, AnExistingProject_AndWrongWords_AreRefused) {
  WriteProgram();
  const std::string project = files.Write("code/p.zpj", "mine");
  const Ended there = install.Make({"--import", files.Path("code"), "-o", project});
  EXPECT_EQ(there.status, 2);
  EXPECT_THAT(there.err, HasSubstr("is there already"));
  EXPECT_EQ(files.Read("code/p.zpj"), "mine");
  EXPECT_EQ(install.Make({"--import", files.Path("code")}).status, 2);
  EXPECT_EQ(install.Make({"--import", files.Path("code"), "-o", files.Path("p.txt")}).status, 2);
  EXPECT_EQ(install.Make({"--import", files.Path("none"), "-o", files.Path("q.zpj")}).status, 2);
  EXPECT_EQ(install.Make({"--import", files.Path("code"), "-o", files.Path("q.zpj"), "--main", "x"})
                .status,
            2);
  EXPECT_FALSE(files.Exists("q.zpj"));
}

TEST_F(Import, CompileCommandsOfAProject_ImportToTheSameProgram) {
  WriteProgram();
  const std::string project = files.Path("code/p.zpj");
  ASSERT_EQ(install.Make({"--import", files.Path("code"), "-o", project}).status, 0);
  const Ended written = install.Make({"--compile-commands", project});
  EXPECT_EQ(written.status, 0) << written.err;
  EXPECT_FALSE(files.Exists("code/out-rel")) << "nothing is built";
  const std::string second = files.Path("code/second.zpj");
  const Ended made =
      install.Make({"--import", files.Path("code/compile_commands.json"), "-o", second});
  EXPECT_EQ(made.status, 0) << made.err;
  EXPECT_EQ(install.Make({second}).status, 0);
  EXPECT_EQ(Run("code/out-rel/second.exe").status, 42);
}

TEST_F(Import, SwitchesThatRunPrograms_AreLeftOutAndListed) {
  files.Write("a.c", "int main(void) { return 7; }\n");
  const std::string commands = files.Write(
      "compile_commands.json",
      R"([{"directory":".","file":"a.c","arguments":["cc","-wrapper","./evil","-DX","a.c"]}])");
  const Ended made = install.Make({"--import", commands, "-o", files.Path("p.zpj")});
  EXPECT_EQ(made.status, 0) << made.err;
  EXPECT_THAT(made.out, HasSubstr("can run a program, left out: -wrapper ./evil"));
  EXPECT_EQ(install.Make({files.Path("p.zpj")}).status, 0);
  EXPECT_EQ(Run("out-rel/p.exe").status, 7);
}

}  // namespace
