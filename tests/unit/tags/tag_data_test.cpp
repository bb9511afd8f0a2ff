#include "tags/TagData.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace zendry {
namespace {

TagItem Item(const std::string& name, int line = 1) {
  TagItem item;
  item.name = name;
  item.line = line;
  return item;
}

TagClass& AddClass(TagData& data, const std::string& name) {
  TagClass& added = data.classes[name];
  added.name = name;
  added.serial = ++data.classCount;
  return added;
}

TEST(TagData, HeaderId_BeyondTheLargest_IsThatOfNoHeader) {
  EXPECT_EQ(HeaderId(1), 1);
  EXPECT_EQ(HeaderId(32767), 32767);
  EXPECT_EQ(HeaderId(32768), 0);
  EXPECT_EQ(HeaderId(65537), 0);
  EXPECT_EQ(HeaderId(-1), 0);
}

TEST(TagData, Records_StartEmpty) {
  const TagItem item;
  EXPECT_EQ(item.line, 0);
  EXPECT_EQ(item.fileId, 0);
  EXPECT_EQ(item.kind, 0);
  EXPECT_FALSE(item.isFriend);
  EXPECT_EQ(item.access, 0);
  EXPECT_EQ(std::string(item.name) + item.signature + item.type, "");
  EXPECT_EQ(item.owner, nullptr);
  EXPECT_EQ(item.module, nullptr);
  const TagClass tagClass;
  EXPECT_EQ(tagClass.serial, 0);
  EXPECT_EQ(tagClass.inheritance, "");
  EXPECT_TRUE(tagClass.members.empty());
  const TagData data;
  EXPECT_EQ(data.classCount, 0);
  EXPECT_FALSE(data.saveCache);
  EXPECT_TRUE(data.loaded.empty() && data.headers.empty() && data.includes.empty());
}

TEST(TagData, Clear_DropsTagsAndKeepsTheName) {
  TagData data;
  data.fileName = "/p/a.cpp";
  data.globals.push_back(Item("f"));
  AddClass(data, "A");
  data.addInclude("a.h", true);
  data.headers.push_back({1, "", "vector", "/v"});
  data.loaded.insert("/d.tgd");
  data.clear();
  EXPECT_TRUE(data.globals.empty() && data.classes.empty() && data.includes.empty());
  EXPECT_EQ(data.classCount, 0);
  EXPECT_EQ(data.fileName, "/p/a.cpp");
  EXPECT_EQ(data.headers.size(), 1u);
  EXPECT_EQ(data.loaded.size(), 1u);
}

TEST(TagData, FindGlobal_FirstOfTheNameWins) {
  TagData data;
  data.globals = {Item("a", 1), Item("b", 2), Item("b", 3)};
  ASSERT_NE(data.findGlobal("b"), nullptr);
  EXPECT_EQ(data.findGlobal("b")->line, 2);
}

TEST(TagData, FindGlobal_ComparesExactly) {
  TagData data;
  data.globals = {Item("name")};
  for (const char* other : {"", "nam", "names", "Name", "name "})
    EXPECT_EQ(data.findGlobal(other), nullptr) << other;
}

TEST(TagData, FindGlobal_ClearsTheModuleOfWhatItFinds) {
  TagData data;
  data.globals = {Item("a"), Item("b")};
  for (TagItem& item : data.globals) item.module = &data;
  EXPECT_EQ(data.findGlobal("a")->module, nullptr);
  EXPECT_EQ(data.globals[1].module, &data);
}

TEST(TagData, FindGlobal_EmptyStore_FindsNothing) {
  TagData data;
  EXPECT_EQ(data.findGlobal("a"), nullptr);
  EXPECT_EQ(data.findClass("a"), nullptr);
}

TEST(TagData, FindClass_ByItsQualifiedName) {
  TagData data;
  AddClass(data, "A");
  AddClass(data, "A::B").line = 7;
  ASSERT_NE(data.findClass("A::B"), nullptr);
  EXPECT_EQ(data.findClass("A::B")->line, 7);
  for (const char* other : {"", "B", "a", "A::", "A::BC"})
    EXPECT_EQ(data.findClass(other), nullptr) << other;
}

TEST(TagData, FindClass_ClearsTheModule) {
  TagData data;
  AddClass(data, "A").module = &data;
  EXPECT_EQ(data.findClass("A")->module, nullptr);
}

TEST(TagData, FindClass_RecordWithoutAName_IsNone) {
  TagData data;
  data.classes["A"];
  EXPECT_EQ(data.findClass("A"), nullptr);
}

TEST(TagData, FindClass_AnswersAsALinearWalkWould) {
  TagData data;
  for (int i = 0; i < 300; ++i) AddClass(data, "C" + std::to_string(i % 150) + "::D");
  for (const auto& [key, expected] : data.classes) {
    const auto walked =
        std::find_if(data.classes.begin(), data.classes.end(),
                     [&name = key](const auto& entry) { return entry.second.name == name; });
    EXPECT_EQ(data.findClass(key), &walked->second);
  }
}

TEST(TagData, AddInclude_AppendsInOrder) {
  TagData data;
  data.addInclude("a.h", true);
  data.addInclude("vector", false);
  data.addInclude("a.h", true);
  ASSERT_EQ(data.includes.size(), 3u);
  EXPECT_TRUE(data.includes[0].quoted);
  EXPECT_FALSE(data.includes[1].quoted);
  EXPECT_EQ(data.includes[1].name, "vector");
  EXPECT_EQ(data.includes[2].name, "a.h");
}

}  // namespace
}  // namespace zendry
