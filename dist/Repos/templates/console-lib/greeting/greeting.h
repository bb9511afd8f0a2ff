// SPDX-License-Identifier: MIT-0
#pragma once

#include <string>

// The words that greet somebody; an empty name greets everybody.
std::string Greeting(const std::string& name);
