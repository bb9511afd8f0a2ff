// SPDX-License-Identifier: MIT-0
#pragma once

#include "gallerypage.h"

// A plot that grows while one looks, and a paint box to scribble in.
class PlotPage : public GalleryPage {
 public:
  typedef PlotPage This;
  explicit PlotPage(Log log);

 private:
  void PlacePlot();
  void PlaceBox();
  void Grow(NotifyArgs& args);
  void Zoomed(NotifyArgs& args);
  void Copy(NotifyArgs& args);
  void DrawBox(NotifyArgs& args);
  void PaintHint(PaintArgs& args);
  void Scribble(MouseArgs& args);
  void ClearBox(NotifyArgs& args);

  PlotXY plot;
  Button copy;
  PaintBox box;
  Timer clock{&plot};
  int steps = 0;
  Point last;
  bool isEmpty = true;
};
