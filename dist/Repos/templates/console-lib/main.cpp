// SPDX-License-Identifier: MIT-0
#include <iostream>

#include "greeting.h"

int main(int argc, char** argv) {
  const std::string name = argc > 1 ? argv[1] : "world";
  std::cout << Greeting(name) << '\n';
  return 0;
}
