// The processor time from the command to the painted page of help: the first time, when all indexes
// are read and the window is made, and afterwards. Limits: 50 ms and 10 ms.
//
//   help_bench FOLDER   the folder with the indexes

#include <QApplication>
#include <QTextBrowser>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "Application.h"
#include "Form.h"
#include "SysImpl.h"
#include "help/HelpWindow.h"

namespace {

constexpr double cFirstLimit = 50;
constexpr double cNextLimit = 10;
constexpr int cRounds = 5;
constexpr const char* cWords[] = {"printf",  "open",   "push_back", "string", "Button",
                                  "onClick", "select", "vector",    "prinft", "clone"};

// Processor time: on a machine with other work that is what the page costs.
double Now() {
  return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// Shows the page of a word and paints it.
double ShowPage(zendry::HelpWindow& help, const char* word) {
  const double start = Now();
  help.showHelp(word);
  QCoreApplication::processEvents();
  for (QWidget* widget : QApplication::allWidgets())
    if (auto* page = qobject_cast<QTextBrowser*>(widget); page && page->isVisible())
      page->viewport()->repaint();
  return Now() - start;
}

bool Report(const char* what, double time, double limit) {
  std::printf("%-28s %8.1f ms   (limit %.0f)\n", what, time, limit);
  return time <= limit;
}

// The main window: the help window is another one.
struct Window : mavro::Form {
  explicit Window(std::string itsFolder) : folder(std::move(itsFolder)) {
    onShow.Add_H(this, &Window::OnShown);
  }
  void OnShown(mavro::NotifyArgs&) {
    std::vector<double> first, next;
    for (int round = 0; round < cRounds; ++round) {
      zendry::HelpWindow help({folder, ""});
      first.push_back(ShowPage(help, "printf"));
      for (const char* word : cWords) {
        next.push_back(ShowPage(help, word));
        if (round == 0) std::printf("  %-26s %8.1f ms\n", word, next.back());
      }
      help.Close();
    }
    std::sort(first.begin(), first.end());
    std::sort(next.begin(), next.end());
    isFast = Report("first, median of rounds", first[first.size() / 2], cFirstLimit);
    isFast &= Report("after, median of words", next[next.size() / 2], cNextLimit);
    Report("after, slowest", next.back(), cNextLimit);
    Close();
  }
  std::string folder;
  bool isFast = false;
};

}  // namespace

int mavro::Application::Main(ArgumentList& arguments) {
  if (arguments.size() != 1) {
    std::fputs("Usage: help_bench FOLDER\n", stderr);
    return 2;
  }
  Window window(arguments[0]);
  window.Run(false);
  return window.isFast ? 0 : 1;
}
