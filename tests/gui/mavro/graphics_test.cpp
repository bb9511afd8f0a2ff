#include "Graphics.h"

#include <gtest/gtest.h>

#include <QImage>

#include "DarkPalette.h"
#include "FontCached.h"
#include "Form.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

constexpr uint32_t cOpaque = 0xFF000000;

uint32_t Opaque(Color color) {
  return cOpaque | static_cast<uint32_t>(color.Value());
}

// A drawing of 20 by 20 logical pixels at one ratio.
struct Canvas {
  explicit Canvas(double ratio = 1)
      : bitmap(int(20 * ratio), int(20 * ratio), ratio), graphics(bitmap) {}
  Bitmap bitmap;
  Graphics graphics;

  int Count(Color color) const {
    int count = 0;
    for (int y = 0; y < bitmap.Height(); ++y)
      for (int x = 0; x < bitmap.Width(); ++x) count += bitmap.Row(y)[x] == Opaque(color);
    return count;
  }
  // Pixels that are neither untouched nor wholly of one colour.
  int Blurred(Color color) const {
    int count = 0;
    for (int y = 0; y < bitmap.Height(); ++y)
      for (int x = 0; x < bitmap.Width(); ++x)
        count += bitmap.Row(y)[x] != 0 && bitmap.Row(y)[x] != Opaque(color);
    return count;
  }
};

TEST(Bitmap, WithoutASize_IsEmpty) {
  EXPECT_TRUE(Bitmap().IsEmpty());
  EXPECT_TRUE(Bitmap(0, 5).IsEmpty());
  EXPECT_TRUE(Bitmap(5, -1).IsEmpty());
  EXPECT_EQ(Bitmap().Width(), 0);
}

TEST(Bitmap, HugeSizes_AreRefused) {
  EXPECT_TRUE(Bitmap(50000, 50000).IsEmpty());
  EXPECT_TRUE(Bitmap(INT32_MAX, INT32_MAX).IsEmpty());
  EXPECT_FALSE(Bitmap::IsPossible(8193, 8192));
  EXPECT_TRUE(Bitmap::IsPossible(8192, 8192));
}

TEST(Bitmap, Copies_ShareThePixels) {
  const Bitmap bitmap(2, 2);
  const Bitmap copy = bitmap;
  copy.Row(1)[1] = 7;
  EXPECT_EQ(bitmap.Row(1)[1], 7u);
  EXPECT_EQ(bitmap, copy);
  EXPECT_FALSE(bitmap == Bitmap(2, 2));
}

TEST(GraphicsDeath, Closed_EveryDrawingOperationStops) {
  Graphics closed;
  const Point points[2] = {};
  const char* expression = "dcimpl != NULL";
  EXPECT_FALSE(closed.IsOpen());
  EXPECT_DEATH(closed.TextOut(0, 0, "x"), expression);
  EXPECT_DEATH(closed.TextWidth("x"), expression);
  EXPECT_DEATH(closed.TextHeight(), expression);
  EXPECT_DEATH(closed.GetPixel(0, 0), expression);
  EXPECT_DEATH(closed.SetPixel(0, 0, Color()), expression);
  EXPECT_DEATH(closed.Ellipse(0, 0, 1, 1), expression);
  EXPECT_DEATH(closed.Rectangle(0, 0, 1, 1), expression);
  EXPECT_DEATH(closed.RoundRect(0, 0, 1, 1, 1, 1), expression);
  EXPECT_DEATH(closed.Polygon(points, 2), expression);
  EXPECT_DEATH(closed.Polyline(points, 2), expression);
  EXPECT_DEATH(closed.MoveTo(0, 0), expression);
  EXPECT_DEATH(closed.LineTo(0, 0), expression);
  EXPECT_DEATH(closed.FillRect({}, Color()), expression);
  EXPECT_DEATH(closed.SetPen(Pen(Color::cRed)), expression);
  EXPECT_DEATH(closed.SetFont(Font()), expression);
}

