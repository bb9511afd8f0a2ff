#pragma once

#include <memory>
#include <string>

#include "Bitmap.h"
#include "Core.h"

namespace mavro {

class DrawSurface;
class Picture;

// A point in the coordinates of what it lies in.
struct Point {
  int x = 0, y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

// What outlines are drawn with. One made without a colour is no pen.
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

// What shapes are filled with. One made without a colour is no brush.
class Brush {
 public:
  enum Style { cSolid, cNone };

  Brush() = default;
  Brush(Color itsColor, Style itsStyle = cSolid) : color(itsColor), style(itsStyle), made(true) {}
  // Leaves the inside of shapes as it is.
  static Brush Clear() { return Brush(Color(), cNone); }
  bool IsMade() const { return made; }
  friend bool operator==(const Brush&, const Brush&) = default;

  Color color;
  Style style = cSolid;

 private:
  bool made = false;
};

// A surface to draw on: a control's window or a bitmap. Coordinates count logical pixels; the point
// (x, y) is the square pixel behind it, and rectangles leave their right and bottom edge out.
// Upright and level lines and the edges of rectangles are sharp at any scale of the screen. Starts
// with a black pen of width 1, a white brush and the control's font and text colour.
class Graphics {
 public:
  enum Begin {
    cDrawing,  // at any time; what is drawn stands until the window next paints itself
    cPainting  // while the control's window paints
  };

  // Closed: every drawing operation stops at an assertion.
  Graphics();
  // On a control that has a window.
  explicit Graphics(Control* ctrl, Begin begin = cDrawing);
  // On a bitmap, with the colours and font of `like` if one is given.
  explicit Graphics(const Bitmap& bitmap, Control* like = nullptr);
  ~Graphics();
  Graphics(const Graphics&) = delete;
  Graphics& operator=(const Graphics&) = delete;

  bool IsOpen() const { return dcimpl != nullptr; }
  // Ends the drawing and shows what was drawn. Nothing for a closed one.
  void Close();
  // Opens a closed one on a bitmap, which must not be empty; with the colours of `like`.
  void SetBitmap(const Bitmap& newBitmap, Control* like = nullptr);

  // What the operations below draw with.
  void SetPen(const Pen& newPen);
  void SetBrush(const Brush& newBrush);
  void SetFont(const Font& newFont);
  void SetTextColor(Color color);

  // The top left corner of the text at (x, y). Line breaks are not obeyed.
  void TextOut(int x, int y, const std::string& text);
  int TextWidth(const std::string& text) const;
  int TextHeight() const;

  // Outside the surface: the default colour, and nothing.
  Color GetPixel(int x, int y) const;
  void SetPixel(int x, int y, Color color);

  // Outlined by the pen and filled by the brush.
  void Rectangle(int left, int top, int right, int bottom);
  void Ellipse(int left, int top, int right, int bottom);
  // The corners are quarters of an ellipse of this width and height.
  void RoundRect(int left, int top, int right, int bottom, int width, int height);
  void Polygon(const Point* points, int n);

  // The last point of a line is left out, so that lines can be drawn one behind the other.
  void Polyline(const Point* points, int n);
  void MoveTo(int x, int y);
  void LineTo(int x, int y);

  // Without an outline.
  void FillRect(const Rect& rect, Color color);
  // The whole bitmap or picture, drawn into `target`.
  void DrawBitmap(const Bitmap& bitmap, const Rect& target);
  void DrawPicture(const Picture& picture, const Rect& target);
  // A stock icon of `Icons`, 24 by 24; nothing for a number without one.
  void DrawIcon(int icon, int x, int y);

  // Device pixels in one logical pixel; and whether coordinates count device pixels from now on,
  // for what is drawn pixel by pixel.
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

// A control paints itself.
struct PaintArgs {
  Control* sender = nullptr;
  Graphics* graphics = nullptr;  // not null; gone when the event is over
};

// The plain colour that a system colour stands for in the palette in force; others as they are.
Color ToPlain(Color color);

using PaintEvent = Event<PaintArgs>;

}  // namespace mavro
