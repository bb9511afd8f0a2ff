#include "LineRules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace mavro {
namespace {

using Lines = std::vector<std::string>;
using Rule = LineBuffer::Rule;
using testing::ElementsAre;

Lines TakeLines(LineBuffer& buffer) {
  Lines lines;
  std::string line;
  while (buffer.Next(line)) lines.push_back(line);
  return lines;
}

// All lines of a text that arrives at once, and the rest as the last one.
Lines Split(Rule rule, std::string_view text) {
  LineBuffer buffer(rule);
  buffer.Append(text);
  Lines lines = TakeLines(buffer);
  if (const std::string rest = buffer.TakeRest(); !rest.empty()) lines.push_back(rest);
  return lines;
}

// The same with the text cut into pieces of a size, and the converter before it.
Lines SplitPieces(Rule rule, std::string_view text, size_t size) {
  NewlineConverter converter;
  LineBuffer buffer(rule);
  Lines lines;
  for (size_t i = 0; i < text.size(); i += size) {
    std::string piece;
    converter.Append(text.substr(i, size), piece);
    buffer.Append(piece);
    for (const std::string& line : TakeLines(buffer)) lines.push_back(line);
  }
  if (const std::string rest = buffer.TakeRest(); !rest.empty()) lines.push_back(rest);
  return lines;
}

std::string Convert(std::string_view text) {
  NewlineConverter converter;
  std::string converted;
  converter.Append(text, converted);
  return converted;
}

TEST(NewlineConverter, BareNewline_GetsReturn) {
  EXPECT_EQ(Convert("a\nb\n\n"), "a\r\nb\r\n\r\n");
}

TEST(NewlineConverter, ReturnAndNewline_Stay) {
  EXPECT_EQ(Convert("a\r\nb\r\n"), "a\r\nb\r\n");
}

TEST(NewlineConverter, LoneReturns_Stay) {
  EXPECT_EQ(Convert("10%\r20%\r\r\n"), "10%\r20%\r\r\n");
}

TEST(NewlineConverter, ReturnAtTheEndOfAPiece_BelongsToTheNewlineOfTheNext) {
  NewlineConverter converter;
  std::string text;
  for (const char* piece : {"a\r", "\nb", "", "\n", "\n"}) converter.Append(piece, text);
  EXPECT_EQ(text, "a\r\nb\r\n\r\n");
}

TEST(NewlineConverter, OtherBytes_Stay) {
  const std::string bytes("\0\x01\xff\x1b[31m", 8);
  EXPECT_EQ(Convert(bytes), bytes);
}

TEST(BlockingRule, LineWithReturn_LosesItsEnding) {
  EXPECT_THAT(Split(Rule::cBlocking, "one\r\ntwo\r\n"), ElementsAre("one", "two"));
}

TEST(BlockingRule, BareNewline_TakesTheLastCharacterAlong) {
  EXPECT_THAT(Split(Rule::cBlocking, "one\ntwo\n"), ElementsAre("on", "tw"));
}

TEST(BlockingRule, NewlineAtTheStart_HoldsEverythingBackToTheEnd) {
  LineBuffer buffer(Rule::cBlocking);
  buffer.Append("\none\r\n");
  EXPECT_THAT(TakeLines(buffer), ElementsAre());
  buffer.Append("two\r\n");
  EXPECT_THAT(TakeLines(buffer), ElementsAre());
  EXPECT_EQ(buffer.TakeRest(), "\none\r\ntwo\r\n");
}

TEST(BlockingRule, NewlineAtTheStartAfterALine_HoldsTheOthersBack) {
  EXPECT_THAT(Split(Rule::cBlocking, "one\r\n\ntwo\r\n"), ElementsAre("one", "\ntwo\r\n"));
}

TEST(BlockingRule, BlankLineWithReturn_IsAnEmptyLine) {
  EXPECT_THAT(Split(Rule::cBlocking, "\r\none\r\n\r\ntwo\r\n"), ElementsAre("", "one", "", "two"));
}

TEST(BlockingRule, LastLineWithoutNewline_IsTheRestAsItIs) {
  EXPECT_THAT(Split(Rule::cBlocking, "one\r\ntwo"), ElementsAre("one", "two"));
  EXPECT_THAT(Split(Rule::cBlocking, "one\r\ntwo\r"), ElementsAre("one", "two\r"));
}

TEST(BlockingRule, NothingAtAll_IsNoLine) {
  EXPECT_THAT(Split(Rule::cBlocking, ""), ElementsAre());
}

TEST(BlockingRule, NulBytes_AreKept) {
  EXPECT_THAT(Split(Rule::cBlocking, std::string_view("a\0b\r\n", 5)),
              ElementsAre(std::string("a\0b", 3)));
}

TEST(AttachedRule, Lines_KeepTheirEndings) {
  EXPECT_THAT(Split(Rule::cAttached, "one\r\ntwo\n\nthree"),
              ElementsAre("one\r\n", "two\n", "\n", "three"));
}

TEST(AttachedRule, IncompleteLine_WaitsForItsEnd) {
  LineBuffer buffer(Rule::cAttached);
  buffer.Append("(gdb) ");
  EXPECT_THAT(TakeLines(buffer), ElementsAre());
  buffer.Append("#0 main\r\n");
  EXPECT_THAT(TakeLines(buffer), ElementsAre("(gdb) #0 main\r\n"));
}

TEST(LineBuffer, TakeRest_LeavesItAsNew) {
  LineBuffer buffer(Rule::cBlocking);
  buffer.Append("one\r\nrest");
  EXPECT_THAT(TakeLines(buffer), ElementsAre("one"));
  EXPECT_EQ(buffer.TakeRest(), "rest");
  EXPECT_EQ(buffer.TakeRest(), "");
  buffer.Append("two\r\n");
  EXPECT_THAT(TakeLines(buffer), ElementsAre("two"));
}

TEST(LineBuffer, AnyCutting_GivesTheSameLines) {
  const std::string text = "\none\n\r\ntwo\r\n\n\nthree and more\rof it\r\r\nlast";
  for (Rule rule : {Rule::cBlocking, Rule::cAttached})
    for (size_t size = 1; size < text.size(); ++size)
      EXPECT_EQ(SplitPieces(rule, text, size), SplitPieces(rule, text, text.size())) << size;
}

// With the converter before it the blocking rule is what a reader of text files does.
TEST(LineBuffer, ConvertedText_LosesNoCharacterOfAnyLine) {
  std::mt19937 random(7);
  for (int round = 0; round < 500; ++round) {
    Lines expected(random() % 6);
    std::string text;
    for (std::string& line : expected) {
      line.assign(random() % 100, static_cast<char>('a' + random() % 26));
      text += line + (random() % 2 ? "\n" : "\r\n");
    }
    EXPECT_EQ(SplitPieces(Rule::cBlocking, text, 1 + random() % 90), expected);
  }
}

}  // namespace
}  // namespace mavro
