#include "QtFlushed.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

#include "GuiDriver.h"

namespace mavro {
namespace {

struct TwoParts {
  QWidget window;
  QWidget upper{&window}, lower{&window};
  TwoParts() {
    upper.setGeometry(0, 0, 80, 20);
    lower.setGeometry(10, 40, 80, 20);
  }
};

TEST(FlushedPlaces, PaintedParts_AreOnePlaceOfTheirWindow) {
  TwoParts parts;
  parts.window.show();
  FlushedPlaces places;
  places.Note(parts.upper, QRect(1, 2, 5, 5));
  places.Note(parts.lower, QRect(3, 4, 5, 5));
  const auto taken = places.Take();
  ASSERT_EQ(taken.size(), 1U);
  EXPECT_EQ(taken[0].window, &parts.window);
  EXPECT_EQ(taken[0].point, QPoint(13, 44));
  EXPECT_TRUE(places.Take().empty());
}

TEST(FlushedPlaces, TwoWindows_ArePlacesOfTheirOwn) {
  QWidget first, second;
  first.show();
  second.show();
  FlushedPlaces places;
  places.Note(first, QRect(0, 0, 5, 5));
  places.Note(second, QRect(0, 0, 5, 5));
  EXPECT_EQ(places.Take().size(), 2U);
}

TEST(FlushedPlaces, NothingPainted_IsNoPlace) {
  QWidget window;
  window.show();
  FlushedPlaces places;
  places.Note(window, QRegion());
  EXPECT_TRUE(places.Take().empty());
}

TEST(FlushedPlaces, GoneHiddenAndTranslucentWindows_AreLeftOut) {
  auto gone = std::make_unique<QWidget>();
  QWidget hidden, clear;
  clear.setAttribute(Qt::WA_TranslucentBackground);
  FlushedPlaces places;
  for (QWidget* window : {gone.get(), &hidden, &clear}) {
    window->show();
    places.Note(*window, QRect(0, 0, 5, 5));
  }
  gone.reset();
  hidden.hide();
  EXPECT_TRUE(places.Take().empty());
}

}  // namespace
}  // namespace mavro
