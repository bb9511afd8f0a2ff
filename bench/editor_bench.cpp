// The cost of a large text in the editor: opening it up to the first paint and to rest, and a key
// typed at its end up to the painted window; beside the bare editing component with the same text.
// Times are those of this process alone, so that a busy machine doesn't count. And saving it,
// beside a copy of the file that is synced: those times pass for both while the disk works.
//
//   editor_bench [MEGABYTES...]       prints the figures; 5 and 50 by default
//
// Limits: 2 ms for a key, in a text of any size; 1.5 times the copy for saving.

#include <Qsci/qsciscintillabase.h>

#include <QApplication>
#include <QTest>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "Application.h"
#include "Entry.h"
#include "Form.h"
#include "SciEditor.h"
#include "Shortest.h"
#include "SysImpl.h"

namespace {

constexpr int cKeys = 60;
constexpr double cMostMilliseconds = 2;
constexpr int cLongestWait = 60000;
constexpr int cSaves = 9;
constexpr double cMostCopies = 1.5;  // that a save may take the time of

double Now() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double Measured(const std::function<void()>& act) {
  const double start = Now();
  act();
  return Now() - start;
}

double Passed(const std::function<void()>& act) {
  const auto start = std::chrono::steady_clock::now();
  act();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
      .count();
}

// Gives the same as a save: the new content on the disk, in a file that wasn't there.
void CopyAndSync(const std::string& path) {
  const std::string copy = path + ".copy";
  const std::string command = "cp '" + path + "' '" + copy + "' && sync '" + copy + "'";
  if (std::system(command.c_str()) != 0) std::perror("cp");
  std::filesystem::remove(copy);
}

struct Times {
  double median, last;  // of 100, the 99th
};

Times TimesOf(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return {values[values.size() / 2], values[values.size() * 99 / 100]};
}

constexpr mavro::StyleRow cStyles[] = {{1, 0x808080, 9, 0},      {2, 0x808080, 9, 0},
                                       {5, 0xEF0000, 0x1000, 0}, {6, 0x7F00, 0, 0},
                                       {10, 0, 0x1000, 0},       {mavro::StyleRow::cEnd}};

mavro::EditorLanguage Cpp() {
  mavro::EditorLanguage language;
  language.name = "cpp";
  language.styles = cStyles;
  language.keywords = "int return for if while const void";
  language.indentWords = "if for while";
  language.blockStart = "{";
  language.blockEnd = "}";
  language.wordChars = "_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  language.tipStart = "(";
  language.tipEnd = ")";
  language.tipSeparators = ",;";
  language.memberChars = ".->:";
  return language;
}

std::string Source(size_t bytes) {
  std::string text;
  text.reserve(bytes + 200);
  for (int i = 0; text.size() < bytes; ++i) {
    const std::string number = std::to_string(i);
    text += "// Function " + number + " of a generated source.\nint function" + number +
            "(int a, int b) {\n\tfor (int i = 0; i < b; ++i) a += i * " + number +
            ";\n\treturn a;\n}\n\n";
  }
  return text;
}

struct EditorForm : mavro::Form {
  mavro::SciEditor editor;
  const mavro::EditorLanguage cpp = Cpp();

  EditorForm() {
    SetBounds(0, 0, 1000, 700);
    editor.dock = mavro::Dock::cFill;
    editor.language = &cpp;
    editor.options->monospaced = true;
    editor.options->fontSize = 10;
    editor.options->foldMargin = true;
    editor.options->lineNumbers = true;
    Add(&editor);
  }
};

void TypeAndPaint(QWidget* widget, std::vector<double>& into) {
  for (int i = 0; i < cKeys; ++i) {
    into.push_back(Measured([&] {
      QTest::keyClick(widget, i % 10 == 9 ? Qt::Key_Return : Qt::Key_X);
      QCoreApplication::sendPostedEvents();
      QCoreApplication::processEvents();
    }));
    QTest::qWait(1);
  }
}

// The bare component, set up as an application would that knows nothing of all this.
Times BareTimes(const std::string& text) {
  QsciScintillaBase bare;
  bare.resize(1000, 700);
  bare.SendScintilla(QsciScintillaBase::SCI_SETCODEPAGE, 65001UL);
  bare.SendScintilla(QsciScintillaBase::SCI_SETUNDOCOLLECTION, 0UL);
  bare.SendScintilla(QsciScintillaBase::SCI_ADDTEXT, text.size(), text.data());
  bare.SendScintilla(QsciScintillaBase::SCI_SETUNDOCOLLECTION, 1UL);
  bare.show();
  bare.setFocus();
  bare.SendScintilla(QsciScintillaBase::SCI_DOCUMENTEND);
  QTest::qWait(50);
  std::vector<double> keys;
  TypeAndPaint(&bare, keys);
  return TimesOf(keys);
}

struct BenchForm : EditorForm {
  std::string path;
  bool met = true;

  bool IsStyled() const { return editor.Send(mavro::SCI_GETENDSTYLED) >= editor.Length(); }

  explicit BenchForm(std::string itsPath) : path(std::move(itsPath)) {
    onShow.Add_H(this, &BenchForm::Shown);
  }

  // Saves and copies in turns; answers what a save takes of the time of a copy.
  double MeasureSaves() {
    std::vector<double> saves, copies;
    for (int i = 0; i < cSaves; ++i) {
      copies.push_back(Passed([&] { CopyAndSync(path); }));
      saves.push_back(
          Passed([&] { bench::Check(editor.save(path).Ok(), "editor_bench", "saving"); }));
    }
    const double save = TimesOf(saves).median, copy = TimesOf(copies).median;
    std::printf("  saved %.1f ms, cp and sync %.1f ms: %.2f (limit %.1f)\n", save, copy,
                save / copy, cMostCopies);
    return save / copy;
  }

  void Shown(mavro::NotifyArgs&) {
    QWidget* widget = editor.impl->hwnd->widget;
    editor.Focus();
    const double paint = Measured([&] {
      bench::Check(editor.load(path).Ok(), "editor_bench", "loading");
      editor.Update();
    });
    const double rest = paint + Measured([] { QTest::qWait(300); });
    const double end = Measured([&] {
      editor.Send(mavro::SCI_DOCUMENTEND);
      editor.Update();
    });
    bool isStyled = false;
    const double styled = end + Measured([&] {
                            isStyled = QTest::qWaitFor([this] { return IsStyled(); }, cLongestWait);
                          });
    std::vector<double> keys;
    TypeAndPaint(widget, keys);
    const Times times = TimesOf(keys);
    std::printf(
        "editor: painted %.1f ms, at rest %.1f ms; its end painted %.1f ms, at rest %.1f ms\n"
        "  key at the end: median %.3f ms, 99 of 100 %.3f ms (limit %.1f)\n",
        paint, rest, end, styled, times.median, times.last, cMostMilliseconds);
    const double copies = MeasureSaves();
    met = times.median <= cMostMilliseconds && copies <= cMostCopies && isStyled && !editor.dirty;
    Close();
  }
};

bool Bench(double megabytes) {
  const std::string path = std::filesystem::temp_directory_path() / "editor_bench.cpp";
  const std::string text = Source(static_cast<size_t>(megabytes * 1e6));
  std::ofstream(path, std::ios::binary) << text;
  std::printf("%g MB\n", megabytes);
  bool met = false;
  {
    BenchForm form(path);
    form.Run(false);
    met = form.met;
  }
  std::filesystem::remove(path);
  const Times bare = BareTimes(text);
  std::printf("bare component: key at the end: median %.3f ms, 99 of 100 %.3f ms\n\n", bare.median,
              bare.last);
  return met;
}

}  // namespace

int mavro::Application::Main(ArgumentList& arguments) {
  bool met = true;
  if (arguments.empty()) arguments = {"5", "50"};
  for (const std::string& megabytes : arguments) met = Bench(std::atof(megabytes.c_str())) && met;
  return met ? 0 : 1;
}

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(argc, argv);
}