TEST(GraphicsDeath, ToolsThatAreNone_StopWithTheirExpressions) {
  Canvas canvas;
  EXPECT_DEATH(canvas.graphics.SetPen(Pen()), "pen.hpen != NULL");
  EXPECT_DEATH(canvas.graphics.SetBrush(Brush()), "hbrush != NULL");
  EXPECT_DEATH(canvas.graphics.SetFont(Font(-3)),
               "hFont == NULL \\|\\| ::GetObjectType\\(hFont\\) == OBJ_FONT");
  EXPECT_DEATH(canvas.graphics.SetBitmap(Bitmap(1, 1)), "hbitmap == NULL");
  Graphics closed;
  EXPECT_DEATH(closed.SetBitmap(Bitmap()), "hbitmap!=0");
}

TEST(GraphicsDeath, ControlWithoutAWindow_Stops) {
  Panel panel;
  EXPECT_DEATH(Graphics graphics(&panel), "::IsWindow\\(ctrl->impl\\)");
}

TEST(Graphics, ClosedAgain_IsClosedAndCanTakeAnotherBitmap) {
  Canvas canvas;
  canvas.graphics.Close();
  canvas.graphics.Close();
  EXPECT_FALSE(canvas.graphics.IsOpen());
  const Bitmap other(3, 3);
  canvas.graphics.SetBitmap(other);
  canvas.graphics.SetPixel(1, 1, Color::cRed);
  EXPECT_EQ(other.Row(1)[1], Opaque(Color::cRed));
}

TEST(Graphics, Pixels_AreReadAsSet) {
  Canvas canvas;
  canvas.graphics.SetPixel(3, 4, Color::cOrange);
  EXPECT_EQ(canvas.graphics.GetPixel(3, 4), Color(Color::cOrange));
  EXPECT_EQ(canvas.Count(Color::cOrange), 1);
}

TEST(Graphics, PixelsOutside_AreNothing) {
  Canvas canvas;
  for (const Point at :
       {Point{-1, 0}, Point{0, -1}, Point{20, 0}, Point{0, 20}, Point{1 << 30, 0}}) {
    canvas.graphics.SetPixel(at.x, at.y, Color::cRed);
    EXPECT_TRUE(canvas.graphics.GetPixel(at.x, at.y).IsDefault());
  }
  EXPECT_EQ(canvas.Count(Color::cRed), 0);
}

TEST(Graphics, FillRect_LeavesRightAndBottomOut) {
  Canvas canvas;
  canvas.graphics.FillRect({2, 3, 5, 4}, Color::cBlue);
  EXPECT_EQ(canvas.Count(Color::cBlue), 20);
  EXPECT_EQ(canvas.graphics.GetPixel(2, 3), Color(Color::cBlue));
  EXPECT_EQ(canvas.graphics.GetPixel(6, 6), Color(Color::cBlue));
  EXPECT_NE(canvas.graphics.GetPixel(7, 6), Color(Color::cBlue));
}

TEST(Graphics, Rectangle_HasItsOutlineInside) {
  Canvas canvas;
  canvas.graphics.SetPen(Pen(Color::cRed));
  canvas.graphics.SetBrush(Brush(Color::cYellow));
  canvas.graphics.Rectangle(2, 2, 12, 8);
  EXPECT_EQ(canvas.Count(Color::cRed), 2 * 10 + 2 * 4);
  EXPECT_EQ(canvas.Count(Color::cYellow), 8 * 4);
}

TEST(Graphics, ClearBrushAndNoPen_LeaveTheirParts) {
  Canvas canvas;
  canvas.graphics.SetPen(Pen(Color::cRed));
  canvas.graphics.SetBrush(Brush::Clear());
  canvas.graphics.Rectangle(2, 2, 12, 8);
  EXPECT_EQ(canvas.Count(Color::cWhite), 0);
  Canvas other;
  other.graphics.SetPen(Pen(Color::cRed, 1, Pen::cNone));
  other.graphics.SetBrush(Brush(Color::cGreen));
  other.graphics.Rectangle(2, 2, 12, 8);
  EXPECT_EQ(other.Count(Color::cGreen), 60);
  EXPECT_EQ(other.Count(Color::cRed), 0);
}

