#include "frmedt/PropClass.h"

#include <gtest/gtest.h>

#include "frmedt/FormData.h"

namespace zendry {
namespace {

std::string ToValue(const PropClass& type, const std::string& text, const std::string& old = "") {
  PropValue prop{nullptr, old};
  PropContext context{nullptr, &prop, 0, text};
  type.ToValue(context);
  return prop.value;
}

std::string ToSource(const PropClass& type, const std::string& value) {
  PropValue prop{nullptr, value};
  PropContext context{nullptr, &prop, 0, {}};
  EXPECT_TRUE(type.ToSource(context));
  return context.text;
}

TEST(PropClass, String_TakesOffTheQuotesWithoutLookingAtTheLast) {
  EXPECT_EQ(ToValue(thePropString, "\"abc\""), "abc");
  EXPECT_EQ(ToValue(thePropString, "\"abcd"), "abc");
  EXPECT_EQ(ToValue(thePropString, "name", "old"), "old");
  EXPECT_EQ(ToValue(thePropString, "", "old"), "old");
  EXPECT_EQ(ToValue(thePropString, "\"", "old"), "");
  EXPECT_EQ(ToSource(thePropString, "a\\\"b"), "\"a\\\"b\"");
}

TEST(PropClass, OtherTexts_AreCopied) {
  for (const PropClass* type : {&thePropInteger, &thePropFloat, &thePropExpression}) {
    EXPECT_EQ(ToValue(*type, "a + 1"), "a + 1");
    EXPECT_EQ(ToSource(*type, "a + 1"), "a + 1");
  }
}

TEST(PropClass, Selection_HasItsPrefixInSourceOnly) {
  EXPECT_EQ(ToValue(thePropDock, "Dock::cTop"), "cTop");
  EXPECT_EQ(ToValue(thePropDock, "cTop"), "cTop");
  EXPECT_EQ(ToSource(thePropDock, "cTop"), "Dock::cTop");
  EXPECT_EQ(ToSource(thePropBoolean, "true"), "true");
  EXPECT_EQ(ToSource(thePropOrientation, "cVertical"), "cVertical");
}

TEST(PropClass, Strings_AreAddedOneByOne) {
  EXPECT_EQ(ToValue(thePropStrItems, "Add(\"a\")", "x\r\n"), "x\r\na\r\n");
  EXPECT_EQ(ToValue(thePropStrItems, "Add( a )"), "a\r\n");
  EXPECT_EQ(ToValue(thePropStrItems, "Add(\"f\\\")\")"), "f\\\")\r\n");
  EXPECT_EQ(ToValue(thePropStrItems, "Add(\"\")"), "\r\n");
  EXPECT_EQ(ToValue(thePropStrItems, "add(\"a\")"), "");
  EXPECT_EQ(ToSource(thePropStrItems, "a\r\nb"), std::string(".Add(\"a\")\0.Add(\"b\")\0", 20));
  EXPECT_EQ(ToSource(thePropStrItems, "a\r\n"), std::string(".Add(\"a\")\0", 10));
}

TEST(PropClass, Buttons_AreSourceText) {
  EXPECT_EQ(ToValue(thePropTbItems, "Add(Icons::icoNew, \"New\")"), "Icons::icoNew, \"New\"\r\n");
  EXPECT_EQ(ToSource(thePropTbItems, "_separator_\r\n"), std::string(".Add(_separator_)\0", 18));
}

TEST(PropClass, OptionPosition_FindsTheTextAnywhere) {
  EXPECT_EQ(OptionPosition("cNone|cTop|cBootom", "cBootom"), 2);
  EXPECT_EQ(OptionPosition("cNone|cTop|cBootom", "o"), 0);
  EXPECT_EQ(OptionPosition("cNone|cTop|cBootom", "op"), 1);
  EXPECT_EQ(OptionPosition("cNone|cTop|cBootom", "cLeft"), 0);
  // The text of an icon that is a part of an earlier one's.
  EXPECT_EQ(OptionPosition(thePropIcon.ref, "icoOpen"), 2);
  EXPECT_EQ(OptionPosition(thePropIcon.ref, "icoGo"), 10);
}

TEST(PropClass, ValueNumber_DependsOnTheType) {
  EXPECT_EQ(ValueNumber(thePropInteger, "-12x"), -12);
  EXPECT_EQ(ValueNumber(thePropInteger, "99999999999"), 2147483647);
  EXPECT_EQ(ValueNumber(thePropBoolean, "false"), 1);
  EXPECT_EQ(ValueNumber(thePropString, "5"), 0);
}

TEST(FontText, Parse) {
  FontText font = FontText::Parse("Font(12, Font::cBold|Font::cItalic)");
  EXPECT_EQ(font.size, 12);
  EXPECT_TRUE(font.isBold && font.isItalic);
  font = FontText::Parse("Font(9)");
  EXPECT_EQ(font.size, 9);
  EXPECT_FALSE(font.isBold || font.isItalic);
  font = FontText::Parse("Font(8, Font::cItalic)");
  EXPECT_TRUE(!font.isBold && font.isItalic);
}

TEST(FontText, TheTypefaceLosesItsLastCharacter) {
  const FontText font = FontText::Parse("Font(\"Arial\", 10)");
  EXPECT_EQ(font.name, "Aria");
  EXPECT_EQ(font.size, 10);
  EXPECT_EQ(FontText::Parse("Font(\"\", 10)").name, "");
  EXPECT_EQ(FontText::Parse("Font(\"A").size, 0);
  EXPECT_EQ(FontText::Parse("Font(\"Arial\")").size, 0);
}

TEST(FontText, NoFont_IsEmpty) {
  for (const char* text : {"<default>", "", "(", "Font("}) {
    EXPECT_EQ(FontText::Parse(text).size, 0) << text;
    EXPECT_EQ(FontText::Parse(text).name, "") << text;
  }
}

}  // namespace
}  // namespace zendry
