#include "PlotXY.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Assert.h"
#include "Clipboard.h"
#include "PlainColors.h"
#include "PlotImpl.h"
#include "Virtual.h"

namespace mavro {

namespace {

constexpr int cDefaultWidth = 320, cDefaultHeight = 200;
constexpr int cLeastDrag = 5;            // pixels; less is a click
constexpr double cNotch = 15;            // degrees of the wheel
constexpr double cWheelFactor = 1.25;    // of the span, for each notch
constexpr double cPanShare = 0.1;        // of the span, for each key
constexpr double cDisabledShare = 0.45;  // of the ink in a disabled plot
constexpr double cMostDigits = 1e10;     // of the values by the span that the wheel may reach

double Share(int place, int from, int length) {
  return std::clamp(static_cast<double>(place - from) / std::max(length, 1), 0.0, 1.0);
}

double ValueAt(const PlotRange& range, double share) {
  return range.min + range.Span() * share;
}

PlotRange Part(const PlotRange& range, double from, double to) {
  return DrawableRange({ValueAt(range, from), ValueAt(range, to)});
}

// The range moved by a share of its span, but not out of `all`.
PlotRange Moved(const PlotRange& range, double share, const PlotRange& all) {
  double step = range.Span() * share;
  if (step > 0) step = std::max(std::min(step, all.max - range.max), 0.0);
  if (step < 0) step = std::min(std::max(step, all.min - range.min), 0.0);
  return DrawableRange({range.min + step, range.max + step});
}

bool IsNarrow(const PlotRange& range) {
  return range.Span() * cMostDigits <= std::max(std::abs(range.min), std::abs(range.max));
}

}  // namespace

PlotXY::PlotXY()
    : PaintBox(new Impl),
      title(impl, static_cast<PropertySetter>(&Impl::TitleChanged), &TheImpl().title),
      xTitle(impl, static_cast<PropertySetter>(&Impl::Changed), &TheImpl().xTitle),
      yTitle(impl, static_cast<PropertySetter>(&Impl::Changed), &TheImpl().yTitle),
      showLegend(impl, static_cast<PropertySetter>(&Impl::Changed), &TheImpl().showLegend),
      showGrid(impl, static_cast<PropertySetter>(&Impl::Changed), &TheImpl().showGrid) {
  SetSize(cDefaultWidth, cDefaultHeight);
  backColor = Color(Color::cWindow);
  wantsKeys = true;
  onDraw.Add_H(this, &PlotXY::OnDraw);
  onPaint.Add_H(this, &PlotXY::OnPaint);
}

PlotXY::Impl& PlotXY::TheImpl() const {
  return *static_cast<Impl*>(impl);
}

int PlotXY::AddSeries(PlotSeries series) {
  MAVRO_ASSERT(series.x.empty() || series.x.size() == series.y.size());
  const PlotExtent extent = ExtentOf(series);
  TheImpl().series.push_back({std::move(series), extent});
  TheImpl().Changed();
  return SeriesCount() - 1;
}

int PlotXY::AddSeries(const std::string& name, PlotStyle style, Color color) {
  return AddSeries(PlotSeries{name, style, color, {}, {}});
}

void PlotXY::SetPoints(int series, std::vector<double> x, std::vector<double> y) {
  MAVRO_ASSERT(x.empty() || x.size() == y.size());
  KeptSeries& kept = TheImpl().At(series);
  kept.series.x = std::move(x);
  kept.series.y = std::move(y);
  kept.extent = ExtentOf(kept.series);
  TheImpl().Changed();
}

// A series without a list of x gets one when a point needs it.
void PlotXY::AddPoint(int series, double x, double y) {
  KeptSeries& kept = TheImpl().At(series);
  std::vector<double>& places = kept.series.x;
  for (size_t i = places.size(); i < kept.series.y.size(); ++i)
    places.push_back(static_cast<double>(i));
  places.push_back(x);
  kept.series.y.push_back(y);
  kept.extent.Add(x, y);
  TheImpl().Changed();
}

void PlotXY::RemoveSeries(int series) {
  TheImpl().At(series);
  TheImpl().series.erase(TheImpl().series.begin() + series);
  TheImpl().Changed();
}

void PlotXY::Clear() {
  TheImpl().series.clear();
  TheImpl().Changed();
}

int PlotXY::SeriesCount() const {
  return static_cast<int>(TheImpl().series.size());
}

const PlotSeries& PlotXY::Series(int series) const {
  return TheImpl().At(series).series;
}

Color PlotXY::SeriesColor(int series) const {
  const Color ground = TheImpl().Look().ground;
  return ColorOfSeries(Series(series), static_cast<size_t>(series), ground);
}

PlotRange PlotXY::XRange() const {
  return TheImpl().Look().x;
}

PlotRange PlotXY::YRange() const {
  return TheImpl().Look().y;
}

void PlotXY::Zoom(const PlotRange& x, const PlotRange& y) {
  for (const double end : {x.min, x.max, y.min, y.max})
    if (!HasPlace(end)) return;
  TheImpl().ShowPart(DrawableRange(x), DrawableRange(y));
}

void PlotXY::ShowAll() {
  TheImpl().ShowPart({}, {});
}

bool PlotXY::IsZoomed() const {
  return TheImpl().zoomX || TheImpl().zoomY;
}

Rect PlotXY::PlotArea() {
  return TheImpl().Plan().area;
}

double PlotXY::XAt(int at) {
  const Rect area = PlotArea();
  if (area.width == 0) return XRange().min;
  return ValueAt(XRange(), Share(at, area.left, area.width - 1));
}

double PlotXY::YAt(int at) {
  const Rect area = PlotArea();
  if (area.height == 0) return YRange().min;
  return ValueAt(YRange(), 1 - Share(at, area.top, area.height - 1));
}

Bitmap PlotXY::ToBitmap(int newWidth, int newHeight, double pixelRatio) {
  return TheImpl().ToBitmap(newWidth, newHeight, pixelRatio);
}

FileResult PlotXY::SavePicture(const std::string& path) {
  Picture picture;
  picture.Assign(TheImpl().Shown());
  return picture.Save(path);
}

void PlotXY::CopyPicture() {
  SetClipboardPicture(TheImpl().Shown());
}

void PlotXY::OnDraw(NotifyArgs&) {
  TheImpl().Draw();
}

void PlotXY::OnPaint(PaintArgs& args) {
  TheImpl().DrawMarks(*args.graphics);
}

KeptSeries& PlotXY::Impl::At(int index) {
  MAVRO_ASSERT(index >= 0 && index < static_cast<int>(series.size()));
  return series[static_cast<size_t>(index)];
}

void PlotXY::Impl::Changed() {
  MarkStale();
}

void PlotXY::Impl::TitleChanged() {
  if (owner->accessibleName.empty() && hwnd) hwnd->SetAccessibleName(title);
  Changed();
}

PlotRange PlotXY::Impl::AllOf(PlotRange PlotExtent::*axis) const {
  bool any = false;
  PlotRange all;
  for (const KeptSeries& kept : series) {
    if (!kept.extent.any) continue;
    const PlotRange& own = kept.extent.*axis;
    all = any ? PlotRange{std::min(all.min, own.min), std::max(all.max, own.max)} : own;
    any = true;
  }
  return any ? RangeAround(all.min, all.max) : PlotRange{};
}

// Without a colour of its own the ink is the one of windows' text, if the ground is that of
// windows; else black or white, whichever can be read.
PlotLook PlotXY::Impl::Look() const {
  PlotLook look{series,
                zoomX ? *zoomX : AllOf(&PlotExtent::x),
                zoomY ? *zoomY : AllOf(&PlotExtent::y),
                ToPlain(owner->InheritedBackColor()),
                Color(),
                title,
                xTitle,
                yTitle,
                showLegend,
                showGrid};
  look.ink = ToPlain(foreColor.IsDefault() ? Color(Color::cWindowText) : foreColor);
  if (foreColor.IsDefault() && look.ground != ToPlain(Color::cWindow))
    look.ink = IsDark(look.ground) ? Color(Color::cWhite) : Color(Color::cBlack);
  if (!enabled) look.ink = Blend(look.ink, look.ground, cDisabledShare);
  return look;
}

PlotPlan PlotXY::Impl::Plan() {
  if (!hwnd || !backBuffer.IsOpen()) return {};
  return PlanPlot(backBuffer, Look(), hwnd->ClientWidth(), hwnd->ClientHeight());
}

void PlotXY::Impl::Draw() {
  const int width = hwnd->ClientWidth(), height = hwnd->ClientHeight();
  const PlotLook look = Look();
  DrawPlot(backBuffer, look, PlanPlot(backBuffer, look, width, height), width, height);
}

Bitmap PlotXY::Impl::ToBitmap(int width, int height, double ratio) {
  const auto pixels = [ratio](int length) {
    return static_cast<int>(std::min(std::ceil(length * ratio), 1e9));
  };
  if (width <= 0 || height <= 0 || !(ratio > 0)) return {};
  const Bitmap bitmap(pixels(width), pixels(height), ratio);
  if (bitmap.IsEmpty()) return bitmap;
  Graphics graphics(bitmap, owner);
  if (!font.IsDefault()) graphics.SetFont(font);
  const PlotLook look = Look();
  DrawPlot(graphics, look, PlanPlot(graphics, look, width, height), width, height);
  return bitmap;
}

Bitmap PlotXY::Impl::Shown() {
  if (!hwnd) return ToBitmap(owner->width, owner->height, 1);
  return ToBitmap(hwnd->ClientWidth(), hwnd->ClientHeight(), Canvas()->PixelRatio());
}

void PlotXY::Impl::ShowPart(std::optional<PlotRange> x, std::optional<PlotRange> y) {
  if (zoomX == x && zoomY == y) return;
  zoomX = x;
  zoomY = y;
  Changed();
  FireNotify(static_cast<PlotXY*>(owner)->onZoom, x || y ? 1 : 0);
}

// The mouse and the keys.

void PlotXY::Impl::DrawMarks(Graphics& graphics) {
  const auto draw = [&](const Rect& rect, Pen::Style style) {
    if (rect.width == 0 || rect.height == 0) return;
    graphics.SetPen(Pen(Look().ink, 1, style));
    graphics.SetBrush(Brush::Clear());
    graphics.Rectangle(rect.left, rect.top, rect.left + rect.width, rect.top + rect.height);
  };
  if (isDragging) draw(Band(), Pen::cDash);
  if (!owner->IsFocused()) return;
  const int width = hwnd->ClientWidth(), height = hwnd->ClientHeight();
  draw({2, 2, std::max(width - 4, 0), std::max(height - 4, 0)}, Pen::cDot);
}

Rect PlotXY::Impl::Band() const {
  Rect band{std::min(dragStart.x, dragEnd.x), std::min(dragStart.y, dragEnd.y),
            std::abs(dragStart.x - dragEnd.x), std::abs(dragStart.y - dragEnd.y)};
  const bool isWide = band.width >= cLeastDrag, isTall = band.height >= cLeastDrag;
  if (!isWide && !isTall) return {};
  if (!isWide) {
    band.left = dragArea.left;
    band.width = dragArea.width - 1;
  }
  if (!isTall) {
    band.top = dragArea.top;
    band.height = dragArea.height - 1;
  }
  return band;
}

bool PlotXY::Impl::Press(Point at) {
  dragArea = Plan().area;
  const Rect& area = dragArea;
  isDragging = at.x >= area.left && at.y >= area.top && at.x < area.left + area.width &&
               at.y < area.top + area.height;
  dragStart = dragEnd = at;
  return isDragging;
}

void PlotXY::Impl::DragTo(Point at) {
  if (!isDragging) return;
  dragEnd = {std::clamp(at.x, dragArea.left, dragArea.left + dragArea.width - 1),
             std::clamp(at.y, dragArea.top, dragArea.top + dragArea.height - 1)};
  hwnd->Invalidate();
}

bool PlotXY::Impl::CancelDrag() {
  if (!isDragging) return false;
  isDragging = isPressed = false;
  hwnd->Invalidate();
  return true;
}

// Ends the drag. An axis across which the band is whole keeps its part.
void PlotXY::Impl::Release() {
  const Rect band = Band();
  const bool isWide = std::abs(dragStart.x - dragEnd.x) >= cLeastDrag;
  const bool isTall = std::abs(dragStart.y - dragEnd.y) >= cLeastDrag;
  if (!isDragging) return;
  isDragging = false;
  if (band.width == 0) return;
  isPressed = false;
  const PlotLook look = Look();
  const int right = band.left + band.width, bottom = band.top + band.height;
  const int wide = dragArea.width - 1, tall = dragArea.height - 1;
  const PlotRange x =
      Part(look.x, Share(band.left, dragArea.left, wide), Share(right, dragArea.left, wide));
  const PlotRange y =
      Part(look.y, 1 - Share(bottom, dragArea.top, tall), 1 - Share(band.top, dragArea.top, tall));
  ShowPart(isWide ? std::optional(x) : zoomX, isTall ? std::optional(y) : zoomY);
}

// Makes the part `factor` times as wide, around a place in it. Nothing is shown outside of all
// points; when both axes have reached that, nothing is zoomed any more.
bool PlotXY::Impl::ZoomAt(double xShare, double yShare, double factor) {
  const PlotLook look = Look();
  if (factor < 1 && (IsNarrow(look.x) || IsNarrow(look.y))) return false;
  if (factor >= 1 && !zoomX && !zoomY) return false;
  const auto scaled = [factor](const PlotRange& range, double share, const PlotRange& all) {
    const double before = share * (1 - factor), after = 1 + (1 - share) * (factor - 1);
    const PlotRange wanted = Part(range, before, after);
    if (factor < 1) return wanted;
    return DrawableRange({std::max(wanted.min, std::min(all.min, range.min)),
                          std::min(wanted.max, std::max(all.max, range.max))});
  };
  const PlotRange allX = AllOf(&PlotExtent::x), allY = AllOf(&PlotExtent::y);
  const PlotRange x = scaled(look.x, xShare, allX), y = scaled(look.y, yShare, allY);
  const auto isAll = [](const PlotRange& range, const PlotRange& all) {
    return range.min <= all.min && range.max >= all.max;
  };
  if (factor > 1 && isAll(x, allX) && isAll(y, allY))
    ShowPart({}, {});
  else
    ShowPart(x, y);
  return true;
}

bool PlotXY::Impl::Wheel(Point at, double degrees) {
  const Rect area = Plan().area;
  if (area.width == 0 || degrees == 0) return false;
  return ZoomAt(Share(at.x, area.left, area.width - 1), 1 - Share(at.y, area.top, area.height - 1),
                std::pow(cWheelFactor, -degrees / cNotch));
}

void PlotXY::Impl::Pan(double xShare, double yShare) {
  std::optional<PlotRange> x = zoomX, y = zoomY;
  if (x) x = Moved(*x, xShare, AllOf(&PlotExtent::x));
  if (y) y = Moved(*y, yShare, AllOf(&PlotExtent::y));
  ShowPart(x, y);
}

bool PlotXY::Impl::OnOwnKey(int virtualKey) {
  const bool isZoomed = zoomX || zoomY;
  switch (virtualKey) {
    case VK_ESCAPE:
      if (CancelDrag()) return true;
      if (isZoomed) ShowPart({}, {});
      return isZoomed;
    case 'C':
      if (!(LiveModifiers() & mavro::cControl)) return false;
      static_cast<PlotXY*>(owner)->CopyPicture();
      return true;
    case Key::cPlus:
      return ZoomAt(0.5, 0.5, 1 / cWheelFactor);
    case Key::cMinus:
      return ZoomAt(0.5, 0.5, cWheelFactor);
    case VK_LEFT:
    case VK_RIGHT:
      if (isZoomed) Pan(virtualKey == VK_LEFT ? -cPanShare : cPanShare, 0);
      return isZoomed;
    case VK_UP:
    case VK_DOWN:
      if (isZoomed) Pan(0, virtualKey == VK_DOWN ? -cPanShare : cPanShare);
      return isZoomed;
    default:
      return false;
  }
}

// Handlers are first: an event that one of them has marked as handled is not the plot's. A drag
// ends in any case.
Param PlotXY::Impl::WndProc(unsigned message, Param wParam, Param lParam) {
  NativeWindow* window = hwnd;
  const Point at{PointX(lParam), PointY(lParam)};
  if (message == WM_LBUTTONUP) Release();
  if (!IsWindow(window)) return 0;
  const Param result = PaintBox::Impl::WndProc(message, wParam, lParam);
  if (!IsWindow(window) || !window->asksDefault) return result;
  switch (message) {
    case WM_CREATED:
      if (owner->accessibleName.empty() && !title.empty()) hwnd->SetAccessibleName(title);
      break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      hwnd->Invalidate();
      break;
    case WM_LBUTTONDOWN:
      Press(at);
      break;
    case WM_MOUSEMOVE:
      if (wParam & MouseArgs::cLeft) DragTo(at);
      break;
    case WM_LBUTTONDBLCLK:
      ShowPart({}, {});
      break;
    case WM_MOUSEWHEEL:
      if (!Wheel(at, static_cast<double>(wParam)) || !IsWindow(window)) break;
      window->asksDefault = false;
      return 1;
    default:
      break;
  }
  return result;
}

}  // namespace mavro