TEST(Graphics, New_HasABlackPenAndAWhiteBrush) {
  Canvas canvas;
  canvas.graphics.Rectangle(0, 0, 5, 5);
  EXPECT_EQ(canvas.Count(Color::cBlack), 16);
  EXPECT_EQ(canvas.Count(Color::cWhite), 9);
}

TEST(Graphics, Lines_LeaveTheirLastPointOut) {
  Canvas canvas;
  canvas.graphics.SetPen(Pen(Color::cRed));
  canvas.graphics.MoveTo(2, 5);
  canvas.graphics.LineTo(8, 5);
  EXPECT_EQ(canvas.Count(Color::cRed), 6);
  EXPECT_EQ(canvas.Blurred(Color::cRed), 0);
  canvas.graphics.LineTo(8, 2);
  EXPECT_EQ(canvas.Count(Color::cRed), 9);
  EXPECT_EQ(canvas.graphics.GetPixel(8, 5), Color(Color::cRed));
  canvas.graphics.LineTo(8, 2);
  EXPECT_EQ(canvas.Count(Color::cRed), 9);
}

struct RatioRow {
  double ratio;
  int width;  // of a pen of width 1, in device pixels
};

TEST(Graphics, LevelAndUprightEdges_AreSharpAtAnyScale) {
  for (const RatioRow& row : {RatioRow{1, 1}, RatioRow{1.5, 1}, RatioRow{2, 2}}) {
    Canvas canvas(row.ratio);
    canvas.graphics.SetPen(Pen(Color::cRed));
    canvas.graphics.SetBrush(Brush(Color::cRed));
    canvas.graphics.MoveTo(3, 1);
    canvas.graphics.LineTo(3, 19);
    canvas.graphics.MoveTo(1, 7);
    canvas.graphics.LineTo(19, 7);
    canvas.graphics.Rectangle(5, 9, 10, 14);
    canvas.graphics.FillRect({11, 11, 5, 5}, Color::cRed);
    EXPECT_EQ(canvas.Blurred(Color::cRed), 0) << row.ratio;
    Canvas line(row.ratio);
    line.graphics.SetPen(Pen(Color::cRed));
    line.graphics.MoveTo(0, 4);
    line.graphics.LineTo(20, 4);
    EXPECT_EQ(line.Count(Color::cRed), row.width * line.bitmap.Width()) << row.ratio;
  }
}

TEST(Graphics, Pixel_CoversItsSquareAtAnyScale) {
  for (const double ratio : {1.0, 1.5, 2.0}) {
    Canvas canvas(ratio);
    for (int y = 0; y < 20; ++y)
      for (int x = 0; x < 20; ++x) canvas.graphics.SetPixel(x, y, Color::cCyan);
    EXPECT_EQ(canvas.Count(Color::cCyan), canvas.bitmap.Width() * canvas.bitmap.Height()) << ratio;
  }
}

TEST(Graphics, DevicePixels_CountThemselves) {
  Canvas canvas(2);
  EXPECT_EQ(canvas.graphics.PixelRatio(), 2);
  canvas.graphics.UseDevicePixels(true);
  canvas.graphics.SetPixel(5, 5, Color::cRed);
  EXPECT_EQ(canvas.Count(Color::cRed), 1);
  canvas.graphics.UseDevicePixels(false);
  canvas.graphics.SetPixel(5, 5, Color::cRed);
  EXPECT_EQ(canvas.Count(Color::cRed), 5);
}

TEST(Graphics, Ellipse_FillsItsBoxUpToTheEdges) {
  Canvas canvas;
  canvas.graphics.SetPen(Pen(Color::cRed));
  canvas.graphics.SetBrush(Brush(Color::cYellow));
  canvas.graphics.Ellipse(2, 2, 18, 18);
  EXPECT_EQ(canvas.graphics.GetPixel(10, 10), Color(Color::cYellow));
  EXPECT_EQ(canvas.bitmap.Row(3)[3], 0u);
  EXPECT_NE(canvas.bitmap.Row(2)[9], 0u);
  EXPECT_NE(canvas.bitmap.Row(9)[17], 0u);
  EXPECT_EQ(canvas.bitmap.Row(9)[18], 0u);
}

