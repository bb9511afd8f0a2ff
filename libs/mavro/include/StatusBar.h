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
  };

  StatusBar();
  // Panes are placed from left to right and identified by their index, which must exist.
  void AddPane(int width, const std::string& text);
  void SetPane(int index, const std::string& text, int style = 0);
  const std::string& PaneText(int index) const;

 private:
  friend class Impl;
  std::vector<Pane> panes;
};

}  // namespace mavro
