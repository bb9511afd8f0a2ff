#include "frame/DemoList.h"

#include <sstream>

#include "FileText.h"
#include "base/Paths.h"

namespace zendry {

namespace {

constexpr size_t cLongestEmpty = 2;  // lines up to this length say nothing

bool IsInside(const std::string& folder) {
  return !folder.starts_with('/') && folder.find("..") == std::string::npos;
}

}  // namespace

// The titles are in a list of their own, in the order of the folders.
std::vector<Demo> ReadDemos(const std::string& appDir) {
  const mavro::FileText list = mavro::ReadFileText(appDir + "Repos/items.def");
  std::vector<std::string> titles;
  std::vector<Demo> demos;
  bool isTemplate = true;
  std::istringstream lines(list.text);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.size() <= cLongestEmpty) continue;
    const size_t equals = line.find('=');
    if (line.starts_with("#@"))
      titles.push_back(line.substr(2));
    else if (line[0] == '#')
      isTemplate = line[1] == 't';
    else if (equals != std::string::npos && !isTemplate)
      demos.push_back({line.substr(0, equals), line.substr(equals + 1), ""});
  }
  std::vector<Demo> kept;
  for (size_t i = 0; i < demos.size(); ++i) {
    const std::string folder = demos[i].title;
    if (!IsInside(folder)) continue;
    const std::string name = BaseName(folder);
    kept.push_back({i < titles.size() ? titles[i] : name, demos[i].sentence,
                    appDir + "Repos/pictures/" + name + ".png"});
  }
  return kept;
}

}  // namespace zendry
