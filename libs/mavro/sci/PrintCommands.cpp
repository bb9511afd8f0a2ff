#include "PrintCommands.h"

#include "PageSetup.h"
#include "PrintPreviewDlg.h"
#include "SystemDialogs.h"

namespace mavro {

void TakeJob(SciPrinter& printer, const PrintJob& job) {
  printer.SetEditor(*job.editor, Usable(thePageSetup), job.marks);
  printer.title = job.title;
  printer.footerText = job.path.empty() ? job.title : job.path;
}

Printer::Outcome PrintEditor(const PrintJob& job) {
  SciPrinter& printer = TheSciPrinter();
  TakeJob(printer, job);
  return printer.run(true);
}

Printer::Outcome WritePdf(const PrintJob& job, const std::string& path) {
  SciPrinter& printer = TheSciPrinter();
  TakeJob(printer, job);
  return printer.PrintOn(Printing().pdfFile(path, Usable(thePageSetup)));
}

Printer::Outcome ExportPdf(const PrintJob& job) {
  FileQuestion question;
  question.mode = FileQuestion::cSave;
  question.title = "Save as PDF";
  question.filter = "PDF Files|*.pdf";
  question.defaultExtension = "pdf";
  question.name = job.title + ".pdf";
  if (const size_t slash = job.path.rfind('/'); slash != std::string::npos)
    question.folder = job.path.substr(0, slash);
  const std::vector<std::string> chosen = Dialogs().chooseFiles(question);
  if (chosen.empty()) return Printer::Outcome::cCancelled;
  return WritePdf(job, chosen.front());
}

void PreviewEditor(const PrintJob& job) {
  PrintPreviewDlg(job).Run(true);
}

}  // namespace mavro
