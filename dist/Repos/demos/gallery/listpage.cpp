// SPDX-License-Identifier: MIT-0
#include "listpage.h"

namespace {

constexpr int cRows = 100000;
constexpr int cNodes = 20;

}  // namespace

ListPage::ListPage(Log log) : GalleryPage("Lists", std::move(log)) {
  FillList();
  FillTree();
  icons.imageList = Icons::cStrip;
  for (int icon = Icons::icoNew; icon <= Icons::icoDown; ++icon)
    icons.Add("Icon " + std::to_string(icon), icon);
  icons.onChoose.Add_H(this, &This::ChooseIcon);
  upper.pan1 = &tree;
  upper.pan2 = &list;
  upper.SetPosition(160);
  whole.orientation = 0;
  whole.pan1 = &upper;
  whole.pan2 = &icons;
  whole.dock = Dock::cFill;
  whole.SetPosition(230);
  Add(&whole);
}

void ListPage::FillList() {
  list.AddColumn("Number", 80);
  list.AddColumn("Square", 110);
  list.AddColumn("Remainder by 7", 110);
  for (long number = 0; number < cRows; ++number) {
    const int row = list.AddRow(std::to_string(number));
    list.SetCell(row, 1, std::to_string(number * number));
    list.SetCell(row, 2, std::to_string(number % 7));
  }
  list.editLabels = true;
  list.onChoose.Add_H(this, &This::Choose);
  list.onColumnClick.Add_H(this, &This::Sort);
}

void ListPage::FillTree() {
  for (int i = 0; i < cNodes; ++i)
    tree.SetFillsOnExpand(tree.AddNode(nullptr, "Node " + std::to_string(i), i));
  tree.onExpand.Add_H(this, &This::Expand);
}

void ListPage::Choose(NotifyArgs& args) {
  Say("row " + std::to_string(args.value) + ": " + list.GetCell(args.value, 0));
}

void ListPage::Sort(NotifyArgs& args) {
  list.SortBy(args.value, ascending);
  ascending = !ascending;
  Say("sorted by column " + std::to_string(args.value));
}

// The children are made when they are to be seen for the first time.
void ListPage::Expand(TreeArgs& args) {
  if (!args.node->children.empty()) return;
  const std::string label = args.node->text;
  for (int i = 0; i < cNodes; ++i)
    tree.SetFillsOnExpand(tree.AddNode(args.node, label + "." + std::to_string(i), i));
  Say("filled " + label);
}

void ListPage::ChooseIcon(NotifyArgs& args) {
  Say("icon " + std::to_string(args.value));
}
