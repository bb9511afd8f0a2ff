#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "FileFaults.h"
#include "NextDialog.h"
#include "PrintProgressDlg.h"
#include "PrintTest.h"
#include "Privileges.h"
#include "SmallDisk.h"

// Jobs that can't be done, that are called off, and large ones.

namespace mavro {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char cEnd[] = "%%EOF\n";
constexpr int cPatience = 60000;  // for a slow machine

class PrintFaultsTest : public PrintTest {
 protected:
  ~PrintFaultsTest() override { TheSciPrinter().patience = saved; }

  const std::chrono::milliseconds saved = TheSciPrinter().patience;
};

// Lines of a program, as many as there is room for.
std::string Bytes(size_t count) {
  std::string text;
  text.reserve(count + 100);
  for (int i = 1; text.size() < count; ++i)
    text += "  int variable" + std::to_string(i) + " = function(" + std::to_string(i) + ");\n";
  return text;
}

TEST_F(PrintFaultsTest, FileThatCannotBeWritten_IsSaid) {
  With(cSmall, [&](EditorForm&) {
    EXPECT_EQ(WritePdf(job, folder.Path("none/out.pdf")), Outcome::cFailed);
    EXPECT_THAT(dialogs.texts, ElementsAre(HasSubstr("none/out.pdf: No such file or directory")));
  });
}

TEST_F(PrintFaultsTest, FolderOrFileWithoutRights_IsSaid_AndAnOlderFileStays) {
  With(cSmall, [&](EditorForm&) {
    folder.Write("old.pdf", "old");
    std::filesystem::permissions(folder.Path("old.pdf"), std::filesystem::perms(0444));
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0555));
    {
      const test::WithoutRights user;
      EXPECT_EQ(WritePdf(job, folder.Path("old.pdf")), Outcome::cFailed);
      EXPECT_EQ(WritePdf(job, Path()), Outcome::cFailed);
    }
    EXPECT_THAT(dialogs.texts, ElementsAre(HasSubstr("old.pdf: Permission denied"),
                                           HasSubstr("out.pdf: Permission denied")));
    EXPECT_EQ(folder.Read("old.pdf"), "old");
    EXPECT_FALSE(folder.Exists("out.pdf"));
  });
}

// Whatever fails while the file is written: there is the older file, or none, or a whole one, and
// nothing else.
TEST_F(PrintFaultsTest, EveryCallOfTheSystemFailing_LeavesNoHalfFile) {
  With(cSmall, [&](EditorForm&) {
    for (const bool isThere : {false, true}) {
      bool hit = true;
      for (int call = 1; hit; ++call) {
        std::filesystem::remove(Path());
        if (isThere) folder.Write("out.pdf", "old");
        dialogs.texts.clear();
        test::FileFaults faults(call, ENOSPC);
        const Outcome outcome = WritePdf(job, Path());
        hit = faults.hit;
        const std::string content = folder.Exists("out.pdf") ? folder.Read("out.pdf") : "";
        const bool isWhole = content.ends_with(cEnd);
        EXPECT_TRUE(isWhole || content == (isThere ? "old" : "")) << call;
        if (outcome == Outcome::cPrinted)
          EXPECT_TRUE(isWhole) << call;
        else
          EXPECT_THAT(dialogs.texts, ElementsAre(HasSubstr("No space left on device"))) << call;
        ASSERT_LT(call, 200);
      }
    }
    EXPECT_THAT(folder.Names(), ElementsAre("out.pdf"));
  });
}

TEST_F(PrintFaultsTest, FullDisk_IsSaid_AndNothingIsLeft) {
  TheSciPrinter().patience = std::chrono::hours(1);
  With(Bytes(100000), [&](EditorForm&) {
    const int answer = test::RunOnSmallDisk(folder.Path(), "16k", [&] {
      if (WritePdf(job, Path()) != Outcome::cFailed) return 1;
      if (!std::filesystem::is_empty(folder.Path())) return 2;
      const bool isSaid = dialogs.texts.size() == 1 &&
                          dialogs.texts[0].find("No space left on device") != std::string::npos;
      return isSaid ? 0 : 3;
    });
    if (answer == test::cCannotMount) GTEST_SKIP() << "nothing can be mounted here";
    EXPECT_EQ(answer, 0);
  });
}

