#include "build/CompileCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TempFolder.h"
#include "base/QuietShell.h"
#include "build/Builder.h"
#include "project/ImportCommands.h"
#include "project/Project.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(CompileCommands, AreTheLinesOfTheBuild_AndCanBeImportedAgain) {
  test::TempFolder files;
  files.Write("src/a.cpp", "int main() {}\n");
  files.Write("src/b.c", "");
  Project project;
  project.Init(files.Path("p.zpj"), cConsole);
  for (const char* name : {"src/a.cpp", "src/b.c", "src/c.h"}) project.AddFile(name);
  project.includePath = "-Iinc \"-Ia b\"";
  project.releaseOptions.comp = "-O2 -DX=1 -std=c++17";
  QuietShell shell;
  Builder builder;
  builder.Bind(project, shell);
  const CommandsText text = CompileCommandsText(builder.CompileCommands());
  EXPECT_THAT(text.leftOut, testing::IsEmpty());
  const std::string path = files.Path(cCompileCommandsName);
  ASSERT_EQ(SaveCompileCommands(path, text.text).error, "");
  const Import import = ReadCommands(path, files.Path());
  EXPECT_EQ(import.error, "");
  ASSERT_GE(import.files.size(), 2u);
  EXPECT_EQ(import.files[0].name, "src/a.cpp");
  EXPECT_EQ(import.files[1].name, "src/b.c");
  EXPECT_THAT(import.switches, ElementsAre("-std=c++17", "-DX=1"));
  EXPECT_EQ(import.includeFolders[0], "inc");
  EXPECT_EQ(import.includeFolders[1], "a b");
}

TEST(CompileCommands, AFileOfAnotherProgram_IsNotReplaced_OursIs) {
  test::TempFolder files;
  const std::string path = files.Write("c.json", "[\n  {\n    \"file\": \"a\"\n  }\n]\n");
  EXPECT_THAT(SaveCompileCommands(path, "[]\n").error, HasSubstr("another program"));
  EXPECT_THAT(files.Read("c.json"), HasSubstr("\"a\""));
  const std::string ours = CompileCommandsText({{"/x", "a.cpp", "g++ a.cpp", "a.o"}}).text;
  files.Write("c.json", ours);
  EXPECT_EQ(SaveCompileCommands(path, "[]\n").error, "");
  EXPECT_EQ(files.Read("c.json"), "[]\n");
}

TEST(CompileCommands, ANameThatIsNotUtf8_IsLeftOut) {
  const CommandsText text = CompileCommandsText(
      {{"/x", "a\xff.cpp", "g++ a\xff.cpp", "a.o"}, {"/x", "b.c", "gcc b.c", "b.o"}});
  EXPECT_THAT(text.leftOut, ElementsAre("a\xff.cpp"));
  EXPECT_THAT(text.text, HasSubstr("b.c"));
}

}  // namespace
}  // namespace zendry
