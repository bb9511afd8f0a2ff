#include "code/FunctionList.h"

#include <algorithm>

#include "tags/TagData.h"

namespace zendry {

std::vector<FunctionPlace> FunctionsOf(const TagData& module) {
  std::vector<FunctionPlace> functions;
  const auto take = [&](const TagItem& item, const std::string& owner) {
    if (item.kind == 'f') functions.push_back({std::max(0, item.line - 1), owner + item.name});
  };
  for (const TagItem& item : module.globals) take(item, "");
  for (const auto& [name, record] : module.classes)
    for (const TagItem& member : record.members) take(member, name + "::");
  std::stable_sort(functions.begin(), functions.end(),
                   [](const FunctionPlace& a, const FunctionPlace& b) { return a.line < b.line; });
  return functions;
}

}  // namespace zendry
