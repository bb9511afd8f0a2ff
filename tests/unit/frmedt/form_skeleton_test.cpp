#include "frmedt/FormSkeleton.h"

#include <gtest/gtest.h>

#include "Golden.h"
#include "TempFolder.h"

namespace zendry {
namespace {

FormSkeleton Skeleton(bool split) {
  FormSkeleton skeleton;
  skeleton.className = "Main";
  skeleton.split = split;
  return skeleton;
}

TEST(FillTemplate, ReplacesTheLetterAfterTheSign) {
  EXPECT_EQ(FillTemplate("@C-@B-@F-@x-@", "Main"), "Main-Form---");
  EXPECT_EQ(FillTemplate("@@C", "Main"), "C");
}

TEST(FormSkeleton, Header_IsWhole) {
  EXPECT_EQ(FormSkeleton::FileOf(Skeleton(false).Header()),
            "class Main: public Form\n{\n\ttypedef Main This;\npublic:\n\t//!decl\n\t//!end\n"
            "\tMain() {\n\t\tInitialize();\n\t}\nprivate:\n\tvoid Initialize() {\n\t\t//!init\n"
            "\t\t//!end\n\t}\n};\n\n");
}

TEST(FormSkeleton, Split_DeclaresInitializeOnly) {
  const std::string text = FormSkeleton::FileOf(Skeleton(true).Header());
  EXPECT_NE(text.find("private:\n\tvoid Initialize() ;\n};\n"), std::string::npos);
  EXPECT_EQ(text.find("//!init"), std::string::npos);
}

TEST(FormSkeleton, Source_IncludesTheHeaderByItsName) {
  FormSkeleton skeleton = Skeleton(true);
  skeleton.headerPath = "/a/b/main.h";
  EXPECT_EQ(FormSkeleton::FileOf(skeleton.Source()),
            "#include \"main.h\"\n\n\nvoid Main::Initialize()\n{\n\t//!init\n\t//!end\n}\n");
}

TEST(FormSkeleton, TheMainFunction_SaysMainFormWhateverTheClass) {
  FormSkeleton skeleton = Skeleton(true);
  skeleton.className = "Other";
  skeleton.withMain = true;
  const std::string text = FormSkeleton::FileOf(skeleton.Source());
  EXPECT_NE(text.find("int Application::Main(const ArgumentList& args)\n{\n\tMainForm mfrm;\n"
                      "\tmfrm.Show();\n\treturn 0;\n}\n\n\n\nvoid Other::Initialize()\n{\n"),
            std::string::npos);
}

TEST(FormSkeleton, WriteFiles_WritesWhatItNames) {
  test::TempFolder folder;
  FormSkeleton one = Skeleton(false);
  ASSERT_TRUE(one.WriteFiles(folder.Path("one")).Ok());
  EXPECT_EQ(one.headerPath, folder.Path("one.h"));
  EXPECT_EQ(one.sourcePath, "");
  const std::string text = test::ReadData(one.headerPath);
  EXPECT_TRUE(text.starts_with("#pragma once\n#include<mavro>\n\n\nclass Main: public Form\n"));
  FormSkeleton two = Skeleton(true);
  ASSERT_TRUE(two.WriteFiles(folder.Path("two")).Ok());
  EXPECT_TRUE(test::ReadData(two.sourcePath).starts_with("#include \"two.h\"\n"));
  EXPECT_FALSE(two.WriteFiles("/nowhere/at/all").Ok());
}

}  // namespace
}  // namespace zendry
