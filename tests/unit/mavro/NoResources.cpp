#include "Resource.h"

// A program that links no resources at all: looking one up must find none and not fail.
int main() {
  const bool found =
      !mavro::FindResource("PNG", 1).empty() || !mavro::FindResource("PNG", "one").empty();
  return found ? 1 : 0;
}
