#pragma once

#include <map>
#include <string>

namespace zendry {

// The texts and switches of searches among the user's settings: "find1" to "find20", the last text
// first, the replacement "find-with", and the switches "find-case", "find-word", "find-regexp" and
// "find-wrap". Both work on mavro::theSearch.
void TakeSearchSettings(const std::map<std::string, std::string>& values);
// Texts that no line of the file can hold are left out.
void StoreSearchSettings(std::map<std::string, std::string>& values);

}  // namespace zendry
