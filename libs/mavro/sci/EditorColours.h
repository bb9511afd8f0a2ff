#pragma once

#include "EditorLanguage.h"

namespace mavro {

// The colours of editors, on light desktops and on dark ones: every ink is easy to read on every
// ground that it can be on.
enum EditorColour {
  // Inks of text, all of which can be on each of the grounds below.
  cTextInk,
  cCommentInk,
  cDocumentationInk,
  cNumberInk,
  cKeywordInk,
  cStringInk,
  cCharacterInk,
  cPreprocessorInk,
  cLonelyBraceInk,
  cEndOfInks,
  // Grounds of text.
  cTextGround = cEndOfInks,
  cCaretLineGround,
  cSelectionGround,
  cErrorGround,
  cExecutionGround,
  cPlaceGround,       // a place that a list has shown
  cLeftOutGround,     // text that the preprocessor leaves out
  cUnfinishedGround,  // a string without an end
  cFoundGround,       // a hit of the search whose dialog is open
  cEndOfGrounds,
  // Pairs of an ink and its ground.
  cBraceInk = cEndOfGrounds,
  cBraceGround,
  cMarginInk,
  cMarginGround,
  cTipInk,
  cTipGround,
  cTipArgumentInk,  // on the tip's ground too
  cEndOfPairs,
  // Lines.
  cGuideLine = cEndOfPairs,  // of indentation and the edge
  cFoldLine,
  cBlankSign,  // stands for a blank or a tab: seen on every ground, but weaker than any ink
  cEndOfColours
};

// Converts red-green-blue to the component's order.
constexpr int FromRgb(int colour) {
  return (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
}

struct EditorColourRow {
  EditorColour colour;
  int light, dark;  // red-green-blue
};
constexpr EditorColourRow cEditorColours[] = {
    {cTextInk, 0x1C1C1C, 0xE2E4E7},          {cCommentInk, 0x5C6166, 0xA0A9B3},
    {cDocumentationInk, 0x14628F, 0x69BFEA}, {cNumberInk, 0x006B5E, 0x3FD6C0},
    {cKeywordInk, 0x0000D0, 0x8FB4FF},       {cStringInk, 0x2E6B00, 0xA6D86A},
    {cCharacterInk, 0x8A4B00, 0xF0B860},     {cPreprocessorInk, 0x8A1583, 0xEE9BE6},
    {cLonelyBraceInk, 0xC00018, 0xFF8F86},   {cTextGround, 0xFFFFFF, 0x1F2226},
    {cCaretLineGround, 0xF1F5FA, 0x292D33},  {cSelectionGround, 0xD3E5FA, 0x283C58},
    {cErrorGround, 0xFDE7E7, 0x452629},      {cExecutionGround, 0xE0F3DE, 0x243B2A},
    {cPlaceGround, 0xE6E9FF, 0x2B3350},      {cLeftOutGround, 0xF3F3F3, 0x282828},
    {cUnfinishedGround, 0xF8E8F5, 0x402C3D}, {cFoundGround, 0xFFF0A8, 0x3F3A12},
    {cBraceInk, 0x0000D0, 0xBFD4FF},         {cBraceGround, 0xC8DEF8, 0x35506F},
    {cMarginInk, 0x62676D, 0x9AA2AB},        {cMarginGround, 0xF2F3F5, 0x25282D},
    {cTipInk, 0x1C1C1C, 0xE2E4E7},           {cTipGround, 0xFAFAF4, 0x2C3138},
    {cTipArgumentInk, 0x0000D0, 0x8FB4FF},   {cGuideLine, 0xC8CDD3, 0x4A5058},
    {cFoldLine, 0x80868D, 0x8A929B},         {cBlankSign, 0x8C939B, 0x7A828C},
};

constexpr ColourPair ColourOf(EditorColour colour) {
  const EditorColourRow& row = cEditorColours[colour];
  return {FromRgb(row.light), FromRgb(row.dark)};
}

}  // namespace mavro
