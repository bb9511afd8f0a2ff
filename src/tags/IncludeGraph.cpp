#include "tags/IncludeGraph.h"

#include <algorithm>
#include <utility>

#include "base/Paths.h"

namespace zendry {

namespace {

constexpr size_t cMostMeasured = 64;
constexpr std::string_view cUp = "../";
constexpr std::string_view cHere = "./";

std::string_view FileNameOf(std::string_view path) {
  return path.substr(path.find_last_of('/') + 1);
}

std::string_view FolderOf(std::string_view path) {
  return path.substr(0, path.find_last_of('/') + 1);
}

// The name without "../" and "./" before it.
std::string_view Inner(std::string_view name) {
  for (;;) {
    if (name.starts_with(cUp))
      name.remove_prefix(cUp.size());
    else if (name.starts_with(cHere))
      name.remove_prefix(cHere.size());
    else
      return name;
  }
}

bool EndsWithPath(std::string_view path, std::string_view name) {
  if (!path.ends_with(name)) return false;
  return path.size() == name.size() || path[path.size() - name.size() - 1] == '/';
}

// The number of folders that two paths begin with.
int CommonFolders(std::string_view a, std::string_view b) {
  int count = 0;
  for (size_t i = 0; i < std::min(a.size(), b.size()) && a[i] == b[i]; ++i)
    if (a[i] == '/') ++count;
  return count;
}

bool IsSame(const std::vector<IncludeRec>& a, const std::vector<IncludeRec>& b) {
  return std::equal(
      a.begin(), a.end(), b.begin(), b.end(), [](const IncludeRec& x, const IncludeRec& y) {
        return x.quoted == y.quoted && x.name == y.name && x.isElsewhere == y.isElsewhere;
      });
}

}  // namespace

const std::vector<int>& IncludeGraph::DistancesFrom(const TagData* from,
                                                    const std::vector<TagData*>& newModules) {
  static const std::vector<int> cNone;
  Update(newModules);
  const auto known = measured.find(from);
  if (known != measured.end()) return known->second;
  const auto place = std::find(modules.begin(), modules.end(), from);
  if (place == modules.end()) return cNone;
  if (measured.size() >= cMostMeasured) measured.clear();
  return measured[from] = Measure(static_cast<int>(place - modules.begin()));
}

std::vector<int> IncludeGraph::ReadOrder(const TagData* from,
                                         const std::vector<TagData*>& newModules) {
  Update(newModules);
  const auto place = std::find(modules.begin(), modules.end(), from);
  if (place == modules.end()) return {};
  struct Visit {
    int module;
    size_t next = 0;  // of its targets
  };
  std::vector<int> order;
  std::vector<Visit> open = {{static_cast<int>(place - modules.begin())}};
  std::vector<bool> seen(modules.size());
  seen[open.back().module] = true;
  while (!open.empty()) {
    Visit& visit = open.back();
    const std::vector<Target>& targets = nodes[visit.module].targets;
    if (visit.next == targets.size()) {
      order.push_back(visit.module);
      open.pop_back();
      continue;
    }
    const int target = targets[visit.next++].module;
    if (seen[target]) continue;
    seen[target] = true;
    open.push_back({target});
  }
  return order;
}

void IncludeGraph::Update(const std::vector<TagData*>& newModules) {
  const bool isSameList = newModules == modules;
  if (isSameList && latest == TagData::LatestGeneration()) return;
  latest = TagData::LatestGeneration();
  const auto isRenamed = [&](size_t i) { return names[i] != newModules[i]->fileName; };
  bool isNew = !isSameList;
  bool hasChanged = false;
  for (size_t i = 0; i < newModules.size() && !isNew; ++i) {
    if (nodes[i].generation == newModules[i]->Generation()) continue;
    if (isRenamed(i))
      isNew = true;
    else
      hasChanged = Renote(static_cast<int>(i)) || hasChanged;
  }
  if (isNew) Rebuild(newModules);
  if (isNew || hasChanged) measured.clear();
}

void IncludeGraph::Rebuild(const std::vector<TagData*>& newModules) {
  modules = newModules;
  nodes.assign(modules.size(), {});
  names.clear();
  byFileName.clear();
  for (const TagData* module : modules) {
    byFileName[std::string(FileNameOf(module->fileName))].push_back(static_cast<int>(names.size()));
    names.push_back(module->fileName);
  }
  for (size_t i = 0; i < modules.size(); ++i) Renote(static_cast<int>(i));
}

// True if the module includes other files than before.
bool IncludeGraph::Renote(int module) {
  Node& node = nodes[module];
  const TagData& tags = *modules[module];
  node.generation = tags.Generation();
  if (IsSame(node.includes, tags.includes)) return false;
  node.includes = tags.includes;
  node.targets.clear();
  for (const IncludeRec& include : node.includes)
    if (const int target = Resolve(include, tags.fileName); target >= 0)
      node.targets.push_back({target, include.isElsewhere});
  return true;
}

// -1 for a file that isn't in the project.
int IncludeGraph::Resolve(const IncludeRec& include, const std::string& path) const {
  const auto found = byFileName.find(std::string(FileNameOf(include.name)));
  if (found == byFileName.end()) return -1;
  const std::string beside = TidyPath(std::string(FolderOf(path)) + include.name);
  int best = -1;
  int mostCommon = -1;
  for (const int module : found->second) {
    if (include.quoted && names[module] == beside) return module;
    const int common = CommonFolders(names[module], path);
    if (common <= mostCommon || !EndsWithPath(names[module], Inner(include.name))) continue;
    best = module;
    mostCommon = common;
  }
  return best;
}

std::vector<int> IncludeGraph::Measure(int from) const {
  std::vector<int> distances(modules.size(), cFar);
  std::vector<int> queue;
  std::vector<std::pair<int, int>> late;  // modules that only other platforms include, and how far
  const auto reach = [&](int module, int distance) {
    if (distances[module] != cFar) return;
    distances[module] = distance;
    queue.push_back(module);
  };
  reach(from, 0);
  for (size_t next = 0; next < queue.size();) {
    for (; next < queue.size(); ++next) {
      const int distance = distances[queue[next]];
      for (const Target& target : nodes[queue[next]].targets)
        if (target.isElsewhere)
          late.emplace_back(target.module, distance % cElsewhere + 1 + cElsewhere);
        else
          reach(target.module, distance + 1);
    }
    for (const auto& [module, distance] : std::exchange(late, {})) reach(module, distance);
  }
  return distances;
}

}  // namespace zendry
