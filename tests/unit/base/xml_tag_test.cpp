#include "base/XmlTag.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zendry {
namespace {

// "element n o p v id" of the first element; "none" without one.
std::string ReadOne(std::string_view text) {
  TagSource source{text};
  XmlTag tag;
  if (!tag.read(&source)) return "none";
  return tag.element + "|" + tag.n + "|" + tag.o + "|" + tag.p + "|" + tag.v + "|" +
         std::to_string(tag.id);
}

std::vector<std::string> ReadNames(std::string_view text) {
  std::vector<std::string> names;
  TagSource source{text};
  for (XmlTag tag; tag.read(&source);) names.push_back(tag.element);
  return names;
}

std::string Written(const XmlTag& tag) {
  std::string text;
  tag.write(text);
  return text;
}

XmlTag Closed(std::string_view value) {
  XmlTag tag;
  tag.begin("x", 1, XmlTag::Ends::cAtOnce);
  tag.set(value, "", "", "", -1);
  return tag;
}

using Names = std::vector<std::string>;

TEST(XmlTag, Write_AllValues_StandInFixedOrder) {
  XmlTag tag;
  tag.begin("e", 2, XmlTag::Ends::cAtOnce);
  tag.set("1", "2", "3", "4", 5);
  EXPECT_EQ(Written(tag), "\t\t<e n=\"1\" id=\"5\" o=\"2\" p=\"3\" v=\"4\"/>\n");
}

TEST(XmlTag, Write_EmptyValuesAndNoId_AreLeftOut) {
  XmlTag tag;
  tag.begin("inc", 0, XmlTag::Ends::cAtOnce);
  EXPECT_EQ(Written(tag), "<inc/>\n");
  tag.closed = false;
  EXPECT_EQ(Written(tag), "<inc>\n");
}

TEST(XmlTag, Write_OtherLabels_AreUsed) {
  XmlTag tag(TagLabels{"name", "opt", "p", "value"});
  tag.begin("e", 0, XmlTag::Ends::cLater);
  tag.set("1", "2", "3", "4", 0);
  EXPECT_EQ(Written(tag), "<e name=\"1\" id=\"0\" opt=\"2\" p=\"3\" value=\"4\">\n");
}

TEST(XmlTag, Begin_AfterUse_ClearsValues) {
  XmlTag tag;
  tag.begin("a", 1, XmlTag::Ends::cAtOnce);
  tag.set("1", "2", "3", "4", 5);
  tag.begin("b", 0, XmlTag::Ends::cAtOnce);
  EXPECT_EQ(Written(tag), "<b/>\n");
}

TEST(XmlTag, Read_AnyOrder_FillsByFirstLetter) {
  EXPECT_EQ(ReadOne("<e value=\"v\" id=\"7\" obj=\"o\" n=\"n\" param=\"p\">"), "e|n|o|p|v|7");
}

TEST(XmlTag, Read_UnknownAttribute_IsDropped) {
  EXPECT_EQ(ReadOne("<e x=\"1\" n=\"a\" N=\"b\">"), "e|a||||-1");
}

TEST(XmlTag, Read_BareElementWithSlash_KeepsItInTheName) {
  EXPECT_EQ(ReadOne("<inc/>"), "inc/|||||-1");
  EXPECT_EQ(ReadOne("</gen>"), "/gen|||||-1");
}

TEST(XmlTag, Read_SlashAfterValue_IsNoPartOfIt) {
  EXPECT_EQ(ReadOne("<file name=\"a.c\"/>"), "file|a.c||||-1");
  EXPECT_EQ(ReadOne("<file name=\"a.c\" />"), "file|a.c||||-1");
}

TEST(XmlTag, Read_BlankEqualsAndGreaterInQuotes_BelongToTheValue) {
  EXPECT_EQ(ReadOne("<e v=\"a > b = c\td\n\"/>"), "e||||a > b = c\td\n|-1");
}

TEST(XmlTag, Read_QuotesInValue_AreCutAtTheLast) {
  EXPECT_EQ(ReadOne("<e o=\"-DX=\"a\"\"/>"), "e||-DX=\"a\"|||-1");
  EXPECT_EQ(ReadOne("<e o=\"a\"b/>"), "e||a|||-1");
}

TEST(XmlTag, Read_ValueWithoutQuotes_LosesItsFirstCharacter) {
  EXPECT_EQ(ReadOne("<e n=abc>"), "e|bc||||-1");
  EXPECT_EQ(ReadOne("<e n=\">"), "e|||||-1");
}

TEST(XmlTag, Read_Numbers_AreReadAsFarAsTheyGo) {
  EXPECT_EQ(ReadOne("<e i=\"12x\">"), "e|||||12");
  EXPECT_EQ(ReadOne("<e i=\"x\">"), "e|||||0");
  EXPECT_EQ(ReadOne("<e i=\" -3\">"), "e|||||-3");
  EXPECT_EQ(ReadOne("<e i=\"99999999999999999999\">"), "e|||||2147483647");
  EXPECT_EQ(ReadOne("<e i=\"-99999999999999999999\">"), "e|||||-2147483648");
}

TEST(XmlTag, Read_BlankBeforeEquals_GivesNoAttribute) {
  EXPECT_EQ(ReadOne("<e n = \"a\">"), "e|||||-1");
}

TEST(XmlTag, Read_WhiteSpaceOfAllKinds_Separates) {
  EXPECT_EQ(ReadOne("<e\r\n\tn=\"a\"\v\fo=\"b\"\r\n>"), "e|a|b|||-1");
}

TEST(XmlTag, Read_TextBetweenElements_IsSkipped) {
  EXPECT_EQ(ReadNames("x<a>y\r\n<b/></a> z"), (Names{"a", "b/", "/a"}));
}

TEST(XmlTag, Read_Comment_IsAnElementThatHidesWhatItHolds) {
  EXPECT_EQ(ReadNames("<!-- <file name=\"x\"/> --><a>"), (Names{"!--", "a"}));
}

TEST(XmlTag, Read_EmptyText_IsNone) {
  EXPECT_EQ(ReadOne(""), "none");
  EXPECT_EQ(ReadOne("plain text"), "none");
  EXPECT_EQ(ReadOne("<"), "none");
}

TEST(XmlTag, Read_ElementWithoutName_EndsReading) {
  EXPECT_EQ(ReadNames("<a><><b>"), Names{"a"});
}

TEST(XmlTag, Read_CutInElement_GivesWhatIsThere) {
  EXPECT_EQ(ReadOne("<fi"), "fi|||||-1");
  EXPECT_EQ(ReadOne("<file na"), "file|||||-1");
  EXPECT_EQ(ReadOne("<file name=\"a.c"), "file|||||-1");
  EXPECT_EQ(ReadOne("<file name=\"a.c\""), "file|a.c||||-1");
}

TEST(XmlTag, Read_NulBytes_ArePlainCharacters) {
  using namespace std::string_literals;
  EXPECT_EQ(ReadOne("<a\0b n=\"\0\">"s), "a\0b|\0||||-1"s);
  EXPECT_EQ(ReadOne(std::string(1000, '\0')), "none");
}

TEST(XmlTag, Read_TokenOf511Characters_IsTaken) {
  EXPECT_EQ(ReadNames("<" + std::string(511, 'e') + ">").front().size(), 511u);
  EXPECT_EQ(ReadOne("<e n=\"" + std::string(509, 'x') + "\">").size(), 509u + 8);
}

TEST(XmlTagDeathTest, Read_TokenOf512Characters_BreaksPrecondition) {
  EXPECT_DEATH(ReadOne("<" + std::string(512, 'e') + ">"), "idx<512");
  EXPECT_DEATH(ReadOne("<e n=\"" + std::string(510, 'x') + "\">"), "idx<512");
  EXPECT_DEATH(ReadOne("<e \"" + std::string(600, ' ')), "idx<512");
}

TEST(XmlTagDeathTest, Read_NullSource_BreaksPrecondition) {
  XmlTag tag;
  EXPECT_DEATH(tag.read(nullptr), "xf!=NULL");
}

TEST(XmlTag, TokensFit_SeesEveryElement) {
  const std::string longest(511, 'e');
  EXPECT_TRUE(TokensFit(""));
  EXPECT_TRUE(TokensFit(std::string(5000, 'x') + "<" + longest + ">"));
  EXPECT_FALSE(TokensFit("<a><b n=\"" + longest + "\">"));
}

TEST(XmlTag, PassOverTooLong_LeavesOutTheElementsAndNothingElse) {
  const std::string fits(509, 'x'), tooLong(510, 'x');
  const std::string good = "text <a n=\"1\"> <b v=\"" + fits + "\">\n";
  EXPECT_EQ(PassOverTooLong(good).text, good);
  EXPECT_EQ(PassOverTooLong(good).passedOver, "");
  const FittingTags tags =
      PassOverTooLong(good + "<c n=\"y\" v=\"" + tooLong + "\"/>\n<d n=\"" + tooLong + "\"><e/>");
  EXPECT_EQ(tags.text, good + "\n<e/>");
  EXPECT_EQ(tags.passedOver, "<c n=\"y\" v=\"" + std::string(28, 'x'));
  EXPECT_TRUE(TokensFit(tags.text));
}

TEST(XmlTag, PassOverTooLong_QuoteWithoutItsOther_TakesTheRest) {
  const FittingTags tags = PassOverTooLong("<a><b v=\"" + std::string(600, '>') + "<c>");
  EXPECT_EQ(tags.text, "<a>");
}

TEST(XmlTag, TooLongWords_AreOneLineWithoutControlBytes) {
  const std::string words = TooLongWords(PassOverTooLong("<a\x1b \n" + std::string(512, 'x')));
  EXPECT_EQ(words, "a value of more than some 500 characters: <a<1b> ...");
}

TEST(XmlTag, ReadsBack_OrdinaryValues_Do) {
  for (const char* value : {"", "a", "a b", "a=b>c</x>", "a\nb\r\n\t", "-DX=\"a\"", "\"a\"", "\\"})
    EXPECT_TRUE(Closed(value).ReadsBack()) << value;
  EXPECT_TRUE(Closed(std::string("\0a", 2)).ReadsBack());
}

TEST(XmlTag, ReadsBack_QuotesThatOpenTheValue_DoNot) {
  for (const char* value : {"\"", "a\"b", "-DX=\"a b\"", "\"a=b\"", "\"/>\""})
    EXPECT_FALSE(Closed(value).ReadsBack()) << value;
}

TEST(XmlTag, ReadsBack_LongestValue_LeavesRoomForQuotesAndSlash) {
  EXPECT_TRUE(Closed(std::string(508, 'x')).ReadsBack());
  EXPECT_FALSE(Closed(std::string(509, 'x')).ReadsBack());
  XmlTag open = Closed(std::string(509, 'x'));
  open.closed = false;
  EXPECT_TRUE(open.ReadsBack());
}

TEST(XmlTag, Read_OneMegabyteInOneLine_IsReadThrough) {
  std::string text;
  while (text.size() < 1000000) text += "<a n=\"1\"/>";
  EXPECT_EQ(ReadNames(text).size(), text.size() / 10);
  EXPECT_TRUE(ReadNames(std::string(1000000, 'x')).empty());
}

}  // namespace
}  // namespace zendry
