#pragma once

#include <memory>
#include <string>

#include "Bitmap.h"
#include "Core.h"

namespace mavro {

class DrawSurface;
class Picture;

// A point, in the coordinates of the surface or area that contains it.
struct Point {
  int x = 0, y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

// The pen for outlines. A pen without a colour is not made: see IsMade.
class Pen {
 public:
  enum Style { cSolid, cDash, cDot, cNone };

  Pen() = default;
  Pen(Color itsColor, int itsWidth = 1, Style itsStyle = cSolid)
      : color(itsColor), width(itsWidth), style(itsStyle), made(true) {}
  bool IsMade() const { return made; }
  friend bool operator==(const Pen&, const Pen&) = default;

  Color color;
  int width = 1;
  Style style = cSolid;

 private:
  bool made = false;
};

// The brush that fills shapes. A brush without a colour is not made: see IsMade.
class Brush {
 public:
  enum Style { cSolid, cNone };

  Brush() = default;
  Brush(Color itsColor, Style itsStyle = cSolid) : color(itsColor), style(itsStyle), made(true) {}
  // A brush that doesn't paint the inside of shapes.
  static Brush Clear() { return Brush(Color(), cNone); }
  bool IsMade() const { return made; }
  friend bool operator==(const Brush&, const Brush&) = default;

  Color color;
  Style style = cSolid;

 private:
  bool made = false;
};

// A surface to draw on: a control's window or a bitmap. Coordinates count logical pixels; the point
// (x, y) is the pixel to the right of and below these coordinates, and rectangles exclude their
// right and bottom edge. Vertical and horizontal lines and the edges of rectangles are sharp at any
// scale of the screen. The initial state is a black pen of width 1, a white brush and the control's
// font and text colour.
class Graphics {
 public:
  enum Begin {
    cDrawing,  // at any time; the drawing is lost when the window next paints itself
    cPainting  // while the control's window paints
  };

  // A closed surface: every drawing operation fails with an assertion.
  Graphics();
  // On a control that has a window.
  explicit Graphics(Control* ctrl, Begin begin = cDrawing);
  // On a bitmap, with the colours and font of `like` if one is given.
  explicit Graphics(const Bitmap& bitmap, Control* like = nullptr);
  ~Graphics();
  Graphics(const Graphics&) = delete;
  Graphics& operator=(const Graphics&) = delete;

  bool IsOpen() const { return dcimpl != nullptr; }
  // Ends the drawing and shows the result. No effect on a closed surface.
  void Close();
  // Opens a closed surface on a bitmap, which must not be empty, with the colours of `like`.
  void SetBitmap(const Bitmap& newBitmap, Control* like = nullptr);

  // Set the tools of the operations below.
  void SetPen(const Pen& newPen);
  void SetBrush(const Brush& newBrush);
  void SetFont(const Font& newFont);
  void SetTextColor(Color color);

  // Draws a text with its top left corner at (x, y). Line breaks have no effect.
  void TextOut(int x, int y, const std::string& text);
  int TextWidth(const std::string& text) const;
  int TextHeight() const;

  // Outside the surface, GetPixel returns the default colour and SetPixel does nothing.
  Color GetPixel(int x, int y) const;
  void SetPixel(int x, int y, Color color);

  // Outlined by the pen and filled by the brush.
  void Rectangle(int left, int top, int right, int bottom);
  void Ellipse(int left, int top, int right, int bottom);
  // The corners are quarters of an ellipse of this width and height.
  void RoundRect(int left, int top, int right, int bottom, int width, int height);
  void Polygon(const Point* points, int n);

  // The last point of a line is not drawn, so that lines can be joined end to end.
  void Polyline(const Point* points, int n);
  void MoveTo(int x, int y);
  void LineTo(int x, int y);

  // Without an outline.
  void FillRect(const Rect& rect, Color color);
  // The whole bitmap or picture, drawn into `target`.
  void DrawBitmap(const Bitmap& bitmap, const Rect& target);
  void DrawPicture(const Picture& picture, const Rect& target);
  // A stock icon of `Icons`, 24 by 24; draws nothing for a number without an icon.
  void DrawIcon(int icon, int x, int y);

  // PixelRatio is the number of device pixels in one logical pixel. UseDevicePixels(true) makes
  // coordinates count device pixels from now on, for drawing pixel by pixel.
  double PixelRatio() const;
  void UseDevicePixels(bool on);

 private:
  DrawSurface& Open() const;

  std::unique_ptr<DrawSurface> dcimpl;  // null: closed
  Bitmap bitmap;                        // the one drawn on; empty on a window
  Font font;
  Brush brush;
  Pen pen;
  bool painting = false;
  Point position;  // where the next line starts
};

// The argument of onPaint: a control paints itself.
struct PaintArgs {
  Control* sender = nullptr;
  Graphics* graphics = nullptr;  // not null; valid during the event only
};

// Converts a system colour to its plain colour in the current palette; other colours are unchanged.
Color ToPlain(Color color);

using PaintEvent = Event<PaintArgs>;

}  // namespace mavro
