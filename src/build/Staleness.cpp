#include "build/Staleness.h"

#include <algorithm>
#include <cstdio>
#include <limits>

#include "project/Project.h"

namespace zendry {

namespace {

constexpr FileTimes::Time cSecond = 1'000'000'000;

// A span in seconds with as many decimals as it has.
std::string SpanText(FileTimes::Time span) {
  char text[48];
  const int length =
      std::snprintf(text, sizeof text, "%lld.%09lld", static_cast<long long>(span / cSecond),
                    static_cast<long long>(span % cSecond));
  std::string_view shown(text, static_cast<size_t>(length));
  shown = shown.substr(0, shown.find_last_not_of('0') + 1);
  if (shown.ends_with('.')) shown.remove_suffix(1);
  return std::string(shown) + " s";
}

// Compares a file that can be opened with its target.
Staleness Compare(const Project& project, const std::string& path, FileTimes::Time time,
                  const std::string& target, std::optional<FileTimes::Time> targetTime) {
  if (!targetTime) return {true, target + " is missing"};
  if (time <= *targetTime) return {};
  return {true, project.MakeRelative(path) + " is newer than " + target + " by " +
                    SpanText(time - *targetTime)};
}

}  // namespace

Staleness IsNewer(FileTimes& times, const Project& project, const std::string& path,
                  const std::string& target) {
  const std::optional<FileTimes::Time> time = times.Of(path);
  if (!time) return {};
  return Compare(project, path, *time, target, times.Of(target));
}

Staleness StaleCheck::NeedsCompile(const ProjectFile& file, const std::string& object) {
  Staleness answer = IsNewer(times, project, file.name, object);
  if (answer.stale || NoFileIsNewer(object)) return answer;
  for (const IncludeRec& entry : file.Includes()) {
    answer = IncludeIsNewer(entry.name, object, 0);
    if (answer.stale) break;
  }
  return answer;
}

// What an include can reach are files of the project.
bool StaleCheck::NoFileIsNewer(const std::string& object) {
  const std::optional<FileTimes::Time> made = times.Of(object);
  if (!made) return false;
  if (!newestFile) {
    newestFile = std::numeric_limits<FileTimes::Time>::min();
    for (const auto& file : project.Files())
      newestFile = std::max(*newestFile, times.Of(file->name).value_or(*newestFile));
  }
  return *newestFile <= *made;
}

Staleness StaleCheck::IncludeIsNewer(std::string_view name, const std::string& object, int depth) {
  if (depth > cMaxIncludeDepth) return {};
  ++entriesVisited;
  Header* header = Resolve(name);
  if (!header) return {};
  const Newest newest = NewestWithin(*header, cMaxIncludeDepth - depth);
  if (!newest.header) return {};
  return Compare(project, newest.header->file->name, newest.time, object, times.Of(object));
}

StaleCheck::Header* StaleCheck::Resolve(std::string_view name) {
  if (const auto known = byName.find(name); known != byName.end()) return known->second;
  const std::string key(name);
  const std::string path = project.ResolveInclude(key);
  const ProjectFile* file = path.empty() ? nullptr : project.FindFile(path);
  Header* header = file ? &headers.try_emplace(file, Header{file, {}}).first->second : nullptr;
  byName.emplace(key, header);
  return header;
}

StaleCheck::Newest StaleCheck::NewestWithin(Header& header, int levels) {
  std::optional<Newest>& known = header.newest[static_cast<size_t>(levels)];
  if (!known) known = FindNewest(header, levels);
  return *known;
}

StaleCheck::Newest StaleCheck::FindNewest(const Header& header, int levels) {
  Newest best;
  if (const auto time = times.Of(header.file->name)) best = {*time, &header};
  if (levels == 0) return best;
  for (const IncludeRec& entry : header.file->Includes()) {
    ++entriesVisited;
    Header* included = Resolve(entry.name);
    if (!included) continue;
    const Newest newest = NewestWithin(*included, levels - 1);
    if (newest.header && (!best.header || newest.time > best.time)) best = newest;
  }
  return best;
}

}  // namespace zendry
