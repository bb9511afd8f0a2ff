// SPDX-License-Identifier: MIT-0
#pragma once

#include <iosfwd>
#include <string>

#include "statistics.h"

// Adds all lines of a stream. A carriage return before the line's end is no part of the line.
void ReadText(std::istream& input, TextStatistics& statistics);

// Reads the file, or the standard input for "-"; false when it can't be opened.
bool ReadFile(const std::string& name, TextStatistics& statistics);

// The text that is counted when no file is named.
void ReadSample(TextStatistics& statistics);
