#include "project/SourceFacts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zendry {
namespace {

bool HasMain(std::string_view text) {
  return ReadSourceFacts(text).hasMain;
}

TEST(SourceFacts, Main_IsADefinitionAtTheTop) {
  EXPECT_TRUE(HasMain("int main() { return 0; }"));
  EXPECT_TRUE(HasMain("#include <a>\nint\nmain(int argc, char** argv)\n{\n}\n"));
  EXPECT_TRUE(HasMain("int main(argc, argv) int argc; char** argv; {}")) << "the old form";
  EXPECT_TRUE(HasMain("extern \"C\" { int main(void) {} }"));
  EXPECT_TRUE(HasMain("auto main() -> int {}"));
  EXPECT_TRUE(HasMain("int main(int argc,\n#ifdef A\n int a\n#else\n char** b\n#endif\n) {}"));
}

TEST(SourceFacts, Main_Neighbours_AreNone) {
  EXPECT_FALSE(HasMain(""));
  EXPECT_FALSE(HasMain("int main();"));
  EXPECT_FALSE(HasMain("int main(int, char**);\nint f() {}"));
  EXPECT_FALSE(HasMain("// int main() {}\n/* int main() {} */ const char* s = \"int main() {}\";"));
  EXPECT_FALSE(HasMain("struct A { int main() { return 0; } };"));
  EXPECT_FALSE(HasMain("int mainly() {} int domain() {} int Main() {}"));
  EXPECT_FALSE(HasMain("int main = 3;"));
  EXPECT_FALSE(HasMain("#define RUN int main() {}\n"));
  EXPECT_FALSE(HasMain("int main(")) << "cut";
  EXPECT_FALSE(HasMain("int main()")) << "cut";
}

TEST(SourceFacts, Main_SwitchedOff_DoesNotCount) {
  EXPECT_FALSE(HasMain("#if 0\nint main() {}\n#endif\n"));
  EXPECT_FALSE(HasMain("#ifdef TEST\nint main() {}\n#endif\n"));
  EXPECT_FALSE(HasMain("#if defined(TEST) && X\nint main() {}\n#endif\n"));
  EXPECT_FALSE(HasMain("#ifndef A\n#else\n#ifdef T\nint main() {}\n#endif\n#endif"));
  EXPECT_TRUE(HasMain("#ifndef TEST\nint main() {}\n#endif\n"));
  EXPECT_TRUE(HasMain("#ifdef _WIN32\nint wmain() {}\n#else\nint main() {}\n#endif\n"));
  EXPECT_TRUE(HasMain("#ifdef __linux__\nint main() {}\n#endif\n"));
  EXPECT_TRUE(HasMain("#ifdef A\nint f() {\n#else\nint g() {\n#endif\n}\nint main() {}"))
      << "both branches open one brace";
}

TEST(SourceFacts, Includes_AreListedWithTheirKind) {
  const SourceFacts facts = ReadSourceFacts(
      "  #  include \"a b.h\" // x\n#include <dir/c.h>\n#if 0\n#include \"off.h\"\n#endif\n"
      "#include MACRO\n#include \"\"\n#ifdef HAVE_CONFIG_H\n#include \"config.h\"\n#endif\n");
  ASSERT_EQ(facts.includes.size(), 4u);
  EXPECT_EQ(facts.includes[0].name, "a b.h");
  EXPECT_TRUE(facts.includes[0].quoted);
  EXPECT_EQ(facts.includes[1].name, "dir/c.h");
  EXPECT_FALSE(facts.includes[1].quoted);
  EXPECT_FALSE(facts.includes[1].isOff);
  EXPECT_TRUE(facts.includes[2].isOff);
  EXPECT_TRUE(facts.asksForConfig);
}

TEST(SourceFacts, ATextCutAnywhere_IsReadToItsEnd) {
  const std::string text =
      "#ifdef A\nextern \"C\" {\nint main(int a, char** b)\n#else\nint f()\n#endif\n{ return 0; "
      "}\n}\n";
  for (size_t size = 0; size <= text.size(); ++size) ReadSourceFacts(text.substr(0, size));
}

}  // namespace
}  // namespace zendry
