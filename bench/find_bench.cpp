// Searches beside those who do nothing else, in the same run, each the best of its rounds:
// - find_bench files: 1,000 files of 300,000 lines, and 200 MB of such files, into a shown list,
//   beside "rg -F -n -j1" into a pipe. Limit: its time.
// - find_bench editor: the next hit at the far end of a text of 50 MB, beside "grep -F -b" on it
//   (limit: 1.5 times its time), and 100,000 hits replaced (limit: a second).

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Application.h"
#include "Entry.h"
#include "FindCommands.h"
#include "Form.h"
#include "ListView.h"
#include "SciEditor.h"
#include "SearchState.h"
#include "SysImpl.h"
#include "base/ControlBytes.h"
#include "search/FileSearch.h"

namespace {

namespace fs = std::filesystem;

constexpr int cFiles = 1000;
constexpr int cLinesOfFile = 300;
constexpr int cRounds = 7;
constexpr double cMostOfGrep = 1.5;
constexpr double cMostReplacing = 1000;

// Processor time of this process, or of the programs that it has run, in milliseconds: on a busy
// machine the time of a clock says nothing.
double Used(int who) {
  rusage used;
  getrusage(who, &used);
  const auto milliseconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
  };
  return milliseconds(used.ru_utime) + milliseconds(used.ru_stime);
}

double Best(int who, const std::function<void()>& job) {
  double best = 1e9;
  for (int round = 0; round < cRounds; ++round) {
    const double start = Used(who);
    job();
    best = std::min(best, Used(who) - start);
  }
  return best;
}

double Ours(const std::function<void()>& job) {
  return Best(RUSAGE_SELF, job);
}

// The least that a program takes to look through files, printing into a pipe.
double Peers(const std::string& command) {
  return Best(RUSAGE_CHILDREN, [&] {
    FILE* pipe = popen(("exec " + command).c_str(), "r");
    static char buffer[1 << 16];
    while (pipe && fread(buffer, 1, sizeof buffer, pipe) > 0) {
    }
    if (pipe) pclose(pipe);
  });
}

// Lines of a source; a hundred of them have "frequent", one of all files has "Needle".
std::string SourceText(int file, int lines) {
  std::string text;
  for (int line = 0; line < lines; ++line) {
    const std::string number = std::to_string(file * lines + line);
    text += line % (lines / 100) == 0
                ? "  frequent.Add(value" + number + ", other);\n"
                : "  const int value" + number + " = Compute(first, second);\n";
  }
  return text;
}

std::vector<std::string> WriteFiles(const std::string& folder, int lines) {
  std::vector<std::string> paths;
  for (int i = 0; i < cFiles; ++i) {
    paths.push_back(folder + "/source" + std::to_string(i) + ".cpp");
    std::ofstream(paths.back()) << SourceText(i, lines) << (i == 700 ? "Needle\n" : "");
  }
  return paths;
}

struct NoTexts : zendry::OpenTexts {
  zendry::OpenText* At(const std::string&) override { return nullptr; }
};

// Fills a list as the panel of results does.
struct Listed : zendry::SearchListener {
  explicit Listed(mavro::ListView& itsList) : list(itsList) {
    list.lateCells = [this](int row) {
      const Place& place = places[static_cast<size_t>(row)];
      return std::vector<std::string>{
          zendry::MarkControlBytes(files[place.file]), std::to_string(place.line),
          zendry::MarkControlBytes(std::string_view(texts).substr(place.text, place.length))};
    };
  }
  ~Listed() override {
    ShowKept();
    list.Update();
    list.lateCells = nullptr;
  }
  void Found(const std::string& path, size_t line, int, std::string_view text) override {
    if (files.empty() || files.back() != path) files.push_back(path);
    places.push_back({files.size() - 1, line, texts.size(), text.size()});
    texts += text;
  }
  void MissedFollow(size_t) override {}
  bool GoesOn(size_t, size_t) override {
    ShowKept();
    return true;
  }
  void ShowKept() {
    const int shown = list.rowCount;
    list.AddLateRows(shown, static_cast<int>(places.size()) - shown);
  }

