#pragma once

#include <string>
#include <vector>

namespace zendry {

class CppEditor;

// Makes the regions of forms visible in an editor: their lines are tinted and fold as a block, and
// a wave line is under each statement that the designer could not take.
class RegionMarks {
 public:
  // The lines of a region, from 0, markers included.
  struct Region {
    bool isDecl = false;
    int first = 0;
    int last = 0;

    bool Has(int line) const { return line >= first && line <= last; }
  };

  // To be called after each change of an editor's text, and as often as one likes: without a change
  // nothing happens. Returns what to say to a user who types into a region; empty for nothing.
  static std::string Update(const CppEditor& editor);

  // The regions that have an end, in order.
  static std::vector<Region> RegionsOf(const CppEditor& editor);

  static constexpr int cTintMarker = 7;
  static constexpr int cWaveIndicator = 11;
  // Regions of longer texts don't fold: their levels are counted anew after each key.
  static constexpr int cMostFolded = 128 * 1024;
};

}  // namespace zendry
