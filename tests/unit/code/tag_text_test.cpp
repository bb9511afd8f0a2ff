#include "code/TagText.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "CodeText.h"
#include "code/DeclRead.h"

namespace zendry {
namespace {

// A project whose texts stand in memory; the editor's own is "main.cpp".
class TagTextTest : public ::testing::Test, protected test::CodeStores {
 protected:
  TagTextTest() { current = &Module("main.cpp"); }

  std::string TextOf(const TagData& module) override {
    ++textsRead;
    return texts[module.fileName];
  }
  // The type of a tag of `file` that says "Told".
  TypeText TypeOf(TagText& tagText, const std::string& file, int line) {
    TagItem item = test::Tag("x", 'v', "Told", line);
    item.module = &Module(file);
    StepBudget budget;
    return tagText.TypeOf(item, budget);
  }
  std::string TypeIn(const std::string& file, int line = 1) {
    TagText tagText(*this, editor, current);
    return Print(TypeOf(tagText, file, line));
  }
  std::string Alias(const std::string& name) {
    TagText tagText(*this, editor, current);
    StepBudget budget;
    const auto type = tagText.IncludedAlias(name, budget);
    return type ? Print(*type) : "none";
  }

  test::CodeText editor{""};
  std::map<std::string, std::string> texts;
  int textsRead = 0;
};

constexpr int cMostBytes = 2000;

// A declaration of x that ends so many bytes after the start of its line.
std::string DeclarationOf(int bytes) {
  std::string text = "std::vector<A> x;";
  text.insert(text.size() - 2, static_cast<size_t>(bytes) - text.size(), ' ');
  return text;
}

TEST_F(TagTextTest, TypeOf_TagWithoutFileOrLine_IsTheTagsOwn) {
  texts["a.h"] = "std::vector<A> x;";
  TagText tagText(*this, editor, current);
  TagItem item = test::Tag("x", 'v', "Told", 1);
  StepBudget budget;
  EXPECT_EQ(Print(tagText.TypeOf(item, budget)), "Told");
  EXPECT_EQ(TypeIn("a.h", 0), "Told");
  EXPECT_EQ(TypeIn("a.h", 1), "std::vector<A>");
}

TEST_F(TagTextTest, TypeOf_BareNameOfTheTag_MayBeAPointer) {
  texts["a.h"] = "std::vector<A> x;";
  TagText tagText(*this, editor, current);
  EXPECT_FALSE(TypeOf(tagText, "gone.h", 1).isExact);
  EXPECT_TRUE(TypeOf(tagText, "a.h", 1).isExact);
}

TEST_F(TagTextTest, TypeOf_LongLine_IsReadUpTo2000Bytes) {
  texts["a.h"] = DeclarationOf(cMostBytes) + "\n";
  EXPECT_EQ(TypeIn("a.h"), "std::vector<A>");
  texts["a.h"] = DeclarationOf(cMostBytes + 1) + "\n";
  EXPECT_EQ(TypeIn("a.h"), "Told");
}

TEST_F(TagTextTest, TypeOf_LongLineOfTheEditor_IsReadUpTo2000Bytes) {
  editor = test::CodeText(DeclarationOf(cMostBytes) + "\n");
  EXPECT_EQ(TypeIn("main.cpp"), "std::vector<A>");
  editor = test::CodeText(DeclarationOf(cMostBytes + 1) + "\n");
  EXPECT_EQ(TypeIn("main.cpp"), "Told");
}

// The type may begin up to three lines before the name, and the name up to two after the tag's
// line.
TEST_F(TagTextTest, TypeOf_LinesAround_ThreeBeforeAndTwoAfter) {
  const std::pair<const char*, int> rows[] = {{"std::vector<A>\n\n\nx;\n", 4},
                                              {"\n\n\n\nstd::vector<A>\n\n\nx;\n", 8}};
  for (const auto& [text, line] : rows) {
    texts["a.h"] = text;
    EXPECT_EQ(TypeIn("a.h", line), "std::vector<A>") << text;
    editor = test::CodeText(text);
    EXPECT_EQ(TypeIn("main.cpp", line), "std::vector<A>") << text;
  }
  for (const char* far : {"\nstd::vector<A>\n\n\n\nx;\n"}) {
    texts["a.h"] = far;
    EXPECT_EQ(TypeIn("a.h", 6), "Told");
    editor = test::CodeText(far);
    EXPECT_EQ(TypeIn("main.cpp", 6), "Told");
  }
  texts["a.h"] = "\n\n\n\n\n\nstd::vector<A>\nx;\n";
  EXPECT_EQ(TypeIn("a.h", 6), "std::vector<A>");
  EXPECT_EQ(TypeIn("a.h", 5), "Told");
}

TEST_F(TagTextTest, WholeTexts_OfEightFilesAreRead_AndOnlyOnce) {
  TagText tagText(*this, editor, current);
  for (int i = 1; i <= 9; ++i) {
    const std::string file = "a" + std::to_string(i) + ".h";
    texts[file] = "std::vector<A> x;";
    EXPECT_EQ(Print(TypeOf(tagText, file, 1)), i <= 8 ? "std::vector<A>" : "Told") << i;
    EXPECT_EQ(Print(TypeOf(tagText, file, 1)), i <= 8 ? "std::vector<A>" : "Told") << i;
  }
  EXPECT_EQ(textsRead, 8);
}

TEST_F(TagTextTest, ParametersOf_ClassOfTheTagsLine) {
  texts["a.h"] = "template <class A>\nclass Box {};\ntemplate <class T, int N>\nclass Box {\n};\n";
  TagClass& record = AddClass(Module("a.h"), "ns::Box", 4);
  record.module = &Module("a.h");
  TagText tagText(*this, editor, current);
  EXPECT_EQ(tagText.ParametersOf(record), (std::vector<std::string>{"T", "N"}));
  record.line = 2;
  EXPECT_EQ(tagText.ParametersOf(record), (std::vector<std::string>{"A"}));
  record.name = "ns::Bo";
  EXPECT_TRUE(tagText.ParametersOf(record).empty());
}

TEST_F(TagTextTest, IncludedAlias_OfAFileThatIsIncluded) {
  texts["dir/a.h"] = "using P = Point*;\nusing Q;\n";
  texts["b.h"] = "using R = Rect;\n";
  Module("dir/a.h");
  Module("b.h");
  EXPECT_EQ(Alias("P"), "none");
  current->includes.push_back({});
  current->includes.back().name = "gone.h";
  current->includes.push_back({});
  current->includes.back().name = "a.h";
  EXPECT_EQ(Alias("P"), "Point*");
  EXPECT_EQ(Alias("Q"), "none");
  EXPECT_EQ(Alias("R"), "none");
  current = nullptr;
  EXPECT_EQ(Alias("P"), "none");
}

TEST_F(TagTextTest, IncludedAlias_OfALargeFile_IsNotLookedFor) {
  constexpr size_t cMost = 65536;
  Module("a.h");
  current = &Module("main.cpp");
  current->includes.push_back({});
  current->includes.back().name = "a.h";
  std::string& text = texts["a.h"];
  text = "using P = Point*;\n";
  text.append(cMost - text.size(), ' ');
  EXPECT_EQ(Alias("P"), "Point*");
  text += ' ';
  EXPECT_EQ(Alias("P"), "none");
}

}  // namespace
}  // namespace zendry
