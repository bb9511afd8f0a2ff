#include "MacroLines.h"

#include <gtest/gtest.h>

#include "SciMessages.h"

namespace mavro {
namespace {

TEST(MacroLines, Format_WithAndWithoutText_HasThreeSeparators) {
  EXPECT_EQ(FormatMacroLine({SCI_REPLACESEL, 0, true, "a"}), "2170;0;1;a");
  EXPECT_EQ(FormatMacroLine({SCI_LINEDOWN, -3, false, {}}), "2300;-3;0;");
}

TEST(MacroLines, Parse_TextWithSemicolons_OnlyTheFirstThreeCount) {
  EXPECT_EQ(ParseMacroLine("2170;7;1;a;b;;c"), (MacroStep{SCI_REPLACESEL, 7, true, "a;b;;c"}));
}

TEST(MacroLines, Parse_WhatFormatWrote_IsTheSame) {
  const MacroStep steps[] = {{SCI_REPLACESEL, 0, true, ";;\n\xFF"}, {SCI_CUT, 0, false, {}}};
  for (const MacroStep& step : steps) EXPECT_EQ(ParseMacroLine(FormatMacroLine(step)), step);
}

TEST(MacroLines, Parse_EmptyNumbers_AreZero) {
  EXPECT_EQ(ParseMacroLine(";;1;x"), (MacroStep{0, 0, true, "x"}));
  EXPECT_EQ(ParseMacroLine(""), MacroStep());
  EXPECT_EQ(ParseMacroLine(";;;"), MacroStep());
}

TEST(MacroLines, Parse_CutAnywhere_IsReadAsFarAsItGoes) {
  const std::string line = "2170;12;1;text";
  for (size_t cut = 0; cut < line.size(); ++cut) {
    const MacroStep step = ParseMacroLine(line.substr(0, cut));
    EXPECT_EQ(step.hasText, cut >= 9) << cut;
    EXPECT_LE(step.message, 2170) << cut;
  }
}

TEST(MacroLines, Parse_TextAfterAZero_IsDropped) {
  EXPECT_EQ(ParseMacroLine("2300;0;0;rest"), (MacroStep{SCI_LINEDOWN, 0, false, {}}));
}

TEST(MacroLines, MakeReplayable_WhatTheComponentDoesNotRecord_IsRefused) {
  const int messages[] = {0, -1, 5, SCI_SETDOCPOINTER, SCI_GETTEXT, SCI_SETLEXER, 0x7FFFFFFF};
  for (const int message : messages) {
    MacroStep step{message, 1, true, "x"};
    EXPECT_FALSE(MakeReplayable(step, 10)) << message;
  }
}

TEST(MacroLines, MakeReplayable_LengthsAndPositions_StayInside) {
  MacroStep add{SCI_ADDTEXT, 1000, true, "abc"};
  EXPECT_TRUE(MakeReplayable(add, 10));
  EXPECT_EQ(add.wParam, 3);
  MacroStep insert{SCI_INSERTTEXT, -5, true, "abc"};
  EXPECT_TRUE(MakeReplayable(insert, 10));
  EXPECT_EQ(insert.wParam, 0);
  MacroStep go{SCI_GOTOPOS, 11, false, {}};
  EXPECT_TRUE(MakeReplayable(go, 10));
  EXPECT_EQ(go.wParam, 10);
}

TEST(MacroLines, MakeReplayable_PlainCommand_HasNoNumberAndNoText) {
  MacroStep step{SCI_LINEDOWN, 5, true, "x"};
  EXPECT_TRUE(MakeReplayable(step, 10));
  EXPECT_EQ(step.wParam, 0);
  EXPECT_FALSE(step.hasText);
  EXPECT_EQ(step.text, "");
}

TEST(MacroLines, MakeReplayable_AMissingText_IsAnEmptyOne) {
  MacroStep step{SCI_REPLACESEL, 5, false, {}};
  EXPECT_TRUE(MakeReplayable(step, 0));
  EXPECT_TRUE(step.hasText);
}

}  // namespace
}  // namespace mavro
