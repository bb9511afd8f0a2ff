// SPDX-License-Identifier: MIT-0
#pragma once

#include <string>

struct Person {
  std::string name;
  std::string town;
  bool isMember = false;
};
