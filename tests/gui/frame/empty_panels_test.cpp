#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QAccessible>

#include "DarkPalette.h"
#include "IdeDriver.h"

// What the panels of the main window say as long as they are empty.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::HasSubstr;

std::string WordsOf(const mavro::Control& control) {
  QAccessibleInterface* object = QAccessible::queryAccessibleInterface(test::WidgetOf(control));
  return object->text(QAccessible::Description).toStdString();
}

// The layer that shows the words is over the content.
bool ShowsWords(const mavro::Control& control) {
  for (const QWidget* layer :
       test::WidgetOf(control)->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
    if (layer->testAttribute(Qt::WA_TransparentForMouseEvents) && layer->isVisible()) return true;
  return false;
}

TEST(EmptyPanels, EachPanel_NamesTheKeyThatFillsIt) {
  IdeDriver ide;
  ide.Run({}, [] {
    EXPECT_THAT(WordsOf(theMainForm->output), HasSubstr("F7"));
    EXPECT_THAT(WordsOf(theMainForm->errorList.list), HasSubstr("F4"));
    EXPECT_THAT(WordsOf(theMainForm->resultList.list), HasSubstr("Ctrl+Shift+F"));
    EXPECT_THAT(WordsOf(theMainForm->resultList.list), HasSubstr("Ctrl+Alt+C"));
    EXPECT_THAT(WordsOf(theMainForm->projectTree), HasSubstr("New project"));
    EXPECT_THAT(WordsOf(theMainForm->classTree), HasSubstr("classes"));
    for (const WatchList& watch : theMainForm->watches)
      EXPECT_THAT(WordsOf(watch.list), HasSubstr("Shift+F9"));
    EXPECT_TRUE(ShowsWords(theMainForm->output));
    EXPECT_TRUE(ShowsWords(theMainForm->projectTree));
    theMainForm->ShowPage(cFirstWatchPage);
    EXPECT_TRUE(ShowsWords(theMainForm->watches[0].list)) << "its empty row is no content";
    theMainForm->ShowPage(cResultPage);
    EXPECT_TRUE(ShowsWords(theMainForm->resultList.list));
  });
}

TEST(EmptyPanels, Content_TakesTheirPlace) {
  IdeDriver ide;
  ide.Run({ide.Project({{"a.cpp", "int a;\n"}})}, [] {
    EXPECT_FALSE(ShowsWords(theMainForm->projectTree));
    theMainForm->ShowPage(cErrorPage);
    EXPECT_TRUE(ShowsWords(theMainForm->errorList.list));
    theMainForm->AddErrorRow({"a.cpp", 1, "error: one", 1});
    theMainForm->errorList.list.Update();
    EXPECT_FALSE(ShowsWords(theMainForm->errorList.list));
    theMainForm->ClearErrorRows();
    EXPECT_TRUE(ShowsWords(theMainForm->errorList.list));
    theMainForm->ShowPage(cOutputPage);
    theMainForm->AppendOutput("g++\n");
    theMainForm->output.Update();
    EXPECT_FALSE(ShowsWords(theMainForm->output));
  });
}

TEST(EmptyPanels, Breakpoints_SayHowToSetOne) {
  IdeDriver ide;
  ide.Run({ide.Project({{"a.cpp", "int a;\n"}})}, [&] {
    std::string words;
    ide.OnDialog([&](mavro::Form& dialog) {
      words = WordsOf(*dialog.focusControl);
      test::Shot(dialog, "empty-breakpoints");
      dialog.Close();
    });
    theDebugger.OnCommand(cViewBreakpointsCommand);
    EXPECT_THAT(words, HasSubstr("F9"));
  });
}

// For people to look at.
TEST(EmptyPanels, Shots) {
  const QPalette light = QApplication::palette();
  for (const bool isDark : {false, true}) {
    QApplication::setPalette(isDark ? test::DarkPalette() : light);
    IdeDriver ide;
    ide.Run({}, [&] {
      for (int page = 0; page < theMainForm->bottomTabs.TabCount(); ++page) {
        theMainForm->ShowPage(page);
        theMainForm->leftTabs.selectedIndex = page % 2;
        QCoreApplication::processEvents();
        test::Shot(*theMainForm, "empty-" + std::to_string(page) + (isDark ? "-dark" : ""));
      }
    });
  }
  QApplication::setPalette(light);
}

}  // namespace
}  // namespace zendry
