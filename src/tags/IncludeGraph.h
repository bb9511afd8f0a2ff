#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tags/TagData.h"

namespace zendry {

// How near the files of a project are to each other by what they include. An include stands for the
// file beside the including one, else for a file whose path ends with its name; among several, for
// the one that shares the most folders with the including file.
class IncludeGraph {
 public:
  static constexpr int cFar = 1 << 30;
  // A file that only compilers of other platforms reach is farther than all others.
  static constexpr int cElsewhere = 1 << 20;

  // The number of includes from a module to each other one, by their places in `modules`: 0 for
  // itself, 1 for a file that it includes, cFar for one that it doesn't reach. Empty if `from` is
  // none of them. Valid until the next call.
  const std::vector<int>& DistancesFrom(const TagData* from, const std::vector<TagData*>& modules);
  // The files that `from` reaches, itself too, by their places in `modules`: each after those that
  // it includes, as their declarations come in what a compiler reads. Empty if it is none of them.
  std::vector<int> ReadOrder(const TagData* from, const std::vector<TagData*>& modules);

 private:
  struct Target {
    int module;
    bool isElsewhere;
  };
  struct Node {
    uint64_t generation = 0;
    std::vector<IncludeRec> includes;
    std::vector<Target> targets;
  };

  void Update(const std::vector<TagData*>& newModules);
  void Rebuild(const std::vector<TagData*>& newModules);
  bool Renote(int module);
  int Resolve(const IncludeRec& include, const std::string& path) const;
  std::vector<int> Measure(int from) const;

  std::vector<TagData*> modules;
  std::vector<std::string> names;  // of the modules, as they were noted
  std::vector<Node> nodes;
  uint64_t latest = 0;  // generation up to which the nodes are true
  std::unordered_map<std::string, std::vector<int>> byFileName;
  std::map<const TagData*, std::vector<int>> measured;
};

}  // namespace zendry