TEST(Graphics, RoundRect_LeavesItsCornersOut) {
  Canvas canvas;
  canvas.graphics.SetPen(Pen(Color::cRed));
  canvas.graphics.RoundRect(0, 0, 20, 20, 12, 12);
  EXPECT_EQ(canvas.bitmap.Row(0)[0], 0u);
  EXPECT_EQ(canvas.graphics.GetPixel(10, 0), Color(Color::cRed));
}

TEST(Graphics, Polygon_IsClosedAndFilled) {
  Canvas canvas;
  canvas.graphics.SetPen(Pen(Color::cRed));
  canvas.graphics.SetBrush(Brush(Color::cGreen));
  const Point square[] = {{2, 2}, {12, 2}, {12, 12}, {2, 12}};
  canvas.graphics.Polygon(square, 4);
  EXPECT_EQ(canvas.Count(Color::cRed), 40);
  EXPECT_EQ(canvas.Count(Color::cGreen), 81);
}

TEST(Graphics, Polyline_IsOpen) {
  Canvas canvas;
  canvas.graphics.SetPen(Pen(Color::cRed));
  const Point corner[] = {{2, 2}, {12, 2}, {12, 12}};
  canvas.graphics.Polyline(corner, 3);
  EXPECT_EQ(canvas.Count(Color::cRed), 20);
}

TEST(Graphics, ShapesWithoutPointsOrExtent_DrawNothing) {
  Canvas canvas;
  const Point point[] = {{5, 5}, {5, 5}};
  canvas.graphics.Polyline(point, 0);
  canvas.graphics.Polyline(point, 1);
  canvas.graphics.Polyline(point, 2);
  canvas.graphics.FillRect({5, 5, 0, 3}, Color::cRed);
  canvas.graphics.FillRect({5, 5, -9, -3}, Color::cRed);
  canvas.graphics.Polygon(point, 0);
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 20; ++x) ASSERT_EQ(canvas.bitmap.Row(y)[x], 0u);
}

TEST(Graphics, CoordinatesFarOff_DoNotCrash) {
  Canvas canvas;
  constexpr int cFar = 1 << 30;
  canvas.graphics.Rectangle(-cFar, -cFar, cFar, cFar);
  canvas.graphics.Ellipse(-cFar, -5, cFar, 5);
  canvas.graphics.MoveTo(-cFar, 0);
  canvas.graphics.LineTo(cFar, 19);
  canvas.graphics.FillRect({-cFar, -cFar, cFar, cFar}, Color::cRed);
  canvas.graphics.TextOut(-cFar, cFar, "text");
  canvas.graphics.FillRect({0, 0, 20, 20}, Color::cRed);
  EXPECT_EQ(canvas.Count(Color::cRed), 20 * 20) << "it still draws";
}

TEST(Graphics, Text_StandsBelowAndRightOfItsPlace) {
  Canvas canvas;
  canvas.graphics.SetTextColor(Color::cRed);
  canvas.graphics.TextOut(4, 2, "H");
  int left = 20, top = 20;
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 20; ++x)
      if (canvas.bitmap.Row(y)[x] != 0) {
        left = std::min(left, x);
        top = std::min(top, y);
      }
  EXPECT_GE(left, 4);
  EXPECT_LE(left, 7);
  EXPECT_GE(top, 2);
  EXPECT_LE(top, 9);
}

TEST(Graphics, TextSizes_GrowWithTextAndFont) {
  Canvas canvas;
  const int width = canvas.graphics.TextWidth("wide");
  const int height = canvas.graphics.TextHeight();
  EXPECT_EQ(canvas.graphics.TextWidth(""), 0);
  EXPECT_GT(canvas.graphics.TextWidth("wider"), width);
  canvas.graphics.SetFont(Font(30, Font::cBold));
  EXPECT_GT(canvas.graphics.TextWidth("wide"), 2 * width);
  EXPECT_GT(canvas.graphics.TextHeight(), 2 * height);
  canvas.graphics.SetFont(Font());
  EXPECT_EQ(canvas.graphics.TextWidth("wide"), width);
}

