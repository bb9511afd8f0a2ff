#pragma once

#include "debug/TextDlg.h"

namespace zendry {

// Asks for the parameters with which the program is run.
class ProgParamsDlg : public TextDlg {
 public:
  explicit ProgParamsDlg(const std::string& present) : TextDlg("Program parameters", present) {}
};

}  // namespace zendry
