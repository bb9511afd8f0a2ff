#include "EmptyText.h"

#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QClipboard>
#include <QMouseEvent>
#include <algorithm>
#include <cmath>

#include "DarkPalette.h"
#include "Edit.h"
#include "Form.h"
#include "GuiDriver.h"
#include "ListView.h"
#include "TreeView.h"

namespace mavro {
namespace {

constexpr char cWords[] = "Rows come with F7.";

// An empty list, tree and memo.
struct EmptyForm : Form {
  ListView list;
  TreeView tree;
  Memo memo;
  EmptyText noRows{list, cWords}, noNodes{tree, cWords}, noText{memo, cWords};

  EmptyForm() {
    SetBounds(0, 0, 600, 200);
    list.AddColumn("file", 80);
    list.AddColumn("text", 80);
    list.onClickRow.Add_H(this, &EmptyForm::OnClickRow);
    int at = 0;
    for (Control* control : std::initializer_list<Control*>{&list, &tree, &memo}) {
      control->SetBounds(at, 0, 200, 200);
      at += 200;
      Add(control);
    }
    memo.readOnly = true;
  }
  void OnClickRow(NotifyArgs&) { ++clicks; }
  int clicks = 0;
};

QAbstractScrollArea* ViewOf(const Control& control) {
  return qobject_cast<QAbstractScrollArea*>(test::WidgetOf(control));
}

double Luminance(QColor color) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

// The best contrast with its ground that a view shows from a row of pixels on; 1 if it shows none.
double Contrast(const Control& control, int fromY = 0) {
  QCoreApplication::processEvents();
  QAbstractScrollArea* view = ViewOf(control);
  const QImage shown = view->grab(view->viewport()->geometry()).toImage();
  const double ground = Luminance(view->palette().color(QPalette::Base));
  double best = 1;
  for (int y = fromY; y < shown.height(); ++y)
    for (int x = 0; x < shown.width(); ++x) {
      const double ink = Luminance(shown.pixelColor(x, y));
      best = std::max(best, (std::max(ink, ground) + 0.05) / (std::min(ink, ground) + 0.05));
    }
  return best;
}

bool ShowsWords(const Control& control, int fromY = 0) {
  return Contrast(control, fromY) > 2;
}

TEST(EmptyText, IsReadable_OnLightAndDark_AndFainterThanText) {
  const QPalette light = QApplication::palette();
  for (const bool isDark : {false, true}) {
    QApplication::setPalette(isDark ? test::DarkPalette() : light);
    EmptyForm form;
    test::RunForm(form, false, [&] {
      test::Shot(form, isDark ? "empty-text-dark" : "empty-text-light");
      for (const Control* control : std::initializer_list<Control*>{&form.list, &form.tree}) {
        EXPECT_GE(Contrast(*control), 4.5);
        EXPECT_LT(Contrast(*control), 15);
      }
      EXPECT_GE(Contrast(form.memo), 4.5);
    });
  }
  QApplication::setPalette(light);
}

TEST(EmptyText, List_LosesItWithTheFirstRow_AndGetsItBack) {
  EmptyForm form;
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(ShowsWords(form.list));
    form.list.AddRow("a");
    form.list.Update();
    EXPECT_FALSE(ShowsWords(form.list, 40));
    form.list.Clear();
    EXPECT_TRUE(ShowsWords(form.list, 40));
    form.list.AddRow("a");
    form.list.AddRow("");
    form.list.Update();
    form.list.RemoveRow(0);
    EXPECT_TRUE(ShowsWords(form.list, 40)) << "a row without a text is left";
  });
}

TEST(EmptyText, List_WithARowForTyping_HasItBelow) {
  EmptyForm form;
  test::RunForm(form, false, [&] {
    form.list.AddRow("");
    form.list.Update();
    EXPECT_TRUE(ShowsWords(form.list, 40));
    form.list.SetCell(0, 1, "value");
    EXPECT_FALSE(ShowsWords(form.list, 40));
    form.list.SetCell(0, 1, "");
    EXPECT_TRUE(ShowsWords(form.list, 40));
    form.list.AddRow("");
    form.list.Update();
    EXPECT_FALSE(ShowsWords(form.list, 40)) << "two rows are no empty list";
  });
}

TEST(EmptyText, Tree_LosesItWithTheFirstNode) {
  EmptyForm form;
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(ShowsWords(form.tree));
    TreeNode* node = form.tree.AddNode(nullptr, "a", 0);
    EXPECT_FALSE(ShowsWords(form.tree, 40));
    form.tree.RemoveNode(node);
    EXPECT_TRUE(ShowsWords(form.tree, 40));
    form.tree.AddNode(nullptr, "b", 0);
    form.tree.Clear();
    EXPECT_TRUE(ShowsWords(form.tree, 40));
  });
}

TEST(EmptyText, Memo_LosesItWithTheFirstText_AndItIsNoText) {
  EmptyForm form;
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(ShowsWords(form.memo));
    EXPECT_EQ(form.memo.text.Get(), "");
    form.memo.SelectAll();
    QApplication::clipboard()->setText("before");
    form.memo.Focus();
    test::Key(form, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "before");
    form.memo.Append("a");
    form.memo.Update();
    EXPECT_FALSE(ShowsWords(form.memo, 40));
    form.memo.Clear();
    EXPECT_TRUE(ShowsWords(form.memo, 40));
  });
}

TEST(EmptyText, ScreenReaders_HaveItAsDescription) {
  EmptyForm form;
  test::RunForm(form, false, [&] {
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(ViewOf(form.list));
    EXPECT_EQ(list->text(QAccessible::Description).toStdString(), cWords);
    QAccessibleInterface* memo = QAccessible::queryAccessibleInterface(ViewOf(form.memo));
    EXPECT_EQ(memo->text(QAccessible::Value).toStdString(), "");
  });
}

TEST(EmptyText, Clicks_ReachTheRowsBelowIt) {
  EmptyForm form;
  test::RunForm(form, false, [&] {
    form.list.AddRow("");
    form.list.Update();
    QWidget* viewport = ViewOf(form.list)->viewport();
    const QPoint row = viewport->mapTo(viewport->window(), QPoint(10, 8));
    QTest::mouseClick(viewport->window()->windowHandle(), Qt::LeftButton, Qt::NoModifier, row);
    EXPECT_EQ(form.clicks, 1);
    const QPoint words = viewport->mapTo(viewport->window(), viewport->rect().center());
    QTest::mouseClick(viewport->window()->windowHandle(), Qt::LeftButton, Qt::NoModifier, words);
    EXPECT_TRUE(form.list.IsFocused());
    EXPECT_EQ(form.clicks, 1) << "the words are no row";
  });
}

TEST(EmptyText, FollowsTheSizeOfItsControl) {
  EmptyForm form;
  test::RunForm(form, false, [&] {
    form.tree.SetBounds(200, 0, 100, 120);
    EXPECT_TRUE(ShowsWords(form.tree));
    const auto layers =
        ViewOf(form.tree)->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* layer : layers) {
      if (!layer->testAttribute(Qt::WA_TransparentForMouseEvents)) continue;
      EXPECT_EQ(layer->geometry(), ViewOf(form.tree)->viewport()->geometry());
    }
  });
}

}  // namespace
}  // namespace mavro
