#include "project/HeaderSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "TempFolder.h"
#include "project/CompilerFolders.h"
#include "project/Project.h"
#include "tags/TagLanguages.h"
#include "tags/TagParser.h"

namespace zendry {
namespace {

class HeaderSearchTest : public testing::Test {
 protected:
  // "file:line" with the line from 1; "none".
  std::string Find(const UnplacedName& sought, const OpenTextOf& openText = {}) {
    Project project;
    project.folder = files.Path();
    project.includePath = "-Iinc";
    const auto place = FindInHeaders(project, files.Path("main.cpp"), sought, openText);
    if (!place) return "none";
    return place->path.substr(place->path.rfind('/') + 1) + ":" + std::to_string(place->line + 1);
  }
  test::TempFolder files;
};

TEST_F(HeaderSearchTest, NamesThatBeginWithAnUnderscore_AreFound) {
  files.Write("main.cpp", "#include \"node.h\"\nint _count;\n");
  files.Write("node.h", "class Other {\n  int _root;\n};\nclass Node {\n  int _root;\n};\n");
  EXPECT_EQ(Find({"_root", {"Node"}, true, ""}), "node.h:5");
  EXPECT_EQ(Find({"_root", {"ns::Other"}, true, ""}), "node.h:2");
  EXPECT_EQ(Find({"_root", {"Third"}, true, ""}), "none");
  EXPECT_EQ(Find({"_count", {"Node"}, false, ""}), "main.cpp:2") << "no member";
  EXPECT_EQ(Find({"_count", {"Node"}, true, ""}), "none");
  EXPECT_EQ(Find({"_coun", {}, false, ""}), "none");
  EXPECT_FALSE(theTagParser.keepReserved) << "only while it searches";
}

TEST_F(HeaderSearchTest, NearestFileFirst_AndFoldersOfSwitches) {
  files.Write("main.cpp", "#include <far.h>\n#include <near.h>\n");
  files.Write("inc/far.h", "#include \"deep.h\"\n// int both();\n");
  files.Write("inc/deep.h", "int both();\n");
  files.Write("inc/near.h", "\nint both();\n");
  EXPECT_EQ(Find({"both", {}, false, ""}), "near.h:2");
}

TEST_F(HeaderSearchTest, TheNamespaceDecides) {
  files.Write("main.cpp",
              "namespace a { namespace b {\nint both();\n} }\n"
              "namespace a { inline namespace __v2 {\nint both();\n} }\n");
  EXPECT_EQ(Find({"both", {}, false, "a"}), "main.cpp:5");
  EXPECT_EQ(Find({"both", {}, false, "b"}), "main.cpp:2");
  EXPECT_EQ(Find({"both", {"a"}, false, "a"}), "main.cpp:5") << "it could be a class";
  EXPECT_EQ(Find({"both", {}, false, ""}), "main.cpp:5");
  EXPECT_EQ(Find({"both", {}, false, "alias"}), "main.cpp:2") << "any, if none is right";
}

TEST_F(HeaderSearchTest, VariablesDefinedElsewhere_AreFound) {
  files.Write("main.cpp", "#include <iostream>\nextern int far;\nint f() { extern int inner; }\n");
  EXPECT_EQ(Find({"far", {}, false, ""}), "main.cpp:2");
  EXPECT_EQ(Find({"fa", {}, false, ""}), "none");
  EXPECT_TRUE(Find({"cout", {}, false, "std"}).starts_with("iostream:"));
  EXPECT_FALSE(IsKindEnabled(Language::cCpp, TagType::cExternVar)) << "only while it searches";
}

TEST_F(HeaderSearchTest, TextsOfEditors_AreWhatIsRead) {
  files.Write("main.cpp", "int a;\n");
  const auto typed = [](const std::string& path) -> std::optional<std::string> {
    return path.ends_with("main.cpp") ? std::optional<std::string>("\n\nint typed;\n")
                                      : std::nullopt;
  };
  EXPECT_EQ(Find({"typed", {}, false, ""}, typed), "main.cpp:3");
  EXPECT_EQ(Find({"a", {}, false, ""}, typed), "none");
}

TEST_F(HeaderSearchTest, HeadersOfTheSystem) {
  files.Write("main.cpp", "#include <string>\n#include <vector>\n#include <cstdio>\n");
  EXPECT_EQ(Find({"printf", {}, false, ""}).substr(0, 8), "stdio.h:");
  EXPECT_TRUE(Find({"string", {}, false, "std"}).starts_with("stringfwd.h:"));
  EXPECT_TRUE(Find({"vector", {}, false, "std"}).starts_with("stl_vector.h:"));
  EXPECT_TRUE(Find({"push_back", {"vector"}, true, ""}).starts_with("stl_vector.h:"));
  EXPECT_TRUE(
      Find({"push_back", {"string", "basic_string"}, true, ""}).starts_with("basic_string.h:"));
}

TEST_F(HeaderSearchTest, BrokenAndCircularIncludes_End) {
  files.Write("main.cpp", "#include \"a.h\"\n#include \"gone.h\"\n#include \".\"\n");
  files.Write("a.h", "#include \"main.cpp\"\n#include \"a.h\"\nsought\n");
  EXPECT_EQ(Find({"sought", {}, false, ""}), "none");
  EXPECT_EQ(Find({"", {}, false, ""}), "none");
}

TEST(CompilerFolders, AreThoseOfItsReport) {
  EXPECT_EQ(FoldersInReport("Using built-in specs.\n#include \"...\" search starts here:\n"
                            "#include <...> search starts here:\n /usr/lib/gcc/x/12/../include\n"
                            " /usr/include\nEnd of search list.\n /no\n"),
            (std::vector<std::string>{"/usr/lib/gcc/x/include", "/usr/include"}));
  EXPECT_TRUE(FoldersInReport("").empty());
  EXPECT_TRUE(FoldersInReport("#include <...> search starts here:\nEnd of search list.\n").empty());
}

TEST(CompilerFolders, ACompilerIsAskedOnce_AndOneThatIsNoneGivesTheUsualFolders) {
  test::TempFolder files;
  const std::string compiler =
      files.Write("cc", "#!/bin/sh\necho asked >> \"" + files.Path("log") +
                            "\"\necho '#include <...> search starts here:'\necho \" /of $4\"\n"
                            "echo 'End of search list.'\n");
  std::filesystem::permissions(compiler, std::filesystem::perms::owner_all);
  EXPECT_EQ(CompilerFolders(compiler, true), std::vector<std::string>{"/of c++"});
  EXPECT_EQ(CompilerFolders(compiler, true), std::vector<std::string>{"/of c++"});
  EXPECT_EQ(files.Read("log"), "asked\n");
  EXPECT_EQ(CompilerFolders(compiler, false), std::vector<std::string>{"/of c"});
  const std::vector<std::string>& usual = CompilerFolders(files.Path("no-compiler"), true);
  EXPECT_NE(std::find(usual.begin(), usual.end(), "/usr/include"), usual.end());
}

TEST(CompilerFolders, ACompilerThatPrintsWithoutEnd_GivesTheUsualFolders) {
  test::TempFolder files;
  const std::string compiler = files.Write("cc", "#!/bin/sh\nexec yes\n");
  std::filesystem::permissions(compiler, std::filesystem::perms::owner_all);
  const std::vector<std::string>& usual = CompilerFolders(compiler, true);
  EXPECT_NE(std::find(usual.begin(), usual.end(), "/usr/include"), usual.end());
}

}  // namespace
}  // namespace zendry
