#include "AccessText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "SciMessages.h"

namespace mavro {
namespace {

using Unit = AccessText::Unit;
using Span = AccessText::Span;

bool IsFirstByte(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

// UTF-16 units of UTF-8 text.
int UnitsOf(std::string_view bytes) {
  int units = 0;
  for (const char c : bytes)
    units += !IsFirstByte(c) ? 0 : static_cast<unsigned char>(c) >= 0xF0 ? 2 : 1;
  return units;
}

// Answers as the component does.
class FakeDocument : public AccessText::Door {
 public:
  explicit FakeDocument(std::string newText) : text(std::move(newText)) {}

  std::intptr_t Send(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override {
    const int at = static_cast<int>(wParam);
    switch (message) {
      case SCI_GETLENGTH:
        return Length();
      case SCI_GETCODEPAGE:
        return codePage;
      case SCI_GETCURRENTPOS:
        return caret;
      case SCI_GETLINECHARACTERINDEX:
        return index;
      case SCI_ALLOCATELINECHARACTERINDEX:
        ++allocations;
        return index |= at;
      case SCI_LINEFROMPOSITION:
        return LineOf(at);
      case SCI_POSITIONFROMLINE:
        return LineStart(at);
      case SCI_INDEXPOSITIONFROMLINE:
        EXPECT_EQ(lParam & index, SC_LINECHARACTERINDEX_UTF16);
        return UnitsOf(text.substr(0, static_cast<size_t>(LineStart(at))));
      case SCI_LINEFROMINDEXPOSITION:
        return LineOfUnit(at);
      case SCI_COUNTCODEUNITS:
        return UnitsOf(std::string_view(text).substr(wParam, static_cast<size_t>(lParam) - wParam));
      case SCI_POSITIONRELATIVECODEUNITS:
        return PositionOf(at, static_cast<int>(lParam), 0);
      case SCI_POSITIONAFTER:
        return After(at);
      case SCI_POSITIONBEFORE:
        return Before(at);
      case SCI_WORDSTARTPOSITION:
        return WordEdge(at, -1);
      case SCI_WORDENDPOSITION:
        return WordEdge(at, 1);
      default:
        ADD_FAILURE() << "message " << message;
        return 0;
    }
  }
  std::string Range(int start, int end) override {
    return text.substr(static_cast<size_t>(start), static_cast<size_t>(end - start));
  }

  std::string text;
  int codePage = SC_CP_UTF8;
  int caret = 0;
  int index = 0;
  int allocations = 0;

 private:
  int Length() const { return static_cast<int>(text.size()); }
  int LineOf(int position) const {
    return static_cast<int>(std::count(text.begin(), text.begin() + position, '\n'));
  }
  int LineOfUnit(int unit) const {
    int line = LineOf(Length());
    while (line > 0 && UnitsOf(text.substr(0, static_cast<size_t>(LineStart(line)))) > unit) --line;
    return line;
  }
  int LineStart(int line) const {
    if (line == LineOf(Length()) + 1) return Length();
    size_t at = 0;
    for (; line > 0; --line) at = text.find('\n', at) + 1;
    return static_cast<int>(at);
  }
  int After(int at) const {
    if (at >= Length()) return Length();
    do ++at;
    while (at < Length() && !IsFirstByte(text[static_cast<size_t>(at)]));
    return at;
  }
  int Before(int at) const {
    do --at;
    while (at > 0 && !IsFirstByte(text[static_cast<size_t>(at)]));
    return std::max(at, 0);
  }
  // The place so many units after `start`; `otherwise` where there is none.
  int PositionOf(int start, int units, int otherwise) const {
    for (int at = start;; at = After(at)) {
      const auto passed = std::string_view(text).substr(static_cast<size_t>(start),
                                                        static_cast<size_t>(at - start));
      if (UnitsOf(passed) == units) return at;
      if (UnitsOf(passed) > units || at == Length()) return otherwise;
    }
  }
  // Letters, blanks and signs are words of their own kind.
  int WordEdge(int at, int step) const {
    const auto kind = [&](int i) {
      const char c = text[static_cast<size_t>(i)];
      return c == ' ' || c == '\n'                                  ? 0
             : std::isalnum(static_cast<unsigned char>(c)) || c < 0 ? 1
                                                                    : 2;
    };
    const int first = step > 0 ? at : at - 1;
    if (first < 0 || first >= Length()) return at;
    int i = first;
    while (i >= 0 && i < Length() && kind(i) == kind(first)) i += step;
    return step > 0 ? i : i + 1;
  }
};

// "ä" and "€" are one unit each, the smiling face two.
constexpr const char* cText = "a\xc3\xa4 b\n\xf0\x9f\x98\x80 \xe2\x82\xac\n\nend";

TEST(AccessText, OffsetsAndPositions_LeadToEachOther) {
  FakeDocument document(cText);
  const AccessText text(document);
  const std::pair<int, int> rows[] = {{0, 0},  {1, 1},  {3, 2},  {4, 3},   {5, 4},   {6, 5},
                                      {10, 7}, {11, 8}, {14, 9}, {15, 10}, {16, 11}, {19, 14}};
  for (const auto& [position, offset] : rows) {
    EXPECT_EQ(text.Offset(position), offset) << position;
    EXPECT_EQ(text.Position(offset), position) << offset;
  }
  EXPECT_EQ(text.CharacterCount(), 14);
  EXPECT_EQ(document.allocations, 1);
}

TEST(AccessText, PlacesOutsideOfTheText_AreItsEnds) {
  FakeDocument document(cText);
  const AccessText text(document);
  EXPECT_EQ(text.Offset(-1), 0);
  EXPECT_EQ(text.Offset(1000), 14);
  EXPECT_EQ(text.Position(-1), 0);
  EXPECT_EQ(text.Position(15), 19);
  EXPECT_EQ(text.Position(1000), 19);
}

TEST(AccessText, PlaceWithinALetterOfTwoUnits_IsThatOfTheLetter) {
  FakeDocument document(cText);
  EXPECT_EQ(AccessText(document).Position(6), 6);
}

TEST(AccessText, OtherCodePages_HaveAUnitForEachByte) {
  FakeDocument document(cText);
  document.codePage = 0;
  document.caret = 10;
  const AccessText text(document);
  EXPECT_EQ(text.Offset(10), 10);
  EXPECT_EQ(text.Position(10), 10);
  EXPECT_EQ(text.Position(-1), 0);
  EXPECT_EQ(text.Position(1000), 19);
  EXPECT_EQ(text.CaretOffset(), 10);
  EXPECT_EQ(document.allocations, 0);
}

TEST(AccessText, Caret_IsGivenInUnits) {
  FakeDocument document(cText);
  document.caret = 11;
  EXPECT_EQ(AccessText(document).CaretOffset(), 8);
}

TEST(AccessText, Characters_AndThoseBeside) {
  FakeDocument document(cText);
  const AccessText text(document);
  EXPECT_EQ(text.UnitAt(1, Unit::cCharacter), (Span{1, 2}));
  EXPECT_EQ(text.UnitAt(5, Unit::cCharacter), (Span{5, 7}));
  EXPECT_EQ(text.UnitBefore(7, Unit::cCharacter), (Span{5, 7}));
  EXPECT_EQ(text.UnitBefore(0, Unit::cCharacter), (Span{0, 0}));
  EXPECT_EQ(text.UnitAfter(4, Unit::cCharacter), (Span{5, 7}));
  EXPECT_EQ(text.UnitAfter(12, Unit::cCharacter), (Span{13, 14}));
  EXPECT_EQ(text.UnitAfter(13, Unit::cCharacter), (Span{0, 0}));
}

TEST(AccessText, Words_AndThoseBeside) {
  FakeDocument document("one two  three");
  const AccessText text(document);
  EXPECT_EQ(text.UnitAt(0, Unit::cWord), (Span{0, 3}));
  EXPECT_EQ(text.UnitAt(5, Unit::cWord), (Span{4, 7}));
  EXPECT_EQ(text.UnitAfter(5, Unit::cWord), (Span{7, 9}));
  EXPECT_EQ(text.UnitBefore(9, Unit::cWord), (Span{7, 9}));
  EXPECT_EQ(text.UnitAfter(12, Unit::cWord), (Span{0, 0}));
}

TEST(AccessText, Lines_AndThoseBeside) {
  FakeDocument document(cText);
  const AccessText text(document);
  EXPECT_EQ(text.UnitAt(0, Unit::cLine), (Span{0, 5}));
  EXPECT_EQ(text.UnitAt(6, Unit::cLine), (Span{5, 10}));
  EXPECT_EQ(text.UnitAfter(6, Unit::cLine), (Span{10, 11}));
  EXPECT_EQ(text.UnitBefore(10, Unit::cLine), (Span{5, 10}));
  EXPECT_EQ(text.UnitAt(12, Unit::cLine), (Span{11, 14}));
  EXPECT_EQ(text.UnitAfter(12, Unit::cLine), (Span{0, 0}));
  EXPECT_EQ(text.UnitBefore(2, Unit::cLine), (Span{0, 0}));
}

TEST(AccessText, EmptyText_HasEmptyUnits) {
  FakeDocument document("");
  const AccessText text(document);
  for (const Unit unit : {Unit::cCharacter, Unit::cWord, Unit::cLine}) {
    EXPECT_EQ(text.UnitAt(0, unit), (Span{0, 0}));
    EXPECT_EQ(text.UnitBefore(0, unit), (Span{0, 0}));
    EXPECT_EQ(text.UnitAfter(0, unit), (Span{0, 0}));
  }
  EXPECT_EQ(text.CharacterCount(), 0);
}

TEST(AccessText, Text_IsThatOfTheUnits) {
  FakeDocument document(cText);
  const AccessText text(document);
  EXPECT_EQ(text.Text({1, 2}), "\xc3\xa4");
  EXPECT_EQ(text.Text({5, 8}), "\xf0\x9f\x98\x80 ");
  EXPECT_EQ(text.Text({0, 100}), cText);
}

}  // namespace
}  // namespace mavro
