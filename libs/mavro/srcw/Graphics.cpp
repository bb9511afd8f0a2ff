#include "Graphics.h"

#include "Assert.h"
#include "DrawSurface.h"
#include "FontCached.h"
#include "Picture.h"
#include "Saturate.h"
#include "SysImpl.h"

namespace mavro {

namespace {

Rect RectOf(int left, int top, int right, int bottom) {
  return {left, top, Saturate(int64_t{right} - left), Saturate(int64_t{bottom} - top)};
}

}  // namespace

Graphics::Graphics() = default;

Graphics::Graphics(Control* ctrl, Begin begin) : painting(begin == cPainting) {
  MAVRO_ASSERT_AS(IsWindow(ctrl->impl->hwnd), "::IsWindow(ctrl->impl)");
  dcimpl = MakeSurface(*ctrl, begin);
}

Graphics::Graphics(const Bitmap& newBitmap, Control* like) {
  SetBitmap(newBitmap, like);
}

Graphics::~Graphics() {
  Close();
}

void Graphics::Close() {
  dcimpl.reset();
  bitmap = Bitmap();
  painting = false;
}

void Graphics::SetBitmap(const Bitmap& newBitmap, Control* like) {
  MAVRO_ASSERT_AS(bitmap.IsEmpty() && !dcimpl, "hbitmap == NULL");
  MAVRO_ASSERT_AS(!newBitmap.IsEmpty(), "hbitmap!=0");
  bitmap = newBitmap;
  dcimpl = MakeSurface(bitmap, like);
}

DrawSurface& Graphics::Open() const {
  MAVRO_ASSERT_AS(dcimpl, "dcimpl != NULL");
  return *dcimpl;
}

void Graphics::SetPen(const Pen& newPen) {
  DrawSurface& surface = Open();
  MAVRO_ASSERT_AS(newPen.IsMade(), "pen.hpen != NULL");
  pen = newPen;
  surface.SetPen(pen);
}

void Graphics::SetBrush(const Brush& newBrush) {
  DrawSurface& surface = Open();
  MAVRO_ASSERT_AS(newBrush.IsMade(), "hbrush != NULL");
  brush = newBrush;
  surface.SetBrush(brush);
}

void Graphics::SetFont(const Font& newFont) {
  DrawSurface& surface = Open();
  MAVRO_ASSERT_AS(newFont.IsDefault() || FontCached(newFont).Handle(),
                  "hFont == NULL || ::GetObjectType(hFont) == OBJ_FONT");
  font = newFont;
  surface.SetFont(font);
}

void Graphics::SetTextColor(Color color) {
  Open().SetTextColor(color);
}

void Graphics::TextOut(int x, int y, const std::string& text) {
  Open().TextOut(x, y, text);
}

int Graphics::TextWidth(const std::string& text) const {
  return Open().TextWidth(text);
}

int Graphics::TextHeight() const {
  return Open().TextHeight();
}

Color Graphics::GetPixel(int x, int y) const {
  return Open().GetPixel(x, y);
}

void Graphics::SetPixel(int x, int y, Color color) {
  Open().SetPixel(x, y, color);
}

void Graphics::Rectangle(int left, int top, int right, int bottom) {
  Open().Rectangle(RectOf(left, top, right, bottom));
}

void Graphics::Ellipse(int left, int top, int right, int bottom) {
  Open().Ellipse(RectOf(left, top, right, bottom));
}

void Graphics::RoundRect(int left, int top, int right, int bottom, int width, int height) {
  Open().RoundRect(RectOf(left, top, right, bottom), width, height);
}

void Graphics::Polygon(const Point* points, int n) {
  Open().Polygon(points, n);
}

void Graphics::Polyline(const Point* points, int n) {
  Open().Polyline(points, n);
}

void Graphics::MoveTo(int x, int y) {
  Open();
  position = {x, y};
}

void Graphics::LineTo(int x, int y) {
  const Point ends[] = {position, {x, y}};
  Open().Polyline(ends, 2);
  position = ends[1];
}

void Graphics::FillRect(const Rect& rect, Color color) {
  Open().FillRect(rect, color);
}

void Graphics::DrawBitmap(const Bitmap& drawn, const Rect& target) {
  Open().DrawBitmap(drawn, target);
}

void Graphics::DrawPicture(const Picture& picture, const Rect& target) {
  Open().DrawBitmap(picture.Pixels(), target);
}

void Graphics::DrawIcon(int icon, int x, int y) {
  Open().DrawIcon(icon, x, y);
}

double Graphics::PixelRatio() const {
  return Open().PixelRatio();
}

void Graphics::UseDevicePixels(bool on) {
  Open().UseDevicePixels(on);
}

}  // namespace mavro
