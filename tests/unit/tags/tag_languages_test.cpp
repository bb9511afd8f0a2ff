#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tags/TagLanguages.h"
#include "tags/TagParser.h"

namespace zendry {
namespace {

// A kind as "LETTER name|description", a minus after the letter when it is off.
std::string Kinds(Language language) {
  std::string text;
  for (const TagKind& kind : RecordOf(language).kinds)
    text += std::string(1, kind.letter) + (kind.enabledAtStart ? " " : "- ") +
            std::string(kind.name) + '|' + std::string(kind.description) + '\n';
  return text;
}

constexpr std::string_view cCKinds =
    "c class|classes\n"
    "d macro|macro definitions\n"
    "e enumerator|enumerators (values inside an enumeration)\n"
    "f function|function definitions\n"
    "g enum|enumeration names\n"
    "l- local|local variables\n"
    "m member|class, struct, and union members\n"
    "n namespace|namespaces\n"
    "p prototype|function prototypes\n"
    "s struct|structure names\n"
    "t typedef|typedefs\n"
    "u union|union names\n"
    "v variable|variable definitions\n"
    "x- externvar|external variable declarations\n";

TEST(TagLanguages, KindsOfC_AreFourteen) {
  EXPECT_EQ(Kinds(Language::cC), cCKinds);
}

TEST(TagLanguages, KindsOfCpp_AreThoseOfC) {
  EXPECT_EQ(Kinds(Language::cCpp), cCKinds);
  EXPECT_EQ(RecordOf(Language::cCpp).kinds.data(), RecordOf(Language::cC).kinds.data());
}

TEST(TagLanguages, KindsOfCSharp_AreThirteen) {
  EXPECT_EQ(Kinds(Language::cCSharp),
            "c class|classes\n"
            "d macro|macro definitions\n"
            "e enumerator|enumerators (values inside an enumeration)\n"
            "E event|events\n"
            "f field|fields\n"
            "g enum|enumeration names\n"
            "i interface|interfaces\n"
            "l- local|local variables\n"
            "m method|methods\n"
            "n namespace|namespaces\n"
            "p property|properties\n"
            "s struct|structure names\n"
            "t typedef|typedefs\n");
}

TEST(TagLanguages, KindsOfJava_AreSix) {
  EXPECT_EQ(Kinds(Language::cJava),
            "c class|classes\n"
            "f field|fields\n"
            "i interface|interfaces\n"
            "l- local|local variables\n"
            "m method|methods\n"
            "p package|packages\n");
}

TEST(TagLanguages, KindsOfVera_AreThirteen) {
  EXPECT_EQ(Kinds(Language::cVera),
            "c class|classes\n"
            "d macro|macro definitions\n"
            "e enumerator|enumerators (values inside an enumeration)\n"
            "f function|function definitions\n"
            "g enum|enumeration names\n"
            "l- local|local variables\n"
            "m member|class, struct, and union members\n"
            "p program|programs\n"
            "P- prototype|function prototypes\n"
            "t task|tasks\n"
            "T typedef|typedefs\n"
            "v variable|variable definitions\n"
            "x- externvar|external variable declarations\n");
}

struct TypeRow {
  TagType type;
  std::string_view letters;  // C, C++, C#, Java, Vera; a dot for none
};

TEST(TagLanguages, TypesOfTags_HaveTheirLetters) {
  using enum TagType;
  constexpr TypeRow cRows[] = {
      {cClass, "ccccc"},     {cEnum, "ggg.g"},     {cEnumerator, "eee.e"}, {cEvent, "..E.."},
      {cField, "..ff."},     {cFunction, "ff..f"}, {cInterface, "..ii."},  {cLocal, "lllll"},
      {cMember, "mm..m"},    {cMethod, "..mm."},   {cNamespace, "nnn.."},  {cPackage, "...p."},
      {cProgram, "....p"},   {cProperty, "..p.."}, {cPrototype, "pp..P"},  {cStruct, "sss.."},
      {cTask, "....t"},      {cTypedef, "ttt.T"},  {cUnion, "uu..."},      {cVariable, "vv..v"},
      {cExternVar, "xx..x"}, {cMacro, "ddd.d"},    {cUndefined, "....."}};
  for (const TypeRow& row : cRows)
    for (int language = 0; language < cLanguageCount; ++language) {
      const TagKind* kind = FindKind(static_cast<Language>(language), row.type);
      EXPECT_EQ(kind == nullptr ? '.' : kind->letter, row.letters[language])
          << "type " << static_cast<int>(row.type) << " in language " << language;
    }
}

TEST(TagLanguages, TypeOfNoKind_IsAnAssertionOfTheLanguage) {
  EXPECT_DEATH(KindOf(Language::cC, TagType::cEvent), "\"Bad C tag type\" == NULL");
  EXPECT_DEATH(KindOf(Language::cCpp, TagType::cField), "\"Bad C tag type\" == NULL");
  EXPECT_DEATH(KindOf(Language::cCSharp, TagType::cVariable), "\"Bad C# tag type\" == NULL");
  EXPECT_DEATH(KindOf(Language::cJava, TagType::cEnum), "\"Bad Java tag type\" == NULL");
  EXPECT_DEATH(KindOf(Language::cVera, TagType::cNamespace), "\"Bad Vera tag type\" == NULL");
}

TEST(TagLanguages, LocalOfC_IsSwitchedForCppToo) {
  EnableKind(Language::cC, TagType::cLocal, true);
  EXPECT_TRUE(IsKindEnabled(Language::cCpp, TagType::cLocal));
  EXPECT_FALSE(IsKindEnabled(Language::cJava, TagType::cLocal));
  EnableKind(Language::cC, TagType::cLocal, false);
  EXPECT_FALSE(IsKindEnabled(Language::cCpp, TagType::cLocal));
}

TEST(TagLanguages, KindThatIsNone_CantBeSwitchedOn) {
  EnableKind(Language::cJava, TagType::cEnum, true);
  EXPECT_FALSE(IsKindEnabled(Language::cJava, TagType::cEnum));
}

TEST(TagLanguages, Names_AreFoundInAnyCase) {
  constexpr std::string_view cNames[] = {"C", "C++", "C#", "Java", "Vera"};
  for (int id = 0; id < cLanguageCount; ++id) {
    EXPECT_EQ(Languages()[id].name, cNames[id]);
    EXPECT_EQ(LanguageNamed(cNames[id]), static_cast<Language>(id));
  }
  EXPECT_EQ(LanguageNamed("jAVA"), Language::cJava);
  EXPECT_EQ(LanguageNamed(""), std::nullopt);
  EXPECT_EQ(LanguageNamed("Jav"), std::nullopt);
}

struct PathRow {
  std::string_view path;
  int language;  // -1 for none
  bool isHeader;
};

TEST(TagLanguages, Path_TellsItsLanguage) {
  constexpr PathRow cRows[] = {
      {"a.c", 0, false},       {"a.C", 0, false},     {"a.c++", 1, false},   {"a.cc", 1, false},
      {"a.cp", 1, false},      {"a.cpp", 1, false},   {"a.cxx", 1, false},   {"a.h", 1, true},
      {"a.H", 1, true},        {"a.h++", 1, true},    {"a.hh", 1, true},     {"a.hp", 1, true},
      {"a.hpp", 1, true},      {"a.HXX", 1, true},    {"a.cs", 2, false},    {"a.CS", 2, false},
      {"a.java", -1, false},   {"a.vr", 4, false},    {"a.vri", 4, false},   {"a.vrh", 4, false},
      {"a.txt", -1, false},    {"a.html", -1, false}, {"a.cppm", 1, false},  {"a.hpp~", 1, true},
      {"a.", -1, false},       {"", -1, false},       {"x/vector", 1, true}, {"x\\vector", 1, true},
      {"x.d/vector", 1, true}, {"/", 1, true},        {"vector", -1, false}, {"xcpp", 1, false},
      {"xh", 1, true},         {"a.b.cpp", 1, false}};
  for (const PathRow& row : cRows) {
    bool isHeader = !row.isHeader;
    const auto language = TagParser::languageOf(row.path, isHeader);
    EXPECT_EQ(language ? static_cast<int>(*language) : -1, row.language) << row.path;
    EXPECT_EQ(isHeader, row.isHeader) << row.path;
  }
}

}  // namespace
}  // namespace zendry
