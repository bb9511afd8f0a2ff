#pragma once

#include <string>
#include <vector>

#include "Core.h"

namespace mavro {

// A bar of text panes at the bottom of a form. A pane of width 0 takes the remaining width.
class StatusBar : public Control {
 public:
  class Impl;
  // One field of the bar.
  struct Pane {
    int width = 0;
    std::string text;
    int style = 0;
    int percent = -1;  // of a bar beside the text; -1 for none
  };

  StatusBar();
  // Panes are placed from left to right and identified by their index, which must exist.
  void AddPane(int width, const std::string& text);
  void SetPane(int index, const std::string& text, int style = 0);
  // Shows at the right of a pane how much of a work is done, from 0 to 100; -1 takes the bar away.
  void SetPaneBar(int index, int percent);
  const std::string& PaneText(int index) const;

 private:
  friend class Impl;
  std::vector<Pane> panes;
};

}  // namespace mavro
