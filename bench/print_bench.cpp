// The time from an editor's text to a PDF file, and to the first page of a preview. Limit of the
// latter: 200 ms. And the memory that the file takes while it is made.
//
//   print_bench SOURCE PDF

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <string>

#include "Application.h"
#include "Entry.h"
#include "Form.h"
#include "PageSetup.h"
#include "PrintCommands.h"
#include "PrintPreviewDlg.h"
#include "SciEditor.h"
#include "code/CppLanguage.h"

namespace {

constexpr double cFirstPageLimit = 200;

class BenchForm : public mavro::Form {
 public:
  BenchForm(std::string itsSource, std::string itsPdf)
      : source(std::move(itsSource)), pdf(std::move(itsPdf)) {
    SetSize(900, 700);
    editor.dock = mavro::Dock::cFill;
    editor.options->monospaced = true;
    editor.language = &zendry::cCppLanguage;
    Add(&editor);
    onShow.Add_H(this, &BenchForm::OnShown);
  }

  int status = 1;

 private:
  void OnShown(mavro::NotifyArgs&) {
    if (!editor.load(source).Ok()) return Close();
    const mavro::PrintJob job = {&editor, "source", source, {}};
    const long memory = MostMemory();
    mavro::TheSciPrinter().patience = std::chrono::hours(1);
    const double begun = Now();
    const bool isDone = mavro::WritePdf(job, pdf) == mavro::Printer::Outcome::cPrinted;
    const double took = Now() - begun;
    const long most = MostMemory();
    const double start = Now();
    {
      mavro::PrintPreviewDlg preview(job);
      mavro::Bitmap page(900, 1200);
      preview.DrawPage(page);
    }
    const double first = Now() - start;
    std::printf("first page of the preview: %.1f ms, limit %.0f\nPDF: %.1f ms\n", first,
                cFirstPageLimit, took);
    std::printf("memory: %ld KB with the text, %ld KB more for the PDF\n", memory, most - memory);
    status = isDone && first <= cFirstPageLimit ? 0 : 1;
    Close();
  }
  static double Now() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
  }

  static long MostMemory() {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
  }

  const std::string source, pdf;
  mavro::SciEditor editor;
};

}  // namespace

int mavro::Application::Main(ArgumentList& arguments) {
  if (arguments.size() != 2) return 2;
  BenchForm form(arguments[0], arguments[1]);
  form.Run(false);
  return form.status;
}

int main(int argc, char** argv) {
  return mavro::RunApplication(argc, argv);
}
