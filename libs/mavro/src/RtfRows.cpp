#include "RtfRows.h"

#include <algorithm>
#include <string_view>

#include "RtfScan.h"

namespace mavro {

namespace {

constexpr int cMaxTwips = 20000;

struct SideWord {
  std::string_view word;
  RtfCell::Side side;
};

constexpr SideWord cSides[] = {{"clbrdrt", RtfCell::cTop},
                               {"clbrdrl", RtfCell::cLeft},
                               {"clbrdrb", RtfCell::cBottom},
                               {"clbrdrr", RtfCell::cRight}};

struct BorderWord {
  std::string_view word;
  RtfCell::Border border;
};

constexpr BorderWord cBorders[] = {{"brdrs", RtfCell::cSingle},  {"brdrsh", RtfCell::cSingle},
                                   {"brdrdb", RtfCell::cDouble}, {"brdrth", RtfCell::cThick},
                                   {"brdrnone", RtfCell::cNone}, {"brdrnil", RtfCell::cNone}};

struct AlignWord {
  std::string_view word;
  RtfCell::Align align;
};

constexpr AlignWord cAligns[] = {{"clvertalt", RtfCell::cAtTop},
                                 {"clvertalc", RtfCell::cCentered},
                                 {"clvertalb", RtfCell::cAtBottom}};

struct RowNumber {
  std::string_view word;
  int RtfRow::*member;
};

constexpr RowNumber cRowNumbers[] = {
    {"trleft", &RtfRow::left}, {"trgaph", &RtfRow::gap}, {"trrh", &RtfRow::height}};

template <class Table>
auto FindWord(const Table& table, std::string_view word) {
  const auto found = std::find_if(std::begin(table), std::end(table),
                                  [word](const auto& one) { return one.word == word; });
  return found == std::end(table) ? nullptr : &*found;
}

}  // namespace

bool RtfRows::Take(const RtfToken& token, const std::vector<int32_t>& colors) {
  if (token.text == "trowd") {
    row = RtfRow();
    nextCell = RtfCell();
    side = -1;
    isDefined = true;
  } else if (token.text == "cellx") {
    nextCell.right = std::clamp(token.number, 0, cMaxTwips);
    if (row.cells.size() < cMostCells) row.cells.push_back(nextCell);
    nextCell = RtfCell();
    side = -1;
  } else if (token.text == "clcbpat") {
    const bool isKnown = token.number >= 0 && static_cast<size_t>(token.number) < colors.size();
    nextCell.background = isKnown ? colors[static_cast<size_t>(token.number)] : -1;
  } else if (const AlignWord* align = FindWord(cAligns, token.text)) {
    nextCell.align = align->align;
  } else if (const RowNumber* number = FindWord(cRowNumbers, token.text)) {
    row.*number->member = std::clamp(token.number, -cMaxTwips, cMaxTwips);
  } else {
    return TakeBorder(token);
  }
  return true;
}

bool RtfRows::TakeBorder(const RtfToken& token) {
  if (const SideWord* found = FindWord(cSides, token.text)) {
    side = found->side;
    return true;
  }
  const BorderWord* border = FindWord(cBorders, token.text);
  if (border && side >= 0) nextCell.borders[static_cast<size_t>(side)] = border->border;
  return border != nullptr;
}

RtfRow RtfRows::EndRow() {
  cell = 0;
  return row;
}

}  // namespace mavro
