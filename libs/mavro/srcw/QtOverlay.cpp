#include "QtOverlay.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <vector>

namespace mavro {

namespace {

struct Layer {
  Bitmap pixels;
  QPoint at;
};

bool HasPixels(const Bitmap& bitmap) {
  const uint32_t* first = bitmap.Row(0);
  const auto count = static_cast<size_t>(bitmap.Width()) * static_cast<size_t>(bitmap.Height());
  return std::any_of(first, first + count, [](uint32_t pixel) { return pixel != 0; });
}

// Lets a widget paint, then paints the layers above it once. Owned by the widget.
class Overlay final : public QObject {
 public:
  explicit Overlay(QWidget* its) : QObject(its), widget(its) {
    setObjectName("mavroOverlay");
    its->installEventFilter(this);
  }

  void Add(Layer layer) {
    layers.push_back(std::move(layer));
    widget->update();
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Paint || layers.empty() || inside) return false;
    inside = true;
    QCoreApplication::sendEvent(watched, event);
    inside = false;
    QPainter painter(widget);
    for (const Layer& layer : layers) painter.drawImage(layer.at, ImageOf(layer.pixels));
    layers.clear();
    return true;
  }

 private:
  QWidget* const widget;
  std::vector<Layer> layers;
  bool inside = false;
};

}  // namespace

void ShowOverlay(QWidget* widget, const Bitmap& pixels, QPoint at) {
  if (!HasPixels(pixels)) return;
  auto* overlay = static_cast<Overlay*>(
      widget->findChild<QObject*>("mavroOverlay", Qt::FindDirectChildrenOnly));
  if (!overlay) overlay = new Overlay(widget);
  overlay->Add({pixels, at});
}

}  // namespace mavro
