#include "build/HeaderRivals.h"

#include <dirent.h>

#include <filesystem>
#include <memory>

#include "CommandLine.h"
#include "FilePath.h"
#include "base/Paths.h"
#include "base/SearchFolders.h"

namespace zendry {

namespace {

std::unordered_set<std::string> NamesIn(const std::string& folder) {
  std::unordered_set<std::string> names;
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(folder.empty() ? "." : folder.c_str()),
                                                   closedir);
  if (!stream) return names;
  while (const dirent* entry = readdir(stream.get())) names.insert(entry->d_name);
  return names;
}

}  // namespace

std::string HeaderRivals::Plain(const std::string& path) {
  if (here.empty()) here = std::filesystem::path(AbsolutePath("") + "/").lexically_normal();
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
  if (isNew) listing->second = NamesIn(folder);
  return listing->second.contains(path.substr(folder.size()));
}

}  // namespace zendry
