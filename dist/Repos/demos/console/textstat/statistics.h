// SPDX-License-Identifier: MIT-0
#pragma once

#include <cstddef>
#include <string_view>

#include "words.h"

// What is known about a text after all its lines have been added.
struct TextStatistics {
  std::size_t lines = 0;
  std::size_t emptyLines = 0;
  std::size_t longestLine = 0;  // in characters
  std::size_t characters = 0;   // line ends not counted
  WordCounter words;

  void AddLine(std::string_view line);
};

// The number of characters of a UTF-8 text; a byte that is no part of one counts as a character.
std::size_t CountCharacters(std::string_view text);
