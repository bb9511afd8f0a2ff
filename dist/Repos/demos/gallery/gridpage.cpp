// SPDX-License-Identifier: MIT-0
#include "gridpage.h"

#include <cstdlib>

namespace {

constexpr int cArticles = 100000;

// A number of cents as "12.34", and back; -1 for what is none.
std::string Money(long cents) {
  const std::string digits = std::to_string(100 + cents % 100);
  return std::to_string(cents / 100) + "." + digits.substr(1);
}

long Cents(const std::string& text) {
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  const bool isNumber = end != text.c_str() && *end == 0 && value >= 0 && value < 1e9;
  return isNumber ? static_cast<long>(value * 100 + 0.5) : -1;
}

}  // namespace

GridPage::GridPage(Log log) : GalleryPage("Grid", std::move(log)) {
  grid.AddColumn("Article", 160);
  for (const char* title : {"Price", "Count", "Sum"}) grid.AddColumn(title, 120);
  grid.lateCells = [](int number) {
    const long price = number * 7919L % 10000;
    const long count = number % 5;
    return std::vector<std::string>{"Article " + std::to_string(number), Money(price),
                                    std::to_string(count), Money(price * count)};
  };
  grid.AddLateRows(1, cArticles);
  grid.editLabels = true;
  grid.fullRowSelect = false;
  grid.lockCol = 1;
  grid.onStartEdit.Add_H(this, &This::StartEdit);
  grid.onPostEdit.Add_H(this, &This::PostEdit);
  grid.onChangeText.Add_H(this, &This::Changed);
  grid.dock = Dock::cFill;
  Add(&grid);
}

void GridPage::StartEdit(ItemArgs& args) {
  if (args.col != cSum) return;
  args.value = 0;
  Say("the sum is computed");
}

// Numbers are wanted in every column but the first, and no sum is pasted.
void GridPage::PostEdit(ItemArgs& args) {
  const bool isText = args.col == cArticle;
  if (args.col != cSum && (isText || Cents(args.text) >= 0)) return;
  args.value = 0;
  Say("not taken: " + args.text);
}

void GridPage::Changed(NotifyArgs& args) {
  const int row = args.value;
  const long sum = Cents(grid.GetCell(row, cPrice)) * std::atol(grid.GetCell(row, cCount).c_str());
  grid.SetCell(row, cSum, Money(sum));
  Say(grid.GetCell(row, cArticle) + ": " + grid.GetCell(row, cSum));
}
