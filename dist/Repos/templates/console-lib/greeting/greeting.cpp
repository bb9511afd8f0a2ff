// SPDX-License-Identifier: MIT-0
#include "greeting.h"

std::string Greeting(const std::string& name) {
  return "Hello, " + (name.empty() ? "everybody" : name) + "!";
}
