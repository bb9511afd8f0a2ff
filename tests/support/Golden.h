#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

namespace test {

// The content of a file of the source tree; empty when there is none.
inline std::string ReadData(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Compares a text with the golden file `path`. A difference is reported as "path:line:" with both
// lines, and the text is left beside the golden as "path.new", to be looked at and renamed by hand.
//
//   EXPECT_TRUE(test::MatchesGolden(TEST_DATA "/gcc/undefined.txt.rows", rows));
inline testing::AssertionResult MatchesGolden(const std::string& path, const std::string& actual) {
  const std::string newPath = path + ".new";
  const std::string golden = ReadData(path);
  if (std::filesystem::exists(path) && golden == actual) {
    std::filesystem::remove(newPath);
    return testing::AssertionSuccess();
  }
  std::ofstream(newPath, std::ios::binary) << actual;
  std::istringstream expectedLines(golden), actualLines(actual);
  std::string expected, found;
  for (int line = 1;; ++line) {
    const bool hasExpected = static_cast<bool>(std::getline(expectedLines, expected));
    const bool hasFound = static_cast<bool>(std::getline(actualLines, found));
    if (hasExpected && hasFound && expected == found) continue;
    return testing::AssertionFailure()
           << path << ":" << line << ": expected \"" << (hasExpected ? expected : "(end)")
           << "\", found \"" << (hasFound ? found : "(end)") << "\"; see " << newPath;
  }
}

}  // namespace test
