#include "StatusBar.h"

#include <gtest/gtest.h>

#include <QLabel>

#include "Form.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

struct BarForm : Form {
  StatusBar bar;

  BarForm() {
    SetBounds(0, 0, 600, 100);
    bar.dock = Dock::cBootom;
    bar.AddPane(0, "first");
    bar.AddPane(200, "second");
    bar.AddPane(150, "");
    Add(&bar);
  }
  QList<QLabel*> Panes() { return test::WidgetOf(bar)->findChildren<QLabel*>(); }
};

TEST(StatusBar, Panes_FixedOnesKeepTheirWidthAndTheFirstStretches) {
  BarForm form;
  test::RunForm(form, false, [&] {
    const auto panes = form.Panes();
    ASSERT_EQ(panes.size(), 3);
    EXPECT_EQ(panes[0]->x(), 0);
    EXPECT_EQ(panes[0]->width(), 250);
    EXPECT_EQ(panes[1]->x(), 250);
    EXPECT_EQ(panes[1]->width(), 200);
    EXPECT_EQ(panes[2]->width(), 150);
    form.width = 800;
    EXPECT_EQ(panes[0]->width(), 450);
    EXPECT_EQ(panes[2]->x(), 650);
  });
}

// As on a screen with large letters: 600 pixels, of which the others have 350.
TEST(StatusBar, TextThatNeedsMoreRoom_GetsWhatTheOthersDontNeed) {
  BarForm form;
  const std::string sentence(40, 'x');
  test::RunForm(form, false, [&] {
    const auto panes = form.Panes();
    const int needed = panes[0]->fontMetrics().horizontalAdvance(QString(40, 'x'));
    form.width = needed + 250;
    ASSERT_LT(panes[0]->width(), needed);
    form.bar.SetPane(0, sentence);
    EXPECT_GE(panes[0]->width(), needed);
    EXPECT_GE(panes[1]->width(), panes[1]->fontMetrics().horizontalAdvance("second"));
    EXPECT_LT(panes[1]->width(), 200);
    EXPECT_EQ(panes[2]->width(), 0) << "it has no text";
    form.bar.SetPane(2, "text");
    EXPECT_GT(panes[2]->width(), 0);
    form.bar.SetPane(0, "x");
    EXPECT_EQ(panes[1]->width(), 200) << "there is room again";
    EXPECT_EQ(panes[2]->x() + panes[2]->width(), needed + 250);
  });
}

TEST(StatusBar, SetPane_BeforeAndWithTheWindow) {
  BarForm form;
  form.bar.SetPane(2, "before");
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Panes()[2]->text(), "before");
    form.bar.SetPane(1, "Ln 3   Col 4");
    EXPECT_EQ(form.Panes()[1]->text(), "Ln 3   Col 4");
    EXPECT_EQ(form.bar.PaneText(1), "Ln 3   Col 4");
  });
}

// The columns of the pane's middle row that have the colour of what is done.
int DoneColumns(QLabel* pane) {
  const QImage image = pane->grab().toImage();
  const QRgb wanted = pane->palette().color(QPalette::Highlight).rgb();
  int count = 0;
  for (int x = 0; x < image.width(); ++x) count += image.pixel(x, image.height() / 2) == wanted;
  return count;
}

TEST(StatusBar, Bar_IsAsLongAsThePartThatIsDone) {
  BarForm form;
  form.SetBounds(0, 0, 900, 100);  // a narrow pane has no bar
  form.bar.SetPaneBar(0, 50);
  test::RunForm(form, false, [&] {
    QLabel* pane = form.Panes()[0];
    const int half = DoneColumns(pane);
    EXPECT_GT(half, 10);
    form.bar.SetPaneBar(0, 100);
    EXPECT_NEAR(DoneColumns(pane), 2 * half, 3);
    EXPECT_EQ(pane->accessibleDescription(), "100 %");
    form.bar.SetPaneBar(0, 0);
    EXPECT_EQ(DoneColumns(pane), 0);
    form.bar.SetPaneBar(0, -1);
    EXPECT_EQ(pane->accessibleDescription(), "");
    EXPECT_EQ(form.bar.PaneText(0), "first");
  });
}

TEST(StatusBar, Bar_OutsideItsRange_IsAtItsEnd) {
  BarForm form;
  test::RunForm(form, false, [&] {
    form.bar.SetPaneBar(0, 1000);
    EXPECT_EQ(form.Panes()[0]->accessibleDescription(), "100 %");
    form.bar.SetPaneBar(0, -7);
    EXPECT_EQ(form.Panes()[0]->accessibleDescription(), "");
  });
}

TEST(StatusBar, SetPane_EqualText_SendsNothing) {
  BarForm form;
  test::RunForm(form, false, [&] {
    form.Panes()[0]->setText("other");
    form.bar.SetPane(0, "first");
    EXPECT_EQ(form.Panes()[0]->text(), "other");
  });
}

TEST(StatusBar, AddPane_WithTheWindow_IsShown) {
  BarForm form;
  test::RunForm(form, false, [&] {
    form.bar.AddPane(50, "late");
    ASSERT_EQ(form.Panes().size(), 4);
    EXPECT_EQ(form.Panes()[3]->geometry().left(), 550);
    EXPECT_TRUE(form.Panes()[3]->isVisible());
  });
}

TEST(StatusBar, Text_AnyBytes_AreNotObeyed) {
  BarForm form;
  form.bar.SetPane(0, "<b>x</b> & \xFF");
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(form.Panes()[0]->text().startsWith("<b>x</b> & "));
    form.Panes()[0]->grab();
    EXPECT_EQ(form.bar.PaneText(0), "<b>x</b> & \xFF");
  });
}

TEST(StatusBar, LargeFont_MakesItHigher) {
  BarForm form;
  form.bar.font = Font(30);
  test::RunForm(form, false, [&] {
    EXPECT_GT(form.bar.height, 24);
    EXPECT_EQ(form.bar.Bounds().top + form.bar.Bounds().height, 100);
  });
}

TEST(StatusBarDeath, BadIndexes_StopWithTheirExpression) {
  BarForm form;
  EXPECT_DEATH(form.bar.SetPane(3, ""), "idx < panes.size\\(\\)");
  EXPECT_DEATH(form.bar.PaneText(-1), "idx < panes.size\\(\\)");
}

}  // namespace
}  // namespace mavro
