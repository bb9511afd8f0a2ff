#pragma once

#include <string>

namespace zendry {

struct CtrlRec;

// The geometry of a record that reaches the source: the dock, and each of the bounds that is known
// and written with this dock. Empty texts are not written.
struct FormGeometry {
  int dock = 0;  // position of the option
  std::string left, top, width, height;

  friend bool operator==(const FormGeometry&, const FormGeometry&) = default;
};

FormGeometry WrittenGeometry(const CtrlRec& rec);

}  // namespace zendry
