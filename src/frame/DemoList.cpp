#include "frame/DemoList.h"

#include "FileText.h"
#include "base/Paths.h"
#include "wizards/Repository.h"

namespace zendry {

// The titles are in a list of their own, in the order of the folders.
std::vector<Demo> ReadDemos(const std::string& appDir) {
  const mavro::FileText list = mavro::ReadFileText(appDir + "Repos/items.def");
  const RepositoryItems items = ReadRepositoryItems(list.text);
  std::vector<Demo> demos;
  for (size_t i = 0; i < items.demos.size(); ++i) {
    const RepositoryItems::Item& item = items.demos[i];
    if (item.folder.empty()) continue;
    const std::string name = BaseName(item.folder);
    demos.push_back({static_cast<int>(i), i < items.demoTitles.size() ? items.demoTitles[i] : name,
                     item.text, appDir + "Repos/pictures/" + name + ".png"});
  }
  return demos;
}

}  // namespace zendry
