#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>
#include <cmath>

#include "DrawSurface.h"
#include "Icons.h"
#include "QtFonts.h"
#include "QtOverlay.h"
#include "QtPalette.h"
#include "QtStrips.h"
#include "QtText.h"
#include "SysImpl.h"

namespace mavro {

namespace {

constexpr Qt::PenStyle cPenStyles[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::NoPen};

QColor Plain(Color color) {
  return ToScreenColor(color, QApplication::palette());
}

// Draws on the pixels of a bitmap, in device coordinates throughout: every place and width is
// rounded to whole device pixels, so that horizontal and vertical edges are sharp at any ratio.
class QtSurface : public DrawSurface {
 public:
  QtSurface(const Bitmap& itsBitmap, Control* like)
      : bitmap(itsBitmap),
        image(reinterpret_cast<uchar*>(bitmap.Row(0)), bitmap.Width(), bitmap.Height(),
              bitmap.Width() * static_cast<int>(sizeof(uint32_t)),
              QImage::Format_ARGB32_Premultiplied),
        painter(&image),
        scale(bitmap.PixelRatio()) {
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const bool hasWindow = like && like->impl->hwnd;
    baseFont = hasWindow ? like->impl->hwnd->FocusWidget()->font() : QApplication::font();
    textColor = Plain(like ? like->InheritedForeColor() : Color(Color::cBlack));
    ground = Plain(like ? like->InheritedBackColor() : Color(Color::cBlack));
    QtSurface::SetPen(Pen(Color::cBlack));
    QtSurface::SetBrush(Brush(Color::cWhite));
    painter.setFont(baseFont);
  }

  void SetPen(const Pen& newPen) override { pen = newPen; }
  void SetBrush(const Brush& brush) override {
    fill = brush.style == Brush::cNone ? QBrush() : QBrush(Plain(brush.color));
  }
  void SetFont(const Font& font) override {
    handle = font.IsDefault() ? nullptr : FontCached(font).Handle();
    painter.setFont(handle ? handle->font : baseFont);
  }
  void SetTextColor(Color color) override { textColor = Plain(color); }

  void TextOut(int x, int y, const std::string& text) override {
    const double ratio = bitmap.PixelRatio();
    painter.save();
    painter.setPen(textColor);
    painter.translate(Device(x), Device(y));
    painter.scale(ratio, ratio);
    painter.drawText(QPointF(0, Metrics().ascent()), ToScreen(text));
    painter.restore();
  }
  int TextWidth(const std::string& text) const override {
    return Metrics().horizontalAdvance(ToScreen(text));
  }
  int TextHeight() const override { return Metrics().height(); }

  Color GetPixel(int x, int y) const override {
    const int column = Device(x);
    const int row = Device(y);
    if (column < 0 || row < 0 || column >= bitmap.Width() || row >= bitmap.Height()) return Color();
    return PixelColor(QRgb(bitmap.Row(row)[column]));
  }

  void SetPixel(int x, int y, Color color) override {
    const QRgb value = 0xFF000000 | Plain(color).rgb();
    const int right = std::min(Device(x + 1), bitmap.Width());
    const int bottom = std::min(Device(y + 1), bitmap.Height());
    for (int row = std::max(Device(y), 0); row < bottom; ++row)
      for (int column = std::max(Device(x), 0); column < right; ++column)
        bitmap.Row(row)[column] = value;
  }

  void Rectangle(const Rect& rect) override {
    QPainterPath path;
    path.addRect(Outline(rect));
    DrawShape(path);
  }
  void Ellipse(const Rect& rect) override {
    QPainterPath path;
    path.addEllipse(Outline(rect));
    DrawShape(path);
  }
  void RoundRect(const Rect& rect, int cornerWidth, int cornerHeight) override {
    QPainterPath path;
    path.addRoundedRect(Outline(rect), cornerWidth * scale / 2, cornerHeight * scale / 2);
    DrawShape(path);
  }

  void Polygon(const Point* points, int n) override {
    QPolygonF shape;
    for (int i = 0; i < n; ++i) shape << Centre(points[i]);
    if (n < 2) return;
    QPainterPath path;
    path.addPolygon(shape);
    path.closeSubpath();
    DrawShape(path);
  }

  // The path of the pixels' centres, moved back at both ends by half a width: it covers the first
  // pixel whole and leaves the last one out.
  void Polyline(const Point* points, int n) override {
    QPolygonF line;
    for (int i = 0; i < n; ++i)
      if (line.isEmpty() || line.last() != Centre(points[i])) line << Centre(points[i]);
    if (line.size() < 2) return;
    const QPointF start = HalfStep(line[0], line[1]);
    const QPointF end = HalfStep(line[line.size() - 2], line.last());
    line.first() -= start;
    line.last() -= end;
    QPainterPath path;
    path.addPolygon(line);
    Stroke(path);
  }

  void FillRect(const Rect& rect, Color color) override {
    const QRect filled = DeviceRect(rect);
    if (!filled.isEmpty()) painter.fillRect(filled, Plain(color));
  }

  void DrawBitmap(const Bitmap& drawn, const Rect& target) override {
    if (drawn.IsEmpty()) return;
    painter.drawImage(DeviceRect(target), ImageOf(drawn));
  }

  void DrawIcon(int icon, int x, int y) override {
    const QIcon picture = StripIcon(Icons::cStrip, icon);
    if (picture.isNull() || icon == Icons::cNone) return;
    const QSize size = StripPictureSize(Icons::cStrip);
    const Rect target{x, y, size.width(), size.height()};
    painter.drawPixmap(DeviceRect(target), picture.pixmap(size, scale));
  }