  struct Place {
    size_t file, line, text, length;
  };
  mavro::ListView& list;
  std::vector<Place> places;
  std::vector<std::string> files;
  std::string texts;
};

bool Report(const char* what, double ours, double peers, double most) {
  std::printf("%-44s %8.1f ms   peer %8.1f ms   ratio %.2f (limit %.1f)\n", what, ours, peers,
              ours / peers, most);
  return ours <= most * peers;
}

bool BenchFiles(const std::string& folder, const char* size, int lines) {
  const std::vector<std::string> paths = WriteFiles(folder, lines);
  mavro::Form form;
  mavro::ListView list;
  list.dock = mavro::Dock::cFill;
  for (const char* title : {"file", "line", "text"}) list.AddColumn(title, 150);
  form.Add(&list);
  form.CreateControl();
  SetStateTree(&form, mavro::cAboutToShow);
  form.impl->Show(true);
  bool isGood = true;
  const std::pair<const char*, const char*> words[] = {
      {"Needle", "rare"}, {"frequent", "frequent"}, {"NoSuchWord", "none"}};
  for (const auto& [word, kind] : words) {
    for (const bool matchCase : {true, false}) {
      size_t lines = 0;
      const double ours = Ours([&] {
        list.Clear();
        NoTexts none;
        Listed listed(list);
        lines = SearchFiles(paths, {word, matchCase}, none, listed).lines;
      });
      const double peers = Peers("rg -F -n -j1 --no-ignore --color never " +
                                 std::string(matchCase ? "" : "-i ") + word + " " + folder);
      const std::string what = std::string(size) + ", " + kind +
                               (matchCase ? "" : ", case folded") + ", " + std::to_string(lines) +
                               " lines";
      isGood = Report(what.c_str(), ours, peers, 1.0) && isGood;
    }
  }
  for (const std::string& path : paths) fs::remove(path);
  return isGood;
}

bool BenchEditor(const std::string& folder) {
  const std::string path = folder + "/large.cpp";
  {
    std::ofstream file(path);
    for (int i = 0; file.tellp() < 50'000'000; ++i) file << SourceText(i, cLinesOfFile);
    file << "Needle\n";
  }
  mavro::Form form;
  mavro::SciEditor editor;
  editor.dock = mavro::Dock::cFill;
  form.Add(&editor);
  form.CreateControl();
  SetStateTree(&form, mavro::cAboutToShow);
  form.impl->Show(true);
  if (!editor.load(path).Ok()) return false;
  mavro::theSearch.findText = "Needle";
  mavro::theSearch.matchCase = true;
  const double ours = Ours([&] {
    editor.Select(0, 0);
    FindNext(editor, mavro::FindWay::cForward);
  });
  const double peers = Peers("grep -F -b Needle " + path);
  bool isGood = Report("Find next, 50 MB, at the far end", ours, peers, cMostOfGrep);
  std::string text;
  for (int i = 0; i < 100'000; ++i) text += "  frequent.Add(value);\n";
  mavro::theSearch.findText = "value";
  mavro::theSearch.replaceText = "number";
  const double replacing = Ours([&] {
    editor.TakeText(text, mavro::cPlainText, "");
    ReplaceAll(editor, mavro::ReplaceIn::cWholeFile);
  });
  std::printf("%-44s %8.1f ms   (limit %.0f)\n", "100,000 hits replaced, and the text set",
              replacing, cMostReplacing);
  return isGood && replacing < cMostReplacing;
}

}  // namespace

int mavro::Application::Main(ArgumentList& arguments) {
  std::string folder = fs::temp_directory_path() / "find-bench-XXXXXX";
  if (!mkdtemp(folder.data())) return 2;
  const std::string wanted = arguments.empty() ? "" : arguments.front();
  bool isGood = true;
  if (wanted != "editor") isGood = BenchFiles(folder, "300,000 lines", cLinesOfFile) && isGood;
  if (wanted != "editor") isGood = BenchFiles(folder, "200 MB", 4500) && isGood;
  if (wanted != "files") isGood = BenchEditor(folder) && isGood;
  fs::remove_all(folder);
  return isGood ? 0 : 1;
}

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(argc, argv);
}
