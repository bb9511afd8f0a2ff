// SPDX-License-Identifier: MIT-0
#include "galleryform.h"

int Application::Main(const ArgumentList&) {
  GalleryForm mfrm;
  mfrm.Show();
  return 0;
}
