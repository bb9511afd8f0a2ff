#include "ChildCtrl.h"

#include "SysImpl.h"

namespace mavro {

namespace {

constexpr int cTextLeft = 4;
constexpr int cTextTop = 2;
constexpr int cButtonWidth = 20;
constexpr int cArrowWidth = 8;
constexpr int cSpinSideways = 30;  // width of the buttons and margins of a spin edit

enum class Arrow { cUp, cDown };

// A raised frame with a triangle in its middle.
void DrawArrowButton(Graphics& graphics, const Rect& rect, Arrow arrow) {
  const int right = rect.left + rect.width - 1;
  const int bottom = rect.top + rect.height - 1;
  graphics.FillRect(rect, Color::cControl);
  graphics.SetPen(Pen(Color::cWindow));
  const Point lit[] = {{rect.left, bottom}, {rect.left, rect.top}, {right, rect.top}};
  graphics.Polyline(lit, 3);
  graphics.SetPen(Pen(Color::cControlShadow));
  const Point shaded[] = {{right, rect.top}, {right, bottom}, {rect.left - 1, bottom}};
  graphics.Polyline(shaded, 3);

  constexpr int cHalf = cArrowWidth / 2;
  const int x = rect.left + rect.width / 2;
  const int y = rect.top + rect.height / 2;
  const int tip = arrow == Arrow::cDown ? y + cHalf / 2 : y - cHalf / 2;
  const int base = arrow == Arrow::cDown ? y - cHalf / 2 : y + cHalf / 2;
  const Point triangle[] = {{x - cHalf, base}, {x + cHalf, base}, {x, tip}};
  graphics.SetPen(Pen(Color::cControlText, 1, Pen::cNone));
  graphics.SetBrush(Brush(Color::cControlText));
  graphics.Polygon(triangle, 3);
}

// The ground has the frame that the control has in the program, so that its edges can be seen on a
// ground of the same colour.
void FillGround(ChildCtrl& control, Graphics& graphics) {
  const Color own = control.backColor;
  graphics.FillRect({0, 0, control.width, control.height},
                    own.IsDefault() ? Color(Color::cWindow) : own);
  const int right = control.width - 1, bottom = control.height - 1;
  const Point edges[] = {{0, 0}, {right, 0}, {right, bottom}, {0, bottom}, {0, 0}};
  graphics.SetPen(Pen(Color::cControlShadow));
  graphics.Polyline(edges, 5);
  const Color ink = control.foreColor;
  graphics.SetTextColor(ink.IsDefault() ? Color(Color::cWindowText) : ink);
}

}  // namespace

// Paints by calling a function.
class ChildCtrl::Impl : public SysImpl {
 public:
  void Create() override { CreateNative("mavroCustom", cWantsKeys); }

  Param WndProc(unsigned message, Param wParam, Param lParam) override {
    auto& child = *static_cast<ChildCtrl*>(owner);
    if (message == WM_SETTEXT) hwnd->Invalidate();
    if (message != WM_PAINT) return SysImpl::WndProc(message, wParam, lParam);
    if (child.painter) {
      Graphics graphics(&child, Graphics::cPainting);
      child.painter(child, graphics);
    }
    return 0;
  }
};

ChildCtrl::ChildCtrl(Painter itsPainter) : Control(new Impl), painter(itsPainter) {
  SetSize(180, 80);
}

void PaintPlaceholder(ChildCtrl& control, Graphics& graphics) {
  FillGround(control, graphics);
  graphics.TextOut(cTextLeft, cTextTop, control.text);
}

void PaintComboPlaceholder(ChildCtrl& control, Graphics& graphics) {
  PaintPlaceholder(control, graphics);
  const int left = control.width - cButtonWidth;
  DrawArrowButton(graphics, {left, 0, cButtonWidth, control.height}, Arrow::cDown);
}

void PaintSpinPlaceholder(ChildCtrl& control, Graphics& graphics) {
  FillGround(control, graphics);
  graphics.TextOut((control.width - cSpinSideways) / 2, cTextTop, control.text);
  const int left = control.width - cButtonWidth;
  const int half = control.height / 2;
  DrawArrowButton(graphics, {left, 0, cButtonWidth, half}, Arrow::cUp);
  DrawArrowButton(graphics, {left, half, cButtonWidth, control.height - half}, Arrow::cDown);
}

}  // namespace mavro
