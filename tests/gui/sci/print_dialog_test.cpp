#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include "PrintTest.h"
#include "QtPaper.h"
#include "ScopedVariable.h"

// The system's dialog of printers, with real keys and clicks, where there is no printer system; and
// what the toolkit's printers do.

namespace mavro {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr int cPatience = 60000;

// The next window of a class of the toolkit that waits for input.
QWidget* WaitForModal(const char* className) {
  const auto found = [className] {
    const QWidget* top = QApplication::activeModalWidget();
    return top && top->inherits(className) && top->isVisible();
  };
  return QTest::qWaitFor(found, cPatience) ? QApplication::activeModalWidget() : nullptr;
}

class PrintDialogTest : public PrintTest {
 protected:
  // Opens the dialog and calls `script` with it.
  Outcome PrintWith(const std::function<void(QWidget&)>& script) {
    QTimer::singleShot(0, [script] {
      QWidget* dialog = WaitForModal("QPrintDialog");
      ASSERT_TRUE(dialog);
      script(*dialog);
    });
    return PrintEditor(job);
  }
  // Types over a field.
  static void Type(QWidget& field, const std::string& text) {
    QTest::mouseClick(&field, Qt::LeftButton);
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&field, QString::fromStdString(text));
  }
  static void TypeFile(QWidget& dialog, const std::string& path) {
    auto* field = dialog.findChild<QLineEdit*>("filename");
    ASSERT_TRUE(field);
    Type(*field, path);
  }
  // Shows the choice of pages, which is folded away at first.
  static void Unfold(QWidget& dialog) {
    for (auto* button : dialog.findChildren<QPushButton*>())
      if (button->text().contains("Options")) QTest::mouseClick(button, Qt::LeftButton);
  }
  static void Choose(QWidget& dialog, const char* name) {
    auto* button = dialog.findChild<QRadioButton*>(name);
    ASSERT_TRUE(button);
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_TRUE(button->isChecked());
  }

  static QWidget& SpinBox(QWidget& dialog, const char* name) {
    auto* box = dialog.findChild<QSpinBox*>(name);
    EXPECT_TRUE(box && box->isEnabled());
    return *box;
  }

  // No server of printers answers.
  test::ScopedVariable noServer{"CUPS_SERVER", "/nonexistent/socket"};
};

TEST_F(PrintDialogTest, WithoutAPrinter_AFileCanBePrinted) {
  With(Lines(200), [&](EditorForm&) {
    job.marks = {{0, "first"}};
    const Outcome outcome = PrintWith([&](QWidget& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Print a.cpp");
      TypeFile(dialog, Path());
      QTest::keyClick(&dialog, Qt::Key_Return);
    });
    EXPECT_EQ(outcome, Outcome::cPrinted);
    EXPECT_EQ(PageCount(), 3);
    EXPECT_THAT(Text(1), HasSubstr("1 int line1;"));
    EXPECT_EQ(dialogs.texts, Texts());
  });
}

