#pragma once

#include <deque>
#include <string>

#include "Button.h"
#include "Image.h"
#include "Label.h"
#include "Scroller.h"

namespace mavro {
struct Action;
}

namespace zendry {

struct RecentList;

// The page of a start without a file: how to begin, where the user was last, the demos, and the
// keys that matter. It covers the tabs of files until the first file or project is open.
class StartPage : public mavro::Scroller {
 public:
  StartPage();

  // False if the user has said that the page shall not come.
  static bool IsWanted();
  // Makes the rows; called once, before the window exists.
  void Fill();
  // Grays the rows whose commands can't act now.
  void UpdateRows();
  // The first row that can act.
  mavro::Control* FirstRow();

  // A row that runs a command, begins a new project, or opens a file used before.
  struct Row {
    mavro::Button button;
    mavro::Action* action = nullptr;
    std::string path;
    int wizardPage = -1;  // of the dialog for new projects, for the rows that open it
    int demo = -1;
  };
  std::deque<Row> rows;
  mavro::CheckBox showAgain;

 private:
  struct Place {
    int x = 0, y = 0;
  };
  void AddHeading(const char* heading, Place& at);
  Row& AddRow(const std::string& caption, Place& at);
  void AddCommands(Place& at);
  void AddKeys(Place& at);
  void AddRecent(const RecentList& recent, Place& at);
  void AddDemos(Place& at);
  mavro::Label& AddLabel(const std::string& text, int x, int y, int width);
  void OnRow(mavro::NotifyArgs& args);
  void OnShowAgain(mavro::NotifyArgs& args);
  void OnSized(mavro::NotifyArgs& args);

  std::deque<mavro::Label> labels;
  std::deque<mavro::Image> pictures;
  int contentWidth = 0, contentHeight = 0;
};

}  // namespace zendry
