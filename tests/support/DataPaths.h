#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace test {

// The paths of the files in a folder below tests/data, sorted. Contents: ReadData of Golden.h.
inline std::vector<std::string> DataPaths(const std::string& folder) {
  std::vector<std::string> paths;
  for (const auto& entry :
       std::filesystem::directory_iterator(std::string(TEST_DATA) + "/" + folder))
    paths.push_back(entry.path().string());
  std::sort(paths.begin(), paths.end());
  return paths;
}

}  // namespace test
