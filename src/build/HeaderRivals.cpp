#include "build/HeaderRivals.h"

#include <dirent.h>

#include <algorithm>
#include <filesystem>
#include <memory>

#include "FilePath.h"
#include "base/Paths.h"

namespace zendry {

namespace {

// The argument that begins here, without its quotes.
std::string Argument(std::string_view text) {
  std::string argument;
  char quote = 0;
  for (const char c : text) {
    if (!quote && c == ' ') break;
    if (c == quote)
      quote = 0;
    else if (!quote && (c == '"' || c == '\''))
      quote = c;
    else
      argument += c;
  }
  return argument;
}

std::unordered_set<std::string> NamesIn(const std::string& folder) {
  std::unordered_set<std::string> names;
  const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(folder.empty() ? "." : folder.c_str()),
                                                   closedir);
  if (!stream) return names;
  while (const dirent* entry = readdir(stream.get())) names.insert(entry->d_name);
  return names;
}

}  // namespace

std::vector<std::string> SearchFolders(std::string_view command) {
  constexpr std::string_view cSwitches[] = {"-I", "-iquote", "-isystem", "-idirafter"};
  std::vector<std::string> folders;
  for (size_t at = command.find(" -"); at != command.npos; at = command.find(" -", at + 1)) {
    std::string_view rest = command.substr(at + 1);
    const auto* found = std::ranges::find_if(
        cSwitches, [rest](std::string_view name) { return rest.starts_with(name); });
    if (found == std::end(cSwitches)) continue;
    rest.remove_prefix(found->size());
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    folders.push_back(Argument(rest));
  }
  return folders;
}

std::string HeaderRivals::Plain(const std::string& path) {
  if (here.empty()) here = std::filesystem::path(AbsolutePath("") + "/").lexically_normal();
  const std::string full = (std::filesystem::path(here) / path).lexically_normal();
  return full.starts_with(here) ? full.substr(here.size()) : full;
}

uint32_t HeaderRivals::NumberOf(const std::string& folder) {
  const auto [known, isNewSpelling] = spellings.try_emplace(folder);
  if (!isNewSpelling) return known->second;
  const auto [number, isNew] =
      numbers.emplace(Plain(folder.empty() ? "" : folder + "/"), numbers.size());
  if (isNew) rivals.clear();
  return known->second = number->second;
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