TEST(Graphics, OddTexts_AreDrawn) {
  Canvas canvas;
  canvas.graphics.TextOut(0, 0, std::string("a\0b", 3));
  canvas.graphics.TextOut(0, 0, "\xFF\xFE broken");
  canvas.graphics.TextOut(0, 0, "two\nlines");
  canvas.graphics.TextOut(0, 0, std::string(100000, 'x'));
  EXPECT_GT(canvas.graphics.TextWidth("\xFF"), 0);
}

TEST(Graphics, Bitmaps_AreDrawnIntoTheirTarget) {
  Canvas canvas;
  const Bitmap dot(1, 1);
  dot.Row(0)[0] = Opaque(Color::cMagenta);
  canvas.graphics.DrawBitmap(dot, {2, 2, 3, 4});
  canvas.graphics.DrawBitmap(Bitmap(), {0, 0, 20, 20});
  EXPECT_EQ(canvas.Count(Color::cMagenta), 12);
}

TEST(ToPlain, SystemColours_ComeFromThePaletteInForce) {
  const QPalette light = QApplication::palette();
  EXPECT_EQ(ToPlain(Color::cRed), Color(Color::cRed));
  EXPECT_EQ(ToPlain(Color::cWindow).Value(), int(light.color(QPalette::Base).rgb() & 0xFFFFFF));
  QApplication::setPalette(test::DarkPalette());
  EXPECT_EQ(ToPlain(Color::cWindow), Color(0x232323));
  EXPECT_EQ(ToPlain(Color::cControl), Color(0x353535));
  QApplication::setPalette(light);
}

TEST(FontCached, EqualFonts_ShareTheHandleMadeAtFirstUse) {
  const FontCached a(12, Font::cBold), b(12, Font::cBold), other(12);
  EXPECT_FALSE(a.IsMade());
  EXPECT_EQ(a.Handle(), b.Handle());
  EXPECT_TRUE(a.IsMade());
  EXPECT_NE(a.Handle(), other.Handle());
}

TEST(FontCached, ChangedFont_GetsAnotherHandle) {
  FontCached font(12);
  const auto before = font.Handle();
  font.size = 20;
  EXPECT_NE(font.Handle(), before);
  font.size = -1;
  EXPECT_EQ(font.Handle(), nullptr);
}

// Drawing on a window that doesn't paint now.

struct PanelForm : Form {
  Panel panel;
  PanelForm() {
    SetBounds(0, 0, 200, 100);
    panel.SetBounds(20, 20, 100, 50);
    Add(&panel);
  }
  QColor Shown(int x, int y) const {
    const QImage image = test::WidgetOf(*this)->grab().toImage();
    return image.pixelColor(int((20 + x) * image.devicePixelRatio()),
                            int((20 + y) * image.devicePixelRatio()));
  }
};

TEST(Graphics, OnAWindow_StandsUntilItNextPaints) {
  PanelForm form;
  test::RunForm(form, false, [&] {
    {
      Graphics graphics(&form.panel);
      graphics.FillRect({0, 0, 40, 40}, Color::cRed);
      EXPECT_EQ(graphics.GetPixel(5, 5), Color(Color::cRed));
      EXPECT_EQ(graphics.GetPixel(60, 5), ToPlain(Color::cControl));
    }
    EXPECT_EQ(form.Shown(5, 5), QColor(Qt::red));
    EXPECT_NE(form.Shown(5, 5), QColor(Qt::red));
  });
}

TEST(Graphics, WindowThatGoesMeanwhile_IsSafe) {
  PanelForm form;
  test::RunForm(form, false, [&] {
    Graphics graphics(&form.panel);
    graphics.FillRect({0, 0, 40, 40}, Color::cRed);
    form.Remove(&form.panel);
    graphics.FillRect({0, 0, 40, 40}, Color::cBlue);
  });
}

TEST(Graphics, MeasuringOnAWindow_PaintsNothing) {
  PanelForm form;
  form.panel.font = Font(30);
  test::RunForm(form, false, [&] {
    EXPECT_GT(Graphics(&form.panel).TextHeight(), Graphics(&form).TextHeight());
  });
}

}  // namespace
}  // namespace mavro
