#pragma once

#include <QAbstractScrollArea>
#include <QPaintEvent>

#include "GuiDriver.h"
#include "SciEditor.h"

namespace test {

// The widget that an editor's text is painted in.
inline QWidget& TextWidget(const mavro::SciEditor& editor) {
  return *qobject_cast<QAbstractScrollArea*>(WidgetOf(editor))->viewport();
}

// The part of a widget that is painted, once it is installed as the widget's event filter.
struct PaintWatch : QObject {
  QRegion painted;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) painted += static_cast<QPaintEvent*>(event)->region();
    return false;
  }
};

}  // namespace test
