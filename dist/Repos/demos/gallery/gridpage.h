// SPDX-License-Identifier: MIT-0
#pragma once

#include "gallerypage.h"

// A price list of 100,000 rows that is edited in place and adds up its own rows.
class GridPage : public GalleryPage {
 public:
  typedef GridPage This;
  explicit GridPage(Log log);

 private:
  enum Column { cArticle, cPrice, cCount, cSum };

  void StartEdit(ItemArgs& args);
  void PostEdit(ItemArgs& args);
  void Changed(NotifyArgs& args);

  DataGrid grid;
};
