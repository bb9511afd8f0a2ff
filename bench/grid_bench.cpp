// The cost of the framework's grid beside the toolkit's table with its own model: 100,000 rows of
// three columns filled, painted for the first time, scrolled through to the end, and cells edited
// by keys. Each pair is measured in turns, by the time of the process; the shortest of three rounds
// is compared. Limit: 1.5 times the toolkit's time. Late rows have no peer there: their fill, the
// first painting and the jump to the last row are together within a frame of 16 ms.

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTableView>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "Application.h"
#include "DataGrid.h"
#include "Entry.h"
#include "Form.h"
#include "Shortest.h"
#include "SysImpl.h"

namespace {

constexpr int cRows = 100000;
constexpr int cColumns = 3;
constexpr int cColumnWidth = 150;
constexpr int cRowPadding = 4;
constexpr int cScrolls = 200;
constexpr int cEdits = 100;
constexpr int cRounds = 3;
constexpr double cMostRatio = 1.5;
constexpr double cFrame = 16;

double ProcessMilliseconds(const std::function<void()>& job) {
  const std::clock_t start = std::clock();
  job();
  return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// The shortest times by question.
using Times = std::map<std::string, double>;

void Keep(Times& times, const char* what, const std::function<void()>& job) {
  const double passed = ProcessMilliseconds(job);
  const auto [found, isFirst] = times.try_emplace(what, passed);
  if (!isFirst) found->second = std::min(found->second, passed);
}

std::string CellText(int row, int column) {
  return column == 0 ? "row " + std::to_string(row * 7919L % cRows) : std::to_string(row + column);
}

std::vector<std::string> RowTexts(int row) {
  std::vector<std::string> cells;
  for (int column = 0; column < cColumns; ++column) cells.push_back(CellText(row, column));
  return cells;
}

void Settle() {
  QCoreApplication::processEvents();
}

void ScrollThrough(QAbstractScrollArea& view) {
  QScrollBar* bar = view.verticalScrollBar();
  for (int i = 0; i <= cScrolls; ++i) {
    bar->setValue(static_cast<int>(static_cast<int64_t>(bar->maximum()) * i / cScrolls));
    view.viewport()->repaint();
  }
}

void Press(QWidget& widget, int key, const QString& text = {}) {
  QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
  QCoreApplication::sendEvent(&widget, &event);
}

// Types a letter into the editor that is open in a view and takes it with Enter.
void TypeAndTake(QAbstractScrollArea& view) {
  auto* editor = view.viewport()->findChild<QLineEdit*>();
  bench::Check(editor != nullptr, "grid_bench", "opening an editor");
  Press(*editor, Qt::Key_X, "x");
  Press(*editor, Qt::Key_Return);
  Settle();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// A grid in a form that is shown.
struct GridForm {
  mavro::Form form;
  mavro::DataGrid grid;
  QAbstractScrollArea* view = nullptr;

  GridForm() {
    form.SetBounds(0, 0, 800, 600);
    grid.dock = mavro::Dock::cFill;
    for (int column = 0; column < cColumns; ++column) grid.AddColumn("column", cColumnWidth);
    grid.editLabels = true;
    grid.fullRowSelect = false;
    form.Add(&grid);
    form.CreateControl();
    SetStateTree(&form, mavro::cAboutToShow);
    form.impl->Show(true);
    Settle();
    view = static_cast<QAbstractScrollArea*>(grid.impl->hwnd->widget);
  }
};

void Ours(Times& times) {
  GridForm ours;
  mavro::DataGrid& grid = ours.grid;
  Keep(times, "fill", [&] {
    for (int row = 0; row < cRows; ++row) grid.AddCells(RowTexts(row));
  });
  Keep(times, "first paint", [&] {
    grid.Update();
    Settle();
  });
  Keep(times, "scroll to the end", [&] { ScrollThrough(*ours.view); });
  Keep(times, "edit 100 cells", [&] {
    for (int row = 0; row < cEdits; ++row) {
      grid.EditCell(row, 1);
      TypeAndTake(*ours.view);
    }
  });
  bench::Check(grid.GetCell(cEdits - 1, 1) == CellText(cEdits - 1, 1) + "x", "grid_bench",
               "an edit");
}

void Toolkits(Times& times) {
  QTableView view;
  QStandardItemModel model(0, cColumns);
  view.resize(800, 600);
  view.setModel(&model);
  view.verticalHeader()->hide();
  view.verticalHeader()->setMinimumSectionSize(1);
  view.verticalHeader()->setDefaultSectionSize(view.fontMetrics().height() + cRowPadding);
  view.setVerticalScrollMode(QTableView::ScrollPerPixel);
  for (int column = 0; column < cColumns; ++column) view.setColumnWidth(column, cColumnWidth);
  view.show();
  Settle();
  Keep(times, "fill", [&] {
    for (int row = 0; row < cRows; ++row) {
      QList<QStandardItem*> items;
      for (const std::string& cell : RowTexts(row))
        items.append(new QStandardItem(QString::fromStdString(cell)));
      model.appendRow(items);
    }
  });
  Keep(times, "first paint", [&] {
    view.viewport()->repaint();
    Settle();
  });
  Keep(times, "scroll to the end", [&] { ScrollThrough(view); });
  Keep(times, "edit 100 cells", [&] {
    for (int row = 0; row < cEdits; ++row) {
      view.setCurrentIndex(model.index(row, 1));
      view.edit(model.index(row, 1));
      TypeAndTake(view);
    }
  });
}

void Late(Times& times) {
  GridForm ours;
  int made = 0;
  ours.grid.lateCells = [&made](int row) {
    ++made;
    return RowTexts(row);
  };
  Keep(times, "late rows", [&] {
    ours.grid.AddLateRows(0, cRows);
    ours.grid.Update();
    ours.grid.Select(cRows - 1);
    ours.grid.Update();
  });
  bench::Check(made < 1000, "grid_bench", "leaving rows unmade");
}

bool Report(const Times& ours, const Times& toolkits) {
  bool met = true;
  for (const auto& [what, toolkit] : toolkits) {
    const double own = ours.at(what);
    std::printf("%-20s %8.1f ms   toolkit %8.1f ms   ratio %.2f (limit %.1f)\n", what.c_str(), own,
                toolkit, own / toolkit, cMostRatio);
    met &= own <= cMostRatio * toolkit;
  }
  const double late = ours.at("late rows");
  std::printf("%-20s %8.1f ms   limit %.0f ms\n", "late rows, last one", late, cFrame);
  return met && late <= cFrame;
}

}  // namespace

int mavro::Application::Main(ArgumentList&) {
  Times ours;
  Times toolkits;
  for (int round = 0; round < cRounds; ++round) {
    Ours(ours);
    Toolkits(toolkits);
    Late(ours);
  }
  return Report(ours, toolkits) ? 0 : 1;
}

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(argc, argv);
}
