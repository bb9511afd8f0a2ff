#include "QtFlushed.h"

#include <QBackingStore>
#include <QGuiApplication>
#include <algorithm>
#include <utility>

namespace mavro {

namespace {

FlushedPlaces& ThePlaces() {
  static FlushedPlaces places;
  return places;
}

// Elsewhere a painting never waits, or beginning one means more than waiting.
bool SharesPixels() {
  static const bool isX11 = QGuiApplication::platformName() == QLatin1String("xcb");
  return isX11;
}

}  // namespace

void FlushedPlaces::Note(QWidget& painted, const QRegion& region) {
  if (region.isEmpty()) return;
  QWidget* window = painted.window();
  const QPoint point = painted.mapTo(window, region.begin()->topLeft());
  const auto isSame = [&](const Place& place) { return place.window == window; };
  const auto known = std::find_if(places.begin(), places.end(), isSame);
  if (known == places.end())
    places.push_back({window, point});
  else
    known->point = point;
}

std::vector<FlushedPlaces::Place> FlushedPlaces::Take() {
  std::vector<Place> taken = std::exchange(places, {});
  std::erase_if(taken, [](const Place& place) {
    return !place.window || !place.window->isVisible() ||
           place.window->testAttribute(Qt::WA_TranslucentBackground);
  });
  return taken;
}

void NotePainted(QWidget& painted, const QRegion& region) {
  if (SharesPixels()) ThePlaces().Note(painted, region);
}

void AwaitScreen() {
  for (const FlushedPlaces::Place& place : ThePlaces().Take()) {
    QBackingStore* store = place.window->backingStore();
    if (!store) continue;
    store->beginPaint(QRect(place.point, QSize(1, 1)));
    store->endPaint();
  }
}

}  // namespace mavro
