// SPDX-License-Identifier: MIT-0
#include "drawpage.h"

#include <cmath>

namespace {

enum FitFlags { cStretch = 1, cAutosize = 2, cProportional = 4 };

// A picture to begin with: a disc that fades from one colour to another.
Bitmap Sample() {
  constexpr int cSide = 96;
  const Bitmap bitmap(cSide * 3 / 2, cSide);
  Graphics graphics(bitmap);
  graphics.FillRect({0, 0, cSide * 3 / 2, cSide}, Color(0x204060));
  graphics.SetPen(Pen(Color::cWhite, 1, Pen::cNone));
  for (int r = cSide / 2 - 6; r > 0; r -= 2) {
    graphics.SetBrush(Brush(Color(0xFF0000 | (250 - r * 5) << 8 | 40)));
    graphics.Ellipse(cSide * 3 / 4 - r, cSide / 2 - r, cSide * 3 / 4 + r, cSide / 2 + r);
  }
  return bitmap;
}

}  // namespace

DrawPage::DrawPage(Log log) : GalleryPage("Drawing", std::move(log)) {
  PlaceDial();
  PlacePicture();
  PlaceDrawing();
}

void DrawPage::PlaceDial() {
  dial.max = 100;
  dial.steps = 100;
  dial.pos = 30;
  dial.labels = DialCtrl::cView;
  dial.text = "Level";
  dial.onChange.Add_H(this, &This::Turned);
  Place(dial, 12, 12, 180, 180);
}

void DrawPage::PlacePicture() {
  image.picture.Assign(Sample());
  image.borderStyle = BorderStyle::cFrame;
  Place(image, 204, 12, 180, 180);
  fit.text = "Picture";
  for (const char* item : {"Stretch", "Autosize", "Proportional"}) fit.items.Add(item);
  fit.onChange.Add_H(this, &This::Fit);
  Place(fit, 396, 8, 110, 104);
  load.text = "Load...";
  load.icon = Icons::icoOpen;
  load.onClick.Add_H(this, &This::LoadPicture);
  Place(load, 396, 120, 110, 34);
}

void DrawPage::PlaceDrawing() {
  drawing.backColor = Color::cWindow;
  drawing.onDraw.Add_H(this, &This::DrawWave);
  drawing.onPaint.Add_H(this, &This::PaintClock);
  Place(drawing, 12, 204, 494, 130);
  clock.onTimer.Add_H(this, &This::Tick);
  clock.Start(1000);
}

void DrawPage::Turned(NotifyArgs&) {
  Say("dial: " + std::to_string(static_cast<int>(dial.pos)));
  drawing.Redraw();
}

void DrawPage::Fit(NotifyArgs& args) {
  image.stretch = (args.value & cStretch) != 0;
  image.autosize = (args.value & cAutosize) != 0;
  image.proportional = (args.value & cProportional) != 0;
  Say("picture flags: " + std::to_string(args.value));
}

void DrawPage::LoadPicture(NotifyArgs&) {
  FileDialog dialog("Pictures|*.png;*.jpg;*.bmp;*.xpm|All Files|*.*");
  if (!dialog.Run()) return;
  const PictureResult result = image.picture.Load(dialog.fileName);
  if (result != PictureResult::cLoaded) Information(std::string(Explain(result)));
}

// The wave stands in the back buffer: it is drawn again only when the dial is turned.
void DrawPage::DrawWave(NotifyArgs&) {
  Graphics& graphics = drawing.BackBuffer();
  const int width = drawing.width;
  const int height = drawing.height;
  graphics.FillRect({0, 0, width, height}, Color::cWindow);
  graphics.SetPen(Pen(Color::cControlShadow, 1, Pen::cDot));
  graphics.MoveTo(0, height / 2);
  graphics.LineTo(width, height / 2);
  graphics.SetPen(Pen(Color(0x3080D0), 2));
  for (int x = 0; x <= width; x += 2) {
    const double wave = std::sin(x / 25.0) * dial.pos / 100 * (height / 2 - 8);
    const int y = height / 2 - static_cast<int>(wave);
    if (x == 0) graphics.MoveTo(x, y);
    graphics.LineTo(x, y);
  }
}

void DrawPage::PaintClock(PaintArgs& args) {
  args.graphics->SetTextColor(Color::cWindowText);
  args.graphics->TextOut(8, 6, "open for " + std::to_string(seconds) + " s");
}

void DrawPage::Tick(NotifyArgs&) {
  ++seconds;
  drawing.Invalidate();
}
