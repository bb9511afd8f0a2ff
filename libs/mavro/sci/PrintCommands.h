#pragma once

#include <string>
#include <vector>

#include "SciPrinter.h"

namespace mavro {

// What to print, with the page setup of the program.
struct PrintJob {
  SciEditor* editor = nullptr;   // its text must not change meanwhile
  std::string title;             // of the document; the file's name
  std::string path;              // in the footer; empty for a text that is in no file
  std::vector<PrintMark> marks;  // of the table of contents, in the order of lines
};

// Asks for a printer and prints there.
Printer::Outcome PrintEditor(const PrintJob& job);
// Asks for a file and writes the pages into it, as PDF with a table of contents.
Printer::Outcome ExportPdf(const PrintJob& job);
// The same without a question.
Printer::Outcome WritePdf(const PrintJob& job, const std::string& path);
// Shows the pages as they would be printed.
void PreviewEditor(const PrintJob& job);

// Makes the printer ready for a job.
void TakeJob(SciPrinter& printer, const PrintJob& job);

}  // namespace mavro
