#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace test {

// The content of a file below tests/data.
inline std::string ReadData(const std::string& name) {
  std::ifstream file(std::string(TEST_DATA) + "/" + name, std::ios::binary);
  if (!file) throw std::runtime_error("can't read test data " + name);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The names of the files in a folder below tests/data, sorted.
inline std::vector<std::string> DataNames(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry :
       std::filesystem::directory_iterator(std::string(TEST_DATA) + "/" + folder))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace test
