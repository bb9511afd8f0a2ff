// SPDX-License-Identifier: MIT-0
#pragma once

#include <string>

// Reads a whole file; false if it can't be read.
bool ReadTextFile(const std::string& path, std::string& text);

// Writes a whole file. The old content stays if writing fails.
bool WriteTextFile(const std::string& path, const std::string& text);

// The next place of a text at or after `start`, going on at the beginning; npos if there is none.
size_t FindInText(const std::string& text, const std::string& what, size_t start);
