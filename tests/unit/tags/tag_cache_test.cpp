#include "tags/TagCache.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "base/XmlTag.h"
#include "tags/TagData.h"

namespace zendry {
namespace {

constexpr uint64_t cDefinition = 0x1234;

TagItem Item(const std::string& name, char kind, int line, const std::string& signature = "",
             const std::string& type = "") {
  TagItem item;
  item.name = name;
  item.kind = kind;
  item.line = line;
  item.fileId = 7;
  item.signature = signature;
  item.type = type;
  return item;
}

TagClass& AddClass(TagData& data, const std::string& name) {
  TagClass& added = data.classes[name];
  added.name = name;
  added.kind = 'c';
  added.line = 12;
  added.fileId = 7;
  return added;
}

std::string Text(const TagData& data) {
  return CacheText(data, cDefinition);
}

// The text without its last line, the stamp.
std::string Body(const TagData& data) {
  const std::string text = Text(data);
  return text.substr(0, text.rfind("<stamp"));
}

TagData ReadBack(const TagData& data) {
  TagData again;
  ReadCacheText(Text(data), again);
  return again;
}

TagData Library() {
  TagData data;
  data.headers = {{7, "-x", "vector", "/std/vector"}, {8, "", "map", "/std/map"}};
  data.globals = {Item("swap", 'p', 3, "(int& a, int& b)", "void"), Item("cMax", 'v', 4)};
  TagClass& vector = AddClass(data, "vector");
  vector.inheritance = "base,other";
  vector.members = {Item("size", 'p', 14, "() const", "size_t"), Item("first", 'm', 15, "", "T")};
  AddClass(data, "map::iterator");
  return data;
}

// Group: the text.

TEST(TagCache, WholeText_IsAsGiven) {
  EXPECT_EQ(Body(Library()),
            "<reference n=\"lib\">\n"
            "\t<hdr n=\"vector\" id=\"7\" o=\"-x\" p=\"/std/vector\"/>\n"
            "\t<hdr n=\"map\" id=\"8\" p=\"/std/map\"/>\n"
            "</reference>\n"
            "<globals n=\"2\">\n"
            "\t<itm n=\"swap\" id=\"7\" o=\"p3\" p=\"(int& a, int& b)\" v=\"void\"/>\n"
            "\t<itm n=\"cMax\" id=\"7\" o=\"v4\"/>\n"
            "</globals>\n"
            "<class n=\"map::iterator\" id=\"7\" o=\"c12\">\n"
            "</class>\n"
            "<class n=\"vector\" id=\"7\" o=\"c12\" p=\"base,other\">\n"
            "\t<itm n=\"size\" id=\"7\" o=\"p14\" p=\"() const\" v=\"size_t\"/>\n"
            "\t<itm n=\"first\" id=\"7\" o=\"m15\" v=\"T\"/>\n"
            "</class>\n");
}

TEST(TagCache, EmptyStore_HasNoGlobalsAndNoClasses) {
  EXPECT_EQ(Body(TagData()),
            "<reference n=\"lib\">\n</reference>\n<globals n=\"0\">\n</globals>\n");
}

TEST(TagCache, LastLine_IsTheStamp) {
  const std::string text = Text(Library());
  const std::string stamp = text.substr(text.rfind('\n', text.size() - 2) + 1);
  EXPECT_TRUE(stamp.starts_with("<stamp n=\"0000000000001234\" o=\"")) << stamp;
  EXPECT_TRUE(stamp.ends_with("\"/>\n")) << stamp;
}

TEST(TagCache, ClassWithoutKind_HasNoKindAndLine) {
  TagData data;
  TagClass& tagClass = AddClass(data, "A");
  tagClass.kind = 0;
  tagClass.line = -1;
  tagClass.members = {Item("m", 0, 3)};
  EXPECT_NE(Body(data).find("<class n=\"A\" id=\"7\">\n\t<itm n=\"m\" id=\"7\"/>\n</class>\n"),
            std::string::npos)
      << Body(data);
}

TEST(TagCache, ClassWithLeadingUnderscore_IsLeftOutWithItsMembers) {
  TagData data;
  AddClass(data, "_Base").members = {Item("m", 'm', 1)};
  EXPECT_EQ(Body(data).find("_Base"), std::string::npos);
  EXPECT_EQ(Body(data).find("itm"), std::string::npos);
}

TEST(TagCache, BasicString_IsWrittenAsStringWithItsNameAsAlias) {
  TagData data;
  AddClass(data, "basic_string").inheritance = "base";
  EXPECT_NE(Body(data).find(
                "<class n=\"string\" id=\"7\" o=\"c12\" p=\"base\" v=\"basic_string\">\n</class>"),
            std::string::npos);
  const TagData again = ReadBack(data);
  ASSERT_TRUE(again.classes.contains("string"));
  EXPECT_EQ(again.classes.at("string").signature, "basic_string");
  EXPECT_EQ(again.classes.at("string").name, "string");
  EXPECT_FALSE(again.classes.contains("basic_string"));
}

TEST(TagCache, OnlyThreeLettersMakeTheStringFamily) {
  struct Row {
    const char* name;
    const char* written;
    const char* alias;
  };
  constexpr Row cRows[] = {
      {"basic_istream", "istream", "basic_istream"},
      {"b123c_x", "x", "b123c_x"},
      {"b...c_::y", "::y", "b...c_::y"},
      {"basic_", "basic_", ""},
      {"Basic_string", "Basic_string", ""},
      {"basi__string", "basi__string", ""},
      {"basic-string", "basic-string", ""},
      {"a::basic_string", "a::basic_string", ""},
  };
  for (const Row& row : cRows) {
    TagData data;
    AddClass(data, row.name).signature = "old alias";
    const TagData again = ReadBack(data);
    ASSERT_TRUE(again.classes.contains(row.written)) << row.name;
    EXPECT_EQ(again.classes.at(row.written).signature, row.alias) << row.name;
  }
}

// Group: reading back.

TEST(TagCache, ReadBack_HasHeadersClassesAndMembers) {
  const TagData again = ReadBack(Library());
  ASSERT_EQ(again.headers.size(), 2u);
  EXPECT_EQ(again.headers[0].id, 7);
  EXPECT_EQ(again.headers[0].options, "-x");
  EXPECT_EQ(again.headers[0].name, "vector");
  EXPECT_EQ(again.headers[0].path, "/std/vector");
  ASSERT_EQ(again.classes.size(), 2u);
  const TagClass& vector = again.classes.at("vector");
  EXPECT_EQ(vector.inheritance, "base,other");
  ASSERT_EQ(vector.members.size(), 2u);
  EXPECT_EQ(vector.members[0].name, "size");
  EXPECT_EQ(vector.members[0].signature, "() const");
  EXPECT_EQ(vector.members[0].type, "size_t");
  EXPECT_EQ(vector.members[0].fileId, 7);
  EXPECT_EQ(vector.members[0].kind, 'p');
}

TEST(TagCache, ReadBack_GlobalsAreWrittenButNotRead) {
  EXPECT_TRUE(ReadBack(Library()).globals.empty());
}

TEST(TagCache, ReadBack_MembersHaveAccessOne) {
  const TagData again = ReadBack(Library());
  for (const TagItem& member : again.classes.at("vector").members) EXPECT_EQ(member.access, 1);
}

TEST(TagCache, ReadBack_LineAndKindOfAClassStayZero) {
  const TagData again = ReadBack(Library());
  EXPECT_EQ(again.classes.at("vector").line, 0);
  EXPECT_EQ(again.classes.at("vector").kind, 0);
}

TEST(TagCache, Read_ItemsOutsideAClass_ArePassedOver) {
  TagData data;
  ReadCacheText(
      "<itm n=\"a\"/><class n=\"A\"><itm n=\"b\"/><globals><itm n=\"c\"/></globals>"
      "<cls n=\"B\"/><itm n=\"d\"/>",
      data);
  ASSERT_EQ(data.classes.size(), 2u);
  ASSERT_EQ(data.classes["A"].members.size(), 1u);
  EXPECT_EQ(data.classes["A"].members[0].name, "b");
  EXPECT_EQ(data.classes["B"].members[0].name, "d");
}

TEST(TagCache, Read_EndTagDoesNotEndAClass) {
  TagData data;
  ReadCacheText("<class n=\"A\"></class><itm n=\"b\"/>", data);
  EXPECT_EQ(data.classes["A"].members.size(), 1u);
}

TEST(TagCache, Read_ClassesHaveNoRoomForMoreMembers) {
  TagData data;
  for (const int count : {0, 1, 3, 5, 100}) {
    TagClass& added = AddClass(data, "c" + std::to_string(count));
    for (int i = 0; i < count; ++i) added.members.push_back(Item("m" + std::to_string(i), 'm', i));
  }
  for (const auto& [name, read] : ReadBack(data).classes) {
    EXPECT_EQ("c" + std::to_string(read.members.size()), name);
    EXPECT_EQ(read.members.capacity(), read.members.size());
  }
}

TEST(TagCache, Read_SecondClassOfAName_ReplacesTheFirst) {
  TagData data;
  ReadCacheText("<class n=\"A\" p=\"x\"><itm n=\"b\"/><class n=\"A\"><itm n=\"c\"/>", data);
  EXPECT_EQ(data.classes["A"].inheritance, "");
  ASSERT_EQ(data.classes["A"].members.size(), 1u);
  EXPECT_EQ(data.classes["A"].members[0].name, "c");
}

TEST(TagCache, Read_OtherElements_ArePassedOver) {
  TagData data;
  ReadCacheText("<reference n=\"lib\"><stamp n=\"1\"/><x/><H n=\"a\"/><Class n=\"b\"/>", data);
  EXPECT_TRUE(data.classes.empty() && data.headers.empty() && data.globals.empty());
}

// Group: values that no reader can take.

TEST(TagCache, QuoteInAValue_IsWrittenAsItStands) {
  TagData data;
  AddClass(data, "A").members = {Item("m", 'p', 1, "(char c = '\"')")};
  EXPECT_NE(Body(data).find("p=\"(char c = '\"')\"/>"), std::string::npos);
}

TEST(TagCache, QuoteInAValue_TextCanStillBeRead) {
  TagData data;
  AddClass(data, "A").members = {Item("m", 'p', 1, "\"")};
  AddClass(data, "B").members = {Item("n", 'p', 1)};
  const std::string text = Text(data);
  EXPECT_TRUE(TokensFit(text));
  EXPECT_TRUE(IsCacheTrue(text, &cDefinition));
  TagData again;
  ReadCacheText(text, again);
  EXPECT_TRUE(again.classes.contains("A"));
}

TEST(TagCache, QuoteThatWouldSpillTooFar_LosesItsValueOnly) {
  TagData data;
  std::vector<TagItem>& members = AddClass(data, "A").members;
  members = {Item("first", 'p', 1, "\"")};
  for (int i = 0; i < 100; ++i) members.push_back(Item("member" + std::to_string(i), 'p', i));
  const std::string text = Text(data);
  EXPECT_TRUE(TokensFit(text));
  TagData again;
  ReadCacheText(text, again);
  ASSERT_EQ(again.classes["A"].members.size(), 101u);
  EXPECT_EQ(again.classes["A"].members[0].name, "first");
  EXPECT_EQ(again.classes["A"].members[0].signature, "");
}

// However far the quote reaches: into the text, up to its end, or into the stamp.
TEST(TagCache, QuoteInANameNearTheEnd_TextCanStillBeRead) {
  for (size_t length = 300; length < 500; ++length) {
    TagData data;
    data.headers = {{1, "", "it\"s", ""}, {2, "", std::string(length, 'x'), ""}};
    AddClass(data, "A");
    const std::string text = Text(data);
    ASSERT_TRUE(TokensFit(text)) << length;
    ASSERT_TRUE(IsCacheTrue(text, &cDefinition)) << length;
  }
}

TEST(TagCache, LongestValue_IsKept) {
  TagData data;
  AddClass(data, "A").members = {Item("m", 'p', 1, std::string(508, 's'))};
  EXPECT_EQ(ReadBack(data).classes["A"].members[0].signature.size(), 508u);
}

TEST(TagCache, TooLongSignature_IsLeftOut) {
  TagData data;
  AddClass(data, "A").members = {Item("m", 'p', 1, std::string(510, 's'), "int"),
                                 Item("n", 'p', 2)};
  const TagData again = ReadBack(data);
  ASSERT_EQ(again.classes.at("A").members.size(), 2u);
  EXPECT_EQ(again.classes.at("A").members[0].signature, "");
  EXPECT_EQ(again.classes.at("A").members[0].type, "int");
}

TEST(TagCache, TooLongType_IsLeftOut) {
  TagData data;
  AddClass(data, "A").members = {Item("m", 'm', 1, "", std::string(600, 't'))};
  EXPECT_EQ(ReadBack(data).classes["A"].members[0].type, "");
}

TEST(TagCache, TooLongName_LeavesTheElementOut) {
  TagData data;
  AddClass(data, "A").members = {Item(std::string(600, 'n'), 'm', 1), Item("m", 'm', 2)};
  AddClass(data, std::string(600, 'C')).members = {Item("lost", 'm', 3)};
  const TagData again = ReadBack(data);
  ASSERT_EQ(again.classes.size(), 1u);
  ASSERT_EQ(again.classes.at("A").members.size(), 1u);
  EXPECT_EQ(again.classes.at("A").members[0].name, "m");
}

TEST(TagCache, TooLongToken_ReadsAsNothing) {
  TagData data;
  ReadCacheText("<class n=\"A\"/><class n=\"" + std::string(600, 'x') + "\"/>", data);
  EXPECT_TRUE(data.classes.empty());
}

// Group: which texts are trusted.

TEST(TagCache, WrittenText_IsTrue) {
  const std::string text = Text(Library());
  EXPECT_TRUE(IsCacheTrue(text, &cDefinition));
  EXPECT_TRUE(IsCacheTrue(text, nullptr));
}

TEST(TagCache, TextOfAnotherDefinition_IsNot) {
  const uint64_t other = cDefinition + 1;
  EXPECT_FALSE(IsCacheTrue(Text(Library()), &other));
}

TEST(TagCache, TextCutAnywhere_IsNot) {
  const std::string text = Text(Library());
  for (size_t length = 0; length < text.size(); ++length)
    EXPECT_FALSE(IsCacheTrue(text.substr(0, length), &cDefinition)) << length;
}

TEST(TagCache, TextWithAnyByteChanged_IsNot) {
  const std::string text = Text(Library());
  for (size_t i = 0; i < text.size(); ++i) {
    std::string changed = text;
    changed[i] = static_cast<char>(changed[i] ^ 1);
    EXPECT_FALSE(IsCacheTrue(changed, &cDefinition)) << i;
  }
}

TEST(TagCache, TextOfSomebodyElse_IsNot) {
  EXPECT_FALSE(IsCacheTrue("", nullptr));
  EXPECT_FALSE(IsCacheTrue("<reference n=\"lib\">\n</reference>\n", nullptr));
  EXPECT_FALSE(IsCacheTrue("<stamp ", nullptr));
  EXPECT_FALSE(IsCacheTrue("<stamp n=\"" + std::string(1000, 'x') + "\"/>\n", nullptr));
  EXPECT_FALSE(IsCacheTrue(std::string(100000, '\0'), nullptr));
  EXPECT_FALSE(IsCacheTrue(Text(Library()) + Text(Library()), nullptr));
}

TEST(TagCache, TextWithoutItsStamp_IsWhole) {
  const std::string text = Text(Library());
  EXPECT_FALSE(IsUnstampedCache(text));
  EXPECT_TRUE(IsUnstampedCache(text.substr(0, text.rfind("<stamp"))));
  EXPECT_FALSE(IsUnstampedCache(text.substr(0, text.rfind("<stamp") - 1)));
  EXPECT_FALSE(IsUnstampedCache(""));
  EXPECT_FALSE(IsUnstampedCache("<class n=\"Box\">\n</class>\n"));
  EXPECT_FALSE(IsUnstampedCache("<reference n=\"lib\">\n</reference>\n"));
}

TEST(TagCache, BytesAtRandom_AreNeitherTrueNorHarmful) {
  std::mt19937 random(1);
  for (int round = 0; round < 200; ++round) {
    std::string bytes(random() % 2000, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    EXPECT_FALSE(IsCacheTrue(bytes, nullptr));
    TagData data;
    ReadCacheText(bytes, data);
  }
}

}  // namespace
}  // namespace zendry
