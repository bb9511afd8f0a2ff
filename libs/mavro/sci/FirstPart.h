#pragma once

#include <optional>

#include "NativeWindow.h"

namespace mavro {

// What decides how the first screen of a text looks, besides its bytes.
struct FirstLook {
  int codePage = 0;
  int encoding = 0;
  bool huge = false;
  Param numberWidth = 0;
  friend bool operator==(const FirstLook&, const FirstLook&) = default;
};

// A large text while it is read: its first screen may be painted before the rest is there.
struct FirstPart {
  long expectedLength = 0;  // of the whole text; 0 when it is there
  std::optional<FirstLook> shown;
};

}  // namespace mavro
