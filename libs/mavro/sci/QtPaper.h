#pragma once

#include <QPainter>
#include <QPrinter>
#include <memory>
#include <string_view>

#include "PageSetup.h"
#include "PrintDevice.h"
#include "QtPrintType.h"

namespace mavro {

// The length of hundredths of a millimetre.
int ToDots(int length, int dpi);

// What the toolkit's devices share: the sheet and the fonts.
template <class Device>
class QtPaper : public Device {
 public:
  QtPaper(const PageSetup& setup, int dpi) : type(dpi) {
    const PaperSize sheet = SheetOf(setup);
    metrics.dpiX = metrics.dpiY = dpi;
    metrics.width = metrics.physicalWidth = ToDots(sheet.width, dpi);
    metrics.height = metrics.physicalHeight = ToDots(sheet.height, dpi);
  }
  PrintMetrics Metrics() const override { return metrics; }
  int AddFont(const PrintFont& font) override { return type.Add(font); }
  PrintHeights HeightsOf(int font) override { return type.HeightsOf(font); }
  double WidthOf(int font, std::string_view text) override { return type.WidthOf(font, text); }

 protected:
  PrintMetrics metrics;
  QtPrintType type;
};

// Group: drawing with the toolkit's painter.
void DrawPrint(QPainter& painter, QtPrintType& type, QPointF at, int font, int ink,
               std::string_view text);
void FillPrint(QPainter& painter, const PrintRect& area, int colour);

// A device that prints on a printer of the toolkit.
std::unique_ptr<PrintDevice> MakePrinter(std::unique_ptr<QPrinter> printer, const PageSetup& setup);

}  // namespace mavro
