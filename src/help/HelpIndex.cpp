#include "help/HelpIndex.h"

#include <algorithm>
#include <filesystem>
#include <unordered_set>

#include "AsciiCase.h"
#include "FileText.h"
#include "help/HelpIndexReader.h"

namespace zendry {

namespace {

// A letter that differs costs this much, one that differs only in case costs 1.
constexpr int cStep = 4;
constexpr int cOtherLength = 1;  // makes a swap of letters cheaper than one too many

int CostOf(char a, char b) {
  if (a == b) return 0;
  return mavro::AsciiUpper(a) == mavro::AsciiUpper(b) ? 1 : cStep;
}

// The costs of the last rows of the comparison, kept to be used again.
struct CostRows {
  std::vector<int> now, last, beforeLast;
};

// The cost of the changes that make one text of the other: letters that are added, left out,
// changed or swapped with their neighbour. More than `limit` if it is above that.
int Distance(std::string_view a, std::string_view b, int limit, CostRows& rows) {
  const size_t difference = a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
  if (difference * cStep > static_cast<size_t>(limit)) return limit + 1;
  auto& [now, last, beforeLast] = rows;
  for (std::vector<int>* row : {&now, &last, &beforeLast}) row->resize(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) now[j] = static_cast<int>(j) * cStep;
  for (size_t i = 1; i <= a.size(); ++i) {
    beforeLast.swap(last);
    last.swap(now);
    int least = now[0] = static_cast<int>(i) * cStep;
    for (size_t j = 1; j <= b.size(); ++j) {
      const int changed = last[j - 1] + CostOf(a[i - 1], b[j - 1]);
      now[j] = std::min({changed, last[j] + cStep, now[j - 1] + cStep});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        now[j] = std::min(now[j], beforeLast[j - 2] + cStep);
      least = std::min(least, now[j]);
    }
    if (least > limit + cStep) return limit + 1;
  }
  return now[b.size()];
}

struct Near {
  int cost;
  std::string_view name;
};

// The indexes that each installation has.
constexpr std::string_view cOwnFiles[] = {"mavro.ch", "stl.ch", "clib.ch"};

// The paths of the other indexes in a folder, by name. A folder that can't be read has none.
std::vector<std::string> OtherFiles(const std::string& folder) {
  namespace fs = std::filesystem;
  std::vector<std::string> paths;
  std::error_code error;
  fs::directory_iterator entry(folder, error), end;
  for (; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    const bool isOwn =
        std::find(std::begin(cOwnFiles), std::end(cOwnFiles), name) != std::end(cOwnFiles);
    if (entry->path().extension() == ".ch" && !isOwn) paths.push_back(entry->path().string());
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

// The part after the last "::".
std::string_view LastPart(std::string_view name) {
  const size_t colons = name.rfind("::");
  return colons == std::string_view::npos ? name : name.substr(colons + 2);
}

}  // namespace

std::string_view HelpEntry::Module() const {
  return std::string_view(key).substr(0, key.find('@'));
}

std::string_view HelpEntry::Name() const {
  const size_t at = key.find('@');
  return std::string_view(key).substr(at == std::string::npos ? 0 : at + 1);
}

bool HelpIndex::ReadFile(const std::string& path) {
  const mavro::FileText file = mavro::ReadFileText(path);
  if (file.Ok()) Read(file.text);
  return file.Ok();
}

void HelpIndex::ReadFolders(const std::string& folder, const std::string& usersFolder) {
  for (const std::string_view name : cOwnFiles) ReadFile(folder + "/" + std::string(name));
  for (const std::string& path : OtherFiles(folder)) ReadFile(path);
  if (usersFolder == folder) return;
  for (const std::string_view name : cOwnFiles) ReadFile(usersFolder + "/" + std::string(name));
  for (const std::string& path : OtherFiles(usersFolder)) ReadFile(path);
}

void HelpIndex::Read(std::string_view bytes) {
  HelpIndexReader(*this).Read(bytes);
}

const HelpEntry* HelpIndex::Source(const HelpEntry& entry) const {
  const HelpEntry* source = &entry;
  // A path with more steps than entries is a circle.
  for (size_t steps = 0; steps <= topics.size(); ++steps) {
    if (source->sourceOf < 0) return source;
    if (static_cast<size_t>(source->sourceOf) >= topics.size()) return nullptr;
    source = &topics[static_cast<size_t>(source->sourceOf)];
  }
  return nullptr;
}

std::vector<std::string> HelpIndex::Nearest(std::string_view word, size_t most) const {
  constexpr size_t cLongestWord = 64;  // no name is near to a longer one
  word = word.substr(0, cLongestWord);
  const std::string_view last = LastPart(word);
  std::vector<Near> nearest;
  CostRows rows;
  std::unordered_set<std::string_view> seen;
  for (const HelpEntry& entry : topics) {
    const std::string_view name = entry.Name();
    const int limit =
        nearest.size() < most ? static_cast<int>(cLongestWord) * 2 * cStep : nearest.back().cost;
    int cost = Distance(word, name, limit, rows);
    if (last.size() < word.size()) cost = std::min(cost, 1 + Distance(last, name, limit, rows));
    if (name.size() != word.size()) cost += cOtherLength;
    if (cost > limit || (nearest.size() == most && cost == limit)) continue;
    if (!seen.insert(name).second) continue;
    const auto place =
        std::upper_bound(nearest.begin(), nearest.end(), cost,
                         [](int value, const Near& near) { return value < near.cost; });
    nearest.insert(place, {cost, name});
    if (nearest.size() > most) nearest.pop_back();
  }
  std::vector<std::string> names;
  for (const Near& near : nearest) names.emplace_back(near.name);
  return names;
}

}  // namespace zendry
