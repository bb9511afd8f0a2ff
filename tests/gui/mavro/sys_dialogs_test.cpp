#include "SysDialogs.h"

#include <gtest/gtest.h>

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "Form.h"
#include "GuiDriver.h"
#include "ScriptedDialogs.h"

namespace mavro {
namespace {

TEST(FileDialog, New_OpensAllFiles) {
  const FileDialog dialog;
  EXPECT_EQ(dialog.mode, FileDialog::cOpen);
  EXPECT_EQ(dialog.filter, "All Files|*.*");
  EXPECT_FALSE(dialog.multiple);
}

TEST(FileDialogDeath, OtherModes_StopAtTheAssertion) {
  EXPECT_DEATH(FileDialog("x|*", 2), "SysDialogs.cpp.*mode == cOpen \\|\\| mode == cSave");
  EXPECT_DEATH(
      {
        FileDialog dialog;
        dialog.mode = -1;
        dialog.Run();
      },
      "mode == cOpen \\|\\| mode == cSave");
}

TEST(FileDialog, Run_AsksWhatWasSetAndKeepsTheAnswer) {
  test::ScriptedDialogs dialogs;
  dialogs.files = {{"/tmp/a.cpp", "/tmp/b.cpp"}};
  FileDialog dialog("C/C++ Files|*.cpp;*.h", FileDialog::cOpen);
  dialog.title = "Open it";
  dialog.folder = "/tmp";
  dialog.fileName = "x.cpp";
  dialog.multiple = true;
  EXPECT_TRUE(dialog.Run());
  EXPECT_EQ(dialog.fileName, "/tmp/a.cpp");
  EXPECT_EQ(dialog.files.size(), 2u);
  const FileQuestion& asked = dialogs.questions.at(0);
  EXPECT_EQ(asked.mode, FileQuestion::cOpen);
  EXPECT_EQ(asked.title, "Open it");
  EXPECT_EQ(asked.folder, "/tmp");
  EXPECT_EQ(asked.name, "x.cpp");
  EXPECT_EQ(asked.filter, "C/C++ Files|*.cpp;*.h");
  EXPECT_TRUE(asked.multiple);
}

TEST(FileDialog, Saving_AsksForOneNameWithItsExtension) {
  test::ScriptedDialogs dialogs;
  FileDialog dialog("Text|*.txt", FileDialog::cSave);
  dialog.multiple = true;
  dialog.defaultExtension = "txt";
  dialog.Run();
  EXPECT_EQ(dialogs.questions.at(0).mode, FileQuestion::cSave);
  EXPECT_EQ(dialogs.questions.at(0).defaultExtension, "txt");
  EXPECT_FALSE(dialogs.questions.at(0).multiple);
}

TEST(FileDialog, Cancelled_KeepsWhatWas) {
  test::ScriptedDialogs dialogs;
  FileDialog dialog;
  dialog.fileName = "kept";
  EXPECT_FALSE(dialog.Run());
  EXPECT_EQ(dialog.fileName, "kept");
  EXPECT_TRUE(dialog.files.empty());
}

TEST(DirectoryDialog, Run_KeepsTheChosenFolderOnly) {
  test::ScriptedDialogs dialogs;
  dialogs.folders = {"/folder"};
  DirectoryDialog dialog("Where?", "/tmp");
  EXPECT_TRUE(dialog.Run());
  EXPECT_EQ(dialog.folder, "/folder");
  EXPECT_FALSE(dialog.Run());
  EXPECT_EQ(dialog.folder, "/folder");
  EXPECT_EQ(dialogs.folderTitles, (std::vector<std::string>{"Where?", "Where?"}));
}

TEST(ColorDialog, Run_StartsFromThePlainColour) {
  test::ScriptedDialogs dialogs;
  dialogs.colors = {Color(Color::cOrange)};
  ColorDialog dialog(Color::cWindow);
  EXPECT_TRUE(dialog.Run());
  EXPECT_EQ(dialog.color, Color(Color::cOrange));
  EXPECT_FALSE(dialog.Run());
  EXPECT_EQ(dialog.color, Color(Color::cOrange));
  EXPECT_FALSE(dialogs.colorStarts.at(0).IsSystem());
}

// The toolkit's dialogs, seen once.

template <class Dialog>
bool CloseWhenUp(const std::function<void(Dialog&)>& look) {
  static bool seen;
  seen = false;
  auto* poll = new QTimer(qApp);
  QObject::connect(poll, &QTimer::timeout, [poll, look] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    if (!dialog || seen) return;
    seen = true;
    poll->deleteLater();
    look(*dialog);
  });
  poll->start(5);
  return true;
}

TEST(ColorDialog, Toolkit_AnswersTheColour) {
  Form form;
  form.SetBounds(0, 0, 300, 200);
  test::RunForm(form, false, [&] {
    CloseWhenUp<QColorDialog>([](QColorDialog& shown) {
      EXPECT_EQ(shown.currentColor(), QColor(Qt::red));
      shown.grab().save(QString(SHOTS_FOLDER) + "/dialog-color.png");
      shown.setCurrentColor(QColor(1, 2, 3));
      shown.accept();
    });
    ColorDialog dialog(Color::cRed);
    dialog.title = "Colour";
    EXPECT_TRUE(dialog.Run());
    EXPECT_EQ(dialog.color, Color(0x010203));
  });
}

TEST(ColorDialog, Toolkit_CancelledKeepsTheColour) {
  Form form;
  form.SetBounds(0, 0, 300, 200);
  test::RunForm(form, false, [&] {
    CloseWhenUp<QColorDialog>([](QColorDialog& shown) { shown.reject(); });
    ColorDialog dialog(Color::cRed);
    EXPECT_FALSE(dialog.Run());
    EXPECT_EQ(dialog.color, Color(Color::cRed));
  });
}

TEST(FileDialog, Toolkit_ShowsTheFilters) {
  Form form;
  form.SetBounds(0, 0, 300, 200);
  test::RunForm(form, false, [&] {
    CloseWhenUp<QFileDialog>([](QFileDialog& shown) {
      EXPECT_EQ(shown.nameFilters(), (QStringList{"C files (*.c *.h)", "All (*)"}));
      shown.grab().save(QString(SHOTS_FOLDER) + "/dialog-file.png");
      shown.reject();
    });
    FileDialog dialog("C files|*.c;*.h|All|*.*", FileDialog::cOpen);
    EXPECT_FALSE(dialog.Run());
  });
}

TEST(FileDialog, Toolkit_FilterNamedWithItsPatterns_SaysThemOnce) {
  Form form;
  form.SetBounds(0, 0, 300, 200);
  test::RunForm(form, false, [&] {
    CloseWhenUp<QFileDialog>([](QFileDialog& shown) {
      EXPECT_EQ(shown.nameFilters(), (QStringList{"Project Files (*.zpj)", "Old (1990) (*.o)",
                                                  "Odd (* (*.x)", "(*.y) (*.y)"}));
      shown.reject();
    });
    FileDialog dialog("Project Files (*.zpj)|*.zpj|Old (1990)|*.o|Odd (*|*.x|(*.y)|*.y",
                      FileDialog::cOpen);
    EXPECT_FALSE(dialog.Run());
  });
}

// Group: message boxes as they are shown.

// The answer of an open box to a key, or -1 when the key left it open.
int AnswerToKey(int flags, Qt::Key key) {
  bool stayed = false;
  QTimer::singleShot(0, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    QTest::keyClick(box, key);
    stayed = box->isVisible();
    if (stayed) box->close();
    stayed = stayed && box->isVisible();
    if (stayed) box->button(QMessageBox::No)->click();
  });
  const Answer answer = Dialogs().message("Sure?", "Confirmation", flags);
  return stayed ? -1 : static_cast<int>(answer);
}

