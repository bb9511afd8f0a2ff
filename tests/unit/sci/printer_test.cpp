#include "Printer.h"

#include <gtest/gtest.h>

#include <memory>

#include "FakePaper.h"
#include "PageSetup.h"
#include "ScriptedDialogs.h"

namespace mavro {
namespace {

using test::FakePaper;

// Prints three pages, each with its number.
struct ThreePages : Printer {
  void onBegin() override { calls += "begin "; }
  void onEnd() override { calls += "end"; }
  void onPage(PageInfo& page) override {
    calls += std::to_string(page.number) + (page.isPrinted ? "p " : " ");
    if (page.isPrinted) dc->TextOut(page.print.left, page.print.top, 0, 0, "text");
    hasMorePages = page.number < pages;
  }
  std::string calls;
  int pages = 3;
};

struct PrinterTest : testing::Test {
  PrinterTest() { printer.title = "a.cpp"; }
  Printer::Outcome Print() { return printer.PrintOn(std::make_unique<FakePaper>(400, 300, log)); }
  using Pages = std::vector<std::string>;

  ThreePages printer;
  FakePaper::Log log;
  test::ScriptedDialogs dialogs;
};

TEST_F(PrinterTest, Job_WithoutARange_PrintsEachPageUnderItsHeader) {
  EXPECT_EQ(Print(), Printer::Outcome::cPrinted);
  EXPECT_EQ(printer.calls, "begin 1p 2p 3p end");
  EXPECT_EQ(log.pages, (Pages{"a.cpp  -  page: 1\ntext", "a.cpp  -  page: 2\ntext",
                              "a.cpp  -  page: 3\ntext"}));
  EXPECT_EQ(log.ends, "start a.cpp;end;");
}

TEST_F(PrinterTest, Range_LaysOutThePagesBeforeItAndStopsAfterIt) {
  printer.fromPage = 2;
  printer.toPage = 2;
  EXPECT_EQ(Print(), Printer::Outcome::cPrinted);
  EXPECT_EQ(printer.calls, "begin 1 2p end");
  EXPECT_EQ(log.pages, Pages{"a.cpp  -  page: 2\ntext"});
}

TEST_F(PrinterTest, Ranges_WithAGap_LeaveItOut) {
  printer.pages = 6;
  printer.fromPage = 1;
  printer.toPage = 5;
  printer.onlyPages = {{1, 2}, {5, 5}};
  EXPECT_EQ(Print(), Printer::Outcome::cPrinted);
  EXPECT_EQ(printer.calls, "begin 1p 2p 3 4 5p end");
  EXPECT_EQ(printer.printedPages, 3);
}

TEST_F(PrinterTest, Range_AfterTheLastPage_SaysHowManyThereAre) {
  printer.fromPage = printer.toPage = 4;
  EXPECT_EQ(Print(), Printer::Outcome::cFailed);
  EXPECT_EQ(log.ends, "start a.cpp;abort;");
  EXPECT_EQ(dialogs.texts, Pages{"Information: Nothing was printed: there are 3 pages."});
}

// The header's font is 20 dots high: its line ends half of that over the text, and the rule is a
// quarter over it.
TEST_F(PrinterTest, HeaderAndFooter_TakeTheirHeightAndAHalfFromThePage) {
  printer.showFooter = true;
  printer.footerText = "foot";
  printer.pages = 1;
  printer.headerBack = 0xFFFFFF;
  Print();
  EXPECT_EQ(printer.printRect, (PrintRect{0, 30, 400, 270}));
  EXPECT_EQ(log.places, (Pages{"5,15 a.cpp  -  page: 1", "0,30 text", "5,295 foot"}));
  EXPECT_EQ(log.fills,
            (std::vector<PrintRect>{{0, 0, 400, 20}, {0, 25, 400, 26}, {0, 275, 400, 276}}));
}

TEST_F(PrinterTest, Margins_AreMetricOrInches_AndNeverInsideWhatCannotBePrinted) {
  auto paper = std::make_unique<FakePaper>(400, 300, log);
  paper->metrics = {100, 100, 400, 300, 20, 10, 360, 280};
  printer.showHeader = false;
  printer.left = 254;  // 10 dots: less than the device can
  printer.right = 1270;
  printer.PrintOn(std::move(paper));
  EXPECT_EQ(printer.printRect, (PrintRect{20, 10, 350, 290}));
  printer.isMetric = false;
  printer.top = 500;  // thousandths of an inch
  Print();
  EXPECT_EQ(printer.printRect, (PrintRect{25, 50, 273, 300}));
}

TEST_F(PrinterTest, Margins_AllZero_AreThePrintableArea) {
  auto paper = std::make_unique<FakePaper>(400, 300, log);
  paper->metrics = {100, 100, 400, 300, 20, 10, 360, 280};
  printer.showHeader = false;
  printer.PrintOn(std::move(paper));
  EXPECT_EQ(printer.printRect, (PrintRect{20, 10, 380, 290}));
}

TEST_F(PrinterTest, Start_ThatFails_IsSaid) {
  auto paper = std::make_unique<FakePaper>(400, 300, log);
  paper->starts = false;
  EXPECT_EQ(printer.PrintOn(std::move(paper)), Printer::Outcome::cFailed);
  EXPECT_EQ(printer.PrintOn(nullptr), Printer::Outcome::cFailed);
  const std::string words = "Information: Can not start printer.";
  EXPECT_EQ(dialogs.texts, (Pages{words, words}));
  EXPECT_EQ(printer.calls, "begin end");
  EXPECT_EQ(printer.dc, nullptr);
}

TEST_F(PrinterTest, End_ThatFails_IsSaid) {
  auto paper = std::make_unique<FakePaper>(400, 300, log);
  paper->error = "a.pdf: No space left on device";
  EXPECT_EQ(printer.PrintOn(std::move(paper)), Printer::Outcome::cFailed);
  EXPECT_EQ(dialogs.texts, Pages{"Information: a.pdf: No space left on device"});
}

TEST_F(PrinterTest, Header_TooLongForItsLine_KeepsItsEnd) {
  printer.title = std::string(300, 'x') + "\xC3\xA9nd";
  printer.pages = 1;
  Print();
  const std::string header = log.pages[0].substr(0, log.pages[0].find('\n'));
  EXPECT_TRUE(header.starts_with("\u2026"));
  EXPECT_TRUE(header.ends_with("\xC3\xA9nd  -  page: 1")) << header;
  EXPECT_LE(FakePaper(1, 1, log).WidthOf(0, header), 395);
}

TEST(PageSetup, Usable_LeavesRoomBetweenTheMargins) {
  PageSetup setup;
  setup.paper = "nothing";
  setup.left = setup.right = 10000;
  setup.top = -5;
  setup.size = 100;
  const PageSetup usable = Usable(setup);
  EXPECT_EQ(usable.paper, "A4");
  EXPECT_EQ(usable.left, 9500);
  EXPECT_EQ(usable.right, 9500);
  EXPECT_EQ(usable.top, 0);
  EXPECT_EQ(usable.size, 72);
  EXPECT_EQ(Usable(PageSetup()), PageSetup());
}

TEST(PageSetup, Sheet_LiesAcrossInLandscape) {
  PageSetup setup;
  setup.paper = "Letter";
  setup.isLandscape = true;
  EXPECT_EQ(SheetOf(setup).width, 27940);
  EXPECT_EQ(SheetOf(setup).height, 21590);
}

}  // namespace
}  // namespace mavro
