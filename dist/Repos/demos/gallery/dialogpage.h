// SPDX-License-Identifier: MIT-0
#pragma once

#include "gallerypage.h"

// All dialogs, and a text with links.
class DialogPage : public GalleryPage {
 public:
  typedef DialogPage This;
  explicit DialogPage(Log log);

 private:
  void Clicked(NotifyArgs& args);
  void Ask();
  void OpenModal();

  Button buttons[7];
  RichView text;
};
