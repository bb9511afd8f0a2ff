#include "project/ChosenSets.h"

#include <string>
#include <tuple>

#include "config/IdeConfig.h"
#include "project/Project.h"

namespace zendry {

int CompilerSet(int gcc) {
  constexpr unsigned cSets = std::tuple_size_v<decltype(IdeConfig::toolSets)>;
  return static_cast<unsigned>(gcc) < cSets ? gcc : 0;
}

LibSet* LibrarySetOf(const Project& project, IdeConfig& config) {
  const bool takesFramework = project.libSet.empty() && project.type == cFormApplication;
  const std::string name = takesFramework ? "mavro" : project.libSet;
  const auto found = config.libSets.find(name);
  return name.empty() || found == config.libSets.end() ? nullptr : &found->second;
}

}  // namespace zendry
