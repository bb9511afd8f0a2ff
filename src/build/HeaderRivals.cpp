#include "build/HeaderRivals.h"

#include <dirent.h>
#include <time.h>

#include <algorithm>
#include <filesystem>
#include <memory>

#include "CommandLine.h"
#include "FilePath.h"
#include "base/Paths.h"
#include "base/SearchFolders.h"

namespace zendry {

namespace {

// No clock of a file system ticks slower.
constexpr int64_t cLongestTick = 2'000'000'000;  // ns

std::string CurrentFolder() {
  return std::filesystem::path(AbsolutePath("") + "/").lexically_normal();
}

// "" is the current folder.
std::string NameToOpen(const std::string& folder) {
  return folder.empty() ? "." : folder;
}

int64_t Now() {
  constexpr int64_t cSecond = 1'000'000'000;
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  return now.tv_sec * cSecond + now.tv_nsec;
}

}  // namespace

HeaderRivals::Listing HeaderRivals::List(const std::string& folder) {
  Listing listing;
  listing.stamp = ReadDiskStamp(NameToOpen(folder));
  listing.isLasting = listing.stamp.isKnown && listing.stamp.touched < Now() - cLongestTick;
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(NameToOpen(folder).c_str()), closedir);
  if (!stream) return listing;
  while (const dirent* entry = readdir(stream.get())) listing.names.insert(entry->d_name);
  return listing;
}

bool HeaderRivals::IsCurrent() const {
  if (!here.empty() && here != CurrentFolder()) return false;
  return std::ranges::all_of(listings, [](const auto& entry) {
    const auto& [folder, listing] = entry;
    return listing.isLasting && listing.stamp == ReadDiskStamp(NameToOpen(folder));
  });
}

std::string HeaderRivals::Plain(const std::string& path) {
  if (here.empty()) here = CurrentFolder();
  const bool isShortest = path.find("./") == path.npos && path.find("//") == path.npos;
  const std::string full = isShortest
                               ? (IsAbsolutePath(path) ? path : here + path)
                               : (std::filesystem::path(here) / path).lexically_normal().string();
  return full.starts_with(here) ? full.substr(here.size()) : full;
}

uint32_t HeaderRivals::NumberOf(std::string_view folder) {
  if (const auto known = spellings.find(folder); known != spellings.end()) return known->second;
  const std::string tidy = folder.empty() ? "" : Plain(std::string(folder) + "/");
  const auto [number, isNew] = numbers.emplace(tidy, numbers.size());
  if (isNew) rivals.clear();
  return spellings[std::string(folder)] = number->second;
}

const std::vector<uint32_t>& HeaderRivals::SearchedBy(std::string_view command) {
  const size_t output = command.rfind(" -o ");
  const size_t source = output == command.npos ? output : command.substr(0, output).rfind(' ');
  const std::string_view switches = command.substr(0, source);
  if (const auto known = searched.find(switches); known != searched.end()) return known->second;
  std::vector<uint32_t>& folders = searched[std::string(switches)];
  for (const std::string& folder : SearchFolders(mavro::SplitCommandLine(command)))
    folders.push_back(NumberOf(folder));
  return folders;
}

const std::vector<HeaderRivals::Rival>& HeaderRivals::Of(const std::string& path) {
  const auto [known, isNew] = rivals.try_emplace(path);
  if (!isNew) return known->second;
  const std::string header = Plain(path);
  for (const auto& [foundIn, number] : numbers) {
    const bool isBelow = foundIn.empty() ? !IsAbsolutePath(header) : header.starts_with(foundIn);
    if (!isBelow) continue;
    const std::string name = header.substr(foundIn.size());
    for (const auto& [other, otherNumber] : numbers)
      if (other != foundIn && other + name != header && Exists(other + name))
        known->second.push_back({otherNumber, other + name});
  }
  return known->second;
}

bool HeaderRivals::Exists(const std::string& path) {
  const std::string folder = mavro::FolderOf(path);
  const auto [listing, isNew] = listings.try_emplace(folder);
  if (isNew) listing->second = List(folder);
  return listing->second.names.contains(path.substr(folder.size()));
}

}  // namespace zendry
