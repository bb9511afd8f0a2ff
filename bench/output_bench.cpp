// How fast a panel takes what a tool prints: 100,000 lines of 80 characters into a memo that is
// shown, once from the program itself and once from a child in a blocking run, until all of it is
// on the screen. Limits: 3 seconds, and a cost per line that doesn't grow with what is there.

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "Application.h"
#include "Edit.h"
#include "Entry.h"
#include "Form.h"
#include "SpawnConsole.h"

namespace {

constexpr int cLines = 100000;
constexpr int cWidth = 80;
constexpr int cSample = 10000;
constexpr double cMostSeconds = 3;
constexpr double cMostRatio = 2;

using Clock = std::chrono::steady_clock;

double Since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

struct OutputForm : mavro::Form {
  mavro::Memo output;
  mavro::SpawnConsole console;
  bool met = true;

  OutputForm() {
    SetBounds(0, 0, 900, 300);
    output.dock = mavro::Dock::cFill;
    output.readOnly = true;
    output.monospaced = true;
    Add(&output);
    onShow.Add_H(this, &OutputForm::Shown);
  }

  void Shown(mavro::NotifyArgs&) {
    ByProgram();
    output.Clear();
    ByChild();
    Close();
  }

  // Everything appended is on the screen when this returns; the windows stay alive meanwhile.
  void AppendSample() {
    const std::string line = std::string(cWidth, 'x') + "\r\n";
    for (int i = 0; i < cSample; ++i) {
      output.Append(line);
      if (i % 100 == 0) mavro::theApplication.ProcessMessages();
    }
    output.Update();
  }

  void ByProgram() {
    std::vector<double> samples;
    const auto start = Clock::now();
    for (int i = 0; i < cLines; i += cSample) {
      const auto sampleStart = Clock::now();
      AppendSample();
      samples.push_back(Since(sampleStart));
    }
    Report("appended by the program", Since(start));
    const double ratio = samples.back() / samples.front();
    std::printf("  first %d: %.2f us a line, last %d: %.2f us a line, ratio %.2f (limit %.1f)\n",
                cSample, samples.front() / cSample * 1e6, cSample, samples.back() / cSample * 1e6,
                ratio, cMostRatio);
    met = met && ratio <= cMostRatio;
  }

  void ByChild() {
    char file[] = "/tmp/output_bench-XXXXXX";
    const int descriptor = mkstemp(file);
    const std::string line = std::string(cWidth, 'x') + "\n";
    for (int i = 0; i < cLines; ++i)
      if (write(descriptor, line.data(), line.size()) < 0) std::abort();
    close(descriptor);
    console.SetOutput([this](const std::string& printed) { output.Append(printed + "\r\n"); }, "");
    const auto start = Clock::now();
    console.Execute(std::string("cat ") + file, mavro::SpawnConsole::Mode::cBlocking);
    output.Update();
    Report("printed by a child", Since(start));
    unlink(file);
  }

  void Report(const char* what, double seconds) {
    std::printf("%s: %d lines shown in %.3f s (limit %.1f s)\n", what, output.LineCount() - 1,
                seconds, cMostSeconds);
    met = met && seconds <= cMostSeconds && output.LineCount() == cLines + 1;
  }
};

}  // namespace

int mavro::Application::Main(ArgumentList&) {
  OutputForm form;
  form.Run(false);
  return form.met ? 0 : 1;
}

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(argc, argv);
}
