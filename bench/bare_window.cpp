// The least that a window of Qt with one editor in it can be: menus, a tool bar, and the file of
// the command line in a QScintilla with its C++ lexer. What starts beside it measures its own part.

#include <Qsci/qscilexercpp.h>
#include <Qsci/qsciscintilla.h>

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow window;
  for (const char* title : {"&File", "&Edit", "&View", "&Build", "&Debug", "&Help"}) {
    QMenu* menu = window.menuBar()->addMenu(title);
    for (int i = 0; i < 12; ++i) menu->addAction(QString("Item %1").arg(i));
  }
  QToolBar* bar = window.addToolBar("Main");
  for (int i = 0; i < 15; ++i) bar->addAction(QString("T%1").arg(i));
  auto* tabs = new QTabWidget;
  auto* editor = new QsciScintilla;
  editor->setUtf8(true);
  editor->setLexer(new QsciLexerCPP(editor));
  editor->setMarginType(0, QsciScintilla::NumberMargin);
  editor->setMarginWidth(0, "0000000");
  editor->setFolding(QsciScintilla::BoxedTreeFoldStyle, 2);
  QFile file(argc > 1 ? argv[1] : "");
  if (file.open(QIODevice::ReadOnly)) editor->setText(QString::fromUtf8(file.readAll()));
  tabs->addTab(editor, QFileInfo(file).fileName());
  window.setCentralWidget(tabs);
  window.statusBar()->showMessage("Ready");
  window.setWindowTitle("bare window");
  window.resize(800, 560);
  window.show();
  return application.exec();
}