TEST_F(PrintDialogTest, Escape_PrintsNothing) {
  With(cSmall, [&](EditorForm&) {
    const Outcome outcome =
        PrintWith([&](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(outcome, Outcome::cCancelled);
    EXPECT_FALSE(folder.Exists("out.pdf"));
    EXPECT_EQ(dialogs.texts, Texts());
  });
}

// A printer is offered ranges with gaps too, a file is not.
TEST_F(PrintDialogTest, Pages_AreThosePages) {
  With(Lines(500), [&](EditorForm&) {
    const Outcome outcome = PrintWith([&](QWidget& dialog) {
      Unfold(dialog);
      Choose(dialog, "printRange");
      Type(SpinBox(dialog, "from"), "2");
      Type(SpinBox(dialog, "to"), "3");
      TypeFile(dialog, Path());
      QTest::keyClick(&dialog, Qt::Key_Return);
    });
    EXPECT_EQ(outcome, Outcome::cPrinted);
    EXPECT_EQ(PageCount(), 2);
    EXPECT_THAT(Text(1), HasSubstr("page: 2"));
    EXPECT_THAT(Text(2), HasSubstr("page: 3"));
    EXPECT_FALSE(Picture("ranges", 2).isNull());
  });
}

TEST_F(PrintDialogTest, Selection_IsThatText) {
  With("int one;\nint two;\nint three;\n", [&](EditorForm& form) {
    form.editor.Select(9, 17);
    const Outcome outcome = PrintWith([&](QWidget& dialog) {
      Unfold(dialog);
      Choose(dialog, "printSelection");
      TypeFile(dialog, Path());
      QTest::keyClick(&dialog, Qt::Key_Return);
    });
    EXPECT_EQ(outcome, Outcome::cPrinted);
    EXPECT_THAT(Text(), HasSubstr("2 int two;"));
    EXPECT_THAT(Text(), Not(HasSubstr("int one;")));
    EXPECT_THAT(Text(), Not(HasSubstr("int three;")));
    EXPECT_FALSE(Picture("selection").isNull());
  });
}

// The dialog asks before it replaces a file; "No" leads back to it.
TEST_F(PrintDialogTest, FileThatIsThere_IsAskedAbout) {
  folder.Write("out.pdf", "old");
  With(cSmall, [&](EditorForm&) {
    const Outcome outcome = PrintWith([&](QWidget& dialog) {
      TypeFile(dialog, Path());
      QTimer::singleShot(0, [] {
        QWidget* question = WaitForModal("QMessageBox");
        ASSERT_TRUE(question);
        QTest::keyClick(question, Qt::Key_Escape);
      });
      QTest::keyClick(&dialog, Qt::Key_Return);
      EXPECT_TRUE(dialog.isVisible());
      QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(outcome, Outcome::cCancelled);
    EXPECT_EQ(folder.Read("out.pdf"), "old");
  });
}

TEST_F(PrintDialogTest, DefaultPrinter_WithoutAPrinterSystem_IsRefused) {
  With(cSmall, [&](EditorForm&) {
    TakeJob(TheSciPrinter(), job);
    EXPECT_EQ(TheSciPrinter().run(false), Outcome::cFailed);
    EXPECT_EQ(dialogs.texts, Texts{"Information: Can not start printer."});
  });
}

// A printer of the toolkit that prints into a file.
std::unique_ptr<PrintDevice> FilePrinter(const std::string& path) {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  printer->setOutputFileName(QString::fromStdString(path));
  return MakePrinter(std::move(printer), thePageSetup);
}

TEST_F(PrintDialogTest, Printer_PrintsAWholeJob) {
  With(Lines(200), [&](EditorForm&) {
    SciPrinter& printer = TheSciPrinter();
    TakeJob(printer, job);
    EXPECT_EQ(printer.PrintOn(FilePrinter(Path())), Outcome::cPrinted);
    EXPECT_FALSE(QApplication::overrideCursor()) << "the program is not busy any more";
    EXPECT_EQ(PageCount(), 3);
    EXPECT_THAT(Text(1), HasSubstr("1 int line1;"));
    EXPECT_THAT(Text(3), HasSubstr("200 int line200;"));
    EXPECT_FALSE(Picture("toolkit").isNull());
  });
}

// Else the pages that were ready when the user cancelled would come out of the printer.
TEST_F(PrintDialogTest, Printer_PrintsNothingOfAJobThatIsCancelled) {
  With(Lines(200), [&](EditorForm&) {
    SciPrinter& printer = TheSciPrinter();
    TakeJob(printer, job);
    {
      const std::unique_ptr<PrintDevice> device = FilePrinter(Path());
      ASSERT_TRUE(printer.Begin(*device));
      EXPECT_TRUE(printer.NextPage());
      printer.Cancel();
    }
    EXPECT_FALSE(folder.Exists("out.pdf"));
  });
}

TEST_F(PrintDialogTest, Printer_ThatFails_IsSaid) {
  With(cSmall, [&](EditorForm&) {
    SciPrinter& printer = TheSciPrinter();
    TakeJob(printer, job);
    EXPECT_EQ(printer.PrintOn(FilePrinter(folder.Path("none/out.pdf"))), Outcome::cFailed);
    ASSERT_EQ(dialogs.texts.size(), 1u);
    EXPECT_THAT(dialogs.texts[0], HasSubstr("reports an error"));
  });
}

}  // namespace
}  // namespace mavro
