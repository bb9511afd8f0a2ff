#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTextBrowser>

#include "DarkPalette.h"
#include "IdeDriver.h"
#include "help/AboutDlg.h"
#include "help/HelpActs.h"

// The help window, the commands that show it, and the about box.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

constexpr char cIndex[] =
    "Where it comes from\n"
    "##@stdio.h\n##@Shape\n##@Round\n"
    "#=stdio.h@printf stdio.h@fprintf\n@b:formatted output\n@t:int printf(const char *)\n"
    "@p:format\n@r:the number of bytes\nPrints { and } and \\n.\n  indented\n"
    "#-Round@draw\nDraws a circle.\n"
    "#-Shape@draw\nDraws the shape.\n";

constexpr char cSource[] =
    "struct Shape {\n  void draw();\n};\n"
    "int printf(const char*);\n"
    "int main() {\n  Shape shape;\n  shape.draw();\n  printf(0);\n  unknwon();\n}\n";

class HelpTest : public testing::Test {
 protected:
  // Opens the source in the window, with an index of the user's own.
  void Run(const std::function<void()>& script) {
    std::filesystem::create_directories(mavro::ProfileFolder() + "/.zendry/Help");
    std::ofstream(mavro::ProfileFolder() + "/.zendry/Help/own.ch") << cIndex;
    ide.Run({ide.Project({{"a.cpp", cSource}})}, [&] {
      theMainForm->editTabs.OpenFile(ide.files.Path("a.cpp"));
      script();
      if (HelpWindow* window = theHelpActs.Window()) window->Close();
    });
  }
  // Puts the caret into the first `word` after the line.
  static void GoTo(const std::string& word) {
    CppEditor& editor = *theMainForm->editTabs.Active()->editor;
    const std::string text = cSource;
    editor.Send(mavro::SCI_GOTOPOS, text.rfind(word) + 1);
  }
  // What a window manager does when the help window has gone.
  static void BackToEditor() {
    test::WidgetOf(*theMainForm)->activateWindow();
    test::WaitFor([] { return mavro::activeForm == theMainForm; });
  }
  static HelpWindow& Help() { return *theHelpActs.Window(); }
  static std::string Page() { return Help().view.PlainText(); }
  static void PressInHelp(Qt::Key key) { test::Key(Help(), key); }

  IdeDriver ide;
};

TEST_F(HelpTest, F1_ShowsTheWordAtTheCaret) {
  Run([] {
    GoTo("printf");
    IdeDriver::Press(Qt::Key_F1);
    EXPECT_TRUE(Help().IsOnScreen());
    EXPECT_EQ(Help().text.Get(), "Help");
    EXPECT_EQ(Help().findEdit.text.Get(), "printf");
    EXPECT_THAT(Page(), StartsWith("\nprintf\n"));
    EXPECT_THAT(Page(), HasSubstr("formatted output\nint printf(const char *)\nformat\n"
                                  "the number of bytes\n"));
    EXPECT_THAT(Page(), HasSubstr("Prints { and } and \\n.\n  indented"));
  });
}

TEST_F(HelpTest, F1_PutsTheClassAtTheCaretFirst) {
  Run([] {
    GoTo("draw");
    IdeDriver::Press(Qt::Key_F1);
    EXPECT_LT(Page().find("Draws the shape."), Page().find("Draws a circle."));
    Help().Search();
    EXPECT_GT(Page().find("Draws the shape."), Page().find("Draws a circle."));
  });
}

TEST_F(HelpTest, WordThatIsNotFound_IsSaid_AndTheNearestAreLinks) {
  Run([] {
    GoTo("unknwon");
    IdeDriver::Press(Qt::Key_F1);
    EXPECT_THAT(Page(), StartsWith("unknwon is in none of the indexes.\n\nNear to it:\n"));
    Help().findEdit.text = "prinft";
    Help().findEdit.Focus();
    PressInHelp(Qt::Key_Return);
    EXPECT_EQ(Page(), "prinft is in none of the indexes.\n\nNear to it:\nprintf\nfprintf\ndraw");
    Help().view.Focus();
    QTest::keyClick(test::WidgetOf(Help().view), Qt::Key_Tab);
    PressInHelp(Qt::Key_Return);
    EXPECT_EQ(Help().findEdit.text.Get(), "printf");
    EXPECT_THAT(Page(), HasSubstr("formatted output"));
  });
}

TEST_F(HelpTest, LinkIsFollowedByAClick) {
  Run([] {
    theHelpActs.showHelp("drow");
    auto* browser = qobject_cast<QTextBrowser*>(test::WidgetOf(Help().view));
    const QTextCursor link = browser->document()->find("draw");
    const QPoint at = browser->cursorRect(link).center() - QPoint(4, 0);
    QTest::mouseClick(browser->viewport(), Qt::LeftButton, {}, at);
    EXPECT_THAT(Page(), HasSubstr("Draws a circle."));
  });
}

TEST_F(HelpTest, CtrlF1_ShowsTheWindowAsItWas) {
  Run([] {
    IdeDriver::Press(Qt::Key_F1, Qt::ControlModifier);
    EXPECT_THAT(Page(), HasSubstr("Where it comes from"));
    EXPECT_EQ(mavro::activeForm, &Help());
    Help().findEdit.text = "draw";
    PressInHelp(Qt::Key_Return);
    const std::string page = Page();
    PressInHelp(Qt::Key_Escape);
    EXPECT_FALSE(Help().IsOnScreen());
    BackToEditor();
    IdeDriver::Press(Qt::Key_F1, Qt::ControlModifier);
    EXPECT_TRUE(Help().IsOnScreen());
    EXPECT_EQ(Page(), page);
    EXPECT_EQ(Help().findEdit.text.Get(), "draw");
  });
}

