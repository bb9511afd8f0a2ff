#pragma once

#include "Application.h"

namespace test {

// Registers the program's picture strips, as its start does; once for all tests of a process.
inline void RegisterStrips() {
  if (mavro::theApplication.FindImageList(0x6E)) return;
  mavro::theApplication.RegisterImageList(0x6A, 16, 15, 4);
  mavro::theApplication.RegisterImageList(0x6E, 22, 22, 0);
  mavro::theApplication.RegisterImageList(0x6D, 28, 28, 0);
  mavro::theApplication.RegisterImageList(0x6F, 16, 16, 8);
  mavro::theApplication.RegisterImageList(0x70, 22, 22, 0);
  mavro::theApplication.RegisterImageList(0x71, 22, 22, 0);
}

}  // namespace test
