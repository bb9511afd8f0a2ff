#include <QAccessibleWidget>
#include <QFrame>
#include <QPainter>

#include "NativeCanvas.h"
#include "QtFactories.h"
#include "QtOverlay.h"
#include "QtPainted.h"
#include "QtText.h"

namespace mavro {

namespace {

class CanvasWidget final : public PaintedFrame {
 public:
  using PaintedFrame::PaintedFrame;
  bool isSlider = false;
  AccessibleValue value;
};

// The interface for screen readers: a slider with its value, or a drawing.
class CanvasAccess final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit CanvasAccess(CanvasWidget* widget) : QAccessibleWidget(widget), canvas(widget) {}

  QAccessible::Role role() const override {
    return canvas->isSlider ? QAccessible::Slider : QAccessible::Canvas;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface && canvas->isSlider)
      return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QVariant currentValue() const override { return canvas->value.value; }
  void setCurrentValue(const QVariant&) override {}
  QVariant maximumValue() const override { return canvas->value.max; }
  QVariant minimumValue() const override { return canvas->value.min; }
  QVariant minimumStepSize() const override { return canvas->value.step; }

 private:
  CanvasWidget* const canvas;
};

QAccessibleInterface* MakeAccess(const QString&, QObject* object) {
  auto* canvas = dynamic_cast<CanvasWidget*>(object);
  return canvas ? new CanvasAccess(canvas) : nullptr;
}

class CanvasWindow final : public NativeCanvas {
 public:
  CanvasWindow(const CreateInfo& info, CanvasWidget* its) : NativeCanvas(info, its), canvas(its) {
    canvas->Attach(this);
    canvas->setMouseTracking(true);
    canvas->setFocusPolicy(info.style & WS_TABSTOP ? Qt::TabFocus : Qt::NoFocus);
  }
  ~CanvasWindow() override { canvas->Attach(nullptr); }

  void SetText(const std::string& newText) override {
    NativeCanvas::SetText(newText);
    SetAccessibleName(newText);
    SendMessage(this, WM_SETTEXT, 0, 0);
  }

  Rect ClientArea() const override {
    const QRect inside = canvas->contentsRect();
    return {inside.left(), inside.top(), inside.width(), inside.height()};
  }

  bool WantsKey(int virtualKey) const override {
    auto* window = const_cast<CanvasWindow*>(this);
    return SendMessage(window, WM_GETDLGCODE, virtualKey, 0) & DLGC_WANTALLKEYS;
  }

  void PaintBitmap(const Bitmap& bitmap, const Rect& target) override {
    if (bitmap.IsEmpty()) return;
    const QPoint origin = canvas->contentsRect().topLeft();
    QPainter painter(canvas);
    painter.setClipRect(canvas->contentsRect());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QPoint at = origin + QPoint(target.left, target.top);
    const QImage image = ImageOf(bitmap);
    const bool isWhole =
        image.deviceIndependentSize().toSize() == QSize(target.width, target.height);
    if (isWhole)
      painter.drawImage(at, image);
    else
      painter.drawImage(QRect(at, QSize(target.width, target.height)), image);
  }

  double PixelRatio() const override { return canvas->devicePixelRatioF(); }

  void SetAccessibleValue(const AccessibleValue& value) override {
    canvas->isSlider = true;
    const bool changed = canvas->value.value != value.value;
    canvas->value = value;
    if (!changed || !QAccessible::isActive()) return;
    QAccessibleValueChangeEvent event(canvas, value.value);
    QAccessible::updateAccessibility(&event);
  }

 private:
  CanvasWidget* const canvas;
};

}  // namespace

PaintedFrame::PaintedFrame(QWidget* parent) : QFrame(parent) {}

void PaintedFrame::Report(unsigned message) {
  if (window) SendMessage(window, message, 0, 0);
}

void PaintedFrame::paintEvent(QPaintEvent* event) {
  Report(WM_PAINT);
  QFrame::paintEvent(event);
}

void PaintedFrame::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
      Report(WM_SYSCOLORCHANGE);
      break;
    case QEvent::EnabledChange:
      Report(WM_ENABLE);
      break;
    case QEvent::FontChange:
      Report(WM_SETFONT);
      break;
    default:
      break;
  }
}

NativeWindow* MakeCanvas(const CreateInfo& info) {
  QAccessible::installFactory(MakeAccess);
  return new CanvasWindow(info, new CanvasWidget(ParentWidget(info)));
}

}  // namespace mavro
