// SPDX-License-Identifier: MIT-0
#pragma once

#include "gallerypage.h"

// A list of 100,000 rows, icons, and a tree that fills itself where it is opened.
class ListPage : public GalleryPage {
 public:
  typedef ListPage This;
  explicit ListPage(Log log);

 private:
  void FillList();
  void FillTree();
  void Choose(NotifyArgs& args);
  void Sort(NotifyArgs& args);
  void Expand(TreeArgs& args);
  void ChooseIcon(NotifyArgs& args);

  ListView list;
  TreeView tree;
  IconView icons;
  SplitContainer upper, whole;  // side by side, and above each other
  bool ascending = true;
};
