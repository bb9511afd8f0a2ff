// SPDX-License-Identifier: MIT-0
#pragma once

#include "gallerypage.h"

// A dial, a picture with its three ways to fit, a drawing of the program's own, and a clock.
class DrawPage : public GalleryPage {
 public:
  typedef DrawPage This;
  explicit DrawPage(Log log);

 private:
  void PlaceDial();
  void PlacePicture();
  void PlaceDrawing();
  void Turned(NotifyArgs& args);
  void Fit(NotifyArgs& args);
  void LoadPicture(NotifyArgs& args);
  void DrawWave(NotifyArgs& args);
  void PaintClock(PaintArgs& args);
  void Tick(NotifyArgs& args);

  DialCtrl dial;
  Image image;
  CheckGroup fit;
  Button load;
  CustomCtrl drawing;
  Timer clock{&drawing};
  int seconds = 0;
};
