#include <QApplication>
#include <QByteArray>
#include <QDataStream>
#include <QGlyphRun>
#include <QIODevice>
#include <string>
#include <utility>
#include <vector>

#include "QtPaper.h"
#include "QtText.h"

// Printers of the toolkit, and its painter.

namespace mavro {

namespace {

constexpr int cInch = 2540;  // hundredths of a millimetre
constexpr int cPointsInInch = 72;
constexpr int cFastCompression = 1;

QColor ToColour(int colour) {
  return QColor(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}

// As long as it lives, the mouse says that the program is busy.
struct WaitCursor {
  WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~WaitCursor() { QApplication::restoreOverrideCursor(); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};

// A job of the toolkit can't be called off: what has been painted is printed when the painter ends.
// So the pages are kept, and painted when the job is whole.
class PrinterDevice final : public QtPaper<PrintDevice> {
 public:
  PrinterDevice(std::unique_ptr<QPrinter> itsPrinter, const PageSetup& setup)
      : QtPaper(setup, itsPrinter->resolution()), printer(std::move(itsPrinter)) {
    printer->setFullPage(true);
    const QRect sheet = printer->pageLayout().fullRectPixels(printer->resolution());
    const QMarginsF least = printer->pageLayout().minimumMargins();
    const double dots = double(printer->resolution()) / cPointsInInch;  // the margins are in points
    printer->setPageMargins(QMarginsF());
    metrics.physicalWidth = sheet.width();
    metrics.physicalHeight = sheet.height();
    metrics.offsetX = static_cast<int>(least.left() * dots);
    metrics.offsetY = static_cast<int>(least.top() * dots);
    metrics.width = sheet.width() - metrics.offsetX - static_cast<int>(least.right() * dots);
    metrics.height = sheet.height() - metrics.offsetY - static_cast<int>(least.bottom() * dots);
  }

  bool StartDoc(const std::string& title) override {
    printer->setDocName(ToScreen(title));
    return printer->isValid();
  }
  void StartPage() override { page.clear(); }
  void EndPage() override { pages.push_back(qCompress(page, cFastCompression)); }
  std::string EndDoc() override {
    const WaitCursor cursor;
    QPainter painter;
    if (!painter.begin(printer.get())) return Failure();
    bool isFirst = true;
    for (const QByteArray& kept : pages) {
      if (!std::exchange(isFirst, false) && !printer->newPage()) break;
      Paint(painter, qUncompress(kept));
    }
    const bool isPrinted = painter.end() && printer->printerState() != QPrinter::Error;
    return isPrinted ? std::string() : Failure();
  }
  void Abort() override { pages.clear(); }

  void TextOut(double x, double baseline, int font, int ink, std::string_view text) override {
    QDataStream to(&page, QIODevice::Append);
    to << cText << x << baseline << font << ink
       << QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
  }
  void Fill(const PrintRect& area, int colour) override {
    QDataStream to(&page, QIODevice::Append);
    to << cArea << area.left << area.top << area.right << area.bottom << colour;
  }
  void AddOutline(const std::string&, int) override {}

 private:
  static constexpr quint8 cText = 0, cArea = 1;

  std::string Failure() const {
    return FromScreen(printer->printerName()) + ": The printer reports an error.";
  }
  void Paint(QPainter& painter, const QByteArray& kept) {
    QDataStream from(kept);
    while (!from.atEnd()) {
      quint8 kind = cText;
      from >> kind;
      if (kind == cText) {
        double x = 0, baseline = 0;
        int font = 0, ink = 0;
        QByteArray text;
        from >> x >> baseline >> font >> ink >> text;
        DrawPrint(painter, type, {x, baseline}, font, ink,
                  {text.constData(), static_cast<size_t>(text.size())});
      } else {
        PrintRect area;
        int colour = 0;
        from >> area.left >> area.top >> area.right >> area.bottom >> colour;
        FillPrint(painter, area, colour);
      }
    }
  }

  const std::unique_ptr<QPrinter> printer;
  QByteArray page;                // the one that is being filled
  std::vector<QByteArray> pages;  // compressed
};

}  // namespace

int ToDots(int length, int dpi) {
  return static_cast<int>(qint64{length} * dpi / cInch);
}

void DrawPrint(QPainter& painter, QtPrintType& type, QPointF at, int font, int ink,
               std::string_view text) {
  painter.setPen(ToColour(ink));
  for (const QtPrintType::Run& run : type.Shape(font, text)) {
    QGlyphRun glyphs;
    glyphs.setRawFont(run.font);
    glyphs.setGlyphIndexes(run.glyphs);
    glyphs.setPositions(run.places);
    painter.drawGlyphRun(at, glyphs);
  }
}

void FillPrint(QPainter& painter, const PrintRect& area, int colour) {
  painter.fillRect(area.left, area.top, area.right - area.left, area.bottom - area.top,
                   ToColour(colour));
}

std::unique_ptr<PrintDevice> MakePrinter(std::unique_ptr<QPrinter> printer,
                                         const PageSetup& setup) {
  return std::make_unique<PrinterDevice>(std::move(printer), setup);
}

}  // namespace mavro
