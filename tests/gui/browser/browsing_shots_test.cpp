#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "EditorFixture.h"
#include "Looks.h"
#include "browser/BrowserActs.h"

// The class tree, the browser and the class wizard, light and dark: nothing in them is cut or too
// pale. build/shots/browsing-*.png are for people to look at.

namespace zendry {
namespace {

using test::IdeDriver;

constexpr char cHeader[] =
    "class Shape {\n public:\n  Shape(int width, int height);\n  virtual ~Shape();\n"
    "  virtual int area(int scale = 1) const;\n  int perimeter() const;\n\n private:\n"
    "  int width, height;\n};\n\nclass Circle : public Shape {\n public:\n  int radius();\n};\n"
    "#define MAX_SHAPES 100\nextern int shapeCount;\n";

class BrowsingShots : public test::EditorFixture, public testing::WithParamInterface<const char*> {
 protected:
  void Shot(const mavro::Control& control, const std::string& name) {
    EXPECT_THAT(test::UnreadableCaptions(control), testing::IsEmpty()) << name;
    test::Shot(control, "browsing-" + name + "-" + GetParam());
    ++shots;
  }
  void Run(const std::function<void()>& script) {
    const QPalette light = QApplication::palette();
    if (std::string(GetParam()) == "dark") QApplication::setPalette(test::DarkPalette());
    ide.Run({ide.Project({{"shape.h", cHeader},
                          {"shape.cpp",
                           "#include \"shape.h\"\nint shapeCount;\nint count() {\n"
                           "  return shapeCount;\n}\n"}})},
            [&] {
              theMainForm->SetBounds(0, 0, 1000, 700);
              Tabs().OpenFile(ide.files.Path("shape.h"))->ShowLine(5);
              script();
            });
    QApplication::setPalette(light);
  }

  int shots = 0;
};

TEST_P(BrowsingShots, ClassWizard) {
  Run([&] {
    ide.OnDialog([&](mavro::Form& form) {
      Type("int grow(int by = 1)");
      Shot(form, "wizard");
      test::Key(form, Qt::Key_Escape);
    });
    theBrowserActs.OnCommand(cAddMemberCommand);
    EXPECT_EQ(shots, 1);
  });
}

TEST_P(BrowsingShots, Browser) {
  Run([&] {
    ide.OnDialog([&](mavro::Form& form) {
      Shot(form, "browser");
      test::Key(form, Qt::Key_Escape);
    });
    theBrowserActs.OnCommand(cOpenBrowserCommand);
    EXPECT_EQ(shots, 1);
  });
}

TEST_P(BrowsingShots, Tree) {
  Run([&] {
    ClassTree& tree = theMainForm->classTree;
    theMainForm->leftTabs.selectedIndex = 1;
    tree.Refresh();
    tree.Focus();
    for (mavro::TreeNode* root :
         {tree.functionRoot, tree.variableRoot, tree.macroRoot, tree.classRoot}) {
      tree.Select(root);
      IdeDriver::Press(Qt::Key_Right);
    }
    tree.Select(tree.classRoot->children.back().get());
    IdeDriver::Press(Qt::Key_Right);
    int passes = 0;  // of the event loop, in which the page is painted
    test::WaitFor([&passes] { return ++passes > 5; });
    test::Shot(*theMainForm, std::string("browsing-tree-") + GetParam());
  });
}

INSTANTIATE_TEST_SUITE_P(Looks, BrowsingShots, testing::Values("light", "dark"),
                         [](const auto& info) { return std::string(info.param); });

}  // namespace
}  // namespace zendry
