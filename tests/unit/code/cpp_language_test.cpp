#include "code/CppLanguage.h"

#include <gtest/gtest.h>

#include "EditorColours.h"

#include <cctype>
#include <string>
#include <vector>

namespace zendry {
namespace {

TEST(CppLanguage, Values_AreThoseOfCAndCpp) {
  const mavro::EditorLanguage& language = cCppLanguage;
  EXPECT_STREQ(language.name, "cpp");
  EXPECT_STREQ(language.keywords2, "uint int64 uchar string list set vector");
  EXPECT_STREQ(language.indentWords, "case default do else for if while");
  EXPECT_STREQ(language.blockStart, "{");
  EXPECT_STREQ(language.blockEnd, "}");
  EXPECT_STREQ(language.tipStart, "(");
  EXPECT_STREQ(language.tipEnd, ")");
  EXPECT_STREQ(language.tipSeparators, ",;");
  EXPECT_STREQ(language.memberChars, ".->:");
  EXPECT_TRUE(language.wordCompletion);
  EXPECT_STREQ(language.fileFilter,
               "C/C++ (c cc cpp cxx h hh hxx hpp)|*.c;*.cc;*.cpp;*.cxx;*.h;*.hh;*.hpp;*.hxx");
}

TEST(CppLanguage, Keywords_AreAllOfThem) {
  EXPECT_STREQ(
      cCppLanguage.keywords,
      "and and_eq asm auto bitand bitor bool break case catch char class compl const const_cast "
      "continue default delete do double dynamic_cast else enum explicit export extern false float "
      "for friend goto if inline int long mutable namespace new not not_eq operator or or_eq "
      "private protected public register reinterpret_cast return short signed sizeof static "
      "static_cast struct switch template this throw true try typedef typeid typename union "
      "unsigned using virtual void volatile wchar_t while xor xor_eq ");
}

TEST(CppLanguage, WordCharacters_AreUnderscoreLettersAndDigits) {
  const std::string set = cCppLanguage.wordChars;
  EXPECT_EQ(set.size(), 63u);
  for (int c = 1; c < 128; ++c)
    EXPECT_EQ(set.find(static_cast<char>(c)) != set.npos, std::isalnum(c) || c == '_') << c;
}

TEST(CppLanguage, FieldsWithoutValue_AreEmpty) {
  const mavro::EditorLanguage& language = cCppLanguage;
  for (const char* keywords : language.furtherKeywords) EXPECT_EQ(keywords, nullptr);
  EXPECT_EQ(language.fillUps, nullptr);
  EXPECT_FALSE(language.ignoreCase);
  EXPECT_EQ(language.operatorStyle, 0);
  EXPECT_EQ(language.cancelAtStart, 0);
  EXPECT_EQ(language.dropRestOfWord, 0);
}

TEST(CppLanguage, StyleRows_NumbersSizesAndLetters_AreThoseOfTheTable) {
  const std::vector<std::vector<int>> expected = {
      {0, 0}, {1, 9}, {2, 9}, {3, 9},       {4, 0},  {5, 0x1000},  {6, 0},
      {7, 0}, {8, 0}, {9, 0}, {10, 0x1000}, {11, 0}, {12, 0x8000}, {15, 8}};
  const mavro::StyleRow* row = cCppLanguage.styles;
  for (const std::vector<int>& values : expected) {
    ASSERT_LT(row->style, 256);
    EXPECT_EQ(values, (std::vector{row->style, row->flags}));
    ++row;
  }
  EXPECT_GE(row->style, 256);
}

// Where an ink ends up is known to the table of colours, which is tested.
TEST(CppLanguage, StyleRows_HaveInksAndGroundsOfTheEditorsColours) {
  const auto isOneOf = [](const mavro::ColourPair& pair, int start, int end) {
    for (int i = start; i < end; ++i)
      if (mavro::ColourOf(static_cast<mavro::EditorColour>(i)) == pair) return true;
    return false;
  };
  for (const mavro::StyleRow* row = cCppLanguage.styles; row->style < 256; ++row) {
    EXPECT_TRUE(isOneOf(row->foreground, 0, mavro::cEndOfInks)) << row->style;
    EXPECT_TRUE(row->background.light == 0 ||
                isOneOf(row->background, mavro::cEndOfInks, mavro::cEndOfGrounds))
        << row->style;
  }
}

}  // namespace
}  // namespace zendry
