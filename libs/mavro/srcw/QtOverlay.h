#pragma once

#include <QImage>
#include <QPoint>

#include "Bitmap.h"

class QWidget;

namespace mavro {

// The pixels of a bitmap as an image of the toolkit, at their ratio. Valid as long as the bitmap.
QImage ImageOf(const Bitmap& bitmap);

// Shows pixels over what a widget paints, at a place of the widget, until it next paints again.
// Pixels where nothing was drawn leave the widget as it is.
void ShowOverlay(QWidget* widget, const Bitmap& pixels, QPoint at);

}  // namespace mavro