TEST(MessageBox, YesAndNo_HaveNoAnswerByEscapeOrByClosing) {
  EXPECT_EQ(AnswerToKey(cYesNo, Qt::Key_Escape), -1);
  EXPECT_EQ(AnswerToKey(cYesNo | cDefaultNo, Qt::Key_Escape), -1);
}

TEST(MessageBox, WithCancel_EscapeIsCancel) {
  EXPECT_EQ(AnswerToKey(cYesNoCancel, Qt::Key_Escape), static_cast<int>(Answer::cCancel));
}

TEST(MessageBox, Ok_EscapeIsOk) {
  EXPECT_EQ(AnswerToKey(cOkOnly, Qt::Key_Escape), static_cast<int>(Answer::cOk));
}

TEST(MessageBox, Enter_IsYesOrWhatLosesNothing) {
  EXPECT_EQ(AnswerToKey(cYesNo, Qt::Key_Return), static_cast<int>(Answer::cYes));
  EXPECT_EQ(AnswerToKey(cYesNoCancel, Qt::Key_Return), static_cast<int>(Answer::cYes));
  EXPECT_EQ(AnswerToKey(cYesNo | cDefaultNo, Qt::Key_Return), static_cast<int>(Answer::cNo));
}

}  // namespace
}  // namespace mavro
