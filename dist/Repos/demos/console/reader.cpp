// SPDX-License-Identifier: MIT-0
#include "reader.h"

#include <fstream>
#include <iostream>
#include <sstream>

namespace {

constexpr const char* cSample =
    "The wind was on the water and the water was on the wind,\n"
    "and neither knew which one had been the first to move.\n"
    "\n"
    "So both of them went on.\n";

}  // namespace

void ReadText(std::istream& input, TextStatistics& statistics) {
  for (std::string line; std::getline(input, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    statistics.AddLine(line);
  }
}

bool ReadFile(const std::string& name, TextStatistics& statistics) {
  if (name == "-") {
    ReadText(std::cin, statistics);
    return true;
  }
  std::ifstream file(name, std::ios::binary);
  if (!file) return false;
  ReadText(file, statistics);
  return true;
}

void ReadSample(TextStatistics& statistics) {
  std::istringstream sample(cSample);
  ReadText(sample, statistics);
}
