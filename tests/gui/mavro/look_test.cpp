#include "Look.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QRadioButton>

#include "Button.h"
#include "ButtonGroup.h"
#include "DarkPalette.h"
#include "FileDrop.h"
#include "Form.h"
#include "Label.h"
#include "Looks.h"
#include "TreeView.h"

// Themes, the size of letters, faded nodes and the control under a drop.

namespace mavro {
namespace {

struct LookForm : Form {
  Label label;
  TreeView tree;

  LookForm() {
    SetBounds(0, 0, 300, 200);
    acceptFiles = true;
    label.text = "Words";
    label.SetBounds(10, 10, 100, 20);
    tree.SetBounds(10, 40, 200, 120);
    Add(&label);
    Add(&tree);
  }
};

TEST(Theme, ChangesOpenWindows_AndSystemBringsTheDesktopsBack) {
  const QPalette before = QApplication::palette();
  LookForm form;
  test::RunForm(form, false, [&] {
    for (const Theme theme : {Theme::cDark, Theme::cLight, Theme::cDark}) {
      SetTheme(theme);
      EXPECT_EQ(CurrentTheme(), theme);
      QCoreApplication::processEvents();
      EXPECT_THAT(test::UnreadableCaptions(form), testing::IsEmpty());
      const bool isDark = qGray(test::GroundOf(test::Pixels(form.tree))) < 100;
      EXPECT_EQ(isDark, theme == Theme::cDark);
    }
    SetTheme(Theme::cSystem);
  });
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), before.color(QPalette::Window));
}

// An empty box or circle can be seen on any ground, the desktop's own dark one too.
TEST(Theme, EmptyBoxesAndCircles_CanBeSeen) {
  constexpr int cLeastStrength = 50;  // steps of gray between the ground and the frame
  const QPalette before = QApplication::palette();
  Form form;
  CheckBox box;
  RadioGroup group;
  box.SetBounds(10, 10, 60, 20);
  group.SetBounds(10, 40, 80, 60);
  group.items.Add("");
  group.itemIndex = -1;
  form.Add(&box);
  form.Add(&group);
  test::RunForm(form, false, [&] {
    const auto expectSeen = [&](const char* look) {
      QCoreApplication::processEvents();
      QWidget* circle = test::WidgetOf(group)->findChild<QRadioButton*>();
      ASSERT_NE(circle, nullptr);
      for (QWidget* drawn : {test::WidgetOf(box), circle})
        EXPECT_GE(test::InkStrength(drawn->grab().toImage()), cLeastStrength)
            << look << " " << drawn->metaObject()->className();
    };
    SetTheme(Theme::cLight);
    expectSeen("light");
    SetTheme(Theme::cDark);
    expectSeen("dark");
    SetTheme(Theme::cSystem);
    QApplication::setPalette(test::DarkPalette());
    expectSeen("the desktop's dark");
    QApplication::setPalette(before);
  });
}

TEST(InterfaceLetters, ReachTrees_NotLabels_AndZeroBringsTheDesktopsBack) {
  LookForm form;
  test::RunForm(form, false, [&] {
    const int usual = test::WidgetOf(form.tree)->font().pointSize();
    SetInterfaceLetters(17);
    EXPECT_EQ(test::WidgetOf(form.tree)->font().pointSize(), 17);
    EXPECT_EQ(test::WidgetOf(form.label)->font().pointSize(), usual);
    SetInterfaceLetters(99);
    EXPECT_EQ(test::WidgetOf(form.tree)->font().pointSize(), cMostLetters);
    SetInterfaceLetters(-1);
    EXPECT_EQ(test::WidgetOf(form.tree)->font().pointSize(), cLeastLetters);
    SetInterfaceLetters(0);
    EXPECT_EQ(test::WidgetOf(form.tree)->font().pointSize(), usual);
  });
}

TEST(FontFaces, AreSortedAndThereOnce) {
  const std::vector<std::string> faces = FontFaces();
  EXPECT_FALSE(faces.empty());
  EXPECT_TRUE(std::is_sorted(faces.begin(), faces.end()));
  EXPECT_EQ(std::adjacent_find(faces.begin(), faces.end()), faces.end());
}

TEST(FadedNode, IsGrayAndStruckOut_WithItsTip) {
  LookForm form;
  TreeNode* node = form.tree.AddNode(nullptr, "gone", 1);
  form.tree.AddNode(nullptr, "here", 2);
  test::RunForm(form, false, [&] {
    auto* view = dynamic_cast<QAbstractItemView*>(test::WidgetOf(form.tree));
    const QModelIndex index = view->model()->index(0, 0);
    EXPECT_FALSE(index.data(Qt::FontRole).isValid());
    form.tree.SetNodeFaded(node, true, "why");
    EXPECT_TRUE(index.data(Qt::FontRole).value<QFont>().strikeOut());
    EXPECT_EQ(index.data(Qt::ToolTipRole).toString(), "why");
    EXPECT_FALSE(view->model()->index(1, 0).data(Qt::FontRole).isValid());
    form.tree.SetNodeFaded(node, false);
    EXPECT_FALSE(index.data(Qt::ForegroundRole).isValid());
    EXPECT_EQ(index.data(Qt::ToolTipRole).toString(), "");
  });
}

TEST(TreeNodeAt, IsTheNodeUnderAPointOfTheScreen) {
  LookForm form;
  EXPECT_EQ(form.tree.NodeAt(0, 0), nullptr) << "no window";
  TreeNode* node = form.tree.AddNode(nullptr, "node", 1);
  test::RunForm(form, false, [&] {
    auto* view = dynamic_cast<QAbstractItemView*>(test::WidgetOf(form.tree));
    const QPoint at =
        view->viewport()->mapToGlobal(view->visualRect(view->model()->index(0, 0)).center());
    EXPECT_EQ(form.tree.NodeAt(at.x(), at.y()), node);
    EXPECT_EQ(form.tree.NodeAt(at.x(), at.y() + 60), nullptr);
  });
}

TEST(FileDrop, NamesTheControlUnderIt) {
  struct Drops : LookForm {
    Drops() { onDropFiles.Add_H(this, &Drops::Dropped); }
    void Dropped(FilesArgs& args) {
      over = args.over;
      ++count;
    }
    Control* over = nullptr;
    int count = 0;
  } form;
  test::RunForm(form, false, [&] {
    Control* const targets[] = {&form.tree, &form.label, &form.tree};
    for (Control* target : targets) {
      const int before = form.count;
      EXPECT_TRUE(test::FileDrag({"/a.cpp"}).Drop(*target));
      EXPECT_TRUE(test::WaitFor([&] { return form.count > before; }));
      EXPECT_EQ(form.over, target);
    }
  });
}

}  // namespace
}  // namespace mavro
