#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace zendry {

// Follows the conditional directives of a text and tells which branches are meant for compilers of
// other platforms: those of "#ifdef _WIN32", and the "#else" of "#ifdef __linux__". Of all other
// conditions nothing is assumed.
class PlatformBranches {
 public:
  // Begins at the start of a text.
  void Start() {
    levels.clear();
    deeper = 0;
  }
  // Takes a line that begins with "#".
  void Take(std::string_view line);
  bool IsElsewhere() const { return !levels.empty() && levels.back().isElsewhere; }

 private:
  static constexpr size_t cMostLevels = 64;  // the branches of deeper ones count as those around

  struct Level {
    bool isAroundElsewhere = false;
    bool isElsewhere = false;
    bool isDecided = false;  // a branch before is this platform's
  };

  void Open(std::string_view word, std::string_view condition);
  void GoOn(std::string_view word, std::string_view condition);

  std::vector<Level> levels;
  size_t deeper = 0;  // levels that weren't taken
};

}  // namespace zendry
