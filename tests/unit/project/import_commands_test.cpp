#include "project/ImportCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TempFolder.h"
#include "project/Project.h"

// A project made of a compile_commands.json.

namespace zendry {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(ShellWords, AreSplitAsByAShell_WithoutExpansion) {
  EXPECT_THAT(SplitShellWords("a  b\tc\n"), ElementsAre("a", "b", "c"));
  EXPECT_THAT(SplitShellWords(R"("a b" 'c "d' e\ f)"), ElementsAre("a b", "c \"d", "e f"));
  EXPECT_THAT(SplitShellWords(R"(-DX=\"1\" "-DY=\"2\"" '-DZ="3"')"),
              ElementsAre("-DX=\"1\"", "-DY=\"2\"", "-DZ=\"3\""));
  EXPECT_THAT(SplitShellWords(R"-("a\b" '' "$(x)")-"), ElementsAre("a\\b", "", "$(x)"));
  EXPECT_THAT(SplitShellWords("\"open 'x"), ElementsAre("open 'x"));
  EXPECT_THAT(SplitShellWords(""), IsEmpty());
}

TEST(CommandSwitches, AreSortedByTheirUse) {
  const CommandSwitches read =
      ReadSwitches({"ccache", "/usr/bin/g++", "-I",     "inc",     "-isystem/usr/x",
                    "-DA",    "-D",           "B=1",    "-UC",     "-std=gnu++17",
                    "-Wall",  "-fPIC",        "-O3",    "-g",      "-MD",
                    "-MF",    "x.d",          "-o",     "x.o",     "-c",
                    "x.cpp",  "-include",     "<none>", "--param", "a=1",
                    "-quux"},
                   "/work");
  EXPECT_THAT(read.includeFolders, ElementsAre("/work/inc", "/usr/x"));
  EXPECT_THAT(read.macros, ElementsAre("-DA", "-DB=1", "-UC"));
  EXPECT_EQ(read.standard, "-std=gnu++17");
  EXPECT_THAT(read.others, ElementsAre("-Wall", "-fPIC", "-include <none>", "--param a=1"));
  EXPECT_THAT(read.risky, IsEmpty());
  EXPECT_THAT(read.dropped, ElementsAre("-quux"));
  EXPECT_EQ(read.output, "x.o");
}

TEST(CommandSwitches, ThatCanRunPrograms_AreSetApart) {
  const CommandSwitches read =
      ReadSwitches({"gcc", "-wrapper", "./w", "-fplugin=p.so", "-fplugin-arg-p-x=1", "-specs=s",
                    "-B", "dir", "-Bdir2", "@file", "-Xclang", "-load", "-Wa,x", "-Wl,y", "-fPIC",
                    "-Wp,-DX", "-Wp,-DX,-fplugin=p.so", "-fmodule-mapper=|x", "-Wextra"},
                   "/work");
  EXPECT_THAT(read.risky,
              ElementsAre("-wrapper ./w", "-fplugin=p.so", "-fplugin-arg-p-x=1", "-specs=s",
                          "-B dir", "-Bdir2", "@file", "-Xclang -load", "-Wa,x", "-Wl,y",
                          "-Wp,-DX,-fplugin=p.so", "-fmodule-mapper=|x"));
  EXPECT_THAT(read.macros, ElementsAre("-DX"));
  EXPECT_THAT(read.others, ElementsAre("-fPIC", "-Wextra"));
}

struct ImportCommands : testing::Test {
  test::TempFolder files;

  std::string Entry(const std::string& file, const std::string& switches) {
    return "{\"directory\": \"" + files.Path() + "\", \"command\": \"g++ " + switches + " -c " +
           file + "\", \"file\": \"" + file + "\"}";
  }
  Import Read(const std::string& json, const std::string& folder = "") {
    return ReadCommands(files.Write("compile_commands.json", json), folder);
  }
  static std::vector<std::string> Taken(const Import& import) {
    std::vector<std::string> names;
    for (const ImportFile& file : import.files)
      if (file.taken) names.push_back(file.name);
    return names;
  }
};

TEST_F(ImportCommands, FilesFoldersMacrosAndStandard_AreTaken) {
  files.Write("src/a.cpp", "int main() {}\n");
  files.Write("src/b.cpp", "");
  files.Write("src/b.h", "");
  files.Write("inc/c.h", "");
  const Import import = Read("[" + Entry("src/a.cpp", "-Iinc -DA=1 -std=c++17") + ",\n" +
                                 Entry("src/b.cpp", "-Iinc -DA=1 -std=c++17") + "]",
                             files.Path());
  EXPECT_EQ(import.error, "");
  EXPECT_THAT(Taken(import), ElementsAre("src/a.cpp", "src/b.cpp", "inc/c.h", "src/b.h"));
  EXPECT_THAT(import.includeFolders, ElementsAre("inc"));
  EXPECT_THAT(import.switches, ElementsAre("-std=c++17", "-DA=1"));
  EXPECT_EQ(import.mainFile, "src/a.cpp");
  EXPECT_THAT(import.notes, IsEmpty());
  EXPECT_THAT(import.findings, IsEmpty());
}

TEST_F(ImportCommands, Arguments_AndRelativeDirectories) {
  files.Write("src/a.c", "");
  const std::string path = files.Write(
      "build/compile_commands.json",
      R"([{"directory": "..", "arguments": ["cc", "-I", "x y", "src/a.c"], "file": "src/a.c"}])");
  const Import import = ReadCommands(path, "");
  EXPECT_EQ(import.folder, files.Path("src"));
  EXPECT_THAT(Taken(import), ElementsAre("a.c"));
  EXPECT_THAT(import.includeFolders, ElementsAre("../x y"));
}

TEST_F(ImportCommands, WhatDiffers_IsSaid) {
  for (const char* name : {"a.cpp", "b.cpp", "c.cpp", "d.c"}) files.Write(name, "");
  const Import import =
      Read("[" + Entry("a.cpp", "-DX=1 -std=c++17 -DONLY") + "," +
           Entry("b.cpp", "-DX=2 -std=c++17") + "," + Entry("c.cpp", "-DX=2 -std=c++20") + "," +
           Entry("d.c", "-DX=2 -std=c99") + "," + Entry("a.cpp", "-DTWICE") + "]");
  EXPECT_THAT(import.switches, ElementsAre("-std=c++17", "-DX=2", "-DONLY"));
  EXPECT_THAT(import.notes,
              ElementsAre("1 files are compiled more than once, the first way is taken"));
  EXPECT_THAT(import.findings,
              testing::UnorderedElementsAre(
                  "differs: -DX=2 is given to 3 of 4 files, the project gives it to all",
                  "differs: -DX=1 of 1 files is left out for -DX=2",
                  "differs: -DONLY is given to 1 of 4 files, the project gives it to all",
                  "differs: -std=c++20 of 1 files, the project has -std=c++17",
                  "differs: -std=c99 of 1 files, the project has -std=c++17"));
}

TEST_F(ImportCommands, OtherProgramsOfCmake_AreLeftOutWithTheirOwnSources) {
  files.Write("main.cpp", "int main() {}\n");
  files.Write("lib.cpp", "");
  files.Write("other/t.cpp", "int main() {}\n");
  files.Write("other/help.cpp", "");
  const Import import =
      Read("[" + Entry("lib.cpp", "-o CMakeFiles/lib.dir/lib.cpp.o") + "," +
               Entry("main.cpp", "-DMAIN -o CMakeFiles/prog.dir/main.cpp.o") + "," +
               Entry("other/t.cpp", "-DOTHER -o other/CMakeFiles/t.dir/t.cpp.o") + "," +
               Entry("other/help.cpp", "-o other/CMakeFiles/t.dir/help.cpp.o") + "]",
           files.Path());
  EXPECT_THAT(Taken(import), ElementsAre("lib.cpp", "main.cpp"));
  Import other = import;
  EXPECT_EQ(SettleCommands(other, "other/t.cpp"), "");
  EXPECT_THAT(Taken(other), ElementsAre("lib.cpp", "other/t.cpp", "other/help.cpp"));
  EXPECT_THAT(import.switches, ElementsAre("-DMAIN"));
  EXPECT_THAT(other.switches, ElementsAre("-DOTHER"));
}

TEST_F(ImportCommands, TestsAndExamples_AreLeftOutWithTheirSwitches) {
  files.Write("lib.cpp", "");
  files.Write("tests/t.cpp", "int main() {}\n");
  const std::string tests = Entry("tests/t.cpp", "-DTEST");
  const Import import = Read("[" + Entry("lib.cpp", "-DLIB") + "," + tests + "]", files.Path());
  EXPECT_THAT(Taken(import), ElementsAre("lib.cpp"));
  EXPECT_THAT(import.switches, ElementsAre("-DLIB"));
  EXPECT_EQ(import.mainFile, "");
  EXPECT_THAT(Taken(Read("[" + tests + "]", files.Path())), ElementsAre("tests/t.cpp"));
}

TEST_F(ImportCommands, HostileSwitches_AreListedAndLeftOut_UnlessTheUserTakesThem) {
  files.Write("a.cpp", "");
  Import import = Read("[" + Entry("a.cpp", "-wrapper ./evil -fplugin=x.so -DA") + "]");
  EXPECT_THAT(import.risky, ElementsAre("-wrapper ./evil", "-fplugin=x.so"));
  ASSERT_EQ(WriteImport(import, files.Path("p.zpj"), Replacing::cRefused).error, "");
  EXPECT_EQ(files.Read("p.zpj").find("evil"), std::string::npos);
  EXPECT_THAT(ImportReport(import), Contains("can run a program, left out: -wrapper ./evil"));
  import.takesRisky = true;
  ASSERT_EQ(WriteImport(import, files.Path("p.zpj"), Replacing::cAllowed).error, "");
  EXPECT_THAT(files.Read("p.zpj"), HasSubstr("-wrapper ./evil -fplugin=x.so"));
}

TEST_F(ImportCommands, EntriesWithoutSense_AreCounted) {
  files.Write("a.cpp", "");
  const Import import =
      Read("[" + Entry("a.cpp", "") + "," + Entry("gone.cpp", "") + "," + Entry("x.asm", "") +
           R"(,{"file": 3, "command": "x"},{},{"file":"b.cpp"},{"file":"a.cpp","arguments":[1]},)" +
           R"({"file":"a.cpp","arguments":"g++"},{"extra":{"file":[{}]},"file":["a"]}])");
  EXPECT_EQ(import.error, "");
  EXPECT_THAT(Taken(import), ElementsAre("a.cpp"));
  EXPECT_THAT(import.notes,
              Contains("6 entries have no file, no command or a value of a wrong kind"));
  EXPECT_THAT(import.notes,
              Contains("1 files are not there, the first is " + files.Path("gone.cpp")));
  EXPECT_THAT(import.notes, Contains(HasSubstr("neither C nor C++): " + files.Path("x.asm"))));
}

TEST_F(ImportCommands, ATextCutAnywhere_IsRefused) {
  files.Write("a.cpp", "");
  const std::string text = "[" + Entry("a.cpp", "-DA") + "]";
  EXPECT_EQ(Read(text).error, "");
  for (size_t size = 0; size < text.size(); ++size)
    EXPECT_NE(Read(text.substr(0, size)).error, "") << size;
}

TEST_F(ImportCommands, AnotherText_IsRefusedInWords) {
  EXPECT_THAT(Read("").error, HasSubstr("damaged or cut"));
  EXPECT_THAT(Read("{}").error, HasSubstr("no list of compilations"));
  EXPECT_THAT(Read("[3]").error, HasSubstr("something else"));
  EXPECT_THAT(Read("\"x\"").error, HasSubstr("something else"));
  EXPECT_THAT(Read("[]").error, HasSubstr("names no C or C++ source"));
  EXPECT_THAT(Read(std::string(100000, '[')).error, HasSubstr("something else"));
  EXPECT_THAT(Read(std::string("\0\xff\xfe", 3)).error, HasSubstr("damaged"));
  EXPECT_NE(ReadCommands(files.Path("none.json"), "").error, "");
}

// Of 50 MB with ZENDRY_HUGE_COMMANDS in the environment.
TEST_F(ImportCommands, AHugeFile_IsReadEntryByEntry) {
  const size_t wanted = std::getenv("ZENDRY_HUGE_COMMANDS") ? 50'000'000 : 2'000'000;
  files.Write("a.cpp", "");
  std::string text = "[" + Entry("a.cpp", "-DFIRST");
  const std::string more = "," + Entry("a.cpp", "-D" + std::string(5000, 'X'));
  while (text.size() < wanted) text += more;
  const Import import = Read(text + "]");
  EXPECT_EQ(import.error, "");
  EXPECT_THAT(import.switches, ElementsAre("-DFIRST"));
}

}  // namespace
}  // namespace zendry
