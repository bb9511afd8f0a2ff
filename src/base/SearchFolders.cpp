#include "base/SearchFolders.h"

#include <algorithm>
#include <string_view>

namespace zendry {

std::vector<std::string> SearchFolders(const std::vector<std::string>& arguments) {
  constexpr std::string_view cSwitches[] = {"-I", "-iquote", "-isystem", "-idirafter"};
  std::vector<std::string> folders;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const auto* found = std::ranges::find_if(
        cSwitches, [&](std::string_view name) { return arguments[i].starts_with(name); });
    if (found == std::end(cSwitches)) continue;
    std::string folder = arguments[i].substr(found->size());
    if (folder.empty() && i + 1 < arguments.size()) folder = arguments[++i];
    if (!folder.empty()) folders.push_back(std::move(folder));
  }
  return folders;
}

}  // namespace zendry
