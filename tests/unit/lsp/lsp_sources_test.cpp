#include "lsp/LspSources.h"

#include <gtest/gtest.h>

#include "LspTalk.h"
#include "ScopedHome.h"
#include "TempFolder.h"

namespace zendry {
namespace {

class LspSourcesTest : public testing::Test {
 protected:
  std::vector<std::string> Relative(std::vector<std::string> paths) const {
    for (std::string& path : paths) path.erase(0, folder.Path().size() + 1);
    return paths;
  }
  std::string Project(const std::string& name, const std::string& source) const {
    return folder.Write(name, "<ide>\n<set parse=\"y\"/></ide>\n<src>\n\t<file name=\"" + source +
                                  "\"/>\n</src>\n");
  }

  test::TempFolder folder;
};

using Names = std::vector<std::string>;

TEST_F(LspSourcesTest, Walk_TakesSourcesAndPassesOverWhatBuildsLeave) {
  for (const char* name :
       {"a.cpp", "b.h", "sub/c.c", "note.txt", ".hidden/x.cpp", "build/x.cpp", "build-debug/x.cpp",
        "out-rel/x.cpp", "node_modules/x.c", "deep/CMakeCache.txt", "deep/x.cpp", "builder.cpp"})
    folder.Write(name, "int a;\n");
  EXPECT_EQ(Relative(SourcesBelow(folder.Path()).files),
            (Names{"a.cpp", "b.h", "builder.cpp", "sub/c.c"}));
}

TEST_F(LspSourcesTest, LinksToFolders_ArentFollowed) {
  folder.Write("a/a.cpp", "");
  std::filesystem::create_directory_symlink(folder.Path(), folder.Path("a/loop"));
  EXPECT_EQ(Relative(SourcesBelow(folder.Path()).files), Names{"a/a.cpp"});
}

TEST_F(LspSourcesTest, LargestFile_IsTaken_OneByteMoreIsNot) {
  const auto size = static_cast<size_t>(LspSources::cLargestFile);
  EXPECT_TRUE(IsSourceToRead(folder.Write("fits.c", std::string(size, '\n'))));
  EXPECT_FALSE(IsSourceToRead(folder.Write("larger.c", std::string(size + 1, '\n'))));
  EXPECT_FALSE(IsSourceToRead(folder.Path("missing.c")));
}

TEST_F(LspSourcesTest, OneProjectFile_IsFound_TwoAreNone) {
  EXPECT_EQ(ProjectFileIn(folder.Path()), "");
  const std::string one = Project("one.zpj", "a.cpp");
  EXPECT_EQ(ProjectFileIn(folder.Path()), one);
  Project("two.zpj", "b.cpp");
  EXPECT_EQ(ProjectFileIn(folder.Path()), "");
}

TEST_F(LspSourcesTest, Commands_GiveSourcesAndFolders) {
  folder.Write("a b.cpp", "");
  folder.Write("sub/c.c", "");
  const std::string path = folder.Write(
      "compile_commands.json",
      R"([{"directory": ")" + folder.Path() +
          R"(", "file": "a b.cpp", "command": "g++ -Iinc -isystem /usr/include \"a b.cpp\""},
          {"directory": ")" +
          folder.Path("sub") +
          R"(", "file": "c.c", "arguments": ["cc", "-I", "../inc", "-I..", "c.c"]},
          {"directory": ")" +
          folder.Path() + R"(", "file": "missing.c", "command": "cc"}, 7])");
  const LspSources sources = SourcesOfCommands(path, folder.Path());
  EXPECT_EQ(Relative(sources.files), (Names{"a b.cpp", "sub/c.c"}));
  EXPECT_EQ(sources.folders, (Names{folder.Path("inc"), folder.Path()}));
  EXPECT_EQ(sources.note, "");
}

TEST_F(LspSourcesTest, BrokenCommands_AreSaid) {
  for (const char* text : {"", "{}", "[", "nonsense"}) {
    const std::string path = folder.Write("compile_commands.json", text);
    EXPECT_EQ(SourcesOfCommands(path, folder.Path()).note, path + ": is no list of commands");
  }
}

// The names of a symbol's classes that a server knows in the folder.
std::string Known(const std::string& root) {
  test::LspTalk talk(root);
  std::string names;
  for (const Json& symbol : talk.ResultOf("workspace/symbol", {{"query", "only"}}))
    names += symbol["name"].get<std::string>() + " ";
  return names;
}

TEST_F(LspSourcesTest, ProjectFile_GoesBeforeCommands_CommandsBeforeTheWalk) {
  folder.Write("walked.cpp", "class OnlyWalked { int a; };\n");
  EXPECT_EQ(Known(folder.Path()), "OnlyWalked ");
  folder.Write("src/listed.cpp", "#include <inc.h>\n#include \"near.h\"\n");
  folder.Write("src/near.h", "class OnlyNear { int a; };\n");
  folder.Write("inc/inc.h", "class OnlyIncluded { int a; };\n");
  folder.Write("compile_commands.json",
               R"([{"directory": ")" + folder.Path() +
                   R"(", "file": "src/listed.cpp", "command": "g++ -Iinc src/listed.cpp"}])");
  EXPECT_EQ(Known(folder.Path()), "OnlyIncluded OnlyNear ");
  folder.Write("own.cpp", "class OnlyOwn { int a; };\n");
  Project("own.zpj", "own.cpp");
  EXPECT_EQ(Known(folder.Path()), "OnlyOwn ");
}

// As a user has it who hasn't told anybody how the code is compiled.
TEST_F(LspSourcesTest, HeaderThatNoSwitchLeadsTo_IsLookedForInTheFoldersIncludes) {
  folder.Write("src/listed.cpp", "#include <lib.h>\n#include <else.h>\n");
  folder.Write("include/lib.h", "class OnlyIncluded { int a; };\n");
  folder.Write("other/else.h", "class OnlyElsewhere { int a; };\n");
  folder.Write("compile_commands.json",
               R"([{"directory": ")" + folder.Path() +
                   R"(", "file": "src/listed.cpp", "command": "g++ src/listed.cpp"}])");
  EXPECT_EQ(Known(folder.Path()), "OnlyIncluded ");
  folder.Write("inner/src/listed.cpp", "#include <lib.h>\n");
  folder.Write("inner/compile_commands.json",
               R"([{"directory": ")" + folder.Path("inner") +
                   R"(", "file": "src/listed.cpp", "command": "g++ src/listed.cpp"}])");
  EXPECT_EQ(Known(folder.Path("inner")), "") << "outside of the folder";
}

TEST_F(LspSourcesTest, HomeFolder_IsNotWalked) {
  folder.Write("walked.cpp", "class OnlyWalked { int a; };\n");
  const test::ScopedHome home(folder.Path());
  EXPECT_EQ(Known(folder.Path()), "");
  folder.Write("sub/walked.cpp", "class OnlyBelow { int a; };\n");
  EXPECT_EQ(Known(folder.Path("sub")), "OnlyBelow ");
}

TEST_F(LspSourcesTest, NothingIsWritten) {
  folder.Write("own.cpp", "int a;\n");
  Project("own.zpj", "own.cpp");
  test::LspTalk talk(folder.Path());
  talk.Open(folder.Path("own.cpp"), "int b;\n");
  talk.Ask("shutdown", nullptr);
  EXPECT_EQ(folder.Names(), (Names{"own.cpp", "own.zpj"}));
}

}  // namespace
}  // namespace zendry
