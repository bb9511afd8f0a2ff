#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Object.h"
#include "PrintDevice.h"

namespace mavro {

struct PageSetup;

// Pages from one to another, both included; the first page is 1.
struct PageRange {
  int from = 1, to = 1;
};

// What the user has chosen in the print dialog.
struct PrintQuestion {
  enum What { cAll, cPages, cSelection };
  What what = cAll;
  int fromPage = 0, toPage = 0;           // with cPages, from 1
  std::vector<PageRange> onlyPages = {};  // with cPages: those of them to print; empty for all
  bool canSelect = false;                 // there is a selection
  std::string title = {};                 // of the document
};

// The areas of the page that onPage fills.
struct PageInfo {
  PrintRect print;  // between the margins, header and footer
  PrintRect page;   // the sheet
  int number = 0;
  bool isPrinted = true;  // false: lay it out only
};

// Runs a print job, page by page, with an optional header and footer. A derived class puts the text
// on the pages.
class Printer : public object {
 public:
  Printer() = default;
  ~Printer() override;

  // The job begins and has ended; and the next page. onPage sets `hasMorePages`.
  virtual void onBegin() {}
  virtual void onEnd() {}
  virtual void onPage(PageInfo& page);

  enum class Outcome { cPrinted, cCancelled, cFailed };
  // Prints on the printer that the user chooses, or on the default one. Failures have been shown.
  Outcome run(bool showDialog);
  // Prints on a device, with the choices made before.
  Outcome PrintOn(std::unique_ptr<PrintDevice> device);

  // Group: the steps of a job, for those who show its progress or a page of it. NextPage is false
  // after the last page. Finish and Cancel end the job; a text says why it is incomplete.
  bool Begin(PrintDevice& device);
  bool NextPage();
  std::string Finish();
  void Cancel();

  bool showHeader = true;
  int headerColor = 0;
  int headerBack = -1;  // -1 for none
  int headerStyle = 0;  // bit 0 bold, bit 1 italic
  int headerSize = 9;   // points
  std::string headerText;
  bool showFooter = false;
  int footerColor = 0;
  int footerBack = -1;
  int footerStyle = 0;
  int footerSize = 9;
  std::string footerText;
  std::string title;
  bool selectionOnly = false;
  int selectionStart = 0, selectionEnd = 0;
  // Margins in hundredths of a millimetre, or in thousandths of an inch if isMetric is false. If
  // all are 0, the printable area is used.
  int left = 0, top = 0, right = 0, bottom = 0;
  bool isMetric = true;
  int pageWidth = 0, pageHeight = 0;  // of the sheet, in dots
  int dpiX = 0, dpiY = 0;
  PrintDevice* dc = nullptr;  // while a job runs; not owned
  int pageNumber = 1;
  int fromPage = 0, toPage = 0;      // toPage 0: all pages
  std::vector<PageRange> onlyPages;  // those of them to print; empty for all
  int printedPages = 0;
  bool hasMorePages = false;
  bool printThisPage = true;
  PrintRect printRect, pageRect;

 protected:
  // Prints the pages. A derived class may show how far it is; false if the user has cancelled.
  virtual bool PrintPages();

 private:
  bool IsWanted(int page) const;
  int MarginOf(int margin, int dpi) const;
  void TakeMetrics();
  int AddLineFont(int size, int style) const;
  void DrawLine(const PrintRect& area, int font, int colour, int back, const std::string& text);
  void DrawHeader();
  void DrawFooter();

  int headerFont = 0, footerFont = 0;
  int headerHeight = 0, footerHeight = 0;
};

// What printing needs of the platform; tests replace the entries. An entry answers null if the user
// has cancelled or there is no such device. All entries are null before the first printer of an
// editor is made.
class PreviewDevice;
struct PrintPlatform {
  // Asks for a printer and for the pages.
  std::unique_ptr<PrintDevice> (*choosePrinter)(PrintQuestion& question, const PageSetup& setup);
  std::unique_ptr<PrintDevice> (*defaultPrinter)(const PageSetup& setup);
  // A PDF file, which is written when the job ends.
  std::unique_ptr<PrintDevice> (*pdfFile)(const std::string& path, const PageSetup& setup);
  std::unique_ptr<PreviewDevice> (*preview)(const PageSetup& setup);
};
PrintPlatform& Printing();
// Enters the toolkit's devices, unless there are others.
void InstallQtPrinting();

}  // namespace mavro
