#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "IdeDriver.h"

// The page of a start without a file.

namespace zendry {
namespace {

using test::IdeDriver;

StartPage::Row* RowOf(const std::string& caption) {
  for (StartPage::Row& row : theMainForm->startPage.rows)
    if (row.button.text == caption) return &row;
  return nullptr;
}

TEST(StartPage, StartWithoutAFile_ShowsIt_WithTheFirstPossibleRowFocused) {
  IdeDriver ide;
  ide.Run({}, [&] {
    StartPage& page = theMainForm->startPage;
    EXPECT_TRUE(page.visible);
    EXPECT_TRUE(test::WaitFor([&] { return page.FirstRow()->IsFocused(); }));
    const StartPage::Row* created = RowOf("New project...");
    ASSERT_NE(created, nullptr);
    EXPECT_EQ(created->button.enabled, theMainForm->CanAct(theFileActs.Find(cNewProjectCommand)));
    EXPECT_TRUE(RowOf("Open a file...")->button.enabled);
  });
}

TEST(StartPage, FileOnTheCommandLine_NeedsNoPage) {
  IdeDriver ide;
  ide.Run({ide.files.Write("a.cpp", "int a;\n")},
          [&] { EXPECT_FALSE(theMainForm->startPage.visible); });
}

TEST(StartPage, RowOfAFileUsedBefore_OpensIt_AndThePageHasGone) {
  IdeDriver ide;
  const std::string path = ide.files.Write("a&b.cpp", "int a;\n");
  ide.Run({path}, [] {});
  ide.Run({}, [&] {
    StartPage::Row* row = RowOf("a&&b.cpp");
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->button.hint.Get(), path);
    row->button.Focus();
    IdeDriver::Press(Qt::Key_Space);
    EXPECT_TRUE(test::WaitFor([] { return theMainForm->editTabs.TabCount() == 1; }));
    EXPECT_FALSE(theMainForm->startPage.visible);
    EXPECT_TRUE(theMainForm->editTabs.Active()->editor->IsFocused());
    theMainForm->editTabs.DropAll();
    EXPECT_FALSE(theMainForm->startPage.visible);
  });
}

TEST(StartPage, Project_HidesIt) {
  IdeDriver ide;
  const std::string project = ide.Project({{"a.cpp", "int a;\n"}});
  ide.Run({}, [&] {
    theFileActs.LoadProject(project);
    EXPECT_FALSE(theMainForm->startPage.visible);
  });
}

TEST(StartPage, UserWhoSaysNo_IsNotShownItAgain) {
  IdeDriver ide;
  ide.Run({}, [&] {
    theMainForm->startPage.showAgain.Focus();
    IdeDriver::Press(Qt::Key_Space);
    EXPECT_TRUE(test::WaitFor([] { return !theMainForm->startPage.showAgain.checked; }));
  });
  EXPECT_NE(ide.Ini().find("start-page=0"), std::string::npos) << ide.Ini();
  ide.Run({}, [&] { EXPECT_FALSE(theMainForm->startPage.visible); });
}

TEST(StartPage, Rows_AreReachedByKeys_AndOpenTheirDialogs) {
  IdeDriver ide;
  ide.Run({}, [&] {
    test::WaitFor([] { return theMainForm->startPage.FirstRow()->IsFocused(); });
    RowOf("Open a project...")->button.Focus();
    IdeDriver::Press(Qt::Key_Space);
    EXPECT_TRUE(test::WaitFor([&] { return ide.dialogs.questions.size() == 1; }));
    EXPECT_EQ(ide.dialogs.questions[0].title, "Open project");
    IdeDriver::Press(Qt::Key_Tab);
    EXPECT_TRUE(RowOf("Open a file...")->button.IsFocused());
  });
}

class StartPageLook : public testing::TestWithParam<bool> {};

TEST_P(StartPageLook, CanBeLookedAt) {
  const QPalette light = QApplication::palette();
  if (GetParam()) QApplication::setPalette(test::DarkPalette());
  IdeDriver ide;
  ide.Run({ide.files.Write("shape.cpp", ""), ide.files.Write("list.h", "")}, [] {});
  ide.Run({}, [&] {
    theMainForm->SetBounds(0, 0, 1100, 800);
    test::WaitFor([] { return theMainForm->toolBar.width == 1100; });
    int passes = 0;
    test::WaitFor([&passes] { return ++passes > 5; });
    test::Shot(*theMainForm, GetParam() ? "start-page-dark" : "start-page-light");
  });
  QApplication::setPalette(light);
}
INSTANTIATE_TEST_SUITE_P(Both, StartPageLook, testing::Bool());

}  // namespace
}  // namespace zendry
