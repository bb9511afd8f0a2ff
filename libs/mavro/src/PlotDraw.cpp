#include <algorithm>
#include <cmath>

#include "PlainColors.h"
#include "PlotImpl.h"
#include "PlotRaster.h"

namespace mavro {

namespace {

constexpr int cMargin = 8;  // around the whole plot
constexpr int cGap = 4;     // between an axis and its labels, and between rows of text
constexpr int cTickLength = 4;
constexpr int cLabelGap = 10;     // the smallest distance of two labels of the level axis
constexpr int cSampleWidth = 18;  // of the line that shows a series in the legend
constexpr int cEntryGap = 16;
constexpr int cLeastSide = 24;   // of an area that can show something
constexpr int cLegendShare = 3;  // at most one third of the height
constexpr double cThickness = 1.6;
constexpr double cDotRadius = 2.6;
constexpr double cMostLength = 8e6;  // pixels of all strokes of a series
constexpr double cGridShare = 0.14;
constexpr double cAxisShare = 0.55;

// Colours that differ from each other and from a light or a dark ground.
constexpr int32_t cOnLight[] = {0x1F66C1, 0xD0402B, 0x2B8A3E, 0x8E44AD,
                                0xB36200, 0x00808C, 0xB83280, 0x5F6368};
constexpr int32_t cOnDark[] = {0x6CB2FF, 0xFF7F6B, 0x69D58C, 0xD19BF5,
                               0xF2B84B, 0x4CD6DE, 0xFF8CC0, 0xBDC1C6};

// The place after the bytes of the character that begins at `at`.
size_t NextCharacter(const std::string& text, size_t at) {
  do ++at;
  while (at < text.size() && (text[at] & 0xC0) == 0x80);
  return at;
}

// As much of a text as has room, with an ellipsis if that is not all.
std::string Shortened(const Graphics& graphics, const std::string& text, int room) {
  if (graphics.TextWidth(text) <= room) return text;
  std::string fits;
  for (size_t end = 0; end < text.size();) {
    end = NextCharacter(text, end);
    const std::string longer = text.substr(0, end) + "…";
    if (graphics.TextWidth(longer) > room) break;
    fits = longer;
  }
  return fits;
}

// Sets the entries in rows from `top` on; the result is the place below them.
int PlaceLegend(PlotPlan& plan, const Graphics& graphics, const PlotLook& look, Rect room) {
  const int line = graphics.TextHeight();
  int x = room.left, y = room.top;
  bool isEmpty = true;
  for (size_t i = 0; i < look.series.size(); ++i) {
    const std::string& name = look.series[i].series.name;
    if (name.empty()) continue;
    const std::string shown = Shortened(graphics, name, room.width - cSampleWidth - cGap);
    const int width = cSampleWidth + cGap + graphics.TextWidth(shown);
    if (x > room.left && x + width > room.left + room.width) {
      x = room.left;
      y += line;
    }
    if (y + line > room.top + room.height) break;
    plan.legend.push_back({x, y, i, shown});
    isEmpty = false;
    x += width + cEntryGap;
  }
  return isEmpty ? room.top : y + line + cGap;
}

int WidestLabel(const Graphics& graphics, const std::vector<PlotTick>& ticks) {
  int widest = 0;
  for (const PlotTick& tick : ticks) widest = std::max(widest, graphics.TextWidth(tick.label));
  return widest;
}

// The surface of a plot and the places of its parts.
struct Canvas {
  Graphics& graphics;
  const PlotLook& look;
  const PlotPlan& plan;
  int width, height;

