#include "tags/MacroNamespaces.h"

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <string>

namespace zendry {
namespace {

class MacroNamespacesTest : public ::testing::Test {
 protected:
  void Add(const std::string& text) {
    files.push_back(&stores.emplace_back());
    texts[files.back()] = text;
  }
  // "file:line" of each file that opens the namespace.
  std::string Lines(const std::string& name) {
    std::string told;
    const auto textOf = [this](const TagData& file) {
      ++reads;
      return texts[&file];
    };
    for (const auto& [file, line] : namespaces.FirstLines(files, name, textOf))
      told += std::to_string(file) + ":" + std::to_string(line) + " ";
    return told;
  }

  std::deque<TagData> stores;
  std::vector<const TagData*> files;
  std::map<const TagData*, std::string> texts;
  MacroNamespaces namespaces;
  int reads = 0;
};

TEST_F(MacroNamespacesTest, AreOpenedWhereTheMacroIsAloneOnALine) {
  Add("#define BEGIN namespace a { \\\n  namespace b {\n#define END }}\n");
  Add("int x;\n  BEGIN \nint y;\nEND\nBEGIN\n");
  Add("BEGIN int z;\n// BEGIN\nBEGIN_NOT\n");
  EXPECT_EQ(Lines("a"), "1:2 ");
  EXPECT_EQ(Lines("b"), "1:2 ");
  EXPECT_EQ(Lines("c"), "");
  EXPECT_EQ(Lines("namespace"), "");
}

TEST_F(MacroNamespacesTest, AreWrittenInOneOrInline) {
  Add("#define B1 namespace a::b {\n#define B2 inline namespace c {\n#define B3 namespace {\n"
      "#define B4 namespace d = e;\nB1\nB2\nB3\nB4\n");
  EXPECT_EQ(Lines("a"), "0:5 ");
  EXPECT_EQ(Lines("b"), "0:5 ");
  EXPECT_EQ(Lines("c"), "0:6 ");
  EXPECT_EQ(Lines("d"), "");
}

TEST_F(MacroNamespacesTest, AreReadAgainOnlyAfterAChange) {
  Add("#define B namespace a {\nB\n");
  EXPECT_EQ(Lines("a"), "0:2 ");
  EXPECT_EQ(Lines("a"), "0:2 ");
  EXPECT_EQ(reads, 1);
  texts[files[0]] = "#define B namespace b {\n\nB\n";
  stores[0].Changed();
  EXPECT_EQ(Lines("a"), "");
  EXPECT_EQ(Lines("b"), "0:3 ");
  EXPECT_EQ(reads, 2);
}

}  // namespace
}  // namespace zendry
