#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tags/TagKeywords.h"

namespace zendry {
namespace {

struct Row {
  int id;
  std::string_view word;
  std::string_view flags;  // C, C++, C#, Java, Vera
};

constexpr Row cRows[] = {
    {0, "__attribute__", "xxx.."}, {1, "abstract", "..xx."},
    {2, "bool", ".x.x."},          {3, "byte", "...x."},
    {4, "bad_state", "....x"},     {5, "bad_trans", "....x"},
    {6, "bind", "....x"},          {7, "bind_var", "....x"},
    {8, "bit", "....x"},           {9, "case", "xxxx."},
    {10, "catch", ".xx.."},        {11, "char", "xxxx."},
    {12, "class", ".xxxx"},        {13, "const", "xxxx."},
    {14, "constraint", "....x"},   {15, "coverage_block", "....x"},
    {16, "coverage_def", "....x"}, {17, "default", "xxxx."},
    {18, "delegate", "..x.."},     {19, "do", "xxxx."},
    {20, "double", "xxxx."},       {21, "else", "xx.x."},
    {22, "enum", "xxx.x"},         {23, "explicit", ".xx.."},
    {24, "extern", "xxx.x"},       {25, "extends", "...xx"},
    {26, "event", "..x.x"},        {27, "final", "...x."},
    {28, "float", "xxxx."},        {29, "for", "xxxx."},
    {30, "friend", ".x..."},       {31, "function", "....x"},
    {32, "goto", "xxxx."},         {33, "if", "xxxx."},
    {34, "implements", "...x."},   {35, "import", "...x."},
    {36, "inline", ".x..."},       {37, "int", "xxxx."},
    {38, "inout", "....x"},        {39, "input", "....x"},
    {40, "integer", "....x"},      {41, "interface", "..xxx"},
    {42, "internal", "..x.."},     {43, "local", "....x"},
    {44, "long", "xxxx."},         {45, "m_bad_state", "....x"},
    {46, "m_bad_trans", "....x"},  {47, "m_state", "....x"},
    {48, "m_trans", "....x"},      {49, "mutable", ".x..."},
    {50, "namespace", ".xx.."},    {51, "new", ".xxx."},
    {52, "newcov", "....x"},       {53, "native", "...x."},
    {54, "operator", ".xx.."},     {55, "output", "....x"},
    {56, "overload", ".x..."},     {57, "override", "..x.."},
    {58, "packed", "....x"},       {59, "port", "....x"},
    {60, "package", "...x."},      {61, "private", ".xxx."},
    {62, "program", "....x"},      {63, "protected", ".xxxx"},
    {64, "public", ".xxxx"},       {65, "register", "xx..."},
    {66, "return", "xxxx."},       {67, "shadow", "....x"},
    {68, "state", "....x"},        {69, "short", "xxxx."},
    {70, "signed", "xx..."},       {71, "static", "xxxxx"},
    {72, "string", "..x.x"},       {73, "struct", "xxx.."},
    {74, "switch", "xxxx."},       {75, "synchronized", "...x."},
    {76, "task", "....x"},         {77, "template", ".x..."},
    {78, "this", ".xxx."},         {79, "throw", ".xxx."},
    {80, "throws", "...x."},       {81, "transient", "...x."},
    {82, "trans", "....x"},        {83, "transition", "....x"},
    {84, "try", ".xx.."},          {85, "typedef", "xxx.x"},
    {86, "typename", ".x..."},     {87, "uint", "..x.."},
    {88, "ulong", "..x.."},        {89, "union", "xx..."},
    {90, "unsigned", "xxx.."},     {91, "ushort", "..x.."},
    {92, "using", ".xx.."},        {93, "virtual", ".xx.x"},
    {94, "void", "xxxxx"},         {95, "volatile", "xxxx."},
    {96, "wchar_t", "xxx.."},      {97, "while", "xxxx."},
};

class TagKeyword : public testing::TestWithParam<Row> {};

TEST_P(TagKeyword, Word_HasItsIdInItsLanguagesAlone) {
  const Row& row = GetParam();
  ASSERT_EQ(row.flags.size(), static_cast<size_t>(cLanguageCount));
  for (int language = 0; language < cLanguageCount; ++language)
    EXPECT_EQ(static_cast<int>(MeaningOf(row.word, static_cast<Language>(language)).keyword),
              row.flags[language] == 'x' ? row.id : -1)
        << row.word << " in language " << language;
}

TEST_P(TagKeyword, OtherSpelling_IsAName) {
  for (const std::string& word :
       {std::string(GetParam().word) + 'x', 'x' + std::string(GetParam().word)})
    for (int language = 0; language < cLanguageCount; ++language)
      EXPECT_EQ(MeaningOf(word, static_cast<Language>(language)).keyword, Keyword::cNone) << word;
}

INSTANTIATE_TEST_SUITE_P(Rows, TagKeyword, testing::ValuesIn(cRows),
                         [](const auto& info) { return std::to_string(info.param.id); });

TEST(TagKeywords, Table_HasTheseRows) {
  EXPECT_EQ(std::size(cRows), Keywords().size());
  for (size_t id = 0; id < std::size(cRows); ++id) EXPECT_EQ(Keywords()[id].text, cRows[id].word);
}

TEST(TagKeywords, WordsLeftOutOnPurpose_AreNames) {
  for (const std::string_view word : {"break", "continue", "delete", "true", "false", "static_cast",
                                      "dynamic_cast", "reinterpret_cast"})
    for (int language = 0; language < cLanguageCount; ++language)
      EXPECT_EQ(MeaningOf(word, static_cast<Language>(language)).keyword, Keyword::cNone) << word;
}

TEST(TagKeywords, ModernWords_MeanSomethingInCppAndSomeInC) {
  for (const ModernRow& row : ModernWords())
    for (int language = 0; language < cLanguageCount; ++language) {
      const WordMeaning meaning = MeaningOf(row.text, static_cast<Language>(language));
      const bool isKnown = static_cast<Language>(language) == Language::cCpp ||
                           (static_cast<Language>(language) == Language::cC && row.isInC);
      if (isKnown)
        EXPECT_EQ(meaning.modern, row.word) << row.text;
      else
        EXPECT_EQ(meaning.modern, ModernWord::cNone) << row.text;
    }
}

TEST(TagKeywords, NothingAndLongWords_AreNames) {
  EXPECT_EQ(MeaningOf("", Language::cCpp).keyword, Keyword::cNone);
  EXPECT_EQ(MeaningOf(std::string(100000, 'i'), Language::cCpp).keyword, Keyword::cNone);
  EXPECT_EQ(MeaningOf("INT", Language::cCpp).keyword, Keyword::cNone);
}

}  // namespace
}  // namespace zendry
