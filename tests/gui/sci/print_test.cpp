#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "PageSetupDlg.h"
#include "PrintPreviewDlg.h"
#include "PrintProgressDlg.h"
#include "PrintTest.h"

// What is on paper, as other readers of PDF see it.

namespace mavro {
namespace {

TEST_F(PrintTest, Pdf_HasHeaderNumbersAndText) {
  With(cSmall, [&](EditorForm&) {
    EXPECT_EQ(WritePdf(job, Path()), Outcome::cPrinted);
    const std::string text = Text();
    EXPECT_NE(text.find("a.cpp - page: 1"), std::string::npos) << text;
    EXPECT_NE(text.find("1 // one\n"), std::string::npos) << text;
    EXPECT_NE(text.find("2 int main() {\n"), std::string::npos) << text;
    EXPECT_NE(text.find("3 return 0; // two"), std::string::npos) << text;
    EXPECT_EQ(PageCount(), 1);
    EXPECT_EQ(dialogs.texts, Texts());
  });
}

TEST_F(PrintTest, EmptyText_IsOnePageWithItsHeader) {
  With("", [&](EditorForm&) {
    WritePdf(job, Path());
    EXPECT_EQ(PageCount(), 1);
    EXPECT_NE(Text().find("a.cpp - page: 1"), std::string::npos);
  });
}

TEST_F(PrintTest, Letters_OfOtherScripts_CanBeRead) {
  With("// \u00E9 \u03B1 \u0416 \u4E2D \u20AC\n", [&](EditorForm& form) {
    form.editor.codePage = SC_CP_UTF8;
    form.editor.applyOptions();
    WritePdf(job, Path());
    const std::string text = Text();
    for (const char* letter : {"\u00E9", "\u03B1", "\u0416", "\u20AC"})
      EXPECT_NE(text.find(letter), std::string::npos) << text;
  });
}

// On a dark desktop too, the paper is white and the letters are dark.
TEST_F(PrintTest, DarkDesktop_PrintsTheColoursOfALightOne) {
  const QPalette light = QApplication::palette();
  With(cSmall, [&](EditorForm&) {
    WritePdf(job, Path());
    const QImage before = Picture("light");
    QApplication::setPalette(test::DarkPalette());
    test::WaitFor([&] { return true; });
    WritePdf(job, Path());
    const QImage after = Picture("dark-theme");
    EXPECT_EQ(after.pixel(2, 2), qRgb(255, 255, 255));
    EXPECT_EQ(before, after);
    thePageSetup.hasColours = false;
    WritePdf(job, Path());
    const QImage black = Picture("no-colours");
    EXPECT_NE(black, after);
    for (int y = 0; y < black.height(); y += 3)
      for (int x = 0; x < black.width(); ++x) ASSERT_EQ(QColor(black.pixel(x, y)).saturation(), 0);
  });
  QApplication::setPalette(light);
}

TEST_F(PrintTest, ManyPages_GoOnWhereTheLastOneEnded) {
  With(Lines(1000), [&](EditorForm&) {
    WritePdf(job, Path());
    const int pages = PageCount();
    EXPECT_GT(pages, 10);
    std::string all;
    for (int page = 1; page <= pages; ++page) all += Text(page);
    for (int line = 1; line <= 1000; ++line)
      ASSERT_NE(all.find(" int line" + std::to_string(line) + ";\n"), std::string::npos) << line;
    EXPECT_FALSE(Picture("many", pages).isNull());
  });
}

TEST_F(PrintTest, Range_StartsAtTheRightLine) {
  With(Lines(25), [&](EditorForm&) {
    EXPECT_EQ(Print({PrintQuestion::cAll}), Outcome::cPrinted);
    const Texts all = std::exchange(log.pages, {});
    ASSERT_GE(all.size(), 4u);
    PrintQuestion pages{PrintQuestion::cPages};
    pages.fromPage = 2;
    pages.toPage = 3;
    EXPECT_EQ(Print(pages), Outcome::cPrinted);
    EXPECT_EQ(log.pages, Texts(all.begin() + 1, all.begin() + 3));
  });
}

TEST_F(PrintTest, Selection_OfEitherDirection_IsPrintedToTheLetter) {
  With("one two\nthree\nfour\n", [&](EditorForm& form) {
    PrintQuestion question{PrintQuestion::cSelection};
    form.editor.Select(4, 11);
    EXPECT_EQ(Print(question), Outcome::cPrinted);
    EXPECT_TRUE(couldSelect);
    form.editor.Select(11, 4);
    EXPECT_EQ(Print(question), Outcome::cPrinted);
    const std::string page = "a.cpp  -  page: 1\ntwo\nthr";
    EXPECT_EQ(log.pages, (Texts{page, page}));
    form.editor.Select(8, 14);
    log.pages.clear();
    Print(question);
    EXPECT_EQ(log.pages, Texts{"a.cpp  -  page: 1\nthree"});
    form.editor.Select(3, 3);
    Print({PrintQuestion::cAll});
    EXPECT_FALSE(couldSelect);
  });
}

TEST_F(PrintTest, FoldedParts_AreLeftOutOnlyIfAskedFor) {
  With("int f() {\n  return 1;\n}\nint x;\n", [&](EditorForm& form) {
    form.editor.options->foldMargin = true;
    form.editor.applyOptions();
    form.editor.Send(SCI_COLOURISE, 0, -1);
    form.editor.Send(SCI_TOGGLEFOLD, 0);
    Print({});
    thePageSetup.isAsFolded = true;
    Print({});
    EXPECT_EQ(log.pages, (Texts{"a.cpp  -  page: 1\nint f() {\n  return 1;\n}\nint x;",
                                "a.cpp  -  page: 1\nint f() { \u2026\nint x;"}));
  });
}

TEST_F(PrintTest, TableOfContents_LeadsToTheLines) {
  With(Lines(200), [&](EditorForm&) {
    job.marks = {{0, "first"}, {150, "later"}};
    WritePdf(job, Path());
    RunTool("pdftohtml", {"-xml", "-i", "-q", QString::fromStdString(Path()),
                          QString::fromStdString(folder.Path("out"))});
    const std::string read = folder.Read("out.xml");
    EXPECT_NE(read.find("<item page=\"1\">first</item>"), std::string::npos) << read;
    EXPECT_NE(read.find("<item page=\"3\">later</item>"), std::string::npos);
  });
}

TEST_F(PrintTest, PageOfThreeLines_HasThreeRows) {
  With("a\nb\nc\nd\n", [&](EditorForm&) {
    thePageSetup.hasHeader = false;
    static FakePaper::Log paperLog;
    paperLog = {};
    SciPrinter& printer = TheSciPrinter();
    TakeJob(printer, job);
    printer.left = printer.top = printer.right = printer.bottom = 0;
    printer.PrintOn(std::make_unique<FakePaper>(400, 60, paperLog));
    ASSERT_EQ(paperLog.pages.size(), 2u);
    TakeJob(printer, job);
    printer.left = printer.top = printer.right = printer.bottom = 0;
    printer.PrintOn(std::make_unique<FakePaper>(400, 10, paperLog));
    EXPECT_EQ(paperLog.pages.size(), 6u);
  });
}

// The editor shows a note in place of such a line, and so does the paper.
TEST_F(PrintTest, LineOfTenMegabytes_IsItsNote) {
  const std::string path = folder.Write("long.cpp", "int a;\n" + std::string(10 << 20, 'x') + "\n");
  With("", [&](EditorForm& form) {
    ASSERT_TRUE(form.editor.load(path).Ok());
    EXPECT_EQ(WritePdf(job, Path()), Outcome::cPrinted);
    EXPECT_EQ(PageCount(), 1);
    EXPECT_NE(Text().find("10"), std::string::npos);
    EXPECT_NE(Text().find("xxxx"), std::string::npos) << Text();
  });
}

TEST_F(PrintTest, PdfByTheDialog_HasTheFilesNameAndFolder) {
  With(cSmall, [&](EditorForm&) {
    EXPECT_EQ(ExportPdf(job), Outcome::cCancelled);
    ASSERT_EQ(dialogs.questions.size(), 1u);
    EXPECT_EQ(dialogs.questions[0].name, "a.cpp.pdf");
    EXPECT_EQ(dialogs.questions[0].folder, "/src");
    dialogs.files.push_back({Path()});
    EXPECT_EQ(ExportPdf(job), Outcome::cPrinted);
    EXPECT_EQ(PageCount(), 1);
  });
}

// A program of many functions.
std::string Functions(int count) {
  std::string text = "#include <string>\n\n";
  for (int i = 1; i <= count; ++i)
    text += "// The sum of the numbers up to " + std::to_string(i) + ".\nint Sum" +
            std::to_string(i) +
            "(int start) {\n\tint sum = 0;\n\tfor (int i = start; i <= " + std::to_string(i) +
            "; ++i)\n\t\tsum += i;\n\treturn sum;\n}\n\n";
  return text;
}

TEST_F(PrintTest, Preview_ShowsThePagesThatArePrinted) {
  With(Functions(40), [&](EditorForm&) {
    job.title = "sums.cpp";
    WritePdf(job, Path());
    PrintPreviewDlg preview(job);
    test::RunForm(preview, true, [&] {
      EXPECT_TRUE(test::WaitFor([&] { return preview.KnowsAll(); }));
      EXPECT_EQ(preview.KnownPages(), PageCount());
      test::Shot(preview, "print-preview-light");
      EXPECT_TRUE(preview.view.IsFocused());
      test::Key(preview, Qt::Key_PageDown);
      EXPECT_EQ(preview.ShownPage(), 2);
      EXPECT_EQ(preview.pageLabel.text, "Page 2 of " + std::to_string(preview.KnownPages()));
      test::Key(preview, Qt::Key_End);
      EXPECT_EQ(preview.ShownPage(), preview.KnownPages());
      EXPECT_FALSE(preview.next.enabled);
      test::Key(preview, Qt::Key_PageDown);
      EXPECT_EQ(preview.ShownPage(), preview.KnownPages());
      test::Key(preview, Qt::Key_Home);
      test::Click(preview.next);
      EXPECT_EQ(preview.ShownPage(), 2);
      dialogs.files.push_back({folder.Path("again.pdf")});
      test::Click(preview.save);
      EXPECT_TRUE(folder.Exists("again.pdf"));
      EXPECT_EQ(preview.ShownPage(), 2);
    });
  });
}

TEST_F(PrintTest, Preview_OfADarkDesktop_IsWhitePaper) {
  const QPalette light = QApplication::palette();
  QApplication::setPalette(test::DarkPalette());
  With(cSmall, [&](EditorForm&) {
    PrintPreviewDlg preview(job);
    test::RunForm(preview, true, [&] {
      test::WaitFor([&] { return preview.KnowsAll(); });
      const QImage shown = test::WidgetOf(preview.view)->grab().toImage();
      EXPECT_EQ(shown.pixel(shown.width() / 2, shown.height() - 40), qRgb(255, 255, 255));
      test::Shot(preview, "print-preview-dark");
    });
  });
  QApplication::setPalette(light);
}

// For people to look at.
TEST_F(PrintTest, PageSetup_AndProgress_OnADarkDesktop) {
  const QPalette light = QApplication::palette();
  QApplication::setPalette(test::DarkPalette());
  PageSetupDlg dialog(thePageSetup);
  test::RunForm(dialog, true, [&] { test::Shot(dialog, "print-setup-dark"); });
  bool isShown = false;
  PrintProgressDlg progress([&] { return !isShown; }, [] { return 40; },
                            [] { return std::string("Page 12 of MainForm.cpp"); });
  test::RunForm(progress, true, [&] {
    EXPECT_TRUE(test::WaitFor([&] { return progress.bar.value == 40; }));
    test::Shot(progress, "print-progress-dark");
    isShown = true;
    EXPECT_TRUE(test::WaitFor([&] { return progress.result == Form::cOk; }));
  });
  QApplication::setPalette(light);
}

TEST_F(PrintTest, PageSetup_KeepsWhatTheUserHasChosen) {
  thePageSetup.left = 1234;  // no whole millimetre
  PageSetupDlg dialog(thePageSetup);
  test::RunForm(dialog, true, [&] {
    test::Shot(dialog, "print-setup");
    for (int field = 0; field < 6; ++field) test::Key(dialog, Qt::Key_Tab);
    test::Key(dialog, Qt::Key_Space);  // Landscape
    for (int field = 0; field < 3; ++field) test::Key(dialog, Qt::Key_Tab);
    test::Key(dialog, Qt::Key_Space);  // Line numbers
    test::Key(dialog, Qt::Key_Return);
  });
  EXPECT_EQ(dialog.result, Form::cOk);
  EXPECT_TRUE(dialog.Chosen().isLandscape);
  EXPECT_FALSE(dialog.Chosen().hasNumbers);
  EXPECT_EQ(dialog.Chosen().left, 1234);
  PageSetupDlg cancelled(thePageSetup);
  test::RunForm(cancelled, true, [&] { test::Key(cancelled, Qt::Key_Escape); });
  EXPECT_EQ(cancelled.Chosen(), thePageSetup);
}

}  // namespace
}  // namespace mavro
