#include "Printer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "PageSetup.h"
#include "PreviewDevice.h"
#include "SystemDialogs.h"

namespace mavro {

namespace {

constexpr char cLineFace[] = "Arial";
constexpr int cTextIndent = 5;  // of header and footer, in dots
constexpr int cMetricInch = 2540;
constexpr int cInch = 1000;
constexpr int cRuleColour = 0;
constexpr int cRulesInInch = 200;  // a rule is a two hundredth of an inch thick

// As the system's MulDiv: rounded to the nearest whole number.
int MulDiv(int number, int factor, int divisor) {
  return static_cast<int>(std::lround(double(number) * factor / divisor));
}

}  // namespace

PrintPlatform& Printing() {
  static PrintPlatform platform = {};
  return platform;
}

Printer::~Printer() = default;

void Printer::onPage(PageInfo&) {
  hasMorePages = false;
}

Printer::Outcome Printer::run(bool showDialog) {
  std::unique_ptr<PrintDevice> device;
  if (showDialog) {
    PrintQuestion question;
    question.title = title;
    question.canSelect = selectionStart != selectionEnd;
    if (!Printing().choosePrinter) return PrintOn(nullptr);
    device = Printing().choosePrinter(question, thePageSetup);
    if (!device) return Outcome::cCancelled;
    selectionOnly = question.what == PrintQuestion::cSelection;
    fromPage = question.what == PrintQuestion::cPages ? std::max(1, question.fromPage) : 0;
    toPage = question.what == PrintQuestion::cPages ? std::max(fromPage, question.toPage) : 0;
    onlyPages = toPage > 0 ? question.onlyPages : std::vector<PageRange>();
  } else if (Printing().defaultPrinter) {
    device = Printing().defaultPrinter(thePageSetup);
  }
  return PrintOn(std::move(device));
}

Printer::Outcome Printer::PrintOn(std::unique_ptr<PrintDevice> device) {
  if (!device || !Begin(*device)) {
    Information("Can not start printer.");
    return Outcome::cFailed;
  }
  if (!PrintPages()) {
    Cancel();
    return Outcome::cCancelled;
  }
  const std::string error = Finish();
  if (error.empty()) return Outcome::cPrinted;
  Information(error);
  return Outcome::cFailed;
}

bool Printer::PrintPages() {
  while (NextPage()) {
  }
  return true;
}

bool Printer::Begin(PrintDevice& device) {
  dc = &device;
  pageNumber = 1;
  printedPages = 0;
  TakeMetrics();
  onBegin();
  if (!device.StartDoc(title)) {
    onEnd();
    dc = nullptr;
    return false;
  }
  hasMorePages = true;
  return true;
}

// A margin is never smaller than what the device can't print on.
void Printer::TakeMetrics() {
  const PrintMetrics m = dc->Metrics();
  dpiX = m.dpiX;
  dpiY = m.dpiY;
  pageWidth = m.physicalWidth;
  pageHeight = m.physicalHeight;
  pageRect = {0, 0, pageWidth, pageHeight};
  printRect = {m.offsetX, m.offsetY, m.offsetX + m.width, m.offsetY + m.height};
  if (left || top || right || bottom) {
    printRect.left = std::max(printRect.left, MarginOf(left, dpiX));
    printRect.top = std::max(printRect.top, MarginOf(top, dpiY));
    printRect.right = std::min(printRect.right, pageWidth - MarginOf(right, dpiX));
    printRect.bottom = std::min(printRect.bottom, pageHeight - MarginOf(bottom, dpiY));
  }
  headerFont = AddLineFont(headerSize, headerStyle);
  footerFont = AddLineFont(footerSize, footerStyle);
  headerHeight = dc->HeightsOf(headerFont).Line();
  footerHeight = dc->HeightsOf(footerFont).Line();
  if (showHeader) printRect.top += headerHeight + headerHeight / 2;
  if (showFooter) printRect.bottom -= footerHeight + footerHeight / 2;
}

int Printer::MarginOf(int margin, int dpi) const {
  return MulDiv(margin, dpi, isMetric ? cMetricInch : cInch);
}

int Printer::AddLineFont(int size, int style) const {
  return dc->AddFont({cLineFace, size, (style & 1) != 0, (style & 2) != 0});
}

bool Printer::IsWanted(int page) const {
  const auto isIn = [page](const PageRange& range) {
    return page >= range.from && page <= range.to;
  };
  if (toPage > 0 && !isIn({fromPage, toPage})) return false;
  return onlyPages.empty() || std::any_of(onlyPages.begin(), onlyPages.end(), isIn);
}

bool Printer::NextPage() {
  if (!hasMorePages) return false;
  printThisPage = IsWanted(pageNumber);
  headerText = title + "  -  page: " + std::to_string(pageNumber);
  if (printThisPage) dc->StartPage();
  if (printThisPage && showHeader) DrawHeader();
  hasMorePages = false;
  PageInfo page{printRect, pageRect, pageNumber, printThisPage};
  onPage(page);
  if (printThisPage && showFooter) DrawFooter();
  if (printThisPage) dc->EndPage();
  printedPages += printThisPage;
  ++pageNumber;
  if (toPage > 0 && pageNumber > toPage) hasMorePages = false;
  return hasMorePages;
}

void Printer::DrawHeader() {
  const int h = headerHeight;
  const int below = printRect.top - h / 2;
  DrawLine({printRect.left, below - h, printRect.right, below}, headerFont, headerColor, headerBack,
           headerText);
  const int rule = printRect.top - h / 4;
  dc->Fill({printRect.left, rule, printRect.right, rule + std::max(1, dpiY / cRulesInInch)},
           cRuleColour);
}

void Printer::DrawFooter() {
  const int h = footerHeight;
  const int above = printRect.bottom + h / 2;
  DrawLine({printRect.left, above, printRect.right, above + h}, footerFont, footerColor, footerBack,
           footerText);
  const int rule = printRect.bottom + h / 4;
  dc->Fill({printRect.left, rule, printRect.right, rule + std::max(1, dpiY / cRulesInInch)},
           cRuleColour);
}

// A text too long for the line loses its beginning: the end has the page's number, or the file's
// name.
void Printer::DrawLine(const PrintRect& area, int font, int colour, int back,
                       const std::string& text) {
  if (back >= 0) dc->Fill(area, back);
  const double room = area.right - area.left - cTextIndent;
  std::string shown = text;
  for (size_t cut = 0; dc->WidthOf(font, shown) > room && cut < text.size();) {
    const bool isFar = dc->WidthOf(font, shown) > 2 * room;
    cut += isFar ? (text.size() - cut) / 2 : 1;
    while (cut < text.size() && (text[cut] & 0xC0) == 0x80) ++cut;
    shown = "\u2026" + text.substr(cut);
  }
  const PrintHeights heights = dc->HeightsOf(font);
  dc->TextOut(area.left + cTextIndent, area.top + heights.ascent, font, colour, shown);
}

std::string Printer::Finish() {
  onEnd();
  PrintDevice* const device = std::exchange(dc, nullptr);
  if (printedPages > 0) return device->EndDoc();
  device->Abort();
  return "Nothing was printed: there are " + std::to_string(pageNumber - 1) + " pages.";
}

void Printer::Cancel() {
  onEnd();
  std::exchange(dc, nullptr)->Abort();
}

}  // namespace mavro
