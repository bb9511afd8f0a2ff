// The cost of the framework's lists and forms beside the toolkit's own: a list of 100,000 rows of
// three columns (filled, sorted by a column, scrolled through), a tree of 100,000 nodes, a form of
// 1,000 controls. Each pair is measured in turns; medians are compared. Limits: 1.5 times the
// toolkit's time, and a frame of 16 ms for laying out the form again.

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTableView>
#include <QTreeView>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Application.h"
#include "Button.h"
#include "Edit.h"
#include "Entry.h"
#include "Form.h"
#include "Label.h"
#include "ListView.h"
#include "SysImpl.h"
#include "TreeView.h"

namespace {

constexpr int cRows = 100000;
constexpr int cColumns = 3;
constexpr int cBranches = 100;
constexpr int cControls = 1000;
constexpr int cScrolls = 200;
constexpr int cColumnWidth = 150;
constexpr int cRowPadding = 4;
constexpr int cResizes = 10;
constexpr int cRounds = 3;
constexpr double cMostRatio = 1.5;
constexpr double cFrame = 16;

using Clock = std::chrono::steady_clock;

double Milliseconds(const std::function<void()>& job) {
  const auto start = Clock::now();
  job();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double Median(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

// Times of one question: ours and the toolkit's.
struct Pair {
  std::vector<double> ours, toolkits;
};

bool Report(const char* what, const Pair& pair) {
  const double ours = Median(pair.ours);
  const double toolkits = Median(pair.toolkits);
  std::printf("%-28s %8.1f ms   toolkit %8.1f ms   ratio %.2f (limit %.1f)\n", what, ours, toolkits,
              ours / toolkits, cMostRatio);
  return ours <= cMostRatio * toolkits;
}

std::string CellText(int row, int column) {
  return column == 0 ? "row " + std::to_string(row * 7919L % cRows) : std::to_string(row + column);
}

void Settle() {
  QCoreApplication::processEvents();
}

// Through the rows from top to bottom, each step painted.
void ScrollThrough(QAbstractScrollArea& view) {
  QScrollBar* bar = view.verticalScrollBar();
  for (int i = 0; i <= cScrolls; ++i) {
    bar->setValue(static_cast<int>(static_cast<int64_t>(bar->maximum()) * i / cScrolls));
    view.viewport()->repaint();
  }
}

QAbstractScrollArea& AreaOf(const mavro::Control& control) {
  return *static_cast<QAbstractScrollArea*>(control.impl->hwnd->widget);
}

// As the framework's list shows its rows: of their height and width, without numbers.
void MakeAlike(QTableView& view) {
  view.verticalHeader()->hide();
  view.verticalHeader()->setMinimumSectionSize(1);
  view.verticalHeader()->setDefaultSectionSize(view.fontMetrics().height() + cRowPadding);
  view.horizontalHeader()->setStretchLastSection(true);
  view.setVerticalScrollMode(QTableView::ScrollPerPixel);
  for (int column = 0; column < cColumns; ++column) view.setColumnWidth(column, cColumnWidth);
}

struct ListTimes {
  Pair fill, sort, scroll;
};

void OurList(ListTimes& times) {
  mavro::Form form;
  mavro::ListView list;
  form.SetBounds(0, 0, 800, 600);
  list.dock = mavro::Dock::cFill;
  for (int column = 0; column < cColumns; ++column) list.AddColumn("column", cColumnWidth);
  form.Add(&list);
  form.CreateControl();
  SetStateTree(&form, mavro::cAboutToShow);
  form.impl->Show(true);
  Settle();
  times.fill.ours.push_back(Milliseconds([&] {
    for (int row = 0; row < cRows; ++row) {
      list.AddRow(CellText(row, 0));
      for (int column = 1; column < cColumns; ++column)
        list.SetCell(row, column, CellText(row, column));
    }
    list.Update();
    Settle();
  }));
  times.sort.ours.push_back(Milliseconds([&] {
    list.SortBy(0);
    list.Update();
    Settle();
  }));
  times.scroll.ours.push_back(Milliseconds([&] { ScrollThrough(AreaOf(list)); }));
}

void ToolkitsList(ListTimes& times) {
  QTableView view;
  QStandardItemModel model(0, cColumns);
  view.resize(800, 600);
  view.setModel(&model);
  MakeAlike(view);
  view.show();
  Settle();
  times.fill.toolkits.push_back(Milliseconds([&] {
    for (int row = 0; row < cRows; ++row) {
      QList<QStandardItem*> items;
      for (int column = 0; column < cColumns; ++column)
        items.append(new QStandardItem(QString::fromStdString(CellText(row, column))));
      model.appendRow(items);
    }
    view.viewport()->repaint();
    Settle();
  }));
  times.sort.toolkits.push_back(Milliseconds([&] {
    view.sortByColumn(0, Qt::AscendingOrder);
    view.viewport()->repaint();
    Settle();
  }));
  times.scroll.toolkits.push_back(Milliseconds([&] { ScrollThrough(view); }));
}

struct TreeTimes {
  Pair fill, expand, scroll;
};

void OurTree(TreeTimes& times) {
  mavro::Form form;
  mavro::TreeView tree;
  form.SetBounds(0, 0, 400, 600);
  tree.dock = mavro::Dock::cFill;
  form.Add(&tree);
  form.CreateControl();
  SetStateTree(&form, mavro::cAboutToShow);
  form.impl->Show(true);
  Settle();
  std::vector<mavro::TreeNode*> branches;
  times.fill.ours.push_back(Milliseconds([&] {
    for (int i = 0; i < cBranches; ++i) branches.push_back(tree.AddNode(nullptr, "branch", i));
    for (int i = cBranches; i < cRows; ++i)
      tree.AddNode(branches[static_cast<size_t>(i % cBranches)], CellText(i, 0), i);
    Settle();
  }));
  times.expand.ours.push_back(Milliseconds([&] {
    for (mavro::TreeNode* branch : branches) tree.Expand(branch);
    AreaOf(tree).viewport()->repaint();
    Settle();
  }));
  times.scroll.ours.push_back(Milliseconds([&] { ScrollThrough(AreaOf(tree)); }));
}

void ToolkitsTree(TreeTimes& times) {
  QTreeView view;
  QStandardItemModel model;
  view.resize(400, 600);
  view.setHeaderHidden(true);
  view.setUniformRowHeights(true);
  view.setModel(&model);
  view.show();
  Settle();
  std::vector<QStandardItem*> branches;
  times.fill.toolkits.push_back(Milliseconds([&] {
    for (int i = 0; i < cBranches; ++i) {
      branches.push_back(new QStandardItem("branch"));
      model.appendRow(branches.back());
    }
    for (int i = cBranches; i < cRows; ++i)
      branches[static_cast<size_t>(i % cBranches)]->appendRow(
          new QStandardItem(QString::fromStdString(CellText(i, 0))));
    Settle();
  }));
  times.expand.toolkits.push_back(Milliseconds([&] {
    for (const QStandardItem* branch : branches) view.setExpanded(branch->index(), true);
    view.viewport()->repaint();
    Settle();
  }));
  times.scroll.toolkits.push_back(Milliseconds([&] { ScrollThrough(view); }));
}

// A form of panels with a label, an edit and a button each.
struct ManyForm : mavro::Form {
  std::vector<std::unique_ptr<mavro::Control>> controls;

  template <class T>
  T& Make(mavro::Container& parent, mavro::Rect place) {
    auto made = std::make_unique<T>();
    T& control = *made;
    control.SetBounds(place.left, place.top, place.width, place.height);
    parent.Add(&control);
    controls.push_back(std::move(made));
    return control;
  }

  ManyForm() {
    SetBounds(0, 0, 1000, 800);
    for (int i = 0; i < cControls / 4; ++i) {
      auto& panel = Make<mavro::Panel>(*this, {i % 10 * 100, i / 10 * 30, 100, 30});
      Make<mavro::Label>(panel, {0, 0, 30, 20}).text = "label";
      Make<mavro::Edit>(panel, {30, 0, 40, 24}).text = "edit";
      Make<mavro::Button>(panel, {70, 0, 30, 24}).text = "ok";
    }
  }

  // From here on the width of the form decides the place of every panel's button and the width of
  // its edit.
  void DockAll() {
    using mavro::Dock;
    constexpr Dock docks[] = {Dock::cTop, Dock::cLeft, Dock::cFill, Dock::cRight};
    for (size_t i = 0; i < controls.size(); ++i) controls[i]->dock = docks[i % 4];
  }
  mavro::Control& LastEdit() { return *controls[controls.size() - 2]; }
  ~ManyForm() override {
    while (!controls.empty()) controls.pop_back();
  }
};

void Show(ManyForm& form) {
  form.CreateControl();
  SetStateTree(&form, mavro::cAboutToShow);
  form.impl->Show(true);
  Settle();
}

// Times of giving the form another width, until all its controls stand there; painting is apart.
// Answers whether they do.
bool LayOut(std::vector<double>& layouts) {
  ManyForm form;
  form.DockAll();
  Show(form);
  QWidget& window = *form.impl->hwnd->widget;
  const QWidget& edit = *form.LastEdit().impl->hwnd->widget;
  bool moved = true;
  for (int i = 0; i < cResizes; ++i) {
    const int before = edit.width();
    window.setUpdatesEnabled(false);
    layouts.push_back(Milliseconds([&] {
      form.SetSize(form.width - 10, form.height);
      Settle();
    }));
    moved &= edit.width() == before - 10;
    window.setUpdatesEnabled(true);
    Settle();
  }
  return moved;
}

void OurForm(Pair& create) {
  std::unique_ptr<ManyForm> form;
  create.ours.push_back(Milliseconds([&] {
    form = std::make_unique<ManyForm>();
    Show(*form);
  }));
}

void ToolkitsForm(Pair& create) {
  std::unique_ptr<QWidget> form;
  create.toolkits.push_back(Milliseconds([&] {
    form = std::make_unique<QWidget>();
    form->setGeometry(0, 0, 1000, 800);
    for (int i = 0; i < cControls / 4; ++i) {
      auto* panel = new QWidget(form.get());
      panel->setGeometry(i % 10 * 100, i / 10 * 30, 100, 30);
      auto* label = new QLabel("label", panel);
      label->setGeometry(0, 0, 30, 20);
      auto* edit = new QLineEdit("edit", panel);
      edit->setGeometry(30, 0, 40, 24);
      auto* button = new QPushButton("ok", panel);
      button->setGeometry(70, 0, 30, 24);
    }
    form->show();
    Settle();
  }));
}

bool Lists() {
  ListTimes list;
  for (int round = 0; round < cRounds; ++round) {
    OurList(list);
    ToolkitsList(list);
  }
  bool met = Report("list: fill", list.fill);
  met &= Report("list: sort", list.sort);
  met &= Report("list: scroll", list.scroll);
  return met;
}

bool Trees() {
  TreeTimes tree;
  for (int round = 0; round < cRounds; ++round) {
    OurTree(tree);
    ToolkitsTree(tree);
  }
  bool met = Report("tree: fill", tree.fill);
  met &= Report("tree: expand all", tree.expand);
  met &= Report("tree: scroll", tree.scroll);
  return met;
}

bool Forms() {
  Pair create;
  std::vector<double> layouts;
  bool laidOut = true;
  for (int round = 0; round < cRounds * 2; ++round) {
    OurForm(create);
    ToolkitsForm(create);
    laidOut &= LayOut(layouts);
  }
  bool met = Report("form of 1,000: create, show", create);
  const double layout = Median(layouts);
  std::printf("%-28s %8.1f ms   limit %.0f ms%s\n", "form of 1,000: resize", layout, cFrame,
              laidOut ? "" : ", but the controls stay where they were");
  return met && laidOut && layout <= cFrame;
}

}  // namespace

// All questions, or those of the kinds named: list, tree, form.
int mavro::Application::Main(ArgumentList& arguments) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const auto wanted = [&](const char* kind) {
    return arguments.empty() || std::count(arguments.begin(), arguments.end(), kind) > 0;
  };
  bool met = !wanted("list") || Lists();
  if (wanted("tree")) met &= Trees();
  if (wanted("form")) met &= Forms();
  return met ? 0 : 1;
}

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(argc, argv);
}
