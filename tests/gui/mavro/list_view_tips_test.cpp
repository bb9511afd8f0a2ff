// Marked cells, and the tips of cells that don't show their text whole.
#include <gtest/gtest.h>

#include <QHelpEvent>
#include <QToolTip>
#include <QTreeView>

#include "DarkPalette.h"
#include "Form.h"
#include "GuiDriver.h"
#include "ListView.h"

namespace mavro {
namespace {

struct TipForm : Form {
  ListView list;

  TipForm() {
    SetBounds(0, 0, 400, 200);
    list.SetBounds(0, 0, 400, 200);
    list.AddColumn("name", 100);
    list.AddColumn("value", 200);
    for (const char* name : {"a", "b", "c"}) list.AddRow(name);
    Add(&list);
  }
  QTreeView* View() { return qobject_cast<QTreeView*>(test::WidgetOf(list)); }
  QRect Place(int row, int col) { return View()->visualRect(View()->model()->index(row, col)); }
  // The tip that shows when the mouse rests on a cell; empty for none.
  std::string TipAt(int row, int col) {
    QToolTip::hideText();
    EXPECT_TRUE(test::WaitFor([] { return !QToolTip::isVisible(); }));
    const QPoint at = Place(row, col).center();
    QHelpEvent help(QEvent::ToolTip, at, View()->viewport()->mapToGlobal(at));
    QApplication::sendEvent(View()->viewport(), &help);
    return QToolTip::isVisible() ? QToolTip::text().toStdString() : "";
  }
  bool HasColour(int row, int col, QRgb colour) {
    const QImage shown = View()->viewport()->grab(Place(row, col)).toImage();
    for (int y = 0; y < shown.height(); ++y)
      for (int x = 0; x < shown.width(); ++x)
        if (shown.pixel(x, y) == colour) return true;
    return false;
  }
};

TEST(ListTips, OnlyCellsThatAreCutHaveOne) {
  TipForm form;
  const std::string longText(60, 'x');
  form.list.SetCell(0, 1, "short");
  form.list.SetCell(1, 1, longText);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.TipAt(0, 1), "");
    EXPECT_EQ(form.TipAt(1, 1), longText);
    form.list.SetCell(1, 1, "short");
    EXPECT_EQ(form.TipAt(1, 1), "");
  });
}

TEST(ListTips, ATipOfItsOwn_ShowsThoughTheCellIsNotCut) {
  TipForm form;
  form.list.SetCell(0, 1, "{1, 2...");
  form.list.SetCellTip(0, 1, "{1, 2,\n3, 4}");
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.TipAt(0, 1), "{1, 2,\n3, 4}");
    EXPECT_EQ(form.TipAt(0, 0), "");
    form.list.SetCellTip(0, 1, "<b>x</b>");
    EXPECT_NE(form.TipAt(0, 1).find("&lt;b&gt;"), std::string::npos) << "no markup";
    form.list.RemoveRow(0);
    EXPECT_EQ(form.TipAt(0, 1), "") << "it went with its row";
  });
}

TEST(ListTips, ALongText_IsBrokenAndCut) {
  TipForm form;
  form.list.SetCell(0, 1, std::string(121, 'x'));
  form.list.SetCell(1, 1, std::string(100000, 'x'));
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.TipAt(0, 1), std::string(120, 'x') + "\nx");
    const std::string tip = form.TipAt(1, 1);
    EXPECT_LT(tip.size(), 5000u);
    EXPECT_TRUE(tip.ends_with("\n..."));
  });
}

TEST(ListMarks, AMarkedCell_HasAnotherColour) {
  const QPalette light = QApplication::palette();
  for (const bool isDark : {false, true}) {
    if (isDark) QApplication::setPalette(test::DarkPalette());
    TipForm form;
    for (int row = 0; row < 3; ++row) form.list.SetCell(row, 1, "MMMMMMMM");
    form.list.MarkCell(1, 1, true);
    test::RunForm(form, false, [&] {
      const QRgb colour = isDark ? 0xFFFF8F86 : 0xFFC00018;
      EXPECT_TRUE(test::WaitFor([&] { return form.HasColour(1, 1, colour); }));
      EXPECT_FALSE(form.HasColour(0, 1, colour));
      EXPECT_FALSE(form.HasColour(1, 0, colour));
      EXPECT_TRUE(form.list.IsCellMarked(1, 1));
      test::Shot(form, isDark ? "list_marks_dark" : "list_marks");
      form.list.RemoveRow(0);
      EXPECT_TRUE(form.list.IsCellMarked(0, 1)) << "it follows its row";
      form.list.MarkCell(0, 1, false);
      EXPECT_FALSE(form.HasColour(0, 1, colour));
    });
  }
  QApplication::setPalette(light);
}

TEST(ListMarksDeath, BadCell_Stops) {
  TipForm form;
  EXPECT_DEATH(form.list.MarkCell(3, 0, true), "row>=-1 && row<getimpl");
  EXPECT_DEATH(form.list.SetCellTip(0, 2, ""), "row>=-1 && row<getimpl");
}

}  // namespace
}  // namespace mavro
