#include "RegularExpr.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <regex>

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
  EXPECT_EQ(Found("(a*)*b", "aab"), "aab|aa") << "a round that matches nothing ends the loop";
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
  EXPECT_EQ(Found("^.{3}$",
                  "a\xFF"
                  "b"),
            "a\xFF"
            "b")
      << "an odd byte is one too";
  EXPECT_EQ(Found("\u20AC+", "\u20AC\u20AC"), "\u20AC\u20AC");
}

TEST(RegularExpr, BrokenOnes_SayWhyAndWhere) {
  EXPECT_EQ(Found("a(b", ""), "'(' without ')' (at 2)");
  EXPECT_EQ(Found("ab)", ""), "')' without '(' (at 3)");
  EXPECT_EQ(Found("[ab", ""), "'[' without ']' (at 1)");
  EXPECT_EQ(Found("*a", ""), "nothing to repeat before '*' (at 1)");
  EXPECT_EQ(Found("a\\", ""), "nothing after '\\' (at 3)");
  EXPECT_EQ(Found("a{3,2}", ""), "the bounds of a repetition are exchanged (at 7)");
  EXPECT_EQ(Found("a{1001}", ""), "more than 1000 repetitions (at 8)");
  EXPECT_EQ(Found("[z-a]", ""), "a range with exchanged ends (at 5)");
  EXPECT_EQ(Found("\\2", ""), "there is no group 2 before (at 2)");
  EXPECT_EQ(Found("\\q", ""), "'\\q' is not known (at 2)");
  EXPECT_EQ(Found("(?=a)", ""), "'(?' is known as '(?:' only (at 3)");
  EXPECT_NE(Found("((a{1000}){1000}){1000}", "").find("too long"), std::string::npos);
  EXPECT_NE(Found(std::string(200, '('), "").find("too many"), std::string::npos);
}

TEST(RegularExpr, WaysWithoutEnd_AreGivenUp) {
  const auto start = std::chrono::steady_clock::now();
  RegularExpr::Match match;
  const std::string line(60, 'a');
  for (const char* pattern : {"(a+)+b", "(a|a)*b", "(a|aa)+$x", "(.*)*\\1b"})
    EXPECT_EQ(RegularExpr(pattern, true).Find(line, 0, match), Outcome::cTooLong) << pattern;
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(RegularExpr, AgreesWithTheStandardLibrary) {
  std::mt19937 random(1);
  const char* const pieces[] = {"a",  "b",   "(a|b)", "[ab]", "a*", "b+?",    ".",
                                "a?", "\\w", "(ab)*", "$",    "^",  "a{1,2}", "\\b"};
  for (int round = 0; round < 3000; ++round) {
    std::string pattern, line;
    for (unsigned i = 0; i < 1 + random() % 4; ++i) pattern += pieces[random() % std::size(pieces)];
    for (unsigned i = 0; i < random() % 10; ++i) line += "ab c"[random() % 4];
    std::smatch expected;
    const bool isFound = std::regex_search(line, expected, std::regex(pattern));
    RegularExpr::Match match;
    const Outcome outcome = RegularExpr(pattern, true).Find(line, 0, match);
    ASSERT_EQ(outcome == Outcome::cFound, isFound) << pattern << " in " << line;
    if (!isFound) continue;
    EXPECT_EQ(match.groups[0].first, static_cast<size_t>(expected.position(0)));
    EXPECT_EQ(match.groups[0].second - match.groups[0].first,
              static_cast<size_t>(expected.length(0)))
        << pattern << " in " << line;
  }
}

}  // namespace
}  // namespace mavro
