// SPDX-License-Identifier: MIT-0
#pragma once

#include <string>

// The number in Roman numerals; empty below 1 and above 3999, which have none.
std::string Roman(int number);
