#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TempFolder.h"
#include "ZendryMakeRun.h"

// zendry-form as a user starts it.

namespace {

constexpr char cForm[] =
    "class Main: public Form {\n\t//!decl\n\tButton go1;\n\t//!end\n\tvoid Initialize() {\n"
    "\t\t//!init\n\t\t//!<Button>\n\t\tgo1.SetBounds(1, 2, 3, 4);\n\t\tthis->Add(&go1);\n"
    "\t\t//!end\n\t}\n};\n";

class ZendryForm : public testing::Test {
 protected:
  test::Ended Run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), ZENDRY_FORM);
    return test::Program(arguments, folder.Path()).Wait();
  }
  std::string With(const std::string& line) {
    std::string text = cForm;
    return text.insert(text.find("\t\tthis->Add"), line);
  }

  test::TempFolder folder;
};

TEST_F(ZendryForm, Check_SaysNothingOfACleanForm) {
  const test::Ended ended = Run({"--check", folder.Write("a.cpp", cForm)});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "");
}

TEST_F(ZendryForm, Check_PrintsALineForEachLoss) {
  const std::string path = folder.Write("a.cpp", With("\t\tgo1.Foo(1);\n\t\t// x\n"));
  const test::Ended ended = Run({"--check", path, folder.Write("b.cpp", cForm)});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out,
            path + ":9: changed: go1.Foo(1); becomes go1.Foo = 1);\n" + path + ":10: lost: // x\n");
  EXPECT_EQ(folder.Read("a.cpp"), With("\t\tgo1.Foo(1);\n\t\t// x\n"));
}

TEST_F(ZendryForm, Rewrite_ChangesTheRegionsOnly) {
  const std::string path = folder.Write("a.cpp", With("\t\tgo1.hot = false;\n"));
  EXPECT_EQ(Run({"--rewrite", path}).status, 0);
  EXPECT_EQ(folder.Read("a.cpp"), cForm);
  EXPECT_EQ(Run({"--check", path}).status, 0);
}

TEST_F(ZendryForm, Keep_MovesWhatWouldBeLost) {
  const std::string path = folder.Write("a.cpp", With("\t\tgo1.Foo(1);\n"));
  EXPECT_EQ(Run({"--rewrite", "--keep", path}).status, 0);
  EXPECT_NE(folder.Read("a.cpp").find("\t\t//!end\n\t\tgo1.Foo(1);\n\t}\n"), std::string::npos);
}

TEST_F(ZendryForm, WrongCommandLines_AreTold) {
  const std::string path = folder.Write("a.cpp", cForm);
  for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
           {}, {path}, {"--check"}, {"--check", "--rewrite", path}, {"--check", "--keep", path}})
    EXPECT_EQ(Run(arguments).status, 2);
  EXPECT_EQ(Run({"--check", folder.Path("none.cpp")}).status, 1);
  EXPECT_EQ(Run({"--help"}).status, 0);
}

}  // namespace
