#include "RegularExpr.h"

#include <gtest/gtest.h>

#include <string>

namespace mavro {
namespace {

using Outcome = RegularExpr::Outcome;

// The first match and its groups as "whole|first|second"; "-" for none, or the error.
std::string Found(const std::string& pattern, const std::string& line, bool matchCase = true) {
  const RegularExpr expr(pattern, matchCase);
  if (!expr.Error().empty()) return expr.Error();
  RegularExpr::Match match;
  if (expr.Find(line, 0, match) != Outcome::cFound) return "-";
  std::string found;
  for (const auto& [start, end] : match.groups) {
    if (start == RegularExpr::cNowhere) continue;
    found += (found.empty() ? "" : "|") + line.substr(start, end - start);
  }
  return found;
}

TEST(RegularExpr, SignsAndSets) {
  EXPECT_EQ(Found("a.c", "xxabc"), "abc");
  EXPECT_EQ(Found("a.c", "ac"), "-");
  EXPECT_EQ(Found("[b-d]+", "abcde"), "bcd");
  EXPECT_EQ(Found("[^b-d]+", "bcxyd"), "xy");
  EXPECT_EQ(Found("[]a]+", "x]a"), "]a");
  EXPECT_EQ(Found("[a-]+", "x-a-"), "-a-");
  EXPECT_EQ(Found("\\d+\\.\\d*", "pi 3.14"), "3.14");
  EXPECT_EQ(Found("\\w+\\s\\w+", "- a_1 b"), "a_1 b");
  EXPECT_EQ(Found("\\D\\S", "12ab"), "ab");
  EXPECT_EQ(Found("\\.\\*\\\\", "a.*\\"), ".*\\");
  EXPECT_EQ(Found("\\t", "a\tb"), "\t");
}

TEST(RegularExpr, EdgesOfLinesAndWords) {
  EXPECT_EQ(Found("^ab", "abab"), "ab");
  EXPECT_EQ(Found("^b", "ab"), "-");
  EXPECT_EQ(Found("b$", "bab"), "b");
  EXPECT_EQ(Found("a$", "ab"), "-");
  EXPECT_EQ(Found("\\bif\\b", "elif if"), "if");
  EXPECT_EQ(Found("\\bif\\b", "elif ifs"), "-");
  EXPECT_EQ(Found("\\Bif", "if elif"), "if");
}

TEST(RegularExpr, Repetitions) {
  EXPECT_EQ(Found("ab*", "abbb"), "abbb");
  EXPECT_EQ(Found("ab*?", "abbb"), "a");
  EXPECT_EQ(Found("<.+?>", "<a><b>"), "<a>");
  EXPECT_EQ(Found("ab{2}", "ab abb"), "abb");
  EXPECT_EQ(Found("ab{1,2}", "abbb"), "abb");
  EXPECT_EQ(Found("ab{2,}", "ab abbbb"), "abbbb");
  EXPECT_EQ(Found("a{x}", "a{x}"), "a{x}") << "a brace that begins no bounds is a character";
  EXPECT_EQ(Found("(?:a*)*b", "aab"), "aab") << "a round that matches nothing ends the loop";
  EXPECT_EQ(Found("x*", "aaa"), "");
}

TEST(RegularExpr, GroupsAndChoices) {
  EXPECT_EQ(Found("(a|b)(c|d)", "xbd"), "bd|b|d");
  EXPECT_EQ(Found("(?:a|b)+(c)", "ababc"), "ababc|c");
  EXPECT_EQ(Found("(\\w+) \\1", "a the the b"), "the the|the");
  EXPECT_EQ(Found("one|two|three", "a three"), "three");
  EXPECT_EQ(Found("a(|b)c", "ac"), "ac|");
  EXPECT_EQ(Found("(a)|b", "b"), "b") << "a group without a part in the match";
}

TEST(RegularExpr, Case_IsIgnoredForLettersOfAscii) {
  EXPECT_EQ(Found("AbC[x-z]", "aBcY", false), "aBcY");
  EXPECT_EQ(Found("AbC", "aBc", true), "-");
  EXPECT_EQ(Found("(a)\\1", "aA", false), "aA|a");
}

TEST(RegularExpr, LettersBeyondAscii_AreOneCharacter) {
  EXPECT_EQ(Found("^.$", "\u00E4"), "\u00E4");
  EXPECT_EQ(Found("[\u00E0-\u00E9]+", "x\u00E4\u00E9y"), "\u00E4\u00E9");
  EXPECT_EQ(Found("\u20AC+", "\u20AC\u20AC"), "\u20AC\u20AC");
  EXPECT_EQ(Found("^\\w+$", "\u00E4b"), "\u00E4b");
  EXPECT_EQ(Found("\u00E4", "\u00C4", false), "\u00C4");
}

TEST(RegularExpr, LinesThatAreNoUtf8_AreBytes) {
  const std::string odd =
      "a\xE4"
      "b";
  EXPECT_EQ(Found("^.{3}$", odd), odd);
  EXPECT_EQ(Found("\xE4", odd), "\xE4") << "nor is the pattern";
  EXPECT_EQ(Found("\\x{20AC}", odd), "-") << "no byte";
  EXPECT_EQ(Found("\\x{20AC}", "\u20AC"), "\u20AC");
}

TEST(RegularExpr, AStartWithinALetter_IsTheNextOne) {
  RegularExpr::Match match;
  ASSERT_EQ(RegularExpr(".", true).Find("\u00E4b", 1, match), Outcome::cFound);
  EXPECT_EQ(match.groups[0], (RegularExpr::Range{2, 3}));
}

TEST(RegularExpr, LooksAround) {
  EXPECT_EQ(Found("a(?=b)", "ac ab"), "a");
  EXPECT_EQ(Found("(?<!\\w)if", "elif if"), "if");
  EXPECT_EQ(Found("a\\Kb", "ab"), "b");
}

TEST(RegularExpr, BrokenOnes_SayWhyAndWhere) {
  EXPECT_EQ(Found("a(b", ""), "missing closing parenthesis (at 3)");
  EXPECT_EQ(Found("[ab", ""), "missing terminating ] for character class (at 3)");
  EXPECT_EQ(Found("*a", ""), "quantifier does not follow a repeatable item (at 0)");
  for (const char* pattern : {"ab)", "a\\", "a{3,2}", "[z-a]", "\\2", "[\u00E9-\u00E4]"})
    EXPECT_FALSE(RegularExpr(pattern, true).Error().empty()) << pattern;
  EXPECT_FALSE(RegularExpr("((a{1000}){1000}){1000}", true).Error().empty());
  EXPECT_FALSE(RegularExpr(std::string(2000, '('), true).Error().empty());
}

TEST(RegularExpr, WaysWithoutEnd_AreGivenUp) {
  RegularExpr::Match match;
  const std::string line(60, 'a');
  for (const char* pattern : {"(a+)+[bc]", "(a|a)*[bc]", "^(a|aa)+[^a]"})
    EXPECT_EQ(RegularExpr(pattern, true).Find(line, 0, match), Outcome::cTooLong) << pattern;
}

}  // namespace
}  // namespace mavro
