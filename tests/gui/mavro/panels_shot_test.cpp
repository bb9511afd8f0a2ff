#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>

#include "DarkPalette.h"
#include "Edit.h"
#include "Form.h"
#include "GuiDriver.h"
#include "ListBox.h"
#include "Strips.h"
#include "TabCtrl.h"
#include "ToolBar.h"
#include "TreeView.h"

namespace mavro {
namespace {

// A window with a tool bar, a tree in a page, and files in tabs, as an editor has it.
struct PanelsForm : Form {
  ToolBar bar, small;
  ComboBox mode;
  Panel left;
  TabCtrl leftTabs, files;
  TabPage projectPage, classesPage, pages[6];
  TreeView tree;
  Memo texts[6];

  PanelsForm() {
    text = "Panels";
    SetBounds(0, 0, 900, 420);
    MakeBar();
    MakeTree();
    MakeFiles();
  }

  void MakeBar() {
    bar.dock = Dock::cTop;
    bar.images = 0x6E;
    bar.AddSeparator();
    for (int image : {1, 3, 2, 4, 5}) bar.AddButton(image, "Button");
    bar.AddSeparator();
    for (int image : {6, 7, 8}) bar.AddButton(image, "Button");
    bar.AddSeparator();
    for (int image : {9, 10, 11}) bar.AddButton(image, "Button");
    for (const char* item : {"Release", "Debug"}) mode.items.Add(item);
    mode.chooseOnly = true;
    mode.selectedIndex = 0;
    mode.SetSize(100, 30);
    bar.AddControl(&mode);
    for (int image : {0xC, 0x17, 0xD, 0xF}) bar.AddButton(image, "Button");
    bar.AddSeparator();
    for (int image : {0x11, 0x10, 0x1A, 0xE, 0x12, 0x23, 0x2B, 0x2A})
      bar.AddButton(image, "Button");
    for (int row : {2, 9, 16, 18, 23}) bar.Enable(row, false);
    Add(&bar);
  }

  void MakeTree() {
    left.dock = Dock::cLeft;
    left.width = 220;
    small.dock = Dock::cTop;
    small.images = 0x6A;
    small.height = 22;
    for (int image : {0, 1, 2, 3, 4, 5}) small.AddButton(image, "Button");
    left.Add(&small);
    leftTabs.dock = Dock::cFill;
    left.Add(&leftTabs);
    projectPage.text = "Project";
    classesPage.text = "Classes";
    leftTabs.Add(&projectPage);
    leftTabs.Add(&classesPage);
    tree.dock = Dock::cFill;
    tree.imageList = 0x6F;
    TreeNode* sources = tree.AddNode(nullptr, "Source Files", 0, 0);
    TreeNode* gui = tree.AddNode(sources, "gui", 0, 1);
    tree.AddNode(gui, "a_source_file_with_a_name_too_long_for_the_panel.cpp", 1, 2);
    tree.Select(tree.AddNode(gui, "window.cpp", 2, 2));
    tree.AddNode(sources, "main.c", 3, 3);
    TreeNode* headers = tree.AddNode(nullptr, "Header Files", 0, 0);
    tree.AddNode(headers, "window.h", 4, 4);
    TreeNode* rest = tree.AddNode(nullptr, "Resource File", 0, 0);
    for (int image = 5; image <= 15; ++image)
      tree.AddNode(rest, "picture " + std::to_string(image), image + 10, image);
    for (TreeNode* node : {sources, gui, headers, rest}) tree.Expand(node);
    projectPage.Add(&tree);
    Add(&left);
  }

  void MakeFiles() {
    const char* names[] = {"main.c",     "a & b.cpp*",
                           "caf\xE9.h",  "a_source_file_with_a_name_that_is_really_too_long.cpp",
                           "window.cpp", "Makefile"};
    files.dock = Dock::cFill;
    files.closable = true;
    for (int i = 0; i < 6; ++i) {
      pages[i].text = names[i];
      texts[i].dock = Dock::cFill;
      texts[i].text = "int main() {\n  return 0;\n}\n";
      pages[i].Add(&texts[i]);
      files.Add(&pages[i]);
    }
    files.selectedIndex = 1;
    Add(&files);
  }
};

// For people to look at, also in a window that is too narrow for its bar and tabs.
TEST(PanelsShot, LightDarkAndNarrow) {
  test::RegisterStrips();
  const QPalette light = QApplication::palette();
  for (const bool isDark : {false, true}) {
    QApplication::setPalette(isDark ? test::DarkPalette() : light);
    PanelsForm form;
    test::RunForm(form, false, [&] {
      const std::string name = isDark ? "panels-dark" : "panels-light";
      test::Shot(form, name);
      form.SetSize(520, 300);
      test::Shot(form, name + "-narrow");
      for (int i = 0; i < 6; ++i) EXPECT_EQ(test::WidgetOf(form.texts[i])->isVisible(), i == 1);
    });
  }
  QApplication::setPalette(light);
}

}  // namespace
}  // namespace mavro