  double PixelRatio() const override { return bitmap.PixelRatio(); }
  void UseDevicePixels(bool on) override {
    scale = on ? 1 : bitmap.PixelRatio();
    SetPen(pen);
  }

 protected:
  // Ends the drawing, so that the pixels can be shown.
  void EndDrawing() { painter.end(); }
  const Bitmap& Pixels() const { return bitmap; }
  virtual Color PixelColor(QRgb pixel) const {
    return Color(static_cast<int32_t>(qUnpremultiply(pixel) & 0xFFFFFF));
  }
  QColor Ground() const { return ground; }

 private:
  int Device(int logical) const {
    constexpr double cFar = 1 << 24;
    return static_cast<int>(std::clamp(std::floor(logical * scale + 0.5), -cFar, cFar));
  }
  int PenWidth() const { return std::max(1, static_cast<int>(pen.width * scale)); }
  QRect DeviceRect(const Rect& rect) const {
    const QPoint topLeft(Device(rect.left), Device(rect.top));
    return {topLeft,
            QPoint(Device(rect.left + rect.width) - 1, Device(rect.top + rect.height) - 1)};
  }
  void DrawShape(const QPainterPath& path) {
    painter.fillPath(path, fill);
    Stroke(path);
  }
  // Draws the line as a filled shape: the toolkit's own thin lines leave out corners.
  void Stroke(const QPainterPath& path) {
    if (pen.style == Pen::cNone) return;
    QPainterPathStroker stroker;
    stroker.setWidth(PenWidth());
    stroker.setCapStyle(Qt::FlatCap);
    stroker.setJoinStyle(Qt::MiterJoin);
    stroker.setDashPattern(cPenStyles[pen.style]);
    painter.fillPath(stroker.createStroke(path), Plain(pen.color));
  }
  // The path of a pen whose drawing stays inside `rect`.
  QRectF Outline(const Rect& rect) const {
    const double half = pen.style == Pen::cNone ? 0 : PenWidth() / 2.0;
    return QRectF(DeviceRect(rect)).adjusted(half, half, -half, -half);
  }
  QPointF Centre(Point point) const {
    const double half = PenWidth() / 2.0;
    return {Device(point.x) + half, Device(point.y) + half};
  }
  // Half a pen's width in the direction of a line.
  QPointF HalfStep(QPointF from, QPointF to) const {
    const QPointF step = to - from;
    return step * (PenWidth() / 2.0 / std::hypot(step.x(), step.y()));
  }
  const QFontMetrics Metrics() const { return handle ? handle->metrics : QFontMetrics(baseFont); }

  Bitmap bitmap;
  QImage image;  // the bitmap's pixels, as the toolkit sees them
  QPainter painter;
  double scale;
  Pen pen;
  QBrush fill;
  QFont baseFont;
  std::shared_ptr<FontHandle> handle;
  QColor textColor;
  QColor ground;
};

Bitmap WindowPixels(const NativeWindow& window) {
  const double ratio = window.widget->devicePixelRatioF();
  const auto pixels = [ratio](int length) {
    constexpr int cMost = 8192;
    return std::clamp(static_cast<int>(std::ceil(length * ratio)), 1, cMost);
  };
  return Bitmap(pixels(window.ClientWidth()), pixels(window.ClientHeight()), ratio);
}

// Draws on pixels of its own and shows them on a window when it is closed: at once while the window
// paints, else over what the window next paints.
class WindowSurface final : public QtSurface {
 public:
  WindowSurface(Control& control, Graphics::Begin begin)
      : QtSurface(WindowPixels(*control.impl->hwnd), &control),
        window(control.impl->hwnd),
        paintsNow(begin == Graphics::cPainting &&
                  window->ClientWidget()->testAttribute(Qt::WA_WState_InPaintEvent)) {}

  ~WindowSurface() override {
    EndDrawing();
    if (!IsWindow(window)) return;
    QWidget* widget = window->ClientWidget();
    const QPoint origin = widget->contentsRect().topLeft();
    if (!paintsNow) {
      ShowOverlay(widget, Pixels(), origin);
      return;
    }
    QPainter painter(widget);
    painter.drawImage(origin, ImageOf(Pixels()));
  }

 protected:
  // The color of a pixel; where nothing has been drawn yet, the window's ground.
  Color PixelColor(QRgb pixel) const override {
    const int below = 255 - qAlpha(pixel);
    const auto mix = [&](int over, int under) { return over + under * below / 255; };
    return Color(mix(qRed(pixel), Ground().red()) << 16 |
                 mix(qGreen(pixel), Ground().green()) << 8 | mix(qBlue(pixel), Ground().blue()));
  }

 private:
  NativeWindow* const window;
  const bool paintsNow;
};

}  // namespace

QImage ImageOf(const Bitmap& bitmap) {
  QImage image(reinterpret_cast<const uchar*>(bitmap.Row(0)), bitmap.Width(), bitmap.Height(),
               bitmap.Width() * static_cast<int>(sizeof(uint32_t)),
               QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(bitmap.PixelRatio());
  return image;
}

std::unique_ptr<DrawSurface> MakeSurface(const Bitmap& bitmap, Control* like) {
  return std::make_unique<QtSurface>(bitmap, like);
}

std::unique_ptr<DrawSurface> MakeSurface(Control& control, Graphics::Begin begin) {
  return std::make_unique<WindowSurface>(control, begin);
}

Color ToPlain(Color color) {
  if (!color.IsSystem()) return color;
  return Color(static_cast<int32_t>(Plain(color).rgb() & 0xFFFFFF));
}

}  // namespace mavro
