#pragma once

#include <QLineEdit>
#include <QTableView>
#include <string>

#include "Button.h"
#include "DataGrid.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"

namespace test {

// A grid of 5 columns and 40 rows above an OK button; a cell's text is its row and column, "r3c1".
struct GridForm : mavro::Form {
  EventLog log;
  mavro::DataGrid grid;
  mavro::Button ok;
  std::string refused, replaced;  // texts that onPostEdit doesn't take, or takes instead
  std::string asked;              // the cells of onPostEdit, "row,col=text " each

  static constexpr int cRows = 40, cCols = 5, cWidth = 80;

  GridForm() {
    SetBounds(0, 0, 360, 300);
    autoDialogKeys = true;
    grid.SetBounds(0, 0, 360, 250);
    for (int col = 0; col < cCols; ++col) grid.AddColumn("C" + std::to_string(col), cWidth);
    for (int row = 0; row < cRows; ++row) {
      const int added = grid.AddRow(Name(row, 0));
      for (int col = 1; col < cCols; ++col) grid.SetCell(added, col, Name(row, col));
    }
    grid.editLabels = true;
    grid.fullRowSelect = false;
    Add(&grid);
    ok.SetLocation(10, 260);
    ok.kind = mavro::Button::cOk;
    Add(&ok);
    grid.onPostEdit.Add_H(this, &GridForm::OnPostEdit);
    log.Listen("text", grid.onChangeText);
    log.Listen("sel", grid.onChangeSel);
    log.Listen("ok", ok.onClick);
  }

  static std::string Name(int row, int col) {
    return "r" + std::to_string(row) + "c" + std::to_string(col);
  }
  void OnPostEdit(mavro::ItemArgs& args) {
    asked += std::to_string(args.row) + "," + std::to_string(args.col) + "=" + args.text + " ";
    if (!refused.empty() && args.text == refused) args.value = 0;
    if (!replaced.empty()) args.text = replaced;
  }

  QTableView* View() { return qobject_cast<QTableView*>(WidgetOf(grid)); }
  // The editor of a cell, or null if none is open.
  QLineEdit* Editor() {
    for (auto* line : View()->viewport()->findChildren<QLineEdit*>())
      if (line->isVisible()) return line;
    return nullptr;
  }
  QPoint Middle(int row, int col) {
    return View()->visualRect(View()->model()->index(row, col)).center();
  }
  void Click(int row, int col, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(View()->viewport(), Qt::LeftButton, modifiers, Middle(row, col));
  }
  void DoubleClick(int row, int col) {
    QTest::mouseDClick(View()->viewport(), Qt::LeftButton, {}, Middle(row, col));
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { Key(*this, key, modifiers); }
  void Type(const char* text) {
    for (; *text; ++text) QTest::keyClick(WidgetOf(*this)->windowHandle(), *text);
  }
  // The current cell and the selected cells: "3,1 3,1+1x1"; "-" for none.
  std::string Where() {
    const mavro::CellRange cells = grid.GetSelection();
    if (cells.IsEmpty()) return "-";
    return std::to_string(grid.selectedIndex) + "," + std::to_string(grid.GetCurrentCol()) + " " +
           std::to_string(cells.row) + "," + std::to_string(cells.col) + "+" +
           std::to_string(cells.rowCount) + "x" + std::to_string(cells.colCount);
  }
};

}  // namespace test
