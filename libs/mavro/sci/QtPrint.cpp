#include <QApplication>
#include <QImage>
#include <QPageRanges>
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

#include "FileProduct.h"
#include "PageSetup.h"
#include "PdfFile.h"
#include "PreviewDevice.h"
#include "Printer.h"
#include "QtPaper.h"
#include "QtText.h"

// Devices of the toolkit to print on: printers, PDF files and the pictures of pages.

namespace mavro {

namespace {

constexpr int cDpi = 1200;
constexpr int cFastCompression = 1;  // most of the effect, for a fraction of the time
constexpr int cMostPages = 999999;

class SheetDevice final : public QtPaper<PreviewDevice> {
 public:
  explicit SheetDevice(const PageSetup& setup) : QtPaper(setup, cDpi) {}

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

  void TextOut(double x, double baseline, int font, int ink, std::string_view text) override {
    if (painter.isActive()) DrawPrint(painter, type, {x, baseline}, font, ink, text);
  }
  void Fill(const PrintRect& area, int colour) override {
    if (painter.isActive()) FillPrint(painter, area, colour);
  }
  void AddOutline(const std::string&, int) override {}

 private:
  Bitmap target;
  QImage picture;  // shares the pixels of the target
  QPainter painter;
};

std::string Deflate(std::string_view bytes) {
  constexpr int cLengthBytes = 4;  // before the stream
  const QByteArray packed = qCompress(reinterpret_cast<const uchar*>(bytes.data()),
                                      static_cast<qsizetype>(bytes.size()), cFastCompression);
  return packed.toStdString().substr(cLengthBytes);
}

// A PDF file. It is written as a whole when the job ends, so that a job that is cancelled or fails
// leaves the file as it was.
class PdfDevice final : public QtPaper<PrintDevice> {
 public:
  PdfDevice(std::string itsPath, const PageSetup& setup)
      : QtPaper(setup, cDpi), path(std::move(itsPath)) {}

  bool StartDoc(const std::string& newTitle) override {
    title = newTitle;
    return true;
  }
  void StartPage() override { pdf.BeginPage(metrics.physicalWidth, metrics.physicalHeight, cDpi); }
  void EndPage() override { pdf.EndPage(); }
  std::string EndDoc() override { return SaveProduct(path, pdf.Finish(title)).error; }
  void Abort() override {}

  void TextOut(double x, double baseline, int font, int ink, std::string_view text) override {
    if (TextOutSimply(x, baseline, font, ink, text)) return;
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
      if (const int file = FontOf(font, run.font, run.isMain); file >= 0)
        pdf.Glyphs(file, type.SizeOf(font), ink, baseline, glyphs);
    }
  }
  void Fill(const PrintRect& area, int colour) override {
    pdf.Fill(area.left, area.top, area.right, area.bottom, colour);
  }
  void AddOutline(const std::string& entry, int y) override { pdf.AddOutline(entry, y); }

 private:
  // Nearly all of a source is such text. False for other text.
  bool TextOutSimply(double x, double baseline, int font, int ink, std::string_view text) {
    const std::vector<QtPrintType::Letter>& letters = type.SimpleLetters(font, text);
    if (letters.empty()) return false;
    glyphs.resize(letters.size());
    for (size_t i = 0; i < letters.size(); ++i) {
      glyphs[i].number = static_cast<uint16_t>(letters[i].glyph);
      glyphs[i].x = x;
      glyphs[i].text = letters[i].code;
      x += letters[i].width;
    }
    const int file = FontOf(font, type.RawFontOf(font), true);
    if (file >= 0) pdf.Glyphs(file, type.SizeOf(font), ink, baseline, glyphs);
    return true;
  }
  // The number of the file that has the glyphs of a run; -1 if it can't be a part of the document,
  // as a font of pictures: its letters are left out. The main font is the one that `font` is.
  int FontOf(int font, const QRawFont& raw, bool isMain) {
    if (isMain)
      if (const auto found = mainFonts.find(font); found != mainFonts.end()) return found->second;
    const std::string name = NameOf(raw);
    if (!isMain && cannotEmbed.contains(name)) return -1;
    auto known = files.find(name);
    if (known == files.end()) {
      if (!QtPrintType::CanEmbed(raw)) {
        cannotEmbed.insert(name);
        return -1;
      }
      const PrintFont& asked = type.FontOf(font);
      PdfFont added{name, [raw](const char* tag) { return raw.fontTable(tag).toStdString(); },
                    asked.isItalic, false};
      known = files.emplace(name, pdf.AddFont(std::move(added))).first;
    }
    if (isMain) mainFonts[font] = known->second;
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
    for (const auto [from, to] : printer->pageRanges().toRangeList())
      question.onlyPages.push_back({from, to});
  }
  const PageSetup chosen = SetupOf(*printer, setup);
  if (printer->outputFormat() == QPrinter::PdfFormat)
    return std::make_unique<PdfDevice>(FromScreen(printer->outputFileName()), chosen);
  return MakePrinter(std::move(printer), chosen);
}

std::unique_ptr<PrintDevice> DefaultPrinter(const PageSetup& setup) {
  const QPrinterInfo info = QPrinterInfo::defaultPrinter();
  if (info.isNull()) return nullptr;
  auto printer = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
  printer->setPageLayout(LayoutOf(setup));
  return MakePrinter(std::move(printer), setup);
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
