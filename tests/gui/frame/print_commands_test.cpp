#include <gtest/gtest.h>

#include <QProcess>

#include "IdeDriver.h"
#include "PageSetup.h"
#include "PrintPreviewDlg.h"

// The printing commands of the menu "File".

namespace zendry {
namespace {

using test::IdeDriver;

bool CanAct(int id) {
  return theMainForm->CanAct(theFileActs.Find(id));
}

TEST(PrintCommands, NeedAText) {
  IdeDriver ide;
  ide.Run({}, [&] {
    EXPECT_FALSE(CanAct(cPrintCommand));
    EXPECT_FALSE(CanAct(cPrintPreviewCommand));
    EXPECT_TRUE(CanAct(cPageSetupCommand));
    theMainForm->editTabs.OpenFile(ide.files.Write("a.cpp", "int a;\n"));
    EXPECT_TRUE(CanAct(cPrintCommand));
    EXPECT_TRUE(CanAct(cPrintPreviewCommand));
  });
}

TEST(PrintCommands, Preview_WritesAPdfWithTheFunctions) {
  IdeDriver ide;
  const std::string source =
      "struct S {\n  int get() { return 1; }\n};\nint main() { return 0; }\n";
  const std::string pdf = ide.files.Path("a.pdf");
  ide.Run({ide.files.Write("a.cpp", source)}, [&] {
    ide.dialogs.files.push_back({pdf});
    ide.OnDialog([&](mavro::Form& form) {
      auto& preview = static_cast<mavro::PrintPreviewDlg&>(form);
      test::Click(preview.save);
      test::Key(form, Qt::Key_Escape);
    });
    theFileActs.OnCommand(cPrintPreviewCommand);
  });
  QProcess process;
  process.start("pdftohtml", {"-xml", "-i", "-q", "-stdout", QString::fromStdString(pdf)});
  ASSERT_TRUE(process.waitForFinished());
  const std::string read = process.readAllStandardOutput().toStdString();
  EXPECT_NE(read.find(">S::get<"), std::string::npos) << read;
  EXPECT_NE(read.find(">main<"), std::string::npos) << read;
}

TEST(PrintCommands, PageSetup_IsKept) {
  IdeDriver ide;
  ide.Run({}, [&] {
    ide.OnDialog([&](mavro::Form& form) {
      for (int field = 0; field < 6; ++field) test::Key(form, Qt::Key_Tab);
      test::Key(form, Qt::Key_Space);
      test::Key(form, Qt::Key_Return);
    });
    theFileActs.OnCommand(cPageSetupCommand);
    EXPECT_TRUE(mavro::thePageSetup.isLandscape);
  });
  EXPECT_NE(ide.Ini().find("print-landscape=1"), std::string::npos) << ide.Ini();
  mavro::thePageSetup = {};
  ide.Run({}, [] { EXPECT_TRUE(mavro::thePageSetup.isLandscape); });
  mavro::thePageSetup = {};
}

}  // namespace
}  // namespace zendry
