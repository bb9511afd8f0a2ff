// SPDX-License-Identifier: MIT-0
#include "gallerypage.h"

GalleryPage::GalleryPage(const std::string& title, Log log) : say(std::move(log)) {
  text = title;
}

void GalleryPage::Place(Control& control, int left, int top, int width, int height) {
  control.SetBounds(left, top, width, height);
  Add(&control);
}
