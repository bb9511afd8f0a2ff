// The cost of keeping unsaved text while one types: the first copy of a text, and the keep that
// follows each 200 bytes typed, in a source of 5,000 lines and in one of 50 MB. Times are those of
// the clock, with the sync to the disk of the home folder, and of the processor alone.
//
//   rescue_bench
//
// Limit: a keep in the large text costs at most twice that in the small one.

#include <stdlib.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
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
#include "rescue/TextRescue.h"

namespace {

constexpr int cKeeps = 101;
constexpr int cCopies = 5;
constexpr double cMostToSmall = 2;
constexpr size_t cLargeBytes = 50'000'000;
constexpr int cSmallLines = 5000;

struct Cost {
  double clock, processor;  // milliseconds
};

double ProcessorTime() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

Cost Measured(const std::function<void()>& act) {
  const double processor = ProcessorTime();
  const auto start = std::chrono::steady_clock::now();
  act();
  const std::chrono::duration<double, std::milli> clock = std::chrono::steady_clock::now() - start;
  return {clock.count(), ProcessorTime() - processor};
}

Cost Median(const std::vector<Cost>& costs) {
  const auto middle = [&costs](double Cost::*member) {
    std::vector<double> values;
    for (const Cost& cost : costs) values.push_back(cost.*member);
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
  };
  return {middle(&Cost::clock), middle(&Cost::processor)};
}

// An editor wired to its rescue as the program's is.
class KeptEditor : public mavro::SciEditor, public zendry::RescueSource {
 public:
  std::string RescuePath() const override { return fileName; }
  zendry::TextFacts RescueFacts() const override { return {}; }
  size_t PieceLength() const override { return WholeLength(); }
  void AppendPiece(size_t start, size_t end, std::string& to) const override {
    AppendWhole(start, end, to);
  }
  void onTextWillChange(long position, long removed, long added) override {
    rescue.WillChange(position, removed, added);
  }

  zendry::TextRescue rescue{*this};
};

struct BenchForm : mavro::Form {
  KeptEditor editor;
  std::string path;
  Cost copy{}, keep{}, type{};

  explicit BenchForm(std::string itsPath) : path(std::move(itsPath)) {
    SetBounds(0, 0, 1000, 700);
    editor.dock = mavro::Dock::cFill;
    Add(&editor);
    onShow.Add_H(this, &BenchForm::Shown);
  }

  void Type() {
    for (int i = 0; i < zendry::TextRescue::cMostBytesBehind; ++i)
      editor.Send(mavro::SCI_REPLACESEL, 0, i % 40 ? "x" : "\n");
  }
  void Keep() {
    editor.rescue.Changed(1, {});
    editor.rescue.KeepNow();
  }

  // Typed in the middle of the text.
  void Shown(mavro::NotifyArgs&) {
    bench::Check(editor.load(path).Ok(), "rescue_bench", "loading");
    const int middle = editor.LineStart(editor.LineCount() / 2);
    editor.Select(middle, middle);
    std::vector<Cost> copies, keeps, types;
    for (int i = 0; i < cCopies; ++i) {
      Type();
      editor.rescue.Drop();
      copies.push_back(Measured([this] { Keep(); }));
    }
    for (int i = 0; i < cKeeps; ++i) {
      types.push_back(Measured([this] { Type(); }));
      keeps.push_back(Measured([this] { Keep(); }));
    }
    copy = Median(copies);
    keep = Median(keeps);
    type = Median(types);
    Close();
  }
};

void WriteSource(const std::string& path, size_t bytes, int lines) {
  std::ofstream file(path, std::ios::binary);
  for (int i = 0; bytes > 0 ? static_cast<size_t>(file.tellp()) < bytes : i < lines; ++i)
    file << "  int value" << i << " = function(" << i << ");\n";
}

Cost Bench(const char* name, const std::string& path) {
  BenchForm form(path);
  form.Run(false);
  std::printf("%s, %.1f MB\n", name, static_cast<double>(std::filesystem::file_size(path)) / 1e6);
  std::printf("  whole copy: %.2f ms, processor %.2f ms\n", form.copy.clock, form.copy.processor);
  std::printf("  keep after 200 bytes: %.3f ms, processor %.3f ms; typing them %.3f ms\n",
              form.keep.clock, form.keep.processor, form.type.processor);
  return form.keep;
}

}  // namespace

int mavro::Application::Main(ArgumentList&) {
  char folder[] = "/tmp/rescue_bench-XXXXXX";
  if (!mkdtemp(folder)) return 1;
  setenv("HOME", folder, 1);
  const std::string path = std::string(folder) + "/source.cpp";
  WriteSource(path, 0, cSmallLines);
  const Cost small = Bench("5,000 lines", path);
  WriteSource(path, cLargeBytes, 0);
  const Cost large = Bench("large text", path);
  std::filesystem::remove_all(folder);
  const double ratio = large.clock / small.clock;
  std::printf("large to small: %.2f, processor %.2f (limit %.0f)\n", ratio,
              large.processor / small.processor, cMostToSmall);
  return ratio <= cMostToSmall ? 0 : 1;
}

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(argc, argv);
}
