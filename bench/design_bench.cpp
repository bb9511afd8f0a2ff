// design_bench: the form designer on the offscreen platform. A form of 200 controls from the
// command to the painted surface, and saved, beside a program that creates the same controls;
// then a step of a drag, from the mouse's move to the painted control, in forms of 200, 1,000 and
// 5,000 controls; and what a key in the source of a form costs. Limits: 50 ms to open and to
// save, 8 ms for a step.

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "DesignTest.h"
#include "Entry.h"
#include "IdeDriver.h"
#include "ScopedVariable.h"
#include "Shortest.h"
#include "editor/EditTabs.h"
#include "frame/ToolActs.h"
#include "frmedt/RegionMarks.h"

using namespace zendry;
namespace {

constexpr int cControls = 200;
constexpr int cRounds = 11;
constexpr int cSteps = 60;
constexpr int cInRow = 20;
constexpr double cMost = 50;     // ms
constexpr double cMostStep = 8;  // ms

bool isWithinLimits = true;

// The processor time of the program in milliseconds: it has one thread, and a busy machine doesn't
// count.
double Now() {
  return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double Since(double start) {
  return Now() - start;
}

double Median(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

void Report(const std::string& what, const std::vector<double>& times, double limit) {
  const double median = Median(times);
  isWithinLimits &= median <= limit;
  std::printf("%-44s median %7.2f ms, most %7.2f, limit %.0f\n", what.c_str(), median,
              *std::max_element(times.begin(), times.end()), limit);
}

constexpr const char* cClasses[] = {"Button", "Edit", "Label", "CheckBox", "Panel"};

std::string NameOf(int number) {
  return "control" + std::to_string(number);
}

mavro::Rect PlaceOf(int number) {
  return {8 + (number % cInRow) * 32, 8 + (number / cInRow) * 28, 26, 20};
}

std::string ClassOf(int number) {
  return cClasses[number % std::size(cClasses)];
}

// The lines between the markers.
std::string DeclarationsOf(int count) {
  std::string decl;
  for (int i = 0; i < count; ++i) decl += "\t" + ClassOf(i) + " " + NameOf(i) + ";\n";
  return decl;
}

std::string StatementsOf(int count) {
  const int height = 40 + (count / cInRow) * 28;
  std::string init = "\t\tthis->SetBounds(0, 0, 700, " + std::to_string(height) + ");\n";
  for (int i = 0; i < count; ++i) {
    const mavro::Rect at = PlaceOf(i);
    init += "\t\t//!<" + ClassOf(i) + ">\n\t\t" + NameOf(i) + ".SetBounds(" +
            std::to_string(at.left) + ", " + std::to_string(at.top) + ", " +
            std::to_string(at.width) + ", " + std::to_string(at.height) + ");\n";
    if (ClassOf(i) != "Panel") init += "\t\t" + NameOf(i) + ".text = \"T\";\n";
    init += "\t\tthis->Add(&" + NameOf(i) + ");\n";
  }
  return init;
}

std::string SourceOf(int count) {
  return "#include <mavro>\n\nclass Main : public Form {\n\ttypedef Main "
         "This;\npublic:\n\t//!decl\n" +
         DeclarationsOf(count) +
         "\t//!end\n\tMain() { Initialize(); }\nprivate:\n\tvoid Initialize() {\n\t\t//!init\n" +
         StatementsOf(count) + "\t\t//!end\n\t}\n};\n";
}

// What the source's program does.
class Direct : public mavro::Form {
 public:
  explicit Direct(int count) {
    SetBounds(0, 0, 700, 400);
    for (int i = 0; i < count; ++i) {
      controls.push_back(Make(i));
      mavro::Control& its = *controls.back();
      const mavro::Rect at = PlaceOf(i);
      its.SetBounds(at.left, at.top, at.width, at.height);
      if (ClassOf(i) != "Panel") its.text = "T";
      Add(&its);
    }
  }

 private:
  static std::unique_ptr<mavro::Control> Make(int number) {
    switch (number % 5) {
      case 0:
        return std::make_unique<mavro::Button>();
      case 1:
        return std::make_unique<mavro::Edit>();
      case 2:
        return std::make_unique<mavro::Label>();
      case 3:
        return std::make_unique<mavro::CheckBox>();
      default:
        return std::make_unique<mavro::Panel>();
    }
  }

  std::vector<std::unique_ptr<mavro::Control>> controls;
};

// Paints what is due now; the window system's answers are not waited for.
void Paint() {
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents();
}

void MeasureDirect() {
  std::vector<double> times;
  for (int round = 0; round < cRounds; ++round) {
    const auto start = Now();
    Direct form(cControls);
    test::RunForm(form, true, [&] {
      Paint();
      times.push_back(Since(start));
    });
  }
  Report("200 controls created by a program", times, cMost);
}

void MeasureSession(const char* what, int count, double limit) {
  std::vector<double> opened, saved;
  test::IdeDriver ide;
  const std::string path = ide.files.Write("main.cpp", SourceOf(count));
  ide.Run({}, [&] {
    theMainForm->editTabs.OpenFile(path);
    for (int round = 0; round < cRounds; ++round) {
      double start = 0, saving = 0;
      ide.OnDialog([&](mavro::Form& form) {
        auto* frame = dynamic_cast<DesignFrame*>(&form);
        bench::Check(frame, "design_bench", "opening the designer");
        Paint();
        opened.push_back(Since(start));
        if (const CtrlRec* first = frame->editor.FindControl(NameOf(0))) {
          frame->editor.Select(first->ctrl, false);
          frame->Command(cMoveRightCommand);
        }
        saving = Now();
        frame->Command(cSaveAndCloseCommand);
      });
      start = Now();
      theToolActs.OnCommand(cOpenDesignerCommand);
      bench::Check(saving > start, "design_bench", "the way through the designer");
      Paint();
      saved.push_back(Since(saving));
    }
  });
  Report(std::string(what) + ", opened", opened, limit);
  Report(std::string(what) + ", saved", saved, limit);
}

// What is done after a key in the source of a form: its regions are looked for, and counted as
// folds in a text that isn't too long for it.
void MeasureKey(const char* what, size_t length) {
  constexpr int cKeys = 50;
  std::vector<double> times;
  test::IdeDriver ide;
  std::string text = SourceOf(cControls);
  while (text.size() < length) text += "// a comment line in a large source\n";
  text.resize(length);
  const std::string path = ide.files.Write("main.cpp", text);
  ide.Run({}, [&] {
    CppEditor& editor = *theMainForm->editTabs.OpenFile(path);
    for (int key = 0; key < cKeys; ++key) {
      editor.regionsSeen = 0;
      const double start = Now();
      RegionMarks::Update(editor);
      times.push_back(Since(start));
    }
  });
  Report(what, times, cMostStep);
}

class PaintCount : public QObject {
 public:
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Paint;
    return false;
  }
  int count = 0;
};

// Drags one of the controls over the others.
class Dragging : public test::DesignTest {
 public:
  void TestBody() override {}

  void Measure(int count) {
    std::vector<double> times;
    PaintCount paints;
    const auto start = Now();
    double shown = 0;
    Design(DeclarationsOf(count), StatementsOf(count), [&] {
      Paint();
      shown = Since(start);
      test::WidgetOf(Live(NameOf(0)))->installEventFilter(&paints);
      const QPoint from(20, 18);
      Press(from.x(), from.y());
      for (int step = 1; step <= cSteps; ++step) {
        const auto moved = Now();
        MoveTo(from.x() + 5 * step, from.y() + 3 * step);
        Paint();
        times.push_back(Since(moved));
      }
      Release(from.x() + 5 * cSteps, from.y() + 3 * cSteps);
    });
    bench::Check(paints.count >= cSteps, "design_bench", "painting each step");
    std::printf("%d controls: the window is shown after %.0f ms\n", count, shown);
    Report(std::to_string(count) + " controls, a step of a drag", times, cMostStep);
  }
};

}  // namespace

int mavro::Application::Main(ArgumentList&) {
  const test::ScopedVariable noDisplay("DISPLAY", "");
  {
    const test::ScriptedDialogs dialogs;
    MeasureDirect();
  }
  MeasureSession("a form without controls", 0, cMost);
  MeasureSession("a form of 200 controls", cControls, cMost);
  MeasureKey("a key in a source of 128 KiB", RegionMarks::cMostFolded);
  MeasureKey("a key in a source of 1.4 MB", 1'400'000);
  for (const int count : {200, 1000, 5000}) Dragging().Measure(count);
  return isWithinLimits ? EXIT_SUCCESS : EXIT_FAILURE;
}

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(argc, argv);
}
