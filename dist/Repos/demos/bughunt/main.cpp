// SPDX-License-Identifier: MIT-0
#include <iostream>

#include "shelf.h"

// An exercise: one of the functions of Shelf has a bug. Build in Debug mode, set a breakpoint (F9) in
// the function that the output is about, run (F5), and follow its loop (F10) with a watch for what
// it returns.
// Prints a line for each check; ends with 1 as long as the bug is there.
int main() {
  const Shelf shelf({{"Atlas", 41}, {"Bible", 23}, {"Cookbook", 30}, {"Dictionary", 26}});
  int failures = 0;
  const auto check = [&failures](const char* what, int expected, int found) {
    std::cout << what << ": " << found;
    if (expected != found) {
      std::cout << ", expected " << expected;
      ++failures;
    }
    std::cout << '\n';
  };
  check("books", 4, shelf.Count());
  check("tallest", 41, shelf.Tallest());
  check("lowest", 23, shelf.Lowest());
  check("mean height", 30, shelf.MeanHeight());
  std::cout << (failures == 0 ? "All is well\n" : "Find the bug with the debugger: see main.cpp\n");
  return failures == 0 ? 0 : 1;
}
