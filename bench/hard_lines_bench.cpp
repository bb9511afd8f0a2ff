// hard_lines_bench: files with lines that the editing component would measure for minutes, opened
// up to the painted window on the offscreen platform. Processor time of this process, so that a
// busy machine doesn't count. Limit: 2 s each.

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>

#include "Application.h"
#include "Entry.h"
#include "IdeDriver.h"
#include "LongLines.h"
#include "ScopedVariable.h"
#include "editor/EditTabs.h"

using namespace zendry;

namespace {

constexpr double cMostOpening = 2000;  // ms

double Used(const std::function<void()>& act) {
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
  };
  const double start = now();
  act();
  return now() - start;
}

std::string Repeated(const std::string& part, size_t times) {
  std::string text;
  text.reserve(part.size() * times);
  for (size_t i = 0; i < times; ++i) text += part;
  return text;
}

std::string Numbers(size_t bytes) {
  std::string text;
  text.reserve(bytes + 10);
  for (int i = 0; text.size() < bytes; ++i) text += std::to_string(i) + ",";
  text.resize(bytes);
  return text;
}

bool Opening(test::IdeDriver& ide, const char* what, const std::string& text) {
  const std::string path = ide.files.Write("text.json", text);
  const double time = Used([&] {
    theMainForm->editTabs.OpenFile(path);
    test::WidgetOf(*theMainForm)->grab();
  });
  theMainForm->editTabs.CloseAll();
  std::printf("%-44s %7.0f ms, limit %.0f\n", what, time, cMostOpening);
  return time <= cMostOpening;
}

bool OpeningAll(test::IdeDriver& ide) {
  const std::string ordinary = Numbers(mavro::LongLineFolder::cOrdinaryBytes);
  bool met = Opening(ide, "one line of 200 MB", Numbers(200'000'000));
  met = Opening(ide, "one line of 20 MB, letters of two bytes", Repeated("\u00E4", 10'000'000)) &&
        met;
  met = Opening(ide, "one line of 20 MB, zeros", std::string(20'000'000, '\0')) && met;
  met = Opening(ide, "100 lines just short enough", Repeated(ordinary + "\n", 100)) && met;
  return Opening(ide, "10,000 lines one byte longer", Repeated(ordinary + "1\n", 10'000)) && met;
}

}  // namespace

int mavro::Application::Main(ArgumentList&) {
  const test::ScopedVariable noDisplay("DISPLAY", "");
  test::IdeDriver ide;
  bool met = true;
  ide.Run({}, [&] { met = OpeningAll(ide); });
  return met ? 0 : 1;
}

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(argc, argv);
}