  Color Faint(double share) const { return Blend(look.ink, look.ground, share); }
  int Bottom() const { return plan.area.top + plan.area.height; }
  int XOf(double value) const {
    return plan.area.left + TickPixel(look.x, plan.xRoom.length, value);
  }
  int YOf(double value) const { return Bottom() - 1 - TickPixel(look.y, plan.yRoom.length, value); }
};

void DrawGrid(const Canvas& canvas) {
  if (!canvas.look.hasGrid) return;
  const Rect& area = canvas.plan.area;
  const Color faint = canvas.Faint(cGridShare);
  for (const PlotTick& tick : canvas.plan.xTicks)
    canvas.graphics.FillRect({canvas.XOf(tick.value), area.top, 1, area.height}, faint);
  for (const PlotTick& tick : canvas.plan.yTicks)
    canvas.graphics.FillRect({area.left, canvas.YOf(tick.value), area.width, 1}, faint);
}

void DrawAxes(const Canvas& canvas) {
  const PlotPlan& plan = canvas.plan;
  const Rect& area = plan.area;
  Graphics& graphics = canvas.graphics;
  const Color line = canvas.Faint(cAxisShare);
  graphics.FillRect({area.left - 1, area.top, 1, area.height + 1}, line);
  graphics.FillRect({area.left - 1, canvas.Bottom(), area.width + 1, 1}, line);
  graphics.SetTextColor(canvas.look.ink);
  for (const PlotTick& tick : plan.xTicks) {
    graphics.FillRect({canvas.XOf(tick.value), canvas.Bottom(), 1, cTickLength}, line);
    const int place = TickPixel(canvas.look.x, plan.xRoom.length, tick.value);
    const int start = LabelStart(place, graphics.TextWidth(tick.label), plan.xRoom);
    graphics.TextOut(area.left + start, canvas.Bottom() + cTickLength + 1, tick.label);
  }
  const int high = graphics.TextHeight();
  for (const PlotTick& tick : plan.yTicks) {
    graphics.FillRect({area.left - cTickLength, canvas.YOf(tick.value), cTickLength, 1}, line);
    const int place = TickPixel(canvas.look.y, plan.yRoom.length, tick.value);
    const int start = LabelStart(place, high, plan.yRoom);
    const int left = area.left - cTickLength - cGap - graphics.TextWidth(tick.label);
    graphics.TextOut(left, canvas.Bottom() - start - high, tick.label);
  }
}

void DrawTitles(const Canvas& canvas) {
  const PlotLook& look = canvas.look;
  Graphics& graphics = canvas.graphics;
  const int room = canvas.width - 2 * cMargin;
  const auto draw = [&](const std::string& text, int middle, int y) {
    const std::string shown = Shortened(graphics, text, room);
    const int most = canvas.width - cMargin - graphics.TextWidth(shown);
    const int left = std::min(middle - graphics.TextWidth(shown) / 2, most);
    graphics.TextOut(std::max(left, cMargin), y, shown);
  };
  const int middle = canvas.plan.area.left + canvas.plan.area.width / 2;
  graphics.SetTextColor(look.ink);
  draw(look.title, middle, cMargin);
  draw(look.xTitle, middle, canvas.height - cMargin - graphics.TextHeight());
  const int line = graphics.TextHeight();
  draw(look.yTitle, cMargin, canvas.plan.area.top - line / 2 - cGap - line);
}

void DrawLegend(const Canvas& canvas) {
  Graphics& graphics = canvas.graphics;
  const int line = graphics.TextHeight();
  graphics.SetTextColor(canvas.look.ink);
  for (const LegendEntry& entry : canvas.plan.legend) {
    const PlotSeries& series = canvas.look.series[entry.series].series;
    const Color color = ColorOfSeries(series, entry.series, canvas.look.ground);
    const int middle = entry.top + line / 2;
    if (series.style != PlotStyle::cPoints)
      graphics.FillRect({entry.left, middle - 1, cSampleWidth, 2}, color);
    if (series.style != PlotStyle::cLines)
      graphics.FillRect({entry.left + cSampleWidth / 2 - 3, middle - 3, 6, 6}, color);
    graphics.TextOut(entry.left + cSampleWidth + cGap, entry.top, entry.name);
  }
}

void DrawSeries(PlotRaster& raster, const KeptSeries& kept, const PlotView& view, double ratio) {
  const PlotSeries& series = kept.series;
  const PlotPart part = PartInView(series, kept.extent.sorted, view);
  if (series.style != PlotStyle::cPoints)
    for (const PlotStroke& stroke :
         Thinned(Reduced(series, part, view), cMostLength, view.width + view.height))
      raster.Line(stroke, cThickness * ratio);
  if (series.style != PlotStyle::cLines) raster.Dots(Dots(series, part, view), cDotRadius * ratio);
}

// The curves are drawn on pixels of their own, which cut them off at the axes.
void DrawCurves(const Canvas& canvas) {
  const Rect& area = canvas.plan.area;
  const double ratio = canvas.graphics.PixelRatio();
  const auto pixels = [ratio](int from, int length) {
    return static_cast<int>(std::lround((from + length) * ratio) - std::lround(from * ratio));
  };
  const PlotView view{canvas.look.x, canvas.look.y, pixels(area.left, area.width),
                      pixels(area.top, area.height)};
  const Bitmap curves(view.width, view.height, ratio);
  if (curves.IsEmpty()) return;
  PlotRaster raster(view.width, view.height);
  for (size_t i = 0; i < canvas.look.series.size(); ++i) {
    const KeptSeries& kept = canvas.look.series[i];
    if (!kept.extent.any) continue;
    raster.Clear();
    DrawSeries(raster, kept, view, ratio);
    raster.PaintTo(curves, ColorOfSeries(kept.series, i, canvas.look.ground).Value());
  }
  canvas.graphics.DrawBitmap(curves, area);
}

}  // namespace

Color ColorOfSeries(const PlotSeries& series, size_t index, Color ground) {
  if (!series.color.IsDefault()) return ToPlain(series.color);
  return Color(IsDark(ground) ? cOnDark[index % std::size(cOnDark)]
                              : cOnLight[index % std::size(cOnLight)]);
}

// From top to bottom: title, legend, name of the upright axis, area, labels, name of the level
// axis. The height of the area decides the upright axis' labels; these decide where it begins.
PlotPlan PlanPlot(const Graphics& graphics, const PlotLook& look, int width, int height) {
  PlotPlan plan;
  const int line = graphics.TextHeight();
  int top = cMargin;
  if (!look.title.empty()) top += line + cGap;
  if (look.hasLegend)
    top = PlaceLegend(plan, graphics, look,
                      {cMargin, top, width - 2 * cMargin, height / cLegendShare});
  if (!look.yTitle.empty()) top += line + cGap;
  if (top > cMargin) top += line / 2;  // for the upper half of the highest label
  int bottom = height - cMargin - line - cTickLength - 1;
  if (!look.xTitle.empty()) bottom -= line + cGap;
  const int tall = bottom - top;
  if (tall < cLeastSide) return {};
  plan.yRoom = {tall - 1, line / 2, line / 2, line / 2};
  plan.yTicks = FitTicks(look.y, plan.yRoom, [line](const std::string&) { return line; });
  const int left = cMargin + WidestLabel(graphics, plan.yTicks) + cGap + cTickLength;
  const int wide = width - left - 2 * cMargin;
  if (wide < cLeastSide) return {};
  plan.area = {left, top, wide, tall};
  plan.xRoom = {wide - 1, left - cMargin, cMargin, cLabelGap};
  plan.xTicks = FitTicks(look.x, plan.xRoom, [&graphics](const std::string& label) {
    return graphics.TextWidth(label);
  });
  return plan;
}

void DrawPlot(Graphics& graphics, const PlotLook& look, const PlotPlan& plan, int width,
              int height) {
  graphics.FillRect({0, 0, width, height}, look.ground);
  if (plan.area.width == 0) return;
  const Canvas canvas{graphics, look, plan, width, height};
  DrawGrid(canvas);
  DrawCurves(canvas);
  DrawAxes(canvas);
  DrawTitles(canvas);
  DrawLegend(canvas);
}

}  // namespace mavro