// ZENDRY_LARGE_PRINTS=1 tries 50 MB, and a line of 10 MB.
bool IsFullSize() {
  return std::getenv("ZENDRY_LARGE_PRINTS");
}

TEST_F(PrintFaultsTest, LargeText_ShowsItsProgress_AndNothingIsLeftAfterCancel) {
  const std::string path = folder.Write("big.cpp", Bytes(IsFullSize() ? 50 << 20 : 10 << 20));
  folder.Write("out.pdf", "old");
  TheSciPrinter().patience = std::chrono::milliseconds(0);
  With("", [&](EditorForm& form) {
    ASSERT_TRUE(form.editor.load(path).Ok());
    std::string words;
    test::OnNextDialog(form, [&](Form& dialog) {
      auto& progress = static_cast<PrintProgressDlg&>(dialog);
      EXPECT_TRUE(QTest::qWaitFor([&] { return progress.bar.value >= 1; }, cPatience));
      test::Shot(progress, "print-progress");
      words = progress.label.text;
      test::Key(progress, Qt::Key_Escape);
    });
    EXPECT_EQ(WritePdf(job, Path()), Outcome::cCancelled);
    EXPECT_THAT(words, testing::MatchesRegex("Page [0-9]+ of a.cpp"));
    EXPECT_THAT(dialogs.texts, IsEmpty());
    EXPECT_EQ(folder.Read("out.pdf"), "old");
    EXPECT_THAT(folder.Names(), ElementsAre("big.cpp", "out.pdf"));
    // The next job is a new one.
    TheSciPrinter().patience = saved;
    form.Fill(cSmall);
    EXPECT_EQ(WritePdf(job, Path()), Outcome::cPrinted);
    EXPECT_EQ(PageCount(), 1);
  });
}

TEST_F(PrintFaultsTest, Progress_OfAWholeJob_EndsByItself) {
  TheSciPrinter().patience = std::chrono::milliseconds(0);
  With(Lines(1000), [&](EditorForm&) {
    EXPECT_EQ(WritePdf(job, Path()), Outcome::cPrinted);
    EXPECT_GT(PageCount(), 10);
  });
}

// A line that the editor has been told to show. The pages go on inside the line.
TEST_F(PrintFaultsTest, LongLineThatIsShown_IsPrintedPageByPage) {
  const size_t length = IsFullSize() ? 10 << 20 : 1 << 20;
  const std::string path = folder.Write("long.cpp", std::string(length, 'x') + "\nlast\n");
  With("", [&](EditorForm& form) {
    ASSERT_TRUE(form.editor.load(path).Ok());
    form.editor.Select(0, 0);
    dialogs.answers = {Answer::cYes};
    ASSERT_TRUE(form.editor.ShowLongLine());
    SciPrinter& printer = TheSciPrinter();
    TakeJob(printer, job);
    FakePaper paper(800, 400, log);
    ASSERT_TRUE(printer.Begin(paper));
    for (int page = 0; page < 5; ++page) ASSERT_TRUE(printer.NextPage());
    EXPECT_GT(printer.position, 0);
    EXPECT_LT(printer.position, 10000);
    printer.Cancel();
    EXPECT_EQ(log.ends, "start a.cpp;abort;");
  });
}

TEST_F(PrintFaultsTest, FontThatDoesNotExist_IsReplacedByOneThatDoes) {
  With(cSmall, [&](EditorForm& form) {
    form.editor.options->monoFace = "No Such Face 4711";
    form.editor.applyOptions();
    EXPECT_EQ(WritePdf(job, Path()), Outcome::cPrinted);
    EXPECT_THAT(Text(), HasSubstr("2 int main() {"));
    EXPECT_FALSE(Picture("no-such-font").isNull());
  });
}

TEST_F(PrintFaultsTest, WithoutADevice_TheJobIsRefused) {
  With(cSmall, [&](EditorForm&) {
    const PrintPlatform platform = Printing();
    Printing().defaultPrinter = [](const PageSetup&) { return std::unique_ptr<PrintDevice>(); };
    TakeJob(TheSciPrinter(), job);
    EXPECT_EQ(TheSciPrinter().run(false), Outcome::cFailed);
    EXPECT_THAT(dialogs.texts, ElementsAre("Information: Can not start printer."));
    Printing() = platform;
  });
}

}  // namespace
}  // namespace mavro
