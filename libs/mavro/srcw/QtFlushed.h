#pragma once

#include <QPoint>
#include <QPointer>
#include <QRegion>
#include <QWidget>
#include <vector>

namespace mavro {

// What has been painted and may still be read by the screen. Before it paints such a place again,
// the toolkit waits for an answer of the screen; once waited for, nothing of that window is open.
class FlushedPlaces {
 public:
  // A window, and a point of it that has been painted.
  struct Place {
    QPointer<QWidget> window;
    QPoint point;
  };

  void Note(QWidget& painted, const QRegion& region);
  // The places since the last call, at most one in a window. Windows that are gone or hidden are
  // left out, and those that beginning to paint would clear.
  std::vector<Place> Take();

 private:
  std::vector<Place> places;
};

// Called with each painting of a widget.
void NotePainted(QWidget& painted, const QRegion& region);
// Waits for the screen while there is nothing else to do, so that the next key's painting doesn't.
void AwaitScreen();

}  // namespace mavro
