#pragma once

#include <memory>
#include <string>

#include "Graphics.h"

namespace mavro {

// The toolkit's surface that a Graphics draws on. Closing it shows the drawing.
class DrawSurface {
 public:
  virtual ~DrawSurface() = default;

  virtual void SetPen(const Pen& pen) = 0;
  virtual void SetBrush(const Brush& brush) = 0;
  virtual void SetFont(const Font& font) = 0;
  virtual void SetTextColor(Color color) = 0;

  virtual void TextOut(int x, int y, const std::string& text) = 0;
  virtual int TextWidth(const std::string& text) const = 0;
  virtual int TextHeight() const = 0;

  virtual Color GetPixel(int x, int y) const = 0;
  virtual void SetPixel(int x, int y, Color color) = 0;
  virtual void Rectangle(const Rect& rect) = 0;
  virtual void Ellipse(const Rect& rect) = 0;
  virtual void RoundRect(const Rect& rect, int cornerWidth, int cornerHeight) = 0;
  virtual void Polygon(const Point* points, int n) = 0;
  virtual void Polyline(const Point* points, int n) = 0;
  virtual void FillRect(const Rect& rect, Color color) = 0;
  virtual void DrawBitmap(const Bitmap& bitmap, const Rect& target) = 0;
  virtual void DrawIcon(int icon, int x, int y) = 0;

  virtual double PixelRatio() const = 0;
  virtual void UseDevicePixels(bool on) = 0;
};

// `like` gives colours and font; null for the platform's.
std::unique_ptr<DrawSurface> MakeSurface(const Bitmap& bitmap, Control* like);
std::unique_ptr<DrawSurface> MakeSurface(Control& control, Graphics::Begin begin);

}  // namespace mavro