TEST_F(HelpTest, Module_NarrowsTheSearch_AndListsItsNames) {
  Run([] {
    IdeDriver::Press(Qt::Key_F1, Qt::ControlModifier);
    ASSERT_EQ(Help().modules.items.GetCount(), 4);
    EXPECT_EQ(Help().modules.items[0], "-- all --");
    EXPECT_EQ(Help().modules.items[2], "Shape");
    Help().modules.selectedIndex = 2;
    Help().findEdit.text = "draw";
    Help().Search();
    EXPECT_THAT(Page(), Not(HasSubstr("Draws a circle.")));
    EXPECT_THAT(Page(), HasSubstr("Draws the shape."));
    Help().findEdit.text = "printf";
    Help().Search();
    EXPECT_THAT(Page(), StartsWith("printf is not in Shape."));
    Help().findEdit.text = "";
    Help().modules.selectedIndex = 1;
    Help().Search();
    EXPECT_THAT(Page(), HasSubstr("fprintf\n"));
    Help().modules.selectedIndex = 0;
    Help().Search();
    EXPECT_THAT(Page(), HasSubstr("Where it comes from"));
  });
}

TEST_F(HelpTest, TabOrder_IsTopDown) {
  Run([] {
    IdeDriver::Press(Qt::Key_F1, Qt::ControlModifier);
    const mavro::Control* order[] = {&Help().findEdit, &Help().searchButton, &Help().modules,
                                     &Help().view, &Help().closeButton};
    for (const mavro::Control* control : order) {
      EXPECT_TRUE(test::WidgetOf(*control)->hasFocus());
      PressInHelp(Qt::Key_Tab);
    }
  });
}

TEST_F(HelpTest, WordCommand_IsGrayWithoutAnEditor) {
  Run([] {
    const auto isOn = [](int id) {
      for (const auto& item : theMainForm->helpMenu.items)
        if (item->action && item->action->id == id) return item->enabled;
      return false;
    };
    EXPECT_TRUE(isOn(1112));
    theMainForm->editTabs.CloseAll();
    EXPECT_FALSE(isOn(1112));
    EXPECT_TRUE(isOn(1700));
    EXPECT_TRUE(isOn(1701));
    IdeDriver::Press(Qt::Key_F1);
    EXPECT_EQ(theHelpActs.Window(), nullptr);
  });
}

TEST_F(HelpTest, Window_EndsWithTheMainWindow) {
  Run([] { theHelpActs.showHelp("draw"); });
  EXPECT_EQ(theHelpActs.Window(), nullptr);
}

TEST_F(HelpTest, WithoutIndexes_SaysWhereItLooked) {
  ide.Run({}, [] {
    theHelpActs.showHelp(nullptr);
    EXPECT_THAT(Page(), HasSubstr("No help index was found in "));
    EXPECT_THAT(Page(), HasSubstr("/.zendry/Help"));
    Help().Close();
  });
}

TEST_F(HelpTest, About_SaysNameVersionAndLicences) {
  Run([this] {
    bool seen = false;
    ide.OnDialog([&seen](mavro::Form& form) {
      auto& about = static_cast<AboutDlg&>(form);
      EXPECT_EQ(about.text.Get(), "Zendry");
      EXPECT_EQ(about.banner.picture.Width(), 960);
      EXPECT_EQ(about.name.text.Get(), "Zendry");
      EXPECT_THAT(about.version.text.Get(),
                  MatchesRegex("Version 0\\.1 build: [A-Z][a-z]+ +[0-9]+ 20[0-9]+"));
      EXPECT_THAT(about.licences.text.Get(), HasSubstr("Linux man-pages"));
      EXPECT_THAT(about.licences.text.Get(), HasSubstr("PCRE2"));
      EXPECT_EQ(about.okButton.text.Get(), "OK");
      test::Shot(form, "about");
      seen = true;
      test::Key(form, Qt::Key_Return);
    });
    theHelpActs.OnCommand(1700);
    EXPECT_TRUE(seen);
  });
}

class HelpLooks : public HelpTest, public testing::WithParamInterface<bool> {};

TEST_P(HelpLooks, PageCanBeRead) {
  const QPalette before = QApplication::palette();
  if (GetParam()) QApplication::setPalette(test::DarkPalette());
  Run([] {
    theHelpActs.showHelp("printf");
    test::Shot(Help(), GetParam() ? "help-dark" : "help-light");
    // Letters differ from their ground: the title from the amber row, the rest from the page.
    auto* browser = qobject_cast<QTextBrowser*>(test::WidgetOf(Help().view));
    const auto colorOf = [browser](const char* text) {
      return browser->document()->find(text).charFormat().foreground().color();
    };
    EXPECT_LT(colorOf("printf").lightness(), 20);
    const int page = browser->palette().color(QPalette::Base).lightness();
    EXPECT_GT(std::abs(colorOf("formatted").lightness() - page), 60);
    EXPECT_GT(colorOf("formatted").hslSaturation(), 100);
    EXPECT_EQ(browser->document()->find("the number").charFormat().foreground().style(),
              Qt::NoBrush);
  });
  QApplication::setPalette(before);
}

INSTANTIATE_TEST_SUITE_P(Palettes, HelpLooks, testing::Bool(), [](const auto& info) {
  return std::string(info.param ? "dark" : "light");
});

}  // namespace
}  // namespace zendry
