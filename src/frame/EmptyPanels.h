#pragma once

#include <deque>
#include <string>

#include "EmptyText.h"

namespace zendry {

class MainForm;

// What each panel of the main window says as long as it is empty: what will be there, and the key
// that brings it.
class EmptyPanels {
 public:
  // Called before the panels have windows; they must have windows only as long as this exists.
  explicit EmptyPanels(MainForm& form);

 private:
  std::deque<mavro::EmptyText> panels;
};

}  // namespace zendry
