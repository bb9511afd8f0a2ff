#include <QApplication>
#include <QGlyphRun>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "FileText.h"
#include "PageSetup.h"
#include "PdfFile.h"
#include "PreviewDevice.h"
#include "Printer.h"
#include "QtPrintType.h"
#include "QtText.h"

// Devices of the toolkit to print on: printers, PDF files and the pictures of pages.

namespace mavro {

namespace {

constexpr int cDpi = 1200;
constexpr int cInch = 2540;          // hundredths of a millimetre
constexpr int cFastCompression = 1;  // most of the effect, for a fraction of the time
constexpr int cMostPages = 999999;

int ToDots(int length, int dpi) {
  return static_cast<int>(qint64{length} * dpi / cInch);
}

QColor ToColour(int colour) {
  return QColor(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}

// What all devices share: the sheet and the fonts.
template <class Device>
class TypeDevice : public Device {
 public:
  TypeDevice(const PageSetup& setup, int itsDpi) : type(itsDpi) {
    const PaperSize sheet = SheetOf(setup);
    metrics.dpiX = metrics.dpiY = itsDpi;
    metrics.width = metrics.physicalWidth = ToDots(sheet.width, itsDpi);
    metrics.height = metrics.physicalHeight = ToDots(sheet.height, itsDpi);
  }
  PrintMetrics Metrics() const override { return metrics; }
  int AddFont(const PrintFont& font) override { return type.Add(font); }
  PrintHeights HeightsOf(int font) override { return type.HeightsOf(font); }
  double WidthOf(int font, std::string_view text) override { return type.WidthOf(font, text); }

 protected:
  PrintMetrics metrics;
  QtPrintType type;
};

// A device that the toolkit's painter draws on.
template <class Device>
class PaintedDevice : public TypeDevice<Device> {
 public:
  using TypeDevice<Device>::TypeDevice;

  void TextOut(double x, double baseline, int font, int ink, std::string_view text) override {
    if (!painter.isActive()) return;
    painter.setPen(ToColour(ink));
    for (const QtPrintType::Run& run : this->type.Shape(font, text)) {
      QGlyphRun glyphs;
      glyphs.setRawFont(run.font);
      glyphs.setGlyphIndexes(run.glyphs);
      glyphs.setPositions(run.places);
      painter.drawGlyphRun(QPointF(x, baseline), glyphs);
    }
  }
  void Fill(const PrintRect& area, int colour) override {
    if (!painter.isActive()) return;
    painter.fillRect(area.left, area.top, area.right - area.left, area.bottom - area.top,
                     ToColour(colour));
  }
  void AddOutline(const std::string&, int) override {}

 protected:
  QPainter painter;
};

class PrinterDevice final : public PaintedDevice<PrintDevice> {
 public:
  PrinterDevice(std::unique_ptr<QPrinter> itsPrinter, const PageSetup& setup)
      : PaintedDevice(setup, itsPrinter->resolution()), printer(std::move(itsPrinter)) {
    printer->setFullPage(true);
    const QRect sheet = printer->pageLayout().fullRectPixels(printer->resolution());
    const QMarginsF least = printer->pageLayout().minimumMargins();
    const double dots = printer->resolution() / 72.0;  // the margins are in points
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
    return printer->isValid() && painter.begin(printer.get());
  }
  void StartPage() override {
    if (std::exchange(hasPage, true)) printer->newPage();
  }
  void EndPage() override {}
  std::string EndDoc() override {
    painter.end();
    if (printer->printerState() != QPrinter::Error) return {};
    return FromScreen(printer->printerName()) + ": The printer reports an error.";
  }
  void Abort() override {
    printer->abort();
    painter.end();
  }

 private:
  const std::unique_ptr<QPrinter> printer;
  bool hasPage = false;
};

class SheetDevice final : public PaintedDevice<PreviewDevice> {
 public:
  explicit SheetDevice(const PageSetup& setup) : PaintedDevice(setup, cDpi) {}

  void SetTarget(const Bitmap& newTarget) override { target = newTarget; }
  bool StartDoc(const std::string&) override { return true; }
  void StartPage() override {
    if (target.IsEmpty()) return;
    picture = QImage(reinterpret_cast<uchar*>(target.Row(0)), target.Width(), target.Height(),
                     QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    painter.begin(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(double(target.Width()) / metrics.physicalWidth,
                  double(target.Height()) / metrics.physicalHeight);
  }
  void EndPage() override {
    if (painter.isActive()) painter.end();
  }
  std::string EndDoc() override { return {}; }
  void Abort() override {}

 private:
  Bitmap target;
  QImage picture;  // shares the pixels of the target
};

std::string Deflate(std::string_view bytes) {
  constexpr int cLengthBytes = 4;  // before the stream
  const QByteArray packed = qCompress(reinterpret_cast<const uchar*>(bytes.data()),
                                      static_cast<qsizetype>(bytes.size()), cFastCompression);
  return packed.toStdString().substr(cLengthBytes);
}

// A PDF file. It is written as a whole when the job ends, so that a job that is cancelled or fails
// leaves the file as it was.
class PdfDevice final : public TypeDevice<PrintDevice> {
 public:
  PdfDevice(std::string itsPath, const PageSetup& setup)
      : TypeDevice(setup, cDpi), path(std::move(itsPath)) {}

  bool StartDoc(const std::string& newTitle) override {
    title = newTitle;
    return true;
  }
  void StartPage() override { pdf.BeginPage(metrics.physicalWidth, metrics.physicalHeight, cDpi); }
  void EndPage() override { pdf.EndPage(); }
  std::string EndDoc() override { return SaveFileText(path, pdf.Finish(title)).error; }
  void Abort() override {}

  void TextOut(double x, double baseline, int font, int ink, std::string_view text) override {
    for (const QtPrintType::Run& run : type.Shape(font, text)) {
      const bool isByLetter = run.letters.size() == static_cast<size_t>(run.glyphs.size());
      glyphs.clear();
      for (qsizetype i = 0; i < run.glyphs.size(); ++i) {
        std::u32string letters;
        if (isByLetter)
          letters = run.letters[static_cast<size_t>(i)];
        else if (i == 0)
          letters = run.letters;
        glyphs.push_back(
            {static_cast<uint16_t>(run.glyphs[i]), x + run.places[i].x(), std::move(letters)});
      }
      if (const int file = FontOf(font, run); file >= 0)
        pdf.Glyphs(file, type.SizeOf(font), ink, baseline, glyphs);
    }
  }
  void Fill(const PrintRect& area, int colour) override {
    pdf.Fill(area.left, area.top, area.right, area.bottom, colour);
  }
  void AddOutline(const std::string& entry, int y) override { pdf.AddOutline(entry, y); }

 private:
  // The number of the file that has a run's glyphs; -1 if it can't be a part of the document, as a
  // font of pictures: its letters are left out.
  int FontOf(int font, const QtPrintType::Run& run) {
    if (run.isMain)
      if (const auto found = mainFonts.find(font); found != mainFonts.end()) return found->second;
    const std::string name = NameOf(run.font);
    if (!run.isMain && cannotEmbed.contains(name)) return -1;
    auto known = files.find(name);
    if (known == files.end()) {
      if (!QtPrintType::CanEmbed(run.font)) {
        cannotEmbed.insert(name);
        return -1;
      }
      const PrintFont& asked = type.FontOf(font);
      const QRawFont raw = run.font;
      PdfFont added{name, [raw](const char* tag) { return raw.fontTable(tag).toStdString(); },
                    asked.isItalic, false};
      known = files.emplace(name, pdf.AddFont(std::move(added))).first;
    }
    if (run.isMain) mainFonts[font] = known->second;
    return known->second;
  }
  static std::string NameOf(const QRawFont& font) {
    std::string name;
    for (const char c : (font.familyName() + "-" + font.styleName()).toStdString())
      if (std::isalnum(static_cast<unsigned char>(c)) || c == '-') name += c;
    return name;
  }

  const std::string path;
  std::string title;
  PdfFile pdf{Deflate};
  std::map<std::string, int> files;
  std::set<std::string> cannotEmbed;
  std::map<int, int> mainFonts;
  std::vector<PdfGlyph> glyphs;
};

QPageLayout LayoutOf(const PageSetup& setup) {
  const PaperSize sheet = SheetOf(setup);
  const double width = std::min(sheet.width, sheet.height) / 100.0;
  const double height = std::max(sheet.width, sheet.height) / 100.0;
  return QPageLayout(
      QPageSize(QSizeF(width, height), QPageSize::Millimeter, QString(), QPageSize::FuzzyMatch),
      setup.isLandscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
}

// The paper may have been changed in the dialog of the printer.
PageSetup SetupOf(const QPrinter& printer, PageSetup setup) {
  const QSizeF size = printer.pageLayout().pageSize().size(QPageSize::Millimeter);
  for (const PaperSize& paper : cPapers) {
    constexpr double cSameLength = 2;
    if (std::abs(paper.width / 100.0 - size.width()) < cSameLength &&
        std::abs(paper.height / 100.0 - size.height()) < cSameLength)
      setup.paper = paper.name;
  }
  setup.isLandscape = printer.pageLayout().orientation() == QPageLayout::Landscape;
  return setup;
}

std::unique_ptr<PrintDevice> ChoosePrinter(PrintQuestion& question, const PageSetup& setup) {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  printer->setPageLayout(LayoutOf(setup));
  QPrintDialog dialog(printer.get(), QApplication::activeWindow());
  dialog.setWindowTitle("Print " + ToScreen(question.title));
  dialog.setOption(QAbstractPrintDialog::PrintToFile);
  dialog.setOption(QAbstractPrintDialog::PrintPageRange);
  dialog.setOption(QAbstractPrintDialog::PrintSelection, question.canSelect);
  dialog.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
  dialog.setMinMax(1, cMostPages);
  if (dialog.exec() != QDialog::Accepted) return nullptr;
  if (printer->printRange() == QPrinter::Selection) question.what = PrintQuestion::cSelection;
  if (printer->printRange() == QPrinter::PageRange) {
    question.what = PrintQuestion::cPages;
    question.fromPage = printer->fromPage();
    question.toPage = printer->toPage();
  }
  const PageSetup chosen = SetupOf(*printer, setup);
  if (printer->outputFormat() == QPrinter::PdfFormat)
    return std::make_unique<PdfDevice>(FromScreen(printer->outputFileName()), chosen);
  return std::make_unique<PrinterDevice>(std::move(printer), chosen);
}

std::unique_ptr<PrintDevice> DefaultPrinter(const PageSetup& setup) {
  const QPrinterInfo info = QPrinterInfo::defaultPrinter();
  if (info.isNull()) return nullptr;
  auto printer = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
  printer->setPageLayout(LayoutOf(setup));
  return std::make_unique<PrinterDevice>(std::move(printer), setup);
}

std::unique_ptr<PrintDevice> MakePdf(const std::string& path, const PageSetup& setup) {
  return std::make_unique<PdfDevice>(path, setup);
}

std::unique_ptr<PreviewDevice> MakePreview(const PageSetup& setup) {
  return std::make_unique<SheetDevice>(setup);
}

}  // namespace

void InstallQtPrinting() {
  if (!Printing().preview) Printing() = {ChoosePrinter, DefaultPrinter, MakePdf, MakePreview};
}

}  // namespace mavro
