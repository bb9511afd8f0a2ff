// SPDX-License-Identifier: MIT-0
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

#include "statistics.h"

// Prints the figures and the most frequent words with a bar each, the longest `cBarWidth` wide.
constexpr std::size_t cBarWidth = 40;
void PrintReport(std::ostream& output, const std::string& title, const TextStatistics& statistics,
                 std::size_t frequentWords);
