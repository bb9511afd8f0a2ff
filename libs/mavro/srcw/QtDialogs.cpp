#include "QtDialogs.h"

#include <QApplication>
#include <QCloseEvent>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMessageBox>

#include "Form.h"
#include "QtPalette.h"
#include "QtText.h"
#include "SysImpl.h"
#include "SystemDialogs.h"

namespace mavro {

namespace {

QWidget* DialogParent() {
  if (!activeForm || !IsWindow(activeForm->impl->hwnd)) return nullptr;
  return activeForm->impl->hwnd->widget;
}

// A message box that can insist on one of its buttons: a user who closes it by Escape or by the
// window manager has not said Yes or No.
class MessageBox : public QMessageBox {
 public:
  using QMessageBox::QMessageBox;
  bool needsAnswer = false;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (needsAnswer && event->matches(QKeySequence::Cancel)) return event->accept();
    QMessageBox::keyPressEvent(event);
  }
  void closeEvent(QCloseEvent* event) override {
    if (needsAnswer) return event->ignore();
    QMessageBox::closeEvent(event);
  }
};

Answer ShowMessage(const std::string& text, const std::string& title, int flags) {
  MessageBox box(DialogParent());
  box.setWindowTitle(ToScreen(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToScreen(text));
  const int buttons = flags & 0xF;
  if (flags & cErrorIcon)
    box.setIcon(QMessageBox::Critical);
  else
    box.setIcon(buttons == cOkOnly ? QMessageBox::Information : QMessageBox::Question);
  if (buttons == cOkOnly) {
    box.setStandardButtons(QMessageBox::Ok);
  } else {
    QMessageBox::StandardButtons standard = QMessageBox::Yes | QMessageBox::No;
    if (buttons == cYesNoCancel) standard |= QMessageBox::Cancel;
    box.setStandardButtons(standard);
    box.setDefaultButton(flags & cDefaultNo ? QMessageBox::No : QMessageBox::Yes);
    box.needsAnswer = buttons == cYesNo;
    box.setWindowFlag(Qt::WindowCloseButtonHint, !box.needsAnswer);
  }
  switch (box.exec()) {
    case QMessageBox::Yes:
      return Answer::cYes;
    case QMessageBox::No:
      return Answer::cNo;
    case QMessageBox::Cancel:
      return Answer::cCancel;
    default:
      return Answer::cOk;
  }
}

// A filter's name without the patterns that it may end with: the toolkit writes them itself.
QString NameAlone(const QString& name) {
  const qsizetype open = name.lastIndexOf(" (*");
  return open > 0 && name.endsWith(')') ? name.left(open) : name;
}

// Converts "C files|*.c;*.h|All|*.*" to the toolkit's form. Here "*.*" means every file, with or
// without a dot.
QStringList ToolkitFilters(const std::string& filter) {
  const QStringList parts = ToScreen(filter).split('|', Qt::SkipEmptyParts);
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString patterns = parts[i + 1];
    patterns.replace("*.*", "*").replace(';', ' ');
    filters += NameAlone(parts[i]) + " (" + patterns + ")";
  }
  return filters;
}

std::vector<std::string> ChooseFiles(const FileQuestion& question) {
  QFileDialog dialog(DialogParent(), ToScreen(question.title));
  const bool save = question.mode == FileQuestion::cSave;
  dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(save                ? QFileDialog::AnyFile
                     : question.multiple ? QFileDialog::ExistingFiles
                                         : QFileDialog::ExistingFile);
  dialog.setNameFilters(ToolkitFilters(question.filter));
  if (!question.defaultExtension.empty())
    dialog.setDefaultSuffix(ToScreen(question.defaultExtension));
  if (!question.folder.empty()) dialog.setDirectory(ToScreen(question.folder));
  if (!question.name.empty()) dialog.selectFile(ToScreen(question.name));
  if (dialog.exec() != QDialog::Accepted) return {};
  std::vector<std::string> paths;
  for (const QString& path : dialog.selectedFiles())
    paths.push_back(FromScreen(QFileInfo(path).absoluteFilePath()));
  return paths;
}

std::string ChooseFolder(const std::string& title, const std::string& start) {
  return FromScreen(
      QFileDialog::getExistingDirectory(DialogParent(), ToScreen(title), ToScreen(start)));
}

void ToolkitBeep() {
  QApplication::beep();
}

bool ChooseColor(const std::string& title, Color& color) {
  const QColor start = ToScreenColor(color, QApplication::palette());
  const QColor chosen = QColorDialog::getColor(start, DialogParent(), ToScreen(title));
  if (!chosen.isValid()) return false;
  color = Color(static_cast<int32_t>(chosen.rgb() & 0xFFFFFF));
  return true;
}

}  // namespace

void InstallQtDialogs() {
  Dialogs() = {ShowMessage, ChooseFiles, ChooseFolder, ToolkitBeep, ChooseColor};
}

}  // namespace mavro
