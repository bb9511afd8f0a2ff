#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TestBuild.h"
#include "ZendryMakeRun.h"
#include "config/BuildSettings.h"

// Every way to write an include: a change of what is included makes its source stale. The compiler
// itself says what it has read.

namespace zendry {
namespace {

// Text before the source's function, and the file that it reads in the end; "VALUE" is defined
// there.
struct IncludeForm {
  const char* text;
  const char* file;
};

constexpr IncludeForm cForms[] = {
    {"#include \"plain.h\"\n", "plain.h"},
    {"#include <angle.h>\n", "inc/angle.h"},
    {"#include <dir/below.h>\n", "inc/dir/below.h"},
    {"#include \"dir/quoted.h\"\n", "inc/dir/quoted.h"},
    {"#include \"./dot.h\"\n", "dot.h"},
    {"#include \"sub/../back.h\"\n", "back.h"},
    {"#include \"../top.h\"\n", "../top.h"},
    {"   #include \"indented.h\"\n", "indented.h"},
    {"#  include   \"spaced.h\"\n", "spaced.h"},
    {"#\tinclude\t\"tabs.h\"\n", "tabs.h"},
    {"/* c */ #include \"comment.h\"\n", "comment.h"},
    {"#/**/include/**/\"inside.h\"\n", "inside.h"},
    {"#include \"tail.h\" // more\n", "tail.h"},
    {"\xef\xbb\xbf#include \"bom.h\"\n", "bom.h"},
    {"#define NAME \"macro.h\"\n#include NAME\n", "macro.h"},
    {"#define NAME <angled_macro.h>\n#include NAME\n", "inc/angled_macro.h"},
    {"#inc\\\nlude \"spliced.h\"\n", "spliced.h"},
    {"#include \\\n\"next.h\"\n", "next.h"},
    {"?"
     "?=include \"trigraph.h\"\n",
     "trigraph.h"},
    {"%:include \"digraph.h\"\n", "digraph.h"},
    {"#include_next <following.h>\n", "inc/following.h"},
    {"#import \"import.h\"\n", "import.h"},
    {"#include \"part.inl\"\n", "part.inl"},
    {"#include \"noextension\"\n", "noextension"},
    {"#include \"my file.h\"\n", "my file.h"},
    {"#if 1\n#include \"conditional.h\"\n#endif\n", "conditional.h"},
    {"", "forced.h"},  // by a switch
};

struct IncludeForms : testing::Test {
  test::TestBuild build;

  void WriteValues(int value) {
    for (const IncludeForm& form : cForms) {
      const std::string path = std::string("src/") + form.file;
      build.files.Write(path.starts_with("src/../") ? path.substr(7) : path,
                        "#undef VALUE\n#define VALUE " + std::to_string(value) + "\n");
    }
  }
  std::string Run() {
    return test::Program({build.Path("out-rel/p.exe")}, build.files.Path()).Wait().out;
  }
};

TEST_F(IncludeForms, ChangeOfWhatIsIncluded_IsNeverMissed) {
  for (auto& set : theIdeConfig.toolSets) set.folder = "";
  build.project.current->comp = "-trigraphs -w -Isrc/inc -include src/forced.h";
  build.files.Folder("src/sub");
  WriteValues(1);
  std::string main = "#include <stdio.h>\n", sum = "0";
  int number = 0;
  for (const IncludeForm& form : cForms) {
    const std::string function = "f" + std::to_string(number++);
    build.Add("src/" + function + ".c",
              form.text + std::string("int ") + function + "(void) { return VALUE; }\n");
    main += "int " + function + "(void);\n";
    sum += " + " + function + "()";
  }
  build.Add("main.c", main + "int main(void) { printf(\"%d\", " + sum + "); return 0; }\n");
  ASSERT_TRUE(build.builder.Build(Builder::Scope::cStale)) << build.shell.output;
  EXPECT_EQ(Run(), std::to_string(number));

  build.shell.output.clear();
  ASSERT_TRUE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.shell.output, testing::Not(testing::HasSubstr("Compiling")));

  WriteValues(2);
  ASSERT_TRUE(build.builder.Build(Builder::Scope::cStale)) << build.shell.output;
  EXPECT_EQ(Run(), std::to_string(2 * number));
}

// Headers outside of the project's folder are watched by those who ask for it.
TEST_F(IncludeForms, HeaderOfAnotherFolder_IsWatchedIfAllAre) {
  const test::TempFolder elsewhere;
  elsewhere.Write("far.h", "#define VALUE 1\n");
  for (auto& set : theIdeConfig.toolSets) set.folder = "";
  build.project.current->comp = "-w -I" + elsewhere.Path();
  build.Add("main.c",
            "#include <stdio.h>\n#include <far.h>\n"
            "int main(void) { printf(\"%d\", VALUE); return 0; }\n");
  const auto compiled = [this] {
    build.shell.output.clear();
    EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale)) << build.shell.output;
    return build.shell.output.find("Compiling") != std::string::npos;
  };
  EXPECT_TRUE(compiled());
  elsewhere.Write("far.h", "#define VALUE 22\n");
  EXPECT_FALSE(compiled());

  theBuildSettings.watchAllHeaders = true;
  EXPECT_TRUE(compiled());
  EXPECT_EQ(Run(), "22");
  EXPECT_FALSE(compiled());
  elsewhere.Write("far.h", "#define VALUE 333\n");
  EXPECT_TRUE(compiled());
  EXPECT_EQ(Run(), "333");
  const std::string records = build.files.Read("out-rel/.zendry-build");
  EXPECT_NE(records.find("/stdio.h\n"), std::string::npos);

  theBuildSettings = {};
  EXPECT_FALSE(compiled());
}

}  // namespace
}  // namespace zendry
