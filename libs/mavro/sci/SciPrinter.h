#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "PrintLayout.h"
#include "Printer.h"
#include "SciEditor.h"

namespace mavro {

struct PageSetup;

// A line that the table of contents of a document leads to.
struct PrintMark {
  int line = 0;  // from 0
  std::string title;
};

// Prints the text of an editor in the colours of light desktops, whatever the desktop's are. The
// editor's own view is not touched, and its text must not change during a job.
class SciPrinter : public Printer {
 public:
  SciPrinter();
  ~SciPrinter() override;

  // Takes an editor, its selection, and the look of pages. `newMarks` are in the order of lines.
  void SetEditor(SciEditor& newEditor, const PageSetup& setup,
                 std::vector<PrintMark> newMarks = {});

  void onBegin() override;
  void onEnd() override;
  void onPage(PageInfo& page) override;

  // Group: any page. The place of the next page; and the page that the job goes on with.
  PrintLayout::Place NextPlace() const { return next; }
  void GoOn(PrintLayout::Place place, int number);
  // The printed share of the text, of 100.
  int Progress() const;

  int position = 0;       // of the next character to print
  int lengthPrinted = 0;  // the end of what is printed
  int startPosition = 0;
  SciEditor* editor = nullptr;              // not owned
  std::chrono::milliseconds patience{400};  // a job that takes longer shows its progress

 protected:
  // Shows the progress of a job that takes long, with a button that cancels it.
  bool PrintPages() override;

 private:
  class Text;
  void MakeStyles(const PageSetup& setup);

  std::unique_ptr<Text> text;
  std::unique_ptr<PrintLayout> layout;
  PrintStyles styles;
  PrintLayout::Place next;
  std::vector<PrintMark> marks;
  bool isAsFolded = false;
};

// The one printer of the program, made at the first use.
SciPrinter& TheSciPrinter();

}  // namespace mavro
