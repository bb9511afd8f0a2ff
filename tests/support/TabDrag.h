#pragma once

#include <QPointer>
#include <QProxyStyle>
#include <QTabBar>

#include "GuiDriver.h"
#include "TabCtrl.h"

namespace test {

// The row of tabs of a control.
inline QTabBar& RowOf(const mavro::TabCtrl& tabs) {
  return *WidgetOf(tabs)->findChild<QTabBar*>();
}

// A tab held by the mouse as long as this lives, unless it is let go before. Tabs that make room
// do so at once, not in their usual quarter of a second.
//
//   {
//     test::TabDrag drag(tabs, 0);
//     drag.MoveTo(2);
//   }
class TabDrag {
 public:
  TabDrag(const mavro::TabCtrl& tabs, int tab)
      : row(&RowOf(tabs)), window(row->window()->windowHandle()), at(PlaceOf(tab)) {
    row->setStyle(&still);
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, at);
  }
  ~TabDrag() {
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, at);
    if (row) row->setStyle(nullptr);
  }
  TabDrag(const TabDrag&) = delete;
  TabDrag& operator=(const TabDrag&) = delete;

  // To the present place of a tab, in steps as a hand does it.
  void MoveTo(int tab) { MoveTo(PlaceOf(tab)); }
  void MoveBy(int pixels) { MoveTo(at + QPoint(pixels, 0)); }

 private:
  class Still final : public QProxyStyle {
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* more) const override {
      if (hint == SH_Widget_Animation_Duration) return 0;
      return QProxyStyle::styleHint(hint, option, widget, more);
    }
  };

  QPoint PlaceOf(int tab) const { return row->mapTo(row->window(), row->tabRect(tab).center()); }
  void MoveTo(QPoint end) {
    constexpr int cSteps = 10;
    const QPoint start = at;
    for (int i = 1; i <= cSteps; ++i) {
      at = start + (end - start) * i / cSteps;
      QTest::mouseMove(window, at);
    }
  }

  Still still;
  QPointer<QTabBar> row;
  QWindow* const window;
  QPoint at;
};

}  // namespace test
